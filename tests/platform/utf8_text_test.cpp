#include "platform/portable/utf8_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace std::literals;

TEST(Utf8Text, ReplacesEachMaximalIllFormedPartByOneCharacter) {
  EXPECT_EQ(WideFromUtf8("a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"), L"a\u00E9\u4E2D\U0001F600");
  EXPECT_EQ(WideFromUtf8("\xF4\x90\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(WideFromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(WideFromUtf8("\xE0\x80"), L"\uFFFD\uFFFD");
  EXPECT_EQ(WideFromUtf8("\xC0\xAF"), L"\uFFFD\uFFFD");
  EXPECT_EQ(WideFromUtf8("\xE4\xB8"), L"\uFFFD");
  EXPECT_EQ(WideFromUtf8("\xF1\x80\x80\xE4\xB8\xAD"), L"\uFFFD\u4E2D");
  EXPECT_EQ(WideFromUtf8("a\0b"sv), L"a\0b"sv);
}

TEST(Utf8Text, WritesEveryScalarValueSoThatItReadsBack) {
  for (char32_t c = 0; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 97) {
    if (c >= 0xD800 && c <= 0xDFFF) {
      continue;
    }
    std::wstring text;
    AppendCodePoint(text, c);
    ASSERT_EQ(WideFromUtf8(Utf8FromWide(text)), text) << static_cast<unsigned>(c);
  }
}

TEST(Utf8Text, WritesTheReplacementForWhatIsNoCharacter) {
  EXPECT_EQ(Utf8FromWide(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
  if constexpr (sizeof(wchar_t) == 4) {
    EXPECT_EQ(Utf8FromWide(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xEF\xBF\xBD");
    EXPECT_EQ(Utf8FromWide(std::wstring(1, static_cast<wchar_t>(-1))), "\xEF\xBF\xBD");
  }
}

}  // namespace
