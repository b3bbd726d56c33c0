#include "platform/portable/sqlite_table_reader.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>

#include "platform/portable/sqlite_project.h"
#include "platform/portable/utf8_text.h"

CSqliteTableReader::CSqliteTableReader(CSqliteProject& project, const char* table, const char* sql)
    : project_(project), table_(table) {
  const int status = sqlite3_prepare_v2(project.Handle(), sql, -1, &statement_, nullptr);
  if (status != SQLITE_OK) {
    project.Fail(status, table);
  }
}

CSqliteTableReader::~CSqliteTableReader() {
  sqlite3_finalize(statement_);
}

void CSqliteTableReader::BindInteger(int parameter, std::int64_t value) {
  const int status = sqlite3_bind_int64(statement_, parameter, value);
  if (status != SQLITE_OK) {
    project_.Fail(status, table_);
  }
}

void CSqliteTableReader::BindText(int parameter, const char* value) {
  const int status = sqlite3_bind_text(statement_, parameter, value, -1, SQLITE_STATIC);
  if (status != SQLITE_OK) {
    project_.Fail(status, table_);
  }
}

bool CSqliteTableReader::Step() {
  const int status = sqlite3_step(statement_);
  if (status != SQLITE_ROW && status != SQLITE_DONE) {
    project_.Fail(status, table_);
  }
  return status == SQLITE_ROW;
}

std::int64_t CSqliteTableReader::Integer(int column) const {
  return sqlite3_column_int64(statement_, column);
}

int CSqliteTableReader::Int(int column) const {
  return SaturateToInt(Integer(column));
}

double CSqliteTableReader::Real(int column) const {
  return sqlite3_column_double(statement_, column);
}

std::string_view CSqliteTableReader::Bytes(int column) {
  if (sqlite3_column_type(statement_, column) == SQLITE_NULL) {
    return {};
  }
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (bytes == nullptr) {
    // An empty blob has no bytes to point to; anything else had no room.
    if ((sqlite3_errcode(project_.Handle()) & 0xFF) == SQLITE_NOMEM) {
      throw std::bad_alloc();
    }
    return {};
  }
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
  if (!project_.SpendText(size)) {
    // Tables with ids have them in the first column, which is never read as text.
    const bool hasId = sqlite3_column_type(statement_, 0) == SQLITE_INTEGER;
    project_.Fail("more text than the file can hold", table_, hasId ? Integer(0) : 0);
  }
  return {bytes, size};
}

std::wstring CSqliteTableReader::Text(int column) {
  scratch_.clear();
  AppendWide(scratch_, Bytes(column));
  return std::wstring(scratch_.data(), scratch_.size());
}

int SaturateToInt(std::int64_t value) {
  return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}
