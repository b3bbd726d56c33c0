#include "report_model/text_ref.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace {

TEST(TextRef, TakesTheRoomOfOnePointer) {
  static_assert(sizeof(CTextRef) == sizeof(void*));
}

TEST(TextRef, DoesNotReferToATemporary) {
  static_assert(std::is_constructible_v<CTextRef, const std::wstring&>);
  static_assert(!std::is_constructible_v<CTextRef, std::wstring>);
  static_assert(!std::is_constructible_v<CTextRef, const wchar_t*>);
}

TEST(TextRef, IsAnEmptyTextUntilItIsTold) {
  const CTextRef none;
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(none.size(), 0U);
  EXPECT_EQ(none, L"");
  EXPECT_EQ(none, CTextRef());
  EXPECT_EQ(std::wstring(none), L"");
}

TEST(TextRef, FollowsItsText) {
  std::wstring text = L"DN25";
  const CTextRef ref = text;
  EXPECT_EQ(&ref.Text(), &text);
  text = L"DN32";
  EXPECT_EQ(ref, L"DN32");
  EXPECT_EQ(ref.size(), 4U);
  EXPECT_EQ(std::wstring_view(ref), L"DN32");
}

TEST(TextRef, ComparesTextsNotPlaces) {
  const std::wstring a = L"a";
  const std::wstring alsoA = L"a";
  const std::wstring b = L"b";
  EXPECT_EQ(CTextRef(a), CTextRef(alsoA));
  EXPECT_EQ(CTextRef(a), alsoA);
  EXPECT_NE(CTextRef(a), CTextRef(b));
  EXPECT_LT(CTextRef(a), CTextRef(b));
}

}  // namespace
