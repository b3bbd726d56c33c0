// The report status through the program: `tally status`, `tally report --status` and the status
// requests of `tally batch`.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "host/small_project.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using tally_test::RunProcess;
using tally_test::SProcessResult;

constexpr const char* kFile =
    "<报表状态数据 Version=\"16.2.0\"><当前专业>给排水</当前专业>"
    "<是否按施工段统计>1</是否按施工段统计>"
    "<专业 Name=\"给排水\"><Condition><系统编号><选中的系统编号>J</选中的系统编号>"
    "<系统编号>J</系统编号></系统编号><楼层信息><是否选中全部楼层>否</是否选中全部楼层><楼层信息>"
    "<图纸对应楼层>3,4</图纸对应楼层><选择楼层>3</选择楼层></楼层信息></楼层信息></Condition></"
    "专业>"
    "<报表类型 Name=\"消耗量汇总表\"><报表展开的级别>1</报表展开的级别><报表列状态>"
    "<报表列 Name=\"单位\" Visible=\"false\"/></报表列状态></报表类型>"
    "<施工段名称显示><名称 Name=\"一区\"/></施工段名称显示></报表状态数据>";

constexpr const char* kState =
    R"({"isDividedNode":false,"isBySgd":true,"dispSgd":["一区"],"curSpec":"给排水","curReport":"",)"
    R"("reports":{"消耗量汇总表":{"visible":true,"expandLevel":1,)"
    R"("columns":[{"name":"单位","visible":false}]}},)"
    R"("conditions":{"给排水":{"allFloors":false,"floors":[{"drawingFloor":"3,4","floor":"3"}],)"
    R"("categories":[],"curCategory":"","sysCodes":["J"],"curSysCode":"J"}},"trees":{}})";

constexpr const char* kEmptyState =
    R"({"isDividedNode":false,"isBySgd":false,"dispSgd":[],"curSpec":"","curReport":"",)"
    R"("reports":{},"conditions":{},"trees":{}})";

class StatusProcess : public testing::Test {
 protected:
  StatusProcess() {
    tally_test::CreateProjectDatabase(Name("small.tally"), kSmallProject);
    tally_test::WriteBytes(folder_ / "status.xml", kFile);
  }

  std::string Name(const char* name) const { return (folder_ / name).string(); }

  std::string Cells(std::vector<std::string> options) const {
    std::vector<std::string> words = {
        TALLY_PROGRAM, "report", Name("small.tally"), "--report",        "1", "--spec", "给排水",
        "--format",    "cells",  "--status",          Name("status.xml")};
    words.insert(words.end(), options.begin(), options.end());
    const SProcessResult result = RunProcess(words);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 0);
    std::string cells;
    for (const char c : result.output) {
      cells += c == '\n' ? ' ' : c;
    }
    return cells;
  }

  void ExpectFault(const std::vector<std::string>& words, const std::string& message) const {
    const SProcessResult result = RunProcess(words);
    EXPECT_EQ(result.errors, "tally: " + message + "\n");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.exitStatus, 2);
  }

  void ExpectAnswers(const std::vector<std::pair<std::string, std::string>>& exchange) const {
    std::string input;
    std::string output;
    for (const auto& [request, answer] : exchange) {
      input += request + "\n";
      output += answer + "\n";
    }
    const SProcessResult result = RunProcess({TALLY_PROGRAM, "batch", Name("small.tally")}, input);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 0);
  }

  std::string ReadRequest(const char* name) const {
    return R"({"op":"status_read","path":")" + Name(name) + R"("})";
  }

  tally_test::CTempFolder folder_;
};

