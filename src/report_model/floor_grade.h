// The order of floors by height.
#ifndef TALLY_REPORT_MODEL_FLOOR_GRADE_H_
#define TALLY_REPORT_MODEL_FLOOR_GRADE_H_

#include <string>

#include "platform/export.h"

/// What floors are sorted by; names that agree in it are equal.
struct TALLY_API SFloorGrade {
  SFloorGrade() = default;
  explicit SFloorGrade(const std::wstring& name);

  bool operator==(const SFloorGrade& other) const = default;
  bool operator<(const SFloorGrade& other) const {
    return grade != other.grade ? grade < other.grade : number < other.number;
  }

  int grade = 0;   ///< CFloorResultData::CalFloorGrade
  int number = 0;  ///< leading integer of the name
};

#endif  // TALLY_REPORT_MODEL_FLOOR_GRADE_H_
