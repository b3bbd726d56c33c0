#include "report_model/row_results.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "report_model/report_data_method.h"
#include "support/tally_test_fixture.h"

namespace {

using Report::CellArray;
using Method = CReportDataMethod;

CCellBlock Block(const std::wstring& cell) {
  return CCellBlock(CellArray{cell});
}

/// The cells that a set's blocks flatten to, behind one that was there before.
template <class TRecord>
CellArray Flat(std::set<TRecord>&& blocks) {
  CCellBlock out = Block(L"before");
  TakeBlocks(out, std::move(blocks));
  return out.Cells();
}

/// The blocks of a sequence of floors, each named by its floor.
CellArray Floors(const CellArray& names) {
  std::set<CFloorResultData> blocks;
  for (const std::wstring& name : names) {
    CFloorResultData floor(name);
    floor.SetResult(CellArray{name});
    PutBlock(blocks, std::move(floor));
  }
  return Flat(std::move(blocks));
}

/// Attribute blocks of the given names, put in in this order.
CellArray Attributes(bool largerFirst, const CellArray& names) {
  std::set<CAttResultData> blocks;
  for (const std::wstring& name : names) {
    PutBlock(blocks, CAttResultData(largerFirst, L"", name, Block(name)));
  }
  return Flat(std::move(blocks));
}

class RowResults : public tally_test::TallyTest {};

TEST_F(RowResults, FloorGradeRisesWithHeight) {
  const std::pair<std::wstring, int> cases[] = {
      {L"1", 100},     {L"2", 200},        {L"-1", -100},    {L"1.5", 150},   {L"-0.5", -50},
      {L"2,5", 199},   {L"2，5", 199},     {L"2/4", 199},    {L"2／4", 199},  {L"1,3", 99},
      {L"-1,2", -101}, {L"2层", 200},      {L" 3", 300},     {L"1.15", 114},  {L"1.999", 199},
      {L"1e2", 10000}, {L"0.009", -10000}, {L"0", -10000},   {L"", -10000},   {L"屋面", -10000},
      {L",3", -10001}, {L"/3", -10001},    {L"0,2", -10001}, {L"B1", -10000},
  };
  for (const auto& [name, grade] : cases) {
    EXPECT_EQ(CFloorResultData::CalFloorGrade(name), grade) << testing::PrintToString(name);
  }
}

TEST_F(RowResults, FloorGradeTakesTheCommaBeforeTheSlash) {
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"1/2,3"), 99);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"/2,3"), -10001);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L",2/3"), -10001);
}

TEST_F(RowResults, FloorGradeSaturates) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"99999999999"), kHighest);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"99999999999,1"), kHighest - 1);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"-99999999999"), kLowest);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"-99999999999,1"), kLowest);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"1e400"), kHighest);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"-1e400/2"), kLowest);
  EXPECT_EQ(CFloorResultData::CalFloorGrade(L"21474836.47"), kHighest);
}

TEST_F(RowResults, FloorStartsWithoutNameAndBlock) {
  const CFloorResultData floor;
  EXPECT_EQ(floor.GetSortId(), 0);
  EXPECT_EQ(floor.GetFloorName(), L"");
  EXPECT_TRUE(floor.GetResult().Empty());
}

TEST_F(RowResults, FloorKeepsNameGradeAndBlock) {
  CFloorResultData floor(L"2,5");
  EXPECT_EQ(floor.GetFloorName(), L"2,5");
  EXPECT_EQ(floor.GetSortId(), 199);
  EXPECT_TRUE(floor.GetResult().Empty());
  floor.SetResult(CellArray{L"old", L"old"});
  floor.SetResult(CellArray{L"new"});
  EXPECT_EQ(floor.GetResult().Cells(), (CellArray{L"new"}));
  const CFloorResultData copy = floor;
  floor.SetFloor(L"3");
  EXPECT_EQ(floor.GetSortId(), 300);
  EXPECT_EQ(copy.GetFloorName(), L"2,5");
  EXPECT_EQ(copy.GetResult().Cells(), (CellArray{L"new"}));
}

TEST_F(RowResults, FloorsStandFromTheLowestUp) {
  EXPECT_EQ(Floors({L"2", L"10", L"1", L"1,3", L"-1", L"0", L"1.5", L"屋面"}),
            (CellArray{L"before", L"0", L"-1", L"1,3", L"1", L"1.5", L"2", L"10"}));
}

