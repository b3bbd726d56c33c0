#include "platform/portable/sqlite_db_operator.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/portable/utf8_text.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

using KorDMRec::SKorDMAllSmallIndexRec;
using KorDMRec::SKorDMAllSysCodeRec;
using KorDMRec::SKorDMDetailResultData;
using KorDMRec::SKorDMFloorRec;
using KorDMRec::SKorDMPjResultData;
using KorDMRec::SKorDMQdDeResultData;
using KorDMRec::SKorDMQdDeRow;
using KorDMRec::SKorDMResultData;
using KorDMRec::SKorDMResultRow;

class SqliteDbOperator : public ::testing::Test {
 protected:
  std::filesystem::path File(const std::string& name = "project.db") const {
    return folder_.Path() / name;
  }
  std::wstring Path(const std::string& name = "project.db") const {
    return WideFromUtf8(File(name).string());
  }
  void Create(const std::string& sql = "") { tally_test::CreateProjectDatabase(File(), sql); }

  // "table|row|message" of the last failure, which must name the file.
  std::string Failure(const std::string& name = "project.db") const {
    const std::optional<SDbFailure> failure = operator_.LastFailure();
    if (!failure) {
      return "none";
    }
    EXPECT_EQ(failure->file, Path(name));
    return failure->table + "|" + std::to_string(failure->row) + "|" + failure->message;
  }

  // Replaces one table by the text of a statement.
  void Replace(const std::string& table, const std::string& sql) {
    tally_test::RunSql(File(), "DROP TABLE " + table + ";" + sql);
  }

  tally_test::CTempFolder folder_;
  CSqliteDbOperator operator_{std::make_shared<CProjectSource>()};
};

// One record in each dictionary, with different ids, and one row that refers to them.
constexpr const char* kOneOfEach = R"sql(
INSERT INTO sgd VALUES (11, 'A区', 'second');
INSERT INTO floor VALUES (12, '首层', '1,3');
INSERT INTO component VALUES (13, 'ZP-1');
INSERT INTO spec VALUES (14, '给排水');
INSERT INTO category VALUES (15, '管道', '给水管');
INSERT INTO attr VALUES (16, '材质:PPR', '规格:DN25');
INSERT INTO sys_code VALUES (17, '给水\JL-1');
INSERT INTO cal_item VALUES (18, '长度', 'm', 't3', 't4', 2.5, '1+1.5');
INSERT INTO detail_cal_item VALUES (18, '长度', 'm', 1.5, 2.5, -3, 0, '1+0.5');
INSERT INTO pj_cal_item VALUES (18, 'first', '弯头', '个', 5000000000);
INSERT INTO qd_item VALUES (19, '0310', '给水管安装', 'm', 'GB');
INSERT INTO de_item VALUES (20, 'D-1', '定额', '10m', 'GD');
INSERT INTO hz_row VALUES (1, 11, 12, 13, 14, 15, 16, 17, 18);
INSERT INTO detail_row VALUES (1, 11, 12, 13, 14, 15, 16, 17, 18);
INSERT INTO pj_row VALUES (1, 11, 12, 13, 14, 15, 16, 17, 18);
INSERT INTO qd_de_row VALUES (1, 1, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20);
INSERT INTO qd_de_row VALUES (2, 0, 11, 12, 13, 14, 15, 16, 17, 18, 99, 20);
)sql";

