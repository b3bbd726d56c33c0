#include "reports/shared/text_beginning.h"

#include <algorithm>
#include <array>
#include <cstddef>

CTextBeginning::CTextBeginning(std::wstring_view text, wchar_t end) {
  constexpr unsigned kBits = 7;
  constexpr wchar_t kHighest = (1 << kBits) - 1;
  constexpr std::size_t kOfNumber = 64 / kBits;
  constexpr std::size_t kCharacters = 2 * kOfNumber;
  std::array<std::uint64_t, kCharacters> characters{};
  std::size_t count = 0;
  for (bool goesOn = true; goesOn && count < kCharacters; ++count) {
    const wchar_t c = count < text.size() ? text[count] : end;
    // Behind the end, and behind a character that does not fit, texts are left to compare.
    goesOn = c != end && c >= 0 && c < kHighest;
    characters[count] = static_cast<std::uint64_t>(c >= 0 ? std::min(c, kHighest) : 0);
  }
  for (std::size_t i = 0; i < kOfNumber; ++i) {
    first_ = first_ << kBits | characters[i];
    next_ = next_ << kBits | characters[kOfNumber + i];
  }
  // The end was reached, not a character that looks like it.
  const bool isWhole = count == text.size() + 1;
  next_ = next_ << 1U | static_cast<std::uint64_t>(isWhole);
}
