#include "report_model/floor_grade.h"

#include "platform/text_numbers.h"
#include "report_model/row_results.h"

SFloorGrade::SFloorGrade(const std::wstring& name)
    : grade(CFloorResultData::CalFloorGrade(name)), number(ReadLeadingInt(name)) {}
