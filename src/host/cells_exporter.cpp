#include "host/cells_exporter.h"

#include <string>

void CCellsExporter::Write(const SExportTable& table) {
  for (const SRow& row : table.rows) {
    output_.WriteJsonText(row.layout->marker);
    output_.Write("\n");
    for (const std::wstring& cell : row.cells) {
      output_.WriteJsonText(cell);
      output_.Write("\n");
    }
  }
}
