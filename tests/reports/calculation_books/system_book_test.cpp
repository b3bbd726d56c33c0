#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <ctime>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "report_model/report_data_method.h"
#include "reports/calculation_books/book_fixture.h"
#include "reports/calculation_books/xhl_jss2s_report.h"

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

class SystemBook : public tally_test::BookTest {
 protected:
  static CXhlJss2SReport& Book() { return GetReport<CXhlJss2SReport>(Report::ReportSysJss, 2); }
  static RowTexts Show(int level, const Report::SNewCondition& condition = {},
                       int sectionMode = 0) {
    Report::CellArray cells;
    Book().GetSysJssData(cells, kPlumbing, condition, level, sectionMode);
    return tally_test::Rows(cells);
  }
  /// The rows without kinds and attributes.
  static RowTexts ShowShort(int level, const Report::SNewCondition& condition = {},
                            int sectionMode = 0) {
    RowTexts rows = Show(level, condition, sectionMode);
    std::erase_if(rows, [](const std::string& row) {
      return row.starts_with("@A") || row.starts_with("@Cg");
    });
    return rows;
  }
};

// One project at all levels.

class SystemBookLevels : public SystemBook {
 protected:
  SystemBookLevels() {
    project.KindSort(kPlumbing, L"管道\\给水管", 1);
    project.Detail()
        .Row({.component = L"a1", .sysCode = L"A", .calItem = Length(1, L"1")})
        .Row({.component = L"b1", .sysCode = L"A\\B", .calItem = Length(2, L"1+1")})
        .Row({.component = L"b2", .sysCode = L"A\\B", .calItem = Length(2, L"1+1")})
        .Row({.component = L"c1", .sysCode = L"A\\B\\C", .calItem = Length(5, L"5")})
        .Row({.component = L"c2", .sysCode = L"A\\B\\C", .calItem = Length(6, L"2*3")})
        .Row({.component = L"c1", .sysCode = L"A\\B\\C", .calItem = Bracket(3)})
        .Row({.component = L"d1",
              .sysCode = L"D",
              .calItem = {.name = L"管道长度",
                          .quantity1 = 7,
                          .quantity2 = 70,
                          .quantity3 = -0.5,
                          .quantity4 = 1e6,
                          .expression = L"7"}});
    // Without numbers yet.
    unnumbered = project;
    project.SysCodeSort(kPlumbing, L"A", 1, L"给水")
        .SysCodeSort(kPlumbing, L"A&B", 2)
        .SysCodeSort(kPlumbing, L"A&B&C", 3, L"支路")
        .SysCodeSort(kPlumbing, L"D", 5);
    Open(project);
  }

  CTinyProject project;
  CTinyProject unnumbered;
};

TEST_F(SystemBookLevels, Level1AddsUpOverAllSystems) {
  EXPECT_EQ(Show(1), (RowTexts{
                         "@F|1|1",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|23|a1$$b1$b2$$c2$$c1$$d1$$|23|70|-0.5|1e+06",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|支架|kg|3|c1$$|3|0|0|0",
                     }));
}

TEST_F(SystemBookLevels, Level2ListsTheSecondLevelInTheFormula) {
  EXPECT_EQ(Show(2), (RowTexts{
                         "@F|1|1",
                         "@S|A(给水)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|1+15|a1$$$b1$b2$$c2$$c1$$$|16|0|0|0",
                         "@S|A(给水)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|支架|kg|||3|0|0|0",
                         "@S|D",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|7|d1$$$|7|70|-0.5|1e+06",
                     }));
}

TEST_F(SystemBookLevels, Level3ListsTheThirdLevelInTheFormula) {
  EXPECT_EQ(Show(3), (RowTexts{
                         "@F|1|1",
                         "@S|A\\*A(给水)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|1|a1$$$|1|0|0|0",
                         "@S|A\\B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|4+11|b1$b2$$$c2$$c1$$$|15|0|0|0",
                         "@S|A\\B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|支架|kg|||3|0|0|0",
                         "@S|D\\*D",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|7|d1$$$|7|70|-0.5|1e+06",
                     }));
}

TEST_F(SystemBookLevels, Level4FoldsTheResultsOfAnItemIntoOneTerm) {
  EXPECT_EQ(Show(4), (RowTexts{
                         "@F|1|1",
                         "@S|A\\*A(给水)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|1|a1$$$|1|0|0|0",
                         "@S|A\\B\\*B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|4|b1$b2$$$|4|0|0|0",
                         "@S|A\\B\\C(支路)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|11|c2$$c1$$$|11|0|0|0",
                         "@S|A\\B\\C(支路)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|支架|kg|||3|0|0|0",
                         "@S|D\\*D",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|7|d1$$$|7|70|-0.5|1e+06",
                     }));
}

TEST_F(SystemBookLevels, Level5HasATermAndARowForEachCircuit) {
  EXPECT_EQ(Show(5), (RowTexts{
                         "@F|1|1",
                         "@S|A\\*A(给水)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|1|a1$$$|1|0|0|0",
                         "@S|A\\*A(给水)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路1|1|a1$$|1|0|0|0",
                         "@S|A\\B\\*B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|4|b1$b2$$$|4|0|0|0",
                         "@S|A\\B\\*B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路1|(1+1)*2件|b1$b2$$|4|0|0|0",
                         "@S|A\\B\\C(支路)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|6+5|c2$$$c1$$$|11|0|0|0",
                         "@S|A\\B\\C(支路)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|支架|kg|||3|0|0|0",
                         "@S|A\\B\\C(支路)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路1|2*3|c2$$|6|0|0|0",
                         "@S|A\\B\\C(支路)",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路2|5|c1$$|5|0|0|0",
                         "@S|D\\*D",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|7|d1$$$|7|70|-0.5|1e+06",
                         "@S|D\\*D",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路1|7|d1$$|7|70|-0.5|1e+06",
                     }));
}

TEST_F(SystemBookLevels, OtherLevelsShowOneEmptySystemCode) {
  // The empty code has no number of its own, and no child's parent has that of the unnumbered.
  const RowTexts expected{
      "@F|1|1",
      "@S|",
      "@Cg|管道\\给水管",
      "@A|DN25|",
      "@CI|管道长度|m|||23|70|-0.5|1e+06",
      "@S|",
      "@Cg|管道\\给水管",
      "@A|DN25|",
      "@CI|支架|kg|||3|0|0|0",
  };
  EXPECT_EQ(Show(0), expected);
  EXPECT_EQ(Show(6), expected);
  EXPECT_EQ(Show(-1), expected);
  EXPECT_EQ(Show(2147483647), expected);
}

TEST_F(SystemBookLevels, OtherLevelsListEveryPathWhereNothingHasANumber) {
  Open(unnumbered);
  const RowTexts expected{
      "@F|1|1",
      "@S|",
      "@CI|管道长度|m|1+4+11+7|a1$$$b1$b2$$$c2$$c1$$$d1$$$|23|70|-0.5|1e+06",
      "@S|",
      "@CI|支架|kg|||3|0|0|0",
  };
  EXPECT_EQ(ShowShort(0), expected);
  EXPECT_EQ(ShowShort(6), expected);
}

