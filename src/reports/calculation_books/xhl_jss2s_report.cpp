#include "reports/calculation_books/xhl_jss2s_report.h"

#include <utility>

#include "reports/calculation_books/ordered_system_rows.h"
#include "reports/calculation_books/system_book_items.h"
#include "reports/calculation_books/system_book_rows.h"
#include "reports/shared/node_choice.h"

void CXhlJss2SReport::CreatData() {
  FoldDetails([](auto& fold, bool isDivided) {
    fold.Spec().Floor();
    if (isDivided) {
      fold.Type();
    }
    fold.SysCode().Category().Attribute().CalItem();
  });
  for (const auto& child : root.InOrder()) {
    if (auto* node = NodeAs<CReportSpec>(child.get())) {
      node->bookItems = CSystemBookItems::Of(*node);
    }
  }
}

int CXhlJss2SReport::GetSysCodeLevel(int level) {
  switch (level) {
    case LevelSysCode1:
      return 1;
    case LevelSysCode2:
      return 2;
    case LevelSysCode3:
    case LevelLoop:
      return 3;
    default:
      return 0;
  }
}

void CXhlJss2SReport::GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                                    const Report::SNewCondition& requestCondition, int level,
                                    int sectionMode) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  CShownSystems systems(spec, level);
  CShownSystems whole(spec, LevelNode);
  CSysCodeWalk sysCodes(condition.sysCodes);
  COrderedSystemRows ordered(node->bookItems.get(), sysCodes, condition);
  RunSectionPasses(rows, sectionMode, [&](const CSectionChoice& sections) {
    return FloorBlocks(*node, [&](const CReportFloor& floor, const CPickedFloor& picked) {
      CCellBlock block;
      CCellBlock others;
      AddTypes(block, others, floor, [&](const IReportDataNode& parent, bool isLineWork) {
        // Only line work is broken down by system code.
        CShownSystems& shown = isLineWork ? systems : whole;
        CCellBlock below;
        if (sections.TakesAll() && !picked.IsOther() && ordered.Add(below, shown, parent)) {
          return below;
        }
        CSystemBookRows sums(shown, picked, sections);
        ForEachCategoryBelow(sysCodes, parent, condition,
                             [&](const CReportSysCode& holder, const CReportCategory& category) {
                               sums.AddCategory(holder, category);
                             });
        return sums.TakeRows();
      });
      block.Append(std::move(others));
      return block;
    });
  });
}
