// `tally batch`, driven through its pipes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/small_project.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using tally_test::CProcess;
using tally_test::SProcessResult;

class BatchProcess : public testing::Test {
 protected:
  BatchProcess() { tally_test::CreateProjectDatabase(Project(), kSmallProject); }

  std::string Project() const { return (folder_ / "small.tally").string(); }

  /// Sends the requests and compares the answers, line by line.
  void ExpectAnswers(const std::vector<std::pair<std::string, std::string>>& exchange) const {
    std::string input;
    std::string output;
    for (const auto& [request, answer] : exchange) {
      input += request + "\n";
      output += answer + "\n";
    }
    const SProcessResult result =
        tally_test::RunProcess({TALLY_PROGRAM, "batch", Project()}, input);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 0);
  }

  tally_test::CTempFolder folder_;
};

constexpr const char* kWater = R"({"op":"rows","report":1,"spec":"给排水"})";
constexpr const char* kWaterRows = R"({"rows":["@Cg","管道\\给水管","@A","DN100","","m","20",)"
                                   R"("@A","DN50","材质:钢\n连接:螺纹","m","7.5"]})";

TEST_F(BatchProcess, AnswersRows) {
  ExpectAnswers({
      {kWater, kWaterRows},
      {R"({"op":"rows","report":1,"spec":"电气","level":1})",
       R"({"rows":["@Cg","穿管引线\\配管","@A","@F","","m","0","@CI","电线长度","m","4"]})"},
      {R"({"op":"rows","report":1,"spec":"给排水","level":2,)"
       R"("condition":{"floors":[{"drawingFloor":"3,4","floor":"3"}],"sysCodes":["J"]}})",
       R"({"rows":["@Cg","管道\\给水管","@A","DN100","","m","10","@CI","管道长度","m","10",)"
       R"("@F","3,4","3","m","10","@A","DN50","材质:钢\n连接:螺纹","m","2.5",)"
       R"("@CI","管道长度","m","2.5","@F","3,4","3","m","2.5"]})"},
      {R"({"op":"rows","report":1,"spec":"消防"})", R"({"rows":[]})"},
  });
}

TEST_F(BatchProcess, AnswersNullWhereThereIsNoSuchReport) {
  ExpectAnswers({
      {R"({"op":"rows","report":2,"spec":"给排水"})", R"({"rows":null})"},
      {R"({"op":"rows","report":99,"spec":"给排水"})", R"({"rows":null})"},
      {R"({"op":"rows","report":-2147483648,"spec":"给排水"})", R"({"rows":null})"},
  });
}

TEST_F(BatchProcess, KeepsNoStateFromTheRequestBefore) {
  ExpectAnswers({
      {R"({"op":"rows","report":1,"spec":"给排水","bySgd":1,"lineSortDown":false,)"
       R"("condition":{"categories":["管道"]},"status":{"isBySgd":true,"dispSgd":["二区"]}})",
       R"({"rows":["@P","二区","@Cg","管道\\给水管","@A","DN50","材质:钢\n连接:螺纹","m","5"]})"},
      {kWater, kWaterRows},
      {R"({"op":"rows","report":1,"spec":"给排水","lineSortDown":false})",
       R"({"rows":["@Cg","管道\\给水管","@A","DN50","材质:钢\n连接:螺纹","m","7.5",)"
       R"("@A","DN100","","m","20"]})"},
      {R"({"op":"rows","report":1,"spec":"给排水","lineSortDown":false,"level":null})",
       R"({"error":{"kind":"request","message":"ill-typed field: level"}})"},
      {kWater, kWaterRows},
  });
}

TEST_F(BatchProcess, AnswersSpecsAndTrees) {
  ExpectAnswers({
      {R"({"op":"specs","report":1})", R"({"specs":["给排水","电气"]})"},
      {R"({"op":"specs","report":4})", R"({"specs":[]})"},
      {R"({"op":"specs","report":2})", R"({"specs":[]})"},
      {R"({"op":"tree","tree":0})",
       R"({"floors":[{"name":"-1","grade":-100},{"name":"3,4","grade":299}]})"},
      {R"({"op":"tree","tree":1})", R"({"map":{"给排水":["J&*J"]}})"},
      {R"({"op":"tree","tree":2})",
       R"({"map":{"电气":["穿管引线\\配管"],"给排水":["管道\\给水管"]}})"},
      {R"({"op":"tree","tree":3})", R"({"tree":null})"},
      {R"({"op":"tree","tree":-1})", R"({"tree":null})"},
  });
}

TEST_F(BatchProcess, AnswersEmptyTrees) {
  tally_test::RunSql(
      Project(), "DELETE FROM all_floor; DELETE FROM all_sys_code; DELETE FROM all_small_index");
  ExpectAnswers({
      {R"({"op":"tree","tree":0})", R"({"floors":[]})"},
      {R"({"op":"tree","tree":1})", R"({"map":{}})"},
      {R"({"op":"tree","tree":2})", R"({"map":{}})"},
  });
}

