// What the paint and duct tables print of a block.
#ifndef TALLY_REPORTS_SPECIAL_SUM_PRINTING_H_
#define TALLY_REPORTS_SPECIAL_SUM_PRINTING_H_

#include <array>
#include <string>

#include "reports/special/special_row.h"
#include "reports/special/special_rows.h"

/// The sum of a block.
struct SSumQuantityData {
  std::wstring unit;
  std::array<double, 4> quantities{};
  int count = 1;  ///< floors of the sum's first detail
};

/// Whose head rows (total, floor, system code) a block prints.
enum class EHeadRows { AllItems, MainItem };

/// Tells CSpecialRows::Print about the candidates.
class CSumPrinting {
 public:
  explicit CSumPrinting(EHeadRows headRows) : headRows_(headRows) {}

  ESpecialRow KindOf(const SSpecialRow& row) const;
  static bool ShowsCircuits(const SSpecialRow& row);
  void SetTotal(const SSpecialRow& row, const CRowSum& sum) {
    total_ = {*row.Unit, sum.Quantities(), sum.FloorCount()};
  }
  const SSumQuantityData& Total() const { return total_; }

 private:
  const EHeadRows headRows_;
  SSumQuantityData total_;
};

#endif  // TALLY_REPORTS_SPECIAL_SUM_PRINTING_H_
