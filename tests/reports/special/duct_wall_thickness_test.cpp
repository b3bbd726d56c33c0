#include <gtest/gtest.h>

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

const STinyCategory kDuct{L"风管", L"矩形风管"};
const STinyCategory kSleeve{L"BIM附件", L"风管套管"};
const STinyAttr kDuctAttr{L"S25", L"风管材质:钢板\n风管壁厚H(mm):1"};
const STinyAttr kSleeveAttr{L"T30", L"套管材质:钢板\n板材厚度:2"};
const std::string kDuctText = "S25|风管材质:钢板\n风管壁厚H(mm):1";
const std::string kSleeveText = "T30|套管材质:钢板\n板材厚度:2";
const std::string kDuctHead = "@T|风管:钢板:1(mm)|";
const std::string kSleeveHead = "@T|风管套管:钢板:2(mm)|";

class DuctWallThickness : public tally_test::SpecialTest {
 protected:
  static STinyDetailItem Area(double quantity) { return Item(L"展开面积", L"m2", quantity); }
  static STinyDetailItem Length(double quantity) { return Item(L"风管长度", L"m", quantity); }

  static DetailRow Made(const STinyDetailItem& item, const wchar_t* component = L"c1",
                        const STinyAttr& attr = kDuctAttr, const STinyCategory& kind = kDuct) {
    return {.component = component,
            .spec = kVentilation,
            .category = kind,
            .attr = attr,
            .calItem = item};
  }
  static DetailRow OnFloor(DetailRow row, const wchar_t* name, const wchar_t* text) {
    row.floor = {name, text};
    return row;
  }
  static DetailRow InCode(DetailRow row, const wchar_t* sysCode) {
    row.sysCode = sysCode;
    return row;
  }
  static DetailRow InSection(DetailRow row, const wchar_t* section) {
    row.sgd = section;
    return row;
  }
  static CTinyProject Of(const std::vector<DetailRow>& rows, CTinyProject project = {}) {
    for (const DetailRow& row : rows) {
      project.Detail().Row(row);
    }
    return project;
  }

  /// Ducts and sleeves, two floors, two sections, codes of one and three levels.
  static CTinyProject Building() {
    const STinyDetailItem shared = Item(L"展开面积", L"m2", 2.5, 1, 0, 0.5);
    return Of({InCode(Made(shared, L"c1"), L"A\\B\\C"), InCode(Made(shared, L"c2"), L"A\\B\\C"),
               InSection(InCode(OnFloor(Made(Area(4), L"c3"), L"2,5", L"2,5"), L"D"), L"二区"),
               InCode(Made(Length(1.5), L"c4"), L"D"),
               InSection(Made(Area(3), L"c5", kSleeveAttr, kSleeve), L"二区"),
               Made(Length(2), L"c6", kSleeveAttr, kSleeve)},
              Coded(kVentilation));
  }

  /// The block headings of one duct or sleeve with this attribute.
  Lines Heads(const STinyAttr& attr, const STinyCategory& kind = kDuct) {
    Open(Of({Made(Area(1), L"c1", attr, kind)}));
    return DuctRows(0);
  }
};

// Levels.

TEST_F(DuctWallThickness, Level0ShowsTotalsOfTheMainItem) {
  Open(Building());
  EXPECT_EQ(DuctRows(0), (Lines{kDuctHead + "m2|21|2|0|1", kSleeveHead + "m2|3|0|0|0"}));
}

TEST_F(DuctWallThickness, Level1AddsAttributesOfBothItemsAsDoLevelsBelow0) {
  Open(Building());
  const Lines expected{
      kDuctHead + "m2|21|2|0|1",
      "@CI|" + kDuctText + "|展开面积|c1$c2$$c3$$|m2|21|2|0|1",
      "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
      kSleeveHead + "m2|3|0|0|0",
      "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
      "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
  };
  EXPECT_EQ(DuctRows(1), expected);
  EXPECT_EQ(DuctRows(-1), expected);
  EXPECT_EQ(DuctRows(std::numeric_limits<int>::min()), expected);
}

