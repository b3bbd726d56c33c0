#include "reports/shared/summary_report.h"

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
        const std::vector<CReportSysCode*> sysCodes = FirstSysCodesOf(*floor, firstSysCodes_);
        if (sysCodes.size() < floor->children.size()) {
          MarkShadowed(*floor, sysCodes);
        }
        for (CReportSysCode* sysCode : sysCodes) {
          SumBelow(*sysCode);
          floor->whole.Add(sysCode->whole);
        }
        sum.Add(floor->whole);
        continue;
      }
      const SWholeSum below = OfFloors(child->children);
      if (auto* item = NodeAs<CReportCalItem>(child.get())) {
        item->whole = below;
      } else if (auto* attribute = NodeAs<CReportAttribute>(child.get())) {
        attribute->whole = below;
      }
    }
    return sum;
  }

 private:
  struct SLevel {
    CReportSysCode* node;
    Report::NodeMap::Nodes::const_iterator next;
    SWholeSum sum;
  };

  static void MarkShadowed(const CReportFloor& floor, const std::vector<CReportSysCode*>& taken) {
    for (const auto& child : floor.children.InOrder()) {
      if (auto* sysCode = NodeAs<CReportSysCode>(child.get())) {
        sysCode->isShadowed = true;
      }
    }
    for (CReportSysCode* sysCode : taken) {
      sysCode->isShadowed = false;
    }
  }

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
        level.node->hasSysCodes = true;
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