TEST_F(RowResults, FloorsOfOneGradeGoByTheirLeadingInteger) {
  EXPECT_EQ(Floors({L"2,5", L"1.99"}), (CellArray{L"before", L"1.99", L"2,5"}));
}

TEST_F(RowResults, OfFloorsThatCompareEqualTheFirstStays) {
  EXPECT_EQ(Floors({L"屋面", L"地下", L"0"}), (CellArray{L"before", L"屋面"}));
  EXPECT_EQ(Floors({L"-0,2", L"x/2"}), (CellArray{L"before", L"-0,2"}));
  EXPECT_EQ(Floors({L"2层", L"2"}), (CellArray{L"before", L"2层"}));
  EXPECT_EQ(Floors({L"1.5", L"1.504"}), (CellArray{L"before", L"1.5"}));
}

template <class TRecord>
CellArray NumberedBlocks() {
  std::set<TRecord> blocks;
  EXPECT_TRUE(PutBlock(blocks, TRecord(7, L"b", Block(L"seven"))));
  EXPECT_FALSE(PutBlock(blocks, TRecord(7, L"a", Block(L"seven again"))));
  EXPECT_TRUE(PutBlock(blocks, TRecord(-1, L"z", Block(L"minus one"))));
  EXPECT_TRUE(PutBlock(blocks, TRecord(1000000, L"", Block(L"unknown"))));
  return Flat(std::move(blocks));
}

TEST_F(RowResults, NumberedBlocksKeepTheFirstOfANumberWhateverTheName) {
  const CellArray expected{L"before", L"minus one", L"seven", L"unknown"};
  EXPECT_EQ(NumberedBlocks<CSysResultData>(), expected);
  EXPECT_EQ(NumberedBlocks<CTypeResultData>(), expected);
  EXPECT_EQ(NumberedBlocks<CCategoryResultData>(), expected);
  EXPECT_EQ(NumberedBlocks<CChapterData>(), expected);
}

/// Calculation item blocks of pairs of name and unit, each named "name/unit".
CellArray CalItems(const std::vector<std::pair<std::wstring, std::wstring>>& items) {
  std::set<CCalItemResultData> blocks;
  for (const auto& [name, unit] : items) {
    PutBlock(blocks, CCalItemResultData(name, unit, Block(name + L"/" + unit)));
  }
  return Flat(std::move(blocks));
}

TEST_F(RowResults, CalItemsGoByNameAndThenByUnit) {
  EXPECT_EQ(CalItems({{L"b", L"m"}, {L"a", L"m2"}, {L"a", L"m"}, {L"b", L"m"}}),
            (CellArray{L"before", L"a/m", L"a/m2", L"b/m"}));
}

TEST_F(RowResults, CalItemsStandInTheOrderOfTheCodePage) {
  EXPECT_EQ(CalItems({{L"一", L""}, {L"啊", L""}, {L"A", L""}}),
            (CellArray{L"before", L"A/", L"啊/", L"一/"}));
  ICodePage::Instance()->SetThreadCodePage(65001);
  EXPECT_EQ(CalItems({{L"一", L""}, {L"啊", L""}, {L"A", L""}}),
            (CellArray{L"before", L"A/", L"一/", L"啊/"}));
}

TEST_F(RowResults, CalItemsOfUnlikeNamesThatNarrowAlikeAreEqualWhateverTheUnit) {
  EXPECT_EQ(CalItems({{L"ก", L"m"}, {L"ข", L"a"}}), (CellArray{L"before", L"ก/m"}));
  EXPECT_EQ(CalItems({{L"ก", L"m"}, {L"ก", L"a"}}), (CellArray{L"before", L"ก/a", L"ก/m"}));
}

TEST_F(RowResults, AttributesSortSizesByTheFlag) {
  EXPECT_EQ(Attributes(false, {L"100", L"25", L"DN20", L"DN8"}),
            (CellArray{L"before", L"25", L"100", L"DN8", L"DN20"}));
  EXPECT_EQ(Attributes(true, {L"25", L"100", L"DN20", L"DN8"}),
            (CellArray{L"before", L"100", L"25", L"DN20", L"DN8"}));
}

