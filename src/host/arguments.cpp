#include "host/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>

#include "host/host_error.h"
#include "host/report_catalog.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr const char* kVersion = "tally " TALLY_VERSION;
constexpr std::string_view kCommands[] = {"demo", "report", "batch", "status"};

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

// The first word is a command or an option.
void RequireCommand(const std::vector<std::string>& words) {
  constexpr const char* kAllowed = "; there is demo, report, batch, status";
  if (words.empty()) {
    throw CHostError(std::string("no command given") + kAllowed);
  }
  constexpr std::string_view kTexts[] = {"-h", "--help", "--version"};
  const std::string& first = words.front();
  if (std::find(std::begin(kTexts), std::end(kTexts), first) == std::end(kTexts) &&
      std::find(std::begin(kCommands), std::end(kCommands), first) == std::end(kCommands)) {
    throw CHostError("no command '" + first + "'" + kAllowed);
  }
}

// In the order that the parser wants: from the last to the first. "--spec=" becomes two words, as
// the parser would take the next word for the value that is empty.
std::vector<std::string> ParserWords(const std::vector<std::string>& words) {
  std::vector<std::string> parserWords;
  for (const std::string& word : words) {
    if (word.starts_with("--") && word.size() > 3 && word.find('=') == word.size() - 1) {
      parserWords.push_back(word.substr(0, word.size() - 1));
      parserWords.emplace_back();
    } else {
      parserWords.push_back(word);
    }
  }
  std::reverse(parserWords.begin(), parserWords.end());
  return parserWords;
}

class CCommandLine {
 public:
  CCommandLine();
  Arguments Read(const std::vector<std::string>& words);

 private:
  void AddDemo();
  void AddReport();
  void AddBatch();
  void AddStatus();
  template <class TValue>
  void AddSingle(CLI::App& app, const char* name, TValue& value, const char* valueName,
                 const char* text);
  void Parse(const std::vector<std::string>& words);
  void RequireReport() const;

  CLI::App app_{"Quantity reports out of a project database.", "tally"};
  CLI::App* demo_ = nullptr;
  CLI::App* report_ = nullptr;
  CLI::App* batch_ = nullptr;
  CLI::App* status_ = nullptr;
  SDemoArguments demoArguments_;
  SReportArguments reportArguments_;
  SBatchArguments batchArguments_;
  SStatusArguments statusArguments_;
  std::vector<CLI::Option*> singles_;
  std::optional<std::string> rows_;
  bool sortUp_ = false;
  bool sortDown_ = false;
};

CCommandLine::CCommandLine() {
  app_.set_version_flag("--version", kVersion, "Print the version");
  app_.set_help_flag("-h,--help", "Print this help");
  app_.require_subcommand(1);
  AddDemo();
  AddReport();
  AddBatch();
  AddStatus();
}

// May be given once; the parser would speak of it in numbers.
template <class TValue>
void CCommandLine::AddSingle(CLI::App& app, const char* name, TValue& value, const char* valueName,
                             const char* text) {
  singles_.push_back(app.add_option(name, value, text)
                         ->type_name(valueName)
                         ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast));
}

void CCommandLine::AddDemo() {
  demo_ = app_.add_subcommand("demo", "Write the example project");
  demo_->add_option("FILE", demoArguments_.file, "Project database to write")
      ->type_name("")
      ->required();
  AddSingle(*demo_, "--rows", rows_, "N", "Grow the building to about N detail rows");
}

