#include "host/csv_exporter.h"

#include <string>

#include "platform/portable/utf8_text.h"

namespace {

constexpr std::wstring_view kSpecHeading = L"专业";
constexpr std::wstring_view kLevelHeading = L"级别";

// What makes a spreadsheet compute a text is how it begins, perhaps behind blanks.
bool LooksComputed(std::wstring_view text) {
  const std::size_t first = text.find_first_not_of(L' ');
  return first != std::wstring_view::npos &&
         std::wstring_view(L"=+-@\t\r\n＝＋－＠").find(text[first]) != std::wstring_view::npos;
}

}  // namespace

void CLinesExporter::WriteHeadings(const CColumns& columns) {
  BeginFile();
  WriteValue(kSpecHeading);
  output_.Write(Separator());
  WriteValue(kLevelHeading);
  for (const SColumn& column : columns) {
    output_.Write(Separator());
    WriteValue(column.cell->heading);
  }
  output_.Write(LineEnd());
}

// A quantity is a number of the engine's own, "-1.5" included.
void CLinesExporter::WriteCell(const SCellLayout& column, const std::wstring& text) {
  if (isSafe_ && column.type != ECellType::Quantity && LooksComputed(text)) {
    WriteValue(L"'" + text);
  } else {
    WriteValue(text);
  }
}

void CLinesExporter::Write(const SExportTable& table) {
  const CColumns& columns = *table.columns;
  if (!isBegun_) {
    isBegun_ = true;
    WriteHeadings(columns);
  }
  const SCellLayout specColumn = {L"", "", ECellType::Text};
  for (const SRow& row : table.rows) {
    WriteCell(specColumn, table.spec);
    output_.Write(Separator());
    output_.Write(std::to_string(row.layout->depth));
    for (std::size_t i = 0; i < columns.Size(); ++i) {
      output_.Write(Separator());
      if (const std::wstring* cell = columns.Cell(row, i)) {
        WriteCell(*columns[i].cell, *cell);
      }
    }
    output_.Write(LineEnd());
  }
}

void CCsvExporter::WriteValue(std::wstring_view text) {
  const bool isQuoted = text.find_first_of(L",\"\r\n") != std::wstring_view::npos;
  if (!isQuoted) {
    output_.WriteText(text);
    return;
  }
  output_.Write("\"");
  for (std::size_t at = text.find(L'"'); at != std::wstring_view::npos; at = text.find(L'"')) {
    output_.WriteText(text.substr(0, at + 1));
    output_.Write("\"");
    text.remove_prefix(at + 1);
  }
  output_.WriteText(text);
  output_.Write("\"");
}

void CTsvExporter::WriteValue(std::wstring_view text) {
  constexpr std::wstring_view kEscaped = L"\t\n\\";
  constexpr std::string_view kEscapes[] = {"\\t", "\\n", "\\\\"};
  for (std::size_t at = text.find_first_of(kEscaped); at != std::wstring_view::npos;
       at = text.find_first_of(kEscaped)) {
    output_.WriteText(text.substr(0, at));
    output_.Write(kEscapes[kEscaped.find(text[at])]);
    text.remove_prefix(at + 1);
  }
  output_.WriteText(text);
}
