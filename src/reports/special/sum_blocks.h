// How the paint and duct tables print a block.
#ifndef TALLY_REPORTS_SPECIAL_SUM_BLOCKS_H_
#define TALLY_REPORTS_SPECIAL_SUM_BLOCKS_H_

#include <array>
#include <span>
#include <string>

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

/// Prints one candidate; where it is a total it goes into `sum`, and some print no row. Each row
/// has the tail references, unit, four quantities.
void AddSumRow(CCellBlock& rows, SSumQuantityData& sum, const SSpecialRow& row,
               std::span<const SDetailSum> details, EHeadRows headRows);
/// Prints a circuit of a candidate; those of some print no row.
void AddCircuitRow(CCellBlock& rows, const SSpecialRow& row, const std::wstring& name,
                   const CRowSum& sum);

/// The rows of a block's candidates.
template <class TCandidates>
CCellBlock SumRows(SSumQuantityData& sum, const TCandidates& candidates,
                   std::span<const SDetailSum> details, EHeadRows headRows) {
  CCellBlock rows;
  candidates.ForEachRow(
      details, [&](const SSpecialRow& row) { AddSumRow(rows, sum, row, details, headRows); },
      [&](const SSpecialRow& row, const std::wstring& name, const CRowSum& circuit) {
        AddCircuitRow(rows, row, name, circuit);
      });
  return rows;
}

#endif  // TALLY_REPORTS_SPECIAL_SUM_BLOCKS_H_
