#include "host/progress_bar.h"

#include <unistd.h>

#include <algorithm>

#include "host/terminal_text.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr std::size_t kBarWidth = 20;
constexpr int kNameWidth = 40;  // with bar and numbers below 80 columns, so that no line wraps
constexpr const char* kClearLine = "\r\x1B[K";

std::string ShortName(const std::string& name) {
  std::wstring wide = WideFromUtf8(name);
  STerminalText shown = ToTerminalText(wide);
  while (shown.width > kNameWidth) {
    wide.pop_back();
    shown = ToTerminalText(wide);
  }
  return shown.bytes;
}

}  // namespace

CProgressBar::CProgressBar(std::FILE* stream, std::size_t steps)
    : stream_(stream), isTerminal_(isatty(fileno(stream)) != 0), steps_(steps) {}

CProgressBar::~CProgressBar() {
  if (begun_ != 0) {
    Write(kClearLine);
  }
}

void CProgressBar::Step(const std::string& name) {
  const std::size_t full = kBarWidth * std::min(begun_, steps_) / std::max<std::size_t>(steps_, 1);
  ++begun_;
  Write(kClearLine + std::string("[") + std::string(full, '#') +
        std::string(kBarWidth - full, '.') + "] " + std::to_string(begun_) + "/" +
        std::to_string(steps_) + " " + ShortName(name));
}

void CProgressBar::Write(const std::string& text) {
  if (isTerminal_) {
    std::fwrite(text.data(), 1, text.size(), stream_);
    std::fflush(stream_);
  }
}
