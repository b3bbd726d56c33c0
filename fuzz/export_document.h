// Documents for the exporters, made from fuzzer inputs.
#ifndef TALLY_FUZZ_EXPORT_DOCUMENT_H_
#define TALLY_FUZZ_EXPORT_DOCUMENT_H_

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fuzz_input.h"
#include "host/columns.h"
#include "host/exporter.h"
#include "host/formats.h"
#include "host/output.h"
#include "host/report_catalog.h"
#include "platform/portable/utf8_text.h"
#include "rows/row_layouts.h"

/// What an export is made from.
struct SDocument {
  const SCatalogReport* report = nullptr;
  const SReportLayout* layout = nullptr;
  SExportHead head;
  SExportOptions options;
  std::vector<std::pair<std::string, std::string>> filter;
  std::wstring spec;
  Report::CellArray cells;  ///< with their markers
  std::vector<std::wstring> chosen;
  std::vector<Report::SColumnState> states;

  CColumns Columns() const {
    CColumns columns(*layout);
    columns.Apply(states);
    if (!chosen.empty()) {
      columns.Choose(chosen);
    }
    return columns;
  }
};

/// The document in a format, with its one table twice.
inline std::string Exported(const SFormat& format, const SDocument& document) {
  const CColumns columns = document.Columns();
  const std::vector<SRow> rows = CutRows(*document.layout, document.cells);
  COutput output;
  const std::unique_ptr<IExporter> exporter = format.make(document.head, document.options, output);
  SExportTable table = {document.report, document.spec, 3, document.filter, rows, &columns};
  exporter->Write(table);
  exporter->Write(table);
  exporter->End();
  return output.Text();
}

/// A document whose cells, names and choices are some of `texts`.
inline SDocument ReadDocument(CFuzzInput& input, const std::vector<std::wstring>& texts) {
  static std::FILE* const nowhere = std::fopen("/dev/null", "w");
  const auto pick = [&]() -> const std::wstring& { return texts[input.Below(texts.size())]; };
  SDocument document;
  document.report = &ReportCatalog()[input.Below(ReportCatalog().size())];
  document.layout = FindLayout(document.report->type, document.report->variant);
  document.options.csvSafe = input.Flag();
  document.options.messages = nowhere;
  document.spec = pick();
  document.head.project = Utf8FromWide(pick());
  document.head.choices.emplace_back(Utf8FromWide(pick()), Utf8FromWide(pick()));
  document.filter.emplace_back(Utf8FromWide(pick()), Utf8FromWide(pick()));
  const CColumns columns(*document.layout);
  for (std::size_t count = input.Below(4); count > 0; --count) {
    document.chosen.emplace_back(columns[input.Below(columns.Size())].cell->heading);
  }
  for (std::size_t count = input.Below(4); count > 0; --count) {
    const SColumn& column = columns[input.Below(columns.Size())];
    document.states.push_back({column.cell->heading, input.Flag()});
  }
  constexpr std::size_t kMostRows = 24;
  for (std::size_t count = 1 + input.Below(kMostRows); count > 0; --count) {
    const SRowLayout& row = document.layout->rows[input.Below(document.layout->rows.size())];
    document.cells.emplace_back(row.marker);
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      document.cells.push_back(pick());
    }
  }
  return document;
}

/// The texts that an input begins with.
inline std::vector<std::wstring> ReadTexts(CFuzzInput& input) {
  std::vector<std::wstring> texts;
  for (std::size_t count = 1 + input.Below(8); count > 0; --count) {
    texts.push_back(input.Text());
  }
  return texts;
}

#endif  // TALLY_FUZZ_EXPORT_DOCUMENT_H_
