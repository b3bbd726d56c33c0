#include "report_model/floor_grade.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/portable/utf8_text.h"
#include "platform/text_numbers.h"
#include "report_model/row_results.h"

namespace {

TEST(FloorGrade, IsThatOfTheFloorsBlockAndTheLeadingNumber) {
  const std::wstring names[] = {
      L"1",  L"-1",  L"10",  L"999999", L"-999999", L"1000000", L"-1000000", L"21474837",   L"007",
      L"0",  L"-0",  L"00",  L"",       L"-",       L"+3",      L" 3",       L"3 ",         L"3.5",
      L"3F", L"1-3", L"1,4", L"1/5",    L"--2",     L"２",      L"roof",     L"99999999999"};
  for (const std::wstring& name : names) {
    const SFloorGrade grade(name);
    EXPECT_EQ(grade.grade, CFloorResultData::CalFloorGrade(name)) << Utf8FromWide(name);
    EXPECT_EQ(grade.number, ReadLeadingInt(name)) << Utf8FromWide(name);
  }
  EXPECT_EQ(SFloorGrade(L"-12").grade, -1200);
  EXPECT_EQ(SFloorGrade(L"-12").number, -12);
}

TEST(FloorGrade, GoesByTheGradeFirst) {
  EXPECT_TRUE(SFloorGrade(L"2") < SFloorGrade(L"10"));
  EXPECT_TRUE(SFloorGrade(L"1,4") < SFloorGrade(L"1"));
  EXPECT_FALSE(SFloorGrade(L"1") < SFloorGrade(L"1F"));
  EXPECT_EQ(SFloorGrade(L"1"), SFloorGrade(L"01"));
  EXPECT_TRUE(SFloorGrade(L"cellar") == SFloorGrade(L"roof"));
}

}  // namespace
