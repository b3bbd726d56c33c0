#include "host/demo_project.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/host_error.h"
#include "platform/portable/utf8_text.h"
#include "result_store/report_main_cal_item_data.h"
#include "support/temp_folder.h"

namespace {

using tally_test::ReadBytes;
using tally_test::WriteBytes;

using Row = std::vector<std::string>;

/// A database opened for reading.
class CReader {
 public:
  explicit CReader(const std::string& path) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
    handle_.reset(opened);
    if (code != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errstr(code));
    }
  }

  /// All rows of the answer, as texts.
  std::vector<Row> Rows(const std::string& sql) const {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(handle_.get(), sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(handle_.get()));
    }
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared,
                                                                          sqlite3_finalize);
    std::vector<Row> rows;
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
      Row row;
      for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
        const unsigned char* text = sqlite3_column_text(statement.get(), column);
        row.emplace_back(text == nullptr ? "" : reinterpret_cast<const char*>(text));
      }
      rows.push_back(std::move(row));
    }
    return rows;
  }

  /// The first column of all rows.
  Row Column(const std::string& sql) const {
    Row column;
    for (const Row& row : Rows(sql)) {
      column.push_back(row.at(0));
    }
    return column;
  }

  std::int64_t Number(const std::string& sql) const { return std::stoll(Column(sql).at(0)); }
  std::int64_t Count(const std::string& table) const {
    return Number("SELECT count(*) FROM " + table);
  }

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

class DemoProject : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  CReader Write(std::int64_t rows = 0) const {
    WriteDemoProject(Path("demo.db"), rows);
    return CReader(Path("demo.db"));
  }

  /// The names of what lies in the test's folder.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

 private:
  tally_test::CTempFolder folder_;
};

/// The message of the failure to write, or "" if there is none.
std::string Failure(const std::string& path, std::int64_t rows = 0) {
  try {
    WriteDemoProject(path, rows);
  } catch (const CHostError& failure) {
    return failure.what();
  }
  return "";
}

const std::vector<std::string> kResultSets = {"hz_row", "gl_row",     "cg_row",
                                              "pj_row", "detail_row", "qd_de_row"};
const Row kDisciplines = {"给排水", "电气", "暖通", "消防", "弱电"};

/// The detail rows with the texts that they name.
const std::string kDetail =
    " FROM detail_row r JOIN spec s ON s.id = r.spec JOIN category c ON c.id = r.category"
    " JOIN attr a ON a.id = r.attr JOIN detail_cal_item i ON i.id = r.cal_item"
    " JOIN floor f ON f.id = r.floor JOIN sys_code y ON y.id = r.sys_code ";

TEST_F(DemoProject, CarriesFormatMarkAndVersion) {
  const CReader project = Write();
  EXPECT_EQ(project.Number("PRAGMA application_id"), 0x54414C59);
  EXPECT_EQ(project.Number("PRAGMA user_version"), 9);
  EXPECT_EQ(project.Column("PRAGMA integrity_check"), Row{"ok"});
}

TEST_F(DemoProject, PlainExampleKeepsItsRowCounts) {
  const CReader project = Write();
  EXPECT_EQ(project.Count("detail_row"), 3000);
  EXPECT_EQ(project.Count("hz_row"), 3000);
  EXPECT_EQ(project.Count("gl_row"), 760);
  EXPECT_EQ(project.Count("cg_row"), 379);
  EXPECT_EQ(project.Count("pj_row"), 746);
  EXPECT_EQ(project.Count("qd_de_row"), 3000);
  EXPECT_EQ(project.Count("component"), 1016);
  EXPECT_EQ(project.Count("cal_item"), 1414);
  EXPECT_EQ(project.Count("detail_cal_item"), 1222);
}

TEST_F(DemoProject, PlainExampleKeepsItsFirstRows) {
  const CReader project = Write();
  EXPECT_EQ(project.Rows("SELECT r.id, s.name, f.name, c.kind, a.name, y.name, i.name, i.quantity1,"
                         " i.expression" +
                         kDetail + "ORDER BY r.id LIMIT 4"),
            (std::vector<Row>{{"1", "电气", "-1", "桥架", "槽式桥架 300*100", "动力系统\\AP2",
                               "桥架长度", "12.7", "9.2+3.5"},
                              {"2", "电气", "-1", "桥架", "槽式桥架 300*100", "动力系统\\AP2",
                               "展开面积", "10.16", "(9.2+3.5)*0.8"},
                              {"3", "电气", "-1", "桥架", "槽式桥架 300*100", "动力系统\\AP2",
                               "接地跨接", "2.0", "2"},
                              {"4", "电气", "-1", "桥架", "槽式桥架 300*100", "动力系统\\AP2",
                               "桥架长度", "12.7", "9.2+3.5"}}));
}

