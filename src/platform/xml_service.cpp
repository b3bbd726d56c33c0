#include "platform/xml_service.h"

#include <cstddef>
#include <optional>

namespace {

constexpr wchar_t ToLower(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool EqualsInAnyCase(std::wstring_view text, std::wstring_view lower) {
  if (text.size() != lower.size()) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (ToLower(text[i]) != lower[i]) {
      return false;
    }
  }
  return true;
}

constexpr bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

void SkipSign(std::wstring_view& text) {
  if (!text.empty() && (text.front() == L'+' || text.front() == L'-')) {
    text.remove_prefix(1);
  }
}

// The digits at the front of `text`, which loses them.
std::wstring_view TakeDigits(std::wstring_view& text) {
  std::size_t count = 0;
  while (count < text.size() && IsDigit(text[count])) {
    ++count;
  }
  const std::wstring_view digits = text.substr(0, count);
  text.remove_prefix(count);
  return digits;
}

// Whether a text that is wholly a decimal number is one other than zero. By its digits: a number
// too small for a double is not zero either.
std::optional<bool> IsNonZeroNumber(std::wstring_view text) {
  SkipSign(text);
  const std::wstring_view whole = TakeDigits(text);
  std::wstring_view fraction;
  if (!text.empty() && text.front() == L'.') {
    text.remove_prefix(1);
    fraction = TakeDigits(text);
  }
  if (whole.empty() && fraction.empty()) {
    return std::nullopt;
  }
  if (!text.empty() && ToLower(text.front()) == L'e') {
    text.remove_prefix(1);
    SkipSign(text);
    if (TakeDigits(text).empty()) {
      return std::nullopt;
    }
  }
  if (!text.empty()) {
    return std::nullopt;
  }
  constexpr auto kNone = std::wstring_view::npos;
  return whole.find_first_not_of(L'0') != kNone || fraction.find_first_not_of(L'0') != kNone;
}

}  // namespace

bool XmlBoolean(std::wstring_view text) {
  if (EqualsInAnyCase(text, L"true")) {
    return true;
  }
  if (EqualsInAnyCase(text, L"false")) {
    return false;
  }
  if (const std::optional<bool> isNonZero = IsNonZeroNumber(text)) {
    return *isNonZero;
  }
  throw CXmlError(CXmlError::kTypeMismatch, "an attribute's value is not a boolean");
}
