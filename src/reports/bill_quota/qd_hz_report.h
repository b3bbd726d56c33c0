// Bill summary.
#ifndef TALLY_REPORTS_BILL_QUOTA_QD_HZ_REPORT_H_
#define TALLY_REPORTS_BILL_QUOTA_QD_HZ_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/bill_quota/bill_quota_report.h"

/// The bill items of one discipline by chapter, with what lies behind each bill's own quantity.
/// Folds the set of CTallyDataMng::GetQdDeHzData: the bills' own rows, where the bill is of the
/// project's bill library.
class TALLY_API CQdHzReport final : public CBillQuotaReport {
 public:
  /// Deepest rows shown.
  enum ELevelType : int {
    LevelItem = 0,
    LevelCategory = 1,
    LevelFloor = 2,
    LevelSysCode1 = 3,
    LevelSysCode2 = 4,
    LevelSysCode3 = 5,
    LevelDetail = 6,
  };

  CQdHzReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                           with `bySgd` not 0
  ///   "@C" chapter name, chapter number
  ///   "@QD" bill code, name, feature, unit, quantity
  ///   "@Cg" component kind path                              level 1 and up
  ///   "@A" attribute name, attribute value, unit, quantity   level 1 and up
  ///   "@F" floor node, selected floor, unit, quantity        level 2 and up
  ///   "@S1" name with remark, unit, quantity, references     level 3 and up; "@S2" 4, "@S3" 5
  ///   "@L" circuit, formula, unit, quantity, references      level 6
  /// Nothing for a discipline that has no data.
  void GetQdHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                   const Report::SNewCondition& requestCondition, int level, int bySgd);
};

#endif  // TALLY_REPORTS_BILL_QUOTA_QD_HZ_REPORT_H_
