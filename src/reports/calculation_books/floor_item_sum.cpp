#include "reports/calculation_books/floor_item_sum.h"

#include "report_model/formula_text.h"
#include "reports/calculation_books/formula_sum.h"

void CFloorItemSum::Add(std::uint32_t system, const std::array<double, 4>& quantities,
                        int floorCount) {
  if (terms_.empty() || terms_.back().system != system) {
    terms_.push_back({system, floorCount, quantities});
  } else {
    AddQuantities(terms_.back().quantities, quantities, 1);
  }
}

void CFloorItemSum::Read(SItemFigures& figures, bool isMain) const {
  // The first entry's count serves for all of them.
  const int floorCount = terms_.front().floorCount;
  figures.formula.clear();
  figures.sums = {};
  for (const STerm& term : terms_) {
    AddQuantities(figures.sums, term.quantities, floorCount);
    if (isMain) {
      AddTerm(figures.formula, term.quantities[0]);
    }
  }
  if (isMain && floorCount != 1) {
    figures.formula = MultipliedInBrackets(figures.formula, floorCount, L"层", L"+");
  }
}
