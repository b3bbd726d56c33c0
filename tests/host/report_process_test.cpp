// `tally report`, run as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "host/report_catalog.h"
#include "host/small_project.h"
#include "platform/portable/utf8_text.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using tally_test::CProcess;
using tally_test::SProcessResult;

class ReportProcess : public testing::Test {
 protected:
  ReportProcess() { tally_test::CreateProjectDatabase(Project(), kSmallProject); }

  std::string Project() const { return (folder_ / "small.tally").string(); }

  SProcessResult Run(const std::vector<std::string>& options,
                     const std::vector<std::string>& environment = {}) const {
    std::vector<std::string> words = {TALLY_PROGRAM, "report", Project(), "--report", "1"};
    words.insert(words.end(), options.begin(), options.end());
    return tally_test::RunProcess(words, "", environment);
  }

  /// The cells of the water discipline, joined by blanks.
  std::string Cells(std::vector<std::string> options,
                    const std::vector<std::string>& environment = {}) const {
    options.insert(options.end(), {"--spec", "给排水", "--format", "cells"});
    const SProcessResult result = Run(options, environment);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    std::string cells = result.output;
    for (char& c : cells) {
      c = c == '\n' ? ' ' : c;
    }
    return cells;
  }

  void ExpectFault(const std::vector<std::string>& options, const std::string& message) const {
    ExpectFaultOf(Run(options), message);
  }

  static void ExpectFaultOf(const SProcessResult& result, const std::string& message) {
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "tally: " + message + "\n");
  }

  tally_test::CTempFolder folder_;
};

// "consumption-summary, ...", each once.
std::string ReportNames() {
  std::string names;
  std::string last;
  for (const SCatalogReport& report : ReportCatalog()) {
    if (report.name != last) {
      names += (names.empty() ? "" : ", ") + std::string(report.name);
      last = report.name;
    }
  }
  return names;
}

constexpr const char* kTable =
    "消耗量汇总表  给排水\n"
    "\n"
    "构件类型\n"
    "  规格型号          属性                      单位  工程量\n"
    "    计算项目\n"
    "      图纸楼层                          楼层\n"
    "        系统编号\n"
    "          系统编号\n"
    "----------------------------------------------------------\n"
    "管道\\给水管\n"
    "  DN100                                       m         20\n"
    "    管道长度                                  m         20\n"
    "      3,4                               3,4   m         20\n"
    "        J(市政)                               m         20\n"
    "          *J(市政)                            m         20\n"
    "  DN50              材质:钢; 连接:螺纹        m        7.5\n"
    "    管道长度                                  m        7.5\n"
    "      -1                                -1    m        2.5\n"
    "        J(市政)                               m        2.5\n"
    "          *J(市政)                            m        2.5\n"
    "      3,4                               3,4   m          5\n"
    "        J(市政)                               m          5\n"
    "          *J(市政)                            m          5\n"
    "\n"
    "消耗量汇总表  电气\n"
    "\n"
    "构件类型\n"
    "  规格型号     属性  单位  工程量\n"
    "    计算项目\n"
    "---------------------------------\n"
    "穿管引线\\配管\n"
    "  @F                 m          0\n"
    "    电线长度         m          4\n";

TEST_F(ReportProcess, PrintsAllDisciplinesAtTheDeepestLevel) {
  const SProcessResult result = Run({});
  EXPECT_EQ(result.output, kTable);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ReportProcess, TakesTheReportsNames) {
  for (const char* name : {"1", "consumption-summary", "消耗量汇总表"}) {
    const SProcessResult result =
        tally_test::RunProcess({TALLY_PROGRAM, "report", "--report", name, Project()});
    EXPECT_EQ(result.output, kTable) << name;
  }
}

