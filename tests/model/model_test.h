// The fixture of the comparisons: opens random projects in the fake platform, puts random requests
// to the engine and to a model, and expects the same cells.
//
// TALLY_MODEL_SEED=17 runs the project of that seed alone; TALLY_MODEL_COUNT=100000 runs more.
#ifndef TALLY_TESTS_MODEL_MODEL_TEST_H_
#define TALLY_TESTS_MODEL_MODEL_TEST_H_

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/model_comparison.h"
#include "model/random_project.h"
#include "platform/code_page.h"
#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"
#include "support/tally_test_fixture.h"

namespace tally_model {

class ModelTest : public tally_test::TallyTest {
 protected:
  /// Compares kProjects projects with kRequestsPerProject requests each; stops at the first
  /// difference.
  void ExpectSameRows(const SModelledReport& report) {
    for (const std::uint64_t seed : ModelSeeds(kProjects)) {
      const SModelProject project = report.makeProject(seed);
      OpenModelProject(project);
      const std::vector<SModelRequest> requests = ModelRequests(project, report.type);
      const std::optional<std::vector<Texts>> model = ModelCells(report, project, requests);
      for (std::size_t i = 0; i < requests.size(); ++i) {
        const std::optional<Texts> engine = EngineCells(report, requests[i]);
        const std::string request = "TALLY_MODEL_SEED=" + std::to_string(seed) + ", request " +
                                    std::to_string(i) + ": " + Describe(requests[i]);
        ASSERT_EQ(engine.has_value(), model.has_value()) << "one fold fails\n" << request;
        if (engine) {
          ASSERT_EQ(FirstDifference(*engine, (*model)[i]), "") << request;
        }
      }
    }
  }

  /// Expects that at least `percent` of the requests to the first projects have rows, and that
  /// every kind of row of the report's layout occurs.
  static void ExpectTellingRequests(const SModelledReport& report, int percent = 50) {
    int requests = 0;
    int answered = 0;
    std::set<std::wstring> markers;
    for (int seed = 1; seed <= kTellingProjects; ++seed) {
      const SModelProject project = report.makeProject(static_cast<std::uint64_t>(seed));
      const std::vector<SModelRequest> asked = ModelRequests(project, report.type);
      requests += static_cast<int>(asked.size());
      for (const Texts& cells : ModelCells(report, project, asked).value_or(std::vector<Texts>())) {
        answered += cells.empty() ? 0 : 1;
        for (const SRow& row : CutRows(report.type, report.variant, cells)) {
          markers.insert(row.layout->marker);
        }
      }
    }
    EXPECT_GE(answered * 100, requests * percent);
    std::set<std::wstring> wanted;
    for (const SRowLayout& row : FindLayout(report.type, report.variant)->rows) {
      wanted.insert(row.marker);
    }
    EXPECT_EQ(markers, wanted);
  }

  /// Installs the project and opens it under a path that was not used before.
  void OpenModelProject(const SModelProject& project) {
    static int count = 0;
    settings->deCode = project.deCode;
    settings->qdCode = project.qdCode;
    settings->qdDeCode = project.qdDeCode;
    settings->qdDeMode = project.qdDeMode;
    settings->marks = project.marks;
    billLibrary->chapters = project.billChapters;
    quotaLibrary->chapters = project.quotaChapters;
    ASSERT_TRUE(ICodePage::Instance()->SetThreadCodePage(project.codePage));
    db->records = project.records;
    path = L"model" + std::to_wstring(++count);
    CTallyDataMng::Instance()->InitData(path, project.isQdMode);
  }

  /// Puts the state of the request in force.
  static void Apply(const SModelRequest& request) {
    CReportStatusMng* status = CReportStatusMng::Instance();
    status->SetDispSgd(request.dispSgd);
    status->SetIsBySgd(request.isBySgd);
    if (status->GetIsDividedNode() != request.divided) {
      status->SetIsDividedNode(request.divided);
      CReportMng::Instance()->ClearXHLSysJSSReportData();
    }
    CResultConfig::Instance()->SetLineSortDowm(request.lineSortDown);
  }

 private:
  static constexpr int kProjects = 1500;
  static constexpr int kTellingProjects = 150;

  /// None where the fold fails. Throws CLayoutError for cells that do not follow the layout.
  static std::optional<Texts> EngineCells(const SModelledReport& report,
                                          const SModelRequest& request) {
    Apply(request);
    IReport* folded = nullptr;
    try {
      folded = CReportMng::Instance()->GetReportData(report.type, report.variant);
    } catch (const std::out_of_range&) {
      return std::nullopt;
    }
    Report::CellArray cells;
    report.engineRows(*folded, request, cells);
    CutRows(report.type, report.variant, cells);
    return cells;
  }
};

/// The name of a parameterised test's report.
inline std::string ReportName(const testing::TestParamInfo<SModelledReport>& info) {
  return info.param.name;
}

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_MODEL_TEST_H_
