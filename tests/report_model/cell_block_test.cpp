#include "report_model/cell_block.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using Report::CellArray;

TEST(CellBlock, KeepsRowsInOrder) {
  CCellBlock block;
  EXPECT_TRUE(block.Empty());
  block.AddTexts(L"@A", L"DN25");
  block.AddRow({L"@CI"});
  EXPECT_FALSE(block.Empty());
  EXPECT_EQ(block.Size(), 3U);
  EXPECT_EQ(block.Cells(), (CellArray{L"@A", L"DN25", L"@CI"}));
}

TEST(CellBlock, StaysEmptyByRowsWithoutCells) {
  CCellBlock block{CellArray{}};
  block.AddRow({});
  EXPECT_TRUE(block.Empty());
}

TEST(CellBlock, CountsEmptyCells) {
  CCellBlock block{CellArray{L""}};
  EXPECT_FALSE(block.Empty());
  EXPECT_EQ(block.Size(), 1U);
}

TEST(CellBlock, TakesAllOfAnotherBlock) {
  CCellBlock block{CellArray{L"a"}};
  CCellBlock other{CellArray{L"b", L"c"}};
  block.Append(std::move(other));
  block.Append(CCellBlock());
  EXPECT_EQ(block.Cells(), (CellArray{L"a", L"b", L"c"}));
}

TEST(CellBlock, MovesBehindTheCellsThatWereThere) {
  CCellBlock block{CellArray{L"b"}};
  block.AddTexts(L"c");
  CellArray out{L"a"};
  block.MoveTo(out);
  EXPECT_EQ(out, (CellArray{L"a", L"b", L"c"}));
  EXPECT_TRUE(block.Empty());
  block.MoveTo(out);
  EXPECT_EQ(out.size(), 3U);
}

}  // namespace
