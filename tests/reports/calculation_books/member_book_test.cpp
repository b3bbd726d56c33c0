#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "reports/calculation_books/book_fixture.h"
#include "reports/calculation_books/xhl_jss2m_report.h"

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

class MemberBook : public tally_test::BookTest {
 protected:
  static CXhlJss2MReport& Book() { return GetReport<CXhlJss2MReport>(Report::ReportSysJss, 0); }
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

TEST_F(MemberBook, ShowsKindsAttributesAndItemsWithAllTheirCells) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"附件\\阀门", 1).KindSort(kPlumbing, L"管道\\给水管", 2);
  project.Detail()
      .Row({.calItem = {.name = L"管道长度",
                        .quantity1 = 2,
                        .quantity2 = 20,
                        .quantity3 = 0.5,
                        .quantity4 = -1}})
      .Row({.floor = {L"2,5", L"2,5"},
            .component = L"c2",
            .calItem = {.name = L"管道长度", .quantity1 = 3, .quantity2 = 30, .quantity3 = 0.25}})
      .Row({.calItem = Bracket(1.5)})
      .Row({.category = kValve, .attr = {L"DN50", L"铜"}, .calItem = Pieces(1)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{
                        "@Cg|附件\\阀门",
                        "@A|DN50|铜",
                        "@CI|构件数量|个|1||1|0|0|0",
                        "@Cg|管道\\给水管",
                        "@A|DN25|",
                        "@CI|管道长度|m|2+3*4层||14|140|1.5|-1",
                        "@CI|支架|kg|||1.5|0|0|0",
                    }));
}

TEST_F(MemberBook, TermsFollowTheTextOrderOfTheirFloors) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"2", L"2"}, .calItem = Length(7)})
      .Row({.floor = {L"10", L"10"}, .calItem = Length(5)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|5+7||12|0|0|0");
}

TEST_F(MemberBook, TermsMayBeNegativeAndHaveSeveralComponents) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"c1", .calItem = Length(-3)})
      .Row({.component = L"c2", .calItem = Length(-3)})
      .Row({.floor = {L"2/4", L"2/4"}, .calItem = Length(1.5)})
      .Row({.floor = {L"7", L"7"}, .calItem = Length(-0.5)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|-6+1.5*2层+-0.5||-3.5|0|0|0");
}

TEST_F(MemberBook, ComponentsWithoutANameCount) {
  CTinyProject project;
  project.Detail().Row({.component = L"", .calItem = Length(2)}).Row({.calItem = Length(2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|4||4|0|0|0");
}

TEST_F(MemberBook, APlusInANumberBringsNoBrackets) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"1", L"1,2"}, .calItem = Length(2e6)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|2e+06*2层||4e+06|0|0|0");
}

TEST_F(MemberBook, AnEmptyFloorTextStandsForNoFloors) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"夹层", L""}, .calItem = Length(-2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|-2*0层||0|0|0|0");
}

TEST_F(MemberBook, ATermAddsUpTheResultsOfOneFloorText) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"甲", L"2,5"}, .sysCode = L"A", .calItem = Length(1)})
      .Row({.floor = {L"乙", L"2,5"}, .sysCode = L"A\\B", .calItem = Length(2)})
      .Row({.floor = {L"乙", L"2,5"}, .sysCode = L"C", .calItem = Length(4)})
      // Other characters, so another term, for as many floors.
      .Row({.floor = {L"乙", L"2，5"}, .sysCode = L"C", .calItem = Length(8)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|7*4层+8*4层||60|0|0|0");
}

TEST_F(MemberBook, MinorItemsFollowTheMainOneByNarrowNameAndUnit) {
  CTinyProject project;
  project.Detail()
      .Row({.calItem = {.name = L"支架", .unit = L"m", .quantity1 = 3}})
      .Row({.calItem = {.name = L"支架", .unit = L"kg", .quantity1 = 2}})
      .Row({.calItem = {.name = L"防腐", .unit = L"m2", .quantity1 = 1}})
      .Row({.calItem = Length(4)});
  Open(project);
  // In the code page "防" stands before "支"; as wide text it is the other way round.
  EXPECT_EQ(Show(), (RowTexts{
                        "@Cg|管道\\给水管",
                        "@A|DN25|",
                        "@CI|管道长度|m|4||4|0|0|0",
                        "@CI|防腐|m2|||1|0|0|0",
                        "@CI|支架|kg|||2|0|0|0",
                        "@CI|支架|m|||3|0|0|0",
                    }));
}

TEST_F(MemberBook, AnItemWithoutRowsHoldsThePlaceOfItsKey) {
  CTinyProject project;
  project.Detail()
      .Row({.sgd = L"二区", .calItem = {.name = L"ß", .quantity1 = 1}})
      .Row({.calItem = {.name = L"ñ", .quantity1 = 2}})
      .Row({.calItem = Length(4)});
  Open(project);
  ShowOnly({L"一区"});
  // Neither name has characters of the code page, so both are "?" there: the first one, hidden as
  // it is, keeps the second out.
  EXPECT_EQ(Show(), (RowTexts{"@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|4||4|0|0|0"}));
}

TEST_F(MemberBook, LineWorkRunsInTheConfiguredDirectionAndOtherKindsUpwards) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"附件\\阀门", 1).KindSort(kPlumbing, L"管道\\给水管", 2);
  for (const wchar_t* size : {L"DN25", L"DN100"}) {
    project.Detail()
        .Row({.attr = {size, L""}, .calItem = Length(1)})
        .Row({.category = kValve, .attr = {size, L""}, .calItem = Pieces(1)});
  }
  Open(project);
  const std::string piece = "@CI|构件数量|个|1||1|0|0|0";
  const std::string length = "@CI|管道长度|m|1||1|0|0|0";
  EXPECT_EQ(Show(), (RowTexts{"@Cg|附件\\阀门", "@A|DN25|", piece, "@A|DN100|", piece,
                              "@Cg|管道\\给水管", "@A|DN100|", length, "@A|DN25|", length}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(Show(), (RowTexts{"@Cg|附件\\阀门", "@A|DN25|", piece, "@A|DN100|", piece,
                              "@Cg|管道\\给水管", "@A|DN25|", length, "@A|DN100|", length}));
}

TEST_F(MemberBook, AttributesThatDifferInBlanksAloneShowTheFirst) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN25", L"钢"}, .calItem = Length(1)})
      .Row({.attr = {L"DN 25", L"铜"}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{"@Cg|管道\\给水管", "@A|DN 25|铜", "@CI|管道长度|m|2||2|0|0|0"}));
}

