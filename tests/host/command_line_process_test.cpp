// What the program says to right and wrong command lines.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "host/program_process.h"
#include "host/report_catalog.h"
#include "platform/portable/utf8_text.h"

namespace {

using Words = std::vector<std::string>;

const Words kCommands = {"demo", "report", "reports", "tree", "check", "batch", "status", "config"};
constexpr const char* kCommandList =
    "; there is demo, report, reports, tree, check, batch, status, config";

struct SOption {
  std::string command;
  std::string name;
  bool takesValue;
};

class CommandLineProcess : public tally_test::ProgramProcess {
 protected:
  static std::string SeeHelp(const std::string& command) {
    return "; see 'tally " + command + " --help'";
  }

  /// Every long option, as the commands' helps list them.
  static std::vector<SOption> ListedOptions() {
    const std::regex option("  (-\\w,)?(--[a-z-]+)( [^ ]*[^ :])?( .*)?");
    std::vector<SOption> options;
    for (const std::string& command : kCommands) {
      std::istringstream lines(Run({command, "--help"}).output);
      std::smatch match;
      for (std::string line; std::getline(lines, line);) {
        if (std::regex_match(line, match, option)) {
          options.push_back({command, match[2], match[3].length() > 0});
        }
      }
    }
    return options;
  }

