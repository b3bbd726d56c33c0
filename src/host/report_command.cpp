#include "host/report_command.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/exporter.h"
#include "host/file_names.h"
#include "host/formats.h"
#include "host/host_error.h"
#include "host/joined.h"
#include "host/open_project.h"
#include "host/out_file.h"
#include "host/progress_bar.h"
#include "host/report_catalog.h"
#include "host/report_choices.h"
#include "host/run_stats.h"
#include "platform/portable/utf8_text.h"
#include "report_mng/report_mng.h"
#include "reports/shared/node_report.h"
#include "rows/row_layouts.h"

namespace {

namespace fs = std::filesystem;

// The minute of the file's last change, the same on every clock.
std::string ChangeTime(const fs::path& file) {
  std::error_code error;
  const auto time = fs::last_write_time(file, error);
  if (error) {
    return "";
  }
  const std::time_t seconds =
      std::chrono::system_clock::to_time_t(std::chrono::file_clock::to_sys(time));
  std::tm parts = {};
  char text[40];
  if (gmtime_r(&seconds, &parts) == nullptr ||
      std::strftime(text, sizeof text, "%Y-%m-%d %H:%M UTC", &parts) == 0) {
    return "";
  }
  return text;
}

std::vector<std::string> Inputs(const SReportArguments& arguments) {
  std::vector<std::string> files = {arguments.file};
  if (arguments.status.has_value()) {
    files.push_back(*arguments.status);
  }
  return files;
}

/// One run of the command.
class CReportRun {
 public:
  explicit CReportRun(const SReportArguments& arguments)
      : arguments_(arguments), choices_(arguments), format_(choices_.Format()) {}

  /// One report to an output, which is flushed.
  void WriteReport(COutput& output);
  /// Throws where the format is one for files only.
  void RequireTerminalFormat() const;
  /// All of them into one document, or into a folder with a file for each.
  void WriteAll();

 private:
  void Open();
  std::unique_ptr<IExporter> MakeExporter(COutput& output) const;
  IReport& Folded(const SCatalogReport& report);
  void WriteSpec(const SCatalogReport& report, const std::wstring& spec, IExporter& exporter);
  void End(IExporter& exporter, COutput& output);
  template <class TWrite>
  void ForEachTable(TWrite write);
  void WriteDocument();
  void WriteFolder();
  void MakeFolder() const;
  void ShowStats();

