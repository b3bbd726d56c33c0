#include "platform/text_numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {

// Long enough for every "%g" and every int.
constexpr std::size_t kNumberBuffer = 32;

template <class TChar>
bool IsBlank(TChar c) {
  return c == TChar(' ') || (c >= TChar('\t') && c <= TChar('\r'));
}

template <class TChar>
bool IsDigit(TChar c) {
  return c >= TChar('0') && c <= TChar('9');
}

template <class TChar>
std::size_t SkipBlanks(std::basic_string_view<TChar> text) {
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) {
    ++at;
  }
  return at;
}

template <class TChar>
std::size_t SkipDigits(std::basic_string_view<TChar> text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) {
    ++at;
  }
  return at;
}

// The decimal place of the first digit that is not 0: 1 for "1", 3 for "120", -1 for "0.01".
template <class TChar>
std::int64_t LeadingPlace(std::basic_string_view<TChar> mantissa) {
  std::size_t point = mantissa.find(TChar('.'));
  if (point == mantissa.npos) {
    point = mantissa.size();
  }
  std::size_t first = 0;
  while (first < mantissa.size() && (mantissa[first] == TChar('0') || first == point)) {
    ++first;
  }
  const auto distance = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  return first < point ? distance : distance + 1;
}

// The value of an exponent's digits, held at a size that no text's length can outweigh.
template <class TChar>
std::int64_t ReadExponent(std::basic_string_view<TChar> text) {
  constexpr std::int64_t kHuge = std::int64_t{1} << 60;
  const bool negative = !text.empty() && text[0] == TChar('-');
  std::int64_t value = 0;
  for (const TChar c : text) {
    if (IsDigit(c) && value < kHuge / 16) {
      value = value * 10 + static_cast<std::int64_t>(c - TChar('0'));
    }
  }
  return negative ? -value : value;
}

// The number's own characters, found by its grammar; only they reach the conversion, which would
// also take "inf", "nan" and the like.
template <class TChar>
double ReadNumber(std::basic_string_view<TChar> text) {
  std::size_t at = SkipBlanks(text);
  bool negative = false;
  if (at < text.size() && (text[at] == TChar('+') || text[at] == TChar('-'))) {
    negative = text[at] == TChar('-');
    ++at;
  }
  const std::size_t begin = at;
  at = SkipDigits(text, at);
  std::size_t digits = at - begin;
  if (at < text.size() && text[at] == TChar('.')) {
    const std::size_t fraction = SkipDigits(text, at + 1);
    digits += fraction - at - 1;
    at = fraction;
  }
  if (digits == 0) {
    return 0;
  }
  std::basic_string_view<TChar> mantissa = text.substr(begin, at - begin);
  std::basic_string_view<TChar> exponentText;
  if (at < text.size() && (text[at] == TChar('e') || text[at] == TChar('E'))) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == TChar('+') || text[exponent] == TChar('-'))) {
      ++exponent;
    }
    const std::size_t end = SkipDigits(text, exponent);
    if (end > exponent) {
      exponentText = text.substr(at + 1, end - at - 1);
      at = end;
    }
  }
  std::string ascii;
  ascii.reserve(at - begin);
  for (std::size_t i = begin; i < at; ++i) {
    ascii.push_back(static_cast<char>(text[i]));
  }
  double value = 0;
  const auto [end, fault] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  static_cast<void>(end);
  if (fault == std::errc::result_out_of_range) {
    value = LeadingPlace(mantissa) + ReadExponent(exponentText) > 0
                ? std::numeric_limits<double>::infinity()
                : 0;
  }
  return negative ? -value : value;
}

// Widens what std::to_chars prints.
template <class TNumber, class... TFormat>
void AppendConverted(std::wstring& text, TNumber value, TFormat... format) {
  char buffer[kNumberBuffer];
  const auto [end, fault] = std::to_chars(buffer, buffer + kNumberBuffer, value, format...);
  static_cast<void>(fault);
  wchar_t wide[kNumberBuffer];
  text.append(wide, std::copy(buffer, end, wide));
}

// Appends the six digits of most quantities, which one multiplication brings before the point.
// False where that does not settle how the sixth is rounded, or the number is of another size.
bool AppendSixDigits(std::wstring& text, double value) {
  constexpr std::array kScales{1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  constexpr std::array kLowest{1e5, 1e4, 1e3, 1e2, 1e1, 1.0, 1e-1, 1e-2, 1e-3, 1e-4};
  constexpr double kHighest = 999999;
  const double size = std::abs(value);
  if (!(size >= kLowest.back() && size < kHighest)) {
    return false;
  }
  std::size_t places = 0;
  while (size < kLowest[places]) {
    ++places;
  }
  const double scaled = size * kScales[places];
  auto number = static_cast<std::uint32_t>(scaled);
  const double rest = scaled - static_cast<double>(number);
  // The product is within 1e-9 of the exact one.
  constexpr double kUnsure = 1e-6;
  if (std::abs(rest - 0.5) < kUnsure) {
    return false;
  }
  number += rest > 0.5 ? 1 : 0;
  for (; places > 0 && number % 10 == 0; --places) {
    number /= 10;
  }
  wchar_t buffer[kNumberBuffer];
  wchar_t* const end = buffer + kNumberBuffer;
  wchar_t* at = end;
  const auto putDigit = [&at, &number] {
    *--at = static_cast<wchar_t>(L'0' + number % 10);
    number /= 10;
  };
  if (places > 0) {
    for (; places > 0; --places) {
      putDigit();
    }
    *--at = L'.';
  }
  do {
    putDigit();
  } while (number > 0);
  if (value < 0) {
    *--at = L'-';
  }
  text.append(at, end);
  return true;
}

}  // namespace

int ReadLeadingInt(std::wstring_view text) {
  std::size_t at = SkipBlanks(text);
  bool negative = false;
  if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) {
    negative = text[at] == L'-';
    ++at;
  }
  // Negative numbers reach one further, so the value is gathered below zero.
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  int value = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    const int digit = static_cast<int>(text[at] - L'0');
    if (value < (kLowest + digit) / 10) {
      return negative ? kLowest : kHighest;
    }
    value = value * 10 - digit;
  }
  if (negative) {
    return value;
  }
  return value == kLowest ? kHighest : -value;
}

double ReadLeadingNumber(std::wstring_view text) {
  return ReadNumber(text);
}
double ReadLeadingNumber(std::string_view text) {
  return ReadNumber(text);
}

void AppendNumber(std::wstring& text, double value) {
  if (std::isnan(value)) {
    text += L"nan";
    return;
  }
  if (value == 0) {
    text += std::signbit(value) ? L"-0" : L"0";
  } else if (!AppendSixDigits(text, value)) {
    AppendConverted(text, value, std::chars_format::general, 6);
  }
}

void AppendInt(std::wstring& text, int value) {
  AppendConverted(text, value);
}

std::wstring NumberText(double value) {
  std::wstring text;
  AppendNumber(text, value);
  return text;
}

std::wstring IntText(int value) {
  std::wstring text;
  AppendInt(text, value);
  return text;
}
