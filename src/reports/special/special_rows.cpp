#include "reports/special/special_rows.h"

#include <utility>

#include "platform/text_numbers.h"

namespace {

constexpr std::wstring_view kFloorRow = L"@F";
constexpr std::wstring_view kSysCodeRow = L"@S";
constexpr std::wstring_view kItemRow = L"@CI";
constexpr std::wstring_view kLoopRow = L"@L";

// References, unit and quantities.
constexpr std::size_t kSumCells = 6;
constexpr std::size_t kCircuitCells = 3 + kSumCells;

}  // namespace

void CSpecialRows::SetHead(Report::CellArray&& cells, const std::array<double, 4>& quantities) {
  head_ = std::move(cells);
  for (const double quantity : quantities) {
    head_.push_back(NumberText(quantity));
  }
}

void CSpecialRows::Add(ESpecialRow kind, const SSpecialRow& row) {
  SRow& added = rows_.emplace_back();
  switch (kind) {
    case ESpecialRow::Floor:
      added.mark = kFloorRow;
      added.about = layout_.floorCells == EFloorCells::NodeFirst
                        ? std::array<const std::wstring*, 3>{row.FloorName, row.Floor}
                        : std::array<const std::wstring*, 3>{row.Floor, row.FloorName};
      break;
    case ESpecialRow::SysCode:
      added.mark = kSysCodeRow;
      added.about = {row.SysCode};
      break;
    default:
      added.mark = kItemRow;
      added.about = {&row.AttName(), &row.AttText(), row.CalItem};
      break;
  }
  added.unit = row.Unit;
  CRowSum sum(row, details_);
  added.quantities = sum.Quantities();
  added.references = std::move(sum).References(composed_);
  cellCount_ += 1 + kSumCells;
  for (const std::wstring* text : added.about) {
    cellCount_ += text != nullptr ? 1 : 0;
  }
}

void CSpecialRows::Add(const SSpecialRow& row, const SCircuits& circuits) {
  const std::deque<std::wstring>& names = loopNames_.UpTo(
      *circuits.category, circuits.firstNumber + static_cast<int>(circuits.count) - 1);
  circuits_.push_back({rows_.size(), &names, circuits, row.CalItem, row.Unit});
  cellCount_ += circuits.count * kCircuitCells;
}

void CSpecialRows::Write(Report::CellArray& out) const {
  out.insert(out.end(), head_.begin(), head_.end());
  auto circuits = circuits_.begin();
  const auto writeCircuitsBehind = [&](std::size_t rowCount) {
    for (; circuits != circuits_.end() && circuits->behind == rowCount; ++circuits) {
      WriteCircuits(out, *circuits);
    }
  };
  writeCircuitsBehind(0);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const SRow& row = rows_[i];
    out.emplace_back(row.mark);
    for (const std::wstring* text : row.about) {
      if (text != nullptr) {
        out.push_back(*text);
      }
    }
    WriteSum(out, *row.unit, row.references, row.quantities);
    writeCircuitsBehind(i + 1);
  }
}

void CSpecialRows::WriteCircuits(Report::CellArray& out, const SCircuitRows& rows) const {
  const SCircuits& circuits = rows.circuits;
  auto name = rows.names->begin() + (circuits.firstNumber - 1);
  for (const SDetailSum& detail : details_.subspan(circuits.firstDetail, circuits.count)) {
    out.emplace_back(kLoopRow);
    out.push_back(*name++);
    out.push_back(*rows.item);
    WriteSum(out, *rows.unit, detail.references, detail.Quantities());
  }
}

void CSpecialRows::WriteSum(Report::CellArray& out, const std::wstring& unit,
                            std::wstring_view references,
                            const std::array<double, 4>& quantities) const {
  if (layout_.unitCell == EUnitCell::BeforeReferences) {
    out.push_back(unit);
    out.emplace_back(references);
  } else {
    out.emplace_back(references);
    out.push_back(unit);
  }
  for (const double quantity : quantities) {
    AppendNumber(out.emplace_back(), quantity);
  }
}
