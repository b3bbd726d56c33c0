#include "result_store/report_main_cal_item_data.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

namespace {

constexpr std::size_t kSpecs = 5;
const wchar_t* const kSpecNames[kSpecs] = {L"给排水", L"电气", L"暖通", L"消防", L"弱电"};

/// A category or path, and its item in each discipline.
struct SLine {
  const wchar_t* key;
  const wchar_t* items[kSpecs];
};

constexpr SLine kByCategory[] = {
    {L"管道", {L"管道长度", L"", L"", L"", L""}},
    {L"管线", {L"", L"构件长度", L"", L"", L""}},
    {L"电缆桥架", {L"", L"构件长度", L"", L"", L""}},
    {L"风管", {L"", L"", L"展开面积", L"", L""}},
    {L"水管", {L"", L"", L"管道长度", L"", L""}},
    {L"管网", {L"", L"", L"", L"管道长度", L""}},
    {L"穿管引线", {L"", L"", L"", L"", L"构件长度"}},
    {L"附件", {L"构件数量", L"构件数量", L"", L"构件数量", L"构件数量"}},
    {L"卫生器具", {L"构件数量", L"", L"", L"", L""}},
    {L"设备", {L"构件数量", L"构件数量", L"", L"", L"构件数量"}},
    {L"阀门法兰", {L"构件数量", L"", L"", L"构件数量", L""}},
    {L"配电箱柜", {L"", L"构件数量", L"", L"", L""}},
    {L"防雷接地", {L"", L"构件数量", L"", L"", L""}},
    {L"照明器具", {L"", L"构件数量", L"", L"", L""}},
    {L"风口", {L"", L"", L"构件数量", L"", L""}},
    {L"风部件", {L"", L"", L"设备数量", L"", L""}},
    {L"风设备", {L"", L"", L"设备数量", L"", L""}},
    {L"水附件", {L"", L"", L"构件数量", L"", L""}},
    {L"水暖设备", {L"", L"", L"设备数量", L"", L""}},
    {L"喷头", {L"", L"", L"", L"构件数量", L""}},
    {L"消火栓", {L"", L"", L"", L"构件数量", L""}},
    {L"消防设备", {L"", L"", L"", L"设备数量", L""}},
    {L"储存装置", {L"", L"", L"", L"设备数量", L""}},
    {L"箱柜", {L"", L"", L"", L"", L"构件数量"}},
    {L"零星构件", {L"构件数量", L"构件数量", L"构件数量", L"构件数量", L"构件数量"}},
    {L"BIM支架", {L"构件重量", L"构件重量", L"构件重量", L"构件重量", L"构件重量"}},
    {L"BIM附件", {L"构件数量", L"", L"构件数量", L"构件数量", L""}},
    {L"其它项目", {L"工程量", L"工程量", L"工程量", L"工程量", L"工程量"}},
};

constexpr SLine kByPath[] = {
    {L"BIM支架\\管卡", {L"构件数量", L"构件数量", L"构件数量", L"构件数量", L"构件数量"}},
    {L"BIM支架\\垫木", {L"构件面积", L"构件面积", L"构件面积", L"构件面积", L"构件面积"}},
    {L"BIM支架\\垫铁", {L"构件面积", L"构件面积", L"构件面积", L"构件面积", L"构件面积"}},
    {L"零星构件\\管道沟槽", {L"沟槽长度", L"", L"沟槽长度", L"沟槽长度", L""}},
    {L"零星构件\\电缆沟槽", {L"", L"沟槽长度", L"", L"", L""}},
    {L"零星构件\\管线沟槽", {L"", L"", L"", L"", L"沟槽长度"}},
    {L"阀门法兰\\法兰", {L"法兰数量", L"", L"", L"法兰数量", L""}},
    {L"水附件\\法兰", {L"", L"", L"法兰数量", L"", L""}},
    {L"管线\\软管", {L"", L"管道长度", L"", L"", L""}},
    {L"电缆桥架\\桥架", {L"", L"桥架长度", L"", L"", L""}},
    {L"电缆桥架\\托盘", {L"", L"桥架长度", L"", L"", L""}},
    {L"电缆桥架\\组合式桥架", {L"", L"桥架长度", L"", L"", L""}},
    {L"电缆桥架\\电缆头", {L"", L"电缆头", L"", L"", L""}},
    {L"防雷接地\\接地母线", {L"", L"构件长度", L"", L"", L""}},
    {L"防雷接地\\避雷引下线", {L"", L"构件长度", L"", L"", L""}},
    {L"防雷接地\\避雷带", {L"", L"构件长度", L"", L"", L""}},
    {L"风管\\柔性风管", {L"", L"", L"风管长度", L"", L""}},
    {L"风部件\\风法兰", {L"", L"", L"风法兰长度", L"", L""}},
    {L"风部件\\导流片", {L"", L"", L"导流片面积", L"", L""}},
    {L"水暖设备\\地暖盘管", {L"", L"", L"管道长度", L"", L""}},
    {L"水暖设备\\水箱", {L"", L"", L"构件数量", L"", L""}},
    {L"BIM附件\\风管套管", {L"", L"", L"展开面积", L"", L""}},
    {L"储存装置\\水箱", {L"", L"", L"", L"构件数量", L""}},
    {L"线槽桥架\\线槽", {L"", L"", L"", L"", L"线槽长度"}},
    {L"线槽桥架\\桥架", {L"", L"", L"", L"", L"桥架长度"}},
    {L"线槽桥架\\电缆", {L"", L"", L"", L"", L"构件长度"}},
};

std::wstring MainCalItem(const std::wstring& spec, const std::wstring& category,
                         const std::wstring& kind) {
  return CReportMainCalItemData::Instance()->GetMainCalItem(spec, category, kind);
}

/// The item of a category, asked for by a kind that no path names.
std::wstring CategoryItem(const std::wstring& spec, const std::wstring& category) {
  return MainCalItem(spec, category, L"无此类");
}

TEST(MainCalItem, OfAKindWithoutAnEntryIsThatOfItsCategory) {
  for (const SLine& line : kByCategory) {
    for (std::size_t i = 0; i < kSpecs; ++i) {
      EXPECT_EQ(CategoryItem(kSpecNames[i], line.key), line.items[i])
          << testing::PrintToString(std::wstring(line.key)) << " " << i;
    }
  }
}

TEST(MainCalItem, OfAPathGoesAheadOfThatOfTheCategory) {
  for (const SLine& line : kByPath) {
    const std::wstring path = line.key;
    const std::wstring category = path.substr(0, path.find(L'\\'));
    const std::wstring kind = path.substr(category.size() + 1);
    for (std::size_t i = 0; i < kSpecs; ++i) {
      const std::wstring item = line.items[i];
      EXPECT_EQ(MainCalItem(kSpecNames[i], category, kind),
                item.empty() ? CategoryItem(kSpecNames[i], category) : item)
          << testing::PrintToString(path) << " " << i;
    }
  }
}

TEST(MainCalItem, GoesByDiscipline) {
  EXPECT_EQ(MainCalItem(L"暖通", L"风管", L"柔性风管"), L"风管长度");
  EXPECT_EQ(MainCalItem(L"暖通", L"风管", L"风管"), L"展开面积");
  EXPECT_EQ(MainCalItem(L"给排水", L"风管", L"柔性风管"), L"");
}

TEST(MainCalItem, IsEmptyForWhatNoTableKnows) {
  EXPECT_EQ(MainCalItem(L"土建", L"管道", L"给水管"), L"");
  EXPECT_EQ(MainCalItem(L"", L"", L""), L"");
  EXPECT_EQ(MainCalItem(L"给排水", L"", L""), L"");
  EXPECT_EQ(MainCalItem(L"给排水", L"管道\\", L""), L"");
  EXPECT_EQ(MainCalItem(L"给排水", L"阀门法兰\\法兰", L""), L"");
}

}  // namespace
