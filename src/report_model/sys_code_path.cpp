#include "report_model/sys_code_path.h"

#include "platform/text_tool.h"
#include "report_model/report_data_method.h"
#include "result_store/tally_data_mng.h"

SSysCodeStep::SSysCodeStep(const std::wstring& spec, std::wstring_view levelName,
                           std::wstring_view levelPath)
    : name(CTallyDataMng::Instance()->KeepText(levelName)),
      fullName(CTallyDataMng::Instance()->KeepText(levelPath)),
      sortId(CTallyDataMng::kUnknownSortId) {
  const CTallyDataMng::SSysCodeEntry* entry =
      CTallyDataMng::Instance()->FindSysCode(spec, levelPath.substr(0, levelPath.find(L"\\*")));
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
  std::wstring fullName;
  for (const std::wstring& name : names) {
    if (!steps.empty()) {
      fullName += L'\\';
    }
    fullName += name;
    steps.emplace_back(spec, name, fullName);
  }
  return steps;
}
