// `tally config`, run as a user runs it.
#include <filesystem>

#include "host/program_process.h"

namespace {

class ConfigProcess : public tally_test::ProgramProcess {
 protected:
  ConfigProcess() : environment_{"XDG_CONFIG_HOME=" + Name("config")} {}

  Words environment_;
};

constexpr const char* kFile = "config/tally/ReportConfig.ini";

TEST_F(ConfigProcess, SortsDownWhereNothingIsSet) {
  ExpectOutput({"config", "line-sort"}, "down\n", environment_);
  EXPECT_FALSE(std::filesystem::exists(Name("config")));
}

TEST_F(ConfigProcess, KeepsADirection) {
  ExpectOutput({"config", "line-sort", "up"}, "", environment_);
  EXPECT_EQ(tally_test::ReadBytes(Name(kFile)), "[ReportConfig]\r\nLineSortUp=FALSE\r\n");
  ExpectOutput({"config", "line-sort"}, "up\n", environment_);
  ExpectOutput({"config", "line-sort", "down"}, "", environment_);
  EXPECT_EQ(tally_test::ReadBytes(Name(kFile)), "[ReportConfig]\r\nLineSortUp=\r\n");
  ExpectOutput({"config", "line-sort"}, "down\n", environment_);
}

TEST_F(ConfigProcess, ReportsFollowTheSetting) {
  const Words report = {"report", Project(), "--report", "1", "--level", "0"};
  Words sorted = report;
  sorted.emplace_back("--sort-up");
  const std::string down = Run(report, environment_).output;
  const std::string up = Run(sorted, environment_).output;
  EXPECT_NE(up, down);
  Run({"config", "line-sort", "up"}, environment_);
  EXPECT_EQ(Run(report, environment_).output, up);
}

TEST_F(ConfigProcess, LeavesTheRestOfTheFile) {
  std::filesystem::create_directories(Name("config/tally"));
  tally_test::WriteBytes(Name(kFile), "; mine\n[Other]\nx=1\n[ReportConfig]\nLineSortUp=yes\n");
  ExpectOutput({"config", "line-sort"}, "up\n", environment_);
  ExpectOutput({"config", "line-sort", "down"}, "", environment_);
  EXPECT_EQ(tally_test::ReadBytes(Name(kFile)),
            "; mine\n[Other]\nx=1\n[ReportConfig]\nLineSortUp=\n");
}

TEST_F(ConfigProcess, ExplainsWrongWords) {
  ExpectFault({"config", "line-srot"},
              "no setting 'line-srot'; there is line-sort; did you mean 'line-sort'?",
              environment_);
  ExpectFault({"config", "colour", "up"}, "no setting 'colour'; there is line-sort", environment_);
  const std::string list = "; there is up, down";
  ExpectFault({"config", "line-sort", "sideways"}, "line-sort: no direction 'sideways'" + list,
              environment_);
  ExpectFault({"config", "line-sort", "UP"},
              "line-sort: no direction 'UP'" + list + "; did you mean 'up'?", environment_);
  ExpectFault({"config", "line-sort", ""}, "line-sort: no direction ''" + list, environment_);
  EXPECT_FALSE(std::filesystem::exists(Name("config")));
}

TEST_F(ConfigProcess, TellsThatTheFileCannotBeWritten) {
  tally_test::WriteBytes(Name("config"), "a file");
  ExpectFault({"config", "line-sort", "up"},
              "cannot write to '" + Name("config") + "/tally/ReportConfig.ini'", environment_);
  EXPECT_EQ(tally_test::ReadBytes(Name("config")), "a file");
}

}  // namespace
