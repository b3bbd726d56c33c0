#include "reports/shared/summary_report.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "report_model/report_data_method.h"
#include "reports/shared/section_choice.h"

namespace {

// Sums what the nodes below a tree hold, as a request that leaves nothing out adds it.
class CWholeSums {
 public:
  explicit CWholeSums(EFirstSysCodes firstSysCodes) : firstSysCodes_(firstSysCodes) {}

  // The sum of the floors that are children; what lies above floors has a limited depth.
  SWholeSum OfFloors(const Report::NodeMap& children) {
    SWholeSum sum;
    for (const auto& child : children.InOrder()) {
      if (auto* floor = NodeAs<CReportFloor>(child.get())) {
        floor->whole = SWholeSum();
        for (CReportSysCode* sysCode : FirstSysCodesOf(*floor, firstSysCodes_)) {
          SumBelow(*sysCode);
          floor->whole.Add(sysCode->whole);
        }
        sum.Add(floor->whole);
      } else {
        OfNode(*child);
      }
    }
    return sum;
  }

 private:
  void OfNode(IReportDataNode& node) {
    const SWholeSum whole = OfFloors(node.children);
    if (auto* item = NodeAs<CReportCalItem>(&node)) {
      item->whole = whole;
    } else if (auto* attribute = NodeAs<CReportAttribute>(&node)) {
      attribute->whole = whole;
    }
  }

  struct SLevel {
    CReportSysCode* node;
    Report::NodeMap::Place next;
    SWholeSum sum;
  };

  void Enter(CReportSysCode& node) {
    levels_.push_back({&node, node.children.InOrder().begin(), {}});
  }

  // Keeps its own stack: a code may have any number of levels.
  void SumBelow(CReportSysCode& first) {
    if (first.HasWhole()) {
      return;
    }
    Enter(first);
    while (!levels_.empty()) {
      SLevel& level = levels_.back();
      if (level.next == level.node->children.InOrder().end()) {
        LeaveLast();
        continue;
      }
      IReportDataNode* child = level.next->get();
      ++level.next;
      if (auto* sysCode = NodeAs<CReportSysCode>(child)) {
        if (sysCode->HasWhole()) {
          level.sum.Add(sysCode->whole);
        } else {
          Enter(*sysCode);
        }
      } else if (const auto* result = NodeAs<CReportResult>(child)) {
        level.sum.Add({result->Quantity(result->floorCount), true});
      }
    }
  }

  void LeaveLast() {
    const SLevel done = levels_.back();
    levels_.pop_back();
    done.node->whole = done.sum;
    done.node->wholeSize = done.node->children.size();
    if (!levels_.empty()) {
      levels_.back().sum.Add(done.sum);
    }
  }

  const EFirstSysCodes firstSysCodes_;
  std::vector<SLevel> levels_;
};

}  // namespace

void CSummaryReport::SumWhole(const SSummaryShape& shape) {
  static_cast<void>(CWholeSums(shape.firstSysCodes).OfFloors(root));
}

void CSummaryReport::ShowRows(const SSummaryShape& shape, Report::CellArray& rows,
                              const std::wstring& requestSpec,
                              const Report::SNewCondition& requestCondition, int level, int bySgd) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  fjSysCodes.clear();
  CReportDataMethod::GetFJSysCodeVec(condition.sysCodes, fjSysCodes);
  const SSummaryRequest request{spec, condition, fjSysCodes, level};
  RunSectionPasses(rows, bySgd, [&](const CSectionChoice& sections) {
    CSummaryWalk walk(shape, request, sections);
    return SpecRows(walk, *node);
  });
}
