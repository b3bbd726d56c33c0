#include "report_model/report_data_node.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "report_model/report_data_method.h"
#include "support/tally_test_fixture.h"

namespace {

using Method = CReportDataMethod;
using tally_test::CTinyProject;

const std::wstring kSpec = L"给排水";
const KorDMRec::SKorDMFloorRec kFloor{1, L"标准层", L"2,4"};

std::vector<std::wstring> Keys(const Report::NodeMap& nodes) {
  std::vector<std::wstring> keys;
  for (const auto& [key, node] : nodes) {
    keys.push_back(key);
  }
  return keys;
}

KorDMRec::SKorDMCalItemRec CalItem(double quantity, const std::wstring& expression = L"1+1.5") {
  return {1, L"管道长度", L"m", L"t3", L"t4", quantity, expression};
}

KorDMRec::SKorDMComponentRec Component(const std::wstring& name) {
  return {1, name, {}};
}

/// An empty map, and a project with some sort numbers and chapters.
class ReportDataNode : public tally_test::TallyTest {
 protected:
  ReportDataNode() {
    Open(CTinyProject()
             .KindSort(kSpec, L"管道\\给水管", 12)
             .SysCodeSort(kSpec, L"A", 3)
             .SysCodeSort(kSpec, L"A&B", 4)
             .SysCodeSort(kSpec, L"A&B&C", 5));
    billLibrary->isOpen = true;
    billLibrary->chapters = {
        {L"0310", {7, L"给水"}}, {L"0320", {8, L""}}, {L"0330", {{}, L"无号"}}};
    quotaLibrary->isOpen = true;
    quotaLibrary->chapters = {{L"0310", {2, L"第二章\\第一节"}}};
    settings->marks = {{L"0310", {L"材质", L"钢", L"skipped"}}};
  }

