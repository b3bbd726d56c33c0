#include "host/report_command.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "host/file_names.h"
#include "host/host_error.h"
#include "host/open_project.h"
#include "host/progress_bar.h"
#include "host/report_catalog.h"
#include "host/report_state.h"
#include "host/status_command.h"
#include "host/terminal_text.h"
#include "host/text_table.h"
#include "platform/portable/file_replacement.h"
#include "platform/portable/utf8_text.h"
#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"

namespace {

namespace fs = std::filesystem;

std::optional<int> ReadWholeInt(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

std::vector<std::wstring> WideTexts(const std::vector<std::string>& texts) {
  std::vector<std::wstring> wide(texts.size());
  std::transform(texts.begin(), texts.end(), wide.begin(), WideFromUtf8);
  return wide;
}

// "a, b, c"
std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) {
    joined += (joined.empty() ? "" : ", ") + text;
  }
  return joined;
}

const SCatalogReport& ChosenReport(const SReportArguments& arguments) {
  const SCatalogReport* report = FindReport(arguments.report);
  if (report == nullptr) {
    std::vector<std::string> names;
    for (const SCatalogReport& line : ReportCatalog()) {
      if (names.empty() || names.back() != line.name) {
        names.emplace_back(line.name);
      }
    }
    throw CHostError("--report: no report '" + arguments.report + "'; there is " + Joined(names));
  }
  if (!arguments.variant.has_value()) {
    return *report;
  }
  std::vector<std::string> variants;
  for (const SCatalogReport& line : ReportCatalog()) {
    if (line.type != report->type || line.variantName == nullptr) {
      continue;
    }
    if (*arguments.variant == line.variantName) {
      return line;
    }
    variants.emplace_back(line.variantName);
  }
  if (variants.empty()) {
    throw CHostError(std::string("--variant: ") + report->name + " has no variants");
  }
  if (const std::optional<int> number = ReadWholeInt(*arguments.variant)) {
    return *FindReport(report->type, *number);
  }
  throw CHostError("--variant: no variant '" + *arguments.variant + "' of " + report->name +
                   "; there is " + Joined(variants));
}

// "calculation-book member"
std::string FullName(const SCatalogReport& report) {
  return report.name + (report.variantName == nullptr ? "" : std::string(" ") + report.variantName);
}

// Empty where the arguments name no status file.
SReportStatus ChosenStatus(const SReportArguments& arguments) {
  return arguments.status.has_value() ? ReadStatusFile(*arguments.status) : SReportStatus();
}

int ChosenLevel(const SReportArguments& arguments, const SReportStatus& status,
                const SCatalogReport& report) {
  const int deepest = report.DeepestLevel();
  if (!arguments.level.has_value()) {
    // A status may come from a host with other levels; the nearest is meant.
    const auto at = status.reports.find(report.title);
    return at == status.reports.end() ? deepest : std::clamp(at->second.expandLevel, 0, deepest);
  }
  const std::string name = FullName(report);
  if (deepest == 0) {
    throw CHostError("--level: " + name + " has no levels");
  }
  const std::optional<int> level = ReadWholeInt(*arguments.level);
  if (!level.has_value() || *level < 0 || *level > deepest) {
    throw CHostError("--level: '" + *arguments.level + "' is not a level of " + name +
                     ", which are 0 to " + std::to_string(deepest));
  }
  return *level;
}

enum class EFormat { Table, Cells };

EFormat ChosenFormat(const SReportArguments& arguments) {
  if (arguments.format == "table") {
    return EFormat::Table;
  }
  if (arguments.format == "cells") {
    return EFormat::Cells;
  }
  throw CHostError("--format: '" + arguments.format +
                   "' is not a format, which are table and cells");
}

// An option takes the place of the status's list of its kind.
Report::SNewCondition ChosenCondition(const SReportArguments& arguments,
                                      const SReportStatus& status, const std::wstring& spec) {
  Report::SNewCondition condition;
  if (const auto at = status.conditions.find(spec); at != status.conditions.end()) {
    condition = at->second;
  }
  if (!arguments.floors.empty()) {
    condition.floors.clear();
  }
  for (const std::string& floor : arguments.floors) {
    const std::size_t sign = floor.rfind('=');
    const std::string drawing = floor.substr(0, sign);
    const std::string selected = sign == std::string::npos ? drawing : floor.substr(sign + 1);
    condition.floors.push_back({WideFromUtf8(drawing), WideFromUtf8(selected)});
  }
  if (!arguments.categories.empty()) {
    condition.categories.clear();
  }
  for (const std::string& category : arguments.categories) {
    condition.categories.insert(WideFromUtf8(category));
  }
  if (!arguments.sysCodes.empty()) {
    condition.sysCodes = WideTexts(arguments.sysCodes);
  }
  return condition;
}

