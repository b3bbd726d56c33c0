// How the rows of a table are laid out on a sheet.
#ifndef TALLY_HOST_SHEET_LOOK_H_
#define TALLY_HOST_SHEET_LOOK_H_

#include <span>
#include <vector>

#include "host/columns.h"
#include "rows/row_layouts.h"

struct SColumnLook {
  int width = 0;           ///< of the widest line in characters, two for a Chinese one; has a limit
  bool isWrapped = false;  ///< a text has several lines or is wider than the limit
};

struct SSheetLook {
  int outermost = 0;  ///< the least depth among the rows
  int innermost = 0;
  std::vector<SColumnLook> columns;  ///< one for each column
};

/// What fits all of the rows.
SSheetLook LookOf(const CColumns& columns, std::span<const SRow> rows);

/// Lines that the row's texts take in columns of that look, at least 1.
int LinesOf(const SRow& row, const CColumns& columns, const SSheetLook& look);

#endif  // TALLY_HOST_SHEET_LOOK_H_
