#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "reports/consumption/pj_hz_report.h"
#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::Rows;
using tally_test::STinyPjItem;
using tally_test::TTinyRow;
using Row = TTinyRow<STinyPjItem>;
using Lines = std::vector<std::string>;

constexpr const wchar_t* kWater = L"给排水";

STinyPjItem Bend(const std::wstring& name = L"弯头") {
  return {.text1 = L"管件", .name = name};
}

class FittingSummary : public tally_test::TallyTest {
 protected:
  static CPjHzReport& Pj() { return GetReport<CPjHzReport>(Report::ReportPjHz); }

  static Lines PjRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0,
                      const std::wstring& spec = kWater) {
    Report::CellArray cells;
    Pj().GetPjHzData(cells, spec, condition, level, bySgd);
    return Rows(cells);
  }
  static Lines RowsOfFloors(int level, const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    return PjRows(level, condition);
  }
  static Lines RowsOfKinds(const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    return PjRows(0, condition);
  }
  static Lines RowsOfSysCodes(const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    return PjRows(4, condition);
  }
  static void ShowSections(const std::vector<std::wstring>& names, bool isBySgd = false) {
    CReportStatusMng::Instance()->SetDispSgd(names);
    CReportStatusMng::Instance()->SetIsBySgd(isBySgd);
  }

  /// Bends on two floors, in system codes of one and of three levels, and a tee.
  static CTinyProject Building() {
    CTinyProject project;
    project.KindSort(kWater, L"管道\\给水管", 1)
        .SysCodeSort(kWater, L"D", 1)
        .SysCodeSort(kWater, L"A", 2, L"alpha")
        .SysCodeSort(kWater, L"A&B&C", 3, L"gamma");
    project.Pj()
        .Row({.component = L"c1", .sysCode = L"A\\B\\C", .calItem = Bend()})
        .Row({.component = L"c2", .sysCode = L"A\\B\\C", .calItem = Bend()})
        .Row({.floor = {L"2,5", L"2,5"}, .component = L"c3", .sysCode = L"D", .calItem = Bend()})
        .Row({.component = L"c4", .sysCode = L"D", .calItem = Bend(L"三通")});
    return project;
  }
};

// Levels. Without an attribute text the pipe line's name is the grooved one.

TEST_F(FittingSummary, Level0MergesAFittingOverFloorsAndSystemCodes) {
  Open(Building());
  EXPECT_EQ(PjRows(0), (Lines{
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|三通|个|1|c4$$",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|6|c1$c2$$c3$$",
                       }));
}

TEST_F(FittingSummary, Level1AddsTheFloorsAboveEveryFitting) {
  Open(Building());
  const Lines expected{
      "@F|1|1",     "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|三通|个|1|c4$$",
      "@F|1|1",     "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|2|c1$c2$$",
      "@F|2,5|2,5", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|4|c3$$",
  };
  EXPECT_EQ(PjRows(1), expected);
  // Below 0 a level is not 0, and not above 1.
  EXPECT_EQ(PjRows(-1), expected);
  EXPECT_EQ(PjRows(std::numeric_limits<int>::min()), expected);
}

TEST_F(FittingSummary, Level2AddsTheFirstLevelOfSystemCodes) {
  Open(Building());
  EXPECT_EQ(PjRows(2), (Lines{
                           "@F|1|1",
                           "@S|D",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|三通|个|1|c4$$",
                           "@F|1|1",
                           "@S|A(alpha)",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|2|c1$c2$$",
                           "@F|2,5|2,5",
                           "@S|D",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|4|c3$$",
                       }));
}

TEST_F(FittingSummary, Level3AddsTheSecondLevelOfSystemCodes) {
  Open(Building());
  EXPECT_EQ(PjRows(3), (Lines{
                           "@F|1|1",
                           "@S|D\\*D",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|三通|个|1|c4$$",
                           "@F|1|1",
                           "@S|A\\B",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|2|c1$c2$$",
                           "@F|2,5|2,5",
                           "@S|D\\*D",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|4|c3$$",
                       }));
}

