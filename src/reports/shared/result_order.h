// The order of the results below a node.
#ifndef TALLY_REPORTS_SHARED_RESULT_ORDER_H_
#define TALLY_REPORTS_SHARED_RESULT_ORDER_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "report_model/report_data_method.h"
#include "reports/shared/fold_order.h"
#include "reports/shared/text_beginning.h"

/// Compares rows by the keys of their results, for the most part without reading the item records,
/// which lie far apart. REQUIRES: the indices of a row lie within their vectors.
template <class TData>
class CResultOrder {
 public:
  using TRow = typename decltype(TData::rows)::value_type;
  using TCalItem = typename decltype(TData::calItems)::value_type;

  explicit CResultOrder(const TData& data)
      : data_(data), hasPlaces_(data.sgds.size() * data.floors.size() <= kMostPairs) {
    if constexpr (kHasExpression) {
      items_.resize(data.calItems.size());
    }
  }

  /// Every row that will be compared is added first.
  void Add(const TRow& row) {
    if (hasPlaces_ && !places_.Knows(PairOf(row))) {
      std::wstring text = data_.sgds[static_cast<std::size_t>(row.sgd)].name;
      text += data_.floors[static_cast<std::size_t>(row.floor)].floorText;
      if constexpr (kHasExpression) {
        text += kEnd;
      }
      places_.Add(PairOf(row), text);
    }
    if constexpr (kHasExpression) {
      SItem& item = items_[static_cast<std::size_t>(row.calItem)];
      if (item.expression.IsNone()) {
        const TCalItem& record = data_.calItems[static_cast<std::size_t>(row.calItem)];
        item = {CTextBeginning(record.expression, kEnd),
                std::bit_cast<std::uint64_t>(QuantityOf(record))};
      }
    }
  }
  /// Ends the adding.
  void Rank() {
    places_.Rank();
    hasPlaces_ = hasPlaces_ && ArePlacesWholeOrder();
  }

  /// Below zero where the key of `a` stands before that of `b`, 0 where they are equal.
  int Compare(const TRow& a, const TRow& b) const {
    if (hasPlaces_) {
      const std::uint32_t placeA = places_.RankOf(PairOf(a));
      const std::uint32_t placeB = places_.RankOf(PairOf(b));
      if (placeA != placeB) {
        return placeA < placeB ? -1 : 1;
      }
    } else if (a.sgd != b.sgd || a.floor != b.floor) {
      return CompareKeys(a, b);
    }
    if constexpr (kHasExpression) {
      if (a.calItem == b.calItem) {
        return 0;
      }
      const SItem& itemA = items_[static_cast<std::size_t>(a.calItem)];
      const SItem& itemB = items_[static_cast<std::size_t>(b.calItem)];
      if (const int order = itemA.expression.Compare(itemB.expression); order != 0) {
        return order;
      }
      if (itemA.expression.IsWhole() && itemB.expression.IsWhole() &&
          itemA.quantity == itemB.quantity) {
        return 0;
      }
      return CompareKeys(a, b);
    } else {
      return 0;
    }
  }

 private:
  static constexpr bool kHasExpression = requires(const TCalItem& item) { item.expression; };
  static constexpr wchar_t kEnd = L'@';  // behind the expression and what stands before it
  static constexpr std::size_t kMostPairs = 1U << 16U;

  struct SItem {
    CTextBeginning expression;
    std::uint64_t quantity = 0;  // its bits
  };

  template <class TItem>
  static double QuantityOf(const TItem& item) {
    if constexpr (requires { item.quantity; }) {
      return item.quantity;
    } else {
      return item.quantity1;
    }
  }
  // Of section and floor.
  std::uint32_t PairOf(const TRow& row) const {
    return static_cast<std::uint32_t>(static_cast<std::size_t>(row.sgd) * data_.floors.size() +
                                      static_cast<std::size_t>(row.floor));
  }
  // Where one text of section and floor begins another, what follows counts too.
  bool ArePlacesWholeOrder() const {
    if constexpr (kHasExpression) {
      const auto& texts = places_.Texts();
      for (std::size_t i = 1; i < texts.size(); ++i) {
        if (texts[i].starts_with(texts[i - 1])) {
          return false;
        }
      }
    }
    return true;
  }
  CNodeKey KeyOf(const TRow& row) const {
    return CReportDataMethod::GetResultKey(data_.sgds[static_cast<std::size_t>(row.sgd)].name,
                                           data_.floors[static_cast<std::size_t>(row.floor)],
                                           data_.calItems[static_cast<std::size_t>(row.calItem)]);
  }
  int CompareKeys(const TRow& a, const TRow& b) const { return KeyOf(a).Compare(KeyOf(b)); }

  const TData& data_;
  CTextRanks places_;  // of the pairs of section and floor
  bool hasPlaces_;
  std::vector<SItem> items_;
};

#endif  // TALLY_REPORTS_SHARED_RESULT_ORDER_H_
