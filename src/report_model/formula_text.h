// Multipliers in formulas.
#ifndef TALLY_REPORT_MODEL_FORMULA_TEXT_H_
#define TALLY_REPORT_MODEL_FORMULA_TEXT_H_

#include <string>
#include <string_view>

/// "%s*%d" and the unit: L"层" for floors, L"件" for components.
std::wstring Multiplied(std::wstring_view formula, int count, std::wstring_view unit);

/// The same with the formula in brackets if it holds one of `operators`.
std::wstring MultipliedInBrackets(std::wstring_view formula, int count, std::wstring_view unit,
                                  std::wstring_view operators = L"+-");

/// Appends the formula times the components and times the floors, each where it is above 1, with
/// brackets as above.
void AppendRepeated(std::wstring& text, std::wstring_view formula, int components, int floors);

#endif  // TALLY_REPORT_MODEL_FORMULA_TEXT_H_
