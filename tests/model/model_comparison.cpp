#include "model/model_comparison.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "platform/portable/utf8_text.h"

namespace tally_model {
namespace {

/// The cells from a few before `at` to a few behind it, that one in brackets.
std::string Around(const Texts& cells, std::size_t at) {
  constexpr std::size_t kBefore = 12;
  constexpr std::size_t kBehind = 8;
  std::string text;
  for (std::size_t i = at < kBefore ? 0 : at - kBefore; i < std::min(cells.size(), at + kBehind);
       ++i) {
    const std::string cell = Utf8FromWide(cells[i]);
    text += i == at ? " [[" + cell + "]]" : " |" + cell + "|";
  }
  return text + (at >= cells.size() ? " (end)" : "");
}

}  // namespace

std::vector<SModelRequest> ModelRequests(const SModelProject& project, Report::EReportType type) {
  CRandom random = RequestRandom(project.seed);
  std::vector<SModelRequest> requests;
  for (int i = 0; i < kRequestsPerProject; ++i) {
    requests.push_back(MakeRandomRequest(random, project, type));
  }
  return requests;
}

std::optional<std::vector<Texts>> ModelCells(const SModelledReport& report,
                                             const SModelProject& project,
                                             const std::vector<SModelRequest>& requests) {
  try {
    return report.modelRows(project, requests);
  } catch (const std::out_of_range&) {
    return std::nullopt;
  }
}

std::vector<std::uint64_t> ModelSeeds(int count) {
  if (const char* seed = std::getenv("TALLY_MODEL_SEED")) {
    return {std::strtoull(seed, nullptr, 10)};
  }
  const char* wanted = std::getenv("TALLY_MODEL_COUNT");
  const std::uint64_t last =
      wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : static_cast<std::uint64_t>(count);
  std::vector<std::uint64_t> seeds;
  for (std::uint64_t seed = 1; seed <= last; ++seed) {
    seeds.push_back(seed);
  }
  return seeds;
}

std::string FirstDifference(const Texts& engine, const Texts& model) {
  std::size_t at = 0;
  while (at < engine.size() && at < model.size() && engine[at] == model[at]) {
    ++at;
  }
  if (at == engine.size() && at == model.size()) {
    return "";
  }
  return "cell " + std::to_string(at) + " differs (" + std::to_string(engine.size()) +
         " cells of the engine, " + std::to_string(model.size()) +
         " of the model)\n  engine:" + Around(engine, at) + "\n  model: " + Around(model, at);
}

}  // namespace tally_model