// The disciplines of the report, each once, in the order of the project.
std::vector<std::wstring> AllSpecs(const COpenProject& project, const SCatalogReport& report) {
  Report::CellArray stored;
  CTallyDataMng::Instance()->GetReportSpecAry(stored, report.type);
  project.RequireResultSet(report.type);
  std::vector<std::wstring> specs;
  for (const std::wstring& spec : stored) {
    if (std::find(specs.begin(), specs.end(), spec) == specs.end()) {
      specs.push_back(spec);
    }
  }
  return specs;
}

std::vector<std::wstring> ChosenSpecs(const SReportArguments& arguments,
                                      const COpenProject& project, const SCatalogReport& report) {
  const std::vector<std::wstring> all = AllSpecs(project, report);
  std::vector<std::string> names(all.size());
  std::transform(all.begin(), all.end(), names.begin(), Utf8FromWide);
  for (const std::string& spec : arguments.specs) {
    if (std::find(names.begin(), names.end(), spec) == names.end()) {
      throw CHostError("--spec: no discipline '" + spec + "' in " + report.name + " of '" +
                       arguments.file + "'; there " +
                       (names.empty() ? "is none" : "is " + Joined(names)));
    }
  }
  std::vector<std::wstring> chosen = arguments.specs.empty() ? all : WideTexts(arguments.specs);
  if (ChosenFormat(arguments) == EFormat::Cells && chosen.size() > 1) {
    throw CHostError("--format: cells are those of one discipline; choose it with --spec out of " +
                     Joined(names));
  }
  return chosen;
}

std::vector<std::wstring> ChosenSections(const SReportArguments& arguments,
                                         const SReportStatus& status) {
  if (!arguments.sections.empty()) {
    return WideTexts(arguments.sections);
  }
  if (arguments.bySection && status.dispSgd.empty()) {
    return CTallyDataMng::Instance()->GetSgdNameTree();
  }
  return status.dispSgd;
}

void SetState(const SReportArguments& arguments, const SReportStatus& status) {
  CReportStatusMng* manager = CReportStatusMng::Instance();
  SetDividedNode(arguments.divided || status.isDividedNode);
  manager->SetIsBySgd(!arguments.sections.empty() || status.isBySgd);
  manager->SetDispSgd(ChosenSections(arguments, status));
  if (arguments.sortDown.has_value()) {
    CResultConfig::Instance()->SetLineSortDowm(*arguments.sortDown);
  }
}

IReport& FoldedReport(const SReportArguments& arguments, const SCatalogReport& report) {
  try {
    return *CReportMng::Instance()->GetReportData(report.type, report.variant);
  } catch (const std::out_of_range&) {
    throw CHostError("cannot make " + std::string(report.name) + " of '" + arguments.file +
                     "': a row names a record that its table lacks");
  }
}

void WriteCells(const Report::CellArray& cells, COutput& output) {
  for (const std::wstring& cell : cells) {
    output.WriteJsonText(cell);
    output.Write("\n");
  }
}

void WriteSection(const SCatalogReport& report, const std::wstring& spec,
                  const Report::CellArray& cells, COutput& output) {
  output.Write(Utf8FromWide(report.title) + "  " + ToTerminalText(spec).bytes + "\n\n");
  const SReportLayout& layout = *FindLayout(report.type, report.variant);
  const std::vector<SRow> rows = CutRows(layout, cells);
  WriteTextTable(output, layout, rows);
  if (rows.empty()) {
    output.Write("(no rows)\n");
  }
}

// All but the discipline and its condition.
SRowRequest ChosenRequest(const SReportArguments& arguments, const SReportStatus& status,
                          const SCatalogReport& report) {
  SRowRequest request;
  request.level = ChosenLevel(arguments, status, report);
  request.bySgd = arguments.bySection ? 1 : 0;
  request.totalType = report.type;
  return request;
}

// The rows of one discipline.
void WriteSpec(const SCatalogReport& report, IReport& folded, const SRowRequest& request,
               EFormat format, COutput& output) {
  Report::CellArray cells;
  report.appendRows(folded, request, cells);
  if (format == EFormat::Cells) {
    WriteCells(cells, output);
  } else {
    WriteSection(report, request.spec, cells, output);
  }
}

void WriteReport(const SReportArguments& arguments, COutput& output) {
  const SCatalogReport& report = ChosenReport(arguments);
  const EFormat format = ChosenFormat(arguments);
  const SReportStatus status = ChosenStatus(arguments);
  SRowRequest request = ChosenRequest(arguments, status, report);

  const COpenProject project(arguments.file);
  project.RequireTrees();
  const std::vector<std::wstring> specs = ChosenSpecs(arguments, project, report);
  SetState(arguments, status);
  IReport& folded = FoldedReport(arguments, report);
  for (const std::wstring& spec : specs) {
    request.spec = spec;
    request.condition = ChosenCondition(arguments, status, spec);
    if (&spec != &specs.front()) {
      output.Write("\n");
    }
    WriteSpec(report, folded, request, format, output);
  }
  if (specs.empty() && format == EFormat::Table) {
    output.Write(Utf8FromWide(report.title) + "\n\n(no rows)\n");
  }
}

