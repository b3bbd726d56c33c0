// The report status as the STATE of the batch protocol (docs/batch_protocol.md).
#ifndef TALLY_HOST_STATUS_JSON_H_
#define TALLY_HOST_STATUS_JSON_H_

#include "host/output.h"
#include "report_mng/report_status.h"

/// Writes one JSON object on one line, without a line end.
void WriteStatusJson(const SReportStatus& status, COutput& output);

#endif  // TALLY_HOST_STATUS_JSON_H_
