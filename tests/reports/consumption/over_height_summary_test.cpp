#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "reports/consumption/xhl_cg_hz_report.h"
#include "reports/consumption/xhl_hz_report.h"
#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::EDbRead;
using tally_test::Rows;
using tally_test::STinyCalItem;
using tally_test::TTinyRow;
using Row = TTinyRow<STinyCalItem>;
using Lines = std::vector<std::string>;

constexpr const wchar_t* kSpec = L"给排水";
constexpr const wchar_t* kMain = L"管道长度";

class OverHeightSummary : public tally_test::TallyTest {
 protected:
  static CXhlCgHzReport& Cg() { return GetReport<CXhlCgHzReport>(Report::ReportXhlCgHz); }

  static Lines CgRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0) {
    Report::CellArray cells;
    Cg().GetCgHzData(cells, kSpec, condition, level, bySgd);
    return Rows(cells);
  }
  static Lines HzRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0) {
    Report::CellArray cells;
    GetReport<CXhlHzReport>(Report::ReportXhlHz)
        .GetXhlHzData(cells, kSpec, condition, level, bySgd);
    return Rows(cells);
  }

  static STinyCalItem MainItem(double quantity) {
    return {.name = kMain, .text3 = L"t3", .text4 = L"t4", .quantity = quantity};
  }
  static STinyCalItem OtherItem(double quantity) {
    return {.name = L"支架", .unit = L"kg", .text3 = L"u3", .text4 = L"", .quantity = quantity};
  }

  /// A project that holds the same rows for both reports.
  static CTinyProject Both(CTinyProject project, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      project.Hz().Row(row);
      project.Cg().Row(row);
    }
    return project;
  }

  static CTinyProject Building() {
    CTinyProject project;
    project.KindSort(kSpec, L"管道\\给水管", 2)
        .KindSort(kSpec, L"附件\\水表", 1)
        .SysCodeSort(kSpec, L"D", 1)
        .SysCodeSort(kSpec, L"A", 2, L"alpha")
        .SysCodeSort(kSpec, L"A&B&C", 3, L"gamma");
    return Both(project, {{.component = L"c1", .sysCode = L"A\\B\\C", .calItem = MainItem(2.5)},
                          {.component = L"c2", .sysCode = L"A\\B\\C", .calItem = MainItem(2.5)},
                          {.sgd = L"二区",
                           .floor = {L"2,5", L"2,5"},
                           .component = L"c3",
                           .sysCode = L"D",
                           .calItem = MainItem(4)},
                          {.component = L"c4", .sysCode = L"D", .calItem = OtherItem(1.5)},
                          {.sgd = L"二区",
                           .component = L"c5",
                           .category = {L"附件", L"水表"},
                           .attr = {L"LXS-20", L"材质:铜"},
                           .sysCode = L"A",
                           .calItem = OtherItem(3)}});
  }
};

// Levels.

TEST_F(OverHeightSummary, Level0ShowsAttributesWithoutMainItemToo) {
  Open(Building());
  EXPECT_EQ(CgRows(0), (Lines{"@Cg|附件\\水表", "@A|LXS-20|材质:铜|m|0", "@Cg|管道\\给水管",
                              "@A|DN25||m|21"}));
}

TEST_F(OverHeightSummary, Level1AddsItemsWithTheirTwoTexts) {
  Open(Building());
  const Lines expected{
      "@Cg|附件\\水表", "@A|LXS-20|材质:铜|m|0",   "@CI|支架|u3||kg|3",   "@Cg|管道\\给水管",
      "@A|DN25||m|21",  "@CI|管道长度|t3|t4|m|21", "@CI|支架|u3||kg|1.5",
  };
  EXPECT_EQ(CgRows(1), expected);
  EXPECT_EQ(CgRows(-1), expected);
}

TEST_F(OverHeightSummary, Level2AddsFloorsUnderEveryItem) {
  Open(Building());
  EXPECT_EQ(CgRows(2), (Lines{
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|m|0",
                           "@CI|支架|u3||kg|3",
                           "@F|1|1|kg|3",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|21",
                           "@CI|管道长度|t3|t4|m|21",
                           "@F|1|1|m|5",
                           "@F|2,5|2,5|m|16",
                           "@CI|支架|u3||kg|1.5",
                           "@F|1|1|kg|1.5",
                       }));
}

