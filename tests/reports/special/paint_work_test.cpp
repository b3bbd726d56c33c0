#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "reports/special/special_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::DetailRow;
using tally_test::EDbRead;
using tally_test::Item;
using tally_test::kPlumbing;
using tally_test::kVentilation;
using tally_test::Lines;
using tally_test::STinyAttr;
using tally_test::STinyCategory;
using tally_test::STinyDetailItem;

const STinyAttr kPipeAttr{L"DN25", L"管道刷油:红漆,1"};
const STinyAttr kSupportAttr{L"L30", L"支架刷油:红漆,1"};
const STinyCategory kClamp{L"BIM支架", L"管卡"};
const std::string kPipeText = "DN25|管道刷油:红漆,1";
const std::string kSupportText = "L30|支架刷油:红漆,1";

class PaintWork : public tally_test::SpecialTest {
 protected:
  static STinyDetailItem Area(double quantity) { return Item(L"外表面积", L"m2", quantity); }
  static STinyDetailItem Length(double quantity) { return Item(L"管道长度", L"m", quantity); }

  /// Pipes and supports, two floors, two sections, codes of one and three levels.
  static CTinyProject Building() {
    CTinyProject project = Coded(kPlumbing);
    project.KindSort(kPlumbing, L"管道\\给水管", 2).KindSort(kPlumbing, L"BIM支架\\管卡", 1);
    const STinyDetailItem shared = Item(L"外表面积", L"m2", 2.5, 1, 0, 0.5);
    project.Detail()
        .Row({.component = L"c1", .attr = kPipeAttr, .sysCode = L"A\\B\\C", .calItem = shared})
        .Row({.component = L"c2", .attr = kPipeAttr, .sysCode = L"A\\B\\C", .calItem = shared})
        .Row({.sgd = L"二区",
              .floor = {L"2,5", L"2,5"},
              .component = L"c3",
              .attr = kPipeAttr,
              .sysCode = L"D",
              .calItem = Area(4)})
        .Row({.component = L"c4", .attr = kPipeAttr, .sysCode = L"D", .calItem = Length(1.5)})
        .Row({.sgd = L"二区",
              .component = L"c5",
              .category = kClamp,
              .attr = kSupportAttr,
              .calItem = Item(L"刷油面积", L"m2", 3)})
        .Row({.component = L"c6",
              .category = kClamp,
              .attr = kSupportAttr,
              .calItem = Item(L"构件数量", L"个", 2)});
    return project;
  }

  /// A project of one painted pipe with this attribute.
  static CTinyProject OnePipe(const STinyAttr& attr) {
    CTinyProject project;
    project.Detail().Row({.attr = attr, .calItem = Area(1)});
    return project;
  }
  /// The block headings of one painted pipe whose paint line holds `paints`, without type and sum.
  Lines Coats(const std::wstring& paints) {
    Open(OnePipe({L"DN25", L"管道刷油:" + paints}));
    Lines names = PaintRows(kPlumbing, 0);
    for (std::string& row : names) {
      const std::string head = "@T|水管|";
      const std::string tail = "|m2|1|0|0|0";
      EXPECT_TRUE(row.starts_with(head) && row.ends_with(tail)) << row;
      row = row.substr(head.size(), row.size() - head.size() - tail.size());
    }
    return names;
  }
};

// Levels.

TEST_F(PaintWork, Level0ShowsTotalsOfThePaintedArea) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 0), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                     }));
}

TEST_F(PaintWork, Level1AddsAttributesWithTheMainItemFirst) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 1), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                         "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                         "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c1$c2$$c3$$|m2|21|2|0|1",
                                     }));
}

TEST_F(PaintWork, Level2AddsFloorsAheadOfTheirAttributes) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 2), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@F|1|1|c5$$|m2|3|0|0|0",
                                         "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                         "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                         "@F|1|1|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
                                         "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
                                     }));
}

TEST_F(PaintWork, Level3AddsFirstSystemCodesByTheirNumbers) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 3), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@F|1|1|c5$$|m2|3|0|0|0",
                                         "@S|A(alpha)|c5$$|m2|3|0|0|0",
                                         "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                         "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                         "@F|1|1|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                         "@S|A(alpha)|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
                                         "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                                         "@S|D|c3$$|m2|16|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
                                     }));
}

TEST_F(PaintWork, Level4ShowsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 4), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@F|1|1|c5$$|m2|3|0|0|0",
                                         "@S|A\\*A(alpha)|c5$$|m2|3|0|0|0",
                                         "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                         "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                         "@F|1|1|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                         "@S|A\\B|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
                                         "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                                         "@S|D\\*D|c3$$|m2|16|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
                                     }));
}

TEST_F(PaintWork, Level5ShowsWholeSystemCodes) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 5), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@F|1|1|c5$$|m2|3|0|0|0",
                                         "@S|A\\*A(alpha)|c5$$|m2|3|0|0|0",
                                         "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                         "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                         "@F|1|1|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                         "@S|A\\B\\C(gamma)|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
                                         "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                                         "@S|D\\*D|c3$$|m2|16|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
                                     }));
}

