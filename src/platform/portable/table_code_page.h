// Code pages by mapping tables.
#ifndef TALLY_PLATFORM_PORTABLE_TABLE_CODE_PAGE_H_
#define TALLY_PLATFORM_PORTABLE_TABLE_CODE_PAGE_H_

#include <string>
#include <string_view>

#include "platform/code_page.h"

/// Each thread has a code page of its own, which all objects of this class share.
class CTableCodePage : public ICodePage {
 public:
  std::string ToNarrow(std::wstring_view text) override;
  int GetThreadCodePage() override;
  bool SetThreadCodePage(int codePage) override;
};

#endif  // TALLY_PLATFORM_PORTABLE_TABLE_CODE_PAGE_H_
