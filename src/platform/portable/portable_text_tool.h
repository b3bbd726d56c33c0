// Splitting with the standard library alone.
#ifndef TALLY_PLATFORM_PORTABLE_PORTABLE_TEXT_TOOL_H_
#define TALLY_PLATFORM_PORTABLE_PORTABLE_TEXT_TOOL_H_

#include <string>
#include <string_view>
#include <vector>

#include "platform/text_tool.h"

class CPortableTextTool : public ITextTool {
 public:
  void Split(std::wstring_view text, std::vector<std::wstring>& out, wchar_t separator) override;
};

#endif  // TALLY_PLATFORM_PORTABLE_PORTABLE_TEXT_TOOL_H_