TEST_F(DemoProject, PlainExampleKeepsItsContent) {
  const CReader project = Write();
  // FNV-1a over all cells of all tables.
  std::uint64_t digest = 14695981039346656037u;
  for (const std::string& table :
       project.Column("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name")) {
    for (const Row& row : project.Rows("SELECT * FROM " + table + " ORDER BY 1, 2")) {
      for (const std::string& cell : row) {
        for (const char byte : cell + '\n') {
          digest = (digest ^ static_cast<unsigned char>(byte)) * 1099511628211u;
        }
      }
    }
  }
  EXPECT_EQ(digest, 2825186497411713944u)
      << "examples and goldens rest on the plain example's rows";
}

TEST_F(DemoProject, EveryReferenceResolves) {
  const CReader project = Write();
  for (const std::string& set : kResultSets) {
    for (const char* table :
         {"sgd", "floor", "component", "spec", "category", "attr", "sys_code"}) {
      EXPECT_EQ(project.Number("SELECT count(*) FROM " + set + " WHERE " + table +
                               " NOT IN (SELECT id FROM " + table + ")"),
                0)
          << set << "." << table;
    }
    const std::string items = set == "detail_row" ? "detail_cal_item"
                              : set == "pj_row"   ? "pj_cal_item"
                                                  : "cal_item";
    EXPECT_EQ(project.Number("SELECT count(*) FROM " + set +
                             " WHERE cal_item NOT IN (SELECT id FROM " + items + ")"),
              0)
        << set;
  }
  EXPECT_EQ(project.Number("SELECT count(*) FROM qd_de_row WHERE qd_item NOT IN"
                           " (SELECT id FROM qd_item) OR de_item NOT IN (SELECT id FROM de_item)"),
            0);
  EXPECT_GT(project.Count("component_text"), 0);
  EXPECT_EQ(project.Rows("PRAGMA foreign_key_check"), std::vector<Row>{});
}

TEST_F(DemoProject, IdsAreAscendingAndCompact) {
  const CReader project = Write();
  for (const std::string& table : project.Column("SELECT name FROM sqlite_master WHERE type = "
                                                 "'table' AND sql LIKE '%id INTEGER PRIMARY%'")) {
    EXPECT_EQ(project.Rows("SELECT min(id), max(id) FROM " + table),
              (std::vector<Row>{{"1", std::to_string(project.Count(table))}}))
        << table;
  }
}

TEST_F(DemoProject, EveryResultSetHasEveryDisciplineFloorAndSection) {
  const CReader project = Write();
  for (const std::string& set : kResultSets) {
    EXPECT_EQ(project.Column("SELECT DISTINCT s.name FROM " + set +
                             " r JOIN spec s ON s.id = r.spec ORDER BY s.id"),
              kDisciplines)
        << set;
    EXPECT_EQ(project.Column("SELECT DISTINCT f.name FROM " + set +
                             " r JOIN floor f ON f.id = r.floor ORDER BY f.id"),
              (Row{"-1", "1", "2", "3,7", "4", "5", "8", "9"}))
        << set;
    EXPECT_EQ(project.Column("SELECT DISTINCT g.name FROM " + set +
                             " r JOIN sgd g ON g.id = r.sgd ORDER BY g.id"),
              (Row{"一区", "二区"}))
        << set;
  }
}

TEST_F(DemoProject, SortNumbersAreUniqueWithinDiscipline) {
  const CReader project = Write();
  for (const char* tree : {"all_small_index", "all_sys_code"}) {
    EXPECT_EQ(project.Rows(std::string("SELECT spec, sort_id FROM ") + tree +
                           " GROUP BY 1, 2 HAVING count(*) > 1"),
              std::vector<Row>{})
        << tree;
  }
}

