#include "platform/portable/sqlite_project_settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/portable/sqlite_db_operator.h"
#include "platform/portable/utf8_text.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

class SqliteProjectSettings : public ::testing::Test {
 protected:
  std::filesystem::path File(const std::string& name = "project.db") const {
    return folder_.Path() / name;
  }
  void Create(const std::string& sql, const std::string& name = "project.db") {
    tally_test::CreateProjectDatabase(File(name), sql);
  }
  bool Read(const std::string& name = "project.db") {
    std::vector<std::wstring> names;
    return operator_.ReadSgdAttData(names, WideFromUtf8(File(name).string()));
  }

  tally_test::CTempFolder folder_;
  std::shared_ptr<CProjectSource> source_ = std::make_shared<CProjectSource>();
  CSqliteDbOperator operator_{source_};
  CSqliteProjectSettings settings_{source_};
};

TEST_F(SqliteProjectSettings, AnswersForTheProjectReadLast) {
  Create(
      "INSERT INTO setting VALUES ('de_code', 'a'), ('de_local', 'b'), ('de_year', 'c'),"
      " ('qd_code', 'd'), ('qd_local', 'e'), ('qd_de_code', 'f'), ('qd_de_local', 'g'),"
      " ('qd_de_year', 'h'), ('qd_de_mode', '2'), ('project_name', '楼');");
  ASSERT_TRUE(Read());
  EXPECT_EQ(settings_.GetDeCode(), L"a");
  EXPECT_EQ(settings_.GetDeLocal(), L"b");
  EXPECT_EQ(settings_.GetDeYear(), L"c");
  EXPECT_EQ(settings_.GetQdCode(), L"d");
  EXPECT_EQ(settings_.GetQdLocal(), L"e");
  EXPECT_EQ(settings_.GetQdDeCode(), L"f");
  EXPECT_EQ(settings_.GetQdDeLocal(), L"g");
  EXPECT_EQ(settings_.GetQdDeYear(), L"h");
  EXPECT_EQ(static_cast<int>(settings_.GetQdDeMode()), 2);
  EXPECT_EQ(settings_.Setting(L"project_name"), L"楼");

  Create("INSERT INTO setting VALUES ('de_code', 'other');", "other.db");
  ASSERT_TRUE(Read("other.db"));
  EXPECT_EQ(settings_.GetDeCode(), L"other");
  EXPECT_EQ(settings_.GetDeYear(), L"");
  EXPECT_EQ(static_cast<int>(settings_.GetQdDeMode()), 0);
}

TEST_F(SqliteProjectSettings, KeepsWhatItReadUntilTheNextRead) {
  Create("INSERT INTO setting VALUES ('de_code', 'old');");
  ASSERT_TRUE(Read());
  EXPECT_EQ(settings_.GetDeCode(), L"old");
  tally_test::RunSql(File(), "UPDATE setting SET value = 'new'");
  EXPECT_EQ(settings_.GetDeCode(), L"old");
  ASSERT_TRUE(Read());
  EXPECT_EQ(settings_.GetDeCode(), L"new");
}

TEST_F(SqliteProjectSettings, AreEmptyBeforeTheFirstRead) {
  std::vector<std::wstring> cells;
  EXPECT_EQ(settings_.GetDeCode(), L"");
  EXPECT_FALSE(settings_.GetQdMarkInfo(L"1", cells));
  EXPECT_FALSE(source_->LastFailure());
}

TEST_F(SqliteProjectSettings, AppendsMarksInSequenceOrder) {
  Create(
      "INSERT INTO qd_mark VALUES ('A', 2, 'size', '25', 'x'), ('A', 1, 'kind', 'PPR', ''),"
      " ('B', 1, 'n', 'v', '');");
  ASSERT_TRUE(Read());
  std::vector<std::wstring> cells = {L"kept"};
  EXPECT_TRUE(settings_.GetQdMarkInfo(L"A", cells));
  EXPECT_EQ(cells,
            (std::vector<std::wstring>{L"kept", L"kind", L"PPR", L"", L"size", L"25", L"x"}));
  EXPECT_FALSE(settings_.GetQdMarkInfo(L"C", cells));
  EXPECT_EQ(cells.size(), 7U);
}

TEST_F(SqliteProjectSettings, AreEmptyWhereTheTablesAreMissing) {
  Create("DROP TABLE setting; DROP TABLE qd_mark;");
  ASSERT_TRUE(Read());
  EXPECT_EQ(settings_.GetQdCode(), L"");
  ASSERT_TRUE(source_->LastFailure());
  EXPECT_EQ(source_->LastFailure()->message, "no such table: setting");
  EXPECT_EQ(source_->LastFailure()->table, "setting");
  std::vector<std::wstring> cells;
  EXPECT_FALSE(settings_.GetQdMarkInfo(L"A", cells));
  EXPECT_EQ(source_->LastFailure()->message, "no such table: qd_mark");
}

TEST_F(SqliteProjectSettings, FollowTheReaderOfTheProcess) {
  Create("INSERT INTO setting VALUES ('qd_code', 'shared');");
  std::vector<std::wstring> names;
  ASSERT_TRUE(CDbOperator::MakePortable()->ReadSgdAttData(names, WideFromUtf8(File().string())));
  EXPECT_EQ(IProjectSettings::MakePortable()->GetQdCode(), L"shared");
}

}  // namespace
