// Paint work table.
#ifndef TALLY_REPORTS_SPECIAL_BRUSH_PAINT_REPORT_H_
#define TALLY_REPORTS_SPECIAL_BRUSH_PAINT_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/special/special_report.h"
#include "result_store/db_records.h"

/// How much surface is painted with which paint in which coat. Folds the set of
/// CTallyDataMng::GetXhlDetailData: pipes of the water disciplines and supports whose attribute has
/// a paint line, "paint,coats" joined by ";". Each coat is a group of its own.
class TALLY_API CBrushPaintReport final : public CSpecialReport {
 public:
  CBrushPaintReport();
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                                       with `bySgd` not 0
  ///   "@T" component category, paint:coat, unit, four quantities
  ///   "@F" floor node, floor shown, references, unit, four quantities    level 2 and up
  ///   "@S" system code with remark, references, unit, four quantities    level 3 and up
  ///   "@CI" attribute name, value, item, references, unit, four quantities   level 1 and up
  ///   "@L" circuit, item, references, unit, four quantities              level 6
  /// Nothing for a discipline that has no data.
  void GetBrushPaintData(Report::CellArray& rows, const std::wstring& requestSpec,
                         const Report::SNewCondition& requestCondition, int level, int bySgd);

  /// The prefix of the attribute line that a row's paint is read from; empty for no paint work.
  static std::wstring GetBrushCategory(const KorDMRec::SKorDMSpecRec& spec,
                                       const KorDMRec::SKorDMCategoryRec& category,
                                       const KorDMRec::SKorDMCalItemDetailQRec& item);
  /// "paint:coat"; a coat above nine has no word.
  static std::wstring GetBrushPaintName(const CReportBrushPaint& node);

 private:
  /// Whether the item's quantity is the painted area.
  bool IsBrushPaint(const CReportCategory& category, const std::wstring& item) const;

  bool ShowsAtLevel0(const std::wstring& item, bool isMain) const override;
  bool FeedsHeads(const CReportCategory& category, const std::wstring& item) const override;
  bool SortsAscending(const CReportCategory& category) const override;
};

#endif  // TALLY_REPORTS_SPECIAL_BRUSH_PAINT_REPORT_H_