TEST_F(OverHeightSummary, Level3AddsFirstSystemCodes) {
  Open(Building());
  EXPECT_EQ(CgRows(3), (Lines{
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|m|0",
                           "@CI|支架|u3||kg|3",
                           "@F|1|1|kg|3",
                           "@S1|A(alpha)|kg|3|$c5$",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|21",
                           "@CI|管道长度|t3|t4|m|21",
                           "@F|1|1|m|5",
                           "@S1|A(alpha)|m|5|$c1$c2$",
                           "@F|2,5|2,5|m|16",
                           "@S1|D|m|16|$c3$",
                           "@CI|支架|u3||kg|1.5",
                           "@F|1|1|kg|1.5",
                           "@S1|D|kg|1.5|$c4$",
                       }));
}

TEST_F(OverHeightSummary, Level4AddsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(CgRows(4), (Lines{
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|m|0",
                           "@CI|支架|u3||kg|3",
                           "@F|1|1|kg|3",
                           "@S1|A(alpha)|kg|3|$c5$",
                           "@S2|*A(alpha)|kg|3|$c5$",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|21",
                           "@CI|管道长度|t3|t4|m|21",
                           "@F|1|1|m|5",
                           "@S1|A(alpha)|m|5|$c1$c2$",
                           "@S2|B|m|5|$c1$c2$",
                           "@F|2,5|2,5|m|16",
                           "@S1|D|m|16|$c3$",
                           "@S2|*D|m|16|$c3$",
                           "@CI|支架|u3||kg|1.5",
                           "@F|1|1|kg|1.5",
                           "@S1|D|kg|1.5|$c4$",
                           "@S2|*D|kg|1.5|$c4$",
                       }));
}

TEST_F(OverHeightSummary, Level5AddsThirdSystemCodesAndIsTheDeepest) {
  Open(Building());
  const Lines expected{
      "@Cg|附件\\水表",           "@A|LXS-20|材质:铜|m|0",
      "@CI|支架|u3||kg|3",        "@F|1|1|kg|3",
      "@S1|A(alpha)|kg|3|$c5$",   "@S2|*A(alpha)|kg|3|$c5$",
      "@Cg|管道\\给水管",         "@A|DN25||m|21",
      "@CI|管道长度|t3|t4|m|21",  "@F|1|1|m|5",
      "@S1|A(alpha)|m|5|$c1$c2$", "@S2|B|m|5|$c1$c2$",
      "@S3|C(gamma)|m|5|$c1$c2$", "@F|2,5|2,5|m|16",
      "@S1|D|m|16|$c3$",          "@S2|*D|m|16|$c3$",
      "@CI|支架|u3||kg|1.5",      "@F|1|1|kg|1.5",
      "@S1|D|kg|1.5|$c4$",        "@S2|*D|kg|1.5|$c4$",
  };
  EXPECT_EQ(CgRows(5), expected);
  EXPECT_EQ(CgRows(6), expected);
}

TEST_F(OverHeightSummary, CellsStandOneByOne) {
  CTinyProject project;
  project.Cg().Row({.attr = {L"DN25", L"材质:PPR"}, .calItem = MainItem(2)});
  Open(project);
  CReportStatusMng::Instance()->SetDispSgd({L"一区"});
  Report::CellArray cells;
  Cg().GetCgHzData(cells, kSpec, {}, 3, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"@P",  L"一区", L"@Cg",      L"管道\\给水管",
                                      L"@A",  L"DN25", L"材质:PPR", L"m",
                                      L"2",   L"@CI",  L"管道长度", L"t3",
                                      L"t4",  L"m",    L"2",        L"@F",
                                      L"1",   L"1",    L"m",        L"2",
                                      L"@S1", L"A",    L"m",        L"2",
                                      L"$c1$"}));
}

// The points in which it differs from the consumption summary, on the same data.

TEST_F(OverHeightSummary, OtherItemsOpenInFullWhereTheConsumptionSummaryHasOneRow) {
  Open(Both({}, {{.component = L"c1", .calItem = OtherItem(1.5)},
                 {.floor = {L"2", L"2"}, .component = L"c2", .calItem = OtherItem(2)}}));
  EXPECT_EQ(HzRows(5), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|支架|kg|3.5"}));
  EXPECT_EQ(CgRows(5), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|支架|u3||kg|3.5",
                              "@F|1|1|kg|1.5", "@S1|A|kg|1.5|$c1$", "@S2|*A|kg|1.5|$c1$",
                              "@F|2|2|kg|2", "@S1|A|kg|2|$c2$", "@S2|*A|kg|2|$c2$"}));
}

