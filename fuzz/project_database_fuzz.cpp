// Project databases of any bytes: each record set can be read or says why not, and the reports over
// what was read can be asked.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz_check.h"
#include "host/host_error.h"
#include "host/open_project.h"
#include "host/report_catalog.h"
#include "platform/db_operator.h"
#include "platform/project_settings.h"
#include "report_mng/report_mng.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostSpecs = 3;
constexpr std::size_t kMostRows = 2000;

/// True where the set was read; a failure tells its cause.
bool IsRead(const COpenProject& project, Report::EReportType type) {
  try {
    project.RequireResultSet(type);
    return true;
  } catch (const CReadError& error) {
    const std::string message = error.what();
    Require(message.starts_with("cannot read ") && message.size() > 20, "a failure has a cause");
    return false;
  }
}

std::size_t RowCount(Report::EReportType type) {
  CTallyDataMng* store = CTallyDataMng::Instance();
  switch (type) {
    case Report::ReportXhlHz:
      return store->GetXhlHzData().rows.size();
    case Report::ReportXhlGl:
      return store->GetXhlGlData().rows.size();
    case Report::ReportXhlCgHz:
      return store->GetXhlCgData().rows.size();
    case Report::ReportPjHz:
      return store->GetPjHzData().rows.size();
    case Report::ReportDeHz:
    case Report::ReportQdDeHz:
    case Report::ReportQdHz:
      return store->GetQdDeHzData().rows.size();
    default:
      return store->GetXhlDetailData().rows.size();
  }
}

void AskReport(const SCatalogReport& entry, const Report::CellArray& specs) {
  SRowRequest request;
  request.level = Report::LevelDetail;
  try {
    IReport* report = CReportMng::Instance()->GetReportData(entry.type, entry.variant);
    for (std::size_t i = 0; i < specs.size() && i < kMostSpecs; ++i) {
      request.spec = specs[i];
      Report::CellArray cells;
      entry.appendRows(*report, request, cells);
      CutRows(entry.type, entry.variant, cells);
    }
  } catch (const std::out_of_range&) {
    // A row names a record that its table lacks.
  }
}

void ReadEverything(const COpenProject& project) {
  for (const SCatalogReport& entry : ReportCatalog()) {
    Report::CellArray specs;
    CTallyDataMng::Instance()->GetReportSpecAry(specs, entry.type);
    const std::size_t rows = RowCount(entry.type);
    if (!IsRead(project, entry.type)) {
      Require(rows == 0 && specs.empty(), "a set that cannot be read is empty");
    } else if (rows <= kMostRows) {
      AskReport(entry, specs);
    }
  }
  try {
    project.RequireTrees();
  } catch (const CReadError&) {
    // Each of the four may be unreadable.
  }
  for (const Report::ETreeType tree :
       {Report::TreeFloor, Report::TreeSysCode, Report::TreeCategory}) {
    CReportMng::Instance()->GetTreeData(tree);
  }
  IProjectSettings* settings = IProjectSettings::Instance();
  settings->GetQdDeMode();
  settings->GetDeCode();
  std::vector<std::wstring> marks;
  const bool hasMarks = settings->GetQdMarkInfo(L"030801001001", marks);
  Require(marks.empty() != hasMarks && marks.size() % 3 == 0, "marks have three cells");
}

/// Everything in the folder: SQLite may have left files of its own beside the project.
void Empty(const fs::path& folder) {
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    fs::remove(entry.path());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const tally_test::CTempFolder folder;
  const fs::path file = folder / "project.tally";
  tally_test::WriteBytes(file, std::string(reinterpret_cast<const char*>(data), size));
  try {
    COpenProject project(file.string());
    ReadEverything(project);
    project.Reopen(false);
    ReadEverything(project);
  } catch (const CHostError&) {
    // Not a project, or of another version.
  }
  Require(tally_test::ReadBytes(file).size() == size, "a project is only read");
  CTallyDataMng::Instance()->InitData(L"", true);
  CDbOperator::Install(nullptr);
  Empty(folder.Path());
  return 0;
}
