#include "result_store/report_type_data.h"

CReportTypeData* CReportTypeData::Instance() {
  static auto* const instance = new CReportTypeData;
  return instance;
}

CReportTypeData::CReportTypeData()
    : specs_{
          {L"给排水", {{L"管道"}, {}}},
          {L"电气", {{L"管线", L"电缆桥架"}, {L"接地母线", L"避雷带", L"避雷引下线"}}},
          {L"暖通", {{L"风管", L"水管"}, {}}},
          {L"消防", {{L"管网"}, {}}},
          {L"弱电", {{L"穿管引线", L"线槽桥架"}, {}}},
      } {}

bool CReportTypeData::IsPipeType(std::wstring_view spec, std::wstring_view category,
                                 std::wstring_view kind) const {
  const auto at = specs_.find(spec);
  return at != specs_.end() &&
         (at->second.categories.contains(category) || at->second.kinds.contains(kind));
}

std::wstring CReportTypeData::GetCategoryType(std::wstring_view spec, std::wstring_view category,
                                              std::wstring_view kind) const {
  return IsPipeType(spec, category, kind) ? L"管线" : std::wstring(kind);
}
