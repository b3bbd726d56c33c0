#include "filter_trees/sys_code_tree.h"

#include "report_model/report_data_method.h"
#include "result_store/tally_data_mng.h"

void CSysCodeTree::CreatData() {
  for (const auto& record : CTallyDataMng::Instance()->GetSysCodeTree()) {
    Add(record.spec, CReportDataMethod::GetNewSysCodeName(record.sysCode));
  }
}
