#include "result_store/report_type_data.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct SKind {
  const wchar_t* spec;
  const wchar_t* category;
  const wchar_t* kind;
  bool isPipe;
};

constexpr SKind kKinds[] = {
    {L"给排水", L"管道", L"给水管", true},      {L"给排水", L"管道", L"", true},
    {L"给排水", L"阀门法兰", L"法兰", false},   {L"给排水", L"设备", L"管道", false},
    {L"给排水", L"管线", L"导管", false},       {L"电气", L"管线", L"导管", true},
    {L"电气", L"电缆桥架", L"桥架", true},      {L"电气", L"防雷接地", L"接地母线", true},
    {L"电气", L"防雷接地", L"避雷带", true},    {L"电气", L"防雷接地", L"避雷引下线", true},
    {L"电气", L"防雷接地", L"避雷针", false},   {L"电气", L"接地母线", L"", false},
    {L"暖通", L"风管", L"柔性风管", true},      {L"暖通", L"水管", L"供水管", true},
    {L"暖通", L"防雷接地", L"接地母线", false}, {L"消防", L"管网", L"喷淋管", true},
    {L"消防", L"管道", L"喷淋管", false},       {L"弱电", L"穿管引线", L"配管", true},
    {L"弱电", L"线槽桥架", L"线槽", true},      {L"弱电", L"箱柜", L"箱", false},
    {L"土建", L"管道", L"给水管", false},       {L"", L"", L"", false},
};

TEST(LineWork, GoesByCategoryOrKindOfTheDiscipline) {
  for (const auto& [spec, category, kind, isPipe] : kKinds) {
    EXPECT_EQ(CReportTypeData::Instance()->IsPipeType(spec, category, kind), isPipe)
        << testing::PrintToString(std::wstring(spec) + L" " + category + L" " + kind);
  }
}

TEST(LineWork, IsOneTypeAndEveryOtherKindItsOwn) {
  for (const auto& [spec, category, kind, isPipe] : kKinds) {
    EXPECT_EQ(CReportTypeData::Instance()->GetCategoryType(spec, category, kind),
              isPipe ? std::wstring(L"管线") : kind)
        << testing::PrintToString(std::wstring(spec) + L" " + category + L" " + kind);
  }
}

}  // namespace
