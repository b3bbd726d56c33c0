// What nobody means to type: requests that are no requests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/program_process.h"

namespace {

using tally_test::RunProcess;
using tally_test::SProcessResult;

class HostileInput : public tally_test::ProgramProcess {
 protected:
  /// The answers to the lines; one that can be answered stands behind them, and is.
  std::vector<std::string> Answers(const std::string& lines) const {
    const SProcessResult result =
        RunProcess({TALLY_PROGRAM, "batch", Project()}, lines +
                                                            "\n"
                                                            R"({"op":"specs","report":1})");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    std::vector<std::string> answers;
    std::size_t at = 0;
    for (std::size_t end = result.output.find('\n'); end != std::string::npos;
         end = result.output.find('\n', at)) {
      answers.push_back(result.output.substr(at, end - at));
      at = end + 1;
    }
    EXPECT_EQ(at, result.output.size());
    EXPECT_EQ(answers.empty() ? "" : answers.back(), R"({"specs":["给排水","电气"]})");
    if (!answers.empty()) {
      answers.pop_back();
    }
    return answers;
  }

  static bool IsRefused(const std::string& answer) {
    return answer.starts_with(R"({"error":{"kind":"request","message":")");
  }
};

TEST_F(HostileInput, LinesThatAreNoRequestsAreRefusedOneByOne) {
  const std::vector<std::string> lines = {
      "",
      "x",
      "{",
      "null",
      "[]",
      "\"rows\"",
      "{}",
      R"({"op":null})",
      R"({"op":7})",
      R"({"op":"ROWS"})",
      R"({"op":"rows"})",
      R"({"op":"rows","report":"1","spec":"给排水"})",
      R"({"op":"rows","report":1.5,"spec":"给排水"})",
      R"({"op":"rows","report":99999999999999999999,"spec":"给排水"})",
      R"({"op":"rows","report":1,"spec":["给排水"]})",
      R"({"op":"rows","report":1,"spec":"给排水","level":true})",
      R"({"op":"rows","report":1,"spec":"给排水","condition":[]})",
      R"({"op":"rows","report":1,"spec":"给排水","condition":{"floors":[{"floor":"1"}]}})",
      R"({"op":"rows","report":1,"spec":"给排水","status":{"dispSgd":"一区"}})",
      R"({"op":"rows","report":1,"spec":"\ud800"})",
      R"({"op":"specs","report":1} {"op":"specs","report":1})",
      "{\"op\":\"specs\",\"report\":1,\"x\":\"\xFF\xFE\"}",
      "{\"op\":\"sp\xC0\x80"
      "ecs\",\"report\":1}",
      std::string("{\"op\":\"specs\",\"report\":1}\0x", 27),
  };
  std::string input;
  for (const std::string& line : lines) {
    input += (input.empty() && &line == &lines.front() ? "" : "\n") + line;
  }
  const std::vector<std::string> answers = Answers(input);
  ASSERT_EQ(answers.size(), lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_TRUE(IsRefused(answers[i])) << lines[i] << "\n" << answers[i];
  }
}

TEST_F(HostileInput, DeepJsonIsRefused) {
  for (const char* open : {"[", R"({"a":)"}) {
    std::string line;
    for (int i = 0; i < 200000; ++i) {
      line += open;
    }
    const std::vector<std::string> answers = Answers(line);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_TRUE(IsRefused(answers[0])) << answers[0].substr(0, 200);
  }
}

TEST_F(HostileInput, AnEnormousLineIsAnswered) {
  const std::string text(20 << 20, 'x');
  const std::vector<std::string> answers =
      Answers(R"({"op":"rows","report":1,"spec":")" + text + "\"}\n" + text);
  ASSERT_EQ(answers.size(), 2u);
  EXPECT_EQ(answers[0], R"({"rows":[]})");
  EXPECT_TRUE(IsRefused(answers[1])) << answers[1].substr(0, 200);
}

TEST_F(HostileInput, ManySelectionsAreAnswered) {
  std::string floors;
  for (int i = 0; i < 20000; ++i) {
    floors += (i == 0 ? "" : ",") + std::string(R"({"drawingFloor":")") + std::to_string(i) +
              R"(","floor":"1"})";
  }
  const std::vector<std::string> answers = Answers(
      R"({"op":"rows","report":1,"spec":"给排水","condition":{"floors":[)" + floors + "]}}");
  ASSERT_EQ(answers.size(), 1u);
  EXPECT_EQ(answers[0], R"({"rows":[]})");
}

TEST_F(HostileInput, EveryNumberIsALevelAndAReport) {
  for (const char* number : {"-2147483648", "-1", "0", "5", "1000", "2147483647"}) {
    const std::string level = number;
    const std::vector<std::string> answers =
        Answers(R"({"op":"rows","report":1,"spec":"给排水","level":)" + level + "}\n" +
                R"({"op":"rows","report":)" + level + R"(,"variant":)" + level +
                R"(,"spec":"给排水","bySgd":)" + level + R"(,"totalType":)" + level + "}");
    ASSERT_EQ(answers.size(), 2u);
    EXPECT_TRUE(answers[0].starts_with(R"({"rows":[)")) << answers[0];
    EXPECT_TRUE(answers[1].starts_with(R"({"rows":)")) << answers[1];
  }
}

}  // namespace
