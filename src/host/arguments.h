// The command line.
#ifndef TALLY_HOST_ARGUMENTS_H_
#define TALLY_HOST_ARGUMENTS_H_

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "host/check_command.h"
#include "host/config_command.h"
#include "host/report_command.h"
#include "host/reports_command.h"
#include "host/status_command.h"
#include "host/tree_command.h"

struct SDemoArguments {
  std::string file;
  std::int64_t rows = 0;  ///< 0: the example project as it is
};
struct SBatchArguments {
  std::string file;
};
/// A text for standard output instead of a command.
struct SHelpText {
  std::string text;
};
using Arguments =
    std::variant<SDemoArguments, SReportArguments, SReportsArguments, STreeArguments,
                 SCheckArguments, SBatchArguments, SStatusArguments, SConfigArguments, SHelpText>;

/// Reads what follows the program's name (UTF-8). Throws CHostError.
Arguments ReadArguments(const std::vector<std::string>& words);

#endif  // TALLY_HOST_ARGUMENTS_H_
