#include "reports/calculation_books/calculation_book.h"

#include <set>
#include <utility>

#include "report_model/report_data_method.h"
#include "reports/shared/category_blocks.h"

CCellBlock CCalculationBook::FloorBlocks(const CReportSpec& node, const FloorRows& rowsOf) const {
  std::set<CFloorResultData> blocks;
  ForEachChosenFloor<EPairKey::DrawingFloor>(
      node.children, condition.floors,
      [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring& drawingFloor,
          const std::wstring& shownFloor) {
        CCellBlock rows = rowsOf(floor, picked);
        if (!rows.Empty()) {
          CCellBlock block;
          block.AddTexts(L"@F", drawingFloor, shownFloor);
          block.Append(std::move(rows));
          CFloorResultData result(shownFloor);
          result.SetResult(std::move(block));
          PutBlock(blocks, std::move(result));
        }
      });
  CCellBlock rows;
  CReportDataMethod::ChangeSysResult(rows, std::move(blocks));
  return rows;
}

void CCalculationBook::AddTypes(CCellBlock& lineWork, CCellBlock& out, const IReportDataNode& node,
                                const NodeRows& rowsOf) const {
  if (!CReportStatusMng::Instance()->GetIsDividedNode()) {
    out.Append(rowsOf(node, true));
    return;
  }
  std::set<CTypeResultData> others;
  ForEachChild<CReportType>(node.children, [&](const CReportType& type) {
    const bool isLineWork = type.name == L"管线";
    CCellBlock rows = rowsOf(type, isLineWork);
    if (rows.Empty()) {
      return;
    }
    CCellBlock block;
    block.AddTexts(L"@T", type.name);
    block.Append(std::move(rows));
    if (isLineWork) {
      lineWork.Append(std::move(block));
    } else {
      const int sortId = CTallyDataMng::Instance()->GetCategorySortId(spec, type.category);
      PutBlock(others, CTypeResultData(sortId, type.name, std::move(block)));
    }
  });
  CReportDataMethod::ChangeTypeResult(out, std::move(others));
}

CCellBlock CCalculationBook::KindBlocks(const Report::NodeMap& children,
                                        const ItemRows& rowsOf) const {
  return CategoryBlocks(children, condition.categories, [&](const CReportCategory& category) {
    const std::wstring main = MainCalItemOf(spec, category);
    return AttributeBlocks(spec, category, [&](const CReportAttribute& attribute) {
      CCellBlock items;
      std::set<CCalItemResultData> others;
      ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
        if (item.name == main) {
          items.Append(rowsOf(item, true));
        } else {
          // Put in without rows as well: it then holds the place of its key.
          PutBlock(others, CCalItemResultData(item.name, item.unit, rowsOf(item, false)));
        }
      });
      CReportDataMethod::ChangeCalItemResult(items, std::move(others));
      CCellBlock rows;
      if (!items.Empty()) {
        rows.AddTexts(L"@A", attribute.name, attribute.value);
        rows.Append(std::move(items));
      }
      return rows;
    });
  });
}
