#include "table_steps.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "report_table.h"

namespace {

using CDatabase = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using CStatement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

const char* CalItemTable(ERecordSet set) {
  switch (set) {
    case ERecordSet::Detail:
      return "detail_cal_item";
    case ERecordSet::Fitting:
      return "pj_cal_item";
    default:
      return "cal_item";
  }
}

std::vector<std::string> TablesOf(ERecordSet set) {
  std::vector<std::string> tables = {
      "all_small_index", "all_sys_code", "all_floor", "all_sgd", "sgd",     "floor",
      "component",       "spec",         "category",  "attr",    "sys_code"};
  tables.emplace_back(CalItemTable(set));
  if (set == ERecordSet::BillQuota) {
    tables.insert(tables.end(), {"qd_item", "de_item"});
  }
  tables.emplace_back(SetTable(set));
  return tables;
}

// The value of a column; of a text its length.
std::size_t Fetch(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return sqlite3_column_int64(statement, column) == 0 ? 0 : 1;
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement, column) == 0 ? 0 : 1;
    default:
      return sqlite3_column_text(statement, column) == nullptr
                 ? 0
                 : static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
  }
}

std::size_t StepTable(sqlite3* database, const std::string& table) {
  sqlite3_stmt* prepared = nullptr;
  const int code = sqlite3_prepare_v2(database, ("SELECT * FROM " + table + " ORDER BY id").c_str(),
                                      -1, &prepared, nullptr);
  const CStatement statement(prepared, &sqlite3_finalize);
  if (code != SQLITE_OK) {
    throw std::runtime_error("cannot step through " + table);
  }
  const int columns = sqlite3_column_count(prepared);
  std::size_t seen = 0;
  int stepped = sqlite3_step(prepared);
  for (; stepped == SQLITE_ROW; stepped = sqlite3_step(prepared)) {
    for (int column = 0; column < columns; ++column) {
      seen += Fetch(prepared, column);
    }
  }
  if (stepped != SQLITE_DONE) {
    throw std::runtime_error("cannot step through " + table);
  }
  return seen;
}

}  // namespace

std::size_t StepTables(const std::string& file, ERecordSet set) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const CDatabase database(opened, &sqlite3_close);
  if (code != SQLITE_OK) {
    throw std::runtime_error("cannot open " + file);
  }
  std::size_t seen = 0;
  for (const std::string& table : TablesOf(set)) {
    seen += StepTable(opened, table);
  }
  return seen;
}
