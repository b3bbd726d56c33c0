// A text that stands elsewhere.
#ifndef TALLY_REPORT_MODEL_TEXT_REF_H_
#define TALLY_REPORT_MODEL_TEXT_REF_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

/// Refers to a text of a record or of the store, which outlives it, in the room of one pointer and
/// without reading it. Refers to an empty text until it is told another.
class CTextRef {
 public:
  CTextRef() = default;
  // A record's field stands where the reference does: nothing is to be said about it.
  CTextRef(const std::wstring& text) : text_(&text) {}  // NOLINT(google-explicit-constructor)
  CTextRef(std::wstring&&) = delete;

  const std::wstring& Text() const { return text_ != nullptr ? *text_ : Empty(); }
  // NOLINTNEXTLINE(google-explicit-constructor)
  operator const std::wstring&() const { return Text(); }
  // NOLINTNEXTLINE(google-explicit-constructor)
  operator std::wstring_view() const { return Text(); }

  bool empty() const { return Text().empty(); }
  std::size_t size() const { return Text().size(); }
  const wchar_t* data() const { return Text().data(); }

  friend bool operator==(const CTextRef& a, const CTextRef& b) {
    return a.text_ == b.text_ || a.Text() == b.Text();
  }
  template <class TText>
  requires std::is_convertible_v<const TText&, std::wstring_view>
  friend bool operator==(const CTextRef& a, const TText& b) {
    return a.Text() == std::wstring_view(b);
  }
  friend auto operator<=>(const CTextRef& a, const CTextRef& b) { return a.Text() <=> b.Text(); }

 private:
  static const std::wstring& Empty() {
    static const std::wstring empty;
    return empty;
  }

  const std::wstring* text_ = nullptr;
};

#endif  // TALLY_REPORT_MODEL_TEXT_REF_H_
