// The rows of whole projects against the files in tests/data/goldens, which scripts/approve_goldens
// rewrites after a change that is meant.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>

#include "host/demo_project.h"
#include "host/open_project.h"
#include "host/output.h"
#include "host/report_catalog.h"
#include "host/report_requests.h"
#include "rows/row_layouts.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using tally_test::ForEachRequest;
using tally_test::FullName;
using tally_test::SAnsweredRequest;

const std::filesystem::path kData = TALLY_TEST_DATA;
constexpr const char* kDigests = "example_digests.txt";

// Continuous integration approves nothing.
bool IsApproving() {
  return std::getenv("TALLY_APPROVE_GOLDENS") != nullptr && std::getenv("CI") == nullptr;
}

std::string FileName(const SCatalogReport& report) {
  return FullName(report) + ".txt";
}

// "line 7: expected ..., got ...", of the first line that differs.
std::string FirstDifference(const std::string& expected, const std::string& actual) {
  std::istringstream expectedLines(expected);
  std::istringstream actualLines(actual);
  for (int number = 1;; ++number) {
    std::string expectedLine;
    std::string actualLine;
    if (!std::getline(expectedLines, expectedLine)) {
      expectedLine = "(the end)";
    }
    if (!std::getline(actualLines, actualLine)) {
      actualLine = "(the end)";
    }
    if (expectedLine != actualLine || (!expectedLines && !actualLines)) {
      return "line " + std::to_string(number) + "\nexpected: " + expectedLine +
             "\ngot:      " + actualLine;
    }
  }
}

void CheckGolden(const std::string& name, const std::string& actual) {
  const std::filesystem::path file = kData / "goldens" / name;
  if (IsApproving()) {
    tally_test::WriteBytes(file, actual);
    return;
  }
  ASSERT_TRUE(std::filesystem::exists(file))
      << "no golden " << name << "; scripts/approve_goldens writes it";
  const std::string expected = tally_test::ReadBytes(file);
  EXPECT_TRUE(expected == actual) << name << ", " << FirstDifference(expected, actual);
}

// A line for each row, its cells as JSON strings with a blank between them.
std::string RowLines(const SCatalogReport& report, const Report::CellArray& cells) {
  COutput lines;
  for (const SRow& row : CutRows(*FindLayout(report.type, report.variant), cells)) {
    lines.WriteJsonText(row.layout->marker);
    for (const std::wstring& cell : row.cells) {
      lines.Write(" ");
      lines.WriteJsonText(cell);
    }
    lines.Write("\n");
  }
  return lines.Text();
}

// FNV-1a, 64 bits, over the cells as JSON strings with a line end behind each.
std::string Digest(const Report::CellArray& cells) {
  COutput text;
  for (const std::wstring& cell : cells) {
    text.WriteJsonText(cell);
    text.Write("\n");
  }
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : text.Text()) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  }
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
  return digits;
}

TEST(Goldens, HoldTheRowsOfEveryReportOfTheFrozenProject) {
  const tally_test::CTempFolder folder;
  const std::filesystem::path file = folder / "frozen.tally";
  tally_test::CreateProjectDatabase(file, tally_test::ReadBytes(kData / "frozen_project.sql"));
  const COpenProject project(file.string());
  for (const SCatalogReport& report : ReportCatalog()) {
    std::string text;
    ForEachRequest(report, [&](const SAnsweredRequest& request) {
      text += "# " + request.title + "\n" + RowLines(report, request.cells);
    });
    project.RequireResultSet(report.type);
    EXPECT_NE(text.find("\n\"@"), std::string::npos) << FullName(report) << " has no rows";
    CheckGolden(FileName(report), text);
  }
}

TEST(Goldens, HoldADigestOfEveryReportOfTheExampleProject) {
  const tally_test::CTempFolder folder;
  const std::string file = (folder / "example.tally").string();
  WriteDemoProject(file);
  const COpenProject project(file);
  std::string text;
  for (const SCatalogReport& report : ReportCatalog()) {
    ForEachRequest(report, [&](const SAnsweredRequest& request) {
      text += Digest(request.cells) + " " + FullName(report) + " " + request.title + "\n";
    });
    project.RequireResultSet(report.type);
  }
  CheckGolden(kDigests, text);
}

TEST(Goldens, AreNoMoreThanThoseOfTheReports) {
  std::set<std::string> known{kDigests};
  for (const SCatalogReport& report : ReportCatalog()) {
    known.insert(FileName(report));
  }
  for (const auto& entry : std::filesystem::directory_iterator(kData / "goldens")) {
    const std::string name = entry.path().filename().string();
    if (known.contains(name)) {
      continue;
    }
    if (IsApproving()) {
      std::filesystem::remove(entry.path());
    } else {
      ADD_FAILURE() << "golden " << name << " belongs to no report";
    }
  }
}

}  // namespace
