#include "reports/shared/first_sys_codes.h"

#include <algorithm>

std::vector<CReportSysCode*> FirstSysCodesOf(const CReportFloor& node, EFirstSysCodes choice) {
  std::vector<CReportSysCode*> sysCodes;
  sysCodes.reserve(node.children.size());
  for (const auto& child : node.children.InOrder()) {
    if (auto* sysCode = NodeAs<CReportSysCode>(child.get())) {
      sysCodes.push_back(sysCode);
    }
  }
  if (choice == EFirstSysCodes::BySortNumber) {
    const auto isLess = [](const CReportSysCode* a, const CReportSysCode* b) {
      return a->sortId < b->sortId;
    };
    if (!std::is_sorted(sysCodes.begin(), sysCodes.end(), isLess)) {
      std::stable_sort(sysCodes.begin(), sysCodes.end(), isLess);
    }
    // Of each run of equal numbers the last one, the greatest name, stays.
    const auto first = std::unique(
        sysCodes.rbegin(), sysCodes.rend(),
        [](const CReportSysCode* a, const CReportSysCode* b) { return a->sortId == b->sortId; });
    sysCodes.erase(sysCodes.begin(), first.base());
  }
  return sysCodes;
}