void CCommandLine::AddReport() {
  SReportArguments& a = reportArguments_;
  report_ = app_.add_subcommand("report", "Print a report");
  report_->footer([] { return ReportList(); });
  report_->add_option("FILE", a.file, "Project database")->type_name("")->required();
  AddSingle(*report_, "--report", a.report, "REPORT", "Name or number of the report");
  CLI::Option* oneReport = singles_.back();
  AddSingle(*report_, "--variant", a.variant, "VARIANT", "Name or number of the report's variant");
  CLI::Option* variant = singles_.back();
  AddRepeated(*report_, "--spec", a.specs, "NAME", "A discipline; without it all of the report's");
  AddSingle(*report_, "--level", a.level, "N", "How far rows are expanded; without it all the way");
  report_
      ->add_flag("--all", a.all,
                 "Every report of every discipline, one file each in the folder OUT")
      ->excludes(oneReport)
      ->excludes(variant)
      ->excludes(singles_.back());
  AddSingle(*report_, "--status", a.status, "STATUS",
            "A report status file: filters, level, sections and flags that no option gives");
  report_->add_flag("--divided", a.divided, "Divide the calculation books by type");
  report_->add_flag("--by-section", a.bySection,
                    "One block of rows for each construction section; of all sections, unless "
                    "--section names some");
  AddRepeated(*report_, "--section", a.sections, "NAME", "Count a construction section only");
  AddRepeated(*report_, "--floor", a.floors, "DRAWING[=FLOOR]",
              "Count a floor only: the drawing's, and which of those it stands for");
  AddRepeated(*report_, "--category", a.categories, "PATH",
              R"(Show a component category or one kind of it ("category\kind") only)");
  AddRepeated(*report_, "--sys-code", a.sysCodes, "PATH",
              R"(Count a system code only, names joined by "\")");
  auto* up = report_->add_flag("--sort-up", sortUp_, "Pipe sizes from the smallest up");
  report_->add_flag("--sort-down", sortDown_, "Pipe sizes from the largest down")->excludes(up);
  AddSingle(*report_, "--format", a.format, "FORMAT", "table, or cells: one JSON string a line");
  AddSingle(*report_, "-o,--output", a.out, "OUT", "Write to a file; with --all, into a folder");
}

void CCommandLine::AddBatch() {
  batch_ = app_.add_subcommand("batch", "Answer requests, one JSON object a line");
  batch_->add_option("FILE", batchArguments_.file, "Project database")->type_name("")->required();
}

void CCommandLine::AddStatus() {
  status_ = app_.add_subcommand("status", "Print a report status file");
  status_->add_option("FILE", statusArguments_.file, "Report status file")
      ->type_name("")
      ->required();
  status_->add_flag("--json", statusArguments_.json, "As one JSON object, as 'tally batch' does");
}

void CCommandLine::Parse(const std::vector<std::string>& words) {
  const std::string help = "; see 'tally " + words.front() + " --help'";
  try {
    app_.parse(ParserWords(words));
  } catch (const CLI::Success&) {
    throw;
  } catch (const CLI::ExtrasError&) {
    throw CHostError("'" + app_.remaining(true).front() + "' is not expected" + help);
  } catch (const CLI::ArgumentMismatch& error) {
    const std::string_view text = error.what();
    throw CHostError(std::string(text.substr(0, text.find(':'))) + ": its value is missing" + help);
  } catch (const CLI::ParseError& error) {
    throw CHostError(error.what() + help);
  }
  for (const CLI::Option* option : singles_) {
    if (option->count() > 1) {
      throw CHostError(option->get_name() + ": given more than once");
    }
  }
}

void CCommandLine::RequireReport() const {
  if (!reportArguments_.all && report_->count("--report") == 0) {
    throw CHostError("--report is required; see 'tally report --help'");
  }
  if (reportArguments_.all && reportArguments_.out.empty()) {
    throw CHostError("--all: the folder is missing; name it with -o");
  }
}

Arguments CCommandLine::Read(const std::vector<std::string>& words) {
  RequireCommand(words);
  try {
    Parse(words);
  } catch (const CLI::Success& request) {
    std::ostringstream text;
    app_.exit(request, text, text);
    return SHelpText{text.str()};
  }
  if (demo_->parsed()) {
    if (rows_.has_value()) {
      demoArguments_.rows = ReadRowCount(*rows_);
    }
    return demoArguments_;
  }
  if (batch_->parsed()) {
    return batchArguments_;
  }
  if (status_->parsed()) {
    return statusArguments_;
  }
  RequireReport();
  if (sortUp_ || sortDown_) {
    reportArguments_.sortDown = sortDown_;
  }
  return reportArguments_;
}

}  // namespace

Arguments ReadArguments(const std::vector<std::string>& words) {
  return CCommandLine().Read(words);
}