TEST_F(ReportProcess, PrintsEveryReportAndVariant) {
  for (const SCatalogReport& report : ReportCatalog()) {
    std::vector<std::string> words = {TALLY_PROGRAM, "report", Project(), "--report", report.name};
    if (report.variantName != nullptr) {
      words.insert(words.end(), {"--variant", report.variantName});
    }
    const SProcessResult result = tally_test::RunProcess(words);
    EXPECT_EQ(result.exitStatus, 0) << report.name;
    EXPECT_EQ(result.errors, "") << report.name;
    EXPECT_TRUE(result.output.starts_with(Utf8FromWide(report.title))) << result.output;
  }
}

TEST_F(ReportProcess, SaysTheSameUnderAnotherLocale) {
  EXPECT_EQ(Run({}, {"LC_ALL=de_DE.UTF-8", "LANG=de_DE.UTF-8"}).output, kTable);
}

TEST_F(ReportProcess, ChoosesDisciplinesInTheOrderGiven) {
  const std::string output = Run({"--spec", "电气", "--spec", "给排水", "--level", "0"}).output;
  EXPECT_EQ(output,
            "消耗量汇总表  电气\n"
            "\n"
            "(no rows)\n"
            "\n"
            "消耗量汇总表  给排水\n"
            "\n"
            "构件类型\n"
            "  规格型号   属性                单位  工程量\n"
            "---------------------------------------------\n"
            "管道\\给水管\n"
            "  DN100                          m         20\n"
            "  DN50       材质:钢; 连接:螺纹  m        7.5\n");
}

TEST_F(ReportProcess, WritesCellsAsJson) {
  EXPECT_EQ(Run({"--spec", "给排水", "--level", "0", "--format", "cells"}).output,
            "\"@Cg\"\n"
            "\"管道\\\\给水管\"\n"
            "\"@A\"\n\"DN100\"\n\"\"\n\"m\"\n\"20\"\n"
            "\"@A\"\n\"DN50\"\n\"材质:钢\\n连接:螺纹\"\n\"m\"\n\"7.5\"\n");
}

constexpr const char* kBothSizes =
    R"("@Cg" "管道\\给水管" "@A" "DN100" "" "m" "20" "@A" "DN50" "材质:钢\n连接:螺纹" "m" "7.5" )";
constexpr const char* kSmallerFirst =
    R"("@Cg" "管道\\给水管" "@A" "DN50" "材质:钢\n连接:螺纹" "m" "7.5" "@A" "DN100" "" "m" "20" )";

TEST_F(ReportProcess, FiltersByFloor) {
  EXPECT_EQ(Cells({"--level", "0", "--floor", "-1"}),
            R"("@Cg" "管道\\给水管" "@A" "DN50" "材质:钢\n连接:螺纹" "m" "2.5" )");
  EXPECT_EQ(Cells({"--level", "0", "--floor=-1", "--floor", "3,4"}), kBothSizes);
  EXPECT_EQ(Cells({"--level", "0", "--floor", "3,4=3"}),
            R"("@Cg" "管道\\给水管" "@A" "DN100" "" "m" "10" )"
            R"("@A" "DN50" "材质:钢\n连接:螺纹" "m" "2.5" )");
  EXPECT_EQ(Cells({"--level", "0", "--floor", "3,4=x=3"}), "");
}

TEST_F(ReportProcess, FiltersByComponentKind) {
  EXPECT_EQ(Cells({"--level", "0", "--category", "管道"}), kBothSizes);
  EXPECT_EQ(Cells({"--level", "0", "--category", "x", "--category", R"(管道\给水管)"}), kBothSizes);
  EXPECT_EQ(Cells({"--level", "0", "--category", "[管道]"}), "");
}

TEST_F(ReportProcess, FiltersBySystemCode) {
  EXPECT_EQ(Cells({"--level", "0", "--sys-code", "J"}), kBothSizes);
  EXPECT_EQ(Cells({"--level", "0", "--sys-code", "W1"}), "");
}

