#include "report_model/sys_code_path.h"

#include <utility>

#include "platform/text_tool.h"
#include "report_model/report_data_method.h"
#include "result_store/tally_data_mng.h"

SSysCodeStep::SSysCodeStep(const std::wstring& spec, std::wstring levelName, std::wstring levelPath)
    : name(std::move(levelName)),
      fullName(std::move(levelPath)),
      sortId(CTallyDataMng::kUnknownSortId) {
  const CTallyDataMng::SSysCodeEntry* entry = CTallyDataMng::Instance()->FindSysCode(
      spec, std::wstring_view(fullName).substr(0, fullName.find(L"\\*")));
  if (entry != nullptr) {
    sortId = entry->sortId;
    remark = entry->remark;
  }
}

std::vector<SSysCodeStep> ReadSysCodePath(const std::wstring& spec, const std::wstring& path) {
  Report::CellArray names;
  KorString::Split(CReportDataMethod::GetSysCodeName(path), names, L'\\');
  std::vector<SSysCodeStep> steps;
  steps.reserve(names.size());
  for (std::wstring& name : names) {
    std::wstring fullName = steps.empty() ? name : steps.back().fullName + L'\\' + name;
    steps.emplace_back(spec, std::move(name), std::move(fullName));
  }
  return steps;
}
