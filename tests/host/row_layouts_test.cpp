#include "host/row_layouts.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/report_catalog.h"

namespace {

using Cells = std::vector<std::wstring>;

const SReportLayout& Consumption() {
  return *FindLayout(Report::ReportXhlHz, 0);
}

std::string FaultOf(const Cells& cells) {
  try {
    CutRows(Consumption(), cells);
    return "none";
  } catch (const CLayoutError& error) {
    return error.what();
  }
}

TEST(RowLayouts, CutsEveryRowOfTheConsumptionSummary) {
  const Cells cells = {L"@P",  L"一区", L"@Cg",      L"管道\\给水管",
                       L"@A",  L"DN50", L"",         L"m",
                       L"5",   L"@CI",  L"管道长度", L"m",
                       L"5",   L"@F",   L"3,4",      L"3",
                       L"m",   L"5",    L"@S1",      L"J",
                       L"m",   L"5",    L"C1$$",     L"@S2",
                       L"J1",  L"m",    L"5",        L"C1$$",
                       L"@S3", L"J1-1", L"m",        L"5",
                       L"C1$$"};
  const std::vector<SRow> rows = CutRows(Consumption(), cells);
  const std::vector<std::pair<std::wstring, Cells>> expected = {
      {L"@P", {L"一区"}},
      {L"@Cg", {L"管道\\给水管"}},
      {L"@A", {L"DN50", L"", L"m", L"5"}},
      {L"@CI", {L"管道长度", L"m", L"5"}},
      {L"@F", {L"3,4", L"3", L"m", L"5"}},
      {L"@S1", {L"J", L"m", L"5", L"C1$$"}},
      {L"@S2", {L"J1", L"m", L"5", L"C1$$"}},
      {L"@S3", {L"J1-1", L"m", L"5", L"C1$$"}},
  };
  ASSERT_EQ(rows.size(), expected.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].layout->marker, expected[i].first);
    EXPECT_EQ(Cells(rows[i].cells.begin(), rows[i].cells.end()), expected[i].second);
    EXPECT_EQ(rows[i].layout->depth, static_cast<int>(i));
  }
}

TEST(RowLayouts, TakesDataThatReadsLikeMarkersForData) {
  const Cells cells = {L"@P", L"@P", L"@Cg", L"@A", L"@A", L"@F", L"@F",
                       L"@F", L"@F", L"@CI", L"@A", L"@A", L"@A"};
  const std::vector<SRow> rows = CutRows(Consumption(), cells);
  ASSERT_EQ(rows.size(), 4u);
  EXPECT_STREQ(rows[1].layout->marker, L"@Cg");
  EXPECT_EQ(rows[2].cells[3], L"@F");
  EXPECT_STREQ(rows[3].layout->marker, L"@CI");
}

TEST(RowLayouts, CutsNothingOutOfNothing) {
  EXPECT_TRUE(CutRows(Consumption(), {}).empty());
}

TEST(RowLayouts, RefusesCellsWithoutAMarker) {
  EXPECT_EQ(FaultOf({L"@P", L"一区", L"m\n"}), "cell 2 of report 1 is no row marker: 'm'");
  EXPECT_EQ(FaultOf({L"@QD", L"1"}), "cell 0 of report 1 is no row marker: '@QD'");
}

TEST(RowLayouts, RefusesARowThatIsCutShort) {
  EXPECT_EQ(FaultOf({L"@P", L"一区", L"@A", L"DN50", L"", L"m"}),
            "the row at cell 2 of report 1 has 3 cells, not 4");
  EXPECT_EQ(FaultOf({L"@P"}), "the row at cell 0 of report 1 has 0 cells, not 1");
}

TEST(RowLayouts, ExistForEveryReportAndNoOther) {
  for (const SCatalogReport& report : ReportCatalog()) {
    EXPECT_NE(FindLayout(report.type, report.variant), nullptr) << report.name;
  }
  for (int type = -1; type < 100; ++type) {
    const auto number = static_cast<Report::EReportType>(type);
    EXPECT_EQ(FindLayout(number, 0) != nullptr, FindReport(number, 0) != nullptr) << type;
  }
}

// An id stands for one column, in every row and report.
TEST(RowLayouts, GiveEachIdOneHeadingAndType) {
  std::map<std::string, std::pair<std::wstring, ECellType>> columns;
  for (const SCatalogReport& report : ReportCatalog()) {
    for (const SRowLayout& row : FindLayout(report.type, report.variant)->rows) {
      EXPECT_FALSE(row.cells.empty());
      std::set<std::string> ids;
      for (const SCellLayout& cell : row.cells) {
        EXPECT_TRUE(ids.insert(cell.id).second) << report.name << " " << cell.id;
        const std::pair<std::wstring, ECellType> column(cell.heading, cell.type);
        EXPECT_EQ(columns.try_emplace(cell.id, column).first->second, column) << cell.id;
      }
    }
  }
}

}  // namespace
