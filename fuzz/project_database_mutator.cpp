// How libFuzzer changes project databases: what keeps a file a database gets further than changes
// of any byte. Part of the fuzzer alone, not of the replay.
#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <string_view>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using Bytes = std::span<std::uint8_t>;
using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

class CRandom {
 public:
  explicit CRandom(unsigned seed) : engine_(seed) {}
  std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : engine_() % limit; }
  const char* Of(std::span<const char* const> texts) { return texts[Below(texts.size())]; }

 private:
  std::mt19937 engine_;
};

// SQL ------------------------------------------------------------------------------------------

constexpr const char* kValues[] = {
    "0",
    "1",
    "-1",
    "2147483648",
    "-9223372036854775808",
    "9223372036854775807",
    "1e308",
    "-0.0",
    "9e999",
    "NULL",
    "''",
    "'1,2147483647'",
    "'1/2/3'",
    "'@F'",
    "'x' || char(0) || 'y'",
    "x'FFFE00EDA080'",
    "x'EDA080'",
    "zeroblob(3000)",
    "'030801001001'",
    "'A\\B\\C\\D'",
    "printf('%.*c', 2000, '*')",
};

constexpr const char* kSchemaChanges[] = {
    "UPDATE sqlite_schema SET sql = replace(sql, 'STRICT', '') WHERE rowid = %zu",
    "UPDATE sqlite_schema SET sql = replace(sql, 'NOT NULL', '') WHERE rowid = %zu",
    "UPDATE sqlite_schema SET sql = replace(sql, 'INTEGER', 'TEXT') WHERE rowid = %zu",
    "UPDATE sqlite_schema SET sql = replace(sql, 'TEXT', 'BLOB') WHERE rowid = %zu",
    "UPDATE sqlite_schema SET sql = replace(sql, 'PRIMARY KEY', '') WHERE rowid = %zu",
    "UPDATE sqlite_schema SET sql = replace(sql, 'name TEXT', 'name AS (id)') WHERE rowid = %zu",
    "UPDATE sqlite_schema SET type = 'view', rootpage = 0, sql = 'CREATE VIEW ' || name || "
    "' AS SELECT * FROM hz_row' WHERE rowid = %zu",
    "UPDATE sqlite_schema SET sql = 'CREATE VIRTUAL TABLE ' || name || ' USING fts5(id)', "
    "rootpage = 0 WHERE rowid = %zu",
    "UPDATE sqlite_schema SET rootpage = rootpage + 1 WHERE rowid = %zu",
    "UPDATE sqlite_schema SET name = name || '2' WHERE rowid = %zu",
    "DELETE FROM sqlite_schema WHERE rowid = %zu",
};

std::string Query(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  std::string text;
  if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
      sqlite3_step(statement) == SQLITE_ROW) {
    if (const unsigned char* value = sqlite3_column_text(statement, 0)) {
      text = reinterpret_cast<const char*>(value);
    }
  }
  sqlite3_finalize(statement);
  return text;
}

std::string Nth(const char* pattern, std::size_t number) {
  char sql[512];
  std::snprintf(sql, sizeof sql, pattern, number);
  return sql;
}

/// A random row of the table as "id = ...".
std::string SomeRow(sqlite3* database, const std::string& table, CRandom& random) {
  const std::string id = Query(
      database, "SELECT id FROM " + table + " LIMIT 1 OFFSET " + std::to_string(random.Below(12)));
  return " WHERE id = " + (id.empty() ? "1" : id);
}

void ChangeSomething(sqlite3* database, CRandom& random) {
  const std::string table =
      Query(database, Nth("SELECT name FROM sqlite_schema WHERE type = 'table' LIMIT 1 OFFSET %zu",
                          random.Below(40)));
  const std::string column =
      Query(database, "SELECT name FROM pragma_table_info('" + table + "') LIMIT 1 OFFSET " +
                          std::to_string(random.Below(12)));
  std::string sql;
  switch (random.Below(8)) {
    case 0:
      sql = "PRAGMA writable_schema = ON; " + Nth(random.Of(kSchemaChanges), random.Below(40));
      break;
    case 1:
      sql = "DELETE FROM " + table + SomeRow(database, table, random);
      break;
    case 2:
      sql =
          "UPDATE " + table + " SET id = " + random.Of(kValues) + SomeRow(database, table, random);
      break;
    case 3:
      sql = Nth("PRAGMA user_version = %zu", random.Below(12));
      break;
    default:
      sql = "UPDATE " + table + " SET " + column + " = " + random.Of(kValues) +
            SomeRow(database, table, random);
      break;
  }
  sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr);
}