  Report::NodeMap nodes;
};

/// One look-up: what it makes, the key it files under, and what GetKey answers.
struct SLookUp {
  const char* name;
  std::function<IReportDataNode*(Report::NodeMap&)> look;
  std::wstring key;
  std::wstring getKey;
};

// Floors, items and results refer to the texts of records; a record that is gone by the end of the
// statement is refused.
template <class TRecord>
constexpr bool kMakesFloor = requires(Report::NodeMap& map, TRecord&& record) {
  Method::GetFloor(map, std::forward<TRecord>(record));
};
template <class TRecord>
constexpr bool kMakesCalItem = requires(Report::NodeMap& map, TRecord&& record) {
  Method::GetCalItem(map, std::forward<TRecord>(record));
};
template <class TRecord>
constexpr bool kMakesPjCalItem = requires(Report::NodeMap& map, TRecord&& record) {
  Method::GetPjCalItem(map, std::forward<TRecord>(record));
};
static_assert(kMakesFloor<const KorDMRec::SKorDMFloorRec&>);
static_assert(!kMakesFloor<KorDMRec::SKorDMFloorRec>);
static_assert(kMakesCalItem<const KorDMRec::SKorDMCalItemRec&>);
static_assert(!kMakesCalItem<KorDMRec::SKorDMCalItemRec>);
static_assert(kMakesCalItem<const KorDMRec::SKorDMCalItemDetailQRec&>);
static_assert(!kMakesCalItem<KorDMRec::SKorDMCalItemDetailQRec>);
static_assert(kMakesPjCalItem<const KorDMRec::SKorDMPjCalItemRec&>);
static_assert(!kMakesPjCalItem<KorDMRec::SKorDMPjCalItemRec>);

// So these live as long as the program.
const std::wstring kSgd = L"一区";
const KorDMRec::SKorDMCalItemRec kCalItem = CalItem(2.5);
const KorDMRec::SKorDMCalItemDetailQRec kDetailItem{1, L"长度", L"m", 2.5, 3, 4, 5, L"1+1.5"};
const KorDMRec::SKorDMPjCalItemRec kPjItem{1, L"DN25", L"弯头", L"个", 9};
const KorDMRec::SKorDMComponentRec kComponent{1, L"c1", {}};
const KorDMRec::SKorDMCategoryRec kCategory{1, L"管道", L"给水管"};
const KorDMRec::SKorDMAttrRec kAttr{1, L"DN25", L"材质:PPR\n连接方式:热熔"};
const KorDMRec::SKorDMQdDeRec kItem{1, L"0310", L"给水管", L"m", L"2013"};

std::vector<SLookUp> LookUps() {
  return {
      {"Spec",
       [](auto& map) {
         return Method::GetSpec(map, {1, kSpec});
       },
       kSpec, kSpec},
      {"Floor", [](auto& map) { return Method::GetFloor(map, kFloor); }, L"标准层", L"标准层"},
      {"Type", [](auto& map) { return Method::GetType(map, L"管道\\给水管", L"管线"); }, L"管线",
       L"管线"},
      {"TypeOfKind",
       [](auto& map) {
         return Method::GetType(map, {1, kSpec}, kCategory);
       },
       L"管线", L"管线"},
      {"Category", [](auto& map) { return Method::GetCategory(map, kSpec, kCategory); },
       L"管道\\给水管", L"管道\\给水管"},
      {"CategoryByTexts",
       [](auto& map) { return Method::GetCategory(map, kSpec, L"管道", L"给水管"); },
       L"管道\\给水管", L"管道\\给水管"},
      {"SysCodeNode", [](auto& map) { return Method::GetSysCodeNode(map, kSpec, L"B", L"A\\B"); },
       L"B", L"4"},
      {"Attribute", [](auto& map) { return Method::GetAttribute(map, kAttr); }, L"DN25", L"DN25"},
      {"AttributeByTexts",
       [](auto& map) { return Method::GetAttribute(map, L"DN25", L"材质:PPR"); }, L"DN25材质:PPR",
       L"DN25"},
      {"PjAttribute", [](auto& map) { return Method::GetPjAttribute(map, kSpec, L"管道", kAttr); },
       L"DN25 热熔", L"DN25 热熔"},
      {"CalItem", [](auto& map) { return Method::GetCalItem(map, kCalItem); }, L"管道长度@m",
       L"管道长度@m"},
      {"DetailCalItem", [](auto& map) { return Method::GetCalItem(map, kDetailItem); }, L"长度@m",
       L"长度@m"},
      {"PjCalItem", [](auto& map) { return Method::GetPjCalItem(map, kPjItem); }, L"DN25@弯头",
       L"弯头@个"},
      {"Result",
       [](auto& map) { return Method::GetResult(map, kSgd, kFloor, kCalItem, kComponent); },
       L"一区2,4@1+1.5@2.5", L"一区1+1.5@2,4@2.5"},
      {"ResultDetail",
       [](auto& map) {
         return Method::GetResultDetail(map, kSgd, kFloor, kDetailItem, kComponent);
       },
       L"一区2,4@1+1.5@2.5", L"一区1+1.5@2,4@2.5"},
      {"PjResult",
       [](auto& map) { return Method::GetPjResult(map, kSgd, kFloor, kPjItem, kComponent); },
       L"一区2,4", L"一区@2,4@1"},
      {"BrushPaint", [](auto& map) { return Method::GetBrushPaint(map, 12, 3, L"管道", L"红丹"); },
       L"12红丹3", L"12红丹3"},
      {"DuctHType", [](auto& map) { return Method::GetDuctHType(map, L"矩形", L"钢", L"0.5"); },
       L"矩形钢0.5", L"矩形钢0.5"},
      {"PipeJRBW", [](auto& map) { return Method::GetPipeJRBW(map, L"橡塑", L"黑", L"20"); },
       L"橡塑黑20", L"橡塑黑20"},
      {"BillChapter", [](auto& map) { return Method::GetChapter(map, kItem, true); }, L"7@给水",
       L"7@给水"},
      {"QuotaChapter", [](auto& map) { return Method::GetChapter(map, kItem, false); }, L"2@第二章",
       L"2@第二章"},
      {"BillItem", [](auto& map) { return Method::GetQdDeItem(map, kItem, true); },
       L"0310@给水管@材质: 钢\n@m", L"0310@给水管@材质: 钢\n@m"},
      {"QuotaItem", [](auto& map) { return Method::GetQdDeItem(map, kItem, false); },
       L"0310@给水管@@m", L"0310@给水管@@m"},
  };
}

TEST_F(ReportDataNode, EveryLookUpFilesItsNodeUnderItsKey) {
  for (const SLookUp& lookUp : LookUps()) {
    SCOPED_TRACE(lookUp.name);
    Report::NodeMap map;
    const IReportDataNode* node = lookUp.look(map);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(Keys(map), (std::vector<std::wstring>{lookUp.key}));
    EXPECT_EQ(map.begin()->second.get(), node);
    EXPECT_EQ(node->GetKey(), lookUp.getKey);
    EXPECT_TRUE(node->children.empty());
  }
}

TEST_F(ReportDataNode, EveryLookUpFindsItsNodeAgain) {
  for (const SLookUp& lookUp : LookUps()) {
    SCOPED_TRACE(lookUp.name);
    Report::NodeMap map;
    const IReportDataNode* node = lookUp.look(map);
    EXPECT_EQ(lookUp.look(map), node);
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(node->GetKey(), lookUp.getKey);
  }
}

TEST_F(ReportDataNode, EveryLookUpIsNullWhereTheKeyHoldsAnotherClass) {
  for (const SLookUp& lookUp : LookUps()) {
    SCOPED_TRACE(lookUp.name);
    const KorDMRec::SKorDMFloorRec floor{1, lookUp.key, L""};
    Report::NodeMap map;
    // A discipline, or a floor against the look-up of disciplines.
    const bool isSpec = std::string(lookUp.name) == "Spec";
    const IReportDataNode* other = isSpec
                                       ? static_cast<IReportDataNode*>(Method::GetFloor(map, floor))
                                       : Method::GetSpec(map, {1, lookUp.key});
    EXPECT_EQ(lookUp.look(map), nullptr);
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map.begin()->second.get(), other);
    EXPECT_EQ(other->GetKey(), lookUp.key);
  }
}

