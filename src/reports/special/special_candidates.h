// The row candidates of a block.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_CANDIDATES_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_CANDIDATES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "reports/shared/repeated_find.h"
#include "reports/special/special_row.h"

/// One of the candidates that the details of an item go into.
struct SOpenSum {
  SSpecialRow row;
  /// The elements equal to it last, of items that are not the main one and of those that are.
  std::array<const SSpecialRow*, 2> found{};
};

/// A set of candidates in which each is looked up before it is put in, detail by detail. Where the
/// ordering is consistent that comes to the same as one look-up for all details of an item, and
/// circuits need not be in the set: they stand behind the other rows of their attribute.
template <SSpecialOrderRule kRule>
class TSpecialCandidates {
 public:
  using Order = TSpecialOrder<kRule>;

  /// With `isOrdered` the attributes have places, and different items different narrow names.
  explicit TSpecialCandidates(bool isOrdered) : isOrdered_(isOrdered) {}

  bool Empty() const { return rows_.empty(); }
  /// Whether the ordering has turned out inconsistent after all: what was added is void.
  bool IsRefuted() const { return isRefuted_; }
  void Refute() { isRefuted_ = isOrdered_; }

  /// Must be told of each component kind before its items are added.
  void StartCategory(const CReportCategory& category, bool ascending) {
    if (!isOrdered_) {
      return;
    }
    const auto kind = kinds_.try_emplace(category.sortId, &category.kind).first;
    if (!IsSameText(kind->second, &category.kind) || ascending_.value_or(ascending) != ascending) {
      Refute();
    }
    ascending_ = ascending;
  }

  /// Counts details of one item in the elements equal to `sums`, outermost first. The circuits of a
  /// range go with the last of them.
  void AddItem(std::span<SOpenSum> sums, SDetailRange range) {
    if (sums.empty() || range.first == range.last || isRefuted_) {
      return;
    }
    range.step = ++steps_;
    if (isOrdered_) {
      AddAtOnce(sums, range);
    } else {
      AddOneByOne(sums, range);
    }
  }

  /// Calls `visit(const SSpecialRow&)` for all candidates in order.
  template <class TVisit>
  void ForEachRow(TVisit&& visit) const {
    std::vector<SCircuits> circuits;  // of one attribute
    for (const SSpecialRow& row : rows_) {
      if (!circuits.empty() && !IsSamePlace(*circuits.front().row, row)) {
        VisitCircuits(circuits, visit);
        circuits.clear();
      }
      visit(row);
      if (isOrdered_) {
        row.Details.ForEach([&](const SDetailRange& range) {
          if (range.circuits != nullptr) {
            circuits.push_back({&row, range});
          }
        });
      }
    }
    VisitCircuits(circuits, visit);
  }

  bool Contains(const SSpecialRow& row) const { return rows_.find(row) != rows_.end(); }
  /// Whether an answer about the attribute of `a` in its place holds for `b`.
  bool IsSamePlace(const SSpecialRow& a, const SSpecialRow& b) const {
    return isOrdered_ && a.FloorSortId == b.FloorSortId && a.SysCodeSortId == b.SysCodeSortId &&
           a.AttPlaces.ascending == b.AttPlaces.ascending;
  }

 private:
  using Rows = std::set<SSpecialRow, Order>;
  static constexpr std::size_t kMostSums = 4;

  struct SCircuits {
    const SSpecialRow* row;
    SDetailRange range;
  };
  struct SCircuit {
    int categorySortId;
    int number;
    std::size_t step;
    std::size_t source;
  };

