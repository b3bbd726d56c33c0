#include "host/batch_json.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <variant>
#include <vector>

namespace {

SRowsCall ReadRowsCall(const std::string& line) {
  return std::get<SRowsCall>(ReadBatchCall(line));
}

void ExpectFault(const std::string& line, const std::string& message) {
  try {
    ReadBatchCall(line);
    ADD_FAILURE() << "accepted: " << line;
  } catch (const CRequestError& error) {
    EXPECT_EQ(error.what(), message) << line;
  }
}

// A rows request with one more member, as in `"level":1`.
std::string Rows(const std::string& member) {
  return R"({"op":"rows","report":1,"spec":"s",)" + member + "}";
}

TEST(BatchJson, FillsWhatARowsRequestLeavesOut) {
  const SRowsCall call = ReadRowsCall(R"({"op":"rows","report":6,"spec":"给排水"})");
  EXPECT_EQ(call.report, Report::ReportPipeJRBW);
  EXPECT_EQ(call.variant, 0);
  EXPECT_EQ(call.rows.spec, L"给排水");
  EXPECT_EQ(call.rows.level, 0);
  EXPECT_EQ(call.rows.bySgd, 0);
  EXPECT_EQ(call.rows.totalType, Report::ReportPipeJRBW);
  EXPECT_FALSE(call.rows.condition.allFloors);
  EXPECT_TRUE(call.rows.condition.floors.empty());
  EXPECT_TRUE(call.rows.condition.categories.empty());
  EXPECT_EQ(call.rows.condition.curCategory, L"");
  EXPECT_TRUE(call.rows.condition.sysCodes.empty());
  EXPECT_EQ(call.rows.condition.curSysCode, L"");
  EXPECT_FALSE(call.status.isBySgd);
  EXPECT_FALSE(call.status.isDividedNode);
  EXPECT_TRUE(call.status.dispSgd.empty());
  EXPECT_TRUE(call.lineSortDown);
}

TEST(BatchJson, ReadsEveryMemberOfARowsRequest) {
  const SRowsCall call = ReadRowsCall(
      R"({"op":"rows","report":1,"variant":2,"spec":"","level":-3,"bySgd":7,"totalType":8,)"
      R"("condition":{"allFloors":true,"floors":[{"drawingFloor":"3,4","floor":"3"}],)"
      R"("categories":["b","a","b"],"curCategory":"c","sysCodes":["y","x"],"curSysCode":"z"},)"
      R"("status":{"isBySgd":true,"isDividedNode":true,"dispSgd":["二区","一区"]},)"
      R"("lineSortDown":false})");
  EXPECT_EQ(call.variant, 2);
  EXPECT_EQ(call.rows.spec, L"");
  EXPECT_EQ(call.rows.level, -3);
  EXPECT_EQ(call.rows.bySgd, 7);
  EXPECT_EQ(call.rows.totalType, Report::ReportDuctH);
  const Report::SNewCondition& condition = call.rows.condition;
  EXPECT_TRUE(condition.allFloors);
  ASSERT_EQ(condition.floors.size(), 1u);
  EXPECT_EQ(condition.floors[0].drawingFloor, L"3,4");
  EXPECT_EQ(condition.floors[0].floor, L"3");
  EXPECT_EQ(condition.categories, (std::set<std::wstring>{L"a", L"b"}));
  EXPECT_EQ(condition.curCategory, L"c");
  EXPECT_EQ(condition.sysCodes, (std::vector<std::wstring>{L"y", L"x"}));
  EXPECT_EQ(condition.curSysCode, L"z");
  EXPECT_TRUE(call.status.isBySgd);
  EXPECT_TRUE(call.status.isDividedNode);
  EXPECT_EQ(call.status.dispSgd, (std::vector<std::wstring>{L"二区", L"一区"}));
  EXPECT_FALSE(call.lineSortDown);
}

TEST(BatchJson, ReadsTheOtherRequests) {
  EXPECT_EQ(std::get<SSpecsCall>(ReadBatchCall(R"({"op":"specs","report":-9})")).report, -9);
  EXPECT_EQ(std::get<STreeCall>(ReadBatchCall(R"({"op":"tree","tree":2})")).tree, 2);
  EXPECT_FALSE(std::get<SOpenCall>(ReadBatchCall(R"({"op":"open","isQdMode":false})")).isQdMode);
}

TEST(BatchJson, TakesIntsOfThirtyTwoBitsOnly) {
  EXPECT_EQ(ReadRowsCall(Rows(R"("level":2147483647)")).rows.level, 2147483647);
  EXPECT_EQ(ReadRowsCall(Rows(R"("level":-2147483648)")).rows.level, -2147483647 - 1);
  EXPECT_EQ(ReadRowsCall(Rows(R"("level":-0)")).rows.level, 0);
  for (const char* value :
       {"2147483648", "-2147483649", "9223372036854775808", "-9223372036854775809",
        "18446744073709551616", "99999999999999999999999", "1.0", "1e0", "true", "false", "null",
        "\"1\"", "[]", "{}"}) {
    ExpectFault(Rows(std::string(R"("level":)") + value), "ill-typed field: level");
  }
}

TEST(BatchJson, RefusesIllTypedMembers) {
  ExpectFault(R"({"op":5})", "ill-typed field: op");
  ExpectFault(R"({"op":"rows","report":null,"spec":"s"})", "ill-typed field: report");
  ExpectFault(R"({"op":"rows","report":1,"spec":5})", "ill-typed field: spec");
  ExpectFault(Rows(R"("variant":null)"), "ill-typed field: variant");
  ExpectFault(Rows(R"("bySgd":true)"), "ill-typed field: bySgd");
  ExpectFault(Rows(R"("totalType":0.5)"), "ill-typed field: totalType");
  ExpectFault(Rows(R"("lineSortDown":1)"), "ill-typed field: lineSortDown");
  ExpectFault(Rows(R"("condition":null)"), "ill-typed field: condition");
  ExpectFault(Rows(R"("condition":{"allFloors":0})"), "ill-typed field: condition.allFloors");
  ExpectFault(Rows(R"("condition":{"floors":{}})"), "ill-typed field: condition.floors");
  ExpectFault(Rows(R"("condition":{"floors":["1"]})"), "ill-typed field: condition.floors[0]");
  ExpectFault(Rows(R"("condition":{"floors":[{"drawingFloor":"1","floor":1}]})"),
              "ill-typed field: condition.floors[0].floor");
  ExpectFault(Rows(R"("condition":{"categories":["a",null]})"),
              "ill-typed field: condition.categories[1]");
  ExpectFault(Rows(R"("condition":{"curCategory":null})"),
              "ill-typed field: condition.curCategory");
  ExpectFault(Rows(R"("condition":{"sysCodes":"a"})"), "ill-typed field: condition.sysCodes");
  ExpectFault(Rows(R"("condition":{"curSysCode":[]})"), "ill-typed field: condition.curSysCode");
  ExpectFault(Rows(R"("status":[])"), "ill-typed field: status");
  ExpectFault(Rows(R"("status":{"isBySgd":null})"), "ill-typed field: status.isBySgd");
  ExpectFault(Rows(R"("status":{"isDividedNode":"no"})"), "ill-typed field: status.isDividedNode");
  ExpectFault(Rows(R"("status":{"dispSgd":[1]})"), "ill-typed field: status.dispSgd[0]");
  ExpectFault(R"({"op":"tree","tree":"0"})", "ill-typed field: tree");
  ExpectFault(R"({"op":"open","isQdMode":0})", "ill-typed field: isQdMode");
}

TEST(BatchJson, RefusesARequestThatLacksAMember) {
  ExpectFault("{}", "missing field: op");
  ExpectFault(R"({"op":"rows","spec":"s"})", "missing field: report");
  ExpectFault(R"({"op":"rows","report":1})", "missing field: spec");
  ExpectFault(R"({"op":"specs"})", "missing field: report");
  ExpectFault(R"({"op":"tree"})", "missing field: tree");
  ExpectFault(R"({"op":"open"})", "missing field: isQdMode");
  ExpectFault(Rows(R"("condition":{"floors":[{"floor":"1"}]})"),
              "missing field: condition.floors[0].drawingFloor");
  ExpectFault(Rows(R"("condition":{"floors":[{"drawingFloor":"1"}]})"),
              "missing field: condition.floors[0].floor");
}

TEST(BatchJson, RefusesAnUnknownOperation) {
  ExpectFault(R"({"op":"wörk"})", "unknown op: wörk");
  ExpectFault(R"({"op":"status"})", "unknown op: status");
}

TEST(BatchJson, RefusesWhatIsNoObject) {
  for (const char* line : {"5", "null", "[]", R"("rows")"}) {
    ExpectFault(line, "the line is not a JSON object");
  }
  for (const char* line : {"", " ", "{", "{}}", "{'op':1}", "{\"op\":\"rows\",}", "rows"}) {
    ExpectFault(line, "the line is not JSON");
  }
}

TEST(BatchJson, RefusesTextsThatAreNotUnicode) {
  ExpectFault("{\"op\":\"\xFF\"}", "the line is not JSON");
  ExpectFault("{\"op\":\"\xED\xA0\x80\"}", "the line is not JSON");
  ExpectFault(R"({"op":"\ud800"})", "the line is not JSON");
  ExpectFault(R"({"op":"\udc00\ud800"})", "the line is not JSON");
}

TEST(BatchJson, ReadsEscapedTexts) {
  const SRowsCall call = ReadRowsCall(
      "{\"op\":\"rows\",\"report\":1,\"spec\":"
      R"("\u7ed9\ud83d\ude00\u0000\n"})");
  EXPECT_EQ(call.rows.spec, std::wstring(L"给\U0001F600\0\n", 4));
}

TEST(BatchJson, PassesOverMembersThatItDoesNotKnow) {
  const std::string nested = std::string(1000000, '[') + std::string(1000000, ']');
  EXPECT_EQ(ReadRowsCall(Rows(R"("more":)" + nested)).rows.spec, L"s");
  EXPECT_EQ(ReadRowsCall(Rows(R"("state":null,"condition":{"x":1})")).rows.spec, L"s");
}

}  // namespace
