#include "platform/portable/chapter_prefix_table.h"

#include <algorithm>
#include <utility>

CChapterPrefixTable::CChapterPrefixTable(std::vector<SPrefixChapter> chapters)
    : chapters_(std::move(chapters)) {
  std::stable_sort(
      chapters_.begin(), chapters_.end(),
      [](const SPrefixChapter& a, const SPrefixChapter& b) { return a.prefix < b.prefix; });
  const auto end = std::unique(
      chapters_.begin(), chapters_.end(),
      [](const SPrefixChapter& a, const SPrefixChapter& b) { return a.prefix == b.prefix; });
  chapters_.erase(end, chapters_.end());
  // In sorted order the prefixes of a text stand before it, each a prefix of the next.
  std::vector<std::size_t> open;
  shorter_.reserve(chapters_.size());
  for (std::size_t at = 0; at < chapters_.size(); ++at) {
    while (!open.empty() && !chapters_[at].prefix.starts_with(chapters_[open.back()].prefix)) {
      open.pop_back();
    }
    shorter_.push_back(open.empty() ? at : open.back());
    open.push_back(at);
  }
}

const SPrefixChapter* CChapterPrefixTable::Find(std::wstring_view code) const {
  const auto behind = std::upper_bound(
      chapters_.begin(), chapters_.end(), code,
      [](std::wstring_view text, const SPrefixChapter& chapter) { return text < chapter.prefix; });
  if (behind == chapters_.begin()) {
    return nullptr;
  }
  // Every prefix of the code is one of the last text before it, too, or that text itself.
  auto at = static_cast<std::size_t>(behind - chapters_.begin()) - 1;
  const std::wstring& nearest = chapters_[at].prefix;
  const auto common = static_cast<std::size_t>(
      std::mismatch(nearest.begin(), nearest.end(), code.begin(), code.end()).first -
      nearest.begin());
  while (chapters_[at].prefix.size() > common) {
    if (shorter_[at] == at) {
      return nullptr;
    }
    at = shorter_[at];
  }
  return &chapters_[at];
}
