#include "model/model_tables.h"

namespace tally_model {
namespace {

struct SMainItem {
  const wchar_t* spec;
  const wchar_t* key;
  const wchar_t* item;
};

struct SLineWork {
  const wchar_t* spec;
  const wchar_t* text;
  bool isKind;  ///< otherwise a category
};

constexpr SLineWork kLineWork[] = {
    {L"给排水", L"管道", false},   {L"电气", L"管线", false},     {L"电气", L"电缆桥架", false},
    {L"电气", L"接地母线", true},  {L"电气", L"避雷带", true},    {L"电气", L"避雷引下线", true},
    {L"暖通", L"风管", false},     {L"暖通", L"水管", false},     {L"消防", L"管网", false},
    {L"弱电", L"穿管引线", false}, {L"弱电", L"线槽桥架", false},
};

constexpr SMainItem kMainByCategory[] = {
    {L"给排水", L"管道", L"管道长度"},     {L"给排水", L"附件", L"构件数量"},
    {L"给排水", L"卫生器具", L"构件数量"}, {L"给排水", L"设备", L"构件数量"},
    {L"给排水", L"阀门法兰", L"构件数量"}, {L"给排水", L"零星构件", L"构件数量"},
    {L"给排水", L"BIM支架", L"构件重量"},  {L"给排水", L"BIM附件", L"构件数量"},
    {L"给排水", L"其它项目", L"工程量"},   {L"电气", L"管线", L"构件长度"},
    {L"电气", L"电缆桥架", L"构件长度"},   {L"电气", L"附件", L"构件数量"},
    {L"电气", L"设备", L"构件数量"},       {L"电气", L"配电箱柜", L"构件数量"},
    {L"电气", L"防雷接地", L"构件数量"},   {L"电气", L"照明器具", L"构件数量"},
    {L"电气", L"零星构件", L"构件数量"},   {L"电气", L"BIM支架", L"构件重量"},
    {L"电气", L"其它项目", L"工程量"},     {L"暖通", L"风管", L"展开面积"},
    {L"暖通", L"水管", L"管道长度"},       {L"暖通", L"风口", L"构件数量"},
    {L"暖通", L"风部件", L"设备数量"},     {L"暖通", L"风设备", L"设备数量"},
    {L"暖通", L"水附件", L"构件数量"},     {L"暖通", L"水暖设备", L"设备数量"},
    {L"暖通", L"零星构件", L"构件数量"},   {L"暖通", L"BIM支架", L"构件重量"},
    {L"暖通", L"BIM附件", L"构件数量"},    {L"暖通", L"其它项目", L"工程量"},
    {L"消防", L"管网", L"管道长度"},       {L"消防", L"附件", L"构件数量"},
    {L"消防", L"阀门法兰", L"构件数量"},   {L"消防", L"喷头", L"构件数量"},
    {L"消防", L"消火栓", L"构件数量"},     {L"消防", L"消防设备", L"设备数量"},
    {L"消防", L"储存装置", L"设备数量"},   {L"消防", L"零星构件", L"构件数量"},
    {L"消防", L"BIM支架", L"构件重量"},    {L"消防", L"BIM附件", L"构件数量"},
    {L"消防", L"其它项目", L"工程量"},     {L"弱电", L"穿管引线", L"构件长度"},
    {L"弱电", L"附件", L"构件数量"},       {L"弱电", L"设备", L"构件数量"},
    {L"弱电", L"箱柜", L"构件数量"},       {L"弱电", L"零星构件", L"构件数量"},
    {L"弱电", L"BIM支架", L"构件重量"},    {L"弱电", L"其它项目", L"工程量"},
};

constexpr SMainItem kMainByPath[] = {
    {L"给排水", L"BIM支架\\管卡", L"构件数量"},
    {L"给排水", L"BIM支架\\垫木", L"构件面积"},
    {L"给排水", L"BIM支架\\垫铁", L"构件面积"},
    {L"给排水", L"零星构件\\管道沟槽", L"沟槽长度"},
    {L"给排水", L"阀门法兰\\法兰", L"法兰数量"},
    {L"电气", L"BIM支架\\管卡", L"构件数量"},
    {L"电气", L"BIM支架\\垫木", L"构件面积"},
    {L"电气", L"BIM支架\\垫铁", L"构件面积"},
    {L"电气", L"零星构件\\电缆沟槽", L"沟槽长度"},
    {L"电气", L"管线\\软管", L"管道长度"},
    {L"电气", L"电缆桥架\\桥架", L"桥架长度"},
    {L"电气", L"电缆桥架\\托盘", L"桥架长度"},
    {L"电气", L"电缆桥架\\组合式桥架", L"桥架长度"},
    {L"电气", L"电缆桥架\\电缆头", L"电缆头"},
    {L"电气", L"防雷接地\\接地母线", L"构件长度"},
    {L"电气", L"防雷接地\\避雷引下线", L"构件长度"},
    {L"电气", L"防雷接地\\避雷带", L"构件长度"},
    {L"暖通", L"BIM支架\\管卡", L"构件数量"},
    {L"暖通", L"BIM支架\\垫木", L"构件面积"},
    {L"暖通", L"BIM支架\\垫铁", L"构件面积"},
    {L"暖通", L"零星构件\\管道沟槽", L"沟槽长度"},
    {L"暖通", L"水附件\\法兰", L"法兰数量"},
    {L"暖通", L"风管\\柔性风管", L"风管长度"},
    {L"暖通", L"风部件\\风法兰", L"风法兰长度"},
    {L"暖通", L"风部件\\导流片", L"导流片面积"},
    {L"暖通", L"水暖设备\\地暖盘管", L"管道长度"},
    {L"暖通", L"水暖设备\\水箱", L"构件数量"},
    {L"暖通", L"BIM附件\\风管套管", L"展开面积"},
    {L"消防", L"BIM支架\\管卡", L"构件数量"},
    {L"消防", L"BIM支架\\垫木", L"构件面积"},
    {L"消防", L"BIM支架\\垫铁", L"构件面积"},
    {L"消防", L"零星构件\\管道沟槽", L"沟槽长度"},
    {L"消防", L"阀门法兰\\法兰", L"法兰数量"},
    {L"消防", L"储存装置\\水箱", L"构件数量"},
    {L"弱电", L"BIM支架\\管卡", L"构件数量"},
    {L"弱电", L"BIM支架\\垫木", L"构件面积"},
    {L"弱电", L"BIM支架\\垫铁", L"构件面积"},
    {L"弱电", L"零星构件\\管线沟槽", L"沟槽长度"},
    {L"弱电", L"线槽桥架\\线槽", L"线槽长度"},
    {L"弱电", L"线槽桥架\\桥架", L"桥架长度"},
    {L"弱电", L"线槽桥架\\电缆", L"构件长度"},
};

constexpr SOverviewGroup kGroups[] = {
    {L"给排水", L"管道", false, L"管道", -1},
    {L"电气", L"电缆桥架\\组合式桥架", true, L"组合式桥架", -2},
    {L"电气", L"电缆桥架\\托盘", true, L"托盘", -3},
    {L"电气", L"电缆桥架\\桥架", true, L"桥架", -4},
    {L"电气", L"管线\\线槽", true, L"线槽", -5},
    {L"电气", L"管线\\软管", true, L"软管", -6},
    {L"电气", L"管线\\导管", true, L"导管", -7},
    {L"电气", L"电缆桥架\\母线·馈线", true, L"母线·馈线", -8},
    {L"电气", L"电缆桥架\\电缆头", true, L"电缆头", -9},
    {L"电气", L"电缆桥架\\电缆", true, L"电缆", -10},
    {L"电气", L"管线", false, L"导线", -9},
    {L"暖通", L"水管", false, L"水管", -1},
    {L"暖通", L"风管\\柔性风管", true, L"柔性风管", -2},
    {L"暖通", L"风管", false, L"风管", -3},
    {L"消防", L"管网", false, L"管网", -1},
    {L"弱电", L"线槽桥架\\桥架", true, L"桥架", -1},
    {L"弱电", L"线槽桥架\\线槽", true, L"线槽", -2},
    {L"弱电", L"穿管引线\\软管", true, L"软管", -3},
    {L"弱电", L"穿管引线\\配管", true, L"配管", -4},
    {L"弱电", L"线槽桥架\\电缆", true, L"电缆", -5},
    {L"弱电", L"穿管引线\\配线", true, L"配线", -6},
};

}  // namespace

bool IsPipeType(const std::wstring& spec, const std::wstring& category, const std::wstring& kind) {
  for (const SLineWork& line : kLineWork) {
    if (spec == line.spec && (line.isKind ? kind : category) == line.text) {
      return true;
    }
  }
  return false;
}

std::wstring BookType(const std::wstring& spec, const std::wstring& category,
                      const std::wstring& kind) {
  return IsPipeType(spec, category, kind) ? L"管线" : kind;
}

std::wstring MainCalItem(const std::wstring& spec, const std::wstring& category,
                         const std::wstring& kind) {
  for (const SMainItem& line : kMainByPath) {
    if (spec == line.spec && category + L"\\" + kind == line.key) {
      return line.item;
    }
  }
  for (const SMainItem& line : kMainByCategory) {
    if (spec == line.spec && category == line.key) {
      return line.item;
    }
  }
  return L"";
}

const SOverviewGroup* OverviewGroup(const std::wstring& spec, const std::wstring& category,
                                    const std::wstring& kind) {
  for (const bool byPath : {true, false}) {
    const std::wstring key = byPath ? category + L"\\" + kind : category;
    for (const SOverviewGroup& group : kGroups) {
      if (spec == group.spec && byPath == group.byPath && key == group.key) {
        return &group;
      }
    }
  }
  return nullptr;
}

}  // namespace tally_model
