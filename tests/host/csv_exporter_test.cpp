#include "host/csv_exporter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const SReportLayout& Summary() {
  return *FindLayout(Report::ReportXhlHz, 0);
}

/// What the exporter makes of one table for each discipline, in the columns given by id.
template <class TExporter>
std::string Export(const std::vector<std::wstring>& specs, const std::vector<std::wstring>& cells,
                   const std::vector<std::wstring>& ids, bool isSafe = false) {
  const std::vector<SRow> rows = CutRows(Summary(), cells);
  CColumns columns(Summary());
  columns.Choose(ids);
  SExportOptions options;
  options.csvSafe = isSafe;
  COutput output;
  TExporter exporter({}, options, output);
  for (const std::wstring& spec : specs) {
    exporter.Write({FindReport(Report::ReportXhlHz, 0), spec, 0, {}, rows, &columns});
  }
  exporter.End();
  return output.Text();
}

/// The line of a section that is called `name`.
template <class TExporter>
std::string Line(const std::wstring& name, bool isSafe = false) {
  const std::string text = Export<TExporter>({L"给排水"}, {L"@P", name}, {L"section"}, isSafe);
  return text.substr(text.find('\n') + 1);
}

constexpr const char* kMark = "\xEF\xBB\xBF";

TEST(CsvExporter, WritesDisciplineLevelAndTheChosenColumns) {
  EXPECT_EQ(Export<CCsvExporter>({L"给排水", L"电气"},
                                 {L"@Cg", L"管道", L"@A", L"DN50", L"钢", L"m", L"-7.5"},
                                 {L"quantity", L"category", L"specification"}),
            std::string(kMark) +
                "专业,级别,工程量,构件类型,规格型号\r\n"
                "给排水,1,,管道,\r\n"
                "给排水,2,-7.5,,DN50\r\n"
                "电气,1,,管道,\r\n"
                "电气,2,-7.5,,DN50\r\n");
}

TEST(CsvExporter, WritesTheHeadingLineWithoutRows) {
  EXPECT_EQ(Export<CCsvExporter>({L""}, {}, {L"unit"}), std::string(kMark) + "专业,级别,单位\r\n");
}

TEST(CsvExporter, QuotesWhatWouldPartAValue) {
  EXPECT_EQ(Line<CCsvExporter>(L"a,b"), "给排水,0,\"a,b\"\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"\"a\"\"b"), "给排水,0,\"\"\"a\"\"\"\"b\"\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"a\nb"), "给排水,0,\"a\nb\"\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"a\rb"), "给排水,0,\"a\rb\"\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L" a\t'b;"), "给排水,0, a\t'b;\r\n");
}

TEST(CsvExporter, LeavesTextsAsTheyAreUnlessTheyAreToBeSafe) {
  EXPECT_EQ(Line<CCsvExporter>(L"=1+1"), "给排水,0,=1+1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"=1+1", true), "给排水,0,'=1+1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"+1", true), "给排水,0,'+1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"-1", true), "给排水,0,'-1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"@A", true), "给排水,0,'@A\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"  =1", true), "给排水,0,'  =1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"\t=1", true), "给排水,0,'\t=1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"\r=1", true), "给排水,0,\"'\r=1\"\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"＝1", true), "给排水,0,'＝1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"1=1", true), "给排水,0,1=1\r\n");
  EXPECT_EQ(Line<CCsvExporter>(L"", true), "给排水,0,\r\n");
}

TEST(CsvExporter, LeavesQuantitiesAsNumbersWhenTextsAreToBeSafe) {
  EXPECT_EQ(
      Export<CCsvExporter>({L"=cmd"}, {L"@A", L"DN50", L"钢", L"m", L"-7.5"}, {L"quantity"}, true),
      std::string(kMark) + "专业,级别,工程量\r\n'=cmd,2,-7.5\r\n");
}

TEST(CsvExporter, ReplacesWhatIsNoCharacter) {
  EXPECT_EQ(Line<CCsvExporter>({L'a', static_cast<wchar_t>(0xD800)}), "给排水,0,a\uFFFD\r\n");
}

TEST(TsvExporter, EscapesWhatWouldPartAValue) {
  EXPECT_EQ(Export<CTsvExporter>({L"给排水"}, {L"@P", L"一\t区\n\\t,\""}, {L"section", L"unit"}),
            "专业\t级别\t施工段\t单位\n"
            "给排水\t0\t一\\t区\\n\\\\t,\"\t\n");
}

TEST(TsvExporter, KeepsTextsSafeOnRequest) {
  EXPECT_EQ(Line<CTsvExporter>(L"=1+1"), "给排水\t0\t=1+1\n");
  EXPECT_EQ(Line<CTsvExporter>(L"=1+1", true), "给排水\t0\t'=1+1\n");
}

}  // namespace
