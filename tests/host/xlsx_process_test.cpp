// Workbooks, read back by the programs that users have.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/csv_exporter.h"
#include "host/report_catalog.h"
#include "host/small_project.h"
#include "host/xlsx_exporter.h"
#include "support/outside_program.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using tally_test::SProcessResult;
using Words = std::vector<std::string>;

constexpr const char* kOffice = "/usr/bin/soffice";
constexpr const char* kPython = "/usr/bin/python3";

/// Texts that a spreadsheet could take for something else, and the longest ones.
std::vector<std::wstring> NastyTexts() {
  return {L"=1+1",
          L"+1",
          L"-1",
          L"@SUM(1)",
          L"{=1}",
          L"<script>alert(\"x\")</script>&amp;]]>",
          L"a\"b'c",
          L"'leading",
          L"00123",
          L"1e5",
          L"TRUE",
          L"2026-01-02",
          L"#N/A",
          L"http://example.com",
          L"internal:Sheet1!A1",
          L"_x000D_",
          L"_x0041_b",
          L"a\nb\tc",
          L"  blanks  ",
          L"\U0001F600\U00020000",
          std::wstring(1, static_cast<wchar_t>(0xD800)),
          std::wstring(1, static_cast<wchar_t>(0xFFFE)),
          std::wstring(32767, L'y'),
          std::wstring(40000, L'水')};
}

/// Control characters, which not every program reads back.
std::vector<std::wstring> ControlTexts() {
  return {L"a\r\nb\rc", L"\x01\x1F\x0B", std::wstring(L"x\0y", 3), L"\x7F\x85"};
}

std::vector<std::wstring> Quantities() {
  return {L"0.1", L"-12.5", L"1.23457e+06", L"inf", L"-nan", L"",     L"1e5", L"0",
          L"-0",  L"1e999", L" 1",          L"1 ",  L"1,5",  L"0x10", L"１",  L"123456"};
}

/// Rows of every kind that a report has, so often that each text stands in each column once.
Report::CellArray Cells(const SReportLayout& layout, const std::vector<std::wstring>& texts) {
  const std::vector<std::wstring> quantities = Quantities();
  Report::CellArray cells;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (const SRowLayout& row : layout.rows) {
      cells.emplace_back(row.marker);
      for (const SCellLayout& cell : row.cells) {
        const bool isQuantity = cell.type == ECellType::Quantity;
        cells.push_back(isQuantity ? quantities[i % quantities.size()] : texts[i]);
      }
    }
  }
  return cells;
}

class Workbook : public testing::Test {
 protected:
  Workbook() { fs::create_directory(Tables()); }

  std::string Book() const { return (folder_ / "book.xlsx").string(); }
  std::string Tables() const { return (folder_ / "tables").string(); }
  std::string Project() const { return (folder_ / "small.tally").string(); }