TEST_F(BatchProcess, OpensTheProjectAnew) {
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  const auto ask = [&batch](const std::string& request) {
    batch.Write(request + "\n");
    return batch.ReadLine();
  };
  EXPECT_EQ(ask(kWater), kWaterRows);
  tally_test::RunSql(Project(), "UPDATE spec SET name = '暖通' WHERE id = 1");
  EXPECT_EQ(ask(R"({"op":"open","isQdMode":true})"), R"({"ok":true})");  // as it is
  EXPECT_EQ(ask(kWater), kWaterRows);
  EXPECT_EQ(ask(R"({"op":"open","isQdMode":false})"), R"({"ok":true})");
  EXPECT_EQ(ask(kWater), R"({"rows":[]})");
  EXPECT_EQ(ask(R"({"op":"specs","report":1})"), R"({"specs":["暖通","电气"]})");
  EXPECT_EQ(batch.Wait().exitStatus, 0);
}

TEST_F(BatchProcess, StartsWithTheProjectsOwnMode) {
  tally_test::RunSql(Project(), "INSERT INTO setting VALUES ('is_qd_mode', '0')");
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  const auto ask = [&batch](const std::string& request) {
    batch.Write(request + "\n");
    return batch.ReadLine();
  };
  EXPECT_EQ(ask(kWater), kWaterRows);
  tally_test::RunSql(Project(), "DELETE FROM hz_row");
  EXPECT_EQ(ask(R"({"op":"open","isQdMode":false})"), R"({"ok":true})");  // as it is
  EXPECT_EQ(ask(kWater), kWaterRows);
  EXPECT_EQ(ask(R"({"op":"open","isQdMode":true})"), R"({"ok":true})");
  EXPECT_EQ(ask(kWater), R"({"rows":[]})");
}

TEST_F(BatchProcess, GoesOnAfterAnError) {
  ExpectAnswers({
      {"", R"({"error":{"kind":"request","message":"the line is not JSON"}})"},
      {"[]", R"({"error":{"kind":"request","message":"the line is not a JSON object"}})"},
      {R"({"op":"status"})", R"({"error":{"kind":"request","message":"unknown op: status"}})"},
      {R"({"op":"a\"\u0001"})",
       R"({"error":{"kind":"request","message":"unknown op: a\"\u0001"}})"},
      {kWater, kWaterRows},
  });
}

TEST_F(BatchProcess, AnswersALineWithoutALineEnd) {
  const SProcessResult result = tally_test::RunProcess({TALLY_PROGRAM, "batch", Project()}, kWater);
  EXPECT_EQ(result.output, std::string(kWaterRows) + "\n");
}

TEST_F(BatchProcess, TellsThatAResultSetCouldNotBeReadForAsLongAsItIsNot) {
  tally_test::RunSql(Project(), "ALTER TABLE hz_row RENAME TO gone; DROP TABLE cg_row");
  const std::string failure =
      R"({"error":{"kind":"read","message":"cannot read table hz_row of ')" + Project() +
      R"(': no such table: hz_row"}})";
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  const auto ask = [&batch](const std::string& request) {
    batch.Write(request + "\n");
    return batch.ReadLine();
  };
  EXPECT_EQ(ask(kWater), failure);
  EXPECT_EQ(ask(kWater), failure);
  EXPECT_EQ(ask(R"({"op":"specs","report":1})"), failure);
  EXPECT_EQ(ask(R"({"op":"specs","report":4})"),
            R"({"error":{"kind":"read","message":"cannot read table cg_row of ')" + Project() +
                R"(': no such table: cg_row"}})");
  EXPECT_EQ(ask(R"({"op":"specs","report":3})"), R"({"specs":[]})");
  tally_test::RunSql(Project(), "ALTER TABLE gone RENAME TO hz_row");
  EXPECT_EQ(ask(kWater), failure);
  EXPECT_EQ(ask(R"({"op":"open","isQdMode":false})"), R"({"ok":true})");
  EXPECT_EQ(ask(kWater), kWaterRows);
}

TEST_F(BatchProcess, TellsThatATreeCouldNotBeRead) {
  tally_test::RunSql(Project(), "DROP TABLE all_floor");
  ExpectAnswers({
      {R"({"op":"tree","tree":0})",
       R"({"error":{"kind":"read","message":"cannot read table all_floor of ')" + Project() +
           R"(': no such table: all_floor"}})"},
      {R"({"op":"tree","tree":1})", R"({"map":{"给排水":["J&*J"]}})"},
      {kWater, kWaterRows},
  });
}

TEST_F(BatchProcess, TellsThatAnIndexIsOutOfRange) {
  tally_test::RunSql(Project(), "DELETE FROM component WHERE id = 2");
  const std::string failure =
      R"({"error":{"kind":"out_of_range","message":"a row names a record that its table lacks"}})";
  ExpectAnswers({
      {kWater, failure},
      {kWater, failure},
      {R"({"op":"specs","report":1})", R"({"specs":["给排水","电气"]})"},
  });
}

TEST_F(BatchProcess, EndsWhereTheProjectDoesNotOpen) {
  tally_test::RunSql(Project(), "PRAGMA user_version = 8");
  const SProcessResult result =
      tally_test::RunProcess({TALLY_PROGRAM, "batch", Project()}, std::string(kWater) + "\n");
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "tally: cannot open '" + Project() + "': its format is version 8, not version 9\n");
}

TEST_F(BatchProcess, EndsWhereItsOutputIsClosed) {
  CProcess batch({TALLY_PROGRAM, "batch", Project()});
  batch.CloseOutput();
  batch.Write(std::string(kWater) + "\n");
  const SProcessResult result = batch.Wait();
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, "tally: cannot write to standard output: Broken pipe\n");
}

}  // namespace
