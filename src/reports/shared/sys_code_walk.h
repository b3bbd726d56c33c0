// The system codes that a filter selects, and what lies below them.
#ifndef TALLY_REPORTS_SHARED_SYS_CODE_WALK_H_
#define TALLY_REPORTS_SHARED_SYS_CODE_WALK_H_

#include <string>
#include <vector>

#include "platform/text_tool.h"
#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"

/// Serves one request: it takes the filter's paths apart once, and keeps its stack from one code to
/// the next. A visit must not start another one of the same walk.
class CSysCodeWalk {
 public:
  explicit CSysCodeWalk(const std::vector<std::wstring>& sysCodes) {
    paths_.reserve(sysCodes.size());
    for (const std::wstring& path : sysCodes) {
      KorString::Split(path, paths_.emplace_back(), L'\\');
    }
  }

  /// Whether the filter is empty.
  bool TakesAll() const { return paths_.empty(); }

  /// Calls `visit(const CReportSysCode&)` for each system code below `node` that the filter
  /// selects: every child where it is empty, else the one at the end of each path, in list order,
  /// if it is there.
  template <class TVisit>
  void ForEachChosen(const IReportDataNode& node, TVisit&& visit) const {
    if (TakesAll()) {
      ForEachChild<CReportSysCode>(node.children, visit);
      return;
    }
    for (const std::vector<std::wstring>& path : paths_) {
      if (const CReportSysCode* sysCode = CReportDataMethod::FindSysCodeItem(&node, path)) {
        visit(*sysCode);
      }
    }
  }

  /// Goes through all that lies below a system code, in key order, into deeper system codes where
  /// they stand. Calls `visit(const CReportSysCode& holder, const IReportDataNode& child)` for
  /// every child that is no system code; where it answers false, the holder's further children are
  /// left out. Keeps its own stack: a code may have any number of levels.
  template <class TVisit>
  void ForEachBelow(const CReportSysCode& sysCode, TVisit&& visit) {
    levels_.clear();
    levels_.emplace_back(sysCode);
    while (!levels_.empty()) {
      SLevel& level = levels_.back();
      const CReportSysCode& holder = *level.holder;
      const CReportSysCode* deeper = nullptr;
      while (deeper == nullptr && level.next != holder.children.InOrder().end()) {
        const IReportDataNode& child = **level.next++;
        deeper = NodeAs<CReportSysCode>(&child);
        if (deeper == nullptr && !visit(holder, child)) {
          level.next = holder.children.InOrder().end();
        }
      }
      if (deeper != nullptr) {
        levels_.emplace_back(*deeper);
      } else {
        levels_.pop_back();
      }
    }
  }

 private:
  struct SLevel {
    explicit SLevel(const CReportSysCode& sysCode)
        : holder(&sysCode), next(sysCode.children.InOrder().begin()) {}
    const CReportSysCode* holder;
    Report::NodeMap::Place next;
  };

  std::vector<std::vector<std::wstring>> paths_;
  std::vector<SLevel> levels_;
};

#endif  // TALLY_REPORTS_SHARED_SYS_CODE_WALK_H_