TEST_F(DemoProject, ListsAllButAFewKindsAndSystems) {
  const CReader project = Write();
  EXPECT_EQ(
      project.Rows("SELECT DISTINCT s.name, c.category || '\\' || c.kind AS path" + kDetail +
                   "WHERE NOT EXISTS (SELECT 1 FROM all_small_index x"
                   " WHERE x.spec = s.name AND x.path = c.category || '\\' || c.kind)"
                   " ORDER BY s.id"),
      (std::vector<Row>{
          {"给排水", "其它项目\\开孔"}, {"电气", "附件\\接线盒"}, {"暖通", "BIM支架\\垫木"}}));
  EXPECT_EQ(project.Rows("SELECT DISTINCT s.name, y.name" + kDetail +
                         "WHERE NOT EXISTS (SELECT 1 FROM all_sys_code x"
                         " WHERE x.spec = s.name AND replace(x.sys_code, '&', '\\') = y.name)"
                         " ORDER BY s.id"),
            (std::vector<Row>{{"给排水", "雨水系统"}, {"消防", "气体灭火系统"}}));
}

TEST_F(DemoProject, EveryListedKindAndSystemOccurs) {
  const CReader project = Write();
  EXPECT_EQ(
      project.Rows("SELECT x.spec, x.path FROM all_small_index x WHERE NOT EXISTS (SELECT 1" +
                   kDetail + "WHERE s.name = x.spec AND c.category || '\\' || c.kind = x.path)"),
      std::vector<Row>{});
  EXPECT_EQ(project.Rows("SELECT name FROM sys_code"
                         " WHERE id NOT IN (SELECT sys_code FROM detail_row)"),
            std::vector<Row>{});
}

TEST_F(DemoProject, SystemCodesHaveOneToThreeLevels) {
  const CReader project = Write();
  EXPECT_EQ(project.Column("SELECT DISTINCT length(name) - length(replace(name, '\\', ''))"
                           " FROM sys_code ORDER BY 1"),
            (Row{"0", "1", "2"}));
}

TEST_F(DemoProject, ConsumptionAgreesWithDetail) {
  const CReader project = Write();
  EXPECT_EQ(project.Number(
                "SELECT count(*) FROM detail_row d JOIN detail_cal_item di ON di.id = d.cal_item"
                " JOIN hz_row h ON h.id = d.id JOIN cal_item hi ON hi.id = h.cal_item"
                " WHERE d.component = h.component AND di.name = hi.name AND di.unit = hi.unit"
                " AND di.quantity1 = hi.quantity AND di.expression = hi.expression"),
            project.Count("detail_row"));
}

TEST_F(DemoProject, LevelAndRisingPartsAddUp) {
  const CReader project = Write();
  for (const Row& row : project.Rows("SELECT quantity1, quantity2, quantity3, quantity4"
                                     " FROM detail_cal_item")) {
    const double whole = std::stod(row[0]);
    EXPECT_GT(whole, 0);
    EXPECT_NEAR(std::stod(row[1]) + std::stod(row[2]), whole, 1e-6);
    EXPECT_LE(std::stod(row[3]), whole);
  }
}

TEST_F(DemoProject, OverHeightQuantitiesAreTheDetailsFourth) {
  const CReader project = Write();
  EXPECT_EQ(project.Number("SELECT count(*) FROM cg_row g JOIN cal_item gi ON gi.id = g.cal_item"
                           " WHERE EXISTS (SELECT 1 FROM detail_row d JOIN detail_cal_item di"
                           " ON di.id = d.cal_item WHERE d.component = g.component"
                           " AND di.name = gi.name AND di.quantity4 = gi.quantity)"),
            project.Count("cg_row"));
}

TEST_F(DemoProject, OverviewHasMainItemsOnly) {
  const CReader project = Write();
  const std::vector<Row> kinds = project.Rows(
      "SELECT DISTINCT s.name, c.category, c.kind, i.name FROM gl_row r JOIN spec s ON s.id = "
      "r.spec"
      " JOIN category c ON c.id = r.category JOIN cal_item i ON i.id = r.cal_item");
  EXPECT_FALSE(kinds.empty());
  for (const Row& kind : kinds) {
    EXPECT_EQ(WideFromUtf8(kind[3]),
              CReportMainCalItemData::Instance()->GetMainCalItem(
                  WideFromUtf8(kind[0]), WideFromUtf8(kind[1]), WideFromUtf8(kind[2])))
        << kind[0] << " " << kind[1] << " " << kind[2];
  }
}

