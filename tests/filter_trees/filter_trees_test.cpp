#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "filter_trees/category_tree.h"
#include "filter_trees/floor_tree.h"
#include "filter_trees/sys_code_tree.h"
#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::EDbRead;
using Names = std::vector<std::wstring>;
using SpecTextMap = CSpecTextTree::SpecTextMap;

class FilterTrees : public tally_test::TallyTest {
 protected:
  template <class TTree>
  static TTree& Tree(Report::ETreeType type) {
    return dynamic_cast<TTree&>(*CReportMng::Instance()->GetTreeData(type));
  }
  static Names Floors() {
    Names names;
    for (const auto& floor : Tree<CFloorTree>(Report::TreeFloor).GetFloorData()) {
      EXPECT_TRUE(floor.GetResult().Empty());
      names.push_back(floor.GetFloorName());
    }
    return names;
  }
  static SpecTextMap SysCodes() {
    SpecTextMap map{{L"before", {L"x"}}};
    Tree<CSysCodeTree>(Report::TreeSysCode).GetSysCodeMap(map);
    return map;
  }
  static SpecTextMap Categories() {
    SpecTextMap map{{L"before", {L"x"}}};
    Tree<CCategoryTree>(Report::TreeCategory).GetCategoryMap(map);
    return map;
  }
};

TEST_F(FilterTrees, AnEmptyProjectHasEmptyTrees) {
  EXPECT_EQ(Floors(), Names{});
  EXPECT_EQ(SysCodes(), SpecTextMap{});
  EXPECT_EQ(Categories(), SpecTextMap{});
}

TEST_F(FilterTrees, FloorsStandByTheHeightOfTheirNames) {
  Open(CTinyProject()
           .Floor(L"10", L"1")
           .Floor(L"2", L"9")
           .Floor(L"-1", L"-1")
           .Floor(L"2,5", L"2,5")
           .Floor(L"基础层", L"0"));
  EXPECT_EQ(Floors(), (Names{L"基础层", L"-1", L"2,5", L"2", L"10"}));
}

TEST_F(FilterTrees, OfFloorsThatCompareEqualTheFirstReadStays) {
  Open(CTinyProject()
           .Floor(L"屋面层", L"9")
           .Floor(L"2层", L"2")
           .Floor(L"2", L"2")
           .Floor(L"基础层", L"0"));
  EXPECT_EQ(Floors(), (Names{L"屋面层", L"2层"}));
}

TEST_F(FilterTrees, FloorsAreBuiltAnewByASecondFold) {
  Open(CTinyProject().Floor(L"1", L"1"));
  CFloorTree& tree = Tree<CFloorTree>(Report::TreeFloor);
  tree.CreatData();
  EXPECT_EQ(Floors(), (Names{L"1"}));
  tree.Clear();
  EXPECT_TRUE(tree.GetFloorData().empty());
}

TEST_F(FilterTrees, SystemCodesKeepTheirFormAndAreCompleted) {
  Open(CTinyProject()
           .SysCodeSort(L"给排水", L"B&C", 2)
           .SysCodeSort(L"电气", L"A", 3)
           .SysCodeSort(L"给排水", L"A&B&C", 1)
           .SysCodeSort(L"给排水", L"B&C", 4)
           .SysCodeSort(L"消防", L"", 5));
  EXPECT_EQ(SysCodes(), (SpecTextMap{{L"给排水", {L"B&C&*C", L"A&B&C", L"B&C&*C"}},
                                     {L"电气", {L"A&*A"}},
                                     {L"消防", {L""}}}));
}

TEST_F(FilterTrees, KindsStandInReadOrderWithTheirRepeats) {
  Open(CTinyProject()
           .KindSort(L"给排水", L"管道\\给水管", 2)
           .KindSort(L"电气", L"管线\\导管", 3)
           .KindSort(L"给排水", L"管道\\排水管", 1)
           .KindSort(L"给排水", L"管道\\给水管", 4));
  EXPECT_EQ(Categories(),
            (SpecTextMap{{L"给排水", {L"管道\\给水管", L"管道\\排水管", L"管道\\给水管"}},
                         {L"电气", {L"管线\\导管"}}}));
}

TEST_F(FilterTrees, MapsAreReplacedAndDoNotGrow) {
  Open(CTinyProject().SysCodeSort(L"给排水", L"A", 1).KindSort(L"给排水", L"管道\\给水管", 1));
  SpecTextMap map;
  Tree<CSysCodeTree>(Report::TreeSysCode).GetSysCodeMap(map);
  Tree<CSysCodeTree>(Report::TreeSysCode).GetSysCodeMap(map);
  EXPECT_EQ(map, (SpecTextMap{{L"给排水", {L"A&*A"}}}));
  Tree<CCategoryTree>(Report::TreeCategory).GetCategoryMap(map);
  Tree<CCategoryTree>(Report::TreeCategory).GetCategoryMap(map);
  EXPECT_EQ(map, (SpecTextMap{{L"给排水", {L"管道\\给水管"}}}));
}

TEST_F(FilterTrees, MapsAreCopies) {
  Open(CTinyProject().SysCodeSort(L"给排水", L"A", 1));
  SysCodes()[L"给排水"].clear();
  EXPECT_EQ(SysCodes().at(L"给排水").size(), 1U);
}

TEST_F(FilterTrees, ClearEmptiesTheMaps) {
  Open(CTinyProject().SysCodeSort(L"给排水", L"A", 1).KindSort(L"给排水", L"a\\b", 1));
  EXPECT_EQ(SysCodes().size(), 1U);
  EXPECT_EQ(Categories().size(), 1U);
  Tree<CSysCodeTree>(Report::TreeSysCode).Clear();
  Tree<CCategoryTree>(Report::TreeCategory).Clear();
  EXPECT_TRUE(SysCodes().empty());
  EXPECT_TRUE(Categories().empty());
}

TEST_F(FilterTrees, StandUntilTheProjectChanges) {
  Open(CTinyProject().Floor(L"1", L"1"));
  EXPECT_EQ(Floors(), (Names{L"1"}));
  Open(CTinyProject().Floor(L"2", L"2"));
  EXPECT_EQ(Floors(), (Names{L"2"}));
}

TEST_F(FilterTrees, TouchNoResultSet) {
  Open(CTinyProject().Floor(L"1", L"1"));
  db->ForgetReads();
  Floors();
  SysCodes();
  Categories();
  EXPECT_TRUE(db->reads.empty());
}

}  // namespace