TEST_F(RowResults, AttributesSortWithoutBlanks) {
  EXPECT_EQ(Attributes(false, {L"D N 100", L"DN25", L" DN 50"}),
            (CellArray{L"before", L"DN25", L" DN 50", L"D N 100"}));
}

TEST_F(RowResults, AttributesPutChineseBeforeAscii) {
  EXPECT_EQ(Attributes(false, {L"A", L"一", L"1", L"啊"}),
            (CellArray{L"before", L"啊", L"一", L"1", L"A"}));
}

TEST_F(RowResults, AttributesOfOneNameGoByValue) {
  std::set<CAttResultData> blocks;
  PutBlock(blocks, CAttResultData(false, L"10", L"DN25", Block(L"10")));
  PutBlock(blocks, CAttResultData(false, L"9", L"DN25", Block(L"9")));
  PutBlock(blocks, CAttResultData(false, L"10", L"DN25", Block(L"10 again")));
  // As plain narrow text, not naturally.
  EXPECT_EQ(Flat(std::move(blocks)), (CellArray{L"before", L"10", L"9"}));
}

TEST_F(RowResults, AttributesOfUnlikeNamesThatCompareAlikeAreEqualWhateverTheValue) {
  std::set<CAttResultData> blocks;
  EXPECT_TRUE(PutBlock(blocks, CAttResultData(false, L"a", L"DN 25", Block(L"first"))));
  EXPECT_FALSE(PutBlock(blocks, CAttResultData(false, L"b", L"DN25", Block(L"second"))));
  EXPECT_EQ(Flat(std::move(blocks)), (CellArray{L"before", L"first"}));
}

// 1 and 1.0 each come before the other with the smaller first, and after the other with the larger
// first: so the later one stands ahead, or is not put in at all.
TEST_F(RowResults, AttributesOfOneValueInTwoTextsGoByTheirOrderOfArrival) {
  EXPECT_EQ(Attributes(false, {L"1", L"1.0"}), (CellArray{L"before", L"1.0", L"1"}));
  EXPECT_EQ(Attributes(false, {L"1.0", L"1"}), (CellArray{L"before", L"1", L"1.0"}));
  EXPECT_EQ(Attributes(true, {L"1", L"1.0"}), (CellArray{L"before", L"1"}));
  EXPECT_EQ(Attributes(true, {L"1.0", L"1"}), (CellArray{L"before", L"1.0"}));
}

TEST_F(RowResults, AttributesTakeAKeyThatWasMadeEarlier) {
  const auto key = std::make_shared<const SAttSortKey>(L"DN 25", L"v");
  std::set<CAttResultData> blocks;
  PutBlock(blocks, CAttResultData(false, key, Block(L"25")));
  PutBlock(blocks, CAttResultData(false, L"v", L"DN9", Block(L"9")));
  EXPECT_EQ(Flat(std::move(blocks)), (CellArray{L"before", L"9", L"25"}));
}

TEST_F(RowResults, CoatsGoByCategoryThenPaintThenCoat) {
  struct SCoat {
    int sortId;
    int coat;
    std::wstring paint;
  };
  const SCoat coats[] = {
      {2, 1, L"一"}, {1, 2, L"一"}, {1, 1, L"一"}, {1, 10, L"啊"}, {1, 1, L"一"}};
  std::set<CBrushPaintData> blocks;
  for (const auto& [sortId, coat, paint] : coats) {
    PutBlock(blocks,
             CBrushPaintData(sortId, coat, paint,
                             Block(std::to_wstring(sortId) + paint + std::to_wstring(coat))));
  }
  EXPECT_EQ(Flat(std::move(blocks)), (CellArray{L"before", L"1啊10", L"1一1", L"1一2", L"2一1"}));
}

TEST_F(RowResults, CoatsOfUnlikePaintsThatNarrowAlikeAreEqualWhateverTheCoat) {
  std::set<CBrushPaintData> blocks;
  EXPECT_TRUE(PutBlock(blocks, CBrushPaintData(1, 2, L"ก", Block(L"first"))));
  EXPECT_FALSE(PutBlock(blocks, CBrushPaintData(1, 1, L"ข", Block(L"second"))));
}

struct SItem {
  std::wstring code;
  std::wstring name;
  std::wstring feature;
  std::wstring unit;
};