TEST_F(OverHeightSummary, AnAttributeWithoutMainItemStaysAtLevel0) {
  Open(Both({}, {{.calItem = OtherItem(1.5)}}));
  EXPECT_EQ(HzRows(0), Lines{});
  EXPECT_EQ(CgRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0"}));
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|支架|kg|1.5"}));
  EXPECT_EQ(CgRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|支架|u3||kg|1.5"}));
}

TEST_F(OverHeightSummary, ItemRowsShowTheTwoTextsOfTheFirstRecord) {
  Open(Both({}, {{.calItem = {.name = kMain, .text3 = L"a", .text4 = L"b", .quantity = 1}},
                 {.calItem = {.name = kMain, .text3 = L"c", .text4 = L"d", .quantity = 2}}}));
  EXPECT_EQ(HzRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|3", "@CI|管道长度|m|3"}));
  EXPECT_EQ(CgRows(1), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|3", "@CI|管道长度|a|b|m|3"}));
}

TEST_F(OverHeightSummary, FirstCodesOfOneSortNumberAllCountAndShowByName) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A", 9).SysCodeSort(kSpec, L"B", 1).SysCodeSort(kSpec, L"C", 1);
  Open(Both(project, {{.component = L"c1", .sysCode = L"C", .calItem = MainItem(1)},
                      {.component = L"c2", .sysCode = L"A", .calItem = MainItem(2)},
                      {.component = L"c3", .sysCode = L"B", .calItem = MainItem(4)}}));
  EXPECT_EQ(HzRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|3", "@CI|管道长度|m|3", "@F|1|1|m|3",
                              "@S1|C|m|1|c1$$", "@S1|A|m|2|c2$$"}));
  EXPECT_EQ(CgRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|7", "@CI|管道长度|t3|t4|m|7",
                              "@F|1|1|m|7", "@S1|A|m|2|$c2$", "@S1|B|m|4|$c3$", "@S1|C|m|1|$c1$"}));
}

TEST_F(OverHeightSummary, SecondCodesOfOneSortNumberCollapseInBoth) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A&B", 1).SysCodeSort(kSpec, L"A&C", 1);
  Open(Both(project, {{.component = L"c1", .sysCode = L"A\\C", .calItem = MainItem(1)},
                      {.component = L"c2", .sysCode = L"A\\B", .calItem = MainItem(4)}}));
  EXPECT_EQ(HzRows(4), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|m|5", "@F|1|1|m|5",
                              "@S1|A|m|5|c2$$c1$$", "@S2|B|m|4|c2$$"}));
  EXPECT_EQ(CgRows(4), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|t3|t4|m|5",
                              "@F|1|1|m|5", "@S1|A|m|5|$c2$$c1$", "@S2|B|m|4|$c2$"}));
}

TEST_F(OverHeightSummary, FloorRowsShowTheDrawingFloorInTheOrderOfTheSelectedOnes) {
  Open(Both({}, {{.floor = {L"3,7", L"3,7"}, .component = L"c1", .calItem = MainItem(2)},
                 {.floor = {L"1", L"1"}, .component = L"c2", .calItem = MainItem(0.5)}}));
  Report::SNewCondition condition;
  condition.floors = {{L"3,7", L"5,6"}, {L"1", L"1"}, {L"3,7", L"4"}};
  EXPECT_EQ(HzRows(2, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|6.5", "@CI|管道长度|m|6.5",
                                         "@F|1|1|m|0.5", "@F|3,7|4|m|2", "@F|3,7|5,6|m|4"}));
  EXPECT_EQ(CgRows(2, condition),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|6.5", "@CI|管道长度|t3|t4|m|6.5", "@F|1|1|m|0.5",
                   "@F|3,7|3,7|m|2", "@F|3,7|3,7|m|4"}));
}

TEST_F(OverHeightSummary, TheExtraMarkOfAResultStandsAheadOfItsReferences) {
  Open(Both({}, {{.component = L"a", .calItem = MainItem(1)},
                 {.component = L"b", .calItem = MainItem(1)},
                 {.component = L"c", .calItem = MainItem(2)},
                 {.component = L"", .calItem = MainItem(3)}}));
  EXPECT_EQ(HzRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|7", "@CI|管道长度|m|7", "@F|1|1|m|7",
                              "@S1|A|m|7|a$b$$c$$$"}));
  EXPECT_EQ(CgRows(3), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|7", "@CI|管道长度|t3|t4|m|7",
                              "@F|1|1|m|7", "@S1|A|m|7|$a$b$$c$$"}));
}

