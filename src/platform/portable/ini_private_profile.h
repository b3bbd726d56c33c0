// Private profiles in files of this system.
#ifndef TALLY_PLATFORM_PORTABLE_INI_PRIVATE_PROFILE_H_
#define TALLY_PLATFORM_PORTABLE_INI_PRIVATE_PROFILE_H_

#include <string>

#include "platform/private_profile.h"

/// Takes "\" in the path for "/". A file beyond 16 MiB, or one that is no regular file, counts as
/// unreadable and is not written.
class CIniPrivateProfile : public IPrivateProfile {
 public:
  std::wstring GetString(const std::wstring& section, const std::wstring& key,
                         const std::wstring& fallback, const std::wstring& path) override;
  bool WriteString(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                   const std::wstring& path) override;
};

#endif  // TALLY_PLATFORM_PORTABLE_INI_PRIVATE_PROFILE_H_