TEST_F(PaintWork, Level6AddsCircuitsOfMainItems) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 6), (Lines{
                                         "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                         "@F|1|1|c5$$|m2|3|0|0|0",
                                         "@S|A\\*A(alpha)|c5$$|m2|3|0|0|0",
                                         "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                         "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                         "@L|管卡回路1|构件数量|c6$$|个|2|0|0|0",
                                         "@T|水管|红漆:第一遍|m2|21|2|0|1",
                                         "@F|1|1|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                         "@L|给水管回路1|管道长度|c4$$|m|1.5|0|0|0",
                                         "@S|A\\B\\C(gamma)|c1$c2$$|m2|5|2|0|1",
                                         "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
                                         "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                                         "@S|D\\*D|c3$$|m2|16|0|0|0",
                                         "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
                                     }));
}

TEST_F(PaintWork, BelowLevel0OnlyTotalsShow) {
  Open(Building());
  const Lines expected{"@T|BIM支架|红漆:第一遍|m2|3|0|0|0", "@T|水管|红漆:第一遍|m2|21|2|0|1"};
  EXPECT_EQ(PaintRows(kPlumbing, -1), expected);
  EXPECT_EQ(PaintRows(kPlumbing, std::numeric_limits<int>::min()), expected);
}

TEST_F(PaintWork, AboveLevel6CodesAreEmptyAndCountOnTheFloorRowAgain) {
  Open(Building());
  const Lines expected{
      "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
      "@F|1|1|c5$$c5$$|m2|6|0|0|0",
      "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
      "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
      "@T|水管|红漆:第一遍|m2|21|2|0|1",
      "@F|1|1|c1$c2$$c1$c2$$|m2|10|4|0|2",
      "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
      "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
      "@F|2,5|2,5|c3$$c3$$|m2|32|0|0|0",
      "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
  };
  EXPECT_EQ(PaintRows(kPlumbing, 7), expected);
  EXPECT_EQ(PaintRows(kPlumbing, std::numeric_limits<int>::max()), expected);
}

TEST_F(PaintWork, CellsStandOneByOne) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = kPipeAttr, .calItem = Item(L"外表面积", L"m2", 1, 2, 3, 4)})
      .Row({.attr = kPipeAttr, .calItem = Item(L"管道长度", L"m", 5, 6, 7, 8)});
  Open(project);
  status.SetDispSgd({L"一区"});
  Report::CellArray cells{L"kept"};
  Paint().GetBrushPaintData(cells, kPlumbing, {}, 6, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"kept",
                                      L"@P",
                                      L"一区",
                                      L"@T",
                                      L"水管",
                                      L"红漆:第一遍",
                                      L"m2",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@F",
                                      L"1",
                                      L"1",
                                      L"c1$$",
                                      L"m2",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@S",
                                      L"A\\*A",
                                      L"c1$$",
                                      L"m2",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@CI",
                                      L"DN25",
                                      L"管道刷油:红漆,1",
                                      L"管道长度",
                                      L"c1$$",
                                      L"m",
                                      L"5",
                                      L"6",
                                      L"7",
                                      L"8",
                                      L"@CI",
                                      L"DN25",
                                      L"管道刷油:红漆,1",
                                      L"外表面积",
                                      L"c1$$",
                                      L"m2",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@L",
                                      L"给水管回路1",
                                      L"管道长度",
                                      L"c1$$",
                                      L"m",
                                      L"5",
                                      L"6",
                                      L"7",
                                      L"8"}));
}

// Sections.

TEST_F(PaintWork, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  status.SetDispSgd({L"二区", L"一区"});
  EXPECT_EQ(PaintRows(kPlumbing, 1, {}, 1), (Lines{
                                                "@P|一区",
                                                "@T|BIM支架|红漆:第一遍||0|0|0|0",
                                                "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
                                                "@T|水管|红漆:第一遍|m2|5|2|0|1",
                                                "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
                                                "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1",
                                                "@P|二区",
                                                "@T|BIM支架|红漆:第一遍|m2|3|0|0|0",
                                                "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0",
                                                "@T|水管|红漆:第一遍|m2|16|0|0|0",
                                                "@CI|" + kPipeText + "|外表面积|c3$$|m2|16|0|0|0",
                                            }));
  EXPECT_EQ(PaintRows(kPlumbing, 0, {}, 1),
            (Lines{"@P|一区", "@T|水管|红漆:第一遍|m2|5|2|0|1", "@P|二区",
                   "@T|BIM支架|红漆:第一遍|m2|3|0|0|0", "@T|水管|红漆:第一遍|m2|16|0|0|0"}));
}

TEST_F(PaintWork, OneBlockForAllSectionsCountsTheShownOnesWhereTheStatusSaysSo) {
  Open(Building());
  status.SetDispSgd({L"二区"});
  EXPECT_EQ(PaintRows(kPlumbing, 0),
            (Lines{"@T|BIM支架|红漆:第一遍|m2|3|0|0|0", "@T|水管|红漆:第一遍|m2|21|2|0|1"}));
  status.SetIsBySgd(true);
  EXPECT_EQ(PaintRows(kPlumbing, 0),
            (Lines{"@T|BIM支架|红漆:第一遍|m2|3|0|0|0", "@T|水管|红漆:第一遍|m2|16|0|0|0"}));
}

