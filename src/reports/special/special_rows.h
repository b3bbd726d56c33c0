// The rows of a block of the paint, duct and insulation tables, as they are printed.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_ROWS_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_ROWS_H_

#include <array>
#include <cstddef>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report_model/cell_block.h"
#include "reports/special/loop_names.h"
#include "reports/special/special_row.h"

/// The two names of a floor row: its node and the floor shown.
enum class EFloorCells { NodeFirst, ShownFirst };
/// Where the unit stands.
enum class EUnitCell { BehindReferences, BeforeReferences };

/// The points in which the rows differ.
struct SSpecialLayout {
  EFloorCells floorCells;
  EUnitCell unitCell;
};

/// What a candidate prints.
enum class ESpecialRow { None, Total, Floor, SysCode, Item };

/// Knows the order and the sums of its rows; the cells are made when it is written, and may be
/// again. A row is a mark, what it is about, references, unit and four quantities. The texts and
/// details of the rows belong to the tree, or to the request and outlive it.
class CSpecialRows final : public IKeptRows {
 public:
  /// Of candidates that count some of `details`. Those that belong to no tree are `owned`.
  CSpecialRows(const SSpecialLayout& layout, CLoopNames& loopNames,
               std::span<const SDetailSum> details, std::vector<SDetailSum>&& owned)
      : layout_(layout), loopNames_(loopNames), owned_(std::move(owned)), details_(details) {}

  /// Adds what `printing` tells of each candidate and its circuits:
  ///   ESpecialRow KindOf(const SSpecialRow&)
  ///   bool ShowsCircuits(const SSpecialRow&)
  ///   void SetTotal(const SSpecialRow&, const CRowSum&)
  template <class TCandidates, class TPrinting>
  void Print(const TCandidates& candidates, TPrinting& printing) {
    candidates.ForEachRow(
        [&](const SSpecialRow& row) {
          const ESpecialRow kind = printing.KindOf(row);
          if (kind == ESpecialRow::Total) {
            printing.SetTotal(row, CRowSum(row, details_));
          } else if (kind != ESpecialRow::None) {
            Add(kind, row);
          }
        },
        [&](const SSpecialRow& row, const SCircuits& circuits) {
          if (printing.ShowsCircuits(row)) {
            Add(row, circuits);
          }
        });
  }
  /// The row over the others.
  void SetHead(Report::CellArray&& cells, const std::array<double, 4>& quantities);

  std::size_t CellCount() const override { return head_.size() + cellCount_; }
  void Write(Report::CellArray& out) const override;

 private:
  struct SRow {
    std::wstring_view mark;
    std::array<const std::wstring*, 3> about{};  // null behind the last one
    const std::wstring* unit = nullptr;
    std::wstring_view references;
    std::array<double, 4> quantities{};
  };
  struct SCircuitRows {
    std::size_t behind;  // so many of the rows
    const std::deque<std::wstring>* names;
    SCircuits circuits;
    const std::wstring* item;
    const std::wstring* unit;
  };

  void Add(ESpecialRow kind, const SSpecialRow& row);
  void Add(const SSpecialRow& row, const SCircuits& circuits);
  void WriteCircuits(Report::CellArray& out, const SCircuitRows& rows) const;
  void WriteSum(Report::CellArray& out, const std::wstring& unit, std::wstring_view references,
                const std::array<double, 4>& quantities) const;

  const SSpecialLayout& layout_;
  CLoopNames& loopNames_;
  const std::vector<SDetailSum> owned_;
  const std::span<const SDetailSum> details_;
  Report::CellArray head_;
  std::vector<SRow> rows_;
  std::vector<SCircuitRows> circuits_;  // in the order of the rows
  std::deque<std::wstring> composed_;   // references that do not stand side by side
  std::size_t cellCount_ = 0;
};

/// A block of these rows.
inline CCellBlock BlockOf(std::unique_ptr<CSpecialRows>&& rows) {
  CCellBlock block;
  block.AddKept(std::move(rows));
  return block;
}

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_ROWS_H_
