// The chapters of one library, found by the beginning of an item's code.
#ifndef TALLY_PLATFORM_PORTABLE_CHAPTER_PREFIX_TABLE_H_
#define TALLY_PLATFORM_PORTABLE_CHAPTER_PREFIX_TABLE_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A chapter and the beginning of the codes that belong to it.
struct SPrefixChapter {
  std::wstring prefix;
  int number = 0;
  std::wstring name;
};

class CChapterPrefixTable {
 public:
  CChapterPrefixTable() = default;
  /// Of several chapters with one prefix the first counts.
  explicit CChapterPrefixTable(std::vector<SPrefixChapter> chapters);

  /// The chapter whose prefix is the longest that `code` begins with; null where there is none.
  /// Valid as long as the table.
  const SPrefixChapter* Find(std::wstring_view code) const;

 private:
  std::vector<SPrefixChapter> chapters_;  // by prefix
  // For each chapter the place of the longest other prefix that its own begins with, itself if
  // none.
  std::vector<std::size_t> shorter_;
};

#endif  // TALLY_PLATFORM_PORTABLE_CHAPTER_PREFIX_TABLE_H_
