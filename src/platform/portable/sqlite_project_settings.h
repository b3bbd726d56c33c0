// The settings and bill marks of the project that was read last.
#ifndef TALLY_PLATFORM_PORTABLE_SQLITE_PROJECT_SETTINGS_H_
#define TALLY_PLATFORM_PORTABLE_SQLITE_PROJECT_SETTINGS_H_

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/portable/project_source.h"
#include "platform/project_settings.h"

class CSqliteProject;

/// Reads each of the two tables once for each read of the operator; a table that cannot be read is
/// an empty one, and the source learns why.
class CSqliteProjectSettings : public IProjectSettings {
 public:
  explicit CSqliteProjectSettings(std::shared_ptr<CProjectSource> source);

  std::wstring GetDeCode() override { return Setting(L"de_code"); }
  std::wstring GetDeLocal() override { return Setting(L"de_local"); }
  std::wstring GetDeYear() override { return Setting(L"de_year"); }
  std::wstring GetQdCode() override { return Setting(L"qd_code"); }
  std::wstring GetQdLocal() override { return Setting(L"qd_local"); }
  std::wstring GetQdDeCode() override { return Setting(L"qd_de_code"); }
  std::wstring GetQdDeLocal() override { return Setting(L"qd_de_local"); }
  std::wstring GetQdDeYear() override { return Setting(L"qd_de_year"); }
  SQdDeInfo::EQdDeMode GetQdDeMode() override;
  bool GetQdMarkInfo(const std::wstring& code, std::vector<std::wstring>& cells) override;

  /// The value of any setting; empty where the project lacks it.
  std::wstring Setting(std::wstring_view name);

 private:
  template <class TValue>
  using Table = std::map<std::wstring, TValue, std::less<>>;
  using Marks = std::vector<std::wstring>;

  /// A table as it was at one read of the operator.
  template <class TValue>
  struct SCache {
    std::uint64_t generation = 0;  // 0 is before the first read
    Table<TValue> values;
  };

  static void Load(CSqliteProject& project, Table<std::wstring>& settings);
  static void Load(CSqliteProject& project, Table<Marks>& marks);
  template <class TValue>
  const Table<TValue>& Refresh(SCache<TValue>& cache);

  std::shared_ptr<CProjectSource> source_;
  SCache<std::wstring> settings_;
  SCache<Marks> marks_;
};

#endif  // TALLY_PLATFORM_PORTABLE_SQLITE_PROJECT_SETTINGS_H_
