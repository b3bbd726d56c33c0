#include "scaled_services.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/demo_building.h"
#include "platform/chapter_libraries.h"
#include "platform/portable/chapter_prefix_table.h"
#include "platform/portable/utf8_text.h"
#include "platform/project_settings.h"
#include "platform/text_numbers.h"

namespace {

class CScaledSettings final : public IProjectSettings {
 public:
  std::wstring GetDeCode() override { return Setting("de_code"); }
  std::wstring GetDeLocal() override { return Setting("de_local"); }
  std::wstring GetDeYear() override { return Setting("de_year"); }
  std::wstring GetQdCode() override { return Setting("qd_code"); }
  std::wstring GetQdLocal() override { return Setting("qd_local"); }
  std::wstring GetQdDeCode() override { return Setting("qd_de_code"); }
  std::wstring GetQdDeLocal() override { return Setting("qd_de_local"); }
  std::wstring GetQdDeYear() override { return Setting("qd_de_year"); }
  SQdDeInfo::EQdDeMode GetQdDeMode() override {
    return static_cast<SQdDeInfo::EQdDeMode>(ReadLeadingInt(Setting("qd_de_mode")));
  }
  bool GetQdMarkInfo(const std::wstring& code, std::vector<std::wstring>& cells) override {
    bool found = false;
    for (const demo::SMark& mark : demo::BillMarks()) {
      if (WideFromUtf8(mark.code) == code) {
        cells.insert(cells.end(), {WideFromUtf8(mark.name), WideFromUtf8(mark.value), L""});
        found = true;
      }
    }
    return found;
  }

 private:
  static std::wstring Setting(std::string_view name) {
    for (const demo::SSetting& setting : demo::Settings()) {
      if (setting.name == name) {
        return WideFromUtf8(setting.value);
      }
    }
    return {};
  }
};

// A library of another name has no chapters here.
CChapterPrefixTable Chapters(std::span<const demo::SChapter> chapters, bool isKnown) {
  std::vector<SPrefixChapter> entries;
  if (isKnown) {
    for (const demo::SChapter& chapter : chapters) {
      entries.push_back({WideFromUtf8(chapter.prefix), chapter.number, WideFromUtf8(chapter.name)});
    }
  }
  return CChapterPrefixTable(std::move(entries));
}

class CScaledQuotaLibrary final : public IQuotaLibrary {
 public:
  void Open(const std::wstring& code, const std::wstring& /*local*/,
            const std::wstring& /*year*/) override {
    chapters_ = Chapters(demo::QuotaChapters(), code == WideFromUtf8(demo::kQuotaLibrary));
  }
  void Close() override { chapters_ = {}; }
  void GetZhangJ(const std::wstring& code, std::vector<std::wstring>& cells, int& number) override {
    if (const SPrefixChapter* chapter = chapters_.Find(code)) {
      cells.push_back(chapter->name);
      number = chapter->number;
    }
  }

 private:
  CChapterPrefixTable chapters_;
};

class CScaledBillLibrary final : public IBillLibrary {
 public:
  void Open(const std::wstring& code, const std::wstring& /*local*/) override {
    chapters_ = Chapters(demo::BillChapters(), code == WideFromUtf8(demo::kBillLibrary));
  }
  void Close() override { chapters_ = {}; }
  std::wstring GetZhangName(const std::wstring& code, int& number) override {
    const SPrefixChapter* chapter = chapters_.Find(code);
    if (chapter == nullptr) {
      return {};
    }
    number = chapter->number;
    return chapter->name;
  }

 private:
  CChapterPrefixTable chapters_;
};

}  // namespace

void InstallScaledServices() {
  IProjectSettings::Install(std::make_shared<CScaledSettings>());
  IQuotaLibrary::Install(std::make_shared<CScaledQuotaLibrary>());
  IBillLibrary::Install(std::make_shared<CScaledBillLibrary>());
}

void InstallPortableServices() {
  IProjectSettings::Install(nullptr);
  IQuotaLibrary::Install(nullptr);
  IBillLibrary::Install(nullptr);
}
