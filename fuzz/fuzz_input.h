// The bytes of one fuzzer input, taken from the front.
#ifndef TALLY_FUZZ_FUZZ_INPUT_H_
#define TALLY_FUZZ_FUZZ_INPUT_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

/// Behind the last byte every number is 0 and every text empty.
class CFuzzInput {
 public:
  CFuzzInput(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool AtEnd() const { return rest_.empty(); }
  std::string_view Rest() const { return rest_; }

  unsigned Byte() { return Take<std::uint8_t>(); }
  bool Flag() { return (Byte() & 1) != 0; }
  /// A number from 0 up to below `limit`, which must be positive and at most 256.
  std::size_t Below(std::size_t limit) { return Byte() % limit; }
  int Int() { return Take<int>(); }
  double Double() { return Take<double>(); }

  /// The bytes before the next 0.
  std::string_view Bytes() {
    const std::size_t end = rest_.find('\0');
    const std::string_view bytes = rest_.substr(0, end);
    rest_.remove_prefix(end == rest_.npos ? rest_.size() : end + 1);
    return bytes;
  }

  /// The bytes before the next 0 as wide text. Well-formed UTF-8 reads as what it is; everything
  /// else reads as some character too, so that surrogates, U+0000 (C0 80) and what lies beyond
  /// Unicode can be had.
  std::wstring Text() {
    std::wstring text;
    std::string_view bytes = Bytes();
    while (!bytes.empty()) {
      const auto lead = static_cast<unsigned char>(bytes.front());
      std::size_t length = 1;
      if (lead >= 0xF0) {
        length = 4;
      } else if (lead >= 0xE0) {
        length = 3;
      } else if (lead >= 0xC0) {
        length = 2;
      }
      if (length > bytes.size()) {
        length = 1;
      }
      unsigned c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
      for (std::size_t i = 1; i < length; ++i) {
        c = c << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3F);
      }
      text.push_back(static_cast<wchar_t>(c));
      bytes.remove_prefix(length);
    }
    return text;
  }

  /// A text of `words`, or with the last of its numbers one of the input's own.
  std::wstring Word(std::span<const wchar_t* const> words) {
    const std::size_t at = Below(words.size() + 1);
    return at == words.size() ? Text() : words[at];
  }

 private:
  template <class TValue>
  TValue Take() {
    TValue value{};
    const std::size_t size = rest_.size() < sizeof value ? rest_.size() : sizeof value;
    std::memcpy(&value, rest_.data(), size);
    rest_.remove_prefix(size);
    return value;
  }

  std::string_view rest_;
};

#endif  // TALLY_FUZZ_FUZZ_INPUT_H_
