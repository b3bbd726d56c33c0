#include "host/arguments.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace {

using Words = std::vector<std::string>;

template <class TArguments>
TArguments Read(const Words& words) {
  return std::get<TArguments>(ReadArguments(words));
}

SReportArguments ReadReport(Words options) {
  options.insert(options.begin(), {"report", "p.tally"});
  options.insert(options.end(), {"--report", "1"});
  return Read<SReportArguments>(options);
}

TEST(Arguments, LeaveOutWhatIsNotGiven) {
  const SReportArguments report = ReadReport({});
  EXPECT_EQ(report.file, "p.tally");
  EXPECT_EQ(report.report, "1");
  EXPECT_FALSE(report.all);
  EXPECT_EQ(report.variant, std::nullopt);
  EXPECT_TRUE(report.specs.empty());
  EXPECT_EQ(report.level, std::nullopt);
  EXPECT_EQ(report.status, std::nullopt);
  EXPECT_FALSE(report.divided);
  EXPECT_FALSE(report.bySection);
  EXPECT_TRUE(report.sections.empty());
  EXPECT_TRUE(report.floors.empty());
  EXPECT_TRUE(report.categories.empty());
  EXPECT_TRUE(report.sysCodes.empty());
  EXPECT_EQ(report.sortDown, std::nullopt);
  EXPECT_EQ(report.columns, std::nullopt);
  EXPECT_EQ(report.format, "table");
  EXPECT_FALSE(report.csvSafe);
  EXPECT_FALSE(report.stats);
  EXPECT_EQ(report.out, "");
}

TEST(Arguments, TakeEveryOptionOfAReport) {
  const SReportArguments report =
      ReadReport({"--variant", "floor", "--level", "2", "--status", "s.xml", "--divided",
                  "--by-section", "--sort-down", "--columns", "quantity,单位", "--format", "csv",
                  "--csv-safe", "--stats", "-o", "out.csv"});
  EXPECT_EQ(report.variant, "floor");
  EXPECT_EQ(report.level, "2");
  EXPECT_EQ(report.status, "s.xml");
  EXPECT_TRUE(report.divided);
  EXPECT_TRUE(report.bySection);
  EXPECT_EQ(report.sortDown, true);
  EXPECT_EQ(report.columns, "quantity,单位");
  EXPECT_EQ(report.format, "csv");
  EXPECT_TRUE(report.csvSafe);
  EXPECT_TRUE(report.stats);
  EXPECT_EQ(report.out, "out.csv");
  EXPECT_EQ(ReadReport({"--sort-up"}).sortDown, false);
  EXPECT_EQ(ReadReport({"--output=out.csv"}).out, "out.csv");
}

TEST(Arguments, TakeOneValueForEachMentionOfARepeatedOption) {
  const SReportArguments report =
      ReadReport({"--spec", "a", "--section", "b", "--spec", "c", "--floor", "1=2", "--category",
                  "d\\e", "--sys-code", "f\\g", "--section=h", "--spec", "[x,y]"});
  EXPECT_EQ(report.specs, (Words{"a", "c", "[x,y]"}));
  EXPECT_EQ(report.sections, (Words{"b", "h"}));
  EXPECT_EQ(report.floors, (Words{"1=2"}));
  EXPECT_EQ(report.categories, (Words{"d\\e"}));
  EXPECT_EQ(report.sysCodes, (Words{"f\\g"}));
}

TEST(Arguments, TakeValuesThatBeginWithADash) {
  const SReportArguments report =
      ReadReport({"--floor", "-1", "--floor", "-1=-2", "--floor=-3", "--spec", "--all=1",
                  "--section", "--", "--sys-code", "--spec=", "--category", "++", "--level", "-h"});
  EXPECT_EQ(report.floors, (Words{"-1", "-1=-2", "-3"}));
  EXPECT_EQ(report.specs, (Words{"--all=1"}));
  EXPECT_EQ(report.sections, (Words{"--"}));
  EXPECT_EQ(report.sysCodes, (Words{"--spec="}));
  EXPECT_EQ(report.categories, (Words{"++"}));
  EXPECT_EQ(report.level, "-h");
}

TEST(Arguments, TakeEmptyValues) {
  const SReportArguments report = ReadReport(
      {"--spec=", "--spec", "", "--level=", "--variant=", "--status=", "--columns=", "--format="});
  EXPECT_EQ(report.specs, (Words{"", ""}));
  EXPECT_EQ(report.level, "");
  EXPECT_EQ(report.variant, "");
  EXPECT_EQ(report.status, "");
  EXPECT_EQ(report.columns, "");
  EXPECT_EQ(report.format, "");
}

TEST(Arguments, TakeFilesOfAnyName) {
  EXPECT_EQ(Read<SCheckArguments>({"check", "report"}).file, "report");
  EXPECT_EQ(Read<SCheckArguments>({"check", "check"}).file, "check");
  EXPECT_EQ(Read<SCheckArguments>({"check", "--", "--help"}).file, "--help");
  EXPECT_EQ(Read<SCheckArguments>({"check", "--", "--json="}).file, "--json=");
  EXPECT_EQ(Read<SCheckArguments>({"check", "a=b"}).file, "a=b");
  EXPECT_EQ(Read<SCheckArguments>({"check", "-"}).file, "-");
  EXPECT_EQ(Read<SCheckArguments>({"check", ""}).file, "");
}

TEST(Arguments, TakeTheOtherCommands) {
  EXPECT_EQ(Read<SDemoArguments>({"demo", "p"}).rows, 0);
  EXPECT_EQ(Read<SDemoArguments>({"demo", "--rows", "20000", "p"}).rows, 20000);
  EXPECT_EQ(Read<SReportsArguments>({"reports", "p"}).file, "p");
  EXPECT_EQ(Read<STreeArguments>({"tree", "p", "floors"}).file, "p");
  EXPECT_EQ(Read<STreeArguments>({"tree", "p", "floors"}).tree, "floors");
  EXPECT_EQ(Read<SBatchArguments>({"batch", "p"}).file, "p");
  EXPECT_EQ(Read<SStatusArguments>({"status", "p"}).file, "p");
  EXPECT_FALSE(Read<SStatusArguments>({"status", "p"}).json);
  EXPECT_TRUE(Read<SStatusArguments>({"status", "--json", "p"}).json);
  EXPECT_EQ(Read<SConfigArguments>({"config", "line-sort"}).setting, "line-sort");
  EXPECT_EQ(Read<SConfigArguments>({"config", "line-sort"}).value, std::nullopt);
  EXPECT_EQ(Read<SConfigArguments>({"config", "line-sort", "up"}).value, "up");
  EXPECT_EQ(Read<SConfigArguments>({"config", "line-sort", ""}).value, "");
}

}  // namespace
