// The rows of the system calculation book where the fold knows their order.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_ORDERED_SYSTEM_ROWS_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_ORDERED_SYSTEM_ROWS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "report_model/report_types.h"
#include "reports/calculation_books/system_book_items.h"
#include "reports/calculation_books/system_book_rows.h"
#include "reports/calculation_books/system_row.h"
#include "reports/shared/sys_code_walk.h"

/// Makes the rows of CSystemBookRows for nodes of which every result counts on its own floors:
/// sorts attributes instead of filling sets with results. Lives for one request, whose cells view
/// its texts.
class COrderedSystemRows {
 public:
  COrderedSystemRows(const CSystemBookItems* items, const CSysCodeWalk& sysCodes,
                     const Report::SNewCondition& condition)
      : items_(items), sysCodes_(sysCodes), condition_(condition) {}

  /// Appends the rows of a floor or type. Where their ordering is not consistent it answers false
  /// and appends nothing.
  bool Add(CCellBlock& out, CShownSystems& shown, const IReportDataNode& parent);

 private:
  /// An attribute of a system code, with the beginning of the key of its rows.
  struct SEntry {
    int sysCodeSortId;
    int categorySortId;
    int place;
    std::uint32_t number;  ///< in the order of the walk
    const CShownSystems::SSysCode* sysCode;
    const SBookAttribute* attribute;
    bool largerFirst;

    const std::wstring& Value() const { return attribute->texts->value; }
    bool IsOfGroup(const SEntry& other) const {
      return sysCodeSortId == other.sysCodeSortId && categorySortId == other.categorySortId &&
             place == other.place && Value() == other.Value();
    }
    bool operator<(const SEntry& other) const;
  };
  struct SEntryItem {
    const SEntry* entry;
    const SBookItem* item;
  };
  using Group = std::span<const SEntry>;

  void Collect(CShownSystems& shown, const IReportDataNode& parent);
  bool Takes(const SBookKind& kind) const;
  bool IsOrder(int level) const;
  void AddGroup(CCellBlock& out, int level, Group group);
  void CollectItems(Group group);
  void CollectMainItems(Group group);
  void AddSum(CCellBlock& out, int level, std::span<const SEntryItem> items);
  void JoinTerms(int level);
  void AddLoops(CCellBlock& out);
  SSystemRow RowOf(const SEntryItem& item) const;

  const CSystemBookItems* items_;
  const CSysCodeWalk& sysCodes_;
  const Report::SNewCondition& condition_;
  std::vector<SEntry> entries_;
  // Of one group: its items in the order of rows, the main ones in that of the walk.
  std::vector<SEntryItem> groupItems_;
  std::vector<SEntryItem> mainItems_;
  std::wstring_view formula_;
  std::wstring_view references_;
  bool keepsTerms_ = false;
  std::wstring joinedFormula_;
  std::wstring joinedReferences_;
  std::deque<std::wstring> loopNames_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_ORDERED_SYSTEM_ROWS_H_
