#include "formula_project.h"

#include <utility>

bool CFormulaProject::ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data,
                                        const std::wstring& /*path*/) {
  data.sgds.push_back({0, L"一区", L""});
  data.floors.push_back({0, L"1", L"1"});
  data.specs.push_back({0, FullSpec()});
  data.specs.push_back({0, HalfSpec()});
  data.categories.push_back({0, L"管道", L"给水管"});
  data.categories.push_back({0, L"管网", L"喷淋管"});
  data.sysCodes.push_back({0, L"给水系统\\低区\\JL-1"});
  for (int spec = 0; spec < 2; ++spec) {
    const auto count = spec == 0 ? circuits_ : circuits_ / 2;
    for (int circuit = 0; circuit < count; ++circuit) {
      if (circuit % ofAttribute_ == 0) {
        const int size = circuit / ofAttribute_ + 1;
        data.attrs.push_back({0, L"DN" + std::to_wstring(size), L"材质:钢管"});
      }
      // Of another expression each, or they were one circuit with several components.
      KorDMRec::SKorDMCalItemDetailQRec item;
      item.name = L"管道长度";
      item.unit = L"m";
      item.quantity1 = circuit % 1000 + 1;
      item.expression = std::to_wstring(circuit + 1) + L"*1";
      KorDMRec::SKorDMResultRow row;
      row.component = static_cast<int>(data.components.size());
      row.spec = spec;
      row.category = spec;
      row.attr = static_cast<int>(data.attrs.size()) - 1;
      row.calItem = static_cast<int>(data.calItems.size());
      data.components.push_back({0, L"K" + std::to_wstring(row.component + 1), {}});
      data.calItems.push_back(std::move(item));
      data.rows.push_back(row);
    }
  }
  return true;
}
