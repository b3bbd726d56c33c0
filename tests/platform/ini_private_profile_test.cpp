#include "platform/portable/ini_private_profile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "platform/portable/utf8_text.h"
#include "support/temp_folder.h"

namespace {

using tally_test::ReadBytes;
using tally_test::WriteBytes;

class IniPrivateProfile : public ::testing::Test {
 protected:
  std::filesystem::path File() const { return folder_ / "Report.ini"; }
  std::wstring Path() const { return WideFromUtf8(folder_.Path().string()) + L"\\Report.ini"; }

  std::wstring Get(const std::wstring& section, const std::wstring& key) {
    return profile_.GetString(section, key, L"fallback", Path());
  }
  // The value of key "k" in section "s" of a file with this content.
  std::wstring Value(const std::string& content) {
    WriteBytes(File(), content);
    return Get(L"s", L"k");
  }
  // The content after key "k" of section "s" was written.
  std::string Written(const std::string& content, const std::wstring& value) {
    WriteBytes(File(), content);
    EXPECT_TRUE(profile_.WriteString(L"s", L"k", value, Path()));
    return ReadBytes(File());
  }

  tally_test::CTempFolder folder_;
  CIniPrivateProfile profile_;
};

TEST_F(IniPrivateProfile, GivesTheFallbackForWhatIsMissing) {
  EXPECT_EQ(Get(L"s", L"k"), L"fallback");
  EXPECT_EQ(Value(""), L"fallback");
  EXPECT_EQ(Value("k=1"), L"fallback");
  EXPECT_EQ(Value("[t]\nk=1"), L"fallback");
  EXPECT_EQ(Value("[s]\n;k=1\nj=1\nk\n[t]\nk=2"), L"fallback");
  EXPECT_EQ(Value("[s]\nj=1\n[s]\nk=2"), L"fallback");
}

TEST_F(IniPrivateProfile, TellsNamesApartWithoutCaseAndBlanks) {
  EXPECT_EQ(Value("[S]\nK=v"), L"v");
  EXPECT_EQ(Value("  [ s\t]  \r\n \tk =  v w \t\r\n"), L"v w");
  EXPECT_EQ(Value("[s]\rk=v\rj=w"), L"v");
  EXPECT_EQ(Value("[s]\nk=1\nK=2"), L"1");
  EXPECT_EQ(Value("[s] ; [t]\nk=a=b"), L"a=b");
  EXPECT_EQ(Get(L" S ", L" K "), L"a=b");
}

TEST_F(IniPrivateProfile, CutsOnePairOfQuotes) {
  EXPECT_EQ(Value("[s]\nk=\" v \""), L" v ");
  EXPECT_EQ(Value("[s]\nk='v'"), L"v");
  EXPECT_EQ(Value("[s]\nk=\"'v'\""), L"'v'");
  EXPECT_EQ(Value("[s]\nk=\"v'"), L"\"v'");
  EXPECT_EQ(Value("[s]\nk=\""), L"\"");
  EXPECT_EQ(Value("[s]\nk="), L"");
}

TEST_F(IniPrivateProfile, ReadsUtf8AndUtf16) {
  EXPECT_EQ(Value("[s]\nk=\xE7\xAE\xA1"), L"管");
  EXPECT_EQ(Value("\xEF\xBB\xBF[s]\nk=\xE7\xAE\xA1"), L"管");
  EXPECT_EQ(Value("[s]\nk=\xE7\xAE"), L"\uFFFD");
  EXPECT_EQ(Value(std::string("\xFF\xFE[\0s\0]\0\n\0k\0=\0\xA1\x7B\x3D\xD8\x00\xDE", 20)),
            L"管\U0001F600");
  EXPECT_EQ(Value(std::string("\xFE\xFF\0[\0s\0]\0\n\0k\0=\x7B\xA1\xD8\x3D", 18)), L"管\uFFFD");
}

TEST_F(IniPrivateProfile, ReplacesAValueAndKeepsAllElse) {
  EXPECT_EQ(Written("; note\r\n[S]\r\n  K = old \r\nj=1\r\n", L"new"),
            "; note\r\n[S]\r\n  K =new\r\nj=1\r\n");
  EXPECT_EQ(Written("[s]\nk=old", L""), "[s]\nk=");
  EXPECT_EQ(Written("\xFF\n[s]\nk=old\n\xC3", L"管"), "\xFF\n[s]\nk=\xE7\xAE\xA1\n\xC3");
}

TEST_F(IniPrivateProfile, AddsAKeyBehindTheLastLineOfItsSection) {
  EXPECT_EQ(Written("[s]\nj=1\n\n[t]\nk=2\n", L"v"), "[s]\nj=1\nk=v\n\n[t]\nk=2\n");
  EXPECT_EQ(Written("[s]", L"v"), "[s]\r\nk=v\r\n");
  EXPECT_EQ(Written("[t]\nk=2", L"v"), "[t]\nk=2\n[s]\nk=v\n");
  EXPECT_EQ(Written("", L"v"), "[s]\r\nk=v\r\n");
}

TEST_F(IniPrivateProfile, WritesInTheEncodingThatItFound) {
  EXPECT_EQ(Written("\xEF\xBB\xBF[s]\nk=", L"管"), "\xEF\xBB\xBF[s]\nk=\xE7\xAE\xA1");
  EXPECT_EQ(Written(std::string("\xFF\xFE[\0s\0]\0", 8), L"管"),
            std::string("\xFF\xFE[\0s\0]\0\r\0\n\0k\0=\0\xA1\x7B\r\0\n\0", 22));
  EXPECT_EQ(Written(std::string("\xFE\xFF\0[\0s\0]\0\n\0k\0=\0x?", 17), L"\U0001F600"),
            std::string("\xFE\xFF\0[\0s\0]\0\n\0k\0=\xD8\x3D\xDE\x00?", 19));
}

TEST_F(IniPrivateProfile, MakesTheFileAndItsFolder) {
  const std::wstring path = WideFromUtf8(folder_.Path().string()) + L"/new/deep\\Report.ini";
  EXPECT_TRUE(profile_.WriteString(L"ReportConfig", L"LineSortUp", L"FALSE", path));
  EXPECT_EQ(ReadBytes(folder_ / "new/deep/Report.ini"), "[ReportConfig]\r\nLineSortUp=FALSE\r\n");
  EXPECT_EQ(profile_.GetString(L"reportconfig", L"linesortup", L"", path), L"FALSE");
}

TEST_F(IniPrivateProfile, RefusesTextsThatNoLineCanHold) {
  WriteBytes(File(), "[s]\nk=1\n");
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", L"a\nb", Path()));
  EXPECT_FALSE(profile_.WriteString(L"s", L"a=b", L"v", Path()));
  EXPECT_FALSE(profile_.WriteString(L"s", L"", L"v", Path()));
  EXPECT_FALSE(profile_.WriteString(L"s", L"[k", L"v", Path()));
  EXPECT_FALSE(profile_.WriteString(L"s]", L"k", L"v", Path()));
  EXPECT_EQ(ReadBytes(File()), "[s]\nk=1\n");
}

TEST_F(IniPrivateProfile, RefusesHalvesOfSurrogatePairsThatCouldNotBeFoundAgain) {
  const std::wstring half(1, static_cast<wchar_t>(0xD800));
  WriteBytes(File(), "[s]\nk=1\n");
  EXPECT_FALSE(profile_.WriteString(L"s", L"a" + half, L"v", Path()));
  EXPECT_FALSE(profile_.WriteString(half, L"k", L"v", Path()));
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", half + L"v", Path()));
  EXPECT_EQ(ReadBytes(File()), "[s]\nk=1\n");
}

TEST_F(IniPrivateProfile, KeepsPermissionsAndLinks) {
  WriteBytes(folder_ / "real.ini", "[s]\nk=1\n");
  ASSERT_EQ(chmod((folder_ / "real.ini").c_str(), 0640), 0);
  std::filesystem::create_symlink("real.ini", File());
  EXPECT_TRUE(profile_.WriteString(L"s", L"k", L"2", Path()));
  EXPECT_TRUE(std::filesystem::is_symlink(File()));
  EXPECT_EQ(ReadBytes(folder_ / "real.ini"), "[s]\nk=2\n");
  struct stat status = {};
  ASSERT_EQ(stat((folder_ / "real.ini").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(IniPrivateProfile, LeavesNothingBesideTheFile) {
  EXPECT_EQ(Written("[s]\nk=1", L"2"), "[s]\nk=2");
  std::filesystem::create_directory(folder_ / "taken");
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", L"v", WideFromUtf8((folder_ / "taken").string())));
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", L"v", WideFromUtf8((File() / "below").string())));
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", L"v", L""));
  int entries = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
    entries += entry.exists() ? 1 : 0;
  }
  EXPECT_EQ(entries, 2);
}

TEST_F(IniPrivateProfile, NeitherReadsNorWritesWhatIsTooLargeOrNoFile) {
  WriteBytes(File(), "[s]\nk=1\n");
  std::filesystem::resize_file(File(), std::uintmax_t{1} << 30);
  EXPECT_EQ(Get(L"s", L"k"), L"fallback");
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", L"2", Path()));
  std::filesystem::remove(File());
  ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
  EXPECT_EQ(Get(L"s", L"k"), L"fallback");
  EXPECT_FALSE(profile_.WriteString(L"s", L"k", L"2", Path()));
}

TEST_F(IniPrivateProfile, ReadsBinaryContent) {
  std::string content = "[s]\n";
  for (int i = 0; i < 70000; ++i) {
    content.push_back(static_cast<char>(i * 7919 >> 3));
  }
  EXPECT_EQ(Value(content + "\nk=end"), L"end");
  EXPECT_EQ(Value(std::string("[s]\nk=1\0\n", 9)), std::wstring(L"1\0", 2));
}

}  // namespace
