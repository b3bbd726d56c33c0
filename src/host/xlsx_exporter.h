// Reports as a workbook for spreadsheets.
#ifndef TALLY_HOST_XLSX_EXPORTER_H_
#define TALLY_HOST_XLSX_EXPORTER_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "host/exporter.h"
#include "host/output.h"
#include "host/sheet_names.h"
#include "host/workbook.h"

/// A sheet for each table behind a front sheet that lists them. The rows are gathered in temporary
/// files, so that memory does not grow with them; the output gets everything at the end.
class CXlsxExporter final : public IExporter {
 public:
  /// A sheet takes `sheetRows` rows with its headings, at least 2; what is beyond goes to a further
  /// sheet.
  CXlsxExporter(SExportHead head, const SExportOptions& options, COutput& output,
                std::size_t sheetRows = LXW_ROW_MAX);

  void Write(const SExportTable& table) override;
  void End() override;

 private:
  /// A sheet as the front sheet lists it.
  struct SSheetLine {
    std::string name;
    std::string title;
    std::wstring spec;
    int level;  ///< -1 for a report without levels
    std::size_t rows;
    std::vector<std::pair<std::string, std::string>> filter;
  };

  void WriteFront();
  lxw_row_t WriteFrontHead();
  void WriteFrontLine(lxw_row_t row, const SSheetLine& line);
  void WriteFrontText(lxw_row_t row, lxw_col_t column, std::wstring_view text, ERowLook look);

  const SExportHead head_;
  const SExportOptions options_;
  COutput& output_;
  const std::size_t sheetRows_;
  CSheetNames names_;
  CWorkbook workbook_;
  lxw_worksheet* front_;
  std::vector<SSheetLine> sheets_;
  std::size_t cuts_ = 0;
};

#endif  // TALLY_HOST_XLSX_EXPORTER_H_
