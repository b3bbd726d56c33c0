#include "platform/portable/utf8_text.h"

#include <cstddef>

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

constexpr bool IsHighSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

// What a lead byte asks for: how many bytes follow, and the range of the first of them, which is
// where overlong forms, surrogates and values beyond U+10FFFF show.
struct SLead {
  std::size_t following;
  unsigned char lowest;
  unsigned char highest;
  char32_t bits;
};

constexpr SLead ReadLead(unsigned char byte) {
  if (byte >= 0xC2 && byte <= 0xDF) {
    return {1, 0x80, 0xBF, byte & 0x1Fu};
  }
  if (byte >= 0xE0 && byte <= 0xEF) {
    const unsigned char lowest = byte == 0xE0 ? 0xA0 : 0x80;
    const unsigned char highest = byte == 0xED ? 0x9F : 0xBF;
    return {2, lowest, highest, byte & 0x0Fu};
  }
  if (byte >= 0xF0 && byte <= 0xF4) {
    const unsigned char lowest = byte == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = byte == 0xF4 ? 0x8F : 0xBF;
    return {3, lowest, highest, byte & 0x07u};
  }
  return {0, 0, 0, kReplacement};
}

// The character at `at`, which is moved behind it or behind the maximal ill-formed part.
char32_t DecodeOne(std::string_view bytes, std::size_t& at) {
  const SLead lead = ReadLead(static_cast<unsigned char>(bytes[at]));
  ++at;
  char32_t codePoint = lead.bits;
  for (std::size_t i = 0; i < lead.following; ++i) {
    const unsigned char lowest = i == 0 ? lead.lowest : 0x80;
    const unsigned char highest = i == 0 ? lead.highest : 0xBF;
    if (at >= bytes.size()) {
      return kReplacement;
    }
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (byte < lowest || byte > highest) {
      return kReplacement;
    }
    codePoint = codePoint << 6 | (byte & 0x3Fu);
    ++at;
  }
  return codePoint;
}

}  // namespace

void AppendCodePoint(std::wstring& text, char32_t codePoint) {
  if constexpr (kWideIsUtf16) {
    if (codePoint >= 0x10000) {
      text.push_back(static_cast<wchar_t>(0xD7C0 + (codePoint >> 10)));
      text.push_back(static_cast<wchar_t>(0xDC00 + (codePoint & 0x3FF)));
      return;
    }
  }
  text.push_back(static_cast<wchar_t>(codePoint));
}

void AppendWide(std::wstring& text, std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size()) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (byte < 0x80) {
      text.push_back(static_cast<wchar_t>(byte));
      ++at;
    } else {
      AppendCodePoint(text, DecodeOne(bytes, at));
    }
  }
}

std::wstring WideFromUtf8(std::string_view bytes) {
  std::wstring text;
  AppendWide(text, bytes);
  return text;
}

char32_t TakeCodePoint(std::wstring_view& text) {
  auto c = static_cast<char32_t>(text.front());
  if constexpr (kWideIsUtf16) {
    c &= 0xFFFF;
  }
  text.remove_prefix(1);
  if constexpr (kWideIsUtf16) {
    if (IsHighSurrogate(c) && !text.empty()) {
      const char32_t low = static_cast<char32_t>(text.front()) & 0xFFFF;
      if (IsLowSurrogate(low)) {
        text.remove_prefix(1);
        return 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
      }
    }
  }
  return IsHighSurrogate(c) || IsLowSurrogate(c) || c > 0x10FFFF ? kReplacement : c;
}

void AppendUtf8(std::string& bytes, char32_t codePoint) {
  if (codePoint < 0x80) {
    bytes.push_back(static_cast<char>(codePoint));
    return;
  }
  if (codePoint < 0x800) {
    bytes.push_back(static_cast<char>(0xC0 | codePoint >> 6));
  } else {
    if (codePoint < 0x10000) {
      bytes.push_back(static_cast<char>(0xE0 | codePoint >> 12));
    } else {
      bytes.push_back(static_cast<char>(0xF0 | codePoint >> 18));
      bytes.push_back(static_cast<char>(0x80 | (codePoint >> 12 & 0x3F)));
    }
    bytes.push_back(static_cast<char>(0x80 | (codePoint >> 6 & 0x3F)));
  }
  bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
}

std::string Utf8FromWide(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    AppendUtf8(bytes, TakeCodePoint(text));
  }
  return bytes;
}