TEST_F(SqliteDbOperator, ReadsTreeRecordsInAscendingIdOrder) {
  Create(
      "INSERT INTO all_small_index VALUES (5, 2, 's2', 'b2', 'b2\\k2'), (-3, 1, 's1', 'b1', 'p1');"
      "INSERT INTO all_sys_code VALUES (2, 7, 's', 'a&b', 'note');"
      "INSERT INTO all_floor VALUES (9, '2', '2'), (1, '1', '1');"
      "INSERT INTO all_sgd VALUES (4, 'B'), (3, 'A');");

  std::vector<SKorDMAllSmallIndexRec> kinds;
  ASSERT_TRUE(operator_.ReadCategoryData(kinds, Path()));
  ASSERT_EQ(kinds.size(), 2U);
  EXPECT_EQ(kinds[0].sortId, 1);
  EXPECT_EQ(kinds[0].spec, L"s1");
  EXPECT_EQ(kinds[1].bigCategory, L"b2");
  EXPECT_EQ(kinds[1].path, L"b2\\k2");

  std::vector<SKorDMAllSysCodeRec> sysCodes;
  ASSERT_TRUE(operator_.ReadSysCodeData(sysCodes, Path()));
  ASSERT_EQ(sysCodes.size(), 1U);
  EXPECT_EQ(sysCodes[0].sortId, 7);
  EXPECT_EQ(sysCodes[0].spec, L"s");
  EXPECT_EQ(sysCodes[0].sysCode, L"a&b");
  EXPECT_EQ(sysCodes[0].remark, L"note");

  std::vector<SKorDMFloorRec> floors;
  ASSERT_TRUE(operator_.ReadFloorData(floors, Path()));
  ASSERT_EQ(floors.size(), 2U);
  EXPECT_EQ(floors[0].id, 1);
  EXPECT_EQ(floors[1].name, L"2");
  EXPECT_EQ(floors[1].floorText, L"2");

  std::vector<std::wstring> sections = {L"kept"};
  ASSERT_TRUE(operator_.ReadSgdAttData(sections, Path()));
  EXPECT_EQ(sections, (std::vector<std::wstring>{L"kept", L"A", L"B"}));
}

TEST_F(SqliteDbOperator, ReadsEveryFieldOfASummarySet) {
  Create(kOneOfEach);
  SKorDMResultData data;
  ASSERT_TRUE(operator_.ReadXhlData(data, Path(), true));
  ASSERT_EQ(data.rows.size(), 1U);
  const SKorDMResultRow& row = data.rows[0];
  EXPECT_EQ(row.sgd + row.floor + row.component + row.spec + row.category + row.attr + row.sysCode +
                row.calItem + row.reserved,
            0);
  ASSERT_EQ(data.sgds.size(), 1U);
  EXPECT_EQ(data.sgds[0].id, 11);
  EXPECT_EQ(data.sgds[0].name, L"A区");
  EXPECT_EQ(data.sgds[0].text2, L"second");
  EXPECT_EQ(data.floors.at(0).name, L"首层");
  EXPECT_EQ(data.floors.at(0).floorText, L"1,3");
  EXPECT_EQ(data.components.at(0).name, L"ZP-1");
  EXPECT_EQ(data.specs.at(0).name, L"给排水");
  EXPECT_EQ(data.categories.at(0).category, L"管道");
  EXPECT_EQ(data.categories.at(0).kind, L"给水管");
  EXPECT_EQ(data.attrs.at(0).name, L"材质:PPR");
  EXPECT_EQ(data.attrs.at(0).value, L"规格:DN25");
  EXPECT_EQ(data.sysCodes.at(0).name, L"给水\\JL-1");
  ASSERT_EQ(data.calItems.size(), 1U);
  EXPECT_EQ(data.calItems[0].id, 18);
  EXPECT_EQ(data.calItems[0].name, L"长度");
  EXPECT_EQ(data.calItems[0].unit, L"m");
  EXPECT_EQ(data.calItems[0].text3, L"t3");
  EXPECT_EQ(data.calItems[0].text4, L"t4");
  EXPECT_EQ(data.calItems[0].quantity, 2.5);
  EXPECT_EQ(data.calItems[0].expression, L"1+1.5");
  EXPECT_EQ(Failure(), "none");
}

TEST_F(SqliteDbOperator, ReadsDetailAndFittingItems) {
  Create(kOneOfEach);
  SKorDMDetailResultData detail;
  ASSERT_TRUE(operator_.ReadXhlDetailData(detail, Path()));
  ASSERT_EQ(detail.calItems.size(), 1U);
  EXPECT_EQ(detail.calItems[0].name, L"长度");
  EXPECT_EQ(detail.calItems[0].unit, L"m");
  EXPECT_EQ(detail.calItems[0].quantity1, 1.5);
  EXPECT_EQ(detail.calItems[0].quantity2, 2.5);
  EXPECT_EQ(detail.calItems[0].quantity3, -3);
  EXPECT_EQ(detail.calItems[0].quantity4, 0);
  EXPECT_EQ(detail.calItems[0].expression, L"1+0.5");

  SKorDMPjResultData fittings;
  ASSERT_TRUE(operator_.ReadPjData(fittings, Path()));
  ASSERT_EQ(fittings.calItems.size(), 1U);
  EXPECT_EQ(fittings.calItems[0].text1, L"first");
  EXPECT_EQ(fittings.calItems[0].name, L"弯头");
  EXPECT_EQ(fittings.calItems[0].unit, L"个");
  EXPECT_EQ(fittings.calItems[0].value, 5000000000);
}

