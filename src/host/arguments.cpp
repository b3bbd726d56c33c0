#include "host/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <functional>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "host/host_error.h"
#include "host/joined.h"
#include "host/report_catalog.h"
#include "host/suggestion.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr const char* kVersion = "tally " TALLY_VERSION;

// Takes one value each time that it is given.
void AddRepeated(CLI::App& app, const char* name, std::vector<std::string>& values,
                 const char* valueName, const char* text) {
  app.add_option(name, values, text)->type_name(valueName)->allow_extra_args(false);
}

std::string ReportList() {
  std::string text = "Reports:\n";
  for (const SCatalogReport& report : ReportCatalog()) {
    text += "  " + std::to_string(report.type) + "  " + report.name;
    if (report.variantName != nullptr) {
      text += std::string(" (--variant ") + report.variantName + ")";
    }
    text += "  " + Utf8FromWide(report.title);
    if (report.DeepestLevel() != 0) {
      text += ", levels 0 to " + std::to_string(report.DeepestLevel());
    }
    text += "\n";
  }
  return text;
}

std::int64_t ReadRowCount(const std::string& text) {
  std::int64_t rows = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rows);
  if (error != std::errc() || end != text.data() + text.size() || rows < 1) {
    throw CHostError("--rows: '" + text + "' is not a number from 1 on");
  }
  return rows;
}

bool TakesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

// The options of a command as they are written: "--help", ...
std::vector<std::string> OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      names.push_back(Joined("--", name));
    }
  }
  return names;
}

class CCommandLine {
 public:
  CCommandLine();
  Arguments Read(const std::vector<std::string>& words);

 private:
  struct SCommand {
    CLI::App* app;
    std::function<Arguments()> read;  // after the parser
  };

  template <class TRead>
  CLI::App& AddCommand(const char* name, const char* text, TRead read);
  void AddDemo();
  void AddReport();
  void AddFilters(CLI::App& report);
  void AddOutput(CLI::App& report);
  void AddReports();
  void AddTree();
  void AddCheck();
  void AddBatch();
  void AddStatus();
  void AddConfig();
  template <class TValue>
  CLI::Option* AddSingle(CLI::App& app, const char* name, TValue& value, const char* valueName,
                         const char* text);

  void RequireCommand(const std::vector<std::string>& words) const;
  std::vector<std::string> ParserWords(const std::vector<std::string>& words) const;
  void Parse(const std::vector<std::string>& words);
  [[noreturn]] void FailOfWord(const std::string& word) const;
  Arguments ReadDemo();
  Arguments ReadReport();

  CLI::App app_{"Quantity reports out of a project database.", "tally"};
  CLI::App* command_ = &app_;  // the one that the words name
  std::vector<SCommand> commands_;
  std::vector<CLI::Option*> singles_;
  SDemoArguments demoArguments_;
  SReportArguments reportArguments_;
  SReportsArguments reportsArguments_;
  STreeArguments treeArguments_;
  SCheckArguments checkArguments_;
  SBatchArguments batchArguments_;
  SStatusArguments statusArguments_;
  SConfigArguments configArguments_;
  std::optional<std::string> rows_;
  std::optional<std::string> report_;
  std::optional<std::string> out_;
  bool sortUp_ = false;
  bool sortDown_ = false;
};

CCommandLine::CCommandLine() {
  app_.set_version_flag("--version", kVersion, "Print the version");
  app_.set_help_flag("-h,--help", "Print this help");
  app_.require_subcommand(1);
  AddDemo();
  AddReport();
  AddReports();
  AddTree();
  AddCheck();
  AddBatch();
  AddStatus();
  AddConfig();
}

template <class TRead>
CLI::App& CCommandLine::AddCommand(const char* name, const char* text, TRead read) {
  CLI::App* app = app_.add_subcommand(name, text);
  app->set_version_flag("--version", kVersion, "Print the version");
  commands_.push_back({app, std::move(read)});
  return *app;
}

void AddFile(CLI::App& app, std::string& file, const char* text) {
  app.add_option("FILE", file, text)->type_name("")->required();
}

// May be given once; the parser would speak of it in numbers.
template <class TValue>
CLI::Option* CCommandLine::AddSingle(CLI::App& app, const char* name, TValue& value,
                                     const char* valueName, const char* text) {
  singles_.push_back(app.add_option(name, value, text)
                         ->type_name(valueName)
                         ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast));
  return singles_.back();
}

void CCommandLine::AddDemo() {
  CLI::App& demo = AddCommand("demo", "Write the example project", [this] { return ReadDemo(); });
  AddFile(demo, demoArguments_.file, "Project database to write");
  AddSingle(demo, "--rows", rows_, "N", "Grow the building to about N detail rows");
}

