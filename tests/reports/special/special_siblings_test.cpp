// The points in which the paint, duct and insulation tables differ, each on the same data.
#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "reports/special/special_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::DetailRow;
using tally_test::Item;
using tally_test::kVentilation;
using tally_test::Lines;
using tally_test::STinyCategory;
using tally_test::STinyFloor;

/// What a pipe and a duct have in common.
struct STwin {
  bool isLength = false;  ///< else the area of both, and the pipe's volume
  std::wstring component = L"c1";
  std::wstring sgd = L"一区";
  STinyFloor floor = {L"1", L"1"};
  std::wstring sysCode = L"A";
  std::wstring name = L"N";  ///< of the attribute
  std::wstring text = {};    ///< ahead of the parameters in the attribute's value
  std::wstring unit = L"u";
  double quantity = 1;
  std::wstring pipeKind = L"供水管";
  std::wstring ductKind = L"矩形风管";
};

const std::string kPipe = "管道刷油:漆,1\n保温厚度:9";
const std::string kDuct = "风管壁厚H(mm):9";
const std::string kPaintHead = "@T|水管|漆:第一遍|";
const std::string kDuctHead = "@T|风管::9(mm)|";
const std::string kInsulationHead = "@T|水管|:9(mm)|绝热保温体积|";

class SpecialSiblings : public tally_test::SpecialTest {
 protected:
  /// Each twin as a painted and insulated pipe and as a duct.
  void OpenTwins(const std::vector<STwin>& twins, CTinyProject project = {}) {
    for (const STwin& twin : twins) {
      DetailRow row{.sgd = twin.sgd,
                    .floor = twin.floor,
                    .component = twin.component,
                    .spec = kVentilation,
                    .sysCode = twin.sysCode};
      const auto add = [&](const wchar_t* item) {
        row.calItem = Item(item, twin.unit, twin.quantity);
        project.Detail().Row(row);
      };
      row.category = {L"水管", twin.pipeKind};
      row.attr = {twin.name, twin.text + L"管道刷油:漆,1\n保温厚度:9"};
      if (twin.isLength) {
        add(L"管道长度");
      } else {
        add(L"外表面积");
        add(L"绝热保温体积");
      }
      row.category = {L"风管", twin.ductKind};
      row.attr = {twin.name, twin.text + L"风管壁厚H(mm):9"};
      add(twin.isLength ? L"风管长度" : L"展开面积");
    }
    Open(project);
  }
  /// Each twin's quantity as that of the main items, and a volume beside the pipe's.
  void OpenTwinsOfMainItems(const std::vector<STwin>& twins) {
    CTinyProject project;
    for (const STwin& twin : twins) {
      DetailRow row{.sgd = twin.sgd,
                    .floor = twin.floor,
                    .component = twin.component,
                    .spec = kVentilation,
                    .sysCode = twin.sysCode};
      row.category = {L"水管", twin.pipeKind};
      row.attr = {twin.name, twin.text + L"管道刷油:漆,1\n保温厚度:9"};
      row.calItem = Item(L"管道长度", twin.unit, twin.quantity);
      project.Detail().Row(row);
      row.calItem = Item(L"绝热保温体积", L"m3", 1);
      project.Detail().Row(row);
      row.category = {L"风管", twin.ductKind};
      row.attr = {twin.name, twin.text + L"风管壁厚H(mm):9"};
      row.calItem = Item(L"展开面积", twin.unit, twin.quantity);
      project.Detail().Row(row);
    }
    Open(project);
  }

  static Lines PaintAt(int level, const Report::SNewCondition& condition = {}) {
    return PaintRows(kVentilation, level, condition);
  }
  static Lines InsulationAt(int level, const Report::SNewCondition& condition = {}) {
    return InsulationRows(kVentilation, level, condition);
  }

  /// The rows that begin with `marker`.
  static Lines Only(const Lines& rows, const std::string& marker) {
    Lines found;
    for (const std::string& row : rows) {
      if (row.starts_with(marker)) {
        found.push_back(row);
      }
    }
    return found;
  }
};

// Floors.

