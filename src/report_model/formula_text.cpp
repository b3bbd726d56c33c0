#include "report_model/formula_text.h"

#include <algorithm>
#include <cstddef>

#include "platform/text_numbers.h"

namespace {

// The texts are short: asking each character is faster than a search for it.
bool HasOneOf(std::wstring_view formula, std::wstring_view operators) {
  return std::any_of(formula.begin(), formula.end(), [operators](wchar_t c) {
    return std::find(operators.begin(), operators.end(), c) != operators.end();
  });
}

void AppendFactor(std::wstring& text, int count, std::wstring_view unit) {
  text += L'*';
  AppendInt(text, count);
  text += unit;
}

}  // namespace

std::wstring Multiplied(std::wstring_view formula, int count, std::wstring_view unit) {
  std::wstring text(formula);
  AppendFactor(text, count, unit);
  return text;
}

std::wstring MultipliedInBrackets(std::wstring_view formula, int count, std::wstring_view unit,
                                  std::wstring_view operators) {
  if (!HasOneOf(formula, operators)) {
    return Multiplied(formula, count, unit);
  }
  std::wstring text(1, L'(');
  text += formula;
  text += L')';
  AppendFactor(text, count, unit);
  return text;
}

void AppendRepeated(std::wstring& text, std::wstring_view formula, int components, int floors) {
  const bool byComponents = components > 1;
  const bool byFloors = floors > 1;
  const bool inBrackets = (byComponents || byFloors) && HasOneOf(formula, L"+-");
  text.append(inBrackets ? std::size_t{byComponents} + std::size_t{byFloors} : 0, L'(');
  text += formula;
  if (byComponents) {
    text.append(inBrackets ? 1 : 0, L')');
    AppendFactor(text, components, L"件");
  }
  if (byFloors) {
    text.append(inBrackets ? 1 : 0, L')');
    AppendFactor(text, floors, L"层");
  }
}