TEST_F(StatusProcess, PrintsAStatusToRead) {
  const SProcessResult result = RunProcess({TALLY_PROGRAM, "status", Name("status.xml")});
  EXPECT_EQ(result.output,
            "current report: ''\n"
            "current discipline: '给排水'\n"
            "counted by section: yes\n"
            "displayed sections: '一区'\n"
            "books divided by type: no\n"
            "\n"
            "report '消耗量汇总表'\n"
            "  shown: yes\n"
            "  level: 1\n"
            "  column '单位', hidden\n"
            "\n"
            "filter of discipline '给排水'\n"
            "  system codes: 'J'; current 'J'\n"
            "  component kinds: none; current ''\n"
            "  floors: '3' of '3,4'\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(StatusProcess, PrintsAStatusAsJson) {
  const SProcessResult result = RunProcess({TALLY_PROGRAM, "status", "--json", Name("status.xml")});
  EXPECT_EQ(result.output, std::string(kState) + "\n");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(StatusProcess, SaysWhyAFileIsNoStatusFile) {
  const auto expect = [&](const std::string& file, const std::string& reason) {
    const std::string message = "cannot read status file '" + file + "': " + reason;
    ExpectFault({TALLY_PROGRAM, "status", file}, message);
    ExpectFault({TALLY_PROGRAM, "report", Name("small.tally"), "--report", "1", "--status", file},
                message);
  };
  expect(Name("none.xml"), "no such file");
  expect(folder_.Path().string(), "it is a folder");
  expect("/dev/null", "it is no regular file");
  expect(Name("small.tally"), "it is not a report status file");
  tally_test::WriteBytes(folder_ / "bad.xml",
                         "<报表状态数据><报表类型><报表列状态><报表列 Visible='x'/></报表列状态>"
                         "</报表类型></报表状态数据>");
  expect(Name("bad.xml"), "an attribute's value is not a boolean");
}

TEST_F(StatusProcess, AReportTakesItsChoicesFromTheFile) {
  EXPECT_EQ(Cells({}), R"("@Cg" "管道\\给水管" "@A" "DN100" "" "m" "10" )"
                       R"("@CI" "管道长度" "m" "10" )");
  EXPECT_EQ(tally_test::ReadBytes(folder_ / "status.xml"), kFile);
}

TEST_F(StatusProcess, OptionsWinOverTheFile) {
  EXPECT_EQ(Cells({"--level", "0"}), R"("@Cg" "管道\\给水管" "@A" "DN100" "" "m" "10" )");
  EXPECT_EQ(Cells({"--level", "0", "--section", "二区"}),
            R"("@Cg" "管道\\给水管" "@A" "DN50" "材质:钢\n连接:螺纹" "m" "2.5" )");
  EXPECT_EQ(Cells({"--level", "0", "--floor", "3,4"}),
            R"("@Cg" "管道\\给水管" "@A" "DN100" "" "m" "20" )");
  EXPECT_EQ(Cells({"--sys-code", "none"}), "");
}

TEST_F(StatusProcess, TheLevelOfTheFileIsBroughtIntoRange) {
  std::string file = kFile;
  const std::string level = "<报表展开的级别>1</报表展开的级别>";
  file.replace(file.find(level), level.size(), "<报表展开的级别>-5</报表展开的级别>");
  tally_test::WriteBytes(folder_ / "status.xml", file);
  EXPECT_EQ(Cells({}), R"("@Cg" "管道\\给水管" "@A" "DN100" "" "m" "10" )");
}

TEST_F(StatusProcess, BatchReadsSetsSavesAndTells) {
  ExpectAnswers({
      {R"({"op":"status_get"})", std::string(R"({"state":)") + kEmptyState + "}"},
      {R"({"op":"status_save"})", R"({"ok":true})"},
      {ReadRequest("none.xml"), std::string(R"({"ok":false,"state":)") + kEmptyState + "}"},
      {ReadRequest("status.xml"), std::string(R"({"ok":true,"state":)") + kState + "}"},
      {ReadRequest("new.xml"),
       R"({"ok":false,"state":{"isDividedNode":false,"isBySgd":true,"dispSgd":[],)"
       R"("curSpec":"给排水","curReport":"","reports":{},"conditions":{},"trees":{}}})"},
      {std::string(R"({"op":"status_set","state":)") + kState + "}", R"({"ok":true})"},
      {R"({"op":"status_set","state":{"isBySgd":false,"curReport":"r","isDividedNode":true,)"
       R"("reports":{"消耗量汇总表":{"visible":false},"x":{}},)"
       R"("trees":{"s":{"component":{"allSelected":true,"names":["a"]},)"
       R"("floor":{"floors":[{"drawingFloor":"1","floor":"2"}]}}}}})",
       R"({"ok":true})"},
      {R"({"op":"status_save"})", R"({"ok":true})"},
      {ReadRequest("new.xml"),
       R"({"ok":true,"state":{"isDividedNode":true,"isBySgd":false,"dispSgd":["一区"],)"
       R"("curSpec":"给排水","curReport":"r",)"
       R"("reports":{"消耗量汇总表":{"visible":false,"expandLevel":1,)"
       R"("columns":[{"name":"单位","visible":false}]}},)"
       R"("conditions":{"给排水":{"allFloors":false,)"
       R"("floors":[{"drawingFloor":"3,4","floor":"3"}],"categories":[],"curCategory":"",)"
       R"("sysCodes":["J"],"curSysCode":"J"}},)"
       R"("trees":{"s":{"sysCode":{"allSelected":false,"names":[]},)"
       R"("floor":{"allSelected":false,"floors":[{"drawingFloor":"1","floor":"2"}]},)"
       R"("component":{"allSelected":true,"names":["a"]}}}}})"},
  });
}

TEST_F(StatusProcess, RowsLeaveTheirStateForASave) {
  ExpectAnswers({
      {ReadRequest("new.xml"), std::string(R"({"ok":false,"state":)") + kEmptyState + "}"},
      {R"({"op":"rows","report":1,"spec":"消防","status":{"isBySgd":true,"dispSgd":["b","a","b"]}})",
       R"({"rows":[]})"},
      {R"({"op":"status_get"})",
       R"({"state":{"isDividedNode":false,"isBySgd":true,"dispSgd":["b","a","b"],"curSpec":"",)"
       R"("curReport":"","reports":{},"conditions":{},"trees":{}}})"},
  });
}

TEST_F(StatusProcess, AFailingSaveIsAnXmlError) {
  const std::string path = Name("none/status.xml");
  const std::string failed =
      R"({"error":{"kind":"xml","code":-2147467259,"message":"cannot save ')" + path +
      R"(': No such file or directory"}})";
  ExpectAnswers({
      {ReadRequest("none/status.xml"), std::string(R"({"ok":false,"state":)") + kEmptyState + "}"},
      {R"({"op":"status_save"})", failed},
      {ReadRequest("status.xml"), failed},
      {R"({"op":"status_get"})", std::string(R"({"state":)") + kEmptyState + "}"},
      {R"({"op":"status_set","state":{"curSpec":"\u0000"}})", R"({"ok":true})"},
      {R"({"op":"status_save"})", R"({"error":{"kind":"xml","code":-2147024809,)"
                                  R"("message":"a text holds a character that XML cannot hold"}})"},
  });
}