CellArray Items(const std::vector<SItem>& items) {
  std::set<CQDDEData> blocks;
  for (const SItem& item : items) {
    PutBlock(blocks, CQDDEData(item.code, item.name, item.feature, item.unit,
                               Block(item.code + item.name + item.feature + item.unit)));
  }
  return Flat(std::move(blocks));
}

TEST_F(RowResults, BillItemsGoByCodeNaturallyThenByNameFeatureAndUnit) {
  EXPECT_EQ(Items({{L"8-10", L"a", L"a", L"a"},
                   {L"8-9", L"b", L"a", L"a"},
                   {L"8-9", L"a", L"b", L"a"},
                   {L"8-9", L"a", L"a", L"b"},
                   {L"8-9", L"a", L"a", L"a"},
                   {L"8-9", L"a", L"a", L"a"}}),
            (CellArray{L"before", L"8-9aaa", L"8-9aab", L"8-9aba", L"8-9baa", L"8-10aaa"}));
}

TEST_F(RowResults, BillItemsOfUnlikeCodesThatCompareAlikeAreEqualWhateverFollows) {
  EXPECT_EQ(Items({{L"8- 9", L"b", L"", L""}, {L"8-9", L"a", L"", L""}}),
            (CellArray{L"before", L"8- 9b"}));
}

TEST_F(RowResults, BillItemNamesAreNoNaturalOrder) {
  EXPECT_EQ(Items({{L"1", L"9", L"", L""}, {L"1", L"10", L"", L""}, {L"1", L"1 0", L"", L""}}),
            (CellArray{L"before", L"11 0", L"110", L"19"}));
}

TEST_F(RowResults, BillItemsOfUnlikeNamesThatNarrowAlikeAreEqualWhateverFollows) {
  EXPECT_EQ(Items({{L"1", L"ก", L"b", L""}, {L"1", L"ข", L"a", L""}}),
            (CellArray{L"before", L"1กb"}));
  EXPECT_EQ(Items({{L"1", L"n", L"ก", L"b"}, {L"1", L"n", L"ข", L"a"}}),
            (CellArray{L"before", L"1nกb"}));
}

/// Flattens two blocks and then an empty set by one of the Change operations.
template <class TRecord>
CellArray Changed(void (*change)(CCellBlock&, std::set<TRecord>&&), TRecord second, TRecord first) {
  std::set<TRecord> blocks;
  PutBlock(blocks, std::move(second));
  PutBlock(blocks, std::move(first));
  CCellBlock out = Block(L"before");
  change(out, std::move(blocks));
  change(out, {});
  return out.Cells();
}

TEST_F(RowResults, EveryFlatteningKeepsTheOrderAndAppends) {
  const CellArray expected{L"before", L"first", L"second"};
  const auto floor = [](const std::wstring& name, const std::wstring& cell) {
    CFloorResultData block(name);
    block.SetResult(CellArray{cell});
    return block;
  };
  EXPECT_EQ(Changed<CFloorResultData>(Method::ChangeFloorResult, floor(L"2", L"second"),
                                      floor(L"1", L"first")),
            expected);
  EXPECT_EQ(Changed<CFloorResultData>(Method::ChangeSysResult, floor(L"2", L"second"),
                                      floor(L"1", L"first")),
            expected);
  EXPECT_EQ(Changed<CSysResultData>(Method::ChangeSysResult, {2, L"", Block(L"second")},
                                    {1, L"", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CTypeResultData>(Method::ChangeTypeResult, {2, L"", Block(L"second")},
                                     {1, L"", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CCategoryResultData>(Method::ChangeCategoryResult, {2, L"", Block(L"second")},
                                         {1, L"", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CCalItemResultData>(Method::ChangeCalItemResult, {L"b", L"", Block(L"second")},
                                        {L"a", L"", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CAttResultData>(Method::ChangeAttResult, {false, L"", L"b", Block(L"second")},
                                    {false, L"", L"a", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CChapterData>(Method::ChangeChapterResult, {2, L"", Block(L"second")},
                                  {1, L"", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CBrushPaintData>(Method::ChangeBrushPaintResult, {2, 1, L"", Block(L"second")},
                                     {1, 1, L"", Block(L"first")}),
            expected);
  EXPECT_EQ(Changed<CQDDEData>(Method::ChangeQDDEResult, {L"2", L"", L"", L"", Block(L"second")},
                               {L"1", L"", L"", L"", Block(L"first")}),
            expected);
}

}  // namespace
