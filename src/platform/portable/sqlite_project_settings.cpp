#include "platform/portable/sqlite_project_settings.h"

#include <utility>

#include "platform/portable/sqlite_project.h"
#include "platform/portable/sqlite_table_reader.h"
#include "platform/text_numbers.h"

std::shared_ptr<IProjectSettings> IProjectSettings::MakePortable() {
  return std::make_shared<CSqliteProjectSettings>(CProjectSource::OfProcess());
}

CSqliteProjectSettings::CSqliteProjectSettings(std::shared_ptr<CProjectSource> source)
    : source_(std::move(source)) {}

void CSqliteProjectSettings::Load(CSqliteProject& project, Table<std::wstring>& settings) {
  constexpr const char* kTable = "setting";
  project.RequirePlainTable(kTable);
  CSqliteTableReader reader(project, kTable, "SELECT name, value FROM setting");
  while (reader.Step()) {
    std::wstring name = reader.Text(0);
    settings.emplace(std::move(name), reader.Text(1));
  }
}

void CSqliteProjectSettings::Load(CSqliteProject& project, Table<Marks>& marks) {
  constexpr const char* kTable = "qd_mark";
  project.RequirePlainTable(kTable);
  CSqliteTableReader reader(project, kTable,
                            "SELECT code, name, value, extra FROM qd_mark ORDER BY code, seq");
  while (reader.Step()) {
    Marks& cells = marks[reader.Text(0)];
    for (const int column : {1, 2, 3}) {
      cells.push_back(reader.Text(column));
    }
  }
}

template <class TValue>
const CSqliteProjectSettings::Table<TValue>& CSqliteProjectSettings::Refresh(
    SCache<TValue>& cache) {
  if (cache.generation == source_->Generation()) {
    return cache.values;
  }
  cache.values.clear();
  Table<TValue> values;
  try {
    CSqliteProject project(source_->Path());
    Load(project, values);
    cache.values = std::move(values);
  } catch (const CSqliteFault& fault) {
    source_->RecordFailure(fault.Failure());
  }
  cache.generation = source_->Generation();
  return cache.values;
}

std::wstring CSqliteProjectSettings::Setting(std::wstring_view name) {
  const Table<std::wstring>& settings = Refresh(settings_);
  const auto found = settings.find(name);
  return found == settings.end() ? std::wstring() : found->second;
}

SQdDeInfo::EQdDeMode CSqliteProjectSettings::GetQdDeMode() {
  return static_cast<SQdDeInfo::EQdDeMode>(ReadLeadingInt(Setting(L"qd_de_mode")));
}

bool CSqliteProjectSettings::GetQdMarkInfo(const std::wstring& code,
                                           std::vector<std::wstring>& cells) {
  const Table<Marks>& marks = Refresh(marks_);
  const auto found = marks.find(code);
  if (found == marks.end()) {
    return false;
  }
  cells.insert(cells.end(), found->second.begin(), found->second.end());
  return true;
}
