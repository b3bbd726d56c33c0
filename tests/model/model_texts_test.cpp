// The engine's text rules beside the models', on texts that random characters make.
#include "model/model_texts.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "model/model_comparison.h"
#include "model/model_tables.h"
#include "model/random_project.h"
#include "platform/portable/utf8_text.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/report_type_data.h"
#include "result_store/report_xhl_gl_type_data.h"
#include "support/tally_test_fixture.h"

namespace {

using tally_model::CRandom;
using Method = CReportDataMethod;

constexpr int kRounds = 20000;

std::wstring RandomText(CRandom& random, const std::wstring& alphabet, int longest) {
  std::wstring text;
  const int length = random.Between(0, longest);
  for (int i = 0; i < length; ++i) {
    text += alphabet[static_cast<std::size_t>(random.Below(static_cast<int>(alphabet.size())))];
  }
  return text;
}

class ModelTexts : public tally_test::TallyTest {
 protected:
  CRandom random_{20240131};
};

TEST_F(ModelTexts, CountTheFloorsThatTheEngineExpands) {
  for (int i = 0; i < kRounds; ++i) {
    const std::wstring text = RandomText(random_, L"012/,，／-+ ea", 7);
    Report::CellArray floors;
    const int count = tally_model::FloorCount(text);
    EXPECT_EQ(Method::GetFloorCount(text), count) << Utf8FromWide(text);
    if (count < 1000) {
      Method::GetIsBzcContainFloorAry(floors, text);
      EXPECT_EQ(floors.size(), static_cast<std::size_t>(count)) << Utf8FromWide(text);
    }
  }
}

TEST_F(ModelTexts, GradeFloorsAsTheEngineDoes) {
  for (int i = 0; i < kRounds; ++i) {
    const std::wstring text = RandomText(random_, L"0129.eE-+,，/／ \tx", 9);
    EXPECT_EQ(CFloorResultData::CalFloorGrade(text), tally_model::FloorGrade(text))
        << Utf8FromWide(text);
  }
}

TEST_F(ModelTexts, OrderFloorsAsTheEngineDoes) {
  for (int i = 0; i < kRounds; ++i) {
    const std::wstring a = RandomText(random_, L"019.e-,/", 4);
    const std::wstring b = RandomText(random_, L"019.e-,/", 4);
    EXPECT_EQ(CFloorResultData(a) < CFloorResultData(b),
              (tally_model::SFloorBlock{a, {}} < tally_model::SFloorBlock{b, {}}))
        << Utf8FromWide(a) << " " << Utf8FromWide(b);
  }
}

TEST_F(ModelTexts, CompareAttributesAsTheEngineDoes) {
  for (const int codePage : {936, 65001, 1252}) {
    ASSERT_TRUE(ICodePage::Instance()->SetThreadCodePage(codePage));
    for (int i = 0; i < kRounds; ++i) {
      const std::wstring a = RandomText(random_, L"019. DNb管甲é", 6);
      const std::wstring b = RandomText(random_, L"019. DNb管甲é", 6);
      for (const bool ascending : {false, true}) {
        EXPECT_EQ(Method::AttSort(a, b, ascending), tally_model::AttSort(a, b, ascending))
            << Utf8FromWide(a) << " " << Utf8FromWide(b);
        EXPECT_EQ(CAttResultData(!ascending, L"", a, {}) < CAttResultData(!ascending, L"", b, {}),
                  (tally_model::SAttBlock{!ascending, L"", a, {}} <
                   tally_model::SAttBlock{!ascending, L"", b, {}}))
            << Utf8FromWide(a) << " " << Utf8FromWide(b);
      }
    }
  }
}

TEST_F(ModelTexts, TakeSystemCodesApartAsTheEngineDoes) {
  for (int i = 0; i < kRounds; ++i) {
    const std::wstring code = RandomText(random_, L"AB\\\\*", 8);
    EXPECT_EQ(Method::GetSysCodeName(code), tally_model::CompletedSysCode(code));
    for (int level = -1; level <= 5; ++level) {
      EXPECT_EQ(Method::GetSysCodeLevelName(code, level), tally_model::SysCodeAtLevel(code, level))
          << Utf8FromWide(code) << " " << level;
    }
    std::vector<std::set<std::wstring, std::less<>>> levels;
    Method::GetFJSysCodeVec({code, L"C"}, levels);
    const std::vector<std::set<std::wstring>> expected = tally_model::NamesByLevel({code, L"C"});
    ASSERT_EQ(levels.size(), expected.size());
    for (std::size_t level = 0; level < levels.size(); ++level) {
      EXPECT_EQ(std::set<std::wstring>(levels[level].begin(), levels[level].end()),
                expected[level]);
    }
  }
}

TEST_F(ModelTexts, ReadAttributeLinesAsTheEngineDoes) {
  for (int i = 0; i < kRounds; ++i) {
    const std::wstring text = RandomText(random_, L"ab::\n", 10);
    const std::wstring key = RandomText(random_, L"ab:", 2);
    std::wstring value = L"before";
    std::wstring line;
    std::wstring modelValue = L"before";
    EXPECT_EQ(Method::GetAttParamValue(value, line, text, key),
              tally_model::PrefixValue(modelValue, text, key))
        << Utf8FromWide(text);
    EXPECT_EQ(value, modelValue);
    const tally_model::Texts lines = tally_model::SplitText(text, L'\n');
    EXPECT_EQ(Method::GetValue(lines, key), tally_model::LineValue(lines, key))
        << Utf8FromWide(text);
  }
}

TEST_F(ModelTexts, ClassifyKindsAsTheEngineDoes) {
  // Every kind of many projects under every discipline.
  std::set<std::wstring> specs;
  std::vector<KorDMRec::SKorDMCategoryRec> categories;
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    const tally_model::SModelProject project = tally_model::MakeRandomProject(seed);
    specs.insert(project.pools.specs.begin(), project.pools.specs.end());
    categories.insert(categories.end(), project.pools.categories.begin(),
                      project.pools.categories.end());
  }
  for (const std::wstring& spec : specs) {
    for (const auto& record : categories) {
      const std::wstring& category = record.category;
      const std::wstring& kind = record.kind;
      EXPECT_EQ(CReportTypeData::Instance()->IsPipeType(spec, category, kind),
                tally_model::IsPipeType(spec, category, kind));
      EXPECT_EQ(CReportTypeData::Instance()->GetCategoryType(spec, category, kind),
                tally_model::BookType(spec, category, kind));
      EXPECT_EQ(CReportMainCalItemData::Instance()->GetMainCalItem(spec, category, kind),
                tally_model::MainCalItem(spec, category, kind));
      const tally_model::SOverviewGroup* group = tally_model::OverviewGroup(spec, category, kind);
      EXPECT_EQ(CReportXHlGlTypeData::Instance()->GetCategoryType(spec, category, kind),
                group == nullptr ? kind : group->name);
    }
  }
}

}  // namespace
