#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "reports/consumption/xhl_hz_report.h"
#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::Rows;
using tally_test::STinyCalItem;
using tally_test::STinyCategory;
using tally_test::TTinyRow;
using Row = TTinyRow<STinyCalItem>;
using Lines = std::vector<std::string>;

constexpr const wchar_t* kSpec = L"给排水";
constexpr const wchar_t* kMain = L"管道长度";

class ConsumptionSummary : public tally_test::TallyTest {
 protected:
  static CXhlHzReport& Hz() { return GetReport<CXhlHzReport>(Report::ReportXhlHz); }

  static Lines HzRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0,
                      const std::wstring& spec = kSpec) {
    Report::CellArray cells;
    Hz().GetXhlHzData(cells, spec, condition, level, bySgd);
    return Rows(cells);
  }

  static STinyCalItem MainItem(double quantity) { return {.name = kMain, .quantity = quantity}; }

  static void ShowSections(const std::vector<std::wstring>& names, bool isBySgd = false) {
    CReportStatusMng::Instance()->SetDispSgd(names);
    CReportStatusMng::Instance()->SetIsBySgd(isBySgd);
  }

  /// Three component kinds, two floors, two sections, system codes of one to three levels.
  static CTinyProject Building() {
    CTinyProject project;
    project.KindSort(kSpec, L"管道\\给水管", 1)
        .KindSort(kSpec, L"管道\\排水管", 2)
        .KindSort(kSpec, L"附件\\水表", 3)
        .SysCodeSort(kSpec, L"D", 1)
        .SysCodeSort(kSpec, L"A", 2, L"alpha")
        .SysCodeSort(kSpec, L"A&B&C", 3, L"gamma");
    project.Hz()
        .Row({.component = L"c1", .sysCode = L"A\\B\\C", .calItem = MainItem(2.5)})
        .Row({.component = L"c2", .sysCode = L"A\\B\\C", .calItem = MainItem(2.5)})
        .Row({.sgd = L"二区",
              .floor = {L"2,5", L"2,5"},
              .component = L"c3",
              .sysCode = L"D",
              .calItem = MainItem(4)})
        .Row({.component = L"c4",
              .sysCode = L"D",
              .calItem = {.name = L"支架", .unit = L"kg", .quantity = 1.5}})
        .Row({.sgd = L"二区",
              .component = L"c5",
              .category = {L"管道", L"排水管"},
              .attr = {L"DN100", L"材质:PVC"},
              .sysCode = L"A\\B",
              .calItem = MainItem(3)})
        .Row({.component = L"c6",
              .category = {L"附件", L"水表"},
              .attr = {L"LXS-20", L""},
              .sysCode = L"A",
              .calItem = {.name = L"构件数量", .unit = L"个", .quantity = 1}});
    return project;
  }
};

// The code page.

TEST_F(ConsumptionSummary, KeepsTheOrderOfTheCodePageThatItWasFoldedIn) {
  CTinyProject project;
  for (const wchar_t* name : {L"一", L"安"}) {
    project.Hz()
        .Row({.attr = {name, L""}, .calItem = {.name = L"安", .quantity = 1}})
        .Row({.attr = {name, L""}, .calItem = {.name = L"一", .quantity = 1}});
  }
  Open(project);
  const Lines in936{"@Cg|管道\\给水管", "@A|安||m|0", "@CI|安|m|1", "@CI|一|m|1",
                    "@A|一||m|0",       "@CI|安|m|1", "@CI|一|m|1"};
  EXPECT_EQ(HzRows(1), in936);
  ASSERT_TRUE(ICodePage::Instance()->SetThreadCodePage(65001));
  EXPECT_EQ(HzRows(1), in936);
  EXPECT_EQ(ICodePage::Instance()->GetThreadCodePage(), 65001);
  CReportMng::Instance()->Clear();
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\给水管", "@A|一||m|0", "@CI|一|m|1", "@CI|安|m|1",
                              "@A|安||m|0", "@CI|一|m|1", "@CI|安|m|1"}));
}

// Levels.

TEST_F(ConsumptionSummary, Level0ShowsKindsAndAttributesWithFullSums) {
  Open(Building());
  EXPECT_EQ(HzRows(0), (Lines{
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|21",
                           "@Cg|管道\\排水管",
                           "@A|DN100|材质:PVC|m|3",
                           "@Cg|附件\\水表",
                           "@A|LXS-20||个|1",
                       }));
}

TEST_F(ConsumptionSummary, Level1AddsItemsTheMainOneFirst) {
  Open(Building());
  const Lines expected{
      "@Cg|管道\\给水管", "@A|DN25||m|21",         "@CI|管道长度|m|21", "@CI|支架|kg|1.5",
      "@Cg|管道\\排水管", "@A|DN100|材质:PVC|m|3", "@CI|管道长度|m|3",  "@Cg|附件\\水表",
      "@A|LXS-20||个|1",  "@CI|构件数量|个|1",
  };
  EXPECT_EQ(HzRows(1), expected);
  // Below 0 the tests of the number hold as they do for 1.
  EXPECT_EQ(HzRows(-1), expected);
  EXPECT_EQ(HzRows(std::numeric_limits<int>::min()), expected);
}

TEST_F(ConsumptionSummary, Level2AddsTheFloorsOfMainItems) {
  Open(Building());
  EXPECT_EQ(HzRows(2), (Lines{
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|21",
                           "@CI|管道长度|m|21",
                           "@F|1|1|m|5",
                           "@F|2,5|2,5|m|16",
                           "@CI|支架|kg|1.5",
                           "@Cg|管道\\排水管",
                           "@A|DN100|材质:PVC|m|3",
                           "@CI|管道长度|m|3",
                           "@F|1|1|m|3",
                           "@Cg|附件\\水表",
                           "@A|LXS-20||个|1",
                           "@CI|构件数量|个|1",
                           "@F|1|1|个|1",
                       }));
}

TEST_F(ConsumptionSummary, Level3AddsFirstSystemCodesWithRemarkAndReferences) {
  Open(Building());
  EXPECT_EQ(HzRows(3), (Lines{
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|21",
                           "@CI|管道长度|m|21",
                           "@F|1|1|m|5",
                           "@S1|A(alpha)|m|5|c1$c2$$",
                           "@F|2,5|2,5|m|16",
                           "@S1|D|m|16|c3$$",
                           "@CI|支架|kg|1.5",
                           "@Cg|管道\\排水管",
                           "@A|DN100|材质:PVC|m|3",
                           "@CI|管道长度|m|3",
                           "@F|1|1|m|3",
                           "@S1|A(alpha)|m|3|c5$$",
                           "@Cg|附件\\水表",
                           "@A|LXS-20||个|1",
                           "@CI|构件数量|个|1",
                           "@F|1|1|个|1",
                           "@S1|A(alpha)|个|1|c6$$",
                       }));
}

