#include "reports/consumption/consumption_report.h"

#include <set>
#include <utility>

#include "report_model/report_data_method.h"
#include "reports/shared/category_blocks.h"

void CConsumptionReport::FoldRows(const KorDMRec::SKorDMResultData& data) {
  CRowFolder fold(root, data);
  fold.Spec().Category().Attribute().CalItem().Floor().SysCode();
  for (const auto& row : data.rows) {
    fold.Add(row);
  }
  fold.Fold();
  SumWhole(shape_.summary);
}

CCellBlock CConsumptionReport::SpecRows(CSummaryWalk& walk, const CReportSpec& node) const {
  return CategoryBlocks(node.children, condition.categories, [&](const CReportCategory& category) {
    const std::wstring main = MainCalItemOf(spec, category);
    return AttributeBlocks(spec, category, [&](const CReportAttribute& attribute) {
      return AttributeRows(walk, attribute, main);
    });
  });
}

CCellBlock CConsumptionReport::AttributeRows(CSummaryWalk& walk, const CReportAttribute& attribute,
                                             const std::wstring& main) const {
  const int level = walk.Request().level;
  const bool skipsOthers = shape_.otherItems == EOtherItems::OneRow && level == 0;
  const int otherLevel = shape_.otherItems == EOtherItems::OneRow ? 1 : level;
  Report::SResultData sum;
  CCellBlock mainRows;
  std::set<CCalItemResultData> others;
  bool counted = false;
  ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
    if (item.name == main) {
      counted |= AddCalItem(walk, sum, mainRows, item, level);
    } else if (!skipsOthers) {
      Report::SResultData otherSum;
      CCellBlock rows;
      if (AddCalItem(walk, otherSum, rows, item, otherLevel)) {
        counted = true;
        PutBlock(others, CCalItemResultData(item.name, item.unit, std::move(rows)));
      }
    }
  });
  CCellBlock rows;
  if (counted) {
    rows.AddCells(L"@A", attribute.name, attribute.value, std::move(sum.unit), sum.quantity);
    rows.Append(std::move(mainRows));
    CReportDataMethod::ChangeCalItemResult(rows, std::move(others));
  }
  return rows;
}

bool CConsumptionReport::AddCalItem(CSummaryWalk& walk, Report::SResultData& target,
                                    CCellBlock& out, const CReportCalItem& item, int level) const {
  // The unit goes over even if nothing is counted: an attribute's row shows that of its last main
  // item.
  target.unit = item.unit;
  double sum = 0;
  CCellBlock floors;
  if (!walk.AddFloors(sum, floors, SFloorParent(item), item.unit, level)) {
    return false;
  }
  target.quantity += sum;
  if (level != 0) {
    if (shape_.itemTexts == EItemTexts::Shown) {
      out.AddCells(L"@CI", item.name, item.text3, item.text4, item.unit, sum);
    } else {
      out.AddCells(L"@CI", item.name, item.unit, sum);
    }
  }
  out.Append(std::move(floors));
  return true;
}
