// The text of an XML file, whatever its encoding.
#ifndef TALLY_PLATFORM_PORTABLE_XML_SOURCE_TEXT_H_
#define TALLY_PLATFORM_PORTABLE_XML_SOURCE_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

/// Whether XML can hold the character.
constexpr bool IsXmlCharacter(char32_t c) {
  return (c >= 0x20 && c <= 0xD7FF) || c == '\t' || c == '\n' || c == '\r' ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

/// `bytes`, in UTF-8 or in UTF-16 with a byte order mark, as UTF-8 without one. None where they are
/// ill-formed, hold a character that XML cannot hold, or declare another encoding.
std::optional<std::string> ReadXmlText(std::string_view bytes);

/// Whether a parser may see the text. It holds no document type declaration, so there are no
/// entities to grow and nothing to fetch; at most a thousand attributes of one element, as a parser
/// compares each with all others; and at most a hundred thousand different names, as it may look
/// each up in a table that does not grow with them. What passes is not yet well-formed.
bool IsHarmlessXml(std::string_view text);

#endif  // TALLY_PLATFORM_PORTABLE_XML_SOURCE_TEXT_H_
