#include "reports/calculation_books/formula_sum.h"

#include <cstddef>
#include <utility>

#include "platform/text_numbers.h"

std::array<double, 4> ComponentQuantities(const CReportResultDetail& detail) {
  const auto count = static_cast<double>(detail.components.size());
  return {count * detail.quantity1, count * detail.quantity2, count * detail.quantity3,
          count * detail.quantity4};
}

void AppendQuantities(Report::CellArray& cells, const std::array<double, 4>& quantities,
                      int count) {
  for (const double quantity : quantities) {
    cells.push_back(NumberText(count * quantity));
  }
}

void CFormulaSum::AddTerm(std::wstring_view term) {
  if (hasTerm_) {
    formula_ += L'+';
  }
  formula_ += term;
  hasTerm_ = true;
}

void CFormulaSum::AddQuantities(const std::array<double, 4>& quantities, int count) {
  for (std::size_t i = 0; i < sums_.size(); ++i) {
    sums_[i] += count * quantities[i];
  }
}

CCellBlock ItemRow(const CReportCalItem& item, std::wstring&& formula, std::wstring&& expression,
                   const std::array<double, 4>& sums) {
  constexpr std::size_t kCells = 9;
  Report::CellArray cells;
  cells.reserve(kCells);
  cells.emplace_back(L"@CI");
  cells.push_back(item.name);
  cells.push_back(item.unit);
  cells.push_back(std::move(formula));
  cells.push_back(std::move(expression));
  AppendQuantities(cells, sums, 1);
  return CCellBlock(std::move(cells));
}
