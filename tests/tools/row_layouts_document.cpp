// Writes docs/row_layouts.md to standard output; with a file's name, tells whether that file is
// just what would be written.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/report_catalog.h"
#include "platform/portable/utf8_text.h"
#include "rows/row_layouts.h"

namespace {

constexpr const char* kIntroduction = R"(# Row layouts

A report answers one array of cells. A row begins with its marker, and as many cells follow as stand
here. A cell may read like a marker, so rows are cut by counting, as `CutRows` of
`rows/row_layouts.h` does. A marker of one report may have other cells in the next.

This page is written by `scripts/write_row_layouts` from the table in `src/rows/row_layouts.cpp`.

## Columns

A column has the same id, heading and type in every row and report. Quantities are decimal numbers
with at most six significant digits, or empty; codes are texts whatever they look like; references
are component references, each ended by `$`.

)";

void WriteColumns(std::ostream& out) {
  std::vector<const SCellLayout*> columns;
  for (const SCatalogReport& report : ReportCatalog()) {
    for (const SRowLayout& row : FindLayout(report.type, report.variant)->rows) {
      for (const SCellLayout& cell : row.cells) {
        const auto isSame = [&cell](const SCellLayout* column) {
          return std::string_view(column->id) == cell.id;
        };
        if (std::none_of(columns.begin(), columns.end(), isSame)) {
          columns.push_back(&cell);
        }
      }
    }
  }
  out << "| Id | Heading | Type |\n|---|---|---|\n";
  for (const SCellLayout* column : columns) {
    out << "| `" << column->id << "` | " << Utf8FromWide(column->heading) << " | "
        << CellTypeName(column->type) << " |\n";
  }
}

void WriteReport(std::ostream& out, const SCatalogReport& report) {
  out << "\n## " << Utf8FromWide(report.title);
  if (report.variantName != nullptr) {
    out << ", variant " << report.variantName;
  }
  out << "\n\nNumber " << static_cast<int>(report.type) << ", name `" << report.name << "`.\n\n"
      << "| Marker | Cells | Columns |\n|---|---|---|\n";
  for (const SRowLayout& row : FindLayout(report.type, report.variant)->rows) {
    out << "| `" << Utf8FromWide(row.marker) << "` | " << row.cells.size() << " |";
    const char* separator = " ";
    for (const SCellLayout& cell : row.cells) {
      out << separator << "`" << cell.id << "`";
      separator = ", ";
    }
    out << " |\n";
  }
}

std::string Document() {
  std::ostringstream out;
  out << kIntroduction;
  WriteColumns(out);
  for (const SCatalogReport& report : ReportCatalog()) {
    WriteReport(out, report);
  }
  return out.str();
}

int Compare(const char* path) {
  std::ifstream file(path, std::ios::binary);
  std::istringstream wanted(Document());
  std::string line;
  std::string there;
  for (int number = 1;; ++number) {
    const bool isWanted = static_cast<bool>(std::getline(wanted, line));
    const bool isThere = static_cast<bool>(std::getline(file, there));
    if (!isWanted && !isThere) {
      return 0;
    }
    if (isWanted != isThere || line != there) {
      std::cerr << path << ":" << number << ": not as the table has it; run "
                << "scripts/write_row_layouts\n";
      return 1;
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) {
    return Compare(argv[1]);
  }
  std::cout << Document() << std::flush;
  return std::cout ? 0 : 1;
}
