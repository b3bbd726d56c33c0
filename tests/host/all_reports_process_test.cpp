// `tally report --all`, `--variant` and `--divided`, run as a user runs them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "host/small_project.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using tally_test::SProcessResult;
using Words = std::vector<std::string>;
using Files = std::map<std::string, std::string>;

/// A bend, and pipe lengths of the detail set, both of the water discipline.
constexpr const char* kFurtherRows = R"sql(
INSERT INTO pj_cal_item VALUES (1, '管件', '弯头', '个', 0);
INSERT INTO pj_row VALUES (1, 1, 1, 1, 1, 1, 2, 1, 1);
INSERT INTO detail_cal_item VALUES (1, '管道长度', 'm', 2, 0, 0, 0, '2');
INSERT INTO detail_row VALUES (1, 1, 1, 1, 1, 1, 2, 1, 1);
)sql";

class AllReports : public testing::Test {
 protected:
  AllReports() {
    tally_test::CreateProjectDatabase(Project(), std::string(kSmallProject) + kFurtherRows);
  }

  std::string Project() const { return (folder_ / "small.tally").string(); }
  std::string Out() const { return (folder_ / "made/out").string(); }

  SProcessResult Run(const Words& options) const {
    Words words = {TALLY_PROGRAM, "report", Project()};
    words.insert(words.end(), options.begin(), options.end());
    return tally_test::RunProcess(words);
  }

  /// The files that a run with `--all` leaves behind, by name.
  Files All(const Words& options) const {
    Words words = {"--all", "-o", Out()};
    words.insert(words.end(), options.begin(), options.end());
    const SProcessResult result = Run(words);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator(Out())) {
      files[entry.path().filename().string()] = tally_test::ReadBytes(entry.path());
    }
    return files;
  }

  static Words Names(const Files& files) {
    Words names;
    for (const auto& file : files) {
      names.push_back(file.first);
    }
    return names;
  }

  void ExpectFault(const Words& options, const std::string& message) const {
    const SProcessResult result = Run(options);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "tally: " + message + "\n");
  }

  tally_test::CTempFolder folder_;
};

TEST_F(AllReports, AreWrittenIntoAFileForEachDiscipline) {
  const Files files = All({});
  EXPECT_EQ(
      Names(files),
      (Words{"calculation-book-floor_给排水.txt", "calculation-book-member_给排水.txt",
             "calculation-book-system_给排水.txt", "consumption-summary_电气.txt",
             "consumption-summary_给排水.txt", "duct-wall-thickness_给排水.txt",
             "fitting-summary_给排水.txt", "insulation_给排水.txt", "paint-work_给排水.txt"}));
  EXPECT_EQ(files.at("fitting-summary_给排水.txt"),
            Run({"--report", "fitting-summary", "--spec", "给排水"}).output);
  EXPECT_EQ(files.at("consumption-summary_电气.txt"),
            Run({"--report", "1", "--spec", "电气", "--level", "5"}).output);
  EXPECT_EQ(
      files.at("calculation-book-system_给排水.txt"),
      Run({"--report", "calculation-book", "--variant", "system", "--spec", "给排水"}).output);
}

TEST_F(AllReports, AreWrittenUnderTheSameFiltersAndSections) {
  const Words filters = {"--spec", "给排水", "--by-section", "--section", "一区", "--floor", "-1"};
  const Files files = All(filters);
  EXPECT_FALSE(files.contains("consumption-summary_电气.txt"));
  Words one = {"--report", "1"};
  one.insert(one.end(), filters.begin(), filters.end());
  EXPECT_EQ(files.at("consumption-summary_给排水.txt"), Run(one).output);
  one[1] = "fitting-summary";
  EXPECT_EQ(files.at("fitting-summary_给排水.txt"), Run(one).output);
}

TEST_F(AllReports, ReplaceOlderFilesAndLeaveOthersAlone) {
  std::filesystem::create_directories(Out());
  tally_test::WriteBytes(Out() + "/consumption-summary_电气.txt", "old");
  tally_test::WriteBytes(Out() + "/notes.txt", "mine");
  const Files files = All({});
  EXPECT_EQ(files.at("consumption-summary_电气.txt"),
            Run({"--report", "1", "--spec", "电气"}).output);
  EXPECT_EQ(files.at("notes.txt"), "mine");
}

TEST_F(AllReports, GiveDisciplinesFileNamesThatAreValidAndUnique) {
  tally_test::RunSql(Project(),
                     "UPDATE spec SET name = '../a/b' WHERE id = 1;"
                     "UPDATE spec SET name = '..\\A|b' WHERE id = 2");
  const Files files = All({});
  EXPECT_TRUE(files.contains("consumption-summary_.._a_b.txt"));
  EXPECT_TRUE(files.contains("consumption-summary_.._A_b_2.txt"));
}

TEST_F(AllReports, OfAnEmptyProjectAreAnEmptyFolder) {
  tally_test::RunSql(Project(), "DELETE FROM hz_row; DELETE FROM pj_row; DELETE FROM detail_row");
  EXPECT_EQ(All({}), Files());
}

