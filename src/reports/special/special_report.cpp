#include "reports/special/special_report.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "reports/shared/text_places.h"

namespace {

// Lists the items below a group, and copies its floors and system codes, which know their items.
class CItemList {
 public:
  CItemList(SDetailSums& sums, std::unordered_set<std::wstring>& texts)
      : sums_(sums), texts_(texts) {}

  void AddAllBelow(const IReportDataNode& group) {
    path_ = {{&group, 0, nullptr, nullptr}};
    while (!path_.empty()) {
      SStep& step = path_.back();
      if (step.next == step.node->children.size()) {
        if (step.items != nullptr) {
          step.items->last = sums_.items.size();
        }
        path_.pop_back();
        continue;
      }
      const IReportDataNode& child = *step.node->children.InOrder()[step.next++];
      if (const auto* item = NodeAs<CReportCalItem>(&child)) {
        Add(*item);
      } else {
        Enter(child);
      }
    }
    sums_.items.shrink_to_fit();
  }

  /// The nodes of the items.
  const std::vector<const CReportCalItem*>& CalItems() const { return calItems_; }
  /// Leaves the copies alone below the group.
  void Replace(IReportDataNode& group) {
    group.ClearChildren();
    for (std::unique_ptr<IReportDataNode>& floor : floors_) {
      group.children.insert(group.children.end(), std::move(floor));
    }
  }

 private:
  struct SStep {
    const IReportDataNode* node;
    std::size_t next;
    IReportDataNode* copy;  // null for the group
    SDetailItems* items;    // of the copy
  };

  void Enter(const IReportDataNode& node) {
    if (const auto* floor = NodeAs<CReportFloor>(&node)) {
      auto copy = std::make_unique<CReportFloor>();
      copy->floorText = floor->floorText;
      copy->name = floor->name;
      copy->grade = floor->grade;
      EnterCopied(node, std::move(copy));
    } else if (const auto* sysCode = NodeAs<CReportSysCode>(&node)) {
      auto copy = std::make_unique<CReportSysCode>();
      copy->sortId = sysCode->sortId;
      copy->name = sysCode->name;
      copy->fullName = sysCode->fullName;
      copy->remark = sysCode->remark;
      EnterCopied(node, std::move(copy));
    } else {
      if (const auto* category = NodeAs<CReportCategory>(&node)) {
        item_.sysCode = NodeAs<CReportSysCode>(path_.back().copy);
        item_.category = &CopyOf(*category);
      } else if (const auto* attribute = NodeAs<CReportAttribute>(&node)) {
        item_.attribute = attribute->sortKey;
      }
      path_.push_back({&node, 0, nullptr, nullptr});
    }
  }
  template <class TNode>
  void EnterCopied(const IReportDataNode& node, std::unique_ptr<TNode> copy) {
    TNode& added = *copy;
    added.items.first = sums_.items.size();
    if (IReportDataNode* parent = path_.back().copy) {
      parent->children.insert(parent->children.end(), std::move(copy));
    } else {
      floors_.push_back(std::move(copy));
    }
    path_.push_back({&node, 0, &added, &added.items});
  }
  const CReportCategory& CopyOf(const CReportCategory& category) {
    const CReportCategory*& copy = categories_[{category.category, category.kind}];
    if (copy == nullptr) {
      auto added = std::make_shared<CReportCategory>();
      added->sortId = category.sortId;
      added->category = category.category;
      added->kind = category.kind;
      copy = added.get();
      sums_.categories.push_back(std::move(added));
    }
    return *copy;
  }
  void Add(const CReportCalItem& node) {
    item_.name = &*texts_.insert(node.name).first;
    if (item_.unit == nullptr || *item_.unit != node.unit.Text()) {
      item_.unit = &*texts_.insert(node.unit).first;
    }
    sums_.items.push_back(item_);
    calItems_.push_back(&node);
  }

  SDetailSums& sums_;
  std::unordered_set<std::wstring>& texts_;
  std::vector<SStep> path_;
  SDetailItem item_;  // as far as the path tells it
  std::vector<const CReportCalItem*> calItems_;
  std::vector<std::unique_ptr<IReportDataNode>> floors_;
  std::map<std::pair<std::wstring_view, std::wstring_view>, const CReportCategory*> categories_;
};

// Copies the results of items into `sums`, in the order in which they are added.
class CDetailList {
 public:
  void Add(SDetailItem& item, const CReportCalItem& calItem) {
    item.first = details_.size();
    ForEachChild<CReportResultDetail>(calItem.children, [this](const CReportResultDetail& detail) {
      details_.push_back(&detail);
    });
    item.last = details_.size();
  }
  void CopyTo(SDetailSums& sums) const {
    constexpr std::size_t kBlock = 32;
    std::size_t textSize = 0;
    for (const CReportResultDetail* detail : details_) {
      textSize += detail->ComponentTextSize() + 1;
    }
    sums.details.reserve(details_.size());
    sums.sources.reserve(details_.size());
    // The texts that are viewed stay where they are.
    sums.text.reserve(textSize);
    for (std::size_t i = 0; i < details_.size(); ++i) {
      if (i % kBlock == 0) {
        for (std::size_t j = i; j < std::min(i + kBlock, details_.size()); ++j) {
          details_[j]->PrefetchComponents();
        }
      }
      Copy(*details_[i], sums);
    }
  }

