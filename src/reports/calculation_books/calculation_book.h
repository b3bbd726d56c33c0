// What the three calculation books share.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_CALCULATION_BOOK_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_CALCULATION_BOOK_H_

#include <functional>
#include <string>
#include <utility>

#include "report_mng/report_status_mng.h"
#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "reports/calculation_books/book_figures.h"
#include "reports/shared/node_report.h"
#include "reports/shared/picked_floor.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/section_choice.h"
#include "result_store/tally_data_mng.h"

/// A book folds the detail results and shows, beside the figures, how each came about. Its type
/// level exists where the divided-node switch was on at the fold; a request looks for it where the
/// switch is on at the request. Where the two differ, nothing is found and nothing shows.
class CCalculationBook : public CNodeReport {
 protected:
  /// Folds the detail rows. `path(fold, isDivided)` states the book's nesting; `start()` is called
  /// ahead of the first node.
  template <class TPath, class TStart>
  void FoldDetails(TPath&& path, TStart&& start) {
    const auto& data = CTallyDataMng::Instance()->GetXhlDetailData();
    const bool isDivided = CReportStatusMng::Instance()->GetIsDividedNode();
    CRowFolder fold(root, data);
    path(fold, isDivided);
    for (const auto& row : data.rows) {
      fold.Add(row);
    }
    start();
    fold.Fold();
  }
  template <class TPath>
  void FoldDetails(TPath&& path) {
    FoldDetails(std::forward<TPath>(path), [] {});
  }

  /// Makes the rows below one node.
  using NodeRows = std::function<CCellBlock(const IReportDataNode& node, bool isLineWork)>;
  /// Makes the rows of one floor.
  using FloorRows =
      std::function<CCellBlock(const CReportFloor& floor, const CPickedFloor& picked)>;
  /// Adds the row of one calculation item: "@CI", name, unit, formula, references, four sums. None
  /// where nothing counts.
  using AddItemRow = std::function<void(CCellBlock& out, const SFigureRow& row)>;

  /// The "@F" blocks of the floors that the filter selects, by height: floor node, selected floor,
  /// then the rows. A floor without rows has no block.
  CCellBlock FloorBlocks(const CReportSpec& node, const FloorRows& rowsOf) const;
  /// The rows below a node that may be divided by type. Undivided they go to `out`. Divided, each
  /// type stands under "@T" and its name: line work goes to `lineWork` at once, the other types
  /// follow in `out` by the sort number of their first kind, where a second type of equal number is
  /// dropped.
  void AddTypes(CCellBlock& lineWork, CCellBlock& out, const IReportDataNode& node,
                const NodeRows& rowsOf) const;
  /// The component kinds among `children` that the filter selects, by sort number: "@Cg" path, then
  /// for each attribute "@A" name, value, the rows of the main items, those of the others by name
  /// and unit. `figures` has the items of all these kinds.
  CCellBlock KindBlocks(const Report::NodeMap& children, const SBookFigures& figures,
                        const AddItemRow& addRow) const;

 private:
  CCellBlock KindBlock(const CReportCategory& category, const SBookFigures& figures,
                       const AddItemRow& addRow) const;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_CALCULATION_BOOK_H_
