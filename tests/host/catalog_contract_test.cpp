// One walk over all report types: class, row operation, titles, levels, layout and help must agree.
// The goldens have a walk of their own, goldens_test.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/demo_project.h"
#include "host/open_project.h"
#include "host/report_catalog.h"
#include "host/report_requests.h"
#include "platform/portable/utf8_text.h"
#include "platform/text_numbers.h"
#include "report_mng/report_mng.h"
#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "reports/bill_quota/de_hz_report.h"
#include "reports/bill_quota/qd_de_hz_report.h"
#include "reports/bill_quota/qd_hz_report.h"
#include "reports/calculation_books/xhl_jss2f_report.h"
#include "reports/calculation_books/xhl_jss2m_report.h"
#include "reports/calculation_books/xhl_jss2s_report.h"
#include "reports/consumption/pj_hz_report.h"
#include "reports/consumption/xhl_cg_hz_report.h"
#include "reports/consumption/xhl_gl_report.h"
#include "reports/consumption/xhl_hz_report.h"
#include "reports/special/brush_paint_report.h"
#include "reports/special/xhl_duct_h2s_report.h"
#include "reports/special/xhl_pipe_jrbw_report.h"
#include "rows/row_layouts.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using tally_test::ForEachRequest;
using tally_test::FullName;
using tally_test::SAnsweredRequest;

template <class TReport>
bool IsA(const IReport& report) {
  return dynamic_cast<const TReport*>(&report) != nullptr;
}

/// What holds of a report, whatever the sources under test say.
struct SKnownReport {
  int type;
  int variant;
  const wchar_t* title;
  const char* name;
  const char* variantName;
  int typeLevel;  ///< deepest level of the type
  int level;      ///< deepest level that users are offered
  bool (*isA)(const IReport& report);
};

constexpr SKnownReport kKnown[] = {
    {0, 0, L"系统计算书", "calculation-book", "member", 5, 0, IsA<CXhlJss2MReport>},
    {0, 1, L"系统计算书", "calculation-book", "floor", 5, 0, IsA<CXhlJss2FReport>},
    {0, 2, L"系统计算书", "calculation-book", "system", 5, 5, IsA<CXhlJss2SReport>},
    {1, 0, L"消耗量汇总表", "consumption-summary", nullptr, 5, 5, IsA<CXhlHzReport>},
    {3, 0, L"工程量概览表", "overview", nullptr, 0, 0, IsA<CXhlGlReport>},
    {4, 0, L"超高量汇总表", "over-height-summary", nullptr, 5, 5, IsA<CXhlCgHzReport>},
    {5, 0, L"配件汇总表", "fitting-summary", nullptr, 4, 4, IsA<CPjHzReport>},
    {6, 0, L"绝热保温表", "insulation", nullptr, 6, 6, IsA<CXhlPipeJRBWReport>},
    {7, 0, L"刷油工作量表", "paint-work", nullptr, 6, 6, IsA<CBrushPaintReport>},
    {8, 0, L"风管壁厚表", "duct-wall-thickness", nullptr, 6, 6, IsA<CXhlDuctH2SReport>},
    {9, 0, L"定额汇总表", "quota-summary", nullptr, 6, 6, IsA<CDeHzReport>},
    {10, 0, L"清单定额汇总表", "bill-quota-summary", nullptr, 7, 7, IsA<CQdDeHzReport>},
    {11, 0, L"清单汇总表", "bill-summary", nullptr, 6, 6, IsA<CQdHzReport>},
};

Report::EReportType TypeOf(const SKnownReport& known) {
  return static_cast<Report::EReportType>(known.type);
}

// "report 0, variant 1"
std::string Place(const SKnownReport& known) {
  return "report " + std::to_string(known.type) + ", variant " + std::to_string(known.variant);
}

class CatalogContract : public testing::Test {
 protected:
  /// Opens the project that the goldens are of.
  COpenProject Frozen() {
    const std::filesystem::path data = TALLY_TEST_DATA;
    tally_test::CreateProjectDatabase(folder_ / "frozen.tally",
                                      tally_test::ReadBytes(data / "frozen_project.sql"));
    return COpenProject((folder_ / "frozen.tally").string());
  }
  COpenProject Example() {
    WriteDemoProject((folder_ / "example.tally").string());
    return COpenProject((folder_ / "example.tally").string());
  }

  tally_test::CTempFolder folder_;
};

TEST_F(CatalogContract, HasEveryKnownReportOnce) {
  EXPECT_EQ(ReportCatalog().size(), std::size(kKnown));
  std::set<std::string> names;
  for (const SCatalogReport& report : ReportCatalog()) {
    EXPECT_TRUE(names.insert(FullName(report)).second) << FullName(report);
  }
  for (const SKnownReport& known : kKnown) {
    const SCatalogReport* report = FindReport(TypeOf(known), known.variant);
    ASSERT_NE(report, nullptr) << Place(known);
    EXPECT_STREQ(report->name, known.name) << Place(known);
    EXPECT_STREQ(report->variantName, known.variantName) << Place(known);
    EXPECT_STREQ(report->title, known.title) << Place(known);
  }
}

TEST_F(CatalogContract, HasNoReportWithoutAClass) {
  const COpenProject project = Frozen();
  for (int number = -2; number <= 100; ++number) {
    const bool isKnown = std::any_of(std::begin(kKnown), std::end(kKnown),
                                     [&](const auto& known) { return known.type == number; });
    const auto type = static_cast<Report::EReportType>(number);
    EXPECT_EQ(CReportMng::Instance()->GetReportData(type, 0) != nullptr, isKnown) << number;
    EXPECT_EQ(FindReport(type, 0) != nullptr, isKnown) << number;
    EXPECT_EQ(FindLayout(type, 0) != nullptr, isKnown) << number;
  }
}

