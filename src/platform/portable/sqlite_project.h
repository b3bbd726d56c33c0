// One project database, open for reading.
#ifndef TALLY_PLATFORM_PORTABLE_SQLITE_PROJECT_H_
#define TALLY_PLATFORM_PORTABLE_SQLITE_PROJECT_H_

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "platform/db_operator.h"

struct sqlite3;

/// What the classes around SQLite throw, and what no service lets out.
class CSqliteFault : public std::exception {
 public:
  explicit CSqliteFault(SDbFailure failure);
  const char* what() const noexcept override { return failure_.message.c_str(); }
  const SDbFailure& Failure() const { return failure_; }

 private:
  SDbFailure failure_;
};

/// A connection that cannot write, with one read transaction from the constructor to the
/// destructor: all that is read belongs to one state of the project. The file is not trusted: it
/// gets neither views nor triggers nor extensions, and no more work and text than its size allows
/// for. Every operation throws CSqliteFault on a failure and std::bad_alloc without memory.
class CSqliteProject {
 public:
  /// Opens the file; one that is missing is not created, one that is no project database fails.
  explicit CSqliteProject(std::wstring path);
  ~CSqliteProject();
  CSqliteProject(const CSqliteProject&) = delete;
  CSqliteProject& operator=(const CSqliteProject&) = delete;

  /// Version number of the project's format.
  int UserVersion();
  sqlite3* Handle() const { return handle_; }

  /// Fails unless `table` is a table with stored columns alone: what is computed may never end.
  void RequirePlainTable(const char* table);
  /// Counts text that was read; false when there was more than the file can hold.
  bool SpendText(std::size_t bytes);

  /// Throws what stands for a status of SQLite that is not a success.
  [[noreturn]] void Fail(int status, const char* table) const;
  [[noreturn]] void Fail(const std::string& message, const char* table, std::int64_t row) const;

 private:
  void Open();
  void Configure();
  void CheckFormat();
  std::int64_t PragmaNumber(const char* sql);
  static int CountSteps(void* project);

  std::wstring path_;
  sqlite3* handle_ = nullptr;
  std::uint64_t steps_ = 0;       // in units of kStepsBetweenCalls
  std::uint64_t stepBudget_ = 0;  // likewise
  std::uint64_t textBudget_ = 0;  // bytes
};

#endif  // TALLY_PLATFORM_PORTABLE_SQLITE_PROJECT_H_
