// The row candidates of a block.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_CANDIDATES_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_CANDIDATES_H_

#include <array>
#include <cstddef>
#include <set>
#include <span>
#include <tuple>

#include "reports/shared/repeated_find.h"
#include "reports/special/special_row.h"

/// A set of candidates, circuits among them, in which each is looked up before it is put in, detail
/// by detail. Its members are told at TOrderedCandidates.
template <SSpecialOrderRule kRule>
class TSpecialCandidates {
 public:
  bool Empty() const { return rows_.empty(); }
  static bool IsRefuted() { return false; }
  static void Refute() {}
  static void StartCategory(const CReportCategory& /*category*/, bool /*ascending*/) {}

  void AddItem(std::span<const SOpenSum> sums, const SDetailRange& range) {
    if (sums.empty()) {
      return;
    }
    std::array<TRepeatedFind<Rows>, kMostSums> finds;
    SSpecialRow circuit = sums.back().row;
    if (range.circuits != nullptr) {
      circuit.LoopCategory = range.circuits;
      circuit.CategorySortId = range.circuits->sortId;
    }
    for (std::size_t detail = range.first; detail < range.last; ++detail) {
      const SDetailRange one{detail, detail + 1};
      for (std::size_t i = 0; i < sums.size(); ++i) {
        auto at = finds[i](rows_, sums[i].row);
        // The set may refuse what was not found: the detail is then lost to this row.
        bool isIn = true;
        if (at == rows_.end()) {
          std::tie(at, isIn) = rows_.insert(sums[i].row);
        }
        if (isIn) {
          at->Details.Add(one);
        }
      }
      if (range.circuits != nullptr) {
        ++circuit.LoopNumber;
        // Where an equal circuit stands already, this one is dropped.
        if (!Contains(circuit)) {
          if (const auto [at, isIn] = rows_.insert(circuit); isIn) {
            at->Details.Add(one);
          }
        }
      }
    }
  }

  template <class TAddRow, class TAddCircuits>
  void ForEachRow(TAddRow&& addRow, TAddCircuits&& addCircuits) const {
    for (const SSpecialRow& row : rows_) {
      if (row.LoopNumber == 0) {
        addRow(row);
        continue;
      }
      row.Details.ForEach([&](const SDetailRange& range) {
        addCircuits(row, SCircuits{row.LoopCategory, row.LoopNumber, range.first, 1});
      });
    }
  }

  bool Contains(const SSpecialRow& row) const { return rows_.find(row) != rows_.end(); }
  static bool IsSamePlace(const SSpecialRow& /*a*/, const SSpecialRow& /*b*/) { return false; }

 private:
  using Rows = std::set<SSpecialRow, TSpecialOrder<kRule>>;
  static constexpr std::size_t kMostSums = 4;

  Rows rows_;
};

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_CANDIDATES_H_
