// Builds project databases from SQL text.
#ifndef TALLY_TESTS_SUPPORT_PROJECT_DATABASE_H_
#define TALLY_TESTS_SUPPORT_PROJECT_DATABASE_H_

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "support/project_schema.h"

namespace tally_test {

/// A connection that may write, closed by its destructor.
using DatabaseHandle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

/// Opens or creates the database file; throws std::runtime_error where it cannot.
inline DatabaseHandle OpenDatabase(const std::filesystem::path& file) {
  sqlite3* raw = nullptr;
  const int status =
      sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  DatabaseHandle database(raw, &sqlite3_close);
  if (status != SQLITE_OK) {
    throw std::runtime_error("cannot open " + file.string());
  }
  return database;
}

/// Runs statements; throws std::runtime_error with SQLite's message where one fails.
inline void RunSql(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
}

/// Runs statements in the database file, which is created where it is missing.
inline void RunSql(const std::filesystem::path& file, const std::string& sql) {
  const DatabaseHandle database = OpenDatabase(file);
  RunSql(database.get(), sql);
}

/// Creates an empty project database and runs `sql` in it, all as one transaction.
inline void CreateProjectDatabase(const std::filesystem::path& file, const std::string& sql = "") {
  RunSql(file, std::string("BEGIN;") + kProjectSchema + sql + ";COMMIT;");
}

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_PROJECT_DATABASE_H_
