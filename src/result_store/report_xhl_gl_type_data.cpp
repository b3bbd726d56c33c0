#include "result_store/report_xhl_gl_type_data.h"

#include "result_store/category_path.h"
#include "result_store/tally_data_mng.h"

CReportXHlGlTypeData* CReportXHlGlTypeData::Instance() {
  static auto* const instance = new CReportXHlGlTypeData;
  return instance;
}

// Wires share the number of cable heads: the numbers are the table's own.
CReportXHlGlTypeData::CReportXHlGlTypeData()
    : specs_{
          {L"给排水", {{}, {{L"管道", {-1, L"管道"}}}}},
          {L"电气",
           {{{L"电缆桥架\\组合式桥架", {-2, L"组合式桥架"}},
             {L"电缆桥架\\托盘", {-3, L"托盘"}},
             {L"电缆桥架\\桥架", {-4, L"桥架"}},
             {L"管线\\线槽", {-5, L"线槽"}},
             {L"管线\\软管", {-6, L"软管"}},
             {L"管线\\导管", {-7, L"导管"}},
             {L"电缆桥架\\母线·馈线", {-8, L"母线·馈线"}},
             {L"电缆桥架\\电缆头", {-9, L"电缆头"}},
             {L"电缆桥架\\电缆", {-10, L"电缆"}}},
            {{L"管线", {-9, L"导线"}}}}},
          {L"暖通",
           {{{L"风管\\柔性风管", {-2, L"柔性风管"}}},
            {{L"水管", {-1, L"水管"}}, {L"风管", {-3, L"风管"}}}}},
          {L"消防", {{}, {{L"管网", {-1, L"管网"}}}}},
          {L"弱电",
           {{{L"线槽桥架\\桥架", {-1, L"桥架"}},
             {L"线槽桥架\\线槽", {-2, L"线槽"}},
             {L"穿管引线\\软管", {-3, L"软管"}},
             {L"穿管引线\\配管", {-4, L"配管"}},
             {L"线槽桥架\\电缆", {-5, L"电缆"}},
             {L"穿管引线\\配线", {-6, L"配线"}}},
            {}}},
      } {}

const CReportXHlGlTypeData::SGroup* CReportXHlGlTypeData::Find(std::wstring_view spec,
                                                               std::wstring_view category,
                                                               std::wstring_view kind) const {
  const auto at = specs_.find(spec);
  if (at == specs_.end()) {
    return nullptr;
  }
  const SGroups& groups = at->second;
  if (const auto found = groups.byPath.find(CategoryPath(category, kind));
      found != groups.byPath.end()) {
    return &found->second;
  }
  const auto found = groups.byCategory.find(category);
  return found == groups.byCategory.end() ? nullptr : &found->second;
}

std::wstring CReportXHlGlTypeData::GetCategoryType(std::wstring_view spec,
                                                   std::wstring_view category,
                                                   std::wstring_view kind) const {
  const SGroup* group = Find(spec, category, kind);
  return group == nullptr ? std::wstring(kind) : group->name;
}

int CReportXHlGlTypeData::GetSortId(std::wstring_view spec, std::wstring_view category,
                                    std::wstring_view kind) const {
  const SGroup* group = Find(spec, category, kind);
  return group == nullptr
             ? CTallyDataMng::Instance()->GetCategorySortId(spec, CategoryPath(category, kind))
             : group->sortId;
}
