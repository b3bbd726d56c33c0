// Rows of a report as short texts, so that a failed comparison can be read.
#ifndef TALLY_TESTS_SUPPORT_ROWS_H_
#define TALLY_TESTS_SUPPORT_ROWS_H_

#include <string>
#include <vector>

#include "platform/portable/utf8_text.h"
#include "report_model/report_types.h"

namespace tally_test {

/// One text for each row: its cells joined by "|". A row begins at every cell that begins with "@";
/// for reports whose other cells never do.
inline std::vector<std::string> Rows(const Report::CellArray& cells) {
  std::vector<std::string> rows;
  for (const std::wstring& cell : cells) {
    if (rows.empty() || cell.starts_with(L'@')) {
      rows.push_back(Utf8FromWide(cell));
    } else {
      rows.back() += "|" + Utf8FromWide(cell);
    }
  }
  return rows;
}

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_ROWS_H_
