#include "host/text_table.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/terminal_text.h"

namespace {

constexpr int kIndent = 2;
constexpr int kGapWidth = 2;
// A longer text moves the rest of its own line only.
constexpr int kWidestColumn = 72;

/// A line of the table as its texts, the first of them in the column of levels.
struct SLine {
  int indent = 0;
  std::vector<STerminalText> texts;  // as many as there are columns
};

class CTextTable {
 public:
  CTextTable(const CColumns& columns, std::span<const SRow> rows);

  void Write(COutput& output) const;

 private:
  void FindLevels();
  void MakeHeadings();
  void Measure(const SLine& line);
  SLine LineOf(const SRow& row) const;
  SLine EmptyLine(const SRowLayout& row) const;
  std::string Format(const SLine& line) const;
  /// Of a column's cell in its row; 0 where it has none, or has it in the column of levels.
  std::size_t Position(const SRowLayout& row, std::size_t column) const {
    return static_cast<std::size_t>(std::max(0, columns_.Position(row, column)));
  }

  const CColumns columns_;
  std::span<const SRow> rows_;
  std::vector<const SRowLayout*> levels_;  // those that occur
  std::vector<std::size_t> shown_;         // positions among the columns
  std::vector<int> widths_;                // the first is the column of levels
  std::vector<SLine> headings_;
};

CTextTable::CTextTable(const CColumns& columns, std::span<const SRow> rows)
    : columns_(columns.OccurringIn(rows)), rows_(rows) {
  FindLevels();
  for (std::size_t i = 0; i < columns_.Size(); ++i) {
    const bool isBehindLevels =
        std::any_of(levels_.begin(), levels_.end(),
                    [&](const SRowLayout* level) { return Position(*level, i) > 0; });
    if (columns_[i].isShown && isBehindLevels) {
      shown_.push_back(i);
    }
  }
  widths_.resize(shown_.size() + 1);
  MakeHeadings();
  for (const SRow& row : rows_) {
    Measure(LineOf(row));
  }
}

void CTextTable::FindLevels() {
  for (const SRowLayout& level : columns_.Layout().rows) {
    if (std::any_of(rows_.begin(), rows_.end(),
                    [&](const SRow& row) { return row.layout == &level; })) {
      levels_.push_back(&level);
    }
  }
}

void CTextTable::MakeHeadings() {
  std::vector<bool> isHeaded(shown_.size());
  for (const SRowLayout* level : levels_) {
    SLine line = EmptyLine(*level);
    line.texts[0] = ToTerminalText(level->cells[0].heading);
    for (std::size_t i = 0; i < shown_.size(); ++i) {
      if (Position(*level, shown_[i]) > 0 && !isHeaded[i]) {
        isHeaded[i] = true;
        line.texts[i + 1] = ToTerminalText(columns_[shown_[i]].cell->heading);
      }
    }
    Measure(line);
    headings_.push_back(std::move(line));
  }
}

SLine CTextTable::EmptyLine(const SRowLayout& row) const {
  SLine line;
  line.indent = kIndent * (row.depth - levels_.front()->depth);
  line.texts.resize(widths_.size());
  return line;
}

SLine CTextTable::LineOf(const SRow& row) const {
  SLine line = EmptyLine(*row.layout);
  line.texts[0] = ToTerminalText(row.cells[0]);
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    if (const std::size_t at = Position(*row.layout, shown_[i]); at > 0) {
      line.texts[i + 1] = ToTerminalText(row.cells[at]);
    }
  }
  return line;
}

void CTextTable::Measure(const SLine& line) {
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const int width = line.texts[i].width + (i == 0 ? line.indent : 0);
    widths_[i] = std::max(widths_[i], std::min(width, kWidestColumn));
  }
}

std::string CTextTable::Format(const SLine& line) const {
  std::string text(static_cast<std::size_t>(line.indent), ' ');
  int owed = 0;  // blanks that are due when another text follows
  const auto pay = [&] {
    text.append(static_cast<std::size_t>(owed), ' ');
    owed = 0;
  };
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const int width = line.texts[i].width + (i == 0 ? line.indent : 0);
    const int spare = std::max(0, widths_[i] - width);
    const bool isRight = i > 0 && columns_[shown_[i - 1]].cell->type == ECellType::Quantity;
    owed += isRight ? spare : 0;
    if (!line.texts[i].bytes.empty()) {
      pay();
      text += line.texts[i].bytes;
    }
    owed += (isRight ? 0 : spare) + kGapWidth;
  }
  return text + "\n";
}

void CTextTable::Write(COutput& output) const {
  if (rows_.empty()) {
    return;
  }
  for (const SLine& line : headings_) {
    output.Write(Format(line));
  }
  int width = -kGapWidth;
  for (const int columnWidth : widths_) {
    width += columnWidth + kGapWidth;
  }
  output.Write(std::string(static_cast<std::size_t>(width), '-') + "\n");
  for (const SRow& row : rows_) {
    output.Write(Format(LineOf(row)));
  }
}

}  // namespace

void WriteTextTable(COutput& output, const CColumns& columns, std::span<const SRow> rows) {
  CTextTable(columns, rows).Write(output);
}
