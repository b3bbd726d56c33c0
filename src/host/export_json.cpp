#include "host/export_json.h"

#include <cstddef>
#include <string_view>

#include "platform/portable/utf8_text.h"

namespace {

void WriteUtf8(COutput& output, std::string_view text) {
  output.WriteJsonText(WideFromUtf8(text));
}

void WritePairs(COutput& output, const std::vector<std::pair<std::string, std::string>>& pairs) {
  output.Write("[");
  const char* separator = "";
  for (const auto& [name, value] : pairs) {
    output.Write(separator);
    output.Write(R"({"name":)");
    WriteUtf8(output, name);
    output.Write(R"(,"value":)");
    WriteUtf8(output, value);
    output.Write("}");
    separator = ",";
  }
  output.Write("]");
}

void WriteColumn(COutput& output, const SColumn& column) {
  output.Write(R"({"id":)");
  WriteUtf8(output, column.cell->id);
  output.Write(R"(,"heading":)");
  output.WriteJsonText(column.cell->heading);
  output.Write(R"(,"type":)");
  WriteUtf8(output, CellTypeName(column.cell->type));
  output.Write(column.isShown ? R"(,"shown":true})" : R"(,"shown":false})");
}

}  // namespace

void WriteJsonHead(COutput& output, const SExportHead& head) {
  output.Write(R"("project":)");
  WriteUtf8(output, head.project);
  output.Write(R"(,"changed":)");
  WriteUtf8(output, head.changed);
  output.Write(R"(,"choices":)");
  WritePairs(output, head.choices);
}

void WriteJsonTableHead(COutput& output, const SExportTable& table) {
  output.Write(R"("report":)");
  WriteUtf8(output, table.report->name);
  output.Write(R"(,"number":)");
  output.Write(std::to_string(table.report->type));
  output.Write(R"(,"variant":)");
  if (table.report->variantName == nullptr) {
    output.Write("null");
  } else {
    WriteUtf8(output, table.report->variantName);
  }
  output.Write(R"(,"title":)");
  output.WriteJsonText(table.report->title);
  output.Write(R"(,"discipline":)");
  output.WriteJsonText(table.spec);
  output.Write(R"(,"level":)");
  output.Write(std::to_string(table.level));
  output.Write(R"(,"filter":)");
  WritePairs(output, table.filter);
  output.Write(R"(,"columns":[)");
  const char* separator = "";
  for (const SColumn& column : *table.columns) {
    output.Write(separator);
    WriteColumn(output, column);
    separator = ",";
  }
  output.Write("]");
}

void WriteJsonKind(COutput& output, const SRowLayout& row) {
  output.WriteJsonText(std::wstring_view(row.marker).substr(1));
}
