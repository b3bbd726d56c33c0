#include "host/html_exporter.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "host/export_json.h"
#include "host/joined.h"
#include "host/page_parts.h"

namespace {

// What takes the place of the first character; empty where it stays.
std::string_view EscapeOf(std::string_view json) {
  if (json.front() == '<') {
    return "\\u003c";
  }
  if (json.starts_with("\xE2\x80\xA8")) {
    return "\\u2028";
  }
  return json.starts_with("\xE2\x80\xA9") ? "\\u2029" : "";
}

// JSON that cannot end its script element nor begin a comment there, nor hold a line end of older
// scripts. What is replaced occurs in strings only; the pieces of an output end between characters.
void WriteEscaped(COutput& output, std::string_view json) {
  constexpr std::string_view kSuspects = "<\xE2";
  std::size_t at = json.find_first_of(kSuspects);
  while (at != std::string_view::npos) {
    const std::string_view escape = EscapeOf(json.substr(at));
    if (!escape.empty()) {
      output.Write(json.substr(0, at));
      output.Write(escape);
      json.remove_prefix(at + (json[at] == '<' ? 1 : 3));
    }
    at = json.find_first_of(kSuspects, escape.empty() ? at + 1 : 0);
  }
  output.Write(json);
}

}  // namespace

CHtmlExporter::CHtmlExporter(const SExportHead& head, const SExportOptions&, COutput& output)
    : output_(output), data_([&output](std::string_view json) { WriteEscaped(output, json); }) {
  output_.Write(
      "<!DOCTYPE html>\n"
      "<html lang=\"zh-CN\">\n"
      "<head>\n"
      "<meta charset=\"utf-8\">\n");
  output_.Write(
      Joined("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; ",
             "base-uri 'none'; form-action 'none'; style-src 'sha256-", kPageStyle.hash,
             "'; script-src 'sha256-", kPageScript.hash, "'\">\n"));
  output_.Write(
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<meta name=\"color-scheme\" content=\"light dark\">\n"
      "<title>工程量报表</title>\n"
      "<style>");
  output_.Write(kPageStyle.text);
  output_.Write(
      "</style>\n"
      "</head>\n"
      "<body>\n"
      "<noscript>此页面需要启用 JavaScript 才能显示报表。</noscript>\n");
  BeginData("head");
  data_.Write("{");
  WriteJsonHead(data_, head);
  data_.Write("}");
  EndData();
}

void CHtmlExporter::BeginData(const char* name) {
  output_.Write(Joined("<script type=\"application/json\" class=\"", name, "\">"));
}

void CHtmlExporter::EndData() {
  data_.Flush();
  output_.Write("</script>\n");
}

// Which columns the cells of a row are in, by kind of row.
void CHtmlExporter::WriteKinds(const CColumns& columns) {
  const char* separator = "";
  for (const SRowLayout& row : columns.Layout().rows) {
    data_.Write(Joined(separator, R"({"kind":)"));
    WriteJsonKind(data_, row);
    data_.Write(Joined(R"(,"depth":)", std::to_string(row.depth), R"(,"columns":[)"));
    const char* comma = "";
    for (std::size_t i = 0; i < columns.Size(); ++i) {
      if (columns.Position(row, i) >= 0) {
        data_.Write(Joined(comma, std::to_string(i)));
        comma = ",";
      }
    }
    data_.Write("]}");
    separator = ",";
  }
}

void CHtmlExporter::WriteRow(const SRow& row, const CColumns& columns) {
  data_.Write(Joined("[", std::to_string(row.layout - columns.Layout().rows.data())));
  for (std::size_t i = 0; i < columns.Size(); ++i) {
    if (const std::wstring* cell = columns.Cell(row, i)) {
      data_.Write(",");
      data_.WriteJsonText(*cell);
    }
  }
  data_.Write("]");
}

void CHtmlExporter::Write(const SExportTable& table) {
  const CColumns& columns = *table.columns;
  BeginData("table");
  data_.Write("{");
  WriteJsonTableHead(data_, table);
  data_.Write(Joined(R"(,"rows":)", std::to_string(table.rows.size()), R"(,"kinds":[)"));
  WriteKinds(columns);
  data_.Write("]}");
  EndData();
  BeginData("rows");
  data_.Write("[");
  const char* separator = "\n";
  for (const SRow& row : table.rows) {
    data_.Write(separator);
    WriteRow(row, columns);
    separator = ",\n";
  }
  data_.Write("]");
  EndData();
}

void CHtmlExporter::End() {
  output_.Write("<script>");
  output_.Write(kPageScript.text);
  output_.Write(
      "</script>\n"
      "</body>\n"
      "</html>\n");
}