TEST_F(AllReports, ExplainWrongOptions) {
  const std::string help = "; see 'tally report --help'";
  ExpectFault({"--all"}, "--all: the file or folder to write is missing; name it with -o");
  ExpectFault({"--all", "--output="},
              "--all: the file or folder to write is missing; name it with -o");
  ExpectFault({"--all", "-o", Out(), "--report", "1"}, "--report excludes --all" + help);
  ExpectFault({"--all", "-o", Out(), "--variant", "floor"}, "--variant excludes --all" + help);
  ExpectFault({"--all", "-o", Out(), "--level", "2"}, "--level excludes --all" + help);
  ExpectFault(
      {"--all", "-o", Out(), "--format", "xls"},
      "--format: no format 'xls'; there is table, csv, tsv, json, cells, xlsx, html; did you mean "
      "'xlsx'?");
  ExpectFault(
      {"--all", "-o", Out(), "--spec", "x"},
      "--spec: no discipline 'x' in any report of '" + Project() + "'; there is 给排水, 电气");
  EXPECT_FALSE(std::filesystem::exists(Out()));
  ExpectFault({"--all", "-o", Project()},
              "--output: cannot make the folder '" + Project() + "': Not a directory");
  std::filesystem::create_directories(Out() + "/consumption-summary_电气.txt");
  ExpectFault({"--all", "-o", Out()},
              "--output: '" + Out() + "/consumption-summary_电气.txt' is a folder");
}

TEST_F(AllReports, TellWhichTableCouldNotBeRead) {
  tally_test::RunSql(Project(), "DROP TABLE pj_row");
  ExpectFault({"--all", "-o", Out()},
              "cannot read table pj_row of '" + Project() + "': no such table: pj_row");
  EXPECT_FALSE(std::filesystem::exists(Out()));
}

TEST_F(AllReports, ShowProgressOnATerminal) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_GE(terminal, 0);
  ASSERT_EQ(grantpt(terminal), 0);
  ASSERT_EQ(unlockpt(terminal), 0);
  // Held open, so that what the program leaves can be read after its end. The terminal hands it
  // over in pieces and late; the mark comes after all of it.
  const std::string mark = "the end";
  const int held = open(ptsname(terminal), O_RDWR | O_NOCTTY);
  ASSERT_GE(held, 0);
  const SProcessResult result = tally_test::RunProcess(
      {"/bin/sh", "-c", "exec \"$0\" \"$@\" 2>" + std::string(ptsname(terminal)), TALLY_PROGRAM,
       "report", Project(), "--all", "-o", Out(), "--spec", "电气"});
  EXPECT_EQ(result.exitStatus, 0);
  ASSERT_EQ(write(held, mark.data(), mark.size()), static_cast<ssize_t>(mark.size()));
  std::string shown;
  while (shown.find(mark) == std::string::npos) {
    char bytes[4096];
    const ssize_t count = read(terminal, bytes, sizeof bytes);
    ASSERT_GT(count, 0);
    shown.append(bytes, static_cast<std::size_t>(count));
  }
  EXPECT_EQ(shown,
            "\r\x1B[K[....................] 1/1 consumption-summary_电气.txt\r\x1B[K" + mark);
  close(held);
  close(terminal);
}

TEST_F(AllReports, VariantsAreNamedOrNumbered) {
  const auto book = [this](const std::string& variant) {
    return Run({"--report", "calculation-book", "--variant", variant}).output;
  };
  EXPECT_EQ(book("member"), book("0"));
  EXPECT_EQ(book("floor"), book("1"));
  EXPECT_EQ(book("system"), book("2"));
  EXPECT_EQ(book("system"), book("-7"));
  EXPECT_NE(book("member"), book("floor"));
  EXPECT_NE(book("floor"), book("system"));
  EXPECT_EQ(Run({"--report", "calculation-book"}).output, book("member"));
  ExpectFault({"--report", "calculation-book", "--variant", "sytem"},
              "--variant: no variant 'sytem' of calculation-book; there is member, floor, system; "
              "did you mean 'system'?");
  ExpectFault({"--report", "overview", "--variant", "0"}, "--variant: overview has no variants");
}

TEST_F(AllReports, LevelsAreRefusedWhereThereAreNone) {
  for (const std::string variant : {"member", "floor"}) {
    ExpectFault({"--report", "calculation-book", "--variant", variant, "--level", "0"},
                "--level: calculation-book " + variant + " has no levels");
  }
  ExpectFault({"--report", "overview", "--level", "0"}, "--level: overview has no levels");
  ExpectFault({"--report", "calculation-book", "--variant", "system", "--level", "6"},
              "--level: '6' is not a level of calculation-book system, which are 0 to 5");
}

TEST_F(AllReports, BooksAreDividedByTypeOnRequest) {
  for (const std::string variant : {"member", "floor", "system"}) {
    const Words plain = {"--report", "calculation-book", "--variant", variant,
                         "--spec",   "给排水",           "--format",  "cells"};
    Words divided = plain;
    divided.push_back("--divided");
    const std::string heading = "\"@T\"\n\"管线\"\n";
    EXPECT_EQ(Run(plain).output.find(heading), std::string::npos) << variant;
    EXPECT_NE(Run(divided).output.find(heading), std::string::npos) << variant;
  }
}

}  // namespace
