#include "platform/portable/sqlite_chapter_libraries.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/portable/utf8_text.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

class SqliteChapterLibraries : public ::testing::Test {
 protected:
  void Create(const std::string& sql) {
    const std::filesystem::path file = folder_ / "project.db";
    tally_test::CreateProjectDatabase(file, sql);
    source_->BeginRead(WideFromUtf8(file.string()));
  }

  // "name:number" of a bill code's chapter; the number is 99 where none was given.
  std::wstring Bill(const std::wstring& code) {
    int number = 99;
    const std::wstring name = bill_.GetZhangName(code, number);
    return name + L":" + std::to_wstring(number);
  }
  std::wstring Quota(const std::wstring& code) {
    int number = 99;
    std::vector<std::wstring> cells;
    quota_.GetZhangJ(code, cells, number);
    return (cells.empty() ? L"none" : cells.at(0)) + L":" + std::to_wstring(number);
  }

  tally_test::CTempFolder folder_;
  std::shared_ptr<CProjectSource> source_ = std::make_shared<CProjectSource>();
  CSqliteBillLibrary bill_{source_};
  CSqliteQuotaLibrary quota_{source_};
};

TEST_F(SqliteChapterLibraries, FindTheLongestPrefixOfTheOpenedLibrary) {
  Create(
      "INSERT INTO qd_chapter VALUES ('GB', '03', 3, 'installation'), ('GB', '0310', 10, 'pipes'),"
      " ('GB', '0310022', 2, ''), ('HB', '', 1, 'all'), ('', '03', 5, 'nameless library');");
  bill_.Open(L"GB", L"region");
  EXPECT_EQ(Bill(L"031001"), L"pipes:10");
  EXPECT_EQ(Bill(L"0310"), L"pipes:10");
  EXPECT_EQ(Bill(L"031"), L"installation:3");
  EXPECT_EQ(Bill(L"0310022001"), L":2");
  EXPECT_EQ(Bill(L"0310021"), L"pipes:10");
  EXPECT_EQ(Bill(L"04"), L":99");
  EXPECT_EQ(Bill(L""), L":99");
  bill_.Open(L"HB", L"");
  EXPECT_EQ(Bill(L"031001"), L"all:1");
  EXPECT_EQ(Bill(L""), L"all:1");
  bill_.Open(L"", L"");
  EXPECT_EQ(Bill(L"031001"), L"nameless library:5");
  bill_.Open(L"XX", L"");
  EXPECT_EQ(Bill(L"031001"), L":99");
}

TEST_F(SqliteChapterLibraries, GiveTheQuotaChapterAsOneCell) {
  Create(
      "INSERT INTO de_chapter VALUES ('GD', 'C8-', 5000000000, 'chapter\\section\\part'),"
      " ('GD', 'C9-', -1, '');");
  quota_.Open(L"GD", L"region", L"2018");
  EXPECT_EQ(Quota(L"C8-1-1"), L"chapter\\section\\part:2147483647");
  EXPECT_EQ(Quota(L"C9-1"), L":-1");
  EXPECT_EQ(Quota(L"C7"), L"none:99");
  std::vector<std::wstring> cells = {L"kept"};
  int number = 0;
  quota_.GetZhangJ(L"C8-2", cells, number);
  EXPECT_EQ(cells, (std::vector<std::wstring>{L"kept", L"chapter\\section\\part"}));
}

TEST_F(SqliteChapterLibraries, KnowNothingWhileClosed) {
  Create(
      "INSERT INTO de_chapter VALUES ('GD', '', 1, 'all');"
      "INSERT INTO qd_chapter VALUES ('GB', '', 1, 'all');");
  EXPECT_EQ(Bill(L"1"), L":99");
  bill_.Open(L"GB", L"");
  quota_.Open(L"GD", L"", L"");
  EXPECT_EQ(Bill(L"1"), L"all:1");
  EXPECT_EQ(Quota(L"1"), L"all:1");
  bill_.Close();
  quota_.Close();
  EXPECT_EQ(Bill(L"1"), L":99");
  EXPECT_EQ(Quota(L"1"), L"none:99");
}

TEST_F(SqliteChapterLibraries, KnowNothingOfAProjectThatCannotBeRead) {
  bill_.Open(L"GB", L"");
  EXPECT_FALSE(source_->LastFailure());
  Create("DROP TABLE qd_chapter; DROP TABLE de_chapter;");
  bill_.Open(L"GB", L"");
  EXPECT_EQ(Bill(L"1"), L":99");
  ASSERT_TRUE(source_->LastFailure());
  EXPECT_EQ(source_->LastFailure()->message, "no such table: qd_chapter");
  quota_.Open(L"GD", L"", L"");
  EXPECT_EQ(Quota(L"1"), L"none:99");
  EXPECT_EQ(source_->LastFailure()->message, "no such table: de_chapter");
}

}  // namespace
