// The smallest host: prints the consumption summary of a project, a line for each calculation item.
#include <clocale>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

#include "platform/db_operator.h"
#include "report_mng/report_mng.h"
#include "reports/consumption/xhl_hz_report.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"

namespace {

void PrintConsumption(const std::wstring& file) {
  CTallyDataMng* project = CTallyDataMng::Instance();
  if (!project->CheckMdbVertion(file)) {
    throw std::runtime_error("no project of this version");
  }
  project->InitData(file, true);
  IReport* report = CReportMng::Instance()->GetReportData(Report::ReportXhlHz, 0);
  Report::CellArray disciplines;
  project->GetReportSpecAry(disciplines, Report::ReportXhlHz);
  for (const std::wstring& discipline : disciplines) {
    Report::CellArray cells;
    dynamic_cast<CXhlHzReport&>(*report).GetXhlHzData(cells, discipline, Report::SNewCondition(),
                                                      CXhlHzReport::LevelCalItem, 0);
    for (const SRow& row : CutRows(Report::ReportXhlHz, 0, cells)) {
      if (row.Is(L"@CI")) {
        std::wcout << discipline << L": " << row.Cell("item") << L" " << row.Quantity().value_or(0)
                   << L" " << row.Cell("unit") << L"\n";
      }
    }
  }
  if (const auto failure = CDbOperator::Instance()->LastFailure()) {
    throw std::runtime_error(failure->message);
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "C.UTF-8");  // for std::wcout
  if (argc != 2) {
    std::cerr << "usage: minimal_host FILE\n";
    return 2;
  }
  try {
    PrintConsumption(std::filesystem::path(argv[1]).wstring());
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "minimal_host: " << argv[1] << ": " << error.what() << "\n";
    return 2;
  }
}
