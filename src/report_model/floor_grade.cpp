#include "report_model/floor_grade.h"

#include <cstddef>
#include <string_view>

#include "platform/text_numbers.h"
#include "report_model/row_results.h"

namespace {

// Most floors are called by a small number. Answers false for any other name.
bool ReadSmallNumber(std::wstring_view name, int& number) {
  constexpr std::size_t kMostDigits = 6;
  const bool isNegative = name.starts_with(L'-');
  name.remove_prefix(isNegative ? 1 : 0);
  if (name.empty() || name.size() > kMostDigits) {
    return false;
  }
  number = 0;
  for (const wchar_t c : name) {
    if (c < L'0' || c > L'9') {
      return false;
    }
    number = number * 10 + static_cast<int>(c - L'0');
  }
  number = isNegative ? -number : number;
  return true;
}

}  // namespace

SFloorGrade::SFloorGrade(const std::wstring& name) {
  constexpr int kGradesOfNumber = 100;
  if (ReadSmallNumber(name, number) && number != 0) {
    grade = number * kGradesOfNumber;
  } else {
    grade = CFloorResultData::CalFloorGrade(name);
    number = ReadLeadingInt(name);
  }
}
