#include "reports/calculation_books/formula_sum.h"

#include <cstddef>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"

std::array<double, 4> ComponentQuantities(const CReportResultDetail& detail) {
  const auto count = static_cast<double>(detail.components.size());
  return {count * detail.quantity1, count * detail.quantity2, count * detail.quantity3,
          count * detail.quantity4};
}

void AddQuantities(std::array<double, 4>& sums, const std::array<double, 4>& quantities,
                   int count) {
  for (std::size_t i = 0; i < sums.size(); ++i) {
    sums[i] += count * quantities[i];
  }
}

void AddTerm(std::wstring& formula, double quantity) {
  if (!formula.empty()) {
    formula += L'+';
  }
  AppendNumber(formula, quantity);
}

void AppendCircuitFormula(std::wstring& text, const CReportResultDetail& detail, int floorCount) {
  AppendRepeated(text, detail.expression, static_cast<int>(detail.components.size()), floorCount);
}

void AppendReferences(std::wstring& text, const CReportResultDetail& detail) {
  detail.AppendComponentText(text);
  text += L'$';
}