TEST_F(ReportProcess, CountsTheNamedSectionsOnly) {
  EXPECT_EQ(Cells({"--level", "0", "--section", "二区"}),
            R"("@Cg" "管道\\给水管" "@A" "DN50" "材质:钢\n连接:螺纹" "m" "5" )");
  EXPECT_EQ(Cells({"--level", "0", "--section", "二区", "--section", "一区"}), kBothSizes);
}

TEST_F(ReportProcess, SplitsBySection) {
  const std::string first = R"("@P" "一区" "@Cg" "管道\\给水管" "@A" "DN100" "" "m" "20" )"
                            R"("@A" "DN50" "材质:钢\n连接:螺纹" "m" "2.5" )";
  const std::string second =
      R"("@P" "二区" "@Cg" "管道\\给水管" "@A" "DN50" "材质:钢\n连接:螺纹" "m" "5" )";
  EXPECT_EQ(Cells({"--level", "0", "--by-section"}), first + second);
  EXPECT_EQ(Cells({"--level", "0", "--by-section", "--section", "二区"}), second);
}

TEST_F(ReportProcess, SortsAsTheConfigurationOrTheOptionSays) {
  std::filesystem::create_directories(folder_ / "config/tally");
  tally_test::WriteBytes(folder_ / "config/tally/ReportConfig.ini",
                         "[ReportConfig]\nLineSortUp=FALSE\n");
  const std::vector<std::string> up = {"XDG_CONFIG_HOME=" + (folder_ / "config").string()};
  EXPECT_EQ(Cells({"--level", "0"}), kBothSizes);
  EXPECT_EQ(Cells({"--level", "0"}, up), kSmallerFirst);
  EXPECT_EQ(Cells({"--level", "0", "--sort-down"}, up), kBothSizes);
  EXPECT_EQ(Cells({"--level", "0", "--sort-up"}), kSmallerFirst);
}

TEST_F(ReportProcess, PrintsThatThereAreNoRows) {
  EXPECT_EQ(Run({"--spec", "给排水", "--category", "x"}).output,
            "消耗量汇总表  给排水\n\n(no rows)\n");
  tally_test::RunSql(Project(), "DELETE FROM hz_row");
  EXPECT_EQ(Run({}).output, "消耗量汇总表\n\n(no rows)\n");
  EXPECT_EQ(Run({"--format", "cells"}).output, "");
}

TEST_F(ReportProcess, WritesToAFile) {
  const std::string out = (folder_ / "out.txt").string();
  tally_test::WriteBytes(out, "old");
  const SProcessResult result = Run({"-o", out});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(tally_test::ReadBytes(out), kTable);
}

TEST_F(ReportProcess, LeavesTheOldFileWhereTheReportFails) {
  const std::string out = (folder_ / "out.txt").string();
  tally_test::WriteBytes(out, "old");
  ExpectFault({"-o", out, "--spec", "x"}, "--spec: no discipline 'x' in consumption-summary of '" +
                                              Project() + "'; there is 给排水, 电气");
  EXPECT_EQ(tally_test::ReadBytes(out), "old");
}

TEST_F(ReportProcess, RefusesFilesThatItCannotWrite) {
  ExpectFault({"-o", folder_.Path().string()},
              "--output: '" + folder_.Path().string() + "' is a folder");
  ExpectFault({"-o", Project()}, "--output: '" + Project() + "' is what the report is made of");
  const std::string lost = (folder_ / "no/out.txt").string();
  ExpectFault({"-o", lost}, "--output: the folder of '" + lost + "' does not exist");
  ExpectFault({"-o", "/dev/full"}, "cannot write to '/dev/full': No space left on device");
}

TEST_F(ReportProcess, DoesNotReplaceItsStatusFile) {
  const std::string status = (folder_ / "status.xml").string();
  const std::string text = "<报表状态数据 Version=\"16.2.0\"/>";
  tally_test::WriteBytes(status, text);
  ExpectFault({"--status", status, "-o", status},
              "--output: '" + status + "' is what the report is made of");
  EXPECT_EQ(tally_test::ReadBytes(status), text);
}

