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

}  // namespace

COutput::COutput(std::FILE* stream, std::string name) : stream_(stream), name_(std::move(name)) {
  // A piece of wide text takes six bytes for each character at most.
  buffer_.reserve(kFull + 6 * kPiece);
}

void COutput::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, kPiece);
    buffer_ += piece;
    bytes.remove_prefix(piece.size());
    if (buffer_.size() >= kFull) {
      Drain();
    }
  }
}

void COutput::WriteJsonText(std::wstring_view text) {
  buffer_.push_back('"');
  std::size_t left = kPiece;
  while (!text.empty()) {
    const wchar_t c = text.front();
    if (c >= 0x20 && c < 0x80 && c != L'"' && c != L'\\') {
      buffer_.push_back(static_cast<char>(c));
      text.remove_prefix(1);
    } else if (c >= 0 && c < 0x80) {
      AppendEscaped(buffer_, static_cast<unsigned char>(c));
      text.remove_prefix(1);
    } else {
      AppendUtf8(buffer_, TakeCodePoint(text));
    }
    if (--left == 0) {
      left = kPiece;
      if (buffer_.size() >= kFull) {
        Drain();
      }
    }
  }
  buffer_.push_back('"');
  if (buffer_.size() >= kFull) {
    Drain();
  }
}

void COutput::Drain() {
  if (stream_ == nullptr) {
    return;
  }
  errno = 0;
  if (std::fwrite(buffer_.data(), 1, buffer_.size(), stream_) != buffer_.size()) {
    throw CHostError("cannot write to " + name_ + ": " + std::generic_category().message(errno));
  }
  buffer_.clear();
}

void COutput::Flush() {
  Drain();
  if (stream_ != nullptr && std::fflush(stream_) != 0) {
    throw CHostError("cannot write to " + name_ + ": " + std::generic_category().message(errno));
  }
}