  static SProcessResult Tally(const Words& words, const Words& environment = {}) {
    Words all = {TALLY_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    return tally_test::RunProcess(all, "", environment);
  }

  /// The program behind a command of the shell.
  static SProcessResult Limited(const std::string& command, const Words& words,
                                const Words& environment = {}) {
    Words all = {"/bin/sh", "-c", command + "; exec \"$0\" \"$@\"", TALLY_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    return tally_test::RunProcess(all, "", environment);
  }

  /// The workbook and the CSV file of rows of the bill and quota report. Answers the messages.
  std::string WriteBoth(const std::vector<std::wstring>& texts, std::size_t sheetRows) const {
    const SCatalogReport& report = *FindReport("bill-quota-summary");
    const SReportLayout& layout = *FindLayout(report.type, report.variant);
    const Report::CellArray cells = Cells(layout, texts);
    const std::vector<SRow> rows = CutRows(layout, cells);
    const CColumns columns(layout);
    const SExportTable table = {&report, L"给排水", 7, {{"楼层", "1、2"}}, rows, &columns};
    SExportOptions options;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> messages(
        std::fopen((folder_ / "messages").c_str(), "w"), std::fclose);
    options.messages = messages.get();
    COutput book;
    CXlsxExporter xlsx({"a&b<c>\x01.tally", "2026-11-20 08:15 UTC", {{"施工段", "=1"}}}, options,
                       book, sheetRows);
    xlsx.Write(table);
    xlsx.End();
    tally_test::WriteBytes(Book(), book.Text());
    COutput lines;
    CCsvExporter csv({}, options, lines);
    csv.Write(table);
    tally_test::WriteBytes(Tables() + "/bill-quota-summary_给排水.csv", lines.Text());
    std::fflush(messages.get());
    return tally_test::ReadBytes(folder_ / "messages");
  }

  /// Compares every cell of the workbook with the CSV files.
  void ExpectSame(bool inOffice) const {
    Words words = {kPython, TALLY_TEST_DATA "/../host/check_workbook.py", Book(), Tables()};
    if (inOffice) {
      words.insert(words.end(), {"--soffice", kOffice, "--work", folder_.Path().string()});
    }
    const SProcessResult result = tally_test::RunProcess(words);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(result.output, "");
  }

  tally_test::CTempFolder folder_;
};

/// The same with readers.
class WorkbookReadBack : public Workbook {
 protected:
  void SetUp() override {
    if (!tally_test::RequirePythonModule("openpyxl") || !tally_test::RequireProgram(kOffice)) {
      GTEST_SKIP() << "no program to read a workbook";
    }
  }
};

TEST_F(WorkbookReadBack, OfEveryReportHoldsTheCellsOfTheTables) {
  const std::string demo = (folder_ / "demo.tally").string();
  ASSERT_EQ(Tally({"demo", demo}).exitStatus, 0);
  ASSERT_EQ(Tally({"report", demo, "--all", "--format", "csv", "-o", Tables()}).exitStatus, 0);
  const SProcessResult result = Tally({"report", demo, "--all", "--format", "xlsx", "-o", Book()});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  ExpectSame(true);
}

TEST_F(WorkbookReadBack, KeepsTextsThatLookLikeSomethingElse) {
  EXPECT_NE(WriteBoth(NastyTexts(), LXW_ROW_MAX), "");
  ExpectSame(true);
}

TEST_F(WorkbookReadBack, KeepsControlCharacters) {
  EXPECT_EQ(WriteBoth(ControlTexts(), LXW_ROW_MAX), "");
  ExpectSame(false);
}

TEST_F(WorkbookReadBack, GoesOnToFurtherSheets) {
  WriteBoth(ControlTexts(), 16);
  ExpectSame(false);
  WriteBoth({L"a", L"b"}, 2);
  ExpectSame(true);
}

TEST_F(WorkbookReadBack, FindsAWrongCell) {
  WriteBoth({L"a", L"b"}, LXW_ROW_MAX);
  const std::string table = Tables() + "/bill-quota-summary_给排水.csv";
  std::string lines = tally_test::ReadBytes(table);
  const std::size_t at = lines.find("0.1");
  ASSERT_NE(at, std::string::npos);
  tally_test::WriteBytes(table, lines.replace(at, 3, "0.2"));
  const SProcessResult result = tally_test::RunProcess(
      {kPython, TALLY_TEST_DATA "/../host/check_workbook.py", Book(), Tables()});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output,
            "清单定额汇总表 给排水 4 工程量 0.1 is not the number 0.2\n"
            "清单定额汇总表 给排水 工程量 sums to -99.2 instead of -99.1\n");
}

TEST_F(Workbook, TellsHowManyTextsWereCut) {
  EXPECT_EQ(WriteBoth({std::wstring(40000, L'x')}, LXW_ROW_MAX),
            "tally: 30 texts cut to 32767 characters\n");
}

TEST_F(Workbook, OfTheSameProjectHasTheSameBytes) {
  tally_test::CreateProjectDatabase(Project(), kSmallProject);
  const Words words = {"report", Project(), "--all", "--format", "xlsx", "-o", Book()};
  EXPECT_EQ(Tally(words).exitStatus, 0);
  const std::string first = tally_test::ReadBytes(Book());
  EXPECT_EQ(Tally(words).exitStatus, 0);
  EXPECT_EQ(tally_test::ReadBytes(Book()), first);
  EXPECT_NE(first, "");
}

// The writer's library looks for pictures behind these.
TEST_F(Workbook, TakesAnyNameOfAProject) {
  for (const char* name : {"R&G.tally", "&[Picture].tally", "&&G&.tally", "a & b.tally"}) {
    const std::string project = (folder_ / name).string();
    tally_test::CreateProjectDatabase(project, kSmallProject);
    const SProcessResult result = tally_test::RunProcess(
        {TALLY_PROGRAM, "report", project, "--report", "1", "--format", "xlsx", "-o", Book()});
    EXPECT_EQ(result.errors, "") << name;
    EXPECT_EQ(result.exitStatus, 0) << name;
  }
}

TEST_F(Workbook, IsForFilesOnly) {
  tally_test::CreateProjectDatabase(Project(), kSmallProject);
  const SProcessResult result = Tally({"report", Project(), "--report", "1", "--format", "xlsx"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "tally: --format: xlsx needs a file; name it with -o\n");
}

TEST_F(Workbook, NeedsAFolderForTemporaryFiles) {
  tally_test::CreateProjectDatabase(Project(), kSmallProject);
  const SProcessResult result =
      Tally({"report", Project(), "--report", "1", "--format", "xlsx", "-o", Book()},
            {"TMPDIR=" + (folder_ / "missing").string()});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors,
            "tally: no folder for temporary files, see TMPDIR: No such file or directory\n");
  EXPECT_FALSE(fs::exists(Book()));
}

TEST_F(Workbook, HasMoreSheetsThanFilesAreUsuallyOpen) {
  tally_test::CreateProjectDatabase(Project(), kSmallProject);
  const Words report = {"report", Project(), "--all", "--format", "xlsx", "-o", Book()};
  ASSERT_EQ(Tally(report).exitStatus, 0);
  const std::string usual = tally_test::ReadBytes(Book());
  const SProcessResult result = Limited("ulimit -S -n 10", report);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(tally_test::ReadBytes(Book()), usual);
}

// Files may take that many blocks, as on a disk that is full.
TEST_F(Workbook, IsWholeOrAnErrorOnAFullDisk) {
  tally_test::CreateProjectDatabase(Project(), kSmallProject);
  const fs::path temp = folder_ / "temp";
  fs::create_directory(temp);
  const Words report = {"report", Project(), "--report", "1", "--format", "xlsx", "-o", Book()};
  ASSERT_EQ(Tally(report).exitStatus, 0);
  const std::string whole = tally_test::ReadBytes(Book());
  int failures = 0;
  for (int blocks = 1; blocks <= 40; ++blocks) {
    fs::remove(Book());
    const SProcessResult result = Limited("trap '' XFSZ; ulimit -f " + std::to_string(blocks),
                                          report, {"TMPDIR=" + temp.string()});
    EXPECT_TRUE(fs::is_empty(temp)) << blocks;
    if (result.exitStatus == 0) {
      EXPECT_EQ(tally_test::ReadBytes(Book()), whole) << blocks;
      continue;
    }
    ++failures;
    EXPECT_EQ(result.exitStatus, 2) << blocks;
    EXPECT_NE(result.errors.find("tally: cannot write "), std::string::npos) << result.errors;
    EXPECT_FALSE(fs::exists(Book())) << blocks;
  }
  EXPECT_GT(failures, 10);
  EXPECT_LT(failures, 40);
}

}  // namespace
