// The examples, run as their README tells.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/process.h"
#include "support/temp_folder.h"

namespace {

using tally_test::CTempFolder;
using tally_test::RunProcess;
using tally_test::SProcessResult;

const std::filesystem::path kExamples = TALLY_EXAMPLES;

SProcessResult WriteProject(const std::filesystem::path& folder,
                            const std::filesystem::path& file) {
  return RunProcess({"/usr/bin/python3", (kExamples / "write_project.py").string(), folder.string(),
                     file.string()});
}

/// A copy of the sample folder, with one file changed, and what the writer says to it.
class WriteProjectExample : public testing::Test {
 protected:
  WriteProjectExample() { std::filesystem::copy(kExamples / "csv_project", Csv()); }

  std::filesystem::path Csv() const { return folder_ / "csv"; }
  std::filesystem::path Project() const { return folder_ / "project.tally"; }

  /// The error with the folder's name left out.
  std::string ErrorWith(const std::string& name, const std::string& bytes) {
    tally_test::WriteBytes(Csv() / name, bytes);
    const SProcessResult result = WriteProject(Csv(), Project());
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(std::filesystem::exists(Project()));
    std::string errors = result.errors;
    const std::string place = Csv().string() + "/";
    for (std::size_t at = errors.find(place); at != std::string::npos; at = errors.find(place)) {
      errors.erase(at, place.size());
    }
    return errors;
  }

 private:
  CTempFolder folder_;
};

TEST(MinimalHostExample, PrintsTheCalculationItems) {
  const CTempFolder folder;
  const std::filesystem::path project = folder / "project.tally";
  ASSERT_EQ(WriteProject(kExamples / "csv_project", project).errors, "");
  const SProcessResult result = RunProcess({TALLY_MINIMAL_HOST, project.string()});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "给排水: 管道长度 22.1 m\n给排水: 构件数量 1 个\n");
}

TEST(MinimalHostExample, RefusesWhatIsNoProject) {
  const CTempFolder folder;
  const std::string file = (folder / "text").string();
  tally_test::WriteBytes(file, "text");
  const SProcessResult result = RunProcess({TALLY_MINIMAL_HOST, file});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "当前数据库版本太低,请重新计算！\nminimal_host: " + file +
                               ": no project of this version\n");
}

TEST(OwnRecordsExample, PrintsRowsOfRecordsInMemory) {
  const SProcessResult result = RunProcess({TALLY_OWN_RECORDS});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "  构件类型 管道\\给水管\n"
            "    规格型号 DN50 | 属性  | 单位 m | 工程量 22.1\n"
            "      计算项目 管道长度 | 单位 m | 工程量 22.1\n"
            "        图纸楼层 1 | 楼层 1 | 单位 m | 工程量 12.5\n"
            "        图纸楼层 2,4 | 楼层 2,4 | 单位 m | 工程量 9.6\n"
            "    规格型号 DN25 | 属性  | 单位 m | 工程量 4\n"
            "      计算项目 管道长度 | 单位 m | 工程量 4\n"
            "        图纸楼层 3 | 楼层 3 | 单位 m | 工程量 4\n");
}

TEST_F(WriteProjectExample, WritesWhatTheReportReads) {
  const SProcessResult written = WriteProject(Csv(), Project());
  EXPECT_EQ(written.exitStatus, 0);
  EXPECT_EQ(written.output, "");
  EXPECT_EQ(written.errors, "");
  const SProcessResult report =
      RunProcess({TALLY_PROGRAM, "report", Project().string(), "--report", "consumption-summary",
                  "--spec", "给排水", "--level", "2", "--format", "cells"});
  EXPECT_EQ(report.errors, "");
  EXPECT_EQ(report.output,
            "\"@Cg\"\n\"管道\\\\给水管\"\n"
            "\"@A\"\n\"PPR管 DN50\"\n\"材质:PPR\\n连接方式:热熔连接\"\n\"m\"\n\"22.1\"\n"
            "\"@CI\"\n\"管道长度\"\n\"m\"\n\"22.1\"\n"
            "\"@F\"\n\"1\"\n\"1\"\n\"m\"\n\"12.5\"\n"
            "\"@F\"\n\"2,4\"\n\"2,4\"\n\"m\"\n\"9.6\"\n"
            "\"@Cg\"\n\"阀门法兰\\\\阀门\"\n"
            "\"@A\"\n\"闸阀 DN50\"\n\"\"\n\"个\"\n\"1\"\n"
            "\"@CI\"\n\"构件数量\"\n\"个\"\n\"1\"\n"
            "\"@F\"\n\"1\"\n\"1\"\n\"个\"\n\"1\"\n");
}

