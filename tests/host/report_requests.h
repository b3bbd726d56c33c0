// Every request for rows that the catalogue offers, put to the open project.
#ifndef TALLY_TESTS_HOST_REPORT_REQUESTS_H_
#define TALLY_TESTS_HOST_REPORT_REQUESTS_H_

#include <string>
#include <vector>

#include "host/report_catalog.h"
#include "host/report_state.h"
#include "platform/portable/utf8_text.h"
#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"

namespace tally_test {

/// Name of a report with its variant: "calculation-book-floor".
inline std::string FullName(const SCatalogReport& report) {
  return report.name + (report.variantName == nullptr ? "" : std::string("-") + report.variantName);
}

struct SAnsweredRequest {
  std::string spec;
  int level = 0;
  bool bySection = false;
  bool divided = false;  ///< of calculation books
  std::string title;     ///< tells the request from the report's others
  Report::CellArray cells;
};

/// Calls `visit(const SAnsweredRequest&)` for each discipline of `report`, each level, whole and by
/// section; the calculation books undivided and divided.
template <class TVisit>
void ForEachRequest(const SCatalogReport& report, TVisit&& visit) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  CTallyDataMng* data = CTallyDataMng::Instance();
  status->SetIsBySgd(false);
  CResultConfig::Instance()->SetLineSortDowm(true);
  Report::CellArray specs;
  data->GetReportSpecAry(specs, report.type);
  for (const bool divided : {false, true}) {
    if (divided && report.type != Report::ReportSysJss) {
      break;
    }
    SetDividedNode(divided);
    IReport& folded = *CReportMng::Instance()->GetReportData(report.type, report.variant);
    for (const std::wstring& spec : specs) {
      for (int level = 0; level <= report.DeepestLevel(); ++level) {
        for (const bool bySection : {false, true}) {
          status->SetDispSgd(bySection ? data->GetSgdNameTree() : std::vector<std::wstring>());
          SAnsweredRequest request{Utf8FromWide(spec), level, bySection, divided, {}, {}};
          request.title = request.spec;
          request.title += report.hasLevels ? ", level " + std::to_string(level) : "";
          request.title += bySection ? ", by section" : "";
          request.title += divided ? ", divided" : "";
          SRowRequest rows;
          rows.spec = spec;
          rows.level = level;
          rows.bySgd = bySection ? 1 : 0;
          rows.totalType = report.type;
          report.appendRows(folded, rows, request.cells);
          visit(static_cast<const SAnsweredRequest&>(request));
        }
      }
    }
  }
  SetDividedNode(false);
  status->SetDispSgd({});
}

}  // namespace tally_test

#endif  // TALLY_TESTS_HOST_REPORT_REQUESTS_H_
