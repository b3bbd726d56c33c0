#include "reports/special/special_report.h"

#include <map>

#include "platform/code_page.h"
#include "report_model/row_results.h"

namespace {

// The same object for equal texts.
using SharedTexts = std::map<std::wstring_view, const std::wstring*>;

const std::wstring* Shared(SharedTexts& texts, const std::wstring& text) {
  return texts.try_emplace(text, &text).first->second;
}

// Lists the items below a group, and tells floors and system codes which of them are theirs.
class CItemList {
 public:
  explicit CItemList(std::vector<SDetailItem>& items) : items_(items) {}

  void AddAllBelow(IReportDataNode& group) {
    path_ = {{&group, 0}};
    while (!path_.empty()) {
      SStep& step = path_.back();
      if (step.next == step.node->children.size()) {
        Leave(*step.node);
        path_.pop_back();
        continue;
      }
      IReportDataNode& child = *step.node->children.InOrder()[step.next++];
      if (const auto* item = NodeAs<CReportCalItem>(&child)) {
        Add(*item);
      } else {
        Enter(child);
        path_.push_back({&child, 0});
      }
    }
  }

 private:
  struct SStep {
    IReportDataNode* node;
    std::size_t next;
  };

  void Enter(IReportDataNode& node) {
    if (SDetailItems* items = ItemsOf(node)) {
      items->first = items_.size();
    }
    if (node.nodeKind == ENodeKind::Floor) {
      place_.floor = &node;
    } else if (node.nodeKind == ENodeKind::Category) {
      place_.sysCode = path_.back().node;
      place_.category = &node;
    } else if (const auto* attribute = NodeAs<CReportAttribute>(&node)) {
      place_.attribute = attribute;
      sortKey_ = attribute->sortKey.get();
    }
  }
  void Leave(IReportDataNode& node) {
    if (SDetailItems* items = ItemsOf(node)) {
      items->last = items_.size();
    }
  }
  static SDetailItems* ItemsOf(IReportDataNode& node) {
    if (auto* floor = NodeAs<CReportFloor>(&node)) {
      return &floor->items;
    }
    auto* sysCode = NodeAs<CReportSysCode>(&node);
    return sysCode == nullptr ? nullptr : &sysCode->items;
  }
  void Add(const CReportCalItem& node) {
    SDetailItem& item = items_.emplace_back();
    item.place = place_;
    item.place.calItem = &node;
    item.attribute = sortKey_;
    item.name = Shared(texts_, node.name);
    item.unit = Shared(texts_, node.unit);
  }

  std::vector<SDetailItem>& items_;
  std::vector<SStep> path_;
  sReportData place_;
  const SAttSortKey* sortKey_ = nullptr;
  SharedTexts texts_;
};

template <class TVisit>
void ForEachDetail(const SDetailItem& item, TVisit&& visit) {
  ForEachChild<CReportResultDetail>(item.place.calItem->children, visit);
}

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
  CItemList(sums.items).AddAllBelow(group);
  std::map<std::wstring_view, std::vector<SDetailItem*>> itemsOfNames;
  std::size_t count = 0;
  std::size_t textSize = 0;
  for (SDetailItem& item : sums.items) {
    itemsOfNames[*item.name].push_back(&item);
    ForEachDetail(item, [&](const CReportResultDetail& detail) {
      ++count;
      textSize += detail.ComponentTextSize() + 1;
    });
  }
  sums.details.reserve(count);
  // The texts that are viewed stay where they are.
  sums.text.reserve(textSize);
  for (const auto& [name, items] : itemsOfNames) {
    for (SDetailItem* item : items) {
      item->first = sums.details.size();
      ForEachDetail(*item, [&](const CReportResultDetail& detail) {
        const std::size_t begin = sums.text.size();
        detail.AppendComponentText(sums.text);
        sums.text += L'$';
        sums.details.push_back(
            SumOf(detail, detail.floorCount, std::wstring_view(sums.text).substr(begin)));
      });
      item->last = sums.details.size();
    }
  }
}

SDetailSum CSpecialReport::SumOf(const CReportResultDetail& detail, int floorCount,
                                 std::wstring_view references) {
  const auto count = static_cast<double>(detail.components.size());
  return {{count * detail.quantity1 * floorCount, count * detail.quantity2 * floorCount,
           count * detail.quantity3 * floorCount, count * detail.quantity4 * floorCount},
          references,
          floorCount};
}

bool CSpecialReport::PlaceNames(const std::vector<SDetailSums*>& groups) {
  std::map<std::wstring_view, int> places;
  for (const SDetailSums* group : groups) {
    for (const SDetailItem& item : group->items) {
      places.try_emplace(*item.name);
    }
  }
  std::map<std::string, int*> narrow;
  for (auto& [name, place] : places) {
    narrow.try_emplace(ToNarrowText(name), &place);
  }
  if (narrow.size() < places.size()) {
    return false;
  }
  int next = 0;
  for (const auto& [name, place] : narrow) {
    *place = next++;
  }
  for (SDetailSums* group : groups) {
    for (SDetailItem& item : group->items) {
      item.namePlace = places[*item.name];
    }
  }
  return true;
}

const CSpecialReport::SKind& CSpecialReport::KindOf(SRequest& request,
                                                    const CReportCategory& category) const {
  for (const SKind& kind : request.kinds) {
    if (kind.category->sortId == category.sortId && kind.category->kind == category.kind &&
        kind.category->category == category.category) {
      return kind;
    }
  }
  return request.kinds.emplace_back(
      SKind{&category, MainCalItemOf(spec, category), SortsAscending(category)});
}

void CSpecialReport::FillFloor(CItemSums& sums, const CReportFloor& floor,
                               const CPickedFloor& picked) {
  const std::wstring& shown = picked.IsOther() ? picked.SecondText() : floor.name;
  const int grade = CFloorResultData::CalFloorGrade(shown);
  for (SOpenSum& sum : sums.OnFloor()) {
    sum.row.FloorName = &floor.name;
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

std::span<SOpenSum> CSpecialReport::FillItem(CItemSums& sums, const SDetailItem& item,
                                             const SKind& kind, int level) const {
  const bool isMain = *item.name == kind.mainItem;
  if (level == LevelTotal && !ShowsAtLevel0(*item.name, isMain)) {
    return {};
  }
  for (SOpenSum& sum : sums.All()) {
    sum.row.IsMainItem = isMain;
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
    sum.row.Attribute = item.attribute;
    sum.row.AttPlaces = item.attPlaces;
  }
  return FeedsHeads(*kind.category, *item.name) ? sums.All() : sums.OfAttribute();
}