TEST_F(SystemBookLevels, OtherLevelsTakeTheNumberAndRemarkOfTheEmptyCode) {
  // A path of the same number then counts as a child.
  project.SysCodeSort(kPlumbing, L"", 5, L"空");
  Open(project);
  EXPECT_EQ(ShowShort(6), (RowTexts{"@F|1|1", "@S|(空)", "@CI|管道长度|m|7|d1$$$|23|70|-0.5|1e+06",
                                    "@S|(空)", "@CI|支架|kg|||3|0|0|0"}));
}

TEST_F(SystemBookLevels, ARequestLeavesNothingBehindForTheNext) {
  const RowTexts before = Show(5);
  Report::SNewCondition other;
  other.sysCodes = {L"D"};
  other.floors = {{L"1", L"1"}};
  other.categories = {L"管道"};
  EXPECT_EQ(ShowShort(1, other), (RowTexts{"@F|1|1", "@CI|管道长度|m|7|d1$$|7|70|-0.5|1e+06"}));
  EXPECT_EQ(Show(5), before);
  EXPECT_EQ(before.size(), 41U);
}

TEST(SystemBookLevel, OpensUpToThreeSystemCodeLevels) {
  const std::vector<int> opened{0, 0, 0, 1, 2, 3, 3, 0};
  for (int level = -1; level <= 6; ++level) {
    EXPECT_EQ(CXhlJss2SReport::GetSysCodeLevel(level),
              opened.at(static_cast<std::size_t>(level + 1)))
        << level;
  }
}

TEST_F(SystemBook, CodesOfMoreThanThreeLevelsAreTakenAsTheyStand) {
  CTinyProject project;
  project.SysCodeSort(kPlumbing, L"A", 1)
      .SysCodeSort(kPlumbing, L"A&B&C", 3)
      .SysCodeSort(kPlumbing, L"A&B&C&D", 1, L"深");
  project.Detail()
      .Row({.sysCode = L"A\\B\\C\\D", .calItem = Length(2)})
      .Row({.sysCode = L"A\\B\\C", .calItem = Length(3)});
  Open(project);
  // A\B\C is cut to A\B, a child of A. A\B\C\D\*D is not cut: its parent is A\B\C\D, which has the
  // number of A.
  EXPECT_EQ(ShowShort(2), (RowTexts{"@F|1|1", "@S|A", "@CI|管道长度|m|3+2|c1$$$c1$$$|5|0|0|0"}));
  EXPECT_EQ(ShowShort(4),
            (RowTexts{"@F|1|1", "@S|A\\B\\C\\D\\*D(深)", "@CI|管道长度|m|2|c1$$$|2|0|0|0",
                      "@S|A\\B\\C", "@CI|管道长度|m|3|c1$$$|3|0|0|0"}));
}

// Floors.

TEST_F(SystemBook, ARepeatedFloorMultipliesFormulasAndQuantities) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"2,5", L"2,5"},
                        .calItem = {.name = L"管道长度",
                                    .quantity1 = 2,
                                    .quantity2 = 3,
                                    .quantity3 = -0.25,
                                    .quantity4 = 1e5,
                                    .expression = L"2"}});
  Open(project);
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|2,5|2,5", "@CI|管道长度|m|2*4层|c1$$|8|12|-1|400000"}));
  EXPECT_EQ(ShowShort(5),
            (RowTexts{"@F|2,5|2,5", "@S|A\\*A", "@CI|管道长度|m|8|c1$$$|8|12|-1|400000", "@S|A\\*A",
                      "@L|管道长度|m|回路1|2*4层|c1$$|8|12|-1|400000"}));
}

TEST_F(SystemBook, TheFirstResultDecidesTheFloorsOfARow) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"标准层", L"2,5"}, .calItem = Length(1)})
      .Row({.floor = {L"标准层", L"7"}, .calItem = Length(10)});
  Open(project);
  EXPECT_EQ(ShowShort(1),
            (RowTexts{"@F|标准层|标准层", "@CI|管道长度|m|11*4层|c1$$c1$$|44|0|0|0"}));
  // The formula's child has each result with its own floors.
  EXPECT_EQ(ShowShort(4),
            (RowTexts{"@F|标准层|标准层", "@S|A\\*A", "@CI|管道长度|m|14|c1$$c1$$$|44|0|0|0"}));
}

TEST_F(SystemBook, AnEmptyFloorTextStandsForNoFloorsAndKeepsTheSign) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"1", L""}, .calItem = Length(-2, L"3-5")});
  Open(project);
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|1|1", "@CI|管道长度|m|-2*0层|c1$$|-0|0|0|0"}));
  EXPECT_EQ(ShowShort(5), (RowTexts{"@F|1|1", "@S|A\\*A", "@CI|管道长度|m|-0|c1$$$|-0|0|0|0",
                                    "@S|A\\*A", "@L|管道长度|m|回路1|3-5|c1$$|-0|0|0|0"}));
}

TEST_F(SystemBook, FloorsRunFromTheLowestAndOfThoseWithoutANumberTheFirstStays) {
  CTinyProject project;
  for (const wchar_t* floor : {L"10", L"2", L"屋面", L"2,5", L"-1", L"夹层"}) {
    project.Detail().Row({.floor = {floor, L"1"}, .calItem = Length(1)});
  }
  Open(project);
  RowTexts rows = Show(1);
  std::erase_if(rows, [](const std::string& row) { return !row.starts_with("@F"); });
  EXPECT_EQ(rows, (RowTexts{"@F|夹层|夹层", "@F|-1|-1", "@F|2,5|2,5", "@F|2|2", "@F|10|10"}));
}

class SystemBookFloors : public SystemBook {
 protected:
  SystemBookFloors() {
    CTinyProject project;
    project.Detail()
        .Row({.floor = {L"1", L"1"}, .component = L"a", .calItem = Length(1)})
        .Row({.floor = {L"2,5", L"2,5"}, .component = L"b", .calItem = Length(10, L"4+6")})
        .Row({.floor = {L"2,5", L"3"}, .component = L"c", .calItem = Length(100, L"100")})
        .Row({.floor = {L"2,5", L"9"}, .component = L"d", .calItem = Length(1000, L"1000")});
    Open(project);
  }
  static RowTexts With(const std::vector<Report::SFloorPair>& floors, int level = 1) {
    Report::SNewCondition condition;
    condition.floors = floors;
    return ShowShort(level, condition);
  }
};

TEST_F(SystemBookFloors, ArePickedByTheirNodes) {
  EXPECT_EQ(With({{L"2,5", L"2,5"}, {L"1", L"1"}}),
            (RowTexts{"@F|1|1", "@CI|管道长度|m|1|a$$|1|0|0|0", "@F|2,5|2,5",
                      "@CI|管道长度|m|1110*4层|b$$c$$d$$|4440|0|0|0"}));
  EXPECT_EQ(With({{L"3", L"3"}, {L"x", L"1"}}), RowTexts{});
}

