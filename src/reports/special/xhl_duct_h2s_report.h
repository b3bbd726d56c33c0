// Duct wall thickness table.
#ifndef TALLY_REPORTS_SPECIAL_XHL_DUCT_H2S_REPORT_H_
#define TALLY_REPORTS_SPECIAL_XHL_DUCT_H2S_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/special/special_report.h"
#include "result_store/db_records.h"

/// How much sheet metal of which material and thickness the ventilation ducts take. Folds the set
/// of CTallyDataMng::GetXhlDetailData: lengths and areas of rigid ducts and of duct sleeves,
/// grouped by type, material and thickness as the attribute lines tell them.
class TALLY_API CXhlDuctH2SReport final : public CSpecialReport {
 public:
  CXhlDuctH2SReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                                       with `bySgd` not 0
  ///   "@T" type:material:thickness(mm), unit, four quantities            of the main item
  ///   "@F" floor node, floor shown, references, unit, four quantities    level 2 and up
  ///   "@S" system code with remark, references, unit, four quantities    level 3 and up
  ///   "@CI" attribute name, value, item, references, unit, four quantities   level 1 and up
  ///   "@L" circuit, item, references, unit, four quantities              level 6
  /// Nothing for a discipline that has no data.
  virtual void GetDuctHData(Report::CellArray& rows, const std::wstring& requestSpec,
                            const Report::SNewCondition& requestCondition, int level, int bySgd);

  /// Whether a detail row belongs in the table.
  static bool CheckDuctHData(const KorDMRec::SKorDMSpecRec& spec,
                             const KorDMRec::SKorDMCategoryRec& category,
                             const KorDMRec::SKorDMCalItemDetailQRec& item);

 private:
  bool ShowsAtLevel0(const std::wstring& item, bool isMain) const override;
  bool FeedsHeads(const CReportCategory& category, const std::wstring& item) const override;
  bool SortsAscending(const CReportCategory& category) const override;
};

#endif  // TALLY_REPORTS_SPECIAL_XHL_DUCT_H2S_REPORT_H_
