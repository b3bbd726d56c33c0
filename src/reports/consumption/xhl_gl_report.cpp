#include "reports/consumption/xhl_gl_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>

#include "platform/code_page.h"
#include "platform/text_tool.h"
#include "report_mng/result_config.h"
#include "report_model/narrow_order.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/sys_code_walk.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/report_xhl_gl_type_data.h"
#include "result_store/tally_data_mng.h"

namespace {

// Sorts stably by keys, equal ones under one place.
template <class TElement, class TKeyOf>
void Place(std::vector<TElement>& elements, TKeyOf&& keyOf) {
  std::vector<std::pair<decltype(keyOf(elements.front())), TElement>> keyed;
  keyed.reserve(elements.size());
  for (TElement& element : elements) {
    auto key = keyOf(element);
    keyed.emplace_back(std::move(key), std::move(element));
  }
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < keyed.size(); ++i) {
    elements[i] = std::move(keyed[i].second);
    elements[i].place =
        i > 0 && keyed[i].first == keyed[i - 1].first ? elements[i - 1].place : static_cast<int>(i);
  }
}

}  // namespace

// Adds up what a request counts, result by result in the order of the tree.
class CXhlGlReport::CQuantityWalk {
 public:
  /// Without sections it takes those of every section.
  CQuantityWalk(const Report::SNewCondition& condition, const CSectionChoice* sections)
      : condition_(condition),
        sections_(sections),
        sysCodes_(condition.sysCodes),
        takesSections_(sections == nullptr || sections->TakesAll()),
        takesFloors_(takesSections_ && sysCodes_.TakesAll() && condition.categories.empty()) {}

  /// Whether nothing is left out: the sums kept at the attributes hold.
  bool TakesAll() const { return takesFloors_ && condition_.floors.empty(); }

  /// Adds up what counts below an attribute.
  SSum Sum(const CReportAttribute& attribute) {
    SSum sum;
    ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
      if (Add(sum.quantity, item)) {
        sum.unit = item.unit;
      }
    });
    return sum;
  }

  /// Keeps the sums of an attribute and its floors. REQUIRES: TakesAll.
  void Keep(CReportAttribute& attribute) {
    for (const auto& child : attribute.children.InOrder()) {
      if (auto* item = NodeAs<CReportCalItem>(child.get())) {
        for (const auto& below : item->children.InOrder()) {
          if (auto* floor = NodeAs<CReportFloor>(below.get())) {
            ForEachQuantity(*floor, CPickedFloor(), [&](double quantity) {
              for (SWholeSum* sum : {&floor->whole, &item->whole, &attribute.whole}) {
                sum->quantity += quantity;
                sum->counted = true;
              }
            });
          }
        }
      }
    }
  }

 private:
  // Adds the quantities below `item` to `total`; true if anything was counted.
  bool Add(double& total, const CReportCalItem& item) {
    bool counted = false;
    ForEachChosenFloor<EPairKey::Floor>(item.children, condition_.floors,
                                        [&](const CReportFloor& floor, const CPickedFloor& picked,
                                            const std::wstring&, const std::wstring&) {
                                          // A sum that begins at a floor is the one kept there;
                                          // another one goes on from its own.
                                          if (takesFloors_ && total == 0 && !picked.IsOther()) {
                                            total = floor.whole.quantity;
                                            counted |= floor.whole.counted;
                                            return;
                                          }
                                          ForEachQuantity(floor, picked, [&](double quantity) {
                                            total += quantity;
                                            counted = true;
                                          });
                                        });
    return counted;
  }

  bool Takes(const CReportResult& result, const CPickedFloor& picked) const {
    return (sections_ == nullptr || sections_->Takes(result.sgdName)) && picked.Takes(result);
  }
  template <class TVisit>
  void ForEachQuantity(const CReportFloor& floor, const CPickedFloor& picked, TVisit&& visit) {
    ForEachChosenCategory(
        floor.children, condition_.categories, [&](const CReportCategory& category) {
          sysCodes_.ForEachChosen(category, [&](const CReportSysCode& sysCode) {
            const CReportSysCode& holder = HolderBelow(sysCode);
            if (takesSections_ && !picked.IsOther() && holder.wholeSize == 1 && holder.HasWhole()) {
              visit(holder.whole.quantity);
              return;
            }
            sysCodes_.ForEachBelow(holder, [&](const auto&, const IReportDataNode& child) {
              const auto* result = NodeAs<CReportResult>(&child);
              if (result != nullptr && Takes(*result, picked)) {
                visit(result->Quantity(picked.CountFor(*result)));
              }
              return true;
            });
          });
        });
  }
  // Where a system code does nothing but to go on. Results are not looked at: most stand alone, and
  // their holder knows them.
  static const CReportSysCode& HolderBelow(const CReportSysCode& sysCode) {
    const CReportSysCode* holder = &sysCode;
    while (!holder->HasWhole() && holder->children.size() == 1) {
      const auto* deeper = NodeAs<CReportSysCode>(holder->children.InOrder().front());
      if (deeper == nullptr) {
        break;
      }
      holder = deeper;
    }
    return *holder;
  }

  const Report::SNewCondition& condition_;
  const CSectionChoice* sections_;
  CSysCodeWalk sysCodes_;
  bool takesSections_;
  bool takesFloors_;
};

void CXhlGlReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetXhlGlData();
  const auto* mainItems = CReportMainCalItemData::Instance();
  const auto* groups = CReportXHlGlTypeData::Instance();
  using TRow = KorDMRec::SKorDMResultRow;
  CRowFolder fold(root, data);
  fold.Spec()
      .Level({&TRow::spec, &TRow::category},
             [groups](auto& to, auto& of) {
               const auto& [id, category, kind] = of.category;
               return CReportDataMethod::GetType(
                   to, category + L"\\" + kind,
                   groups->GetCategoryType(of.spec.name, category, kind));
             })
      .AttributeByName()
      .CalItem()
      .Floor()
      .Category()
      .SysCode()
      .CountComponentsOnly();
  CPairNumbers kinds;
  std::vector<std::wstring> mainItemOf;
  for (const TRow& row : data.rows) {
    const auto of = fold.Records(row);
    const std::size_t kind =
        kinds.Of(static_cast<std::uint32_t>(row.spec), static_cast<std::uint32_t>(row.category));
    if (kind == mainItemOf.size()) {
      mainItemOf.push_back(
          mainItems->GetMainCalItem(of.spec.name, of.category.category, of.category.kind));
    }
    if (mainItemOf[kind] == of.calItem.name) {
      fold.Add(row);
    }
  }
  fold.Fold();
  MakeGroups();
}

std::vector<CXhlGlReport::SLine> CXhlGlReport::LinesOf(const CReportType& group) {
  const Report::SNewCondition everything;
  CQuantityWalk walk(everything, nullptr);
  std::vector<SLine> lines;
  for (const auto& child : group.children.InOrder()) {
    if (auto* attribute = NodeAs<CReportAttribute>(child.get())) {
      walk.Keep(*attribute);
      SLine& line = lines.emplace_back();
      line.attribute = attribute;
      line.name = attribute->sortKey->name;
      line.whole.quantity = attribute->whole.quantity;
      ForEachChild<CReportCalItem>(attribute->children, [&](const CReportCalItem& item) {
        line.whole.unit = item.whole.counted ? item.unit : line.whole.unit;
      });
    }
  }
  return lines;
}

void CXhlGlReport::MakeGroups() {
  groups_.clear();
  ForEachChild<CReportSpec>(root, [&](const CReportSpec& node) {
    std::vector<SGroup>& groups = groups_[node.name];
    ForEachChild<CReportType>(node.children, [&](const CReportType& type) {
      // The place of a group is read from the first kind that was filed under it.
      Report::CellArray path;
      KorString::Split(type.category, path, L'\\');
      if (path.size() != 2) {
        return;
      }
      SGroup& group = groups.emplace_back();
      group.name = &type.name;
      group.sortId = CReportXHlGlTypeData::Instance()->GetSortId(node.name, path[0], path[1]);
      group.smallerFirst = LinesOf(type);
      CNaturalOrderProof proof;
      for (const SLine& line : group.smallerFirst) {
        proof.Add(line.attribute->sortKey->naturalName);
      }
      group.isOrdered = proof.Holds();
      if (group.isOrdered) {
        group.largerFirst = group.smallerFirst;
        Place(group.largerFirst, [](const SLine& line) { return line.NaturalKey(false); });
        Place(group.smallerFirst, [](const SLine& line) { return line.NaturalKey(true); });
      }
    });
    Place(groups,
          [](const SGroup& group) { return std::pair(group.sortId, ToNarrowText(*group.name)); });
  });
}

void CXhlGlReport::GetGlData(Report::CellArray& rows, const std::wstring& requestSpec,
                             const Report::SNewCondition& requestCondition, int bySgd) {
  if (BeginRequest(requestSpec, requestCondition) == nullptr) {
    return;
  }
  const std::vector<SGroup>& groups = groups_.find(spec)->second;
  RunSectionPasses(rows, bySgd, [&](const CSectionChoice& sections) {
    CQuantityWalk walk(condition, &sections);
    CCellBlock out;
    int shown = -1;
    for (const SGroup& group : groups) {
      const std::size_t before = out.Size();
      if (group.place != shown) {
        AddGroup(out, group, walk);
      }
      shown = out.Size() == before ? shown : group.place;
    }
    return out;
  });
}

void CXhlGlReport::AddGroup(CCellBlock& rows, const SGroup& group, CQuantityWalk& walk) {
  // Only entries of the overview table have numbers below zero.
  const bool largerFirst = group.sortId < 0 && CResultConfig::Instance()->GetLineSortDowm();
  std::set<CAttResultData> blocks;
  int shown = -1;
  const bool runsDown = group.isOrdered && largerFirst;
  for (const SLine& line : runsDown ? group.largerFirst : group.smallerFirst) {
    if (line.place == shown) {
      continue;
    }
    const SSum sum = walk.TakesAll() ? line.whole : walk.Sum(*line.attribute);
    if (sum.unit.empty()) {
      continue;
    }
    if (group.isOrdered) {
      rows.AddCells(L"@A", line.name, sum.unit, sum.quantity);
      shown = line.place;
    } else {
      CCellBlock row;
      row.AddCells(L"@A", line.name, sum.unit, sum.quantity);
      PutBlock(blocks, CAttResultData(largerFirst, line.attribute->sortKey, std::move(row)));
    }
  }
  CReportDataMethod::ChangeAttResult(rows, std::move(blocks));
}
