#include "report_model/formula_text.h"

#include <gtest/gtest.h>

namespace {

TEST(FormulaText, MultipliesAsItStands) {
  EXPECT_EQ(Multiplied(L"2+3", 4, L"层"), L"2+3*4层");
  EXPECT_EQ(Multiplied(L"", -1, L"件"), L"*-1件");
}

TEST(FormulaText, PutsSumsAndDifferencesInBrackets) {
  EXPECT_EQ(MultipliedInBrackets(L"2.5", 3, L"件"), L"2.5*3件");
  EXPECT_EQ(MultipliedInBrackets(L"2+3", 3, L"件"), L"(2+3)*3件");
  EXPECT_EQ(MultipliedInBrackets(L"2-3", 3, L"件"), L"(2-3)*3件");
  EXPECT_EQ(MultipliedInBrackets(L"-2", 3, L"件"), L"(-2)*3件");
  EXPECT_EQ(MultipliedInBrackets(L"2*3", 3, L"件"), L"2*3*3件");
}

TEST(FormulaText, TakesOtherOperators) {
  EXPECT_EQ(MultipliedInBrackets(L"2*3", 4, L"层", L"*"), L"(2*3)*4层");
  EXPECT_EQ(MultipliedInBrackets(L"2+3", 4, L"层", L"*"), L"2+3*4层");
}

}  // namespace