TEST_F(DemoProject, PaintIsNamedWithItsCoats) {
  const CReader project = Write();
  EXPECT_EQ(
      project.Column("SELECT DISTINCT s.name" + kDetail +
                     "WHERE a.value LIKE '%管道刷油:%,%' AND i.name = '外表面积' ORDER BY s.id"),
      (Row{"给排水", "暖通", "消防"}));
  EXPECT_EQ(project.Column("SELECT DISTINCT s.name" + kDetail +
                           "WHERE a.value LIKE '%支架刷油:%,%' AND c.category = 'BIM支架'"
                           " AND i.name = '刷油面积' ORDER BY s.id"),
            kDisciplines);
}

TEST_F(DemoProject, DuctsAndSleevesNameMaterialAndThickness) {
  const CReader project = Write();
  EXPECT_EQ(project.Column("SELECT DISTINCT c.kind" + kDetail +
                           "WHERE s.name = '暖通' AND i.name = '展开面积'"
                           " AND (a.value LIKE '风管材质:%风管壁厚H(mm):%'"
                           " OR a.value LIKE '套管材质:%板材厚度:%') ORDER BY c.id"),
            (Row{"送风管", "空调风管", "排风管", "排烟管", "风管套管"}));
  EXPECT_GT(project.Number("SELECT count(*)" + kDetail + "WHERE c.kind = '柔性风管'"), 0);
}

TEST_F(DemoProject, InsulationNamesThicknessWithItsUnit) {
  const CReader project = Write();
  EXPECT_EQ(project.Rows("SELECT DISTINCT s.name, c.category" + kDetail +
                         "WHERE a.value LIKE '%保温材料:%保温厚度:%mm%' AND i.name IN"
                         " ('绝热保温体积', '风管保温体积', '保温体积') ORDER BY s.id, c.id"),
            (std::vector<Row>{{"给排水", "管道"},
                              {"给排水", "设备"},
                              {"暖通", "风管"},
                              {"暖通", "水管"},
                              {"暖通", "水暖设备"},
                              {"消防", "管网"},
                              {"消防", "储存装置"}}));
}

TEST_F(DemoProject, BillsCoverEveryCase) {
  const CReader project = Write();
  const std::string bills =
      " FROM qd_de_row r JOIN qd_item q ON q.id = r.qd_item JOIN de_item d ON d.id = r.de_item ";
  EXPECT_EQ(project.Number("SELECT count(*)" + bills +
                           "WHERE (r.is_qd = 1) <> (d.code = '' AND d.name = '')"),
            0)
      << "a bill's own row has an item without code and name, a quota has both";
  EXPECT_EQ(project.Column("SELECT q.code" + bills +
                           "WHERE r.is_qd = 1 GROUP BY q.id HAVING count(DISTINCT d.unit) > 1"),
            (Row{"3202001", "3301001", "3502001"}));
  EXPECT_GT(project.Number("SELECT count(*) FROM (SELECT q.id" + bills +
                           "GROUP BY q.id HAVING max(r.is_qd) = 0)"),
            0)
      << "bills with quotas only";
  EXPECT_EQ(project.Column("SELECT DISTINCT q.code" + bills +
                           "WHERE q.library = 'QD2024' AND NOT EXISTS (SELECT 1 FROM qd_chapter"
                           " WHERE library = q.library AND q.code LIKE code_prefix || '%')"),
            (Row{"9901001"}));
  EXPECT_EQ(project.Column("SELECT DISTINCT q.code" + bills +
                           "WHERE q.library = 'QD2013'"
                           " ORDER BY q.id"),
            (Row{"3201005", "3303005"}));
  EXPECT_GT(project.Number("SELECT count(*)" + bills + "WHERE d.library = 'DE2016'"), 0);
  EXPECT_EQ(project.Number("SELECT count(*) FROM qd_mark WHERE code NOT IN"
                           " (SELECT code FROM qd_item)"),
            0);
}

