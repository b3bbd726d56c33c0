#include "host/xlsx_exporter.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>

#include "host/joined.h"
#include "host/progress_bar.h"
#include "host/sheet_look.h"
#include "host/table_sheet.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr const char* kFrontName = "目录";
constexpr const wchar_t* kFrontTitle = L"工程量报表";

struct SFrontColumn {
  const wchar_t* heading;
  double width;
};

constexpr SFrontColumn kFrontColumns[] = {
    {L"工作表", 34}, {L"报表", 26}, {L"专业", 14}, {L"展开级别", 11}, {L"行数", 11}, {L"筛选", 40},
};

constexpr std::size_t kRowsOfStep = 20'000;
constexpr std::size_t kLongTable = 5 * kRowsOfStep;

// The same project makes the same file, so the time is not that of the clock.
std::time_t Created(const std::string& changed) {
  std::tm parts = {};
  parts.tm_year = 100;
  parts.tm_mday = 1;
  if (strptime(changed.c_str(), "%Y-%m-%d %H:%M", &parts) == nullptr) {
    parts = {};
    parts.tm_year = 100;
    parts.tm_mday = 1;
  }
  return timegm(&parts);
}

std::wstring FilterText(const std::vector<std::pair<std::string, std::string>>& filter) {
  std::string text;
  for (const auto& [name, value] : filter) {
    text += Joined(text.empty() ? "" : "\n", name, "：", value);
  }
  return WideFromUtf8(text);
}

// To the first cell of a sheet.
std::string Link(const std::string& sheet) {
  std::string link = "internal:'";
  for (const char c : sheet) {
    link += c == '\'' ? "''" : std::string(1, c);
  }
  return link + "'!A1";
}

}  // namespace

CXlsxExporter::CXlsxExporter(SExportHead head, const SExportOptions& options, COutput& output,
                             std::size_t sheetRows)
    : head_(std::move(head)),
      options_(options),
      output_(output),
      sheetRows_(sheetRows),
      names_(kFrontName),
      workbook_(Created(head_.changed)),
      front_(workbook_.AddSheet(kFrontName)) {}

void CXlsxExporter::Write(const SExportTable& table) {
  const CColumns columns =
      table.rows.empty() ? *table.columns : table.columns->OccurringIn(table.rows);
  const SSheetLook look = LookOf(columns, table.rows);
  const bool isLong = table.rows.size() >= kLongTable;
  CProgressBar progress(options_.messages, table.rows.size() / kRowsOfStep + 1);
  std::size_t written = 0;
  std::span<const SRow> rows = table.rows;
  do {
    const std::string name = names_.NameOf(*table.report, table.spec);
    const std::span<const SRow> part = rows.first(std::min(rows.size(), sheetRows_ - 1));
    lxw_worksheet* worksheet = workbook_.AddSheet(name);
    SetPages(worksheet, head_.project);
    CTableSheet sheet(workbook_, worksheet, columns, look);
    sheet.Write(part, [&] {
      if (isLong && written++ % kRowsOfStep == 0) {
        progress.Step(name);
      }
    });
    cuts_ += sheet.Cuts();
    sheets_.push_back({name, ShownTitle(*table.report), table.spec,
                       table.report->hasLevels ? table.level : -1, part.size(), table.filter});
    rows = rows.subspan(part.size());
  } while (!rows.empty());
}

void CXlsxExporter::WriteFrontText(lxw_row_t row, lxw_col_t column, std::wstring_view text,
                                   ERowLook look) {
  WriteText(front_, row, column, text, workbook_.Format(look, ECellLook::Wrapped));
}

// Answers the first free row.
lxw_row_t CXlsxExporter::WriteFrontHead() {
  std::vector<std::pair<std::string, std::string>> lines = {{"项目", head_.project},
                                                            {"更新时间", head_.changed}};
  lines.insert(lines.end(), head_.choices.begin(), head_.choices.end());
  WriteText(front_, 0, 0, kFrontTitle, workbook_.TitleFormat());
  lxw_row_t row = 2;
  for (const auto& [name, value] : lines) {
    WriteFrontText(row, 0, WideFromUtf8(name), ERowLook::Bold);
    WriteText(front_, row, 1, WideFromUtf8(value),
              workbook_.Format(ERowLook::Plain, ECellLook::Text));
    ++row;
  }
  return row + 1;
}

void CXlsxExporter::WriteFrontLine(lxw_row_t row, const SSheetLine& line) {
  RequireDone(worksheet_write_url_opt(front_, row, 0, Link(line.name).c_str(),
                                      workbook_.LinkFormat(), line.name.c_str(), nullptr));
  WriteFrontText(row, 1, WideFromUtf8(line.title), ERowLook::Plain);
  WriteFrontText(row, 2, line.spec, ERowLook::Plain);
  lxw_format* numbers = workbook_.Format(ERowLook::Plain, ECellLook::Number);
  if (line.level >= 0) {
    RequireDone(worksheet_write_number(front_, row, 3, line.level,
                                       workbook_.Format(ERowLook::Plain, ECellLook::Level)));
  }
  RequireDone(worksheet_write_number(front_, row, 4, static_cast<double>(line.rows), numbers));
  WriteFrontText(row, 5, FilterText(line.filter), ERowLook::Plain);
}

void CXlsxExporter::WriteFront() {
  SetPages(front_, head_.project);
  worksheet_gridlines(front_, LXW_HIDE_ALL_GRIDLINES);
  for (std::size_t i = 0; i < std::size(kFrontColumns); ++i) {
    const auto at = static_cast<lxw_col_t>(i);
    RequireDone(worksheet_set_column(front_, at, at, kFrontColumns[i].width, nullptr));
  }
  lxw_row_t row = WriteFrontHead();
  RequireDone(worksheet_repeat_rows(front_, row, row));
  for (std::size_t i = 0; i < std::size(kFrontColumns); ++i) {
    WriteFrontText(row, static_cast<lxw_col_t>(i), kFrontColumns[i].heading, ERowLook::Heading);
  }
  for (const SSheetLine& line : sheets_) {
    WriteFrontLine(++row, line);
  }
  workbook_.EndSheet(front_);
}

void CXlsxExporter::End() {
  WriteFront();
  workbook_.WriteTo(output_);
  if (cuts_ != 0) {
    std::fprintf(options_.messages, "tally: %zu %s cut to 32767 characters\n", cuts_,
                 cuts_ == 1 ? "text" : "texts");
  }
}
