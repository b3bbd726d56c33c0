#include "reports/shared/text_beginning.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

namespace {

int Compare(const std::wstring& a, const std::wstring& b) {
  return CTextBeginning(a, L'@').Compare(CTextBeginning(b, L'@'));
}

TEST(TextBeginning, TellsTextsApartAsTheyCompareWithWhatStandsBehind) {
  const std::wstring letters = L"@019.*+aB\x7e\x7f\x80一" + std::wstring(1, L'\0') +
                               std::wstring(1, std::numeric_limits<wchar_t>::min());
  std::mt19937 random(5);
  const auto text = [&](std::size_t longest) {
    std::wstring made(random() % (longest + 1), L' ');
    for (wchar_t& c : made) {
      c = letters[random() % letters.size()];
    }
    return made;
  };
  int told = 0;
  int equal = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::wstring start = std::wstring(random() % 20, L'1') + text(2);
    const std::wstring a = start + text(3);
    const std::wstring b = start + text(3);
    const CTextBeginning beginningA(a, L'@');
    const CTextBeginning beginningB(b, L'@');
    const int order = beginningA.Compare(beginningB);
    EXPECT_EQ(beginningB.Compare(beginningA), -order);
    if (order != 0) {
      ++told;
      const std::wstring wholeA = a + L"@" + text(2);
      const std::wstring wholeB = b + L"@" + text(2);
      EXPECT_EQ(order < 0, wholeA < wholeB)
          << testing::PrintToString(wholeA) << testing::PrintToString(wholeB);
    } else if (beginningA.IsWhole() && beginningB.IsWhole()) {
      ++equal;
      EXPECT_EQ(a, b);
    }
  }
  EXPECT_GT(told, 1000);
  EXPECT_GT(equal, 100);
}

TEST(TextBeginning, HasEighteenCharacters) {
  EXPECT_LT(Compare(L"12.3", L"12.4"), 0);
  EXPECT_LT(Compare(L"12.345678", L"12.345679"), 0);
  EXPECT_GT(Compare(L"12.34567890123456b", L"12.34567890123456a"), 0);
  EXPECT_EQ(Compare(L"12.345678901234567a", L"12.345678901234567b"), 0);
}

TEST(TextBeginning, IsWholeWhereNothingIsLeftOut) {
  EXPECT_TRUE(CTextBeginning(L"", L'@').IsWhole());
  EXPECT_TRUE(CTextBeginning(L"12.345678", L'@').IsWhole());
  EXPECT_TRUE(CTextBeginning(L"12.34567890123456", L'@').IsWhole());
  EXPECT_FALSE(CTextBeginning(L"12.345678901234567", L'@').IsWhole()) << "the end is left out";
  EXPECT_FALSE(CTextBeginning(L"12米", L'@').IsWhole());
  EXPECT_FALSE(CTextBeginning(L"1@", L'@').IsWhole()) << "is no end";
}

TEST(TextBeginning, OfNoTextIsNoneAndOfAnEmptyTextIsNot) {
  EXPECT_TRUE(CTextBeginning().IsNone());
  EXPECT_FALSE(CTextBeginning(L"", L'@').IsNone());
}

}  // namespace
