#include "platform/portable/portable_app_profile.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/portable/utf8_text.h"

namespace {

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

std::wstring CutSeparators(std::wstring folder) {
  // A folder of separators alone is the root; the name that is put behind it brings the separator.
  while (!folder.empty() && (folder.back() == L'/' || folder.back() == L'\\')) {
    folder.pop_back();
  }
  return folder;
}

}  // namespace

std::shared_ptr<IKorAppProfile> IKorAppProfile::MakePortable() {
  return MakePortable(CPortableAppProfile::DefaultFolder());
}

std::shared_ptr<IKorAppProfile> IKorAppProfile::MakePortable(std::wstring folder) {
  return std::make_shared<CPortableAppProfile>(std::move(folder));
}

CPortableAppProfile::CPortableAppProfile(std::wstring folder)
    : folder_(CutSeparators(std::move(folder))) {}

std::wstring CPortableAppProfile::DefaultFolder() {
  const std::string_view configuration = Environment("XDG_CONFIG_HOME");
  if (configuration.starts_with('/')) {
    return CutSeparators(WideFromUtf8(configuration)) + L"/tally";
  }
  const std::string_view home = Environment("HOME");
  if (!home.empty()) {
    return CutSeparators(WideFromUtf8(home)) + L"/.config/tally";
  }
  return L".";
}