TEST_F(ConsumptionSummary, Level4AddsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(HzRows(4), (Lines{
                           "@Cg|管道\\给水管",         "@A|DN25||m|21",
                           "@CI|管道长度|m|21",        "@F|1|1|m|5",
                           "@S1|A(alpha)|m|5|c1$c2$$", "@S2|B|m|5|c1$c2$$",
                           "@F|2,5|2,5|m|16",          "@S1|D|m|16|c3$$",
                           "@S2|*D|m|16|c3$$",         "@CI|支架|kg|1.5",
                           "@Cg|管道\\排水管",         "@A|DN100|材质:PVC|m|3",
                           "@CI|管道长度|m|3",         "@F|1|1|m|3",
                           "@S1|A(alpha)|m|3|c5$$",    "@S2|B|m|3|c5$$",
                           "@Cg|附件\\水表",           "@A|LXS-20||个|1",
                           "@CI|构件数量|个|1",        "@F|1|1|个|1",
                           "@S1|A(alpha)|个|1|c6$$",   "@S2|*A(alpha)|个|1|c6$$",
                       }));
}

TEST_F(ConsumptionSummary, Level5AddsThirdSystemCodesAndIsTheDeepest) {
  Open(Building());
  const Lines expected{
      "@Cg|管道\\给水管",
      "@A|DN25||m|21",
      "@CI|管道长度|m|21",
      "@F|1|1|m|5",
      "@S1|A(alpha)|m|5|c1$c2$$",
      "@S2|B|m|5|c1$c2$$",
      "@S3|C(gamma)|m|5|c1$c2$$",
      "@F|2,5|2,5|m|16",
      "@S1|D|m|16|c3$$",
      "@S2|*D|m|16|c3$$",
      "@CI|支架|kg|1.5",
      "@Cg|管道\\排水管",
      "@A|DN100|材质:PVC|m|3",
      "@CI|管道长度|m|3",
      "@F|1|1|m|3",
      "@S1|A(alpha)|m|3|c5$$",
      "@S2|B|m|3|c5$$",
      "@S3|*B|m|3|c5$$",
      "@Cg|附件\\水表",
      "@A|LXS-20||个|1",
      "@CI|构件数量|个|1",
      "@F|1|1|个|1",
      "@S1|A(alpha)|个|1|c6$$",
      "@S2|*A(alpha)|个|1|c6$$",
  };
  EXPECT_EQ(HzRows(5), expected);
  EXPECT_EQ(HzRows(6), expected);
  EXPECT_EQ(HzRows(std::numeric_limits<int>::max()), expected);
}

TEST_F(ConsumptionSummary, CellsStandOneByOne) {
  CTinyProject project;
  project.Hz().Row({.attr = {L"DN25", L"材质:PPR"}, .calItem = MainItem(2)});
  Open(project);
  Report::CellArray cells;
  Hz().GetXhlHzData(cells, kSpec, {}, 5, 1);
  EXPECT_EQ(cells, Report::CellArray());
  ShowSections({L"一区"});
  Hz().GetXhlHzData(cells, kSpec, {}, 5, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"@P", L"一区", L"@Cg",      L"管道\\给水管",
                                      L"@A", L"DN25", L"材质:PPR", L"m",
                                      L"2",  L"@CI",  L"管道长度", L"m",
                                      L"2",  L"@F",   L"1",        L"1",
                                      L"m",  L"2",    L"@S1",      L"A",
                                      L"m",  L"2",    L"c1$$",     L"@S2",
                                      L"*A", L"m",    L"2",        L"c1$$"}));
}

TEST_F(ConsumptionSummary, ACodeOfFourLevelsSumsButShowsThree) {
  CTinyProject project;
  project.Hz()
      .Row({.component = L"c1", .sysCode = L"A\\B\\C\\D", .calItem = MainItem(2)})
      .Row({.component = L"c2", .sysCode = L"A\\B\\C", .calItem = MainItem(3)});
  Open(project);
  // "*D" lies on the fifth level. The code "D" comes before the result of section 一区 in key
  // order.
  const Lines expected{
      "@Cg|管道\\给水管",   "@A|DN25||m|5",       "@CI|管道长度|m|5",   "@F|1|1|m|5",
      "@S1|A|m|5|c1$$c2$$", "@S2|B|m|5|c1$$c2$$", "@S3|C|m|5|c1$$c2$$",
  };
  EXPECT_EQ(HzRows(5), expected);
  EXPECT_EQ(HzRows(6), expected);
  EXPECT_EQ(HzRows(9), expected);
}

// Requests.

TEST_F(ConsumptionSummary, AnUnknownDisciplineLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  Report::SNewCondition first;
  first.categories = {L"附件"};
  first.curCategory = L"first";
  Report::CellArray cells{L"kept"};
  Hz().GetXhlHzData(cells, kSpec, first, 0, 0);
  const Report::CellArray before = cells;
  Report::SNewCondition second;
  second.curCategory = L"second";
  Hz().GetXhlHzData(cells, L"电气", second, 0, 0);
  EXPECT_EQ(cells, before);
  EXPECT_EQ(Hz().spec, kSpec);
  EXPECT_EQ(Hz().condition.curCategory, L"first");
}

TEST_F(ConsumptionSummary, RowsAreAppendedAndTheConditionIsStored) {
  Open(Building());
  Report::SNewCondition condition;
  condition.categories = {L"附件"};
  condition.allFloors = true;
  condition.curSysCode = L"code";
  Report::CellArray cells{L"@X", L"kept"};
  Hz().GetXhlHzData(cells, kSpec, condition, 0, 0);
  Hz().GetXhlHzData(cells, kSpec, condition, 0, 0);
  EXPECT_EQ(Rows(cells), (Lines{"@X|kept", "@Cg|附件\\水表", "@A|LXS-20||个|1", "@Cg|附件\\水表",
                                "@A|LXS-20||个|1"}));
  EXPECT_EQ(Hz().spec, kSpec);
  EXPECT_TRUE(Hz().condition.allFloors);
  EXPECT_EQ(Hz().condition.categories, condition.categories);
  EXPECT_EQ(Hz().condition.curSysCode, L"code");
}

TEST_F(ConsumptionSummary, TheStoredConditionMayBePassedBackIn) {
  Open(Building());
  Report::SNewCondition condition;
  condition.floors = {{L"1", L"1"}};
  condition.categories = {L"管道\\给水管"};
  condition.sysCodes = {L"A\\B"};
  const Lines expected = {"@Cg|管道\\给水管",         "@A|DN25||m|5",
                          "@CI|管道长度|m|5",         "@F|1|1|m|5",
                          "@S1|A(alpha)|m|5|c1$c2$$", "@S2|B|m|5|c1$c2$$"};
  EXPECT_EQ(HzRows(4, condition), expected);
  Report::CellArray cells;
  Hz().GetXhlHzData(cells, Hz().spec, Hz().condition, 4, 0);
  EXPECT_EQ(Rows(cells), expected);
  EXPECT_EQ(Hz().spec, kSpec);
  EXPECT_EQ(Hz().condition.floors.size(), 1U);
  EXPECT_EQ(Hz().condition.sysCodes, condition.sysCodes);
}

TEST_F(ConsumptionSummary, ARequestDoesNotDependOnTheOnesBefore) {
  Open(Building());
  Report::SNewCondition narrow;
  narrow.floors = {{L"2,5", L"3"}};
  narrow.sysCodes = {L"D"};
  const Lines all = HzRows(5);
  const Lines some = {"@Cg|管道\\给水管", "@A|DN25||m|4",   "@CI|管道长度|m|4",
                      "@F|2,5|3|m|4",     "@S1|D|m|4|c3$$", "@S2|*D|m|4|c3$$"};
  EXPECT_EQ(HzRows(5, narrow), some);
  EXPECT_EQ(HzRows(5), all);
  EXPECT_EQ(HzRows(5, narrow), some);
}

