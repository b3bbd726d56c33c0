// The upper half of the walk of the consumption and over-height summaries: component kinds,
// attributes, calculation items.
#ifndef TALLY_REPORTS_CONSUMPTION_CONSUMPTION_REPORT_H_
#define TALLY_REPORTS_CONSUMPTION_CONSUMPTION_REPORT_H_

#include <string>

#include "reports/shared/row_folder.h"
#include "reports/shared/summary_report.h"
#include "result_store/db_records.h"

/// How a calculation item that is not the main one is shown.
enum class EOtherItems {
  OneRow,  ///< by one row, and not at all at level 0
  InFull,  ///< as deep as the main item
};
/// Whether a calculation item's row holds its third and fourth text.
enum class EItemTexts { Hidden, Shown };

/// The points in which the two summaries differ.
struct SConsumptionShape {
  SSummaryShape summary;
  EOtherItems otherItems;
  EItemTexts itemTexts;
};

class CConsumptionReport : public CSummaryReport {
 protected:
  explicit CConsumptionReport(const SConsumptionShape& shape) : shape_(shape) {}

  /// Folds a result set: discipline, component kind, attribute, calculation item, floor, system
  /// code, result.
  void FoldRows(const KorDMRec::SKorDMResultData& data);

  void ShowConsumption(Report::CellArray& rows, const std::wstring& requestSpec,
                       const Report::SNewCondition& requestCondition, int level, int bySgd) {
    ShowRows(shape_.summary, rows, requestSpec, requestCondition, level, bySgd);
  }

 private:
  CCellBlock SpecRows(CSummaryWalk& walk, const CReportSpec& node) const final;
  CCellBlock AttributeRows(CSummaryWalk& walk, const CReportAttribute& attribute,
                           const std::wstring& main) const;
  bool AddCalItem(CSummaryWalk& walk, Report::SResultData& target, CCellBlock& out,
                  const CReportCalItem& item, int level) const;

  const SConsumptionShape& shape_;
};

#endif  // TALLY_REPORTS_CONSUMPTION_CONSUMPTION_REPORT_H_
