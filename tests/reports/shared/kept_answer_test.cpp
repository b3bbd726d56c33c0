// The reports that keep the answer to the last request that left nothing out: whatever was asked
// before, an answer is that of a report which was asked for nothing else.
#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "reports/consumption/pj_hz_report.h"
#include "reports/special/special_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::DetailRow;
using tally_test::Item;
using tally_test::kVentilation;
using tally_test::Lines;
using tally_test::Rows;

struct SAsked {
  int level;
  Report::SNewCondition condition = {};
  int bySgd = 0;
};

struct SKeepingReport {
  std::string name;
  int deepest;
  void (*append)(Report::CellArray& cells, const SAsked& asked);
};

void PrintTo(const SKeepingReport& report, std::ostream* out) {
  *out << report.name;
}

class KeptAnswer : public tally_test::SpecialTest,
                   public testing::WithParamInterface<SKeepingReport> {
 public:
  static void OfPaint(Report::CellArray& cells, const SAsked& asked) {
    Paint().GetBrushPaintData(cells, kVentilation, asked.condition, asked.level, asked.bySgd);
  }
  static void OfDucts(Report::CellArray& cells, const SAsked& asked) {
    Duct().GetDuctHData(cells, kVentilation, asked.condition, asked.level, asked.bySgd);
  }
  static void OfInsulation(Report::CellArray& cells, const SAsked& asked) {
    Insulation().GetPipeJRBWData(cells, kVentilation, asked.condition, asked.level,
                                 Report::ReportPipeJRBW, asked.bySgd);
  }
  static void OfFittings(Report::CellArray& cells, const SAsked& asked) {
    GetReport<CPjHzReport>(Report::ReportPjHz)
        .GetPjHzData(cells, kVentilation, asked.condition, asked.level, asked.bySgd);
  }

 protected:
  void SetUp() override {
    SpecialTest::SetUp();
    CTinyProject project = Coded(kVentilation);
    const struct {
      const wchar_t* size;
      const wchar_t* floor;
      const wchar_t* sgd;
      const wchar_t* component;
      double quantity;
    } places[] = {{L"DN9", L"1", L"一区", L"c1", 1},
                  {L"DN10", L"1", L"一区", L"c2", 2},
                  {L"DN10", L"2", L"二区", L"c3", 4}};
    for (const auto& place : places) {
      DetailRow row{.sgd = place.sgd,
                    .floor = {place.floor, place.floor},
                    .component = place.component,
                    .spec = kVentilation,
                    .sysCode = L"A\\B\\C"};
      const auto add = [&](const wchar_t* category, const wchar_t* kind, const wchar_t* item) {
        row.category = {category, kind};
        row.calItem = Item(item, L"m2", place.quantity);
        project.Detail().Row(row);
      };
      row.attr = {place.size, L"管道刷油:漆,1\n保温厚度:9"};
      add(L"水管", L"供水管", L"外表面积");
      add(L"水管", L"供水管", L"管道长度");
      add(L"水管", L"供水管", L"绝热保温体积");
      row.attr = {place.size, L"风管壁厚H(mm):9"};
      add(L"风管", L"矩形风管", L"展开面积");
      project.Pj().Row({.sgd = row.sgd,
                        .floor = row.floor,
                        .component = row.component,
                        .spec = kVentilation,
                        .category = {L"水管", L"供水管"},
                        .attr = {place.size, L""},
                        .sysCode = row.sysCode,
                        .calItem = {.text1 = L"管件", .name = L"弯头"}});
    }
    Open(project);
  }

  static Lines Asked(const SAsked& asked) {
    Report::CellArray cells;
    GetParam().append(cells, asked);
    // The cells were counted before they were written.
    EXPECT_EQ(cells.capacity(), cells.size());
    return Rows(cells);
  }
  static Lines AskedFirst(const SAsked& asked) {
    CReportMng::Instance()->Clear();
    return Asked(asked);
  }
};

