// The two settings that belong to no project.
#ifndef TALLY_REPORT_MNG_RESULT_CONFIG_H_
#define TALLY_REPORT_MNG_RESULT_CONFIG_H_

#include "platform/export.h"
#include "report_model/report_types.h"

/// The sort direction of pipe sizes, kept in the file "ReportConfig.ini" of the application's
/// folder, and the fixed table of each report's deepest level. Lives to the end of the process.
class TALLY_API CResultConfig {
 public:
  /// The one object. Made, and read from the file, on first use.
  static CResultConfig* Instance();

  /// True: of line work the largest size comes first. The setter does not save.
  bool GetLineSortDowm() const { return lineSortDown_; }
  void SetLineSortDowm(bool down) { lineSortDown_ = down; }

  /// Reads the key "LineSortUp" of section "ReportConfig": absent or empty is true, any other value
  /// false.
  void LoadConfig();
  /// Writes that key: empty for true, "FALSE" for false. A write that fails is not reported.
  void SaveConfig() const;

  /// The deepest level that a report offers; 0 for a type that is not in the table. For the host:
  /// no report consults it.
  int GetReportMaxLevel(Report::EReportType type) const;

 private:
  CResultConfig() = default;

  bool lineSortDown_ = true;
};

#endif  // TALLY_REPORT_MNG_RESULT_CONFIG_H_
