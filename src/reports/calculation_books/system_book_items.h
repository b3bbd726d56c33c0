// What the system calculation book keeps of a discipline from the fold on.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ITEMS_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ITEMS_H_

#include <array>
#include <cstddef>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/report_data_node.h"

/// A circuit as its row shows it where nothing is left out.
struct SBookCircuit {
  std::wstring_view formula;
  std::wstring_view references;
  std::array<double, 4> sums{};  ///< of all components and floors
};

/// The circuits of a main item, and how its own row shows them where each is a term.
struct SBookCircuits {
  std::size_t first = 0;
  std::size_t last = 0;  ///< behind the last one
  std::wstring_view formula;
  std::wstring_view references;
};

/// A calculation item where nothing is left out.
struct SBookItem {
  static constexpr int kMinor = -1;

  const CReportCalItem* node = nullptr;
  std::array<double, 4> quantities{};  ///< of one floor
  int floorCount = 0;                  ///< of the first result
  int place = 0;                       ///< of name and unit
  int circuits = kMinor;               ///< of the main item of its kind

  bool IsMain() const { return circuits != kMinor; }
};

/// Name and unit of items; one object for each pair of texts.
struct SBookItemText {
  std::wstring_view name;
  std::wstring_view unit;
};

/// A component kind.
struct SBookKind {
  int sortId = 0;
  bool isLineWork = false;
  std::wstring category;
  std::wstring path;
  std::wstring mainItem;
};

/// An attribute of a system code and its items, which stand in the order of rows.
struct SBookAttribute {
  const CReportSysCode* holder = nullptr;
  const SBookKind* kind = nullptr;
  const SAttSortKey* texts = nullptr;
  SAttPlaces places;  ///< of the name
  SDetailItems items;
};

/// The attributes of a discipline in the order of the walk. The system codes know which are theirs.
class CSystemBookItems {
 public:
  /// Places the attributes' names too. Null where the texts that rows are sorted by are not known
  /// to have an order.
  static std::shared_ptr<const CSystemBookItems> Of(CReportSpec& spec);

  std::span<const SBookAttribute> Below(const CReportSysCode& sysCode) const {
    return Part(attributes_, sysCode.items);
  }
  std::span<const SBookItem> ItemsOf(const SBookAttribute& attribute) const {
    return Part(items_, attribute.items);
  }
  const SBookItemText& TextOf(const SBookItem& item) const {
    return texts_[static_cast<std::size_t>(item.place)];
  }
  /// REQUIRES: the item is a main one.
  const SBookCircuits& CircuitsOf(const SBookItem& item) const {
    return circuitsOfItems_[static_cast<std::size_t>(item.circuits)];
  }
  /// By number, from 1.
  std::span<const SBookCircuit> EachOf(const SBookCircuits& circuits) const {
    return Part(circuits_, {circuits.first, circuits.last});
  }

 private:
  class CBuilder;

  template <class T>
  static std::span<const T> Part(const std::vector<T>& all, const SDetailItems& part) {
    return std::span(all).subspan(part.first, part.last - part.first);
  }

  std::vector<SBookAttribute> attributes_;
  std::vector<SBookItem> items_;
  std::vector<SBookItemText> texts_;  // by place
  std::vector<SBookCircuits> circuitsOfItems_;
  std::vector<SBookCircuit> circuits_;
  std::deque<SBookKind> kinds_;
  std::deque<std::wstring> circuitTexts_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ITEMS_H_