TEST_F(SystemBookFloors, CountOnceWhenPickedOutOfARepeatedOne) {
  EXPECT_EQ(With({{L"2,5", L"3"}}), (RowTexts{"@F|2,5|3", "@CI|管道长度|m|110|b$$c$$|110|0|0|0"}));
  EXPECT_EQ(With({{L"2,5", L"3"}}, 5),
            (RowTexts{"@F|2,5|3", "@S|A\\*A", "@CI|管道长度|m|10+100|b$$$c$$$|110|0|0|0",
                      "@S|A\\*A", "@L|管道长度|m|回路1|4+6|b$$|10|0|0|0", "@S|A\\*A",
                      "@L|管道长度|m|回路2|100|c$$|100|0|0|0"}));
}

TEST_F(SystemBookFloors, CountForThePickedTextWhereItIsARangeItself) {
  EXPECT_EQ(With({{L"2,5", L"3,4"}}),
            (RowTexts{"@F|2,5|3,4", "@CI|管道长度|m|10*2层|b$$|20|0|0|0"}));
}

TEST_F(SystemBookFloors, StandInTheOrderOfThePickedFloorsAndOnceEach) {
  EXPECT_EQ(
      With({{L"2,5", L"4"}, {L"1", L"1"}, {L"2,5", L"2"}, {L"1", L"1"}}),
      (RowTexts{"@F|1|1", "@CI|管道长度|m|1|a$$|1|0|0|0", "@F|2,5|2",
                "@CI|管道长度|m|10|b$$|10|0|0|0", "@F|2,5|4", "@CI|管道长度|m|10|b$$|10|0|0|0"}));
}

// Formulas of circuits.

struct SCircuit {
  std::wstring expression;
  int components;
  std::wstring floorText;
  std::string formula;
};

void PrintTo(const SCircuit& circuit, std::ostream* out) {
  *out << circuit.formula;
}

class SystemBookCircuit : public SystemBook, public testing::WithParamInterface<SCircuit> {};

TEST_P(SystemBookCircuit, WrapsItsExpression) {
  CTinyProject project;
  for (int i = 0; i < GetParam().components; ++i) {
    project.Detail().Row(
        {.floor = {L"1", GetParam().floorText}, .calItem = Length(1, GetParam().expression)});
  }
  Open(project);
  const RowTexts rows = ShowShort(5);
  ASSERT_EQ(rows.size(), 5U);
  const std::string begin = "@L|管道长度|m|回路1|" + GetParam().formula + "|c1$";
  EXPECT_EQ(rows.back().substr(0, begin.size()), begin);
}

INSTANTIATE_TEST_SUITE_P(Formulas, SystemBookCircuit,
                         testing::Values(SCircuit{L"1+2", 1, L"1", "1+2"},                //
                                         SCircuit{L"2.5", 2, L"1", "2.5*2件"},            //
                                         SCircuit{L"1+2", 2, L"1", "(1+2)*2件"},          //
                                         SCircuit{L"5-3", 3, L"1", "(5-3)*3件"},          //
                                         SCircuit{L"2.5", 1, L"2,5", "2.5*4层"},          //
                                         SCircuit{L"5-3", 1, L"2,5", "(5-3)*4层"},        //
                                         SCircuit{L"2.5", 2, L"2,5", "2.5*2件*4层"},      //
                                         SCircuit{L"1+2", 2, L"2/4", "((1+2)*2件)*2层"},  //
                                         SCircuit{L"(1+2)*(3-1)", 2, L"2/4",
                                                  "(((1+2)*(3-1))*2件)*2层"},
                                         SCircuit{L"-2", 2, L"1", "(-2)*2件"},  //
                                         SCircuit{L"1e+06", 1, L"2/4", "(1e+06)*2层"},
                                         SCircuit{L"1e-06", 2, L"1", "(1e-06)*2件"},
                                         SCircuit{L"", 1, L"2/4", "*2层"},  //
                                         SCircuit{L"", 2, L"1", "*2件"},    //
                                         SCircuit{L"%d%s", 2, L"1", "%d%s*2件"}));

TEST_F(SystemBook, TermsMayBeNegativeAndOfMillions) {
  CTinyProject project;
  project.Detail()
      .Row({.calItem = Length(-3, L"a")})
      .Row({.calItem = Length(2e6, L"b")})
      .Row({.calItem = Length(-0.5, L"c")});
  Open(project);
  EXPECT_EQ(ShowShort(5).at(2), "@CI|管道长度|m|-3+2e+06+-0.5|c1$$$c1$$$c1$$$|2e+06|0|0|0");
  EXPECT_EQ(ShowShort(1).at(1), "@CI|管道长度|m|2e+06|c1$$c1$$c1$$|2e+06|0|0|0");
}

TEST_F(SystemBook, APlusInANumberBringsNoBracketsAtLevel1) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"1", L"1,2"}, .calItem = Length(1e6)});
  Open(project);
  EXPECT_EQ(ShowShort(1).at(1), "@CI|管道长度|m|1e+06*2层|c1$$|2e+06|0|0|0");
}

TEST_F(SystemBook, ComponentsWithoutANameCountAndAreNotNamed) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"", .calItem = Length(2, L"2")})
      .Row({.component = L"c1", .calItem = Length(2, L"2")})
      .Row({.component = L"", .calItem = Length(3, L"3")});
  Open(project);
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|1|1", "@CI|管道长度|m|7|c1$$$|7|0|0|0"}));
  EXPECT_EQ(ShowShort(5), (RowTexts{"@F|1|1", "@S|A\\*A", "@CI|管道长度|m|4+3|c1$$$$$|7|0|0|0",
                                    "@S|A\\*A", "@L|管道长度|m|回路1|2*2件|c1$$|4|0|0|0",
                                    "@S|A\\*A", "@L|管道长度|m|回路2|3|$|3|0|0|0"}));
}

// Numbering of circuits.

TEST_F(SystemBook, CircuitsRunByNumberAndTheirTermsByText) {
  CTinyProject project;
  for (int i = 1; i <= 11; ++i) {
    // Expressions in the order of the numbers: "10" to "20".
    project.Detail().Row({.calItem = Length(i, std::to_wstring(i + 9))});
  }
  Open(project);
  const RowTexts rows = ShowShort(5);
  ASSERT_EQ(rows.size(), 25U);
  const std::string begin = "@CI|管道长度|m|1+10+11+2+3+4+5+6+7+8+9|";
  EXPECT_EQ(rows.at(2).substr(0, begin.size()), begin);
  for (int i = 1; i <= 11; ++i) {
    const std::string number = std::to_string(i);
    EXPECT_EQ(
        rows.at(static_cast<std::size_t>(2 * i + 2)),
        "@L|管道长度|m|回路" + number + "|" + std::to_string(i + 9) + "|c1$$|" + number + "|0|0|0");
  }
}

