// Where the program writes to.
#ifndef TALLY_HOST_OUTPUT_H_
#define TALLY_HOST_OUTPUT_H_

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

/// Text that is handed over in large pieces, or only collected. Nothing that is handed over needs
/// further memory, so an answer that was begun is also ended.
class COutput {
 public:
  /// Takes bytes; throws CHostError where it takes no more.
  using Sink = std::function<void(std::string_view)>;

  /// Collects.
  COutput() = default;
  explicit COutput(Sink sink);
  /// Writes to a stream of the caller's; `name` is what messages call it.
  COutput(std::FILE* stream, const std::string& name);
  COutput(const COutput&) = delete;
  COutput& operator=(const COutput&) = delete;

  /// Throws what the sink throws, as all that follow.
  void Write(std::string_view bytes);
  /// The text in UTF-8, with U+FFFD for what is no character.
  void WriteText(std::wstring_view text);
  /// The text as a JSON string in UTF-8, with U+FFFD for what is no character.
  void WriteJsonText(std::wstring_view text);
  /// Hands everything over.
  void Flush();

  /// What was collected.
  const std::string& Text() const { return buffer_; }

 private:
  template <class TAppend>
  void WriteCharacters(std::wstring_view text, TAppend append);
  void DrainWhenFull();

  Sink sink_;
  std::string buffer_;
};

#endif  // TALLY_HOST_OUTPUT_H_
