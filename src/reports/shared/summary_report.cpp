#include "reports/shared/summary_report.h"

#include "report_model/report_data_method.h"
#include "reports/shared/section_choice.h"

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