TEST_F(SqliteDbOperator, ReadsBillAndQuotaRowsInBothModesAlike) {
  Create(kOneOfEach);
  for (const bool isQdMode : {false, true}) {
    SKorDMQdDeResultData data;
    ASSERT_TRUE(operator_.ReadQdDeData(data, Path(), isQdMode));
    ASSERT_EQ(data.rows.size(), 2U);
    EXPECT_TRUE(data.rows[0].isQd);
    EXPECT_FALSE(data.rows[1].isQd);
    EXPECT_EQ(data.rows[0].qdItem, 0);
    EXPECT_EQ(data.rows[1].qdItem, -1);
    EXPECT_EQ(data.rows[1].deItem, 0);
    ASSERT_EQ(data.qdItems.size(), 1U);
    EXPECT_EQ(data.qdItems[0].code, L"0310");
    EXPECT_EQ(data.qdItems[0].name, L"给水管安装");
    EXPECT_EQ(data.qdItems[0].unit, L"m");
    EXPECT_EQ(data.qdItems[0].library, L"GB");
    EXPECT_EQ(data.deItems.at(0).code, L"D-1");
  }
}

TEST_F(SqliteDbOperator, TellsTheResultSetsApart) {
  Create(
      "INSERT INTO spec VALUES (1, 'hz'), (2, 'gl'), (3, 'cg');"
      "INSERT INTO hz_row VALUES (1, 0, 0, 0, 1, 0, 0, 0, 0);"
      "INSERT INTO gl_row VALUES (1, 0, 0, 0, 2, 0, 0, 0, 0);"
      "INSERT INTO cg_row VALUES (1, 0, 0, 0, 3, 0, 0, 0, 0);");
  SKorDMResultData summary;
  SKorDMResultData overview;
  SKorDMResultData overHeight;
  ASSERT_TRUE(operator_.ReadXhlData(summary, Path(), true));
  ASSERT_TRUE(operator_.ReadXhlData(overview, Path(), false));
  ASSERT_TRUE(operator_.ReadCgData(overHeight, Path()));
  EXPECT_EQ(summary.specs.at(0).name, L"hz");
  EXPECT_EQ(overview.specs.at(0).name, L"gl");
  EXPECT_EQ(overHeight.specs.at(0).name, L"cg");
}

TEST_F(SqliteDbOperator, HoldsReferredRecordsOnceInIdOrderAndMarksDanglingIds) {
  Create(
      "INSERT INTO spec VALUES (1, 'unused'), (2, 'two'), (3, 'unused'), (7, 'seven');"
      "INSERT INTO hz_row VALUES (30, 0, 0, 0, 2, 0, 0, 0, 0), (10, 0, 0, 0, 7, 0, 0, 0, 0),"
      " (20, 0, 0, 0, 5, 0, 0, 0, 0), (40, 0, 0, 0, 7, 0, 0, 0, 0);");
  SKorDMResultData data;
  ASSERT_TRUE(operator_.ReadXhlData(data, Path(), true));
  ASSERT_EQ(data.specs.size(), 2U);
  EXPECT_EQ(data.specs[0].name, L"two");
  EXPECT_EQ(data.specs[1].name, L"seven");
  std::vector<int> specs;
  for (const SKorDMResultRow& row : data.rows) {
    specs.push_back(row.spec);
    EXPECT_EQ(row.sgd, -1);
  }
  EXPECT_EQ(specs, (std::vector<int>{1, -1, 0, 1}));
}

