// Texts as the cells of a workbook hold them.
#ifndef TALLY_HOST_WORKBOOK_TEXT_H_
#define TALLY_HOST_WORKBOOK_TEXT_H_

#include <string>
#include <string_view>

/// Makes `bytes` what a workbook's XML, apart from the XML's own escapes, holds for `text`: UTF-8
/// with U+FFFD for what is no character there, "_x0001_" for a control character, and "_x005F_" for
/// an underscore that would begin such an escape. A text beyond the 32767 characters that a cell
/// takes is cut and ended by "…"; the answer is whether it was.
bool SetWorkbookText(std::string& bytes, std::wstring_view text);

#endif  // TALLY_HOST_WORKBOOK_TEXT_H_