TEST_F(OverHeightSummary, EachReportReadsItsOwnSet) {
  CTinyProject project;
  project.Hz().Row({.calItem = MainItem(1)});
  project.Cg().Row({.calItem = MainItem(2)});
  Open(project);
  db->ForgetReads();
  EXPECT_EQ(CgRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2"}));
  EXPECT_EQ(db->reads, (std::vector<EDbRead>{EDbRead::Cg}));
  EXPECT_EQ(HzRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|1"}));
}

// What both do alike, for this report's own operations.

TEST_F(OverHeightSummary, OtherItemsStandByNameAndUnitBehindTheMainOne) {
  CTinyProject project;
  const auto item = [](const wchar_t* name, const wchar_t* unit, double quantity) {
    return Row{.calItem = {.name = name, .unit = unit, .quantity = quantity}};
  };
  project.Cg()
      .Row(item(L"一", L"m", 1))
      .Row(item(L"阿", L"m2", 2))
      .Row(item(L"阿", L"kg", 3))
      .Row(item(kMain, L"m", 4));
  Open(project);
  EXPECT_EQ(CgRows(2), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|4", "@CI|管道长度|||m|4",
                              "@F|1|1|m|4", "@CI|阿|||kg|3", "@F|1|1|kg|3", "@CI|阿|||m2|2",
                              "@F|1|1|m2|2", "@CI|一|||m|1", "@F|1|1|m|1"}));
}

