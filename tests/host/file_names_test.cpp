#include "host/file_names.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class FileNames : public testing::Test {
 protected:
  std::string NameOf(const std::wstring& spec) {
    return names_.NameOf(*FindReport("consumption-summary"), spec);
  }

  CFileNames names_{".txt"};
};

TEST_F(FileNames, JoinReportVariantAndDiscipline) {
  EXPECT_EQ(NameOf(L"给排水"), "consumption-summary_给排水.txt");
  EXPECT_EQ(names_.NameOf(*FindReport(Report::ReportSysJss, 1), L"给排水"),
            "calculation-book-floor_给排水.txt");
  EXPECT_EQ(NameOf(L""), "consumption-summary_.txt");
}

TEST_F(FileNames, HoldNothingThatAFileSystemRefuses) {
  EXPECT_EQ(NameOf(L"a/b\\c"), "consumption-summary_a_b_c.txt");
  EXPECT_EQ(NameOf(L"<>:\"|?*"), "consumption-summary________.txt");
  EXPECT_EQ(NameOf(L"\n\x7F\x85\x202E\x2028\xFEFFz"), "consumption-summary_______z.txt");
  EXPECT_EQ(NameOf(std::wstring(1, L'\0')), "consumption-summary__.txt");
  EXPECT_EQ(NameOf(std::wstring(1, static_cast<wchar_t>(0xD800))),
            "consumption-summary_\uFFFD.txt");
}

TEST_F(FileNames, AreCutBetweenCharacters) {
  EXPECT_EQ(NameOf(std::wstring(1000, L'a')),
            "consumption-summary_" + std::string(150, 'a') + ".txt");
  std::string water;
  for (int i = 0; i < 49; ++i) {
    water += "水";
  }
  EXPECT_EQ(NameOf(L"ab" + std::wstring(1000, L'水')), "consumption-summary_ab" + water + ".txt");
}

TEST_F(FileNames, GetANumberWhereTwoAreAlike) {
  EXPECT_EQ(NameOf(L"a/b"), "consumption-summary_a_b.txt");
  EXPECT_EQ(NameOf(L"a?b"), "consumption-summary_a_b_2.txt");
  EXPECT_EQ(NameOf(L"A:B"), "consumption-summary_A_B_3.txt");
  EXPECT_EQ(NameOf(L"A_B_2"), "consumption-summary_A_B_2_2.txt");
  EXPECT_EQ(names_.NameOf(*FindReport("overview"), L"a/b"), "overview_a_b.txt");
}

}  // namespace
