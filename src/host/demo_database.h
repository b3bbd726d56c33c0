// The database that the example project is written to.
#ifndef TALLY_HOST_DEMO_DATABASE_H_
#define TALLY_HOST_DEMO_DATABASE_H_

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace demo {

/// A database file that is open for writing. What fails throws a std::runtime_error with SQLite's
/// message.
class CDatabase {
 public:
  /// Opens or makes the file `path` (UTF-8).
  explicit CDatabase(const std::string& path);

  void Execute(const std::string& sql);
  /// Throws unless `code` is a success.
  void Check(int code) const;
  sqlite3* Handle() const { return handle_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

/// A prepared insert into one table. The database must outlive it.
class CInsert {
 public:
  /// `columns`: the names of the table's columns, separated by commas.
  CInsert(const CDatabase& database, std::string_view table, std::string_view columns);

  template <typename... Values>
  void Put(const Values&... values) {
    int column = 0;
    (Bind(++column, values), ...);
    database_.Check(sqlite3_step(statement_.get()));
    database_.Check(sqlite3_reset(statement_.get()));
  }

  /// Puts the values behind an id, and answers the id: 1, 2, 3 and so on.
  template <typename... Values>
  std::int64_t Add(const Values&... values) {
    Put(++last_, values...);
    return last_;
  }

  /// The id that was given last, which is the number of records added.
  std::int64_t Last() const { return last_; }

 private:
  void Bind(int column, std::int64_t value);
  void Bind(int column, int value) { Bind(column, std::int64_t{value}); }
  void Bind(int column, double value);
  void Bind(int column, std::string_view value);

  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  const CDatabase& database_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  std::int64_t last_ = 0;
};

/// Records of one dictionary, each kept once.
class CDictionary {
 public:
  CDictionary(const CDatabase& database, std::string_view table, std::string_view columns)
      : insert_(database, table, columns) {}

  /// The id of the record of these texts, which is added where it is new.
  template <typename... Texts>
  std::int64_t Id(const Texts&... texts) {
    const std::vector<std::string> record{std::string(texts)...};
    const auto found = ids_.find(record);
    if (found != ids_.end()) {
      return found->second;
    }
    return ids_[record] = insert_.Add(std::string_view(texts)...);
  }

 private:
  CInsert insert_;
  std::map<std::vector<std::string>, std::int64_t> ids_;
};

}  // namespace demo

#endif  // TALLY_HOST_DEMO_DATABASE_H_
