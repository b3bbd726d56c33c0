// The names of circuits.
#ifndef TALLY_REPORTS_SPECIAL_LOOP_NAMES_H_
#define TALLY_REPORTS_SPECIAL_LOOP_NAMES_H_

#include <deque>
#include <string>
#include <unordered_map>

#include "report_model/report_data_node.h"

/// Those that one answer shows, each composed once.
class CLoopNames {
 public:
  /// "%s回路%d".
  static std::wstring Compose(const CReportCategory& category, int number);
  /// The names of a kind from 1 on, to `number` at least. They stay where they are as long as this
  /// object does.
  const std::deque<std::wstring>& UpTo(const CReportCategory& category, int number);

 private:
  std::unordered_map<std::wstring, std::deque<std::wstring>> names_;  // by component kind, from 1
  const CReportCategory* last_ = nullptr;
  std::deque<std::wstring>* namesOfLast_ = nullptr;
};

#endif  // TALLY_REPORTS_SPECIAL_LOOP_NAMES_H_
