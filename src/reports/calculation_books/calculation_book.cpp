#include "reports/calculation_books/calculation_book.h"

#include <array>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "report_model/report_data_method.h"
#include "reports/shared/category_blocks.h"

namespace {

void AddItemRow(CCellBlock& out, const CReportCalItem& item, CCellSource formula,
                CCellSource references, const std::array<double, 4>& sums) {
  out.AddCells(L"@CI", item.name, item.unit, formula, references, sums[0], sums[1], sums[2],
               sums[3]);
}

CCellBlock WholeRow(const CReportCalItem& item) {
  CCellBlock row;
  if (const SItemFigures* figures = item.wholeFigures.get()) {
    AddItemRow(row, item, figures->formula, figures->references, figures->sums);
  }
  return row;
}

CCellBlock PartRow(const CReportCalItem& item, std::unique_ptr<const SItemFigures> figures) {
  CCellBlock row;
  if (figures != nullptr) {
    AddItemRow(row, item, CCellSource::Copied(figures->formula),
               CCellSource::Copied(figures->references), figures->sums);
  }
  return row;
}

// Nodes above calculation items have a limited depth.
template <class TFigures>
void KeepBelow(const Report::NodeMap& children, const std::wstring& spec, const std::wstring& main,
               const TFigures& figuresOf) {
  for (const auto& child : children.InOrder()) {
    if (auto* item = NodeAs<CReportCalItem>(child.get())) {
      item->wholeFigures = figuresOf(*item, item->name == main);
    } else if (const auto* category = NodeAs<CReportCategory>(child)) {
      KeepBelow(category->children, spec, MainCalItemOf(spec, *category), figuresOf);
    } else {
      KeepBelow(child->children, spec, main, figuresOf);
    }
  }
}

}  // namespace

void CCalculationBook::KeepFigures(const ItemFigures& figuresOf) const {
  ForEachChild<CReportSpec>(
      root, [&](const CReportSpec& node) { KeepBelow(node.children, node.name, {}, figuresOf); });
}

CCellBlock CCalculationBook::FloorBlocks(const CReportSpec& node, const FloorRows& rowsOf) const {
  std::set<CFloorResultData> blocks;
  ForEachChosenFloor<EPairKey::DrawingFloor>(
      node.children, condition.floors,
      [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring& drawingFloor,
          const std::wstring& shownFloor) {
        CCellBlock rows = rowsOf(floor, picked);
        if (!rows.Empty()) {
          CCellBlock block;
          block.AddCells(L"@F", drawingFloor, shownFloor);
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
    block.AddCells(L"@T", type.name);
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

CCellBlock CCalculationBook::KindBlocks(const Report::NodeMap& children, ETake take,
                                        const ItemFigures& figuresOf) const {
  return CategoryBlocks(children, condition.categories, [&](const CReportCategory& category) {
    const std::wstring main = MainCalItemOf(spec, category);
    return AttributeBlocks(spec, category, [&](const CReportAttribute& attribute) {
      CCellBlock items;
      std::set<CCalItemResultData> others;
      ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
        const bool isMain = item.name == main;
        CCellBlock row =
            take == ETake::Whole ? WholeRow(item) : PartRow(item, figuresOf(item, isMain));
        if (isMain) {
          items.Append(std::move(row));
        } else {
          // Put in without rows as well: it then holds the place of its key.
          PutBlock(others, CCalItemResultData(item.name, item.unit, std::move(row)));
        }
      });
      CReportDataMethod::ChangeCalItemResult(items, std::move(others));
      CCellBlock rows;
      if (!items.Empty()) {
        rows.AddCells(L"@A", attribute.name, attribute.value);
        rows.Append(std::move(items));
      }
      return rows;
    });
  });
}
