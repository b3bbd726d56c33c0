// The application profile of a host that has none of its own.
#ifndef TALLY_PLATFORM_PORTABLE_PORTABLE_APP_PROFILE_H_
#define TALLY_PLATFORM_PORTABLE_PORTABLE_APP_PROFILE_H_

#include <string>

#include "platform/app_profile.h"

class CPortableAppProfile : public IKorAppProfile {
 public:
  /// Separators at the end of `folder` are cut.
  explicit CPortableAppProfile(std::wstring folder);

  /// The folder "tally" in $XDG_CONFIG_HOME (where that is absolute) or in $HOME/.config; "." where
  /// neither is set.
  static std::wstring DefaultFolder();

  std::wstring GetConfigFolder() override { return folder_; }
  CKorVersion GetVersion() override { return KorProfile::g_Version_16_2_0; }

 private:
  std::wstring folder_;
};

#endif  // TALLY_PLATFORM_PORTABLE_PORTABLE_APP_PROFILE_H_
