// The requests of the batch protocol (docs/batch_protocol.md), read from JSON.
#ifndef TALLY_HOST_BATCH_JSON_H_
#define TALLY_HOST_BATCH_JSON_H_

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/report_catalog.h"
#include "report_mng/report_status.h"
#include "report_model/report_types.h"

/// The status that rows depend on.
struct SRowStatus {
  bool isBySgd = false;
  bool isDividedNode = false;
  std::vector<std::wstring> dispSgd;
};

struct SRowsCall {
  Report::EReportType report = Report::ReportNone;
  int variant = 0;
  SRowRequest rows;
  SRowStatus status;
  bool lineSortDown = true;
};
struct SSpecsCall {
  Report::EReportType report = Report::ReportNone;
};
struct STreeCall {
  Report::ETreeType tree = Report::TreeFloor;
};
struct SOpenCall {
  bool isQdMode = true;
};
struct SStatusReadCall {
  std::wstring path;
};
/// What is given of one report.
struct SReportChange {
  std::optional<bool> visible;
  std::optional<int> expandLevel;
  std::optional<std::vector<Report::SColumnState>> columns;
};
/// What is given of a status.
struct SStatusSetCall {
  std::optional<bool> isDividedNode;
  std::optional<bool> isBySgd;
  std::optional<std::vector<std::wstring>> dispSgd;
  std::optional<std::wstring> curSpec;
  std::optional<std::wstring> curReport;
  std::map<std::wstring, SReportChange> reports;
  std::map<std::wstring, Report::SNewCondition> conditions;
  std::map<std::wstring, TJTreeRec> trees;
};
struct SStatusSaveCall {};
struct SStatusGetCall {};
using BatchCall = std::variant<SRowsCall, SSpecsCall, STreeCall, SOpenCall, SStatusReadCall,
                               SStatusSetCall, SStatusSaveCall, SStatusGetCall>;

/// The line is no request. The message is for its sender.
class CRequestError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads one line, all of it before anything is answered; what is left out has its default, and
/// members that the protocol does not name are passed over. Throws CRequestError.
BatchCall ReadBatchCall(std::string_view line);

#endif  // TALLY_HOST_BATCH_JSON_H_
