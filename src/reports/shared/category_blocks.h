// Component kinds and their attributes, ordered as rows.
#ifndef TALLY_REPORTS_SHARED_CATEGORY_BLOCKS_H_
#define TALLY_REPORTS_SHARED_CATEGORY_BLOCKS_H_

#include <set>
#include <string>
#include <utility>

#include "report_mng/result_config.h"
#include "report_model/cell_block.h"
#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"
#include "reports/shared/node_choice.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/report_type_data.h"

inline std::wstring MainCalItemOf(const std::wstring& spec, const CReportCategory& category) {
  return CReportMainCalItemData::Instance()->GetMainCalItem(spec, category.category, category.kind);
}

/// The configured direction for line work; everything else runs from small to large.
inline bool SortsLargerFirst(const std::wstring& spec, const CReportCategory& category) {
  return CReportTypeData::Instance()->IsPipeType(spec, category.category, category.kind) &&
         CResultConfig::Instance()->GetLineSortDowm();
}

/// The blocks of the component kinds that `categories` selects, by sort number; `rowsOf(category)`
/// makes each. One without rows is left out.
template <class TRows>
CCellBlock CategoryBlocks(const Report::NodeMap& children, const std::set<std::wstring>& categories,
                          TRows&& rowsOf) {
  std::set<CCategoryResultData> blocks;
  ForEachChosenCategory(children, categories, [&](const CReportCategory& category) {
    CCellBlock rows = rowsOf(category);
    if (!rows.Empty()) {
      PutBlock(blocks, CCategoryResultData(category.sortId, category.kind, std::move(rows)));
    }
  });
  CCellBlock out;
  CReportDataMethod::ChangeCategoryResult(out, std::move(blocks));
  return out;
}

/// The blocks of a kind's attributes in their order, under "@Cg" and the kind's path;
/// `rowsOf(attribute)` makes each. One without rows is left out, and without any there is no
/// heading.
template <class TRows>
CCellBlock AttributeBlocks(const std::wstring& spec, const CReportCategory& category,
                           TRows&& rowsOf) {
  const bool largerFirst = SortsLargerFirst(spec, category);
  std::set<CAttResultData> blocks;
  ForEachChild<CReportAttribute>(category.children, [&](const CReportAttribute& attribute) {
    CCellBlock rows = rowsOf(attribute);
    if (!rows.Empty()) {
      PutBlock(blocks, CAttResultData(largerFirst, attribute.sortKey, std::move(rows)));
    }
  });
  CCellBlock out;
  if (!blocks.empty()) {
    out.AddCells(L"@Cg", category.GetKey());
    CReportDataMethod::ChangeAttResult(out, std::move(blocks));
  }
  return out;
}

#endif  // TALLY_REPORTS_SHARED_CATEGORY_BLOCKS_H_
