#include "bench_project.h"

#include <sqlite3.h>

#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <system_error>

#include "consumption_file.h"
#include "formula_project.h"
#include "host/demo_project.h"
#include "platform/app_profile.h"
#include "platform/db_operator.h"
#include "platform/portable/utf8_text.h"
#include "result_store/tally_data_mng.h"
#include "scaled_services.h"

namespace {

constexpr std::uint64_t kSeed = 20240601;

void OpenFromMemory(std::shared_ptr<CDbOperator> source, const std::string& name) {
  const std::wstring path = WideFromUtf8(name);
  if (CTallyDataMng::Instance()->GetDbPath() == path) {
    return;
  }
  CDbOperator::Install(std::move(source));
  InstallScaledServices();
  CTallyDataMng::Instance()->InitData(path, true);
}

}  // namespace

CBenchProject::CBenchProject()
    : folder_(std::filesystem::temp_directory_path() /
              ("tally_bench-" + std::to_string(std::random_device()()))) {
  std::filesystem::create_directory(folder_);
  IKorAppProfile::Install(IKorAppProfile::MakePortable(folder_.wstring()));
}

CBenchProject::~CBenchProject() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void CBenchProject::OpenScaled(std::int64_t rows, EProjectShape shape) {
  OpenFromMemory(std::make_shared<CScaledProject>(rows, kSeed, shape),
                 std::string("scaled ") + ShapeName(shape) + " " + std::to_string(rows));
}

void CBenchProject::OpenFormula(int circuits, int ofAttribute) {
  OpenFromMemory(std::make_shared<CFormulaProject>(circuits, ofAttribute),
                 "formula " + std::to_string(circuits) + " " + std::to_string(ofAttribute));
}

std::string CBenchProject::File(std::int64_t rows, EProjectShape shape) {
  if (!taken_.empty()) {
    return taken_;
  }
  const std::filesystem::path path =
      folder_ / (std::string(ShapeName(shape)) + "-" + std::to_string(rows) + ".db");
  if (!std::filesystem::exists(path)) {
    WriteFile(path.string(), rows, shape);
  }
  return path.string();
}

void CBenchProject::WriteFile(const std::string& file, std::int64_t rows, EProjectShape shape) {
  if (shape == EProjectShape::Example) {
    WriteDemoProject(file, rows);
    return;
  }
  std::filesystem::remove(file);
  CScaledProject source(rows, kSeed, shape);
  WriteConsumptionFile(file, source);
}

void CBenchProject::OpenFile(const std::string& file) {
  CTallyDataMng::Instance()->InitData(WideFromUtf8(file), true);
}

void CBenchProject::Close() {
  CDbOperator::Install(nullptr);
  InstallPortableServices();
  CTallyDataMng::Instance()->InitData(L"", true);
  // Nothing could be read from no file.
  CDbOperator::Instance()->ForgetFailure();
}

void CBenchProject::RequireNoFailure() {
  if (const std::optional<SDbFailure> failure = CDbOperator::Instance()->LastFailure()) {
    throw std::runtime_error("table " + failure->table + ": " + failure->message);
  }
}

std::int64_t CBenchProject::CountRows(const std::string& file, const std::string& table) {
  sqlite3* handle = nullptr;
  const int opened = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(handle, &sqlite3_close);
  sqlite3_stmt* counting = nullptr;
  if (opened != SQLITE_OK || sqlite3_prepare_v2(handle, ("SELECT count(*) FROM " + table).c_str(),
                                                -1, &counting, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot count the rows of " + table);
  }
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(counting,
                                                                        &sqlite3_finalize);
  return sqlite3_step(counting) == SQLITE_ROW ? sqlite3_column_int64(counting, 0) : -1;
}
