// Where the program writes to.
#ifndef TALLY_HOST_OUTPUT_H_
#define TALLY_HOST_OUTPUT_H_

#include <cstdio>
#include <string>
#include <string_view>

/// Text for a stream, handed over in large pieces, or text that is only collected. Nothing that is
/// written to a stream needs further memory, so an answer that was begun is also ended.
class COutput {
 public:
  /// Collects.
  COutput() = default;
  /// Writes to a stream of the caller's; `name` is what messages call it.
  COutput(std::FILE* stream, std::string name);
  COutput(const COutput&) = delete;
  COutput& operator=(const COutput&) = delete;

  /// Throws CHostError where the stream takes no more, as Flush does.
  void Write(std::string_view bytes);
  /// The text as a JSON string in UTF-8, with U+FFFD for what is no character.
  void WriteJsonText(std::wstring_view text);
  /// Hands everything over to the stream and onwards.
  void Flush();

  /// What was collected.
  const std::string& Text() const { return buffer_; }

 private:
  void Drain();

  std::FILE* stream_ = nullptr;
  std::string name_;
  std::string buffer_;
};

#endif  // TALLY_HOST_OUTPUT_H_