TEST_F(ReportDataNode, ChildrenStandInPlainTextOrder) {
  for (const std::wstring name : {L"b", L"啊", L"一", L"B", L"", L"a"}) {
    Method::GetSpec(nodes, {1, name});
  }
  EXPECT_EQ(Keys(nodes), (std::vector<std::wstring>{L"", L"B", L"a", L"b", L"一", L"啊"}));
}

TEST_F(ReportDataNode, FloorKeepsTheFirstFloorText) {
  CReportFloor* floor = Method::GetFloor(nodes, kFloor);
  const KorDMRec::SKorDMFloorRec second{2, L"标准层", L"7"};
  EXPECT_EQ(Method::GetFloor(nodes, second), floor);
  EXPECT_EQ(floor->floorText, L"2,4");
}

TEST_F(ReportDataNode, TypeKeepsTheFirstKind) {
  CReportType* type = Method::GetType(nodes, {1, L"电气"}, {1, L"管线", L"导管"});
  EXPECT_EQ(Method::GetType(nodes, {1, L"电气"}, {1, L"电缆桥架", L"桥架"}), type);
  EXPECT_EQ(type->name, L"管线");
  EXPECT_EQ(type->category, L"管线\\导管");
  const CReportType* other = Method::GetType(nodes, {1, L"电气"}, {1, L"设备", L"水泵"});
  EXPECT_EQ(other->name, L"水泵");
  EXPECT_EQ(other->category, L"设备\\水泵");
}

TEST_F(ReportDataNode, CategoryHasTheSortNumberOfItsPath) {
  const CReportCategory* known = Method::GetCategory(nodes, kSpec, L"管道", L"给水管");
  EXPECT_EQ(known->sortId, 12);
  EXPECT_EQ(known->category, L"管道");
  EXPECT_EQ(known->kind, L"给水管");
  EXPECT_EQ(Method::GetCategory(nodes, kSpec, L"管道", L"排水管")->sortId, 1000000);
  Report::NodeMap others;
  EXPECT_EQ(Method::GetCategory(others, L"电气", L"管道", L"给水管")->sortId, 1000000);
}

TEST_F(ReportDataNode, SysCodeNodeIsNumberedByTheRealPath) {
  const CReportSysCode* node = Method::GetSysCodeNode(nodes, kSpec, L"*B", L"A\\B\\*B");
  EXPECT_EQ(node->sortId, 4);
  EXPECT_EQ(node->name, L"*B");
  EXPECT_EQ(node->fullName, L"A\\B\\*B");
  EXPECT_EQ(node->extra, nullptr);
  EXPECT_EQ(Method::GetSysCodeNode(nodes, kSpec, L"X", L"X")->sortId, 1000000);
  EXPECT_EQ(Method::GetSysCodeNode(nodes, kSpec, L"A*", L"A*")->sortId, 1000000);
}

