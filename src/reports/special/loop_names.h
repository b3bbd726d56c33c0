// The names of circuits.
#ifndef TALLY_REPORTS_SPECIAL_LOOP_NAMES_H_
#define TALLY_REPORTS_SPECIAL_LOOP_NAMES_H_

#include <deque>
#include <string>
#include <unordered_map>

#include "report_model/report_data_node.h"

/// Those that one request shows, each composed once.
class CLoopNames {
 public:
  /// "%s回路%d".
  static std::wstring Compose(const CReportCategory& category, int number);
  /// The same; stays as long as this object. REQUIRES: number > 0.
  const std::wstring& Of(const CReportCategory& category, int number);

 private:
  std::unordered_map<std::wstring, std::deque<std::wstring>> names_;  // by component kind, from 1
  const CReportCategory* last_ = nullptr;
  std::deque<std::wstring>* namesOfLast_ = nullptr;
};

#endif  // TALLY_REPORTS_SPECIAL_LOOP_NAMES_H_
