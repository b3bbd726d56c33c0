#include "host/terminal_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void ExpectShown(const std::wstring& text, const std::string& bytes, int width) {
  const STerminalText shown = ToTerminalText(text);
  EXPECT_EQ(shown.bytes, bytes);
  EXPECT_EQ(shown.width, width);
}

TEST(TerminalText, TakesTwoColumnsForChineseAndFullWidthCharacters) {
  ExpectShown(L"DN50", "DN50", 4);
  ExpectShown(L"给水管", "给水管", 6);
  ExpectShown(L"（，）", "（，）", 6);
  ExpectShown(L"\U00020000", "\U00020000", 2);
  ExpectShown(L"φ20×2 m²", "φ20×2 m²", 8);
}

TEST(TerminalText, TakesNoColumnForCombiningMarks) {
  ExpectShown(L"e\u0301", "e\u0301", 1);
  ExpectShown(L"a\u200Bb", "a\u200Bb", 2);
}

TEST(TerminalText, JoinsLines) {
  ExpectShown(L"材质:钢\n连接:螺纹", "材质:钢; 连接:螺纹", 18);
  ExpectShown(L"\n\na\r\nb\n\n", "a; b", 4);
  ExpectShown(L"\n", "", 0);
  ExpectShown(L"", "", 0);
}

TEST(TerminalText, ShowsControlCharactersInsteadOfSendingThem) {
  ExpectShown(L"a\x1B[31m", "a␛[31m", 6);
  ExpectShown(std::wstring(L"a\0b", 3), "a␀b", 3);
  ExpectShown(L"a\tb\x7F", "a b␡", 4);
  ExpectShown(L"\x9B\x202E", "\uFFFD\uFFFD", 2);
}

TEST(TerminalText, ReplacesWhatIsNoCharacter) {
  ExpectShown(std::wstring(1, static_cast<wchar_t>(0xD800)), "\uFFFD", 1);
}

}  // namespace
