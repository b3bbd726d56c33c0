// Random small projects and requests, for comparing the engine with the models of this folder.
//
//   const SModelProject project = MakeRandomProject(seed);
//   CRandom random = RequestRandom(seed);
//   const SModelRequest request = MakeRandomRequest(random, project, Report::ReportXhlHz);
//
// A seed gives the same project everywhere: the numbers come from CRandom alone, never from the
// standard library's distributions. A project holds 5 to 80 rows in each result set. Its texts come
// from small pools that are drawn anew for each project, so that keys collide often; the pools hold
// empty texts, texts that read like markers, sizes with equal value and other spelling, malformed
// floor expressions, system codes of 0 to 5 levels, characters that no code page has, and numbers
// of every size. Sort numbers repeat and are missing for some kinds and codes.
//
// model_test.h installs a project into the fake platform and runs the comparison.
#ifndef TALLY_TESTS_MODEL_RANDOM_PROJECT_H_
#define TALLY_TESTS_MODEL_RANDOM_PROJECT_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "report_model/report_types.h"
#include "support/fake_platform.h"

namespace tally_model {

/// A small generator whose numbers are the same with every compiler and library. The order of the
/// calls is part of the result: never two of them in one unordered expression.
class CRandom {
 public:
  explicit CRandom(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next();
  /// 0 up to `count` - 1. REQUIRES: count > 0.
  int Below(int count);
  /// `first` up to `last`, both included.
  int Between(int first, int last);
  bool Chance(int percent);
  /// One of `items`. REQUIRES: it is not empty.
  template <class TItem>
  const TItem& Pick(const std::vector<TItem>& items) {
    return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
  }
  /// `count` picks out of `items`; one item may come more than once.
  template <class TItem>
  std::vector<TItem> PickSome(const std::vector<TItem>& items, int count) {
    std::vector<TItem> some;
    for (int i = 0; i < count; ++i) {
      some.push_back(Pick(items));
    }
    return some;
  }

 private:
  std::uint64_t state_;
};

/// The texts that the rows of a project were drawn from, for making requests that meet them.
struct SModelPools {
  std::vector<std::wstring> specs;
  std::vector<KorDMRec::SKorDMFloorRec> floors;
  std::vector<KorDMRec::SKorDMCategoryRec> categories;
  std::vector<KorDMRec::SKorDMAttrRec> attrs;
  std::vector<std::wstring> sysCodes;  ///< paths, names joined by "\"
  std::vector<std::wstring> sections;
  std::vector<std::wstring> components;
  std::vector<std::wstring> itemNames;
  std::vector<std::wstring> units;
  std::vector<std::wstring> expressions;
  std::vector<double> quantities;
  std::vector<KorDMRec::SKorDMQdDeRec> qdItems;
  std::vector<KorDMRec::SKorDMQdDeRec> deItems;  ///< the first ones have neither code nor name
};

/// Everything that the engine can ask for while a project is open.
struct SModelProject {
  std::uint64_t seed = 0;
  SModelPools pools;
  tally_test::SProjectRecords records;
  bool isQdMode = true;
  int codePage = 936;

  // The project's settings; other settings are empty.
  std::wstring deCode;
  std::wstring qdCode;
  std::wstring qdDeCode;
  int qdDeMode = 0;
  std::map<std::wstring, std::vector<std::wstring>> marks;        ///< by bill code, groups of three
  std::map<std::wstring, tally_test::SFakeChapter> billChapters;  ///< by bill code
  std::map<std::wstring, tally_test::SFakeChapter> quotaChapters;  ///< by quota code
};

/// One request for rows, with the state that it is made in.
struct SModelRequest {
  std::wstring spec;
  Report::SNewCondition condition;
  int level = 0;
  int bySgd = 0;
  Report::EReportType totalType = Report::ReportNone;  ///< insulation table only

  // CReportStatusMng and CResultConfig.
  std::vector<std::wstring> dispSgd;  ///< SetDispSgd
  bool isBySgd = false;               ///< SetIsBySgd
  bool divided = false;  ///< SetIsDividedNode; calculation books only, and before their fold
  bool lineSortDown = true;
};

/// The project of a seed. Few projects hold a row with an index outside its vector.
SModelProject MakeRandomProject(std::uint64_t seed);

/// Where the requests of a seed's project begin; independent of how the project was made.
CRandom RequestRandom(std::uint64_t seed);

/// A request that mostly meets rows of the project. `type` decides what is drawn besides: the type
/// that the insulation table totals, and the divided switch of the calculation books.
SModelRequest MakeRandomRequest(CRandom& random, const SModelProject& project,
                                Report::EReportType type);

/// All of the request in one line of UTF-8, for the message of a failed comparison.
std::string Describe(const SModelRequest& request);

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_RANDOM_PROJECT_H_
