#include "report_model/report_data_method.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/tally_test_fixture.h"

namespace {

using Report::CellArray;
using Method = CReportDataMethod;
using tally_test::CTinyProject;

/// For the operations that ask the open project.
class ReportDataMethod : public tally_test::TallyTest {};

TEST(TypeCalItem, IsTheVolumeForTheInsulationTableAlone) {
  EXPECT_EQ(Method::GetTypeCalItem(Report::ReportPipeJRBW), L"保温体积");
  for (const int type : {-1, 0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 99}) {
    EXPECT_EQ(Method::GetTypeCalItem(static_cast<Report::EReportType>(type)), L"") << type;
  }
}

TEST(ExpandSysCodeLevel, OpensThreeLevelsAtMost) {
  const int expected[] = {0, 0, 0, 1, 2, 3, 3, 0};
  for (int level = 0; level < 8; ++level) {
    EXPECT_EQ(Method::GetExpandSysCodeLevel(static_cast<Report::ELevelType>(level)),
              expected[level])
        << level;
  }
  EXPECT_EQ(Method::GetExpandSysCodeLevel(static_cast<Report::ELevelType>(-1)), 0);
}

TEST(SysCodeName, CompletesEveryPathOfOtherThanThreeLevels) {
  const std::pair<std::wstring, std::wstring> cases[] = {
      {L"", L""},
      {L"A", L"A\\*A"},
      {L"A\\B", L"A\\B\\*B"},
      {L"A\\B\\C", L"A\\B\\C"},
      {L"A\\B\\C\\D", L"A\\B\\C\\D\\*D"},
      {L"A\\", L"A\\\\*"},
      {L"A\\\\", L"A\\\\"},
      {L"A&B", L"A&B\\*A&B"},
  };
  for (const auto& [path, name] : cases) {
    EXPECT_EQ(Method::GetSysCodeName(path), name) << testing::PrintToString(path);
  }
}

TEST(SysCodeName, CompletesTheFormWithAmpersandsToo) {
  EXPECT_EQ(Method::GetNewSysCodeName(L""), L"");
  EXPECT_EQ(Method::GetNewSysCodeName(L"A"), L"A&*A");
  EXPECT_EQ(Method::GetNewSysCodeName(L"A&B"), L"A&B&*B");
  EXPECT_EQ(Method::GetNewSysCodeName(L"A&B&C"), L"A&B&C");
  EXPECT_EQ(Method::GetNewSysCodeName(L"A&B&C&D"), L"A&B&C&D&*D");
  EXPECT_EQ(Method::GetNewSysCodeName(L"A\\B"), L"A\\B&*A\\B");
}

TEST(SysCodeLevel, LeavesOutALastLevelBehindAnAsterisk) {
  const std::pair<std::wstring, int> cases[] = {
      {L"", 0},        {L"A", 1},          {L"A\\B", 2},   {L"A\\B\\*B", 2},
      {L"A\\B\\C", 3}, {L"A\\B\\C\\D", 4}, {L"A\\B*", 2},  {L"*A\\B", 2},
      {L"*A", 0},      {L"A\\", 2},        {L"A\\\\B", 3}, {L"A\\*", 1},
  };
  for (const auto& [path, level] : cases) {
    EXPECT_EQ(Method::GetSysCodeLevel(path), level) << testing::PrintToString(path);
  }
}

TEST(SysCodeLevelName, JoinsTheFirstLevels) {
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B\\C", 2), L"A\\B");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B\\C", 1), L"A");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B\\C", 0), L"");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B\\C", -5), L"");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B\\C\\D\\E", 4), L"A\\B\\C\\D");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B", std::numeric_limits<int>::max()), L"A\\B");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"", 2), L"");
}

TEST(SysCodeLevelName, LeavesThePathWholeAtTheDeepestLevel) {
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\*A", 3), L"A\\*A");
  EXPECT_EQ(Method::GetSysCodeLevelName(L"A\\B\\C\\D", 3), L"A\\B\\C\\D");
}

TEST_F(ReportDataMethod, RemarkStandsInBracketsAndIsThatOfTheRealPath) {
  Open(CTinyProject()
           .SysCodeSort(L"给排水", L"A&B", 1, L"东楼")
           .SysCodeSort(L"给排水", L"A", 2)
           .SysCodeSort(L"给排水", L"*C", 3, L"星"));
  EXPECT_EQ(Method::GetSysCodeRemark(L"给排水", L"A\\B"), L"(东楼)");
  EXPECT_EQ(Method::GetSysCodeRemark(L"给排水", L"A\\B\\*B"), L"(东楼)");
  EXPECT_EQ(Method::GetSysCodeRemark(L"给排水", L"A\\B\\*B\\*X"), L"(东楼)");
  EXPECT_EQ(Method::GetSysCodeRemark(L"给排水", L"*C"), L"(星)");
  EXPECT_EQ(Method::GetSysCodeRemark(L"给排水", L"A"), L"");
  EXPECT_EQ(Method::GetSysCodeRemark(L"给排水", L"X"), L"");
  EXPECT_EQ(Method::GetSysCodeRemark(L"电气", L"A\\B"), L"");
}

