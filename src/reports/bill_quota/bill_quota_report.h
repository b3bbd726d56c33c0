// The upper half of the walk of the three bill and quota summaries: chapters, items, component
// kinds, attributes.
#ifndef TALLY_REPORTS_BILL_QUOTA_BILL_QUOTA_REPORT_H_
#define TALLY_REPORTS_BILL_QUOTA_BILL_QUOTA_REPORT_H_

#include <cstddef>
#include <string>

#include "reports/shared/row_folder.h"
#include "reports/shared/summary_report.h"

/// What stands under a chapter.
enum class EChapterItems {
  BillsWithQuotas,  ///< bills, each with its own items and the quotas applied to it
  Bills,            ///< bills, as deep as the level opens
  Quotas,           ///< quotas, as deep as the level opens
};

/// The points in which the three differ.
struct SBillQuotaShape {
  SSummaryShape summary;
  EChapterItems items;
  CLevelTest categoryRow;
  CLevelTest attributeRow;
  bool showsChapterNumber;
};

class CBillQuotaReport : public CSummaryReport {
 protected:
  explicit CBillQuotaReport(const SBillQuotaShape& shape) : shape_(shape) {}

  /// The levels below the items, the same in all three.
  template <class TData>
  static void StateLevelsBelowItems(CRowFolder<TData>& fold) {
    fold.Category().Attribute().Floor().SysCode();
  }
  /// The levels of the items' chapter and of the items; `isQd` chooses the bill side.
  template <class TData>
  static void StateChapter(CRowFolder<TData>& fold, const TData& data, bool isQd) {
    fold.Level({ItemColumn<TData>(isQd)}, [&data, isQd](auto& to, auto& of) {
      return CReportDataMethod::GetChapter(to, ItemOf(data, of.row, isQd), isQd);
    });
  }
  template <class TData>
  static void StateItem(CRowFolder<TData>& fold, const TData& data, bool isQd) {
    fold.Level({ItemColumn<TData>(isQd)}, [&data, isQd](auto& to, auto& of) {
      return CReportDataMethod::GetQdDeItem(to, ItemOf(data, of.row, isQd), isQd);
    });
  }
  /// The record of an item; std::out_of_range for a bad index.
  template <class TData>
  static const KorDMRec::SKorDMQdDeRec& Item(const TData& data, int index, bool isQd) {
    return (isQd ? data.qdItems : data.deItems).at(static_cast<std::size_t>(index));
  }

  template <class TData>
  static typename CRowFolder<TData>::Column ItemColumn(bool isQd) {
    using TRow = typename CRowFolder<TData>::TRow;
    return isQd ? &TRow::qdItem : &TRow::deItem;
  }
  template <class TData, class TRow>
  static const KorDMRec::SKorDMQdDeRec& ItemOf(const TData& data, const TRow& row, bool isQd) {
    return Item(data, row.*ItemColumn<TData>(isQd), isQd);
  }

  void ShowItems(Report::CellArray& rows, const std::wstring& requestSpec,
                 const Report::SNewCondition& requestCondition, int level, int bySgd) {
    ShowRows(shape_.summary, rows, requestSpec, requestCondition, level, bySgd);
  }

 private:
  CCellBlock SpecRows(CSummaryWalk& walk, const CReportSpec& node) const final;
  CCellBlock ChapterRows(CSummaryWalk& walk, const CReportChapter& chapter) const;
  CCellBlock ItemRows(CSummaryWalk& walk, const CReportQdDeItem& item) const;
  CCellBlock BillRows(CSummaryWalk& walk, const CReportQdDeItem& bill) const;
  bool AddCategories(CSummaryWalk& walk, double& sum, CCellBlock& out, const CReportQdDeItem& item,
                     int level) const;
  bool AddCategory(CSummaryWalk& walk, double& sum, CCellBlock& out,
                   const CReportCategory& category, const std::wstring& unit, int level) const;
  bool AddAttribute(CSummaryWalk& walk, double& sum, CCellBlock& out,
                    const CReportAttribute& attribute, const std::wstring& unit, int level) const;

  const SBillQuotaShape& shape_;
};

#endif  // TALLY_REPORTS_BILL_QUOTA_BILL_QUOTA_REPORT_H_
