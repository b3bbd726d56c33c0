// Names for the sheets of a workbook.
#ifndef TALLY_HOST_SHEET_NAMES_H_
#define TALLY_HOST_SHEET_NAMES_H_

#include <set>
#include <string>
#include <string_view>

#include "host/report_catalog.h"

/// The report's display name in UTF-8, with the variant for one that has variants:
/// "系统计算书按楼层".
std::string ShownTitle(const SCatalogReport& report);

/// Hands out names that spreadsheets take, no two of which they would take for the same.
class CSheetNames {
 public:
  /// `front` (UTF-8) is the name of a sheet that is there already.
  explicit CSheetNames(std::string_view front);

  /// "TITLE DISCIPLINE" in UTF-8, with at most 31 UTF-16 units. What no sheet name may hold becomes
  /// "_", a long name is cut, and one that was handed out gets a number: "TITLE DISCIPLINE (2)".
  std::string NameOf(const SCatalogReport& report, std::wstring_view spec);

 private:
  std::set<std::u32string> taken_;  ///< with case and width folded
};

#endif  // TALLY_HOST_SHEET_NAMES_H_
