// The cells of the rows of the system calculation book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_ROW_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_ROW_H_

#include <array>
#include <string>

#include "report_model/cell_block.h"
#include "report_model/narrow_order.h"
#include "reports/calculation_books/system_book_items.h"

/// What a row stands for. Its texts outlive the request's cells.
struct SSystemRow {
  const std::wstring* SysCode = nullptr;   ///< with its remark; one object for each text
  const std::wstring* Category = nullptr;  ///< path
  const SAttSortKey* Attribute = nullptr;  ///< name and text
  SBookItemText CalItem;

  /// "@Cg" to the quantities of a row without system codes, its formula made of the first sum.
  void AddNodeRow(CCellBlock& out, const std::array<double, 4>& quantities, int floorCount,
                  const CCellSource& references) const;
  /// "@S" to the quantities of a row that sums up.
  void AddSysCodeRow(CCellBlock& out, const std::array<double, 4>& quantities, int floorCount,
                     const CCellSource& formula, const CCellSource& references) const;
  /// "@S" to the quantities of a circuit's row, whose `sums` are those of all floors.
  void AddLoopRow(CCellBlock& out, const CCellSource& loop, const CCellSource& formula,
                  const CCellSource& references, const std::array<double, 4>& sums) const;
};

/// The name of a circuit.
std::wstring LoopName(int number);

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_ROW_H_
