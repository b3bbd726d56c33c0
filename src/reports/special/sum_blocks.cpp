#include "reports/special/sum_blocks.h"

#include <initializer_list>
#include <string_view>

namespace {

Report::CellArray RowCells(std::initializer_list<std::wstring_view> head, const SSpecialRow& row) {
  // References, unit and four quantities.
  constexpr std::size_t kTail = 6;
  Report::CellArray cells;
  cells.reserve(head.size() + kTail);
  for (const std::wstring_view text : head) {
    cells.emplace_back(text);
  }
  cells.push_back(row.Expression());
  cells.push_back(*row.Unit);
  AppendQuantities(cells, row.Quantity);
  return cells;
}

}  // namespace

void AppendQuantities(Report::CellArray& cells, const std::array<double, 4>& quantities) {
  for (const double quantity : quantities) {
    cells.push_back(NumberText(quantity));
  }
}

Report::CellArray SumRowCells(SSumQuantityData& sum, const SSpecialRow& row, EHeadRows headRows) {
  const bool hasFloor = !row.FloorName->empty();
  const bool hasSysCode = !row.SysCode->empty();
  const bool hasItem = !row.AttName().empty() && !row.CalItem->empty();
  const bool isHead = row.AttName().empty() && row.CalItem->empty();
  if (row.LoopNumber != 0) {
    if (row.IsMainItem && hasFloor && hasSysCode && hasItem) {
      return RowCells({L"@L", row.LoopName(), *row.CalItem}, row);
    }
    return {};
  }
  if (hasItem) {
    return RowCells({L"@CI", row.AttName(), row.AttText(), *row.CalItem}, row);
  }
  if (!isHead || (headRows == EHeadRows::MainItem && !row.IsMainItem)) {
    return {};
  }
  if (hasFloor && hasSysCode) {
    return RowCells({L"@S", *row.SysCode}, row);
  }
  if (hasFloor) {
    return RowCells({L"@F", *row.FloorName, *row.Floor}, row);
  }
  if (!hasSysCode) {
    sum = {*row.Unit, row.Quantity, row.FloorCount};
  }
  return {};
}
