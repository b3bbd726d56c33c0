// `tally report`: prints one report, or writes all of them.
#ifndef TALLY_HOST_REPORT_COMMAND_H_
#define TALLY_HOST_REPORT_COMMAND_H_

#include <optional>
#include <string>
#include <vector>

#include "host/output.h"

/// What the command line asks for; all texts are UTF-8 and not yet checked.
struct SReportArguments {
  std::string file;
  bool all = false;                    ///< every report, into `out`
  std::string report;                  ///< name, display name or number
  std::optional<std::string> variant;  ///< name or number
  std::vector<std::string> specs;      ///< empty: every discipline of the report
  std::optional<std::string> level;    ///< left out: the deepest
  /// A status file for all that the members below leave out.
  std::optional<std::string> status;
  bool divided = false;  ///< calculation books divided by type
  bool bySection = false;
  std::vector<std::string> sections;
  std::vector<std::string> floors;  ///< DRAWING or DRAWING=FLOOR
  std::vector<std::string> categories;
  std::vector<std::string> sysCodes;
  std::optional<bool> sortDown;        ///< left out: as the configuration says
  std::optional<std::string> columns;  ///< ids or headings, parted by ","; left out: by the status
  std::string format = "table";        ///< the name of a format
  bool csvSafe = false;                ///< csv and tsv: no text that a spreadsheet takes to compute
  bool stats = false;                  ///< phase times and sizes to standard error
  std::string out;  ///< a file or, with `all` in most formats, a folder; empty: standard output
};

/// Prints to `standardOutput`, or to the file or folder that the arguments name. Throws CHostError.
void RunReport(const SReportArguments& arguments, COutput& standardOutput);

#endif  // TALLY_HOST_REPORT_COMMAND_H_
