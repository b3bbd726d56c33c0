#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "reports/calculation_books/book_fixture.h"
#include "reports/calculation_books/xhl_jss2f_report.h"

namespace {

using tally_test::Bracket;
using tally_test::CTinyProject;
using tally_test::kPipe;
using tally_test::kPlumbing;
using tally_test::kPump;
using tally_test::kValve;
using tally_test::Length;
using tally_test::Pieces;
using tally_test::RowTexts;

class FloorBook : public tally_test::BookTest {
 protected:
  static CXhlJss2FReport& Book() { return GetReport<CXhlJss2FReport>(Report::ReportSysJss, 1); }
  static RowTexts Show(const Report::SNewCondition& condition = {}, int sectionMode = 0) {
    Report::CellArray cells;
    Book().GetSysJssData(cells, kPlumbing, condition, sectionMode);
    return tally_test::Rows(cells);
  }
  /// The last row, for projects with a single item.
  static std::string LastRow(const Report::SNewCondition& condition = {}) {
    const RowTexts rows = Show(condition);
    return rows.empty() ? "none" : rows.back();
  }
};

TEST_F(FloorBook, ShowsFloorsKindsAttributesAndItemsWithAllTheirCells) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"附件\\阀门", 1).KindSort(kPlumbing, L"管道\\给水管", 2);
  project.Detail()
      .Row({.floor = {L"2,4", L"2,4"},
            .component = L"a1",
            .sysCode = L"A",
            .calItem = {.name = L"管道长度",
                        .quantity1 = 2,
                        .quantity2 = 20,
                        .quantity3 = 0.5,
                        .quantity4 = -1}})
      .Row({.floor = {L"2,4", L"2,4"},
            .component = L"b1",
            .sysCode = L"B",
            .calItem = {.name = L"管道长度", .quantity1 = 3, .quantity2 = 30, .quantity3 = 0.25}})
      .Row(
          {.floor = {L"2,4", L"2,4"}, .component = L"b2", .sysCode = L"B", .calItem = Bracket(1.5)})
      .Row({.floor = {L"1", L"1"},
            .component = L"v1",
            .category = kValve,
            .attr = {L"DN50", L"铜"},
            .calItem = Pieces(1)})
      .Row({.floor = {L"1", L"1"}, .component = L"a2", .calItem = Length(7)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{
                        "@F|1|1",
                        "@Cg|附件\\阀门",
                        "@A|DN50|铜",
                        "@CI|构件数量|个|1|v1$$|1|0|0|0",
                        "@Cg|管道\\给水管",
                        "@A|DN25|",
                        "@CI|管道长度|m|7|a2$$|7|0|0|0",
                        "@F|2,4|2,4",
                        "@Cg|管道\\给水管",
                        "@A|DN25|",
                        "@CI|管道长度|m|(2+3)*3层|a1$$b1$$|15|150|2.25|-3",
                        "@CI|支架|kg||b2$$|4.5|0|0|0",
                    }));
}

TEST_F(FloorBook, OneSystemHasNoBrackets) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"2,4", L"2,4"}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|2*3层|c1$$|6|0|0|0");
}

TEST_F(FloorBook, ALoneNegativeTermHasNoBrackets) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"2,4", L"2,4"}, .calItem = Length(-2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|-2*3层|c1$$|-6|0|0|0");
}

TEST_F(FloorBook, NegativeTermsAreJoinedBehindAPlus) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"2/4", L"2/4"}, .sysCode = L"A", .calItem = Length(2)})
      .Row({.floor = {L"2/4", L"2/4"}, .sysCode = L"B", .calItem = Length(-3)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|(2+-3)*2层|c1$$c1$$|-2|0|0|0");
}

TEST_F(FloorBook, APlusInANumberBringsBrackets) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"2/4", L"2/4"}, .calItem = Length(1e6)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|(1e+06)*2层|c1$$|2e+06|0|0|0");
}

TEST_F(FloorBook, AnEmptyFloorTextStandsForNoFloors) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"1", L""}, .calItem = Length(-2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|-2*0层|c1$$|0|0|0|0");
}

