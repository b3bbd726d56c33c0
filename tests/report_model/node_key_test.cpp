#include "report_model/node_key.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

int Sign(int order) {
  return (order > 0) - (order < 0);
}

TEST(NodeKey, IsTheTextOfItsParts) {
  EXPECT_EQ((CNodeKey{L"a", L"", L"@", L"b"}).Text(), L"a@b");
  EXPECT_EQ(CNodeKey().AddInt(-7).AddText(L"x").AddNumber(1234567).Text(), L"-7x1.23457e+06");
  EXPECT_EQ(CNodeKey().Text(), L"");
}

TEST(NodeKey, ComparesAsItsTextDoesHoweverItIsCut) {
  const std::vector<CNodeKey> keys{
      CNodeKey(),
      CNodeKey{L"1"},
      CNodeKey{L"a"},
      CNodeKey{L"a", L"@", L"b"},
      CNodeKey{L"a@", L"b"},
      CNodeKey{L"a@b"},
      CNodeKey{L"a", L"@b"}.AddNumber(2),
      CNodeKey{L"a", L"@b2"},
      CNodeKey{L"a@b"}.AddNumber(2.5),
      CNodeKey{L"a@b"}.AddInt(2).AddText(L".5"),
      CNodeKey{L"a@b"}.AddNumber(10),
      CNodeKey{L"a@b1"}.AddInt(0),
      CNodeKey{L"啊"},
      CNodeKey().AddNumber(0),
      CNodeKey().AddNumber(-0.0),
      CNodeKey().AddNumber(1.0000001),
      CNodeKey().AddNumber(1.0000002),
      CNodeKey().AddNumber(std::numeric_limits<double>::quiet_NaN()),
      CNodeKey().AddNumber(std::numeric_limits<double>::quiet_NaN()),
  };
  for (const CNodeKey& a : keys) {
    for (const CNodeKey& b : keys) {
      SCOPED_TRACE(testing::PrintToString(a.Text()) + " " + testing::PrintToString(b.Text()));
      EXPECT_EQ(Sign(a.Compare(b)), Sign(a.Text().compare(b.Text())));
    }
  }
}

}  // namespace
