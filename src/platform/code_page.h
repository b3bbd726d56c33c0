// Wide text to narrow text in the code page of the current thread. Reports order Chinese names by
// narrow text.
#ifndef TALLY_PLATFORM_CODE_PAGE_H_
#define TALLY_PLATFORM_CODE_PAGE_H_

#include <memory>
#include <string>
#include <string_view>

#include "platform/export.h"
#include "platform/replaceable.h"

class TALLY_API ICodePage : public CReplaceable<ICodePage> {
 public:
  /// Code pages 936, 1252, 54936 and 65001 by mapping tables; 936 at first.
  static std::shared_ptr<ICodePage> MakePortable();
  virtual ~ICodePage() = default;

  /// Converts to the current thread's code page. A character that it lacks becomes "?". Only
  /// round-trip pairs of the mapping table count.
  virtual std::string ToNarrow(std::wstring_view text) = 0;

  /// The current thread's code page.
  virtual int GetThreadCodePage() = 0;
  /// Sets it; false, with nothing changed, for one that is not supported. It holds for what is
  /// folded afterwards: reports that stand keep their order.
  virtual bool SetThreadCodePage(int codePage) = 0;
};

/// ToNarrow of the service in force.
inline std::string ToNarrowText(std::wstring_view text) {
  return ICodePage::Instance()->ToNarrow(text);
}

#endif  // TALLY_PLATFORM_CODE_PAGE_H_
