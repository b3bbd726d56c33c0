#include "reports/consumption/xhl_gl_report.h"

#include <map>
#include <set>
#include <utility>

#include "platform/text_numbers.h"
#include "platform/text_tool.h"
#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/row_folder.h"
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
}

void CXhlGlReport::GetGlData(Report::CellArray& rows, const std::wstring& requestSpec,
                             const Report::SNewCondition& requestCondition, int bySgd) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  RunSectionPasses(rows, bySgd, [&](const CSectionChoice& sections) {
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
      CCellBlock block = GroupRows(group, largerFirst, sections);
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
                                   const CSectionChoice& sections) const {
  std::set<CAttResultData> blocks;
  ForEachChild<CReportAttribute>(group.children, [&](const CReportAttribute& attribute) {
    double total = 0;
    std::wstring unit;
    ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
      // The last item's unit stands for the sum of all.
      if (AddCalItem(total, item, sections)) {
        unit = item.unit;
      }
    });
    if (!unit.empty()) {
      CCellBlock row;
      row.AddTexts(L"@A", attribute.name, std::move(unit), NumberText(total));
      PutBlock(blocks, CAttResultData(largerFirst, attribute.sortKey, std::move(row)));
    }
  });
  CCellBlock rows;
  CReportDataMethod::ChangeAttResult(rows, std::move(blocks));
  return rows;
}

bool CXhlGlReport::AddCalItem(double& total, const CReportCalItem& item,
                              const CSectionChoice& sections) const {
  bool counted = false;
  ForEachChosenFloor<EPairKey::Floor>(
      item.children, condition.floors,
      [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring&,
          const std::wstring&) {
        ForEachChosenCategory(
            floor.children, condition.categories, [&](const CReportCategory& category) {
              ForEachChosenSysCode(
                  category, condition.sysCodes, [&](const CReportSysCode& sysCode) {
                    ForEachBelowSysCode(
                        sysCode, [&](const CReportSysCode&, const IReportDataNode& child) {
                          const auto* result = NodeAs<CReportResult>(&child);
                          if (result != nullptr && sections.Takes(result->sgdName) &&
                              picked.Takes(*result)) {
                            total += static_cast<double>(result->components.size()) *
                                     result->quantity * picked.CountFor(*result);
                            counted = true;
                          }
                          return true;
                        });
                  });
            });
      });
  return counted;
}
