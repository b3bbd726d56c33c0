// Ini files of any content: what is set can be read, and nothing else changes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz_check.h"
#include "fuzz_input.h"
#include "platform/app_profile.h"
#include "platform/portable/ini_text.h"
#include "platform/portable/utf8_text.h"
#include "platform/private_profile.h"
#include "report_mng/result_config.h"
#include "support/temp_folder.h"

namespace {

struct SKey {
  std::wstring section;
  std::wstring name;
};

std::wstring_view Trimmed(std::wstring_view text) {
  constexpr std::wstring_view kBlanks = L" \t\v\f";
  const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
  text.remove_prefix(begin);
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::wstring LowerAscii(std::wstring_view text) {
  std::wstring lower(Trimmed(text));
  for (wchar_t& c : lower) {
    if (c >= L'A' && c <= L'Z') {
      c = static_cast<wchar_t>(c + (L'a' - L'A'));
    }
  }
  return lower;
}

bool IsSame(const SKey& a, const SKey& b) {
  return LowerAscii(a.section) == LowerAscii(b.section) && LowerAscii(a.name) == LowerAscii(b.name);
}

/// How a value reads that was written as `text`.
std::wstring ReadBack(const std::wstring& text) {
  std::wstring_view value = Trimmed(text);
  if (value.size() >= 2 && value.front() == value.back() &&
      (value.front() == L'"' || value.front() == L'\'')) {
    value = value.substr(1, value.size() - 2);
  }
  return WideFromUtf8(Utf8FromWide(value));
}

/// The text with the value set; as it was where that is refused.
std::string CheckText(std::string_view bytes, const SKey& key, const SKey& other,
                      const std::wstring& value) {
  CIniText text(bytes);
  Require(text.Bytes() == bytes, "an unchanged file keeps every byte");
  const std::optional<std::wstring> otherBefore = text.Get(other.section, other.name);
  if (!text.Set(key.section, key.name, value)) {
    Require(text.Bytes() == bytes, "what is refused changes nothing");
    return text.Bytes();
  }
  const std::string once = text.Bytes();
  Require(text.Get(key.section, key.name) == ReadBack(value), "a value that was set can be read");
  if (!IsSame(key, other)) {
    Require(text.Get(other.section, other.name) == otherBefore, "other values stay");
  }
  const CIniText again(once);
  Require(again.Get(key.section, key.name) == ReadBack(value), "so it is from the file");
  Require(text.Set(key.section, key.name, value) && text.Bytes() == once, "twice is as once");
  return once;
}

/// The same through a file.
void CheckFile(std::string_view bytes, const std::string& changed, const SKey& key,
               const std::wstring& value) {
  static const tally_test::CTempFolder folder;
  const auto file = folder / "ReportConfig.ini";
  const std::wstring path = WideFromUtf8((folder.Path() / "ReportConfig.ini").string());
  tally_test::WriteBytes(file, std::string(bytes));
  const std::shared_ptr<IPrivateProfile> profile = IPrivateProfile::MakePortable();
  const std::wstring before = profile->GetString(key.section, key.name, L"none", path);
  Require(before == CIniText(bytes).Get(key.section, key.name).value_or(L"none"), "read as it is");
  profile->WriteString(key.section, key.name, value, path);
  Require(tally_test::ReadBytes(file) == changed, "the file holds what the text holds");

  IKorAppProfile::Install(IKorAppProfile::MakePortable(WideFromUtf8(folder.Path().string())));
  CResultConfig* config = CResultConfig::Instance();
  config->LoadConfig();
  const bool isDown = config->GetLineSortDowm();
  config->SaveConfig();
  config->LoadConfig();
  Require(config->GetLineSortDowm() == isDown, "a setting that was saved is loaded");
  IKorAppProfile::Install(nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CFuzzInput input(data, size);
  SKey key;
  key.section = input.Text();
  key.name = input.Text();
  const std::wstring value = input.Text();
  SKey other;
  other.section = input.Text();
  other.name = input.Text();
  const std::string changed = CheckText(input.Rest(), key, other, value);
  CheckFile(input.Rest(), changed, key, value);
  return 0;
}
