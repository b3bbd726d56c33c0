#include "report_mng/result_config.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/fake_platform.h"

namespace {

using tally_test::CFakePrivateProfile;
using tally_test::CFakeProfile;
using tally_test::TInstalled;

const CFakePrivateProfile::Place kPlace{L"C:\\config\\ReportConfig.ini", L"ReportConfig",
                                        L"LineSortUp"};

class ResultConfig : public testing::Test {
 protected:
  /// The one object is made here, while the file says FALSE.
  static void SetUpTestSuite() {
    const TInstalled<IKorAppProfile, CFakeProfile> profile;
    const TInstalled<IPrivateProfile, CFakePrivateProfile> file;
    file->values[kPlace] = L"FALSE";
    downAtFirst = CResultConfig::Instance()->GetLineSortDowm();
    readsAtFirst = file->reads;
    CResultConfig::Instance();
    readsAtSecond = file->reads;
  }

  ~ResultConfig() override { CResultConfig::Instance()->SetLineSortDowm(true); }

  /// The flag after it was read from a file with this value.
  bool Loaded(const std::wstring& value) {
    privateProfile->values[kPlace] = value;
    config.LoadConfig();
    return config.GetLineSortDowm();
  }

  static inline bool downAtFirst = true;
  static inline int readsAtFirst = 0;
  static inline int readsAtSecond = 0;

  TInstalled<IKorAppProfile, CFakeProfile> profile;
  TInstalled<IPrivateProfile, CFakePrivateProfile> privateProfile;
  CResultConfig& config = *CResultConfig::Instance();
};

TEST_F(ResultConfig, IsReadOnceWhenItIsMade) {
  EXPECT_FALSE(downAtFirst);
  EXPECT_EQ(readsAtFirst, 1);
  EXPECT_EQ(readsAtSecond, 1);
}

TEST_F(ResultConfig, SortsDownWithoutAFile) {
  config.SetLineSortDowm(false);
  config.LoadConfig();
  EXPECT_TRUE(config.GetLineSortDowm());
}

TEST_F(ResultConfig, SortsUpByAnyValueThatIsNotEmpty) {
  EXPECT_FALSE(Loaded(L"FALSE"));
  EXPECT_TRUE(Loaded(L""));
  EXPECT_FALSE(Loaded(L"TRUE"));
  EXPECT_FALSE(Loaded(L"0"));
}

TEST_F(ResultConfig, KeepsTheFlagInMemoryUntilItIsSaved) {
  config.SetLineSortDowm(false);
  EXPECT_FALSE(config.GetLineSortDowm());
  EXPECT_EQ(privateProfile->writes, 0);
  config.SaveConfig();
  config.SetLineSortDowm(true);
  config.LoadConfig();
  EXPECT_FALSE(config.GetLineSortDowm());
}

TEST_F(ResultConfig, SavesAnEmptyValueOrFalse) {
  config.SetLineSortDowm(false);
  config.SaveConfig();
  EXPECT_EQ(privateProfile->values.at(kPlace), L"FALSE");
  config.SetLineSortDowm(true);
  config.SaveConfig();
  EXPECT_EQ(privateProfile->values.at(kPlace), L"");
  EXPECT_EQ(privateProfile->values.size(), 1U);
}

TEST_F(ResultConfig, LooksInTheApplicationsFolder) {
  profile->folder = L"/home/me/.config/tally";
  config.SaveConfig();
  EXPECT_EQ(privateProfile->values.begin()->first,
            (CFakePrivateProfile::Place{L"/home/me/.config/tally\\ReportConfig.ini",
                                        L"ReportConfig", L"LineSortUp"}));
}

TEST_F(ResultConfig, DoesNotMindAWriteThatFails) {
  privateProfile->writesFail = true;
  config.SetLineSortDowm(false);
  config.SaveConfig();
  EXPECT_EQ(privateProfile->writes, 1);
  EXPECT_FALSE(config.GetLineSortDowm());
}

TEST_F(ResultConfig, KnowsTheDeepestLevelOfEachReport) {
  const std::pair<int, int> cases[] = {{0, 5},  {1, 5},  {2, 0},  {3, 0},  {4, 5},
                                       {5, 4},  {6, 6},  {7, 6},  {8, 6},  {9, 6},
                                       {10, 7}, {11, 6}, {12, 0}, {99, 0}, {-1, 0}};
  for (const auto& [type, level] : cases) {
    EXPECT_EQ(config.GetReportMaxLevel(static_cast<Report::EReportType>(type)), level) << type;
  }
}

}  // namespace
