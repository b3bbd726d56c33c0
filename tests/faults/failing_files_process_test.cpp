// The program on files that are locked, cut off, changed meanwhile or taken away, and on disks that
// take no more. The system's own limit on the size of files stands in for a full disk.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <set>
#include <string>

#include "host/program_process.h"
#include "support/project_database.h"

namespace {

namespace fs = std::filesystem;
using tally_test::CProcess;
using tally_test::ReadBytes;
using tally_test::RunProcess;
using tally_test::RunSql;
using tally_test::SProcessResult;
using tally_test::WriteBytes;

class FailingFiles : public tally_test::ProgramProcess {
 protected:
  static Words Report(const std::string& project) { return {"report", project, "--report", "1"}; }

  /// The program where no file may grow beyond 512 bytes.
  static SProcessResult RunOnSmallDisk(const Words& words, const std::string& input = "",
                                       const Words& environment = {}) {
    Words all = {"/bin/sh", "-c", "trap '' XFSZ; ulimit -f 1; exec \"$@\"", "sh", TALLY_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    return RunProcess(all, input, environment);
  }

  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
};

TEST_F(FailingFiles, ALockedProjectIsAnError) {
  const tally_test::DatabaseHandle writer = tally_test::OpenDatabase(Project());
  RunSql(writer.get(), "BEGIN EXCLUSIVE");
  ExpectFault(Report(Project()), "cannot open '" + Project() + "': database is locked");
  RunSql(writer.get(), "ROLLBACK");
  EXPECT_EQ(Run(Report(Project())).exitStatus, 0);
}

TEST_F(FailingFiles, AProjectCutOffAnywhereIsAnError) {
  const std::string whole = ReadBytes(Project());
  const std::string cut = Name("cut.tally");
  for (std::size_t sixteenth = 0; sixteenth < 16; ++sixteenth) {
    WriteBytes(cut, whole.substr(0, whole.size() * sixteenth / 16));
    ExpectFault(Report(cut), "cannot open '" + cut + "': " +
                                 (sixteenth == 0 ? "not a project database"
                                                 : "database disk image is malformed"));
  }
}

TEST_F(FailingFiles, AProjectLeftInTheMiddleOfAWriteIsReadAsItWasBefore) {
  const std::string expected = Run(Report(Project())).output;
  const std::string torn = Name("torn.tally");
  {
    const tally_test::DatabaseHandle writer = tally_test::OpenDatabase(Project());
    RunSql(writer.get(),
           "PRAGMA cache_size = 1; BEGIN; UPDATE cal_item SET quantity = 1000;"
           "WITH RECURSIVE number(n) AS (SELECT 100 UNION ALL SELECT n + 1 FROM number "
           "WHERE n < 3000) INSERT INTO attr SELECT n, hex(randomblob(50)), '' FROM number");
    fs::copy_file(Project(), torn);
    fs::copy_file(Project() + "-journal", torn + "-journal");
    RunSql(writer.get(), "ROLLBACK");
  }
  const SProcessResult result = Run(Report(torn));
  if (result.exitStatus == 0) {
    EXPECT_EQ(result.output, expected);
  } else {
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              "tally: cannot open '" + torn + "': attempt to write a readonly database\n");
  }
}

constexpr const char* kRows = R"({"op":"rows","report":1,"spec":"给排水","level":0})"
                              "\n";
constexpr const char* kOpenInOtherMode = R"({"op":"open","isQdMode":false})"
                                         "\n";
constexpr const char* kFittings = R"({"op":"rows","report":5,"spec":"给排水","level":0})"
                                  "\n";

TEST_F(FailingFiles, AProjectChangedUnderTheReaderIsSeenWhenItIsOpenedInTheOtherMode) {
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  const auto ask = [&batch](const char* request) {
    batch.Write(request);
    return batch.ReadLine();
  };
  const std::string before =
      R"({"rows":["@Cg","管道\\给水管","@A","DN100","","m","20","@A","DN50",)"
      R"("材质:钢\n连接:螺纹","m","7.5"]})";
  EXPECT_EQ(ask(kRows), before);
  RunSql(Project(), "UPDATE cal_item SET quantity = 3 WHERE id = 1");
  EXPECT_EQ(ask(kRows), before);
  EXPECT_EQ(ask(kOpenInOtherMode), R"({"ok":true})");
  EXPECT_EQ(ask(kRows), R"({"rows":["@Cg","管道\\给水管","@A","DN100","","m","20","@A","DN50",)"
                        R"("材质:钢\n连接:螺纹","m","9"]})");
}

TEST_F(FailingFiles, AProjectThatVanishedIsAnErrorOfTheNextRead) {
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  batch.Write(kRows);
  const std::string rows = batch.ReadLine();
  fs::remove(Project());
  batch.Write(kFittings);
  EXPECT_EQ(batch.ReadLine(), R"({"error":{"kind":"read","message":"cannot read ')" + Project() +
                                  R"(': no such file"}})");
  batch.Write(kRows);
  EXPECT_EQ(batch.ReadLine(), rows);
}

