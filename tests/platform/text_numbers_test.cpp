#include "platform/text_numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>
#include <string>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

std::wstring Widen(const std::string& text) {
  return std::wstring(text.begin(), text.end());
}

std::wstring PrintfText(double value) {
  char buffer[64];
  const int size = std::snprintf(buffer, sizeof buffer, "%g", value);
  return Widen(std::string(buffer, static_cast<std::size_t>(size)));
}

TEST(ReadLeadingInt, TakesBlanksASignAndDigitsAndStopsAtTheFirstMisfit) {
  struct SCase {
    std::wstring text;
    int value;
  };
  const SCase cases[] = {
      {L"", 0},       {L"12", 12},          {L"12层", 12},   {L"-3", -3},     {L"+7", 7},
      {L"1.9", 1},    {L" \t\n\v\f\r8", 8}, {L"- 3", 0},     {L"+-3", 0},     {L"-", 0},
      {L"B1", 0},     {L"007", 7},          {L"1e3", 1},     {L"0x10", 0},    {L"１", 0},
      {L"\u0131", 0}, {L"\u00a05", 0},      {L"\u30005", 0}, {L"5\u0132", 5},
  };
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(ReadLeadingInt(text), value) << testing::PrintToString(text);
  }
}

TEST(ReadLeadingInt, SaturatesAtTheEndsOfInt) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  EXPECT_EQ(ReadLeadingInt(L"2147483647"), kHighest);
  EXPECT_EQ(ReadLeadingInt(L"2147483648"), kHighest);
  EXPECT_EQ(ReadLeadingInt(L"2147483646"), kHighest - 1);
  EXPECT_EQ(ReadLeadingInt(L"-2147483648"), kLowest);
  EXPECT_EQ(ReadLeadingInt(L"-2147483649"), kLowest);
  EXPECT_EQ(ReadLeadingInt(L"-2147483647"), kLowest + 1);
  EXPECT_EQ(ReadLeadingInt(std::wstring(1000, L'9')), kHighest);
  EXPECT_EQ(ReadLeadingInt(L"-" + std::wstring(1000, L'9')), kLowest);
  EXPECT_EQ(ReadLeadingInt(std::wstring(1000, L'0') + L"42"), 42);
}

TEST(ReadLeadingNumber, TakesADecimalNumberAndStopsAtTheFirstMisfit) {
  struct SCase {
    std::string text;
    double value;
  };
  const SCase cases[] = {
      {"", 0},       {"2.5", 2.5},    {"-2.5m", -2.5}, {"+2", 2},    {" \t\n\v\f\r3", 3},
      {".5", 0.5},   {"5.", 5},       {".", 0},        {"-.", 0},    {"1.2.3", 1.2},
      {"1e3", 1000}, {"1E+2", 100},   {"1e-2", 0.01},  {"1e", 1},    {"1e+", 1},
      {"1ex", 1},    {".5e1", 5},     {"e5", 0},       {".e5", 0},   {"0x10", 0},
      {"inf", 0},    {"infinity", 0}, {"nan", 0},      {"-inf", 0},  {"+-1", 0},
      {"1,5", 1},    {"DN25", 0},     {"- 1", 0},      {"1 000", 1}, {"2.5e3.5", 2500},
  };
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(ReadLeadingNumber(text), value) << text;
    EXPECT_EQ(ReadLeadingNumber(Widen(text)), value) << text;
  }
  EXPECT_TRUE(std::signbit(ReadLeadingNumber("-0")));
}

TEST(ReadLeadingNumber, KnowsOnlyAsciiCharacters) {
  EXPECT_EQ(ReadLeadingNumber(L"１"), 0);
  EXPECT_EQ(ReadLeadingNumber(L"\u0131"), 0);
  EXPECT_EQ(ReadLeadingNumber(L"2\u0131"), 2);
  EXPECT_EQ(ReadLeadingNumber(L"2\u012e5"), 2);
  EXPECT_EQ(ReadLeadingNumber(L"2\u01653"), 2);
  EXPECT_EQ(ReadLeadingNumber(L"\u00a05"), 0);
}

TEST(ReadLeadingNumber, EndsInInfinityOrZeroBeyondTheRangeOfDouble) {
  const std::string zeros(400, '0');
  const std::string nines(400, '9');
  EXPECT_EQ(ReadLeadingNumber("1e400"), kInfinity);
  EXPECT_EQ(ReadLeadingNumber("-1e400"), -kInfinity);
  EXPECT_EQ(ReadLeadingNumber(nines), kInfinity);
  EXPECT_EQ(ReadLeadingNumber("1e99999999999999999999999"), kInfinity);
  EXPECT_EQ(ReadLeadingNumber("1e-400"), 0);
  EXPECT_EQ(ReadLeadingNumber("1e-99999999999999999999999"), 0);
  EXPECT_EQ(ReadLeadingNumber("0." + zeros + "1"), 0);
  EXPECT_EQ(ReadLeadingNumber("0e999999999"), 0);
  EXPECT_EQ(ReadLeadingNumber("0." + zeros + "1e401"), 1);
  EXPECT_EQ(ReadLeadingNumber("1" + zeros + "e-400"), 1);
  EXPECT_EQ(ReadLeadingNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(ReadLeadingNumber("4.9406564584124654e-324"), kDenormal);
}

TEST(ReadLeadingNumber, ReadsBackWhatWasPrinted) {
  std::mt19937_64 random(20240607);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::bit_cast<double>(random());
    if (std::isfinite(value)) {
      char buffer[64];
      std::snprintf(buffer, sizeof buffer, "%.17g", value);
      EXPECT_EQ(ReadLeadingNumber(buffer), value) << buffer;
    }
  }
}

