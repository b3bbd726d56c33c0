#include "reports/shared/floor_blocks.h"

#include <gtest/gtest.h>

#include <deque>
#include <set>
#include <string>
#include <utility>

#include "report_model/report_data_method.h"
#include "report_model/row_results.h"

namespace {

CCellBlock BlockOf(const std::wstring& text) {
  CCellBlock block;
  block.AddCells(CCellSource::Copied(text));
  return block;
}

TEST(FloorBlocks, StandInTheOrderOfASetOfFloors) {
  const Report::CellArray names{L"10", L"2", L"-1", L"1-3", L"1",   L"roof", L"0",
                                L"01", L"2", L"-2", L"1/5", L"1,4", L"3.5",  L"3"};
  std::deque<KorDMRec::SKorDMFloorRec> records;
  Report::NodeMap nodes;
  std::set<CFloorResultData> set;
  CFloorBlocks blocks;
  int number = 0;
  for (const std::wstring& name : names) {
    KorDMRec::SKorDMFloorRec& record = records.emplace_back();
    record.name = name;
    const std::wstring text = name + L" " + std::to_wstring(number++);
    CFloorResultData element(name);
    element.SetResult(BlockOf(text));
    PutBlock(set, std::move(element));
    blocks.Put(*CReportDataMethod::GetFloor(nodes, record), name, BlockOf(text));
  }
  CCellBlock expected;
  CReportDataMethod::ChangeFloorResult(expected, std::move(set));
  CCellBlock out;
  blocks.MoveTo(out);
  EXPECT_LT(expected.Size(), names.size());
  EXPECT_EQ(out.Cells(), expected.Cells());
}

TEST(FloorBlocks, GoByTheTextTheyArePutUnder) {
  KorDMRec::SKorDMFloorRec record;
  record.name = L"1-3";
  Report::NodeMap nodes;
  const CReportFloor& node = *CReportDataMethod::GetFloor(nodes, record);
  CFloorBlocks blocks;
  blocks.Put(node, L"3", BlockOf(L"third"));
  blocks.Put(node, L"2", BlockOf(L"second"));
  blocks.Put(node, L"3", BlockOf(L"third again"));
  CCellBlock out;
  blocks.MoveTo(out);
  EXPECT_EQ(out.Cells(), (Report::CellArray{L"second", L"third"}));
  CCellBlock none;
  blocks.MoveTo(none);
  EXPECT_TRUE(none.Empty());
}

}  // namespace