TEST_F(SqliteDbOperator, TakesIdsBeyond32BitsAndFarApart) {
  Create(
      "INSERT INTO spec VALUES (9223372036854775807, 'last'), (-9223372036854775808, 'first'),"
      " (4294967297, 'wide'), (1, 'one');"
      "INSERT INTO hz_row VALUES (1, 0, 0, 0, 9223372036854775807, 0, 0, 0, 0),"
      " (2, 0, 0, 0, -9223372036854775808, 0, 0, 0, 0), (3, 0, 0, 0, 4294967297, 0, 0, 0, 0),"
      " (5000000000, 0, 0, 0, 1, 0, 0, 0, 0), (5000000001, 0, 0, 0, 2, 0, 0, 0, 0);");
  SKorDMResultData data;
  ASSERT_TRUE(operator_.ReadXhlData(data, Path(), true));
  ASSERT_EQ(data.specs.size(), 4U);
  EXPECT_EQ(data.specs[0].name, L"first");
  EXPECT_EQ(data.specs[0].id, std::numeric_limits<int>::min());
  EXPECT_EQ(data.specs[1].name, L"one");
  EXPECT_EQ(data.specs[2].name, L"wide");
  EXPECT_EQ(data.specs[2].id, std::numeric_limits<int>::max());
  EXPECT_EQ(data.specs[3].name, L"last");
  std::vector<int> specs;
  for (const SKorDMResultRow& row : data.rows) {
    specs.push_back(row.spec);
  }
  EXPECT_EQ(specs, (std::vector<int>{3, 0, 2, 1, -1}));
}

TEST_F(SqliteDbOperator, SaturatesNumbersAndReadsNullAsNothing) {
  Create();
  Replace(
      "all_small_index",
      "CREATE TABLE all_small_index (id INTEGER PRIMARY KEY, sort_id, spec, big_category, path);"
      "INSERT INTO all_small_index VALUES (1, 2147483648, NULL, NULL, 'a'),"
      " (2, -9223372036854775808, 7, 2.5, x'E7AE'), (3, 1e300, '', '', ''),"
      " (4, NULL, '', '', ''), (5, ' -12abc', '', '', ''), (6, '99999999999999999999', '', '',"
      " ''), (7, -1.9, x'', '', '');");
  std::vector<SKorDMAllSmallIndexRec> records;
  ASSERT_TRUE(operator_.ReadCategoryData(records, Path()));
  std::vector<int> numbers;
  for (const SKorDMAllSmallIndexRec& record : records) {
    numbers.push_back(record.sortId);
  }
  EXPECT_EQ(numbers,
            (std::vector<int>{2147483647, -2147483647 - 1, 2147483647, 0, -12, 2147483647, -1}));
  EXPECT_EQ(records[0].spec, L"");
  EXPECT_EQ(records[1].spec, L"7");
  EXPECT_EQ(records[1].bigCategory, L"2.5");
  EXPECT_EQ(records[1].path, L"\uFFFD");
  EXPECT_EQ(records[6].spec, L"");
}

TEST_F(SqliteDbOperator, ReadsAFlagByItsLeadingInteger) {
  Create();
  Replace("qd_de_row",
          "CREATE TABLE qd_de_row (id INTEGER PRIMARY KEY, is_qd, sgd, floor, component, spec,"
          " category, attr, sys_code, cal_item, qd_item, de_item);"
          "INSERT INTO qd_de_row (id, is_qd) VALUES (1, 1), (2, 0), (3, -5), (4, NULL), (5, '1x'),"
          " (6, 'x'), (7, 4294967296), (8, 0.5);");
  SKorDMQdDeResultData data;
  ASSERT_TRUE(operator_.ReadQdDeData(data, Path(), true));
  std::vector<bool> flags;
  for (const SKorDMQdDeRow& row : data.rows) {
    flags.push_back(row.isQd);
  }
  EXPECT_EQ(flags, (std::vector<bool>{true, false, true, false, true, false, true, false}));
}

TEST_F(SqliteDbOperator, ReplacesIllFormedPartsAndKeepsZeroCharacters) {
  Create(
      "INSERT INTO all_sgd VALUES (1, CAST(x'61006200' AS TEXT)), (2, CAST(x'F09F98' AS TEXT)),"
      " (3, CAST(x'C0AFE080BFF0818283' AS TEXT)), (4, CAST(x'EDA08061' AS TEXT)),"
      " (5, CAST(x'F09F9880' AS TEXT)), (6, CAST(x'61F1808061' AS TEXT));");
  std::vector<std::wstring> names;
  ASSERT_TRUE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(names,
            (std::vector<std::wstring>{std::wstring(L"a\0b\0", 4), L"\uFFFD",
                                       L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD",
                                       L"\uFFFD\uFFFD\uFFFDa", L"\U0001F600", L"a\uFFFDa"}));
}

