// What the READMEs show is what the program prints.
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/temp_folder.h"

namespace {

using tally_test::RunProcess;

// The lines between the two marks, without their indentation.
std::string ShownOutput(const std::string& readme) {
  const std::string begin = "<!-- example output: begin -->\n";
  const std::size_t from = readme.find(begin) + begin.size();
  std::istringstream lines(readme.substr(from, readme.find("<!-- example output: end -->") - from));
  std::string output;
  for (std::string line; std::getline(lines, line);) {
    output += line.substr(line.empty() ? 0 : 4) + "\n";
  }
  return output;
}

class Readme : public testing::Test {
 protected:
  std::string Print(const std::vector<std::string>& options) const {
    const std::string file = (folder_ / "example.tally").string();
    EXPECT_EQ(RunProcess({TALLY_PROGRAM, "demo", file}).exitStatus, 0);
    std::vector<std::string> command{TALLY_PROGRAM, "report", file};
    command.insert(command.end(), options.begin(), options.end());
    return RunProcess(command).output;
  }

 private:
  tally_test::CTempFolder folder_;
};

TEST_F(Readme, ShowsTheBeginningOfTheConsumptionSummary) {
  const std::string shown = ShownOutput(tally_test::ReadBytes(TALLY_TEST_DATA "/../../README.md"));
  EXPECT_FALSE(shown.empty());
  EXPECT_EQ(shown, Print({"--report", "consumption-summary"}).substr(0, shown.size()));
}

TEST_F(Readme, ShowsTheOverviewOfTheExampleProjectInChinese) {
  EXPECT_EQ(ShownOutput(tally_test::ReadBytes(TALLY_TEST_DATA "/../../README.zh.md")),
            Print({"--report", "overview", "--spec", "消防"}));
}

}  // namespace