  void AddAtOnce(std::span<SOpenSum> sums, const SDetailRange& range) {
    std::array<const SSpecialRow*, kMostSums> elements{};
    bool isDistinct = true;
    for (std::size_t i = 0; i < sums.size(); ++i) {
      elements[i] = &Element(sums[i]);
      for (std::size_t j = 0; j < i; ++j) {
        isDistinct = isDistinct && elements[j] != elements[i];
      }
    }
    // An element of another system code takes the sums, but no circuit.
    const SSpecialRow& last = *elements[sums.size() - 1];
    const bool isTaken = !Order::IsSameSysCode(last, sums.back().row);
    // A circuit shows the unit of its own item, and only below a floor with a name.
    if (!isTaken && !(isDistinct && IsEqual(last, sums.back().row) &&
                      last.FloorName->empty() == sums.back().row.FloorName->empty())) {
      Refute();
      return;
    }
    // Where one element takes several sums, it takes them detail by detail.
    const std::size_t count = isDistinct ? range.last - range.first : 1;
    SDetailRange part = range;
    for (part.first = range.first; part.first < range.last; part.first = part.last) {
      part.last = part.first + count;
      for (std::size_t i = 0; i < sums.size(); ++i) {
        part.circuits = i + 1 < sums.size() || isTaken ? nullptr : range.circuits;
        elements[i]->Details.Add(part);
      }
    }
  }

  const SSpecialRow& Element(SOpenSum& sum) {
    const SSpecialRow*& found = sum.found[sum.row.IsMainItem ? 1 : 0];
    if (found == nullptr || !IsEqual(*found, sum.row)) {
      const auto at = rows_.lower_bound(sum.row);
      found =
          at != rows_.end() && !Order()(sum.row, *at) ? &*at : &*rows_.emplace_hint(at, sum.row);
    }
    return *found;
  }

  // Equal in every text, so that no row put in later stands between them.
  static bool IsEqual(const SSpecialRow& a, const SSpecialRow& b) {
    return a.FloorSortId == b.FloorSortId && Order::IsSameSysCode(a, b) &&
           a.AttPlaces.ascending == b.AttPlaces.ascending && a.IsMainItem == b.IsMainItem &&
           IsSameText(a.CalItem, b.CalItem) && IsSameText(a.Unit, b.Unit);
  }

  void AddOneByOne(std::span<const SOpenSum> sums, const SDetailRange& range) {
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

  // The circuits of one attribute; of equal ones that which was counted first.
  template <class TVisit>
  static void VisitCircuits(const std::vector<SCircuits>& of, TVisit& visit) {
    std::vector<SCircuit> circuits;
    for (std::size_t source = 0; source < of.size(); ++source) {
      const SDetailRange& range = of[source].range;
      const int count = static_cast<int>(range.last - range.first);
      for (int number = 1; number <= count; ++number) {
        circuits.push_back({range.circuits->sortId, number, range.step, source});
      }
    }
    const auto place = [](const SCircuit& a) { return std::tie(a.categorySortId, a.number); };
    if (of.size() > 1) {
      std::sort(circuits.begin(), circuits.end(), [&](const SCircuit& a, const SCircuit& b) {
        return place(a) != place(b) ? place(a) < place(b) : a.step < b.step;
      });
      const auto isSame = [&](const SCircuit& a, const SCircuit& b) {
        return place(a) == place(b);
      };
      circuits.erase(std::unique(circuits.begin(), circuits.end(), isSame), circuits.end());
    }
    std::size_t shown = of.size();
    SSpecialRow row;
    for (const SCircuit& circuit : circuits) {
      const SCircuits& source = of[circuit.source];
      if (circuit.source != shown) {
        shown = circuit.source;
        row = *source.row;
        row.LoopCategory = source.range.circuits;
        row.CategorySortId = circuit.categorySortId;
      }
      const std::size_t detail = source.range.first + static_cast<std::size_t>(circuit.number) - 1;
      row.LoopNumber = circuit.number;
      row.Details = {};
      row.Details.Add({detail, detail + 1});
      visit(static_cast<const SSpecialRow&>(row));
    }
  }

  bool isOrdered_;
  bool isRefuted_ = false;
  Rows rows_;
  std::size_t steps_ = 0;
  std::map<int, const std::wstring*> kinds_;  // by sort number
  std::optional<bool> ascending_;
};

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_CANDIDATES_H_
