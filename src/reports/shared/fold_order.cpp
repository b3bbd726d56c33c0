#include "reports/shared/fold_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

void CTextRanks::Add(std::uint32_t record, std::wstring_view text) {
  if (record >= ranks_.size()) {
    ranks_.resize(std::max<std::size_t>(record + std::size_t{1}, 2 * ranks_.size()), kUnknown);
  }
  auto at = texts_.find(text);
  if (at == texts_.end()) {
    at = texts_.emplace(text, static_cast<std::uint32_t>(texts_.size())).first;
  }
  ranks_[record] = at->second;
  ++added_;
}

void CTextRanks::Rank() {
  for (const auto& [text, number] : texts_) {
    sorted_.push_back(text);
  }
  std::sort(sorted_.begin(), sorted_.end());
  std::vector<std::uint32_t> rankOf(sorted_.size());
  for (std::size_t i = 0; i < sorted_.size(); ++i) {
    rankOf[texts_.find(sorted_[i])->second] = static_cast<std::uint32_t>(i);
  }
  for (std::uint32_t& rank : ranks_) {
    if (rank != kUnknown) {
      rank = rankOf[rank];
    }
  }
}

unsigned CTextRanks::Bits() const {
  return sorted_.empty() ? 0 : static_cast<unsigned>(std::bit_width(sorted_.size() - 1));
}

bool CTextRanks::HasText(std::wstring_view text) const {
  return texts_.find(text) != texts_.end();
}

void SortEntries(std::vector<SFoldEntry>& entries, unsigned bits) {
  constexpr unsigned kDigit = 11;
  constexpr std::size_t kValues = std::size_t{1} << kDigit;
  std::vector<SFoldEntry> sorted(entries.size());
  for (unsigned shift = 0; shift < bits; shift += kDigit) {
    const auto digit = [shift](const SFoldEntry& entry) {
      SFoldEntry moved = entry;
      if (shift >= SFoldEntry::kWord) {
        moved.low = entry.high >> (shift - SFoldEntry::kWord);
      } else if (shift > 0) {
        moved.low = entry.low >> shift | entry.high << (SFoldEntry::kWord - shift);
      }
      return static_cast<std::size_t>(moved.low) & (kValues - 1);
    };
    std::array<std::size_t, kValues> places{};
    for (const SFoldEntry& entry : entries) {
      ++places[digit(entry)];
    }
    std::size_t place = 0;
    for (std::size_t& count : places) {
      place += std::exchange(count, place);
    }
    for (const SFoldEntry& entry : entries) {
      sorted[places[digit(entry)]++] = entry;
    }
    entries.swap(sorted);
  }
}
