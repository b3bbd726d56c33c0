// Fitting summary.
#ifndef TALLY_REPORTS_CONSUMPTION_PJ_HZ_REPORT_H_
#define TALLY_REPORTS_CONSUMPTION_PJ_HZ_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/shared/node_report.h"

/// The derived fittings with their counts, by floor, system code, component category and pipe line.
/// Folds the set of CTallyDataMng::GetPjHzData.
class TALLY_API CPjHzReport final : public CNodeReport {
 public:
  /// Which heads a fitting has.
  enum ELevelType : int {
    LevelItem = 0,
    LevelFloor = 1,
    LevelSysCode1 = 2,
    LevelSysCode2 = 3,
    LevelSysCode3 = 4,
  };

  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                             with `bySgd` not 0, over nothing
  ///   too
  /// and for each fitting all its heads:
  ///   "@F" floor node, floor shown                             any level but 0
  ///   "@S" system code with remark                             level 2 and up
  ///   "@Cg" component category
  ///   "@A" pipe line
  ///   "@CI" first text, fitting, unit, count, references
  /// Nothing for a discipline that has no data.
  virtual void GetPjHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                           const Report::SNewCondition& requestCondition, int level, int bySgd);

  /// System code levels that a level opens: 2 to 4 give 1 to 3, any other 0.
  static int GetSysCodeLevel(int level);
};

#endif  // TALLY_REPORTS_CONSUMPTION_PJ_HZ_REPORT_H_
