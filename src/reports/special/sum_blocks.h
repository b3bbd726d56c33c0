// How the paint and duct tables print a block.
#ifndef TALLY_REPORTS_SPECIAL_SUM_BLOCKS_H_
#define TALLY_REPORTS_SPECIAL_SUM_BLOCKS_H_

#include <array>
#include <string>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/cell_block.h"
#include "reports/special/special_row.h"

/// The sum of a block.
struct SSumQuantityData {
  std::wstring unit;
  std::array<double, 4> quantities{};
  int count = 1;  ///< floors of the sum's first detail
};

/// Whose head rows (total, floor, system code) a block prints.
enum class EHeadRows { AllItems, MainItem };

/// Appends the four quantities of a row.
void AppendQuantities(Report::CellArray& cells, const std::array<double, 4>& quantities);

/// Goes through the candidates of a block: those of totals go into `sum`, the others become rows,
/// each with the tail references, unit, four quantities.
template <class TRows>
CCellBlock SumRows(SSumQuantityData& sum, const TRows& candidates, EHeadRows headRows);

/// The cells of one candidate; none where it prints no row. Totals go into `sum`.
Report::CellArray SumRowCells(SSumQuantityData& sum, const SSpecialRow& row, EHeadRows headRows);

template <class TRows>
CCellBlock SumRows(SSumQuantityData& sum, const TRows& candidates, EHeadRows headRows) {
  CCellBlock rows;
  for (const SSpecialRow& row : candidates) {
    rows.AddRow(SumRowCells(sum, row, headRows));
  }
  return rows;
}

#endif  // TALLY_REPORTS_SPECIAL_SUM_BLOCKS_H_