/// The chain of names, full names and sort numbers from the root to the only leaf.
std::vector<std::wstring> Chain(const Report::NodeMap& root) {
  std::vector<std::wstring> chain;
  const Report::NodeMap* level = &root;
  while (level->size() == 1) {
    const auto* node = NodeAs<CReportSysCode>(level->begin()->second);
    chain.push_back(node->name.Text() + L" " + node->fullName.Text() + L" " +
                    std::to_wstring(node->sortId));
    level = &node->children;
  }
  return chain;
}

TEST_F(ReportDataNode, SysCodeIsAChainOfItsLevels) {
  const CReportSysCode* deepest = Method::GetSysCode(nodes, kSpec, {1, L"A\\B\\C"});
  EXPECT_EQ(Chain(nodes), (std::vector<std::wstring>{L"A A 3", L"B A\\B 4", L"C A\\B\\C 5"}));
  EXPECT_EQ(deepest->fullName, L"A\\B\\C");
}

TEST_F(ReportDataNode, ShortSysCodeEndsInALeafOfItsLastLevel) {
  const CReportSysCode* deepest = Method::GetSysCode(nodes, kSpec, {1, L"A"});
  EXPECT_EQ(Chain(nodes), (std::vector<std::wstring>{L"A A 3", L"*A A\\*A 3"}));
  EXPECT_EQ(deepest->name, L"*A");
  nodes.clear();
  Method::GetSysCode(nodes, kSpec, {1, L"A\\B"});
  EXPECT_EQ(Chain(nodes), (std::vector<std::wstring>{L"A A 3", L"B A\\B 4", L"*B A\\B\\*B 4"}));
}

TEST_F(ReportDataNode, LongSysCodeIsCompletedToo) {
  EXPECT_EQ(Method::GetSysCode(nodes, kSpec, {1, L"A\\B\\C\\D"})->fullName, L"A\\B\\C\\D\\*D");
  EXPECT_EQ(Chain(nodes).size(), 5U);
}

TEST_F(ReportDataNode, SysCodeLevelsMayBeEmpty) {
  const CReportSysCode* deepest = Method::GetSysCode(nodes, kSpec, {1, L"A\\"});
  EXPECT_EQ(Chain(nodes),
            (std::vector<std::wstring>{L"A A 3", L" A\\ 1000000", L"* A\\\\* 1000000"}));
  EXPECT_EQ(deepest->name, L"*");
}

TEST_F(ReportDataNode, SysCodesShareTheirFirstLevels) {
  Method::GetSysCode(nodes, kSpec, {1, L"A\\B"});
  Method::GetSysCode(nodes, kSpec, {2, L"A\\C"});
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(Keys(nodes.begin()->second->children), (std::vector<std::wstring>{L"B", L"C"}));
}

TEST_F(ReportDataNode, EmptySysCodeMakesNothing) {
  EXPECT_EQ(Method::GetSysCode(nodes, kSpec, {1, L""}), nullptr);
  EXPECT_TRUE(nodes.empty());
}

TEST_F(ReportDataNode, SysCodeStopsAtANodeOfAnotherClass) {
  CReportSysCode* first = Method::GetSysCodeNode(nodes, kSpec, L"A", L"A");
  Method::GetSpec(first->children, {1, L"B"});
  EXPECT_EQ(Method::GetSysCode(nodes, kSpec, {1, L"A\\B\\C"}), nullptr);
  EXPECT_EQ(Keys(first->children), (std::vector<std::wstring>{L"B"}));
  EXPECT_TRUE(first->children.begin()->second->children.empty());
}

TEST_F(ReportDataNode, AttributeOfARecordIsFiledByNameAlone) {
  CReportAttribute* node = Method::GetAttribute(nodes, kAttr);
  EXPECT_EQ(Method::GetAttribute(nodes, {2, L"DN25", L"材质:钢"}), node);
  EXPECT_EQ(node->value, L"材质:PPR\n连接方式:热熔");
}

TEST_F(ReportDataNode, AttributeOfTwoTextsIsFiledByBoth) {
  const CReportAttribute* first = Method::GetAttribute(nodes, L"DN25", L"a");
  const CReportAttribute* second = Method::GetAttribute(nodes, L"DN25", L"b");
  EXPECT_NE(first, second);
  EXPECT_EQ(second->name, L"DN25");
  EXPECT_EQ(second->value, L"b");
  EXPECT_EQ(Method::GetAttribute(nodes, L"DN", L"25a"), first);
}

