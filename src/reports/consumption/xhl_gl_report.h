// Quantity overview.
#ifndef TALLY_REPORTS_CONSUMPTION_XHL_GL_REPORT_H_
#define TALLY_REPORTS_CONSUMPTION_XHL_GL_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/shared/node_report.h"
#include "reports/shared/section_choice.h"

/// One figure for each attribute within each group of the overview table (CReportXHlGlTypeData).
/// Folds the main calculation items of the set of CTallyDataMng::GetXhlGlData. It has no levels.
class TALLY_API CXhlGlReport final : public CNodeReport {
 public:
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                             with `bySgd` not 0
  ///   "@A" attribute name, unit, quantity
  /// The groups show in the order of the rows alone. Nothing for a discipline that has no data.
  virtual void GetGlData(Report::CellArray& rows, const std::wstring& requestSpec,
                         const Report::SNewCondition& requestCondition, int bySgd);

 private:
  class CQuantityWalk;

  void KeepSums() const;
  static CCellBlock GroupRows(const CReportType& group, bool largerFirst, CQuantityWalk& walk);
};

#endif  // TALLY_REPORTS_CONSUMPTION_XHL_GL_REPORT_H_
