#include "report_model/cell_block.h"

#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <string>
#include <utility>

namespace {

using Report::CellArray;

TEST(CellBlock, KeepsRowsInOrder) {
  CCellBlock block;
  EXPECT_TRUE(block.Empty());
  block.AddCells(L"@A", L"DN25");
  block.AddCells(L"@CI");
  EXPECT_FALSE(block.Empty());
  EXPECT_EQ(block.Size(), 3U);
  EXPECT_EQ(block.Cells(), (CellArray{L"@A", L"DN25", L"@CI"}));
}

TEST(CellBlock, StaysEmptyByRowsWithoutCells) {
  CCellBlock block{CellArray{}};
  block.AddRow(std::span<const CCellSource>());
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
  block.AddCells(L"c");
  CellArray out{L"a"};
  block.MoveTo(out);
  EXPECT_EQ(out, (CellArray{L"a", L"b", L"c"}));
  EXPECT_TRUE(block.Empty());
  block.MoveTo(out);
  EXPECT_EQ(out.size(), 3U);
}

TEST(CellBlock, PrintsNumbersAndViewsTextsWhenItIsWritten) {
  std::wstring seen = L"DN20";
  CCellBlock block;
  block.AddCells(L"@A", seen, std::wstring(L"a text of a moment"), 12.5, CCellSource::Copied(seen));
  seen[3] = L'5';
  CellArray out;
  block.MoveTo(out);
  EXPECT_EQ(out, (CellArray{L"@A", L"DN25", L"a text of a moment", L"12.5", L"DN20"}));
}

TEST(CellBlock, ShowsSlicesOfATextThatIsWrittenLater) {
  CCellBlock block;
  auto kept = std::make_unique<SKeptText>();
  block.AddCells(L"@S1", CCellSource::Slice(*kept, 0, 4));
  block.AddCells(L"@S2", CCellSource::Slice(*kept, 2, 2), CCellSource::Slice(*kept, 4, 0));
  kept->text = L"a$b$";
  block.Keep(std::move(kept));
  CCellBlock out;
  out.AddCells(L"@F");
  out.Append(std::move(block));
  out.AddCells(L"@L");
  const CellArray cells{L"@F", L"@S1", L"a$b$", L"@S2", L"b$", L"", L"@L"};
  EXPECT_EQ(out.Size(), cells.size());
  const CCellBlock copy = out;
  EXPECT_EQ(out.Cells(), cells);
  CellArray written;
  out.MoveTo(written);
  EXPECT_EQ(written, cells);
  EXPECT_EQ(copy.Cells(), cells);
}

class CTwoCells final : public IKeptRows {
 public:
  CTwoCells(const std::wstring& second, bool isShown) : second_(second), isShown_(isShown) {}
  std::size_t CellCount() const override { return isShown_ ? 2 : 0; }
  void Write(CellArray& out) const override {
    out.emplace_back(L"@F");
    out.push_back(second_);
  }

 private:
  const std::wstring& second_;
  bool isShown_;
};

TEST(CellBlock, WritesRowsThatLieElsewhere) {
  std::wstring seen = L"1";
  CCellBlock block;
  block.AddCells(L"@A");
  block.AddKept(std::make_unique<CTwoCells>(seen, true));
  block.AddCells(L"@B");
  block.AddKept(std::make_unique<CTwoCells>(seen, true));
  EXPECT_EQ(block.Size(), 6U);
  const CCellBlock copy = block;
  seen = L"2";
  const CellArray cells{L"@A", L"@F", L"2", L"@B", L"@F", L"2"};
  EXPECT_EQ(block.Cells(), cells);
  CellArray written;
  block.MoveTo(written);
  EXPECT_EQ(written, cells);
  EXPECT_TRUE(block.Empty());
  EXPECT_EQ(block.Size(), 0U);
  EXPECT_EQ(copy.Cells(), (CellArray{L"@A", L"@F", L"1", L"@B", L"@F", L"1"}));
}

TEST(CellBlock, StaysEmptyByRowsElsewhereWithoutCells) {
  const std::wstring seen = L"1";
  CCellBlock block;
  block.AddKept(std::make_unique<CTwoCells>(seen, false));
  EXPECT_TRUE(block.Empty());
  EXPECT_EQ(block.Size(), 0U);
}

}  // namespace
