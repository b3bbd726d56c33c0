// Every output format of text over texts of any kind: a reader of the format gets the texts back,
// and none of them becomes markup, a formula or a move of the cursor.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "export_document.h"
#include "fuzz_check.h"
#include "fuzz_input.h"
#include "host/columns.h"
#include "host/file_names.h"
#include "host/formats.h"
#include "host/report_catalog.h"
#include "host/shown_name.h"
#include "host/suggestion.h"
#include "host/terminal_text.h"
#include "platform/portable/utf8_text.h"
#include "rows/row_layouts.h"

namespace {

using Json = nlohmann::json;

/// As a text arrives that was written as UTF-8.
std::string Utf8(std::wstring_view text) {
  return Utf8FromWide(text);
}

bool IsUtf8(std::string_view bytes) {
  return Utf8FromWide(WideFromUtf8(bytes)) == bytes;
}

// Readers --------------------------------------------------------------------------------------

using Lines = std::vector<std::vector<std::string>>;

/// RFC 4180.
Lines ReadCsv(std::string_view text) {
  Require(text.starts_with("\xEF\xBB\xBF"), "CSV begins with a mark");
  text.remove_prefix(3);
  Lines lines;
  std::vector<std::string> line;
  std::string value;
  while (!text.empty()) {
    if (text.front() == '"') {
      text.remove_prefix(1);
      while (true) {
        const std::size_t quote = text.find('"');
        Require(quote != text.npos, "a quoted value ends");
        value += text.substr(0, quote);
        text.remove_prefix(quote + 1);
        if (!text.starts_with('"')) {
          break;
        }
        value += '"';
        text.remove_prefix(1);
      }
    } else {
      const std::size_t end = std::min(text.find_first_of(",\r\n\""), text.size());
      value = text.substr(0, end);
      text.remove_prefix(end);
    }
    line.push_back(std::exchange(value, {}));
    if (text.starts_with(',')) {
      text.remove_prefix(1);
      if (text.starts_with("\r\n")) {
        line.emplace_back();
      }
    }
    if (text.starts_with("\r\n")) {
      text.remove_prefix(2);
      lines.push_back(std::exchange(line, {}));
    }
  }
  Require(line.empty(), "CSV ends with a line end");
  return lines;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      plain += text[i];
      continue;
    }
    ++i;
    Require(i < text.size(), "an escape is whole");
    plain += text[i] == 't' ? '\t' : text[i] == 'n' ? '\n' : text[i];
  }
  return plain;
}

Lines ReadTsv(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    Require(end != text.npos, "TSV ends with a line end");
    std::string_view line = text.substr(0, end);
    std::vector<std::string>& values = lines.emplace_back();
    for (std::size_t tab = line.find('\t'); tab != line.npos; tab = line.find('\t')) {
      values.push_back(Unescaped(line.substr(0, tab)));
      line.remove_prefix(tab + 1);
    }
    values.push_back(Unescaped(line));
    text.remove_prefix(end + 1);
  }
  return lines;
}

// Checks ---------------------------------------------------------------------------------------

/// The same value, unless it was kept from being computed.
void CheckValue(const std::string& value, const std::string& expected, bool isGuarded) {
  if (isGuarded) {
    const std::size_t first = std::min(value.find_first_not_of(' '), value.size());
    Require(std::string_view("=+-@\t\r\n").find(value.substr(first, 1)) == std::string_view::npos ||
                first == value.size(),
            "no text computes");
    Require(value == expected || value == "'" + expected, "a guarded text is there");
  } else {
    Require(value == expected, "a value comes back");
  }
}

void CheckLines(const Lines& lines, const SDocument& document) {
  const CColumns columns = document.Columns();
  const std::vector<SRow> rows = CutRows(*document.layout, document.cells);
  Require(lines.size() == 1 + 2 * rows.size(), "a line for each row");
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const SRow& row = rows[(i - 1) % rows.size()];
    const std::vector<std::string>& line = lines[i];
    Require(line.size() == 2 + columns.Size(), "a value for each column");
    CheckValue(line[0], Utf8(document.spec), document.options.csvSafe);
    for (std::size_t column = 0; column < columns.Size(); ++column) {
      const std::wstring* cell = columns.Cell(row, column);
      const bool isQuantity = columns[column].cell->type == ECellType::Quantity;
      CheckValue(line[2 + column], cell == nullptr ? std::string() : Utf8(*cell),
                 document.options.csvSafe && !isQuantity);
    }
  }
}

/// All texts of the cells of rows and of the rows below them.
void CollectCells(const Json& rows, std::multiset<std::string>& texts) {
  for (const Json& row : rows) {
    for (const Json& cell : row["cells"]) {
      texts.insert(cell.is_string() ? cell.get<std::string>() : cell.is_null() ? "" : "number");
    }
    CollectCells(row["children"], texts);
  }
}

void CheckJson(const std::string& text, const SDocument& document) {
  const Json parsed = Json::parse(text, nullptr, false);
  Require(parsed.is_object() && parsed["reports"].size() == 2, "JSON holds the reports");
  Require(parsed["reports"][0] == parsed["reports"][1], "both tables are the same");
  Require(parsed["reports"][0]["discipline"] == Utf8(document.spec), "the discipline comes back");
  const CColumns columns = document.Columns();
  std::multiset<std::string> expected;
  const std::vector<SRow> rows = CutRows(*document.layout, document.cells);
  for (const SRow& row : rows) {
    for (std::size_t column = 0; column < columns.Size(); ++column) {
      if (const std::wstring* cell = columns.Cell(row, column)) {
        const bool isQuantity = columns[column].cell->type == ECellType::Quantity;
        const bool isNumber = isQuantity && Json::accept(Utf8(*cell)) &&
                              Json::parse(Utf8(*cell)).is_number() && !cell->empty() &&
                              cell->find_first_of(L" \t\r\n") == cell->npos;
        expected.insert(isNumber ? "number" : Utf8(*cell));
      }
    }
  }
  std::multiset<std::string> texts;
  CollectCells(parsed["reports"][0]["rows"], texts);
  Require(texts == expected, "the cells come back");
}

