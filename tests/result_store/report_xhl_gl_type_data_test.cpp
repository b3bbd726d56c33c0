#include "result_store/report_xhl_gl_type_data.h"

#include <gtest/gtest.h>

#include <string>

#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;

struct SLine {
  const wchar_t* spec;
  const wchar_t* category;
  const wchar_t* kind;
  const wchar_t* group;
  int sortId;
};

// A kind that no path names stands for the whole category.
constexpr SLine kGroups[] = {
    {L"给排水", L"管道", L"无此类", L"管道", -1},
    {L"电气", L"电缆桥架", L"组合式桥架", L"组合式桥架", -2},
    {L"电气", L"电缆桥架", L"托盘", L"托盘", -3},
    {L"电气", L"电缆桥架", L"桥架", L"桥架", -4},
    {L"电气", L"管线", L"线槽", L"线槽", -5},
    {L"电气", L"管线", L"软管", L"软管", -6},
    {L"电气", L"管线", L"导管", L"导管", -7},
    {L"电气", L"电缆桥架", L"母线·馈线", L"母线·馈线", -8},
    {L"电气", L"电缆桥架", L"电缆头", L"电缆头", -9},
    {L"电气", L"电缆桥架", L"电缆", L"电缆", -10},
    {L"电气", L"管线", L"无此类", L"导线", -9},
    {L"暖通", L"水管", L"无此类", L"水管", -1},
    {L"暖通", L"风管", L"柔性风管", L"柔性风管", -2},
    {L"暖通", L"风管", L"无此类", L"风管", -3},
    {L"消防", L"管网", L"无此类", L"管网", -1},
    {L"弱电", L"线槽桥架", L"桥架", L"桥架", -1},
    {L"弱电", L"线槽桥架", L"线槽", L"线槽", -2},
    {L"弱电", L"穿管引线", L"软管", L"软管", -3},
    {L"弱电", L"穿管引线", L"配管", L"配管", -4},
    {L"弱电", L"线槽桥架", L"电缆", L"电缆", -5},
    {L"弱电", L"穿管引线", L"配线", L"配线", -6},
};

/// With a project that numbers kinds of and beside the table.
class OverviewGroups : public tally_test::TallyTest {
 protected:
  OverviewGroups() {
    Open(CTinyProject()
             .KindSort(L"给排水", L"管道\\给水管", 5)
             .KindSort(L"给排水", L"设备\\水泵", 6)
             .KindSort(L"弱电", L"穿管引线\\导管", 7)
             .KindSort(L"土建", L"墙\\砖墙", 8));
  }

  const CReportXHlGlTypeData& groups = *CReportXHlGlTypeData::Instance();
};

TEST_F(OverviewGroups, FoldKindsByPathAndThenByCategory) {
  for (const auto& [spec, category, kind, group, sortId] : kGroups) {
    EXPECT_EQ(groups.GetCategoryType(spec, category, kind), group)
        << testing::PrintToString(std::wstring(group));
    EXPECT_EQ(groups.GetSortId(spec, category, kind), sortId)
        << testing::PrintToString(std::wstring(group));
  }
}

TEST_F(OverviewGroups, TakeTheTablesNumberBeforeTheProjects) {
  EXPECT_EQ(groups.GetSortId(L"给排水", L"管道", L"给水管"), -1);
}

TEST_F(OverviewGroups, LeaveOtherKindsAloneWithTheProjectsNumber) {
  EXPECT_EQ(groups.GetCategoryType(L"给排水", L"设备", L"水泵"), L"水泵");
  EXPECT_EQ(groups.GetSortId(L"给排水", L"设备", L"水泵"), 6);
  EXPECT_EQ(groups.GetCategoryType(L"弱电", L"穿管引线", L"导管"), L"导管");
  EXPECT_EQ(groups.GetSortId(L"弱电", L"穿管引线", L"导管"), 7);
  EXPECT_EQ(groups.GetSortId(L"电气", L"电缆桥架", L"无此类"), 1000000);
  EXPECT_EQ(groups.GetCategoryType(L"电气", L"电缆桥架", L"无此类"), L"无此类");
}

TEST_F(OverviewGroups, LeaveUnknownDisciplinesAlone) {
  EXPECT_EQ(groups.GetCategoryType(L"土建", L"墙", L"砖墙"), L"砖墙");
  EXPECT_EQ(groups.GetSortId(L"土建", L"墙", L"砖墙"), 8);
  EXPECT_EQ(groups.GetSortId(L"土建", L"管道", L"给水管"), 1000000);
  EXPECT_EQ(groups.GetCategoryType(L"", L"管道", L""), L"");
}

}  // namespace
