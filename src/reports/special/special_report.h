// What the paint, duct and insulation tables share: the fold below their groups, the walk, and the
// filling of row candidates level by level.
#ifndef TALLY_REPORTS_SPECIAL_SPECIAL_REPORT_H_
#define TALLY_REPORTS_SPECIAL_SPECIAL_REPORT_H_

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"
#include "reports/shared/category_blocks.h"
#include "reports/shared/level_test.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/node_report.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/section_choice.h"
#include "reports/special/attribute_places.h"
#include "reports/special/loop_names.h"
#include "reports/special/ordered_candidates.h"
#include "reports/special/shown_sys_codes.h"
#include "reports/special/special_candidates.h"
#include "reports/special/special_row.h"
#include "reports/special/special_rows.h"

/// Whether a detail of another floor than those of the pair is left out.
enum class EFloorPairTest { None, LeavesOut };
/// Whether the head rows (total, floor, system code) are summed for each item by name or not.
enum class EHeadKey { Unit, ItemAndUnit };

/// The points in which the filling differs.
struct SSpecialShape {
  EFloorPairTest floorPairTest;
  CLevelTest floorRow;
  CLevelTest attributeRow;
  ERemark remark;
  EHeadKey headKey;
  SSpecialLayout layout;
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
  /// Ends the fold: sums up the details of each TGroup, and finds the order of the attributes.
  template <class TGroup, SSpecialOrderRule kRule>
  void SumGroups() {
    std::vector<SDetailSums*> groups;
    for (const auto& specNode : root.InOrder()) {
      for (const auto& child : specNode->children.InOrder()) {
        if (auto* group = NodeAs<TGroup>(child.get())) {
          SumDetails(*group, group->sums);
          groups.push_back(&group->sums);
        }
      }
    }
    isOrdered_ = (kRule.calItem == ETextOrder::Plain || PlaceNames(groups)) &&
                 PlaceAttributes(groups, kRule.attText);
  }
  /// Stores in `value` what the attribute line that begins with `prefix` holds behind its colon: a
  /// line of the record's `name`, or where none there begins so, of its `value`. Left alone where
  /// there is no such line, or it has no colon.
  static void ReadParameter(std::wstring& value, const KorDMRec::SKorDMAttrRec& record,
                            const std::wstring& prefix);

  /// The blocks of one discipline, appended to `rows`: for each TGroup node the candidates below it
  /// are collected, and `makeBlock(group, candidates, std::unique_ptr<CSpecialRows>&&)` makes its
  /// TBlock of the rows, which are empty, or none. A group without candidates has no block. A
  /// discipline without a node appends nothing and leaves the stored condition as it was.
  /// `totalItem` is that of the request, where it depends on one.
  template <class TGroup, class TBlock, SSpecialOrderRule kRule, class TMakeBlock>
  void ShowGroups(Report::CellArray& rows, const std::wstring& requestSpec,
                  const Report::SNewCondition& requestCondition, int level, int bySgd,
                  const std::wstring& totalItem, TMakeBlock&& makeBlock) {
    const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
    if (node == nullptr) {
      return;
    }
    auto texts = std::make_shared<STexts>(STexts{{spec, level, shape_.remark}, {}});
    SRequest request{level, *texts, {}};
    const auto pass = [&](const CSectionChoice& sections) {
      std::set<TBlock> blocks;
      TOrderedCandidates<kRule> ordered;
      ForEachChild<TGroup>(node->children, [&](const TGroup& group) {
        // Answers false where the candidates turn out to be of no consistent order.
        const auto show = [&](auto&& candidates) {
          CCountedDetails details(group.sums, sections.TakesAll() && condition.floors.empty());
          Collect<kRule>(candidates, details, group, request, sections);
          if (candidates.IsRefuted()) {
            return false;
          }
          if (!candidates.Empty()) {
            const std::span<const SDetailSum> all = details.All();
            auto blockRows = std::make_unique<CSpecialRows>(shape_.layout, request.texts.loopNames,
                                                            all, details.TakeTaken());
            if (std::optional<TBlock> block = makeBlock(group, candidates, std::move(blockRows))) {
              PutBlock(blocks, std::move(*block));
            }
          }
          return true;
        };
        ordered.Clear();
        if (!isOrdered_ || !show(ordered)) {
          show(TSpecialCandidates<kRule>());
        }
      });
      CCellBlock out;
      TakeBlocks(out, std::move(blocks));
      return out;
    };
    RunKeptPasses(rows, *node, {level, totalItem}, texts, bySgd, pass);
  }

