#include "host/html_exporter.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/exported.h"
#include "host/page_parts.h"
#include "platform/portable/utf8_text.h"

namespace {

using tally_test::SWrittenTable;

std::string Export(const SExportHead& head, const std::vector<SWrittenTable>& tables) {
  return tally_test::Exported<CHtmlExporter>(head, tables);
}

/// What stands between the script elements' tags that hold data of that class.
std::vector<std::string> Data(const std::string& page, const std::string& name) {
  const std::string begin = "<script type=\"application/json\" class=\"" + name + "\">";
  std::vector<std::string> data;
  for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at)) {
    at += begin.size();
    data.push_back(page.substr(at, page.find("</script>", at) - at));
  }
  return data;
}

std::size_t Count(const std::string& text, const std::string& wanted) {
  std::size_t count = 0;
  for (std::size_t at = text.find(wanted); at != std::string::npos;
       at = text.find(wanted, at + 1)) {
    ++count;
  }
  return count;
}

TEST(HtmlExporter, WritesRowsByKindWithTheirCellsInTheChosenColumns) {
  const std::string page =
      Export({"a.tally", "", {}}, {{L"给排水",
                                    {L"@Cg", L"管道", L"@A", L"DN50", L"钢", L"m", L"7.5"},
                                    {L"quantity", L"category", L"specification"}}});
  EXPECT_EQ(Data(page, "head"),
            std::vector<std::string>{"{\"project\":\"a.tally\",\"changed\":\"\",\"choices\":[]}"});
  EXPECT_EQ(Data(page, "rows"),
            std::vector<std::string>{"[\n[1,\"管道\"],\n[2,\"7.5\",\"DN50\"]]"});
  ASSERT_EQ(Data(page, "table").size(), 1U);
  const nlohmann::json table = nlohmann::json::parse(Data(page, "table")[0]);
  EXPECT_EQ(table["report"], "consumption-summary");
  EXPECT_EQ(table["discipline"], "给排水");
  EXPECT_EQ(table["rows"], 2);
  EXPECT_EQ(table["columns"].size(), 3U);
  EXPECT_EQ(table["kinds"].dump(),
            "[{\"columns\":[],\"depth\":0,\"kind\":\"P\"},"
            "{\"columns\":[1],\"depth\":1,\"kind\":\"Cg\"},"
            "{\"columns\":[0,2],\"depth\":2,\"kind\":\"A\"},"
            "{\"columns\":[0],\"depth\":3,\"kind\":\"CI\"},"
            "{\"columns\":[0],\"depth\":4,\"kind\":\"F\"},"
            "{\"columns\":[0],\"depth\":5,\"kind\":\"S1\"},"
            "{\"columns\":[0],\"depth\":6,\"kind\":\"S2\"},"
            "{\"columns\":[0],\"depth\":7,\"kind\":\"S3\"}]");
}

TEST(HtmlExporter, WritesADataElementForEachTable) {
  const std::string page = Export({}, {{L"给排水", {L"@P", L"一区"}}, {L"电气", {}}});
  EXPECT_EQ(Data(page, "rows"), (std::vector<std::string>{"[\n[0,\"一区\"]]", "[]"}));
  EXPECT_EQ(Data(page, "table").size(), 2U);
  EXPECT_TRUE(page.ends_with("</script>\n</body>\n</html>\n"));
}

TEST(HtmlExporter, KeepsTextsOutOfTheMarkup) {
  const std::wstring text =
      L"</script><script>alert(1)</script><!--\x2028\x2029\x2030\xE2\x80\xA8" +
      std::wstring(1, static_cast<wchar_t>(0xD800)) + std::wstring(5000, L'<');
  const SExportHead head = {"<b>.tally", "<i>", {{"<u>", "</script>"}}};
  const std::string page = Export(head, {{text, {L"@P", text}, {}, {{"<s>", "<p>"}}}});
  const std::string plain = Export({}, {{L"", {L"@P", L""}}});
  for (const char* markup : {"<", "<!--", "</script", "<script", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    EXPECT_EQ(Count(page, markup), Count(plain, markup)) << markup;
  }
  const std::string utf8 = Utf8FromWide(text);
  EXPECT_EQ(nlohmann::json::parse(Data(page, "rows")[0])[0][1], utf8);
  EXPECT_EQ(nlohmann::json::parse(Data(page, "table")[0])["discipline"], utf8);
  EXPECT_EQ(nlohmann::json::parse(Data(page, "head")[0])["project"], "<b>.tally");
}

TEST(HtmlExporter, AllowsItsOwnStyleAndScriptOnly) {
  const std::string page = Export({}, {});
  EXPECT_NE(page.find("content=\"default-src 'none'; base-uri 'none'; form-action 'none'; "
                      "style-src 'sha256-" +
                      std::string(kPageStyle.hash) + "'; script-src 'sha256-" +
                      std::string(kPageScript.hash) + "'\""),
            std::string::npos);
  EXPECT_NE(page.find("<style>" + std::string(kPageStyle.text) + "</style>"), std::string::npos);
  EXPECT_NE(page.find("<script>" + std::string(kPageScript.text) + "</script>"), std::string::npos);
  EXPECT_EQ(page.find("http:"), page.find("http://www.w3.org/2000/svg"));
  EXPECT_EQ(page.find("https:"), std::string::npos);
}

}  // namespace
