// `tally status`: prints a report status file.
#ifndef TALLY_HOST_STATUS_COMMAND_H_
#define TALLY_HOST_STATUS_COMMAND_H_

#include <string>

#include "host/output.h"
#include "report_mng/report_status.h"

/// The file's name is UTF-8.
struct SStatusArguments {
  std::string file;
  bool json = false;  ///< as the batch protocol's STATE instead of lines to read
};

/// What a status file holds. It becomes the engine's own status, too. Throws CHostError, with the
/// file and the reason, for what is no status file.
SReportStatus ReadStatusFile(const std::string& file);

/// Prints to `output`. Throws CHostError.
void RunStatus(const SStatusArguments& arguments, COutput& output);

#endif  // TALLY_HOST_STATUS_COMMAND_H_
