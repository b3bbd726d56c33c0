// The registry of reports and filter trees.
#ifndef TALLY_REPORT_MNG_REPORT_MNG_H_
#define TALLY_REPORT_MNG_REPORT_MNG_H_

#include <map>
#include <memory>
#include <string>

#include "platform/export.h"
#include "report_mng/ireport.h"
#include "report_model/report_types.h"

/// Makes each report at most once for the open project, lets it fold its records at that moment and
/// keeps it until the project changes. What it hands out stays its own and is valid until Clear, or
/// for the calculation books until ClearXHLSysJSSReportData.
class TALLY_API CReportMng {
 public:
  static CReportMng* Instance();

  /// The report; null for a type without a class. `variant` chooses among the calculation books: 0
  /// member, 1 floor, any other system; no other type looks at it. What CreatData raises reaches
  /// the caller, and the next call folds anew.
  IReport* GetReportData(Report::EReportType type, int variant);
  /// The filter tree; null for an unknown type.
  IReport* GetTreeData(Report::ETreeType type);
  /// Drops the three calculation books, after a change of the divided-node switch.
  void ClearXHLSysJSSReportData();
  /// Drops everything.
  void Clear();

  /// The key that a report is filed under: the type's number, and "0@" with 0, 1 or 2 for the
  /// calculation books.
  static std::wstring CreateReportKey(Report::EReportType type, int variant);

 private:
  CReportMng() = default;

  std::map<std::wstring, std::unique_ptr<IReport>> reports_;
  std::map<Report::ETreeType, std::unique_ptr<IReport>> trees_;
};

#endif  // TALLY_REPORT_MNG_REPORT_MNG_H_
