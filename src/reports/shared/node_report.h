// A report with a tree of nodes.
#ifndef TALLY_REPORTS_SHARED_NODE_REPORT_H_
#define TALLY_REPORTS_SHARED_NODE_REPORT_H_

#include <string>

#include "report_mng/ireport.h"
#include "report_model/report_data_node.h"

class CNodeReport : public IReport {
 public:
  /// Frees the tree.
  void Clear() final { ClearNodes(root); }

 protected:
  /// What every row operation begins with: finds the discipline's node and stores the request.
  /// Null, with the stored request left as it was, for a discipline without a node.
  const CReportSpec* BeginRequest(const std::wstring& requestSpec,
                                  const Report::SNewCondition& requestCondition) {
    const auto* node = FindChild<CReportSpec>(root, requestSpec);
    if (node != nullptr) {
      UpdateCondition(requestSpec, requestCondition);
    }
    return node;
  }

  Report::NodeMap root;  ///< the disciplines
};

#endif  // TALLY_REPORTS_SHARED_NODE_REPORT_H_
