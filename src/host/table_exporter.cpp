#include "host/table_exporter.h"

#include <utility>

#include "host/joined.h"
#include "host/terminal_text.h"
#include "host/text_table.h"
#include "platform/portable/utf8_text.h"

void CTableExporter::Write(const SExportTable& table) {
  if (std::exchange(isBegun_, true)) {
    output_.Write("\n");
  }
  output_.Write(Utf8FromWide(table.report->title));
  if (!table.spec.empty()) {
    output_.Write(Joined("  ", ToTerminalText(table.spec).bytes));
  }
  output_.Write("\n\n");
  WriteTextTable(output_, *table.columns, table.rows);
  if (table.rows.empty()) {
    output_.Write("(no rows)\n");
  }
}
