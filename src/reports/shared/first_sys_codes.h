// Which system codes of a floor the summaries walk.
#ifndef TALLY_REPORTS_SHARED_FIRST_SYS_CODES_H_
#define TALLY_REPORTS_SHARED_FIRST_SYS_CODES_H_

#include <vector>

#include "report_model/report_data_node.h"

/// Which of a floor's system codes are walked, and in which order.
enum class EFirstSysCodes {
  BySortNumber,  ///< by sort number; of equal ones the last in key order alone
  AllByKey,      ///< all, in key order
};

/// The system codes of a floor as the walk takes them.
std::vector<CReportSysCode*> FirstSysCodesOf(const CReportFloor& node, EFirstSysCodes choice);

#endif  // TALLY_REPORTS_SHARED_FIRST_SYS_CODES_H_