TEST_F(ConsumptionSummary, DisciplinesAreApart) {
  CTinyProject project;
  project.Hz()
      .Row({.calItem = MainItem(2)})
      .Row({.spec = L"消防", .category = {L"管网", L"喷淋管"}, .calItem = MainItem(3)});
  Open(project);
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2"}));
  EXPECT_EQ(HzRows(0, {}, 0, L"消防"), (Lines{"@Cg|管网\\喷淋管", "@A|DN25||m|3"}));
  EXPECT_EQ(HzRows(0, {}, 0, L""), Lines{});
}

TEST_F(ConsumptionSummary, RequestsReadTheDatabaseOnce) {
  Open(Building());
  db->ForgetReads();
  HzRows(0);
  HzRows(5);
  EXPECT_EQ(db->Count(tally_test::EDbRead::Hz), 1);
  EXPECT_EQ(db->reads.size(), 1U);
}

// Construction sections.

TEST_F(ConsumptionSummary, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  ShowSections({L"二区", L"一区", L"二区"});
  const Lines expected{
      "@P|一区",
      "@Cg|管道\\给水管",
      "@A|DN25||m|5",
      "@CI|管道长度|m|5",
      "@F|1|1|m|5",
      "@S1|A(alpha)|m|5|c1$c2$$",
      "@S2|B|m|5|c1$c2$$",
      "@S3|C(gamma)|m|5|c1$c2$$",
      "@CI|支架|kg|1.5",
      "@Cg|附件\\水表",
      "@A|LXS-20||个|1",
      "@CI|构件数量|个|1",
      "@F|1|1|个|1",
      "@S1|A(alpha)|个|1|c6$$",
      "@S2|*A(alpha)|个|1|c6$$",
      "@P|二区",
      "@Cg|管道\\给水管",
      "@A|DN25||m|16",
      "@CI|管道长度|m|16",
      "@F|2,5|2,5|m|16",
      "@S1|D|m|16|c3$$",
      "@S2|*D|m|16|c3$$",
      "@Cg|管道\\排水管",
      "@A|DN100|材质:PVC|m|3",
      "@CI|管道长度|m|3",
      "@F|1|1|m|3",
      "@S1|A(alpha)|m|3|c5$$",
      "@S2|B|m|3|c5$$",
      "@S3|*B|m|3|c5$$",
  };
  EXPECT_EQ(HzRows(5, {}, 1), expected);
  EXPECT_EQ(HzRows(5, {}, -1), expected);
  ShowSections({L"二区", L"一区"}, true);
  EXPECT_EQ(HzRows(5, {}, 1), expected);
}

TEST_F(ConsumptionSummary, EachLevelSplitsBySection) {
  Open(Building());
  ShowSections({L"二区"});
  Report::SNewCondition pipes;
  pipes.categories = {L"管道\\排水管"};
  Lines expected{"@P|二区", "@Cg|管道\\排水管", "@A|DN100|材质:PVC|m|3"};
  EXPECT_EQ(HzRows(0, pipes, 1), expected);
  expected.emplace_back("@CI|管道长度|m|3");
  EXPECT_EQ(HzRows(1, pipes, 1), expected);
  expected.emplace_back("@F|1|1|m|3");
  EXPECT_EQ(HzRows(2, pipes, 1), expected);
  expected.emplace_back("@S1|A(alpha)|m|3|c5$$");
  EXPECT_EQ(HzRows(3, pipes, 1), expected);
  expected.emplace_back("@S2|B|m|3|c5$$");
  EXPECT_EQ(HzRows(4, pipes, 1), expected);
  expected.emplace_back("@S3|*B|m|3|c5$$");
  EXPECT_EQ(HzRows(5, pipes, 1), expected);
}

TEST_F(ConsumptionSummary, ASectionWithoutRowsHasNoHeading) {
  Open(Building());
  ShowSections({L"一区", L"三区", L""});
  Report::SNewCondition meters;
  meters.categories = {L"附件"};
  EXPECT_EQ(HzRows(0, meters, 1), (Lines{"@P|一区", "@Cg|附件\\水表", "@A|LXS-20||个|1"}));
}

TEST_F(ConsumptionSummary, WithoutShownSectionsOnlyResultsOfNoSectionCount) {
  CTinyProject project;
  project.Hz().Row({.calItem = MainItem(2)}).Row({.sgd = L"", .calItem = MainItem(3)});
  Open(project);
  EXPECT_EQ(HzRows(0, {}, 1), (Lines{"@P|", "@Cg|管道\\给水管", "@A|DN25||m|3"}));
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5"}));
  // With the flag on and no section shown, none passes.
  ShowSections({}, true);
  EXPECT_EQ(HzRows(0, {}, 1), Lines{});
  EXPECT_EQ(HzRows(0), Lines{});
}

TEST_F(ConsumptionSummary, WithoutTheSplitShownSectionsCountByTheStatusFlagAlone) {
  Open(Building());
  Report::SNewCondition pipes;
  pipes.categories = {L"管道\\给水管"};
  ShowSections({L"二区", L"三区"});
  EXPECT_EQ(HzRows(1, pipes),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|21", "@CI|管道长度|m|21", "@CI|支架|kg|1.5"}));
  ShowSections({L"二区", L"三区"}, true);
  EXPECT_EQ(HzRows(1, pipes), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|16", "@CI|管道长度|m|16"}));
  ShowSections({L"二区", L"一区"}, true);
  EXPECT_EQ(HzRows(1, pipes),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|21", "@CI|管道长度|m|21", "@CI|支架|kg|1.5"}));
}

// Floors.

TEST_F(ConsumptionSummary, FloorsStandByHeightAndCountTheirOwnTexts) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"10", L"10"}, .calItem = MainItem(1)})
      .Row({.floor = {L"2", L"2"}, .calItem = MainItem(1)})
      .Row({.floor = {L"-1", L"-1"}, .calItem = MainItem(1)})
      .Row({.floor = {L"2，4", L"2，4"}, .calItem = MainItem(1)})
      .Row({.floor = {L"标准层", L"3/7/9"}, .calItem = MainItem(1)});
  Open(project);
  EXPECT_EQ(HzRows(2),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|9", "@CI|管道长度|m|9", "@F|标准层|标准层|m|3",
                   "@F|-1|-1|m|1", "@F|2，4|2，4|m|3", "@F|2|2|m|1", "@F|10|10|m|1"}));
}

TEST_F(ConsumptionSummary, OneFloorNodeHoldsResultsOfSeveralTexts) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"S", L"3,7"}, .component = L"c1", .calItem = MainItem(2)})
      .Row({.floor = {L"S", L"4"}, .component = L"c2", .calItem = MainItem(2)});
  Open(project);
  const Lines all{"@Cg|管道\\给水管", "@A|DN25||m|12", "@CI|管道长度|m|12", "@F|S|S|m|12",
                  "@S1|A|m|12|c1$$c2$$"};
  EXPECT_EQ(HzRows(3), all);
  Report::SNewCondition condition;
  condition.floors = {{L"S", L"S"}};
  EXPECT_EQ(HzRows(3, condition), all);
  // A pair of two texts takes a result of either text, for as many floors as the second says.
  condition.floors = {{L"S", L"4"}};
  EXPECT_EQ(HzRows(3, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2", "@CI|管道长度|m|2",
                                         "@F|S|4|m|2", "@S1|A|m|2|c2$$"}));
  condition.floors = {{L"S", L"3,7"}};
  EXPECT_EQ(HzRows(3, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|10", "@CI|管道长度|m|10",
                                         "@F|S|3,7|m|10", "@S1|A|m|10|c1$$"}));
  condition.floors = {{L"S", L"5"}};
  EXPECT_EQ(HzRows(3, condition), Lines{});
}

