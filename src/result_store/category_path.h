// The path that names a component kind.
#ifndef TALLY_RESULT_STORE_CATEGORY_PATH_H_
#define TALLY_RESULT_STORE_CATEGORY_PATH_H_

#include <string>
#include <string_view>

/// "category\kind".
inline std::wstring CategoryPath(std::wstring_view category, std::wstring_view kind) {
  std::wstring path;
  path.reserve(category.size() + 1 + kind.size());
  path += category;
  path += L'\\';
  path += kind;
  return path;
}

#endif  // TALLY_RESULT_STORE_CATEGORY_PATH_H_
