// The groups of the quantity overview.
#ifndef TALLY_RESULT_STORE_REPORT_XHL_GL_TYPE_DATA_H_
#define TALLY_RESULT_STORE_REPORT_XHL_GL_TYPE_DATA_H_

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/export.h"

/// Fixed table that folds component kinds into the coarser groups of the overview. Made on first
/// use, never changed, lives to the end of the process.
class TALLY_API CReportXHlGlTypeData {
 public:
  static CReportXHlGlTypeData* Instance();

  /// The group of a kind: by its path, else by its category, else the kind itself.
  std::wstring GetCategoryType(std::wstring_view spec, std::wstring_view category,
                               std::wstring_view kind) const;
  /// The group's sort number, always negative; CTallyDataMng::GetCategorySortId of the path where
  /// the table has neither path nor category.
  int GetSortId(std::wstring_view spec, std::wstring_view category, std::wstring_view kind) const;

 private:
  struct SGroup {
    int sortId;
    std::wstring name;
  };
  using GroupMap = std::map<std::wstring, SGroup, std::less<>>;
  struct SGroups {
    GroupMap byPath;
    GroupMap byCategory;
  };
  CReportXHlGlTypeData();
  const SGroup* Find(std::wstring_view spec, std::wstring_view category,
                     std::wstring_view kind) const;
  std::map<std::wstring, SGroups, std::less<>> specs_;
};

#endif  // TALLY_RESULT_STORE_REPORT_XHL_GL_TYPE_DATA_H_
