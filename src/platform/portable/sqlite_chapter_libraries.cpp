#include "platform/portable/sqlite_chapter_libraries.h"

#include <utility>

#include "platform/portable/sqlite_project.h"
#include "platform/portable/sqlite_table_reader.h"

namespace {

// The libraries are compared as the texts that they read as, so the choice is not SQLite's.
CChapterPrefixTable ReadChapters(CProjectSource& source, const char* table, const char* sql,
                                 const std::wstring& library) {
  std::vector<SPrefixChapter> chapters;
  if (source.Generation() == 0) {
    return {};
  }
  try {
    CSqliteProject project(source.Path());
    project.RequirePlainTable(table);
    CSqliteTableReader reader(project, table, sql);
    while (reader.Step()) {
      if (reader.Text(0) == library) {
        SPrefixChapter& chapter = chapters.emplace_back();
        chapter.prefix = reader.Text(1);
        chapter.number = reader.Int(2);
        chapter.name = reader.Text(3);
      }
    }
  } catch (const CSqliteFault& fault) {
    source.RecordFailure(fault.Failure());
    chapters.clear();
  }
  return CChapterPrefixTable(std::move(chapters));
}

}  // namespace

std::shared_ptr<IQuotaLibrary> IQuotaLibrary::MakePortable() {
  return std::make_shared<CSqliteQuotaLibrary>(CProjectSource::OfProcess());
}

std::shared_ptr<IBillLibrary> IBillLibrary::MakePortable() {
  return std::make_shared<CSqliteBillLibrary>(CProjectSource::OfProcess());
}

CSqliteQuotaLibrary::CSqliteQuotaLibrary(std::shared_ptr<CProjectSource> source)
    : source_(std::move(source)) {}

void CSqliteQuotaLibrary::Open(const std::wstring& code, const std::wstring& /*local*/,
                               const std::wstring& /*year*/) {
  Close();
  chapters_ = ReadChapters(*source_, "de_chapter",
                           "SELECT library, code_prefix, number, path FROM de_chapter", code);
}

void CSqliteQuotaLibrary::GetZhangJ(const std::wstring& code, std::vector<std::wstring>& cells,
                                    int& number) {
  if (const SPrefixChapter* chapter = chapters_.Find(code)) {
    cells.push_back(chapter->name);
    number = chapter->number;
  }
}

CSqliteBillLibrary::CSqliteBillLibrary(std::shared_ptr<CProjectSource> source)
    : source_(std::move(source)) {}

void CSqliteBillLibrary::Open(const std::wstring& code, const std::wstring& /*local*/) {
  Close();
  chapters_ = ReadChapters(*source_, "qd_chapter",
                           "SELECT library, code_prefix, number, name FROM qd_chapter", code);
}

std::wstring CSqliteBillLibrary::GetZhangName(const std::wstring& code, int& number) {
  const SPrefixChapter* chapter = chapters_.Find(code);
  if (chapter == nullptr) {
    return {};
  }
  number = chapter->number;
  return chapter->name;
}
