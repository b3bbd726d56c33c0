#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "bill_quota_fixture.h"
#include "reports/bill_quota/qd_de_hz_report.h"
#include "reports/bill_quota/qd_hz_report.h"

namespace {

using KorDMRec::SKorDMQdDeRow;
using tally_test::CTinyProject;
using tally_test::kSpec;
using tally_test::Lines;
using tally_test::Rows;
using tally_test::STinyQdDe;
using tally_test::STinyQdDeRow;

class BillSummary : public tally_test::BillQuotaTest {
 protected:
  static CQdHzReport& Qd() { return GetReport<CQdHzReport>(Report::ReportQdHz); }

  static Lines QdRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0) {
    Report::CellArray cells;
    Qd().GetQdHzData(cells, kSpec, condition, level, bySgd);
    return Rows(cells);
  }
};

// Levels.

TEST_F(BillSummary, Level0ShowsChaptersAndBills) {
  Open(Building());
  // Own items of several units are one bill, under the bill's unit.
  EXPECT_EQ(QdRows(0), (Lines{"@C|管道|8", "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11"}));
}

TEST_F(BillSummary, Level1AddsKindsAndAttributes) {
  Open(Building());
  const Lines expected{"@C|管道|8", "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11",
                       "@Cg|管道\\给水管", "@A|DN25||m|11"};
  EXPECT_EQ(QdRows(1), expected);
  // "Not 0" is all that these rows ask of the level.
  EXPECT_EQ(QdRows(-1), expected);
}

TEST_F(BillSummary, Level2AddsFloors) {
  Open(Building());
  EXPECT_EQ(QdRows(2), (Lines{
                           "@C|管道|8",
                           "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|11",
                           "@F|1,3|1,3|m|9",
                           "@F|1|1|m|2",
                       }));
}

TEST_F(BillSummary, Level3AddsFirstSystemCodes) {
  Open(Building());
  EXPECT_EQ(QdRows(3), (Lines{
                           "@C|管道|8",
                           "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|11",
                           "@F|1,3|1,3|m|9",
                           "@S1|A(alpha)|m|9|c2$$",
                           "@F|1|1|m|2",
                           "@S1|A(alpha)|m|2|c1$$",
                       }));
}

TEST_F(BillSummary, Level4AddsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(QdRows(4), (Lines{
                           "@C|管道|8",
                           "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|11",
                           "@F|1,3|1,3|m|9",
                           "@S1|A(alpha)|m|9|c2$$",
                           "@S2|B|m|9|c2$$",
                           "@F|1|1|m|2",
                           "@S1|A(alpha)|m|2|c1$$",
                           "@S2|*A(alpha)|m|2|c1$$",
                       }));
}

TEST_F(BillSummary, Level5AddsThirdSystemCodesAndDeeperLevelsButOneTheSame) {
  Open(Building());
  const Lines expected{
      "@C|管道|8",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11",
      "@Cg|管道\\给水管",
      "@A|DN25||m|11",
      "@F|1,3|1,3|m|9",
      "@S1|A(alpha)|m|9|c2$$",
      "@S2|B|m|9|c2$$",
      "@S3|*B|m|9|c2$$",
      "@F|1|1|m|2",
      "@S1|A(alpha)|m|2|c1$$",
      "@S2|*A(alpha)|m|2|c1$$",
  };
  EXPECT_EQ(QdRows(5), expected);
  EXPECT_EQ(QdRows(7), expected);
}

TEST_F(BillSummary, Level6AddsCalculationLines) {
  Open(Building());
  EXPECT_EQ(QdRows(6), (Lines{
                           "@C|管道|8",
                           "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|11",
                           "@Cg|管道\\给水管",
                           "@A|DN25||m|11",
                           "@F|1,3|1,3|m|9",
                           "@S1|A(alpha)|m|9|c2$$",
                           "@S2|B|m|9|c2$$",
                           "@S3|*B|m|9|c2$$",
                           "@L|回路1|(1+2)*3层|m|9|c2$$",
                           "@F|1|1|m|2",
                           "@S1|A(alpha)|m|2|c1$$",
                           "@S2|*A(alpha)|m|2|c1$$",
                           "@L|回路1|2|m|2|c1$$",
                       }));
}

