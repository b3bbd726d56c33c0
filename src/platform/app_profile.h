// The application's folder and version, and the comparison of versions.
#ifndef TALLY_PLATFORM_APP_PROFILE_H_
#define TALLY_PLATFORM_APP_PROFILE_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "platform/replaceable.h"

/// A version of dot-separated numbers.
class TALLY_API CKorVersion {
 public:
  /// Takes the leading integer of each part between dots (as ReadLeadingInt, text_numbers.h). The
  /// empty text and a text without numbers count as 0.0.0.
  explicit CKorVersion(std::wstring_view text);

  /// The text that the version was made from.
  const std::wstring& ToString() const { return text_; }

  /// By number, part by part; a missing part is 0.
  TALLY_API friend bool operator<(const CKorVersion& a, const CKorVersion& b);

 private:
  std::wstring text_;
  std::vector<int> parts_;
};

namespace KorProfile {
/// From this version on the status file has its new layout.
TALLY_API extern const CKorVersion g_Version_16_2_0;
}  // namespace KorProfile

class TALLY_API IKorAppProfile : public CReplaceable<IKorAppProfile> {
 public:
  /// Version 16.2.0 and the folder "tally" in the user's configuration folder.
  static std::shared_ptr<IKorAppProfile> MakePortable();
  /// Version 16.2.0 and a folder of the host's.
  static std::shared_ptr<IKorAppProfile> MakePortable(std::wstring folder);

  virtual ~IKorAppProfile() = default;
  /// The folder of the configuration file, without a separator at its end.
  virtual std::wstring GetConfigFolder() = 0;
  /// The running application's version, at least 16.2.0: it is stamped on saved files.
  virtual CKorVersion GetVersion() = 0;
};

/// The profile in force.
inline IKorAppProfile* GetAppProfile() {
  return IKorAppProfile::Instance();
}

#endif  // TALLY_PLATFORM_APP_PROFILE_H_
