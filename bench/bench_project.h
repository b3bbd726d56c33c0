// The project that is open while the benchmarks run.
#ifndef TALLY_BENCH_BENCH_PROJECT_H_
#define TALLY_BENCH_BENCH_PROJECT_H_

#include <cstdint>
#include <filesystem>
#include <string>

#include "scaled_project.h"

/// Opens one project at a time and leaves it open for the benchmarks that follow. Its folder of
/// files goes with it. The configuration is the one of a new user, whoever runs the program.
class CBenchProject {
 public:
  CBenchProject();
  ~CBenchProject();
  CBenchProject(const CBenchProject&) = delete;
  CBenchProject& operator=(const CBenchProject&) = delete;

  /// The scaled project of so many rows, from memory (CScaledProject).
  void OpenScaled(std::int64_t rows, EProjectShape shape);
  /// The floor of so many circuits, so many to an attribute, from memory (CFormulaProject).
  void OpenFormula(int circuits, int ofAttribute);

  /// A project of that size as a database, UTF-8: the example project (`tally demo`), or the
  /// consumption set of the scaled project of another shape. Written on first use.
  std::string File(std::int64_t rows, EProjectShape shape);
  /// Puts a file in the place of every one that `File` would write. It must be such a project.
  void Take(const std::string& file) { taken_ = file; }
  static void WriteFile(const std::string& file, std::int64_t rows, EProjectShape shape);
  /// Opens a database; `Close` before, so that opening has something to do.
  static void OpenFile(const std::string& file);
  /// Puts SQLite's reader in force and leaves no project open.
  static void Close();
  /// Throws a std::runtime_error with the reader's words where a read of a database failed.
  static void RequireNoFailure();
  /// Rows of a table of a database, counted by SQLite.
  static std::int64_t CountRows(const std::string& file, const std::string& table);

 private:
  std::filesystem::path folder_;
  std::string taken_;
};

#endif  // TALLY_BENCH_BENCH_PROJECT_H_
