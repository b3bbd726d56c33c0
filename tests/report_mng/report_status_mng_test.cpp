#include "report_mng/report_status_mng.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/tally_test_fixture.h"

namespace {

using Names = std::vector<std::wstring>;
using TextSet = std::set<std::wstring>;

class ReportStatus : public tally_test::TallyTest {
 protected:
  CReportStatusMng& status = *CReportStatusMng::Instance();
};

std::wstring CurReport(const CReportStatusMng& status) {
  std::wstring report = L"before";
  status.GetCurReport(report);
  return report;
}

std::wstring CurSpec(const CReportStatusMng& status) {
  std::wstring spec = L"before";
  status.GetCurSpec(spec);
  return spec;
}

TEST_F(ReportStatus, StartsEmpty) {
  EXPECT_FALSE(status.GetIsBySgd());
  EXPECT_FALSE(status.GetIsDividedNode());
  EXPECT_EQ(CurReport(status), L"");
  EXPECT_EQ(CurSpec(status), L"");
  EXPECT_EQ(status.CheckSelSgdNames(), L"");
  std::map<std::wstring, NewReportConfigRec> reports{{L"before", {}}};
  status.GetReportStatus(reports);
  EXPECT_TRUE(reports.empty());
  std::map<std::wstring, Report::SNewCondition> conditions{{L"before", {}}};
  status.GetSpecTreeStatus(conditions);
  EXPECT_TRUE(conditions.empty());
}

TEST_F(ReportStatus, KeepsTheScalarsApart) {
  status.SetCurReport(L"report");
  status.SetCurSpec(L"spec");
  status.SetIsBySgd(true);
  EXPECT_EQ(CurReport(status), L"report");
  EXPECT_EQ(CurSpec(status), L"spec");
  EXPECT_TRUE(status.GetIsBySgd());
  EXPECT_FALSE(status.GetIsDividedNode());
  status.SetIsDividedNode(true);
  status.SetIsBySgd(false);
  EXPECT_FALSE(status.GetIsBySgd());
  EXPECT_TRUE(status.GetIsDividedNode());
}

TEST_F(ReportStatus, DisplayedSectionsAreAddedOrderedAndOnce) {
  status.SetDispSgd({L"b", L"a", L"b"});
  TextSet names{L"z"};
  status.GetDispSgd(names);
  status.GetDispSgd(names);
  EXPECT_EQ(names, (TextSet{L"a", L"b", L"z"}));
}

TEST_F(ReportStatus, DisplayedSectionsAreReplacedBySet) {
  status.SetDispSgd({L"a"});
  status.SetDispSgd({L"b"});
  TextSet names;
  status.GetDispSgd(names);
  EXPECT_EQ(names, (TextSet{L"b"}));
}

TEST_F(ReportStatus, EverySectionCountsWithTheFlagOff) {
  EXPECT_TRUE(status.CheckIsValidSgd(L"a"));
  status.SetDispSgd({L"b"});
  EXPECT_TRUE(status.CheckIsValidSgd(L"a"));
  EXPECT_TRUE(status.CheckIsValidSgd(L""));
}

TEST_F(ReportStatus, DisplayedSectionsAloneCountWithTheFlagOn) {
  status.SetIsBySgd(true);
  EXPECT_FALSE(status.CheckIsValidSgd(L"a"));
  EXPECT_FALSE(status.CheckIsValidSgd(L""));
  status.SetDispSgd({L"b", L"a"});
  EXPECT_TRUE(status.CheckIsValidSgd(L"a"));
  EXPECT_TRUE(status.CheckIsValidSgd(L"b"));
  EXPECT_FALSE(status.CheckIsValidSgd(L"A"));
  EXPECT_FALSE(status.CheckIsValidSgd(L""));
}

TEST_F(ReportStatus, SectionNamesAreJoinedInTheirOrder) {
  status.SetDispSgd({L"b", L"a", L"b"});
  EXPECT_EQ(status.CheckSelSgdNames(), L"b,a,b");
  status.SetDispSgd({L"", L""});
  EXPECT_EQ(status.CheckSelSgdNames(), L",");
  status.SetDispSgd({L"a"});
  EXPECT_EQ(status.CheckSelSgdNames(), L"a");
}

TEST_F(ReportStatus, AReportIsVisibleUntilItIsHidden) {
  EXPECT_TRUE(status.GetReportVisible(L"a"));
  status.SetReportVisible(L"a", false);
  EXPECT_FALSE(status.GetReportVisible(L"a"));
  EXPECT_TRUE(status.GetReportVisible(L"A"));
  status.SetReportVisible(L"a", true);
  EXPECT_TRUE(status.GetReportVisible(L"a"));
}

TEST_F(ReportStatus, AReportWithoutARecordLeavesTheCallersValuesAlone) {
  int level = 42;
  std::vector<Report::SColumnState> columns{{L"mine", true}};
  status.GetReportExpand(L"a", level);
  status.GetReportColStatus(L"a", columns);
  EXPECT_EQ(level, 42);
  EXPECT_EQ(columns.size(), 1U);
}

TEST_F(ReportStatus, ARecordMadeForOneFieldHasTheDefaultsInTheOthers) {
  status.SetReportExpand(L"a", 5);
  int level = 42;
  std::vector<Report::SColumnState> columns{{L"mine", true}};
  status.GetReportExpand(L"a", level);
  status.GetReportColStatus(L"a", columns);
  EXPECT_EQ(level, 5);
  EXPECT_TRUE(columns.empty());
  EXPECT_TRUE(status.GetReportVisible(L"a"));
}

TEST_F(ReportStatus, ASetterLeavesTheOtherFieldsAlone) {
  status.SetReportColStatus(L"a", {{L"one", true}, {L"two", false}});
  status.SetReportVisible(L"a", false);
  status.SetReportExpand(L"a", -3);
  std::map<std::wstring, NewReportConfigRec> reports{{L"before", {}}};
  status.GetReportStatus(reports);
  ASSERT_EQ(reports.size(), 1U);
  const NewReportConfigRec& record = reports.at(L"a");
  EXPECT_FALSE(record.visible);
  EXPECT_EQ(record.expandLevel, -3);
  ASSERT_EQ(record.columns.size(), 2U);
  EXPECT_EQ(record.columns[0].name, L"one");
  EXPECT_TRUE(record.columns[0].visible);
  EXPECT_EQ(record.columns[1].name, L"two");
  EXPECT_FALSE(record.columns[1].visible);
}

TEST_F(ReportStatus, ColumnsAreReplaced) {
  status.SetReportColStatus(L"a", {{L"one", true}, {L"two", false}});
  status.SetReportColStatus(L"a", {{L"three", true}});
  std::vector<Report::SColumnState> columns{{L"mine", true}, {L"mine", true}};
  status.GetReportColStatus(L"a", columns);
  ASSERT_EQ(columns.size(), 1U);
  EXPECT_EQ(columns[0].name, L"three");
}

TEST_F(ReportStatus, ADisciplineWithoutAConditionLeavesTheCallersAlone) {
  Report::SNewCondition condition;
  condition.curCategory = L"mine";
  status.GetTreeStatus(L"给排水", condition);
  EXPECT_EQ(condition.curCategory, L"mine");
  status.SetTreeStatus(L"电气", {});
  status.GetTreeStatus(L"给排水", condition);
  EXPECT_EQ(condition.curCategory, L"mine");
  status.GetTreeStatus(L"电气", condition);
  EXPECT_EQ(condition.curCategory, L"");
}

TEST_F(ReportStatus, ConditionsAreReplacedAndCopiedOut) {
  Report::SNewCondition condition;
  condition.sysCodes = {L"A"};
  status.SetTreeStatus(L"给排水", condition);
  condition.sysCodes = {L"B", L"C"};
  status.SetTreeStatus(L"给排水", condition);
  condition.sysCodes.clear();
  std::map<std::wstring, Report::SNewCondition> conditions{{L"before", {}}};
  status.GetSpecTreeStatus(conditions);
  ASSERT_EQ(conditions.size(), 1U);
  EXPECT_EQ(conditions.at(L"给排水").sysCodes, (Names{L"B", L"C"}));
}

/// The three remembered selections of a discipline, from known starting values.
struct SSelections {
  SysCodeMemTJInfo sysCode{true, {L"mine"}};
  FloorTJInfo floor{true, {{L"mine", L"mine"}}};
  SysCodeMemTJInfo member{true, {L"mine"}};
};

SSelections Selections(const CReportStatusMng& status, const std::wstring& spec) {
  SSelections selections;
  status.GetSyscodeTJTree(spec, selections.sysCode);
  status.GetFloorTJTree(spec, selections.floor);
  status.GetMemTJTree(spec, selections.member);
  return selections;
}

TEST_F(ReportStatus, SelectionsAreKeptApart) {
  status.SetTJTJTree(L"给排水", {false, {L"A"}}, {false, {{L"2,4", L"3"}}}, {true, {L"管道"}});
  const SSelections found = Selections(status, L"给排水");
  EXPECT_FALSE(found.sysCode.allSelected);
  EXPECT_EQ(found.sysCode.names, (Names{L"A"}));
  EXPECT_FALSE(found.floor.allSelected);
  ASSERT_EQ(found.floor.floors.size(), 1U);
  EXPECT_EQ(found.floor.floors[0].drawingFloor, L"2,4");
  EXPECT_EQ(found.floor.floors[0].floor, L"3");
  EXPECT_TRUE(found.member.allSelected);
  EXPECT_EQ(found.member.names, (Names{L"管道"}));
}

TEST_F(ReportStatus, AllThreeSelectionsAreReplacedAtOnce) {
  status.SetTJTJTree(L"给排水", {true, {L"A"}}, {true, {{L"2", L"3"}}}, {true, {L"管道"}});
  status.SetTJTJTree(L"给排水", {true, {L"B"}}, {}, {});
  const SSelections found = Selections(status, L"给排水");
  EXPECT_EQ(found.sysCode.names, (Names{L"B"}));
  EXPECT_FALSE(found.floor.allSelected);
  EXPECT_TRUE(found.floor.floors.empty());
  EXPECT_FALSE(found.member.allSelected);
  EXPECT_TRUE(found.member.names.empty());
}

TEST_F(ReportStatus, ADisciplineWithoutSelectionsLeavesTheCallersAlone) {
  for (int round = 0; round < 2; ++round) {
    const SSelections found = Selections(status, L"给排水");
    EXPECT_TRUE(found.sysCode.allSelected);
    EXPECT_EQ(found.sysCode.names, (Names{L"mine"}));
    EXPECT_EQ(found.floor.floors.size(), 1U);
    EXPECT_EQ(found.member.names, (Names{L"mine"}));
    status.SetTJTJTree(L"电气", {}, {}, {});
  }
}

TEST_F(ReportStatus, TheEmptyTextIsAKeyLikeAnyOther) {
  status.SetReportVisible(L"", false);
  EXPECT_FALSE(status.GetReportVisible(L""));
  EXPECT_TRUE(status.GetReportVisible(L"a"));
}

}  // namespace
