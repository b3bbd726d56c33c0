#include "platform/portable/portable_message_box.h"

#include <algorithm>
#include <cstdio>

#include "platform/portable/utf8_text.h"

std::shared_ptr<IMessageBox> IMessageBox::MakePortable() {
  return std::make_shared<CPortableMessageBox>();
}

void CPortableMessageBox::Show(const std::wstring& text, const std::wstring& /*caption*/,
                               unsigned /*flags*/) {
  std::string line = Utf8FromWide(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  line.push_back('\n');
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}