 private:
  /// An item of a component kind as a request takes it.
  struct SKindItem {
    const std::wstring* name;
    bool isMain;
    bool isShown;
    bool feedsHeads;
  };

  /// A component kind as a request takes it.
  struct SKind {
    const CReportCategory* category;
    std::wstring mainItem;
    bool ascending;
    std::vector<SKindItem> items;
  };

  /// What the rows of an answer refer to.
  struct STexts {
    CShownSysCodes sysCodes;
    CLoopNames loopNames;
  };

  /// What one request works out once.
  struct SRequest {
    int level;
    STexts& texts;
    std::vector<SKind> kinds;
  };

  /// The details of a group that a pass counts: all of them as they were summed up at the fold, or
  /// copies of some.
  class CCountedDetails {
   public:
    CCountedDetails(const SDetailSums& sums, bool takesAll) : sums_(sums), takesAll_(takesAll) {}
    std::span<const SDetailSum> All() const { return takesAll_ ? sums_.details : taken_; }
    const SDetailSums& Sums() const { return sums_; }
    /// Hands the copies over, which stay where All tells.
    std::vector<SDetailSum> TakeTaken() { return std::move(taken_); }
    /// Those of an item that `takes(result)` takes, with `count(result)` floors each.
    template <class TTakes, class TCount>
    SDetailRange Of(const SDetailItem& item, TTakes&& takes, TCount&& count) {
      if (takesAll_) {
        return {item.first, item.last};
      }
      SDetailRange range{taken_.size(), taken_.size()};
      SResultIdentity result;
      for (std::size_t at = item.first; at < item.last; ++at) {
        const SDetailSum& detail = sums_.details[at];
        result.floorText = sums_.sources[at].floorText;
        result.sgdName = sums_.sources[at].sgdName;
        result.floorCount = detail.floorCount;
        if (takes(result)) {
          taken_.push_back(detail);
          taken_.back().floorCount = count(result);
          ++range.last;
        }
      }
      return range;
    }

   private:
    const SDetailSums& sums_;
    const bool takesAll_;
    std::vector<SDetailSum> taken_;
  };

  /// What the details of an item go into: the heads, outermost first, then the attribute's row.
  /// Each is the one before with more filled.
  class CItemSums {
   public:
    CItemSums(const SSpecialShape& shape, int level) {
      if (level != LevelTotal) {
        hasFloor_ = shape.floorRow.Holds(level);
        hasSysCode_ = level >= LevelSysCode1;
        hasAttribute_ = shape.attributeRow.Holds(level);
      }
    }
    bool HasSysCode() const { return hasSysCode_; }
    std::span<SOpenSum> All() {
      return std::span(sums_).first(Heads() + (hasAttribute_ ? 1U : 0U));
    }
    std::span<SOpenSum> OfHeads() { return std::span(sums_).first(Heads()); }
    std::span<SOpenSum> OfAttribute() { return All().subspan(Heads()); }
    /// Those that are filled from the floor on, or from the system code on.
    std::span<SOpenSum> OnFloor() { return hasFloor_ ? All().subspan(1) : OnSysCode(); }
    std::span<SOpenSum> OnSysCode() {
      return hasSysCode_ ? All().subspan(hasFloor_ ? 2U : 1U) : std::span<SOpenSum>();
    }

   private:
    std::size_t Heads() const { return 1U + (hasFloor_ ? 1U : 0U) + (hasSysCode_ ? 1U : 0U); }

    bool hasFloor_ = false;
    bool hasSysCode_ = false;
    bool hasAttribute_ = false;
    std::array<SOpenSum, 4> sums_;
  };

  /// Lists what lies below a group, and frees all nodes there but its floors and system codes.
  void SumDetails(IReportDataNode& group, SDetailSums& sums);
  /// Gives the item names their places; false where different ones are equal as narrow texts.
  static bool PlaceNames(const std::vector<SDetailSums*>& groups);

  /// Whether an item's details count at level 0.
  virtual bool ShowsAtLevel0(const std::wstring& item, bool isMain) const = 0;
  /// Whether an item's details feed the head rows.
  virtual bool FeedsHeads(const CReportCategory& category, const std::wstring& item) const = 0;
  /// Whether smaller numbers of attribute names go first.
  virtual bool SortsAscending(const CReportCategory& category) const = 0;