TEST_F(ConsumptionSummary, APairOfTwoTextsCountsTheFloorsOfTheSecond) {
  CTinyProject project;
  project.Hz().Row({.floor = {L"3,7", L"3,7"}, .calItem = MainItem(2)});
  Open(project);
  const auto quantityOf = [](const std::wstring& floor) {
    Report::SNewCondition condition;
    condition.floors = {{L"3,7", floor}};
    return HzRows(2, condition);
  };
  const auto expected = [](const std::string& quantity, const std::string& floor) {
    return Lines{"@Cg|管道\\给水管", "@A|DN25||m|" + quantity, "@CI|管道长度|m|" + quantity,
                 "@F|3,7|" + floor + "|m|" + quantity};
  };
  EXPECT_EQ(quantityOf(L"3,7"), expected("10", "3,7"));
  EXPECT_EQ(quantityOf(L"4"), expected("2", "4"));
  EXPECT_EQ(quantityOf(L"4,5"), expected("4", "4,5"));
  EXPECT_EQ(quantityOf(L"3/5/7"), expected("6", "3/5/7"));
  // No floor is a count like any other.
  EXPECT_EQ(quantityOf(L""), expected("0", ""));
}

TEST_F(ConsumptionSummary, PairsAddUpInListOrderAndStandByHeight) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"3,7", L"3,7"}, .component = L"c1", .calItem = MainItem(2)})
      .Row({.floor = {L"1", L"1"}, .component = L"c2", .calItem = MainItem(0.5)});
  Open(project);
  Report::SNewCondition condition;
  condition.allFloors = true;
  condition.floors = {{L"3,7", L"5"}, {L"8", L"8"}, {L"1", L"1"}, {L"3,7", L"4"}};
  EXPECT_EQ(HzRows(2, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|4.5", "@CI|管道长度|m|4.5",
                                         "@F|1|1|m|0.5", "@F|3,7|4|m|2", "@F|3,7|5|m|2"}));
  condition.floors = {{L"8", L"8"}};
  EXPECT_EQ(HzRows(2, condition), Lines{});
}

TEST_F(ConsumptionSummary, ARepeatedPairCountsTwiceUnderOneRow) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"3,7", L"3,7"}, .component = L"c1", .calItem = MainItem(2)})
      .Row({.floor = {L"1", L"1"}, .component = L"c2", .calItem = MainItem(0.5)});
  Open(project);
  Report::SNewCondition condition;
  condition.floors = {{L"3,7", L"4"}, {L"3,7", L"4"}};
  EXPECT_EQ(HzRows(3, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|4", "@CI|管道长度|m|4",
                                         "@F|3,7|4|m|2", "@S1|A|m|2|c1$$"}));
  // Two nodes that the filter shows as one floor: the first block stays.
  project.Hz().Row({.floor = {L"4楼", L"4"}, .component = L"c3", .calItem = MainItem(7)});
  Open(project);
  condition.floors = {{L"4楼", L"4"}, {L"3,7", L"4"}};
  EXPECT_EQ(HzRows(3, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|9", "@CI|管道长度|m|9",
                                         "@F|4楼|4|m|7", "@S1|A|m|7|c3$$"}));
}

TEST_F(ConsumptionSummary, FloorsWithoutNumberCollapseToTheFirst) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"b", L"1"}, .component = L"c1", .calItem = MainItem(2)})
      .Row({.floor = {L"a", L"1"}, .component = L"c2", .calItem = MainItem(3)})
      .Row({.floor = {L"", L"1"}, .component = L"c3", .calItem = MainItem(4)});
  Open(project);
  EXPECT_EQ(HzRows(2), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|9", "@CI|管道长度|m|9", "@F|||m|4"}));
  Report::SNewCondition condition;
  condition.floors = {{L"b", L"b"}, {L"a", L"a"}};
  EXPECT_EQ(HzRows(2, condition),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|m|5", "@F|b|b|m|2"}));
  // An empty first text is no picked floor, whatever the second says.
  condition.floors = {{L"", L"2,9"}};
  EXPECT_EQ(HzRows(2, condition),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|4", "@CI|管道长度|m|4", "@F||2,9|m|4"}));
}

TEST_F(ConsumptionSummary, AnEmptyFloorTextAddsNothingYetCounts) {
  CTinyProject project;
  project.Hz().Row({.floor = {L"1", L""}, .calItem = MainItem(-2)});
  Open(project);
  EXPECT_EQ(HzRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|管道长度|m|0", "@F|1|1|m|0",
                              "@S1|A|m|0|c1$$"}));
}

TEST_F(ConsumptionSummary, AHugeRangeIsCountedAndNotListed) {
  CTinyProject project;
  project.Hz().Row({.floor = {L"1,2000000000", L"1,2000000000"}, .calItem = MainItem(1)});
  Open(project);
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2e+09"}));
}

// Component kinds.

class ConsumptionSummaryKinds : public ConsumptionSummary {
 protected:
  ConsumptionSummaryKinds() {
    CTinyProject project;
    project.KindSort(kSpec, L"管道\\排水管", 1)
        .KindSort(kSpec, L"管道\\给水管", 2)
        .KindSort(kSpec, L"管道附件\\给水管", 3)
        .KindSort(kSpec, L"管道\\", 4)
        .KindSort(kSpec, L"附件\\水表", 5)
        .KindSort(kSpec, L"\\水表", 6);
    double quantity = 1;
    for (const STinyCategory& category :
         {STinyCategory{L"管道", L"给水管"}, STinyCategory{L"管道", L"排水管"},
          STinyCategory{L"管道附件", L"给水管"}, STinyCategory{L"管道", L""},
          STinyCategory{L"附件", L"水表"}, STinyCategory{L"", L"水表"}}) {
      project.Hz().Row({.category = category,
                        .calItem = {.name = L"数量", .unit = L"个", .quantity = quantity}});
      quantity += 1;
    }
    Open(project);
  }

  static Lines Kinds(const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    Lines kinds;
    for (const std::string& row : HzRows(1, condition)) {
      if (row.starts_with("@Cg")) {
        kinds.push_back(row.substr(4));
      }
    }
    return kinds;
  }
};

TEST_F(ConsumptionSummaryKinds, StandBySortNumber) {
  EXPECT_EQ(Kinds({}), (Lines{"管道\\排水管", "管道\\给水管", "管道附件\\给水管", "管道\\",
                              "附件\\水表", "\\水表"}));
}

TEST_F(ConsumptionSummaryKinds, AnEntryOfOnePartSelectsPathsThatBeginWithIt) {
  EXPECT_EQ(Kinds({L"管道"}),
            (Lines{"管道\\排水管", "管道\\给水管", "管道附件\\给水管", "管道\\"}));
  EXPECT_EQ(Kinds({L"管"}), (Lines{"管道\\排水管", "管道\\给水管", "管道附件\\给水管", "管道\\"}));
  EXPECT_EQ(Kinds({L"管道附"}), Lines{"管道附件\\给水管"});
  EXPECT_EQ(Kinds({L"水表"}), Lines{});
  EXPECT_EQ(Kinds({L"管道附件给水管"}), Lines{});
}

