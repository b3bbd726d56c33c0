#include "report_model/formula_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

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

TEST(FormulaText, RepeatsByComponentsThenByFloors) {
  const auto repeated = [](std::wstring_view formula, int components, int floors) {
    std::wstring text = L"=";
    AppendRepeated(text, formula, components, floors);
    return text;
  };
  EXPECT_EQ(repeated(L"2+3", 1, 1), L"=2+3");
  EXPECT_EQ(repeated(L"2+3", 0, -1), L"=2+3");
  EXPECT_EQ(repeated(L"2*3", 4, 1), L"=2*3*4件");
  EXPECT_EQ(repeated(L"2*3", 1, 5), L"=2*3*5层");
  EXPECT_EQ(repeated(L"2*3", 4, 5), L"=2*3*4件*5层");
  EXPECT_EQ(repeated(L"2+3", 4, 1), L"=(2+3)*4件");
  EXPECT_EQ(repeated(L"2-3", 1, 5), L"=(2-3)*5层");
  EXPECT_EQ(repeated(L"2+3", 4, 5), L"=((2+3)*4件)*5层");
}

}  // namespace
