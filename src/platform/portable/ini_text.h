// The content of one ini file, changed in place.
#ifndef TALLY_PLATFORM_PORTABLE_INI_TEXT_H_
#define TALLY_PLATFORM_PORTABLE_INI_TEXT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Keeps every byte that a change does not mean: the text is held in the units of its encoding
/// (bytes of UTF-8, or the 16-bit units of UTF-16 with a byte order mark), and only names and
/// values are decoded. Of several sections or keys with one name the first counts. ";" begins a
/// comment line.
class CIniText {
 public:
  explicit CIniText(std::string_view bytes);

  /// The value without blanks around it and without one pair of quotes; none where the section or
  /// the key is missing.
  std::optional<std::wstring> Get(std::wstring_view section, std::wstring_view key) const;
  /// Sets or adds the key; false, with nothing changed, for texts that no line of the file can
  /// hold, such as line ends and half surrogate pairs.
  bool Set(std::wstring_view section, std::wstring_view key, std::wstring_view value);
  /// The whole file.
  std::string Bytes() const;

 private:
  enum class EEncoding { kUtf8, kUtf16Little, kUtf16Big };

  /// A run of units: [begin, end).
  struct SRange {
    std::size_t begin = 0;
    std::size_t end = 0;
  };
  /// Where a section and a key in it were found.
  struct SPlace {
    bool hasSection = false;
    std::size_t sectionEnd = 0;  ///< behind the section's last line that is not blank
    bool hasKey = false;
    SRange value;  ///< all that stands behind the equals sign
  };

  SPlace Find(std::wstring_view section, std::wstring_view key) const;
  SRange NextLine(std::size_t& at) const;
  SRange Trim(SRange range) const;
  bool IsName(SRange range, std::wstring_view name) const;
  std::wstring Decode(SRange range) const;
  std::u16string Encode(std::wstring_view text) const;
  std::wstring LineEnd() const;

  EEncoding encoding_ = EEncoding::kUtf8;
  std::string mark_;      // the byte order mark
  std::u16string units_;  // a byte each in UTF-8
  std::string odd_;       // half a unit at the end of a damaged UTF-16 file
};

#endif  // TALLY_PLATFORM_PORTABLE_INI_TEXT_H_