TEST_P(KeptAnswer, IsGivenAsOftenAsItIsAskedFor) {
  for (int level = 0; level <= GetParam().deepest; ++level) {
    const Lines first = AskedFirst({level});
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(Asked({level}), first) << level;
    EXPECT_EQ(Asked({level}), first) << level;
  }
}

TEST_P(KeptAnswer, GoesBehindWhatTheArrayHas) {
  const Lines rows = AskedFirst({GetParam().deepest});
  Report::CellArray cells{L"@A", L"1"};
  GetParam().append(cells, {GetParam().deepest});
  Lines behind = Rows(cells);
  ASSERT_FALSE(behind.empty());
  EXPECT_EQ(behind.front(), "@A|1");
  behind.erase(behind.begin());
  EXPECT_EQ(behind, rows);
}

TEST_P(KeptAnswer, IsThatOfItsLevel) {
  std::vector<Lines> ofLevels;
  for (int level = 0; level <= GetParam().deepest; ++level) {
    ofLevels.push_back(AskedFirst({level}));
  }
  ASSERT_NE(ofLevels.front(), ofLevels.back());
  CReportMng::Instance()->Clear();
  for (int level = 0; level <= GetParam().deepest; ++level) {
    EXPECT_EQ(Asked({level}), ofLevels[static_cast<std::size_t>(level)]) << level;
  }
}

TEST_P(KeptAnswer, IsThatOfItsDirectionOfSizes) {
  const SAsked deepest{GetParam().deepest};
  const Lines down = AskedFirst(deepest);
  CResultConfig::Instance()->SetLineSortDowm(false);
  const Lines up = Asked(deepest);
  EXPECT_NE(up, down);
  EXPECT_EQ(AskedFirst(deepest), up);
}

TEST_P(KeptAnswer, IsNotThatOfAFilter) {
  SAsked floor{GetParam().deepest};
  floor.condition.floors = {{L"2", L"2"}};
  SAsked code{GetParam().deepest};
  code.condition.sysCodes = {L"D"};
  SAsked kind{GetParam().deepest};
  kind.condition.categories = {L"管道"};
  const Lines all = AskedFirst({GetParam().deepest});
  for (const SAsked& filtered : {floor, code, kind}) {
    const Lines rows = AskedFirst(filtered);
    EXPECT_NE(rows, all);
    EXPECT_EQ(Asked({GetParam().deepest}), all);
    EXPECT_EQ(Asked(filtered), rows);
  }
}

TEST_P(KeptAnswer, IsNotThatOfSections) {
  const SAsked deepest{GetParam().deepest};
  const SAsked split{GetParam().deepest, {}, 1};
  const Lines all = AskedFirst(deepest);
  CReportStatusMng::Instance()->SetDispSgd({L"一区"});
  const Lines ofOne = AskedFirst(split);
  EXPECT_NE(ofOne, all);
  EXPECT_EQ(Asked(deepest), all);
  EXPECT_EQ(Asked(split), ofOne);
  CReportStatusMng::Instance()->SetIsBySgd(true);
  const Lines shown = AskedFirst(deepest);
  EXPECT_NE(shown, all);
  CReportStatusMng::Instance()->SetIsBySgd(false);
  EXPECT_EQ(Asked(deepest), all);
  CReportStatusMng::Instance()->SetIsBySgd(true);
  EXPECT_EQ(Asked(deepest), shown);
}

INSTANTIATE_TEST_SUITE_P(Reports, KeptAnswer,
                         testing::Values(SKeepingReport{"Paint", 6, KeptAnswer::OfPaint},
                                         SKeepingReport{"Ducts", 6, KeptAnswer::OfDucts},
                                         SKeepingReport{"Insulation", 6, KeptAnswer::OfInsulation},
                                         SKeepingReport{"Fittings", 4, KeptAnswer::OfFittings}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
