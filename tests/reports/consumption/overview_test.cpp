#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "reports/consumption/xhl_gl_report.h"
#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::Rows;
using tally_test::STinyCalItem;
using tally_test::TTinyRow;
using Row = TTinyRow<STinyCalItem>;
using Lines = std::vector<std::string>;

constexpr const wchar_t* kWater = L"给排水";
constexpr const wchar_t* kLowVoltage = L"弱电";

STinyCalItem Length(double quantity, const std::wstring& unit = L"m") {
  return {.name = L"管道长度", .unit = unit, .quantity = quantity};
}
STinyCalItem Pieces(double quantity) {
  return {.name = L"构件数量", .unit = L"个", .quantity = quantity};
}

class Overview : public tally_test::TallyTest {
 protected:
  static CXhlGlReport& Gl() { return GetReport<CXhlGlReport>(Report::ReportXhlGl); }

  static Lines GlRows(const Report::SNewCondition& condition = {}, int bySgd = 0,
                      const std::wstring& spec = kWater) {
    Report::CellArray cells;
    Gl().GetGlData(cells, spec, condition, bySgd);
    return Rows(cells);
  }
  static Lines RowsOfFloors(const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    return GlRows(condition);
  }
  static Lines RowsOfKinds(const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    return GlRows(condition);
  }
  static Lines RowsOfSysCodes(const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    return GlRows(condition);
  }
  static void ShowSections(const std::vector<std::wstring>& names, bool isBySgd = false) {
    CReportStatusMng::Instance()->SetDispSgd(names);
    CReportStatusMng::Instance()->SetIsBySgd(isBySgd);
  }
};

// What is folded.