TEST_F(PaintWork, WithoutShownSectionsOnlyResultsOfNoSectionStand) {
  CTinyProject project = Building();
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1, {}, 1), Lines{});
  project.Detail().Row({.sgd = L"", .component = L"c9", .attr = kPipeAttr, .calItem = Area(7)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1, {}, 1),
            (Lines{"@P|", "@T|水管|红漆:第一遍|m2|7|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c9$$|m2|7|0|0|0"}));
}

// What is painted.

TEST_F(PaintWork, ReadsThePaintLineThatTheKindAndTheItemCallFor) {
  const auto prefix = [](const wchar_t* spec, const wchar_t* category, const wchar_t* item) {
    return CBrushPaintReport::GetBrushCategory({0, spec}, {0, category, L"k"},
                                               {0, item, L"m", 0, 0, 0, 0, L""});
  };
  for (const wchar_t* spec : {L"给排水", L"电气", L"暖通", L"消防", L"弱电", L"x"}) {
    EXPECT_EQ(prefix(spec, L"BIM支架", L"刷油面积"), L"支架刷油");
    EXPECT_EQ(prefix(spec, L"BIM支架", L"构件数量"), L"支架刷油");
    EXPECT_EQ(prefix(spec, L"BIM支架", L"构件重量"), L"");
    EXPECT_EQ(prefix(spec, L"BIM支架", L"外表面积"), L"");
    for (const wchar_t* category : {L"管道", L"水管", L"管网", L"风管"}) {
      const std::wstring pair = std::wstring(spec) + category;
      const bool isPipe = pair == L"给排水管道" || pair == L"暖通水管" || pair == L"消防管网";
      const std::wstring expected = isPipe ? L"管道刷油" : L"";
      EXPECT_EQ(prefix(spec, category, L"外表面积"), expected);
      EXPECT_EQ(prefix(spec, category, L"管道长度"), expected);
      EXPECT_EQ(prefix(spec, category, L"刷油面积"), L"");
      EXPECT_EQ(prefix(spec, category, L"构件数量"), L"");
    }
  }
}

TEST_F(PaintWork, PipesOfTheThreeWaterDisciplinesPrintAsWaterPipes) {
  CTinyProject project;
  const auto pipe = [](const wchar_t* spec, const wchar_t* category) {
    return DetailRow{
        .spec = spec, .category = {category, L"x"}, .attr = kPipeAttr, .calItem = Area(1)};
  };
  project.Detail()
      .Row(pipe(L"给排水", L"管道"))
      .Row(pipe(L"给排水", L"水管"))
      .Row(pipe(L"暖通", L"水管"))
      .Row(pipe(L"暖通", L"管道"))
      .Row(pipe(L"消防", L"管网"))
      .Row(pipe(L"消防", L"水管"))
      .Row(pipe(L"电气", L"管道"));
  Open(project);
  const Lines expected{"@T|水管|红漆:第一遍|m2|1|0|0|0"};
  EXPECT_EQ(PaintRows(L"给排水", 0), expected);
  EXPECT_EQ(PaintRows(L"暖通", 0), expected);
  EXPECT_EQ(PaintRows(L"消防", 0), expected);
  EXPECT_EQ(PaintRows(L"电气", 6), Lines{});
}

TEST_F(PaintWork, SupportsArePaintedInEveryDiscipline) {
  CTinyProject project;
  project.Detail()
      .Row({.spec = L"电气",
            .category = {L"BIM支架", L"支架"},
            .attr = {L"L30", L"管道刷油:白漆,1\n支架刷油:红漆,1"},
            .calItem = Item(L"刷油面积", L"m2", 2)})
      .Row({.spec = L"电气",
            .category = {L"BIM支架", L"支架"},
            .attr = {L"L30", L"管道刷油:白漆,1"},
            .calItem = Item(L"刷油面积", L"m2", 4)});
  Open(project);
  EXPECT_EQ(PaintRows(L"电气", 0), (Lines{"@T|BIM支架|红漆:第一遍|m2|2|0|0|0"}));
}

TEST_F(PaintWork, ABlockWithoutPaintedAreaPrintsAZeroSumWithoutUnit) {
  CTinyProject project;
  project.Detail().Row({.attr = kPipeAttr, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 0), Lines{});
  EXPECT_EQ(PaintRows(kPlumbing, -1), Lines{});
  EXPECT_EQ(PaintRows(kPlumbing, 1), (Lines{"@T|水管|红漆:第一遍||0|0|0|0",
                                            "@CI|" + kPipeText + "|管道长度|c1$$|m|2|0|0|0"}));
  EXPECT_EQ(PaintRows(kPlumbing, 3), PaintRows(kPlumbing, 1));
}

// Paints and coats.

TEST_F(PaintWork, EachCoatOfEachPaintIsABlockByNameThenCoat) {
  EXPECT_EQ(Coats(L"乙,2;甲,1"), (Lines{"甲:第一遍", "乙:第一遍", "乙:第二遍"}));
}

