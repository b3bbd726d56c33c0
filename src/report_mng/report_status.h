// All that is remembered of what the user chose for the reports of a project.
#ifndef TALLY_REPORT_MNG_REPORT_STATUS_H_
#define TALLY_REPORT_MNG_REPORT_STATUS_H_

#include <map>
#include <string>
#include <vector>

#include "report_model/report_types.h"

/// Remembered selections of a discipline.
struct TJTreeRec {
  SysCodeMemTJInfo sysCode;
  FloorTJInfo floor;
  SysCodeMemTJInfo member;
};

/// Keys are the names of reports and disciplines, the empty text among them.
struct SReportStatus {
  bool isDividedNode = false;         ///< the calculation books divide their trees by type
  bool isBySgd = false;               ///< results are counted by construction section
  std::vector<std::wstring> dispSgd;  ///< the displayed construction sections
  std::map<std::wstring, NewReportConfigRec> reports;
  std::map<std::wstring, Report::SNewCondition> conditions;
  std::wstring curSpec;
  std::wstring curReport;
  std::map<std::wstring, TJTreeRec> trees;
};

#endif  // TALLY_REPORT_MNG_REPORT_STATUS_H_
