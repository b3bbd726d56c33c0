// `tally report --format json`, read back by another program.
#include <gtest/gtest.h>

#include "support/outside_program.h"
#include "support/process.h"
#include "support/temp_folder.h"

namespace {

using tally_test::RunProcess;
using tally_test::SProcessResult;

TEST(JsonProcess, SaysWhatCsvSaysInEveryReport) {
  if (!tally_test::RequireProgram("/usr/bin/python3")) {
    GTEST_SKIP() << "no Python";
  }
  const tally_test::CTempFolder folder;
  const std::string project = (folder / "demo.tally").string();
  ASSERT_EQ(RunProcess({TALLY_PROGRAM, "demo", project, "--rows", "2000"}).exitStatus, 0);
  const SProcessResult check =
      RunProcess({"/usr/bin/python3", "-B", TALLY_TEST_DATA "/../host/json_report_check.py",
                  TALLY_PROGRAM, project});
  EXPECT_EQ(check.exitStatus, 0);
  EXPECT_EQ(check.errors, "");
}

}  // namespace
