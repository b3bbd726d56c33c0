// The row candidates of a block whose ordering is consistent.
#ifndef TALLY_REPORTS_SPECIAL_ORDERED_CANDIDATES_H_
#define TALLY_REPORTS_SPECIAL_ORDERED_CANDIDATES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "reports/special/special_row.h"

/// Comes to the same as TSpecialCandidates where the attributes have places and different items
/// different narrow names: one look-up for all details of an item does, and circuits need none, as
/// they stand behind the other rows of their attribute.
template <SSpecialOrderRule kRule>
class TOrderedCandidates {
 public:
  /// Begins another block.
  void Clear() {
    isRefuted_ = false;
    rows_.clear();
    places_.clear();
    kinds_.clear();
    ascending_.reset();
  }

  bool Empty() const { return rows_.empty(); }
  /// Whether the ordering has turned out inconsistent after all: what was added is void.
  bool IsRefuted() const { return isRefuted_; }
  void Refute() { isRefuted_ = true; }

  /// Must be told of each component kind before its items are added.
  void StartCategory(const CReportCategory& category, bool ascending) {
    const auto kind = kinds_.try_emplace(category.sortId, &category.kind).first;
    if (!IsSameText(kind->second, &category.kind) || ascending_.value_or(ascending) != ascending) {
      Refute();
    }
    ascending_ = ascending;
  }

  /// Counts details of one item in the candidates equal to `sums`, outermost first. The circuits of
  /// a range go with the last of them.
  void AddItem(std::span<SOpenSum> sums, SDetailRange range) {
    if (sums.empty() || range.first == range.last || isRefuted_) {
      return;
    }
    range.step = ++steps_;
    std::array<std::size_t, kMostSums> found{};
    bool isDistinct = true;
    for (std::size_t i = 0; i < sums.size(); ++i) {
      found[i] = Find(sums[i]);
      isDistinct =
          isDistinct && std::find(found.begin(), found.begin() + i, found[i]) == found.begin() + i;
    }
    // A candidate of another system code takes the sums, but no circuit.
    const SSpecialRow& last = rows_[found[sums.size() - 1]];
    const bool isTaken = !Order::IsSameSysCode(last, sums.back().row);
    // A circuit shows the unit of its own item, and only below a floor with a name.
    if (!isTaken && !(isDistinct && IsEqual(last, sums.back().row) &&
                      last.FloorName->empty() == sums.back().row.FloorName->empty())) {
      Refute();
      return;
    }
    // Where one candidate takes several sums, it takes them detail by detail.
    const std::size_t count = isDistinct ? range.last - range.first : 1;
    SDetailRange part = range;
    for (part.first = range.first; part.first < range.last; part.first = part.last) {
      part.last = part.first + count;
      for (std::size_t i = 0; i < sums.size(); ++i) {
        part.circuits = i + 1 < sums.size() || isTaken ? nullptr : range.circuits;
        rows_[found[i]].Details.Add(part);
      }
    }
  }

  /// Calls `addRow(const SSpecialRow&)` and `addCircuits(const SSpecialRow&, const SCircuits&)` for
  /// all candidates and circuits in order.
  template <class TAddRow, class TAddCircuits>
  void ForEachRow(TAddRow&& addRow, TAddCircuits&& addCircuits) const {
    std::vector<SItemCircuits> circuits;  // of one attribute
    for (const auto& [key, place] : places_) {
      for (const std::size_t at : place.rows) {
        const SSpecialRow& row = rows_[at];
        if (!circuits.empty() && !IsSamePlace(*circuits.front().row, row)) {
          AddCircuits(circuits, addCircuits);
        }
        addRow(row);
        row.Details.ForEach([&](const SDetailRange& range) {
          if (range.circuits != nullptr) {
            circuits.push_back({&row, range});
          }
        });
      }
      AddCircuits(circuits, addCircuits);
    }
  }

  bool Contains(const SSpecialRow& row) const {
    const auto place = places_.find({row.FloorSortId, row.SysCodeSortId});
    if (place == places_.end()) {
      return false;
    }
    const auto at = LowerBound(place->second, row);
    return at != place->second.rows.end() && !Order::IsBefore(row, rows_[*at]);
  }
  /// Whether an answer about the attribute of `a` in its place holds for `b`.
  bool IsSamePlace(const SSpecialRow& a, const SSpecialRow& b) const {
    return a.FloorSortId == b.FloorSortId && a.SysCodeSortId == b.SysCodeSortId &&
           a.AttPlaces.ascending == b.AttPlaces.ascending;
  }

