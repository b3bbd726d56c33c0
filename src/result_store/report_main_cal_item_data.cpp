#include "result_store/report_main_cal_item_data.h"

#include "result_store/category_path.h"

CReportMainCalItemData* CReportMainCalItemData::Instance() {
  static auto* const instance = new CReportMainCalItemData;
  return instance;
}

CReportMainCalItemData::CReportMainCalItemData()
    : specs_{
          {L"给排水",
           {{{L"管道", L"管道长度"},
             {L"附件", L"构件数量"},
             {L"卫生器具", L"构件数量"},
             {L"设备", L"构件数量"},
             {L"阀门法兰", L"构件数量"},
             {L"零星构件", L"构件数量"},
             {L"BIM支架", L"构件重量"},
             {L"BIM附件", L"构件数量"},
             {L"其它项目", L"工程量"}},
            {{L"BIM支架\\管卡", L"构件数量"},
             {L"BIM支架\\垫木", L"构件面积"},
             {L"BIM支架\\垫铁", L"构件面积"},
             {L"零星构件\\管道沟槽", L"沟槽长度"},
             {L"阀门法兰\\法兰", L"法兰数量"}}}},
          {L"电气",
           {{{L"管线", L"构件长度"},
             {L"电缆桥架", L"构件长度"},
             {L"附件", L"构件数量"},
             {L"设备", L"构件数量"},
             {L"配电箱柜", L"构件数量"},
             {L"防雷接地", L"构件数量"},
             {L"照明器具", L"构件数量"},
             {L"零星构件", L"构件数量"},
             {L"BIM支架", L"构件重量"},
             {L"其它项目", L"工程量"}},
            {{L"BIM支架\\管卡", L"构件数量"},
             {L"BIM支架\\垫木", L"构件面积"},
             {L"BIM支架\\垫铁", L"构件面积"},
             {L"零星构件\\电缆沟槽", L"沟槽长度"},
             {L"管线\\软管", L"管道长度"},
             {L"电缆桥架\\桥架", L"桥架长度"},
             {L"电缆桥架\\托盘", L"桥架长度"},
             {L"电缆桥架\\组合式桥架", L"桥架长度"},
             {L"电缆桥架\\电缆头", L"电缆头"},
             {L"防雷接地\\接地母线", L"构件长度"},
             {L"防雷接地\\避雷引下线", L"构件长度"},
             {L"防雷接地\\避雷带", L"构件长度"}}}},
          {L"暖通",
           {{{L"风管", L"展开面积"},
             {L"水管", L"管道长度"},
             {L"风口", L"构件数量"},
             {L"风部件", L"设备数量"},
             {L"风设备", L"设备数量"},
             {L"水附件", L"构件数量"},
             {L"水暖设备", L"设备数量"},
             {L"零星构件", L"构件数量"},
             {L"BIM支架", L"构件重量"},
             {L"BIM附件", L"构件数量"},
             {L"其它项目", L"工程量"}},
            {{L"BIM支架\\管卡", L"构件数量"},
             {L"BIM支架\\垫木", L"构件面积"},
             {L"BIM支架\\垫铁", L"构件面积"},
             {L"零星构件\\管道沟槽", L"沟槽长度"},
             {L"水附件\\法兰", L"法兰数量"},
             {L"风管\\柔性风管", L"风管长度"},
             {L"风部件\\风法兰", L"风法兰长度"},
             {L"风部件\\导流片", L"导流片面积"},
             {L"水暖设备\\地暖盘管", L"管道长度"},
             {L"水暖设备\\水箱", L"构件数量"},
             {L"BIM附件\\风管套管", L"展开面积"}}}},
          {L"消防",
           {{{L"管网", L"管道长度"},
             {L"附件", L"构件数量"},
             {L"阀门法兰", L"构件数量"},
             {L"喷头", L"构件数量"},
             {L"消火栓", L"构件数量"},
             {L"消防设备", L"设备数量"},
             {L"储存装置", L"设备数量"},
             {L"零星构件", L"构件数量"},
             {L"BIM支架", L"构件重量"},
             {L"BIM附件", L"构件数量"},
             {L"其它项目", L"工程量"}},
            {{L"BIM支架\\管卡", L"构件数量"},
             {L"BIM支架\\垫木", L"构件面积"},
             {L"BIM支架\\垫铁", L"构件面积"},
             {L"零星构件\\管道沟槽", L"沟槽长度"},
             {L"阀门法兰\\法兰", L"法兰数量"},
             {L"储存装置\\水箱", L"构件数量"}}}},
          {L"弱电",
           {{{L"穿管引线", L"构件长度"},
             {L"附件", L"构件数量"},
             {L"设备", L"构件数量"},
             {L"箱柜", L"构件数量"},
             {L"零星构件", L"构件数量"},
             {L"BIM支架", L"构件重量"},
             {L"其它项目", L"工程量"}},
            {{L"BIM支架\\管卡", L"构件数量"},
             {L"BIM支架\\垫木", L"构件面积"},
             {L"BIM支架\\垫铁", L"构件面积"},
             {L"零星构件\\管线沟槽", L"沟槽长度"},
             {L"线槽桥架\\线槽", L"线槽长度"},
             {L"线槽桥架\\桥架", L"桥架长度"},
             {L"线槽桥架\\电缆", L"构件长度"}}}},
      } {}

std::wstring CReportMainCalItemData::GetMainCalItem(std::wstring_view spec,
                                                    std::wstring_view category,
                                                    std::wstring_view kind) const {
  const auto at = specs_.find(spec);
  if (at == specs_.end()) {
    return {};
  }
  const SItems& items = at->second;
  if (const auto found = items.byPath.find(CategoryPath(category, kind));
      found != items.byPath.end()) {
    return found->second;
  }
  const auto found = items.byCategory.find(category);
  return found == items.byCategory.end() ? std::wstring() : found->second;
}
