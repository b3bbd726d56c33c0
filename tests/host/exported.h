// What exporters make of tables that a test writes out.
#ifndef TALLY_TESTS_HOST_EXPORTED_H_
#define TALLY_TESTS_HOST_EXPORTED_H_

#include <string>
#include <utility>
#include <vector>

#include "host/exporter.h"
#include "host/output.h"

namespace tally_test {

/// A table of a report in one discipline.
struct SWrittenTable {
  std::wstring spec;
  Report::CellArray cells;
  std::vector<std::wstring> ids = {};  ///< of the columns; empty for all
  std::vector<std::pair<std::string, std::string>> filter = {};
  Report::EReportType type = Report::ReportXhlHz;
};

/// The document with these tables.
template <class TExporter>
std::string Exported(const SExportHead& head, const std::vector<SWrittenTable>& tables) {
  COutput output;
  TExporter exporter(head, SExportOptions(), output);
  for (const SWrittenTable& table : tables) {
    const SReportLayout& layout = *FindLayout(table.type, 0);
    const std::vector<SRow> rows = CutRows(layout, table.cells);
    CColumns columns(layout);
    if (!table.ids.empty()) {
      columns.Choose(table.ids);
    }
    exporter.Write({FindReport(table.type, 0), table.spec, 2, table.filter, rows, &columns});
  }
  exporter.End();
  return output.Text();
}

}  // namespace tally_test

#endif  // TALLY_TESTS_HOST_EXPORTED_H_
