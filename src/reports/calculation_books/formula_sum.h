// The tail of a calculation item's row in the member and floor books.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_FORMULA_SUM_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_FORMULA_SUM_H_

#include <array>
#include <string>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"

/// The four quantities of a detail result, each times the number of its components.
std::array<double, 4> ComponentQuantities(const CReportResultDetail& detail);

/// Appends four cells: each quantity times `count`.
void AppendQuantities(Report::CellArray& cells, const std::array<double, 4>& quantities, int count);

/// Gathers the terms of a formula and the four sums beside it.
class CFormulaSum {
 public:
  /// Joins a term behind "+".
  void AddTerm(std::wstring_view term);
  /// Adds `count` times the four quantities to the sums.
  void AddQuantities(const std::array<double, 4>& quantities, int count);

  const std::wstring& Formula() const { return formula_; }
  const std::array<double, 4>& Sums() const { return sums_; }

 private:
  std::wstring formula_;
  bool hasTerm_ = false;
  std::array<double, 4> sums_{};
};

/// One row of a calculation item: "@CI", name, unit, formula, expression, four sums.
CCellBlock ItemRow(const CReportCalItem& item, std::wstring&& formula, std::wstring&& expression,
                   const std::array<double, 4>& sums);

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_FORMULA_SUM_H_
