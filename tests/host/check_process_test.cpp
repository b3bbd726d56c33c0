// `tally check`, run as a user runs it, and the tables that it knows.
#include <cstddef>
#include <set>
#include <string>

#include "host/program_process.h"
#include "host/project_tables.h"

namespace {

class CheckProcess : public tally_test::ProgramProcess {
 protected:
  /// What `tally check` finds after `sql`: its output behind the number of rows of each table.
  std::string Findings(const std::string& sql) const {
    tally_test::RunSql(Project(), sql);
    const tally_test::SProcessResult result = Run({"check", Project()});
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 2);
    const std::string last = "rows of qd_mark: ";
    const std::size_t end = result.output.find('\n', result.output.find(last));
    return result.output.substr(end + 1);
  }
};

constexpr const char* kCounts =
    "version: 9\n"
    "rows of setting: 0\n"
    "rows of all_small_index: 2\n"
    "rows of all_sys_code: 1\n"
    "rows of all_floor: 2\n"
    "rows of all_sgd: 2\n"
    "rows of sgd: 2\n"
    "rows of floor: 2\n"
    "rows of spec: 2\n"
    "rows of category: 2\n"
    "rows of attr: 3\n"
    "rows of sys_code: 2\n"
    "rows of component: 2\n"
    "rows of component_text: 0\n"
    "rows of cal_item: 3\n"
    "rows of detail_cal_item: 0\n"
    "rows of pj_cal_item: 0\n"
    "rows of qd_item: 0\n"
    "rows of de_item: 0\n"
    "rows of hz_row: 4\n"
    "rows of gl_row: 0\n"
    "rows of cg_row: 0\n"
    "rows of detail_row: 0\n"
    "rows of pj_row: 0\n"
    "rows of qd_de_row: 0\n"
    "rows of qd_chapter: 0\n"
    "rows of de_chapter: 0\n"
    "rows of qd_mark: 0\n";

TEST_F(CheckProcess, CountsTheRowsOfASoundProject) {
  ExpectOutput({"check", Project()}, std::string(kCounts) + "no findings\n");
}