TEST_F(ReportDataNode, FittingAttributeHasTheNameOfItsPipeLine) {
  const CReportAttribute* node = Method::GetPjAttribute(nodes, L"暖通", L"风管", kAttr);
  EXPECT_EQ(node->name, L"DN25 PPR 热熔");
  EXPECT_EQ(node->value, L"");
}

TEST_F(ReportDataNode, CalItemKeepsItsTexts) {
  const CReportCalItem* node = Method::GetCalItem(nodes, kCalItem);
  EXPECT_EQ(node->name, L"管道长度");
  EXPECT_EQ(node->unit, L"m");
  EXPECT_EQ(node->text3, L"t3");
  EXPECT_EQ(node->text4, L"t4");
  const CReportCalItem* detail = Method::GetCalItem(nodes, kDetailItem);
  EXPECT_EQ(detail->name, L"长度");
  EXPECT_EQ(detail->text3, L"");
  EXPECT_EQ(detail->text4, L"");
}

TEST_F(ReportDataNode, FittingKeepsTheFirstUnit) {
  const CReportPjCalItem* node = Method::GetPjCalItem(nodes, kPjItem);
  const KorDMRec::SKorDMPjCalItemRec second{2, L"DN25", L"弯头", L"套", 1};
  EXPECT_EQ(Method::GetPjCalItem(nodes, second), node);
  EXPECT_EQ(node->text1, L"DN25");
  EXPECT_EQ(node->name, L"弯头");
  EXPECT_EQ(node->unit, L"个");
}

TEST_F(ReportDataNode, EqualResultsFoldIntoOneWithTwoComponents) {
  const auto other = Component(L"c2");
  const CReportResult* node = Method::GetResult(nodes, kSgd, kFloor, kCalItem, kComponent);
  EXPECT_EQ(Method::GetResult(nodes, kSgd, kFloor, kCalItem, other), node);
  EXPECT_EQ(node->GetComponentText(), L"c1$c2$");
  EXPECT_EQ(node->quantity, 2.5);
  EXPECT_EQ(node->expression, L"1+1.5");
  EXPECT_EQ(node->floorText, L"2,4");
  EXPECT_EQ(node->sgdName, L"一区");
  EXPECT_EQ(node->floorCount, 3);
}

TEST_F(ReportDataNode, ResultsOfUnlikeQuantitiesAreTwoNodes) {
  const auto more = CalItem(2.6);
  const CReportResult* node = Method::GetResult(nodes, kSgd, kFloor, kCalItem, kComponent);
  EXPECT_NE(Method::GetResult(nodes, kSgd, kFloor, more, kComponent), node);
  EXPECT_EQ(nodes.size(), 2U);
}

TEST_F(ReportDataNode, ResultsWhoseQuantitiesPrintAlikeFallTogether) {
  const auto first = CalItem(1.0000001);
  const auto second = CalItem(1.0000002);
  const CReportResult* node = Method::GetResult(nodes, kSgd, kFloor, first, kComponent);
  EXPECT_EQ(Method::GetResult(nodes, kSgd, kFloor, second, kComponent), node);
  EXPECT_EQ(node->quantity, 1.0000001);
  EXPECT_EQ(node->components.size(), 2U);
  EXPECT_EQ(Keys(nodes), (std::vector<std::wstring>{L"一区2,4@1+1.5@1"}));
}

TEST_F(ReportDataNode, ResultsAreFiledByThePrintedFormOfOddQuantities) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const KorDMRec::SKorDMCalItemRec items[] = {CalItem(0.0), CalItem(-0.0), CalItem(nan),
                                              CalItem(-nan)};
  for (const auto& item : items) {
    Method::GetResult(nodes, kSgd, kFloor, item, kComponent);
  }
  EXPECT_EQ(Keys(nodes), (std::vector<std::wstring>{L"一区2,4@1+1.5@-0", L"一区2,4@1+1.5@0",
                                                    L"一区2,4@1+1.5@nan"}));
}

TEST_F(ReportDataNode, ResultsFallTogetherWhereTheJoinedKeysAgree) {
  const std::wstring sgd = L"一区2";
  const KorDMRec::SKorDMFloorRec floor{2, L"x", L",4"};
  const CReportResult* node = Method::GetResult(nodes, kSgd, kFloor, kCalItem, kComponent);
  EXPECT_EQ(Method::GetResult(nodes, sgd, floor, kCalItem, kComponent), node);
  EXPECT_EQ(node->floorText, L"2,4");
}