TEST_F(WriteProjectExample, ReplacesTheFileThatWasThere) {
  tally_test::WriteBytes(Project(), "old");
  EXPECT_EQ(WriteProject(Csv(), Project()).exitStatus, 0);
  EXPECT_EQ(tally_test::ReadBytes(Project()).substr(0, 15), "SQLite format 3");
}

TEST_F(WriteProjectExample, NamesTheFileAndRowOfAWrongCell) {
  EXPECT_EQ(ErrorWith("floor.csv", "id,name,floor_text\n1,1,1\nx,2,2\n"),
            "write_project.py: floor.csv, row 3: column 'id': 'x' is no integer of 64 bits\n");
  EXPECT_EQ(ErrorWith("floor.csv", "id,name,floor_text\n1,1,1\n9223372036854775808,2,2\n"),
            "write_project.py: floor.csv, row 3: column 'id': '9223372036854775808' is no integer "
            "of 64 bits\n");
  EXPECT_EQ(ErrorWith("floor.csv", "id,name,floor_text\n1,1\n"),
            "write_project.py: floor.csv, row 2: 2 cells for 3 columns\n");
  EXPECT_EQ(ErrorWith("floor.csv", "id,name,floor_text\n1,\"a\nb\",1\n1,2,2\n"),
            "write_project.py: floor.csv, row 4: the same id as row 2\n");
}

TEST_F(WriteProjectExample, RefusesQuantitiesThatAreNoDecimalNumbers) {
  for (const std::string text : {"", "nan", "1e999", "1_0", "0x10", "1,5"}) {
    const std::string cell = text == "1,5" ? "\"1,5\"" : text;
    EXPECT_EQ(ErrorWith("cal_item.csv", "id,name,unit,quantity,expression\n1,a,m," + cell + ",\n"),
              "write_project.py: cal_item.csv, row 2: column 'quantity': '" + text +
                  "' is no decimal number\n");
  }
}

TEST_F(WriteProjectExample, ExplainsWrongColumns) {
  EXPECT_EQ(ErrorWith("spec.csv", "id,nmae\n"),
            "write_project.py: spec.csv, row 1: no column 'nmae'; there are id, name\n");
  EXPECT_EQ(ErrorWith("spec.csv", "id\n"),
            "write_project.py: spec.csv, row 1: column 'name' is missing\n");
  EXPECT_EQ(ErrorWith("spec.csv", "id,name,id\n"),
            "write_project.py: spec.csv, row 1: column 'id' stands twice\n");
  EXPECT_EQ(ErrorWith("spec.csv", ""),
            "write_project.py: spec.csv: no line that names the columns\n");
}

TEST_F(WriteProjectExample, RefusesAReferenceWithoutARecord) {
  EXPECT_EQ(ErrorWith("spec.csv", "id,name\n2,给排水\n"),
            "write_project.py: hz_row.csv, row 2: column 'spec': spec has no id 1\n");
}

TEST_F(WriteProjectExample, RefusesFilesThatAreNoCsv) {
  EXPECT_EQ(ErrorWith("spec.csv", "id,name\n1,\"x"),
            "write_project.py: spec.csv, row 2: unexpected end of data\n");
  EXPECT_EQ(ErrorWith("spec.csv", "id,name\n1,\xFF\n"),
            "write_project.py: spec.csv, row 1 or below: not UTF-8\n");
}

TEST_F(WriteProjectExample, RefusesAFileThatIsNoTable) {
  const std::string error = ErrorWith("rows.csv", "id\n");
  EXPECT_EQ(error.substr(0, error.find(';')), "write_project.py: rows.csv: no table 'rows'");
}

TEST_F(WriteProjectExample, RefusesAFolderThatIsNotThere) {
  const SProcessResult result = WriteProject("/nowhere/at/all", Project());
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, "write_project.py: /nowhere/at/all: No such file or directory\n");
}

}  // namespace
