// Ini files with the rules of Windows private profiles.
#ifndef TALLY_PLATFORM_PRIVATE_PROFILE_H_
#define TALLY_PLATFORM_PRIVATE_PROFILE_H_

#include <memory>
#include <string>

#include "platform/export.h"
#include "platform/replaceable.h"

/// Section and key names are told apart without regard to case; blanks around names and values and
/// one pair of quotes around a value are cut. The path is the engine's text, with "\" before the
/// file's name; an implementation turns it into what its file system wants.
class TALLY_API IPrivateProfile : public CReplaceable<IPrivateProfile> {
 public:
  static std::shared_ptr<IPrivateProfile> MakePortable();
  virtual ~IPrivateProfile() = default;
  /// The value, or `fallback` where the file, the section or the key is missing or unreadable.
  virtual std::wstring GetString(const std::wstring& section, const std::wstring& key,
                                 const std::wstring& fallback, const std::wstring& path) = 0;
  /// Writes the value; everything else in the file stays, in its encoding (UTF-8 in a new file).
  /// False where the file could not be written; it is then as it was.
  virtual bool WriteString(const std::wstring& section, const std::wstring& key,
                           const std::wstring& value, const std::wstring& path) = 0;
};

#endif  // TALLY_PLATFORM_PRIVATE_PROFILE_H_