TEST_F(ReportDataNode, DetailResultKeepsFourQuantitiesOfTheFirstRecord) {
  auto second = kDetailItem;
  second.quantity2 = 99;
  const auto* node = Method::GetResultDetail(nodes, kSgd, kFloor, kDetailItem, kComponent);
  EXPECT_EQ(Method::GetResultDetail(nodes, kSgd, kFloor, second, kComponent), node);
  EXPECT_EQ(node->quantity1, 2.5);
  EXPECT_EQ(node->quantity2, 3);
  EXPECT_EQ(node->quantity3, 4);
  EXPECT_EQ(node->quantity4, 5);
  EXPECT_EQ(node->components.size(), 2U);
  EXPECT_EQ(node->floorCount, 3);
}

TEST_F(ReportDataNode, FittingResultCountsOneForEachComponent) {
  const KorDMRec::SKorDMPjCalItemRec other{2, L"x", L"y", L"z", 5};
  const CReportResult* node = Method::GetPjResult(nodes, kSgd, kFloor, kPjItem, kComponent);
  EXPECT_EQ(Method::GetPjResult(nodes, kSgd, kFloor, other, kComponent), node);
  EXPECT_EQ(node->quantity, 1);
  EXPECT_EQ(node->expression, L"");
  EXPECT_EQ(node->floorText, L"2,4");
  EXPECT_EQ(node->sgdName, L"一区");
  EXPECT_EQ(node->GetComponentText(), L"c1$c1$");
}

void SetComponents(SResultIdentity& result, const Report::CellArray& names) {
  result.components.clear();
  for (const std::wstring& name : names) {
    result.components.push_back(name);
  }
}

TEST_F(ReportDataNode, ComponentTextLeavesOutEmptyReferences) {
  const Report::CellArray names{L"b", L"", L"a", L"b"};
  SResultIdentity result;
  EXPECT_EQ(result.GetComponentText(), L"");
  SetComponents(result, names);
  EXPECT_EQ(result.GetComponentText(), L"b$a$b$");
  EXPECT_EQ(result.ComponentTextSize(), 6U);
  std::wstring text = L"x$$";
  result.AppendComponentText(text);
  EXPECT_EQ(text, L"x$$b$a$b$");
}

TEST_F(ReportDataNode, RepeatFormulaCountsEveryComponent) {
  const Report::CellArray one{L"a"};
  const Report::CellArray three{L"a", L"", L"a"};
  const Report::CellArray expressions{L"1+1.5", L"3-1", L"2*3"};
  SResultIdentity result;
  result.expression = expressions[0];
  EXPECT_EQ(result.GetRepeatFormula(), L"1+1.5");
  SetComponents(result, one);
  EXPECT_EQ(result.GetRepeatFormula(), L"1+1.5");
  SetComponents(result, three);
  EXPECT_EQ(result.GetRepeatFormula(), L"(1+1.5)*3件");
  result.expression = expressions[1];
  EXPECT_EQ(result.GetRepeatFormula(), L"(3-1)*3件");
  result.expression = expressions[2];
  EXPECT_EQ(result.GetRepeatFormula(), L"2*3*3件");
}

TEST_F(ReportDataNode, CoatKeepsTheFirstCategory) {
  const CReportBrushPaint* node = Method::GetBrushPaint(nodes, 12, 3, L"管道", L"红丹");
  EXPECT_EQ(Method::GetBrushPaint(nodes, 12, 3, L"设备", L"红丹"), node);
  EXPECT_EQ(node->number1, 12);
  EXPECT_EQ(node->number2, 3);
  EXPECT_EQ(node->text1, L"管道");
  EXPECT_EQ(node->text2, L"红丹");
  // The parts run together.
  EXPECT_EQ(Method::GetBrushPaint(nodes, 1, 3, L"管道", L"2红丹"), node);
}

