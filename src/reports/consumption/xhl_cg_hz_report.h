// Over-height summary.
#ifndef TALLY_REPORTS_CONSUMPTION_XHL_CG_HZ_REPORT_H_
#define TALLY_REPORTS_CONSUMPTION_XHL_CG_HZ_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/consumption/consumption_report.h"

/// The quantities of one discipline above the working height, broken down as the consumption
/// summary does. Folds the set of CTallyDataMng::GetXhlCgData. It differs in what kShape states:
/// every calculation item opens in full and shows its two further texts, the first system codes all
/// come in order of name, floor rows show the drawing's floor, and the references of a result begin
/// with the extra "$".
class TALLY_API CXhlCgHzReport final : public CConsumptionReport {
 public:
  /// Deepest rows shown.
  enum ELevelType : int {
    LevelCategory = 0,
    LevelCalItem = 1,
    LevelFloor = 2,
    LevelSysCode1 = 3,
    LevelSysCode2 = 4,
    LevelSysCode3 = 5,
  };

  CXhlCgHzReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                               with `bySgd` not 0
  ///   "@Cg" component kind path
  ///   "@A" attribute name, attribute value, unit, quantity       of the main calculation item
  ///   "@CI" item's name, third and fourth text, unit, quantity   level 1 and up, the main item
  ///   first
  ///   "@F" floor node, drawing floor, unit, quantity             level 2 and up
  ///   "@S1" name with remark, unit, quantity, references         level 3 and up; "@S2" 4, "@S3" 5
  /// Nothing for a discipline that has no data.
  void GetCgHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                   const Report::SNewCondition& requestCondition, int level, int bySgd);
};

#endif  // TALLY_REPORTS_CONSUMPTION_XHL_CG_HZ_REPORT_H_
