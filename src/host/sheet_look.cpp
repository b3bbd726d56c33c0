#include "host/sheet_look.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "host/terminal_text.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr int kLeastWidth = 6;
constexpr int kGreatestWidth = 48;

void Widen(SColumnLook& look, std::wstring_view text) {
  if (!look.isWrapped && text.find(L'\n') != std::wstring_view::npos) {
    look.isWrapped = true;
  }
  // No character is wider than two: most texts need no closer look.
  if (look.width == kGreatestWidth || text.size() * 2 <= static_cast<std::size_t>(look.width)) {
    return;
  }
  int line = 0;
  while (!text.empty()) {
    const char32_t c = TakeCodePoint(text);
    line = c == U'\n' ? 0 : line + CodePointWidth(c);
    look.width = std::max(look.width, std::min(line, kGreatestWidth));
    if (line > kGreatestWidth) {
      look.isWrapped = true;
      return;
    }
  }
}

// How many lines a text takes where none may be wider.
int WrappedLines(std::wstring_view text, int width) {
  int lines = 1;
  int line = 0;
  while (!text.empty()) {
    const char32_t c = TakeCodePoint(text);
    line += CodePointWidth(c);
    if (c == U'\n' || line > width) {
      ++lines;
      line = c == U'\n' ? 0 : CodePointWidth(c);
    }
  }
  return lines;
}

}  // namespace

SSheetLook LookOf(const CColumns& columns, std::span<const SRow> rows) {
  SSheetLook look;
  for (const SColumn& column : columns) {
    SColumnLook& heading = look.columns.emplace_back();
    heading.width = kLeastWidth;
    Widen(heading, column.cell->heading);
  }
  if (!rows.empty()) {
    look.outermost = look.innermost = rows.front().layout->depth;
  }
  for (const SRow& row : rows) {
    look.outermost = std::min(look.outermost, row.layout->depth);
    look.innermost = std::max(look.innermost, row.layout->depth);
    for (std::size_t i = 0; i < columns.Size(); ++i) {
      if (const std::wstring* cell = columns.Cell(row, i)) {
        Widen(look.columns[i], *cell);
      }
    }
  }
  return look;
}

int LinesOf(const SRow& row, const CColumns& columns, const SSheetLook& look) {
  int lines = 1;
  for (std::size_t i = 0; i < columns.Size(); ++i) {
    const std::wstring* cell = columns.Cell(row, i);
    if (look.columns[i].isWrapped && columns[i].isShown && cell != nullptr && !cell->empty()) {
      lines = std::max(lines, WrappedLines(*cell, look.columns[i].width));
    }
  }
  return lines;
}
