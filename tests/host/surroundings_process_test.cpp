// The program says the same wherever it runs: under another locale, in another time zone, and in
// another folder.
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/formats.h"
#include "host/program_process.h"

namespace {

using Words = std::vector<std::string>;

constexpr const char* kStatus =
    "<报表状态数据 Version=\"16.2.0\"><当前专业>给排水</当前专业></报表状态数据>";

class Surroundings : public tally_test::ProgramProcess {
 protected:
  Surroundings() {
    tally_test::WriteBytes(Name("status.xml"), kStatus);
    // Letters that Turkish folds in its own way, and a number that German writes with a comma.
    tally_test::RunSql(Project(),
                       "INSERT INTO attr VALUES (4, 'dnI20', 'i:İ'), (5, 'DNi20', 'I:ı');"
                       "INSERT INTO hz_row VALUES (5, 1, 1, 1, 1, 1, 4, 1, 1),"
                       " (6, 1, 1, 1, 1, 1, 5, 1, 1)");
  }

  /// All that every command leaves, by command: output, messages and the files that it writes.
  /// Files are called by `folder` and their name; `before` are words in front of the program's.
  std::map<std::string, std::string> Answers(const std::string& folder, const Words& before,
                                             const Words& environment) const {
    const std::string project = folder + "small.tally";
    const std::string out = folder + "out";
    std::vector<Words> commands = {
        {"--help"},
        {"report", "--help"},
        {"reprot"},
        {"report", project, "--report", "1", "--level", "1,5"},
        {"report", project, "--report", "1"},
        {"report", project, "--report", "CONSUMPTION-SUMMARY"},
        {"reports", project},
        {"tree", project, "floors"},
        {"tree", project, "sys-codes"},
        {"tree", project, "categories"},
        {"check", project},
        {"status", folder + "status.xml"},
        {"status", folder + "status.xml", "--json"},
        {"config", "line-sort"},
        {"demo", out},
    };
    for (const SFormat& format : Formats()) {
      commands.push_back({"report", project, "--report", "1", "--spec", "给排水", "--format",
                          format.name, "-o", out});
    }
    std::map<std::string, std::string> answers;
    for (const Words& command : commands) {
      Words words = before;
      words.emplace_back(TALLY_PROGRAM);
      words.insert(words.end(), command.begin(), command.end());
      const tally_test::SProcessResult result = tally_test::RunProcess(words, "", environment);
      std::string name;
      for (const std::string& word : command) {
        name += word.starts_with(folder) ? word.substr(folder.size()) : word;
        name += " ";
      }
      answers[name] = std::to_string(result.exitStatus) + "\n" + result.output + "\n" +
                      result.errors + "\n" + tally_test::ReadBytes(Name("out"));
      std::filesystem::remove(Name("out"));
    }
    return answers;
  }

  std::map<std::string, std::string> PlainAnswers() const { return Answers(Name(""), {}, {}); }

  static void ExpectSame(const std::map<std::string, std::string>& answers,
                         const std::map<std::string, std::string>& plain) {
    ASSERT_EQ(answers.size(), plain.size());
    for (const auto& [command, answer] : plain) {
      // Documents may be large and binary: where they differ is not shown.
      EXPECT_TRUE(answers.at(command) == answer) << command;
    }
  }
};

TEST_F(Surroundings, EveryCommandAnswersSomethingElse) {
  std::set<std::string> answers;
  const std::map<std::string, std::string> plain = PlainAnswers();
  for (const auto& [command, answer] : plain) {
    answers.insert(answer);
  }
  // Only the default format is written twice, once to a file.
  EXPECT_EQ(answers.size(), plain.size());
}

TEST_F(Surroundings, TheLocaleChangesNothing) {
  const std::map<std::string, std::string> plain = PlainAnswers();
  for (const char* locale :
       {"C", "C.UTF-8", "POSIX", "de_DE.UTF-8", "tr_TR.UTF-8", "zh_CN.GB2312"}) {
    SCOPED_TRACE(locale);
    ExpectSame(Answers(Name(""), {},
                       {std::string("LC_ALL=") + locale, std::string("LANG=") + locale,
                        std::string("LANGUAGE=") + locale}),
               plain);
  }
}

TEST_F(Surroundings, TheTimeZoneChangesNothing) {
  const std::map<std::string, std::string> plain = PlainAnswers();
  for (const char* zone : {"UTC0", "AAA-14", "BBB+12", "Asia/Shanghai"}) {
    SCOPED_TRACE(zone);
    ExpectSame(Answers(Name(""), {}, {std::string("TZ=") + zone}), plain);
  }
}

TEST_F(Surroundings, TheWorkingFolderChangesNothing) {
  const std::map<std::string, std::string> plain = PlainAnswers();
  const auto runIn = [](const std::string& folder) {
    return Words{"/usr/bin/env", "--chdir=" + folder};
  };
  ExpectSame(Answers(Name(""), runIn("/"), {}), plain);
  ExpectSame(Answers("", runIn(Name("")), {}), plain);
  std::filesystem::create_directory(Name("inner"));
  ExpectSame(Answers("../", runIn(Name("inner")), {}), plain);
}

TEST_F(Surroundings, AFileIsCalledInAMessageAsItWasCalledByTheUser) {
  const Words inFolder = {"/usr/bin/env", "--chdir=" + Name(""), TALLY_PROGRAM};
  const auto expect = [&inFolder](const Words& words, const std::string& message) {
    Words all = inFolder;
    all.insert(all.end(), words.begin(), words.end());
    const tally_test::SProcessResult result = tally_test::RunProcess(all);
    EXPECT_EQ(result.errors, "tally: " + message + "\n");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.exitStatus, 2);
  };
  expect({"check", "none"}, "cannot open 'none': no such file");
  expect({"check", "./none"}, "cannot open './none': no such file");
  expect({"tree", "file:small.tally?mode=rw", "floors"},
         "cannot open 'file:small.tally?mode=rw': no such file");
}

}  // namespace
