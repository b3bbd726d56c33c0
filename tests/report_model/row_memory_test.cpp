#include "report_model/row_memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kSizes[] = {1, 8, 24, 40, 104, 1000, 2047, 2048, 20000};

// Writes all of a row, so that rows that overlap show it.
void Fill(const CRowMemory::SPlace& place, std::size_t size, int value) {
  std::memset(place.row, value, size);
}
bool Holds(const CRowMemory::SPlace& place, std::size_t size, int value) {
  const std::vector<unsigned char> expected(size, static_cast<unsigned char>(value));
  return std::memcmp(place.row, expected.data(), size) == 0;
}

TEST(RowMemory, GivesEachRowItsOwnAlignedPlace) {
  std::vector<CRowMemory::SPlace> places;
  for (int turn = 0; turn < 20; ++turn) {
    for (const std::size_t size : kSizes) {
      places.push_back(CRowMemory::Take(size));
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(places.back().row) % alignof(void*), 0U);
      Fill(places.back(), size, static_cast<int>(places.size() % 251));
    }
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_TRUE(Holds(places[i], kSizes[i % std::size(kSizes)], static_cast<int>((i + 1) % 251)));
  }
  for (const CRowMemory::SPlace& place : places) {
    CRowMemory::GiveBack(place.chunk);
  }
}

TEST(RowMemory, TakesRowsBackInAnyOrder) {
  constexpr std::size_t kSize = 200;
  std::vector<CRowMemory::SPlace> places;
  for (int i = 0; i < 1000; ++i) {
    places.push_back(CRowMemory::Take(kSize));
  }
  // Every other one, backwards; new rows meanwhile.
  for (std::size_t i = places.size(); i > 1; i -= 2) {
    CRowMemory::GiveBack(places[i - 1].chunk);
    places[i - 1] = CRowMemory::Take(kSize);
    Fill(places[i - 1], kSize, 7);
    Fill(places[i - 2], kSize, 9);
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_TRUE(Holds(places[i], kSize, i % 2 == 0 ? 9 : 7));
    CRowMemory::GiveBack(places[i].chunk);
  }
}

TEST(RowMemory, FillsTheSameChunkAgainWhenItsRowsAreGone) {
  const CRowMemory::SPlace first = CRowMemory::Take(64);
  CRowMemory::GiveBack(first.chunk);
  const CRowMemory::SPlace second = CRowMemory::Take(64);
  CRowMemory::GiveBack(second.chunk);
  EXPECT_EQ(first.chunk, second.chunk);
}

// The sanitizers tell of a chunk that is lost or freed too early.
TEST(RowMemory, OutlivesOrEndsWithItsThread) {
  CRowMemory::SPlace kept{};
  std::thread([] { CRowMemory::GiveBack(CRowMemory::Take(64).chunk); }).join();
  std::thread([&kept] { kept = CRowMemory::Take(64); }).join();
  Fill(kept, 64, 3);
  EXPECT_TRUE(Holds(kept, 64, 3));
  CRowMemory::GiveBack(kept.chunk);
}

}  // namespace
