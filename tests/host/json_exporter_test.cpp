#include "host/json_exporter.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/exported.h"
#include "platform/portable/utf8_text.h"

namespace {

using tally_test::SWrittenTable;

std::string Export(const std::vector<SWrittenTable>& tables) {
  return tally_test::Exported<CJsonExporter>({}, tables);
}

/// How a quantity is written.
std::string Quantity(const std::wstring& text) {
  const std::string json = Export({{L"", {L"@A", L"DN50", L"", L"m", text}, {L"quantity"}}});
  const std::string before = "\"cells\":{\"quantity\":";
  const std::size_t at = json.find(before) + before.size();
  return json.substr(at, json.find("},\"children\"") - at);
}

TEST(JsonExporter, WritesTheHeadWithoutTables) {
  EXPECT_EQ(
      tally_test::Exported<CJsonExporter>(
          {"a.tally", "2026-11-20 08:15 UTC", {{"施工段", "一区"}, {"管径排序", "从大到小"}}}, {}),
      "{\"project\":\"a.tally\",\"changed\":\"2026-11-20 08:15 UTC\",\"choices\":["
      "{\"name\":\"施工段\",\"value\":\"一区\"},"
      "{\"name\":\"管径排序\",\"value\":\"从大到小\"}],\"reports\":[\n]}\n");
}

TEST(JsonExporter, NestsRowsByDepth) {
  EXPECT_EQ(Export({{L"给排水",
                     {L"@Cg", L"管道", L"@A", L"DN50", L"钢", L"m", L"-7.5", L"@CI", L"管道长度",
                      L"m", L"2", L"@A", L"DN40", L"", L"m", L"1e+06", L"@Cg", L"阀门"},
                     {L"quantity", L"category", L"specification"},
                     {{"楼层", "3"}}}}),
            "{\"project\":\"\",\"changed\":\"\",\"choices\":[],\"reports\":[\n"
            "{\"report\":\"consumption-summary\",\"number\":1,\"variant\":null,"
            "\"title\":\"消耗量汇总表\",\"discipline\":\"给排水\",\"level\":2,"
            "\"filter\":[{\"name\":\"楼层\",\"value\":\"3\"}],\"columns\":["
            "{\"id\":\"quantity\",\"heading\":\"工程量\",\"type\":\"quantity\",\"shown\":true},"
            "{\"id\":\"category\",\"heading\":\"构件类型\",\"type\":\"text\",\"shown\":true},"
            "{\"id\":\"specification\",\"heading\":\"规格型号\",\"type\":\"text\",\"shown\":true}],"
            "\"rows\":[\n"
            "{\"level\":1,\"kind\":\"Cg\",\"cells\":{\"category\":\"管道\"},\"children\":[\n"
            "{\"level\":2,\"kind\":\"A\",\"cells\":{\"quantity\":-7.5,\"specification\":\"DN50\"},"
            "\"children\":[\n"
            "{\"level\":3,\"kind\":\"CI\",\"cells\":{\"quantity\":2},\"children\":[]}]},\n"
            "{\"level\":2,\"kind\":\"A\",\"cells\":{\"quantity\":1e+06,\"specification\":\"DN40\"},"
            "\"children\":[]}]},\n"
            "{\"level\":1,\"kind\":\"Cg\",\"cells\":{\"category\":\"阀门\"},\"children\":[]}]}\n"
            "]}\n");
}

TEST(JsonExporter, PartsTables) {
  const nlohmann::json document = nlohmann::json::parse(
      Export({{L"给排水", {L"@P", L"一区"}}, {L"电气", {}}, {L"暖通", {L"@P", L"二区"}}}));
  const nlohmann::json& reports = document["reports"];
  ASSERT_EQ(reports.size(), 3U);
  EXPECT_EQ(reports[0]["rows"][0]["cells"]["section"], "一区");
  EXPECT_EQ(reports[1]["discipline"], "电气");
  EXPECT_EQ(reports[1]["rows"].size(), 0U);
  EXPECT_EQ(reports[2]["rows"][0]["cells"]["section"], "二区");
}

TEST(JsonExporter, NamesVariantsAndTheTypesOfColumns) {
  const nlohmann::json report =
      nlohmann::json::parse(Export({{L"", {}, {}, {}, Report::ReportSysJss}}))["reports"][0];
  EXPECT_EQ(report["report"], "calculation-book");
  EXPECT_EQ(report["number"], 0);
  EXPECT_EQ(report["variant"], "member");
  std::string types;
  for (const nlohmann::json& column : report["columns"]) {
    types += column["id"].get<std::string>() + ": " + column["type"].get<std::string>() +
             (column["shown"].get<bool>() ? "\n" : " hidden\n");
  }
  EXPECT_EQ(types,
            "section: text\n"
            "type: text\n"
            "category: text\n"
            "specification: text\n"
            "attributes: text\n"
            "item: text\n"
            "unit: unit\n"
            "formula: formula\n"
            "components: references hidden\n"
            "quantity-1: quantity\n"
            "quantity-2: quantity\n"
            "quantity-3: quantity\n"
            "quantity-4: quantity\n");
}

TEST(JsonExporter, WritesQuantitiesAsNumbersWhereJsonHasThem) {
  for (const char* number :
       {"0", "-0", "7.5", "-0.06216", "123456", "1e+06", "1.5e-07", "1e+308"}) {
    EXPECT_EQ(Quantity(std::wstring(number, number + std::string(number).size())), number);
  }
  EXPECT_EQ(Quantity(L""), "null");
  EXPECT_EQ(Quantity(L"inf"), "\"inf\"");
  EXPECT_EQ(Quantity(L"-inf"), "\"-inf\"");
  EXPECT_EQ(Quantity(L"nan"), "\"nan\"");
  for (const char* text : {"01", "+1", ".5", "1.", "1e", "1e+", "-", "1 ", " 1", "0x1", "1,5"}) {
    EXPECT_EQ(Quantity(std::wstring(text, text + std::string(text).size())),
              "\"" + std::string(text) + "\"");
  }
}

TEST(JsonExporter, KeepsNastyTextsTexts) {
  const std::vector<std::wstring> texts = {
      L"=1+1",      L"</script><script>alert(1)</script>", L"<!--",         L"\"}],\\\"",
      L"a\r\nb\tc", std::wstring(L"\0\x1F\x7F", 3),        L"\x2028\x2029", L"{\"a\":1}"};
  for (const std::wstring& text : texts) {
    const nlohmann::json document =
        nlohmann::json::parse(Export({{text, {L"@P", text}, {}, {{"a\"b", "c\\"}}}}));
    const nlohmann::json& report = document["reports"][0];
    const std::string utf8 = Utf8FromWide(text);
    EXPECT_EQ(report["discipline"], utf8);
    EXPECT_EQ(report["rows"][0]["cells"]["section"], utf8);
    EXPECT_EQ(report["filter"][0]["name"], "a\"b");
    EXPECT_EQ(report["filter"][0]["value"], "c\\");
  }
}

TEST(JsonExporter, ReplacesWhatIsNoCharacter) {
  const std::wstring text = {L'a', static_cast<wchar_t>(0xD800), L'b'};
  const nlohmann::json document = nlohmann::json::parse(
      tally_test::Exported<CJsonExporter>({"\xFF.tally", "", {}}, {{text, {L"@P", text}}}));
  EXPECT_EQ(document["project"], "\uFFFD.tally");
  EXPECT_EQ(document["reports"][0]["rows"][0]["cells"]["section"], "a\uFFFDb");
}

}  // namespace