TEST_F(OverHeightSummary, ItemNamesThatTheCodePageCannotTellApartAreOneBlock) {
  CTinyProject project;
  project.Cg()
      .Row({.calItem = {.name = L"\U0001F600", .unit = L"z", .quantity = 1}})
      .Row({.calItem = {.name = L"\U0001F601", .unit = L"a", .quantity = 2}});
  Open(project);
  EXPECT_EQ(CgRows(2),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|0", "@CI|\U0001F600|||z|1", "@F|1|1|z|1"}));
}

TEST_F(OverHeightSummary, AttributesStandInTheDirectionSetForPipes) {
  CTinyProject project;
  for (const wchar_t* name : {L"DN15", L"DN100", L"DN25"}) {
    project.Cg().Row({.attr = {name, L""}, .calItem = MainItem(1)});
  }
  Open(project);
  EXPECT_EQ(CgRows(0),
            (Lines{"@Cg|管道\\给水管", "@A|DN100||m|1", "@A|DN25||m|1", "@A|DN15||m|1"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(CgRows(0),
            (Lines{"@Cg|管道\\给水管", "@A|DN15||m|1", "@A|DN25||m|1", "@A|DN100||m|1"}));
}

TEST_F(OverHeightSummary, OfKindsWithOneSortNumberTheFirstMetStays) {
  CTinyProject project;
  project.Cg()
      .Row({.category = {L"管道", L"b"}, .calItem = MainItem(1)})
      .Row({.category = {L"管道", L"a"}, .calItem = OtherItem(2)});
  Open(project);
  EXPECT_EQ(CgRows(0), (Lines{"@Cg|管道\\a", "@A|DN25||m|0"}));
}

TEST_F(OverHeightSummary, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  CReportStatusMng::Instance()->SetDispSgd({L"二区", L"一区"});
  EXPECT_EQ(CgRows(1, {}, 1), (Lines{
                                  "@P|一区",
                                  "@Cg|管道\\给水管",
                                  "@A|DN25||m|5",
                                  "@CI|管道长度|t3|t4|m|5",
                                  "@CI|支架|u3||kg|1.5",
                                  "@P|二区",
                                  "@Cg|附件\\水表",
                                  "@A|LXS-20|材质:铜|m|0",
                                  "@CI|支架|u3||kg|3",
                                  "@Cg|管道\\给水管",
                                  "@A|DN25||m|16",
                                  "@CI|管道长度|t3|t4|m|16",
                              }));
  CReportStatusMng::Instance()->SetDispSgd({L"二区"});
  CReportStatusMng::Instance()->SetIsBySgd(true);
  EXPECT_EQ(CgRows(0), (Lines{"@Cg|附件\\水表", "@A|LXS-20|材质:铜|m|0", "@Cg|管道\\给水管",
                              "@A|DN25||m|16"}));
  // An attribute without counted item has no row at level 0 either.
  CReportStatusMng::Instance()->SetDispSgd({L"一区"});
  EXPECT_EQ(CgRows(0), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5"}));
  CReportStatusMng::Instance()->SetDispSgd({});
  EXPECT_EQ(CgRows(0, {}, 1), Lines{});
}

TEST_F(OverHeightSummary, FiltersSelectKindsFloorsAndCodes) {
  Open(Building());
  Report::SNewCondition condition;
  condition.categories = {L"附"};
  EXPECT_EQ(CgRows(0, condition), (Lines{"@Cg|附件\\水表", "@A|LXS-20|材质:铜|m|0"}));
  condition.categories = {L"附件\\水", L"", L"管道\\给水管\\x"};
  EXPECT_EQ(CgRows(0, condition), Lines{});
  condition.categories = {L"管道\\给水管", L"管道"};
  condition.sysCodes = {L"D"};
  EXPECT_EQ(CgRows(1, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|16",
                                         "@CI|管道长度|t3|t4|m|16", "@CI|支架|u3||kg|1.5"}));
  condition.sysCodes = {L"A\\B", L"D"};
  // "*D" is not listed on the second level.
  EXPECT_EQ(CgRows(1, condition),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|t3|t4|m|5"}));
  condition.sysCodes.clear();
  condition.floors = {{L"2,5", L"2"}, {L"2,5", L"2"}, {L"9", L"9"}};
  EXPECT_EQ(CgRows(2, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|8",
                                         "@CI|管道长度|t3|t4|m|8", "@F|2,5|2,5|m|4"}));
}

TEST_F(OverHeightSummary, APairOfTwoTextsTakesResultsOfEitherText) {
  CTinyProject project;
  project.Cg()
      .Row({.floor = {L"S", L"3,7"}, .component = L"c1", .calItem = MainItem(2)})
      .Row({.floor = {L"S", L"4"}, .component = L"c2", .calItem = MainItem(2)});
  Open(project);
  Report::SNewCondition condition;
  condition.floors = {{L"S", L"4"}};
  EXPECT_EQ(CgRows(3, condition),
            (Lines{"@Cg|管道\\给水管", "@A|DN25||m|2", "@CI|管道长度|t3|t4|m|2", "@F|S|S|m|2",
                   "@S1|A|m|2|$c2$"}));
  condition.floors = {{L"S", L"5"}};
  EXPECT_EQ(CgRows(3, condition), Lines{});
  condition.floors = {{L"S", L"S"}};
  EXPECT_EQ(CgRows(0, condition), (Lines{"@Cg|管道\\给水管", "@A|DN25||m|12"}));
  // The selected floor is no key of a node.
  condition.floors = {{L"4", L"S"}};
  EXPECT_EQ(CgRows(0, condition), Lines{});
}

TEST_F(OverHeightSummary, AnUnknownDisciplineLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  Report::SNewCondition condition;
  condition.categories = {L"附件"};
  Report::CellArray cells{L"kept"};
  Cg().GetCgHzData(cells, kSpec, condition, 0, 0);
  const Report::CellArray before = cells;
  Cg().GetCgHzData(cells, L"电气", {}, 0, 0);
  EXPECT_EQ(cells, before);
  EXPECT_EQ(cells, (Report::CellArray{L"kept", L"@Cg", L"附件\\水表", L"@A", L"LXS-20", L"材质:铜",
                                      L"m", L"0"}));
  EXPECT_EQ(Cg().spec, kSpec);
  EXPECT_EQ(Cg().condition.categories, condition.categories);
  Cg().GetCgHzData(cells, Cg().spec, Cg().condition, 0, 0);
  EXPECT_EQ(Rows(cells).size(), 5U);
  EXPECT_EQ(Cg().condition.categories, condition.categories);
}

TEST_F(OverHeightSummary, ARequestDoesNotDependOnTheOnesBefore) {
  Open(Building());
  const Lines all = CgRows(5);
  Report::SNewCondition condition;
  condition.sysCodes = {L"A\\B"};
  const Lines some{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|t3|t4|m|5"};
  EXPECT_EQ(CgRows(1, condition), some);
  EXPECT_EQ(CgRows(5), all);
  EXPECT_EQ(CgRows(1, condition), some);
}

TEST_F(OverHeightSummary, EachBadIndexFailsTheFoldEachTime) {
  using KorDMRec::SKorDMResultRow;
  for (const auto index :
       {&SKorDMResultRow::sgd, &SKorDMResultRow::floor, &SKorDMResultRow::component,
        &SKorDMResultRow::spec, &SKorDMResultRow::category, &SKorDMResultRow::attr,
        &SKorDMResultRow::sysCode, &SKorDMResultRow::calItem}) {
    for (const int bad : {-1, 1, std::numeric_limits<int>::max()}) {
      CTinyProject project;
      project.Cg().Row({.sysCode = L"", .calItem = MainItem(1)});
      project.Cg().Data().rows[0].*index = bad;
      Open(project);
      EXPECT_THROW(Cg(), std::out_of_range);
      EXPECT_THROW(Cg(), std::out_of_range);
    }
  }
}

}  // namespace