TEST_F(StatusProcess, IllTypedStatesSetNothing) {
  const auto fault = [](const std::string& message) {
    return R"({"error":{"kind":"request","message":")" + message + R"("}})";
  };
  ExpectAnswers({
      {R"({"op":"status_read"})", fault("missing field: path")},
      {R"({"op":"status_read","path":1})", fault("ill-typed field: path")},
      {R"({"op":"status_set"})", fault("missing field: state")},
      {R"({"op":"status_set","state":[]})", fault("ill-typed field: state")},
      {R"({"op":"status_set","state":{"curSpec":"s","isBySgd":1}})",
       fault("ill-typed field: state.isBySgd")},
      {R"({"op":"status_set","state":{"curSpec":null}})", fault("ill-typed field: state.curSpec")},
      {R"({"op":"status_set","state":{"reports":[]}})", fault("ill-typed field: state.reports")},
      {R"({"op":"status_set","state":{"reports":{"r":{"expandLevel":1.0}}}})",
       fault("ill-typed field: state.reports.r.expandLevel")},
      {R"({"op":"status_set","state":{"curSpec":"s","trees":{"t":{"floor":{"floors":[{}]}}}}})",
       fault("missing field: state.trees.t.floor.floors[0].drawingFloor")},
      {R"({"op":"status_get"})", std::string(R"({"state":)") + kEmptyState + "}"},
  });
}

}  // namespace