TEST_F(ConsumptionSummaryKinds, AnEntryOfTwoPartsSelectsThatPathAlone) {
  EXPECT_EQ(Kinds({L"管道\\给水管"}), Lines{"管道\\给水管"});
  EXPECT_EQ(Kinds({L"管道\\给水"}), Lines{});
  EXPECT_EQ(Kinds({L"管道\\"}), Lines{"管道\\"});
  EXPECT_EQ(Kinds({L"\\水表"}), Lines{"\\水表"});
  EXPECT_EQ(Kinds({L"\\"}), Lines{});
}

TEST_F(ConsumptionSummaryKinds, EntriesOfOtherShapesSelectNothing) {
  EXPECT_EQ(Kinds({L""}), Lines{});
  EXPECT_EQ(Kinds({L"管道\\给水管\\"}), Lines{});
  EXPECT_EQ(Kinds({L"管道\\\\给水管"}), Lines{});
  EXPECT_EQ(Kinds({L"管道\\给水管\\x\\y"}), Lines{});
  EXPECT_EQ(Kinds({L"", L"附件"}), Lines{"附件\\水表"});
}

TEST_F(ConsumptionSummaryKinds, OverlappingEntriesShowAKindOnceWithItsOwnQuantity) {
  Report::SNewCondition condition;
  condition.categories = {L"附", L"附件", L"附件\\水表", L"管道\\排水管"};
  EXPECT_EQ(HzRows(1, condition), (Lines{"@Cg|管道\\排水管", "@A|DN25||m|0", "@CI|数量|个|2",
                                         "@Cg|附件\\水表", "@A|DN25||m|0", "@CI|数量|个|5"}));
}

TEST_F(ConsumptionSummary, OfKindsWithOneSortNumberTheFirstMetStays) {
  CTinyProject project;
  project.KindSort(kSpec, L"管道\\z", 7).KindSort(kSpec, L"管道\\y", 7);
  project.Hz()
      .Row({.category = {L"管道", L"z"}, .calItem = MainItem(1)})
      .Row({.category = {L"管道", L"y"}, .calItem = MainItem(2)})
      .Row({.category = {L"阀", L"c"}, .calItem = MainItem(3)})
      .Row({.category = {L"阀", L"b"}, .calItem = MainItem(4)})
      .Row({.category = {L"", L""}, .attr = {L"", L""}, .calItem = MainItem(5)});
  Open(project);
  // Kinds that nothing numbers all have one number; "\" comes first in key order.
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\y", "@A|DN25||m|2", "@CI|管道长度|m|2", "@Cg|\\",
                              "@A|||m|0", "@CI|管道长度|m|5"}));
  // The entries of a filter are met in text order.
  Report::SNewCondition condition;
  condition.categories = {L"阀\\c", L"管道\\z", L"阀\\b"};
  EXPECT_EQ(HzRows(1, condition), (Lines{"@Cg|管道\\z", "@A|DN25||m|1", "@CI|管道长度|m|1",
                                         "@Cg|阀\\b", "@A|DN25||m|0", "@CI|管道长度|m|4"}));
  // A kind without rows does not take the place of the next.
  condition.categories.clear();
  EXPECT_EQ(HzRows(0, condition), (Lines{"@Cg|管道\\y", "@A|DN25||m|2"}));
}

TEST_F(ConsumptionSummary, AKindWithoutRowsLeavesItsSortNumberToTheNext) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"1", L"1"}, .category = {L"管道", L"a"}, .calItem = MainItem(1)})
      .Row({.floor = {L"2", L"2"}, .category = {L"管道", L"b"}, .calItem = MainItem(2)});
  Open(project);
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\a", "@A|DN25||m|1"}));
  Report::SNewCondition condition;
  condition.floors = {{L"2", L"2"}};
  EXPECT_EQ(HzRows(0, condition), (Lines{"@Cg|管道\\b", "@A|DN25||m|2"}));
}

// Attributes.

class ConsumptionSummaryAttributes : public ConsumptionSummary {
 protected:
  /// The attribute names in the order of the report.
  Lines Order(const std::vector<std::wstring>& names, const STinyCategory& category) {
    CTinyProject project;
    for (const std::wstring& name : names) {
      project.Hz().Row(
          {.category = category, .attr = {name, L""}, .calItem = {.name = L"数量", .quantity = 1}});
    }
    Open(project);
    Lines order;
    for (const std::string& row : HzRows(1)) {
      if (row.starts_with("@A")) {
        order.push_back(row.substr(3, row.find('|', 3) - 3));
      }
    }
    return order;
  }
  Lines Pipes(const std::vector<std::wstring>& names) { return Order(names, {L"管道", L"给水管"}); }
  Lines Others(const std::vector<std::wstring>& names) { return Order(names, {L"附件", L"水表"}); }
};

