// Insulation table.
#ifndef TALLY_REPORTS_SPECIAL_XHL_PIPE_JRBW_REPORT_H_
#define TALLY_REPORTS_SPECIAL_XHL_PIPE_JRBW_REPORT_H_

#include <array>
#include <set>
#include <string>
#include <string_view>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/special/special_report.h"

/// How much insulation of which material and thickness ducts, water pipes and tanks take. Folds the
/// set of CTallyDataMng::GetXhlDetailData: the main item and the volume item of components whose
/// attribute has an insulation thickness, grouped by insulated type, material and thickness. A row
/// with a bad index is passed over.
class TALLY_API CXhlPipeJRBWReport final : public CSpecialReport {
 public:
  CXhlPipeJRBWReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`; `type` names the report whose total is asked
  /// for (Report::ReportPipeJRBW):
  ///   "@P" section                                                       with `bySgd` not 0
  ///   "@T" type, material:thickness(mm), volume item, unit, four quantities
  ///   "@F" floor shown, floor node, unit, references, four quantities    level 2 and up
  ///   "@S" system code and remark, unit, references, four quantities     level 3 and up
  ///   "@CI" attribute name, value, item, unit, references, four quantities   level 1 and up
  ///   "@L" circuit, item, unit, references, four quantities              level 6
  /// A block whose first total is 0 is left out. Nothing for a discipline that has no data, or
  /// where the filter's component kinds leave nothing (CheckIsOk); the stored condition then stays.
  virtual void GetPipeJRBWData(Report::CellArray& rows, const std::wstring& requestSpec,
                               const Report::SNewCondition& requestCondition, int level,
                               Report::EReportType type, int bySgd);

  /// Whether a detail row belongs in the table.
  static bool CheckIsNeedData(std::wstring_view spec, std::wstring_view category,
                              std::wstring_view kind, std::wstring_view item);
  /// Whether a filter leaves anything for the table: none, or a kind of one of its categories.
  static bool CheckIsOk(const std::set<std::wstring>& filter);

 private:
  bool ShowsAtLevel0(const std::wstring& item, bool isMain) const override;
  bool FeedsHeads(const CReportCategory& category, const std::wstring& item) const override;
  bool SortsAscending(const CReportCategory& category) const override;

  bool IsVolume(const std::wstring& item) const {
    return item.find(totalItem_) != std::wstring::npos;
  }

  std::wstring totalItem_;  ///< of the request: what the name of a volume item contains
};

#endif  // TALLY_REPORTS_SPECIAL_XHL_PIPE_JRBW_REPORT_H_
