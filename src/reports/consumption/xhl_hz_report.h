// Consumption summary.
#ifndef TALLY_REPORTS_CONSUMPTION_XHL_HZ_REPORT_H_
#define TALLY_REPORTS_CONSUMPTION_XHL_HZ_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/consumption/consumption_report.h"

/// How much of each calculation item one discipline consumes, by component kind, attribute, floor
/// and system code. Folds the set of CTallyDataMng::GetXhlHzData.
class TALLY_API CXhlHzReport final : public CConsumptionReport {
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

  CXhlHzReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                          with `bySgd` not 0
  ///   "@Cg" component kind path
  ///   "@A" attribute name, attribute value, unit, quantity  of the main calculation item
  ///   "@CI" main item's name, unit, quantity                level 1 and up
  ///   "@F" floor node, selected floor, unit, quantity       level 2 and up
  ///   "@S1" name with remark, unit, quantity, references    level 3 and up; "@S2" 4, "@S3" 5
  ///   "@CI" other item's name, unit, quantity               level 1 and up, behind the main item
  /// Nothing for a discipline that has no data.
  void GetXhlHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                    const Report::SNewCondition& requestCondition, int level, int bySgd);
};

#endif  // TALLY_REPORTS_CONSUMPTION_XHL_HZ_REPORT_H_