TEST_F(SystemBook, CircuitsStartAnewForEachSystemAttributeAndKind) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"管道\\给水管", 1)
      .KindSort(kPlumbing, L"附件\\阀门", 2)
      .SysCodeSort(kPlumbing, L"A", 1)
      .SysCodeSort(kPlumbing, L"A&B", 2);
  project.Detail()
      .Row({.sysCode = L"A", .calItem = Length(1, L"1")})
      .Row({.sysCode = L"A", .calItem = Length(2, L"2")})
      .Row({.attr = {L"DN20", L""}, .sysCode = L"A", .calItem = Length(3, L"3")})
      .Row({.category = kValve, .sysCode = L"A", .calItem = Pieces(4)})
      .Row({.sysCode = L"A\\B", .calItem = Length(5, L"5")});
  Open(project);
  EXPECT_EQ(Show(5), (RowTexts{
                         "@F|1|1",
                         "@S|A\\*A",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|1+2|c1$$$c1$$$|3|0|0|0",
                         "@S|A\\*A",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路1|1|c1$$|1|0|0|0",
                         "@S|A\\*A",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路2|2|c1$$|2|0|0|0",
                         "@S|A\\*A",
                         "@Cg|管道\\给水管",
                         "@A|DN20|",
                         "@CI|管道长度|m|3|c1$$$|3|0|0|0",
                         "@S|A\\*A",
                         "@Cg|管道\\给水管",
                         "@A|DN20|",
                         "@L|管道长度|m|回路1|3|c1$$|3|0|0|0",
                         "@S|A\\*A",
                         "@Cg|附件\\阀门",
                         "@A|DN25|",
                         "@CI|构件数量|个|4|c1$$$|4|0|0|0",
                         "@S|A\\*A",
                         "@Cg|附件\\阀门",
                         "@A|DN25|",
                         "@L|构件数量|个|回路1||c1$$|4|0|0|0",
                         "@S|A\\B\\*B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@CI|管道长度|m|5|c1$$$|5|0|0|0",
                         "@S|A\\B\\*B",
                         "@Cg|管道\\给水管",
                         "@A|DN25|",
                         "@L|管道长度|m|回路1|5|c1$$|5|0|0|0",
                     }));
}

TEST_F(SystemBook, MainItemsOfSeveralUnitsShareTermsAndCircuitNumbers) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"m1", .calItem = Length(1, L"1")})
      .Row({.component = L"k1",
            .calItem = {.name = L"管道长度", .unit = L"km", .quantity1 = 2, .expression = L"2"}})
      .Row({.component = L"k2",
            .calItem = {.name = L"管道长度", .unit = L"km", .quantity1 = 4, .expression = L"4"}});
  Open(project);
  // Numbers start anew with the second item, so its circuit 1 finds the first one's in place.
  EXPECT_EQ(ShowShort(5), (RowTexts{
                              "@F|1|1",
                              "@S|A\\*A",
                              "@CI|管道长度|km|3+4|k1$$m1$$$k2$$$|6|0|0|0",
                              "@S|A\\*A",
                              "@CI|管道长度|m|3+4|k1$$m1$$$k2$$$|1|0|0|0",
                              "@S|A\\*A",
                              "@L|管道长度|km|回路1|2|k1$$|2|0|0|0",
                              "@S|A\\*A",
                              "@L|管道长度|km|回路2|4|k2$$|4|0|0|0",
                          }));
}

TEST_F(SystemBook, ASystemThatTwoPathsTakeCountsTwiceAndShowsItsCircuitsOnce) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1, L"1")}).Row({.calItem = Length(2, L"2")});
  Open(project);
  Report::SNewCondition condition;
  condition.sysCodes = {L"A", L"A\\*A"};
  EXPECT_EQ(ShowShort(5, condition),
            (RowTexts{"@F|1|1", "@S|A\\*A", "@CI|管道长度|m|2+4|c1$$c1$$$c1$$c1$$$|6|0|0|0",
                      "@S|A\\*A", "@L|管道长度|m|回路1|1|c1$$|1|0|0|0", "@S|A\\*A",
                      "@L|管道长度|m|回路2|2|c1$$|2|0|0|0"}));
}

TEST_F(SystemBook, HiddenResultsTakeNoCircuitNumber) {
  CTinyProject project;
  project.Detail()
      .Row({.sgd = L"一区", .calItem = Length(1, L"1")})
      .Row({.sgd = L"二区", .calItem = Length(2, L"2")});
  Open(project);
  ShowOnly({L"二区"});
  EXPECT_EQ(ShowShort(5), (RowTexts{"@F|1|1", "@S|A\\*A", "@CI|管道长度|m|2|c1$$$|2|0|0|0",
                                    "@S|A\\*A", "@L|管道长度|m|回路1|2|c1$$|2|0|0|0"}));
}

TEST_F(SystemBook, AMinorItemHasNoCircuitsAndNoFormula) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"2,5", L"2,5"}, .calItem = Bracket(3)});
  Open(project);
  const std::string row = "@CI|支架|kg|||12|0|0|0";
  EXPECT_EQ(ShowShort(2), (RowTexts{"@F|2,5|2,5", "@S|A", row}));
  EXPECT_EQ(ShowShort(3), (RowTexts{"@F|2,5|2,5", "@S|A\\*A", row}));
  EXPECT_EQ(ShowShort(4), (RowTexts{"@F|2,5|2,5", "@S|A\\*A", row}));
  EXPECT_EQ(ShowShort(5), (RowTexts{"@F|2,5|2,5", "@S|A\\*A", row}));
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|2,5|2,5", "@CI|支架|kg|3*4层|c1$$|12|0|0|0"}));
}

// The order of rows, also where it is no order.

