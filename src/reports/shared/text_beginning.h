// The first characters of a text, as numbers.
#ifndef TALLY_REPORTS_SHARED_TEXT_BEGINNING_H_
#define TALLY_REPORTS_SHARED_TEXT_BEGINNING_H_

#include <cstdint>
#include <string_view>

/// Stands for a text where its beginning is enough to tell it from others.
class CTextBeginning {
 public:
  /// Of no text.
  CTextBeginning() = default;
  /// `end`, an ASCII character, is what stands behind the text.
  CTextBeginning(std::wstring_view text, wchar_t end);

  bool IsNone() const { return first_ == 0; }
  /// Below zero where the text stands before the other and above it where it stands behind, each
  /// with `end` and anything else after it. 0 where the beginnings do not tell.
  int Compare(const CTextBeginning& other) const {
    if (first_ != other.first_) {
      return first_ < other.first_ ? -1 : 1;
    }
    const std::uint64_t mine = next_ >> 1U;
    const std::uint64_t theirs = other.next_ >> 1U;
    return mine == theirs ? 0 : mine < theirs ? -1 : 1;
  }
  /// Whether nothing is left out. Whole beginnings that compare equal are of equal texts.
  bool IsWhole() const { return (next_ & 1U) != 0; }

 private:
  std::uint64_t first_ = 0;  // nine characters
  std::uint64_t next_ = 0;   // nine more, and a bit that tells whether this is all
};

#endif  // TALLY_REPORTS_SHARED_TEXT_BEGINNING_H_