TEST_F(DemoProject, SettingsNameTheLibraries) {
  EXPECT_EQ(Write().Rows("SELECT name, value FROM setting"),
            (std::vector<Row>{{"de_code", "DE2024"},
                              {"de_local", "示例省"},
                              {"de_year", "2024"},
                              {"is_qd_mode", "1"},
                              {"project_name", "示例办公楼"},
                              {"qd_code", "QD2024"},
                              {"qd_de_code", "DE2024"},
                              {"qd_de_local", "示例省"},
                              {"qd_de_mode", "0"},
                              {"qd_de_year", "2024"},
                              {"qd_local", "示例省"}}));
}

TEST_F(DemoProject, SameRowsGiveSameFile) {
  for (const std::int64_t rows : {0, 5000}) {
    WriteDemoProject(Path("a.db"), rows);
    WriteDemoProject(Path("b.db"), rows);
    EXPECT_FALSE(ReadBytes(Path("a.db")).empty());
    EXPECT_TRUE(ReadBytes(Path("a.db")) == ReadBytes(Path("b.db"))) << rows;
  }
}

TEST_F(DemoProject, GrowsToTheRowsAskedFor) {
  const CReader project = Write(20000);
  const auto expectAbout = [&project](const std::string& table, double wanted) {
    EXPECT_NEAR(static_cast<double>(project.Count(table)), wanted, wanted * 0.02) << table;
  };
  expectAbout("detail_row", 20000);
  expectAbout("hz_row", 20000);
  expectAbout("qd_de_row", 20000);
  expectAbout("gl_row", 5000);
  expectAbout("pj_row", 5000);
  expectAbout("cg_row", 2500);
  expectAbout("component", 20000 / 2.97);
  expectAbout("detail_cal_item", 20000 / 2.5);
  EXPECT_EQ(project.Count("floor"), 16);
  EXPECT_EQ(project.Count("sys_code"), 46);
}

TEST_F(DemoProject, FloorsAndSystemsStopGrowing) {
  const CReader project = Write(120000);
  EXPECT_EQ(project.Count("floor"), 40);
  EXPECT_EQ(project.Count("sys_code"), 60);
  EXPECT_NEAR(static_cast<double>(project.Count("detail_row")), 120000, 2400);
}

TEST_F(DemoProject, SmallestProjectHasOneComponent) {
  const CReader project = Write(1);
  EXPECT_EQ(project.Count("component"), 1);
  EXPECT_GE(project.Count("detail_row"), 1);
  EXPECT_LE(project.Count("detail_row"), 4);
}

TEST_F(DemoProject, ReplacesTheFileThatWasThere) {
  WriteBytes(Path("demo.db"), "something else");
  WriteBytes(Path("demo.db-journal"), "left behind");
  EXPECT_GT(Write().Count("detail_row"), 0);
  EXPECT_EQ(Files(), Row{"demo.db"});
}

TEST_F(DemoProject, WritesToNameBeyondAscii) {
  WriteDemoProject(Path("示例.db"));
  EXPECT_GT(CReader(Path("示例.db")).Count("detail_row"), 0);
}

TEST_F(DemoProject, MissingFolderIsNamed) {
  EXPECT_EQ(
      Failure(Path("none/demo.db")),
      "cannot write the example project '" + Path("none/demo.db") + "': its folder does not exist");
  EXPECT_EQ(Files(), Row{});
}

TEST_F(DemoProject, FolderInPlaceOfFileIsNamed) {
  std::filesystem::create_directory(Path("demo.db"));
  EXPECT_EQ(Failure(Path("demo.db")),
            "cannot write the example project '" + Path("demo.db") + "': it is a folder");
  EXPECT_EQ(Files(), Row{"demo.db"});
}

TEST_F(DemoProject, NegativeRowsAreRefused) {
  EXPECT_EQ(Failure(Path("demo.db"), -1), "cannot write the example project '" + Path("demo.db") +
                                              "': the number of rows is negative");
  EXPECT_EQ(Files(), Row{});
}

TEST_F(DemoProject, FailingWriteKeepsTheFormerFile) {
  WriteBytes(Path("demo.db"), "former");
  // A folder that is not empty stands where the file is written first.
  std::filesystem::create_directories(Path("demo.db.tally-new/occupied"));
  EXPECT_EQ(Failure(Path("demo.db")), "cannot write the example project '" + Path("demo.db") +
                                          "': unable to open database file");
  EXPECT_EQ(ReadBytes(Path("demo.db")), "former");
}

}  // namespace