TEST_F(SystemBook, RowsGoBySystemKindSizeTextAndItem) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"管道\\给水管", 2)
      .KindSort(kPlumbing, L"附件\\阀门", 1)
      .SysCodeSort(kPlumbing, L"B", 1)
      .SysCodeSort(kPlumbing, L"A", 2);
  const auto add = [&](const std::wstring& sysCode, const tally_test::STinyCategory& category,
                       const tally_test::STinyAttr& attr, const std::wstring& item) {
    project.Detail().Row({.category = category,
                          .attr = attr,
                          .sysCode = sysCode,
                          .calItem = {.name = item, .quantity1 = 1}});
  };
  add(L"A", kPipe, {L"DN25", L""}, L"支架");
  add(L"A", kPipe, {L"DN25", L""}, L"防腐");
  add(L"A", kPipe, {L"DN25", L""}, L"管道长度");
  add(L"A", kPipe, {L"DN100", L""}, L"支架");
  add(L"A", kValve, {L"DN100", L""}, L"支架");
  add(L"A", kValve, {L"DN25", L""}, L"支架");
  add(L"B", kPipe, {L"DN25", L""}, L"支架");
  Open(project);
  const std::string bracket = "@CI|支架|m|||1|0|0|0";
  EXPECT_EQ(Show(2), (RowTexts{"@F|1|1",
                               "@S|B",
                               "@Cg|管道\\给水管",
                               "@A|DN25|",
                               bracket,
                               "@S|A",
                               "@Cg|附件\\阀门",
                               "@A|DN25|",
                               bracket,
                               "@S|A",
                               "@Cg|附件\\阀门",
                               "@A|DN100|",
                               bracket,
                               "@S|A",
                               "@Cg|管道\\给水管",
                               "@A|DN100|",
                               bracket,
                               "@S|A",
                               "@Cg|管道\\给水管",
                               "@A|DN25|",
                               "@CI|管道长度|m|1|c1$$$|1|0|0|0",
                               "@S|A",
                               "@Cg|管道\\给水管",
                               "@A|DN25|",
                               "@CI|防腐|m|||1|0|0|0",
                               "@S|A",
                               "@Cg|管道\\给水管",
                               "@A|DN25|",
                               bracket}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  RowTexts sizes = Show(2);
  std::erase_if(sizes, [](const std::string& row) { return !row.starts_with("@A"); });
  EXPECT_EQ(sizes, (RowTexts{"@A|DN25|", "@A|DN25|", "@A|DN100|", "@A|DN25|", "@A|DN25|",
                             "@A|DN25|", "@A|DN100|"}));
}

TEST_F(SystemBook, SizesThatDifferInBlanksAreRowsOfTheirOwn) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN25", L"钢"}, .calItem = Length(1)})
      .Row({.attr = {L"DN 25", L"铜"}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(1),
            (RowTexts{"@F|1|1", "@Cg|管道\\给水管", "@A|DN 25|铜", "@CI|管道长度|m|2|c1$$|2|0|0|0",
                      "@Cg|管道\\给水管", "@A|DN25|钢", "@CI|管道长度|m|1|c1$$|1|0|0|0"}));
}

TEST_F(SystemBook, KindsOfEqualSortNumbersFallTogetherUnderTheFirst) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"g", .category = {L"管道", L"给水管"}, .calItem = Length(1)})
      .Row({.component = L"p", .category = {L"管道", L"排水管"}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(Show(1), (RowTexts{"@F|1|1", "@Cg|管道\\排水管", "@A|DN25|",
                               "@CI|管道长度|m|3|p$$g$$|3|0|0|0"}));
}

TEST_F(SystemBook, KindsOfEqualSortNumbersShareTermsAndCircuitNumbers) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"p1", .category = {L"管道", L"排水管"}, .calItem = Length(1, L"1")})
      .Row({.component = L"g1", .category = {L"管道", L"给水管"}, .calItem = Length(10, L"4+6")})
      .Row({.component = L"g2", .category = {L"管道", L"给水管"}, .calItem = Length(20, L"5")})
      .Row({.component = L"g2", .category = {L"管道", L"给水管"}, .calItem = Bracket(3)});
  Open(project);
  const std::string ofFirst = "@Cg|管道\\排水管";
  const std::string ofSecond = "@Cg|管道\\给水管";
  EXPECT_EQ(Show(5), (RowTexts{"@F|1|1", "@S|A\\*A", ofFirst, "@A|DN25|",
                               "@CI|管道长度|m|11+20|p1$$g1$$$g2$$$|31|0|0|0", "@S|A\\*A", ofSecond,
                               "@A|DN25|", "@CI|支架|kg|||3|0|0|0", "@S|A\\*A", ofFirst, "@A|DN25|",
                               "@L|管道长度|m|回路1|1|p1$$|1|0|0|0", "@S|A\\*A", ofSecond,
                               "@A|DN25|", "@L|管道长度|m|回路2|5|g2$$|20|0|0|0"}));
  EXPECT_EQ(ShowShort(4),
            (RowTexts{"@F|1|1", "@S|A\\*A", "@CI|管道长度|m|31|p1$$g1$$g2$$$|31|0|0|0", "@S|A\\*A",
                      "@CI|支架|kg|||3|0|0|0"}));
}

TEST_F(SystemBook, KindsOfEqualSortNumbersWhoseSizesRunBothWaysHaveNoOrder) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN20", L""}, .calItem = Length(1)})
      .Row({.attr = {L"DN25", L""}, .calItem = Length(2)})
      .Row({.category = kValve, .attr = {L"DN20", L""}, .calItem = Pieces(3)})
      .Row({.category = kValve, .attr = {L"DN25", L""}, .calItem = Pieces(4)});
  Open(project);
  // Each valve is put in where its own way of running leads it, past the pipes that run down.
  EXPECT_EQ(Show(1),
            (RowTexts{"@F|1|1", "@Cg|附件\\阀门", "@A|DN20|", "@CI|构件数量|个|3|c1$$|3|0|0|0",
                      "@Cg|附件\\阀门", "@A|DN25|", "@CI|构件数量|个|4|c1$$|4|0|0|0",
                      "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|2|c1$$|2|0|0|0",
                      "@Cg|管道\\给水管", "@A|DN20|", "@CI|管道长度|m|1|c1$$|1|0|0|0"}));
}

TEST_F(SystemBook, ItemsOfOneNarrowNameFallTogetherUnderTheFirstWhateverTheirUnits) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"n", .calItem = {.name = L"ñ", .unit = L"kg", .quantity1 = 1}})
      .Row({.component = L"s", .calItem = {.name = L"ß", .unit = L"m", .quantity1 = 2}});
  Open(project);
  // Neither name has characters of the code page, so both are "?" there.
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|1|1", "@CI|ß|m|3|s$$n$$|3|0|0|0"}));
}

TEST_F(SystemBook, SystemsOfEqualSortNumbersFallTogetherUnderTheFirst) {
  CTinyProject project;
  project.Detail()
      .Row({.component = L"a", .sysCode = L"A", .calItem = Length(1, L"1")})
      .Row({.component = L"b", .sysCode = L"B", .calItem = Length(2, L"2")});
  Open(project);
  // The circuit of B is equal to the row of A and so is not put in.
  EXPECT_EQ(ShowShort(5), (RowTexts{"@F|1|1", "@S|A\\*A", "@CI|管道长度|m|1+2|a$$$b$$$|3|0|0|0",
                                    "@S|A\\*A", "@L|管道长度|m|回路1|1|a$$|1|0|0|0"}));
  Report::SNewCondition condition;
  condition.sysCodes = {L"B", L"A"};
  EXPECT_EQ(ShowShort(5, condition),
            (RowTexts{"@F|1|1", "@S|B\\*B", "@CI|管道长度|m|1+2|a$$$b$$$|3|0|0|0", "@S|B\\*B",
                      "@L|管道长度|m|回路1|2|b$$|2|0|0|0"}));
}

TEST_F(SystemBook, ASystemOfEqualSortNumberIsAddedToTheSmallestRowOfTheFirst) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"附件\\阀门", 1)
      .KindSort(kPlumbing, L"管道\\给水管", 2)
      .SysCodeSort(kPlumbing, L"A", 5)
      .SysCodeSort(kPlumbing, L"B", 5)
      .SysCodeSort(kPlumbing, L"C", 4);
  project.Detail()
      .Row({.component = L"v", .category = kValve, .sysCode = L"A", .calItem = Pieces(1)})
      .Row({.component = L"a", .sysCode = L"A", .calItem = Length(10)})
      .Row({.component = L"b", .sysCode = L"B", .calItem = Length(100)})
      .Row({.component = L"c", .sysCode = L"C", .calItem = Length(1000)});
  Open(project);
  // The pipes of B equal every row of A, pipes and valves alike, and are found at the valves.
  EXPECT_EQ(Show(4),
            (RowTexts{"@F|1|1", "@S|C\\*C", "@Cg|管道\\给水管", "@A|DN25|",
                      "@CI|管道长度|m|1000|c$$$|1000|0|0|0", "@S|A\\*A", "@Cg|附件\\阀门",
                      "@A|DN25|", "@CI|构件数量|个|1|v$$$|101|0|0|0", "@S|A\\*A",
                      "@Cg|管道\\给水管", "@A|DN25|", "@CI|管道长度|m|10+100|a$$$b$$$|10|0|0|0"}));
}

