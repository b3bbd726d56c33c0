// A system code taken apart.
#ifndef TALLY_REPORT_MODEL_SYS_CODE_PATH_H_
#define TALLY_REPORT_MODEL_SYS_CODE_PATH_H_

#include <string>
#include <string_view>
#include <vector>

#include "report_model/text_ref.h"

/// One level of a system code: what its node holds.
struct SSysCodeStep {
  /// Looks the sort number and the remark up, as CReportSysCode tells.
  SSysCodeStep(const std::wstring& spec, std::wstring_view levelName, std::wstring_view levelPath);

  // The texts belong to the store.
  CTextRef name;
  CTextRef fullName;
  int sortId;
  CTextRef remark;
};

/// The levels of a system code as CReportDataMethod::GetSysCodeName completes it, the first ahead;
/// none for an empty path.
std::vector<SSysCodeStep> ReadSysCodePath(const std::wstring& spec, const std::wstring& path);

#endif  // TALLY_REPORT_MODEL_SYS_CODE_PATH_H_
