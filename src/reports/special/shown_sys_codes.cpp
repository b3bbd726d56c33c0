#include "reports/special/shown_sys_codes.h"

#include "report_model/report_data_method.h"
#include "result_store/tally_data_mng.h"

const CShownSysCodes::SCode& CShownSysCodes::Of(const CReportSysCode& node) {
  if (&node != lastNode_) {
    const auto [at, isNew] = codes_.try_emplace(node.fullName);
    if (isNew) {
      at->second = Make(node.fullName);
    }
    lastNode_ = &node;
    last_ = &at->second;
  }
  return *last_;
}

CShownSysCodes::SCode CShownSysCodes::Make(std::wstring_view fullName) {
  const CTallyDataMng* store = CTallyDataMng::Instance();
  SCode code;
  code.text = CReportDataMethod::GetSysCodeLevelName(
      fullName, CReportDataMethod::GetExpandSysCodeLevel(static_cast<Report::ELevelType>(level_)));
  code.sortId = store->GetSysCodeSortId(spec_, code.text.substr(0, code.text.find(L"\\*")));
  code.text += remark_ == ERemark::Bare ? store->GetSysCodeRemark(spec_, code.text)
                                        : CReportDataMethod::GetSysCodeRemark(spec_, code.text);
  if (!code.text.empty()) {
    const auto next = static_cast<int>(texts_.size()) + 1;
    const auto& [number, sortId] = texts_.try_emplace(code.text, next, code.sortId).first->second;
    code.number = number;
    hasOrder_ = hasOrder_ && sortId == code.sortId;
  }
  // Rows without a system code have sort number 0.
  hasOrder_ = hasOrder_ && code.text.empty() == (code.sortId == 0);
  return code;
}
