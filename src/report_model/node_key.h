// The text under which a node is filed, without composing it.
#ifndef TALLY_REPORT_MODEL_NODE_KEY_H_
#define TALLY_REPORT_MODEL_NODE_KEY_H_

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

/// A text made of parts that stand elsewhere, with numbers between or behind them. Compares as the
/// whole text does; a number is printed only where a comparison reaches it. Views its parts.
class CNodeKey {
 public:
  // The parts behind the last one are left as they are: keys come and go by the million.
  CNodeKey() {}  // NOLINT(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
  CNodeKey(std::initializer_list<std::wstring_view> texts) : CNodeKey() {
    for (const std::wstring_view text : texts) {
      AddText(text);
    }
  }

  CNodeKey& AddText(std::wstring_view text) {
    if (!text.empty()) {
      parts_[count_++] = {text.data(), text.size(), 0, EPart::Text};
    }
    return *this;
  }
  /// A number as "%g" prints it.
  CNodeKey& AddNumber(double number) {
    parts_[count_++] = {nullptr, 0, number, EPart::Number};
    return *this;
  }
  /// A number as "%d" prints it.
  CNodeKey& AddInt(int number) {
    parts_[count_++] = {nullptr, 0, static_cast<double>(number), EPart::Int};
    return *this;
  }

  /// Below zero where this text stands before the other in plain text order, 0 where they are
  /// equal.
  int Compare(const CNodeKey& other) const;
  std::wstring Text() const;

 private:
  enum class EPart : unsigned char { Text, Number, Int };
  struct SPart {
    const wchar_t* text;
    std::size_t size;
    double number;
    EPart kind;
  };
  class CReader;
  static constexpr std::size_t kMostParts = 7;

  std::array<SPart, kMostParts> parts_;
  std::size_t count_ = 0;
};

#endif  // TALLY_REPORT_MODEL_NODE_KEY_H_