TEST(AppendNumber, PrintsAsPrintfDoes) {
  const double cases[] = {0,
                          -0.0,
                          1,
                          -1,
                          0.1,
                          1e5,
                          999999,
                          999999.5,
                          1000000,
                          1234567,
                          0.0001,
                          0.00001234567,
                          0.00001,
                          2.5,
                          1.0 / 3,
                          100000.5,
                          123456.5,
                          0.5e-4,
                          kInfinity,
                          -kInfinity,
                          kDenormal,
                          -kDenormal,
                          std::numeric_limits<double>::min(),
                          std::numeric_limits<double>::max(),
                          std::numeric_limits<double>::lowest()};
  for (const double value : cases) {
    EXPECT_EQ(NumberText(value), PrintfText(value)) << value;
  }
  EXPECT_EQ(NumberText(2.50), L"2.5");
  EXPECT_EQ(NumberText(1234567), L"1.23457e+06");
  EXPECT_EQ(NumberText(-0.0), L"-0");
}

TEST(AppendNumber, PrintsAsPrintfDoesOverTheWholeRange) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 50000; ++i) {
    const double value = std::bit_cast<double>(random());
    if (!std::isnan(value)) {
      EXPECT_EQ(NumberText(value), PrintfText(value)) << value;
    }
  }
}

TEST(AppendNumber, PrintsAsPrintfDoesNearTheSixthDigit) {
  std::mt19937_64 random(11);
  std::uniform_int_distribution<std::int64_t> digits(-20000000, 20000000);
  for (int i = 0; i < 50000; ++i) {
    const double value = static_cast<double>(digits(random)) / 1000;
    EXPECT_EQ(NumberText(value), PrintfText(value)) << value;
  }
}

TEST(AppendNumber, PrintsAsPrintfDoesWhereQuantitiesLie) {
  std::mt19937_64 random(13);
  std::uniform_real_distribution<double> exponent(-5, 7);
  for (int i = 0; i < 200000; ++i) {
    const double value = std::pow(10, exponent(random));
    EXPECT_EQ(NumberText(value), PrintfText(value)) << value;
    EXPECT_EQ(NumberText(-value), PrintfText(-value)) << value;
  }
}

TEST(AppendNumber, RoundsAsPrintfDoesBesideTheMiddleOfTwoDigits) {
  std::mt19937_64 random(17);
  std::uniform_int_distribution<int> digits(100000, 999999);
  for (const double scale : {1e-9, 1e-7, 1e-4, 1e-2, 1.0, 1e2, 1e4}) {
    for (int i = 0; i < 3000; ++i) {
      const double middle = (digits(random) + 0.5) * scale;
      for (const double value :
           {middle, std::nextafter(middle, 0.0), std::nextafter(middle, kInfinity),
            middle * (1 + 1e-12), middle * (1 - 1e-12), middle * (1 + 4e-12)}) {
        EXPECT_EQ(NumberText(value), PrintfText(value)) << value;
      }
    }
  }
}

TEST(AppendNumber, PrintsAsPrintfDoesAtEachPowerOfTen) {
  for (int exponent = -8; exponent <= 9; ++exponent) {
    const double power = std::pow(10, exponent);
    for (const double value : {power, std::nextafter(power, 0.0), std::nextafter(power, kInfinity),
                               power * 0.9999995, power * 0.99999949, power * 0.9999996}) {
      EXPECT_EQ(NumberText(value), PrintfText(value)) << value;
    }
  }
}

TEST(AppendNumber, PrintsNoNumberWithoutASign) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(NumberText(nan), L"nan");
  EXPECT_EQ(NumberText(-nan), L"nan");
  EXPECT_EQ(NumberText(std::copysign(nan, -1.0)), L"nan");
}

TEST(AppendNumber, KeepsWhatStoodBefore) {
  std::wstring text = L"长度 ";
  AppendNumber(text, 2.5);
  AppendInt(text, -12);
  EXPECT_EQ(text, L"长度 2.5-12");
}

TEST(AppendInt, PrintsBothEnds) {
  EXPECT_EQ(IntText(0), L"0");
  EXPECT_EQ(IntText(std::numeric_limits<int>::max()), L"2147483647");
  EXPECT_EQ(IntText(std::numeric_limits<int>::min()), L"-2147483648");
}

/// The comma of many countries, and grouped thousands.
class CommaPunctuation final : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(TextNumbers, DoNotHeedTheLocale) {
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
  const char* const posixBefore = std::setlocale(LC_ALL, nullptr);
  const std::string posixName = posixBefore == nullptr ? "C" : posixBefore;
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(NumberText(1234.5), L"1234.5");
  EXPECT_EQ(IntText(1234567), L"1234567");
  EXPECT_EQ(ReadLeadingNumber("2.5"), 2.5);
  EXPECT_EQ(ReadLeadingNumber(L"2,5"), 2);
  EXPECT_EQ(ReadLeadingInt(L"1.234"), 1);
  std::setlocale(LC_ALL, posixName.c_str());
  std::locale::global(before);
}

}  // namespace
