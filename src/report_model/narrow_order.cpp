#include "report_model/narrow_order.h"

#include <algorithm>
#include <cstddef>

#include "platform/code_page.h"
#include "platform/text_numbers.h"

namespace {

bool IsNumberByte(char c) {
  return (c >= '0' && c <= '9') || c == '.';
}

std::string_view NumberRun(std::string_view text, std::size_t start) {
  std::size_t end = start;
  while (end < text.size() && IsNumberByte(text[end])) {
    ++end;
  }
  return text.substr(start, end - start);
}

std::string WithoutBlanks(std::string text) {
  std::erase(text, ' ');
  return text;
}

}  // namespace

int CompareNatural(std::string_view a, std::string_view b, bool ascending) {
  const std::size_t shorter = std::min(a.size(), b.size());
  std::size_t i = 0;
  while (i < shorter) {
    if (IsNumberByte(a[i]) && IsNumberByte(b[i])) {
      const std::string_view runA = NumberRun(a, i);
      const std::string_view runB = NumberRun(b, i);
      if (runA != runB) {
        const int smaller = ReadLeadingNumber(runA) > ReadLeadingNumber(runB) ? -1 : 1;
        return ascending ? -smaller : smaller;
      }
      // Within equal runs every later position would find equal runs again.
      i += runA.size();
      continue;
    }
    const auto byteA = static_cast<signed char>(a[i]);
    const auto byteB = static_cast<signed char>(b[i]);
    if (byteA != byteB) {
      return byteA < byteB ? -1 : 1;
    }
    ++i;
  }
  if (a.size() == b.size()) {
    return 0;
  }
  return a.size() < b.size() ? -1 : 1;
}

std::string NarrowWithoutBlanks(std::wstring_view text) {
  return WithoutBlanks(ToNarrowText(text));
}

int CompareAsNarrow(std::wstring_view a, std::wstring_view b) {
  return a == b ? 0 : ToNarrowText(a).compare(ToNarrowText(b));
}

SAttSortKey::SAttSortKey(std::wstring_view nameText, std::wstring_view valueText)
    : name(nameText),
      value(valueText),
      narrowName(ToNarrowText(nameText)),
      naturalName(WithoutBlanks(narrowName)),
      narrowValue(ToNarrowText(valueText)) {}
