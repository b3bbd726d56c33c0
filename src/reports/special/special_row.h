// Row candidates of the paint, duct and insulation tables, and their orderings.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_ROW_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_ROW_H_

#include <array>
#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report_model/narrow_order.h"
#include "report_model/report_data_node.h"

/// What the texts of a candidate are until its level fills them.
const std::wstring& NoText();
const SAttSortKey& NoAttribute();

/// Details of a group that stand side by side, counted in one step of the walk.
struct SDetailRange {
  std::size_t first = 0;
  std::size_t last = 0;  ///< behind the last one
  /// The component kind whose circuits they are; null where the candidate shows none of them.
  const CReportCategory* circuits = nullptr;
  std::size_t step = 0;
};

/// Circuits that stand side by side and are numbered one by one.
struct SCircuits {
  const CReportCategory* category = nullptr;
  int firstNumber = 1;
  std::size_t firstDetail = 0;  ///< each has a detail of its own
  std::size_t count = 0;
};

/// Ranges in the order of the walk; there is mostly one.
class CDetailRanges {
 public:
  /// Joins a range without circuits to the one that it goes on from.
  void Add(const SDetailRange& range);
  template <class TVisit>
  void ForEach(TVisit&& visit) const {
    if (!isEmpty_) {
      visit(first_);
    }
    for (const SDetailRange& range : more_) {
      visit(range);
    }
  }

 private:
  bool isEmpty_ = true;
  SDetailRange first_;
  std::vector<SDetailRange> more_;
};

/// One row candidate. Each detail result feeds one at each depth, so that every depth sums on its
/// own. The texts belong to the tree or to the request.
struct SSpecialRow {
  static constexpr int kNoFloor = -1000000;

  bool IsMainItem = false;  ///< the item is the main one of its component kind
  bool Ascending = true;    ///< smaller numbers of AttName first
  int FloorSortId = kNoFloor;
  int SysCodeSortId = 0;
  int SysCodeNumber = 0;                          ///< equal where the texts are
  int CategorySortId = 0;                         ///< on circuit rows alone
  const std::wstring* Floor = &NoText();          ///< the floor shown
  const std::wstring* FloorName = &NoText();      ///< name of the floor node
  const std::wstring* SysCode = &NoText();        ///< cut to the level, with its remark
  const SAttSortKey* Attribute = &NoAttribute();  ///< AttName and AttText
  SAttPlaces AttPlaces{0, 0};
  int CalItemPlace = -1;  ///< SDetailItem::namePlace
  const std::wstring* CalItem = &NoText();
  const std::wstring* Unit = &NoText();
  const CReportCategory* LoopCategory =
      nullptr;         ///< of a circuit row, whose name begins with the kind
  int LoopNumber = 0;  ///< from 1 on circuit rows, else 0

  // No part of the key.
  mutable CDetailRanges Details;

  const std::wstring& AttName() const { return Attribute->name; }
  const std::wstring& AttText() const { return Attribute->value; }
};

/// The candidates of a TOrderedCandidates on one floor and of one system code, in order.
struct SRowPlace {
  int floorSortId;
  int sysCodeSortId;
  std::vector<std::size_t> rows;
};

/// One of the candidates that the details of an item go into.
struct SOpenSum {
  static constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

  SSpecialRow row;
  // Where TOrderedCandidates found it last, for items that are not the main one and that are.
  std::array<std::size_t, 2> found{kNotFound, kNotFound};
  SRowPlace* place = nullptr;
};

/// What a row shows of its details.
class CRowSum {
 public:
  CRowSum(const SSpecialRow& row, std::span<const SDetailSum> details);

  const std::array<double, 4>& Quantities() const { return quantities_; }
  /// Floors that the first detail's floor text stands for.
  int FloorCount() const { return floorCount_; }
  /// References of all details, each ended by one more "$". Those that do not follow on each other
  /// are composed in `texts`, and stay as long as these.
  std::wstring_view References(std::deque<std::wstring>& texts) && {
    return composed_.empty() ? references_ : texts.emplace_back(std::move(composed_));
  }

