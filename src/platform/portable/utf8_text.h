// UTF-8 to wide text and back, without the locale.
#ifndef TALLY_PLATFORM_PORTABLE_UTF8_TEXT_H_
#define TALLY_PLATFORM_PORTABLE_UTF8_TEXT_H_

#include <string>
#include <string_view>

/// Appends `bytes` to `text`: one U+FFFD for each maximal ill-formed part; U+0000 is a character
/// like any other.
void AppendWide(std::wstring& text, std::string_view bytes);
/// `bytes` as AppendWide appends them.
std::wstring WideFromUtf8(std::string_view bytes);

/// One character from the front of `text`, which must not be empty and which is cut by what was
/// taken: a code point, or 0xFFFD where the front is no Unicode scalar value.
char32_t TakeCodePoint(std::wstring_view& text);

/// Appends a Unicode scalar value in UTF-8.
void AppendUtf8(std::string& bytes, char32_t codePoint);
/// `text` in UTF-8; U+FFFD for what is no Unicode scalar value.
std::string Utf8FromWide(std::wstring_view text);

/// Appends a Unicode scalar value to a wide text, as a surrogate pair where wchar_t has 16 bits.
void AppendCodePoint(std::wstring& text, char32_t codePoint);

#endif  // TALLY_PLATFORM_PORTABLE_UTF8_TEXT_H_