TEST_F(SpecialSiblings, APairLeavesResultsOfOtherFloorsOutButNotOfPaint) {
  OpenTwins({{.component = L"c1", .floor = {L"S", L"3,4"}, .quantity = 1},
             {.component = L"c2", .floor = {L"S", L"2,5"}, .quantity = 10},
             {.component = L"c3", .floor = {L"S", L"S"}, .quantity = 100}});
  const Report::SNewCondition condition = Floors({{L"3,4", L"S"}});
  EXPECT_EQ(PaintAt(0, condition), (Lines{kPaintHead + "u|222|0|0|0"}));
  EXPECT_EQ(DuctRows(0, condition), (Lines{kDuctHead + "u|202|0|0|0"}));
  EXPECT_EQ(InsulationAt(0, condition), (Lines{kInsulationHead + "u|202|0|0|0"}));
}

TEST_F(SpecialSiblings, TheFloorShownStandsBehindTheNodesNameButInInsulationAhead) {
  OpenTwins({{.floor = {L"S", L"S"}}});
  const Report::SNewCondition condition = Floors({{L"3,4", L"S"}});
  EXPECT_EQ(Only(PaintAt(2, condition), "@F"), (Lines{"@F|S|3,4|c1$$|u|2|0|0|0"}));
  EXPECT_EQ(Only(DuctRows(2, condition), "@F"), (Lines{"@F|S|3,4|c1$$|u|2|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(2, condition), "@F"), (Lines{"@F|3,4|S|u|c1$$|2|0|0|0"}));
}

TEST_F(SpecialSiblings, TheLevelsOutsideTheRangeAreTakenAsEachTableTestsThem) {
  OpenTwins({{}});
  EXPECT_EQ(PaintAt(-1), (Lines{kPaintHead + "u|1|0|0|0"}));
  EXPECT_EQ(DuctRows(-1),
            (Lines{kDuctHead + "u|1|0|0|0", "@CI|N|" + kDuct + "|展开面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(-1), (Lines{kInsulationHead + "u|1|0|0|0", "@F|1|1|u|c1$$|1|0|0|0"}));

  EXPECT_EQ(PaintAt(7), (Lines{kPaintHead + "u|1|0|0|0", "@F|1|1|c1$$c1$$|u|2|0|0|0",
                               "@CI|N|" + kPipe + "|外表面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(DuctRows(7), (Lines{kDuctHead + "u|1|0|0|0", "@F|1|1|c1$$c1$$|u|2|0|0|0",
                                "@CI|N|" + kDuct + "|展开面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(7),
            (Lines{kInsulationHead + "u|1|0|0|0", "@F|1|1|u|c1$$|1|0|0|0", "@F|1|1|u|c1$$|1|0|0|0",
                   "@CI|N|" + kPipe + "|绝热保温体积|u|c1$$|1|0|0|0"}));
}

// The tail.

TEST_F(SpecialSiblings, ReferencesStandAheadOfTheUnitButInInsulationBehind) {
  OpenTwins({{.component = L"c1"}, {.component = L"c2", .quantity = 2}});
  const Lines paint = PaintAt(5);
  EXPECT_EQ(paint, (Lines{kPaintHead + "u|3|0|0|0", "@F|1|1|c1$$c2$$|u|3|0|0|0",
                          "@S|A\\*A|c1$$c2$$|u|3|0|0|0",
                          "@CI|N|" + kPipe + "|外表面积|c1$$c2$$|u|3|0|0|0"}));
  EXPECT_EQ(DuctRows(5), (Lines{kDuctHead + "u|3|0|0|0", "@F|1|1|c1$$c2$$|u|3|0|0|0",
                                "@S|A\\*A|c1$$c2$$|u|3|0|0|0",
                                "@CI|N|" + kDuct + "|展开面积|c1$$c2$$|u|3|0|0|0"}));
  EXPECT_EQ(InsulationAt(5), (Lines{kInsulationHead + "u|3|0|0|0", "@F|1|1|u|c1$$c2$$|3|0|0|0",
                                    "@S|A\\*A|u|c1$$c2$$|3|0|0|0",
                                    "@CI|N|" + kPipe + "|绝热保温体积|u|c1$$c2$$|3|0|0|0"}));
}

// Totals.

TEST_F(SpecialSiblings, TotalsAreOfThePaintedAreaTheMainItemAndTheVolume) {
  OpenTwins({{.component = L"c1", .quantity = 2},
             {.isLength = true, .component = L"c2", .floor = {L"2", L"2"}, .quantity = 5}});
  // The pipe's area is not its main item, the duct's is.
  EXPECT_EQ(PaintAt(2), (Lines{kPaintHead + "u|2|0|0|0", "@F|1|1|c1$$|u|2|0|0|0",
                               "@CI|N|" + kPipe + "|外表面积|c1$$|u|2|0|0|0",
                               "@CI|N|" + kPipe + "|管道长度|c2$$|u|5|0|0|0"}));
  EXPECT_EQ(DuctRows(2), (Lines{kDuctHead + "u|2|0|0|0", "@F|1|1|c1$$|u|2|0|0|0",
                                "@CI|N|" + kDuct + "|展开面积|c1$$|u|2|0|0|0",
                                "@CI|N|" + kDuct + "|风管长度|c2$$|u|5|0|0|0"}));
  EXPECT_EQ(InsulationAt(2), (Lines{kInsulationHead + "u|2|0|0|0", "@F|1|1|u|c1$$|2|0|0|0",
                                    "@CI|N|" + kPipe + "|绝热保温体积|u|c1$$|2|0|0|0"}));
}

TEST_F(SpecialSiblings, ABlockWithoutItsTotalPrintsZerosButNotInInsulation) {
  OpenTwins({{.isLength = true}});
  EXPECT_EQ(PaintAt(0), Lines{});
  EXPECT_EQ(DuctRows(0), Lines{});
  EXPECT_EQ(PaintAt(1),
            (Lines{kPaintHead + "|0|0|0|0", "@CI|N|" + kPipe + "|管道长度|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(DuctRows(1),
            (Lines{kDuctHead + "|0|0|0|0", "@CI|N|" + kDuct + "|风管长度|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(1), Lines{});
}

TEST_F(SpecialSiblings, ASumThatComesToZeroPrintsButNotInInsulation) {
  OpenTwins({{.component = L"c1", .quantity = 2}, {.component = L"c2", .quantity = -2}});
  EXPECT_EQ(PaintAt(0), (Lines{kPaintHead + "u|0|0|0|0"}));
  EXPECT_EQ(DuctRows(0), (Lines{kDuctHead + "u|0|0|0|0"}));
  EXPECT_EQ(InsulationAt(0), Lines{});
}

TEST_F(SpecialSiblings, AProductOfZeroKeepsItsSignButHasNoBlockInInsulation) {
  OpenTwins({{.floor = {L"1", L""}, .quantity = -2}});
  EXPECT_EQ(PaintAt(0), (Lines{kPaintHead + "u|-0|0|0|0"}));
  EXPECT_EQ(DuctRows(0), (Lines{kDuctHead + "u|-0|0|0|0"}));
  EXPECT_EQ(InsulationAt(0), Lines{});
}

// Orders.

TEST_F(SpecialSiblings, AttributeTextsStandInNarrowOrderOfPaintAndInPlainOrderElsewhere) {
  OpenTwins({{.text = L"一\n"}, {.text = L"阿\n"}});
  const auto row = [](const std::string& text, const std::string& tail) {
    return "@CI|N|" + text + "\n" + tail;
  };
  const std::string paint = kPipe + "|外表面积|c1$$|u|1|0|0|0";
  const std::string duct = kDuct + "|展开面积|c1$$|u|1|0|0|0";
  const std::string insulation = kPipe + "|绝热保温体积|u|c1$$|1|0|0|0";
  EXPECT_EQ(Only(PaintAt(1), "@CI"), (Lines{row("阿", paint), row("一", paint)}));
  EXPECT_EQ(Only(DuctRows(1), "@CI"), (Lines{row("一", duct), row("阿", duct)}));
  EXPECT_EQ(Only(InsulationAt(1), "@CI"), (Lines{row("一", insulation), row("阿", insulation)}));
}

TEST_F(SpecialSiblings, AttributeTextsOfPaintFollowTheCodePageOfTheFold) {
  ICodePage::Instance()->SetThreadCodePage(65001);
  OpenTwins({{.text = L"一\n"}, {.text = L"阿\n"}});
  EXPECT_EQ(Only(PaintAt(1), "@CI"), (Lines{"@CI|N|一\n" + kPipe + "|外表面积|c1$$|u|1|0|0|0",
                                            "@CI|N|阿\n" + kPipe + "|外表面积|c1$$|u|1|0|0|0"}));
}

TEST_F(SpecialSiblings, AttributeTextsThatTheCodePageCannotTellApartAreOneRowOfPaintAlone) {
  OpenTwins({{.text = L"\U0001F600\n"}, {.text = L"\U0001F601\n"}});
  EXPECT_EQ(Only(PaintAt(1), "@CI"),
            (Lines{"@CI|N|\U0001F600\n" + kPipe + "|外表面积|c1$$c1$$|u|2|0|0|0"}));
  EXPECT_EQ(Only(DuctRows(1), "@CI").size(), 2U);
  EXPECT_EQ(Only(InsulationAt(1), "@CI").size(), 2U);
}

TEST_F(SpecialSiblings, UnitsStandInNarrowOrderOfDuctsAndInPlainOrderElsewhere) {
  OpenTwins({{.unit = L"阿", .quantity = 1}, {.unit = L"一", .quantity = 2}});
  // The last total stands.
  EXPECT_EQ(PaintAt(1),
            (Lines{kPaintHead + "阿|1|0|0|0", "@CI|N|" + kPipe + "|外表面积|c1$$|一|2|0|0|0",
                   "@CI|N|" + kPipe + "|外表面积|c1$$|阿|1|0|0|0"}));
  EXPECT_EQ(DuctRows(1),
            (Lines{kDuctHead + "一|2|0|0|0", "@CI|N|" + kDuct + "|展开面积|c1$$|阿|1|0|0|0",
                   "@CI|N|" + kDuct + "|展开面积|c1$$|一|2|0|0|0"}));
  EXPECT_EQ(InsulationAt(1), (Lines{kInsulationHead + "阿|1|0|0|0",
                                    "@CI|N|" + kPipe + "|绝热保温体积|一|c1$$|2|0|0|0",
                                    "@CI|N|" + kPipe + "|绝热保温体积|阿|c1$$|1|0|0|0"}));
}

TEST_F(SpecialSiblings, ItemsStandInNarrowOrderOfPaintAndInPlainOrderOfInsulation) {
  CTinyProject project;
  const auto add = [&](const STinyCategory& kind, const wchar_t* item) {
    project.Detail().Row({.spec = kVentilation,
                          .category = kind,
                          .attr = {L"N", L"支架刷油:漆,1\n保温厚度:9"},
                          .calItem = Item(item, L"u", 1)});
  };
  // None of them is a main item.
  add({L"BIM支架", L"支架"}, L"刷油面积");
  add({L"BIM支架", L"支架"}, L"构件数量");
  add({L"水管", L"水箱"}, L"绝热保温体积");
  add({L"风管", L"水箱"}, L"风管保温体积");
  Open(project);
  const std::string text = "@CI|N|支架刷油:漆,1\n保温厚度:9|";
  EXPECT_EQ(Only(PaintAt(1), "@CI"),
            (Lines{text + "构件数量|c1$$|u|1|0|0|0", text + "刷油面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(1), "@CI"),
            (Lines{text + "绝热保温体积|u|c1$$|1|0|0|0", text + "风管保温体积|u|c1$$|1|0|0|0"}));
}

TEST_F(SpecialSiblings, TheDirectionOfSizesIsForLineWorkForEveryKindAndForKindsNamedPipe) {
  CTinyProject project;
  for (const wchar_t* name : {L"N1", L"N2"}) {
    const auto add = [&](const STinyCategory& kind, const wchar_t* item) {
      project.Detail().Row({.spec = kVentilation,
                            .category = kind,
                            .attr = {name, L"支架刷油:漆,1\n管道刷油:漆,1\n保温厚度:9"},
                            .calItem = Item(item, L"u", 1)});
    };
    add({L"水管", L"软接"}, L"外表面积");
    add({L"水管", L"软接"}, L"绝热保温体积");
    add({L"BIM支架", L"管卡"}, L"刷油面积");
    add({L"BIM附件", L"风管套管"}, L"展开面积");
  }
  project.KindSort(kVentilation, L"水管\\软接", 1);
  Open(project);
  const auto names = [](const Lines& rows) {
    std::string text;
    for (const std::string& row : Only(rows, "@CI")) {
      text += row.substr(4, 3);
    }
    return text;
  };
  EXPECT_EQ(names(PaintAt(1)), "N2|N1|N1|N2|");  // the pipe, then the support
  EXPECT_EQ(names(DuctRows(1)), "N2|N1|");
  EXPECT_EQ(names(InsulationAt(1)), "N2|N1|");
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(names(PaintAt(1)), "N1|N2|N1|N2|");
  EXPECT_EQ(names(DuctRows(1)), "N1|N2|");
  EXPECT_EQ(names(InsulationAt(1)), "N2|N1|");
}

// System codes.

TEST_F(SpecialSiblings, RemarksStandInBracketsButInInsulationBareAndOfTheWholeTextAlone) {
  CTinyProject project;
  project.SysCodeSort(kVentilation, L"A", 1, L"r");
  OpenTwins({{}}, project);
  EXPECT_EQ(Only(PaintAt(3), "@S"), (Lines{"@S|A(r)|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(DuctRows(3), "@S"), (Lines{"@S|A(r)|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(3), "@S"), (Lines{"@S|Ar|u|c1$$|1|0|0|0"}));
  EXPECT_EQ(Only(PaintAt(4), "@S"), (Lines{"@S|A\\*A(r)|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(DuctRows(4), "@S"), (Lines{"@S|A\\*A(r)|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(4), "@S"), (Lines{"@S|A\\*A|u|c1$$|1|0|0|0"}));
}

TEST_F(SpecialSiblings, CodesOfOneNumberMergeWhateverFollowsButInInsulationRowByRow) {
  CTinyProject project;
  project.SysCodeSort(kVentilation, L"A", 5).SysCodeSort(kVentilation, L"B", 5);
  OpenTwins({{.component = L"c1", .sysCode = L"A", .quantity = 1},
             {.component = L"c2", .sysCode = L"B", .quantity = 10}},
            project);
  // By text the two codes' rows are equal, an attribute's row to a code's, too.
  EXPECT_EQ(PaintAt(3),
            (Lines{kPaintHead + "u|11|0|0|0", "@F|1|1|c1$$c2$$|u|11|0|0|0",
                   "@S|A|c1$$c2$$c2$$|u|21|0|0|0", "@CI|N|" + kPipe + "|外表面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(DuctRows(3),
            (Lines{kDuctHead + "u|11|0|0|0", "@F|1|1|c1$$c2$$|u|11|0|0|0",
                   "@S|A|c1$$c2$$c2$$|u|21|0|0|0", "@CI|N|" + kDuct + "|展开面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(3), (Lines{kInsulationHead + "u|11|0|0|0", "@F|1|1|u|c1$$c2$$|11|0|0|0",
                                    "@S|A|u|c1$$c2$$|11|0|0|0",
                                    "@CI|N|" + kPipe + "|绝热保温体积|u|c1$$c2$$|11|0|0|0"}));
}

TEST_F(SpecialSiblings, CodesThatShowOneTextMergeButInInsulationTheirNumbersTellThemApart) {
  CTinyProject project;
  project.SysCodeSort(kVentilation, L"A", 1, L"1")
      .SysCodeSort(kVentilation, L"A(1)", 2)
      .SysCodeSort(kVentilation, L"A1", 3);
  OpenTwins({{.component = L"c1", .sysCode = L"A", .quantity = 1},
             {.component = L"c2", .sysCode = L"A(1)", .quantity = 10},
             {.component = L"c3", .sysCode = L"A1", .quantity = 100}},
            project);
  EXPECT_EQ(Only(PaintAt(3), "@S"),
            (Lines{"@S|A(1)|c1$$c2$$|u|11|0|0|0", "@S|A1|c3$$|u|100|0|0|0"}));
  EXPECT_EQ(Only(PaintAt(3), "@CI"), (Lines{"@CI|N|" + kPipe + "|外表面积|c1$$c2$$|u|11|0|0|0",
                                            "@CI|N|" + kPipe + "|外表面积|c3$$|u|100|0|0|0"}));
  EXPECT_EQ(Only(DuctRows(3), "@S"),
            (Lines{"@S|A(1)|c1$$c2$$|u|11|0|0|0", "@S|A1|c3$$|u|100|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(3), "@S"),
            (Lines{"@S|A1|u|c1$$|1|0|0|0", "@S|A(1)|u|c2$$|10|0|0|0", "@S|A1|u|c3$$|100|0|0|0"}));
}

TEST_F(SpecialSiblings, ACodeNumberedZeroFallsTogetherWithItsFloor) {
  CTinyProject project;
  project.SysCodeSort(kVentilation, L"A", 0);
  OpenTwins({{}}, project);
  // By text all rows of the code are equal to the floor's; by number its own row alone is.
  EXPECT_EQ(PaintAt(3), (Lines{kPaintHead + "u|1|0|0|0", "@F|1|1|c1$$c1$$c1$$|u|3|0|0|0"}));
  EXPECT_EQ(DuctRows(3), (Lines{kDuctHead + "u|1|0|0|0", "@F|1|1|c1$$c1$$c1$$|u|3|0|0|0"}));
  EXPECT_EQ(InsulationAt(3), (Lines{kInsulationHead + "u|1|0|0|0", "@F|1|1|u|c1$$c1$$|2|0|0|0",
                                    "@CI|N|" + kPipe + "|绝热保温体积|u|c1$$|1|0|0|0"}));
}

// Blocks of equal key.

TEST_F(SpecialSiblings, ThicknessesOfOneValueDropTheSecondBlock) {
  CTinyProject project;
  for (const wchar_t* thickness : {L"2.0", L"2"}) {
    const std::wstring value = thickness;
    project.Detail().Row({.spec = kVentilation,
                          .category = {L"风管", L"矩形风管"},
                          .attr = {L"N", L"风管壁厚H(mm):" + value + L"\n保温厚度:" + value},
                          .calItem = Item(L"展开面积", L"u", 1)});
    project.Detail().Row({.spec = kVentilation,
                          .category = {L"风管", L"矩形风管"},
                          .attr = {L"N", L"保温厚度:" + value},
                          .calItem = Item(L"风管保温体积", L"u", 1)});
  }
  Open(project);
  EXPECT_EQ(DuctRows(0), (Lines{"@T|风管::2(mm)|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(0), (Lines{"@T|风管|:2(mm)|风管保温体积|u|1|0|0|0"}));
}

TEST_F(SpecialSiblings, BlanksTellPaintsAndInsulationsApartButNotPlates) {
  CTinyProject project;
  for (const wchar_t* name : {L"甲 乙", L"甲乙"}) {
    const std::wstring text = name;
    const auto add = [&](const STinyCategory& kind, const wchar_t* item) {
      project.Detail().Row({.spec = kVentilation,
                            .category = kind,
                            .attr = {L"N", L"管道刷油:" + text + L",1\n风管材质:" + text +
                                               L"\n保温材料:" + text + L"\n保温厚度:9"},
                            .calItem = Item(item, L"u", 1)});
    };
    add({L"水管", L"供水管"}, L"外表面积");
    add({L"水管", L"供水管"}, L"绝热保温体积");
    add({L"风管", L"矩形风管"}, L"展开面积");
  }
  Open(project);
  EXPECT_EQ(PaintAt(0), (Lines{"@T|水管|甲 乙:第一遍|u|1|0|0|0", "@T|水管|甲乙:第一遍|u|1|0|0|0"}));
  EXPECT_EQ(DuctRows(0), (Lines{"@T|风管:甲 乙:(mm)|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(0), (Lines{"@T|水管|甲 乙:9(mm)|绝热保温体积|u|1|0|0|0",
                                    "@T|水管|甲乙:9(mm)|绝热保温体积|u|1|0|0|0"}));
}

TEST_F(SpecialSiblings, NamesThatTheCodePageCannotTellApartDropABlockButNotOfInsulation) {
  CTinyProject project;
  for (const wchar_t* name : {L"\U0001F600", L"\U0001F601"}) {
    const std::wstring text = name;
    const auto add = [&](const STinyCategory& kind, const wchar_t* item) {
      project.Detail().Row({.spec = kVentilation,
                            .category = kind,
                            .attr = {L"N", L"管道刷油:" + text + L",1\n风管材质:" + text +
                                               L"\n保温材料:" + text + L"\n保温厚度:9"},
                            .calItem = Item(item, L"u", 1)});
    };
    add({L"水管", L"供水管"}, L"外表面积");
    add({L"水管", L"供水管"}, L"绝热保温体积");
    add({L"风管", L"矩形风管"}, L"展开面积");
  }
  Open(project);
  EXPECT_EQ(PaintAt(0), (Lines{"@T|水管|\U0001F600:第一遍|u|1|0|0|0"}));
  EXPECT_EQ(DuctRows(0), (Lines{"@T|风管:\U0001F600:(mm)|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(0), (Lines{"@T|水管|\U0001F600:9(mm)|绝热保温体积|u|1|0|0|0",
                                    "@T|水管|\U0001F601:9(mm)|绝热保温体积|u|1|0|0|0"}));
}

// Circuits.

TEST_F(SpecialSiblings, CircuitsOfOneKindStandByTheirCountInAll) {
  std::vector<STwin> twins;
  for (int i = 1; i <= 11; ++i) {
    twins.push_back({.component = L"c" + std::to_wstring(i), .quantity = static_cast<double>(i)});
  }
  OpenTwinsOfMainItems(twins);
  // They are counted in the order of the results' keys, by the quantity's text: 1, 10, 11, 2, ...
  const std::vector<int> order{1, 10, 11, 2, 3, 4, 5, 6, 7, 8, 9};
  Lines paint;
  Lines duct;
  Lines insulation;
  for (std::size_t i = 0; i < order.size(); ++i) {
    const std::string loop = "回路" + std::to_string(i + 1);
    const std::string quantity = std::to_string(order[i]);
    const std::string tail = "|c" + quantity + "$$|u|" + quantity + "|0|0|0";
    paint.push_back("@L|供水管" + loop + "|管道长度" + tail);
    duct.push_back("@L|矩形风管" + loop + "|展开面积" + tail);
    insulation.push_back("@L|供水管" + loop + "|管道长度|u|c" + quantity + "$$|" + quantity +
                         "|0|0|0");
  }
  EXPECT_EQ(Only(PaintAt(6), "@L"), paint);
  EXPECT_EQ(Only(DuctRows(6), "@L"), duct);
  EXPECT_EQ(Only(InsulationAt(6), "@L"), insulation);
}

TEST_F(SpecialSiblings, FloorsOfOneGradeMergeAlsoWhereOthersStandBetween) {
  OpenTwinsOfMainItems({{.component = L"c1", .floor = {L"1", L"1"}, .quantity = 1},
                        {.component = L"c2", .floor = {L"10", L"10"}, .quantity = 10},
                        {.component = L"c3", .floor = {L"1F", L"1"}, .quantity = 100},
                        {.component = L"c4", .floor = {L"1F", L"1,2"}, .quantity = 1000}});
  EXPECT_EQ(DuctRows(6),
            (Lines{kDuctHead + "u|2111|0|0|0", "@F|1|1|c1$$c4$$c3$$|u|2101|0|0|0",
                   "@S|A\\*A|c1$$c4$$c3$$|u|2101|0|0|0",
                   "@CI|N|" + kDuct + "|展开面积|c1$$c4$$c3$$|u|2101|0|0|0",
                   // The first circuit of the second floor is dropped: there is one.
                   "@L|矩形风管回路1|展开面积|c1$$|u|1|0|0|0",
                   "@L|矩形风管回路2|展开面积|c3$$|u|100|0|0|0", "@F|10|10|c2$$|u|10|0|0|0",
                   "@S|A\\*A|c2$$|u|10|0|0|0", "@CI|N|" + kDuct + "|展开面积|c2$$|u|10|0|0|0",
                   "@L|矩形风管回路1|展开面积|c2$$|u|10|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(6), "@L"), (Lines{"@L|供水管回路1|管道长度|u|c1$$|1|0|0|0",
                                                "@L|供水管回路2|管道长度|u|c3$$|100|0|0|0",
                                                "@L|供水管回路1|管道长度|u|c2$$|10|0|0|0"}));
}

TEST_F(SpecialSiblings, KindsOfOneNumberRunBackwardsByNameButInInsulationForwards) {
  OpenTwinsOfMainItems({{.component = L"c1", .quantity = 1, .pipeKind = L"a", .ductKind = L"a"},
                        {.component = L"c2", .quantity = 2, .pipeKind = L"b", .ductKind = L"b"},
                        {.component = L"c3", .quantity = 3, .pipeKind = L"bb", .ductKind = L"bb"}});
  EXPECT_EQ(Only(PaintAt(6), "@L"),
            (Lines{"@L|bb回路1|管道长度|c3$$|u|3|0|0|0", "@L|b回路1|管道长度|c2$$|u|2|0|0|0",
                   "@L|a回路1|管道长度|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(DuctRows(6), "@L"),
            (Lines{"@L|bb回路1|展开面积|c3$$|u|3|0|0|0", "@L|b回路1|展开面积|c2$$|u|2|0|0|0",
                   "@L|a回路1|展开面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(6), "@L"),
            (Lines{"@L|a回路1|管道长度|u|c1$$|1|0|0|0", "@L|b回路1|管道长度|u|c2$$|2|0|0|0",
                   "@L|bb回路1|管道长度|u|c3$$|3|0|0|0"}));
}

TEST_F(SpecialSiblings, CircuitsShowWithoutATotalBesideThemButNotInInsulation) {
  OpenTwins({{.floor = {L"2", L"2"}}, {.isLength = true}});
  EXPECT_EQ(Only(PaintAt(6), "@L"), (Lines{"@L|供水管回路1|管道长度|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(Only(InsulationAt(6), "@L"), Lines{});
}

TEST_F(SpecialSiblings, CircuitsNeedAFloorWithANameButNotInInsulation) {
  OpenTwinsOfMainItems({{.floor = {L"", L"1"}, .quantity = 2}});
  EXPECT_EQ(PaintAt(6),
            (Lines{kPaintHead + "|0|0|0|0", "@CI|N|" + kPipe + "|管道长度|c1$$|u|2|0|0|0"}));
  EXPECT_EQ(DuctRows(6),
            (Lines{kDuctHead + "u|2|0|0|0", "@CI|N|" + kDuct + "|展开面积|c1$$|u|2|0|0|0"}));
  EXPECT_EQ(InsulationAt(6),
            (Lines{kInsulationHead + "m3|1|0|0|0", "@CI|N|" + kPipe + "|管道长度|u|c1$$|2|0|0|0",
                   "@CI|N|" + kPipe + "|绝热保温体积|m3|c1$$|1|0|0|0",
                   "@L|供水管回路1|管道长度|u|c1$$|2|0|0|0"}));
}

// Folding.

TEST_F(SpecialSiblings, ABadIndexFailsTheFoldButIsPassedOverInInsulation) {
  CTinyProject project;
  project.Detail()
      .Row({.spec = kVentilation,
            .category = {L"水管", L"供水管"},
            .attr = {L"N", L"保温厚度:9"},
            .calItem = Item(L"绝热保温体积", L"u", 1)})
      .Row({.calItem = Item(L"x", L"u", 1)});
  project.Detail().Data().rows[1].component = 1;
  Open(project);
  EXPECT_THROW(Paint(), std::out_of_range);
  EXPECT_THROW(Duct(), std::out_of_range);
  EXPECT_EQ(InsulationAt(0), (Lines{kInsulationHead + "u|1|0|0|0"}));
}

TEST_F(SpecialSiblings, AFilterOfOtherKindsIsStoredButNotByInsulation) {
  OpenTwins({{}});
  const Report::SNewCondition condition = Categories({L"线槽桥架"});
  EXPECT_EQ(PaintAt(0, condition), Lines{});
  EXPECT_EQ(DuctRows(0, condition), Lines{});
  EXPECT_EQ(InsulationAt(0, condition), Lines{});
  EXPECT_EQ(Paint().condition.categories, condition.categories);
  EXPECT_EQ(Duct().condition.categories, condition.categories);
  EXPECT_TRUE(Insulation().condition.categories.empty());
  EXPECT_EQ(Insulation().spec, L"");
}

TEST_F(SpecialSiblings, AttributesWithoutAValueShowButNotInInsulation) {
  CTinyProject project;
  const auto add = [&](const STinyCategory& kind, const wchar_t* item) {
    project.Detail().Row({.spec = kVentilation,
                          .category = kind,
                          .attr = {L"管道刷油:漆,1\n保温厚度:9", L""},
                          .calItem = Item(item, L"u", 1)});
  };
  add({L"水管", L"供水管"}, L"外表面积");
  add({L"水管", L"供水管"}, L"绝热保温体积");
  Open(project);
  EXPECT_EQ(PaintAt(1),
            (Lines{kPaintHead + "u|1|0|0|0", "@CI|" + kPipe + "||外表面积|c1$$|u|1|0|0|0"}));
  EXPECT_EQ(InsulationAt(1), (Lines{kInsulationHead + "u|1|0|0|0"}));
}

}  // namespace