 private:
  using Order = TSpecialOrder<kRule>;
  static constexpr std::size_t kMostSums = 4;

  struct SItemCircuits {
    const SSpecialRow* row;
    SDetailRange range;
  };
  struct SCircuit {
    int categorySortId;
    int number;
    std::size_t step;
    std::size_t source;
  };

  // Answers the candidate equal to a sum, which may be new.
  std::size_t Find(SOpenSum& sum) {
    const SSpecialRow& row = sum.row;
    std::size_t& found = sum.found[row.IsMainItem ? 1 : 0];
    if (found >= rows_.size() || !IsEqual(rows_[found], row)) {
      SRowPlace& place = PlaceOf(sum);
      if (!place.rows.empty() && !Order::IsSameSysCode(rows_[place.rows.front()], row)) {
        return place.rows.front();
      }
      const auto at = LowerBound(place, row);
      if (at != place.rows.end() && !Order::IsBefore(row, rows_[*at])) {
        found = *at;
      } else {
        found = rows_.size();
        place.rows.insert(at, found);
        rows_.push_back(row);
      }
    }
    return found;
  }

  // The floor and the sort number of the system code, which has the text of its first candidate.
  SRowPlace& PlaceOf(SOpenSum& sum) {
    const auto& [floor, sysCode] = std::tie(sum.row.FloorSortId, sum.row.SysCodeSortId);
    if (sum.place == nullptr || sum.place->floorSortId != floor ||
        sum.place->sysCodeSortId != sysCode) {
      sum.place =
          &places_.try_emplace({floor, sysCode}, SRowPlace{floor, sysCode, {}}).first->second;
    }
    return *sum.place;
  }

  auto LowerBound(const SRowPlace& place, const SSpecialRow& row) const {
    return std::lower_bound(place.rows.begin(), place.rows.end(), row,
                            [this](std::size_t at, const SSpecialRow& other) {
                              return Order::IsBefore(rows_[at], other);
                            });
  }

  // Equal in every text, so that no candidate that comes later stands between them.
  static bool IsEqual(const SSpecialRow& a, const SSpecialRow& b) {
    return a.FloorSortId == b.FloorSortId && Order::IsSameSysCode(a, b) &&
           a.AttPlaces.ascending == b.AttPlaces.ascending && a.IsMainItem == b.IsMainItem &&
           IsSameText(a.CalItem, b.CalItem) && IsSameText(a.Unit, b.Unit);
  }

  // The circuits of one attribute; of equal ones that which was counted first.
  template <class TAddCircuits>
  static void AddCircuits(std::vector<SItemCircuits>& of, TAddCircuits& addCircuits) {
    const auto add = [&](const SItemCircuits& source, int number, std::size_t count) {
      const std::size_t detail = source.range.first + static_cast<std::size_t>(number) - 1;
      addCircuits(*source.row, SCircuits{source.range.circuits, number, detail, count});
    };
    if (of.size() == 1) {
      add(of.front(), 1, of.front().range.last - of.front().range.first);
    } else {
      for (const SCircuit& circuit : InOrder(of)) {
        add(of[circuit.source], circuit.number, 1);
      }
    }
    of.clear();
  }
  static int Count(const SItemCircuits& of) {
    return static_cast<int>(of.range.last - of.range.first);
  }
  static std::vector<SCircuit> InOrder(std::span<const SItemCircuits> of) {
    std::vector<SCircuit> circuits;
    for (std::size_t source = 0; source < of.size(); ++source) {
      const SDetailRange& range = of[source].range;
      for (int number = 1; number <= Count(of[source]); ++number) {
        circuits.push_back({range.circuits->sortId, number, range.step, source});
      }
    }
    const auto place = [](const SCircuit& a) { return std::tie(a.categorySortId, a.number); };
    std::sort(circuits.begin(), circuits.end(), [&](const SCircuit& a, const SCircuit& b) {
      return place(a) != place(b) ? place(a) < place(b) : a.step < b.step;
    });
    const auto isSame = [&](const SCircuit& a, const SCircuit& b) { return place(a) == place(b); };
    circuits.erase(std::unique(circuits.begin(), circuits.end(), isSame), circuits.end());
    return circuits;
  }

  bool isRefuted_ = false;
  std::vector<SSpecialRow> rows_;  // as they were first counted
  std::map<std::pair<int, int>, SRowPlace> places_;
  std::size_t steps_ = 0;
  std::map<int, const std::wstring*> kinds_;  // by sort number
  std::optional<bool> ascending_;
};

#endif  // TALLY_REPORTS_SPECIAL_ORDERED_CANDIDATES_H_