TEST_F(ReportDataNode, TriplesFallTogetherWhereTheJoinedTextsAgree) {
  const CReportDuctHType* duct = Method::GetDuctHType(nodes, L"a", L"b", L"c");
  EXPECT_EQ(Method::GetDuctHType(nodes, L"ab", L"", L"c"), duct);
  EXPECT_EQ(duct->text1, L"a");
  EXPECT_EQ(duct->text2, L"b");
  EXPECT_EQ(duct->text3, L"c");
  EXPECT_EQ(Method::GetPipeJRBW(nodes, L"a", L"b", L"c"), nullptr);
  const CReportPipeJRBW* pipe = Method::GetPipeJRBW(nodes, L"x", L"y", L"z");
  EXPECT_EQ(pipe->text1 + L"," + pipe->text2 + L"," + pipe->text3, L"x,y,z");
}

TEST_F(ReportDataNode, ChapterIsThatOfTheLibraryThatIsAsked) {
  const CReportChapter* bill = Method::GetChapter(nodes, kItem, true);
  EXPECT_EQ(bill->name, L"给水");
  EXPECT_EQ(bill->number, 7);
  const CReportChapter* quota = Method::GetChapter(nodes, kItem, false);
  EXPECT_EQ(quota->name, L"第二章");
  EXPECT_EQ(quota->number, 2);
}

TEST_F(ReportDataNode, UnknownChapterIsTheOtherOneAndSortsLast) {
  for (const bool isQd : {true, false}) {
    Report::NodeMap map;
    const CReportChapter* chapter = Method::GetChapter(map, {1, L"none", L"", L"", L""}, isQd);
    EXPECT_EQ(chapter->name, L"其他章");
    EXPECT_EQ(chapter->number, std::numeric_limits<int>::max());
    EXPECT_EQ(Keys(map), (std::vector<std::wstring>{L"2147483647@其他章"}));
  }
}

TEST_F(ReportDataNode, ChapterKeepsWhatTheLibraryGives) {
  Method::GetChapter(nodes, {1, L"0320", L"", L"", L""}, true);
  Method::GetChapter(nodes, {1, L"0330", L"", L"", L""}, true);
  EXPECT_EQ(Keys(nodes), (std::vector<std::wstring>{L"2147483647@无号", L"8@其他章"}));
}

TEST_F(ReportDataNode, ItemHasAFeatureAsBillItemAlone) {
  const CReportQdDeItem* bill = Method::GetQdDeItem(nodes, kItem, true);
  EXPECT_EQ(bill->code, L"0310");
  EXPECT_EQ(bill->name, L"给水管");
  EXPECT_EQ(bill->unit, L"m");
  EXPECT_EQ(bill->feature, L"材质: 钢\n");
  EXPECT_EQ(Method::GetQdDeItem(nodes, kItem, false)->feature, L"");
}

TEST_F(ReportDataNode, FindSysCodeItemDescendsByExactKeys) {
  const CReportSpec* spec = Method::GetSpec(nodes, {1, kSpec});
  Report::NodeMap& children = nodes.begin()->second->children;
  const CReportSysCode* deepest = Method::GetSysCode(children, kSpec, {1, L"A\\B"});
  EXPECT_EQ(Method::FindSysCodeItem(spec, {L"A", L"B", L"*B"}), deepest);
  EXPECT_EQ(Method::FindSysCodeItem(spec, {L"A"}), children.begin()->second.get());
  EXPECT_EQ(Method::FindSysCodeItem(spec, {L"A", L"b"}), nullptr);
  EXPECT_EQ(Method::FindSysCodeItem(spec, {L"A\\B"}), nullptr);
  EXPECT_EQ(Method::FindSysCodeItem(spec, {L"A", L"B", L"*B", L"C"}), nullptr);
  EXPECT_EQ(Method::FindSysCodeItem(spec, {}), nullptr);
  EXPECT_EQ(Method::FindSysCodeItem(nullptr, {L"A"}), nullptr);
}

TEST_F(ReportDataNode, FindSysCodeItemStopsAtANodeOfAnotherClass) {
  CReportSysCode* first = Method::GetSysCodeNode(nodes, kSpec, L"A", L"A");
  Method::GetSpec(first->children, {1, L"B"});
  EXPECT_EQ(Method::FindSysCodeItem(first, {L"B"}), nullptr);
  EXPECT_EQ(Method::FindSysCodeItem(first, {L"B", L"C"}), nullptr);
}

