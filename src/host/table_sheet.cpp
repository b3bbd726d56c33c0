#include "host/table_sheet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

#include "host/workbook_text.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr int kSectionDepth = 0;
constexpr int kDeepestOutline = 7;
constexpr std::uint8_t kA4 = 9;
constexpr double kLevelWidth = 6;
constexpr double kCharacterWidth = 1.1;  // Chinese characters are somewhat wider than two digits
constexpr double kMargin = 2;
constexpr double kLineHeight = 16.5;  // of Chinese fonts too
constexpr int kMostLines = 24;        // rows take no more than 409 points

// Levels are drawn by the spreadsheet from the rows themselves.
constexpr std::uint8_t kOutlineShown = LXW_TRUE;
constexpr std::uint8_t kSummaryBelow = LXW_FALSE;

std::optional<double> Number(std::wstring_view text) {
  std::array<char, 32> digits;
  if (text.empty() || text.size() > digits.size()) {
    return std::nullopt;
  }
  const bool isAscii = std::all_of(text.begin(), text.end(), [](wchar_t c) { return c <= L'~'; });
  std::transform(text.begin(), text.end(), digits.begin(),
                 [](wchar_t c) { return static_cast<char>(c); });
  const char* const end = digits.data() + text.size();
  double number = 0;
  const auto [read, error] = std::from_chars(digits.data(), end, number);
  const bool isNumber = isAscii && error == std::errc() && read == end && std::isfinite(number);
  return isNumber ? std::optional(number) : std::nullopt;
}

// In heads and feet of pages "&" begins a command and "&&" is the character. The library takes
// "&G" and "&[" for pictures even behind another "&"; there the full-width form stands.
std::string PageText(const std::string& text) {
  constexpr std::size_t kLongest = 100;
  const std::wstring wide = WideFromUtf8(text).substr(0, kLongest);
  std::wstring escaped;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const wchar_t c = wide[i];
    if (c != L'&') {
      escaped += c < L' ' || c == 0xFFFE || c == 0xFFFF ? L' ' : c;
      continue;
    }
    const wchar_t next = i + 1 < wide.size() ? wide[i + 1] : L' ';
    escaped += next == L'G' || next == L'[' ? L"＆" : L"&&";
  }
  return Utf8FromWide(escaped);
}

}  // namespace

void WriteText(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, std::wstring_view text,
               lxw_format* format) {
  std::string bytes;
  SetWorkbookText(bytes, text);
  RequireDone(worksheet_write_string(sheet, row, column, bytes.c_str(), format));
}

void SetPages(lxw_worksheet* sheet, const std::string& project) {
  worksheet_set_landscape(sheet);
  worksheet_set_paper(sheet, kA4);
  worksheet_fit_to_pages(sheet, 1, 0);
  worksheet_set_margins(sheet, 0.4, 0.4, 0.75, 0.6);
  RequireDone(worksheet_set_header(sheet, "&C&\"-,Bold\"&14&A"));
  const std::string footer = "&L" + PageText(project) + "&R第 &P 页，共 &N 页";
  RequireDone(worksheet_set_footer(sheet, footer.c_str()));
}

CTableSheet::CTableSheet(CWorkbook& workbook, lxw_worksheet* sheet, const CColumns& columns,
                         const SSheetLook& look)
    : workbook_(workbook), sheet_(sheet), columns_(columns), look_(look) {
  worksheet_freeze_panes(sheet_, 1, 0);
  worksheet_gridlines(sheet_, LXW_SHOW_ALL_GRIDLINES);
  worksheet_outline_settings(sheet_, kOutlineShown, kSummaryBelow, LXW_TRUE, LXW_FALSE);
  RequireDone(worksheet_repeat_rows(sheet_, 0, 0));
  SetColumns();
}

void CTableSheet::SetColumns() {
  RequireDone(worksheet_set_column(sheet_, 0, 0, kLevelWidth, nullptr));
  for (std::size_t i = 0; i < columns_.Size(); ++i) {
    const auto at = static_cast<lxw_col_t>(i + 1);
    lxw_row_col_options options = {};
    options.hidden = columns_[i].isShown ? LXW_FALSE : LXW_TRUE;
    RequireDone(worksheet_set_column_opt(
        sheet_, at, at, look_.columns[i].width * kCharacterWidth + kMargin, nullptr, &options));
  }
}

void CTableSheet::WriteHeadings() {
  lxw_format* format = workbook_.Format(ERowLook::Heading, ECellLook::Text);
  WriteText(sheet_, 0, 0, kLevelHeading, format);
  for (std::size_t i = 0; i < columns_.Size(); ++i) {
    WriteText(sheet_, 0, static_cast<lxw_col_t>(i + 1), columns_[i].cell->heading, format);
  }
}

void CTableSheet::Write(std::span<const SRow> rows, const std::function<void()>& afterRow) {
  WriteHeadings();
  lxw_row_t at = 0;
  for (const SRow& row : rows) {
    WriteRow(++at, row);
    workbook_.RequireWritten(sheet_);
    afterRow();
  }
  workbook_.EndSheet(sheet_);
}

ERowLook CTableSheet::LookOfRow(const SRow& row) const {
  const int depth = row.layout->depth;
  if (depth == kSectionDepth) {
    return ERowLook::Section;
  }
  const int outermost = std::max(look_.outermost, kSectionDepth + 1);
  return depth <= outermost && depth < look_.innermost ? ERowLook::Bold : ERowLook::Plain;
}

void CTableSheet::WriteRow(lxw_row_t at, const SRow& row) {
  const int depth = row.layout->depth;
  lxw_row_col_options options = {};
  options.level = static_cast<std::uint8_t>(std::min(depth - look_.outermost, kDeepestOutline));
  const int lines = std::min(LinesOf(row, columns_, look_), kMostLines);
  const double height = lines == 1 ? LXW_DEF_ROW_HEIGHT : lines * kLineHeight;
  RequireDone(worksheet_set_row_opt(sheet_, at, height, nullptr, &options));
  const ERowLook rowLook = LookOfRow(row);
  RequireDone(
      worksheet_write_number(sheet_, at, 0, depth, workbook_.Format(rowLook, ECellLook::Level)));
  for (std::size_t i = 0; i < columns_.Size(); ++i) {
    WriteCell(at, static_cast<lxw_col_t>(i), columns_.Cell(row, i), rowLook);
  }
}

// Blank cells are left out, but for the fill of a section's whole row.
void CTableSheet::WriteCell(lxw_row_t at, lxw_col_t column, const std::wstring* cell,
                            ERowLook rowLook) {
  const auto place = static_cast<lxw_col_t>(column + 1);
  if (cell == nullptr || cell->empty()) {
    if (rowLook == ERowLook::Section) {
      RequireDone(
          worksheet_write_blank(sheet_, at, place, workbook_.Format(rowLook, ECellLook::Text)));
    }
    return;
  }
  if (columns_[column].cell->type == ECellType::Quantity) {
    if (const std::optional<double> number = Number(*cell)) {
      RequireDone(worksheet_write_number(sheet_, at, place, *number,
                                         workbook_.Format(rowLook, ECellLook::Number)));
      return;
    }
  }
  const ECellLook look = look_.columns[column].isWrapped ? ECellLook::Wrapped : ECellLook::Text;
  cuts_ += SetWorkbookText(bytes_, *cell) ? 1 : 0;
  RequireDone(
      worksheet_write_string(sheet_, at, place, bytes_.c_str(), workbook_.Format(rowLook, look)));
}