/// The same document without any text of the project.
SDocument Blank(SDocument document) {
  document.head = {};
  document.head.choices.clear();
  document.filter.clear();
  document.spec.clear();
  const std::vector<SRow> rows = CutRows(*document.layout, document.cells);
  for (const SRow& row : rows) {
    for (const std::wstring& cell : row.cells) {
      document.cells[static_cast<std::size_t>(&cell - document.cells.data())].clear();
    }
  }
  return document;
}

/// The rows of a table as the page's script gets them.
void CheckHtmlRows(const Json& parsed, const SDocument& document) {
  const CColumns columns = document.Columns();
  const std::vector<SRow> rows = CutRows(*document.layout, document.cells);
  Require(parsed.size() == rows.size(), "all rows");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::vector<std::string> texts;
    for (std::size_t column = 0; column < columns.Size(); ++column) {
      if (const std::wstring* cell = columns.Cell(rows[i], column)) {
        texts.push_back(Utf8(*cell));
      }
    }
    Require(parsed[i].size() == 1 + texts.size(), "all cells of a row");
    for (std::size_t cell = 0; cell < texts.size(); ++cell) {
      Require(parsed[i][cell + 1] == texts[cell], "the cells of a page come back");
    }
  }
}

void CheckHtml(const SFormat& format, const std::string& text, const SDocument& document) {
  const std::string blank = Exported(format, Blank(document));
  Require(std::count(text.begin(), text.end(), '<') == std::count(blank.begin(), blank.end(), '<'),
          "no text of a project is markup");
  constexpr std::string_view kData = "<script type=\"application/json\" class=\"";
  std::string_view rest = text;
  int tables = 0;
  for (std::size_t at = rest.find(kData); at != rest.npos; at = rest.find(kData)) {
    rest.remove_prefix(at + kData.size());
    const std::string_view name = rest.substr(0, rest.find('"'));
    const std::size_t begin = rest.find('>') + 1;
    const Json parsed = Json::parse(rest.substr(begin, rest.find('<') - begin), nullptr, false);
    Require(!parsed.is_discarded(), "data elements hold JSON");
    if (name == "rows") {
      CheckHtmlRows(parsed, document);
      ++tables;
    }
  }
  Require(tables == 2, "both tables");
}

/// A line of text that no terminal takes for more.
void CheckTerminal(std::string_view text) {
  for (const char c : text) {
    Require(static_cast<unsigned char>(c) >= 0x20 || c == '\n', "no control character");
    Require(c != 0x7F, "no delete");
  }
  for (const wchar_t c : WideFromUtf8(text)) {
    Require(c < 0x80 || c > 0x9F, "no control character of the second range");
    Require(c < 0x202A || c > 0x202E, "no change of direction");
  }
}

void CheckCells(const std::string& text, const SDocument& document) {
  std::string_view rest = text;
  std::size_t count = 0;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    Require(end != rest.npos, "each cell is a line");
    const Json cell = Json::parse(rest.substr(0, end), nullptr, false);
    Require(cell.is_string(), "each cell is a text");
    Require(cell == Utf8(document.cells[count % document.cells.size()]), "a cell comes back");
    rest.remove_prefix(end + 1);
    ++count;
  }
  Require(count == 2 * document.cells.size(), "all cells");
}

void CheckFormat(const SFormat& format, const SDocument& document) {
  const std::string text = Exported(format, document);
  const std::string_view name = format.name;
  // A page is long, and its data is read as JSON.
  Require(name == "html" || IsUtf8(text), "a document is UTF-8");
  if (name == "csv") {
    CheckLines(ReadCsv(text), document);
  } else if (name == "tsv") {
    CheckLines(ReadTsv(text), document);
  } else if (name == "json") {
    CheckJson(text, document);
  } else if (name == "html") {
    CheckHtml(format, text, document);
  } else if (name == "table") {
    CheckTerminal(text);
  } else if (name == "cells") {
    CheckCells(text, document);
  }
}

void CheckNames(const SDocument& document, const std::vector<std::wstring>& texts) {
  CFileNames names(".txt");
  std::set<std::string> taken;
  std::vector<std::string> words;
  for (const std::wstring& text : texts) {
    const std::string name = names.NameOf(*document.report, text);
    Require(taken.insert(name).second, "no name twice");
    Require(name.size() <= 255 && name.ends_with(".txt") && IsUtf8(name), "a name of a file");
    Require(name.find_first_of("/\\:*?\"<>|\n") == name.npos, "every file system takes it");
    const STerminalText shown = ToTerminalText(text);
    Require(shown.width >= 0 && shown.bytes.find('\n') == std::string::npos, "one line");
    CheckTerminal(shown.bytes);
    Require(!ShownName(text).empty(), "something to see");
    words.push_back(Utf8(text));
  }
  const std::string suggestion = Suggestion(words.back(), words);
  Require(suggestion.empty(), "a known word needs no suggestion");
  Suggestion(words.back() + "x", words);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CFuzzInput input(data, size);
  const std::vector<std::wstring> texts = ReadTexts(input);
  const SDocument document = ReadDocument(input, texts);
  for (const SFormat& format : Formats()) {
    // Workbooks have a fuzzer of their own.
    if (!format.isForFilesOnly) {
      CheckFormat(format, document);
    }
  }
  CheckNames(document, texts);
  return 0;
}
