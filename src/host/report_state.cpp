#include "host/report_state.h"

#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"

void SetDividedNode(bool isDividedNode) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  if (status->GetIsDividedNode() != isDividedNode) {
    status->SetIsDividedNode(isDividedNode);
    CReportMng::Instance()->ClearXHLSysJSSReportData();
  }
}