TEST_F(PaintWork, CoatsAboveNineHaveNoWord) {
  EXPECT_EQ(Coats(L"漆,11"),
            (Lines{"漆:第一遍", "漆:第二遍", "漆:第三遍", "漆:第四遍", "漆:第五遍", "漆:第六遍",
                   "漆:第七遍", "漆:第八遍", "漆:第九遍", "漆:", "漆:"}));
}

TEST_F(PaintWork, OnlyItemsOfTwoPartsArePaints) {
  EXPECT_EQ(Coats(L"甲"), Lines{});
  EXPECT_EQ(Coats(L""), Lines{});
  EXPECT_EQ(Coats(L"甲,1,1;乙,1;丙;;丁,1,"), (Lines{"乙:第一遍"}));
  EXPECT_EQ(Coats(L",1"), (Lines{":第一遍"}));
  EXPECT_EQ(Coats(L"甲，2"), Lines{});
}

TEST_F(PaintWork, CountsThatAreNoneAddNothing) {
  EXPECT_EQ(Coats(L"a,0;b,-1;c,x;d,;e,一;f, ;g,1"), (Lines{"g:第一遍"}));
  EXPECT_EQ(Coats(L"a, +2遍"), (Lines{"a:第一遍", "a:第二遍"}));
}

TEST_F(PaintWork, CountsAbove999AreNone) {
  EXPECT_EQ(Coats(L"a,1000;b,99999999999999999999;c,1"), (Lines{"c:第一遍"}));
  const Lines most = Coats(L"a,999");
  EXPECT_EQ(most.size(), 999U);
  EXPECT_EQ(std::count(most.begin(), most.end(), "a:"), 990);
}

TEST_F(PaintWork, APaintNamedTwiceCountsTheComponentTwice) {
  Open(OnePipe({L"DN25", L"管道刷油:漆,2;漆,1"}));
  EXPECT_EQ(
      PaintRows(kPlumbing, 1),
      (Lines{
          "@T|水管|漆:第一遍|m2|2|0|0|0", "@CI|DN25|管道刷油:漆,2;漆,1|外表面积|c1$c1$$|m2|2|0|0|0",
          "@T|水管|漆:第二遍|m2|1|0|0|0", "@CI|DN25|管道刷油:漆,2;漆,1|外表面积|c1$$|m2|1|0|0|0"}));
}

TEST_F(PaintWork, CoatsWhoseNumbersAndNamesRunTogetherAlikeShareABlock) {
  // "漆1" in coat 1 and "漆" in coat 11.
  Open(OnePipe({L"DN25", L"管道刷油:漆1,1;漆,11"}));
  const Lines rows = PaintRows(kPlumbing, 0);
  ASSERT_EQ(rows.size(), 11U);
  EXPECT_EQ(rows[9], "@T|水管|漆:|m2|1|0|0|0");
  EXPECT_EQ(rows[10], "@T|水管|漆1:第一遍|m2|2|0|0|0");
}

TEST_F(PaintWork, BlocksStandByTheNumberOfTheFirstKindOfTheirCategory) {
  CTinyProject project;
  // "管道\a" is the first key; the kind of the components does not matter.
  project.KindSort(kPlumbing, L"管道\\a", 9)
      .KindSort(kPlumbing, L"管道\\给水管", 1)
      .KindSort(kPlumbing, L"BIM支架\\x", 5);
  project.Detail()
      .Row({.attr = {L"DN25", L"管道刷油:a,1"}, .calItem = Area(1)})
      .Row({.category = {L"BIM支架", L"y"},
            .attr = {L"L30", L"支架刷油:z,1"},
            .calItem = Item(L"刷油面积", L"m2", 2)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 0),
            (Lines{"@T|BIM支架|z:第一遍|m2|2|0|0|0", "@T|水管|a:第一遍|m2|1|0|0|0"}));
}

TEST_F(PaintWork, CategoriesOfOneNumberShareTheBlocksOfThePaint) {
  CTinyProject project;  // neither is numbered
  project.Detail()
      .Row({.attr = kPipeAttr, .calItem = Area(1)})
      .Row({.category = kClamp, .attr = kSupportAttr, .calItem = Item(L"刷油面积", L"m2", 2)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 0), (Lines{"@T|水管|红漆:第一遍|m2|3|0|0|0"}));
}

TEST_F(PaintWork, PaintNamesThatTheCodePageCannotTellApartKeepOneBlock) {
  // Whatever the coat: the blocks that come first in the order of the nodes stay.
  EXPECT_EQ(Coats(L"\U0001F601,1;\U0001F600,2;\U0001F602,3"),
            (Lines{"\U0001F600:第一遍", "\U0001F600:第二遍"}));
}

// Attribute lines.

