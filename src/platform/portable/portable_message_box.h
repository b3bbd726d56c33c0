// The message box of a process without windows.
#ifndef TALLY_PLATFORM_PORTABLE_PORTABLE_MESSAGE_BOX_H_
#define TALLY_PLATFORM_PORTABLE_PORTABLE_MESSAGE_BOX_H_

#include <string>

#include "platform/message_box.h"

class CPortableMessageBox : public IMessageBox {
 public:
  /// One line of UTF-8 on standard error: the text, with blanks for line ends. The caption names a
  /// window, and there is none.
  void Show(const std::wstring& text, const std::wstring& caption, unsigned flags) override;
};

#endif  // TALLY_PLATFORM_PORTABLE_PORTABLE_MESSAGE_BOX_H_
