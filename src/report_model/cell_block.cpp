#include "report_model/cell_block.h"

#include <algorithm>
#include <iterator>

std::size_t CCellBlock::Size() const {
  std::size_t size = 0;
  for (const Report::CellArray& row : rows_) {
    size += row.size();
  }
  return size;
}

void CCellBlock::MoveTo(Report::CellArray& out) {
  const std::size_t size = out.size() + Size();
  if (size > out.capacity()) {
    out.reserve(std::max(size, 2 * out.capacity()));
  }
  // Each row's memory goes as soon as its cells are out, so that the request's own memory falls
  // while the output fills.
  while (!rows_.empty()) {
    Report::CellArray& row = rows_.front();
    std::move(row.begin(), row.end(), std::back_inserter(out));
    rows_.pop_front();
  }
}

Report::CellArray CCellBlock::Cells() const {
  Report::CellArray cells;
  cells.reserve(Size());
  for (const Report::CellArray& row : rows_) {
    cells.insert(cells.end(), row.begin(), row.end());
  }
  return cells;
}