TEST_F(FloorBook, TheFirstResultOfTheFirstSystemDecidesTheFloorsOfAll) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"标准层", L"5"}, .sysCode = L"A", .calItem = Length(1)})
      .Row({.floor = {L"标准层", L"2,4"}, .sysCode = L"A", .calItem = Length(2)})
      .Row({.floor = {L"标准层", L"5"}, .sysCode = L"B", .calItem = Length(4)});
  Open(project);
  // Results of one code stand in the order of their floor texts, so "2,4" is the first.
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|(3+4)*3层|c1$$c1$$c1$$|21|0|0|0");
  Report::SNewCondition condition;
  condition.sysCodes = {L"B"};
  EXPECT_EQ(LastRow(condition), "@CI|管道长度|m|4|c1$$|4|0|0|0");
}

TEST_F(FloorBook, ATermAddsUpASystemOfTheFirstLevelWithAllThatLiesBelow) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"b", .sysCode = L"B", .calItem = Length(1000)})
      .Row({.component = L"a", .sysCode = L"A", .calItem = Length(1)})
      .Row({.component = L"ab", .sysCode = L"A\\B", .calItem = Length(10)})
      .Row({.component = L"abc", .sysCode = L"A\\B\\C", .calItem = Length(100)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|111+1000|a$$ab$$abc$$b$$|1111|0|0|0");
}

TEST_F(FloorBook, SeveralComponentsMultiplyAndAreAllNamed) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"c1", .calItem = Length(2)})
      .Row({.component = L"", .calItem = Length(2)})
      .Row({.component = L"c1", .calItem = Length(2)})
      .Row({.component = L"", .calItem = Bracket(1)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|",
                              "@CI|管道长度|m|6|c1$c1$$|6|0|0|0", "@CI|支架|kg||$|1|0|0|0"}));
}

TEST_F(FloorBook, FloorsRunFromTheLowestWithARepeatedOneAheadOfItsFirst) {
  CTinyProject project;
  for (const wchar_t* floor : {L"10", L"2", L"2,5", L"-1", L"1", L"1.5"}) {
    project.Detail().Row({.floor = {floor, floor}, .calItem = Length(1)});
  }
  Open(project);
  RowTexts rows = Show();
  std::erase_if(rows, [](const std::string& row) { return !row.starts_with("@F"); });
  EXPECT_EQ(rows,
            (RowTexts{"@F|-1|-1", "@F|1|1", "@F|1.5|1.5", "@F|2,5|2,5", "@F|2|2", "@F|10|10"}));
}

TEST_F(FloorBook, OfFloorsWithoutANumberTheFirstStays) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"屋面", L"9"}, .calItem = Length(1)})
      .Row({.floor = {L"夹层", L"1"}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{"@F|夹层|夹层", "@Cg|管道\\给水管", "@A|DN25|",
                              "@CI|管道长度|m|2|c1$$|2|0|0|0"}));
}

TEST_F(FloorBook, MinorItemsFollowTheMainOneByNarrowNameAndUnit) {
  CTinyProject project;
  project.Detail()
      .Row({.calItem = {.name = L"支架", .unit = L"m", .quantity1 = 3}})
      .Row({.calItem = {.name = L"支架", .unit = L"kg", .quantity1 = 2}})
      .Row({.calItem = {.name = L"防腐", .unit = L"m2", .quantity1 = 1}})
      .Row({.calItem = Length(4)});
  Open(project);
  // In the code page "防" stands before "支"; as wide text it is the other way round.
  EXPECT_EQ(Show(), (RowTexts{
                        "@F|1|1",
                        "@Cg|管道\\给水管",
                        "@A|DN25|",
                        "@CI|管道长度|m|4|c1$$|4|0|0|0",
                        "@CI|防腐|m2||c1$$|1|0|0|0",
                        "@CI|支架|kg||c1$$|2|0|0|0",
                        "@CI|支架|m||c1$$|3|0|0|0",
                    }));
}

TEST_F(FloorBook, MainItemsOfSeveralUnitsStandInTheOrderOfTheirUnits) {
  CTinyProject project;
  project.Detail()
      .Row({.calItem = Length(1)})
      .Row({.calItem = {.name = L"管道长度", .unit = L"km", .quantity1 = 2}});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|",
                              "@CI|管道长度|km|2|c1$$|2|0|0|0", "@CI|管道长度|m|1|c1$$|1|0|0|0"}));
}