/// Both outputs of GetAttParamValue from known starting values.
struct SParam {
  bool found;
  std::wstring value = L"before";
  std::wstring line = L"before";
};

SParam Param(const std::wstring& text, const std::wstring& prefix) {
  SParam param{};
  param.found = Method::GetAttParamValue(param.value, param.line, text, prefix);
  return param;
}

TEST(AttParamValue, IsWhatFollowsTheFirstColonOfTheFirstLineWithThePrefix) {
  const SParam param = Param(L"规格:DN25\n材质:PPR:白\n材质:钢", L"材质");
  EXPECT_TRUE(param.found);
  EXPECT_EQ(param.value, L"PPR:白");
  EXPECT_EQ(param.line, L"材质:PPR:白");
}

TEST(AttParamValue, NeedsThePrefixAtTheStartOfTheLine) {
  const SParam param = Param(L"管道材质:PPR", L"材质");
  EXPECT_FALSE(param.found);
  EXPECT_EQ(param.value, L"before");
  EXPECT_EQ(param.line, L"before");
}

TEST(AttParamValue, EndsAtALineWithoutAColonAndKeepsTheLine) {
  const SParam param = Param(L"材质PPR\n材质:钢", L"材质");
  EXPECT_FALSE(param.found);
  EXPECT_EQ(param.value, L"before");
  EXPECT_EQ(param.line, L"材质PPR");
}

TEST(AttParamValue, MayBeEmpty) {
  const SParam param = Param(L"材质:", L"材质:");
  EXPECT_TRUE(param.found);
  EXPECT_EQ(param.value, L"");
  EXPECT_EQ(Param(L"", L"").line, L"before");
}

TEST(Value, IsThatOfTheFirstLineThatHoldsTheKeyAnywhere) {
  const CellArray lines{L"规格:DN25", L"管道材质:PPR:白", L"材质:钢", L"备注"};
  EXPECT_EQ(Method::GetValue(lines, L"材质"), L"PPR:白");
  EXPECT_EQ(Method::GetValue(lines, L"材质:"), L"PPR:白");
  EXPECT_EQ(Method::GetValue(lines, L"DN25"), L"DN25");
  EXPECT_EQ(Method::GetValue(lines, L"备"), L"备注");
  EXPECT_EQ(Method::GetValue(lines, L"样式"), L"");
  EXPECT_EQ(Method::GetValue({}, L"材质"), L"");
}

struct SFloorCase {
  std::wstring text;
  bool several;
  CellArray floors;
};

TEST(FloorExpression, IsExpandedIntoItsFloors) {
  const SFloorCase cases[] = {
      {L"", false, {}},
      {L"3", false, {L"3"}},
      {L"-1", false, {L"-1"}},
      {L"屋面层", false, {L"屋面层"}},
      {L"2,5", true, {L"2", L"3", L"4", L"5"}},
      {L"2,3", true, {L"2", L"3"}},
      {L"5,2", true, {L"5", L"2"}},
      {L"2,2", true, {L"2", L"2"}},
      {L"-1,2", true, {L"-1", L"0", L"1", L"2"}},
      {L"1，3", true, {L"1", L"2", L"3"}},
      {L"1／3", true, {L"1", L"3"}},
      {L"2/4/7", true, {L"2", L"4", L"7"}},
      {L"2//4/", true, {L"2", L"4"}},
      {L"2/", true, {L"2"}},
      {L"2,", true, {L"2", L""}},
      {L"一,3", true, {L"一", L"1", L"2", L"3"}},
      {L"2,4,6", true, {L"2", L"3", L"4,6"}},
      {L"1/2,4", true, {L"1/2", L"2", L"3", L"4"}},
      {L"/1,3", true, {L"/1", L"1", L"2", L"3"}},
      {L",1/2", true, {L",1", L"2"}},
      {L" 2 , 4 ", true, {L" 2 ", L"3", L" 4 "}},
      {L",3", false, {}},
      {L"/3", false, {}},
      {L"，3", false, {}},
      {L"／", false, {}},
      {L",", false, {}},
  };
  for (const auto& [text, several, floors] : cases) {
    CellArray found;
    EXPECT_EQ(Method::GetIsBzcContainFloorAry(found, text), several)
        << testing::PrintToString(text);
    EXPECT_EQ(found, floors) << testing::PrintToString(text);
  }
}

