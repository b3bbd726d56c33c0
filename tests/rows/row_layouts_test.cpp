#include "rows/row_layouts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace {

using Cells = std::vector<std::wstring>;

const SReportLayout& Consumption() {
  return *FindLayout(Report::ReportXhlHz, 0);
}

template <class TCall>
std::string FaultOf(TCall call) {
  try {
    call();
    return "none";
  } catch (const CLayoutError& error) {
    return error.what();
  }
}

std::string FaultOfCutting(const Cells& cells) {
  return FaultOf([&cells] { CutRows(Consumption(), cells); });
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
    EXPECT_TRUE(rows[i].Is(expected[i].first)) << i;
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
  const Cells none;
  EXPECT_TRUE(CutRows(Consumption(), none).empty());
}

TEST(RowLayouts, CutByTheVariantThatIsAskedFor) {
  const Cells cells = {L"@F", L"3", L"3"};
  EXPECT_EQ(CutRows(Report::ReportSysJss, 1, cells).size(), 1u);
  EXPECT_EQ(CutRows(Report::ReportSysJss, 7, cells).size(), 1u);
  EXPECT_EQ(FaultOf([&cells] { CutRows(Report::ReportSysJss, 0, cells); }),
            "cell 0 of report 0 is no row marker: '@F'");
}

TEST(RowLayouts, RefusesCellsWithoutAMarker) {
  EXPECT_EQ(FaultOfCutting({L"@P", L"一区", L"m\n"}),
            "cell 2 of report 1 is no row marker: 'm\\u{a}'");
  EXPECT_EQ(FaultOfCutting({L"@QD", L"1"}), "cell 0 of report 1 is no row marker: '@QD'");
  EXPECT_EQ(FaultOfCutting({L"一@"}), "cell 0 of report 1 is no row marker: '\\u{4e00}@'");
}

TEST(RowLayouts, RefusesARowThatIsCutShort) {
  EXPECT_EQ(FaultOfCutting({L"@P", L"一区", L"@A", L"DN50", L"", L"m"}),
            "the row at cell 2 of report 1 has 3 cells, not 4");
  EXPECT_EQ(FaultOfCutting({L"@P"}), "the row at cell 0 of report 1 has 0 cells, not 1");
}

TEST(RowLayouts, RefusesWhatIsNoReport) {
  const Cells none;
  EXPECT_EQ(FaultOf([&none] { CutRows(Report::ReportNone, 0, none); }), "there is no report 99");
}

TEST(RowLayouts, AnswersCellsByTheIdOfTheirColumn) {
  const Cells cells = {L"@A", L"DN50", L"材质:钢", L"m", L"5"};
  const SRow row = CutRows(Consumption(), cells).at(0);
  EXPECT_EQ(row.Cell("specification"), L"DN50");
  EXPECT_EQ(row.Cell("attributes"), L"材质:钢");
  EXPECT_TRUE(row.Has("unit"));
  EXPECT_FALSE(row.Has("components"));
  EXPECT_EQ(FaultOf([&row] { (void)row.Cell("components"); }),
            "row '@A' has no column 'components'");
}

TEST(RowLayouts, ReadsQuantitiesAsTheEngineWritesThem) {
  const auto quantityOf = [](const std::wstring& text) {
    const Cells cells = {L"@CI", L"管道长度", L"m", text};
    return CutRows(Consumption(), cells).at(0).Quantity();
  };
  EXPECT_EQ(quantityOf(L"5"), 5);
  EXPECT_EQ(quantityOf(L"-0.125"), -0.125);
  EXPECT_EQ(quantityOf(L"1.23457e+06"), 1234570);
  EXPECT_EQ(quantityOf(L"inf"), HUGE_VAL);
  EXPECT_TRUE(std::isnan(quantityOf(L"nan").value()));
  EXPECT_EQ(quantityOf(L""), std::nullopt);
  EXPECT_EQ(quantityOf(L"5 m"), std::nullopt);
  EXPECT_EQ(quantityOf(L"5,5"), std::nullopt);
  EXPECT_EQ(quantityOf(L"５"), std::nullopt);
}

TEST(RowLayouts, ReadNoQuantityOutOfAnotherColumn) {
  const Cells cells = {L"@CI", L"管道长度", L"5", L"5"};
  const SRow row = CutRows(Consumption(), cells).at(0);
  EXPECT_EQ(FaultOf([&row] { (void)row.Quantity("unit"); }),
            "column 'unit' of row '@CI' holds no quantities");
  EXPECT_EQ(FaultOf([&row] { (void)row.Quantity("quantity-1"); }),
            "row '@CI' has no column 'quantity-1'");
}

TEST(RowLayouts, NameTheTypesOfTheirCells) {
  const std::vector<std::pair<ECellType, std::string>> expected = {
      {ECellType::Text, "text"}, {ECellType::Quantity, "quantity"},
      {ECellType::Code, "code"}, {ECellType::Formula, "formula"},
      {ECellType::Unit, "unit"}, {ECellType::References, "references"},
  };
  for (const auto& [type, name] : expected) {
    EXPECT_EQ(CellTypeName(type), name);
  }
}

// An id stands for one column, in every row and report.
TEST(RowLayouts, GiveEachIdOneHeadingAndType) {
  std::map<std::string, std::pair<std::wstring, ECellType>> columns;
  for (const SReportLayout& report : ReportLayouts()) {
    for (const SRowLayout& row : report.rows) {
      EXPECT_FALSE(row.cells.empty());
      std::set<std::string> ids;
      for (const SCellLayout& cell : row.cells) {
        EXPECT_TRUE(ids.insert(cell.id).second) << report.type << " " << cell.id;
        const std::pair<std::wstring, ECellType> column(cell.heading, cell.type);
        EXPECT_EQ(columns.try_emplace(cell.id, column).first->second, column) << cell.id;
      }
    }
  }
}

// Rows of an array that ends with the call would dangle: that does not compile.
template <class TCells>
concept CCanBeCut = requires(TCells&& cells) {
  CutRows(Consumption(), std::forward<TCells>(cells));
  CutRows(Report::ReportXhlHz, 0, std::forward<TCells>(cells));
};
static_assert(CCanBeCut<Report::CellArray&>);
static_assert(CCanBeCut<const Report::CellArray&>);
static_assert(CCanBeCut<std::span<const std::wstring>>);
static_assert(!CCanBeCut<Report::CellArray>);

}  // namespace
