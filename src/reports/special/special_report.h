// What the paint, duct and insulation tables share: the fold below their groups, the walk, and the
// filling of row candidates level by level.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_REPORT_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_REPORT_H_

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"
#include "reports/shared/category_blocks.h"
#include "reports/shared/level_test.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/node_report.h"
#include "reports/shared/repeated_find.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/section_choice.h"
#include "reports/special/special_row.h"

/// Whether a detail of another floor than those of the pair is left out.
enum class EFloorPairTest { None, LeavesOut };
/// How a system code shows its remark.
enum class ERemark { InBrackets, Bare };
/// Whether the head rows (total, floor, system code) are summed for each item by name or not.
enum class EHeadKey { Unit, ItemAndUnit };

/// The points in which the filling differs.
struct SSpecialShape {
  EFloorPairTest floorPairTest;
  CLevelTest floorRow;
  CLevelTest attributeRow;
  ERemark remark;
  EHeadKey headKey;
};

class CSpecialReport : public CNodeReport {
 public:
  /// Deepest rows shown.
  enum ELevelType : int {
    LevelTotal = 0,
    LevelAttribute = 1,
    LevelFloor = 2,
    LevelSysCode1 = 3,
    LevelSysCode2 = 4,
    LevelSysCode3 = 5,
    LevelLoop = 6,
  };

 protected:
  explicit CSpecialReport(const SSpecialShape& shape) : shape_(shape) {}

  /// States the nesting, the same in all three. `getGroup(children, number)` looks up the node of
  /// the group that a row is added with.
  template <class TData, class TGetGroup>
  static void StateLevels(CRowFolder<TData>& fold, TGetGroup&& getGroup) {
    fold.Spec().Level({}, [getGroup](auto& to, auto& of) { return getGroup(to, of.group); });
    fold.Floor().SysCode().Category().AttributeByBothTexts().CalItem();
  }
  /// Stores in `value` what the attribute line that begins with `prefix` holds behind its colon: a
  /// line of the record's `name`, or where none there begins so, of its `value`. Left alone where
  /// there is no such line, or it has no colon.
  static void ReadParameter(std::wstring& value, const KorDMRec::SKorDMAttrRec& record,
                            const std::wstring& prefix);

  /// The blocks of one discipline, appended to `rows`: for each TGroup node the candidates below it
  /// are collected, and `makeBlock(group, candidates)` makes its TBlock, or none. A group without
  /// candidates has no block. A discipline without a node appends nothing and leaves the stored
  /// condition as it was.
  template <class TGroup, class TBlock, SSpecialOrderRule kRule, class TMakeBlock>
  void ShowGroups(Report::CellArray& rows, const std::wstring& requestSpec,
                  const Report::SNewCondition& requestCondition, int level, int bySgd,
                  TMakeBlock&& makeBlock) {
    const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
    if (node == nullptr) {
      return;
    }
    RunSectionPasses(rows, bySgd, [&](const CSectionChoice& sections) {
      std::set<TBlock> blocks;
      ForEachChild<TGroup>(node->children, [&](const TGroup& group) {
        TextPool texts;
        SpecialRows<kRule> candidates;
        Collect(candidates, texts, group, level, sections);
        if (candidates.empty()) {
          return;
        }
        if (std::optional<TBlock> block = makeBlock(group, candidates)) {
          PutBlock(blocks, std::move(*block));
        }
      });
      CCellBlock out;
      TakeBlocks(out, std::move(blocks));
      return out;
    });
  }

 private:
  /// Texts made for a request that candidates refer to; one object for each text.
  using TextPool = std::set<std::wstring>;

  /// Whether an item's details count at level 0.
  virtual bool ShowsAtLevel0(const CReportCalItem& item, bool isMain) const = 0;
  /// Whether an item's details feed the head rows.
  virtual bool FeedsHeads(const CReportCategory& category, const CReportCalItem& item) const = 0;
  /// Whether the head rows of an item are printed, with their references.
  virtual bool PrintsHeads(const CReportCalItem& item, bool isMain) const = 0;
  /// Whether smaller numbers of attribute names go first.
  virtual bool SortsAscending(const CReportCategory& category) const = 0;

  void FillFloor(SSpecialRow& row, const sReportData& place, const CPickedFloor& picked) const;
  void FillSysCode(SSpecialRow& row, TextPool& texts, const sReportData& place, int level) const;

  template <class TRows>
  void Collect(TRows& rows, TextPool& texts, const IReportDataNode& group, int level,
               const CSectionChoice& sections) const;
  template <class TRows>
  void CollectItem(TRows& rows, TextPool& texts, sReportData& place, bool isMain, int level,
                   const CPickedFloor& picked, const CSectionChoice& sections) const;

  const SSpecialShape& shape_;
};

/// The detail's quantities, each times the number of its components and of floors.
std::array<double, 4> DetailQuantities(const CReportResultDetail& detail, int floorCount);

/// What the details of one item add to.
template <class TRows>
struct TOpenSum {
  SSpecialRow row;
  TRepeatedFind<TRows> find;
};

