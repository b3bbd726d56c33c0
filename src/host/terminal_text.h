// Texts as a terminal shows them.
#ifndef TALLY_HOST_TERMINAL_TEXT_H_
#define TALLY_HOST_TERMINAL_TEXT_H_

#include <string>
#include <string_view>

/// Columns that a code point takes on a terminal: two for Chinese and full-width characters, none
/// for combining marks.
int CodePointWidth(char32_t codePoint);

struct STerminalText {
  std::string bytes;  ///< UTF-8
  int width = 0;      ///< columns
};

/// The text on one line that cannot move the cursor or turn the writing direction: lines are joined
/// by "; ", line ends at the end are dropped, and other control characters show as their symbols.
STerminalText ToTerminalText(std::wstring_view text);

#endif  // TALLY_HOST_TERMINAL_TEXT_H_
