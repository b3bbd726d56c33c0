// Splitting a text at one character.
#ifndef TALLY_PLATFORM_TEXT_TOOL_H_
#define TALLY_PLATFORM_TEXT_TOOL_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "platform/replaceable.h"

class TALLY_API ITextTool : public CReplaceable<ITextTool> {
 public:
  static std::shared_ptr<ITextTool> MakePortable();
  virtual ~ITextTool() = default;
  /// Appends the components of `text` in order, empty ones included: "a\\b" has three and "a\" two.
  /// The empty text has none.
  virtual void Split(std::wstring_view text, std::vector<std::wstring>& out, wchar_t separator) = 0;
};

namespace KorString {
/// Split of the service in force.
inline void Split(std::wstring_view text, std::vector<std::wstring>& out, wchar_t separator) {
  ITextTool::Instance()->Split(text, out, separator);
}
}  // namespace KorString

#endif  // TALLY_PLATFORM_TEXT_TOOL_H_
