#include "report_model/report_types.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

TEST(Condition, SelectsEverythingAtFirst) {
  const Report::SNewCondition condition;
  EXPECT_FALSE(condition.allFloors);
  EXPECT_TRUE(condition.floors.empty());
  EXPECT_TRUE(condition.categories.empty());
  EXPECT_EQ(condition.curCategory, L"");
  EXPECT_TRUE(condition.sysCodes.empty());
  EXPECT_EQ(condition.curSysCode, L"");
}

TEST(Condition, CopiesEveryField) {
  Report::SNewCondition from;
  from.allFloors = true;
  from.floors = {{L"2,4", L"3"}};
  from.categories = {L"管道", L"管道\\给水管"};
  from.curCategory = L"管道";
  from.sysCodes = {L"A\\B"};
  from.curSysCode = L"A";
  Report::SNewCondition to;
  to.categories = {L"阀门法兰"};
  to = from;
  from = {};
  EXPECT_TRUE(to.allFloors);
  ASSERT_EQ(to.floors.size(), 1U);
  EXPECT_EQ(to.floors[0].drawingFloor, L"2,4");
  EXPECT_EQ(to.floors[0].floor, L"3");
  EXPECT_EQ(to.categories, (std::set<std::wstring>{L"管道", L"管道\\给水管"}));
  EXPECT_EQ(to.curCategory, L"管道");
  EXPECT_EQ(to.sysCodes, (std::vector<std::wstring>{L"A\\B"}));
  EXPECT_EQ(to.curSysCode, L"A");
}

TEST(Condition, StaysAsItIsWhenAssignedToItself) {
  Report::SNewCondition condition;
  condition.categories = {L"管道"};
  const Report::SNewCondition& same = condition;
  condition = same;
  EXPECT_EQ(condition.categories, (std::set<std::wstring>{L"管道"}));
}

TEST(Accumulators, StartEmpty) {
  const Report::SResultData result;
  EXPECT_EQ(result.quantity, 0);
  EXPECT_EQ(result.unit, L"m");
  EXPECT_EQ(result.components, L"");
  const Report::SQuantity quantity;
  EXPECT_EQ(quantity.quantity1, 0);
  EXPECT_EQ(quantity.quantity4, 0);
  EXPECT_EQ(quantity.floorCount, 0);
  const Report::STypeSumQuantityData sum;
  EXPECT_EQ(sum.unit, L"");
  EXPECT_EQ(sum.count, 1);
}

TEST(ReportNumbers, AreThoseThatHostsKeep) {
  EXPECT_EQ(Report::ReportSysJss, 0);
  EXPECT_EQ(Report::ReportXhlHz, 1);
  EXPECT_EQ(Report::ReportXhlGl, 3);
  EXPECT_EQ(Report::ReportXhlCgHz, 4);
  EXPECT_EQ(Report::ReportPjHz, 5);
  EXPECT_EQ(Report::ReportPipeJRBW, 6);
  EXPECT_EQ(Report::ReportBrushPaint, 7);
  EXPECT_EQ(Report::ReportDuctH, 8);
  EXPECT_EQ(Report::ReportDeHz, 9);
  EXPECT_EQ(Report::ReportQdDeHz, 10);
  EXPECT_EQ(Report::ReportQdHz, 11);
  EXPECT_EQ(Report::ReportNone, 99);
  EXPECT_EQ(Report::TreeFloor, 0);
  EXPECT_EQ(Report::TreeSysCode, 1);
  EXPECT_EQ(Report::TreeCategory, 2);
}

TEST(ReportConfig, IsVisibleAndCollapsedAtFirst) {
  const NewReportConfigRec record;
  EXPECT_TRUE(record.visible);
  EXPECT_TRUE(record.columns.empty());
  EXPECT_EQ(record.expandLevel, 0);
}

}  // namespace
