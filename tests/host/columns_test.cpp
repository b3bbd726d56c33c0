#include "host/columns.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const SReportLayout& Summary() {
  return *FindLayout(Report::ReportXhlHz, 0);
}

/// The ids, joined by blanks; those that are not shown in brackets.
std::string Ids(const CColumns& columns) {
  std::string ids;
  for (const SColumn& column : columns) {
    ids += ids.empty() ? "" : " ";
    ids += column.isShown ? column.cell->id : "(" + std::string(column.cell->id) + ")";
  }
  return ids;
}

std::string ChosenIds(const std::vector<std::wstring>& names) {
  CColumns columns(Summary());
  columns.Choose(names);
  return Ids(columns);
}

std::string AppliedIds(const std::vector<Report::SColumnState>& states) {
  CColumns columns(Summary());
  columns.Apply(states);
  return Ids(columns);
}

constexpr const char* kAll =
    "section category specification attributes item drawing-floor floor system-code unit quantity "
    "(components)";

TEST(Columns, AreInTheOrderOfTheRowsThatHaveThem) {
  EXPECT_EQ(Ids(CColumns(Summary())), kAll);
}

TEST(Columns, OfEveryLayoutKeepTheOrderOfEveryRow) {
  for (const SReportLayout& layout : ReportLayouts()) {
    const CColumns columns(layout);
    for (const SRowLayout& row : layout.rows) {
      std::size_t found = 0;
      int last = -1;
      for (std::size_t i = 0; i < columns.Size(); ++i) {
        if (const int at = columns.Position(row, i); at >= 0) {
          EXPECT_EQ(at, last + 1) << layout.type << " " << columns[i].cell->id;
          last = at;
          ++found;
        }
      }
      EXPECT_EQ(found, row.cells.size());
    }
  }
}

TEST(Columns, AreChosenByIdOrHeadingInTheOrderOfTheNames) {
  EXPECT_EQ(ChosenIds({L"quantity", L"规格型号", L"components"}),
            "quantity specification components");
  EXPECT_EQ(ChosenIds({L"unit", L"单位", L"unit"}), "unit");
  EXPECT_EQ(ChosenIds({L"no-such"}), "");
}

TEST(Columns, FollowTheStatesByHeading) {
  EXPECT_EQ(AppliedIds({}), kAll);
  EXPECT_EQ(AppliedIds({{L"工程量", true}, {L"单位", false}, {L"构件索引", true}}),
            "quantity components section category specification attributes item drawing-floor "
            "floor system-code");
  EXPECT_EQ(AppliedIds({{L"unit", false}, {L"没有", false}}), kAll);
}

TEST(Columns, FindTheCellOfARow) {
  const std::vector<std::wstring> cells = {L"@A", L"DN50", L"钢", L"m", L"7.5"};
  const std::vector<SRow> rows = CutRows(Summary(), cells);
  CColumns columns(Summary());
  columns.Choose(std::vector<std::wstring>{L"quantity", L"item", L"specification"});
  EXPECT_EQ(*columns.Cell(rows[0], 0), L"7.5");
  EXPECT_EQ(columns.Cell(rows[0], 1), nullptr);
  EXPECT_EQ(*columns.Cell(rows[0], 2), L"DN50");
}

TEST(Columns, CanBeLeftToThoseThatOccur) {
  const std::vector<std::wstring> cells = {L"@Cg", L"管道", L"@F", L"3,4", L"3", L"m", L"1"};
  const std::vector<SRow> rows = CutRows(Summary(), cells);
  EXPECT_EQ(Ids(CColumns(Summary()).OccurringIn(rows)),
            "category drawing-floor floor unit quantity");
  EXPECT_EQ(Ids(CColumns(Summary()).OccurringIn({})), "");
}

TEST(Columns, KnowTheirNames) {
  EXPECT_TRUE(HasColumn(Summary(), L"quantity"));
  EXPECT_TRUE(HasColumn(Summary(), L"工程量"));
  EXPECT_FALSE(HasColumn(Summary(), L"formula"));
  EXPECT_FALSE(HasColumn(Summary(), L""));
}

}  // namespace
