#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reports/consumption/xhl_hz_report.h"
#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace {

using RowTexts = std::vector<std::string>;

/// A project of 2 m on floor 1 and 3 m on floor 2.
class ReportCondition : public tally_test::TallyTest {
 protected:
  ReportCondition() {
    tally_test::CTinyProject project;
    project.Hz()
        .Row({.floor = {L"1", L"1"}, .calItem = {.name = L"管道长度", .quantity = 2}})
        .Row({.floor = {L"2", L"2"}, .calItem = {.name = L"管道长度", .quantity = 3}});
    Open(project);
  }

  /// The rows down to the floors.
  static RowTexts FloorRows(const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    Report::CellArray cells;
    GetReport<CXhlHzReport>(Report::ReportXhlHz)
        .GetXhlHzData(cells, L"给排水", condition, CXhlHzReport::LevelFloor, 0);
    return tally_test::Rows(cells);
  }
};

TEST_F(ReportCondition, WithoutFloorsTakesEveryFloor) {
  EXPECT_EQ(FloorRows({}), (RowTexts{"@Cg|管道\\给水管", "@A|DN25||m|5", "@CI|管道长度|m|5",
                                     "@F|1|1|m|2", "@F|2|2|m|3"}));
}

TEST_F(ReportCondition, SkipsAFloorThatTheTreeLacks) {
  EXPECT_EQ(FloorRows({{L"9", L"9"}, {L"2", L"2"}}),
            (RowTexts{"@Cg|管道\\给水管", "@A|DN25||m|3", "@CI|管道长度|m|3", "@F|2|2|m|3"}));
  EXPECT_EQ(FloorRows({{L"9", L"9"}}), RowTexts{});
}

}  // namespace