TEST_F(SystemBook, SizesOfOneValueAreEqualDownwards) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN1", L""}, .calItem = Length(1, L"a")})
      .Row({.attr = {L"DN1.0", L""}, .calItem = Length(10, L"a")});
  Open(project);
  // The row has the quantities of both sizes, its formula the terms of its own.
  EXPECT_EQ(Show(4), (RowTexts{"@F|1|1", "@S|A\\*A", "@Cg|管道\\给水管", "@A|DN1|",
                               "@CI|管道长度|m|1|c1$$$|11|0|0|0"}));
}

TEST_F(SystemBook, SizesOfOneValueAreNotFoundAgainUpwards) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN1", L""}, .calItem = Length(1, L"a")})
      .Row({.attr = {L"DN1", L""}, .calItem = Length(2, L"b")})
      .Row({.attr = {L"DN1.0", L""}, .calItem = Length(10, L"a")})
      .Row({.attr = {L"DN1.0", L""}, .calItem = Length(20, L"b")});
  Open(project);
  CResultConfig::Instance()->SetLineSortDowm(false);
  // Each size goes before the other. The second result of DN1.0 is looked for behind DN1, where its
  // row is not, and put in ahead of it, where the row is: so it is left out.
  EXPECT_EQ(Show(4),
            (RowTexts{"@F|1|1", "@S|A\\*A", "@Cg|管道\\给水管", "@A|DN1.0|",
                      "@CI|管道长度|m|30|c1$$c1$$$|10|0|0|0", "@S|A\\*A", "@Cg|管道\\给水管",
                      "@A|DN1|", "@CI|管道长度|m|3|c1$$c1$$$|3|0|0|0"}));
}

/// The key of a row where two sizes of one system are all that differs.
struct SSizeRow {
  std::wstring size;
  int circuit = 0;
  mutable int quantity = 0;

  bool operator<(const SSizeRow& other) const {
    if (size != other.size) {
      return CReportDataMethod::AttSort(size, other.size, true) < 0;
    }
    return circuit < other.circuit;
  }
};

TEST_F(SystemBook, RowsOfSizesOfOneValueAreThoseOfAnOrderedSet) {
  CResultConfig::Instance()->SetLineSortDowm(false);
  Report::SNewCondition condition;
  condition.sysCodes = {L"A", L"A\\*A"};  // every result twice
  for (int count = 1; count <= 9; ++count) {
    const std::vector<std::pair<std::wstring, int>> sizes{{L"DN1", 1}, {L"DN1.0", count}};
    CTinyProject project;
    std::set<SSizeRow> expectedRows;
    for (const auto& sysCode : condition.sysCodes) {
      for (const auto& [size, circuits] : sizes) {
        for (int i = 1; i <= circuits; ++i) {
          if (sysCode == L"A") {
            project.Detail().Row({.attr = {size, L""}, .calItem = Length(i, std::to_wstring(i))});
          }
          if (const auto at = expectedRows.find({size, 0}); at != expectedRows.end()) {
            at->quantity += i;
          } else {
            expectedRows.insert({size, 0, i});
          }
          if (expectedRows.find({size, i}) == expectedRows.end()) {
            expectedRows.insert({size, i, i});
          }
        }
      }
    }
    RowTexts expected;
    for (const SSizeRow& row : expectedRows) {
      const bool isFirst = row.size == L"DN1";
      expected.push_back(isFirst ? "@A|DN1|" : "@A|DN1.0|");
      const std::string number = std::to_string(row.circuit);
      std::string tail = number + "|c1$$";
      if (row.circuit == 0) {
        tail = "2|";
        std::string references = "c1$$c1$$$";
        for (int i = 2; i <= (isFirst ? 1 : count); ++i) {
          tail.insert(tail.size() - 1, "+" + std::to_string(2 * i));
          references += "c1$$c1$$$";
        }
        tail += references;
      }
      expected.push_back(
          (row.circuit == 0 ? "@CI|管道长度|m|" : "@L|管道长度|m|回路" + number + "|") + tail +
          "|" + std::to_string(row.quantity) + "|0|0|0");
    }
    Open(project);
    RowTexts rows = Show(5, condition);
    std::erase_if(rows, [](const std::string& row) {
      return row.starts_with("@F") || row.starts_with("@S") || row.starts_with("@Cg");
    });
    EXPECT_EQ(rows, expected) << count;
  }
}

// Other filters.

class SystemBookSysCodes : public SystemBook {
 protected:
  SystemBookSysCodes() {
    CTinyProject project;
    project.Detail()
        .Row({.component = L"a", .sysCode = L"A", .calItem = Length(1)})
        .Row({.component = L"ab", .sysCode = L"A\\B", .calItem = Length(10)})
        .Row({.component = L"abc", .sysCode = L"A\\B\\C", .calItem = Length(100)})
        .Row({.component = L"d", .sysCode = L"D", .calItem = Length(1000)});
    Open(project);
  }
  static RowTexts With(const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    return ShowShort(1, condition);
  }
};

TEST_F(SystemBookSysCodes, AreTakenWithAllThatLiesBelow) {
  EXPECT_EQ(With({L"A"}), (RowTexts{"@F|1|1", "@CI|管道长度|m|111|a$$ab$$abc$$|111|0|0|0"}));
  EXPECT_EQ(With({L"A\\B"}), (RowTexts{"@F|1|1", "@CI|管道长度|m|110|ab$$abc$$|110|0|0|0"}));
  EXPECT_EQ(With({L"A\\*A"}), (RowTexts{"@F|1|1", "@CI|管道长度|m|1|a$$|1|0|0|0"}));
}

TEST_F(SystemBookSysCodes, AreTakenInTheOrderOfTheFilter) {
  EXPECT_EQ(With({L"D", L"A\\B\\C"}),
            (RowTexts{"@F|1|1", "@CI|管道长度|m|1100|d$$abc$$|1100|0|0|0"}));
}

TEST_F(SystemBookSysCodes, ThatAreNotThereShowNothing) {
  EXPECT_EQ(With({L"B"}), RowTexts{});
  EXPECT_EQ(With({L""}), RowTexts{});
  EXPECT_EQ(With({L"A\\B\\C\\X"}), RowTexts{});
}

class SystemBookKinds : public SystemBook {
 protected:
  SystemBookKinds() {
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
    RowTexts rows = Show(1, condition);
    std::erase_if(rows, [](const std::string& row) { return !row.starts_with("@Cg"); });
    return rows;
  }
};

