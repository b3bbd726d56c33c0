#include <iostream>

#include "rows/row_layouts.h"

int main() {
  const Report::CellArray cells = {L"@CI", L"item", L"m", L"2.5"};
  for (const SRow& row : CutRows(Report::ReportXhlHz, 0, cells)) {
    std::cout << row.layout->cells.size() << " cells, " << row.Quantity().value_or(0) << "\n";
  }
  return 0;
}