/// Changes the database by statements; 0 where it is too damaged for that, or comes out too large.
std::size_t ChangeBySql(Bytes room, std::size_t size, CRandom& random) {
  constexpr int kMostSteps = 200;  // in thousands
  sqlite3* raw = nullptr;
  if (sqlite3_open_v2(":memory:", &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr) !=
      SQLITE_OK) {
    sqlite3_close(raw);
    return 0;
  }
  const Database database(raw, &sqlite3_close);
  int steps = 0;
  sqlite3_progress_handler(
      raw, 1000, [](void* count) { return ++*static_cast<int*>(count) > kMostSteps ? 1 : 0; },
      &steps);
  auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(size));
  if (copy == nullptr) {
    return 0;
  }
  std::memcpy(copy, room.data(), size);
  const auto length = static_cast<sqlite3_int64>(size);
  if (sqlite3_deserialize(raw, "main", copy, length, length,
                          SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE) !=
          SQLITE_OK ||
      Query(raw, "PRAGMA quick_check(1)") != "ok") {
    return 0;
  }
  for (std::size_t changes = 1 + random.Below(3); changes > 0; --changes) {
    ChangeSomething(raw, random);
  }
  sqlite3_int64 newLength = 0;
  unsigned char* bytes = sqlite3_serialize(raw, "main", &newLength, 0);
  const auto newSize = static_cast<std::size_t>(newLength);
  const bool fits = bytes != nullptr && newSize <= room.size();
  if (fits) {
    std::memcpy(room.data(), bytes, newSize);
  }
  sqlite3_free(bytes);
  return fits ? newSize : 0;
}

// Pages ----------------------------------------------------------------------------------------

std::size_t PageSize(Bytes file) {
  if (file.size() < 100) {
    return 0;
  }
  const std::size_t size = static_cast<std::size_t>(file[16]) << 8 | file[17];
  return size >= 512 && size <= file.size() ? size : 0;
}

/// Lets libFuzzer change a few bytes in place.
void ChangeBytes(Bytes page, CRandom& random) {
  constexpr std::size_t kMostBytes = 24;
  const std::size_t at = random.Below(page.size());
  const std::size_t length = std::min(1 + random.Below(kMostBytes), page.size() - at);
  LLVMFuzzerMutate(page.data() + at, length, length);
}

/// Points a cell of a page to some other place.
void MoveCell(Bytes page, std::size_t header, CRandom& random) {
  const bool isInner = page[header] == 2 || page[header] == 5;
  const std::size_t cells = static_cast<std::size_t>(page[header + 3]) << 8 | page[header + 4];
  const std::size_t at =
      header + (isInner ? 12 : 8) + 2 * random.Below(std::min<std::size_t>(cells, 60));
  if (at + 1 < page.size()) {
    const std::size_t place = random.Below(page.size());
    page[at] = static_cast<std::uint8_t>(place >> 8);
    page[at + 1] = static_cast<std::uint8_t>(place & 0xFF);
  }
}

void ChangePage(Bytes file, std::size_t pageSize, CRandom& random) {
  const std::size_t pages = file.size() / pageSize;
  const std::size_t number = random.Below(pages);
  const Bytes page = file.subspan(number * pageSize, pageSize);
  const Bytes other = file.subspan(random.Below(pages) * pageSize, pageSize);
  const std::size_t header = number == 0 ? 100 : 0;
  switch (random.Below(6)) {
    case 0:
      page[header + random.Below(12)] = static_cast<std::uint8_t>(random.Below(256));
      break;
    case 1:
      MoveCell(page, header, random);
      break;
    case 2:
      std::copy(other.begin() + 100, other.end(), page.begin() + 100);
      break;
    case 3:
      file[random.Below(100)] = static_cast<std::uint8_t>(random.Below(256));
      break;
    default:
      ChangeBytes(page, random);
      break;
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
  CRandom random(seed);
  const Bytes room(data, maxSize);
  const Bytes file = room.first(size);
  const std::size_t pageSize = PageSize(file);
  if (pageSize == 0 || random.Below(50) == 0) {
    return LLVMFuzzerMutate(data, size, maxSize);
  }
  if (random.Below(2) == 0) {
    if (const std::size_t changed = ChangeBySql(room, size, random); changed != 0) {
      return changed;
    }
  }
  for (std::size_t changes = 1 + random.Below(3); changes > 0; --changes) {
    ChangePage(file, pageSize, random);
  }
  return size;
}