TEST_F(ReportDataNode, NodeAsIsNullForAnotherClassAndForNull) {
  IReportDataNode* node = Method::GetSpec(nodes, {1, kSpec});
  EXPECT_EQ(NodeAs<CReportSpec>(node), node);
  EXPECT_EQ(NodeAs<CReportFloor>(node), nullptr);
  EXPECT_EQ(NodeAs<CReportSpec>(static_cast<IReportDataNode*>(nullptr)), nullptr);
  EXPECT_EQ(NodeAs<CReportSpec>(static_cast<const IReportDataNode*>(nullptr)), nullptr);
  EXPECT_EQ(NodeAs<CReportSpec>(nodes.begin()->second), node);
}

/// Counts how many of its kind live.
class CountedNode final : public IReportDataNode {
 public:
  explicit CountedNode(std::wstring key = {})
      : IReportDataNode(ENodeKind::Spec), key_(std::move(key)) {
    ++alive;
  }
  ~CountedNode() override { --alive; }
  std::wstring GetKey() const override { return L"counted"; }
  CNodeKey GetFiledKey() const override { return {key_}; }

  static inline int alive = 0;

 private:
  std::wstring key_;
};

CountedNode& AddCounted(Report::NodeMap& children, const std::wstring& key) {
  auto node = std::make_unique<CountedNode>(key);
  CountedNode& added = *node;
  children.insert(children.lower_bound(key), std::move(node));
  return added;
}

TEST(NodeMap, CountsAllNodesBelow) {
  Report::NodeMap nodes;
  EXPECT_EQ(nodes.CountAll(), 0U);
  CountedNode& a = AddCounted(nodes, L"a");
  AddCounted(nodes, L"b");
  AddCounted(AddCounted(a.children, L"c").children, L"d");
  AddCounted(a.children, L"e");
  EXPECT_EQ(nodes.CountAll(), 5U);
  EXPECT_EQ(a.children.CountAll(), 3U);
  nodes.clear();
  EXPECT_EQ(nodes.CountAll(), 0U);
}

TEST(ClearChildren, FreesAllBelowAndLetsTheNodeBeFilledAgain) {
  CountedNode root;
  for (const std::wstring name : {L"a", L"b"}) {
    CountedNode& child = AddCounted(root.children, name);
    for (const std::wstring leaf : {L"x", L"y", L"z"}) {
      AddCounted(child.children, leaf);
    }
  }
  EXPECT_EQ(CountedNode::alive, 9);
  root.ClearChildren();
  EXPECT_EQ(CountedNode::alive, 1);
  EXPECT_TRUE(root.children.empty());
  root.ClearChildren();
  EXPECT_NE(Method::GetSpec(root.children, {1, L"a"}), nullptr);
}

TEST(ClearChildren, IsPartOfDestruction) {
  {
    CountedNode root;
    AddCounted(AddCounted(root.children, L"a").children, L"b");
  }
  EXPECT_EQ(CountedNode::alive, 0);
}

/// A chain of system codes, each below the one before.
void MakeChain(Report::NodeMap& root, int depth) {
  Report::NodeMap* level = &root;
  for (int i = 0; i < depth; ++i) {
    level = &Method::GetSysCodeNode(*level, kSpec, L"A", L"A")->children;
  }
}

/// Runs `work` on a thread with a stack that a recursion over a deep tree would exhaust.
void RunOnSmallStack(std::function<void()> work) {
  constexpr std::size_t kStack = 512 * 1024;
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  EXPECT_EQ(pthread_join(thread, nullptr), 0);
  EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
}

TEST_F(ReportDataNode, ChainsOfTenThousandLevelsDoNotExhaustTheStack) {
  constexpr int kDepth = 10000;
  RunOnSmallStack([this] {
    Method::GetSpec(nodes, {1, kSpec});
    IReportDataNode& spec = *nodes.begin()->second;
    MakeChain(spec.children, kDepth);
    const std::vector<std::wstring> parts(kDepth, L"A");
    EXPECT_NE(Method::FindSysCodeItem(&spec, parts), nullptr);
    spec.ClearChildren();
    EXPECT_TRUE(spec.children.empty());
    MakeChain(spec.children, kDepth);
    nodes.clear();
  });
}

TEST_F(ReportDataNode, SysCodeOfManyLevelsIsBuiltAndFreed) {
  const CReportSysCode* deepest = Method::GetSysCode(nodes, kSpec, {1, std::wstring(3999, L'\\')});
  ASSERT_NE(deepest, nullptr);
  EXPECT_EQ(deepest->name, L"*");
  EXPECT_EQ(deepest->fullName, std::wstring(4000, L'\\') + L"*");
}

}  // namespace