TEST_F(PaintWork, TheFirstLineThatBeginsWithThePrefixCounts) {
  Open(OnePipe({L"DN25", L"材质:钢\nx管道刷油:白,1\n管道刷油方式:红,1\n管道刷油:蓝,1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 0), (Lines{"@T|水管|红:第一遍|m2|1|0|0|0"}));
  Open(OnePipe({L"DN25", L"管道刷油:红:a,1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 0), (Lines{"@T|水管|红:a:第一遍|m2|1|0|0|0"}));
}

TEST_F(PaintWork, WithoutThePaintLineNothingIsPainted) {
  for (const STinyAttr& attr : {STinyAttr{L"DN25", L""},
                                {L"DN25", L"材质:钢"},
                                {L"DN25", L"管道刷油,1"},
                                {L"DN25", L"管道刷油\n管道刷油:红,1"},
                                {L"DN25", L" 管道刷油:红,1"}}) {
    Open(OnePipe(attr));
    EXPECT_EQ(PaintRows(kPlumbing, 6), Lines{});
  }
}

TEST_F(PaintWork, TheValueIsReadOnlyWhereNoLineOfTheNameBeginsWithThePrefix) {
  Open(OnePipe({L"DN25\n管道刷油:红,1", L"管道刷油:白,1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 1),
            (Lines{"@T|水管|红:第一遍|m2|1|0|0|0",
                   "@CI|DN25\n管道刷油:红,1|管道刷油:白,1|外表面积|c1$$|m2|1|0|0|0"}));
  Open(OnePipe({L"DN25\n管道刷油", L"管道刷油:白,1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 1), Lines{});
  Open(OnePipe({L"DN25\nx管道刷油:红,1", L"管道刷油:白,1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 0), (Lines{"@T|水管|白:第一遍|m2|1|0|0|0"}));
}

TEST_F(PaintWork, AttributesWithoutANameHaveNoRows) {
  Open(OnePipe({L"", L"管道刷油:红,1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 2),
            (Lines{"@T|水管|红:第一遍|m2|1|0|0|0", "@F|1|1|c1$$|m2|1|0|0|0"}));
}

TEST_F(PaintWork, AttributesAreFiledUnderBothTexts) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = {L"DN25", L"管道刷油:a,1"}, .calItem = Area(1)})
      .Row({.attr = {L"DN25", L"管道刷油:a,1\n"}, .calItem = Area(2)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1),
            (Lines{"@T|水管|a:第一遍|m2|3|0|0|0", "@CI|DN25|管道刷油:a,1|外表面积|c1$$|m2|1|0|0|0",
                   "@CI|DN25|管道刷油:a,1\n|外表面积|c1$$|m2|2|0|0|0"}));
}

// Quantities.

TEST_F(PaintWork, EachComponentCountsForEachFloorWithTheQuantitiesOfTheFirst) {
  CTinyProject project;
  const auto row = [](const wchar_t* component, double quantity1, double quantity2) {
    return DetailRow{.floor = {L"2,5", L"2，5"},
                     .component = component,
                     .attr = kPipeAttr,
                     .calItem = Item(L"外表面积", L"m2", quantity1, quantity2)};
  };
  // The first quantities print alike.
  project.Detail().Row(row(L"c1", 1.5, 1)).Row(row(L"", 1.50000001, 9));
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1), (Lines{"@T|水管|红漆:第一遍|m2|12|8|0|0",
                                            "@CI|" + kPipeText + "|外表面积|c1$$|m2|12|8|0|0"}));
}

TEST_F(PaintWork, NoFloorsTimesANegativeQuantityIsNegativeZero) {
  CTinyProject project;
  project.Detail().Row({.floor = {L"1", L""}, .attr = kPipeAttr, .calItem = Area(-2)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1), (Lines{"@T|水管|红漆:第一遍|m2|-0|0|0|0",
                                            "@CI|" + kPipeText + "|外表面积|c1$$|m2|-0|0|0|0"}));
}

TEST_F(PaintWork, OfTotalsInTwoUnitsTheLastStands) {
  CTinyProject project;
  project.Detail()
      .Row({.attr = kPipeAttr, .calItem = Item(L"外表面积", L"m2", 1)})
      .Row({.attr = kPipeAttr, .calItem = Item(L"外表面积", L"cm2", 2)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 2),
            (Lines{"@T|水管|红漆:第一遍|m2|1|0|0|0", "@F|1|1|c1$$|cm2|2|0|0|0",
                   "@F|1|1|c1$$|m2|1|0|0|0", "@CI|" + kPipeText + "|外表面积|c1$$|cm2|2|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c1$$|m2|1|0|0|0"}));
}

TEST_F(PaintWork, AFloorWithoutANameReplacesTheTotal) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"", L"1"}, .component = L"c1", .attr = kPipeAttr, .calItem = Area(1)})
      .Row({.floor = {L"2", L"2"}, .component = L"c2", .attr = kPipeAttr, .calItem = Area(4)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1)[0], "@T|水管|红漆:第一遍|m2|5|0|0|0");
  EXPECT_EQ(PaintRows(kPlumbing, 3),
            (Lines{"@T|水管|红漆:第一遍|m2|1|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c1$$|m2|1|0|0|0", "@F|2|2|c2$$|m2|4|0|0|0",
                   "@S|A|c2$$|m2|4|0|0|0", "@CI|" + kPipeText + "|外表面积|c2$$|m2|4|0|0|0"}));
}

TEST_F(PaintWork, FloorsOfOneGradeAreOneRow) {
  CTinyProject project;
  project.Detail()
      .Row({.floor = {L"屋面", L"1"}, .component = L"c1", .attr = kPipeAttr, .calItem = Area(1)})
      .Row({.floor = {L"夹层", L"1"}, .component = L"c2", .attr = kPipeAttr, .calItem = Area(2)})
      .Row({.floor = {L"-1", L"1"}, .component = L"c3", .attr = kPipeAttr, .calItem = Area(4)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 2),
            (Lines{"@T|水管|红漆:第一遍|m2|7|0|0|0", "@F|夹层|夹层|c2$$c1$$|m2|3|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c2$$c1$$|m2|3|0|0|0", "@F|-1|-1|c3$$|m2|4|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c3$$|m2|4|0|0|0"}));
}

// System codes.

TEST_F(PaintWork, CodesDeeperThanThreeLevelsKeepTheirWholePath) {
  CTinyProject project = Coded(kPlumbing);
  project.SysCodeSort(kPlumbing, L"A&B&C&D", 5, L"delta");
  project.Detail()
      .Row({.component = L"c1", .attr = kPipeAttr, .sysCode = L"A\\B\\C", .calItem = Area(1)})
      .Row({.component = L"c2", .attr = kPipeAttr, .sysCode = L"A\\B\\C\\D", .calItem = Area(2)})
      .Row({.component = L"c3", .attr = kPipeAttr, .sysCode = L"A\\B", .calItem = Area(4)});
  Open(project);
  EXPECT_EQ(
      PaintRows(kPlumbing, 5),
      (Lines{"@T|水管|红漆:第一遍|m2|7|0|0|0", "@F|1|1|c3$$c2$$c1$$|m2|7|0|0|0",
             "@S|A\\B\\*B|c3$$|m2|4|0|0|0", "@CI|" + kPipeText + "|外表面积|c3$$|m2|4|0|0|0",
             // The walk has come back from the deeper code by now.
             "@S|A\\B\\C(gamma)|c1$$|m2|1|0|0|0", "@CI|" + kPipeText + "|外表面积|c1$$|m2|1|0|0|0",
             "@S|A\\B\\C\\D\\*D(delta)|c2$$|m2|2|0|0|0",
             "@CI|" + kPipeText + "|外表面积|c2$$|m2|2|0|0|0"}));
  EXPECT_EQ(PaintRows(kPlumbing, 4),
            (Lines{"@T|水管|红漆:第一遍|m2|7|0|0|0", "@F|1|1|c3$$c2$$c1$$|m2|7|0|0|0",
                   "@S|A\\B|c3$$c2$$c1$$|m2|7|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c3$$c2$$c1$$|m2|7|0|0|0"}));
}

TEST_F(PaintWork, AResultWithoutASystemCodeIsNotFiled) {
  CTinyProject project;
  project.Detail().Row({.attr = kPipeAttr, .sysCode = L"", .calItem = Area(1)});
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 6), Lines{});
}

// Filters.

TEST_F(PaintWork, FiltersSelectKindsByCategoryOrWholePath) {
  Open(Building());
  const Lines support{"@T|BIM支架|红漆:第一遍|m2|3|0|0|0"};
  EXPECT_EQ(PaintRows(kPlumbing, 0, Categories({L"BIM支架"})), support);
  EXPECT_EQ(PaintRows(kPlumbing, 0, Categories({L"BIM支架\\管卡", L"x"})), support);
  EXPECT_EQ(PaintRows(kPlumbing, 0, Categories({L"BIM", L"BIM支架\\管", L"管卡", L""})), Lines{});
  EXPECT_EQ(Paint().condition.categories.size(), 4U);
}

TEST_F(PaintWork, FiltersTakeInAllThatLiesUnderASystemCode) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 0, SysCodes({L"A"})),
            (Lines{"@T|BIM支架|红漆:第一遍|m2|3|0|0|0", "@T|水管|红漆:第一遍|m2|5|2|0|1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 0, SysCodes({L"A\\B", L"A\\X", L"B", L""})),
            (Lines{"@T|水管|红漆:第一遍|m2|5|2|0|1"}));
  // What two entries select counts twice.
  EXPECT_EQ(PaintRows(kPlumbing, 0, SysCodes({L"A\\B\\C", L"A\\B"})),
            (Lines{"@T|水管|红漆:第一遍|m2|10|4|0|2"}));
}

TEST_F(PaintWork, FiltersSelectFloorsByTheChosenFloorAndCountTheDrawingFloor) {
  Open(Building());
  EXPECT_EQ(PaintRows(kPlumbing, 2, Floors({{L"3,4", L"2,5"}, {L"9", L"9"}})),
            (Lines{"@T|水管|红漆:第一遍|m2|8|0|0|0", "@F|2,5|3,4|c3$$|m2|8|0|0|0",
                   "@CI|" + kPipeText + "|外表面积|c3$$|m2|8|0|0|0"}));
  // The drawing floor finds no node.
  EXPECT_EQ(PaintRows(kPlumbing, 2, Floors({{L"2,5", L"3"}})), Lines{});
  // Twice selected counts twice; a pair of equal texts counts the result's own floors.
  EXPECT_EQ(PaintRows(kPlumbing, 0, Floors({{L"2,5", L"2,5"}, {L"2,5", L"2,5"}})),
            (Lines{"@T|水管|红漆:第一遍|m2|32|0|0|0"}));
}

TEST_F(PaintWork, FloorsStandByTheGradeOfTheFloorShown) {
  Open(Building());
  EXPECT_EQ(
      PaintRows(kPlumbing, 2, Floors({{L"1", L"1"}, {L"-1", L"2,5"}})),
      (Lines{"@T|BIM支架|红漆:第一遍|m2|3|0|0|0", "@F|1|1|c5$$|m2|3|0|0|0",
             "@CI|" + kSupportText + "|构件数量|c6$$|个|2|0|0|0",
             "@CI|" + kSupportText + "|刷油面积|c5$$|m2|3|0|0|0", "@T|水管|红漆:第一遍|m2|9|2|0|1",
             "@F|2,5|-1|c3$$|m2|4|0|0|0", "@CI|" + kPipeText + "|外表面积|c3$$|m2|4|0|0|0",
             "@F|1|1|c1$c2$$|m2|5|2|0|1", "@CI|" + kPipeText + "|管道长度|c4$$|m|1.5|0|0|0",
             "@CI|" + kPipeText + "|外表面积|c1$c2$$|m2|5|2|0|1"}));
}

// Attributes.

TEST_F(PaintWork, PipesFollowTheSetDirectionAndSupportsRunUpwards) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"管道\\给水管", 1);
  for (const wchar_t* name : {L"DN15", L"DN100", L"DN25"}) {
    project.Detail()
        .Row({.attr = {name, L"管道刷油:a,1"}, .calItem = Area(1)})
        .Row({.category = kClamp,
              .attr = {name, L"支架刷油:a,1"},
              .calItem = Item(L"刷油面积", L"m2", 1)});
  }
  Open(project);
  const auto pipe = [](const std::string& name) {
    return "@CI|" + name + "|管道刷油:a,1|外表面积|c1$$|m2|1|0|0|0";
  };
  const auto support = [](const std::string& name) {
    return "@CI|" + name + "|支架刷油:a,1|刷油面积|c1$$|m2|1|0|0|0";
  };
  EXPECT_EQ(PaintRows(kPlumbing, 1),
            (Lines{"@T|水管|a:第一遍|m2|3|0|0|0", pipe("DN100"), pipe("DN25"), pipe("DN15"),
                   "@T|BIM支架|a:第一遍|m2|3|0|0|0", support("DN15"), support("DN25"),
                   support("DN100")}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(PaintRows(kPlumbing, 1),
            (Lines{"@T|水管|a:第一遍|m2|3|0|0|0", pipe("DN15"), pipe("DN25"), pipe("DN100"),
                   "@T|BIM支架|a:第一遍|m2|3|0|0|0", support("DN15"), support("DN25"),
                   support("DN100")}));
}

TEST_F(PaintWork, SizesOfOneValueInTwoFormsStayApartUpwardsAndKeepTheFirstDownwards) {
  CTinyProject project;
  const auto row = [](const wchar_t* floor, const wchar_t* component, const wchar_t* name,
                      double quantity) {
    return DetailRow{.floor = {floor, floor},
                     .component = component,
                     .attr = {name, L"管道刷油:a,1"},
                     .calItem = Length(quantity)};
  };
  project.Detail()
      .Row(row(L"1", L"c1", L"DN1", 1))
      .Row(row(L"1", L"c2", L"DN1.0", 2))
      .Row(row(L"2", L"c3", L"DN1", 4))
      .Row(row(L"2", L"c4", L"DN1.0", 8));
  Open(project);
  EXPECT_EQ(PaintRows(kPlumbing, 1),
            (Lines{"@T|水管|a:第一遍||0|0|0|0",
                   "@CI|DN1.0|管道刷油:a,1|管道长度|c2$$c1$$c4$$c3$$|m|15|0|0|0"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  // Each goes ahead of the other: the form met second is put in front, is not found when it comes
  // again, and is not put in beside its equal.
  EXPECT_EQ(PaintRows(kPlumbing, 1),
            (Lines{"@T|水管|a:第一遍||0|0|0|0", "@CI|DN1|管道刷油:a,1|管道长度|c1$$|m|1|0|0|0",
                   "@CI|DN1.0|管道刷油:a,1|管道长度|c2$$c4$$|m|10|0|0|0"}));
}

// Circuits.

TEST_F(PaintWork, CircuitsCountFromOneInEachItemAndEqualOnesAreDropped) {
  CTinyProject project;
  const auto row = [](const wchar_t* component, const wchar_t* unit, double quantity) {
    return DetailRow{
        .component = component, .attr = kPipeAttr, .calItem = Item(L"管道长度", unit, quantity)};
  };
  project.Detail().Row(row(L"c1", L"m", 1)).Row(row(L"c2", L"m", 2)).Row(row(L"c3", L"km", 5));
  Open(project);
  EXPECT_EQ(
      PaintRows(kPlumbing, 6),
      (Lines{"@T|水管|红漆:第一遍||0|0|0|0", "@CI|" + kPipeText + "|管道长度|c3$$|km|5|0|0|0",
             "@CI|" + kPipeText + "|管道长度|c1$$c2$$|m|3|0|0|0",
             "@L|给水管回路1|管道长度|c3$$|km|5|0|0|0", "@L|给水管回路2|管道长度|c2$$|m|2|0|0|0"}));
}

TEST_F(PaintWork, CircuitsOfEachAttributeFollowItAndStandByKindNumber) {
  CTinyProject project;
  project.KindSort(kPlumbing, L"管道\\给水管", 2).KindSort(kPlumbing, L"管道\\排水管", 1);
  const auto row = [](const wchar_t* component, const wchar_t* kind, const wchar_t* name) {
    return DetailRow{.component = component,
                     .category = {L"管道", kind},
                     .attr = {name, L"管道刷油:a,1"},
                     .calItem = Length(1)};
  };
  project.Detail()
      .Row(row(L"c1", L"给水管", L"DN25"))
      .Row(row(L"c2", L"排水管", L"DN25"))
      .Row(row(L"c3", L"给水管", L"DN15"));
  Open(project);
  EXPECT_EQ(
      PaintRows(kPlumbing, 6),
      (Lines{"@T|水管|a:第一遍||0|0|0|0", "@CI|DN25|管道刷油:a,1|管道长度|c2$$c1$$|m|2|0|0|0",
             "@L|排水管回路1|管道长度|c2$$|m|1|0|0|0", "@L|给水管回路1|管道长度|c1$$|m|1|0|0|0",
             "@CI|DN15|管道刷油:a,1|管道长度|c3$$|m|1|0|0|0",
             "@L|给水管回路1|管道长度|c3$$|m|1|0|0|0"}));
}

TEST_F(PaintWork, CircuitsOfASectionCountOnlyItsOwnResults) {
  CTinyProject project;
  const auto row = [](const wchar_t* section, const wchar_t* component, double quantity) {
    return DetailRow{
        .sgd = section, .component = component, .attr = kPipeAttr, .calItem = Length(quantity)};
  };
  project.Detail().Row(row(L"一区", L"c1", 1)).Row(row(L"二区", L"c2", 2));
  Open(project);
  status.SetDispSgd({L"二区"});
  EXPECT_EQ(PaintRows(kPlumbing, 6, {}, 1), (Lines{"@P|二区", "@T|水管|红漆:第一遍||0|0|0|0",
                                                   "@CI|" + kPipeText + "|管道长度|c2$$|m|2|0|0|0",
                                                   "@L|给水管回路1|管道长度|c2$$|m|2|0|0|0"}));
}

// Requests and folding.

TEST_F(PaintWork, AnUnknownDisciplineLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  const Report::SNewCondition condition = Categories({L"BIM支架"});
  Report::CellArray cells{L"kept"};
  Paint().GetBrushPaintData(cells, kPlumbing, condition, 0, 0);
  EXPECT_EQ(cells, (Report::CellArray{L"kept", L"@T", L"BIM支架", L"红漆:第一遍", L"m2", L"3", L"0",
                                      L"0", L"0"}));
  Paint().GetBrushPaintData(cells, kVentilation, {}, 0, 0);
  EXPECT_EQ(cells.size(), 9U);
  EXPECT_EQ(Paint().spec, kPlumbing);
  EXPECT_EQ(Paint().condition.categories, condition.categories);
}

TEST_F(PaintWork, RequestsReadTheDetailSetOnceAndDoNotDependOnTheOnesBefore) {
  Open(Building());
  db->ForgetReads();
  const Lines all = PaintRows(kPlumbing, 6);
  EXPECT_EQ(PaintRows(kPlumbing, 0, SysCodes({L"A\\B"})),
            (Lines{"@T|水管|红漆:第一遍|m2|5|2|0|1"}));
  EXPECT_EQ(PaintRows(kPlumbing, 6), all);
  EXPECT_EQ(db->reads, (std::vector<EDbRead>{EDbRead::Detail}));
}

TEST_F(PaintWork, EachBadIndexFailsTheFoldEachTimeAlsoInRowsThatAreNoPaintWork) {
  using KorDMRec::SKorDMResultRow;
  for (const auto index :
       {&SKorDMResultRow::sgd, &SKorDMResultRow::floor, &SKorDMResultRow::component,
        &SKorDMResultRow::spec, &SKorDMResultRow::category, &SKorDMResultRow::attr,
        &SKorDMResultRow::sysCode, &SKorDMResultRow::calItem}) {
    for (const int bad : {-1, 1, std::numeric_limits<int>::max()}) {
      CTinyProject project;
      project.Detail().Row({.calItem = Item(L"x", L"m", 1)});
      project.Detail().Data().rows[0].*index = bad;
      Open(project);
      EXPECT_THROW(Paint(), std::out_of_range);
      EXPECT_THROW(Paint(), std::out_of_range);
    }
  }
}

}  // namespace
