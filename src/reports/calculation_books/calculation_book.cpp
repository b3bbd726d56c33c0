#include "reports/calculation_books/calculation_book.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "report_model/report_data_method.h"
#include "reports/shared/category_blocks.h"
#include "reports/shared/floor_blocks.h"

namespace {

// The attributes of a kind in the order of rows. Of those that share a place the first one to have
// rows stays.
std::vector<const SFigureAttribute*> InOrder(std::span<const SFigureAttribute> attributes,
                                             int SAttPlaces::*place) {
  std::vector<const SFigureAttribute*> order;
  order.reserve(attributes.size());
  for (const SFigureAttribute& attribute : attributes) {
    order.push_back(&attribute);
  }
  std::sort(
      order.begin(), order.end(), [place](const SFigureAttribute* a, const SFigureAttribute* b) {
        return a->places.*place != b->places.*place ? a->places.*place < b->places.*place : a < b;
      });
  return order;
}

}  // namespace

CCellBlock CCalculationBook::FloorBlocks(const CReportSpec& node, const FloorRows& rowsOf) const {
  CFloorBlocks blocks;
  ForEachChosenFloor<EPairKey::DrawingFloor>(
      node.children, condition.floors,
      [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring& drawingFloor,
          const std::wstring& shownFloor) {
        CCellBlock rows = rowsOf(floor, picked);
        if (!rows.Empty()) {
          CCellBlock block;
          block.AddCells(L"@F", drawingFloor, shownFloor);
          block.Append(std::move(rows));
          blocks.Put(floor, shownFloor, std::move(block));
        }
      });
  CCellBlock rows;
  blocks.MoveTo(rows);
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

CCellBlock CCalculationBook::KindBlocks(const Report::NodeMap& children,
                                        const SBookFigures& figures,
                                        const AddItemRow& addRow) const {
  return CategoryBlocks(children, condition.categories, [&](const CReportCategory& category) {
    return KindBlock(category, figures, addRow);
  });
}

CCellBlock CCalculationBook::KindBlock(const CReportCategory& category, const SBookFigures& figures,
                                       const AddItemRow& addRow) const {
  const std::span<const SFigureAttribute> attributes = figures.Of(category);
  const auto rowsOf = [&](const SFigureAttribute& attribute) {
    CCellBlock items;
    for (const SFigureRow& row : figures.Of(attribute)) {
      addRow(items, row);
    }
    CCellBlock rows;
    if (!items.Empty()) {
      rows.AddCells(L"@A", attribute.key->name, attribute.key->value);
      rows.Append(std::move(items));
    }
    return rows;
  };
  if (attributes.empty() || attributes.front().places.ascending < 0) {
    auto next = attributes.begin();
    return AttributeBlocks(spec, category, [&](const CReportAttribute& node) {
      return next != attributes.end() && next->node == &node ? rowsOf(*next++) : CCellBlock();
    });
  }
  const bool largerFirst =
      category.figures.isLineWork && CResultConfig::Instance()->GetLineSortDowm();
  const auto place = largerFirst ? &SAttPlaces::descending : &SAttPlaces::ascending;
  CCellBlock out;
  int last = -1;
  for (const SFigureAttribute* attribute : InOrder(attributes, place)) {
    if (attribute->places.*place == last) {
      continue;
    }
    CCellBlock rows = rowsOf(*attribute);
    if (!rows.Empty()) {
      if (out.Empty()) {
        out.AddCells(L"@Cg", category.GetKey());
      }
      out.Append(std::move(rows));
      last = attribute->places.*place;
    }
  }
  return out;
}