 private:
  static void Copy(const CReportResultDetail& detail, SDetailSums& sums) {
    const std::size_t begin = sums.text.size();
    detail.AppendComponentText(sums.text);
    sums.text += L'$';
    const auto count = static_cast<double>(detail.components.size());
    sums.details.push_back({{count * detail.quantity1, count * detail.quantity2,
                             count * detail.quantity3, count * detail.quantity4},
                            std::wstring_view(sums.text).substr(begin),
                            detail.floorCount});
    sums.sources.push_back({detail.floorText, detail.sgdName});
  }

  std::vector<const CReportResultDetail*> details_;
};

}  // namespace

void CSpecialReport::ReadParameter(std::wstring& value, const KorDMRec::SKorDMAttrRec& record,
                                   const std::wstring& prefix) {
  std::wstring line;
  CReportDataMethod::GetAttParamValue(value, line, record.name, prefix);
  if (line.empty()) {
    CReportDataMethod::GetAttParamValue(value, line, record.value, prefix);
  }
}

void CSpecialReport::SumDetails(IReportDataNode& group, SDetailSums& sums) {
  sums = {};
  CItemList items(sums, itemTexts_);
  items.AddAllBelow(group);
  // One text is one object.
  std::unordered_map<const std::wstring*, std::vector<std::size_t>> itemsOfNames;
  std::vector<const std::wstring*> names;
  for (std::size_t i = 0; i < sums.items.size(); ++i) {
    std::vector<std::size_t>& itemsOfName = itemsOfNames[sums.items[i].name];
    if (itemsOfName.empty()) {
      names.push_back(sums.items[i].name);
    }
    itemsOfName.push_back(i);
  }
  std::sort(names.begin(), names.end(),
            [](const std::wstring* a, const std::wstring* b) { return *a < *b; });
  CDetailList details;
  for (const std::wstring* name : names) {
    for (const std::size_t i : itemsOfNames[name]) {
      details.Add(sums.items[i], *items.CalItems()[i]);
    }
  }
  details.CopyTo(sums);
  items.Replace(group);
}

bool CSpecialReport::PlaceNames(const std::vector<SDetailSums*>& groups) {
  CTextPlaces places;
  for (const SDetailSums* group : groups) {
    for (const SDetailItem& item : group->items) {
      places.Add(*item.name);
    }
  }
  if (!places.Place(CTextPlaces::EOrder::Plain)) {
    return false;
  }
  for (SDetailSums* group : groups) {
    for (SDetailItem& item : group->items) {
      item.namePlace = places.Of(*item.name).ascending;
    }
  }
  return true;
}

CSpecialReport::SKind& CSpecialReport::KindOf(SRequest& request,
                                              const CReportCategory& category) const {
  for (SKind& kind : request.kinds) {
    if (kind.category->sortId == category.sortId && kind.category->kind == category.kind &&
        kind.category->category == category.category) {
      return kind;
    }
  }
  return request.kinds.emplace_back(
      SKind{&category, MainCalItemOf(spec, category), SortsAscending(category), {}});
}

const CSpecialReport::SKindItem& CSpecialReport::ItemOf(SKind& kind, const std::wstring& name,
                                                        int level) const {
  for (const SKindItem& item : kind.items) {
    if (item.name == &name) {
      return item;
    }
  }
  const bool isMain = name == kind.mainItem;
  return kind.items.emplace_back(SKindItem{&name, isMain,
                                           level != LevelTotal || ShowsAtLevel0(name, isMain),
                                           FeedsHeads(*kind.category, name)});
}

void CSpecialReport::FillFloor(CItemSums& sums, const CReportFloor& floor,
                               const CPickedFloor& picked) {
  const std::wstring& shown = picked.IsOther() ? picked.SecondText() : floor.name.Text();
  const int grade = picked.IsOther() ? SFloorGrade(shown).grade : floor.grade.grade;
  for (SOpenSum& sum : sums.OnFloor()) {
    sum.row.FloorName = &floor.name.Text();
    sum.row.Floor = &shown;
    sum.row.FloorSortId = grade;
  }
}

void CSpecialReport::FillSysCode(CItemSums& sums, const CShownSysCodes::SCode& code) {
  for (SOpenSum& sum : sums.OnSysCode()) {
    sum.row.SysCode = &code.text;
    sum.row.SysCodeNumber = code.number;
    sum.row.SysCodeSortId = code.sortId;
  }
}

std::span<SOpenSum> CSpecialReport::FillItem(CItemSums& sums, const SDetailItem& item, SKind& kind,
                                             int level) const {
  const SKindItem& kindItem = ItemOf(kind, *item.name, level);
  if (!kindItem.isShown) {
    return {};
  }
  for (SOpenSum& sum : sums.All()) {
    sum.row.IsMainItem = kindItem.isMain;
    sum.row.Ascending = kind.ascending;
    sum.row.Unit = item.unit;
  }
  if (shape_.headKey == EHeadKey::ItemAndUnit) {
    for (SOpenSum& sum : sums.OfHeads()) {
      sum.row.CalItem = item.name;
    }
  }
  for (SOpenSum& sum : sums.OfAttribute()) {
    sum.row.CalItem = item.name;
    sum.row.CalItemPlace = item.namePlace;
    sum.row.Attribute = item.attribute.get();
    sum.row.AttPlaces = item.attPlaces;
  }
  return kindItem.feedsHeads ? sums.All() : sums.OfAttribute();
}
