// Names out of a project, for lists that are read.
#ifndef TALLY_HOST_SHOWN_NAME_H_
#define TALLY_HOST_SHOWN_NAME_H_

#include <string>
#include <string_view>
#include <utility>

#include "host/terminal_text.h"

/// On one line, and something to see for the empty name too.
inline std::string ShownName(std::wstring_view name) {
  std::string shown = ToTerminalText(name).bytes;
  return shown.empty() ? "(no name)" : std::move(shown);
}

#endif  // TALLY_HOST_SHOWN_NAME_H_