TEST_F(ReportProcess, TakesAShortOptionsValueBehindTheSign) {
  const std::string out = (folder_ / "out.txt").string();
  EXPECT_EQ(Run({"-o=" + out}).exitStatus, 0);
  EXPECT_EQ(tally_test::ReadBytes(out), kTable);
}

TEST_F(ReportProcess, PrintsARepeatedDisciplineOnce) {
  EXPECT_EQ(Run({"--spec", "给排水", "--spec", "电气", "--spec", "给排水"}).output, kTable);
}

TEST_F(ReportProcess, FailsWhereTheOutputTakesNoMore) {
  CProcess full({TALLY_PROGRAM, "report", Project(), "--report", "1"}, {}, "/dev/full");
  ExpectFaultOf(full.Wait(), "cannot write to standard output: No space left on device");
  CProcess closed({TALLY_PROGRAM, "report", Project(), "--report", "1"});
  closed.CloseOutput();
  ExpectFaultOf(closed.Wait(), "cannot write to standard output: Broken pipe");
}

TEST_F(ReportProcess, WritesCsvWithDisciplineAndLevel) {
  const SProcessResult result = Run({"--level", "0", "--format", "csv"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "\xEF\xBB\xBF专业,级别,施工段,构件类型,规格型号,属性,计算项目,图纸楼层,楼层,系统编号,"
            "单位,工程量,构件索引\r\n"
            "给排水,1,,管道\\给水管,,,,,,,,,\r\n"
            "给排水,2,,,DN100,,,,,,m,20,\r\n"
            "给排水,2,,,DN50,\"材质:钢\n连接:螺纹\",,,,,m,7.5,\r\n");
}

TEST_F(ReportProcess, WritesTsvAndKeepsTextsSafeOnRequest) {
  tally_test::RunSql(Project(), "UPDATE attr SET name = '=1+1' WHERE id = 2");
  const auto tsv = [this](const std::vector<std::string>& options) {
    std::vector<std::string> all = {"--level", "0",      "--format",  "tsv",
                                    "--spec",  "给排水", "--columns", "specification,quantity"};
    all.insert(all.end(), options.begin(), options.end());
    return Run(all).output;
  };
  EXPECT_EQ(tsv({}),
            "专业\t级别\t规格型号\t工程量\n给排水\t1\t\t\n给排水\t2\t=1+1\t20\n"
            "给排水\t2\tDN50\t7.5\n");
  EXPECT_EQ(tsv({"--csv-safe"}),
            "专业\t级别\t规格型号\t工程量\n给排水\t1\t\t\n给排水\t2\t'=1+1\t20\n"
            "给排水\t2\tDN50\t7.5\n");
}

TEST_F(ReportProcess, ShowsTheChosenColumnsInTheirOrder) {
  EXPECT_EQ(Run({"--spec", "给排水", "--level", "0", "--columns", "quantity,单位"}).output,
            "消耗量汇总表  给排水\n"
            "\n"
            "构件类型\n"
            "  规格型号   工程量  单位\n"
            "-------------------------\n"
            "管道\\给水管\n"
            "  DN100          20  m\n"
            "  DN50          7.5  m\n");
}

TEST_F(ReportProcess, ShowsReferencesWhereTheirColumnIsChosen) {
  const std::string output =
      Run({"--spec", "给排水", "--floor", "-1", "--columns", "components"}).output;
  EXPECT_NE(output.find("          *J(市政)  C1$$\n"), std::string::npos) << output;
}

TEST_F(ReportProcess, TakesColumnsFromAStatusFileByHeading) {
  const std::string status = (folder_ / "status.xml").string();
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  batch.Write(R"({"op":"status_read","path":")" + status + "\"}\n");
  batch.Write(
      R"({"op":"status_set","state":{"reports":{"消耗量汇总表":{"expandLevel":0,"columns":[)"
      R"({"name":"工程量","visible":true},{"name":"单位","visible":false}]}}}})"
      "\n{\"op\":\"status_save\"}\n");
  batch.CloseInput();
  ASSERT_EQ(batch.Wait().exitStatus, 0);
  EXPECT_EQ(Run({"--spec", "给排水", "--level", "0", "--status", status}).output,
            "消耗量汇总表  给排水\n"
            "\n"
            "构件类型\n"
            "  规格型号   工程量  属性\n"
            "---------------------------------------\n"
            "管道\\给水管\n"
            "  DN100          20\n"
            "  DN50          7.5  材质:钢; 连接:螺纹\n");
  EXPECT_EQ(Run({"--spec", "电气", "--level", "0", "--status", status, "--columns", "unit",
                 "--format", "csv"})
                .output,
            "\xEF\xBB\xBF专业,级别,单位\r\n");
}