void CCommandLine::AddReport() {
  SReportArguments& a = reportArguments_;
  CLI::App& report = AddCommand("report", "Print a report", [this] { return ReadReport(); });
  report.footer([] { return ReportList(); });
  AddFile(report, a.file, "Project database");
  CLI::Option* oneReport =
      AddSingle(report, "--report", report_, "REPORT", "Name or number of the report");
  CLI::Option* variant = AddSingle(report, "--variant", a.variant, "VARIANT",
                                   "Name or number of the report's variant");
  AddRepeated(report, "--spec", a.specs, "NAME", "A discipline; without it all of the report's");
  CLI::Option* level = AddSingle(report, "--level", a.level, "N",
                                 "How far rows are expanded; without it all the way");
  report
      .add_flag("--all", a.all,
                "Every report of every discipline, in one document or one file each in the folder "
                "OUT, by the format")
      ->excludes(oneReport)
      ->excludes(variant)
      ->excludes(level);
  AddFilters(report);
  AddOutput(report);
}

void CCommandLine::AddFilters(CLI::App& report) {
  SReportArguments& a = reportArguments_;
  AddSingle(report, "--status", a.status, "STATUS",
            "A report status file: filters, level, columns, sections and flags that no option "
            "gives");
  report.add_flag("--divided", a.divided, "Divide the calculation books by type");
  report.add_flag("--by-section", a.bySection,
                  "One block of rows for each construction section; of all sections, unless "
                  "--section names some");
  AddRepeated(report, "--section", a.sections, "NAME", "Count a construction section only");
  AddRepeated(report, "--floor", a.floors, "DRAWING[=FLOOR]",
              "Count a floor only: the drawing's, and which of those it stands for");
  AddRepeated(report, "--category", a.categories, "PATH",
              R"(Show a component category or one kind of it ("category\kind") only)");
  AddRepeated(report, "--sys-code", a.sysCodes, "PATH",
              R"(Count a system code only, names joined by "\")");
}

void CCommandLine::AddOutput(CLI::App& report) {
  SReportArguments& a = reportArguments_;
  CLI::Option* up = report.add_flag("--sort-up", sortUp_, "Pipe sizes from the smallest up");
  report.add_flag("--sort-down", sortDown_, "Pipe sizes from the largest down")->excludes(up);
  AddSingle(report, "--columns", a.columns, "NAME,...",
            "Ids or headings of the columns to show, in this order; without it all");
  AddSingle(report, "--format", a.format, "FORMAT",
            "table, csv, tsv, json, cells (one JSON string a line), xlsx or html");
  report.add_flag("--csv-safe", a.csvSafe,
                  "In csv and tsv, no text that a spreadsheet would take to compute");
  AddSingle(report, "-o,--output", out_, "OUT",
            "Write to a file; with --all, into a folder or a file, by the format");
  report.add_flag("--stats", a.stats, "Print phase times and sizes to standard error");
}

void CCommandLine::AddReports() {
  CLI::App& reports = AddCommand("reports", "List the reports and the disciplines of each",
                                 [this] { return reportsArguments_; });
  AddFile(reports, reportsArguments_.file, "Project database");
}

void CCommandLine::AddTree() {
  CLI::App& tree =
      AddCommand("tree", "Print a filter tree of the project", [this] { return treeArguments_; });
  AddFile(tree, treeArguments_.file, "Project database");
  tree.add_option("TREE", treeArguments_.tree, "floors, sys-codes or categories")
      ->type_name("")
      ->required();
}

void CCommandLine::AddCheck() {
  CLI::App& check = AddCommand("check", "Look for faults in the project's data",
                               [this] { return checkArguments_; });
  AddFile(check, checkArguments_.file, "Project database");
}

void CCommandLine::AddBatch() {
  CLI::App& batch = AddCommand("batch", "Answer requests, one JSON object a line",
                               [this] { return batchArguments_; });
  AddFile(batch, batchArguments_.file, "Project database");
}

void CCommandLine::AddStatus() {
  CLI::App& status =
      AddCommand("status", "Print a report status file", [this] { return statusArguments_; });
  AddFile(status, statusArguments_.file, "Report status file");
  status.add_flag("--json", statusArguments_.json, "As one JSON object, as 'tally batch' does");
}

void CCommandLine::AddConfig() {
  CLI::App& config = AddCommand("config", "Print or change a setting of the installation",
                                [this] { return configArguments_; });
  config.add_option("SETTING", configArguments_.setting, "line-sort: the order of pipe sizes")
      ->type_name("")
      ->required();
  config.add_option("VALUE", configArguments_.value, "up or down; without it, print the setting")
      ->type_name("");
}