TEST_F(BillSummary, CellsStandOneByOne) {
  CTinyProject project;
  project.QdDe().Row(OwnRow(Bill(L"0308"), 2));
  Open(project);
  ShowSections({L"一区"});
  Report::CellArray cells{L"kept"};
  Qd().GetQdHzData(cells, kSpec, {}, 6, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"kept", L"@P",
                                      L"一区", L"@C",
                                      L"管道", L"8",
                                      L"@QD",  L"0308",
                                      L"bill", L"材质: PPR\n连接: 热熔\n",
                                      L"m",    L"2",
                                      L"@Cg",  L"管道\\给水管",
                                      L"@A",   L"DN25",
                                      L"",     L"m",
                                      L"2",    L"@F",
                                      L"1",    L"1",
                                      L"m",    L"2",
                                      L"@S1",  L"A",
                                      L"m",    L"2",
                                      L"c1$$", L"@S2",
                                      L"*A",   L"m",
                                      L"2",    L"c1$$",
                                      L"@L",   L"回路1",
                                      L"e",    L"m",
                                      L"2",    L"c1$$"}));
}

// Which rows count.

TEST_F(BillSummary, QuotaRowsAddNothingToAnyNode) {
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 2))
      .Row(QuotaRow(Bill(L"0304"), {L"", L"", L"m", L"DE"}, 4));
  Open(project);
  EXPECT_EQ(QdRows(6), Lines{});
  project.QdDe().Row(OwnRow(Bill(L"0308"), 1)).Row(QuotaRow(Bill(L"0308"), Quota(L"8-1"), 8));
  Open(project);
  // The chapter of a bill with quotas alone is missing too.
  EXPECT_EQ(QdRows(0), (Lines{"@C|管道|8", "@QD|0308|bill|材质: PPR\n连接: 热熔\n|m|1"}));
}

TEST_F(BillSummary, TheBillsLibraryDecidesAndTheQuotasPlaysNoPart) {
  STinyQdDe foreign = Bill(L"0304");
  foreign.library = L"QD2";
  CTinyProject project;
  project.QdDe().Row(OwnRow(foreign, 1));
  Open(project);
  EXPECT_EQ(QdRows(6), Lines{});
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 2);
  row.deItem = {L"4-1", L"quota", L"m", L"elsewhere"};
  project.QdDe().Row(row);
  settings->qdDeMode = 1;
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|2"}));
}

TEST_F(BillSummary, ABillWithoutCodeAndNameHasItsRowLikeAnyOther) {
  CTinyProject project;
  project.QdDe().Row(OwnRow({L"", L"", L"t", L"QD"}, 2));
  Open(project);
  EXPECT_EQ(QdRows(1),
            (Lines{"@C|其他章|2147483647", "@QD||||t|2", "@Cg|管道\\给水管", "@A|DN25||t|2"}));
}

TEST_F(BillSummary, ABillsQuantityIsItsOwnInTheBillAndQuotaSummaryToo) {
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"0304"), 2))
      .Row(OwnRow(Bill(L"0304"), 3))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 50));
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|5"}));
  Report::CellArray cells;
  GetReport<CQdDeHzReport>(Report::ReportQdDeHz).GetQdDeHzData(cells, kSpec, {}, 0, 0);
  EXPECT_EQ(Rows(cells), QdRows(0));
}

// Order and equality.

TEST_F(BillSummary, BillsStandInNaturalOrderThenByNameFeatureAndUnit) {
  for (const wchar_t* code : {L"1-10", L"1-9", L"1 -9"}) {
    billLibrary->chapters[code] = {1, L"章"};
  }
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"1-10"), 1))
      .Row(OwnRow(Bill(L"1-9", L"一", L"m"), 2))
      .Row(OwnRow(Bill(L"1-9", L"一", L"kg"), 3))
      .Row(OwnRow(Bill(L"1-9", L"阿"), 4));
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|章|1", "@QD|1-9|阿||m|4", "@QD|1-9|一||kg|3", "@QD|1-9|一||m|2",
                              "@QD|1-10|bill||m|1"}));
  // A blank does not tell codes apart, and the code with the blank is met first.
  project.QdDe().Row(OwnRow(Bill(L"1 -9", L"z"), 5));
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|章|1", "@QD|1 -9|z||m|5", "@QD|1-10|bill||m|1"}));
}

