// `tally demo`, run as a user runs it.
#include <gtest/gtest.h>

#include <string>

#include "support/process.h"
#include "support/temp_folder.h"

namespace {

using tally_test::RunProcess;
using tally_test::SProcessResult;

TEST(DemoProcess, WritesAProjectThatTheReportReads) {
  const tally_test::CTempFolder folder;
  const std::string file = (folder / "demo.tally").string();
  const SProcessResult demo = RunProcess({TALLY_PROGRAM, "demo", file});
  EXPECT_EQ(demo.exitStatus, 0);
  EXPECT_EQ(demo.output, "");
  EXPECT_EQ(demo.errors, "");
  const SProcessResult batch =
      RunProcess({TALLY_PROGRAM, "batch", file}, "{\"op\":\"specs\",\"report\":1}\n");
  EXPECT_EQ(batch.output, "{\"specs\":[\"给排水\",\"电气\",\"暖通\",\"消防\",\"弱电\"]}\n");
  const SProcessResult report =
      RunProcess({TALLY_PROGRAM, "report", file, "--report", "1", "--spec", "电气"});
  EXPECT_EQ(report.exitStatus, 0);
  EXPECT_EQ(report.output.substr(0, report.output.find('\n')), "消耗量汇总表  电气");
}

TEST(DemoProcess, GrowsTheProject) {
  const tally_test::CTempFolder folder;
  const std::string plain = (folder / "plain.tally").string();
  const std::string grown = (folder / "grown.tally").string();
  EXPECT_EQ(RunProcess({TALLY_PROGRAM, "demo", plain}).exitStatus, 0);
  EXPECT_EQ(RunProcess({TALLY_PROGRAM, "demo", grown, "--rows", "12000"}).exitStatus, 0);
  EXPECT_GT(tally_test::ReadBytes(grown).size(), 2 * tally_test::ReadBytes(plain).size());
}

TEST(DemoProcess, ExplainsWrongValues) {
  const tally_test::CTempFolder folder;
  const std::string file = (folder / "demo.tally").string();
  for (const std::string rows : {"0", "-1", "1.5", "", "99999999999999999999"}) {
    const SProcessResult result = RunProcess({TALLY_PROGRAM, "demo", file, "--rows", rows});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors, "tally: --rows: '" + rows + "' is not a number from 1 on\n");
  }
  const SProcessResult result = RunProcess({TALLY_PROGRAM, "demo"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, "tally: FILE is required; see 'tally demo --help'\n");
  EXPECT_EQ(tally_test::ReadBytes(file), "");
}

TEST(DemoProcess, TellsThatTheFileCannotBeWritten) {
  const tally_test::CTempFolder folder;
  const std::string file = folder.Path().string();
  const SProcessResult result = RunProcess({TALLY_PROGRAM, "demo", file});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "tally: cannot write the example project '" + file + "': it is a folder\n");
}

}  // namespace
