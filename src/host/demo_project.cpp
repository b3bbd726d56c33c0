#include "host/demo_project.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/demo_building.h"
#include "host/demo_content.h"
#include "host/demo_database.h"
#include "host/demo_schema.h"
#include "host/host_error.h"

namespace {

void WriteDatabase(const std::string& path, std::int64_t rows) {
  demo::CDatabase database(path);
  // The file has no readers yet, and a broken one is thrown away.
  database.Execute(
      "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -65536");
  database.Execute("BEGIN");
  database.Execute(demo::kSchema);
  demo::WriteContent(database, rows);
  database.Execute("COMMIT");
}

std::filesystem::path FilePath(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

/// Removes the file at the end of its scope, if it is still there.
class CTemporaryFile {
 public:
  explicit CTemporaryFile(std::filesystem::path path) : path_(std::move(path)) { Remove(); }
  ~CTemporaryFile() { Remove(); }
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;

 private:
  void Remove() const {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }

  std::filesystem::path path_;
};

void WriteAndReplace(const std::string& path, std::int64_t rows) {
  if (rows < 0) {
    throw std::runtime_error("the number of rows is negative");
  }
  const std::filesystem::path target = FilePath(path);
  std::error_code ignored;
  if (std::filesystem::is_directory(target, ignored)) {
    throw std::runtime_error("it is a folder");
  }
  if (target.has_parent_path() && !std::filesystem::is_directory(target.parent_path(), ignored)) {
    throw std::runtime_error("its folder does not exist");
  }
  const std::string beside = path + ".tally-new";
  const CTemporaryFile temporary(FilePath(beside));
  WriteDatabase(beside, rows == 0 ? demo::kPlainRows : rows);
  std::error_code failure;
  std::filesystem::rename(FilePath(beside), target, failure);
  if (failure) {
    throw std::runtime_error(failure.message());
  }
  // A journal that the former file left behind would be played back into the new one.
  for (const char* suffix : {"-journal", "-wal", "-shm"}) {
    std::filesystem::remove(FilePath(path + suffix), ignored);
  }
}

}  // namespace

void WriteDemoProject(const std::string& path, std::int64_t rows) {
  try {
    WriteAndReplace(path, rows);
  } catch (const std::runtime_error& failure) {
    throw CHostError("cannot write the example project '" + path + "': " + failure.what());
  }
}
