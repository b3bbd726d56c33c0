// Random projects for the paint, duct and insulation tables, which take in few rows of the others.
#ifndef TALLY_TESTS_MODEL_SPECIAL_PROJECT_H_
#define TALLY_TESTS_MODEL_SPECIAL_PROJECT_H_

#include <cstdint>

#include "model/random_project.h"

namespace tally_model {

/// The random project of a seed, with most disciplines, component kinds and calculation items of
/// its detail results replaced by ones that the table of `type` takes in, and its lines in some
/// more attributes. Some stay, and some pairs do not fit together.
SModelProject MakeSpecialProject(std::uint64_t seed, Report::EReportType type);

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_SPECIAL_PROJECT_H_
