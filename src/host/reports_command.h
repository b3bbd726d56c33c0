// `tally reports`: lists the reports and the disciplines that each holds.
#ifndef TALLY_HOST_REPORTS_COMMAND_H_
#define TALLY_HOST_REPORTS_COMMAND_H_

#include <string>

#include "host/output.h"

struct SReportsArguments {
  std::string file;  ///< UTF-8
};

/// Prints a line for each report. Throws CHostError for what cannot be read.
void RunReports(const SReportsArguments& arguments, COutput& output);

#endif  // TALLY_HOST_REPORTS_COMMAND_H_