TEST_F(FailingFiles, AReportThatDoesNotFitOnTheDiskLeavesTheOldFile) {
  for (const char* format : {"table", "csv", "tsv", "json", "html", "xlsx"}) {
    const std::string out = Name("out");
    WriteBytes(out, "old");
    const std::set<std::string> files = Files();
    const SProcessResult result =
        RunOnSmallDisk({"report", Project(), "--report", "1", "--format", format, "-o", out});
    EXPECT_EQ(result.exitStatus, 2) << format;
    EXPECT_EQ(result.output, "") << format;
    EXPECT_NE(result.errors.find(": File too large"), std::string::npos) << format << result.errors;
    EXPECT_EQ(ReadBytes(out), "old") << format;
    EXPECT_EQ(Files(), files) << format;
  }
}

TEST_F(FailingFiles, AFolderOfReportsStopsAtTheFirstThatDoesNotFit) {
  const std::string out = Name("all");
  const SProcessResult result = RunOnSmallDisk({"report", Project(), "--all", "-o", out});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_TRUE(result.errors.starts_with("tally: cannot write to '" + out)) << result.errors;
  EXPECT_TRUE(result.errors.ends_with("': File too large\n")) << result.errors;
  EXPECT_TRUE(fs::is_empty(out));
}

TEST_F(FailingFiles, AStatusThatDoesNotFitOnTheDiskLeavesTheOldFile) {
  const std::string status = Name("status.xml");
  const std::string section(600, 'x');
  WriteBytes(status, "<old/>");
  const std::set<std::string> files = Files();
  const SProcessResult result =
      RunOnSmallDisk({"batch", Project()}, R"({"op":"status_read","path":")" + status + "\"}\n" +
                                               R"({"op":"status_set","state":{"curSpec":")" +
                                               section + "\"}}\n" + R"({"op":"status_save"})");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_NE(result.output.find("File too large"), std::string::npos) << result.output;
  EXPECT_EQ(ReadBytes(status), "<old/>");
  EXPECT_EQ(Files(), files);
}

TEST_F(FailingFiles, ASettingThatDoesNotFitOnTheDiskLeavesTheOldFile) {
  const fs::path ini = folder_ / ".config/tally/ReportConfig.ini";
  fs::create_directories(ini.parent_path());
  const std::string text = "[ReportConfig]\n;" + std::string(600, 'x') + "\n";
  WriteBytes(ini, text);
  const SProcessResult result = RunOnSmallDisk(
      {"config", "line-sort", "up"}, "", {"XDG_CONFIG_HOME=" + (folder_ / ".config").string()});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, "tally: cannot write to '" +
                               (folder_ / ".config/tally/ReportConfig.ini").string() + "'\n");
  EXPECT_EQ(ReadBytes(ini), text);
}

// The process file system takes no files, whoever asks.
TEST_F(FailingFiles, AReadOnlyFolderIsAnError) {
  ExpectFault({"report", Project(), "--report", "1", "-o", "/proc/tally.txt"},
              "cannot write to '/proc/tally.txt': No such file or directory");
}

}  // namespace
