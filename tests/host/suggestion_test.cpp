#include "host/suggestion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::vector<std::string> kNames = {"demo", "report", "reports", "batch", "status"};

TEST(Suggestion, NamesTheNearestWord) {
  EXPECT_EQ(Suggestion("reprot", kNames), "; did you mean 'report'?");
  EXPECT_EQ(Suggestion("reprots", kNames), "; did you mean 'reports'?");
  EXPECT_EQ(Suggestion("stats", kNames), "; did you mean 'status'?");
  EXPECT_EQ(Suggestion("btach", kNames), "; did you mean 'batch'?");
  EXPECT_EQ(Suggestion("dem", kNames), "; did you mean 'demo'?");
}

TEST(Suggestion, TakesTheFirstOfEquallyNearWords) {
  EXPECT_EQ(Suggestion("level", {"levee", "lever"}), "; did you mean 'levee'?");
  EXPECT_EQ(Suggestion("level", {"lever", "levee"}), "; did you mean 'lever'?");
}

TEST(Suggestion, CountsASwapOfNeighboursOnce) {
  EXPECT_EQ(Suggestion("csv", {"scv"}), "; did you mean 'scv'?");
  EXPECT_EQ(Suggestion("csv", {"vsc"}), "");
}

TEST(Suggestion, PassesOverTheCaseOfAsciiLetters) {
  EXPECT_EQ(Suggestion("REPORT", kNames), "; did you mean 'report'?");
  EXPECT_EQ(Suggestion("dn100", {"DN100"}), "; did you mean 'DN100'?");
}

TEST(Suggestion, CountsCharactersNotBytes) {
  EXPECT_EQ(Suggestion("给排水", {"电气", "给排"}), "; did you mean '给排'?");
  EXPECT_EQ(Suggestion("给水排", {"电气", "给排水"}), "; did you mean '给排水'?");
  EXPECT_EQ(Suggestion("消防水", {"电气", "给排水"}), "");
}

TEST(Suggestion, IsSilentWhereNothingIsNear) {
  EXPECT_EQ(Suggestion("print", kNames), "");
  EXPECT_EQ(Suggestion("", kNames), "");
  EXPECT_EQ(Suggestion("x", {"y"}), "");
  EXPECT_EQ(Suggestion("report", {}), "");
  EXPECT_EQ(Suggestion(std::string(100000, 'x'), {std::string(100001, 'x')}), "");
}

TEST(Suggestion, IsSilentAboutAKnownWord) {
  EXPECT_EQ(Suggestion("report", kNames), "");
}

TEST(Suggestion, AllowsForAThirdOfTheCharacters) {
  EXPECT_EQ(Suggestion("abcdef", {"abcdxy"}), "; did you mean 'abcdxy'?");
  EXPECT_EQ(Suggestion("abcdef", {"abcxyz"}), "");
  EXPECT_EQ(Suggestion("abcdefghijklmno", {"abcdefghijklxyz"}),
            "; did you mean 'abcdefghijklxyz'?");
  EXPECT_EQ(Suggestion("abcdefghijklmno", {"abcdefghijkwxyz"}), "");
}

TEST(Suggestion, TakesIllFormedText) {
  EXPECT_EQ(Suggestion("rep\xffrt", kNames), "; did you mean 'report'?");
}

}  // namespace
