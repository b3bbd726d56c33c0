#include "reports/shared/fold_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace {

TEST(TextRanks, AreThePlacesInTextOrder) {
  CTextRanks ranks;
  ranks.Add(4, L"b");
  ranks.Add(0, L"一");
  ranks.Add(2, L"");
  ranks.Add(7, L"b");
  EXPECT_FALSE(ranks.Knows(1));
  EXPECT_FALSE(ranks.Knows(1000));
  EXPECT_TRUE(ranks.Knows(7));
  ranks.Rank();
  EXPECT_EQ(ranks.RankOf(2), 0U);
  EXPECT_EQ(ranks.RankOf(4), 1U);
  EXPECT_EQ(ranks.RankOf(7), 1U);
  EXPECT_EQ(ranks.RankOf(0), 2U);
  EXPECT_EQ(ranks.Bits(), 2U);
  EXPECT_TRUE(ranks.IsShared());
  EXPECT_TRUE(ranks.HasText(L"b"));
  EXPECT_FALSE(ranks.HasText(L"c"));
}

TEST(TextRanks, OneTextTakesNoBits) {
  CTextRanks ranks;
  ranks.Rank();
  EXPECT_EQ(ranks.Bits(), 0U);
  CTextRanks one;
  one.Add(3, L"a");
  one.Rank();
  EXPECT_EQ(one.Bits(), 0U);
  EXPECT_FALSE(one.IsShared());
}

TEST(PairNumbers, CountPairsAsTheyCome) {
  CPairNumbers numbers;
  EXPECT_EQ(numbers.Of(0, 0), 0U);
  EXPECT_EQ(numbers.Of(0, 1), 1U);
  EXPECT_EQ(numbers.Of(1, 0), 2U);
  EXPECT_EQ(numbers.Of(0, 1), 1U);
  EXPECT_EQ(numbers.Of(0, 0), 0U);
}

TEST(FoldEntry, DiffersAboveTheLevelsThatItShares) {
  SFoldEntry a;
  SFoldEntry b;
  for (const std::uint32_t rank : {5U, 6U, 7U}) {
    a.Push(rank, 32);
    b.Push(rank == 7U ? 8U : rank, 32);
  }
  EXPECT_TRUE(a.DiffersAbove(b, 0));
  EXPECT_FALSE(a.DiffersAbove(b, 32));
  EXPECT_FALSE(a.DiffersAbove(b, 64));
  a.Push(0, 0);
  EXPECT_EQ(a.high, 5U);
  EXPECT_EQ(a.low, std::uint64_t{6} << 32U | 7U);
  b.high = 4;
  EXPECT_TRUE(a.DiffersAbove(b, 64));
  EXPECT_FALSE(a.DiffersAbove(b, 65));
}

TEST(SortEntries, SortsByAllBitsAndKeepsEqualOnesInOrder) {
  for (const unsigned bits : {0U, 3U, 11U, 12U, 64U, 70U, 127U}) {
    SCOPED_TRACE(bits);
    std::mt19937_64 random(bits);
    std::vector<SFoldEntry> entries;
    for (std::uint32_t row = 0; row < 500; ++row) {
      SFoldEntry entry;
      for (unsigned bit = 0; bit < bits; ++bit) {
        // Few values, so that many entries agree.
        entry.Push(bit % 16 == 0 ? static_cast<std::uint32_t>(random() & 1U) : 0U, 1);
      }
      entry.row = row;
      entries.push_back(entry);
    }
    std::vector<SFoldEntry> expected = entries;
    std::stable_sort(expected.begin(), expected.end(), [](const auto& a, const auto& b) {
      return std::tie(a.high, a.low) < std::tie(b.high, b.low);
    });
    SortEntries(entries, bits);
    for (std::size_t i = 0; i < entries.size(); ++i) {
      ASSERT_EQ(entries[i].row, expected[i].row) << i;
    }
  }
}

}  // namespace
