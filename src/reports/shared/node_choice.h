// Which nodes of a tree a filter selects, as the reports share it.
#ifndef TALLY_REPORTS_SHARED_NODE_CHOICE_H_
#define TALLY_REPORTS_SHARED_NODE_CHOICE_H_

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"
#include "reports/shared/picked_floor.h"
#include "reports/shared/sys_code_walk.h"

/// Calls `visit(const CReportCategory&)` for each child that `categories` selects: every component
/// kind where it is empty; else, entry by entry, those whose path begins with an entry of one part
/// and the one whose path is an entry of two parts. A kind that two entries select is visited
/// twice.
template <class TVisit>
void ForEachChosenCategory(const Report::NodeMap& children,
                           const std::set<std::wstring>& categories, TVisit&& visit) {
  if (categories.empty()) {
    ForEachChild<CReportCategory>(children, visit);
    return;
  }
  const auto take = [&visit](const auto& child) {
    if (const auto* category = NodeAs<CReportCategory>(child)) {
      visit(*category);
    }
  };
  for (const std::wstring& entry : categories) {
    if (entry.empty()) {
      continue;
    }
    const auto separators = std::count(entry.begin(), entry.end(), L'\\');
    auto at = children.lower_bound(entry);
    if (separators == 0) {
      for (; at != children.end() && at.Node()->GetFiledKey().Text().starts_with(entry); ++at) {
        take(at.Node());
      }
    } else if (separators == 1 && at != children.end() &&
               at.Node()->GetFiledKey().Compare({entry}) == 0) {
      take(at.Node());
    }
  }
}

/// Which floor of a pair finds the node; the other decides the count (CPickedFloor).
enum class EPairKey { DrawingFloor, Floor };

/// Calls `visit(const CReportFloor&, const CPickedFloor&, drawingFloor, floor)` for each floor
/// among `children` that the filter selects: every one where `floors` is empty, both texts then
/// being its name; else the one that each pair finds, in list order.
template <EPairKey kKey, class TVisit>
void ForEachChosenFloor(const Report::NodeMap& children,
                        const std::vector<Report::SFloorPair>& floors, TVisit&& visit) {
  if (floors.empty()) {
    ForEachChild<CReportFloor>(children, [&](const CReportFloor& node) {
      visit(node, CPickedFloor(), node.name, node.name);
    });
    return;
  }
  for (const Report::SFloorPair& pair : floors) {
    const bool byDrawing = kKey == EPairKey::DrawingFloor;
    const std::wstring& first = byDrawing ? pair.drawingFloor : pair.floor;
    const std::wstring& second = byDrawing ? pair.floor : pair.drawingFloor;
    if (const auto* node = FindChild<CReportFloor>(children, first)) {
      visit(*node, CPickedFloor(first, second), pair.drawingFloor, pair.floor);
    }
  }
}

/// Whether the filter takes a kind by its category alone or by its exact path, as the reports do
/// that have component kinds below system codes.
inline bool IsChosen(const CReportCategory& category, const Report::SNewCondition& condition) {
  return condition.categories.empty() || condition.categories.contains(category.category) ||
         condition.categories.contains(category.GetKey());
}

/// Calls `visit(const CReportSysCode& holder, const CReportCategory&)` for each component kind
/// below the system codes of `parent` that `sysCodes` and the filter select.
template <class TVisit>
void ForEachCategoryBelow(CSysCodeWalk& sysCodes, const IReportDataNode& parent,
                          const Report::SNewCondition& condition, TVisit&& visit) {
  sysCodes.ForEachChosen(parent, [&](const CReportSysCode& sysCode) {
    sysCodes.ForEachBelow(sysCode, [&](const CReportSysCode& holder, const IReportDataNode& child) {
      const auto* category = NodeAs<CReportCategory>(&child);
      if (category != nullptr && IsChosen(*category, condition)) {
        visit(holder, *category);
      }
      return true;
    });
  });
}

#endif  // TALLY_REPORTS_SHARED_NODE_CHOICE_H_
