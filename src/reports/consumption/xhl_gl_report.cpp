#include "reports/consumption/xhl_gl_report.h"

#include <map>
#include <set>
#include <utility>

#include "platform/text_tool.h"
#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/sys_code_walk.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/report_xhl_gl_type_data.h"
#include "result_store/tally_data_mng.h"

namespace {

// A block of one group: by sort number, then by name as narrow text.
struct CGroupResultData : SRowBlock {
  CGroupResultData(int groupSortId, std::wstring groupName, CCellBlock&& block)
      : SRowBlock{std::move(block)}, sortId(groupSortId), name(std::move(groupName)) {}

  bool operator<(const CGroupResultData& other) const {
    return sortId != other.sortId ? sortId < other.sortId : CompareAsNarrow(name, other.name) < 0;
  }

  int sortId;
  std::wstring name;
};

}  // namespace

// Adds up what a request counts, result by result in the order of the tree.
class CXhlGlReport::CQuantityWalk {
 public:
  /// Without sections it takes those of every section.
  CQuantityWalk(const Report::SNewCondition& condition, const CSectionChoice* sections)
      : condition_(condition),
        sections_(sections),
        sysCodes_(condition.sysCodes),
        takesFloors_(condition.sysCodes.empty() && condition.categories.empty() &&
                     (sections == nullptr || sections->TakesAll())) {}

  /// Whether nothing is left out: the sums kept at the attributes hold.
  bool TakesAll() const { return takesFloors_ && condition_.floors.empty(); }

  /// Adds the quantities below `item` to `total`; true if anything was counted.
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
  bool Takes(const CReportResult& result, const CPickedFloor& picked) const {
    return (sections_ == nullptr || sections_->Takes(result.sgdName)) && picked.Takes(result);
  }
  template <class TVisit>
  void ForEachQuantity(const CReportFloor& floor, const CPickedFloor& picked, TVisit&& visit) {
    ForEachChosenCategory(
        floor.children, condition_.categories, [&](const CReportCategory& category) {
          sysCodes_.ForEachChosen(category, [&](const CReportSysCode& sysCode) {
            sysCodes_.ForEachBelow(sysCode, [&](const auto&, const IReportDataNode& child) {
              const auto* result = NodeAs<CReportResult>(&child);
              if (result != nullptr && Takes(*result, picked)) {
                visit(result->Quantity(picked.CountFor(*result)));
              }
              return true;
            });
          });
        });
  }

  const Report::SNewCondition& condition_;
  const CSectionChoice* sections_;
  CSysCodeWalk sysCodes_;
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
      .SysCode();
  std::map<std::pair<int, int>, std::wstring> mainItemOf;
  for (const auto& row : data.rows) {
    const auto of = fold.Records(row);
    const auto [main, isNew] = mainItemOf.try_emplace({row.spec, row.category});
    if (isNew) {
      main->second =
          mainItems->GetMainCalItem(of.spec.name, of.category.category, of.category.kind);
    }
    if (main->second == of.calItem.name) {
      fold.Add(row);
    }
  }
  fold.Fold();
  KeepSums();
}

void CXhlGlReport::KeepSums() const {
  const Report::SNewCondition everything;
  CQuantityWalk walk(everything, nullptr);
  ForEachChild<CReportSpec>(root, [&](const CReportSpec& node) {
    ForEachChild<CReportType>(node.children, [&](const CReportType& group) {
      for (const auto& child : group.children.InOrder()) {
        if (auto* attribute = NodeAs<CReportAttribute>(child.get())) {
          walk.Keep(*attribute);
        }
      }
    });
  });
}

void CXhlGlReport::GetGlData(Report::CellArray& rows, const std::wstring& requestSpec,
                             const Report::SNewCondition& requestCondition, int bySgd) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  RunSectionPasses(rows, bySgd, [&](const CSectionChoice& sections) {
    CQuantityWalk walk(condition, &sections);
    std::set<CGroupResultData> blocks;
    ForEachChild<CReportType>(node->children, [&](const CReportType& group) {
      // The place of a group is read from the first kind that was filed under it.
      Report::CellArray path;
      KorString::Split(group.category, path, L'\\');
      if (path.size() != 2) {
        return;
      }
      const int sortId = CReportXHlGlTypeData::Instance()->GetSortId(spec, path[0], path[1]);
      // Only entries of the overview table have numbers below zero.
      const bool largerFirst = sortId < 0 && CResultConfig::Instance()->GetLineSortDowm();
      CCellBlock block = GroupRows(group, largerFirst, walk);
      if (!block.Empty()) {
        PutBlock(blocks, CGroupResultData(sortId, group.GetKey(), std::move(block)));
      }
    });
    CCellBlock out;
    TakeBlocks(out, std::move(blocks));
    return out;
  });
}

CCellBlock CXhlGlReport::GroupRows(const CReportType& group, bool largerFirst,
                                   CQuantityWalk& walk) {
  std::set<CAttResultData> blocks;
  ForEachChild<CReportAttribute>(group.children, [&](const CReportAttribute& attribute) {
    double total = 0;
    const CReportCalItem* last = nullptr;
    ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
      if (walk.TakesAll() ? item.whole.counted : walk.Add(total, item)) {
        last = &item;
      }
    });
    // The last item's unit stands for the sum of all.
    if (last != nullptr && !last->unit.empty()) {
      CCellBlock row;
      row.AddCells(L"@A", attribute.name, last->unit,
                   walk.TakesAll() ? attribute.whole.quantity : total);
      PutBlock(blocks, CAttResultData(largerFirst, attribute.sortKey, std::move(row)));
    }
  });
  CCellBlock rows;
  CReportDataMethod::ChangeAttResult(rows, std::move(blocks));
  return rows;
}