TEST_F(Overview, MergesKindsOfOneGroupAndTheirEqualAttributes) {
  CTinyProject project;
  project.Gl()
      .Row({.calItem = Length(2)})
      .Row({.category = {L"管道", L"排水管"}, .calItem = Length(3)})
      .Row({.category = {L"管道", L"排水管"}, .attr = {L"DN50", L""}, .calItem = Length(4)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN50|m|4", "@A|DN25|m|5"}));
}

TEST_F(Overview, MergesAttributesOfOneNameAndSeveralValues) {
  CTinyProject project;
  project.Gl()
      .Row({.attr = {L"DN25", L"材质:PPR"}, .calItem = Length(2)})
      .Row({.attr = {L"DN25", L"材质:PVC"}, .calItem = Length(3)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|5"}));
}

TEST_F(Overview, TakesTheMainItemAlone) {
  CTinyProject project;
  project.Gl()
      .Row({.calItem = Length(2)})
      .Row({.calItem = {.name = L"支架", .unit = L"kg", .quantity = 7}})
      .Row({.calItem = Pieces(5)})
      .Row({.category = {L"附件", L"水表"}, .calItem = Length(9)})
      .Row({.category = {L"附件", L"水表"}, .attr = {L"LXS-20", L""}, .calItem = Pieces(1)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|2", "@A|LXS-20|个|1"}));
}

TEST_F(Overview, DropsKindsWithoutAMainItem) {
  CTinyProject project;
  project.Gl()
      .Row({.category = {L"其他", L"未知"}, .calItem = Length(2)})
      .Row({.spec = L"园林", .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(GlRows(), Lines());
  EXPECT_EQ(GlRows({}, 0, L"园林"), Lines());
}

TEST_F(Overview, TakesAnItemWithoutNameOfAKindWithoutAMainItem) {
  CTinyProject project;
  project.Gl().Row({.category = {L"其他", L"未知"}, .calItem = {.unit = L"t", .quantity = 2}});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|t|2"}));
}

TEST_F(Overview, CountsEveryComponentOfAResult) {
  CTinyProject project;
  project.Gl()
      .Row({.component = L"c1", .calItem = Length(2.5)})
      .Row({.component = L"c1", .calItem = Length(2.5)})
      .Row({.component = L"", .calItem = Length(2.5)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|7.5"}));
}

TEST_F(Overview, FailsOnAnIndexOutsideItsTableAndFoldsAnewLater) {
  CTinyProject project;
  project.Gl().Row({.calItem = Length(2)});
  project.Gl().Data().rows[0].component = 7;
  Open(project);
  EXPECT_THROW(Gl(), std::out_of_range);
  EXPECT_THROW(Gl(), std::out_of_range);
}

// Order.

TEST_F(Overview, ShowsGroupsBySortNumberThenNarrowName) {
  CTinyProject project;
  project.KindSort(kWater, L"附件\\水表", 3)
      .KindSort(kWater, L"附件\\阀门", 3)
      .KindSort(kWater, L"设备\\水泵", 2)
      .KindSort(kWater, L"管道\\给水管", 900);
  const auto row = [](const wchar_t* category, const wchar_t* kind, const wchar_t* name) {
    return Row{.category = {category, kind}, .attr = {name, L""}, .calItem = Pieces(1)};
  };
  project.Gl()
      .Row(row(L"卫生器具", L"洗脸盆", L"a"))
      .Row(row(L"附件", L"水表", L"b"))
      .Row(row(L"附件", L"阀门", L"c"))
      .Row(row(L"设备", L"水泵", L"d"))
      .Row({.attr = {L"e", L""}, .calItem = Length(1)});
  Open(project);
  // The group table's own groups stand first. In the code page 阀 goes before 水; as a wide
  // character it does not. Kinds without a number come last.
  EXPECT_EQ(GlRows(), (Lines{"@A|e|m|1", "@A|d|个|1", "@A|c|个|1", "@A|b|个|1", "@A|a|个|1"}));
}

TEST_F(Overview, DropsTheSecondGroupOfEqualNumberAndNarrowName) {
  CTinyProject project;
  // The code page lacks both letters.
  project.Gl()
      .Row({.category = {L"附件", L"\u0E02"}, .attr = {L"second", L""}, .calItem = Pieces(1)})
      .Row({.category = {L"附件", L"\u0E01"}, .attr = {L"first", L""}, .calItem = Pieces(2)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|first|个|2"}));
}

TEST_F(Overview, ReadsThePlaceOfAGroupFromItsFirstKind) {
  const auto length = [](double quantity) {
    return STinyCalItem{.name = L"桥架长度", .quantity = quantity};
  };
  const Row listed{.spec = kLowVoltage,
                   .category = {L"线槽桥架", L"桥架"},
                   .attr = {L"100*50", L""},
                   .calItem = length(1)};
  const Row other{.spec = kLowVoltage,
                  .category = {L"设备", L"桥架"},
                  .attr = {L"200*50", L""},
                  .calItem = Pieces(1)};
  const Row behind{.spec = kLowVoltage,
                   .category = {L"设备", L"摄像机"},
                   .attr = {L"camera", L""},
                   .calItem = Pieces(1)};
  CTinyProject listedFirst;
  listedFirst.KindSort(kLowVoltage, L"设备\\摄像机", 1).KindSort(kLowVoltage, L"设备\\桥架", 2);
  CTinyProject otherFirst = listedFirst;
  listedFirst.Gl().Row(listed).Row(other).Row(behind);
  otherFirst.Gl().Row(other).Row(listed).Row(behind);

  Open(listedFirst);
  EXPECT_EQ(GlRows({}, 0, kLowVoltage),
            (Lines{"@A|200*50|个|1", "@A|100*50|m|1", "@A|camera|个|1"}));
  // Now the group has the other kind's number, and its sizes run upwards.
  Open(otherFirst);
  EXPECT_EQ(GlRows({}, 0, kLowVoltage),
            (Lines{"@A|camera|个|1", "@A|100*50|m|1", "@A|200*50|个|1"}));
}

TEST_F(Overview, SortsTheSizesOfListedGroupsAsConfigured) {
  CTinyProject project;
  project.KindSort(kWater, L"附件\\水表", 1);
  for (const wchar_t* size : {L"DN25", L"DN100", L"DN 32"}) {
    project.Gl()
        .Row({.attr = {size, L""}, .calItem = Length(1)})
        .Row({.category = {L"附件", L"水表"}, .attr = {size, L""}, .calItem = Pieces(1)});
  }
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN100|m|1", "@A|DN 32|m|1", "@A|DN25|m|1", "@A|DN25|个|1",
                             "@A|DN 32|个|1", "@A|DN100|个|1"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|1", "@A|DN 32|m|1", "@A|DN100|m|1", "@A|DN25|个|1",
                             "@A|DN 32|个|1", "@A|DN100|个|1"}));
}

TEST_F(Overview, DropsTheSecondAttributeThatComparesEqual) {
  CTinyProject project;
  project.Gl()
      .Row({.attr = {L"DN25", L""}, .calItem = Length(1)})
      .Row({.attr = {L"DN 25", L""}, .calItem = Length(2)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN 25|m|2"}));
}

TEST_F(Overview, ShowsTheSecondOfEqualAttributesWhereTheFirstHasNoRow) {
  CTinyProject project;
  project.Gl()
      .Row({.floor = {L"2", L"2"}, .attr = {L"DN 25", L""}, .calItem = Length(2)})
      .Row({.attr = {L"DN25", L""}, .calItem = Length(1)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN 25|m|2"}));
  EXPECT_EQ(RowsOfFloors({{L"1", L"1"}}), (Lines{"@A|DN25|m|1"}));
}

TEST_F(Overview, ShowsTheSecondOfEqualGroupsWhereTheFirstHasNoRow) {
  CTinyProject project;
  // The code page lacks both letters.
  project.Gl()
      .Row({.category = {L"附件", L"\u0E02"}, .attr = {L"second", L""}, .calItem = Pieces(1)})
      .Row({.floor = {L"2", L"2"},
            .category = {L"附件", L"\u0E01"},
            .attr = {L"first", L""},
            .calItem = Pieces(2)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|first|个|2"}));
  EXPECT_EQ(RowsOfFloors({{L"1", L"1"}}), (Lines{"@A|second|个|1"}));
}

TEST_F(Overview, TreatsSizesOfOneValueAsTheOrderedSetDoes) {
  CTinyProject project;
  project.Gl()
      .Row({.attr = {L"DN1", L""}, .calItem = Length(1)})
      .Row({.attr = {L"DN1.0", L""}, .calItem = Length(2)});
  Open(project);
  // Downwards neither goes before the other, upwards each does.
  EXPECT_EQ(GlRows(), (Lines{"@A|DN1|m|1"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN1.0|m|2", "@A|DN1|m|1"}));
}

// Paths that are no pair of category and kind.

TEST_F(Overview, SkipsAGroupWhosePathHasMoreThanTwoParts) {
  CTinyProject project;
  project.Gl()
      .Row({.category = {L"附件", L"水表\\远传"}, .calItem = Pieces(1)})
      .Row({.category = {L"附件", L"水表"}, .attr = {L"LXS-20", L""}, .calItem = Pieces(2)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|LXS-20|个|2"}));
}

TEST_F(Overview, SkipsAWholeGroupForThePathOfItsFirstKindAlone) {
  const Row odd{.category = {L"管道", L"给水管\\x"}, .calItem = Length(2)};
  const Row plain{.calItem = Length(3)};
  CTinyProject oddFirst;
  oddFirst.Gl().Row(odd).Row(plain);
  Open(oddFirst);
  EXPECT_EQ(GlRows(), Lines());

  CTinyProject plainFirst;
  plainFirst.Gl().Row(plain).Row(odd);
  Open(plainFirst);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|5"}));
}

TEST_F(Overview, TakesAPathWithAnEmptyPart) {
  CTinyProject project;
  project.Gl()
      .Row({.category = {L"", L"x"}, .attr = {L"a", L""}, .calItem = {.unit = L"t", .quantity = 1}})
      .Row({.category = {L"附件", L""}, .attr = {L"b", L""}, .calItem = Pieces(2)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|b|个|2", "@A|a|t|1"}));
}

// Quantities.

TEST_F(Overview, AddsDifferentUnitsUnderTheLastOne) {
  CTinyProject project;
  project.Gl().Row({.calItem = Length(2, L"m")}).Row({.calItem = Length(3, L"km")});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|5"}));
}

TEST_F(Overview, TakesTheUnitOfTheLastItemThatTheFilterLeaves) {
  CTinyProject project;
  project.Gl()
      .Row({.floor = {L"2", L"2"}, .calItem = Length(2, L"m")})
      .Row({.calItem = Length(3, L"km")});
  Open(project);
  EXPECT_EQ(RowsOfFloors({{L"1", L"1"}}), (Lines{"@A|DN25|km|3"}));
  EXPECT_EQ(RowsOfFloors({{L"2", L"2"}}), (Lines{"@A|DN25|m|2"}));
}

TEST_F(Overview, ShowsNoAttributeWhoseLastUnitIsEmpty) {
  CTinyProject project;
  project.Gl()
      .Row({.calItem = Length(2, L"")})
      .Row({.attr = {L"DN50", L""}, .calItem = Length(2, L"")})
      .Row({.attr = {L"DN50", L""}, .calItem = Length(3, L"m")});
  Open(project);
  // Items go by name and unit, so an empty unit is the first of its name.
  EXPECT_EQ(GlRows(), (Lines{"@A|DN50|m|5"}));
}

TEST_F(Overview, ShowsASumOfZero) {
  CTinyProject project;
  project.Gl()
      .Row({.calItem = Length(2)})
      .Row({.calItem = Length(-2)})
      .Row({.attr = {L"DN20", L""}, .calItem = Length(0)})
      .Row({.attr = {L"DN15", L""}, .calItem = Length(-0.0)})
      .Row({.floor = {L"", L""}, .attr = {L"DN10", L""}, .calItem = Length(-1)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|0", "@A|DN20|m|0", "@A|DN15|m|0", "@A|DN10|m|0"}));
}

TEST_F(Overview, PrintsSixSignificantDigits) {
  CTinyProject project;
  project.Gl()
      .Row({.attr = {L"a", L""}, .calItem = Length(1234567)})
      .Row({.attr = {L"b", L""}, .calItem = Length(0.1)})
      .Row({.attr = {L"b", L""}, .calItem = Length(0.2)})
      .Row({.attr = {L"c", L""}, .calItem = Length(-1.5)});
  Open(project);
  EXPECT_EQ(GlRows(), (Lines{"@A|a|m|1.23457e+06", "@A|b|m|0.3", "@A|c|m|-1.5"}));
}

// Floors.

/// One floor node whose results have several floor texts, and another floor.
CTinyProject Floors() {
  CTinyProject project;
  project.Gl()
      .Row({.floor = {L"3,7", L"3,7"}, .calItem = Length(1)})
      .Row({.floor = {L"3,7", L"4"}, .calItem = Length(10)})
      .Row({.floor = {L"3,7", L"4/6"}, .calItem = Length(100)})
      .Row({.floor = {L"1", L"1"}, .calItem = Length(1000)});
  return project;
}

TEST_F(Overview, CountsAResultForEachFloorOfItsText) {
  Open(Floors());
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|1215"}));
  EXPECT_EQ(RowsOfFloors({{L"3,7", L"3,7"}}), (Lines{"@A|DN25|m|215"}));
}

TEST_F(Overview, FindsTheFloorByTheSelectedOneAndCountsTheDrawings) {
  Open(Floors());
  // Text "3,7" and "4" count, for the one floor that "4" is; "4/6" is a third text.
  EXPECT_EQ(RowsOfFloors({{L"4", L"3,7"}}), (Lines{"@A|DN25|m|11"}));
  EXPECT_EQ(RowsOfFloors({{L"4/6", L"3,7"}}), (Lines{"@A|DN25|m|202"}));
  EXPECT_EQ(RowsOfFloors({{L"9", L"3,7"}}), (Lines{"@A|DN25|m|1"}));
  EXPECT_EQ(RowsOfFloors({{L"3,7", L"4"}}), Lines());
  EXPECT_EQ(RowsOfFloors({{L"", L"3,7"}}), (Lines{"@A|DN25|m|0"}));
}

TEST_F(Overview, AddsNothingForAFloorOfAThirdText) {
  CTinyProject project;
  project.Gl().Row({.floor = {L"3,7", L"5"}, .calItem = Length(1)});
  Open(project);
  EXPECT_EQ(RowsOfFloors({{L"4", L"3,7"}}), Lines());
}

TEST_F(Overview, CountsAFloorAgainForEachPair) {
  Open(Floors());
  EXPECT_EQ(RowsOfFloors({{L"1", L"1"}, {L"x", L"x"}, {L"4", L"3,7"}, {L"1", L"1"}}),
            (Lines{"@A|DN25|m|2011"}));
}

TEST_F(Overview, ShowsNothingForFloorsThatAreNotThere) {
  Open(Floors());
  EXPECT_EQ(RowsOfFloors({{L"8", L"8"}}), Lines());
}

TEST_F(Overview, TakesASelectedFloorWithoutTextAsNoChoice) {
  CTinyProject project;
  project.Gl()
      .Row({.floor = {L"", L"2"}, .calItem = Length(1)})
      .Row({.floor = {L"1", L"1"}, .calItem = Length(10)});
  Open(project);
  EXPECT_EQ(RowsOfFloors({{L"9,11", L""}}), (Lines{"@A|DN25|m|1"}));
}

// Component kinds.

CTinyProject Kinds() {
  CTinyProject project;
  project.KindSort(kWater, L"管道\\给水管", 1)
      .KindSort(kWater, L"附件\\水表", 2)
      .KindSort(kWater, L"附件\\水表箱", 3);
  project.Gl()
      .Row({.calItem = Length(1)})
      .Row({.category = {L"管道", L"排水管"}, .calItem = Length(10)})
      .Row({.category = {L"附件", L"水表"}, .attr = {L"a", L""}, .calItem = Pieces(100)})
      .Row({.category = {L"附件", L"水表箱"}, .attr = {L"b", L""}, .calItem = Pieces(1000)});
  return project;
}

TEST_F(Overview, SelectsKindsByTheBeginningOfTheirPath) {
  Open(Kinds());
  EXPECT_EQ(RowsOfKinds({L"管道"}), (Lines{"@A|DN25|m|11"}));
  EXPECT_EQ(RowsOfKinds({L"附"}), (Lines{"@A|a|个|100", "@A|b|个|1000"}));
  EXPECT_EQ(RowsOfKinds({L"水表"}), Lines());
}

TEST_F(Overview, SelectsAKindByItsWholePath) {
  Open(Kinds());
  EXPECT_EQ(RowsOfKinds({L"管道\\排水管"}), (Lines{"@A|DN25|m|10"}));
  EXPECT_EQ(RowsOfKinds({L"附件\\水表"}), (Lines{"@A|a|个|100"}));
  EXPECT_EQ(RowsOfKinds({L"附件\\"}), Lines());
}

TEST_F(Overview, CountsAKindTwiceThatTwoEntriesSelect) {
  Open(Kinds());
  EXPECT_EQ(RowsOfKinds({L"管道", L"管道\\排水管"}), (Lines{"@A|DN25|m|21"}));
  EXPECT_EQ(RowsOfKinds({L"管", L"管道", L"管道\\排水管"}), (Lines{"@A|DN25|m|32"}));
}

TEST_F(Overview, SelectsNothingByAnEntryOfAnotherShape) {
  CTinyProject project = Kinds();
  project.Gl().Row({.category = {L"管道", L"给水管\\x"}, .calItem = Length(5)});
  Open(project);
  EXPECT_EQ(RowsOfKinds({L""}), Lines());
  EXPECT_EQ(RowsOfKinds({L"管道\\给水管\\x"}), Lines());
  EXPECT_EQ(RowsOfKinds({L"", L"附件\\水表"}), (Lines{"@A|a|个|100"}));
  EXPECT_EQ(RowsOfKinds({L"管道"}), (Lines{"@A|DN25|m|16"}));
}

// System codes.

CTinyProject SysCodes() {
  CTinyProject project;
  project.Gl()
      .Row({.sysCode = L"A", .calItem = Length(1)})
      .Row({.sysCode = L"A\\B", .calItem = Length(10)})
      .Row({.sysCode = L"A\\B\\C", .calItem = Length(100)})
      .Row({.sysCode = L"D", .calItem = Length(1000)});
  return project;
}

TEST_F(Overview, CountsAllBelowASystemCode) {
  Open(SysCodes());
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|1111"}));
  EXPECT_EQ(RowsOfSysCodes({L"A"}), (Lines{"@A|DN25|m|111"}));
  EXPECT_EQ(RowsOfSysCodes({L"A\\B"}), (Lines{"@A|DN25|m|110"}));
  EXPECT_EQ(RowsOfSysCodes({L"A\\B\\C"}), (Lines{"@A|DN25|m|100"}));
}

TEST_F(Overview, CountsASystemCodeAgainForEachPath) {
  Open(SysCodes());
  EXPECT_EQ(RowsOfSysCodes({L"A", L"A\\B", L"D"}), (Lines{"@A|DN25|m|1221"}));
  EXPECT_EQ(RowsOfSysCodes({L"D", L"D"}), (Lines{"@A|DN25|m|2000"}));
}

TEST_F(Overview, ShowsNothingForSystemCodesThatAreNotThere) {
  Open(SysCodes());
  EXPECT_EQ(RowsOfSysCodes({L"x", L"A\\C"}), Lines());
}

// Construction sections.

CTinyProject Sections() {
  CTinyProject project;
  project.Gl()
      .Row({.sgd = L"一区", .calItem = Length(1)})
      .Row({.sgd = L"二区", .calItem = Length(10)})
      .Row({.sgd = L"二区", .sysCode = L"A\\B", .calItem = Length(20)})
      .Row({.sgd = L"", .calItem = Length(100)});
  return project;
}

TEST_F(Overview, CountsTheSectionsThatAreShown) {
  Open(Sections());
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|131"}));
  ShowSections({L"二区"});
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|131"}));
  ShowSections({L"二区"}, true);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|30"}));
  ShowSections({L"二区", L"一区"}, true);
  EXPECT_EQ(GlRows(), (Lines{"@A|DN25|m|31"}));
  ShowSections({}, true);
  EXPECT_EQ(GlRows(), Lines());
}

TEST_F(Overview, SplitsBySectionAndLeavesOutEmptyOnes) {
  Open(Sections());
  ShowSections({L"二区", L"三区", L"一区"});
  // In text order.
  EXPECT_EQ(GlRows({}, 1), (Lines{"@P|一区", "@A|DN25|m|1", "@P|二区", "@A|DN25|m|30"}));
  ShowSections({L"三区"});
  EXPECT_EQ(GlRows({}, 1), Lines());
}

TEST_F(Overview, SplitsBySectionWithoutAnyShownIntoTheOneWithoutName) {
  Open(Sections());
  EXPECT_EQ(GlRows({}, 1), (Lines{"@P|", "@A|DN25|m|100"}));
}

// The request.

TEST_F(Overview, LeavesTheRowsAloneForAnUnknownDiscipline) {
  Open(Sections());
  Report::CellArray cells{L"before"};
  Gl().GetGlData(cells, L"电气", {}, 0);
  EXPECT_EQ(cells, Report::CellArray{L"before"});
  EXPECT_EQ(Gl().spec, L"");
  Gl().GetGlData(cells, kWater, {}, 0);
  EXPECT_EQ(cells, (Report::CellArray{L"before", L"@A", L"DN25", L"m", L"131"}));
}

TEST_F(Overview, RemembersTheRequest) {
  Open(Kinds());
  Report::SNewCondition condition;
  condition.curCategory = L"管道";
  condition.sysCodes = {L"A"};
  GlRows(condition);
  EXPECT_EQ(Gl().spec, kWater);
  EXPECT_EQ(Gl().condition.curCategory, L"管道");
  EXPECT_EQ(Gl().condition.sysCodes, condition.sysCodes);
}

TEST_F(Overview, AnswersTheSameAfterAnotherRequest) {
  Open(Floors());
  const Lines all = GlRows();
  RowsOfFloors({{L"4", L"3,7"}});
  EXPECT_EQ(GlRows(), all);
}

TEST_F(Overview, SelectsOneOfManySystemCodes) {
  for (const int count : {2, 20}) {
    CTinyProject project;
    for (int code = 1; code <= count; ++code) {
      const std::wstring number = std::to_wstring(code);
      project.Gl()
          .Row({.sysCode = L"A" + number + L"\\B\\C", .calItem = Length(code)})
          .Row({.sysCode = L"A" + number + L"\\B\\D", .calItem = Length(100)});
    }
    Open(project);
    EXPECT_EQ(RowsOfSysCodes({L"A2"}), (Lines{"@A|DN25|m|102"}));
    EXPECT_EQ(RowsOfSysCodes({L"A2\\B\\C"}), (Lines{"@A|DN25|m|2"}));
    EXPECT_EQ(RowsOfSysCodes({L"A2\\B", L"A1\\B\\D", L"A", L"B"}), (Lines{"@A|DN25|m|202"}));
  }
}

}  // namespace
