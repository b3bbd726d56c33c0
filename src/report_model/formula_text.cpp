#include "report_model/formula_text.h"

#include "platform/text_numbers.h"

std::wstring Multiplied(std::wstring_view formula, int count, std::wstring_view unit) {
  std::wstring text(formula);
  text += L'*';
  AppendInt(text, count);
  text += unit;
  return text;
}

std::wstring MultipliedInBrackets(std::wstring_view formula, int count, std::wstring_view unit,
                                  std::wstring_view operators) {
  if (formula.find_first_of(operators) == formula.npos) {
    return Multiplied(formula, count, unit);
  }
  std::wstring text(1, L'(');
  text += formula;
  text += L')';
  return Multiplied(text, count, unit);
}
