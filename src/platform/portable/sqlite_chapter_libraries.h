// The chapters of the bill and quota libraries of the project that was read last.
#ifndef TALLY_PLATFORM_PORTABLE_SQLITE_CHAPTER_LIBRARIES_H_
#define TALLY_PLATFORM_PORTABLE_SQLITE_CHAPTER_LIBRARIES_H_

#include <memory>
#include <string>
#include <vector>

#include "platform/chapter_libraries.h"
#include "platform/portable/chapter_prefix_table.h"
#include "platform/portable/project_source.h"

/// A library is told by its code alone: a project holds one region and year of it. Open reads the
/// library's chapters once; one that cannot be read has none, and the source learns why.
class CSqliteQuotaLibrary : public IQuotaLibrary {
 public:
  explicit CSqliteQuotaLibrary(std::shared_ptr<CProjectSource> source);
  void Open(const std::wstring& code, const std::wstring& local, const std::wstring& year) override;
  void Close() override { chapters_ = {}; }
  void GetZhangJ(const std::wstring& code, std::vector<std::wstring>& cells, int& number) override;

 private:
  std::shared_ptr<CProjectSource> source_;
  CChapterPrefixTable chapters_;  // empty while no library is open
};

/// As CSqliteQuotaLibrary.
class CSqliteBillLibrary : public IBillLibrary {
 public:
  explicit CSqliteBillLibrary(std::shared_ptr<CProjectSource> source);
  void Open(const std::wstring& code, const std::wstring& local) override;
  void Close() override { chapters_ = {}; }
  std::wstring GetZhangName(const std::wstring& code, int& number) override;

 private:
  std::shared_ptr<CProjectSource> source_;
  CChapterPrefixTable chapters_;
};

#endif  // TALLY_PLATFORM_PORTABLE_SQLITE_CHAPTER_LIBRARIES_H_