TEST_F(CheckProcess, FindsNothingInTheExampleProject) {
  Run({"demo", Name("example.tally")});
  const tally_test::SProcessResult result = Run({"check", Name("example.tally")});
  EXPECT_TRUE(result.output.ends_with("\nno findings\n")) << result.output;
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(CheckProcess, FindsEveryKindOfReferenceWithoutARecord) {
  EXPECT_EQ(Findings("INSERT INTO component_text VALUES (5, 1, 'x');"
                     "INSERT INTO hz_row VALUES (30, 9, 8, 7, 6, 5, 4, 3, 99);"
                     "INSERT INTO gl_row VALUES (31, 1, 1, 1, 1, 1, 1, 1, -4);"
                     "INSERT INTO cg_row VALUES (32, 1, 1, 1, 1, 1, 1, 1, 9223372036854775807);"
                     "INSERT INTO detail_row VALUES (33, 1, 1, 1, 1, 1, 1, 1, 1);"
                     "INSERT INTO pj_row VALUES (34, 1, 1, 1, 1, 1, 1, 1, 1);"
                     "INSERT INTO qd_de_row VALUES (35, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 3)"),
            "table component_text, row '5', '1': component 5 has no record in component\n"
            "table hz_row, row 30: sgd 9 has no record in sgd\n"
            "table hz_row, row 30: floor 8 has no record in floor\n"
            "table hz_row, row 30: component 7 has no record in component\n"
            "table hz_row, row 30: spec 6 has no record in spec\n"
            "table hz_row, row 30: category 5 has no record in category\n"
            "table hz_row, row 30: attr 4 has no record in attr\n"
            "table hz_row, row 30: sys_code 3 has no record in sys_code\n"
            "table hz_row, row 30: cal_item 99 has no record in cal_item\n"
            "table gl_row, row 31: cal_item -4 has no record in cal_item\n"
            "table cg_row, row 32: cal_item 9223372036854775807 has no record in cal_item\n"
            "table detail_row, row 33: cal_item 1 has no record in detail_cal_item\n"
            "table pj_row, row 34: cal_item 1 has no record in pj_cal_item\n"
            "table qd_de_row, row 35: qd_item 2 has no record in qd_item\n"
            "table qd_de_row, row 35: de_item 3 has no record in de_item\n"
            "15 findings\n");
}

TEST_F(CheckProcess, SortsTheFindingsOfATableByRow) {
  EXPECT_EQ(Findings("INSERT INTO hz_row VALUES (50, 9, 1, 1, 1, 1, 1, 1, 1),"
                     " (-7, 9, 1, 1, 1, 1, 1, 1, 1), (6, 9, 1, 1, 1, 1, 1, 1, 1)"),
            "table hz_row, row -7: sgd 9 has no record in sgd\n"
            "table hz_row, row 6: sgd 9 has no record in sgd\n"
            "table hz_row, row 50: sgd 9 has no record in sgd\n"
            "3 findings\n");
}

TEST_F(CheckProcess, FindsIllFormedTexts) {
  EXPECT_EQ(Findings("INSERT INTO setting VALUES (CAST(x'6BFF' AS TEXT), 'v');"
                     "UPDATE attr SET value = CAST(x'EDA080' AS TEXT) WHERE id = 1;"
                     "UPDATE attr SET name = 'DN' || char(0) WHERE id = 3;"
                     "UPDATE spec SET name = char(65533) WHERE id = 2;"
                     "INSERT INTO qd_chapter VALUES ('A', '0' || char(10), 1, "
                     "CAST(x'C080' AS TEXT));"
                     "INSERT INTO qd_mark VALUES ('A', 2, '', '', char(0))"),
            "table setting, row 'k�': name is not well-formed UTF-8\n"
            "table attr, row 1: value is not well-formed UTF-8\n"
            "table attr, row 3: name holds U+0000\n"
            "table qd_chapter, row 'A', '0': name is not well-formed UTF-8\n"
            "table qd_mark, row 'A', '2': extra holds U+0000\n"
            "5 findings\n");
}

TEST_F(CheckProcess, CountsOneFinding) {
  EXPECT_EQ(Findings("DELETE FROM component WHERE id = 2"),
            "table hz_row, row 2: component 2 has no record in component\n"
            "1 finding\n");
}

TEST_F(CheckProcess, FindsTablesThatCannotBeRead) {
  EXPECT_EQ(Findings("DROP TABLE gl_row; ALTER TABLE pj_row DROP COLUMN attr;"
                     "DROP TABLE category; DROP TABLE sgd; CREATE VIEW sgd AS SELECT 1 AS id"),
            "table sgd cannot be read: not a plain table: sgd\n"
            "table category cannot be read: no such table: category\n"
            "table gl_row cannot be read: no such table: gl_row\n"
            "table pj_row cannot be read: no such column: attr\n"
            "4 findings\n");
  const std::string output = Run({"check", Project()}).output;
  EXPECT_NE(output.find("rows of sgd: unknown\n"), std::string::npos);
  EXPECT_NE(output.find("rows of gl_row: unknown\n"), std::string::npos);
  EXPECT_NE(output.find("rows of pj_row: 0\n"), std::string::npos);
}

TEST_F(CheckProcess, TellsWhatDoesNotOpen) {
  ExpectFault({"check", Name("none")}, "cannot open '" + Name("none") + "': no such file");
  ExpectFault({"check", folder_.Path().string()},
              "cannot open '" + folder_.Path().string() + "': not a regular file");
  tally_test::WriteBytes(Name("text"), std::string(1000, 'x'));
  ExpectFault({"check", Name("text")},
              "cannot open '" + Name("text") + "': file is not a database");
  tally_test::RunSql(Project(), "PRAGMA user_version = 8");
  ExpectFault({"check", Project()},
              "cannot open '" + Project() + "': its format is version 8, not version 9");
}

// The names of a table's columns that fulfil a condition of `pragma_table_info`.
std::set<std::string> Columns(sqlite3* database, const std::string& table,
                              const std::string& condition) {
  std::set<std::string> names;
  const std::string sql = "SELECT name FROM pragma_table_info('" + table + "') WHERE " + condition;
  sqlite3_exec(
      database, sql.c_str(),
      [](void* set, int, char** values, char**) {
        static_cast<std::set<std::string>*>(set)->insert(values[0]);
        return 0;
      },
      &names, nullptr);
  return names;
}

TEST_F(CheckProcess, KnowsEveryTextKeyAndReference) {
  const tally_test::DatabaseHandle database = tally_test::OpenDatabase(Project());
  std::set<std::string> tables;
  for (const SProjectTable& table : ProjectTables()) {
    tables.insert(table.name);
  }
  for (const SProjectTable& table : ProjectTables()) {
    const std::set<std::string> keys(table.keys.begin(), table.keys.end());
    EXPECT_EQ(keys, Columns(database.get(), table.name, "pk > 0")) << table.name;
    const std::set<std::string> texts(table.texts.begin(), table.texts.end());
    EXPECT_EQ(texts, Columns(database.get(), table.name, "type = 'TEXT'")) << table.name;
    // A number is called as the table that it refers to.
    std::set<std::string> references;
    for (const std::string& name : Columns(database.get(), table.name, "type = 'INTEGER'")) {
      if (tables.count(name) > 0) {
        references.insert(name);
      }
    }
    std::set<std::string> known;
    for (const SReferenceColumn& reference : table.references) {
      known.insert(reference.name);
      EXPECT_EQ(tables.count(reference.table), 1U) << reference.table;
    }
    EXPECT_EQ(known, references) << table.name;
  }
  EXPECT_EQ(tables.size(), 27U);
}

}  // namespace
