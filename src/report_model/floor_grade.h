// The order of floors by height.
#ifndef TALLY_REPORT_MODEL_FLOOR_GRADE_H_
#define TALLY_REPORT_MODEL_FLOOR_GRADE_H_

#include <compare>
#include <string>

#include "platform/export.h"

/// What floors are sorted by; names that agree in it are equal.
struct TALLY_API SFloorGrade {
  SFloorGrade() = default;
  explicit SFloorGrade(const std::wstring& name);

  auto operator<=>(const SFloorGrade& other) const = default;

  int grade = 0;   ///< CFloorResultData::CalFloorGrade
  int number = 0;  ///< leading integer of the name
};

#endif  // TALLY_REPORT_MODEL_FLOOR_GRADE_H_
