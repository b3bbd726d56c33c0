// The columns in which a report's rows are shown.
#ifndef TALLY_HOST_COLUMNS_H_
#define TALLY_HOST_COLUMNS_H_

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/report_types.h"
#include "rows/row_layouts.h"

struct SColumn {
  const SCellLayout* cell;
  bool isShown;  ///< false: there for programs, not for readers
};

/// Chosen columns of one report, in the order of their choice. A choice leaves columns out for
/// every reader; chains of references are in, but not shown unless they were chosen.
class CColumns {
 public:
  /// Every column, in the order that every row has them in: one that an inner row adds comes before
  /// those that follow it there.
  explicit CColumns(const SReportLayout& layout);

  /// Leaves those that are named by id or heading, as they are named; what the report does not have
  /// is passed over.
  void Choose(std::span<const std::wstring> names);
  /// Moves the columns with a state to the front in the order of the states, without those that are
  /// hidden. States know columns by their headings.
  void Apply(std::span<const Report::SColumnState> states);
  /// Without the columns that no row has.
  CColumns OccurringIn(std::span<const SRow> rows) const;

  const SReportLayout& Layout() const { return *layout_; }
  std::size_t Size() const { return columns_.size(); }
  const SColumn& operator[](std::size_t column) const { return columns_[column]; }
  auto begin() const { return columns_.begin(); }
  auto end() const { return columns_.end(); }

  /// Where rows of that kind, which must be of the layout, have the cell of a column; -1 where they
  /// have none.
  int Position(const SRowLayout& row, std::size_t column) const {
    return positions_[static_cast<std::size_t>(&row - layout_->rows.data())][column];
  }
  /// The cell of a row in a column; null where its kind has none.
  const std::wstring* Cell(const SRow& row, std::size_t column) const {
    const int at = Position(*row.layout, column);
    return at < 0 ? nullptr : &row.cells[static_cast<std::size_t>(at)];
  }

 private:
  void Take(std::vector<SColumn> columns);

  const SReportLayout* layout_;
  std::vector<SColumn> columns_;
  std::vector<std::vector<int>> positions_;  ///< by kind of row, then by column
};

/// Whether a column of the report is called so, by its id or its heading.
bool HasColumn(const SReportLayout& layout, std::wstring_view name);

#endif  // TALLY_HOST_COLUMNS_H_