TEST_F(FittingSummary, Level4AddsTheThirdLevelOfSystemCodes) {
  Open(Building());
  EXPECT_EQ(PjRows(4), (Lines{
                           "@F|1|1",
                           "@S|D\\*D",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|三通|个|1|c4$$",
                           "@F|1|1",
                           "@S|A\\B\\C(gamma)",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|2|c1$c2$$",
                           "@F|2,5|2,5",
                           "@S|D\\*D",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|4|c3$$",
                       }));
}

TEST_F(FittingSummary, SystemCodeLevelsAreOneLessThanThoseOfTheReport) {
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(-1), 0);
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(0), 0);
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(1), 0);
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(2), 1);
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(3), 2);
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(4), 3);
  EXPECT_EQ(CPjHzReport::GetSysCodeLevel(5), 0);
}

TEST_F(FittingSummary, AboveTheDeepestLevelSystemCodesAreLeftOut) {
  Open(Building());
  EXPECT_EQ(PjRows(5), PjRows(1));
  EXPECT_EQ(PjRows(std::numeric_limits<int>::max()), PjRows(1));
}

TEST_F(FittingSummary, AboveTheDeepestLevelTheCodeWithoutNameStillHasARemark) {
  CTinyProject project;
  project.SysCodeSort(kWater, L"", 1, L"rest");
  project.Pj().Row({.calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(5), (Lines{"@F|1|1", "@S|(rest)", "@Cg|管道", "@A|DN25 沟槽连接",
                              "@CI|管件|弯头|个|1|c1$$"}));
}

// What one element is.

TEST_F(FittingSummary, CountsComponentsAndNotTheRecordsValue) {
  CTinyProject project;
  STinyPjItem item = Bend();
  item.value = 7;
  project.Pj()
      .Row({.component = L"c1", .calItem = item})
      .Row({.component = L"c1", .calItem = item})
      .Row({.component = L"", .calItem = item});
  Open(project);
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|3|c1$c1$$"}));
}

TEST_F(FittingSummary, IsOneElementWhereOnlyReferencesDiffer) {
  CTinyProject project;
  project.Pj()
      .Row({.sgd = L"一区", .component = L"c1", .calItem = Bend()})
      .Row({.sgd = L"二区", .component = L"c2", .calItem = Bend()});
  Open(project);
  // Results go by section and floor: in wide order 一 is before 二.
  EXPECT_EQ(PjRows(1),
            (Lines{"@F|1|1", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|2|c1$$c2$$"}));
}

TEST_F(FittingSummary, KeepsTheFloorTextOfARepeatedFloor) {
  CTinyProject project;
  project.Pj().Row({.floor = {L"标准层", L"2，5"}, .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(1),
            (Lines{"@F|标准层|2，5", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|4|c1$$"}));
}

TEST_F(FittingSummary, MergesFloorTextsOfOneGrade) {
  CTinyProject project;
  // Texts without a number have one grade; "3" and "3.001" have one, too.
  project.Pj()
      .Row({.floor = {L"顶", L"机房"}, .component = L"c1", .calItem = Bend()})
      .Row({.floor = {L"顶", L"屋面"}, .component = L"c2", .calItem = Bend()})
      .Row({.floor = {L"3", L"3"}, .component = L"c3", .calItem = Bend()})
      .Row({.floor = {L"3", L"3.001"}, .component = L"c4", .calItem = Bend()})
      .Row({.floor = {L"3", L"3,4"}, .component = L"c5", .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(1), (Lines{
                           "@F|顶|屋面",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|2|c2$$c1$$",
                           "@F|3|3,4",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|2|c5$$",
                           "@F|3|3",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|2|c3$$c4$$",
                       }));
}

TEST_F(FittingSummary, MergesFloorsOfOneGradeUnderTheFirstName) {
  CTinyProject project;
  project.Pj()
      .Row({.floor = {L"机房", L"1"}, .component = L"c1", .calItem = Bend()})
      .Row({.floor = {L"屋面", L"1"}, .component = L"c2", .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(1),
            (Lines{"@F|屋面|1", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|2|c2$$c1$$"}));
}

TEST_F(FittingSummary, MergesFloorTextsOfOneGradeWhateverTheirFittings) {
  CTinyProject project;
  project.Pj()
      .Row({.floor = {L"顶", L"屋面"}, .component = L"c1", .sysCode = L"A", .calItem = Bend()})
      .Row({.floor = {L"顶", L"机房"},
            .component = L"c2",
            .attr = {L"DN50", L""},
            .sysCode = L"B",
            .calItem = Bend(L"三通")});
  Open(project);
  EXPECT_EQ(PjRows(1),
            (Lines{"@F|顶|屋面", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|2|c1$$c2$$"}));
}

TEST_F(FittingSummary, SortsByTheFloorsNameBeforeItsText) {
  CTinyProject project;
  project.Pj()
      .Row({.floor = {L"2", L"3"}, .component = L"c1", .calItem = Bend()})
      .Row({.floor = {L"1", L"9"}, .component = L"c2", .calItem = Bend()})
      .Row({.floor = {L"1", L"3"}, .component = L"c3", .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(1), (Lines{
                           "@F|1|3",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|1|c3$$",
                           "@F|1|9",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|1|c2$$",
                           "@F|2|3",
                           "@Cg|管道",
                           "@A|DN25 沟槽连接",
                           "@CI|管件|弯头|个|1|c1$$",
                       }));
}

TEST_F(FittingSummary, ShowsNoFloorRowForAFloorWithoutText) {
  CTinyProject project;
  project.Pj().Row({.floor = {L"1", L""}, .calItem = Bend()});
  Open(project);
  // No text, no floors to count for.
  EXPECT_EQ(PjRows(1), (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|0|c1$$"}));
}

TEST_F(FittingSummary, MergesSystemCodesOfOneSortNumber) {
  CTinyProject project;
  project.SysCodeSort(kWater, L"B", 5).SysCodeSort(kWater, L"A", 5);
  project.Pj()
      .Row({.component = L"c1", .sysCode = L"B", .calItem = Bend()})
      .Row({.component = L"c2", .sysCode = L"A", .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(2), (Lines{"@F|1|1", "@S|A", "@Cg|管道", "@A|DN25 沟槽连接",
                              "@CI|管件|弯头|个|2|c2$$c1$$"}));
}

TEST_F(FittingSummary, MergesKindsOfOneCategoryWhateverTheirNumbers) {
  CTinyProject project;
  project.KindSort(kWater, L"管道\\给水管", 1)
      .KindSort(kWater, L"附件\\水表", 2)
      .KindSort(kWater, L"管道\\排水管", 3);
  project.Pj()
      .Row({.component = L"c1", .calItem = Bend()})
      .Row({.component = L"c2", .category = {L"管道", L"排水管"}, .calItem = Bend()})
      .Row({.component = L"c3", .category = {L"附件", L"水表"}, .calItem = Bend()});
  Open(project);
  // In key order 排水管 comes before 给水管, and the first gives the place.
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|附件", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c3$$", "@Cg|管道",
                              "@A|DN25 沟槽连接", "@CI|管件|弯头|个|2|c2$$c1$$"}));
}

TEST_F(FittingSummary, MergesKindsOfACategoryThatIsApartFromTheOthers) {
  CTinyProject project;
  project.KindSort(kWater, L"管道\\给水管", 2)
      .KindSort(kWater, L"附件\\水表", 1)
      .KindSort(kWater, L"管道\\排水管", 3);
  project.Pj()
      .Row({.sgd = L"一区", .component = L"c1", .calItem = Bend()})
      .Row({.component = L"c2", .category = {L"管道", L"排水管"}, .calItem = Bend()})
      .Row({.sgd = L"二区", .floor = {L"2,5", L"2,5"}, .component = L"c3", .calItem = Bend()})
      .Row({.component = L"c4", .category = {L"附件", L"水表"}, .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|附件", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c4$$", "@Cg|管道",
                              "@A|DN25 沟槽连接", "@CI|管件|弯头|个|6|c2$$c1$$c3$$"}));
  ShowSections({L"二区"}, true);
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|4|c3$$"}));
}

TEST_F(FittingSummary, MergesCategoriesOfOneSortNumber) {
  CTinyProject project;
  project.KindSort(kWater, L"管道\\给水管", 1).KindSort(kWater, L"附件\\水表", 1);
  project.Pj()
      .Row({.component = L"c1", .calItem = Bend()})
      .Row({.component = L"c2", .category = {L"附件", L"水表"}, .calItem = Bend()})
      .Row({.component = L"c3",
            .category = {L"附件", L"水表"},
            .attr = {L"DN50", L""},
            .calItem = Bend()});
  Open(project);
  // Such categories are told apart by that number alone, so neither the pipe line nor the fitting
  // is looked at.
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|3|c1$$c2$$c3$$"}));
}

TEST_F(FittingSummary, ComparesPipeLinesOfEveryKindAsConfigured) {
  CTinyProject project;
  for (const wchar_t* size : {L"DN25", L"DN100", L"DN 32"}) {
    project.Pj().Row({.category = {L"附件", L"水表"}, .attr = {size, L""}, .calItem = Bend()});
  }
  const auto pipeLines = [] {
    Lines lines;
    for (const std::string& row : PjRows(0)) {
      if (row.starts_with("@A")) {
        lines.push_back(row);
      }
    }
    return lines;
  };
  Open(project);
  // Blanks count here: "DN " goes before "DN1".
  EXPECT_EQ(pipeLines(), (Lines{"@A|DN 32 沟槽连接", "@A|DN100 沟槽连接", "@A|DN25 沟槽连接"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(pipeLines(), (Lines{"@A|DN 32 沟槽连接", "@A|DN25 沟槽连接", "@A|DN100 沟槽连接"}));
}

TEST_F(FittingSummary, MergesPipeLinesThatCompareEqualWhateverTheirFittings) {
  CTinyProject project;
  // The code page lacks both letters.
  project.Pj()
      .Row({.component = L"c1", .attr = {L"\u0E02", L""}, .calItem = Bend(L"三通")})
      .Row({.component = L"c2", .attr = {L"\u0E01", L""}, .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|管道", "@A|\u0E01 沟槽连接", "@CI|管件|弯头|个|2|c2$$c1$$"}));
}

TEST_F(FittingSummary, NamesPipeLinesByEachRowsOwnCategory) {
  CTinyProject project;
  // Both kinds have the path "风管\\a\\b", so they share a node; only the first is a duct.
  project.Pj()
      .Row({.component = L"c1",
            .category = {L"风管", L"a\\b"},
            .attr = {L"DN25", L"材质:镀锌钢板"},
            .calItem = Bend()})
      .Row({.component = L"c2",
            .category = {L"风管\\a", L"b"},
            .attr = {L"DN25", L"材质:镀锌钢板"},
            .calItem = Bend()});
  Open(project);
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|风管", "@A|DN25", "@CI|管件|弯头|个|1|c2$$", "@Cg|风管",
                              "@A|DN25 镀锌钢板", "@CI|管件|弯头|个|1|c1$$"}));
}

TEST_F(FittingSummary, LosesWhatTheOrderedSetNeitherFindsNorTakes) {
  CTinyProject project;
  // Upwards, each of two sizes of one value goes before the other.
  project.Pj()
      .Row({.component = L"c1", .attr = {L"DN1", L""}, .calItem = Bend()})
      .Row({.component = L"c2", .attr = {L"DN1.0", L""}, .calItem = Bend()})
      .Row({.floor = {L"2", L"2"}, .component = L"c3", .attr = {L"DN1.0", L""}, .calItem = Bend()});
  Open(project);
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(PjRows(0), (Lines{"@Cg|管道", "@A|DN1.0 沟槽连接", "@CI|管件|弯头|个|1|c2$$",
                              "@Cg|管道", "@A|DN1 沟槽连接", "@CI|管件|弯头|个|1|c1$$"}));
}

TEST_F(FittingSummary, SortsFittingsByClassNameAndUnitAsNarrowTexts) {
  CTinyProject project;
  const auto row = [](const wchar_t* kind, const wchar_t* text1, const wchar_t* name,
                      const wchar_t* unit) {
    return Row{.category = {L"管道", kind},
               .calItem = {.text1 = text1, .name = name, .unit = unit}};
  };
  // Within an attribute a fitting has one unit, so the other stands under another kind.
  project.Pj()
      .Row(row(L"给水管", L"水", L"x", L"个"))
      .Row(row(L"给水管", L"阀", L"水", L"套"))
      .Row(row(L"给水管", L"阀", L"阀", L"水"))
      .Row(row(L"排水管", L"阀", L"阀", L"阀"))
      .Row(row(L"排水管", L"阀", L"阀", L"水"));
  Open(project);
  const std::string category = "@Cg|管道";
  const std::string pipeLine = "@A|DN25 沟槽连接";
  EXPECT_EQ(PjRows(0), (Lines{
                           category,
                           pipeLine,
                           "@CI|阀|阀|阀|2|c1$c1$$",
                           category,
                           pipeLine,
                           "@CI|阀|阀|水|1|c1$$",
                           category,
                           pipeLine,
                           "@CI|阀|水|套|1|c1$$",
                           category,
                           pipeLine,
                           "@CI|水|x|个|1|c1$$",
                       }));
}

// Pipe lines.

TEST_F(FittingSummary, NamesPipeLinesByTheirAttributes) {
  CTinyProject project;
  const auto put = [&](const wchar_t* spec, const wchar_t* category, const wchar_t* name,
                       const wchar_t* value) {
    project.Pj().Row(
        {.spec = spec, .category = {category, L"管"}, .attr = {name, value}, .calItem = Bend()});
  };
  put(kWater, L"管道", L"a 机械", L"材质:钢\n连接方式:螺纹");
  put(kWater, L"管道", L"b", L"");
  put(kWater, L"管道", L"c", L"材质:钢\n连接方式:螺纹\n样式:直");
  put(kWater, L"管道", L"d（沟槽式）", L"连接方式:螺纹");
  put(kWater, L"管道", L"e", L"材质:钢");
  put(L"电气", L"管线", L"f", L"材质:PVC");
  put(L"暖通", L"风管", L"g", L"材质:铁皮\n样式:直");
  Open(project);
  const auto pipeLines = [](const wchar_t* spec) {
    Lines lines;
    for (const std::string& row : PjRows(0, {}, 0, spec)) {
      if (row.starts_with("@A")) {
        lines.push_back(row.substr(3));
      }
    }
    return lines;
  };
  EXPECT_EQ(pipeLines(kWater), (Lines{"a 机械", "b 沟槽连接", "c 螺纹 直", "d（沟槽式）", "e"}));
  EXPECT_EQ(pipeLines(L"电气"), (Lines{"f PVC"}));
  EXPECT_EQ(pipeLines(L"暖通"), (Lines{"g 铁皮 直"}));
}

// Floors.

/// One floor node whose results have several floor texts, and another floor.
CTinyProject Floors() {
  CTinyProject project;
  project.Pj()
      .Row({.floor = {L"3,7", L"3,7"}, .component = L"c1", .calItem = Bend()})
      .Row({.floor = {L"3,7", L"4"}, .component = L"c2", .calItem = Bend()})
      .Row({.floor = {L"3,7", L"4/6"}, .component = L"c3", .calItem = Bend()})
      .Row({.floor = {L"1", L"1"}, .component = L"c4", .calItem = Bend()});
  return project;
}

TEST_F(FittingSummary, TakesAllResultsOfASelectedFloor) {
  Open(Floors());
  EXPECT_EQ(RowsOfFloors(0, {{L"3,7", L"3,7"}}),
            (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|8|c1$$c2$$c3$$"}));
}

TEST_F(FittingSummary, CountsEitherFloorOfAPairForTheFloorsOfTheDrawing) {
  Open(Floors());
  EXPECT_EQ(RowsOfFloors(1, {{L"4/6", L"3,7"}}),
            (Lines{"@F|3,7|4/6", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|4|c1$$c3$$"}));
  EXPECT_EQ(RowsOfFloors(1, {{L"3,7", L"4/6"}}), Lines());
  EXPECT_EQ(RowsOfFloors(0, {{L"9", L"3,7"}}),
            (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c1$$"}));
}

TEST_F(FittingSummary, CountsAFloorAgainForEachPair) {
  Open(Floors());
  EXPECT_EQ(RowsOfFloors(0, {{L"1", L"1"}, {L"8", L"8"}, {L"4", L"3,7"}, {L"1", L"1"}}),
            (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|4|c4$$c1$$c2$$c4$$"}));
}

TEST_F(FittingSummary, ShowsNothingForFloorsThatAreNotThere) {
  Open(Floors());
  EXPECT_EQ(RowsOfFloors(0, {{L"8", L"8"}}), Lines());
}

// Component kinds.

CTinyProject Kinds() {
  CTinyProject project;
  project.KindSort(kWater, L"管道\\给水管", 1).KindSort(kWater, L"附件\\水表", 2);
  project.Pj()
      .Row({.component = L"c1", .calItem = Bend()})
      .Row({.component = L"c2", .category = {L"管道", L"给水管\\x"}, .calItem = Bend()})
      .Row({.component = L"c3", .category = {L"附件", L"水表"}, .calItem = Bend()});
  return project;
}

TEST_F(FittingSummary, SelectsKindsByCategoryOrWholePath) {
  Open(Kinds());
  const Lines pipes{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|2|c1$$c2$$"};
  EXPECT_EQ(RowsOfKinds({L"管道"}), pipes);
  EXPECT_EQ(RowsOfKinds({L"管道", L"管道\\给水管"}), pipes);
  EXPECT_EQ(RowsOfKinds({L"附件\\水表"}),
            (Lines{"@Cg|附件", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c3$$"}));
  // The path is compared as a whole, however many parts it has.
  EXPECT_EQ(RowsOfKinds({L"管道\\给水管\\x"}),
            (Lines{"@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c2$$"}));
}

TEST_F(FittingSummary, SelectsNothingByABeginning) {
  Open(Kinds());
  EXPECT_EQ(RowsOfKinds({L"管"}), Lines());
  EXPECT_EQ(RowsOfKinds({L""}), Lines());
  EXPECT_EQ(RowsOfKinds({L"附件\\"}), Lines());
}

// System codes.

TEST_F(FittingSummary, SelectsSystemCodesInListOrder) {
  CTinyProject project;
  project.SysCodeSort(kWater, L"A", 1).SysCodeSort(kWater, L"D", 2);
  project.Pj()
      .Row({.component = L"c1", .sysCode = L"A\\B\\C", .calItem = Bend()})
      .Row({.component = L"c2", .sysCode = L"D", .calItem = Bend()});
  Open(project);
  const Lines deep{"@F|1|1", "@S|A\\B\\C", "@Cg|管道", "@A|DN25 沟槽连接",
                   "@CI|管件|弯头|个|1|c1$$"};
  EXPECT_EQ(RowsOfSysCodes({L"A"}), deep);
  EXPECT_EQ(RowsOfSysCodes({L"A\\B"}), deep);
  EXPECT_EQ(RowsOfSysCodes({L"A\\B\\C"}), deep);
  EXPECT_EQ(RowsOfSysCodes({L"x", L"A\\C", L""}), Lines());
  // Each path counts for itself.
  EXPECT_EQ(RowsOfSysCodes({L"A\\B", L"A"}),
            (Lines{"@F|1|1", "@S|A\\B\\C", "@Cg|管道", "@A|DN25 沟槽连接",
                   "@CI|管件|弯头|个|2|c1$$c1$$"}));
}

// Construction sections.

CTinyProject Sections() {
  CTinyProject project;
  project.Pj()
      .Row({.sgd = L"一区", .component = L"c1", .calItem = Bend()})
      .Row({.sgd = L"二区", .component = L"c2", .calItem = Bend()})
      .Row({.sgd = L"", .component = L"c3", .calItem = Bend()});
  return project;
}

Lines Heads(const std::string& last) {
  return {"@Cg|管道", "@A|DN25 沟槽连接", last};
}

TEST_F(FittingSummary, CountsTheSectionsThatAreShown) {
  Open(Sections());
  EXPECT_EQ(PjRows(0), Heads("@CI|管件|弯头|个|3|c3$$c1$$c2$$"));
  ShowSections({L"二区"});
  EXPECT_EQ(PjRows(0), Heads("@CI|管件|弯头|个|3|c3$$c1$$c2$$"));
  ShowSections({L"二区"}, true);
  EXPECT_EQ(PjRows(0), Heads("@CI|管件|弯头|个|1|c2$$"));
  ShowSections({}, true);
  EXPECT_EQ(PjRows(0), Lines());
}

TEST_F(FittingSummary, WritesTheHeadingOfASectionWithoutAFitting) {
  Open(Sections());
  ShowSections({L"二区", L"三区", L"一区"});
  EXPECT_EQ(PjRows(0, {}, 1),
            (Lines{"@P|一区", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c1$$", "@P|三区",
                   "@P|二区", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c2$$"}));
  ShowSections({L"四区"});
  EXPECT_EQ(PjRows(0, {}, 1), (Lines{"@P|四区"}));
  // A section that is displayed, and yet does not count.
  Report::SNewCondition nothing;
  nothing.categories = {L"x"};
  EXPECT_EQ(PjRows(0, nothing, 1), (Lines{"@P|四区"}));
  EXPECT_EQ(PjRows(0, nothing, 0), Lines());
}

TEST_F(FittingSummary, SplitsEveryLevelBySection) {
  Open(Sections());
  ShowSections({L"一区"});
  const Lines fitting = Heads("@CI|管件|弯头|个|1|c1$$");
  for (const int level : {1, 2, 3, 4, -1, 5}) {
    Lines expected{"@P|一区", "@F|1|1"};
    if (level >= 2 && level <= 4) {
      expected.push_back(level == 2 ? "@S|A" : "@S|A\\*A");
    }
    expected.insert(expected.end(), fitting.begin(), fitting.end());
    EXPECT_EQ(PjRows(level, {}, 1), expected) << level;
  }
}

TEST_F(FittingSummary, SplitsBySectionWithoutAnyShownIntoTheOneWithoutName) {
  Open(Sections());
  EXPECT_EQ(PjRows(0, {}, 1),
            (Lines{"@P|", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|1|c3$$"}));
}

// The request.

TEST_F(FittingSummary, LeavesTheRowsAloneForAnUnknownDiscipline) {
  Open(Sections());
  Report::CellArray cells{L"before"};
  Pj().GetPjHzData(cells, L"电气", {}, 0, 1);
  EXPECT_EQ(cells, Report::CellArray{L"before"});
  EXPECT_EQ(Pj().spec, L"");
  Pj().GetPjHzData(cells, kWater, {}, 0, 0);
  EXPECT_EQ(Rows(cells),
            (Lines{"before", "@Cg|管道", "@A|DN25 沟槽连接", "@CI|管件|弯头|个|3|c3$$c1$$c2$$"}));
}

TEST_F(FittingSummary, RemembersTheRequest) {
  Open(Sections());
  Report::SNewCondition condition;
  condition.curSysCode = L"A";
  condition.sysCodes = {L"A"};
  PjRows(0, condition);
  EXPECT_EQ(Pj().spec, kWater);
  EXPECT_EQ(Pj().condition.curSysCode, L"A");
  EXPECT_EQ(Pj().condition.sysCodes, condition.sysCodes);
}

TEST_F(FittingSummary, AnswersTheSameAfterAnotherRequest) {
  Open(Floors());
  const Lines all = PjRows(4);
  RowsOfFloors(1, {{L"4", L"3,7"}});
  EXPECT_EQ(PjRows(4), all);
}

TEST_F(FittingSummary, FailsOnAnIndexOutsideItsTable) {
  CTinyProject project;
  project.Pj().Row({.calItem = Bend()});
  project.Pj().Data().rows[0].calItem = -1;
  Open(project);
  EXPECT_THROW(Pj(), std::out_of_range);
  EXPECT_THROW(Pj(), std::out_of_range);
}

}  // namespace