// The first word is a command or an option of the program itself.
void CCommandLine::RequireCommand(const std::vector<std::string>& words) const {
  std::vector<std::string> names;
  for (const SCommand& command : commands_) {
    names.push_back(command.app->get_name());
  }
  if (words.empty()) {
    throw CHostError(Joined("no command given", KnownWords("", names)));
  }
  const std::string& first = words.front();
  if (first.starts_with('-')) {
    if (app_.get_option_no_throw(first) == nullptr) {
      FailOfWord(first);
    }
  } else if (std::find(names.begin(), names.end(), first) == names.end()) {
    throw CHostError(Joined("no command '", first, "'", KnownWords(first, names)));
  }
}

// "; see 'tally report --help'"
std::string SeeHelp(const CLI::App& command) {
  const char* program = command.get_parent() == nullptr ? "" : "tally ";
  return Joined("; see '", program, command.get_name(), " --help'");
}

void CCommandLine::FailOfWord(const std::string& word) const {
  const std::string name = word.substr(0, word.find('='));
  throw CHostError(Joined("'", word, "' is not expected", SeeHelp(*command_),
                          name.starts_with('-') ? Suggestion(name, OptionNames(*command_)) : ""));
}

// In the order that the parser wants: from the last to the first. "--spec=" and "-o=x" become two
// words: the parser would take the next word for the value that is empty, and "=x" for the other.
std::vector<std::string> CCommandLine::ParserWords(const std::vector<std::string>& words) const {
  std::vector<std::string> parserWords;
  bool isValue = false;
  bool takesOptions = true;
  for (const std::string& word : words) {
    takesOptions = takesOptions && (isValue || word != "--");
    if (takesOptions && !isValue && word == "++") {
      FailOfWord(word);  // ends a command in the parser's language, which is not this program's
    }
    const std::size_t sign = word.find('=');
    const CLI::Option* option = takesOptions && !isValue && word.starts_with('-')
                                    ? command_->get_option_no_throw(word.substr(0, sign))
                                    : nullptr;
    isValue = option != nullptr && TakesValue(*option) && sign == std::string::npos;
    if (option != nullptr && !TakesValue(*option) && sign != std::string::npos) {
      throw CHostError(Joined(word.substr(0, sign), ": takes no value", SeeHelp(*command_)));
    }
    const bool isShort = !word.starts_with("--");
    if (option != nullptr && sign != std::string::npos && (isShort || sign == word.size() - 1)) {
      parserWords.push_back(word.substr(0, sign));
      parserWords.push_back(word.substr(sign + 1));
    } else {
      parserWords.push_back(word);
    }
  }
  std::reverse(parserWords.begin(), parserWords.end());
  return parserWords;
}

void CCommandLine::Parse(const std::vector<std::string>& words) {
  try {
    app_.parse(ParserWords(words));
  } catch (const CLI::Success&) {
    throw;
  } catch (const CLI::ExtrasError&) {
    std::vector<std::string> left = app_.remaining(true);
    std::erase(left, "--");
    FailOfWord(left.empty() ? "--" : left.front());
  } catch (const CLI::ArgumentMismatch& error) {
    const std::string_view text = error.what();
    throw CHostError(
        Joined(text.substr(0, text.find(':')), ": its value is missing", SeeHelp(*command_)));
  } catch (const CLI::ParseError& error) {
    throw CHostError(error.what() + SeeHelp(*command_));
  }
  for (const CLI::Option* option : singles_) {
    if (option->count() > 1) {
      throw CHostError(option->get_name() + ": given more than once");
    }
  }
}

Arguments CCommandLine::ReadDemo() {
  if (rows_.has_value()) {
    demoArguments_.rows = ReadRowCount(*rows_);
  }
  return demoArguments_;
}

Arguments CCommandLine::ReadReport() {
  if (!reportArguments_.all && !report_.has_value()) {
    throw CHostError("--report is required; see 'tally report --help'");
  }
  if (reportArguments_.all && out_.value_or("").empty()) {
    throw CHostError("--all: the file or folder to write is missing; name it with -o");
  }
  if (out_ == "") {
    throw CHostError("--output: '' is not a file name");
  }
  reportArguments_.out = out_.value_or("");
  reportArguments_.report = report_.value_or("");
  if (sortUp_ || sortDown_) {
    reportArguments_.sortDown = sortDown_;
  }
  return reportArguments_;
}

Arguments CCommandLine::Read(const std::vector<std::string>& words) {
  RequireCommand(words);
  if (!words.front().starts_with('-')) {
    command_ = app_.get_subcommand(words.front());
  }
  try {
    Parse(words);
  } catch (const CLI::Success& request) {
    std::ostringstream text;
    app_.exit(request, text, text);
    return SHelpText{text.str()};
  }
  const auto chosen = std::find_if(commands_.begin(), commands_.end(),
                                   [this](const auto& command) { return command.app == command_; });
  return chosen->read();
}

}  // namespace

Arguments ReadArguments(const std::vector<std::string>& words) {
  return CCommandLine().Read(words);
}
