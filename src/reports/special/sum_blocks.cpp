#include "reports/special/sum_blocks.h"

#include <string_view>
#include <utility>

namespace {

constexpr std::wstring_view kFloorRow = L"@F";
constexpr std::wstring_view kSysCodeRow = L"@S";
constexpr std::wstring_view kItemRow = L"@CI";
constexpr std::wstring_view kLoopRow = L"@L";

template <class... THead>
void AddRow(CCellBlock& rows, const SSpecialRow& row, const CRowSum& sum, THead&&... head) {
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
  if (hasItem) {
    AddRow(rows, row, CRowSum(row, details), kItemRow, row.AttName(), row.AttText(), *row.CalItem);
  } else if (!isHead || (headRows == EHeadRows::MainItem && !row.IsMainItem)) {
    return;
  } else if (hasFloor && hasSysCode) {
    AddRow(rows, row, CRowSum(row, details), kSysCodeRow, *row.SysCode);
  } else if (hasFloor) {
    AddRow(rows, row, CRowSum(row, details), kFloorRow, *row.FloorName, *row.Floor);
  } else if (!hasSysCode) {
    const CRowSum total(row, details);
    sum = {*row.Unit, total.Quantities(), total.FloorCount()};
  }
}

void AddCircuitRow(CCellBlock& rows, const SSpecialRow& row, const std::wstring& name,
                   const CRowSum& sum) {
  if (row.IsMainItem && !row.FloorName->empty() && !row.SysCode->empty() &&
      !row.AttName().empty() && !row.CalItem->empty()) {
    AddRow(rows, row, sum, kLoopRow, name, *row.CalItem);
  }
}