TEST_F(ReportProcess, TellsTimesAndSizesOnRequest) {
  const SProcessResult result = Run({"--stats"});
  EXPECT_EQ(result.output, kTable);
  const std::regex lines(
      "open +[0-9.]+ ms\nread +[0-9.]+ ms\nfold +[0-9.]+ ms\nwalk +[0-9.]+ ms\n"
      "write +[0-9.]+ ms\nrows +11\nnodes +26\ncells +76\nmemory +[0-9.]+ MiB\n");
  EXPECT_TRUE(std::regex_match(result.errors, lines)) << result.errors;
}

TEST_F(ReportProcess, ExplainsWrongColumns) {
  ExpectFault({"--columns", "unit,quantitty"},
              "--columns: no column 'quantitty' in consumption-summary; there is section, "
              "category, specification, attributes, item, drawing-floor, floor, system-code, unit, "
              "quantity, components; did you mean 'quantity'?");
  ExpectFault({"--columns="},
              "--columns: no column '' in consumption-summary; there is section, category, "
              "specification, attributes, item, drawing-floor, floor, system-code, unit, "
              "quantity, components");
}

TEST_F(ReportProcess, ExplainsWrongValues) {
  ExpectFault({"--level", "6"},
              "--level: '6' is not a level of consumption-summary, which are 0 to 5");
  ExpectFault({"--level", "-1"},
              "--level: '-1' is not a level of consumption-summary, which are 0 to 5");
  ExpectFault({"--level", "2x"},
              "--level: '2x' is not a level of consumption-summary, which are 0 to 5");
  ExpectFault({"--variant", "floor"}, "--variant: consumption-summary has no variants");
  ExpectFault(
      {"--format", "xls"},
      "--format: no format 'xls'; there is table, csv, tsv, json, cells, xlsx, html; did you mean "
      "'xlsx'?");
  ExpectFault({"--format", "cells"},
              "--format: cells are those of one discipline; choose it with --spec out of 给排水, "
              "电气");
  ExpectFault({"--spec="}, "--spec: no discipline '' in consumption-summary of '" + Project() +
                               "'; there is 给排水, 电气");
  ExpectFaultOf(tally_test::RunProcess({TALLY_PROGRAM, "report", Project(), "--report", "hz"}),
                "--report: no report 'hz'; there is " + ReportNames());
}

TEST_F(ReportProcess, ExplainsWrongOptions) {
  const std::string help = "; see 'tally report --help'";
  ExpectFault({"--levle", "2"}, "'--levle' is not expected" + help + "; did you mean '--level'?");
  ExpectFault({"more"}, "'more' is not expected" + help);
  ExpectFault({"--spec"}, "--spec: its value is missing" + help);
  ExpectFault({"--level", "1", "--level", "1"}, "--level: given more than once");
  ExpectFault({"--sort-up", "--sort-down"}, "--sort-up excludes --sort-down" + help);
  ExpectFaultOf(tally_test::RunProcess({TALLY_PROGRAM, "report"}), "FILE is required" + help);
  ExpectFaultOf(tally_test::RunProcess({TALLY_PROGRAM, "report", Project()}),
                "--report is required" + help);
}

