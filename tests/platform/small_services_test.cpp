#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/app_profile.h"
#include "platform/message_box.h"
#include "platform/portable/chapter_prefix_table.h"
#include "platform/portable/id_positions.h"
#include "platform/portable/portable_app_profile.h"
#include "platform/text_tool.h"

namespace {

std::vector<std::wstring> SplitAtBackslash(const std::wstring& text) {
  std::vector<std::wstring> parts;
  ITextTool::MakePortable()->Split(text, parts, L'\\');
  return parts;
}

TEST(PortableTextTool, KeepsEmptyComponents) {
  using Parts = std::vector<std::wstring>;
  EXPECT_EQ(SplitAtBackslash(L""), Parts{});
  EXPECT_EQ(SplitAtBackslash(L"a"), Parts{L"a"});
  EXPECT_EQ(SplitAtBackslash(L"a\\\\b"), (Parts{L"a", L"", L"b"}));
  EXPECT_EQ(SplitAtBackslash(L"a\\"), (Parts{L"a", L""}));
  EXPECT_EQ(SplitAtBackslash(L"\\"), (Parts{L"", L""}));
}

TEST(PortableTextTool, AppendsBehindWhatIsThere) {
  std::vector<std::wstring> parts = {L"kept"};
  ITextTool::MakePortable()->Split(L"a&b", parts, L'&');
  EXPECT_EQ(parts, (std::vector<std::wstring>{L"kept", L"a", L"b"}));
}

TEST(PortableMessageBox, WritesOneLineToStandardError) {
  testing::internal::CaptureStderr();
  IMessageBox::MakePortable()->Show(L"版本\r\nold", L"Korvane", 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\xE7\x89\x88\xE6\x9C\xAC  old\n");
}

TEST(KorVersion, ComparesByNumber) {
  const CKorVersion& current = KorProfile::g_Version_16_2_0;
  EXPECT_FALSE(current < current);
  EXPECT_TRUE(CKorVersion(L"16.1.9") < current);
  EXPECT_TRUE(CKorVersion(L"9.9.9") < current);
  EXPECT_FALSE(CKorVersion(L"16.2") < current);
  EXPECT_FALSE(current < CKorVersion(L"16.2"));
  EXPECT_TRUE(current < CKorVersion(L"16.2.0.1"));
  EXPECT_FALSE(CKorVersion(L"16.10.0") < current);
  EXPECT_TRUE(CKorVersion(L"") < current);
  EXPECT_TRUE(CKorVersion(L"x.y") < current);
  EXPECT_TRUE(CKorVersion(L"16. 1x.7") < current);
  EXPECT_FALSE(CKorVersion(L"99999999999.0") < current);
  EXPECT_EQ(CKorVersion(L" 16.2.0 beta").ToString(), L" 16.2.0 beta");
}

class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* before = getenv(name)) {
      before_ = before;
    }
    Set(value);
  }
  ~Environment() { Set(before_ ? before_->c_str() : nullptr); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  void Set(const char* value) {
    if (value == nullptr) {
      unsetenv(name_);
    } else {
      setenv(name_, value, 1);
    }
  }
  const char* name_;
  std::optional<std::string> before_;
};

std::wstring DefaultFolder(const char* configuration, const char* home) {
  const Environment first("XDG_CONFIG_HOME", configuration);
  const Environment second("HOME", home);
  return IKorAppProfile::MakePortable()->GetConfigFolder();
}

TEST(PortableAppProfile, LiesInTheUsersConfigurationFolder) {
  EXPECT_EQ(DefaultFolder("/conf/\xE7\xAE\xA1/", "/home/me"), L"/conf/管/tally");
  EXPECT_EQ(DefaultFolder("relative", "/home/me/"), L"/home/me/.config/tally");
  EXPECT_EQ(DefaultFolder(nullptr, "/"), L"/.config/tally");
  EXPECT_EQ(DefaultFolder("", ""), L".");
  EXPECT_EQ(DefaultFolder(nullptr, nullptr), L".");
}

TEST(PortableAppProfile, CutsSeparatorsFromAHostsFolder) {
  EXPECT_EQ(IKorAppProfile::MakePortable(L"/a/b\\/")->GetConfigFolder(), L"/a/b");
  EXPECT_EQ(IKorAppProfile::MakePortable(L"/")->GetConfigFolder(), L"");
  EXPECT_EQ(IKorAppProfile::MakePortable(L"x")->GetVersion().ToString(), L"16.2.0");
}

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();

TEST(IdPositions, KeepsNearAndFarIdsAlike) {
  for (const std::vector<std::int64_t>& column :
       {std::vector<std::int64_t>{7, 5, 7, -2}, {kLeast, kGreatest, 0, 0}, {kGreatest}, {}}) {
    CIdPositions positions(column);
    for (const std::int64_t id : column) {
      EXPECT_EQ(positions.Position(id), -1);
    }
    int next = 0;
    for (const std::int64_t id : column) {
      next += positions.Place(id, next) ? 1 : 0;
    }
    EXPECT_EQ(positions.Count(), static_cast<std::size_t>(next));
    EXPECT_FALSE(positions.Place(6, 9));
    EXPECT_EQ(positions.Position(6), -1);
    if (!column.empty()) {
      EXPECT_EQ(positions.Position(column[0]), 0);
      EXPECT_EQ(positions.Position(column.back()), column.size() == 1 ? 0 : 2);
    }
  }
}

TEST(ChapterPrefixTable, TakesTheFirstOfEqualPrefixes) {
  const CChapterPrefixTable table({{L"b", 1, L"first"}, {L"a", 2, L""}, {L"b", 3, L"second"}});
  ASSERT_NE(table.Find(L"bc"), nullptr);
  EXPECT_EQ(table.Find(L"bc")->number, 1);
  EXPECT_EQ(table.Find(L"c"), nullptr);
  EXPECT_EQ(table.Find(L""), nullptr);
  EXPECT_EQ(CChapterPrefixTable().Find(L"a"), nullptr);
}

TEST(ChapterPrefixTable, AgreesWithALookAtEveryPrefix) {
  std::uint32_t state = 7;
  const auto text = [&state] {
    std::wstring made;
    state = state * 1664525 + 1013904223;
    for (std::uint32_t bits = state >> 16, i = 0; i < (state >> 8) % 6; ++i, bits /= 3) {
      made.push_back(static_cast<wchar_t>(L'a' + bits % 3));
    }
    return made;
  };
  for (int round = 0; round < 300; ++round) {
    std::vector<SPrefixChapter> chapters;
    for (int i = 0; i < 12; ++i) {
      chapters.push_back({text(), i, L""});
    }
    const CChapterPrefixTable table(chapters);
    for (int i = 0; i < 20; ++i) {
      const std::wstring code = text();
      const SPrefixChapter* expected = nullptr;
      for (const SPrefixChapter& chapter : chapters) {
        if (code.starts_with(chapter.prefix) &&
            (expected == nullptr || chapter.prefix.size() > expected->prefix.size())) {
          expected = &chapter;
        }
      }
      const SPrefixChapter* found = table.Find(code);
      ASSERT_EQ(found != nullptr, expected != nullptr);
      if (found != nullptr) {
        EXPECT_EQ(found->number, expected->number);
      }
    }
  }
}

}  // namespace
