// Numbers to text and back, the same under every locale.
#ifndef TALLY_PLATFORM_TEXT_NUMBERS_H_
#define TALLY_PLATFORM_TEXT_NUMBERS_H_

#include <string>
#include <string_view>

#include "platform/export.h"

/// The integer that a text begins with: blanks (the six ASCII white space characters), a sign,
/// ASCII digits. 0 where there is none; saturates at the ends of int.
TALLY_API int ReadLeadingInt(std::wstring_view text);

/// The decimal number that a text begins with: blanks, a sign, digits with an optional fraction and
/// an optional exponent. 0 where there is none; infinite beyond the range of double.
TALLY_API double ReadLeadingNumber(std::wstring_view text);
TALLY_API double ReadLeadingNumber(std::string_view text);

/// Appends `value` as printf's "%g" of the C locale prints it; no number prints "nan", unsigned.
TALLY_API void AppendNumber(std::wstring& text, double value);
/// Appends `value` as "%d" prints it.
TALLY_API void AppendInt(std::wstring& text, int value);

/// The text of a number, as AppendNumber and AppendInt write it.
TALLY_API std::wstring NumberText(double value);
TALLY_API std::wstring IntText(int value);

#endif  // TALLY_PLATFORM_TEXT_NUMBERS_H_
