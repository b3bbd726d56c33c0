#include "report_model/narrow_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/code_page.h"
#include "report_model/report_data_method.h"
#include "support/tally_test_fixture.h"

namespace {

using Method = CReportDataMethod;

/// The fixture brings the code page back after each test.
class NarrowOrder : public tally_test::TallyTest {
 protected:
  static void UseCodePage(int codePage) {
    ASSERT_TRUE(ICodePage::Instance()->SetThreadCodePage(codePage));
  }
};

TEST_F(NarrowOrder, NumSmallAnswersMinusOneForTheGreaterNumber) {
  EXPECT_EQ(Method::NumSmall("DN100", "DN15", 2), -1);
  EXPECT_EQ(Method::NumSmall("DN15", "DN100", 2), 1);
  EXPECT_EQ(Method::NumSmall("DN15", "DN15x", 2), 0);
  EXPECT_EQ(Method::NumSmall("0.5", ".25", 0), -1);
}

TEST_F(NarrowOrder, NumSmallTellsOneValueInTwoTextsApart) {
  EXPECT_EQ(Method::NumSmall("1.0", "1", 0), 1);
  EXPECT_EQ(Method::NumSmall("1", "1.0", 0), 1);
  EXPECT_EQ(Method::NumSmall("01", "1", 0), 1);
  EXPECT_EQ(Method::NumSmall(".", "..", 0), 1);
  EXPECT_EQ(Method::NumSmall(".", ".", 0), 0);
}

TEST_F(NarrowOrder, NumSmallReadsOneNumberOfARun) {
  EXPECT_EQ(Method::NumSmall("1.2.9", "1.2.3", 0), 1);
  EXPECT_EQ(Method::NumSmall("1.2.3", "1.2.9", 0), 1);
  EXPECT_EQ(Method::NumSmall("1.3.1", "1.2.9", 0), -1);
  EXPECT_EQ(Method::NumSmall("1e9", "2", 0), 1);
}

TEST_F(NarrowOrder, NumSmallTakesRunsOfAnyLength) {
  const std::string nines(5000, '9');
  EXPECT_EQ(Method::NumSmall(nines, "1", 0), -1);
  EXPECT_EQ(Method::NumSmall(nines, nines + "9", 0), 1);
}

struct SNaturalCase {
  std::wstring a;
  std::wstring b;
  int ascending;
  int descending;
};

TEST_F(NarrowOrder, AttSortRunsLettersForwardAndTurnsNumbersRound) {
  const SNaturalCase cases[] = {
      {L"DN15", L"DN100", -1, 1},  {L"DN100", L"DN15", 1, -1}, {L"DN", L"DN1", -1, -1},
      {L"DN1", L"DN", 1, 1},       {L"A", L"B", -1, -1},       {L"B", L"A", 1, 1},
      {L"A2B", L"A2C", -1, -1},    {L"A2", L"A2", 0, 0},       {L"", L"", 0, 0},
      {L"", L"A", -1, -1},         {L"1", L"A", -1, -1},       {L"0.8", L"0.75", 1, -1},
      {L".5", L"0.25", 1, -1},     {L"10x2", L"10x12", -1, 1}, {L"1e3", L"2", -1, 1},
      {L"DN 25", L"DN25", -1, -1},
  };
  for (const auto& [a, b, ascending, descending] : cases) {
    EXPECT_EQ(Method::AttSort(a, b, true), ascending) << testing::PrintToString(a);
    EXPECT_EQ(Method::AttSort(a, b, false), descending) << testing::PrintToString(a);
  }
}

TEST_F(NarrowOrder, AttSortIsNoOrderingOfOneValueInTwoTexts) {
  EXPECT_EQ(Method::AttSort(L"1.0", L"1", true), -1);
  EXPECT_EQ(Method::AttSort(L"1", L"1.0", true), -1);
  EXPECT_EQ(Method::AttSort(L"1.0", L"1", false), 1);
  EXPECT_EQ(Method::AttSort(L"1", L"1.0", false), 1);
}

TEST_F(NarrowOrder, AttSortComparesBytesAsSigned) {
  EXPECT_EQ(Method::AttSort(L"管", L"A", true), -1);
  EXPECT_EQ(Method::AttSort(L"A", L"管", false), 1);
  EXPECT_EQ(Method::AttSort(L"管", L"1", true), -1);
  EXPECT_EQ(Method::AttSort(L"DN管", L"DN1", true), -1);
}

TEST_F(NarrowOrder, AttSortGoesByTheCodePage) {
  // B0A1 and D2BB against E5958A and E4B880.
  EXPECT_EQ(Method::AttSort(L"啊", L"一", true), -1);
  UseCodePage(65001);
  EXPECT_EQ(Method::AttSort(L"啊", L"一", true), 1);
}

TEST_F(NarrowOrder, AttSortTakesWhatTheCodePageLacksAsOne) {
  EXPECT_EQ(Method::AttSort(L"ก", L"ข", true), 0);
  EXPECT_EQ(Method::AttSort(L"ก", L"?", true), 0);
  UseCodePage(1252);
  EXPECT_EQ(Method::AttSort(L"啊", L"一", true), 0);
}

/// The natural compare in its plainest form: numbers are looked for at every position.
int PlainNatural(const std::string& a, const std::string& b, bool ascending) {
  const auto isNumber = [](char c) { return c == '.' || (c >= '0' && c <= '9'); };
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    if (isNumber(a[i]) && isNumber(b[i])) {
      const int order = Method::NumSmall(a, b, static_cast<int>(i));
      if (order != 0) {
        return ascending ? -order : order;
      }
    }
    const auto byteA = static_cast<signed char>(a[i]);
    const auto byteB = static_cast<signed char>(b[i]);
    if (byteA != byteB) {
      return byteA < byteB ? -1 : 1;
    }
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

TEST_F(NarrowOrder, NaturalCompareAgreesWithThePlainOne) {
  constexpr std::string_view kBytes = "0129..AB-\xB0\xA1";
  std::mt19937 random(5);
  const auto text = [&] {
    std::string made;
    for (auto size = random() % 8; size > 0; --size) {
      made += kBytes[random() % kBytes.size()];
    }
    return made;
  };
  for (int i = 0; i < 100000; ++i) {
    const std::string a = text();
    const std::string b = text();
    EXPECT_EQ(CompareNatural(a, b, true), PlainNatural(a, b, true)) << a << " " << b;
    EXPECT_EQ(CompareNatural(a, b, false), PlainNatural(a, b, false)) << a << " " << b;
  }
}

TEST_F(NarrowOrder, NarrowCompareTakesBytesAsUnsigned) {
  EXPECT_GT(CompareAsNarrow(L"啊", L"A"), 0);
  EXPECT_LT(CompareAsNarrow(L"A", L"啊"), 0);
  EXPECT_LT(CompareAsNarrow(L"啊", L"一"), 0);
  EXPECT_EQ(CompareAsNarrow(L"啊", L"啊"), 0);
  EXPECT_LT(CompareAsNarrow(L"DN100", L"DN15"), 0);
  EXPECT_LT(CompareAsNarrow(L"A", L"AB"), 0);
  EXPECT_EQ(CompareAsNarrow(L"ก", L"ข"), 0);
}

TEST_F(NarrowOrder, BlanksAreCutFromTheNarrowText) {
  EXPECT_EQ(NarrowWithoutBlanks(L" D N  25 "), "DN25");
  EXPECT_EQ(NarrowWithoutBlanks(L"D\tN"), "D\tN");
  EXPECT_EQ(NarrowWithoutBlanks(L"啊 A"),
            "\xB0\xA1"
            "A");
  EXPECT_EQ(NarrowWithoutBlanks(L"   "), "");
}

bool IsProvedOrder(const std::vector<std::string>& texts) {
  CNaturalOrderProof proof;
  for (const std::string& text : texts) {
    proof.Add(text);
  }
  return proof.Holds();
}

TEST_F(NarrowOrder, NaturalOrderIsProvedForTextsWhoseNumbersDifferInValue) {
  EXPECT_TRUE(IsProvedOrder({}));
  EXPECT_TRUE(IsProvedOrder({"", "DN", "DN1.0", "DN15", "DN1.0x15", "800*320"}));
  EXPECT_FALSE(IsProvedOrder({"DN1.0", "DN15", "PN1"}));
  EXPECT_FALSE(IsProvedOrder({"DN015", "DN15"}));
  EXPECT_FALSE(IsProvedOrder({"1.2.3", "1.2.9"}));
  EXPECT_FALSE(IsProvedOrder({"a.5"}));
  EXPECT_FALSE(IsProvedOrder({"a."}));
}

TEST_F(NarrowOrder, NaturalKeysOfAProvedOrderCompareAsTheTexts) {
  const std::vector<std::string> texts = {"",      " ",      "-",     "/",        ":",    "15",
                                          "9",     "100",    "1.5",   "DN",       "DN9",  "DN15",
                                          "DN15x", "DN15x2", "DN150", "\xC0\xA1", "\x7F", "DN-9"};
  ASSERT_TRUE(IsProvedOrder(texts));
  for (const bool ascending : {true, false}) {
    for (const std::string& a : texts) {
      for (const std::string& b : texts) {
        const int order =
            CNaturalOrderProof::Key(a, ascending).compare(CNaturalOrderProof::Key(b, ascending));
        const int expected = CompareNatural(a, b, ascending);
        EXPECT_EQ(order < 0, expected < 0) << a << " and " << b;
        EXPECT_EQ(order > 0, expected > 0) << a << " and " << b;
      }
    }
  }
}

}  // namespace
