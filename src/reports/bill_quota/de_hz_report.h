// Quota summary.
#ifndef TALLY_REPORTS_BILL_QUOTA_DE_HZ_REPORT_H_
#define TALLY_REPORTS_BILL_QUOTA_DE_HZ_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/bill_quota/bill_quota_report.h"

/// The quota items of one discipline by chapter, whether or not they hang under bills. Folds the
/// set of CTallyDataMng::GetQdDeHzData: the quotas' rows, chosen by the project's quota mode
/// (CAtt::GetQdDeMode), which is read at the fold and not again.
class TALLY_API CDeHzReport final : public CBillQuotaReport {
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

  CDeHzReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                           with `bySgd` not 0
  ///   "@C" chapter name
  ///   "@DE" quota code, name, unit, quantity
  ///   "@Cg" component kind path                              level 1 and up
  ///   "@A" attribute name, attribute value, unit, quantity   level 1 and up
  ///   "@F" floor node, selected floor, unit, quantity        level 2 and up
  ///   "@S1" name with remark, unit, quantity, references     level 3 and up; "@S2" 4, "@S3" 5
  ///   "@L" circuit, formula, unit, quantity, references      level 6
  /// Nothing for a discipline that has no data.
  void GetDeHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                   const Report::SNewCondition& requestCondition, int level, int bySgd);
};

#endif  // TALLY_REPORTS_BILL_QUOTA_DE_HZ_REPORT_H_
