#include "reports/shared/summary_rows.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "reports/shared/chosen_codes.h"
#include "reports/shared/summary_rows_maker.h"

// Rows of a block that follow on each other here.
class CSummaryRows::CRun final : public IKeptRows {
 public:
  CRun(const CSummaryRows& kept, const SDetailItems& rows, const SOpen& open,
       std::wstring_view unit)
      : kept_(kept), rows_(rows), open_(open), unit_(unit) {}

  std::size_t CellCount() const override { return kept_.CountCells(rows_, open_); }
  void Write(Report::CellArray& out) const override { kept_.Write(out, rows_, open_, unit_); }

 private:
  const CSummaryRows& kept_;
  const SDetailItems rows_;
  const SOpen open_;
  const std::wstring_view unit_;
};

CSummaryRows::CSummaryRows(const Report::NodeMap& nodes, EFirstSysCodes firstSysCodes,
                           EChainMark mark, ELines lines) {
  CMaker(*this, firstSysCodes, mark, lines).Make(nodes);
}

void CSummaryRows::AddTo(CCellBlock& out, const SDetailItems& rows, const SOpen& open,
                         std::wstring_view unit) const {
  out.AddKept(std::make_unique<CRun>(*this, rows, open, unit));
}

bool CSummaryRows::AddChosenTo(CCellBlock& out, double& sum, const Levels& names, const SOpen& open,
                               std::wstring_view unit) const {
  auto chosen = std::make_unique<CChosenCodes>(*this, names, open, unit);
  const SWholeSum local = chosen->Sum();
  out.AddKept(std::move(chosen));
  sum += local.quantity;
  return local.counted;
}

// In the order of their rows.
std::span<const CSummaryRows::SPlacedCode> CSummaryRows::Named(const std::wstring& name) const {
  const auto at = std::lower_bound(
      codes_.begin(), codes_.end(), name,
      [](const SNamedCodes& codes, const std::wstring& key) { return codes.name < key; });
  return at != codes_.end() && at->name == name
             ? std::span(placed_).subspan(at->first, at->last - at->first)
             : std::span<const SPlacedCode>();
}

void CSummaryRows::Choose(std::vector<SPlacedCode>& chosen, const Levels::value_type& names) const {
  for (const std::wstring& name : names) {
    const std::span<const SPlacedCode> codes = Named(name);
    chosen.insert(chosen.end(), codes.begin(), codes.end());
  }
  std::sort(chosen.begin(), chosen.end(), [](const SPlacedCode& a, const SPlacedCode& b) {
    return a.floor != b.floor ? a.floor < b.floor : a.row < b.row;
  });
}

std::size_t CSummaryRows::CountCells(const SDetailItems& rows, const SOpen& open) const {
  std::size_t cells = 0;
  ForEachShown(rows, open, [&cells](const SRow& row) {
    cells += row.kind == EKind::Line ? kLineCells : kCells;
  });
  return cells;
}

void CSummaryRows::Write(Report::CellArray& out, const SDetailItems& rows, const SOpen& open,
                         std::wstring_view unit) const {
  ForEachShown(rows, open,
               [&](const SRow& row) { WriteRow(out, row, unit, Quantity(row), References(row)); });
}

void CSummaryRows::WriteRow(Report::CellArray& out, const SRow& row, std::wstring_view unit,
                            std::wstring_view quantity, std::wstring_view references) const {
  const auto add = [&out](auto&&... cells) {
    (out.emplace_back(std::forward<decltype(cells)>(cells)), ...);
  };
  const std::wstring_view title = Title(row);
  switch (row.kind) {
    case EKind::Floor:
      FloorCells(add, title, title, unit, quantity);
      break;
    case EKind::SysCode:
      SysCodeCells(add, row.depth, title, unit, quantity, references);
      break;
    default:
      LineCells(add, static_cast<int>(row.detail), title, unit, quantity, references);
  }
}
