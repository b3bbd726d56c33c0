// The table of report and tree classes, for the registry alone.
#ifndef TALLY_REPORT_MNG_REPORT_CLASSES_H_
#define TALLY_REPORT_MNG_REPORT_CLASSES_H_

#include <memory>

#include "report_mng/ireport.h"
#include "report_model/report_types.h"

/// A new report or tree, not yet folded; null for a type without a class.
std::unique_ptr<IReport> CreateReport(Report::EReportType type, int variant);
std::unique_ptr<IReport> CreateTree(Report::ETreeType type);

#endif  // TALLY_REPORT_MNG_REPORT_CLASSES_H_
