#include "platform/portable/table_code_page.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <thread>

namespace {

class TableCodePage : public ::testing::Test {
 protected:
  ~TableCodePage() override { codePage_.SetThreadCodePage(936); }
  std::string In(int codePage, std::wstring_view text) {
    EXPECT_TRUE(codePage_.SetThreadCodePage(codePage));
    return codePage_.ToNarrow(text);
  }
  CTableCodePage codePage_;
};

TEST_F(TableCodePage, BeginsWith936InEachThread) {
  EXPECT_EQ(codePage_.GetThreadCodePage(), 936);
  EXPECT_TRUE(codePage_.SetThreadCodePage(1252));
  int other = 0;
  std::thread([&] { other = codePage_.GetThreadCodePage(); }).join();
  EXPECT_EQ(other, 936);
  EXPECT_EQ(codePage_.GetThreadCodePage(), 1252);
}

TEST_F(TableCodePage, RefusesWhatItDoesNotSupport) {
  EXPECT_TRUE(codePage_.SetThreadCodePage(65001));
  for (const int codePage : {0, -1, 950, 437}) {
    EXPECT_FALSE(codePage_.SetThreadCodePage(codePage));
  }
  EXPECT_EQ(codePage_.GetThreadCodePage(), 65001);
}

TEST_F(TableCodePage, ConvertsTo936ByRoundTripPairs) {
  EXPECT_EQ(In(936, L"管道A1"),
            "\xB9\xDC\xB5\xC0"
            "A1");
  EXPECT_EQ(In(936, std::wstring_view(L"a\0~", 3)), std::string("a\0~", 3));
  EXPECT_EQ(In(936, L"\u20AC"), "\x80");
  EXPECT_EQ(In(936, L"\u00B7\u2014\u2015"), "\xA1\xA4\xA1\xAA\xA8\x44");
  EXPECT_EQ(In(936, L"\u2170\u2160"), "\xA2\xA1\xA2\xF1");
  EXPECT_EQ(In(936, L"\uFE35\u0251\u3000\uFF0C\uFF0F"), "\xA6\xE0\xA8\xBB\xA1\xA1\xA3\xAC\xA3\xAF");
  EXPECT_EQ(In(936, L"\u4E02\uFA29"), "\x81\x40\xFE\x4F");
  EXPECT_EQ(In(936, L"\u4E8A\u4E90"), "\x81\x7E\x81\x80");
}

TEST_F(TableCodePage, GivesAQuestionMarkForWhat936Lacks) {
  EXPECT_EQ(In(936, L"\u00E5\uE000\uF8F5\u0080\u1E3F\u01F9\u2FF0"), "???????");
  EXPECT_EQ(In(936, L"x\U00020000y"), "x?y");
  EXPECT_EQ(In(936, std::wstring(1, static_cast<wchar_t>(0xD800))), "?");
  EXPECT_EQ(In(936, L"\uFFFD"), "?");
}

TEST_F(TableCodePage, Holds936PairsOnlyOnce) {
  std::map<std::string, int> codes;
  for (wchar_t c = 0x80; c < 0xFFFF; ++c) {
    const std::string code = In(936, std::wstring(1, c));
    if (code != "?") {
      ++codes[code];
    }
  }
  EXPECT_EQ(codes.size(), 21792U);
  for (const auto& [code, count] : codes) {
    EXPECT_EQ(count, 1) << code;
  }
}

TEST_F(TableCodePage, ConvertsTo1252ByRoundTripPairs) {
  EXPECT_EQ(In(1252, L"\u20AC\u201A\u0178\u00A0\u00FF"), "\x80\x82\x9F\xA0\xFF");
  EXPECT_EQ(In(1252, L"\u0081\u008D\u008F\u0090\u009D"), "\x81\x8D\x8F\x90\x9D");
  EXPECT_EQ(In(1252, L"\u0080\u0100\u4E2D\uFF21"), "????");
}

TEST_F(TableCodePage, ConvertsToGb18030) {
  EXPECT_EQ(In(54936, L"管\u20AC"), "\xB9\xDC\xA2\xE3");
  EXPECT_EQ(In(54936, L"\u0080\u00A5"), "\x81\x30\x81\x30\x81\x30\x84\x36");
  EXPECT_EQ(In(54936, L"\uFFFF"), "\x84\x31\xA4\x39");
  EXPECT_EQ(In(54936, L"\U00010000\U0010FFFF"), "\x90\x30\x81\x30\xE3\x32\x9A\x35");
  EXPECT_EQ(In(54936, L"\uFFFD"), "\x84\x31\xA4\x37");
  EXPECT_EQ(In(54936, L"\uE000\uE765"), "??");
  EXPECT_EQ(In(54936, std::wstring(1, static_cast<wchar_t>(0xDFFF))), "?");
}

TEST_F(TableCodePage, ConvertsToUtf8) {
  EXPECT_EQ(In(65001, L"a管\U0001F600"), "a\xE7\xAE\xA1\xF0\x9F\x98\x80");
  EXPECT_EQ(In(65001, L"\uFFFD"), "\xEF\xBF\xBD");
  EXPECT_EQ(In(65001, std::wstring(1, static_cast<wchar_t>(0xD800))), "?");
  if constexpr (sizeof(wchar_t) == 4) {
    EXPECT_EQ(In(65001, std::wstring(1, static_cast<wchar_t>(0x110000))), "?");
    EXPECT_EQ(In(936, std::wstring(1, static_cast<wchar_t>(-1))), "?");
  }
}

}  // namespace
