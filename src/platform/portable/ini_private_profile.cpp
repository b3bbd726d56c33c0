#include "platform/portable/ini_private_profile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <optional>
#include <system_error>

#include "platform/portable/file_replacement.h"
#include "platform/portable/ini_text.h"
#include "platform/portable/utf8_text.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMostBytes = std::uintmax_t{16} << 20;

// None for a name that no file can have.
std::optional<fs::path> FileName(const std::wstring& path) {
  if (path.empty() || path.find(L'\0') != std::wstring::npos) {
    return std::nullopt;
  }
  std::string name = Utf8FromWide(path);
  std::replace(name.begin(), name.end(), '\\', '/');
  return fs::path(std::u8string(name.begin(), name.end()));
}

// The file's bytes; none where they cannot be had. A missing file is an empty one.
std::optional<std::string> ReadFile(const fs::path& file) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::not_found) {
    return std::string();
  }
  const std::uintmax_t size = fs::is_regular_file(status) ? fs::file_size(file, error) : 0;
  if (error || !fs::is_regular_file(status) || size > kMostBytes) {
    return std::nullopt;
  }
  std::ifstream stream(file, std::ios::binary);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(size));
  if (!stream) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace

std::shared_ptr<IPrivateProfile> IPrivateProfile::MakePortable() {
  return std::make_shared<CIniPrivateProfile>();
}

std::wstring CIniPrivateProfile::GetString(const std::wstring& section, const std::wstring& key,
                                           const std::wstring& fallback, const std::wstring& path) {
  const std::optional<fs::path> file = FileName(path);
  const std::optional<std::string> bytes = file ? ReadFile(*file) : std::nullopt;
  return bytes ? CIniText(*bytes).Get(section, key).value_or(fallback) : fallback;
}

bool CIniPrivateProfile::WriteString(const std::wstring& section, const std::wstring& key,
                                     const std::wstring& value, const std::wstring& path) {
  const std::optional<fs::path> file = FileName(path);
  const std::optional<std::string> bytes = file ? ReadFile(*file) : std::nullopt;
  if (!bytes) {
    return false;
  }
  CIniText text(*bytes);
  return text.Set(section, key, value) && ReplaceFile(*file, text.Bytes());
}