fs::path FilePath(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8Path(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return std::string(utf8.begin(), utf8.end());
}

// A pipe or a device is written to; it cannot be replaced.
void WriteToDevice(const std::string& name, std::string_view bytes) {
  const auto close = [](std::FILE* file) { std::fclose(file); };
  const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(name.c_str(), "wb"), close);
  if (file == nullptr) {
    throw CHostError("cannot write to '" + name + "'");
  }
  COutput output(file.get(), "'" + name + "'");
  output.Write(bytes);
  output.Flush();
}

void CheckOutFile(const std::string& out, const std::string& project) {
  std::error_code ignored;
  if (fs::is_directory(FilePath(out), ignored)) {
    throw CHostError("--output: '" + out + "' is a folder");
  }
  const fs::path folder = FilePath(out).parent_path();
  if (!folder.empty() && !fs::is_directory(folder, ignored)) {
    throw CHostError("--output: the folder of '" + out + "' does not exist");
  }
  if (fs::equivalent(FilePath(out), FilePath(project), ignored)) {
    throw CHostError("--output: '" + out + "' is the project itself");
  }
}

void WriteOutFile(const std::string& name, std::string_view bytes) {
  std::error_code ignored;
  if (fs::is_other(FilePath(name), ignored)) {
    WriteToDevice(name, bytes);
  } else if (!ReplaceFile(FilePath(name), bytes)) {
    throw CHostError("cannot write to '" + name + "'");
  }
}

void MakeOutFolder(const std::string& folder) {
  std::error_code error;
  fs::create_directories(FilePath(folder), error);
  if (!fs::is_directory(FilePath(folder), error)) {
    throw CHostError("--output: cannot make the folder '" + folder + "'");
  }
}

// The disciplines of one report that `--all` writes, and their files.
struct SSpecFiles {
  const SCatalogReport* report;
  std::vector<std::wstring> specs;
  std::vector<std::string> files;
};

// Throws where a chosen discipline is in no report.
void CheckSpecs(const SReportArguments& arguments, const std::vector<std::string>& known) {
  for (const std::string& spec : arguments.specs) {
    if (std::find(known.begin(), known.end(), spec) == known.end()) {
      throw CHostError("--spec: no discipline '" + spec + "' in any report of '" + arguments.file +
                       "'; there " + (known.empty() ? "is none" : "is " + Joined(known)));
    }
  }
}

std::vector<SSpecFiles> AllFiles(const SReportArguments& arguments, const COpenProject& project) {
  CFileNames names;
  std::vector<std::string> known;
  std::vector<SSpecFiles> all;
  for (const SCatalogReport& report : ReportCatalog()) {
    SSpecFiles files{&report, {}, {}};
    for (const std::wstring& spec : AllSpecs(project, report)) {
      const std::string name = Utf8FromWide(spec);
      if (std::find(known.begin(), known.end(), name) == known.end()) {
        known.push_back(name);
      }
      const std::vector<std::string>& chosen = arguments.specs;
      if (chosen.empty() || std::find(chosen.begin(), chosen.end(), name) != chosen.end()) {
        files.specs.push_back(spec);
        files.files.push_back(names.NameOf(report, spec));
      }
    }
    all.push_back(std::move(files));
  }
  CheckSpecs(arguments, known);
  return all;
}

void WriteAll(const SReportArguments& arguments) {
  const EFormat format = ChosenFormat(arguments);
  const SReportStatus status = ChosenStatus(arguments);
  const COpenProject project(arguments.file);
  project.RequireTrees();
  const std::vector<SSpecFiles> all = AllFiles(arguments, project);
  MakeOutFolder(arguments.out);
  SetState(arguments, status);
  std::size_t count = 0;
  for (const SSpecFiles& files : all) {
    count += files.files.size();
  }
  CProgressBar progress(stderr, count);
  for (const auto& [report, specs, files] : all) {
    SRowRequest request = ChosenRequest(arguments, status, *report);
    for (std::size_t i = 0; i < specs.size(); ++i) {
      progress.Step(files[i]);
      request.spec = specs[i];
      request.condition = ChosenCondition(arguments, status, specs[i]);
      COutput collected;
      WriteSpec(*report, FoldedReport(arguments, *report), request, format, collected);
      const std::string out = Utf8Path(FilePath(arguments.out) / FilePath(files[i]));
      CheckOutFile(out, arguments.file);
      WriteOutFile(out, collected.Text());
    }
    // One folded report at a time is memory enough.
    CReportMng::Instance()->Clear();
  }
}

}  // namespace

void RunReport(const SReportArguments& arguments, COutput& standardOutput) {
  if (arguments.all) {
    WriteAll(arguments);
    return;
  }
  if (arguments.out.empty()) {
    WriteReport(arguments, standardOutput);
    standardOutput.Flush();
    return;
  }
  CheckOutFile(arguments.out, arguments.file);
  COutput collected;
  WriteReport(arguments, collected);
  WriteOutFile(arguments.out, collected.Text());
}