TEST_F(FloorBook, AnItemWithoutRowsHoldsThePlaceOfItsKey) {
  CTinyProject project;
  project.Detail()
      .Row({.sgd = L"二区", .calItem = {.name = L"ß", .quantity1 = 1}})
      .Row({.calItem = {.name = L"ñ", .quantity1 = 2}})
      .Row({.calItem = Length(4)});
  Open(project);
  ShowOnly({L"一区"});
  // Neither name has characters of the code page, so both are "?" there: the first one, hidden as
  // it is, keeps the second out.
  EXPECT_EQ(Show(),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|4|c1$$|4|0|0|0"}));
}

TEST_F(FloorBook, AnAttributeWithHiddenResultsAloneHasNoRow) {
  CTinyProject project;
  project.Detail()
      .Row({.sgd = L"二区", .attr = {L"DN32", L""}, .calItem = Length(1)})
      .Row({.attr = {L"DN25", L""}, .calItem = Bracket(2)});
  Open(project);
  ShowOnly({L"一区"});
  EXPECT_EQ(Show(),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|", "@CI|支架|kg||c1$$|2|0|0|0"}));
}

TEST_F(FloorBook, LineWorkRunsInTheConfiguredDirectionAndOtherKindsUpwards) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"附件\\阀门", 1).KindSort(kPlumbing, L"管道\\给水管", 2);
  for (const wchar_t* size : {L"DN25", L"DN100"}) {
    project.Detail()
        .Row({.attr = {size, L""}, .calItem = Length(1)})
        .Row({.category = kValve, .attr = {size, L""}, .calItem = Pieces(1)});
  }
  Open(project);
  const std::string piece = "@CI|构件数量|个|1|c1$$|1|0|0|0";
  const std::string length = "@CI|管道长度|m|1|c1$$|1|0|0|0";
  EXPECT_EQ(Show(), (RowTexts{"@F|1|1", "@Cg|附件\\阀门", "@A|DN25|", piece, "@A|DN100|", piece,
                              "@Cg|管道\\给水管", "@A|DN100|", length, "@A|DN25|", length}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(Show(), (RowTexts{"@F|1|1", "@Cg|附件\\阀门", "@A|DN25|", piece, "@A|DN100|", piece,
                              "@Cg|管道\\给水管", "@A|DN25|", length, "@A|DN100|", length}));
}

TEST_F(FloorBook, SizesOfOneValueThatDifferAsTextsAreEqualDownwardsAndSwapUpwards) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN1", L""}, .calItem = Length(1)})
      .Row({.attr = {L"DN1.0", L""}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN1|", "@CI|管道长度|m|1|c1$$|1|0|0|0"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  // Each goes before the other, so the one that is put in last stands first.
  EXPECT_EQ(Show(),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN1.0|", "@CI|管道长度|m|2|c1$$|2|0|0|0",
                      "@A|DN1|", "@CI|管道长度|m|1|c1$$|1|0|0|0"}));
}

TEST_F(FloorBook, OfKindsWithEqualSortNumbersTheFirstStays) {
  CTinyProject project;
  project.Detail()
      .Row({.category = kValve, .calItem = Pieces(1)})
      .Row({.category = kPipe, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|2|c1$$|2|0|0|0"}));
}

TEST_F(FloorBook, UnknownDisciplineAddsNothingAndKeepsTheCondition) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  Open(project);
  Report::SNewCondition condition;
  condition.sysCodes = {L"A"};
  Show(condition);
  Report::CellArray cells{L"before"};
  Book().GetSysJssData(cells, L"暖通", {}, 0);
  EXPECT_EQ(cells, Report::CellArray{L"before"});
  EXPECT_EQ(Book().spec, kPlumbing);
  EXPECT_EQ(Book().condition.sysCodes, condition.sysCodes);
}

TEST_F(FloorBook, RowsWithoutASystemCodeAreLeftOut) {
  CTinyProject project;
  project.Detail()
      .Row({.sysCode = L"", .calItem = Length(1)})
      .Row({.sysCode = L"A", .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|2|c1$$|2|0|0|0");
}

// Filters.

class FloorBookSysCodes : public FloorBook {
 protected:
  FloorBookSysCodes() {
    CTinyProject project;
    project.Detail()
        .Row({.component = L"a", .sysCode = L"A", .calItem = Length(1)})
        .Row({.component = L"ab", .sysCode = L"A\\B", .calItem = Length(10)})
        .Row({.component = L"abc", .sysCode = L"A\\B\\C", .calItem = Length(100)})
        .Row({.component = L"d", .sysCode = L"D", .calItem = Length(1000)});
    Open(project);
  }
  static std::string With(const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    return LastRow(condition);
  }
};

TEST_F(FloorBookSysCodes, AreTakenWithAllThatLiesBelow) {
  EXPECT_EQ(With({L"A"}), "@CI|管道长度|m|111|a$$ab$$abc$$|111|0|0|0");
  EXPECT_EQ(With({L"A\\B"}), "@CI|管道长度|m|110|ab$$abc$$|110|0|0|0");
  EXPECT_EQ(With({L"D", L"A\\B\\C"}), "@CI|管道长度|m|100+1000|abc$$d$$|1100|0|0|0");
  EXPECT_EQ(With({L"A\\*A"}), "@CI|管道长度|m|1|a$$|1|0|0|0");
}

TEST_F(FloorBookSysCodes, CountTwiceUnderTwoPaths) {
  EXPECT_EQ(With({L"A\\B", L"A"}), "@CI|管道长度|m|221|ab$$abc$$a$$ab$$abc$$|221|0|0|0");
}

TEST_F(FloorBookSysCodes, ThatAreNotThereShowNothing) {
  EXPECT_EQ(With({L"B"}), "none");
  EXPECT_EQ(With({L""}), "none");
  EXPECT_EQ(With({L"A\\B\\C\\X"}), "none");
}

TEST_F(FloorBook, ACodeThatGoesOnWhereAnotherEndsStandsAmongItsResults) {
  CTinyProject project;
  project.Detail()
      .Row({.sgd = L"1区", .component = L"a", .sysCode = L"A\\B\\C", .calItem = Length(1)})
      .Row({.sgd = L"一区", .component = L"c", .sysCode = L"A\\B\\C", .calItem = Length(100)})
      .Row({.sgd = L"1区", .component = L"b", .sysCode = L"A\\B\\C\\D", .calItem = Length(10)})
      .Row({.sgd = L"1区", .component = L"e", .sysCode = L"E", .calItem = Length(1000)});
  Open(project);
  const auto with = [](const std::wstring& sysCode) {
    Report::SNewCondition condition;
    condition.sysCodes = {sysCode};
    return LastRow(condition);
  };
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|111+1000|a$$b$$c$$e$$|1111|0|0|0");
  EXPECT_EQ(with(L"A"), "@CI|管道长度|m|111|a$$b$$c$$|111|0|0|0");
  EXPECT_EQ(with(L"A\\B\\C"), "@CI|管道长度|m|111|a$$b$$c$$|111|0|0|0");
  EXPECT_EQ(with(L"A\\B\\C\\D"), "@CI|管道长度|m|10|b$$|10|0|0|0");
}

TEST_F(FloorBook, OfAttributesThatDifferInBlanksTheFirstToHaveRowsStays) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN 25", L""}, .sysCode = L"A", .calItem = Length(1)})
      .Row({.attr = {L"DN25", L""}, .sysCode = L"B", .calItem = Length(2)})
      .Row({.attr = {L"DN9", L""}, .sysCode = L"B", .calItem = Length(3)});
  Open(project);
  EXPECT_EQ(Show(),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN 25|", "@CI|管道长度|m|1|c1$$|1|0|0|0",
                      "@A|DN9|", "@CI|管道长度|m|3|c1$$|3|0|0|0"}));
  Report::SNewCondition condition;
  condition.sysCodes = {L"B"};
  EXPECT_EQ(Show(condition),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|2|c1$$|2|0|0|0",
                      "@A|DN9|", "@CI|管道长度|m|3|c1$$|3|0|0|0"}));
}

