#include "host/demo_database.h"

#include <algorithm>
#include <stdexcept>

namespace demo {

CDatabase::CDatabase(const std::string& path) {
  sqlite3* opened = nullptr;
  const int code =
      sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  handle_.reset(opened);
  Check(code);
}

void CDatabase::Execute(const std::string& sql) {
  Check(sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr));
}

void CDatabase::Check(int code) const {
  if (code != SQLITE_OK && code != SQLITE_DONE) {
    throw std::runtime_error(handle_ ? sqlite3_errmsg(handle_.get()) : sqlite3_errstr(code));
  }
}

CInsert::CInsert(const CDatabase& database, std::string_view table, std::string_view columns)
    : database_(database) {
  std::string sql =
      "INSERT INTO " + std::string(table) + " (" + std::string(columns) + ") VALUES (?";
  for (auto left = std::count(columns.begin(), columns.end(), ','); left > 0; --left) {
    sql += ",?";
  }
  sql += ")";
  sqlite3_stmt* prepared = nullptr;
  database.Check(sqlite3_prepare_v3(database.Handle(), sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT,
                                    &prepared, nullptr));
  statement_.reset(prepared);
}

void CInsert::Bind(int column, std::int64_t value) {
  database_.Check(sqlite3_bind_int64(statement_.get(), column, value));
}

void CInsert::Bind(int column, double value) {
  database_.Check(sqlite3_bind_double(statement_.get(), column, value));
}

void CInsert::Bind(int column, std::string_view value) {
  // Never a null pointer, which would bind NULL.
  const char* text = value.empty() ? "" : value.data();
  database_.Check(sqlite3_bind_text(statement_.get(), column, text, static_cast<int>(value.size()),
                                    SQLITE_STATIC));
}

}  // namespace demo