TEST_F(ReportProcess, ExplainsProjectsThatDoNotOpen) {
  const auto run = [](const std::string& file) {
    return tally_test::RunProcess({TALLY_PROGRAM, "report", file, "--report", "1"});
  };
  const std::string missing = (folder_ / "no.tally").string();
  ExpectFaultOf(run(missing), "cannot open '" + missing + "': no such file");
  ExpectFaultOf(run(folder_.Path().string()),
                "cannot open '" + folder_.Path().string() + "': not a regular file");
  const std::string text = (folder_ / "text").string();
  tally_test::WriteBytes(text, std::string(1000, 'x'));
  ExpectFaultOf(run(text), "cannot open '" + text + "': file is not a database");
  tally_test::RunSql(Project(), "PRAGMA user_version = 8");
  ExpectFaultOf(run(Project()),
                "cannot open '" + Project() + "': its format is version 8, not version 9");
  tally_test::RunSql(Project(), "PRAGMA user_version = 10");
  ExpectFaultOf(run(Project()),
                "cannot open '" + Project() + "': its format is version 10, not version 9");
  tally_test::RunSql(Project(), "PRAGMA user_version = 9; PRAGMA application_id = 1");
  ExpectFaultOf(run(Project()), "cannot open '" + Project() + "': not a project database");
}

TEST_F(ReportProcess, KeepsAMessageOnOneLine) {
  ExpectFaultOf(tally_test::RunProcess({TALLY_PROGRAM, "report", "a\n\x1B[b", "--report", "1"}),
                "cannot open 'a; ␛[b': no such file");
}

TEST_F(ReportProcess, TellsWhichTableCouldNotBeRead) {
  tally_test::RunSql(Project(), "DROP TABLE hz_row");
  ExpectFault({}, "cannot read table hz_row of '" + Project() + "': no such table: hz_row");
}

TEST_F(ReportProcess, TellsThatATreeTableCouldNotBeRead) {
  tally_test::RunSql(Project(), "DROP TABLE all_floor");
  ExpectFault({}, "cannot read table all_floor of '" + Project() + "': no such table: all_floor");
}

TEST_F(ReportProcess, TellsThatARecordIsMissing) {
  tally_test::RunSql(Project(), "DELETE FROM component WHERE id = 2");
  ExpectFault({}, "cannot make consumption-summary of '" + Project() +
                      "': a row names a record that its table lacks");
}

TEST(CommandLine, ExplainsWrongCommands) {
  const auto expectFault = [](const std::vector<std::string>& words, const std::string& message) {
    const SProcessResult result = tally_test::RunProcess(words);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "tally: " + message + "\n");
  };
  expectFault(
      {TALLY_PROGRAM},
      "no command given; there is demo, report, reports, tree, check, batch, status, config");
  expectFault({TALLY_PROGRAM, "reprot", "x"},
              "no command 'reprot'; there is demo, report, reports, tree, check, batch, status, "
              "config; did you mean 'report'?");
  expectFault({TALLY_PROGRAM, "--all"}, "'--all' is not expected; see 'tally --help'");
}

TEST(CommandLine, PrintsHelpAndVersion) {
  const SProcessResult version = tally_test::RunProcess({TALLY_PROGRAM, "--version"});
  EXPECT_EQ(version.output, "tally 0.1.0\n");
  EXPECT_EQ(version.exitStatus, 0);
  const SProcessResult help = tally_test::RunProcess({TALLY_PROGRAM, "--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_NE(help.output.find("report"), std::string::npos);
  const SProcessResult report = tally_test::RunProcess({TALLY_PROGRAM, "report", "--help"});
  EXPECT_EQ(report.exitStatus, 0);
  EXPECT_NE(report.output.find("1  consumption-summary  消耗量汇总表, levels 0 to 5\n"),
            std::string::npos)
      << report.output;
}

}  // namespace
