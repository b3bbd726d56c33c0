// The parts of a workbook that need no spreadsheet to be looked at.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/report_catalog.h"
#include "host/sheet_look.h"
#include "host/sheet_names.h"
#include "host/workbook_check.h"
#include "host/workbook_text.h"
#include "platform/portable/utf8_text.h"
#include "report_model/report_types.h"
#include "support/temp_folder.h"

namespace {

SCatalogReport Titled(const wchar_t* title) {
  SCatalogReport report = *FindReport("overview");
  report.title = title;
  return report;
}

TEST(SheetNames, TellReportVariantAndDiscipline) {
  CSheetNames names("目录");
  EXPECT_EQ(names.NameOf(*FindReport("consumption-summary"), L"给排水"), "消耗量汇总表 给排水");
  EXPECT_EQ(names.NameOf(*FindReport(Report::ReportSysJss, 0), L"电气"), "系统计算书按构件 电气");
  EXPECT_EQ(names.NameOf(*FindReport(Report::ReportSysJss, 1), L"电气"), "系统计算书按楼层 电气");
  EXPECT_EQ(names.NameOf(*FindReport(Report::ReportSysJss, 2), L"电气"), "系统计算书按系统 电气");
  EXPECT_EQ(names.NameOf(*FindReport("overview"), L""), "工程量概览表");
}

TEST(SheetNames, HoldNothingThatSpreadsheetsRefuse) {
  CSheetNames names("目录");
  EXPECT_EQ(names.NameOf(Titled(L"表"), L"[a]:*?/\\b"), "表 _a______b");
  EXPECT_EQ(names.NameOf(Titled(L"'表"), L"c'"), "_表 c_");
  EXPECT_EQ(names.NameOf(Titled(L"表"), L"a'b\x01\n"), "表 a'b__");
  EXPECT_EQ(names.NameOf(Titled(L"HISTORY"), L""), "HISTORY (2)");
  EXPECT_EQ(names.NameOf(Titled(L"目录"), L""), "目录 (2)");
}

TEST(SheetNames, DifferIgnoringCaseAndWidth) {
  CSheetNames names("目录");
  const SCatalogReport report = Titled(L"表");
  EXPECT_EQ(names.NameOf(report, L"Ab"), "表 Ab");
  EXPECT_EQ(names.NameOf(report, L"aB"), "表 aB (2)");
  EXPECT_EQ(names.NameOf(report, L"ＡＢ"), "表 ＡＢ (3)");
  EXPECT_EQ(names.NameOf(report, L"Ⅰ"), "表 Ⅰ");
  EXPECT_EQ(names.NameOf(report, L"ⅰ"), "表 ⅰ (2)");
  EXPECT_EQ(names.NameOf(report, L"Ⅱ"), "表 Ⅱ");
  EXPECT_EQ(names.NameOf(report, L"É"), "表 É");
  EXPECT_EQ(names.NameOf(report, L"é"), "表 é (2)");
}

TEST(SheetNames, AreCutToTheirLengthInUtf16) {
  CSheetNames names("目录");
  const SCatalogReport report = Titled(L"表");
  const std::string cut = "表 " + std::string(29, 'x');
  EXPECT_EQ(names.NameOf(report, std::wstring(40, L'x')), cut);
  EXPECT_EQ(names.NameOf(report, std::wstring(41, L'x')), "表 " + std::string(25, 'x') + " (2)");
  EXPECT_EQ(names.NameOf(report, std::wstring(15, L'\U0001F600')),
            "表 " + Utf8FromWide(std::wstring(14, L'\U0001F600')));
}

std::string TextOf(std::wstring_view text) {
  std::string bytes = "old";
  EXPECT_FALSE(SetWorkbookText(bytes, text));
  return bytes;
}

TEST(WorkbookText, EscapesWhatXmlOrTheFormatWouldTakeForSomethingElse) {
  EXPECT_EQ(TextOf(L"=1+1<&\"'\t\n"), "=1+1<&\"'\t\n");
  EXPECT_EQ(TextOf({L"a\0\x01\r\x1F", 5}), "a_x0000__x0001__x000D__x001F_");
  EXPECT_EQ(TextOf(L"_x0041_ _x00e9_ _x004_ _X0041_ x0041_"),
            "_x005F_x0041_ _x005F_x00e9_ _x004_ _X0041_ x0041_");
  EXPECT_EQ(TextOf(std::wstring{L'\xD800', L'\xFFFE', L'\xFFFF', L'\xFDD0'}),
            "\uFFFD\uFFFD\uFFFD\uFDD0");
}

TEST(WorkbookText, IsCutToACellsLimit) {
  EXPECT_EQ(TextOf(std::wstring(32767, L'x')), std::string(32767, 'x'));
  std::string bytes;
  EXPECT_TRUE(SetWorkbookText(bytes, std::wstring(32768, L'x')));
  EXPECT_EQ(bytes, std::string(32766, 'x') + "…");
  EXPECT_TRUE(SetWorkbookText(bytes, std::wstring(16384, L'\U0001F600')));
  EXPECT_EQ(WideFromUtf8(bytes), std::wstring(16383, L'\U0001F600') + L"…");
  EXPECT_TRUE(SetWorkbookText(bytes, std::wstring(5000, L'\x01')));
  EXPECT_EQ(bytes.size(), 4680 * 7 + std::string("…").size());
}

TEST(SheetLook, FitsTheWidestTextUpToALimit) {
  const SReportLayout& layout = *FindLayout(Report::ReportXhlGl, 0);
  const Report::CellArray cells = {L"@P",  L"一区", L"@A",    L"衬塑钢管 DN100",      L"m",
                                   L"1.5", L"@A",   L"a\nbc", std::wstring(60, L'x'), L"2"};
  const std::vector<SRow> rows = CutRows(layout, cells);
  const CColumns columns(layout);
  const SSheetLook look = LookOf(columns, rows);
  EXPECT_EQ(look.outermost, 0);
  EXPECT_EQ(look.innermost, 1);
  ASSERT_EQ(look.columns.size(), 4U);
  EXPECT_EQ(look.columns[0].width, 6);
  EXPECT_FALSE(look.columns[0].isWrapped);
  EXPECT_EQ(look.columns[1].width, 14);
  EXPECT_TRUE(look.columns[1].isWrapped);
  EXPECT_EQ(look.columns[2].width, 48);
  EXPECT_TRUE(look.columns[2].isWrapped);
  EXPECT_EQ(LinesOf(rows[1], columns, look), 1);
  EXPECT_EQ(LinesOf(rows[2], columns, look), 2);
}

bool IsWhole(const std::string& bytes, const std::vector<std::uint64_t>& sheetSizes) {
  const tally_test::CTempFolder folder;
  tally_test::WriteBytes(folder / "file", bytes);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
      std::fopen((folder / "file").c_str(), "rb"), std::fclose);
  return IsWholeWorkbook(file.get(), sheetSizes);
}

TEST(WorkbookCheck, RefusesWhatIsNoZipFile) {
  EXPECT_FALSE(IsWhole("", {}));
  EXPECT_FALSE(IsWhole("PK", {}));
  EXPECT_FALSE(IsWhole(std::string(100, 'x'), {}));
  EXPECT_FALSE(IsWhole("PK\x03\x04" + std::string(200, '\xFF'), {}));
}

}  // namespace
