#include "host/json_exporter.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "host/export_json.h"
#include "host/joined.h"

namespace {

// Takes the digits that a text begins with, and says whether there are any.
bool TakeDigits(std::wstring_view& text) {
  const std::size_t count = std::min(text.find_first_not_of(L"0123456789"), text.size());
  text.remove_prefix(count);
  return count != 0;
}

bool TakeOneOf(std::wstring_view& text, std::wstring_view characters) {
  if (text.empty() || characters.find(text.front()) == std::wstring_view::npos) {
    return false;
  }
  text.remove_prefix(1);
  return true;
}

bool IsJsonNumber(std::wstring_view text) {
  TakeOneOf(text, L"-");
  if (!TakeOneOf(text, L"0") && !TakeDigits(text)) {
    return false;
  }
  if (TakeOneOf(text, L".") && !TakeDigits(text)) {
    return false;
  }
  if (TakeOneOf(text, L"eE")) {
    TakeOneOf(text, L"+-");
    if (!TakeDigits(text)) {
      return false;
    }
  }
  return text.empty();
}

void WriteCell(COutput& output, ECellType type, const std::wstring& text) {
  const bool isQuantity = type == ECellType::Quantity;
  if (isQuantity && text.empty()) {
    output.Write("null");
  } else if (isQuantity && IsJsonNumber(text)) {
    output.WriteText(text);
  } else {
    output.WriteJsonText(text);
  }
}

}  // namespace

CJsonExporter::CJsonExporter(const SExportHead& head, const SExportOptions&, COutput& output)
    : output_(output) {
  output_.Write("{");
  WriteJsonHead(output_, head);
  output_.Write(R"(,"reports":[)");
}

void CJsonExporter::BeginRow(const SRow& row, const CColumns& columns) {
  output_.Write(separator_);
  output_.Write(Joined(R"({"level":)", std::to_string(row.layout->depth), R"(,"kind":)"));
  WriteJsonKind(output_, *row.layout);
  output_.Write(R"(,"cells":{)");
  const char* separator = "";
  for (std::size_t i = 0; i < columns.Size(); ++i) {
    if (const std::wstring* cell = columns.Cell(row, i)) {
      output_.Write(Joined(separator, "\"", columns[i].cell->id, "\":"));
      WriteCell(output_, columns[i].cell->type, *cell);
      separator = ",";
    }
  }
  output_.Write(R"(},"children":[)");
  open_.push_back(row.layout->depth);
  separator_ = "\n";
}

void CJsonExporter::EndRowsFrom(int depth) {
  while (!open_.empty() && open_.back() >= depth) {
    open_.pop_back();
    output_.Write("]}");
    separator_ = ",\n";
  }
}

void CJsonExporter::Write(const SExportTable& table) {
  output_.Write(Joined(separator_, "{"));
  WriteJsonTableHead(output_, table);
  output_.Write(R"(,"rows":[)");
  separator_ = "\n";
  for (const SRow& row : table.rows) {
    EndRowsFrom(row.layout->depth);
    BeginRow(row, *table.columns);
  }
  EndRowsFrom(0);
  output_.Write("]}");
  separator_ = ",\n";
}

void CJsonExporter::End() {
  output_.Write("\n]}\n");
}