TEST_F(FloorBook, OneCodeOfSeveralKeepsTheFloorsOfItsOwnResults) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"标准层", L"5"}, .component = L"a", .sysCode = L"A", .calItem = Length(1)})
      .Row({.floor = {L"标准层", L"2,4"},
            .component = L"b",
            .sysCode = L"A\\B",
            .calItem = Length(2)})
      .Row({.floor = {L"标准层", L"5"},
            .component = L"d",
            .sysCode = L"A\\B",
            .calItem = Length(4)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|7|a$$b$$d$$|7|0|0|0");
  Report::SNewCondition condition;
  condition.sysCodes = {L"A\\B"};
  EXPECT_EQ(LastRow(condition), "@CI|管道长度|m|6*3层|b$$d$$|18|0|0|0");
  condition.sysCodes = {L"A\\B", L"A"};
  EXPECT_EQ(LastRow(condition), "@CI|管道长度|m|13*3层|b$$d$$a$$b$$d$$|39|0|0|0");
}

class FloorBookKinds : public FloorBook {
 protected:
  FloorBookKinds() {
    CTinyProject project;
    project.KindSort(kPlumbing, L"管道\\给水管", 1)
        .KindSort(kPlumbing, L"管道井\\井盖", 2)
        .KindSort(kPlumbing, L"附件\\阀门", 3);
    project.Detail()
        .Row({.category = kPipe, .calItem = Length(1)})
        .Row({.category = {L"管道井", L"井盖"}, .calItem = Pieces(2)})
        .Row({.category = kValve, .calItem = Pieces(3)});
    Open(project);
  }
  static RowTexts With(const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    RowTexts rows = Show(condition);
    std::erase_if(rows, [](const std::string& row) {
      return row.starts_with("@A") || row.starts_with("@CI");
    });
    return rows;
  }
};

TEST_F(FloorBookKinds, AreTakenByTheBeginningOfTheirPath) {
  EXPECT_EQ(With({L"管道"}), (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@Cg|管道井\\井盖"}));
  EXPECT_EQ(With({L"管"}), (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@Cg|管道井\\井盖"}));
}

TEST_F(FloorBookKinds, AreTakenByTheirExactPath) {
  EXPECT_EQ(With({L"附件\\阀门"}), (RowTexts{"@F|1|1", "@Cg|附件\\阀门"}));
  EXPECT_EQ(With({L"附件\\水表"}), RowTexts{});
  EXPECT_EQ(With({L"附件\\"}), RowTexts{});
}

TEST_F(FloorBookKinds, AreNotTakenByOtherEntries) {
  EXPECT_EQ(With({L""}), RowTexts{});
  EXPECT_EQ(With({L"附件\\阀门\\阀门"}), RowTexts{});
}

TEST_F(FloorBookKinds, ShowOnceUnderTwoEntries) {
  EXPECT_EQ(With({L"附件", L"附件\\阀门"}), (RowTexts{"@F|1|1", "@Cg|附件\\阀门"}));
}

class FloorBookFloors : public FloorBook {
 protected:
  FloorBookFloors() {
    CTinyProject project;
    project.Detail()
        .Row({.floor = {L"1", L"1"}, .component = L"a", .calItem = Length(1)})
        .Row({.floor = {L"2,5", L"2,5"}, .component = L"b", .calItem = Length(10)})
        .Row({.floor = {L"2,5", L"3"}, .component = L"c", .calItem = Length(100)})
        .Row({.floor = {L"2,5", L"9"}, .component = L"d", .calItem = Length(1000)});
    Open(project);
  }
  /// The "@F" and "@CI" rows.
  static RowTexts With(const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    RowTexts rows = Show(condition);
    std::erase_if(rows, [](const std::string& row) {
      return row.starts_with("@A") || row.starts_with("@Cg");
    });
    return rows;
  }
};

TEST_F(FloorBookFloors, ArePickedByTheirNodes) {
  EXPECT_EQ(With({{L"2,5", L"2,5"}, {L"1", L"1"}}),
            (RowTexts{"@F|1|1", "@CI|管道长度|m|1|a$$|1|0|0|0", "@F|2,5|2,5",
                      "@CI|管道长度|m|1110*4层|b$$c$$d$$|4440|0|0|0"}));
  EXPECT_EQ(With({{L"3", L"3"}, {L"x", L"1"}}), RowTexts{});
}

TEST_F(FloorBookFloors, CountOnceWhenPickedOutOfARepeatedOne) {
  EXPECT_EQ(With({{L"2,5", L"3"}}), (RowTexts{"@F|2,5|3", "@CI|管道长度|m|110|b$$c$$|110|0|0|0"}));
}

TEST_F(FloorBookFloors, CountForThePickedTextWhereItIsARangeItself) {
  EXPECT_EQ(With({{L"2,5", L"3,4"}}),
            (RowTexts{"@F|2,5|3,4", "@CI|管道长度|m|10*2层|b$$|20|0|0|0"}));
}

TEST_F(FloorBookFloors, StandInTheOrderOfThePickedFloors) {
  EXPECT_EQ(
      With({{L"2,5", L"4"}, {L"2,5", L"2"}, {L"1", L"1"}}),
      (RowTexts{"@F|1|1", "@CI|管道长度|m|1|a$$|1|0|0|0", "@F|2,5|2",
                "@CI|管道长度|m|10|b$$|10|0|0|0", "@F|2,5|4", "@CI|管道长度|m|10|b$$|10|0|0|0"}));
}

TEST_F(FloorBookFloors, PickedTwiceShowOnce) {
  EXPECT_EQ(With({{L"1", L"1"}, {L"1", L"1"}}),
            (RowTexts{"@F|1|1", "@CI|管道长度|m|1|a$$|1|0|0|0"}));
}

TEST_F(FloorBookFloors, WithoutResultsOfThePairHaveNoHeading) {
  EXPECT_EQ(With({{L"1", L"7"}, {L"2,5", L"9"}}),
            (RowTexts{"@F|1|7", "@CI|管道长度|m|1|a$$|1|0|0|0", "@F|2,5|9",
                      "@CI|管道长度|m|1010|b$$d$$|1010|0|0|0"}));
  CTinyProject project;
  project.Detail().Row({.floor = {L"标准层", L"2"}, .calItem = Length(1)});
  Open(project);
  EXPECT_EQ(With({{L"标准层", L"3"}}), RowTexts{});
}

// Construction sections and the divided-node switch.

class FloorBookSections : public FloorBook {
 protected:
  FloorBookSections() {
    CTinyProject project;
    project.KindSort(kPlumbing, L"管道\\给水管", 9)
        .KindSort(kPlumbing, L"附件\\阀门", 2)
        .KindSort(kPlumbing, L"设备\\水泵", 1);
    project.Detail()
        .Row({.sgd = L"一区", .calItem = Length(1)})
        .Row({.sgd = L"一区", .category = kValve, .calItem = Pieces(2)})
        .Row({.sgd = L"一区", .category = kPump, .calItem = Pieces(3)})
        .Row({.sgd = L"二区", .calItem = Length(4)})
        .Row({.sgd = L"二区", .floor = {L"2", L"2"}, .calItem = Length(5)})
        .Row({.sgd = L"", .calItem = Length(6)});
    Open(project);
  }
};

TEST_F(FloorBookSections, AddUpWithoutAHeadingWithTheModeOff) {
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show({}, 0), (RowTexts{
                             "@F|1|1",
                             "@Cg|设备\\水泵",
                             "@A|DN25|",
                             "@CI|构件数量|个|3|c1$$|3|0|0|0",
                             "@Cg|附件\\阀门",
                             "@A|DN25|",
                             "@CI|构件数量|个|2|c1$$|2|0|0|0",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|11|c1$$c1$$c1$$|11|0|0|0",
                             "@F|2|2",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|5|c1$$|5|0|0|0",
                         }));
}

TEST_F(FloorBookSections, StandUnderTheirHeadingsInTextOrder) {
  status.SetDispSgd({L"二区", L"空", L"一区"});
  EXPECT_EQ(Show({}, -1), (RowTexts{
                              "@P|一区",
                              "@F|1|1",
                              "@Cg|设备\\水泵",
                              "@A|DN25|",
                              "@CI|构件数量|个|3|c1$$|3|0|0|0",
                              "@Cg|附件\\阀门",
                              "@A|DN25|",
                              "@CI|构件数量|个|2|c1$$|2|0|0|0",
                              "@Cg|管道\\给水管",
                              "@A|DN25|",
                              "@CI|管道长度|m|1|c1$$|1|0|0|0",
                              "@P|二区",
                              "@F|1|1",
                              "@Cg|管道\\给水管",
                              "@A|DN25|",
                              "@CI|管道长度|m|4|c1$$|4|0|0|0",
                              "@F|2|2",
                              "@Cg|管道\\给水管",
                              "@A|DN25|",
                              "@CI|管道长度|m|5|c1$$|5|0|0|0",
                          }));
}

TEST_F(FloorBookSections, ThatAreHiddenDropOutInBothModes) {
  ShowOnly({L"一区"});
  Report::SNewCondition condition;
  condition.categories = {L"管道"};
  const std::string length = "@CI|管道长度|m|1|c1$$|1|0|0|0";
  EXPECT_EQ(Show(condition, 0), (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|", length}));
  EXPECT_EQ(Show(condition, 1),
            (RowTexts{"@P|一区", "@F|1|1", "@Cg|管道\\给水管", "@A|DN25|", length}));
  ShowOnly({});
  EXPECT_EQ(Show({}, 0), RowTexts{});
  EXPECT_EQ(Show({}, 1), RowTexts{});
}

TEST_F(FloorBookSections, WithNoneShownTheOnePassCountsResultsWithoutASection) {
  EXPECT_EQ(Show({}, 1), (RowTexts{"@P|", "@F|1|1", "@Cg|管道\\给水管", "@A|DN25|",
                                   "@CI|管道长度|m|6|c1$$|6|0|0|0"}));
}

TEST_F(FloorBookSections, ShowLineWorkFirstUnderEachFloorWithTheSwitchOn) {
  Divide(true);
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show({}, 1), (RowTexts{
                             "@P|一区",
                             "@F|1|1",
                             "@T|管线",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|1|c1$$|1|0|0|0",
                             "@T|水泵",
                             "@Cg|设备\\水泵",
                             "@A|DN25|",
                             "@CI|构件数量|个|3|c1$$|3|0|0|0",
                             "@T|阀门",
                             "@Cg|附件\\阀门",
                             "@A|DN25|",
                             "@CI|构件数量|个|2|c1$$|2|0|0|0",
                             "@P|二区",
                             "@F|1|1",
                             "@T|管线",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|4|c1$$|4|0|0|0",
                             "@F|2|2",
                             "@T|管线",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|5|c1$$|5|0|0|0",
                         }));
}

TEST_F(FloorBookSections, ATypeWithoutRowsHasNoHeading) {
  Divide(true);
  Report::SNewCondition condition;
  condition.categories = {L"附件\\阀门"};
  EXPECT_EQ(Show(condition), (RowTexts{"@F|1|1", "@T|阀门", "@Cg|附件\\阀门", "@A|DN25|",
                                       "@CI|构件数量|个|2|c1$$|2|0|0|0"}));
}

TEST_F(FloorBook, OfTypesWithEqualSortNumbersTheFirstStays) {
  CTinyProject project;
  project.Detail()
      .Row({.category = kValve, .calItem = Pieces(1)})
      .Row({.category = kPump, .calItem = Pieces(2)});
  Open(project);
  Divide(true);
  EXPECT_EQ(Show(), (RowTexts{"@F|1|1", "@T|水泵", "@Cg|设备\\水泵", "@A|DN25|",
                              "@CI|构件数量|个|2|c1$$|2|0|0|0"}));
}

TEST_F(FloorBook, ShowsNothingWhereTheSwitchDiffersBetweenFoldAndRequest) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  Open(project);
  const RowTexts undivided{"@F|1|1", "@Cg|管道\\给水管", "@A|DN25|",
                           "@CI|管道长度|m|1|c1$$|1|0|0|0"};
  const RowTexts divided{"@F|1|1", "@T|管线", "@Cg|管道\\给水管", "@A|DN25|",
                         "@CI|管道长度|m|1|c1$$|1|0|0|0"};
  EXPECT_EQ(Show(), undivided);
  status.SetIsDividedNode(true);
  EXPECT_EQ(Show(), RowTexts{});
  EXPECT_EQ(Show({}, 1), RowTexts{});
  CReportMng::Instance()->ClearXHLSysJSSReportData();
  EXPECT_EQ(Show(), divided);
  status.SetIsDividedNode(false);
  EXPECT_EQ(Show(), RowTexts{});
  CReportMng::Instance()->ClearXHLSysJSSReportData();
  EXPECT_EQ(Show(), undivided);
}

TEST_F(FloorBookSections, ARequestLeavesNothingBehindForTheNext) {
  status.SetDispSgd({L"一区", L"二区"});
  const RowTexts before = Show({}, 1);
  Report::SNewCondition other;
  other.categories = {L"附件"};
  other.floors = {{L"1", L"1"}};
  other.sysCodes = {L"A"};
  EXPECT_EQ(Show(other, 0),
            (RowTexts{"@F|1|1", "@Cg|附件\\阀门", "@A|DN25|", "@CI|构件数量|个|2|c1$$|2|0|0|0"}));
  EXPECT_EQ(Show({}, 1), before);
  EXPECT_EQ(before.size(), 20U);
}

}  // namespace