TEST_F(SystemBookKinds, AreTakenByTheirExactCategory) {
  EXPECT_EQ(With({L"管道"}), (RowTexts{"@Cg|管道\\给水管"}));
  EXPECT_EQ(With({L"管"}), RowTexts{});
  EXPECT_EQ(With({L"给水管"}), RowTexts{});
}

TEST_F(SystemBookKinds, AreTakenByTheirExactPath) {
  EXPECT_EQ(With({L"附件\\阀门", L"管道井\\井盖"}),
            (RowTexts{"@Cg|管道井\\井盖", "@Cg|附件\\阀门"}));
  EXPECT_EQ(With({L"附件\\阀"}), RowTexts{});
  EXPECT_EQ(With({L""}), RowTexts{});
}

TEST_F(SystemBookKinds, CountOnceUnderTwoEntries) {
  Report::SNewCondition condition;
  condition.categories = {L"附件", L"附件\\阀门"};
  EXPECT_EQ(Show(1, condition),
            (RowTexts{"@F|1|1", "@Cg|附件\\阀门", "@A|DN25|", "@CI|构件数量|个|3|c1$$|3|0|0|0"}));
}

TEST_F(SystemBook, UnknownDisciplineAddsNothingAndKeepsTheCondition) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  Open(project);
  Report::SNewCondition condition;
  condition.sysCodes = {L"A"};
  Show(2, condition);
  Report::CellArray cells{L"before"};
  Book().GetSysJssData(cells, L"暖通", {}, 2, 0);
  EXPECT_EQ(cells, Report::CellArray{L"before"});
  EXPECT_EQ(Book().spec, kPlumbing);
  EXPECT_EQ(Book().condition.sysCodes, condition.sysCodes);
}

TEST_F(SystemBook, RowsWithoutASystemCodeAreLeftOut) {
  CTinyProject project;
  project.Detail()
      .Row({.sysCode = L"", .calItem = Length(1)})
      .Row({.sysCode = L"A", .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|1|1", "@CI|管道长度|m|2|c1$$|2|0|0|0"}));
}

TEST_F(SystemBook, ARowWithABadIndexFailsEveryFoldUntilItIsMended) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)}).Data().rows.at(0).sgd = 1;
  Open(project);
  for (const int variant : {0, 1, 2, 2}) {
    EXPECT_THROW(CReportMng::Instance()->GetReportData(Report::ReportSysJss, variant),
                 std::out_of_range);
  }
  project.Detail().Data().rows.at(0).sgd = 0;
  Open(project);
  EXPECT_EQ(ShowShort(1), (RowTexts{"@F|1|1", "@CI|管道长度|m|1|c1$$|1|0|0|0"}));
}

// Construction sections and the divided-node switch.

class SystemBookSections : public SystemBook {
 protected:
  SystemBookSections() {
    CTinyProject project;
    project.KindSort(kPlumbing, L"管道\\给水管", 9)
        .KindSort(kPlumbing, L"附件\\阀门", 2)
        .KindSort(kPlumbing, L"设备\\水泵", 1);
    project.Detail()
        .Row({.sgd = L"一区", .calItem = Length(1, L"1")})
        .Row({.sgd = L"一区", .category = kValve, .calItem = Pieces(2)})
        .Row({.sgd = L"一区", .category = kPump, .calItem = Pieces(3)})
        .Row({.sgd = L"二区", .calItem = Length(4, L"4")})
        .Row({.sgd = L"", .calItem = Length(6, L"6")});
    Open(project);
  }
};

TEST_F(SystemBookSections, AddUpWithoutAHeadingWithTheModeOff) {
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show(1), (RowTexts{
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
                     }));
}

TEST_F(SystemBookSections, StandUnderTheirHeadingsInTextOrder) {
  status.SetDispSgd({L"二区", L"空", L"一区"});
  Report::SNewCondition condition;
  condition.categories = {L"管道"};
  EXPECT_EQ(ShowShort(5, condition, -1), (RowTexts{
                                             "@P|一区",
                                             "@F|1|1",
                                             "@S|A\\*A",
                                             "@CI|管道长度|m|1|c1$$$|1|0|0|0",
                                             "@S|A\\*A",
                                             "@L|管道长度|m|回路1|1|c1$$|1|0|0|0",
                                             "@P|二区",
                                             "@F|1|1",
                                             "@S|A\\*A",
                                             "@CI|管道长度|m|4|c1$$$|4|0|0|0",
                                             "@S|A\\*A",
                                             "@L|管道长度|m|回路1|4|c1$$|4|0|0|0",
                                         }));
}

TEST_F(SystemBookSections, ThatAreHiddenDropOutInBothModes) {
  ShowOnly({L"二区"});
  EXPECT_EQ(ShowShort(2), (RowTexts{"@F|1|1", "@S|A", "@CI|管道长度|m|4|c1$$$|4|0|0|0"}));
  EXPECT_EQ(ShowShort(2, {}, 1),
            (RowTexts{"@P|二区", "@F|1|1", "@S|A", "@CI|管道长度|m|4|c1$$$|4|0|0|0"}));
  ShowOnly({});
  EXPECT_EQ(Show(2), RowTexts{});
  EXPECT_EQ(Show(2, {}, 1), RowTexts{});
}

TEST_F(SystemBookSections, WithNoneShownTheOnePassCountsResultsWithoutASection) {
  EXPECT_EQ(ShowShort(2, {}, 1),
            (RowTexts{"@P|", "@F|1|1", "@S|A", "@CI|管道长度|m|6|c1$$$|6|0|0|0"}));
}

TEST_F(SystemBookSections, ShowSystemsForLineWorkAloneWithTheSwitchOn) {
  Divide(true);
  status.SetDispSgd({L"一区", L"二区"});
  EXPECT_EQ(Show(5, {}, 1), (RowTexts{
                                "@P|一区",
                                "@F|1|1",
                                "@T|管线",
                                "@S|A\\*A",
                                "@Cg|管道\\给水管",
                                "@A|DN25|",
                                "@CI|管道长度|m|1|c1$$$|1|0|0|0",
                                "@S|A\\*A",
                                "@Cg|管道\\给水管",
                                "@A|DN25|",
                                "@L|管道长度|m|回路1|1|c1$$|1|0|0|0",
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
                                "@S|A\\*A",
                                "@Cg|管道\\给水管",
                                "@A|DN25|",
                                "@CI|管道长度|m|4|c1$$$|4|0|0|0",
                                "@S|A\\*A",
                                "@Cg|管道\\给水管",
                                "@A|DN25|",
                                "@L|管道长度|m|回路1|4|c1$$|4|0|0|0",
                            }));
}

TEST_F(SystemBookSections, OtherTypesShowNoSystemsAtAnyLevel) {
  Divide(true);
  Report::SNewCondition condition;
  condition.categories = {L"附件"};
  const RowTexts expected{"@F|1|1", "@T|阀门", "@Cg|附件\\阀门", "@A|DN25|",
                          "@CI|构件数量|个|2|c1$$|2|0|0|0"};
  for (int level = 0; level <= 6; ++level) {
    EXPECT_EQ(Show(level, condition), expected) << level;
  }
}

