// `tally check`: looks for faults in the data of a project.
#ifndef TALLY_HOST_CHECK_COMMAND_H_
#define TALLY_HOST_CHECK_COMMAND_H_

#include <string>

#include "host/output.h"

struct SCheckArguments {
  std::string file;  ///< UTF-8
};

/// Prints the version, the number of rows of each table and one line for each fault: a table that
/// cannot be read, a reference without a record, a text that is not well-formed or holds U+0000.
/// False where there was a fault. Throws CHostError for what does not open.
bool RunCheck(const SCheckArguments& arguments, COutput& output);

#endif  // TALLY_HOST_CHECK_COMMAND_H_
