// What a comparison of the engine with a model is made of, apart from the fixture.
#ifndef TALLY_TESTS_MODEL_MODEL_COMPARISON_H_
#define TALLY_TESTS_MODEL_MODEL_COMPARISON_H_

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "model/model_texts.h"
#include "model/random_project.h"
#include "report_mng/ireport.h"

namespace tally_model {

/// One report with its model.
struct SModelledReport {
  const char* name;
  Report::EReportType type;
  int variant;
  /// Calls the row operation of `report`, which is of this type and variant.
  void (*engineRows)(IReport& report, const SModelRequest& request, Report::CellArray& cells);
  /// The model's cells for each of the requests. Throws std::out_of_range where the fold fails.
  std::vector<Texts> (*modelRows)(const SModelProject& project,
                                  const std::vector<SModelRequest>& requests);
  SModelProject (*makeProject)(std::uint64_t seed) = MakeRandomProject;
};

/// GoogleTest prints a report by its name.
inline void PrintTo(const SModelledReport& report, std::ostream* out) {
  *out << report.name;
}

/// modelRows of a model that folds a project as it is made and answers the rows of one request
/// after the other.
template <class TModel>
std::vector<Texts> ModelRows(const SModelProject& project,
                             const std::vector<SModelRequest>& requests) {
  TModel model(project);
  std::vector<Texts> rows;
  for (const SModelRequest& request : requests) {
    rows.push_back(model.Rows(request));
  }
  return rows;
}

/// Requests that are made for each project.
constexpr int kRequestsPerProject = 4;

/// The requests that are made for a project, and the model's answers; none where its fold fails.
std::vector<SModelRequest> ModelRequests(const SModelProject& project, Report::EReportType type);
std::optional<std::vector<Texts>> ModelCells(const SModelledReport& report,
                                             const SModelProject& project,
                                             const std::vector<SModelRequest>& requests);

/// The seeds of a run: the one of the environment variable TALLY_MODEL_SEED, else 1 up to
/// TALLY_MODEL_COUNT, which is `count` where it is not set.
std::vector<std::uint64_t> ModelSeeds(int count);

/// Where the two arrays first differ, and the rows around that place; empty for equal arrays.
std::string FirstDifference(const Texts& engine, const Texts& model);

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_MODEL_COMPARISON_H_