TEST_F(ConsumptionSummaryAttributes, StandInNaturalOrderInTheDirectionSetForPipes) {
  const std::vector<std::wstring> names{L"DN15", L"DN100", L"DN25", L"De20", L"DN"};
  EXPECT_EQ(Pipes(names), (Lines{"DN", "DN100", "DN25", "DN15", "De20"}));
  EXPECT_EQ(Others(names), (Lines{"DN", "DN15", "DN25", "DN100", "De20"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(Pipes(names), (Lines{"DN", "DN15", "DN25", "DN100", "De20"}));
  EXPECT_EQ(Others(names), (Lines{"DN", "DN15", "DN25", "DN100", "De20"}));
}

TEST_F(ConsumptionSummaryAttributes, TheDirectionIsReadOnEachRequest) {
  CTinyProject project;
  project.Hz()
      .Row({.attr = {L"DN15", L""}, .calItem = MainItem(1)})
      .Row({.attr = {L"DN20", L""}, .calItem = MainItem(2)});
  Open(project);
  const Lines down{"@Cg|管道\\给水管", "@A|DN20||m|2", "@A|DN15||m|1"};
  const Lines up{"@Cg|管道\\给水管", "@A|DN15||m|1", "@A|DN20||m|2"};
  EXPECT_EQ(HzRows(0), down);
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(HzRows(0), up);
  CResultConfig::Instance()->SetLineSortDowm(true);
  EXPECT_EQ(HzRows(0), down);
}

TEST_F(ConsumptionSummaryAttributes, BlanksDoNotTellNamesApart) {
  EXPECT_EQ(Others({L"DN25", L"DN 25", L"DN15"}), (Lines{"DN15", "DN 25"}));
}

TEST_F(ConsumptionSummaryAttributes, NumbersOfOneValueAndTwoTextsStandByTheWayTheyAreMet) {
  // Smaller first: each of the two goes ahead of the other, so the later one goes to the front.
  EXPECT_EQ(Others({L"DN1", L"DN1.0"}), (Lines{"DN1.0", "DN1"}));
  EXPECT_EQ(Others({L"DN1.00", L"DN1.0", L"DN1", L"DN2"}),
            (Lines{"DN1.00", "DN1.0", "DN1", "DN2"}));
  // Larger first: neither goes ahead, so they are equal and the first one stays.
  EXPECT_EQ(Pipes({L"DN1.0", L"DN1", L"DN2"}), (Lines{"DN2", "DN1"}));
}

TEST_F(ConsumptionSummaryAttributes, ChineseNamesStandByTheCodePage) {
  EXPECT_EQ(Others({L"一", L"阿", L"A"}), (Lines{"阿", "一", "A"}));
  ICodePage::Instance()->SetThreadCodePage(65001);
  EXPECT_EQ(Others({L"一", L"阿", L"A"}), (Lines{"一", "阿", "A"}));
}

TEST_F(ConsumptionSummary, AttributesOfOneNameAreOneAndShowTheFirstValue) {
  CTinyProject project;
  project.Hz()
      .Row({.attr = {L"DN25", L"材质:PPR"}, .calItem = MainItem(2)})
      .Row({.attr = {L"DN25", L"材质:钢"}, .calItem = MainItem(3)})
      .Row({.category = {L"管道", L"给水管"}, .attr = {L"", L""}, .calItem = MainItem(4)});
  Open(project);
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|||m|4", "@A|DN25|材质:PPR|m|5"}));
}

// Calculation items.

TEST_F(ConsumptionSummary, OtherItemsStandByNameAndUnitInTheCodePage) {
  CTinyProject project;
  const auto item = [](const wchar_t* name, const wchar_t* unit, double quantity) {
    return Row{.sysCode = L"A\\B\\C",
               .calItem = {.name = name, .unit = unit, .quantity = quantity}};
  };
  project.Hz()
      .Row(item(L"一", L"m", 1))
      .Row(item(L"阿", L"m2", 2))
      .Row(item(L"阿", L"kg", 3))
      .Row(item(kMain, L"m", 4))
      .Row(item(L"", L"", 5));
  Open(project);
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|4", "@CI|管道长度|m|4", "@CI|||5",
                              "@CI|阿|kg|3", "@CI|阿|m2|2", "@CI|一|m|1"}));
  // The main item alone opens.
  EXPECT_EQ(HzRows(5), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|4", "@CI|管道长度|m|4", "@F|1|1|m|4",
                              "@S1|A|m|4|c1$$", "@S2|B|m|4|c1$$", "@S3|C|m|4|c1$$", "@CI|||5",
                              "@CI|阿|kg|3", "@CI|阿|m2|2", "@CI|一|m|1"}));
}

TEST_F(ConsumptionSummary, ItemNamesThatTheCodePageCannotTellApartAreOne) {
  CTinyProject project;
  project.Hz()
      .Row({.calItem = {.name = L"\U0001F600", .unit = L"z", .quantity = 1}})
      .Row({.calItem = {.name = L"\U0001F601", .unit = L"a", .quantity = 2}});
  Open(project);
  // Both are "?" there; the units are not looked at.
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|\U0001F600|z|1"}));
}

TEST_F(ConsumptionSummary, AnAttributeWithoutMainItemShowsZeroMetresFromLevel1) {
  CTinyProject project;
  project.Hz().Row({.calItem = {.name = L"支架", .unit = L"kg", .quantity = 1.5}});
  Open(project);
  EXPECT_EQ(HzRows(0), Lines{});
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|支架|kg|1.5"}));
}

TEST_F(ConsumptionSummary, AMainItemThatTheFilterDropsStillGivesItsUnit) {
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"1", L"1"}, .calItem = {.name = kMain, .unit = L"dm", .quantity = 2}})
      .Row({.floor = {L"2", L"2"}, .calItem = {.name = L"支架", .unit = L"kg", .quantity = 1.5}});
  Open(project);
  Report::SNewCondition condition;
  condition.floors = {{L"2", L"2"}};
  EXPECT_EQ(HzRows(1, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||dm|0", "@CI|支架|kg|1.5"}));
  EXPECT_EQ(HzRows(0, condition), Lines{});
}

TEST_F(ConsumptionSummary, MainItemsOfSeveralUnitsAddUpUnderTheLastUnit) {
  CTinyProject project;
  project.Hz()
      .Row({.calItem = {.name = kMain, .unit = L"m", .quantity = 2}})
      .Row({.calItem = {.name = kMain, .unit = L"km", .quantity = 3}})
      .Row({.floor = {L"2", L"2"}, .calItem = {.name = kMain, .unit = L"z", .quantity = 4}});
  Open(project);
  EXPECT_EQ(HzRows(2),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||z|9", "@CI|管道长度|km|3", "@F|1|1|km|3",
                   "@CI|管道长度|m|2", "@F|1|1|m|2", "@CI|管道长度|z|4", "@F|2|2|z|4"}));
  Report::SNewCondition condition;
  condition.floors = {{L"1", L"1"}};
  EXPECT_EQ(HzRows(1, condition),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||z|5", "@CI|管道长度|km|3", "@CI|管道长度|m|2"}));
}

TEST_F(ConsumptionSummary, WithoutAMainItemInTheTablesTheItemWithoutNameIsTheMainOne) {
  CTinyProject project;
  project.Hz()
      .Row({.spec = L"园林", .calItem = {.name = L"", .unit = L"株", .quantity = 2}})
      .Row({.spec = L"园林", .calItem = {.name = kMain, .unit = L"m", .quantity = 3}});
  Open(project);
  EXPECT_EQ(HzRows(2, {}, 0, L"园林"), (Lines{"@Cg|管道\\给水管", "@A|DN25||株|2", "@CI||株|2",
                                              "@F|1|1|株|2", "@CI|管道长度|m|3"}));
}

// System codes.

class ConsumptionSummarySysCodes : public ConsumptionSummary {
 protected:
  ConsumptionSummarySysCodes() {
    CTinyProject project;
    project.SysCodeSort(kSpec, L"A", 2)
        .SysCodeSort(kSpec, L"A&X", 2)
        .SysCodeSort(kSpec, L"A&Y", 1)
        .SysCodeSort(kSpec, L"D", 1);
    project.Hz()
        .Row({.component = L"c1", .sysCode = L"A\\X\\P", .calItem = MainItem(1)})
        .Row({.component = L"c2", .sysCode = L"A\\Y\\Q", .calItem = MainItem(2)})
        .Row({.component = L"c3", .sysCode = L"D\\X\\Q", .calItem = MainItem(4)})
        .Row({.component = L"c4", .sysCode = L"D", .calItem = MainItem(8)});
    Open(project);
  }

  static Lines Codes(const std::vector<std::wstring>& sysCodes, int level = 5) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    Lines rows = HzRows(level, condition);
    // Kind, attribute, item and floor.
    rows.erase(rows.begin(), rows.begin() + (rows.size() < 3 ? 0 : 3));
    return rows;
  }
};

TEST_F(ConsumptionSummarySysCodes, StandBySortNumberWithReferencesInKeyOrder) {
  EXPECT_EQ(Codes({}),
            (Lines{"@F|1|1|m|15", "@S1|D|m|12|c4$$c3$$", "@S2|*D|m|8|c4$$", "@S2|X|m|4|c3$$",
                   "@S3|Q|m|4|c3$$", "@S1|A|m|3|c1$$c2$$", "@S2|Y|m|2|c2$$", "@S3|Q|m|2|c2$$",
                   "@S2|X|m|1|c1$$", "@S3|P|m|1|c1$$"}));
}

