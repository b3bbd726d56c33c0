// Cells of a report on their way up the walk.
#ifndef TALLY_REPORT_MODEL_CELL_BLOCK_H_
#define TALLY_REPORT_MODEL_CELL_BLOCK_H_

#include <cstddef>
#include <list>
#include <string>
#include <utility>

#include "platform/export.h"
#include "report_model/report_types.h"

/// A cell array in the making: rows that are linked, so that a block goes behind another one in
/// constant time and every cell is moved once, when the array is finished.
class TALLY_API CCellBlock {
 public:
  CCellBlock() = default;
  explicit CCellBlock(Report::CellArray cells) { AddRow(std::move(cells)); }

  bool Empty() const { return rows_.empty(); }
  std::size_t Size() const;

  /// Appends the cells of one row; no cells, no row.
  void AddRow(Report::CellArray&& cells) {
    if (!cells.empty()) {
      rows_.push_back(std::move(cells));
    }
  }

  /// Appends one row of the given texts.
  template <class... TText>
  void AddTexts(TText&&... texts) {
    Report::CellArray row;
    row.reserve(sizeof...(texts));
    (row.emplace_back(std::forward<TText>(texts)), ...);
    AddRow(std::move(row));
  }

  /// Moves all of `block` behind this one's cells; `block` is empty afterwards.
  void Append(CCellBlock&& block) { rows_.splice(rows_.end(), block.rows_); }

  /// Moves all cells behind those of `out`; this block is empty afterwards.
  void MoveTo(Report::CellArray& out);

  /// A copy of all cells.
  Report::CellArray Cells() const;

 private:
  std::list<Report::CellArray> rows_;
};

#endif  // TALLY_REPORT_MODEL_CELL_BLOCK_H_