TEST_F(DuctWallThickness, Level2AddsFloorsAheadOfTheirAttributes) {
  Open(Building());
  EXPECT_EQ(DuctRows(2), (Lines{
                             kDuctHead + "m2|21|2|0|1",
                             "@F|1|1|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
                             "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
                             kSleeveHead + "m2|3|0|0|0",
                             "@F|1|1|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
                         }));
}

TEST_F(DuctWallThickness, Level3AddsFirstSystemCodesOfTheMainItem) {
  Open(Building());
  EXPECT_EQ(DuctRows(3), (Lines{
                             kDuctHead + "m2|21|2|0|1",
                             "@F|1|1|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
                             "@S|A(alpha)|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
                             "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                             "@S|D|c3$$|m2|16|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
                             kSleeveHead + "m2|3|0|0|0",
                             "@F|1|1|c5$$|m2|3|0|0|0",
                             "@S|A(alpha)|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
                         }));
}

TEST_F(DuctWallThickness, Level4ShowsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(DuctRows(4), (Lines{
                             kDuctHead + "m2|21|2|0|1",
                             "@F|1|1|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
                             "@S|A\\B|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
                             "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                             "@S|D\\*D|c3$$|m2|16|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
                             kSleeveHead + "m2|3|0|0|0",
                             "@F|1|1|c5$$|m2|3|0|0|0",
                             "@S|A\\*A(alpha)|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
                         }));
}

TEST_F(DuctWallThickness, Level5ShowsWholeSystemCodes) {
  Open(Building());
  EXPECT_EQ(DuctRows(5), (Lines{
                             kDuctHead + "m2|21|2|0|1",
                             "@F|1|1|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
                             "@S|A\\B\\C(gamma)|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
                             "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                             "@S|D\\*D|c3$$|m2|16|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
                             kSleeveHead + "m2|3|0|0|0",
                             "@F|1|1|c5$$|m2|3|0|0|0",
                             "@S|A\\*A(alpha)|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
                         }));
}

TEST_F(DuctWallThickness, Level6AddsCircuitsOfTheMainItem) {
  Open(Building());
  EXPECT_EQ(DuctRows(6), (Lines{
                             kDuctHead + "m2|21|2|0|1",
                             "@F|1|1|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
                             "@S|A\\B\\C(gamma)|c1$c2$$|m2|5|2|0|1",
                             "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
                             "@L|矩形风管回路1|展开面积|c1$c2$$|m2|5|2|0|1",
                             "@F|2,5|2,5|c3$$|m2|16|0|0|0",
                             "@S|D\\*D|c3$$|m2|16|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
                             "@L|矩形风管回路1|展开面积|c3$$|m2|16|0|0|0",
                             kSleeveHead + "m2|3|0|0|0",
                             "@F|1|1|c5$$|m2|3|0|0|0",
                             "@S|A\\*A(alpha)|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
                             "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
                             "@L|风管套管回路1|展开面积|c5$$|m2|3|0|0|0",
                         }));
}

TEST_F(DuctWallThickness, AboveLevel6CodesAreEmptyAndCountOnTheFloorRowAgain) {
  Open(Building());
  const Lines expected{
      kDuctHead + "m2|21|2|0|1",
      "@F|1|1|c1$c2$$c1$c2$$|m2|10|4|0|2",
      "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
      "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
      "@F|2,5|2,5|c3$$c3$$|m2|32|0|0|0",
      "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
      kSleeveHead + "m2|3|0|0|0",
      "@F|1|1|c5$$c5$$|m2|6|0|0|0",
      "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
      "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
  };
  EXPECT_EQ(DuctRows(7), expected);
  EXPECT_EQ(DuctRows(std::numeric_limits<int>::max()), expected);
}

