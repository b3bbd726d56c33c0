#include "platform/portable/sqlite_project.h"

#include <sqlite3.h>

#include <filesystem>
#include <new>
#include <string>
#include <system_error>
#include <utility>

#include "platform/portable/sqlite_table_reader.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr std::int64_t kApplicationId = 0x54414C59;  // "TALY"

// How long a read waits for a writer that is just committing.
constexpr int kBusyMilliseconds = 100;

// Bounds for damaged or hostile files whose pages stand in the tree more than once. A plain scan
// with a sort takes fewer steps for each stored byte, and a stored number of one byte prints as
// four characters at most.
constexpr int kStepsBetweenCalls = 1000;
constexpr std::uint64_t kStepsPerByte = 16;
constexpr std::uint64_t kFreeSteps = 1000000;
constexpr std::uint64_t kTextPerByte = 8;
constexpr std::uint64_t kFreeText = 1000000;

bool IsOutOfMemory(int status) {
  return (status & 0xFF) == SQLITE_NOMEM || status == SQLITE_IOERR_NOMEM;
}

}  // namespace

CSqliteFault::CSqliteFault(SDbFailure failure) : failure_(std::move(failure)) {}

CSqliteProject::CSqliteProject(std::wstring path) : path_(std::move(path)) {
  // The destructor does not run when the constructor throws.
  try {
    Open();
    Configure();
    CheckFormat();
  } catch (...) {
    sqlite3_close_v2(handle_);
    throw;
  }
}

CSqliteProject::~CSqliteProject() {
  sqlite3_close_v2(handle_);
}

void CSqliteProject::Open() {
  if (path_.empty() || path_.find(L'\0') != std::wstring::npos) {
    Fail("not a file name", "", 0);
  }
  const std::string name = Utf8FromWide(path_);
  const std::filesystem::path file(std::u8string(name.begin(), name.end()));
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    Fail("no such file", "", 0);
  }
  if (!std::filesystem::is_regular_file(status)) {
    // Opening a pipe would wait for its writer.
    Fail(error ? error.message() : "not a regular file", "", 0);
  }
  // A relative name gets its folder, so that none begins with "file:" or reads ":memory:", which
  // SQLite takes for something else.
  const std::string opened = file.is_absolute() ? name : "./" + name;
  const int opening = sqlite3_open_v2(opened.c_str(), &handle_,
                                      SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  if (handle_ == nullptr) {
    throw std::bad_alloc();
  }
  sqlite3_extended_result_codes(handle_, 1);
  if (opening != SQLITE_OK) {
    Fail(opening, "");
  }
}

void CSqliteProject::Configure() {
  const std::pair<int, int> options[] = {
      {SQLITE_DBCONFIG_DEFENSIVE, 1},       {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
      {SQLITE_DBCONFIG_ENABLE_VIEW, 0},     {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
      {SQLITE_DBCONFIG_DQS_DML, 0},         {SQLITE_DBCONFIG_DQS_DDL, 0},
      {SQLITE_DBCONFIG_WRITABLE_SCHEMA, 0}, {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
  };
  for (const auto& [option, value] : options) {
    const int status = sqlite3_db_config(handle_, option, value, nullptr);
    if (status != SQLITE_OK) {
      Fail(status, "");
    }
  }
  sqlite3_limit(handle_, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_busy_timeout(handle_, kBusyMilliseconds);
  // The file's own allowance follows when its size is known.
  stepBudget_ = kFreeSteps / kStepsBetweenCalls;
  textBudget_ = kFreeText;
  sqlite3_progress_handler(handle_, kStepsBetweenCalls, &CSqliteProject::CountSteps, this);
  const int status =
      sqlite3_exec(handle_, "PRAGMA cell_size_check = ON; BEGIN", nullptr, nullptr, nullptr);
  if (status != SQLITE_OK) {
    Fail(status, "");
  }
}

void CSqliteProject::CheckFormat() {
  // Also the first access to the file, which begins the transaction.
  if (PragmaNumber("PRAGMA application_id") != kApplicationId) {
    Fail("not a project database", "", 0);
  }
  const auto pages = static_cast<std::uint64_t>(PragmaNumber("PRAGMA page_count"));
  const auto pageSize = static_cast<std::uint64_t>(PragmaNumber("PRAGMA page_size"));
  const std::uint64_t size = pages * pageSize;
  stepBudget_ = (size * kStepsPerByte + kFreeSteps) / kStepsBetweenCalls;
  textBudget_ = size * kTextPerByte + kFreeText;
}

int CSqliteProject::CountSteps(void* project) {
  auto* self = static_cast<CSqliteProject*>(project);
  ++self->steps_;
  return self->steps_ > self->stepBudget_ ? 1 : 0;
}

std::int64_t CSqliteProject::PragmaNumber(const char* sql) {
  CSqliteTableReader reader(*this, "", sql);
  return reader.Step() ? reader.Integer(0) : 0;
}

int CSqliteProject::UserVersion() {
  return static_cast<int>(PragmaNumber("PRAGMA user_version"));
}

void CSqliteProject::RequirePlainTable(const char* table) {
  CSqliteTableReader reader(
      *this, table,
      "SELECT type, (SELECT count(*) FROM pragma_table_xinfo(?1) WHERE hidden <> 0)"
      " FROM pragma_table_list(?1) WHERE schema = 'main'");
  reader.BindText(1, table);
  // Where there is no such table, the statement that wants it says so better.
  if (reader.Step() && (reader.Text(0) != L"table" || reader.Integer(1) != 0)) {
    Fail(std::string("not a plain table: ") + table, table, 0);
  }
}

bool CSqliteProject::SpendText(std::size_t bytes) {
  if (bytes > textBudget_) {
    return false;
  }
  textBudget_ -= bytes;
  return true;
}

void CSqliteProject::Fail(int status, const char* table) const {
  if (IsOutOfMemory(status)) {
    throw std::bad_alloc();
  }
  if (status == SQLITE_INTERRUPT) {
    Fail("more records than the file can hold", table, 0);
  }
  Fail(sqlite3_errmsg(handle_), table, 0);
}

void CSqliteProject::Fail(const std::string& message, const char* table, std::int64_t row) const {
  throw CSqliteFault(SDbFailure{path_, table, row, message});
}