TEST_F(BillSummary, OfChaptersWithOneNumberTheFirstInKeyOrderStays) {
  billLibrary->chapters = {{L"a", {5, L"B"}}, {L"b", {5, L"A"}}, {L"c", {10, L"C"}}};
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"unknown"), 8))
      .Row(OwnRow(Bill(L"a"), 1))
      .Row(OwnRow(Bill(L"b"), 2))
      .Row(OwnRow(Bill(L"c"), 4));
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|A|5", "@QD|b|bill||m|2", "@C|C|10", "@QD|c|bill||m|4",
                              "@C|其他章|2147483647", "@QD|unknown|bill||m|8"}));
}

TEST_F(BillSummary, BlocksDroppedByEqualSortNumbersStillCount) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  row.category = {L"管道", L"b"};
  project.QdDe().Row(row);
  row.category = {L"管道", L"a"};
  row.calItem = Item(2);
  row.sysCode = L"A\\z";
  project.QdDe().Row(row);
  row.sysCode = L"A\\y";
  row.calItem = Item(4);
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(QdRows(4), (Lines{"@C|电气|4", "@QD|0304|bill||m|7", "@Cg|管道\\a", "@A|DN25||m|6",
                              "@F|1|1|m|6", "@S1|A|m|6|c1$$c1$$", "@S2|y|m|4|c1$$"}));
}

TEST_F(BillSummary, AttributesStandInTheDirectionSetForPipes) {
  CTinyProject project;
  for (const wchar_t* name : {L"DN15", L"DN100", L"DN25"}) {
    STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
    row.attr = {name, L"v"};
    project.QdDe().Row(row);
  }
  Open(project);
  EXPECT_EQ(QdRows(1), (Lines{"@C|电气|4", "@QD|0304|bill||m|3", "@Cg|管道\\给水管",
                              "@A|DN100|v|m|1", "@A|DN25|v|m|1", "@A|DN15|v|m|1"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(QdRows(1), (Lines{"@C|电气|4", "@QD|0304|bill||m|3", "@Cg|管道\\给水管",
                              "@A|DN15|v|m|1", "@A|DN25|v|m|1", "@A|DN100|v|m|1"}));
}

// Filters, sections, requests.

TEST_F(BillSummary, FiltersSelectKindsFloorsAndCodes) {
  Open(Building());
  const auto quantityOf = [](const Report::SNewCondition& condition) {
    const Lines rows = QdRows(0, condition);
    return rows.empty() ? std::string() : rows.back().substr(rows.back().rfind('|') + 1);
  };
  Report::SNewCondition condition;
  EXPECT_EQ(quantityOf(condition), "11");
  condition.categories = {L"管"};
  EXPECT_EQ(quantityOf(condition), "11");
  // Each entry that selects a kind counts it once more.
  condition.categories = {L"管", L"管道\\给水管"};
  EXPECT_EQ(quantityOf(condition), "22");
  condition.categories = {L"附件", L"", L"管道\\给水管\\x"};
  EXPECT_EQ(quantityOf(condition), "");
  condition.categories.clear();
  condition.floors = {{L"1,3", L"2"}};
  EXPECT_EQ(quantityOf(condition), "3");
  condition.floors = {{L"1,3", L"2"}, {L"1,3", L"2"}, {L"1", L"1"}, {L"7", L"7"}};
  EXPECT_EQ(quantityOf(condition), "8");
  condition.floors.clear();
  condition.sysCodes = {L"A\\B"};
  EXPECT_EQ(quantityOf(condition), "9");
  condition.sysCodes = {L"A\\B\\C"};
  EXPECT_EQ(quantityOf(condition), "");
  condition.sysCodes = {L"A\\*A"};
  EXPECT_EQ(quantityOf(condition), "2");
}

TEST_F(BillSummary, FloorRowsShowTheSelectedFloor) {
  Open(Building());
  Report::SNewCondition condition;
  condition.floors = {{L"1,3", L"3"}, {L"1,3", L"2"}};
  EXPECT_EQ(QdRows(2, condition),
            (Lines{"@C|管道|8", "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|6", "@Cg|管道\\给水管",
                   "@A|DN25||m|6", "@F|1,3|2|m|3", "@F|1,3|3|m|3"}));
}

TEST_F(BillSummary, ShownSectionsMakeBlocksInTextOrder) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  project.QdDe().Row(row);
  row.sgd = L"二区";
  row.calItem = Item(2);
  project.QdDe().Row(row);
  row.sgd = L"";
  row.calItem = Item(4);
  project.QdDe().Row(row);
  Open(project);
  ShowSections({L"二区", L"三区", L"一区"});
  EXPECT_EQ(QdRows(0, {}, 1), (Lines{"@P|一区", "@C|电气|4", "@QD|0304|bill||m|1", "@P|二区",
                                     "@C|电气|4", "@QD|0304|bill||m|2"}));
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|7"}));
  ShowSections({L"二区", L"一区"}, true);
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|3"}));
  ShowSections({});
  EXPECT_EQ(QdRows(0, {}, 1), (Lines{"@P|", "@C|电气|4", "@QD|0304|bill||m|4"}));
}

TEST_F(BillSummary, RequestsAreIndependentAndTakeTheStoredConditionBackIn) {
  Open(Building());
  const Lines all = QdRows(6);
  Report::SNewCondition condition;
  condition.floors = {{L"1", L"1"}};
  condition.categories = {L"管道\\给水管"};
  const Lines some{"@C|管道|8", "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2"};
  EXPECT_EQ(QdRows(0, condition), some);
  Report::CellArray cells;
  Qd().GetQdHzData(cells, Qd().spec, Qd().condition, 0, 0);
  EXPECT_EQ(Rows(cells), some);
  const Report::CellArray before = cells;
  Qd().GetQdHzData(cells, L"电气", {}, 0, 0);
  EXPECT_EQ(cells, before);
  EXPECT_EQ(Qd().spec, kSpec);
  EXPECT_EQ(Qd().condition.categories, condition.categories);
  EXPECT_EQ(QdRows(6), all);
}

// Bad indices: a record is looked at when a step first names it.

TEST_F(BillSummary, AQuotaRowMayHoldBadIndices) {
  CTinyProject project;
  project.QdDe().Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1)).Row(OwnRow(Bill(L"0304"), 2));
  const SKorDMQdDeRow bad{.isQd = false,
                          .sgd = -1,
                          .floor = 9,
                          .component = 9,
                          .spec = 9,
                          .category = 9,
                          .attr = 9,
                          .sysCode = 9,
                          .calItem = 9,
                          .qdItem = -1,
                          .deItem = 9};
  project.QdDe().Data().rows[0] = bad;
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|2"}));
}