TEST(FloorExpression, IsAppendedWithPlainSeparators) {
  CellArray floors{L"0"};
  EXPECT_TRUE(Method::GetIsBzcContainFloorAry(floors, L"1,4／5，6"));
  EXPECT_EQ(floors, (CellArray{L"0", L"1", L"2", L"3", L"4/5,6"}));
}

/// Visits every text of up to `length` of the tokens.
void ForEachText(const CellArray& tokens, int length, const std::wstring& text,
                 const std::function<void(const std::wstring&)>& visit) {
  visit(text);
  if (length > 0) {
    for (const std::wstring& token : tokens) {
      ForEachText(tokens, length - 1, text + token, visit);
    }
  }
}

TEST(FloorCount, IsTheNumberOfFloorsOfTheExpression) {
  const CellArray tokens{L"1", L"12", L",", L"/", L"，", L"／", L"-", L"层", L" "};
  ForEachText(tokens, 4, L"", [](const std::wstring& text) {
    CellArray floors;
    Method::GetIsBzcContainFloorAry(floors, text);
    EXPECT_EQ(static_cast<std::size_t>(Method::GetFloorCount(text)), floors.size())
        << testing::PrintToString(text);
  });
}

TEST(FloorCount, NeedsNoRoomForLongRangesAndSaturates) {
  constexpr int kHighest = std::numeric_limits<int>::max();
  EXPECT_EQ(Method::GetFloorCount(L"1,2000000000"), 2000000000);
  EXPECT_EQ(Method::GetFloorCount(L"1，2000000000"), 2000000000);
  EXPECT_EQ(Method::GetFloorCount(L"1,2147483647"), kHighest);
  EXPECT_EQ(Method::GetFloorCount(L"0,2147483647"), kHighest);
  EXPECT_EQ(Method::GetFloorCount(L"-2000000000,2000000000"), kHighest);
  EXPECT_EQ(Method::GetFloorCount(L"-99999999999,99999999999"), kHighest);
  EXPECT_EQ(Method::GetFloorCount(L"99999999999,-99999999999"), 2);
}

TEST(FloorExpression, IsExpandedAtTheEndsOfTheNumbers) {
  CellArray floors;
  EXPECT_TRUE(Method::GetIsBzcContainFloorAry(floors, L"2147483645,99999999999"));
  EXPECT_EQ(floors, (CellArray{L"2147483645", L"2147483646", L"99999999999"}));
  floors.clear();
  EXPECT_TRUE(Method::GetIsBzcContainFloorAry(floors, L"2147483647,2147483647"));
  EXPECT_EQ(floors, (CellArray{L"2147483647", L"2147483647"}));
  floors.clear();
  EXPECT_TRUE(Method::GetIsBzcContainFloorAry(floors, L"-99999999999,-2147483646"));
  EXPECT_EQ(floors, (CellArray{L"-99999999999", L"-2147483647", L"-2147483646"}));
}

TEST(TypeByName, IsExact) {
  const std::pair<std::wstring, int> cases[] = {
      {L"系统计算书", 0}, {L"消耗量汇总表", 1}, {L"工程量概览表", 3},    {L"超高量汇总表", 4},
      {L"配件汇总表", 5}, {L"绝热保温表", 6},   {L"刷油工作量表", 7},    {L"风管壁厚表", 8},
      {L"定额汇总表", 9}, {L"清单汇总表", 11},  {L"清单定额汇总表", 10}, {L"", 99},
      {L"定额", 99},      {L"定额汇总表 ", 99}, {L"ReportXhlHz", 99},
  };
  for (const auto& [title, type] : cases) {
    EXPECT_EQ(Method::GetTypeByName(title), type) << testing::PrintToString(title);
  }
}

TEST(Quantity, IsAppendedAsUnitAndShortestForm) {
  CellArray cells{L"@CI"};
  Method::GetItemQuantity(cells, {1234567.0, L"m2", L"a$"});
  EXPECT_EQ(cells, (CellArray{L"@CI", L"m2", L"1.23457e+06"}));
}

TEST(Quantity, IsAppendedWithReferences) {
  CellArray cells{L"@S1"};
  Method::GetSysItemQ(cells, {2.50, L"", L"a$b$$"});
  EXPECT_EQ(cells, (CellArray{L"@S1", L"", L"2.5", L"a$b$$"}));
}

TEST(Quantity, AddsUpWithReferencesUnderOneUnit) {
  Report::SResultData target{1.5, L"m", L"a$$"};
  Method::UnionItemQuantity(target, {2, L"m", L"b$$"});
  EXPECT_EQ(target.quantity, 3.5);
  EXPECT_EQ(target.unit, L"m");
  EXPECT_EQ(target.components, L"a$$b$$");
}

