#include "report_model/narrow_order.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

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

void CNaturalOrderProof::Add(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsNumberByte(text[i])) {
      const std::string_view run = NumberRun(text, i);
      numbers_.emplace_back(ReadLeadingNumber(run), run);
      i += run.size() - 1;
    }
  }
}

bool CNaturalOrderProof::Holds() {
  std::sort(numbers_.begin(), numbers_.end());
  numbers_.erase(std::unique(numbers_.begin(), numbers_.end()), numbers_.end());
  for (std::size_t i = 0; i < numbers_.size(); ++i) {
    const auto& [value, text] = numbers_[i];
    if (text.front() == '.' || (i > 0 && value == numbers_[i - 1].first)) {
      return false;
    }
  }
  return true;
}

std::string CNaturalOrderProof::Key(std::string_view text, bool ascending) {
  // Turns signed bytes into unsigned ones of the same order.
  constexpr unsigned kSign = 0x80;
  constexpr unsigned kByte = 8;
  constexpr unsigned kBits = 64;
  const auto byteOf = [](unsigned char c) { return static_cast<char>(c ^ kSign); };
  std::string key;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsNumberByte(text[i])) {
      key += byteOf(static_cast<unsigned char>(text[i]));
      continue;
    }
    const std::string_view run = NumberRun(text, i);
    i += run.size() - 1;
    // All digits compare alike with what is no number. The bits of numbers from 0 up are in order.
    key += byteOf('0');
    const auto bits = std::bit_cast<std::uint64_t>(ReadLeadingNumber(run));
    for (unsigned shift = kBits; shift > 0; shift -= kByte) {
      key += static_cast<char>((ascending ? bits : ~bits) >> (shift - kByte));
    }
  }
  return key;
}

SAttSortKey::SAttSortKey(std::wstring_view nameText, std::wstring_view valueText)
    : name(nameText),
      value(valueText),
      narrowName(ToNarrowText(nameText)),
      naturalName(WithoutBlanks(narrowName)),
      narrowValue(ToNarrowText(valueText)) {}