TEST_F(SqliteDbOperator, TakesDictionariesWhoseIdIsNoKey) {
  Create();
  Replace("spec",
          "CREATE TABLE spec (id, name);"
          "INSERT INTO spec VALUES ('3', 'text three'), (5, 'five'), (5, 'five again'),"
          " (NULL, 'null'), ('2', 'text two');");
  tally_test::RunSql(
      File(),
      "INSERT INTO hz_row VALUES (1, 0, 0, 0, 5, 0, 0, 0, 0), (2, 0, 0, 0, 3, 0, 0, 0,"
      " 0), (3, 0, 0, 0, 0, 0, 0, 0, 0), (4, 0, 0, 0, 2, 0, 0, 0, 0);");
  SKorDMResultData data;
  ASSERT_TRUE(operator_.ReadXhlData(data, Path(), true));
  ASSERT_EQ(data.specs.size(), 4U);
  EXPECT_EQ(data.specs[0].name, L"null");
  EXPECT_EQ(data.specs[1].name, L"text two");
  EXPECT_EQ(data.specs[2].name, L"text three");
  EXPECT_EQ(data.specs[3].name, L"five");
  std::vector<int> specs;
  for (const SKorDMResultRow& row : data.rows) {
    specs.push_back(row.spec);
  }
  EXPECT_EQ(specs, (std::vector<int>{3, 2, 0, 1}));
}

TEST_F(SqliteDbOperator, AppendsASecondSetBehindTheFirst) {
  Create(kOneOfEach);
  SKorDMQdDeResultData data;
  ASSERT_TRUE(operator_.ReadQdDeData(data, Path(), true));
  ASSERT_TRUE(operator_.ReadQdDeData(data, Path(), true));
  ASSERT_EQ(data.rows.size(), 4U);
  ASSERT_EQ(data.qdItems.size(), 2U);
  EXPECT_EQ(data.rows[1].calItem, 0);
  EXPECT_EQ(data.rows[2].calItem, 1);
  EXPECT_EQ(data.rows[2].qdItem, 1);
  EXPECT_EQ(data.rows[3].qdItem, -1);
}

TEST_F(SqliteDbOperator, TellsTheFormatVersion) {
  Create();
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 9);
  tally_test::RunSql(File(), "PRAGMA user_version = 8");
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 8);
  std::vector<std::wstring> names;
  EXPECT_TRUE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(Failure(), "none");
}

TEST_F(SqliteDbOperator, GivesNoVersionForWhatIsNoProject) {
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 0);
  EXPECT_EQ(Failure(), "|0|no such file");
  EXPECT_FALSE(std::filesystem::exists(File()));

  tally_test::WriteBytes(File(), "");
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 0);
  EXPECT_EQ(Failure(), "|0|not a project database");

  tally_test::WriteBytes(File(), std::string(5000, 'x'));
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 0);
  EXPECT_EQ(Failure(), "|0|file is not a database");

  std::filesystem::remove(File());
  Create("PRAGMA application_id = 1;");
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 0);
  EXPECT_EQ(Failure(), "|0|not a project database");
}

