// The main calculation item of each component kind.
#ifndef TALLY_RESULT_STORE_REPORT_MAIN_CAL_ITEM_DATA_H_
#define TALLY_RESULT_STORE_REPORT_MAIN_CAL_ITEM_DATA_H_

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/export.h"

/// Fixed table of the item that a report treats as a kind's quantity: it stands first under an
/// attribute and carries the formula of the calculation books. Made on first use, never changed,
/// lives to the end of the process.
class TALLY_API CReportMainCalItemData {
 public:
  static CReportMainCalItemData* Instance();

  /// The item by the kind's path, else by its category; empty where the table has neither.
  std::wstring GetMainCalItem(std::wstring_view spec, std::wstring_view category,
                              std::wstring_view kind) const;

 private:
  using TextMap = std::map<std::wstring, std::wstring, std::less<>>;
  struct SItems {
    TextMap byCategory;
    TextMap byPath;
  };
  CReportMainCalItemData();
  std::map<std::wstring, SItems, std::less<>> specs_;
};

#endif  // TALLY_RESULT_STORE_REPORT_MAIN_CAL_ITEM_DATA_H_
