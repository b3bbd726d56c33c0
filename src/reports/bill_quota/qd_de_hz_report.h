// Bill and quota summary.
#ifndef TALLY_REPORTS_BILL_QUOTA_QD_DE_HZ_REPORT_H_
#define TALLY_REPORTS_BILL_QUOTA_QD_DE_HZ_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/bill_quota/bill_quota_report.h"

/// The quantities of one discipline by chapter and bill item, each bill with its own quantity and
/// the quotas applied to it. Folds the set of CTallyDataMng::GetQdDeHzData: rows whose bill is of
/// the project's bill library and, if they are a quota's, whose quota is of the library that goes
/// with it. A bill's own item is the quota item without code and name.
class TALLY_API CQdDeHzReport final : public CBillQuotaReport {
 public:
  /// Deepest rows shown.
  enum ELevelType : int {
    LevelQd = 0,
    LevelDe = 1,
    LevelCategory = 2,
    LevelFloor = 3,
    LevelSysCode1 = 4,
    LevelSysCode2 = 5,
    LevelSysCode3 = 6,
    LevelDetail = 7,
  };

  CQdDeHzReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                           with `bySgd` not 0
  ///   "@C" chapter name, chapter number
  ///   "@QD" bill code, name, feature, unit, quantity         one row for each unit of its own
  ///   items
  ///   "@DE" quota code, name, unit, quantity                 level 1 and up
  ///   "@Cg" component kind path                              level 2 and up
  ///   "@A" attribute name, attribute value, unit, quantity   level 2 and up
  ///   "@F" floor node, selected floor, unit, quantity        level 3 and up
  ///   "@S1" name with remark, unit, quantity, references     level 4 and up; "@S2" 5, "@S3" 6
  ///   "@L" circuit, formula, unit, quantity, references      level 7
  /// Nothing for a discipline that has no data.
  void GetQdDeHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                     const Report::SNewCondition& requestCondition, int level, int bySgd);
};

#endif  // TALLY_REPORTS_BILL_QUOTA_QD_DE_HZ_REPORT_H_