TEST(Quantity, DropsWhatHasAnotherUnit) {
  for (const std::wstring unit : {L"M", L"m2", L"", L" m"}) {
    Report::SResultData target{1.5, L"m", L"a$$"};
    Method::UnionItemQuantity(target, {2, unit, L"b$$"});
    EXPECT_EQ(target.quantity, 1.5);
    EXPECT_EQ(target.unit, L"m");
    EXPECT_EQ(target.components, L"a$$");
  }
}

TEST(PipeLineName, StandsAloneForMechanicalAndNamedJoints) {
  for (const std::wstring name : {L"机械三通", L"三通（沟槽式）", L"弯头（螺纹式）大"}) {
    EXPECT_EQ(Method::GetPipeLineName(name, L"材质:钢\n连接方式:焊接", L"电气", L"风管"), name);
    EXPECT_EQ(Method::GetPipeLineName(name, L"", L"给排水", L"管道"), name);
  }
}

TEST(PipeLineName, IsGroovedWithoutAttributes) {
  EXPECT_EQ(Method::GetPipeLineName(L"三通", L"", L"给排水", L"管道"), L"三通 沟槽连接");
}

TEST(PipeLineName, TakesJointAndStyleWhereTheyAreGiven) {
  const auto name = [](const std::wstring& attributes) {
    return Method::GetPipeLineName(L"三通", attributes, L"给排水", L"管道");
  };
  EXPECT_EQ(name(L"材质:钢"), L"三通");
  EXPECT_EQ(name(L"连接方式:焊接"), L"三通 焊接");
  EXPECT_EQ(name(L"样式:斜\n连接方式:焊接"), L"三通 焊接 斜");
  EXPECT_EQ(name(L"连接方式:\n样式:斜"), L"三通 斜");
}

TEST(PipeLineName, TakesTheMaterialEvenIfEmptyForWiringAndDucts) {
  const auto name = [](const std::wstring& attributes, const std::wstring& spec,
                       const std::wstring& kind) {
    return Method::GetPipeLineName(L"弯头", attributes, spec, kind);
  };
  EXPECT_EQ(name(L"材质:钢\n样式:斜", L"电气", L"管线"), L"弯头 钢 斜");
  EXPECT_EQ(name(L"样式:斜", L"弱电", L"管线"), L"弯头  斜");
  EXPECT_EQ(name(L"材质:钢", L"暖通", L"风管"), L"弯头 钢");
  EXPECT_EQ(name(L"无", L"暖通", L"风管"), L"弯头 ");
  EXPECT_EQ(name(L"材质:钢", L"电气", L"风管"), L"弯头 钢 钢");
  EXPECT_EQ(name(L"材质:钢", L"暖通", L"水管"), L"弯头");
}

TEST_F(ReportDataMethod, EngFloorIsTheFirstFloorWithTheText) {
  Open(CTinyProject().Floor(L"一层", L"1").Floor(L"标准层", L"2,5").Floor(L"另一层", L"1"));
  EXPECT_EQ(Method::GetEngFloor(L"1"), L"一层");
  EXPECT_EQ(Method::GetEngFloor(L"2,5"), L"标准层");
  EXPECT_EQ(Method::GetEngFloor(L"2，5"), L"");
  EXPECT_EQ(Method::GetEngFloor(L"一层"), L"");
  EXPECT_EQ(Method::GetEngFloor(L""), L"");
}

using NameSets = std::vector<std::set<std::wstring, std::less<>>>;

TEST(SysCodeSets, HoldTheNamesOfEachLevelThatOccurs) {
  NameSets levels;
  Method::GetFJSysCodeVec({L"D", L"A\\B"}, levels);
  EXPECT_EQ(levels, (NameSets{{L"A", L"D"}, {L"B"}}));
  levels.clear();
  Method::GetFJSysCodeVec({L"A\\B\\C\\D", L"A\\B\\E", L"A"}, levels);
  EXPECT_EQ(levels, (NameSets{{L"A"}, {L"B"}, {L"C", L"E"}}));
}

TEST(SysCodeSets, AreAppended) {
  NameSets levels{{L"X"}};
  Method::GetFJSysCodeVec({}, levels);
  EXPECT_EQ(levels, (NameSets{{L"X"}}));
  Method::GetFJSysCodeVec({L""}, levels);
  EXPECT_EQ(levels, (NameSets{{L"X"}}));
  Method::GetFJSysCodeVec({L"A"}, levels);
  EXPECT_EQ(levels, (NameSets{{L"X"}, {L"A"}}));
}

}  // namespace
