// Row candidates of the paint, duct and insulation tables, and their orderings.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_ROW_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_ROW_H_

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/narrow_order.h"
#include "report_model/report_data_node.h"

/// What the texts of a candidate are until its level fills them.
const std::wstring& NoText();
const SAttSortKey& NoAttribute();

/// One row candidate. Each detail result feeds one at each depth, so that every depth sums on its
/// own. The texts belong to the tree or to the request.
struct SSpecialRow {
  static constexpr int kNoFloor = -1000000;

  bool IsMainItem = false;  ///< the item is the main one of its component kind
  bool Ascending = true;    ///< smaller numbers of AttName first
  int FloorSortId = kNoFloor;
  int SysCodeSortId = 0;
  int CategorySortId = 0;                         ///< on circuit rows alone
  const std::wstring* Floor = &NoText();          ///< the floor shown
  const std::wstring* FloorName = &NoText();      ///< name of the floor node
  const std::wstring* SysCode = &NoText();        ///< cut to the level, with its remark
  const SAttSortKey* Attribute = &NoAttribute();  ///< AttName and AttText
  const std::wstring* CalItem = &NoText();
  const std::wstring* Unit = &NoText();
  const CReportCategory* LoopCategory =
      nullptr;         ///< of a circuit row, whose name begins with the kind
  int LoopNumber = 0;  ///< from 1 on circuit rows, else 0
  int FloorCount = 1;  ///< floors that the first detail's floor text stands for

  // No part of the key.
  mutable std::array<double, 4> Quantity{};
  mutable std::vector<const CReportResultDetail*> References;  ///< where the row prints them

  const std::wstring& AttName() const { return Attribute->name; }
  const std::wstring& AttText() const { return Attribute->value; }
  /// "%s回路%d" of the component kind and the number; empty on other rows.
  std::wstring LoopName() const;
  /// References of all details, each ended by one more "$".
  std::wstring Expression() const;
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
    if constexpr (kRule.comparesSysCodeTexts) {
      if (!IsSameText(a.SysCode, b.SysCode)) {
        return a.SysCodeSortId < b.SysCodeSortId;
      }
    } else if (a.SysCodeSortId != b.SysCodeSortId) {
      return a.SysCodeSortId < b.SysCodeSortId;
    }
    if (a.Attribute != b.Attribute) {
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
      return CompareTexts(*a.CalItem, *b.CalItem, kRule.calItem) < 0;
    }
    return CompareTexts(*a.Unit, *b.Unit, kRule.unit) < 0;
  }
};

template <SSpecialOrderRule kRule>
using SpecialRows = std::set<SSpecialRow, TSpecialOrder<kRule>>;

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_ROW_H_
