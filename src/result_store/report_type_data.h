// Which component kinds are line work.
#ifndef TALLY_RESULT_STORE_REPORT_TYPE_DATA_H_
#define TALLY_RESULT_STORE_REPORT_TYPE_DATA_H_

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "platform/export.h"

/// Fixed table of the line categories and line kinds of each discipline. Made on first use, never
/// changed, lives to the end of the process.
class TALLY_API CReportTypeData {
 public:
  static CReportTypeData* Instance();

  /// Whether the category or the kind is line work. False for a discipline without an entry.
  bool IsPipeType(std::wstring_view spec, std::wstring_view category, std::wstring_view kind) const;
  /// The type heading of the calculation books: "管线" for line work, else the kind itself.
  std::wstring GetCategoryType(std::wstring_view spec, std::wstring_view category,
                               std::wstring_view kind) const;

 private:
  using TextSet = std::set<std::wstring, std::less<>>;
  struct SLineWork {
    TextSet categories;
    TextSet kinds;
  };
  CReportTypeData();
  std::map<std::wstring, SLineWork, std::less<>> specs_;
};

#endif  // TALLY_RESULT_STORE_REPORT_TYPE_DATA_H_
