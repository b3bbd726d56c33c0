#include "platform/portable/portable_text_tool.h"

#include <cstddef>

std::shared_ptr<ITextTool> ITextTool::MakePortable() {
  return std::make_shared<CPortableTextTool>();
}

void CPortableTextTool::Split(std::wstring_view text, std::vector<std::wstring>& out,
                              wchar_t separator) {
  if (text.empty()) {
    return;
  }
  std::size_t begin = 0;
  for (std::size_t end = text.find(separator); end != std::wstring_view::npos;
       end = text.find(separator, begin)) {
    out.emplace_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  out.emplace_back(text.substr(begin));
}
