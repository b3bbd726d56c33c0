#include "host/output.h"

#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

#include "host/host_error.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr std::size_t kFull = 1 << 16;
constexpr std::size_t kPiece = 1 << 12;

// A control character, a quotation mark or a backslash.
void AppendEscaped(std::string& bytes, unsigned char c) {
  constexpr const char* kDigits = "0123456789abcdef";
  bytes.push_back('\\');
  switch (c) {
    case '"':
    case '\\':
      bytes.push_back(static_cast<char>(c));
      return;
    case '\n':
      bytes.push_back('n');
      return;
    case '\r':
      bytes.push_back('r');
      return;
    case '\t':
      bytes.push_back('t');
      return;
    default:
      bytes += "u00";
      bytes.push_back(kDigits[c >> 4]);
      bytes.push_back(kDigits[c & 0xF]);
  }
}

void AppendCharacter(std::string& bytes, std::wstring_view& text) {
  const wchar_t c = text.front();
  if (c >= 0 && c < 0x80) {
    bytes.push_back(static_cast<char>(c));
    text.remove_prefix(1);
  } else {
    AppendUtf8(bytes, TakeCodePoint(text));
  }
}

void AppendJsonCharacter(std::string& bytes, std::wstring_view& text) {
  const wchar_t c = text.front();
  if (c >= 0 && (c < 0x20 || c == L'"' || c == L'\\')) {
    AppendEscaped(bytes, static_cast<unsigned char>(c));
    text.remove_prefix(1);
  } else {
    AppendCharacter(bytes, text);
  }
}

void WriteToStream(std::FILE* stream, const std::string& name, std::string_view bytes) {
  errno = 0;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stream) != bytes.size() ||
      std::fflush(stream) != 0) {
    throw CHostError("cannot write to " + name + ": " + std::generic_category().message(errno));
  }
}

}  // namespace

COutput::COutput(Sink sink) : sink_(std::move(sink)) {
  // A piece of wide text takes six bytes for each character at most.
  buffer_.reserve(kFull + 6 * kPiece);
}

COutput::COutput(std::FILE* stream, const std::string& name)
    : COutput([stream, name](std::string_view bytes) { WriteToStream(stream, name, bytes); }) {}

void COutput::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, kPiece);
    buffer_ += piece;
    bytes.remove_prefix(piece.size());
    DrainWhenFull();
  }
}

// `append` takes one character from the front of a text and appends its bytes to a string.
template <class TAppend>
void COutput::WriteCharacters(std::wstring_view text, TAppend append) {
  std::size_t left = kPiece;
  while (!text.empty()) {
    append(buffer_, text);
    if (--left == 0) {
      left = kPiece;
      DrainWhenFull();
    }
  }
  DrainWhenFull();
}

void COutput::WriteText(std::wstring_view text) {
  WriteCharacters(text, AppendCharacter);
}

void COutput::WriteJsonText(std::wstring_view text) {
  buffer_.push_back('"');
  WriteCharacters(text, AppendJsonCharacter);
  buffer_.push_back('"');
  DrainWhenFull();
}

void COutput::DrainWhenFull() {
  if (buffer_.size() >= kFull) {
    Flush();
  }
}

void COutput::Flush() {
  if (sink_) {
    sink_(buffer_);
    buffer_.clear();
  }
}
