#include "reports/special/special_report.h"

#include "report_model/row_results.h"
#include "result_store/tally_data_mng.h"

void CSpecialReport::ReadParameter(std::wstring& value, const KorDMRec::SKorDMAttrRec& record,
                                   const std::wstring& prefix) {
  std::wstring line;
  CReportDataMethod::GetAttParamValue(value, line, record.name, prefix);
  if (line.empty()) {
    CReportDataMethod::GetAttParamValue(value, line, record.value, prefix);
  }
}

void CSpecialReport::FillFloor(SSpecialRow& row, const sReportData& place,
                               const CPickedFloor& picked) const {
  const auto& floor = *NodeAs<CReportFloor>(place.floor);
  row.FloorName = &floor.name;
  row.Floor = &floor.name;
  if (picked.IsOther()) {
    row.Floor = &picked.SecondText();
  }
  row.FloorSortId = CFloorResultData::CalFloorGrade(*row.Floor);
}

void CSpecialReport::FillSysCode(SSpecialRow& row, TextPool& texts, const sReportData& place,
                                 int level) const {
  const auto& sysCode = *NodeAs<CReportSysCode>(place.sysCode);
  const CTallyDataMng* store = CTallyDataMng::Instance();
  std::wstring text = CReportDataMethod::GetSysCodeLevelName(
      sysCode.fullName,
      CReportDataMethod::GetExpandSysCodeLevel(static_cast<Report::ELevelType>(level)));
  row.SysCodeSortId = store->GetSysCodeSortId(spec, text.substr(0, text.find(L"\\*")));
  text += shape_.remark == ERemark::Bare ? store->GetSysCodeRemark(spec, text)
                                         : CReportDataMethod::GetSysCodeRemark(spec, text);
  row.SysCode = &*texts.insert(std::move(text)).first;
}

std::array<double, 4> DetailQuantities(const CReportResultDetail& detail, int floorCount) {
  const auto count = static_cast<double>(detail.components.size());
  return {count * detail.quantity1 * floorCount, count * detail.quantity2 * floorCount,
          count * detail.quantity3 * floorCount, count * detail.quantity4 * floorCount};
}