  const SReportArguments& arguments_;
  CRunStats stats_;
  const CReportChoices choices_;
  const SFormat& format_;
  std::unique_ptr<COpenProject> project_;
  const IReport* folded_ = nullptr;                  ///< the last one whose nodes were counted
  std::vector<std::vector<std::wstring>> allSpecs_;  ///< by line of the catalogue
};

void CReportRun::Open() {
  project_ = std::make_unique<COpenProject>(arguments_.file, &stats_);
  project_->RequireTrees();
}

std::unique_ptr<IExporter> CReportRun::MakeExporter(COutput& output) const {
  const fs::path file = PathFromUtf8(arguments_.file);
  SExportHead head;
  head.project = Utf8FromPath(file.filename());
  head.changed = ChangeTime(file);
  head.choices = choices_.CommonTexts();
  SExportOptions options;
  options.csvSafe = arguments_.csvSafe;
  return format_.make(head, options, output);
}

IReport& CReportRun::Folded(const SCatalogReport& report) {
  const CRunStats::CTimer timer(stats_, ERunPhase::Fold);
  try {
    IReport& folded = *CReportMng::Instance()->GetReportData(report.type, report.variant);
    if (std::exchange(folded_, &folded) != &folded && arguments_.stats) {
      stats_.AddNodes(dynamic_cast<const CNodeReport&>(folded).NodeCount());
    }
    return folded;
  } catch (const std::out_of_range&) {
    throw CHostError(Joined("cannot make ", report.name, " of '", arguments_.file,
                            "': a row names a record that its table lacks"));
  }
}

void CReportRun::WriteSpec(const SCatalogReport& report, const std::wstring& spec,
                           IExporter& exporter) {
  const SReportLayout& layout = *FindLayout(report.type, report.variant);
  SRowRequest request;
  request.spec = spec;
  request.condition = choices_.Condition(spec);
  request.level = choices_.Level(report);
  request.bySgd = arguments_.bySection ? 1 : 0;
  request.totalType = report.type;
  IReport& folded = Folded(report);
  Report::CellArray cells;
  {
    const CRunStats::CTimer timer(stats_, ERunPhase::Walk);
    report.appendRows(folded, request, cells);
  }
  stats_.AddCells(cells.size());
  const CRunStats::CTimer timer(stats_, ERunPhase::Write);
  const std::vector<SRow> rows = CutRows(layout, cells);
  const CColumns columns = choices_.Columns(report);
  exporter.Write({&report, spec, request.level, choices_.FilterTexts(spec), rows, &columns});
}

void CReportRun::End(IExporter& exporter, COutput& output) {
  const CRunStats::CTimer timer(stats_, ERunPhase::Write);
  exporter.End();
  output.Flush();
}

void CReportRun::RequireTerminalFormat() const {
  if (format_.isForFilesOnly) {
    throw CHostError(Joined("--format: ", format_.name, " needs a file; name it with -o"));
  }
}

void CReportRun::ShowStats() {
  if (arguments_.stats) {
    std::fputs(stats_.Text().c_str(), stderr);
  }
}

void CReportRun::WriteReport(COutput& output) {
  const SCatalogReport& report = choices_.Report();
  // Wrong words are told before the work begins.
  static_cast<void>(choices_.Level(report));
  static_cast<void>(choices_.Columns(report));
  Open();
  std::vector<std::wstring> specs = choices_.Specs(*project_, report);
  choices_.SetState();
  const std::unique_ptr<IExporter> exporter = MakeExporter(output);
  if (specs.empty()) {
    specs.emplace_back();
  }
  for (const std::wstring& spec : specs) {
    WriteSpec(report, spec, *exporter);
  }
  End(*exporter, output);
  ShowStats();
}

// Calls `write` for each report and discipline.
template <class TWrite>
void CReportRun::ForEachTable(TWrite write) {
  CFileNames names(format_.extension);
  std::size_t count = 0;
  for (const std::vector<std::wstring>& specs : allSpecs_) {
    count += specs.size();
  }
  CProgressBar progress(stderr, count);
  for (std::size_t i = 0; i < allSpecs_.size(); ++i) {
    const SCatalogReport& report = ReportCatalog()[i];
    for (const std::wstring& spec : allSpecs_[i]) {
      const std::string name = names.NameOf(report, spec);
      progress.Step(name);
      write(report, spec, name);
    }
    // One folded report at a time is memory enough.
    folded_ = nullptr;
    CReportMng::Instance()->Clear();
  }
}

void CReportRun::WriteDocument() {
  COutFile out(arguments_.out, Inputs(arguments_));
  const std::unique_ptr<IExporter> exporter = MakeExporter(out.Output());
  ForEachTable([&](const SCatalogReport& report, const std::wstring& spec, const std::string&) {
    WriteSpec(report, spec, *exporter);
  });
  End(*exporter, out.Output());
  out.Commit();
}

void CReportRun::MakeFolder() const {
  std::error_code error;
  std::error_code ignored;
  const fs::path folder = PathFromUtf8(arguments_.out);
  fs::create_directories(folder, error);
  if (!fs::is_directory(folder, ignored)) {
    throw CHostError(Joined("--output: cannot make the folder '", arguments_.out, "'",
                            error ? ": " : "", error ? error.message() : ""));
  }
}

void CReportRun::WriteFolder() {
  MakeFolder();
  ForEachTable(
      [&](const SCatalogReport& report, const std::wstring& spec, const std::string& name) {
        const fs::path file = PathFromUtf8(arguments_.out) / PathFromUtf8(name);
        COutFile out(Utf8FromPath(file), Inputs(arguments_));
        const std::unique_ptr<IExporter> exporter = MakeExporter(out.Output());
        WriteSpec(report, spec, *exporter);
        End(*exporter, out.Output());
        out.Commit();
      });
}

void CReportRun::WriteAll() {
  static_cast<void>(choices_.Columns(ReportCatalog().front()));
  Open();
  allSpecs_ = choices_.AllSpecs(*project_);
  choices_.SetState();
  if (format_.holdsAllReports) {
    WriteDocument();
  } else {
    WriteFolder();
  }
  ShowStats();
}

}  // namespace

void RunReport(const SReportArguments& arguments, COutput& standardOutput) {
  CReportRun run(arguments);
  if (arguments.all) {
    run.WriteAll();
    return;
  }
  if (arguments.out.empty()) {
    run.RequireTerminalFormat();
    run.WriteReport(standardOutput);
    return;
  }
  COutFile out(arguments.out, Inputs(arguments));
  run.WriteReport(out.Output());
  out.Commit();
}
