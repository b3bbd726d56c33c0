// The fixed classification tables, written down a second time as plain rows.
#ifndef TALLY_TESTS_MODEL_MODEL_TABLES_H_
#define TALLY_TESTS_MODEL_MODEL_TABLES_H_

#include <string>

namespace tally_model {

/// Whether a component kind is line work.
bool IsPipeType(const std::wstring& spec, const std::wstring& category, const std::wstring& kind);

/// The type heading of the calculation books: "管线" for line work, else the kind.
std::wstring BookType(const std::wstring& spec, const std::wstring& category,
                      const std::wstring& kind);

/// The main calculation item of a kind; empty where there is none.
std::wstring MainCalItem(const std::wstring& spec, const std::wstring& category,
                         const std::wstring& kind);

/// The overview's group of a kind; null where the table has none.
struct SOverviewGroup {
  const wchar_t* spec;
  const wchar_t* key;  ///< a path "category\kind" or a category
  bool byPath;
  const wchar_t* name;
  int sortId;
};
const SOverviewGroup* OverviewGroup(const std::wstring& spec, const std::wstring& category,
                                    const std::wstring& kind);

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_MODEL_TABLES_H_