TEST_F(SqliteDbOperator, RefusesWhatIsNoFile) {
  std::vector<std::wstring> names;
  std::filesystem::create_directory(File("folder"));
  EXPECT_FALSE(operator_.ReadSgdAttData(names, Path("folder")));
  EXPECT_EQ(Failure("folder"), "|0|not a regular file");
  ASSERT_EQ(mkfifo(File("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(operator_.ReadSgdAttData(names, Path("pipe")));
  EXPECT_EQ(Failure("pipe"), "|0|not a regular file");
  EXPECT_FALSE(operator_.ReadSgdAttData(names, L""));
  ASSERT_TRUE(operator_.LastFailure());
  EXPECT_EQ(operator_.LastFailure()->message, "not a file name");
  EXPECT_FALSE(operator_.ReadSgdAttData(names, std::wstring(L"a\0b", 3)));
  EXPECT_EQ(operator_.LastFailure()->message, "not a file name");
}

TEST_F(SqliteDbOperator, OpensPathsWithOddCharacters) {
  for (const std::string name : {"a?mode=memory#x%20y.db", "file:x?vfs=none", "工程 'a'.db"}) {
    tally_test::CTempFolder folder;
    const std::filesystem::path file = folder.Path() / name;
    tally_test::CreateProjectDatabase(file, "INSERT INTO all_sgd VALUES (1, 'found');");
    std::vector<std::wstring> names;
    EXPECT_TRUE(operator_.ReadSgdAttData(names, WideFromUtf8(file.string()))) << name;
    EXPECT_EQ(names, std::vector<std::wstring>{L"found"});
  }
}

TEST_F(SqliteDbOperator, TakesNamesInTheWorkingFolderForFiles) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.Path());
  std::vector<std::wstring> names;
  for (const wchar_t* name : {L":memory:", L"file:new.db?mode=rwc"}) {
    EXPECT_FALSE(operator_.ReadSgdAttData(names, name));
    EXPECT_EQ(operator_.LastFailure()->message, "no such file");
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
  std::filesystem::current_path(before);
}

TEST_F(SqliteDbOperator, AppendsNothingWhenATableIsMissing) {
  Create(kOneOfEach);
  tally_test::RunSql(File(), "DROP TABLE de_item");
  SKorDMQdDeResultData data;
  EXPECT_FALSE(operator_.ReadQdDeData(data, Path(), true));
  EXPECT_EQ(Failure(), "de_item|0|no such table: de_item");
  EXPECT_TRUE(data.rows.empty());
  EXPECT_TRUE(data.sgds.empty());
  EXPECT_TRUE(data.qdItems.empty());
}

TEST_F(SqliteDbOperator, FailsOnAMissingColumnEvenInAnEmptyTable) {
  Create("ALTER TABLE hz_row DROP COLUMN attr; ALTER TABLE floor DROP COLUMN floor_text;");
  SKorDMResultData data;
  EXPECT_FALSE(operator_.ReadXhlData(data, Path(), true));
  EXPECT_EQ(Failure(), "hz_row|0|no such column: attr");
  EXPECT_FALSE(operator_.ReadXhlData(data, Path(), false));
  EXPECT_EQ(Failure(), "floor|0|no such column: floor_text");
}

TEST_F(SqliteDbOperator, KeepsTheLastFailureUntilItIsForgotten) {
  Create();
  std::vector<std::wstring> names;
  EXPECT_FALSE(operator_.ReadSgdAttData(names, Path("missing")));
  EXPECT_TRUE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(Failure("missing"), "|0|no such file");
  operator_.ForgetFailure();
  EXPECT_EQ(Failure(), "none");
}

TEST_F(SqliteDbOperator, RefusesViews) {
  Create("INSERT INTO hz_row VALUES (1, 0, 0, 0, 0, 0, 0, 0, 0);");
  Replace("floor",
          "CREATE VIEW floor AS WITH RECURSIVE n(id) AS (SELECT 1 UNION ALL SELECT id + 1 FROM n)"
          " SELECT id, 'x' AS name, 'y' AS floor_text FROM n;");
  SKorDMResultData data;
  EXPECT_FALSE(operator_.ReadXhlData(data, Path(), true));
  EXPECT_EQ(Failure(), "floor|0|not a plain table: floor");
  EXPECT_TRUE(data.rows.empty());
}

TEST_F(SqliteDbOperator, RefusesVirtualTablesAndComputedColumns) {
  Create();
  Replace("all_sgd", "CREATE VIRTUAL TABLE all_sgd USING fts5(id, name);");
  std::vector<std::wstring> names;
  EXPECT_FALSE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(Failure(), "all_sgd|0|not a plain table: all_sgd");
  Replace("all_floor",
          "CREATE TABLE all_floor (id INTEGER PRIMARY KEY, name TEXT, floor_text TEXT AS"
          " (printf('%.*c', 100000000, 'x')));");
  std::vector<SKorDMFloorRec> floors;
  EXPECT_FALSE(operator_.ReadFloorData(floors, Path()));
  EXPECT_EQ(Failure(), "all_floor|0|not a plain table: all_floor");
}

TEST_F(SqliteDbOperator, RunsNoTriggersAndLeavesTheFileAlone) {
  Create(
      "INSERT INTO all_sgd VALUES (1, 'A');"
      "CREATE TRIGGER t AFTER INSERT ON all_sgd BEGIN DELETE FROM all_sgd; END;");
  const std::string before = tally_test::ReadBytes(File());
  std::vector<std::wstring> names;
  EXPECT_TRUE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(names, std::vector<std::wstring>{L"A"});
  EXPECT_EQ(tally_test::ReadBytes(File()), before);
}

// A project of many pages: a few thousand fittings that all have a row.
void FillPages(const std::filesystem::path& file) {
  tally_test::RunSql(
      file,
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) INSERT INTO"
      " component SELECT i, 'component ' || i || ' with a name of some length' FROM n;"
      "INSERT INTO pj_row SELECT id, 0, 0, id, 0, 0, 0, 0, 0 FROM component;");
}

TEST_F(SqliteDbOperator, ReadsAllOrNothingOfATruncatedFile) {
  Create();
  FillPages(File());
  const std::string whole = tally_test::ReadBytes(File());
  tally_test::WriteBytes(File(), whole.substr(0, whole.size() / 2));
  SKorDMPjResultData data;
  EXPECT_FALSE(operator_.ReadPjData(data, Path()));
  EXPECT_EQ(Failure(), "|0|database disk image is malformed");
  EXPECT_TRUE(data.rows.empty());
  EXPECT_EQ(operator_.GetMdbVertion(Path()), 0);
}

TEST_F(SqliteDbOperator, ReadsAllOrNothingOfACorruptPage) {
  Create();
  FillPages(File());
  std::string bytes = tally_test::ReadBytes(File());
  const std::size_t at = bytes.find("component 1500 with");
  ASSERT_NE(at, std::string::npos);
  const std::size_t page = at / 4096 * 4096;
  bytes.replace(page, 16, 16, '\x7F');
  tally_test::WriteBytes(File(), bytes);
  SKorDMPjResultData data;
  EXPECT_FALSE(operator_.ReadPjData(data, Path()));
  EXPECT_EQ(Failure(), "component|0|database disk image is malformed");
  EXPECT_TRUE(data.rows.empty());
  EXPECT_TRUE(data.components.empty());
}

TEST_F(SqliteDbOperator, SurvivesDamageAnywhere) {
  Create(kOneOfEach);
  const std::string whole = tally_test::ReadBytes(File());
  std::uint32_t state = 20240917;
  for (int round = 0; round < 400; ++round) {
    std::string bytes = whole;
    for (int i = 0; i < 8; ++i) {
      state = state * 1664525 + 1013904223;
      const std::size_t at = state % bytes.size();
      state = state * 1664525 + 1013904223;
      bytes[at] = static_cast<char>(state >> 24);
    }
    tally_test::WriteBytes(File(), bytes);
    SKorDMQdDeResultData data;
    const bool read = operator_.ReadQdDeData(data, Path(), true);
    EXPECT_TRUE(read || (data.rows.empty() && data.sgds.empty() && data.deItems.empty()));
  }
}

// A number of two bytes in a page.
std::size_t PageNumber(const std::string& bytes, std::size_t at) {
  return std::size_t{static_cast<unsigned char>(bytes[at])} << 8 |
         static_cast<unsigned char>(bytes[at + 1]);
}

TEST_F(SqliteDbOperator, EndsWhenPagesRepeatWithoutEnd) {
  Create();
  tally_test::RunSql(File(), "PRAGMA page_size = 512; VACUUM;");
  tally_test::RunSql(
      File(),
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO"
      " all_sgd SELECT i, 'x' FROM n;");
  int root = 0;
  const auto takeRoot = [](void* target, int, char** values, char**) {
    *static_cast<int*>(target) = std::stoi(values[0]);
    return 0;
  };
  ASSERT_EQ(sqlite3_exec(tally_test::OpenDatabase(File()).get(),
                         "SELECT rootpage FROM sqlite_schema WHERE name = 'all_sgd'", takeRoot,
                         &root, nullptr),
            SQLITE_OK);

  // All entries of each inner page point to the next inner page, so that each level multiplies the
  // records that come.
  constexpr std::size_t kPage = 512;
  constexpr char kInner = 5;
  std::string bytes = tally_test::ReadBytes(File());
  std::vector<std::size_t> inner = {(static_cast<std::size_t>(root) - 1) * kPage};
  for (std::size_t page = kPage; page + kPage <= bytes.size(); page += kPage) {
    if (page != inner[0] && bytes[page] == kInner) {
      inner.push_back(page);
    }
  }
  ASSERT_GE(inner.size(), 5U);
  for (std::size_t i = 0; i + 1 < inner.size(); ++i) {
    const std::size_t next = inner[i + 1] / kPage + 1;
    const std::string link = {0, 0, static_cast<char>(next >> 8), static_cast<char>(next & 0xFF)};
    for (std::size_t cell = 0; cell < PageNumber(bytes, inner[i] + 3); ++cell) {
      bytes.replace(inner[i] + PageNumber(bytes, inner[i] + 12 + 2 * cell), 4, link);
    }
    bytes.replace(inner[i] + 8, 4, link);
  }
  tally_test::WriteBytes(File(), bytes);
  std::vector<std::wstring> names;
  EXPECT_FALSE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(Failure(), "all_sgd|0|more records than the file can hold");
  EXPECT_TRUE(names.empty());
}

TEST_F(SqliteDbOperator, FailsWhileAWriterHoldsTheFile) {
  Create();
  const tally_test::DatabaseHandle writer = tally_test::OpenDatabase(File());
  tally_test::RunSql(writer.get(), "BEGIN EXCLUSIVE");
  std::vector<std::wstring> names;
  EXPECT_FALSE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(Failure(), "|0|database is locked");
  tally_test::RunSql(writer.get(), "ROLLBACK");
  EXPECT_TRUE(operator_.ReadSgdAttData(names, Path()));
}

TEST_F(SqliteDbOperator, FailsOnAnUnfinishedTransactionOfACrashedWriter) {
  Create();
  FillPages(File());
  {
    // What a writer leaves behind: a journal on the disk and a file that is half changed.
    const tally_test::DatabaseHandle writer = tally_test::OpenDatabase(File());
    tally_test::RunSql(writer.get(), "PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN;");
    tally_test::RunSql(writer.get(), "UPDATE component SET name = name || 'x'");
    std::filesystem::copy_file(File(), File("crashed.db"));
    std::filesystem::copy_file(File("project.db-journal"), File("crashed.db-journal"));
    tally_test::RunSql(writer.get(), "ROLLBACK");
  }
  SKorDMPjResultData data;
  EXPECT_FALSE(operator_.ReadPjData(data, Path("crashed.db")));
  EXPECT_EQ(Failure("crashed.db"), "|0|attempt to write a readonly database");
  EXPECT_TRUE(data.rows.empty());
}

TEST_F(SqliteDbOperator, ReadsWhatIsCommittedInAWriteAheadLog) {
  Create();
  const tally_test::DatabaseHandle writer = tally_test::OpenDatabase(File());
  tally_test::RunSql(writer.get(), "PRAGMA journal_mode = WAL");
  tally_test::RunSql(writer.get(), "INSERT INTO all_sgd VALUES (1, 'committed')");
  tally_test::RunSql(writer.get(), "BEGIN; INSERT INTO all_sgd VALUES (2, 'open')");
  std::vector<std::wstring> names;
  EXPECT_TRUE(operator_.ReadSgdAttData(names, Path()));
  EXPECT_EQ(names, std::vector<std::wstring>{L"committed"});
}

TEST_F(SqliteDbOperator, MakesEachReadTheCurrentProject) {
  const auto source = std::make_shared<CProjectSource>();
  CSqliteDbOperator reader(source);
  std::vector<std::wstring> names;
  reader.GetMdbVertion(Path("version"));
  EXPECT_EQ(source->Path(), L"");
  reader.ReadSgdAttData(names, Path("a"));
  const std::uint64_t generation = source->Generation();
  EXPECT_EQ(source->Path(), Path("a"));
  reader.ReadSgdAttData(names, Path("b"));
  EXPECT_EQ(source->Path(), Path("b"));
  EXPECT_GT(source->Generation(), generation);
}

}  // namespace