 private:
  void Start(const SDetailSum& detail) {
    quantities_ = detail.Quantities();
    floorCount_ = detail.floorCount;
    references_ = detail.references;
  }

  std::array<double, 4> quantities_{};
  int floorCount_ = 1;
  std::wstring_view references_;
  std::wstring composed_;  // where they do not follow on each other
};

/// How a step of an ordering compares two texts.
enum class ETextOrder { Plain, Narrow };

/// How two circuits of kinds with one sort number compare: their numbers rise in both, but the
/// names of the kinds run forwards or backwards.
enum class ELoopOrder { Forwards, Backwards };

/// The points in which the orderings differ.
struct SSpecialOrderRule {
  bool comparesSysCodeTexts;  ///< sort numbers decide only where the texts differ
  ETextOrder attText;
  ETextOrder calItem;
  ETextOrder unit;
  ELoopOrder loops;
};

/// Equal texts, often one object.
inline bool IsSameText(const std::wstring* a, const std::wstring* b) {
  return a == b || *a == *b;
}
int CompareTexts(const std::wstring& a, const std::wstring& b, ETextOrder order);
/// Below zero when a's circuit goes first: by component kind, then by name.
int CompareLoops(const SSpecialRow& a, const SSpecialRow& b, ELoopOrder order);

/// Orders the candidates of a block: floor, system code, attribute, the rows of items with the main
/// one first, then circuits.
template <SSpecialOrderRule kRule>
struct TSpecialOrder {
  bool operator()(const SSpecialRow& a, const SSpecialRow& b) const {
    if (a.FloorSortId != b.FloorSortId) {
      return a.FloorSortId < b.FloorSortId;
    }
    if (!IsSameSysCode(a, b)) {
      return a.SysCodeSortId < b.SysCodeSortId;
    }
    return IsBefore(a, b);
  }

  /// What decides on one floor below one system code.
  static bool IsBefore(const SSpecialRow& a, const SSpecialRow& b) {
    if (a.AttPlaces.ascending >= 0 && b.AttPlaces.ascending >= 0) {
      if (a.AttPlaces.ascending != b.AttPlaces.ascending) {
        return a.Ascending ? a.AttPlaces.ascending < b.AttPlaces.ascending
                           : a.AttPlaces.descending < b.AttPlaces.descending;
      }
    } else if (a.Attribute != b.Attribute) {
      if (a.AttName() != b.AttName()) {
        return CompareNatural(a.Attribute->narrowName, b.Attribute->narrowName, a.Ascending) < 0;
      }
      if (a.AttText() != b.AttText()) {
        return kRule.attText == ETextOrder::Plain
                   ? a.AttText() < b.AttText()
                   : a.Attribute->narrowValue < b.Attribute->narrowValue;
      }
    }
    if ((a.LoopNumber == 0) != (b.LoopNumber == 0)) {
      return a.LoopNumber == 0;
    }
    if (a.LoopNumber != 0) {
      return CompareLoops(a, b, kRule.loops) < 0;
    }
    if (a.IsMainItem != b.IsMainItem) {
      return a.IsMainItem;
    }
    if (!IsSameText(a.CalItem, b.CalItem)) {
      if (a.CalItemPlace >= 0 && b.CalItemPlace >= 0) {
        return a.CalItemPlace < b.CalItemPlace;
      }
      return CompareTexts(*a.CalItem, *b.CalItem, kRule.calItem) < 0;
    }
    return CompareTexts(*a.Unit, *b.Unit, kRule.unit) < 0;
  }

  /// Whether the ordering goes on below the system code.
  static bool IsSameSysCode(const SSpecialRow& a, const SSpecialRow& b) {
    return kRule.comparesSysCodeTexts ? a.SysCodeNumber == b.SysCodeNumber
                                      : a.SysCodeSortId == b.SysCodeSortId;
  }
};

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_ROW_H_