TEST_F(MemberBook, SizesOfOneValueThatDifferAsTextsAreEqualDownwardsAndSwapUpwards) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN1", L""}, .calItem = Length(1)})
      .Row({.attr = {L"DN1.0", L""}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{"@Cg|管道\\给水管", "@A|DN1|", "@CI|管道长度|m|1||1|0|0|0"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  // Each goes before the other, so the one that is put in last stands first.
  EXPECT_EQ(Show(), (RowTexts{"@Cg|管道\\给水管", "@A|DN1.0|", "@CI|管道长度|m|2||2|0|0|0",
                              "@A|DN1|", "@CI|管道长度|m|1||1|0|0|0"}));
}

TEST_F(MemberBook, OfKindsWithEqualSortNumbersTheFirstStays) {
  CTinyProject project;
  project.Detail()
      .Row({.category = kValve, .calItem = Pieces(1)})
      .Row({.category = kPipe, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(), (RowTexts{"@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|2||2|0|0|0"}));
}

TEST_F(MemberBook, UnknownDisciplineAddsNothingAndKeepsTheCondition) {
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

TEST_F(MemberBook, AppendsToTheCellsThatItIsGiven) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  Open(project);
  Report::CellArray cells{L"before"};
  Book().GetSysJssData(cells, kPlumbing, {}, 0);
  ASSERT_FALSE(cells.empty());
  EXPECT_EQ(cells.front(), L"before");
  EXPECT_EQ(tally_test::Rows(cells),
            (RowTexts{"before", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|1||1|0|0|0"}));
}

TEST_F(MemberBook, RowsWithoutASystemCodeAreLeftOut) {
  CTinyProject project;
  project.Detail()
      .Row({.sysCode = L"", .calItem = Length(1)})
      .Row({.sysCode = L"A", .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(LastRow(), "@CI|管道长度|m|2||2|0|0|0");
}

// Filters.

class MemberBookSysCodes : public MemberBook {
 protected:
  MemberBookSysCodes() {
    CTinyProject project;
    project.Detail()
        .Row({.sysCode = L"A", .calItem = Length(1)})
        .Row({.sysCode = L"A\\B", .calItem = Length(10)})
        .Row({.sysCode = L"A\\B\\C", .calItem = Length(100)})
        .Row({.sysCode = L"D", .calItem = Length(1000)});
    Open(project);
  }
  static std::string With(const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    return LastRow(condition);
  }
};

TEST_F(MemberBookSysCodes, AreTakenWithAllThatLiesBelow) {
  EXPECT_EQ(With({}), "@CI|管道长度|m|1111||1111|0|0|0");
  EXPECT_EQ(With({L"A"}), "@CI|管道长度|m|111||111|0|0|0");
  EXPECT_EQ(With({L"A\\B"}), "@CI|管道长度|m|110||110|0|0|0");
  EXPECT_EQ(With({L"A\\B\\C", L"D"}), "@CI|管道长度|m|1100||1100|0|0|0");
  EXPECT_EQ(With({L"A\\*A"}), "@CI|管道长度|m|1||1|0|0|0");
}

TEST_F(MemberBookSysCodes, CountTwiceUnderTwoPaths) {
  EXPECT_EQ(With({L"A", L"A\\B"}), "@CI|管道长度|m|221||221|0|0|0");
}

TEST_F(MemberBookSysCodes, ThatAreNotThereShowNothing) {
  EXPECT_EQ(With({L"B"}), "none");
  EXPECT_EQ(With({L""}), "none");
  EXPECT_EQ(With({L"A\\B\\C\\X"}), "none");
}

class MemberBookKinds : public MemberBook {
 protected:
  MemberBookKinds() {
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
  /// The "@Cg" rows alone.
  static RowTexts With(const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    RowTexts rows = Show(condition);
    std::erase_if(rows, [](const std::string& row) { return !row.starts_with("@Cg"); });
    return rows;
  }
};

TEST_F(MemberBookKinds, AreTakenByTheBeginningOfTheirPath) {
  EXPECT_EQ(With({L"管道"}), (RowTexts{"@Cg|管道\\给水管", "@Cg|管道井\\井盖"}));
  EXPECT_EQ(With({L"管"}), (RowTexts{"@Cg|管道\\给水管", "@Cg|管道井\\井盖"}));
  EXPECT_EQ(With({L"管道井", L"附"}), (RowTexts{"@Cg|管道井\\井盖", "@Cg|附件\\阀门"}));
}

TEST_F(MemberBookKinds, AreTakenByTheirExactPath) {
  EXPECT_EQ(With({L"附件\\阀门"}), (RowTexts{"@Cg|附件\\阀门"}));
  EXPECT_EQ(With({L"附件\\阀"}), RowTexts{});
  EXPECT_EQ(With({L"附件\\"}), RowTexts{});
}

TEST_F(MemberBookKinds, AreNotTakenByOtherEntries) {
  EXPECT_EQ(With({L""}), RowTexts{});
  EXPECT_EQ(With({L"附件\\阀门\\阀门"}), RowTexts{});
}

TEST_F(MemberBookKinds, ShowOnceUnderTwoEntries) {
  EXPECT_EQ(With({L"附件", L"附件\\阀门"}), (RowTexts{"@Cg|附件\\阀门"}));
}

TEST_F(MemberBookKinds, WithoutAMainItemHaveNoFormula) {
  Report::SNewCondition condition;
  condition.categories = {L"管道井"};
  EXPECT_EQ(Show(condition),
            (RowTexts{"@Cg|管道井\\井盖", "@A|DN25|", "@CI|构件数量|个|||2|0|0|0"}));
}

class MemberBookFloors : public MemberBook {
 protected:
  MemberBookFloors() {
    CTinyProject project;
    project.Detail()
        .Row({.floor = {L"1", L"1"}, .calItem = Length(1)})
        .Row({.floor = {L"2,5", L"2,5"}, .calItem = Length(10)})
        .Row({.floor = {L"2,5", L"3"}, .calItem = Length(100)})
        .Row({.floor = {L"2,5", L"9"}, .calItem = Length(1000)});
    Open(project);
  }
  static std::string With(const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    return LastRow(condition);
  }
};

TEST_F(MemberBookFloors, AllCountWithTheirOwnTexts) {
  EXPECT_EQ(With({}), "@CI|管道长度|m|1+10*4层+100+1000||1141|0|0|0");
}

TEST_F(MemberBookFloors, ArePickedByTheirNodes) {
  EXPECT_EQ(With({{L"1", L"1"}}), "@CI|管道长度|m|1||1|0|0|0");
  EXPECT_EQ(With({{L"2,5", L"2,5"}}), "@CI|管道长度|m|10*4层+100+1000||1140|0|0|0");
  EXPECT_EQ(With({{L"3", L"3"}, {L"x", L"1"}}), "none");
}

TEST_F(MemberBookFloors, CountOnceWhenPickedOutOfARepeatedOne) {
  EXPECT_EQ(With({{L"2,5", L"3"}}), "@CI|管道长度|m|110||110|0|0|0");
}

TEST_F(MemberBookFloors, CountForThePickedTextWhereItIsARangeItself) {
  EXPECT_EQ(With({{L"2,5", L"3,4"}}), "@CI|管道长度|m|10*2层||20|0|0|0");
}

TEST_F(MemberBookFloors, CountForEachPairThatPicksThem) {
  EXPECT_EQ(With({{L"1", L"1"}, {L"1", L"1"}, {L"2,5", L"3"}, {L"2,5", L"4"}}),
            "@CI|管道长度|m|2+110+10||122|0|0|0");
}

TEST_F(MemberBookFloors, WithAnEmptyNodeNameCountWithTheirOwnTexts) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"", L"2,5"}, .calItem = Length(1)});
  Open(project);
  EXPECT_EQ(With({{L"", L"3"}}), "@CI|管道长度|m|1*4层||4|0|0|0");
}

TEST_F(MemberBookFloors, EndTheWalkOfTheCodeThatHoldsThem) {
  CTinyProject project;
  project.Detail()
      .Row({.sysCode = L"A\\B\\C", .calItem = Length(1)})
      .Row({.sysCode = L"A\\B\\C\\0", .calItem = Length(10)})
      .Row({.sysCode = L"A\\B\\C\\D", .calItem = Length(100)});
  Open(project);
  EXPECT_EQ(With({}), "@CI|管道长度|m|111||111|0|0|0");
  // "0" stands ahead of the floor "1" among the children of C, and "D" behind it.
  EXPECT_EQ(With({{L"1", L"1"}}), "@CI|管道长度|m|11||11|0|0|0");
}

// Construction sections and the divided-node switch.

class MemberBookSections : public MemberBook {
 protected:
  MemberBookSections() {
    CTinyProject project;
    project.KindSort(kPlumbing, L"管道\\给水管", 9)
        .KindSort(kPlumbing, L"附件\\阀门", 2)
        .KindSort(kPlumbing, L"设备\\水泵", 1);
    project.Detail()
        .Row({.sgd = L"一区", .calItem = Length(1)})
        .Row({.sgd = L"一区", .category = kValve, .calItem = Pieces(2)})
        .Row({.sgd = L"一区", .category = kPump, .calItem = Pieces(3)})
        .Row({.sgd = L"二区", .calItem = Length(4)})
        .Row({.sgd = L"", .calItem = Length(5)});
    Open(project);
  }
  const RowTexts pipeHead{"@Cg|管道\\给水管", "@A|DN25|"};
};

TEST_F(MemberBookSections, AddUpWithoutAHeadingWithTheModeOff) {
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show({}, 0), (RowTexts{
                             "@Cg|设备\\水泵",
                             "@A|DN25|",
                             "@CI|构件数量|个|3||3|0|0|0",
                             "@Cg|附件\\阀门",
                             "@A|DN25|",
                             "@CI|构件数量|个|2||2|0|0|0",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|10||10|0|0|0",
                         }));
}

TEST_F(MemberBookSections, ThatAreHiddenDropOutInBothModes) {
  ShowOnly({L"二区"});
  EXPECT_EQ(Show({}, 0), (RowTexts{"@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|4||4|0|0|0"}));
  EXPECT_EQ(Show({}, 1),
            (RowTexts{"@P|二区", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|4||4|0|0|0"}));
  ShowOnly({});
  EXPECT_EQ(Show({}, 0), RowTexts{});
  EXPECT_EQ(Show({}, 1), RowTexts{});
}

TEST_F(MemberBookSections, StandUnderTheirHeadingsInTextOrder) {
  status.SetDispSgd({L"二区", L"空", L"一区"});
  EXPECT_EQ(Show({}, -1), (RowTexts{
                              "@P|一区",
                              "@Cg|设备\\水泵",
                              "@A|DN25|",
                              "@CI|构件数量|个|3||3|0|0|0",
                              "@Cg|附件\\阀门",
                              "@A|DN25|",
                              "@CI|构件数量|个|2||2|0|0|0",
                              "@Cg|管道\\给水管",
                              "@A|DN25|",
                              "@CI|管道长度|m|1||1|0|0|0",
                              "@P|二区",
                              "@Cg|管道\\给水管",
                              "@A|DN25|",
                              "@CI|管道长度|m|4||4|0|0|0",
                          }));
}

TEST_F(MemberBookSections, WithNoneShownTheOnePassCountsResultsWithoutASection) {
  EXPECT_EQ(Show({}, 1),
            (RowTexts{"@P|", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|5||5|0|0|0"}));
}

TEST_F(MemberBookSections, FollowTheirLineWorkWithTheSwitchOn) {
  Divide(true);
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show({}, 1), (RowTexts{
                             "@T|管线",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|1||1|0|0|0",
                             "@P|一区",
                             "@T|水泵",
                             "@Cg|设备\\水泵",
                             "@A|DN25|",
                             "@CI|构件数量|个|3||3|0|0|0",
                             "@T|阀门",
                             "@Cg|附件\\阀门",
                             "@A|DN25|",
                             "@CI|构件数量|个|2||2|0|0|0",
                             // No heading for the second section: it has nothing but line work.
                             "@T|管线",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|4||4|0|0|0",
                         }));
}

TEST_F(MemberBookSections, AddUpByTypeWithTheSwitchOnAndTheModeOff) {
  Divide(true);
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show({}, 0), (RowTexts{
                             "@T|管线",
                             "@Cg|管道\\给水管",
                             "@A|DN25|",
                             "@CI|管道长度|m|10||10|0|0|0",
                             "@T|水泵",
                             "@Cg|设备\\水泵",
                             "@A|DN25|",
                             "@CI|构件数量|个|3||3|0|0|0",
                             "@T|阀门",
                             "@Cg|附件\\阀门",
                             "@A|DN25|",
                             "@CI|构件数量|个|2||2|0|0|0",
                         }));
}

TEST_F(MemberBookSections, ATypeWithoutRowsHasNoHeading) {
  Divide(true);
  Report::SNewCondition condition;
  condition.categories = {L"附件\\阀门"};
  EXPECT_EQ(Show(condition),
            (RowTexts{"@T|阀门", "@Cg|附件\\阀门", "@A|DN25|", "@CI|构件数量|个|2||2|0|0|0"}));
}

TEST_F(MemberBook, OfTypesWithEqualSortNumbersTheFirstStays) {
  CTinyProject project;
  project.Detail()
      .Row({.category = kValve, .calItem = Pieces(1)})
      .Row({.category = kPump, .calItem = Pieces(2)});
  Open(project);
  Divide(true);
  EXPECT_EQ(Show(),
            (RowTexts{"@T|水泵", "@Cg|设备\\水泵", "@A|DN25|", "@CI|构件数量|个|2||2|0|0|0"}));
}

TEST_F(MemberBook, ATypeIsSortedByTheKindThatWasFoldedFirst) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"设备\\水箱", 3)
      .KindSort(kPlumbing, L"附件\\阀门", 2)
      .KindSort(kPlumbing, L"附件\\水箱", 1);
  project.Detail()
      .Row({.category = {L"设备", L"水箱"}, .calItem = Pieces(1)})
      .Row({.category = {L"附件", L"水箱"}, .calItem = Pieces(2)})
      .Row({.category = kValve, .calItem = Pieces(3)});
  Open(project);
  Divide(true);
  EXPECT_EQ(Show(), (RowTexts{"@T|阀门", "@Cg|附件\\阀门", "@A|DN25|", "@CI|构件数量|个|3||3|0|0|0",
                              "@T|水箱", "@Cg|附件\\水箱", "@A|DN25|", "@CI|构件数量|个|2||2|0|0|0",
                              "@Cg|设备\\水箱", "@A|DN25|", "@CI|构件数量|个|1||1|0|0|0"}));
}

TEST_F(MemberBook, ShowsNothingWhereTheSwitchDiffersBetweenFoldAndRequest) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  Open(project);
  const RowTexts undivided{"@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|1||1|0|0|0"};
  const RowTexts divided{"@T|管线", "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|1||1|0|0|0"};
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

TEST_F(MemberBookSections, ARequestLeavesNothingBehindForTheNext) {
  status.SetDispSgd({L"一区", L"二区"});
  const RowTexts before = Show({}, 1);
  Report::SNewCondition other;
  other.categories = {L"附件"};
  other.floors = {{L"1", L"1"}};
  other.sysCodes = {L"A"};
  EXPECT_EQ(Show(other, 0), (RowTexts{"@Cg|附件\\阀门", "@A|DN25|", "@CI|构件数量|个|2||2|0|0|0"}));
  EXPECT_EQ(Show({}, 1), before);
  EXPECT_EQ(before.size(), 14U);
}

}  // namespace
