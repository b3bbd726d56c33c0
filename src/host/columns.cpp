#include "host/columns.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/portable/utf8_text.h"

namespace {

bool IsCalled(const SCellLayout& cell, std::wstring_view name) {
  return name == cell.heading || name == WideFromUtf8(cell.id);
}

auto FindCell(std::vector<SColumn>& columns, const SCellLayout& cell) {
  const std::string_view id = cell.id;
  return std::find_if(columns.begin(), columns.end(),
                      [id](const SColumn& column) { return id == column.cell->id; });
}

std::vector<SColumn> AllColumns(const SReportLayout& layout) {
  std::vector<SColumn> columns;
  for (const SRowLayout& row : layout.rows) {
    auto before = columns.end();
    for (std::size_t i = row.cells.size(); i-- > 0;) {
      const SCellLayout& cell = row.cells[i];
      const auto at = FindCell(columns, cell);
      before = at != columns.end()
                   ? at
                   : columns.insert(before, {&cell, cell.type != ECellType::References});
    }
  }
  return columns;
}

}  // namespace

CColumns::CColumns(const SReportLayout& layout) : layout_(&layout) {
  Take(AllColumns(layout));
}

void CColumns::Take(std::vector<SColumn> columns) {
  columns_ = std::move(columns);
  positions_.clear();
  for (const SRowLayout& row : layout_->rows) {
    std::vector<int>& positions = positions_.emplace_back();
    for (const SColumn& column : columns_) {
      const auto at = row.Find(column.cell->id);
      positions.push_back(at.has_value() ? static_cast<int>(*at) : -1);
    }
  }
}

void CColumns::Choose(std::span<const std::wstring> names) {
  std::vector<SColumn> chosen;
  for (const std::wstring& name : names) {
    for (const SColumn& column : columns_) {
      if (IsCalled(*column.cell, name) && FindCell(chosen, *column.cell) == chosen.end()) {
        chosen.push_back({column.cell, true});
      }
    }
  }
  Take(std::move(chosen));
}

void CColumns::Apply(std::span<const Report::SColumnState> states) {
  std::vector<SColumn> left = columns_;
  std::vector<SColumn> moved;
  for (const Report::SColumnState& state : states) {
    const auto at = std::find_if(left.begin(), left.end(), [&](const SColumn& column) {
      return state.name == column.cell->heading;
    });
    if (at == left.end()) {
      continue;
    }
    if (state.visible) {
      moved.push_back({at->cell, true});
    }
    left.erase(at);
  }
  moved.insert(moved.end(), left.begin(), left.end());
  Take(std::move(moved));
}

CColumns CColumns::OccurringIn(std::span<const SRow> rows) const {
  std::vector<bool> occurs(layout_->rows.size());
  for (const SRow& row : rows) {
    occurs[static_cast<std::size_t>(row.layout - layout_->rows.data())] = true;
  }
  std::vector<SColumn> occurring;
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    for (std::size_t row = 0; row < occurs.size(); ++row) {
      if (occurs[row] && positions_[row][column] >= 0) {
        occurring.push_back(columns_[column]);
        break;
      }
    }
  }
  CColumns result = *this;
  result.Take(std::move(occurring));
  return result;
}

bool HasColumn(const SReportLayout& layout, std::wstring_view name) {
  const CColumns columns(layout);
  return std::any_of(columns.begin(), columns.end(),
                     [name](const SColumn& column) { return IsCalled(*column.cell, name); });
}