TEST_F(SystemBookSections, LineWorkFollowsTheLevelWithTheSwitchOn) {
  Divide(true);
  status.SetDispSgd({L"二区"});
  EXPECT_EQ(ShowShort(1, {}, 1),
            (RowTexts{"@P|二区", "@F|1|1", "@T|管线", "@CI|管道长度|m|4|c1$$|4|0|0|0"}));
  EXPECT_EQ(ShowShort(2, {}, 1),
            (RowTexts{"@P|二区", "@F|1|1", "@T|管线", "@S|A", "@CI|管道长度|m|4|c1$$$|4|0|0|0"}));
  EXPECT_EQ(ShowShort(6, {}, 1),
            (RowTexts{"@P|二区", "@F|1|1", "@T|管线", "@S|", "@CI|管道长度|m|4|c1$$$|4|0|0|0"}));
}

TEST_F(SystemBook, OfTypesWithEqualSortNumbersTheFirstStays) {
  CTinyProject project;
  project.Detail()
      .Row({.category = kValve, .calItem = Pieces(1)})
      .Row({.category = kPump, .calItem = Pieces(2)});
  Open(project);
  Divide(true);
  EXPECT_EQ(Show(3), (RowTexts{"@F|1|1", "@T|水泵", "@Cg|设备\\水泵", "@A|DN25|",
                               "@CI|构件数量|个|2|c1$$|2|0|0|0"}));
}

TEST_F(SystemBook, ShowsNothingWhereTheSwitchDiffersBetweenFoldAndRequest) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  Open(project);
  const RowTexts undivided{"@F|1|1", "@S|A", "@CI|管道长度|m|1|c1$$$|1|0|0|0"};
  const RowTexts divided{"@F|1|1", "@T|管线", "@S|A", "@CI|管道长度|m|1|c1$$$|1|0|0|0"};
  Report::SNewCondition filter;
  filter.sysCodes = {L"A", L"管线", L"管线\\A"};
  EXPECT_EQ(ShowShort(2), undivided);
  EXPECT_EQ(ShowShort(2, filter), undivided);
  status.SetIsDividedNode(true);
  EXPECT_EQ(Show(2), RowTexts{});
  EXPECT_EQ(Show(2, filter, 1), RowTexts{});
  CReportMng::Instance()->ClearXHLSysJSSReportData();
  EXPECT_EQ(ShowShort(2), divided);
  EXPECT_EQ(ShowShort(2, filter), divided);
  status.SetIsDividedNode(false);
  EXPECT_EQ(Show(2), RowTexts{});
  EXPECT_EQ(Show(2, filter, 1), RowTexts{});
  CReportMng::Instance()->ClearXHLSysJSSReportData();
  EXPECT_EQ(ShowShort(2), undivided);
}

TEST_F(SystemBook, DroppingTheBooksKeepsTheOtherReportsAndReadsNothingAgain) {
  CTinyProject project;
  project.Detail().Row({.calItem = Length(1)});
  project.Hz().Row({.calItem = {.name = L"管道长度", .quantity = 1}});
  Open(project);
  const IReport* summary = CReportMng::Instance()->GetReportData(Report::ReportXhlHz, 0);
  for (const int variant : {0, 1, 2}) {
    CReportMng::Instance()->GetReportData(Report::ReportSysJss, variant);
  }
  Show(1);
  ASSERT_EQ(Book().spec, kPlumbing);
  Divide(true);
  EXPECT_EQ(Book().spec, L"");
  EXPECT_EQ(CReportMng::Instance()->GetReportData(Report::ReportXhlHz, 0), summary);
  EXPECT_EQ(db->Count(tally_test::EDbRead::Detail), 1);
}

// Work.

/// One floor with `count` system codes of one level, numbered in their order, each with one result.
CTinyProject ProjectOfManyCodes(int count) {
  CTinyProject project;
  auto detail = project.Detail();
  detail.Row({.sysCode = L"S100000", .calItem = Length(1)});
  auto& data = detail.Data();
  const auto first = data.rows.front();
  project.SysCodeSort(kPlumbing, L"S100000", 0);
  for (int i = 1; i < count; ++i) {
    const std::wstring code = L"S" + std::to_wstring(100000 + i);
    project.SysCodeSort(kPlumbing, code, i);
    data.sysCodes.push_back({i + 1, code});
    data.rows.push_back(first);
    data.rows.back().sysCode = i;
  }
  return project;
}

TEST_F(SystemBook, TheWorkOfFormulasGrowsWithTheChildrenTaken) {
  // Looking at every child for every row would be 2500 million looks.
  constexpr int kCodes = 50000;
  Open(ProjectOfManyCodes(kCodes));
  const std::clock_t start = std::clock();  // of this process alone, however busy the machine is
  Report::CellArray cells;
  Book().GetSysJssData(cells, kPlumbing, {}, 4, 0);
  EXPECT_LT(std::clock() - start, 10 * CLOCKS_PER_SEC);

  const RowTexts rows = tally_test::Rows(cells);
  ASSERT_EQ(rows.size(), 1U + 4U * kCodes);
  for (const std::size_t i : {0U, 1U, 24999U, kCodes - 1U}) {
    EXPECT_EQ(rows.at(1 + 4 * i),
              "@S|S" + std::to_string(100000 + i) + "\\*S" + std::to_string(100000 + i));
    EXPECT_EQ(rows.at(4 + 4 * i), "@CI|管道长度|m|1|c1$$$|1|0|0|0");
  }
}

TEST_F(SystemBook, AFormulaOfManyChildrenIsComposedOnce) {
  constexpr int kCircuits = 50000;
  CTinyProject project;
  auto detail = project.Detail();
  detail.Row({.calItem = Length(1, L"100000")});
  auto& data = detail.Data();
  const auto firstRow = data.rows.front();
  for (int i = 1; i < kCircuits; ++i) {
    auto item = data.calItems.front();
    item.expression = std::to_wstring(100000 + i);
    data.calItems.push_back(item);
    data.rows.push_back(firstRow);
    data.rows.back().calItem = i;
  }
  Open(project);
  const auto start = std::chrono::steady_clock::now();
  Report::CellArray cells;
  Book().GetSysJssData(cells, kPlumbing, {}, 5, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));

  const RowTexts rows = tally_test::Rows(cells);
  ASSERT_EQ(rows.size(), 5U + 4U * kCircuits);
  std::string formula = "1";
  std::string references = "c1$$$";
  for (int i = 1; i < kCircuits; ++i) {
    formula += "+1";
    references += "c1$$$";
  }
  EXPECT_EQ(rows.at(4), "@CI|管道长度|m|" + formula + "|" + references + "|50000|0|0|0");
  EXPECT_EQ(rows.at(8), "@L|管道长度|m|回路1|100000|c1$$|1|0|0|0");
  EXPECT_EQ(rows.back(), "@L|管道长度|m|回路50000|149999|c1$$|1|0|0|0");
}

}  // namespace