TEST_F(ConsumptionSummarySysCodes, AFilterOfTheFirstLevelTakesAllBelow) {
  EXPECT_EQ(Codes({L"A"}), (Lines{"@F|1|1|m|3", "@S1|A|m|3|c1$$c2$$", "@S2|Y|m|2|c2$$",
                                  "@S3|Q|m|2|c2$$", "@S2|X|m|1|c1$$", "@S3|P|m|1|c1$$"}));
  EXPECT_EQ(Codes({L"E"}), Lines{});
}

TEST_F(ConsumptionSummarySysCodes, AFilterOfTheSecondLevelCutsSubtreesAndSums) {
  EXPECT_EQ(Codes({L"A\\X"}),
            (Lines{"@F|1|1|m|1", "@S1|A|m|1|c1$$", "@S2|X|m|1|c1$$", "@S3|P|m|1|c1$$"}));
  EXPECT_EQ(Codes({L"A\\X"}, 2), Lines{"@F|1|1|m|1"});
  // The sum of level 0 shrinks as well.
  Report::SNewCondition condition;
  condition.sysCodes = {L"A\\X"};
  EXPECT_EQ(HzRows(0, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|1"}));
}

TEST_F(ConsumptionSummarySysCodes, EachLevelIsFilteredByNameWhateverStandsAbove) {
  // D has no listed child of its own, but "X" is listed on the second level.
  EXPECT_EQ(Codes({L"A\\X", L"D"}),
            (Lines{"@F|1|1|m|5", "@S1|D|m|4|c3$$", "@S2|X|m|4|c3$$", "@S3|Q|m|4|c3$$",
                   "@S1|A|m|1|c1$$", "@S2|X|m|1|c1$$", "@S3|P|m|1|c1$$"}));
  EXPECT_EQ(Codes({L"A\\X\\Q", L"D"}),
            (Lines{"@F|1|1|m|4", "@S1|D|m|4|c3$$", "@S2|X|m|4|c3$$", "@S3|Q|m|4|c3$$"}));
  EXPECT_EQ(Codes({L"D\\*D"}), (Lines{"@F|1|1|m|8", "@S1|D|m|8|c4$$", "@S2|*D|m|8|c4$$"}));
  EXPECT_EQ(Codes({L"D\\X\\Q\\more"}),
            (Lines{"@F|1|1|m|4", "@S1|D|m|4|c3$$", "@S2|X|m|4|c3$$", "@S3|Q|m|4|c3$$"}));
  // A path of no names filters nothing.
  EXPECT_EQ(Codes({L""}, 2), Lines{"@F|1|1|m|15"});
}

TEST_F(ConsumptionSummarySysCodes, SeveralChosenBelowOneCodeAddUpAsTheTreeStands) {
  // Rows go by sort number, sums and references by name.
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A&Y", 1)
      .SysCodeSort(kSpec, L"A&X", 2)
      .SysCodeSort(kSpec, L"A&XX", 3);
  project.Hz()
      .Row({.component = L"c1", .sysCode = L"A\\X", .calItem = MainItem(1e16)})
      .Row({.component = L"c2", .sysCode = L"A\\Y", .calItem = MainItem(-1e16)})
      .Row({.component = L"c3", .sysCode = L"A\\XX", .calItem = MainItem(1)});
  Open(project);
  EXPECT_EQ(
      Codes({L"A\\X", L"A\\XX", L"A\\Y"}),
      (Lines{"@F|1|1|m|0", "@S1|A|m|0|c1$$c3$$c2$$", "@S2|Y|m|-1e+16|c2$$", "@S3|*Y|m|-1e+16|c2$$",
             "@S2|X|m|1e+16|c1$$", "@S3|*X|m|1e+16|c1$$", "@S2|XX|m|1|c3$$", "@S3|*XX|m|1|c3$$"}));
  EXPECT_EQ(Codes({L"A\\X", L"A\\XX"}, 3), (Lines{"@F|1|1|m|1e+16", "@S1|A|m|1e+16|c1$$c3$$"}));
}

TEST_F(ConsumptionSummarySysCodes, ChosenOnSeveralFloorsAddUpAsTheTreeStands) {
  // Rows go by height, sums by the texts: 1, 10, 2.
  CTinyProject project;
  project.Hz()
      .Row({.floor = {L"1", L"1"}, .sysCode = L"A\\X", .calItem = MainItem(1e16)})
      .Row({.floor = {L"10", L"10"}, .sysCode = L"A\\X", .calItem = MainItem(1)})
      .Row({.floor = {L"2", L"2"}, .sysCode = L"A\\X", .calItem = MainItem(-1e16)});
  Open(project);
  for (const wchar_t* code : {L"A", L"A\\X"}) {
    Report::SNewCondition condition;
    condition.sysCodes = {code};
    EXPECT_EQ(HzRows(2, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|管道长度|m|0",
                                           "@F|1|1|m|1e+16", "@F|2|2|m|-1e+16", "@F|10|10|m|1"}));
  }
}

TEST_F(ConsumptionSummarySysCodes, ACodeAboveTheLastLevelOfTheFilterKeepsItsOwnResults) {
  CTinyProject project;
  project.Hz()
      .Row({.component = L"c1", .sysCode = L"A", .calItem = MainItem(-0.0)})
      .Row({.component = L"c2", .sysCode = L"A\\*A\\B", .calItem = MainItem(2)});
  Open(project);
  EXPECT_EQ(Codes({L"A\\*A\\B"}),
            (Lines{"@F|1|1|m|2", "@S1|A|m|2|c2$$c1$$", "@S2|*A|m|2|c2$$c1$$", "@S3|B|m|2|c2$$"}));
  // A sum begins with a zero that has no sign.
  EXPECT_EQ(Codes({L"A\\*A\\D"}), (Lines{"@F|1|1|m|0", "@S1|A|m|0|c1$$", "@S2|*A|m|0|c1$$"}));
  EXPECT_EQ(Codes({L"A\\*A\\D"}, std::numeric_limits<int>::min()), Lines{});
}

TEST_F(ConsumptionSummarySysCodes, OfFloorsOfOneHeightTheFirstWithAChosenCodeShows) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A", 1).SysCodeSort(kSpec, L"B", 2).SysCodeSort(kSpec, L"C", 3);
  project.Hz()
      .Row({.floor = {L"1", L"1"}, .component = L"c1", .sysCode = L"A", .calItem = MainItem(1)})
      .Row({.floor = {L"1a", L"1"}, .component = L"c2", .sysCode = L"B", .calItem = MainItem(2)})
      .Row({.floor = {L"1", L"1"}, .component = L"c3", .sysCode = L"C", .calItem = MainItem(4)})
      .Row({.floor = {L"1a", L"1"}, .component = L"c4", .sysCode = L"C", .calItem = MainItem(8)});
  Open(project);
  EXPECT_EQ(Codes({L"C"}), (Lines{"@F|1|1|m|4", "@S1|C|m|4|c3$$", "@S2|*C|m|4|c3$$"}));
  EXPECT_EQ(Codes({L"A"}), (Lines{"@F|1|1|m|1", "@S1|A|m|1|c1$$", "@S2|*A|m|1|c1$$"}));
  EXPECT_EQ(Codes({L"B"}), (Lines{"@F|1a|1a|m|2", "@S1|B|m|2|c2$$", "@S2|*B|m|2|c2$$"}));
}

