// What the five summaries do alike on a request.
#ifndef TALLY_REPORTS_SHARED_SUMMARY_REPORT_H_
#define TALLY_REPORTS_SHARED_SUMMARY_REPORT_H_

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "report_model/report_types.h"
#include "reports/shared/node_report.h"
#include "reports/shared/summary_walk.h"

class CSummaryReport : public CNodeReport {
 protected:
  /// Ends the fold: what a request that leaves nothing out counts below floors and what holds them.
  void SumWhole(const SSummaryShape& shape);

  /// Appends the rows of one discipline to `rows`: one pass, or one for each displayed construction
  /// section where `bySgd` is not 0. A discipline without a node appends nothing and leaves the
  /// stored condition as it was.
  void ShowRows(const SSummaryShape& shape, Report::CellArray& rows,
                const std::wstring& requestSpec, const Report::SNewCondition& requestCondition,
                int level, int bySgd);

 private:
  /// The rows of one pass.
  virtual CCellBlock SpecRows(CSummaryWalk& walk, const CReportSpec& node) const = 0;

  /// Names allowed at each system code level, element 0 the first; no entry, no filter.
  std::vector<std::set<std::wstring, std::less<>>> fjSysCodes;
};

#endif  // TALLY_REPORTS_SHARED_SUMMARY_REPORT_H_
