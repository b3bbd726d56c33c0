#include "host/workbook_text.h"

#include <cstddef>

#include "platform/portable/utf8_text.h"

namespace {

constexpr std::size_t kLongestText = 32767;
constexpr std::size_t kEscapeLength = 7;  // of "_x0041_"

bool IsHexDigit(wchar_t c) {
  return (c >= L'0' && c <= L'9') || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F');
}

bool ReadsLikeEscape(std::wstring_view text) {
  if (text.size() < kEscapeLength || text[0] != L'_' || text[1] != L'x' || text[6] != L'_') {
    return false;
  }
  return IsHexDigit(text[2]) && IsHexDigit(text[3]) && IsHexDigit(text[4]) && IsHexDigit(text[5]);
}

void AppendEscape(std::string& bytes, unsigned int c) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  bytes += "_x00";
  bytes += kDigits[c >> 4];
  bytes += kDigits[c & 0xF];
  bytes += '_';
}

// Appends one character of `text`, which must not be empty, and cuts it off. Answers how many of a
// cell's characters it takes, which are UTF-16 units; an escape is counted as it is written.
std::size_t AppendCharacter(std::string& bytes, std::wstring_view& text) {
  if (text.front() >= L' ' && text.front() < L'_') {
    bytes.push_back(static_cast<char>(text.front()));
    text.remove_prefix(1);
    return 1;
  }
  const bool isEscape = text.front() == L'_' && ReadsLikeEscape(text);
  const char32_t c = TakeCodePoint(text);
  const bool isControl = c < 0x20 && c != U'\t' && c != U'\n';
  if (isEscape || isControl) {
    AppendEscape(bytes, static_cast<unsigned int>(c));
    return kEscapeLength;
  }
  AppendUtf8(bytes, c == 0xFFFE || c == 0xFFFF ? char32_t{0xFFFD} : c);
  return c > 0xFFFF ? 2 : 1;
}

}  // namespace

bool SetWorkbookText(std::string& bytes, std::wstring_view text) {
  bytes.clear();
  std::size_t length = 0;
  std::size_t cut = 0;  // where the mark of a cut would stand
  while (!text.empty()) {
    if (length < kLongestText) {
      cut = bytes.size();
    }
    length += AppendCharacter(bytes, text);
    if (length > kLongestText) {
      bytes.resize(cut);
      AppendUtf8(bytes, U'…');
      return true;
    }
  }
  return false;
}