TEST_F(DuctWallThickness, CellsStandOneByOne) {
  Open(Of({Made(Item(L"展开面积", L"m2", 1, 2, 3, 4))}));
  status.SetDispSgd({L"一区"});
  Report::CellArray cells{L"kept"};
  Duct().GetDuctHData(cells, kVentilation, {}, 6, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"kept",
                                      L"@P",
                                      L"一区",
                                      L"@T",
                                      L"风管:钢板:1(mm)",
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
                                      L"S25",
                                      kDuctAttr.value,
                                      L"展开面积",
                                      L"c1$$",
                                      L"m2",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@L",
                                      L"矩形风管回路1",
                                      L"展开面积",
                                      L"c1$$",
                                      L"m2",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4"}));
}

// Sections.

TEST_F(DuctWallThickness, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  status.SetDispSgd({L"二区", L"一区"});
  EXPECT_EQ(DuctRows(1, {}, 1), (Lines{
                                    "@P|一区",
                                    kDuctHead + "m2|5|2|0|1",
                                    "@CI|" + kDuctText + "|展开面积|c1$c2$$|m2|5|2|0|1",
                                    "@CI|" + kDuctText + "|风管长度|c4$$|m|1.5|0|0|0",
                                    kSleeveHead + "|0|0|0|0",
                                    "@CI|" + kSleeveText + "|风管长度|c6$$|m|2|0|0|0",
                                    "@P|二区",
                                    kDuctHead + "m2|16|0|0|0",
                                    "@CI|" + kDuctText + "|展开面积|c3$$|m2|16|0|0|0",
                                    kSleeveHead + "m2|3|0|0|0",
                                    "@CI|" + kSleeveText + "|展开面积|c5$$|m2|3|0|0|0",
                                }));
  EXPECT_EQ(DuctRows(0, {}, 1), (Lines{"@P|一区", kDuctHead + "m2|5|2|0|1", "@P|二区",
                                       kDuctHead + "m2|16|0|0|0", kSleeveHead + "m2|3|0|0|0"}));
}

TEST_F(DuctWallThickness, OneBlockForAllSectionsCountsTheShownOnesWhereTheStatusSaysSo) {
  Open(Building());
  status.SetDispSgd({L"一区"});
  EXPECT_EQ(DuctRows(0), (Lines{kDuctHead + "m2|21|2|0|1", kSleeveHead + "m2|3|0|0|0"}));
  status.SetIsBySgd(true);
  EXPECT_EQ(DuctRows(0), (Lines{kDuctHead + "m2|5|2|0|1"}));
}

TEST_F(DuctWallThickness, WithoutShownSectionsOnlyResultsOfNoSectionStand) {
  Open(Building());
  EXPECT_EQ(DuctRows(1, {}, 1), Lines{});
  Open(Of({InSection(Made(Area(7)), L""), Made(Area(1), L"c2")}));
  EXPECT_EQ(DuctRows(1, {}, 1), (Lines{"@P|", kDuctHead + "m2|7|0|0|0",
                                       "@CI|" + kDuctText + "|展开面积|c1$$|m2|7|0|0|0"}));
}

// What has a wall thickness.

TEST_F(DuctWallThickness, TakesRigidDuctsAndSleevesOfVentilationByTwoItems) {
  for (const wchar_t* spec : {L"给排水", L"电气", L"暖通", L"消防", L"弱电"}) {
    for (const wchar_t* category : {L"风管", L"BIM附件", L"水管"}) {
      for (const wchar_t* kind : {L"矩形风管", L"柔性风管", L"风管套管"}) {
        for (const wchar_t* item : {L"风管长度", L"展开面积", L"外表面积", L"管道长度", L""}) {
          const std::wstring full = std::wstring(spec) + L"\\" + category + L"\\" + kind;
          const bool isTaken =
              (full == L"暖通\\风管\\矩形风管" || full == L"暖通\\风管\\风管套管" ||
               full == L"暖通\\BIM附件\\风管套管") &&
              (item == std::wstring(L"风管长度") || item == std::wstring(L"展开面积"));
          EXPECT_EQ(CXhlDuctH2SReport::CheckDuctHData({0, spec}, {0, category, kind},
                                                      {0, item, L"m", 0, 0, 0, 0, L""}),
                    isTaken);
        }
      }
    }
  }
}

TEST_F(DuctWallThickness, FlexibleDuctsAndOtherItemsDoNotAppear) {
  Open(Of({Made(Area(1), L"c1", kDuctAttr, {L"风管", L"柔性风管"}),
           Made(Length(2), L"c2", kDuctAttr, {L"风管", L"柔性风管"}),
           Made(Item(L"外表面积", L"m2", 4), L"c3"), Made(Length(8), L"c4")}));
  EXPECT_EQ(DuctRows(6),
            (Lines{kDuctHead + "|0|0|0|0", "@CI|" + kDuctText + "|风管长度|c4$$|m|8|0|0|0"}));
}

TEST_F(DuctWallThickness, SleevesOfOtherDisciplinesDoNotAppear) {
  DetailRow row = Made(Area(1), L"c1", kSleeveAttr, kSleeve);
  row.spec = kPlumbing;
  Open(Of({row}));
  EXPECT_EQ(DuctRows(6, {}, 0, kPlumbing), Lines{});
}

TEST_F(DuctWallThickness, WithoutTheMainItemThereIsNoBlockAtLevel0AndAZeroSumBelow) {
  Open(Of({Made(Length(2))}));
  EXPECT_EQ(DuctRows(0), Lines{});
  const Lines expected{kDuctHead + "|0|0|0|0", "@CI|" + kDuctText + "|风管长度|c1$$|m|2|0|0|0"};
  EXPECT_EQ(DuctRows(1), expected);
  // Floor and code rows show the main item only.
  EXPECT_EQ(DuctRows(6), expected);
}

// Material and thickness.

TEST_F(DuctWallThickness, MissingLinesMakeAGroupOfTheirOwn) {
  EXPECT_EQ(Heads({L"S25", L"风管材质:钢板"}), (Lines{"@T|风管:钢板:(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"S25", L"风管壁厚H(mm):1"}), (Lines{"@T|风管::1(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"S25", L""}), (Lines{"@T|风管::(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"S25", L"风管材质\n风管壁厚H(mm)1"}), (Lines{"@T|风管::(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"S25", L"风管材质:\n风管壁厚H(mm):0"}), (Lines{"@T|风管::0(mm)|m2|1|0|0|0"}));
}

TEST_F(DuctWallThickness, TheFirstLineThatBeginsWithThePrefixCounts) {
  EXPECT_EQ(
      Heads({L"S25", L"x风管材质:木\n风管材质\n风管材质:钢:a\n风管材质:铁\n风管壁厚H(mm):1.5mm"}),
      (Lines{"@T|风管:钢:a:1.5mm(mm)|m2|1|0|0|0"}));
}

TEST_F(DuctWallThickness, TheValueIsReadOnlyWhereNoLineOfTheNameBeginsWithThePrefix) {
  EXPECT_EQ(Heads({L"S25\n风管材质:铁", L"风管材质:钢\n风管壁厚H(mm):1"}),
            (Lines{"@T|风管:铁:1(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"风管材质:", L"风管材质:钢"}), (Lines{"@T|风管::(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"套管材质:铁", L"套管材质:钢\n板材厚度:3"}, kSleeve),
            (Lines{"@T|风管套管:铁:3(mm)|m2|1|0|0|0"}));
}

TEST_F(DuctWallThickness, SleevesHaveLinesOfTheirOwnAndKeepTheDuctsWhereTheyLackThem) {
  const std::wstring duct = L"风管材质:钢\n风管壁厚H(mm):1\n";
  EXPECT_EQ(Heads({L"T", duct + L"套管材质:铁\n板材厚度:2"}, kSleeve),
            (Lines{"@T|风管套管:铁:2(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"T", duct + L"套管材质:铁"}, kSleeve),
            (Lines{"@T|风管套管:铁:1(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"T", duct + L"板材厚度:2"}, kSleeve),
            (Lines{"@T|风管套管:钢:2(mm)|m2|1|0|0|0"}));
  EXPECT_EQ(Heads({L"T", duct + L"套管材质:\n板材厚度"}, kSleeve),
            (Lines{"@T|风管套管::1(mm)|m2|1|0|0|0"}));
  // A duct does not read the lines of sleeves, whichever of the two comes first.
  const STinyAttr both{L"T", duct + L"套管材质:铁\n板材厚度:2"};
  const Lines expected{"@T|风管:钢:1(mm)|m2|2|0|0|0", "@T|风管套管:铁:2(mm)|m2|1|0|0|0"};
  Open(Of({Made(Area(1), L"c1", both, kSleeve), Made(Area(2), L"c2", both)}));
  EXPECT_EQ(DuctRows(0), expected);
  Open(Of({Made(Area(2), L"c2", both), Made(Area(1), L"c1", both, kSleeve)}));
  EXPECT_EQ(DuctRows(0), expected);
}

TEST_F(DuctWallThickness, AKindNamedAsASleeveUnderDuctsIsADuct) {
  EXPECT_EQ(Heads({L"T", L"风管材质:钢\n套管材质:铁"}, {L"风管", L"风管套管"}),
            (Lines{"@T|风管:钢:(mm)|m2|1|0|0|0"}));
}

// Blocks.

TEST_F(DuctWallThickness, BlocksStandByTheirTextWithTheThickerPlateFirst) {
  std::vector<DetailRow> rows;
  for (const wchar_t* text :
       {L"风管材质:一\n风管壁厚H(mm):1.2", L"风管材质:一\n风管壁厚H(mm):10",
        L"风管材质:阿\n风管壁厚H(mm):0.75", L"风管材质:一\n风管壁厚H(mm):2"}) {
    rows.push_back(Made(Area(1), L"c1", {L"S", text}));
  }
  Open(Of(rows));
  EXPECT_EQ(DuctRows(0), (Lines{"@T|风管:阿:0.75(mm)|m2|1|0|0|0", "@T|风管:一:10(mm)|m2|1|0|0|0",
                                "@T|风管:一:2(mm)|m2|1|0|0|0", "@T|风管:一:1.2(mm)|m2|1|0|0|0"}));
  // The direction of attributes is no matter of blocks.
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(DuctRows(0)[1], "@T|风管:一:10(mm)|m2|1|0|0|0");
}

TEST_F(DuctWallThickness, OfThicknessesOfOneValueInTwoFormsTheFirstTextStays) {
  Open(Of({Made(Area(1), L"c1", {L"S", L"风管材质:钢\n风管壁厚H(mm):1.0"}),
           Made(Area(2), L"c2", {L"S", L"风管材质:钢\n风管壁厚H(mm):1"})}));
  EXPECT_EQ(DuctRows(0), (Lines{"@T|风管:钢:1(mm)|m2|2|0|0|0"}));
}

TEST_F(DuctWallThickness, GroupsWhoseTextsRunTogetherAlikeAreOneUnderTheFirstTexts) {
  Open(Of({Made(Area(1), L"c1", {L"S", L"风管材质:钢1\n风管壁厚H(mm):2"}),
           Made(Area(2), L"c2", {L"S", L"风管材质:钢\n风管壁厚H(mm):12"})}));
  EXPECT_EQ(DuctRows(0), (Lines{"@T|风管:钢1:2(mm)|m2|3|0|0|0"}));
}

// Quantities.

TEST_F(DuctWallThickness, EachComponentCountsForEachFloorWithTheQuantitiesOfTheFirst) {
  Open(Of({OnFloor(Made(Item(L"展开面积", L"m2", 1.5, 1), L"c1"), L"2,5", L"2/3/9"),
           OnFloor(Made(Item(L"展开面积", L"m2", 1.50000001, 9), L""), L"2,5", L"2/3/9")}));
  EXPECT_EQ(DuctRows(1),
            (Lines{kDuctHead + "m2|9|6|0|0", "@CI|" + kDuctText + "|展开面积|c1$$|m2|9|6|0|0"}));
}

TEST_F(DuctWallThickness, NoFloorsTimesANegativeQuantityIsNegativeZero) {
  Open(Of({OnFloor(Made(Area(-2)), L"1", L"")}));
  EXPECT_EQ(DuctRows(1),
            (Lines{kDuctHead + "m2|-0|0|0|0", "@CI|" + kDuctText + "|展开面积|c1$$|m2|-0|0|0|0"}));
}

TEST_F(DuctWallThickness, AFloorWithoutANameReplacesTheTotal) {
  Open(Of({OnFloor(Made(Area(1), L"c1"), L"", L"1"), OnFloor(Made(Area(4), L"c2"), L"2", L"2")}));
  EXPECT_EQ(DuctRows(0), (Lines{kDuctHead + "m2|5|0|0|0"}));
  EXPECT_EQ(DuctRows(3),
            (Lines{kDuctHead + "m2|1|0|0|0", "@CI|" + kDuctText + "|展开面积|c1$$|m2|1|0|0|0",
                   "@F|2|2|c2$$|m2|4|0|0|0", "@S|A|c2$$|m2|4|0|0|0",
                   "@CI|" + kDuctText + "|展开面积|c2$$|m2|4|0|0|0"}));
}

// System codes.

TEST_F(DuctWallThickness, CodesOfOneNumberMergeWhateverTheirRemarks) {
  CTinyProject project;
  project.SysCodeSort(kVentilation, L"A", 5, L"x").SysCodeSort(kVentilation, L"A(y)", 5);
  Open(Of({InCode(Made(Area(1), L"c1"), L"A"), InCode(Made(Area(10), L"c2"), L"A(y)")}, project));
  // The second code's row and its attribute's both find the first code's row.
  EXPECT_EQ(DuctRows(3), (Lines{kDuctHead + "m2|11|0|0|0", "@F|1|1|c1$$c2$$|m2|11|0|0|0",
                                "@S|A(x)|c1$$c2$$c2$$|m2|21|0|0|0",
                                "@CI|" + kDuctText + "|展开面积|c1$$|m2|1|0|0|0"}));
}

TEST_F(DuctWallThickness, CodesDeeperThanThreeLevelsKeepTheirWholePath) {
  CTinyProject project = Coded(kVentilation);
  project.SysCodeSort(kVentilation, L"A&B&C&D&E", 5);
  Open(
      Of({InCode(Made(Area(1), L"c1"), L"A\\B\\C"), InCode(Made(Area(2), L"c2"), L"A\\B\\C\\D\\E")},
         project));
  EXPECT_EQ(DuctRows(5), (Lines{kDuctHead + "m2|3|0|0|0", "@F|1|1|c2$$c1$$|m2|3|0|0|0",
                                "@S|A\\B\\C(gamma)|c1$$|m2|1|0|0|0",
                                "@CI|" + kDuctText + "|展开面积|c1$$|m2|1|0|0|0",
                                "@S|A\\B\\C\\D\\E\\*E|c2$$|m2|2|0|0|0",
                                "@CI|" + kDuctText + "|展开面积|c2$$|m2|2|0|0|0"}));
  EXPECT_EQ(DuctRows(3)[2], "@S|A(alpha)|c2$$c1$$|m2|3|0|0|0");
  EXPECT_EQ(DuctRows(0, SysCodes({L"A\\B\\C\\D"})), (Lines{kDuctHead + "m2|2|0|0|0"}));
}

// Filters.

TEST_F(DuctWallThickness, FiltersSelectKindsByCategoryOrWholePath) {
  Open(Building());
  const Lines sleeve{kSleeveHead + "m2|3|0|0|0"};
  EXPECT_EQ(DuctRows(0, Categories({L"BIM附件"})), sleeve);
  EXPECT_EQ(DuctRows(0, Categories({L"BIM附件\\风管套管"})), sleeve);
  EXPECT_EQ(DuctRows(0, Categories({L"风", L"风管\\矩形", L"风管套管"})), Lines{});
  EXPECT_EQ(Duct().condition.categories.size(), 3U);
}

TEST_F(DuctWallThickness, FiltersTakeInAllThatLiesUnderASystemCode) {
  Open(Building());
  EXPECT_EQ(DuctRows(0, SysCodes({L"A\\B", L"X"})), (Lines{kDuctHead + "m2|5|2|0|1"}));
  EXPECT_EQ(DuctRows(0, SysCodes({L"A", L"A"})),
            (Lines{kDuctHead + "m2|10|4|0|2", kSleeveHead + "m2|6|0|0|0"}));
}

TEST_F(DuctWallThickness, APairOfTwoTextsTakesResultsOfEitherText) {
  Open(Of(
      {OnFloor(Made(Area(1), L"c1"), L"S", L"3,4"), OnFloor(Made(Area(10), L"c2"), L"S", L"2,5"),
       OnFloor(Made(Area(100), L"c3"), L"S", L"S"), OnFloor(Made(Area(1000), L"c4"), L"1", L"1")}));
  EXPECT_EQ(
      DuctRows(2, Floors({{L"3,4", L"S"}, {L"1", L"1"}, {L"8", L"8"}})),
      (Lines{kDuctHead + "m2|1202|0|0|0", "@F|1|1|c4$$|m2|1000|0|0|0",
             "@CI|" + kDuctText + "|展开面积|c4$$|m2|1000|0|0|0", "@F|S|3,4|c1$$c3$$|m2|202|0|0|0",
             "@CI|" + kDuctText + "|展开面积|c1$$c3$$|m2|202|0|0|0"}));
  // Equal texts take every result, with the floors of its own text.
  EXPECT_EQ(DuctRows(0, Floors({{L"S", L"S"}})), (Lines{kDuctHead + "m2|142|0|0|0"}));
  // The drawing floor finds no node.
  EXPECT_EQ(DuctRows(2, Floors({{L"S", L"3,4"}})), Lines{});
}

// Attributes and circuits.

TEST_F(DuctWallThickness, EveryKindFollowsTheSetDirection) {
  std::vector<DetailRow> rows;
  for (const wchar_t* name : {L"T15", L"T100", L"T25"}) {
    rows.push_back(Made(Area(1), L"c1", {name, L""}));
    rows.push_back(Made(Area(1), L"c1", {name, L""}, kSleeve));
  }
  Open(Of(rows));
  const std::string duct = "@T|风管::(mm)|m2|3|0|0|0";
  const std::string sleeve = "@T|风管套管::(mm)|m2|3|0|0|0";
  const std::string t15 = "@CI|T15||展开面积|c1$$|m2|1|0|0|0";
  const std::string t25 = "@CI|T25||展开面积|c1$$|m2|1|0|0|0";
  const std::string t100 = "@CI|T100||展开面积|c1$$|m2|1|0|0|0";
  EXPECT_EQ(DuctRows(1), (Lines{duct, t100, t25, t15, sleeve, t100, t25, t15}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(DuctRows(1), (Lines{duct, t15, t25, t100, sleeve, t15, t25, t100}));
}

TEST_F(DuctWallThickness, AttributesWithoutANameHaveNoRows) {
  Open(Of({Made(Area(1), L"c1", {L"", L"风管壁厚H(mm):1"})}));
  EXPECT_EQ(DuctRows(6), (Lines{"@T|风管::1(mm)|m2|1|0|0|0", "@F|1|1|c1$$|m2|1|0|0|0",
                                "@S|A\\*A|c1$$|m2|1|0|0|0"}));
}

// Two codes without a number are equal whatever follows, so that all of the second one, its own row
// and that of its attribute, goes into the row of the first.
TEST_F(DuctWallThickness, CodesWithoutANumberOfBothItemsShareARowWithTheirReferences) {
  Open(Of({InCode(Made(Area(2), L"c1"), L"X"), InCode(Made(Length(3), L"c2"), L"Y")}));
  EXPECT_EQ(DuctRows(3), (Lines{
                             kDuctHead + "m2|2|0|0|0",
                             "@F|1|1|c1$$|m2|2|0|0|0",
                             "@S|X|c1$$c2$$c2$$|m2|8|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|c1$$|m2|2|0|0|0",
                         }));
}

TEST_F(DuctWallThickness, CircuitsCountFromOneInEachItemAndEqualOnesAreDropped) {
  Open(Of({Made(Item(L"展开面积", L"m", 1), L"c1"), Made(Item(L"展开面积", L"m", 2), L"c2"),
           Made(Item(L"展开面积", L"km", 5), L"c3")}));
  const Lines rows = DuctRows(6);
  EXPECT_EQ(rows,
            (Lines{kDuctHead + "m|3|0|0|0", "@F|1|1|c3$$|km|5|0|0|0", "@F|1|1|c1$$c2$$|m|3|0|0|0",
                   "@S|A\\*A|c3$$|km|5|0|0|0", "@S|A\\*A|c1$$c2$$|m|3|0|0|0",
                   "@CI|" + kDuctText + "|展开面积|c3$$|km|5|0|0|0",
                   "@CI|" + kDuctText + "|展开面积|c1$$c2$$|m|3|0|0|0",
                   "@L|矩形风管回路1|展开面积|c3$$|km|5|0|0|0",
                   "@L|矩形风管回路2|展开面积|c2$$|m|2|0|0|0"}));
}

// Requests and folding.

TEST_F(DuctWallThickness, AnUnknownDisciplineLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  const Report::SNewCondition condition = Categories({L"BIM附件"});
  Report::CellArray cells{L"kept"};
  Duct().GetDuctHData(cells, kVentilation, condition, 0, 0);
  EXPECT_EQ(cells, (Report::CellArray{L"kept", L"@T", L"风管套管:钢板:2(mm)", L"m2", L"3", L"0",
                                      L"0", L"0"}));
  Duct().GetDuctHData(cells, kPlumbing, {}, 0, 0);
  EXPECT_EQ(cells.size(), 8U);
  EXPECT_EQ(Duct().spec, kVentilation);
  EXPECT_EQ(Duct().condition.categories, condition.categories);
}

TEST_F(DuctWallThickness, RequestsReadTheDetailSetOnceAndDoNotDependOnTheOnesBefore) {
  Open(Building());
  db->ForgetReads();
  const Lines all = DuctRows(6);
  EXPECT_EQ(DuctRows(0, SysCodes({L"A\\B"})), (Lines{kDuctHead + "m2|5|2|0|1"}));
  EXPECT_EQ(DuctRows(6), all);
  EXPECT_EQ(db->reads, (std::vector<EDbRead>{EDbRead::Detail}));
}

TEST_F(DuctWallThickness, EachBadIndexFailsTheFoldEachTimeAlsoInRowsThatAreNoDucts) {
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
      EXPECT_THROW(Duct(), std::out_of_range);
      EXPECT_THROW(Duct(), std::out_of_range);
    }
  }
}

}  // namespace
