// A host with records of its own in place of a project database: puts its reader in force and
// prints the consumption summary with all cells.
#include <clocale>
#include <cstddef>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "memory_project.h"
#include "report_mng/report_mng.h"
#include "reports/consumption/xhl_hz_report.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"

int main() {
  std::setlocale(LC_CTYPE, "C.UTF-8");  // for std::wcout
  const std::wstring discipline = L"给排水";
  CDbOperator::Install(std::make_shared<CMemoryProject>(
      discipline, std::vector<SPipeRun>{{L"P1", L"给水管", L"DN50", L"1", 12.5},
                                        {L"P2", L"给水管", L"DN50", L"2,4", 3.2},
                                        {L"P3", L"给水管", L"DN25", L"3", 4}}));
  CTallyDataMng::Instance()->InitData(L"memory", true);

  IReport* report = CReportMng::Instance()->GetReportData(Report::ReportXhlHz, 0);
  Report::CellArray cells;
  dynamic_cast<CXhlHzReport&>(*report).GetXhlHzData(cells, discipline, Report::SNewCondition(),
                                                    CXhlHzReport::LevelFloor, 0);
  for (const SRow& row : CutRows(Report::ReportXhlHz, 0, cells)) {
    std::wcout << std::wstring(2 * static_cast<std::size_t>(row.layout->depth), L' ');
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      std::wcout << (i == 0 ? L"" : L" | ") << row.layout->cells[i].heading << L" " << row.cells[i];
    }
    std::wcout << L"\n";
  }
  return 0;
}