TEST_F(BillSummary, ARowOfAForeignBillMayHoldBadIndicesElsewhere) {
  CTinyProject project;
  STinyQdDe foreign = Bill(L"0304");
  foreign.library = L"QD2";
  project.QdDe().Row(OwnRow(foreign, 1)).Row(OwnRow(Bill(L"0304"), 2));
  SKorDMQdDeRow& row = project.QdDe().Data().rows[0];
  row.sgd = row.floor = row.component = row.spec = row.category = row.attr = -1;
  row.sysCode = row.calItem = row.deItem = 99;
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|2"}));
}

TEST_F(BillSummary, TheQuotasIndexIsNeverLookedAt) {
  CTinyProject project;
  project.QdDe().Row(OwnRow(Bill(L"0304"), 2));
  project.QdDe().Data().rows[0].deItem = -1;
  Open(project);
  EXPECT_EQ(QdRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|2"}));
}

TEST_F(BillSummary, EachOtherBadIndexOfATakenRowFailsTheFoldEachTime) {
  for (const auto index :
       {&SKorDMQdDeRow::sgd, &SKorDMQdDeRow::floor, &SKorDMQdDeRow::component, &SKorDMQdDeRow::spec,
        &SKorDMQdDeRow::category, &SKorDMQdDeRow::attr, &SKorDMQdDeRow::sysCode,
        &SKorDMQdDeRow::calItem, &SKorDMQdDeRow::qdItem}) {
    for (const int bad : {-1, 1, std::numeric_limits<int>::max()}) {
      CTinyProject project;
      project.QdDe().Row(OwnRow(Bill(L"0304"), 1));
      project.QdDe().Data().rows[0].*index = bad;
      Open(project);
      EXPECT_THROW(Qd(), std::out_of_range);
      EXPECT_THROW(Qd(), std::out_of_range);
    }
  }
}

}  // namespace
