// The order in which a fold goes through its rows.
#ifndef TALLY_REPORTS_SHARED_FOLD_ORDER_H_
#define TALLY_REPORTS_SHARED_FOLD_ORDER_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The places of the key texts of one level in text order, by the number of the record that a key
/// is made of. Records of one text share a place. First every record is added, then all are ranked.
class CTextRanks {
 public:
  bool Knows(std::uint32_t record) const {
    return record < ranks_.size() && ranks_[record] != kUnknown;
  }
  /// REQUIRES: !Knows(record).
  void Add(std::uint32_t record, std::wstring_view text);
  void Rank();

  // Once ranked.
  std::uint32_t RankOf(std::uint32_t record) const { return ranks_[record]; }
  /// Bits that hold every rank.
  unsigned Bits() const;
  /// Whether records share a text.
  bool IsShared() const { return added_ > sorted_.size(); }
  /// The texts in order.
  const std::vector<std::wstring_view>& Texts() const { return sorted_; }
  bool HasText(std::wstring_view text) const;

 private:
  static constexpr std::uint32_t kUnknown = 0xFFFFFFFFU;
  struct SHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const {
      return std::hash<std::wstring_view>()(text);
    }
  };

  std::vector<std::uint32_t> ranks_;  // by record; until all are ranked, numbers of texts
  std::unordered_map<std::wstring, std::uint32_t, SHash, std::equal_to<>> texts_;
  std::vector<std::wstring_view> sorted_;
  std::size_t added_ = 0;
};

/// Small numbers for the pairs that occur, in the order in which they are first seen.
class CPairNumbers {
 public:
  std::uint32_t Of(std::uint32_t first, std::uint32_t second) {
    const std::uint64_t pair = std::uint64_t{first} << 32U | std::uint64_t{second};
    if (pair != lastPair_ || numbers_.empty()) {
      last_ = numbers_.try_emplace(pair, static_cast<std::uint32_t>(numbers_.size())).first->second;
      lastPair_ = pair;
    }
    return last_;
  }

 private:
  std::unordered_map<std::uint64_t, std::uint32_t> numbers_;
  std::uint64_t lastPair_ = 0;
  std::uint32_t last_ = 0;
};

/// One path of one row: the ranks of its levels in one number, the first level in the highest bits.
struct SFoldEntry {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
  std::uint32_t row = 0;
  std::uint32_t group = 0;  ///< of the report's own, where it has such a level

  /// Moves the number up by `bits` and puts `rank` below.
  void Push(std::uint32_t rank, unsigned bits) {
    high = bits == 0 ? high : high << bits | low >> (kWord - bits);
    low = low << bits | rank;
  }
  /// The bits in which two numbers differ, without the lowest `bits`; 0 where they agree.
  bool DiffersAbove(const SFoldEntry& other, unsigned bits) const {
    const std::uint64_t highs = high ^ other.high;
    const std::uint64_t lows = low ^ other.low;
    return bits < kWord ? (highs | lows >> bits) != 0 : highs >> (bits - kWord) != 0;
  }

  static constexpr unsigned kWord = 64;
};

/// Sorts entries by their numbers, of which the lowest `bits` are in use; equal ones stay in order.
void SortEntries(std::vector<SFoldEntry>& entries, unsigned bits);

#endif  // TALLY_REPORTS_SHARED_FOLD_ORDER_H_
