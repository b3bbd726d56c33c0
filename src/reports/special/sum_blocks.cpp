#include "reports/special/sum_blocks.h"

#include <utility>

namespace {

template <class... THead>
void AddRow(CCellBlock& rows, const SSpecialRow& row, std::span<const SDetailSum> details,
            THead&&... head) {
  const CRowSum sum(row, details);
  const auto& [first, second, third, fourth] = sum.Quantities();
  rows.AddCells(std::forward<THead>(head)..., sum.References(), *row.Unit, first, second, third,
                fourth);
}

}  // namespace

void AddSumRow(CCellBlock& rows, SSumQuantityData& sum, const SSpecialRow& row,
               std::span<const SDetailSum> details, EHeadRows headRows) {
  const bool hasFloor = !row.FloorName->empty();
  const bool hasSysCode = !row.SysCode->empty();
  const bool hasItem = !row.AttName().empty() && !row.CalItem->empty();
  const bool isHead = row.AttName().empty() && row.CalItem->empty();
  if (row.LoopNumber != 0) {
    if (row.IsMainItem && hasFloor && hasSysCode && hasItem) {
      AddRow(rows, row, details, L"@L", row.LoopName(), *row.CalItem);
    }
  } else if (hasItem) {
    AddRow(rows, row, details, L"@CI", row.AttName(), row.AttText(), *row.CalItem);
  } else if (!isHead || (headRows == EHeadRows::MainItem && !row.IsMainItem)) {
    return;
  } else if (hasFloor && hasSysCode) {
    AddRow(rows, row, details, L"@S", *row.SysCode);
  } else if (hasFloor) {
    AddRow(rows, row, details, L"@F", *row.FloorName, *row.Floor);
  } else if (!hasSysCode) {
    const CRowSum total(row, details);
    sum = {*row.Unit, total.Quantities(), total.FloorCount()};
  }
}