/// Adds a detail to the element equal to the sum's row, which is put in if there is none. Where the
/// ordering is not consistent, the set may refuse what was not found: the detail is then lost to
/// this row.
template <class TRows>
void SumDetail(TRows& rows, TOpenSum<TRows>& sum, const CReportResultDetail& detail,
               const std::array<double, 4>& quantities, int floorCount, bool printsReferences) {
  auto at = sum.find(rows, sum.row);
  if (at == rows.end()) {
    SSpecialRow first = sum.row;
    first.Quantity = quantities;
    first.FloorCount = floorCount;
    bool isIn = false;
    std::tie(at, isIn) = rows.insert(std::move(first));
    if (!isIn) {
      return;
    }
  } else {
    for (std::size_t i = 0; i < quantities.size(); ++i) {
      at->Quantity[i] += quantities[i];
    }
  }
  if (printsReferences) {
    at->References.push_back(&detail);
  }
}

template <class TRows>
void CSpecialReport::Collect(TRows& rows, TextPool& texts, const IReportDataNode& group, int level,
                             const CSectionChoice& sections) const {
  ForEachChosenFloor<EPairKey::Floor>(
      group.children, condition.floors,
      [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring&,
          const std::wstring&) {
        sReportData place;
        place.floor = &floor;
        ForEachCategoryBelow(floor, condition,
                             [&](const CReportSysCode& holder, const CReportCategory& category) {
                               place.sysCode = &holder;
                               place.category = &category;
                               const std::wstring main = MainCalItemOf(spec, category);
                               ForEachChild<CReportAttribute>(
                                   category.children, [&](const CReportAttribute& attribute) {
                                     place.attribute = &attribute;
                                     ForEachChild<CReportCalItem>(
                                         attribute.children, [&](const CReportCalItem& item) {
                                           place.calItem = &item;
                                           CollectItem(rows, texts, place, item.name == main, level,
                                                       picked, sections);
                                         });
                                   });
                             });
      });
}

template <class TRows>
void CSpecialReport::CollectItem(TRows& rows, TextPool& texts, sReportData& place, bool isMain,
                                 int level, const CPickedFloor& picked,
                                 const CSectionChoice& sections) const {
  const auto& category = *NodeAs<CReportCategory>(place.category);
  const auto& attribute = *NodeAs<CReportAttribute>(place.attribute);
  const auto& item = *NodeAs<CReportCalItem>(place.calItem);
  if (level == LevelTotal && !ShowsAtLevel0(item, isMain)) {
    return;
  }
  // The heads, outermost first, then the attribute's row: each is the one before with more filled.
  constexpr std::size_t kMostSums = 4;
  std::array<TOpenSum<TRows>, kMostSums> sums;
  std::size_t count = 0;
  std::size_t heads = 0;
  const bool feedsHeads = FeedsHeads(category, item);
  SSpecialRow row;
  const auto addHead = [&] {
    if (feedsHeads) {
      sums[count++].row = row;
      heads = count;
    }
  };
  row.IsMainItem = isMain;
  row.Ascending = SortsAscending(category);
  row.Unit = &item.unit;
  if (shape_.headKey == EHeadKey::ItemAndUnit) {
    row.CalItem = &item.name;
  }
  addHead();
  if (level != LevelTotal) {
    if (shape_.floorRow.Holds(level)) {
      FillFloor(row, place, picked);
      addHead();
    }
    if (level >= LevelSysCode1) {
      FillSysCode(row, texts, place, level);
      addHead();
    }
    row.Attribute = attribute.sortKey.get();
    row.CalItem = &item.name;
    if (shape_.attributeRow.Holds(level)) {
      sums[count++].row = row;
    }
  }
  const bool hasLoops = isMain && level == LevelLoop;
  row.CategorySortId = category.sortId;
  row.LoopCategory = &category;
  int loopNumber = 1;
  ForEachChild<CReportResultDetail>(item.children, [&](const CReportResultDetail& detail) {
    place.resultDetail = &detail;
    if (!sections.Takes(detail.sgdName) ||
        (shape_.floorPairTest == EFloorPairTest::LeavesOut && !picked.Takes(detail))) {
      return;
    }
    const int floorCount = picked.CountFor(detail);
    const std::array<double, 4> quantities = DetailQuantities(detail, floorCount);
    for (std::size_t i = 0; i < count; ++i) {
      // A total has no row of its own, so its references would go nowhere.
      const bool prints = i >= heads || (i > 0 && PrintsHeads(item, isMain));
      SumDetail(rows, sums[i], detail, quantities, floorCount, prints);
    }
    if (hasLoops) {
      // Put in as it is: where an equal circuit stands already, this one is dropped.
      TOpenSum<TRows> loop{row, {}};
      loop.row.LoopNumber = loopNumber++;
      if (loop.find(rows, loop.row) == rows.end()) {
        SumDetail(rows, loop, detail, quantities, floorCount, true);
      }
    }
  });
}

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_REPORT_H_
