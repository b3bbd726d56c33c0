// A table's rows on a sheet of a workbook.
#ifndef TALLY_HOST_TABLE_SHEET_H_
#define TALLY_HOST_TABLE_SHEET_H_

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "host/columns.h"
#include "host/sheet_look.h"
#include "host/workbook.h"
#include "rows/row_layouts.h"

/// The first column of every sheet: a row's depth in the row layout.
inline constexpr const wchar_t* kLevelHeading = L"级别";

/// Puts a text into a cell, "" leaves the cell without one. A text too long for a cell is cut.
void WriteText(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, std::wstring_view text,
               lxw_format* format);

/// How every sheet is printed; `project` (UTF-8) goes to the foot of each page.
void SetPages(lxw_worksheet* sheet, const std::string& project);

/// Headings in the first row, then a row for each of the table's, with an outline by depth.
class CTableSheet {
 public:
  /// All must outlive it. `look` has to be that of the columns.
  CTableSheet(CWorkbook& workbook, lxw_worksheet* sheet, const CColumns& columns,
              const SSheetLook& look);

  /// Once. Calls `afterRow` for each row.
  void Write(std::span<const SRow> rows, const std::function<void()>& afterRow);

  /// Texts that had to be cut.
  std::size_t Cuts() const { return cuts_; }

 private:
  void SetColumns();
  void WriteHeadings();
  void WriteRow(lxw_row_t at, const SRow& row);
  void WriteCell(lxw_row_t at, lxw_col_t column, const std::wstring* cell, ERowLook rowLook);
  ERowLook LookOfRow(const SRow& row) const;

  CWorkbook& workbook_;
  lxw_worksheet* sheet_;
  const CColumns& columns_;
  const SSheetLook& look_;
  std::size_t cuts_ = 0;
  std::string bytes_;  ///< of the cell at hand; kept for its room
};

#endif  // TALLY_HOST_TABLE_SHEET_H_
