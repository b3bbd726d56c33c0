#include <gtest/gtest.h>

#include <limits>
#include <set>
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

const STinyCategory kPipe{L"水管", L"供水管"};
const STinyCategory kDuct{L"风管", L"矩形风管"};
const STinyCategory kTank{L"水暖设备", L"水箱"};
const STinyAttr kPipeAttr{L"DN25", L"保温材料:岩棉\n保温厚度:30"};
const STinyAttr kDuctAttr{L"S40", L"保温厚度:20"};
const STinyAttr kTankAttr{L"X1", L"保温材料:橡塑\n保温厚度:30mm"};
const std::string kPipeText = "DN25|保温材料:岩棉\n保温厚度:30";
const std::string kDuctText = "S40|保温厚度:20";
const std::string kTankText = "X1|保温材料:橡塑\n保温厚度:30mm";
const std::string kPipeHead = "@T|水管|岩棉:30(mm)|绝热保温体积|m3|";
const std::string kDuctHead = "@T|风管|:20(mm)|风管保温体积|m3|";
const std::string kTankHead = "@T|设备|橡塑:30mm(mm)|保温体积|m3|";

class InsulationTable : public tally_test::SpecialTest {
 protected:
  static STinyDetailItem Volume(double quantity) { return Item(L"绝热保温体积", L"m3", quantity); }
  static STinyDetailItem Length(double quantity) { return Item(L"管道长度", L"m", quantity); }

  static DetailRow Made(const STinyDetailItem& item, const wchar_t* component = L"c1",
                        const STinyAttr& attr = kPipeAttr, const STinyCategory& kind = kPipe) {
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
  static DetailRow InSpec(DetailRow row, const wchar_t* spec) {
    row.spec = spec;
    return row;
  }
  static CTinyProject Of(const std::vector<DetailRow>& rows, CTinyProject project = {}) {
    for (const DetailRow& row : rows) {
      project.Detail().Row(row);
    }
    return project;
  }

  static Lines JrbwRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0) {
    return InsulationRows(kVentilation, level, condition, bySgd);
  }

  /// Pipes, a duct and a tank, two floors, two sections, codes of one and three levels.
  static CTinyProject Building() {
    const STinyDetailItem shared = Item(L"绝热保温体积", L"m3", 2.5, 1, 0, 0.5);
    return Of({InCode(Made(shared, L"c1"), L"A\\B\\C"), InCode(Made(shared, L"c2"), L"A\\B\\C"),
               InSection(InCode(OnFloor(Made(Volume(4), L"c3"), L"2,5", L"2,5"), L"D"), L"二区"),
               InCode(Made(Length(1.5), L"c4"), L"A\\B\\C"),
               InSection(Made(Item(L"风管保温体积", L"m3", 3), L"c5", kDuctAttr, kDuct), L"二区"),
               Made(Item(L"展开面积", L"m2", 2), L"c6", kDuctAttr, kDuct),
               InCode(Made(Length(6), L"c7"), L"D"),
               Made(Item(L"保温体积", L"m3", 1), L"c8", kTankAttr, kTank)},
              Coded(kVentilation));
  }

  /// The block headings of one pipe with this attribute.
  Lines Heads(const STinyAttr& attr, const STinyCategory& kind = kPipe) {
    Open(Of({Made(Volume(1), L"c1", attr, kind)}));
    return JrbwRows(0);
  }
};

// Levels.

TEST_F(InsulationTable, Level0ShowsTotalsOfTheVolume) {
  Open(Building());
  EXPECT_EQ(JrbwRows(0),
            (Lines{kDuctHead + "3|0|0|0", kPipeHead + "21|2|0|1", kTankHead + "1|0|0|0"}));
}