TEST_F(CatalogContract, ReachesTheRowsOfEveryClass) {
  const COpenProject project = Frozen();
  for (const SKnownReport& known : kKnown) {
    IReport* report = CReportMng::Instance()->GetReportData(TypeOf(known), known.variant);
    ASSERT_NE(report, nullptr) << Place(known);
    EXPECT_TRUE(known.isA(*report)) << Place(known);
    SRowRequest request;
    request.spec = known.type == 8 ? L"暖通" : L"给排水";
    request.level = 6;
    request.totalType = TypeOf(known);
    Report::CellArray cells;
    FindReport(TypeOf(known), known.variant)->appendRows(*report, request, cells);
    EXPECT_FALSE(cells.empty()) << Place(known);
  }
}

TEST_F(CatalogContract, HasTheTypesTitles) {
  for (const SKnownReport& known : kKnown) {
    EXPECT_EQ(CReportDataMethod::GetTypeByName(known.title), known.type) << Place(known);
  }
}

TEST_F(CatalogContract, OffersTheTypesLevelsToReportsThatTakeOne) {
  for (const SKnownReport& known : kKnown) {
    EXPECT_EQ(CResultConfig::Instance()->GetReportMaxLevel(TypeOf(known)), known.typeLevel)
        << Place(known);
    EXPECT_EQ(FindReport(TypeOf(known), known.variant)->DeepestLevel(), known.level)
        << Place(known);
  }
}

// Levels show something: no level of a report answers what the one above it does.
TEST_F(CatalogContract, ExpandsTheRowsWithEachLevel) {
  const COpenProject project = Example();
  for (const SCatalogReport& report : ReportCatalog()) {
    if (report.DeepestLevel() == 0) {
      continue;
    }
    std::vector<Report::CellArray> byLevel(static_cast<std::size_t>(report.DeepestLevel()) + 1);
    ForEachRequest(report, [&](const SAnsweredRequest& request) {
      Report::CellArray& cells = byLevel[static_cast<std::size_t>(request.level)];
      cells.insert(cells.end(), request.cells.begin(), request.cells.end());
    });
    for (std::size_t level = 1; level < byLevel.size(); ++level) {
      EXPECT_TRUE(byLevel[level] != byLevel[level - 1]) << FullName(report) << " level " << level;
    }
  }
}

void ExpectCellsOfTheirTypes(const SRow& row, const std::string& place) {
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    const SCellLayout& cell = row.layout->cells[i];
    const std::wstring& text = row.cells[i];
    if (cell.type == ECellType::Quantity) {
      EXPECT_EQ(NumberText(ReadLeadingNumber(text)), text) << place << " " << cell.id;
    } else if (cell.type == ECellType::References) {
      EXPECT_TRUE(text.empty() || text.ends_with(L'$')) << place << " " << cell.id;
    }
  }
}

// Cuts all that a project has to show, and answers the markers that were met.
std::set<std::pair<std::string, std::wstring>> CutAll() {
  std::set<std::pair<std::string, std::wstring>> met;
  for (const SCatalogReport& report : ReportCatalog()) {
    const SReportLayout& layout = *FindLayout(report.type, report.variant);
    ForEachRequest(report, [&](const SAnsweredRequest& request) {
      const std::string place = FullName(report) + " " + request.title;
      std::vector<SRow> rows;
      EXPECT_NO_THROW(rows = CutRows(layout, request.cells)) << place;
      for (const SRow& row : rows) {
        met.insert({FullName(report), row.layout->marker});
        ExpectCellsOfTheirTypes(row, place);
        EXPECT_TRUE(request.bySection || row.layout->depth > 0) << place;
      }
      // The member book writes the line work of a section ahead of its heading.
      if (!rows.empty() && request.bySection && !request.divided) {
        EXPECT_EQ(rows.front().layout->depth, 0) << place;
      }
    });
  }
  return met;
}

TEST_F(CatalogContract, LayoutsFitTheRowsOfEveryReport) {
  std::set<std::pair<std::string, std::wstring>> met;
  {
    const COpenProject project = Frozen();
    met = CutAll();
  }
  {
    const COpenProject project = Example();
    CutAll();
  }
  // Every row of a layout is one that its report writes, and the goldens hold it.
  for (const SCatalogReport& report : ReportCatalog()) {
    for (const SRowLayout& row : FindLayout(report.type, report.variant)->rows) {
      EXPECT_TRUE(met.contains({FullName(report), row.marker}))
          << FullName(report) << " " << Utf8FromWide(row.marker);
    }
  }
}

TEST_F(CatalogContract, HelpNamesEveryReport) {
  const std::string help = tally_test::RunProcess({TALLY_PROGRAM, "report", "--help"}).output;
  for (const SKnownReport& known : kKnown) {
    std::string line = "  " + std::to_string(known.type) + "  " + known.name;
    if (known.variantName != nullptr) {
      line += std::string(" (--variant ") + known.variantName + ")";
    }
    line += "  " + Utf8FromWide(known.title);
    if (known.level != 0) {
      line += ", levels 0 to " + std::to_string(known.level);
    }
    EXPECT_NE(help.find(line + "\n"), std::string::npos) << line << "\n" << help;
  }
}

}  // namespace