  SKind& KindOf(SRequest& request, const CReportCategory& category) const;
  const SKindItem& ItemOf(SKind& kind, const std::wstring& name, int level) const;
  static void FillFloor(CItemSums& sums, const CReportFloor& floor, const CPickedFloor& picked);
  static void FillSysCode(CItemSums& sums, const CShownSysCodes::SCode& code);
  /// Answers the sums that the item goes into, filled.
  std::span<SOpenSum> FillItem(CItemSums& sums, const SDetailItem& item, SKind& kind,
                               int level) const;

  /// Collects the candidates of a group. `details` takes the results that they count.
  template <SSpecialOrderRule kRule, class TCandidates>
  void Collect(TCandidates& candidates, CCountedDetails& details, const IReportDataNode& group,
               SRequest& request, const CSectionChoice& sections) const;
  /// Those of some items, which lie on one floor.
  template <SSpecialOrderRule kRule, class TCandidates>
  void CollectItems(TCandidates& candidates, CCountedDetails& details, CItemSums& sums,
                    const SDetailItems& items, SRequest& request, const CPickedFloor& picked,
                    const CSectionChoice& sections) const;

  const SSpecialShape& shape_;
  std::unordered_set<std::wstring> itemTexts_;  ///< names and units of the items
  bool isOrdered_ = false;  ///< the attributes have places, and the items names that differ
};

template <SSpecialOrderRule kRule, class TCandidates>
void CSpecialReport::Collect(TCandidates& candidates, CCountedDetails& details,
                             const IReportDataNode& group, SRequest& request,
                             const CSectionChoice& sections) const {
  CItemSums sums(shape_, request.level);
  const CSysCodeWalk sysCodes(condition.sysCodes);
  ForEachChosenFloor<EPairKey::Floor>(
      group.children, condition.floors,
      [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring&,
          const std::wstring&) {
        FillFloor(sums, floor, picked);
        if (sysCodes.TakesAll()) {
          CollectItems<kRule>(candidates, details, sums, floor.items, request, picked, sections);
          return;
        }
        sysCodes.ForEachChosen(floor, [&](const CReportSysCode& sysCode) {
          CollectItems<kRule>(candidates, details, sums, sysCode.items, request, picked, sections);
        });
      });
}

template <SSpecialOrderRule kRule, class TCandidates>
void CSpecialReport::CollectItems(TCandidates& candidates, CCountedDetails& details,
                                  CItemSums& sums, const SDetailItems& items, SRequest& request,
                                  const CPickedFloor& picked,
                                  const CSectionChoice& sections) const {
  const auto takes = [&](const SResultIdentity& result) {
    return sections.Takes(result.sgdName) &&
           (shape_.floorPairTest == EFloorPairTest::None || picked.Takes(result));
  };
  const auto count = [&](const SResultIdentity& result) { return picked.CountFor(result); };
  const CReportSysCode* sysCode = nullptr;
  const CReportCategory* category = nullptr;
  SKind* kind = nullptr;
  for (const SDetailItem& item :
       std::span(details.Sums().items).subspan(items.first, items.last - items.first)) {
    if (item.sysCode != sysCode || item.category != category) {
      sysCode = item.sysCode;
      category = item.category;
      kind = IsChosen(*category, condition) ? &KindOf(request, *category) : nullptr;
      if (kind != nullptr) {
        candidates.StartCategory(*category, kind->ascending);
      }
      if (kind != nullptr && sums.HasSysCode()) {
        FillSysCode(sums, request.texts.sysCodes.Of(*sysCode));
        if (kRule.comparesSysCodeTexts && !request.texts.sysCodes.HasOrder()) {
          candidates.Refute();
        }
      }
    }
    const std::span<SOpenSum> open =
        kind == nullptr ? std::span<SOpenSum>() : FillItem(sums, item, *kind, request.level);
    if (!open.empty()) {
      SDetailRange range = details.Of(item, takes, count);
      const bool hasCircuits = open.back().row.IsMainItem && request.level == LevelLoop;
      range.circuits = hasCircuits ? category : nullptr;
      candidates.AddItem(open, range);
    }
  }
}

#endif  // TALLY_REPORTS_SPECIAL_SPECIAL_REPORT_H_
