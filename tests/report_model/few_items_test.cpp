#include "report_model/few_items.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <random>
#include <vector>

namespace {

using Items = CFewItems<std::unique_ptr<int>>;

std::vector<int> Values(const Items& items) {
  std::vector<int> values;
  for (const auto& item : items) {
    values.push_back(*item);
  }
  return values;
}

TEST(FewItems, TakesTwoThirdsOfTheRoomOfAVector) {
  static_assert(3 * sizeof(Items) == 2 * sizeof(std::vector<std::unique_ptr<int>>));
}

TEST(FewItems, BeginsEmpty) {
  const Items items;
  EXPECT_TRUE(items.empty());
  EXPECT_EQ(items.size(), 0U);
  EXPECT_TRUE(items.Items().empty());
}

TEST(FewItems, HoldsASingleItemWithinItself) {
  Items items;
  items.push_back(std::make_unique<int>(7));
  const auto* place = reinterpret_cast<const std::byte*>(&items.back());
  const auto* begin = reinterpret_cast<const std::byte*>(&items);
  EXPECT_TRUE(place >= begin && place < begin + sizeof(items));
  EXPECT_EQ(Values(items), (std::vector<int>{7}));
}

TEST(FewItems, GrowsFromOneToMany) {
  Items items;
  std::vector<int> expected;
  for (int i = 0; i < 100; ++i) {
    items.push_back(std::make_unique<int>(i));
    expected.push_back(i);
    ASSERT_EQ(Values(items), expected);
    ASSERT_EQ(*items.back(), i);
  }
}

TEST(FewItems, StaysWhereItIsWithinItsReserve) {
  Items items;
  items.push_back(std::make_unique<int>(1));
  items.reserve(10);
  const auto* place = items.begin();
  for (int i = 2; i <= 10; ++i) {
    items.push_back(std::make_unique<int>(i));
  }
  EXPECT_EQ(items.begin(), place);
  items.reserve(3);
  EXPECT_EQ(items.begin(), place);
  EXPECT_EQ(items.size(), 10U);
}

// Against a vector; the sanitizers tell of an item that is lost or freed twice.
TEST(FewItems, TakesItemsAtAnyPlace) {
  std::mt19937 random(20261121);
  for (int turn = 0; turn < 200; ++turn) {
    Items items;
    std::vector<int> expected;
    for (int step = 0; step < 30; ++step) {
      const int value = static_cast<int>(random() % 1000);
      switch (random() % 5) {
        case 0:
          if (!expected.empty()) {
            items.pop_back();
            expected.pop_back();
          }
          break;
        case 1:
          if (random() % 8 == 0) {
            items.clear();
            expected.clear();
          }
          break;
        default: {
          const std::size_t place = random() % (expected.size() + 1);
          items.insert(place, std::make_unique<int>(value));
          expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), value);
        }
      }
      ASSERT_EQ(Values(items), expected);
    }
  }
}

}  // namespace
