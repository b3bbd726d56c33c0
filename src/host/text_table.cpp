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

struct SColumn {
  const SCellLayout* cell;
  int width = 0;
};

/// A line of the table as its texts, the first of them in the column of levels.
struct SLine {
  int indent = 0;
  std::vector<STerminalText> texts;  // as many as there are columns
};

class CTextTable {
 public:
  CTextTable(const SReportLayout& layout, std::span<const SRow> rows);

  void Write(COutput& output) const;

 private:
  void FindLevels(const SReportLayout& layout);
  void FindColumns();
  void MakeHeadings();
  void Measure(const SLine& line);
  SLine LineOf(const SRow& row) const;
  std::string Format(const SLine& line) const;
  std::size_t ColumnOf(const SCellLayout& cell) const;
  static bool IsShown(const SCellLayout& cell) { return cell.type != ECellType::References; }

  std::span<const SRow> rows_;
  std::vector<const SRowLayout*> levels_;  // those that occur
  std::vector<SColumn> columns_;           // the first is the one of levels
  std::vector<SLine> headings_;
};

CTextTable::CTextTable(const SReportLayout& layout, std::span<const SRow> rows) : rows_(rows) {
  FindLevels(layout);
  FindColumns();
  MakeHeadings();
  for (const SRow& row : rows_) {
    Measure(LineOf(row));
  }
}

void CTextTable::FindLevels(const SReportLayout& layout) {
  std::vector<bool> occurs(layout.rows.size());
  for (const SRow& row : rows_) {
    occurs[static_cast<std::size_t>(row.layout - layout.rows.data())] = true;
  }
  for (std::size_t i = 0; i < occurs.size(); ++i) {
    if (occurs[i]) {
      levels_.push_back(&layout.rows[i]);
    }
  }
}

// Columns keep the order that every level has them in: one that is new comes before those that
// follow it in its row.
void CTextTable::FindColumns() {
  columns_.push_back({nullptr});
  for (const SRowLayout* level : levels_) {
    std::size_t before = columns_.size();
    for (std::size_t i = level->cells.size(); i-- > 1;) {
      const SCellLayout& cell = level->cells[i];
      if (!IsShown(cell)) {
        continue;
      }
      const std::size_t at = ColumnOf(cell);
      if (at == columns_.size()) {
        columns_.insert(columns_.begin() + static_cast<std::ptrdiff_t>(before), {&cell});
      } else {
        before = at;
      }
    }
  }
}

std::size_t CTextTable::ColumnOf(const SCellLayout& cell) const {
  std::size_t at = 1;
  while (at < columns_.size() && std::string_view(columns_[at].cell->id) != cell.id) {
    ++at;
  }
  return at;
}

void CTextTable::MakeHeadings() {
  std::vector<bool> isHeaded(columns_.size());
  for (const SRowLayout* level : levels_) {
    SLine line;
    line.indent = kIndent * (level->depth - levels_.front()->depth);
    line.texts.resize(columns_.size());
    line.texts[0] = ToTerminalText(level->cells[0].heading);
    for (const SCellLayout& cell : level->cells.subspan(1)) {
      const std::size_t at = ColumnOf(cell);
      if (IsShown(cell) && !isHeaded[at]) {
        isHeaded[at] = true;
        line.texts[at] = ToTerminalText(cell.heading);
      }
    }
    Measure(line);
    headings_.push_back(std::move(line));
  }
}

SLine CTextTable::LineOf(const SRow& row) const {
  SLine line;
  line.indent = kIndent * (row.layout->depth - levels_.front()->depth);
  line.texts.resize(columns_.size());
  line.texts[0] = ToTerminalText(row.cells[0]);
  for (std::size_t i = 1; i < row.cells.size(); ++i) {
    if (IsShown(row.layout->cells[i])) {
      line.texts[ColumnOf(row.layout->cells[i])] = ToTerminalText(row.cells[i]);
    }
  }
  return line;
}

void CTextTable::Measure(const SLine& line) {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const int width = line.texts[i].width + (i == 0 ? line.indent : 0);
    columns_[i].width = std::max(columns_[i].width, std::min(width, kWidestColumn));
  }
}

std::string CTextTable::Format(const SLine& line) const {
  std::string text(static_cast<std::size_t>(line.indent), ' ');
  int owed = 0;  // blanks that are due when another text follows
  const auto pay = [&] {
    text.append(static_cast<std::size_t>(owed), ' ');
    owed = 0;
  };
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const SColumn& column = columns_[i];
    const int width = line.texts[i].width + (i == 0 ? line.indent : 0);
    const int spare = std::max(0, column.width - width);
    const bool isRight = column.cell != nullptr && column.cell->type == ECellType::Quantity;
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
  std::size_t width = 0;
  for (const SColumn& column : columns_) {
    width +=
        static_cast<std::size_t>(column.width) + (&column == &columns_.front() ? 0 : kGapWidth);
  }
  output.Write(std::string(width, '-') + "\n");
  for (const SRow& row : rows_) {
    output.Write(Format(LineOf(row)));
  }
}

}  // namespace

void WriteTextTable(COutput& output, const SReportLayout& layout, std::span<const SRow> rows) {
  CTextTable(layout, rows).Write(output);
}