  /// A command with all that it requires, so that only `more` can be wrong.
  Words Complete(const std::string& command, const Words& more) const {
    Words words = {command, command == "config" ? "line-sort" : Name("none")};
    if (command == "tree") {
      words.emplace_back("floors");
    }
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }
};

TEST_F(CommandLineProcess, PrintsTheVersion) {
  const std::string version = Run({"--version"}).output;
  EXPECT_TRUE(std::regex_match(version, std::regex("tally \\d+\\.\\d+\\.\\d+\n"))) << version;
  for (const std::string& command : kCommands) {
    ExpectOutput({command, "--version"}, version);
  }
}

TEST_F(CommandLineProcess, PrintsAHelp) {
  for (const char* option : {"--help", "-h"}) {
    ExpectOutput({option},
                 "Quantity reports out of a project database.\n"
                 "Usage: tally [OPTIONS] SUBCOMMAND\n"
                 "\n"
                 "Options:\n"
                 "  --version                   Print the version\n"
                 "  -h,--help                   Print this help\n"
                 "\n"
                 "Subcommands:\n"
                 "  demo                        Write the example project\n"
                 "  report                      Print a report\n"
                 "  reports                     List the reports and the disciplines of each\n"
                 "  tree                        Print a filter tree of the project\n"
                 "  check                       Look for faults in the project's data\n"
                 "  batch                       Answer requests, one JSON object a line\n"
                 "  status                      Print a report status file\n"
                 "  config                      Print or change a setting of the installation\n\n");
  }
}

TEST_F(CommandLineProcess, PrintsTheHelpOfACommand) {
  const std::string options =
      "\n"
      "Options:\n"
      "  -h,--help                   Print this help\n"
      "  --version                   Print the version\n";
  const std::string project = "\nPositionals:\n  FILE REQUIRED               Project database\n";
  ExpectOutput({"demo", "--help"},
               "Write the example project\n"
               "Usage: tally demo [OPTIONS] FILE\n"
               "\n"
               "Positionals:\n"
               "  FILE REQUIRED               Project database to write\n" +
                   options +
                   "  --rows N                    Grow the building to about N detail rows\n\n");
  ExpectOutput({"reports", "--help"},
               "List the reports and the disciplines of each\n"
               "Usage: tally reports [OPTIONS] FILE\n" +
                   project + options + "\n");
  ExpectOutput({"tree", "--help"},
               "Print a filter tree of the project\n"
               "Usage: tally tree [OPTIONS] FILE TREE\n" +
                   project + "  TREE REQUIRED               floors, sys-codes or categories\n" +
                   options + "\n");
  ExpectOutput({"check", "-h"},
               "Look for faults in the project's data\n"
               "Usage: tally check [OPTIONS] FILE\n" +
                   project + options + "\n");
  ExpectOutput({"batch", "--help"},
               "Answer requests, one JSON object a line\n"
               "Usage: tally batch [OPTIONS] FILE\n" +
                   project + options + "\n");
  ExpectOutput({"status", "--help"},
               "Print a report status file\n"
               "Usage: tally status [OPTIONS] FILE\n"
               "\n"
               "Positionals:\n"
               "  FILE REQUIRED               Report status file\n" +
                   options +
                   "  --json                      As one JSON object, as 'tally batch' does\n\n");
  ExpectOutput({"config", "--help"},
               "Print or change a setting of the installation\n"
               "Usage: tally config [OPTIONS] SETTING [VALUE]\n"
               "\n"
               "Positionals:\n"
               "  SETTING REQUIRED            line-sort: the order of pipe sizes\n"
               "  VALUE                       up or down; without it, print the setting\n" +
                   options + "\n");
}

TEST_F(CommandLineProcess, TheHelpOfReportListsReportsAndFormats) {
  const std::string help = Run({"report", "--help"}).output;
  EXPECT_TRUE(help.starts_with("Print a report\nUsage: tally report [OPTIONS] FILE\n")) << help;
  for (const SCatalogReport& report : ReportCatalog()) {
    const std::string variant =
        report.variantName == nullptr ? "" : std::string(" (--variant ") + report.variantName + ")";
    const std::string line = "  " + std::to_string(report.type) + "  " + report.name + variant +
                             "  " + Utf8FromWide(report.title);
    EXPECT_NE(help.find(line), std::string::npos) << line;
  }
  EXPECT_NE(help.find("table, csv, tsv, json, cells (one JSON string a line), xlsx or html\n"),
            std::string::npos);
}

TEST_F(CommandLineProcess, AsksForTheValueOfEveryOption) {
  Words asked;
  for (const SOption& option : ListedOptions()) {
    if (option.takesValue) {
      ExpectFault(Complete(option.command, {option.name}),
                  option.name + ": its value is missing" + SeeHelp(option.command));
      asked.push_back(option.command + " " + option.name);
    }
  }
  EXPECT_EQ(asked, (Words{"demo --rows", "report --report", "report --variant", "report --spec",
                          "report --level", "report --status", "report --section", "report --floor",
                          "report --category", "report --sys-code", "report --columns",
                          "report --format", "report --output"}));
  ExpectFault(Complete("report", {"-o"}), "--output: its value is missing" + SeeHelp("report"));
}

TEST_F(CommandLineProcess, TakesNoValueForAFlag) {
  std::size_t flags = 0;
  for (const SOption& option : ListedOptions()) {
    if (!option.takesValue) {
      ++flags;
      for (const char* value : {"=", "=1", "=false", "=x=y"}) {
        ExpectFault(Complete(option.command, {option.name + value}),
                    option.name + ": takes no value" + SeeHelp(option.command));
      }
    }
  }
  // Help and version of each command; seven flags of reports, and --json.
  EXPECT_EQ(flags, 2 * kCommands.size() + 7 + 1);
}

TEST_F(CommandLineProcess, TakesAnOptionWithOneValueOnce) {
  const std::vector<std::string> repeated = {"--spec", "--section", "--floor", "--category",
                                             "--sys-code"};
  std::size_t singles = 0;
  for (const SOption& option : ListedOptions()) {
    if (option.takesValue &&
        std::find(repeated.begin(), repeated.end(), option.name) == repeated.end()) {
      ++singles;
      ExpectFault(Complete(option.command, {option.name, "1", option.name, "1"}),
                  option.name + ": given more than once");
    }
  }
  EXPECT_EQ(singles, 8U);
}

TEST_F(CommandLineProcess, SuggestsOptions) {
  for (const SOption& option : ListedOptions()) {
    // The last two letters swapped; a name that ends in a double letter gets a third.
    std::string misspelt = option.name;
    std::swap(misspelt[misspelt.size() - 1], misspelt[misspelt.size() - 2]);
    misspelt = misspelt == option.name ? misspelt + misspelt.back() : misspelt;
    const std::string fault =
        " is not expected" + SeeHelp(option.command) + "; did you mean '" + option.name + "'?";
    ExpectFault(Complete(option.command, {misspelt}), "'" + misspelt + "'" + fault);
    ExpectFault(Complete(option.command, {misspelt + "=1"}), "'" + misspelt + "=1'" + fault);
  }
  ExpectFault(Complete("report", {"--lvel", "2"}),
              "'--lvel' is not expected" + SeeHelp("report") + "; did you mean '--level'?");
}

TEST_F(CommandLineProcess, RefusesWhatNoCommandExpects) {
  for (const std::string& command : kCommands) {
    Words words = Complete(command, {});
    if (command == "config") {
      words.emplace_back("up");
    }
    words.emplace_back("further");
    ExpectFault(words, "'further' is not expected" + SeeHelp(command));
    words.back() = "--colour";
    ExpectFault(words, "'--colour' is not expected" + SeeHelp(command));
    words.back() = "-x";
    ExpectFault(words, "'-x' is not expected" + SeeHelp(command));
    words.back() = "++";
    ExpectFault(words, "'++' is not expected" + SeeHelp(command));
  }
}

TEST_F(CommandLineProcess, AsksForWhatACommandRequires) {
  for (const std::string& command : kCommands) {
    const std::string required = command == "config" ? "SETTING" : "FILE";
    ExpectFault({command}, required + " is required" + SeeHelp(command));
  }
  ExpectFault({"tree", "file"}, "TREE is required" + SeeHelp("tree"));
  ExpectFault({"report", "file"}, "--report is required" + SeeHelp("report"));
  ExpectFault({"report", "file", "--all"},
              "--all: the file or folder to write is missing; name it with -o");
  ExpectFault({"report", "file", "--all", "-o", ""},
              "--all: the file or folder to write is missing; name it with -o");
  ExpectFault({"report", "file", "--report", "1", "--output="}, "--output: '' is not a file name");
}

TEST_F(CommandLineProcess, RefusesOptionsThatExcludeEachOther) {
  const auto expect = [this](const Words& options, const std::string& message) {
    ExpectFault(Complete("report", options), message + SeeHelp("report"));
  };
  expect({"--all", "-o", "x", "--report", "1"}, "--report excludes --all");
  expect({"--all", "-o", "x", "--variant", "1"}, "--variant excludes --all");
  expect({"--all", "-o", "x", "--level", "1"}, "--level excludes --all");
  expect({"--report", "1", "--sort-up", "--sort-down"}, "--sort-up excludes --sort-down");
}

TEST_F(CommandLineProcess, ListsAndSuggestsCommands) {
  const std::string list = kCommandList;
  ExpectFault({}, "no command given" + list);
  ExpectFault({""}, "no command ''" + list);
  ExpectFault({"reprot"}, "no command 'reprot'" + list + "; did you mean 'report'?");
  ExpectFault({"Check", "x"}, "no command 'Check'" + list + "; did you mean 'check'?");
  ExpectFault({"print"}, "no command 'print'" + list);
  ExpectFault({"--hlep"}, "'--hlep' is not expected; see 'tally --help'; did you mean '--help'?");
  ExpectFault({"--level"}, "'--level' is not expected; see 'tally --help'");
  ExpectFault({"-x"}, "'-x' is not expected; see 'tally --help'");
  ExpectFault({"--"}, "'--' is not expected; see 'tally --help'");
  ExpectFault({"--version=1"}, "'--version=1' is not expected; see 'tally --help'");
}

TEST_F(CommandLineProcess, WantsANumberOfRows) {
  for (const std::string value : {"", "0", "-1", "1.5", "1e3", " 1", "x", "99999999999999999999"}) {
    ExpectFault({"demo", Name("new.tally"), "--rows", value},
                "--rows: '" + value + "' is not a number from 1 on");
  }
  EXPECT_FALSE(std::filesystem::exists(Name("new.tally")));
}

TEST_F(CommandLineProcess, KeepsAMessageOnOneLine) {
  ExpectFault({"a\nb\x1B\xFF"}, "no command 'a; b␛�'" + std::string(kCommandList));
  ExpectFault({"check", "a", "b\r\nc"}, "'b; c' is not expected; see 'tally check --help'");
}

}  // namespace
