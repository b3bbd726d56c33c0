// The one message that the engine shows.
#ifndef TALLY_PLATFORM_MESSAGE_BOX_H_
#define TALLY_PLATFORM_MESSAGE_BOX_H_

#include <memory>
#include <string>

#include "platform/export.h"
#include "platform/replaceable.h"

class TALLY_API IMessageBox : public CReplaceable<IMessageBox> {
 public:
  /// Writes the text to standard error.
  static std::shared_ptr<IMessageBox> MakePortable();
  virtual ~IMessageBox() = default;
  /// Shows `text` under `caption`, without an owner; `flags` as those of MessageBoxW.
  virtual void Show(const std::wstring& text, const std::wstring& caption, unsigned flags) = 0;
};

#endif  // TALLY_PLATFORM_MESSAGE_BOX_H_