TEST_F(InsulationTable, Level1AddsAttributesWithTheMainItemFirst) {
  Open(Building());
  EXPECT_EQ(JrbwRows(1), (Lines{
                             kDuctHead + "3|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
                             "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                             kPipeHead + "21|2|0|1",
                             "@CI|" + kPipeText + "|管道长度|m|c4$$c7$$|7.5|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$c3$$|21|2|0|1",
                             kTankHead + "1|0|0|0",
                             "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, Level2AddsFloorsAheadOfTheirAttributes) {
  Open(Building());
  EXPECT_EQ(JrbwRows(2), (Lines{
                             kDuctHead + "3|0|0|0",
                             "@F|1|1|m3|c5$$|3|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
                             "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                             kPipeHead + "21|2|0|1",
                             "@F|1|1|m3|c1$c2$$|5|2|0|1",
                             "@CI|" + kPipeText + "|管道长度|m|c4$$c7$$|7.5|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
                             "@F|2,5|2,5|m3|c3$$|16|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
                             kTankHead + "1|0|0|0",
                             "@F|1|1|m3|c8$$|1|0|0|0",
                             "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, Level3AddsFirstSystemCodesWithBareRemarks) {
  Open(Building());
  // The length under "D" has no volume beside it on that floor.
  EXPECT_EQ(JrbwRows(3), (Lines{
                             kDuctHead + "3|0|0|0",
                             "@F|1|1|m3|c5$$|3|0|0|0",
                             "@S|Aalpha|m3|c5$$|3|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
                             "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                             kPipeHead + "21|2|0|1",
                             "@F|1|1|m3|c1$c2$$|5|2|0|1",
                             "@S|Aalpha|m3|c1$c2$$|5|2|0|1",
                             "@CI|" + kPipeText + "|管道长度|m|c4$$|1.5|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
                             "@F|2,5|2,5|m3|c3$$|16|0|0|0",
                             "@S|D|m3|c3$$|16|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
                             kTankHead + "1|0|0|0",
                             "@F|1|1|m3|c8$$|1|0|0|0",
                             "@S|Aalpha|m3|c8$$|1|0|0|0",
                             "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, Level4ShowsSecondSystemCodesAndNoRemarkForACompletedOne) {
  Open(Building());
  EXPECT_EQ(JrbwRows(4), (Lines{
                             kDuctHead + "3|0|0|0",
                             "@F|1|1|m3|c5$$|3|0|0|0",
                             "@S|A\\*A|m3|c5$$|3|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
                             "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                             kPipeHead + "21|2|0|1",
                             "@F|1|1|m3|c1$c2$$|5|2|0|1",
                             "@S|A\\B|m3|c1$c2$$|5|2|0|1",
                             "@CI|" + kPipeText + "|管道长度|m|c4$$|1.5|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
                             "@F|2,5|2,5|m3|c3$$|16|0|0|0",
                             "@S|D\\*D|m3|c3$$|16|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
                             kTankHead + "1|0|0|0",
                             "@F|1|1|m3|c8$$|1|0|0|0",
                             "@S|A\\*A|m3|c8$$|1|0|0|0",
                             "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, Level5ShowsWholeSystemCodes) {
  Open(Building());
  EXPECT_EQ(JrbwRows(5), (Lines{
                             kDuctHead + "3|0|0|0",
                             "@F|1|1|m3|c5$$|3|0|0|0",
                             "@S|A\\*A|m3|c5$$|3|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
                             "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                             kPipeHead + "21|2|0|1",
                             "@F|1|1|m3|c1$c2$$|5|2|0|1",
                             "@S|A\\B\\Cgamma|m3|c1$c2$$|5|2|0|1",
                             "@CI|" + kPipeText + "|管道长度|m|c4$$|1.5|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
                             "@F|2,5|2,5|m3|c3$$|16|0|0|0",
                             "@S|D\\*D|m3|c3$$|16|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
                             kTankHead + "1|0|0|0",
                             "@F|1|1|m3|c8$$|1|0|0|0",
                             "@S|A\\*A|m3|c8$$|1|0|0|0",
                             "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, Level6AddsCircuitsOfMainItemsBesideAVolume) {
  Open(Building());
  EXPECT_EQ(JrbwRows(6), (Lines{
                             kDuctHead + "3|0|0|0",
                             "@F|1|1|m3|c5$$|3|0|0|0",
                             "@S|A\\*A|m3|c5$$|3|0|0|0",
                             "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
                             "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                             "@L|矩形风管回路1|展开面积|m2|c6$$|2|0|0|0",
                             kPipeHead + "21|2|0|1",
                             "@F|1|1|m3|c1$c2$$|5|2|0|1",
                             "@S|A\\B\\Cgamma|m3|c1$c2$$|5|2|0|1",
                             "@CI|" + kPipeText + "|管道长度|m|c4$$|1.5|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
                             "@L|供水管回路1|管道长度|m|c4$$|1.5|0|0|0",
                             "@F|2,5|2,5|m3|c3$$|16|0|0|0",
                             "@S|D\\*D|m3|c3$$|16|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
                             kTankHead + "1|0|0|0",
                             "@F|1|1|m3|c8$$|1|0|0|0",
                             "@S|A\\*A|m3|c8$$|1|0|0|0",
                             "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, BelowLevel0FloorsShowWithoutAttributes) {
  Open(Building());
  const Lines expected{
      kDuctHead + "3|0|0|0",       "@F|1|1|m3|c5$$|3|0|0|0",      kPipeHead + "21|2|0|1",
      "@F|1|1|m3|c1$c2$$|5|2|0|1", "@F|2,5|2,5|m3|c3$$|16|0|0|0", kTankHead + "1|0|0|0",
      "@F|1|1|m3|c8$$|1|0|0|0",
  };
  EXPECT_EQ(JrbwRows(-1), expected);
  EXPECT_EQ(JrbwRows(std::numeric_limits<int>::min()), expected);
}

TEST_F(InsulationTable, AboveLevel6EmptyCodesMakeASecondFloorRow) {
  Open(Building());
  const Lines expected{
      kDuctHead + "3|0|0|0",
      "@F|1|1|m3|c5$$|3|0|0|0",
      "@F|1|1|m3|c5$$|3|0|0|0",
      "@CI|" + kDuctText + "|展开面积|m2|c6$$|2|0|0|0",
      "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
      kPipeHead + "21|2|0|1",
      "@F|1|1|m3|c1$c2$$|5|2|0|1",
      "@F|1|1|m3|c1$c2$$|5|2|0|1",
      "@CI|" + kPipeText + "|管道长度|m|c4$$c7$$|7.5|0|0|0",
      "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
      "@F|2,5|2,5|m3|c3$$|16|0|0|0",
      "@F|2,5|2,5|m3|c3$$|16|0|0|0",
      "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
      kTankHead + "1|0|0|0",
      "@F|1|1|m3|c8$$|1|0|0|0",
      "@F|1|1|m3|c8$$|1|0|0|0",
      "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
  };
  EXPECT_EQ(JrbwRows(7), expected);
  EXPECT_EQ(JrbwRows(std::numeric_limits<int>::max()), expected);
}

TEST_F(InsulationTable, CellsStandOneByOne) {
  Open(Of({Made(Item(L"绝热保温体积", L"m3", 1, 2, 3, 4)),
           Made(Item(L"管道长度", L"m", 5, 6, 7, 8), L"c2")}));
  status.SetDispSgd({L"一区"});
  Report::CellArray cells{L"kept"};
  Insulation().GetPipeJRBWData(cells, kVentilation, {}, 6, Report::ReportPipeJRBW, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"kept",
                                      L"@P",
                                      L"一区",
                                      L"@T",
                                      L"水管",
                                      L"岩棉:30(mm)",
                                      L"绝热保温体积",
                                      L"m3",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@F",
                                      L"1",
                                      L"1",
                                      L"m3",
                                      L"c1$$",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@S",
                                      L"A\\*A",
                                      L"m3",
                                      L"c1$$",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@CI",
                                      L"DN25",
                                      kPipeAttr.value,
                                      L"管道长度",
                                      L"m",
                                      L"c2$$",
                                      L"5",
                                      L"6",
                                      L"7",
                                      L"8",
                                      L"@CI",
                                      L"DN25",
                                      kPipeAttr.value,
                                      L"绝热保温体积",
                                      L"m3",
                                      L"c1$$",
                                      L"1",
                                      L"2",
                                      L"3",
                                      L"4",
                                      L"@L",
                                      L"供水管回路1",
                                      L"管道长度",
                                      L"m",
                                      L"c2$$",
                                      L"5",
                                      L"6",
                                      L"7",
                                      L"8"}));
}

// Sections.

TEST_F(InsulationTable, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  status.SetDispSgd({L"二区", L"一区"});
  // The duct has no volume in the first section.
  EXPECT_EQ(JrbwRows(1, {}, 1), (Lines{
                                    "@P|一区",
                                    kPipeHead + "5|2|0|1",
                                    "@CI|" + kPipeText + "|管道长度|m|c4$$c7$$|7.5|0|0|0",
                                    "@CI|" + kPipeText + "|绝热保温体积|m3|c1$c2$$|5|2|0|1",
                                    kTankHead + "1|0|0|0",
                                    "@CI|" + kTankText + "|保温体积|m3|c8$$|1|0|0|0",
                                    "@P|二区",
                                    kDuctHead + "3|0|0|0",
                                    "@CI|" + kDuctText + "|风管保温体积|m3|c5$$|3|0|0|0",
                                    kPipeHead + "16|0|0|0",
                                    "@CI|" + kPipeText + "|绝热保温体积|m3|c3$$|16|0|0|0",
                                }));
}

TEST_F(InsulationTable, OneBlockForAllSectionsCountsTheShownOnesWhereTheStatusSaysSo) {
  Open(Building());
  status.SetDispSgd({L"二区"});
  EXPECT_EQ(JrbwRows(0),
            (Lines{kDuctHead + "3|0|0|0", kPipeHead + "21|2|0|1", kTankHead + "1|0|0|0"}));
  status.SetIsBySgd(true);
  EXPECT_EQ(JrbwRows(0), (Lines{kDuctHead + "3|0|0|0", kPipeHead + "16|0|0|0"}));
}

TEST_F(InsulationTable, WithoutShownSectionsOnlyResultsOfNoSectionStandUnderAnEmptyName) {
  Open(Building());
  EXPECT_EQ(JrbwRows(1, {}, 1), Lines{});
  Open(Of({InSection(Made(Volume(7)), L""), Made(Volume(1), L"c2")}));
  EXPECT_EQ(JrbwRows(1, {}, 1), (Lines{"@P|", kPipeHead + "7|0|0|0",
                                       "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|7|0|0|0"}));
}

// What is insulated.

TEST_F(InsulationTable, TakesTheMainAndTheVolumeItemOfPipesDuctsAndTanks) {
  using Report = CXhlPipeJRBWReport;
  for (const wchar_t* spec : {L"电气", L"弱电", L"建筑"}) {
    EXPECT_FALSE(Report::CheckIsNeedData(spec, L"管道", L"k", L"绝热保温体积"));
    EXPECT_FALSE(Report::CheckIsNeedData(spec, L"设备", L"水箱", L"保温体积"));
    EXPECT_FALSE(Report::CheckIsNeedData(spec, L"管道", L"k", L""));
  }
  for (const wchar_t* category : {L"管道", L"管网", L"水管"}) {
    EXPECT_TRUE(Report::CheckIsNeedData(L"给排水", category, L"k", L"绝热保温体积"));
    EXPECT_FALSE(Report::CheckIsNeedData(L"给排水", category, L"k", L"风管保温体积"));
    EXPECT_FALSE(Report::CheckIsNeedData(L"给排水", category, L"k", L"保温体积"));
    EXPECT_TRUE(Report::CheckIsNeedData(L"给排水", category, L"水箱", L"保温体积"));
    EXPECT_TRUE(Report::CheckIsNeedData(L"给排水", category, L"水箱", L"绝热保温体积"));
  }
  EXPECT_TRUE(Report::CheckIsNeedData(L"给排水", L"管道", L"k", L"管道长度"));
  EXPECT_FALSE(Report::CheckIsNeedData(L"给排水", L"管网", L"k", L"管道长度"));
  EXPECT_TRUE(Report::CheckIsNeedData(L"消防", L"管网", L"k", L"管道长度"));
  EXPECT_TRUE(Report::CheckIsNeedData(L"暖通", L"水管", L"k", L"管道长度"));
  EXPECT_TRUE(Report::CheckIsNeedData(L"暖通", L"风管", L"k", L"风管保温体积"));
  EXPECT_TRUE(Report::CheckIsNeedData(L"暖通", L"风管", L"k", L"展开面积"));
  EXPECT_FALSE(Report::CheckIsNeedData(L"暖通", L"风管", L"k", L"风管长度"));
  EXPECT_TRUE(Report::CheckIsNeedData(L"暖通", L"风管", L"柔性风管", L"风管长度"));
  EXPECT_FALSE(Report::CheckIsNeedData(L"暖通", L"风管", L"k", L"绝热保温体积"));
  EXPECT_TRUE(Report::CheckIsNeedData(L"暖通", L"水暖设备", L"水箱", L"构件数量"));
  EXPECT_FALSE(Report::CheckIsNeedData(L"暖通", L"水暖设备", L"水箱", L"设备数量"));
  EXPECT_FALSE(Report::CheckIsNeedData(L"暖通", L"水暖设备", L"水泵", L"保温体积"));
  EXPECT_FALSE(Report::CheckIsNeedData(L"暖通", L"水暖设备", L"水泵", L"设备数量"));
}

TEST_F(InsulationTable, EveryOtherKindStaysOutWhateverItsAttributeSays) {
  Open(Of({Made(Volume(1), L"c1", kPipeAttr, {L"水附件", L"阀门"}),
           Made(Item(L"构件数量", L"个", 1), L"c1", kPipeAttr, {L"水附件", L"阀门"}),
           InSpec(Made(Volume(1), L"c1", kPipeAttr, {L"管道", L"给水管"}), L"电气")}));
  EXPECT_EQ(JrbwRows(6), Lines{});
  EXPECT_EQ(InsulationRows(L"电气", 6), Lines{});
}

TEST_F(InsulationTable, PipesOfEveryCategoryAreWaterPipesAndTanksAreEquipment) {
  const auto pipe = [](const wchar_t* spec, const wchar_t* category, const wchar_t* kind) {
    return InSpec(Made(Volume(1), L"c1", kPipeAttr, {category, kind}), spec);
  };
  Open(Of({pipe(L"给排水", L"管道", L"给水管"), pipe(L"消防", L"管网", L"x"),
           pipe(L"暖通", L"水管", L"x"), pipe(L"给排水", L"管道", L"水箱")}));
  EXPECT_EQ(InsulationRows(kPlumbing, 0),
            (Lines{kPipeHead + "1|0|0|0", "@T|设备|岩棉:30(mm)|绝热保温体积|m3|1|0|0|0"}));
  EXPECT_EQ(InsulationRows(L"消防", 0), (Lines{kPipeHead + "1|0|0|0"}));
  EXPECT_EQ(JrbwRows(0), (Lines{kPipeHead + "1|0|0|0"}));
}

// Material and thickness.

TEST_F(InsulationTable, WithoutAThicknessThereIsNoInsulation) {
  for (const wchar_t* text :
       {L"", L"保温材料:岩棉", L"保温厚度", L"保温厚度:", L"保温厚度:0", L"保温厚度:0.0mm",
        L"保温厚度:-0", L"保温厚度:mm30", L"保温厚度\n保温厚度:30", L" 保温厚度:30"}) {
    EXPECT_EQ(Heads({L"DN25", text}), Lines{});
  }
}

TEST_F(InsulationTable, AnyOtherThicknessIsKeptAsItsText) {
  EXPECT_EQ(Heads({L"DN25", L"保温厚度:30mm"}),
            (Lines{"@T|水管|:30mm(mm)|绝热保温体积|m3|1|0|0|0"}));
  EXPECT_EQ(Heads({L"DN25", L"保温厚度: 030"}),
            (Lines{"@T|水管|: 030(mm)|绝热保温体积|m3|1|0|0|0"}));
  EXPECT_EQ(Heads({L"DN25", L"保温厚度:-5"}), (Lines{"@T|水管|:-5(mm)|绝热保温体积|m3|1|0|0|0"}));
}

TEST_F(InsulationTable, AnEmptyMaterialIsAGroupOfItsOwn) {
  const Lines expected{"@T|水管|:30(mm)|绝热保温体积|m3|1|0|0|0"};
  EXPECT_EQ(Heads({L"DN25", L"保温厚度:30"}), expected);
  EXPECT_EQ(Heads({L"DN25", L"保温材料:\n保温厚度:30"}), expected);
  EXPECT_EQ(Heads({L"DN25", L"保温材料\n保温材料:岩棉\n保温厚度:30"}), expected);
}

TEST_F(InsulationTable, TheFirstLineThatBeginsWithThePrefixCounts) {
  EXPECT_EQ(
      Heads({L"DN25", L"x保温材料:a\n保温材料名:b:c\n保温材料:d\n保温厚度(mm):30\n保温厚度:9"}),
      (Lines{"@T|水管|b:c:30(mm)|绝热保温体积|m3|1|0|0|0"}));
}

TEST_F(InsulationTable, TheValueIsReadOnlyWhereNoLineOfTheNameBeginsWithThePrefix) {
  EXPECT_EQ(Heads({L"DN25\n保温材料:a", L"保温材料:b\n保温厚度:30"}),
            (Lines{"@T|水管|a:30(mm)|绝热保温体积|m3|1|0|0|0"}));
  EXPECT_EQ(Heads({L"保温厚度", L"保温材料:b\n保温厚度:30"}), Lines{});
  EXPECT_EQ(Heads({L"保温材料", L"保温材料:b\n保温厚度:30"}),
            (Lines{"@T|水管|:30(mm)|绝热保温体积|m3|1|0|0|0"}));
}

TEST_F(InsulationTable, GroupsWhoseTextsRunTogetherAlikeAreOneUnderTheFirstTexts) {
  Open(Of({Made(Volume(1), L"c1", {L"DN", L"保温材料:棉1\n保温厚度:2"}),
           Made(Volume(2), L"c2", {L"DN", L"保温材料:棉\n保温厚度:12"})}));
  EXPECT_EQ(JrbwRows(0), (Lines{"@T|水管|棉1:2(mm)|绝热保温体积|m3|3|0|0|0"}));
}

// Blocks.

TEST_F(InsulationTable, BlocksStandByTypeThenMaterialThenTheThickerFirst) {
  const auto pipe = [](const wchar_t* text) { return Made(Volume(1), L"c1", {L"DN", text}); };
  Open(Of(
      {pipe(L"保温材料:阿\n保温厚度:9"), pipe(L"保温材料:一\n保温厚度:9"),
       pipe(L"保温材料:一\n保温厚度:100"), pipe(L"保温材料:一\n保温厚度:30.5"),
       Made(Item(L"保温体积", L"m3", 1), L"c1", {L"X", L"保温材料:0\n保温厚度:1"}, kTank),
       Made(Item(L"风管保温体积", L"m3", 1), L"c1", {L"S", L"保温材料:阿\n保温厚度:1"}, kDuct)}));
  EXPECT_EQ(JrbwRows(0), (Lines{
                             "@T|风管|阿:1(mm)|风管保温体积|m3|1|0|0|0",
                             "@T|水管|一:100(mm)|绝热保温体积|m3|1|0|0|0",
                             "@T|水管|一:30.5(mm)|绝热保温体积|m3|1|0|0|0",
                             "@T|水管|一:9(mm)|绝热保温体积|m3|1|0|0|0",
                             "@T|水管|阿:9(mm)|绝热保温体积|m3|1|0|0|0",
                             "@T|设备|0:1(mm)|保温体积|m3|1|0|0|0",
                         }));
}

TEST_F(InsulationTable, OfThicknessesOfOneValueTheFirstTextStays) {
  const auto pipe = [](const wchar_t* text, double quantity) {
    return Made(Volume(quantity), L"c1", {L"DN", text});
  };
  Open(Of({pipe(L"保温厚度:30mm", 1), pipe(L"保温厚度:30.0", 2), pipe(L"保温厚度:3e1", 4),
           pipe(L"保温厚度:31", 8)}));
  EXPECT_EQ(JrbwRows(0), (Lines{"@T|水管|:31(mm)|绝热保温体积|m3|8|0|0|0",
                                "@T|水管|:30.0(mm)|绝热保温体积|m3|2|0|0|0"}));
}

TEST_F(InsulationTable, ABlockWhoseFirstSumIsZeroIsLeftOut) {
  Open(Of({Made(Length(2))}));
  EXPECT_EQ(JrbwRows(6), Lines{});
  Open(Of({Made(Item(L"绝热保温体积", L"m3", 0, 5, 6, 7))}));
  EXPECT_EQ(JrbwRows(6), Lines{});
  Open(Of({OnFloor(Made(Volume(-2)), L"1", L"")}));
  EXPECT_EQ(JrbwRows(6), Lines{});
  Open(Of({Made(Item(L"绝热保温体积", L"m3", 1, 0)), Made(Length(2), L"c2")}));
  EXPECT_EQ(JrbwRows(0), (Lines{kPipeHead + "1|0|0|0"}));
}

TEST_F(InsulationTable, ABlockOfZeroDoesNotStandInTheWayOfOneOfItsKey) {
  Open(Of({Made(Volume(0), L"c1", {L"DN", L"保温厚度:30"}),
           Made(Volume(2), L"c2", {L"DN", L"保温厚度:30.0"})}));
  EXPECT_EQ(JrbwRows(0), (Lines{"@T|水管|:30.0(mm)|绝热保温体积|m3|2|0|0|0"}));
}

// Totals.

TEST_F(InsulationTable, OfTotalsOfTwoItemsTheLastStandsAndShowsTheAttributesThatHaveIt) {
  // A pipe and a duct that are named as tanks, with one attribute, and a tank with another.
  const STinyAttr attr{L"X", L"保温厚度:1"};
  const STinyAttr other{L"Y", L"保温厚度:1"};
  Open(Of({Made(Item(L"绝热保温体积", L"m3", 1), L"c1", attr, {L"水管", L"水箱"}),
           Made(Item(L"风管保温体积", L"m3", 2), L"c2", attr, {L"风管", L"水箱"}),
           Made(Item(L"保温体积", L"m3", 4), L"c3", attr, kTank),
           Made(Item(L"保温体积", L"m3", 8), L"c4", other, kTank)}));
  EXPECT_EQ(JrbwRows(2), (Lines{
                             "@T|设备|:1(mm)|风管保温体积|m3|2|0|0|0",
                             "@F|1|1|m3|c3$$c4$$|12|0|0|0",
                             "@F|1|1|m3|c1$$|1|0|0|0",
                             "@F|1|1|m3|c2$$|2|0|0|0",
                             "@CI|X|保温厚度:1|保温体积|m3|c3$$|4|0|0|0",
                             "@CI|X|保温厚度:1|绝热保温体积|m3|c1$$|1|0|0|0",
                             "@CI|X|保温厚度:1|风管保温体积|m3|c2$$|2|0|0|0",
                         }));
}

TEST_F(InsulationTable, AnotherReportsTypeTotalsEveryItem) {
  Open(Of({Made(Volume(4)), Made(Length(2), L"c2")}));
  const auto rows = [](int level) {
    return InsulationRows(kVentilation, level, {}, 0, Report::ReportBrushPaint);
  };
  EXPECT_EQ(rows(0), (Lines{kPipeHead + "4|0|0|0"}));
  EXPECT_EQ(rows(2),
            (Lines{kPipeHead + "4|0|0|0", "@F|1|1|m|c2$$|2|0|0|0", "@F|1|1|m3|c1$$|4|0|0|0",
                   "@CI|" + kPipeText + "|管道长度|m|c2$$|2|0|0|0",
                   "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|4|0|0|0"}));
  // The next request goes by its own type.
  EXPECT_EQ(JrbwRows(2)[1], "@F|1|1|m3|c1$$|4|0|0|0");
}

TEST_F(InsulationTable, WhereTheTotalIsOfTheMainItemNoAttributesShow) {
  Open(Of({Made(Length(2))}));
  EXPECT_EQ(InsulationRows(kVentilation, 0, {}, 0, Report::ReportNone),
            (Lines{"@T|水管|岩棉:30(mm)|管道长度|m|2|0|0|0"}));
  EXPECT_EQ(InsulationRows(kVentilation, 6, {}, 0, Report::ReportNone),
            (Lines{"@T|水管|岩棉:30(mm)|管道长度|m|2|0|0|0", "@F|1|1|m|c1$$|2|0|0|0",
                   "@S|A\\*A|m|c1$$|2|0|0|0"}));
}

TEST_F(InsulationTable, AMainItemShowsOnlyBesideTheVolumeOfItsAttribute) {
  Open(Of({Made(Volume(1)), Made(Length(2), L"c2", {L"DN40", kPipeAttr.value}),
           OnFloor(Made(Length(4), L"c3"), L"2", L"2")}));
  EXPECT_EQ(JrbwRows(1),
            (Lines{kPipeHead + "1|0|0|0", "@CI|" + kPipeText + "|管道长度|m|c3$$|4|0|0|0",
                   "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|1|0|0|0"}));
  // On the second floor there is none.
  EXPECT_EQ(JrbwRows(2), (Lines{kPipeHead + "1|0|0|0", "@F|1|1|m3|c1$$|1|0|0|0",
                                "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|1|0|0|0"}));
}

TEST_F(InsulationTable, AttributesThatLackATextHaveNoRows) {
  Open(Of({Made(Volume(1), L"c1", {L"", L"保温厚度:30"})}));
  EXPECT_EQ(JrbwRows(2),
            (Lines{"@T|水管|:30(mm)|绝热保温体积|m3|1|0|0|0", "@F|1|1|m3|c1$$|1|0|0|0"}));
  Open(Of({Made(Volume(1), L"c1", {L"保温厚度:30", L""})}));
  EXPECT_EQ(JrbwRows(2),
            (Lines{"@T|水管|:30(mm)|绝热保温体积|m3|1|0|0|0", "@F|1|1|m3|c1$$|1|0|0|0"}));
}

// Quantities.

TEST_F(InsulationTable, EachComponentCountsForEachFloor) {
  Open(Of({OnFloor(Made(Item(L"绝热保温体积", L"m3", 1.5, 1), L"c1"), L"2,5", L"2,5"),
           OnFloor(Made(Item(L"绝热保温体积", L"m3", 1.50000001, 9), L""), L"2,5", L"2,5")}));
  EXPECT_EQ(JrbwRows(1),
            (Lines{kPipeHead + "12|8|0|0", "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|12|8|0|0"}));
}

TEST_F(InsulationTable, AFloorWithoutANameReplacesTheTotal) {
  Open(Of(
      {OnFloor(Made(Volume(1), L"c1"), L"", L"1"), OnFloor(Made(Volume(4), L"c2"), L"2", L"2")}));
  EXPECT_EQ(JrbwRows(1)[0], kPipeHead + "5|0|0|0");
  EXPECT_EQ(JrbwRows(3),
            (Lines{kPipeHead + "1|0|0|0", "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|1|0|0|0",
                   "@F|2|2|m3|c2$$|4|0|0|0", "@S|A|m3|c2$$|4|0|0|0",
                   "@CI|" + kPipeText + "|绝热保温体积|m3|c2$$|4|0|0|0"}));
}

// System codes.

TEST_F(InsulationTable, CodesOfOneNumberAreOneRowUnderTheFirstText) {
  Open(Of({InCode(Made(Volume(1), L"c1"), L"X"), InCode(Made(Volume(10), L"c2"), L"Y\\Z")}));
  for (const int level : {3, 4, 5}) {
    const std::string code = level == 3 ? "X" : "X\\*X";
    EXPECT_EQ(JrbwRows(level), (Lines{kPipeHead + "11|0|0|0", "@F|1|1|m3|c1$$c2$$|11|0|0|0",
                                      "@S|" + code + "|m3|c1$$c2$$|11|0|0|0",
                                      "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$c2$$|11|0|0|0"}));
  }
}

TEST_F(InsulationTable, CodesDeeperThanThreeLevelsKeepTheirWholePath) {
  CTinyProject project = Coded(kVentilation);
  project.SysCodeSort(kVentilation, L"A&B&C&D", 5, L"delta");
  Open(Of(
      {InCode(Made(Volume(1), L"c1"), L"A\\B\\C"), InCode(Made(Volume(2), L"c2"), L"A\\B\\C\\D")},
      project));
  // The remark of "A\B\C\D" is not that of the completed path.
  EXPECT_EQ(JrbwRows(5), (Lines{kPipeHead + "3|0|0|0", "@F|1|1|m3|c2$$c1$$|3|0|0|0",
                                "@S|A\\B\\Cgamma|m3|c1$$|1|0|0|0",
                                "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|1|0|0|0",
                                "@S|A\\B\\C\\D\\*D|m3|c2$$|2|0|0|0",
                                "@CI|" + kPipeText + "|绝热保温体积|m3|c2$$|2|0|0|0"}));
}

// Filters.

TEST_F(InsulationTable, AFilterMustNameACategoryOfTheTable) {
  using Report = CXhlPipeJRBWReport;
  EXPECT_TRUE(Report::CheckIsOk({}));
  for (const wchar_t* category :
       {L"管道", L"风管", L"水管", L"管网", L"设备", L"水暖设备", L"储存装置"}) {
    EXPECT_TRUE(Report::CheckIsOk({category}));
    EXPECT_TRUE(Report::CheckIsOk({L"a", std::wstring(category) + L"\\x\\y"}));
    EXPECT_FALSE(
        Report::CheckIsOk({std::wstring(category) + L"x", std::wstring(L"x\\") + category}));
  }
  EXPECT_FALSE(Report::CheckIsOk({L"线槽桥架\\线槽"}));
  EXPECT_FALSE(Report::CheckIsOk({L""}));
}

TEST_F(InsulationTable, AFilterWithoutSuchACategoryLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  CXhlPipeJRBWReport& report = Insulation();
  const Report::SNewCondition before = Categories({L"水管"});
  EXPECT_EQ(JrbwRows(0, before), (Lines{kPipeHead + "21|2|0|1"}));
  EXPECT_EQ(JrbwRows(0, Categories({L"线槽桥架\\线槽"})), Lines{});
  EXPECT_EQ(report.condition.categories, before.categories);
  EXPECT_EQ(report.spec, kVentilation);
  // Such a category alone stores the condition, and selects its own kinds only.
  EXPECT_EQ(JrbwRows(0, Categories({L"设备"})), Lines{});
  EXPECT_EQ(report.condition.categories, (std::set<std::wstring>{L"设备"}));
}

TEST_F(InsulationTable, FiltersSelectKindsByTheirOwnCategoryOrWholePath) {
  Open(Of(
      {InSpec(Made(Volume(1), L"c1", kPipeAttr, {L"管道", L"水箱"}), L"给排水"),
       InSpec(Made(Item(L"保温体积", L"m3", 2), L"c2", kPipeAttr, {L"设备", L"水箱"}), L"给排水"),
       InSpec(Made(Volume(4), L"c3", kPipeAttr, {L"管道", L"给水管"}), L"给排水")}));
  EXPECT_EQ(InsulationRows(kPlumbing, 0, Categories({L"设备"})),
            (Lines{"@T|设备|岩棉:30(mm)|保温体积|m3|2|0|0|0"}));
  EXPECT_EQ(InsulationRows(kPlumbing, 0, Categories({L"管道\\给水管", L"x"})),
            (Lines{kPipeHead + "4|0|0|0"}));
  EXPECT_EQ(InsulationRows(kPlumbing, 0, Categories({L"管道\\给水"})), Lines{});
}

TEST_F(InsulationTable, FiltersTakeInAllThatLiesUnderASystemCode) {
  Open(Building());
  EXPECT_EQ(JrbwRows(0, SysCodes({L"A"})),
            (Lines{kDuctHead + "3|0|0|0", kPipeHead + "5|2|0|1", kTankHead + "1|0|0|0"}));
  EXPECT_EQ(JrbwRows(0, SysCodes({L"A\\B", L"A\\B\\C", L"B", L""})),
            (Lines{kPipeHead + "10|4|0|2"}));
}

TEST_F(InsulationTable, APairOfTwoTextsTakesResultsOfEitherTextForTheDrawingFloor) {
  Open(Of({OnFloor(Made(Volume(1), L"c1"), L"S", L"3,4"),
           OnFloor(Made(Volume(10), L"c2"), L"S", L"2,5"),
           OnFloor(Made(Volume(100), L"c3"), L"S", L"S"),
           OnFloor(Made(Volume(1000), L"c4"), L"1", L"1")}));
  const Report::SNewCondition condition = Floors({{L"3,4", L"S"}, {L"1", L"1"}, {L"8", L"8"}});
  EXPECT_EQ(JrbwRows(2, condition),
            (Lines{kPipeHead + "1202|0|0|0", "@F|1|1|m3|c4$$|1000|0|0|0",
                   "@CI|" + kPipeText + "|绝热保温体积|m3|c4$$|1000|0|0|0",
                   "@F|3,4|S|m3|c1$$c3$$|202|0|0|0",
                   "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$c3$$|202|0|0|0"}));
  // The count is cut where no floor row prints, too.
  EXPECT_EQ(
      JrbwRows(1, Floors({{L"3,4", L"S"}})),
      (Lines{kPipeHead + "202|0|0|0", "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$c3$$|202|0|0|0"}));
  EXPECT_EQ(JrbwRows(0, Floors({{L"S", L"S"}})), (Lines{kPipeHead + "142|0|0|0"}));
  EXPECT_EQ(JrbwRows(2, Floors({{L"S", L"3,4"}})), Lines{});
}

// Attributes and circuits.

TEST_F(InsulationTable, PipesFollowTheSetDirectionAndOthersRunDownwards) {
  std::vector<DetailRow> rows;
  for (const wchar_t* name : {L"DN15", L"DN100", L"DN25"}) {
    rows.push_back(Made(Volume(1), L"c1", {name, L"保温厚度:2"}));
    rows.push_back(Made(Volume(1), L"c1", {name, L"保温厚度:1"}, {L"水管", L"软接"}));
  }
  Open(Of(rows));
  const auto row = [](const std::string& name, const std::string& thickness) {
    return "@CI|" + name + "|保温厚度:" + thickness + "|绝热保温体积|m3|c1$$|1|0|0|0";
  };
  const std::string thick = "@T|水管|:2(mm)|绝热保温体积|m3|3|0|0|0";
  const std::string thin = "@T|水管|:1(mm)|绝热保温体积|m3|3|0|0|0";
  EXPECT_EQ(JrbwRows(1), (Lines{thick, row("DN100", "2"), row("DN25", "2"), row("DN15", "2"), thin,
                                row("DN100", "1"), row("DN25", "1"), row("DN15", "1")}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(JrbwRows(1), (Lines{thick, row("DN15", "2"), row("DN25", "2"), row("DN100", "2"), thin,
                                row("DN100", "1"), row("DN25", "1"), row("DN15", "1")}));
}

TEST_F(InsulationTable, TheDirectionIsThatOfTheRowOnTheLeft) {
  const STinyCategory other{L"水管", L"软接"};
  CResultConfig::Instance()->SetLineSortDowm(false);
  // The pipe is met first; then each goes ahead of the other, and the later one is put in front.
  Open(Of({Made(Volume(1), L"c1", {L"DN15", L"保温厚度:1"}),
           Made(Volume(2), L"c2", {L"DN25", L"保温厚度:1"}, other)}));
  EXPECT_EQ(JrbwRows(1), (Lines{"@T|水管|:1(mm)|绝热保温体积|m3|3|0|0|0",
                                "@CI|DN25|保温厚度:1|绝热保温体积|m3|c2$$|2|0|0|0",
                                "@CI|DN15|保温厚度:1|绝热保温体积|m3|c1$$|1|0|0|0"}));
  // The other way round neither goes ahead, and the two are one row.
  Open(Of({Made(Volume(1), L"c1", {L"DN25", L"保温厚度:1"}),
           Made(Volume(2), L"c2", {L"DN15", L"保温厚度:1"}, other)}));
  EXPECT_EQ(JrbwRows(1), (Lines{"@T|水管|:1(mm)|绝热保温体积|m3|3|0|0|0",
                                "@CI|DN25|保温厚度:1|绝热保温体积|m3|c1$$c2$$|3|0|0|0"}));
}

TEST_F(InsulationTable, CircuitsCountFromOneInEachItem) {
  const STinyAttr other{L"DN15", kPipeAttr.value};
  Open(Of({Made(Volume(1)), Made(Length(1), L"c2"), Made(Length(2), L"c3"),
           Made(Volume(1), L"c4", other), Made(Length(4), L"c5", other)}));
  EXPECT_EQ(JrbwRows(6), (Lines{
                             kPipeHead + "2|0|0|0",
                             "@F|1|1|m3|c4$$c1$$|2|0|0|0",
                             "@S|A\\*A|m3|c4$$c1$$|2|0|0|0",
                             "@CI|" + kPipeText + "|管道长度|m|c2$$c3$$|3|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|1|0|0|0",
                             "@L|供水管回路1|管道长度|m|c2$$|1|0|0|0",
                             "@L|供水管回路2|管道长度|m|c3$$|2|0|0|0",
                             "@CI|DN15|保温材料:岩棉\n保温厚度:30|管道长度|m|c5$$|4|0|0|0",
                             "@CI|DN15|保温材料:岩棉\n保温厚度:30|绝热保温体积|m3|c4$$|1|0|0|0",
                             "@L|供水管回路1|管道长度|m|c5$$|4|0|0|0",
                         }));
}

TEST_F(InsulationTable, EqualCircuitsAreDropped) {
  Open(Of({Made(Volume(1)), Made(Item(L"管道长度", L"m", 1), L"c2"),
           Made(Item(L"管道长度", L"m", 2), L"c3"), Made(Item(L"管道长度", L"km", 5), L"c4")}));
  EXPECT_EQ(JrbwRows(6), (Lines{
                             kPipeHead + "1|0|0|0",
                             "@F|1|1|m3|c1$$|1|0|0|0",
                             "@S|A\\*A|m3|c1$$|1|0|0|0",
                             "@CI|" + kPipeText + "|管道长度|km|c4$$|5|0|0|0",
                             "@CI|" + kPipeText + "|管道长度|m|c2$$c3$$|3|0|0|0",
                             "@CI|" + kPipeText + "|绝热保温体积|m3|c1$$|1|0|0|0",
                             "@L|供水管回路1|管道长度|km|c4$$|5|0|0|0",
                             "@L|供水管回路2|管道长度|m|c3$$|2|0|0|0",
                         }));
}

// Requests and folding.

TEST_F(InsulationTable, AnUnknownDisciplineLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  const Report::SNewCondition condition = Categories({L"风管"});
  Report::CellArray cells{L"kept"};
  CXhlPipeJRBWReport& report = Insulation();
  report.GetPipeJRBWData(cells, kVentilation, condition, 0, Report::ReportPipeJRBW, 0);
  EXPECT_EQ(cells, (Report::CellArray{L"kept", L"@T", L"风管", L":20(mm)", L"风管保温体积", L"m3",
                                      L"3", L"0", L"0", L"0"}));
  report.GetPipeJRBWData(cells, kPlumbing, {}, 0, Report::ReportPipeJRBW, 0);
  EXPECT_EQ(cells.size(), 10U);
  EXPECT_EQ(report.spec, kVentilation);
  EXPECT_EQ(report.condition.categories, condition.categories);
}

TEST_F(InsulationTable, RequestsReadTheDetailSetOnceAndDoNotDependOnTheOnesBefore) {
  Open(Building());
  db->ForgetReads();
  const Lines all = JrbwRows(6);
  EXPECT_EQ(JrbwRows(0, SysCodes({L"A\\B"})), (Lines{kPipeHead + "5|2|0|1"}));
  EXPECT_EQ(JrbwRows(6), all);
  EXPECT_EQ(db->reads, (std::vector<EDbRead>{EDbRead::Detail}));
}

TEST_F(InsulationTable, ARowWithABadIndexIsPassedOver) {
  using KorDMRec::SKorDMResultRow;
  for (const auto index :
       {&SKorDMResultRow::sgd, &SKorDMResultRow::floor, &SKorDMResultRow::component,
        &SKorDMResultRow::spec, &SKorDMResultRow::category, &SKorDMResultRow::attr,
        &SKorDMResultRow::sysCode, &SKorDMResultRow::calItem}) {
    for (const int bad : {-1, 2, std::numeric_limits<int>::max()}) {
      CTinyProject project = Of({Made(Volume(1)), Made(Volume(2), L"c2")});
      project.Detail().Data().rows[0].*index = bad;
      Open(project);
      EXPECT_EQ(JrbwRows(0), (Lines{kPipeHead + "2|0|0|0"}));
    }
  }
}

}  // namespace
