#include "reports/special/sum_printing.h"

ESpecialRow CSumPrinting::KindOf(const SSpecialRow& row) const {
  const bool hasFloor = !row.FloorName->empty();
  const bool hasSysCode = !row.SysCode->empty();
  const bool hasItem = !row.AttName().empty() && !row.CalItem->empty();
  const bool isHead = row.AttName().empty() && row.CalItem->empty();
  if (hasItem) {
    return ESpecialRow::Item;
  }
  if (!isHead || (headRows_ == EHeadRows::MainItem && !row.IsMainItem)) {
    return ESpecialRow::None;
  }
  if (hasFloor) {
    return hasSysCode ? ESpecialRow::SysCode : ESpecialRow::Floor;
  }
  return hasSysCode ? ESpecialRow::None : ESpecialRow::Total;
}

bool CSumPrinting::ShowsCircuits(const SSpecialRow& row) {
  return row.IsMainItem && !row.FloorName->empty() && !row.SysCode->empty() &&
         !row.AttName().empty() && !row.CalItem->empty();
}
