// The HTML page in a browser.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/exported.h"
#include "host/html_exporter.h"
#include "support/outside_program.h"
#include "support/process.h"
#include "support/temp_folder.h"

namespace {

using tally_test::RunProcess;
using tally_test::SProcessResult;

bool HasPrograms() {
  for (const char* program :
       {"/usr/bin/python3", "/usr/bin/chromium", "/usr/bin/chromedriver", "/usr/bin/pdftotext"}) {
    if (!tally_test::RequireProgram(program)) {
      return false;
    }
  }
  return true;
}

class HtmlPage : public testing::Test {
 protected:
  void SetUp() override {
    if (!HasPrograms()) {
      GTEST_SKIP() << "no browser with its driver, Python or pdftotext";
    }
  }

  std::string Name(const char* name) const { return (folder_ / name).string(); }

  /// Runs a check of html_page_check.py on the page of that name.
  void Check(const std::string& check) const {
    const SProcessResult result =
        RunProcess({"/usr/bin/python3", "-B", TALLY_TEST_DATA "/../host/html_page_check.py", check,
                    TALLY_PROGRAM, Name("demo.tally"), Name("page.html")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
  }

  /// The same on the page of the example project with all of its reports.
  void CheckDemo(const std::string& check) const {
    ASSERT_EQ(RunProcess({TALLY_PROGRAM, "demo", Name("demo.tally"), "--rows", "400"}).exitStatus,
              0);
    ASSERT_EQ(RunProcess({TALLY_PROGRAM, "report", Name("demo.tally"), "--all", "--format", "html",
                          "-o", Name("page.html")})
                  .exitStatus,
              0);
    Check(check);
  }

  /// Writes a page with sections R0, R1, ... as its rows.
  void WriteSections(int count) const {
    Report::CellArray cells;
    for (int i = 0; i < count; ++i) {
      cells.insert(cells.end(), {L"@P", L"R" + std::to_wstring(i)});
    }
    tally_test::WriteBytes(Name("page.html"),
                           tally_test::Exported<CHtmlExporter>({}, {{L"给排水", cells}}));
  }

  tally_test::CTempFolder folder_;
};

TEST_F(HtmlPage, ShowsEveryCellOfEveryReport) {
  CheckDemo("cells");
}

TEST_F(HtmlPage, OpensTheRowsAboveALevel) {
  CheckDemo("levels");
}

TEST_F(HtmlPage, SearchKeepsHitsWithWhatIsAboveThem) {
  CheckDemo("search");
}

TEST_F(HtmlPage, HidesAndShowsColumns) {
  CheckDemo("columns");
}

TEST_F(HtmlPage, IsUsedByKeyboard) {
  CheckDemo("keyboard");
}

TEST_F(HtmlPage, IsUsedByMouse) {
  CheckDemo("mouse");
}

TEST_F(HtmlPage, PrintsTheOpenRowsWithHeadingsOnEachPage) {
  CheckDemo("print");
}

TEST_F(HtmlPage, DrawsTheLargestQuantitiesOfTheOverview) {
  CheckDemo("chart");
}

TEST_F(HtmlPage, NeedsNothingFromElsewhereAndRunsNoOtherScript) {
  CheckDemo("self_contained");
}

TEST_F(HtmlPage, PrintsNoMoreThanItSays) {
  WriteSections(20001);
  Check("long_print");
}

TEST_F(HtmlPage, ReachesRowsBeyondTheHeightOfBrowsers) {
  WriteSections(600000);
  Check("many_rows");
}

TEST_F(HtmlPage, KeepsNastyTextsTexts) {
  const std::vector<std::wstring> texts = {L"=1+1",
                                           L"<script>alert(1)</script>",
                                           L"</script><img src=x onerror=alert(1)>",
                                           L"<!--<script>",
                                           L"\"'`}{][,\\",
                                           L"a\r\nb\tc",
                                           {L'a', static_cast<wchar_t>(0xD800), L'b'},
                                           L"\x2028\x2029",
                                           L"\x01\x7F",
                                           L"&lt;b&gt;<b>",
                                           L"]]>",
                                           L"{}"};
  Report::CellArray cells;
  for (const std::wstring& text : texts) {
    cells.insert(cells.end(), {L"@P", text});
  }
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"<script>alert(2)</script>", "<img src=x onerror=alert(3)>"}};
  tally_test::WriteBytes(
      Name("page.html"),
      tally_test::Exported<CHtmlExporter>(
          {"<b>\"&.tally", "</script><script>alert(4)</script>", pairs},
          {{L"</script><b>", cells, {}, pairs},
           {L"<!--", {L"@A", L"<b>x</b>", L"<i>m", L"1"}, {}, pairs, Report::ReportXhlGl}}));
  Check("nasty");
}

}  // namespace
