#include "host/output.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "host/host_error.h"
#include "support/temp_folder.h"

namespace {

std::string JsonOf(const std::wstring& text) {
  COutput output;
  output.WriteJsonText(text);
  return output.Text();
}

TEST(Output, WritesTextsAsJson) {
  EXPECT_EQ(JsonOf(L""), R"("")");
  EXPECT_EQ(JsonOf(L"管道\\给水管"), R"("管道\\给水管")");
  EXPECT_EQ(JsonOf(L"a\"b\n\r\t/"), R"("a\"b\n\r\t/")");
  EXPECT_EQ(JsonOf(std::wstring(L"\0\x1F\x7F", 3)), "\"\\u0000\\u001f\x7F\"");
  EXPECT_EQ(JsonOf(L"\u00E9\uFFFF\U0001F600"), "\"\u00E9\uFFFF\U0001F600\"");
}

TEST(Output, WritesTheReplacementCharacterForWhatIsNoCharacter) {
  EXPECT_EQ(JsonOf({L'a', static_cast<wchar_t>(0xD800), L'b'}), "\"a\uFFFDb\"");
  EXPECT_EQ(JsonOf({static_cast<wchar_t>(0xDC00)}), "\"\uFFFD\"");
  EXPECT_EQ(JsonOf({static_cast<wchar_t>(0x110000)}), "\"\uFFFD\"");
  EXPECT_EQ(JsonOf({static_cast<wchar_t>(-1)}), "\"\uFFFD\"");
}

TEST(Output, WritesTextsOfAnyLengthToAStream) {
  const tally_test::CTempFolder folder;
  std::string expected;
  {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen((folder / "out").c_str(), "wb"), std::fclose);
    COutput output(file.get(), "out");
    for (const std::size_t length : {1u, 4095u, 4096u, 4097u, 65535u, 300000u}) {
      output.Write("x");
      output.WriteJsonText(std::wstring(length, L'\x1'));
      output.WriteJsonText(std::wstring(length, L'管'));
      expected += "x\"";
      for (std::size_t i = 0; i < length; ++i) {
        expected += "\\u0001";
      }
      expected += "\"\"";
      for (std::size_t i = 0; i < length; ++i) {
        expected += "管";
      }
      expected += "\"";
    }
    output.Flush();
    EXPECT_EQ(output.Text(), "");
  }
  EXPECT_TRUE(tally_test::ReadBytes(folder / "out") == expected);
}

TEST(Output, TellsWhyAStreamTakesNoMore) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen("/dev/full", "wb"),
                                                             std::fclose);
  ASSERT_NE(file, nullptr);
  COutput output(file.get(), "the disk");
  output.Write("x");
  try {
    output.Flush();
    FAIL() << "the disk took it";
  } catch (const CHostError& error) {
    EXPECT_STREQ(error.what(), "cannot write to the disk: No space left on device");
  }
}

}  // namespace
