// One pass over one table of a project database.
#ifndef TALLY_PLATFORM_PORTABLE_SQLITE_TABLE_READER_H_
#define TALLY_PLATFORM_PORTABLE_SQLITE_TABLE_READER_H_

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3_stmt;
class CSqliteProject;

/// A prepared statement. The values take any storage class: NULL reads as 0 or the empty text, text
/// as the number that it begins with, and numbers as SQLite prints them. Throws as CSqliteProject.
class CSqliteTableReader {
 public:
  /// `table` (kept by pointer) is what failures name; `project` must outlive the reader.
  CSqliteTableReader(CSqliteProject& project, const char* table, const char* sql);
  ~CSqliteTableReader();
  CSqliteTableReader(const CSqliteTableReader&) = delete;
  CSqliteTableReader& operator=(const CSqliteTableReader&) = delete;

  void BindInteger(int parameter, std::int64_t value);
  /// `value` must outlive the reader.
  void BindText(int parameter, const char* value);

  /// Goes to the next record; false behind the last one.
  bool Step();

  std::int64_t Integer(int column) const;
  /// Saturates at the ends of int.
  int Int(int column) const;
  bool Flag(int column) const { return Integer(column) != 0; }
  double Real(int column) const;
  /// A text as it is stored, until the next step.
  std::string_view Bytes(int column);
  std::wstring Text(int column);

 private:
  CSqliteProject& project_;
  const char* table_;
  sqlite3_stmt* statement_ = nullptr;
  std::wstring scratch_;  // text is decoded here, so that a record's own text has no spare room
};

/// The nearest int.
int SaturateToInt(std::int64_t value);

#endif  // TALLY_PLATFORM_PORTABLE_SQLITE_TABLE_READER_H_
