// Names for the files of `tally report --all`.
#ifndef TALLY_HOST_FILE_NAMES_H_
#define TALLY_HOST_FILE_NAMES_H_

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "host/report_catalog.h"

/// Hands out names that every file system takes, no two of which differ in ASCII case alone.
class CFileNames {
 public:
  /// `extension` ends every name; it has its dot.
  explicit CFileNames(std::string extension) : extension_(std::move(extension)) {}

  /// "REPORT_DISCIPLINE.txt" or "REPORT-VARIANT_DISCIPLINE.txt" in UTF-8. What no file name may
  /// hold becomes "_", a long discipline is cut, and a name that was handed out gets a number.
  std::string NameOf(const SCatalogReport& report, std::wstring_view spec);

 private:
  const std::string extension_;
  std::set<std::string> taken_;  ///< in lower case
};

#endif  // TALLY_HOST_FILE_NAMES_H_