TEST_F(ConsumptionSummarySysCodes, OfCodesWithOneSortNumberTheFirstChosenShows) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A&X", 1).SysCodeSort(kSpec, L"A&Y", 1);
  project.Hz()
      .Row({.component = L"c1", .sysCode = L"A\\X", .calItem = MainItem(1)})
      .Row({.component = L"c2", .sysCode = L"A\\Y", .calItem = MainItem(2)});
  Open(project);
  EXPECT_EQ(Codes({}),
            (Lines{"@F|1|1|m|3", "@S1|A|m|3|c1$$c2$$", "@S2|X|m|1|c1$$", "@S3|*X|m|1|c1$$"}));
  EXPECT_EQ(Codes({L"A\\Y"}),
            (Lines{"@F|1|1|m|2", "@S1|A|m|2|c2$$", "@S2|Y|m|2|c2$$", "@S3|*Y|m|2|c2$$"}));
}

TEST_F(ConsumptionSummary, OfFirstCodesWithOneSortNumberOnlyTheGreatestNameIsWalked) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A", 1).SysCodeSort(kSpec, L"B", 1);
  project.Hz()
      .Row({.component = L"c1", .sysCode = L"B", .calItem = MainItem(1)})
      .Row({.component = L"c2", .sysCode = L"A", .calItem = MainItem(2)})
      .Row({.component = L"c3", .sysCode = L"无号乙", .calItem = MainItem(4)})
      .Row({.component = L"c4", .sysCode = L"无号丙", .calItem = MainItem(8)});
  Open(project);
  // Codes that nothing numbers share a number too. 丙 U+4E19 goes before 乙 U+4E59.
  EXPECT_EQ(HzRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|m|5", "@F|1|1|m|5",
                              "@S1|B|m|1|c1$$", "@S1|无号乙|m|4|c3$$"}));
  // The choice comes before the filter.
  Report::SNewCondition condition;
  condition.sysCodes = {L"A", L"无号丙"};
  EXPECT_EQ(HzRows(3, condition), Lines{});
}

TEST_F(ConsumptionSummary, OfDeeperCodesWithOneSortNumberAllCountAndTheFirstShows) {
  CTinyProject project;
  project.Hz()
      .Row({.component = L"c1", .sysCode = L"A\\z", .calItem = MainItem(1)})
      .Row({.component = L"c2", .sysCode = L"A\\y", .calItem = MainItem(2)})
      .Row({.component = L"c3", .sysCode = L"A\\y\\n", .calItem = MainItem(4)})
      .Row({.component = L"c4", .sysCode = L"A\\y\\m", .calItem = MainItem(8)});
  Open(project);
  EXPECT_EQ(HzRows(5),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|15", "@CI|管道长度|m|15", "@F|1|1|m|15",
                   "@S1|A|m|15|c2$$c4$$c3$$c1$$", "@S2|y|m|14|c2$$c4$$c3$$", "@S3|*y|m|2|c2$$"}));
}

TEST_F(ConsumptionSummary, ResultsFoldBySectionFloorExpressionAndPrintedQuantity) {
  CTinyProject project;
  const auto item = [](double quantity, const wchar_t* expression) {
    return STinyCalItem{.name = kMain, .quantity = quantity, .expression = expression};
  };
  project.Hz()
      .Row({.component = L"c1", .calItem = item(1, L"e")})
      .Row({.component = L"c2", .calItem = item(1, L"e")})
      .Row({.component = L"c3", .calItem = item(1, L"f")})
      .Row({.component = L"c4", .calItem = item(2, L"e")})
      .Row({.component = L"c5", .calItem = item(1.0000001, L"e")})
      .Row({.component = L"", .calItem = item(1, L"e")});
  Open(project);
  // c5 prints as 1 and joins c1; an empty reference counts and is not listed.
  EXPECT_EQ(HzRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|7", "@CI|管道长度|m|7", "@F|1|1|m|7",
                              "@S1|A|m|7|c1$c2$c5$$c4$$c3$$"}));
}

TEST_F(ConsumptionSummary, QuantitiesPrintWithSixDigits) {
  CTinyProject project;
  const auto pipe = [](const wchar_t* name, double quantity) {
    return Row{.attr = {name, L""}, .calItem = MainItem(quantity)};
  };
  project.Hz()
      .Row(pipe(L"a", 1234567))
      .Row(pipe(L"b", 0.1234567))
      .Row(pipe(L"c", -0.5))
      .Row(pipe(L"d", std::numeric_limits<double>::quiet_NaN()))
      .Row(pipe(L"e", std::numeric_limits<double>::infinity()))
      .Row(pipe(L"f", 1e-7));
  Open(project);
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|a||m|1.23457e+06", "@A|b||m|0.123457",
                              "@A|c||m|-0.5", "@A|d||m|nan", "@A|e||m|inf", "@A|f||m|1e-07"}));
}

// The fold.

TEST_F(ConsumptionSummary, ARowWithoutSystemCodeIsLeftOut) {
  CTinyProject project;
  project.Hz()
      .Row({.sysCode = L"", .calItem = MainItem(1)})
      .Row({.calItem = MainItem(2)})
      .Row({.attr = {L"DN9", L""}, .sysCode = L"", .calItem = MainItem(4)});
  Open(project);
  EXPECT_EQ(HzRows(2),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2", "@CI|管道长度|m|2", "@F|1|1|m|2"}));
}

TEST_F(ConsumptionSummary, AnEmptyProjectHasNoRows) {
  EXPECT_EQ(HzRows(5), Lines{});
}

TEST_F(ConsumptionSummary, EachBadIndexFailsTheFoldEachTime) {
  using KorDMRec::SKorDMResultRow;
  for (const auto index :
       {&SKorDMResultRow::sgd, &SKorDMResultRow::floor, &SKorDMResultRow::component,
        &SKorDMResultRow::spec, &SKorDMResultRow::category, &SKorDMResultRow::attr,
        &SKorDMResultRow::sysCode, &SKorDMResultRow::calItem}) {
    for (const int bad : {-1, 1, std::numeric_limits<int>::max()}) {
      CTinyProject project;
      // The system code is empty: the look-ups alone would end at that row without a failure.
      project.Hz().Row({.sysCode = L"", .calItem = MainItem(1)});
      project.Hz().Data().rows[0].*index = bad;
      Open(project);
      EXPECT_THROW(Hz(), std::out_of_range);
      EXPECT_THROW(Hz(), std::out_of_range);
    }
  }
  CTinyProject project;
  project.Hz().Row({.calItem = MainItem(1)});
  project.Hz().Data().rows[0].reserved = -1;
  Open(project);
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|1"}));
}

TEST_F(ConsumptionSummary, ACodeOfTenThousandLevelsIsWalked) {
  std::wstring code = L"A";
  for (int level = 1; level < 10000; ++level) {
    code += L"\\A";
  }
  CTinyProject project;
  project.Hz().Row({.sysCode = code, .calItem = MainItem(2)});
  Open(project);
  EXPECT_EQ(HzRows(6), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2", "@CI|管道长度|m|2", "@F|1|1|m|2",
                              "@S1|A|m|2|c1$$", "@S2|A|m|2|c1$$", "@S3|A|m|2|c1$$"}));
}

}  // namespace
