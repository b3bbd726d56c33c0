#include "reports/calculation_books/xhl_jss2m_report.h"

#include <array>
#include <map>
#include <string_view>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/shared/node_choice.h"

namespace {

// The sums of one calculation item by floor text, in text order.
using FloorSums = std::map<std::wstring_view, Report::SQuantity>;

void AddDetail(FloorSums& sums, const CReportResultDetail& detail, const CPickedFloor& picked) {
  const auto [quantity1, quantity2, quantity3, quantity4] = ComponentQuantities(detail);
  const auto [at, isNew] = sums.try_emplace(
      picked.TextFor(detail),
      Report::SQuantity{quantity1, quantity2, quantity3, quantity4, picked.CountFor(detail)});
  if (!isNew) {
    at->second.quantity1 += quantity1;
    at->second.quantity2 += quantity2;
    at->second.quantity3 += quantity3;
    at->second.quantity4 += quantity4;
  }
}

void AddFloor(FloorSums& sums, const CReportFloor& floor, const CPickedFloor& picked,
              const CSectionChoice& sections) {
  ForEachChild<CReportResultDetail>(floor.children, [&](const CReportResultDetail& detail) {
    if (sections.Takes(detail.sgdName) && picked.Takes(detail)) {
      AddDetail(sums, detail, picked);
    }
  });
}

}  // namespace

void CXhlJss2MReport::CreatData() {
  FoldDetails([](auto& fold, bool isDivided) {
    fold.Spec();
    if (isDivided) {
      fold.Type();
    }
    fold.Category().Attribute().CalItem().SysCode().Floor();
  });
}

void CXhlJss2MReport::GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                                    const Report::SNewCondition& requestCondition,
                                    int sectionMode) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  RunSectionPasses(rows, sectionMode, [&](const CSectionChoice& sections) {
    CCellBlock lineWork;
    CCellBlock block;
    AddTypes(lineWork, block, *node, [&](const IReportDataNode& parent, bool /*isLineWork*/) {
      return KindBlocks(parent.children, [&](const CReportCalItem& item, bool isMain) {
        return CalItemRows(item, isMain, sections);
      });
    });
    // Straight to the rows, ahead of the section's heading.
    lineWork.MoveTo(rows);
    return block;
  });
}

CCellBlock CXhlJss2MReport::CalItemRows(const CReportCalItem& item, bool isMain,
                                        const CSectionChoice& sections) const {
  FloorSums sums;
  ForEachChosenSysCode(item, condition.sysCodes, [&](const CReportSysCode& sysCode) {
    ForEachBelowSysCode(sysCode, [&](const CReportSysCode& holder, const IReportDataNode& child) {
      const auto* floor = NodeAs<CReportFloor>(&child);
      if (floor == nullptr) {
        return true;
      }
      if (condition.floors.empty()) {
        AddFloor(sums, *floor, CPickedFloor(), sections);
        return true;
      }
      // The pairs pick among all floors of the holder at once, so the rest of it is left out.
      ForEachChosenFloor<EPairKey::DrawingFloor>(
          holder.children, condition.floors,
          [&](const CReportFloor& node, const CPickedFloor& picked, const std::wstring&,
              const std::wstring&) { AddFloor(sums, node, picked, sections); });
      return false;
    });
  });
  if (sums.empty()) {
    return {};
  }
  CFormulaSum total;
  for (const auto& [floorText, sum] : sums) {
    if (isMain) {
      const std::wstring term = NumberText(sum.quantity1);
      total.AddTerm(sum.floorCount == 1 ? term : Multiplied(term, sum.floorCount, L"层"));
    }
    total.AddQuantities({sum.quantity1, sum.quantity2, sum.quantity3, sum.quantity4},
                        sum.floorCount);
  }
  return ItemRow(item, std::wstring(total.Formula()), {}, total.Sums());
}
