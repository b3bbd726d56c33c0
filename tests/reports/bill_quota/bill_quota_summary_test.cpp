#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "bill_quota_fixture.h"
#include "reports/bill_quota/qd_de_hz_report.h"

namespace {

using tally_test::CTinyProject;
using tally_test::kSpec;
using tally_test::Lines;
using tally_test::Rows;
using tally_test::STinyCategory;
using tally_test::STinyQdDe;
using tally_test::STinyQdDeRow;

class BillQuotaSummary : public tally_test::BillQuotaTest {
 protected:
  static CQdDeHzReport& QdDe() { return GetReport<CQdDeHzReport>(Report::ReportQdDeHz); }

  static Lines QdDeRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0) {
    Report::CellArray cells;
    QdDe().GetQdDeHzData(cells, kSpec, condition, level, bySgd);
    return Rows(cells);
  }
};

// Levels.

TEST_F(BillQuotaSummary, Level0ShowsBillsWithOwnQuantityAlone) {
  Open(Building());
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|管道|8", "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                                "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2"}));
}

TEST_F(BillQuotaSummary, Level1AddsQuotas) {
  Open(Building());
  const Lines expected{
      "@C|电气|4",
      "@DE|4-1|灯具|套|1",
      "@C|管道|8",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
      "@DE|8-1|塑料管|10m|9",
  };
  EXPECT_EQ(QdDeRows(1), expected);
  // "Not 0" is all that a quota row asks of the level.
  EXPECT_EQ(QdDeRows(-1), expected);
}

TEST_F(BillQuotaSummary, Level2AddsKindsAndAttributesOfQuotas) {
  Open(Building());
  EXPECT_EQ(QdDeRows(2), (Lines{
                             "@C|电气|4",
                             "@DE|4-1|灯具|套|1",
                             "@Cg|附件\\水表",
                             "@A|LXS-20|材质:铜|套|1",
                             "@C|管道|8",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
                             "@DE|8-1|塑料管|10m|9",
                             "@Cg|管道\\给水管",
                             "@A|DN25||10m|9",
                         }));
}

TEST_F(BillQuotaSummary, Level3AddsFloors) {
  Open(Building());
  EXPECT_EQ(QdDeRows(3), (Lines{
                             "@C|电气|4",
                             "@DE|4-1|灯具|套|1",
                             "@Cg|附件\\水表",
                             "@A|LXS-20|材质:铜|套|1",
                             "@F|1|1|套|1",
                             "@C|管道|8",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
                             "@DE|8-1|塑料管|10m|9",
                             "@Cg|管道\\给水管",
                             "@A|DN25||10m|9",
                             "@F|1,3|1,3|10m|9",
                         }));
}

TEST_F(BillQuotaSummary, Level4AddsFirstSystemCodes) {
  Open(Building());
  EXPECT_EQ(QdDeRows(4), (Lines{
                             "@C|电气|4",
                             "@DE|4-1|灯具|套|1",
                             "@Cg|附件\\水表",
                             "@A|LXS-20|材质:铜|套|1",
                             "@F|1|1|套|1",
                             "@S1|D|套|1|c5$$",
                             "@C|管道|8",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
                             "@DE|8-1|塑料管|10m|9",
                             "@Cg|管道\\给水管",
                             "@A|DN25||10m|9",
                             "@F|1,3|1,3|10m|9",
                             "@S1|A(alpha)|10m|9|c3$c4$$",
                         }));
}

TEST_F(BillQuotaSummary, Level5AddsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(QdDeRows(5), (Lines{
                             "@C|电气|4",
                             "@DE|4-1|灯具|套|1",
                             "@Cg|附件\\水表",
                             "@A|LXS-20|材质:铜|套|1",
                             "@F|1|1|套|1",
                             "@S1|D|套|1|c5$$",
                             "@S2|*D|套|1|c5$$",
                             "@C|管道|8",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
                             "@DE|8-1|塑料管|10m|9",
                             "@Cg|管道\\给水管",
                             "@A|DN25||10m|9",
                             "@F|1,3|1,3|10m|9",
                             "@S1|A(alpha)|10m|9|c3$c4$$",
                             "@S2|B|10m|9|c3$c4$$",
                         }));
}

TEST_F(BillQuotaSummary, Level6AddsThirdSystemCodesAndDeeperLevelsButOneTheSame) {
  Open(Building());
  const Lines expected{
      "@C|电气|4",
      "@DE|4-1|灯具|套|1",
      "@Cg|附件\\水表",
      "@A|LXS-20|材质:铜|套|1",
      "@F|1|1|套|1",
      "@S1|D|套|1|c5$$",
      "@S2|*D|套|1|c5$$",
      "@C|管道|8",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
      "@DE|8-1|塑料管|10m|9",
      "@Cg|管道\\给水管",
      "@A|DN25||10m|9",
      "@F|1,3|1,3|10m|9",
      "@S1|A(alpha)|10m|9|c3$c4$$",
      "@S2|B|10m|9|c3$c4$$",
      "@S3|C(gamma)|10m|9|c3$c4$$",
  };
  EXPECT_EQ(QdDeRows(6), expected);
  EXPECT_EQ(QdDeRows(8), expected);
  EXPECT_EQ(QdDeRows(std::numeric_limits<int>::max()), expected);
}

TEST_F(BillQuotaSummary, Level7AddsCalculationLines) {
  Open(Building());
  EXPECT_EQ(QdDeRows(7), (Lines{
                             "@C|电气|4",
                             "@DE|4-1|灯具|套|1",
                             "@Cg|附件\\水表",
                             "@A|LXS-20|材质:铜|套|1",
                             "@F|1|1|套|1",
                             "@S1|D|套|1|c5$$",
                             "@S2|*D|套|1|c5$$",
                             "@L|回路1|1|套|1|c5$$",
                             "@C|管道|8",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                             "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
                             "@DE|8-1|塑料管|10m|9",
                             "@Cg|管道\\给水管",
                             "@A|DN25||10m|9",
                             "@F|1,3|1,3|10m|9",
                             "@S1|A(alpha)|10m|9|c3$c4$$",
                             "@S2|B|10m|9|c3$c4$$",
                             "@S3|C(gamma)|10m|9|c3$c4$$",
                             "@L|回路1|((1+0.5)*2件)*3层|10m|9|c3$c4$$",
                         }));
}

TEST_F(BillQuotaSummary, CellsStandOneByOne) {
  CTinyProject project;
  project.QdDe().Row(OwnRow(Bill(L"0308"), 2)).Row(QuotaRow(Bill(L"0308"), Quota(L"8-1"), 3));
  Open(project);
  ShowSections({L"一区"});
  Report::CellArray cells;
  QdDe().GetQdDeHzData(cells, kSpec, {}, 1, 1);
  EXPECT_EQ(cells, (Report::CellArray{L"@P", L"一区", L"@C", L"管道", L"8", L"@QD", L"0308",
                                      L"bill", L"材质: PPR\n连接: 热熔\n", L"m", L"2", L"@DE",
                                      L"8-1", L"quota", L"m", L"3"}));
}

// Bills, their own items and their quotas.

TEST_F(BillQuotaSummary, OwnItemsOfSeveralUnitsMakeARowEachInTextOrder) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  for (const wchar_t* unit : {L"t", L"", L"m2", L"kg", L"m"}) {
    row.deItem = Own(unit);
    project.QdDe().Row(row);
  }
  // The bill's own unit plays no part, and own items fold by unit.
  project.QdDe().Row(row);
  Open(project);
  const Lines expected{"@C|电气|4",          "@QD|0304|bill|||1",   "@QD|0304|bill||kg|1",
                       "@QD|0304|bill||m|2", "@QD|0304|bill||m2|1", "@QD|0304|bill||t|1"};
  EXPECT_EQ(QdDeRows(0), expected);
  // Nothing below an own item opens.
  EXPECT_EQ(QdDeRows(7), expected);
}

TEST_F(BillQuotaSummary, AnItemIsTheBillsOwnByItsEmptyCodeAndNameAlone) {
  CTinyProject project;
  const STinyQdDe bill = Bill(L"0304");
  project.QdDe()
      .Row(QuotaRow(bill, {L"", L"", L"m", L"DE"}, 1))
      .Row(QuotaRow(bill, Quota(L"", L"named"), 2))
      .Row(QuotaRow(bill, Quota(L"coded", L""), 4));
  STinyQdDeRow real = OwnRow(bill, 8);
  real.deItem = Quota(L"real");
  project.QdDe().Row(real);
  Open(project);
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|1"}));
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|电气|4", "@QD|0304|bill||m|1", "@DE||named|m|2",
                                "@DE|coded||m|4", "@DE|real|quota|m|8"}));
}

TEST_F(BillQuotaSummary, AnItemWithoutCodeButWithNameOpensLikeAnyQuota) {
  CTinyProject project;
  project.QdDe().Row(QuotaRow(Bill(L"0304"), Quota(L"", L"named"), 2));
  Open(project);
  EXPECT_EQ(QdDeRows(2),
            (Lines{"@C|电气|4", "@DE||named|m|2", "@Cg|管道\\给水管", "@A|DN25||m|2"}));
}

TEST_F(BillQuotaSummary, ABillWithQuotasAloneHasNoRowOfItsOwn) {
  billLibrary->chapters[L"0308-2"] = {8, L"管道"};
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"0308"), 2))
      .Row(QuotaRow(Bill(L"0308"), Quota(L"8-1"), 3))
      .Row(QuotaRow(Bill(L"0308-2"), Quota(L"8-0"), 4));
  Open(project);
  // Its quotas stand directly behind the bill before.
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|管道|8", "@QD|0308|bill|材质: PPR\n连接: 热熔\n|m|2",
                                "@DE|8-1|quota|m|3", "@DE|8-0|quota|m|4"}));
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|管道|8", "@QD|0308|bill|材质: PPR\n连接: 热熔\n|m|2"}));
}

TEST_F(BillQuotaSummary, ABillsQuantityIsNeverThatOfItsQuotas) {
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"0304"), 2))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 30))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 50));
  Open(project);
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|电气|4", "@QD|0304|bill||m|2", "@DE|4-1|quota|m|80"}));
}

TEST_F(BillQuotaSummary, ItemsStandInNaturalOrderOfTheirCodes) {
  for (const wchar_t* code : {L"1-10", L"1-9", L"1-9A"}) {
    billLibrary->chapters[code] = {1, L"章"};
  }
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"1-10"), 1))
      .Row(OwnRow(Bill(L"1-9A"), 2))
      .Row(OwnRow(Bill(L"1-9", L"阿"), 3))
      .Row(OwnRow(Bill(L"1-9", L"一", L"m"), 4))
      .Row(OwnRow(Bill(L"1-9", L"一", L"kg"), 5))
      .Row(QuotaRow(Bill(L"1-9A"), Quota(L"2-30"), 6))
      .Row(QuotaRow(Bill(L"1-9A"), Quota(L"2-4"), 7));
  Open(project);
  // Code, then name in the code page, then unit. A bill's row shows the unit of its own item.
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|章|1", "@QD|1-9|阿||m|3", "@QD|1-9|一||m|5", "@QD|1-9|一||m|4",
                                "@QD|1-9A|bill||m|2", "@DE|2-4|quota|m|7", "@DE|2-30|quota|m|6",
                                "@QD|1-10|bill||m|1"}));
}

TEST_F(BillQuotaSummary, CodesThatCompareOddlyStandByTheWayTheyAreMet) {
  for (const wchar_t* code : {L"1", L"1.0", L"2 2", L"22"}) {
    billLibrary->chapters[code] = {1, L"章"};
  }
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"1"), 1))
      .Row(OwnRow(Bill(L"1.0"), 2))
      .Row(OwnRow(Bill(L"22", L"a"), 3))
      .Row(OwnRow(Bill(L"2 2", L"z"), 4));
  Open(project);
  // Each of "1.0" and "1" goes ahead of the other; "1.0" is met first and "1" put in front of it.
  // Blanks do not tell codes apart, and then the names are not looked at.
  EXPECT_EQ(QdDeRows(0),
            (Lines{"@C|章|1", "@QD|1|bill||m|1", "@QD|1.0|bill||m|2", "@QD|2 2|z||m|4"}));
}

TEST_F(BillQuotaSummary, QuotasOfOneCodeNameAndUnitAreOne) {
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1", L"a", L"m"), 1))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1", L"a", L"m"), 2))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1", L"a", L"km"), 4))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1", L"b", L"m"), 8));
  Open(project);
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|电气|4", "@DE|4-1|a|km|4", "@DE|4-1|a|m|3", "@DE|4-1|b|m|8"}));
}

// Chapters.

TEST_F(BillQuotaSummary, OfChaptersWithOneNumberTheFirstWithRowsStays) {
  billLibrary->chapters = {{L"a", {5, L"B"}}, {L"b", {5, L"A"}}, {L"c", {5, L"C"}}};
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"a"), 1))
      .Row(QuotaRow(Bill(L"b"), Quota(L"4-1"), 2))
      .Row(OwnRow(Bill(L"c"), 4));
  Open(project);
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|A|5", "@DE|4-1|quota|m|2"}));
  // At level 0 chapter A counts and has no rows.
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|B|5", "@QD|a|bill||m|1"}));
}

TEST_F(BillQuotaSummary, ChaptersStandByNumberUnknownOnesLast) {
  billLibrary->chapters = {{L"a", {100, L"百"}},
                           {L"b", {9, L"九"}},
                           {L"c", {-1, L"负"}},
                           {L"d", {7, L""}},
                           {L"e", {std::nullopt, L"无号"}}};
  CTinyProject project;
  project.QdDe()
      .Row(OwnRow(Bill(L"unknown"), 1))
      .Row(OwnRow(Bill(L"a"), 2))
      .Row(OwnRow(Bill(L"b"), 3))
      .Row(OwnRow(Bill(L"c"), 4))
      .Row(OwnRow(Bill(L"d"), 5));
  Open(project);
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|负|-1", "@QD|c|bill||m|4", "@C|其他章|7", "@QD|d|bill||m|5",
                                "@C|九|9", "@QD|b|bill||m|3", "@C|百|100", "@QD|a|bill||m|2",
                                "@C|其他章|2147483647", "@QD|unknown|bill||m|1"}));
  // 其 goes before 无 in key order, so a named chapter without a number vanishes behind it.
  project.QdDe().Row(OwnRow(Bill(L"e"), 6));
  Open(project);
  const Lines rows = QdDeRows(0);
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[8], "@C|其他章|2147483647");
}

TEST_F(BillQuotaSummary, InAQuotaProjectNoBillLibraryIsOpen) {
  CTinyProject project;
  project.QdDe().Row(OwnRow(Bill(L"0304"), 1));
  Open(project, false);
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|其他章|2147483647", "@QD|0304|bill||m|1"}));
}

// Libraries.

TEST_F(BillQuotaSummary, RowsOfAForeignBillLibraryAreLeftOut) {
  STinyQdDe foreign = Bill(L"0308");
  foreign.library = L"QD2";
  CTinyProject project;
  project.QdDe().Row(OwnRow(foreign, 1)).Row(QuotaRow(foreign, Quota(L"8-1"), 2));
  Open(project);
  EXPECT_EQ(QdDeRows(7), Lines{});
  project.QdDe().Row(OwnRow(Bill(L"0304"), 4));
  Open(project);
  EXPECT_EQ(QdDeRows(7), (Lines{"@C|电气|4", "@QD|0304|bill||m|4"}));
  settings->qdCode = L"QD2";
  Open(project);
  EXPECT_EQ(QdDeRows(1),
            (Lines{"@C|管道|8", "@QD|0308|bill|材质: PPR\n连接: 热熔\n|m|1", "@DE|8-1|quota|m|2"}));
}

TEST_F(BillQuotaSummary, TheQuotasLibraryCountsForQuotaRowsAlone) {
  CTinyProject project;
  STinyQdDe foreign = Quota(L"4-1");
  foreign.library = L"D0";
  STinyQdDeRow own = OwnRow(Bill(L"0304"), 1);
  own.deItem.library = L"anything";
  project.QdDe()
      .Row(own)
      .Row(QuotaRow(Bill(L"0304"), foreign, 2))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-2"), 4))
      .Row(QuotaRow(Bill(L"0304"), {L"", L"", L"m", L"D0"}, 8));
  // This report knows no quota mode.
  settings->qdDeMode = 1;
  Open(project);
  EXPECT_EQ(QdDeRows(1), (Lines{"@C|电气|4", "@QD|0304|bill||m|1", "@DE|4-2|quota|m|4"}));
}

// Filters.

TEST_F(BillQuotaSummary, KindsAreSelectedByOneOrTwoParts) {
  CTinyProject project;
  project.KindSort(kSpec, L"管道\\给水管", 1)
      .KindSort(kSpec, L"管道附件\\x", 2)
      .KindSort(kSpec, L"管道\\", 3)
      .KindSort(kSpec, L"附件\\水表", 4);
  double quantity = 1;
  for (const STinyCategory& category :
       {STinyCategory{L"管道", L"给水管"}, STinyCategory{L"管道附件", L"x"},
        STinyCategory{L"管道", L""}, STinyCategory{L"附件", L"水表"}}) {
    STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), quantity);
    row.category = category;
    project.QdDe().Row(row);
    row = OwnRow(Bill(L"0304"), quantity);
    row.category = category;
    project.QdDe().Row(row);
    quantity *= 2;
  }
  Open(project);
  const auto quantityOf = [](const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    return QdDeRows(1, condition);
  };
  const auto expected = [](const std::string& sum) {
    return Lines{"@C|电气|4", "@QD|0304|bill||m|" + sum, "@DE|4-1|quota|m|" + sum};
  };
  EXPECT_EQ(quantityOf({}), expected("15"));
  EXPECT_EQ(quantityOf({L"管道"}), expected("7"));
  EXPECT_EQ(quantityOf({L"管道附"}), expected("2"));
  EXPECT_EQ(quantityOf({L"管道\\给水管"}), expected("1"));
  EXPECT_EQ(quantityOf({L"管道\\"}), expected("4"));
  EXPECT_EQ(quantityOf({L"附件\\水表", L"管道\\给水管"}), expected("9"));
  EXPECT_EQ(quantityOf({L""}), Lines{});
  EXPECT_EQ(quantityOf({L"管道\\给水"}), Lines{});
  EXPECT_EQ(quantityOf({L"管道\\给水管\\"}), Lines{});
  // Each entry that selects a kind counts it once more.
  EXPECT_EQ(quantityOf({L"管道附件", L"管道附件\\x", L"管道附"}), expected("6"));
  Report::SNewCondition condition;
  condition.categories = {L"管道附件", L"管道附件\\x"};
  EXPECT_EQ(QdDeRows(2, condition), (Lines{"@C|电气|4", "@QD|0304|bill||m|4", "@DE|4-1|quota|m|4",
                                           "@Cg|管道附件\\x", "@A|DN25||m|2"}));
}

TEST_F(BillQuotaSummary, KindsOfOneSortNumberCountAndTheFirstShows) {
  CTinyProject project;
  STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1);
  row.category = {L"管道", L"b"};
  project.QdDe().Row(row);
  row.category = {L"管道", L"a"};
  row.calItem = Item(2);
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(QdDeRows(2), (Lines{"@C|电气|4", "@DE|4-1|quota|m|3", "@Cg|管道\\a", "@A|DN25||m|2"}));
}

TEST_F(BillQuotaSummary, AttributesStandInTheDirectionSetForPipes) {
  CTinyProject project;
  project.KindSort(kSpec, L"管道\\给水管", 1).KindSort(kSpec, L"附件\\水表", 2);
  for (const STinyCategory& category :
       {STinyCategory{L"管道", L"给水管"}, STinyCategory{L"附件", L"水表"}}) {
    for (const wchar_t* name : {L"DN1", L"DN1.0", L"DN20", L"DN 20"}) {
      STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1);
      row.category = category;
      row.attr = {name, L""};
      project.QdDe().Row(row);
    }
  }
  Open(project);
  // Larger first, numbers of one value are equal; smaller first, the later one goes ahead. A
  // dropped attribute still counts.
  EXPECT_EQ(QdDeRows(2), (Lines{"@C|电气|4", "@DE|4-1|quota|m|8", "@Cg|管道\\给水管",
                                "@A|DN 20||m|1", "@A|DN1||m|1", "@Cg|附件\\水表", "@A|DN1.0||m|1",
                                "@A|DN1||m|1", "@A|DN 20||m|1"}));
  CResultConfig::Instance()->SetLineSortDowm(false);
  EXPECT_EQ(QdDeRows(2), (Lines{"@C|电气|4", "@DE|4-1|quota|m|8", "@Cg|管道\\给水管",
                                "@A|DN1.0||m|1", "@A|DN1||m|1", "@A|DN 20||m|1", "@Cg|附件\\水表",
                                "@A|DN1.0||m|1", "@A|DN1||m|1", "@A|DN 20||m|1"}));
}

TEST_F(BillQuotaSummary, FloorPairsSelectCountAndRepeat) {
  CTinyProject project;
  STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), 2);
  row.floor = {L"3,7", L"3,7"};
  project.QdDe().Row(row);
  row.floor = {L"S", L"3,4"};
  row.component = L"c2";
  project.QdDe().Row(row);
  Open(project);
  const auto rowsOf = [](const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    Lines rows = QdDeRows(3, condition);
    // Behind chapter, kind and attribute: the quota, and its floors.
    Lines shown;
    for (const std::string& line : rows) {
      if (line.starts_with("@DE") || line.starts_with("@F")) {
        shown.push_back(line);
      }
    }
    return shown;
  };
  EXPECT_EQ(rowsOf({}), (Lines{"@DE|4-1|quota|m|14", "@F|S|S|m|4", "@F|3,7|3,7|m|10"}));
  EXPECT_EQ(rowsOf({{L"3,7", L"3,7"}}), (Lines{"@DE|4-1|quota|m|10", "@F|3,7|3,7|m|10"}));
  EXPECT_EQ(rowsOf({{L"3,7", L"4"}}), (Lines{"@DE|4-1|quota|m|2", "@F|3,7|4|m|2"}));
  EXPECT_EQ(rowsOf({{L"3,7", L"4/5"}}), (Lines{"@DE|4-1|quota|m|4", "@F|3,7|4/5|m|4"}));
  EXPECT_EQ(rowsOf({{L"3,7", L"4"}, {L"9", L"9"}, {L"3,7", L"4"}}),
            (Lines{"@DE|4-1|quota|m|4", "@F|3,7|4|m|2"}));
  // Of a pair of two texts one must be the result's own; with equal texts no such test is made.
  EXPECT_EQ(rowsOf({{L"S", L"5"}}), Lines{});
  EXPECT_EQ(rowsOf({{L"S", L"3,4"}}), (Lines{"@DE|4-1|quota|m|4", "@F|S|3,4|m|4"}));
  EXPECT_EQ(rowsOf({{L"S", L"S"}}), (Lines{"@DE|4-1|quota|m|4", "@F|S|S|m|4"}));
  EXPECT_EQ(rowsOf({{L"", L""}}), Lines{});
}

TEST_F(BillQuotaSummary, SystemCodesAreFilteredByNameOnEachLevel) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A", 2).SysCodeSort(kSpec, L"D", 1);
  STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1);
  row.sysCode = L"A\\X\\P";
  project.QdDe().Row(row);
  row.sysCode = L"D\\X\\Q";
  row.calItem = Item(2);
  row.component = L"c2";
  project.QdDe().Row(row);
  row.sysCode = L"D";
  row.calItem = Item(4);
  row.component = L"c3";
  project.QdDe().Row(row);
  Open(project);
  const auto rowsOf = [](const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    const Lines rows = QdDeRows(6, condition);
    return rows.size() < 5 ? rows : Lines(rows.begin() + 4, rows.end());
  };
  // "*D" and "X" below D share the number of what nothing numbers, or D's own.
  EXPECT_EQ(rowsOf({}),
            (Lines{"@F|1|1|m|7", "@S1|D|m|6|c3$$c2$$", "@S2|*D|m|4|c3$$", "@S2|X|m|2|c2$$",
                   "@S3|Q|m|2|c2$$", "@S1|A|m|1|c1$$", "@S2|X|m|1|c1$$", "@S3|P|m|1|c1$$"}));
  EXPECT_EQ(rowsOf({L"D"}), (Lines{"@F|1|1|m|6", "@S1|D|m|6|c3$$c2$$", "@S2|*D|m|4|c3$$",
                                   "@S2|X|m|2|c2$$", "@S3|Q|m|2|c2$$"}));
  EXPECT_EQ(rowsOf({L"A\\X", L"D"}),
            (Lines{"@F|1|1|m|3", "@S1|D|m|2|c2$$", "@S2|X|m|2|c2$$", "@S3|Q|m|2|c2$$",
                   "@S1|A|m|1|c1$$", "@S2|X|m|1|c1$$", "@S3|P|m|1|c1$$"}));
  EXPECT_EQ(rowsOf({L"A\\X\\Q", L"D"}),
            (Lines{"@F|1|1|m|2", "@S1|D|m|2|c2$$", "@S2|X|m|2|c2$$", "@S3|Q|m|2|c2$$"}));
  EXPECT_EQ(rowsOf({L"E"}), Lines{});
}

TEST_F(BillQuotaSummary, FirstCodesOfOneSortNumberLoseAllButTheLast) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  row.sysCode = L"B";
  project.QdDe().Row(row);
  row.sysCode = L"A";
  row.calItem = Item(2);
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|1"}));
  Report::SNewCondition condition;
  condition.sysCodes = {L"A"};
  EXPECT_EQ(QdDeRows(0, condition), Lines{});
}

// Sections.

TEST_F(BillQuotaSummary, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  ShowSections({L"二区", L"三区", L"一区"});
  const Lines expected{
      "@P|一区",
      "@C|电气|4",
      "@DE|4-1|灯具|套|1",
      "@C|管道|8",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
      "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2",
      "@P|二区",
      "@C|管道|8",
      "@DE|8-1|塑料管|10m|9",
  };
  EXPECT_EQ(QdDeRows(1, {}, 1), expected);
  EXPECT_EQ(QdDeRows(1, {}, 2), expected);
  EXPECT_EQ(QdDeRows(0, {}, 1),
            (Lines{"@P|一区", "@C|管道|8", "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|kg|9",
                   "@QD|0308|管安装|材质: PPR\n连接: 热熔\n|m|2"}));
}

TEST_F(BillQuotaSummary, WithoutShownSectionsOnlyResultsOfNoSectionCount) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  project.QdDe().Row(row);
  row.sgd = L"";
  row.calItem = Item(2);
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(QdDeRows(0, {}, 1), (Lines{"@P|", "@C|电气|4", "@QD|0304|bill||m|2"}));
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|3"}));
  // The flag of the status refuses sections in any mode.
  ShowSections({}, true);
  EXPECT_EQ(QdDeRows(0, {}, 1), Lines{});
  EXPECT_EQ(QdDeRows(0), Lines{});
  ShowSections({L"一区", L"二区"}, true);
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|1"}));
  ShowSections({L"二区"});
  EXPECT_EQ(QdDeRows(0), (Lines{"@C|电气|4", "@QD|0304|bill||m|3"}));
}

// Lines.

class BillQuotaSummaryLines : public BillQuotaSummary {
 protected:
  /// The rows of system codes and lines of one quota at the deepest level.
  static Lines CodeRows(const Report::SNewCondition& condition = {}) {
    Lines shown;
    for (const std::string& line : QdDeRows(7, condition)) {
      if (line.starts_with("@S") || line.starts_with("@L")) {
        shown.push_back(line);
      }
    }
    return shown;
  }
  static STinyQdDeRow Line(const wchar_t* component, double quantity,
                           const std::wstring& expression, const std::wstring& floorText = L"1",
                           const std::wstring& sysCode = L"A\\B\\C") {
    STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), 0);
    row.component = component;
    row.floor = {L"1", floorText};
    row.calItem = Item(quantity, expression);
    row.sysCode = sysCode;
    return row;
  }
};

TEST_F(BillQuotaSummaryLines, MultipliersStandBehindTheExpression) {
  CTinyProject project;
  project.QdDe()
      .Row(Line(L"a", 1, L"e1"))
      .Row(Line(L"b", 2, L"e2"))
      .Row(Line(L"b", 2, L"e2"))
      .Row(Line(L"c", 3, L"e3", L"2,4"))
      .Row(Line(L"d", 4, L"e4", L"2/4"))
      .Row(Line(L"d", 4, L"e4", L"2/4"))
      .Row(Line(L"d", 4, L"e4", L"2/4"));
  Open(project);
  // Results in key order: section, floor text, expression, quantity.
  EXPECT_EQ(CodeRows(), (Lines{
                            "@S1|A|m|38|a$$b$b$$c$$d$d$d$$",
                            "@S2|B|m|38|a$$b$b$$c$$d$d$d$$",
                            "@S3|C|m|38|a$$b$b$$c$$d$d$d$$",
                            "@L|回路1|e1|m|1|a$$",
                            "@L|回路2|e2*2件|m|4|b$b$$",
                            "@L|回路3|e3*3层|m|9|c$$",
                            "@L|回路4|e4*3件*2层|m|24|d$d$d$$",
                        }));
}

TEST_F(BillQuotaSummaryLines, SumsAndDifferencesGoIntoBrackets) {
  CTinyProject project;
  project.QdDe()
      .Row(Line(L"a", 1, L"1+0"))
      .Row(Line(L"b", 1, L"2-1"))
      .Row(Line(L"b", 1, L"2-1"))
      .Row(Line(L"c", 1, L"1+0", L"2,4"))
      .Row(Line(L"d", 1, L"3-2", L"2,4"))
      .Row(Line(L"d", 1, L"3-2", L"2,4"))
      .Row(Line(L"", 0, L"", L"5,6"))
      .Row(Line(L"", 0, L"", L"5,6"));
  Open(project);
  const std::string sum = "|m|12|a$$b$b$$c$$d$d$$$";
  EXPECT_EQ(CodeRows(), (Lines{
                            "@S1|A" + sum,
                            "@S2|B" + sum,
                            "@S3|C" + sum,
                            "@L|回路1|1+0|m|1|a$$",
                            "@L|回路2|(2-1)*2件|m|2|b$b$$",
                            "@L|回路3|(1+0)*3层|m|3|c$$",
                            "@L|回路4|((3-2)*2件)*3层|m|6|d$d$$",
                            "@L|回路5|*2件*2层|m|0|$",
                        }));
}

TEST_F(BillQuotaSummaryLines, TheFloorCountIsThatOfThePickedFloor) {
  CTinyProject project;
  project.QdDe().Row(Line(L"a", -2, L"e", L"1,3"));
  Open(project);
  Report::SNewCondition condition;
  condition.floors = {{L"1", L"1,3"}};
  EXPECT_EQ(CodeRows(condition), (Lines{"@S1|A|m|-6|a$$", "@S2|B|m|-6|a$$", "@S3|C|m|-6|a$$",
                                        "@L|回路1|e*3层|m|-6|a$$"}));
  project = {};
  STinyQdDeRow row = Line(L"a", -2, L"e");
  project.QdDe().Row(row);
  Open(project);
  condition.floors = {{L"1", L"2"}};
  EXPECT_EQ(CodeRows(condition),
            (Lines{"@S1|A|m|-2|a$$", "@S2|B|m|-2|a$$", "@S3|C|m|-2|a$$", "@L|回路1|e|m|-2|a$$"}));
  // No floor at all: the line prints its bare product, the sums start from 0.
  condition.floors = {{L"1", L""}};
  EXPECT_EQ(CodeRows(condition),
            (Lines{"@S1|A|m|0|a$$", "@S2|B|m|0|a$$", "@S3|C|m|0|a$$", "@L|回路1|e|m|-0|a$$"}));
}

TEST_F(BillQuotaSummaryLines, NumbersRestartInEachSystemCode) {
  CTinyProject project;
  project.SysCodeSort(kSpec, L"A", 1).SysCodeSort(kSpec, L"D", 2);
  project.QdDe()
      .Row(Line(L"a", 1, L"e1"))
      .Row(Line(L"b", 2, L"e2"))
      .Row(Line(L"c", 3, L"e3", L"1", L"D"))
      .Row(Line(L"d", 4, L"e4", L"1", L"D"));
  Open(project);
  EXPECT_EQ(CodeRows(), (Lines{
                            "@S1|A|m|3|a$$b$$",
                            "@S2|B|m|3|a$$b$$",
                            "@S3|C|m|3|a$$b$$",
                            "@L|回路1|e1|m|1|a$$",
                            "@L|回路2|e2|m|2|b$$",
                            "@S1|D|m|7|c$$d$$",
                            "@S2|*D|m|7|c$$d$$",
                            "@L|回路1|e3|m|3|c$$",
                            "@L|回路2|e4|m|4|d$$",
                        }));
}

TEST_F(BillQuotaSummaryLines, ResultsThatDoNotCountTakeNoNumber) {
  CTinyProject project;
  STinyQdDeRow row = Line(L"a", 1, L"e");
  project.QdDe().Row(row);
  row = Line(L"b", 2, L"e");
  row.sgd = L"二区";
  project.QdDe().Row(row);
  Open(project);
  ShowSections({L"二区"}, true);
  EXPECT_EQ(CodeRows(),
            (Lines{"@S1|A|m|2|b$$", "@S2|B|m|2|b$$", "@S3|C|m|2|b$$", "@L|回路1|e|m|2|b$$"}));
}

TEST_F(BillQuotaSummaryLines, LinesStandBehindDeeperCodes) {
  CTinyProject project;
  // "A" has its results in "*A", where a code may lie as well. The result of no section comes first
  // in key order.
  STinyQdDeRow row = Line(L"a", 1, L"e1", L"1", L"A");
  row.sgd = L"";
  project.QdDe().Row(row).Row(Line(L"b", 2, L"e2", L"1", L"A\\*A\\X"));
  Open(project);
  EXPECT_EQ(CodeRows(), (Lines{"@S1|A|m|3|a$$b$$", "@S2|*A|m|3|a$$b$$", "@S3|X|m|2|b$$",
                               "@L|回路1|e2|m|2|b$$", "@L|回路1|e1|m|1|a$$"}));
}

TEST_F(BillQuotaSummaryLines, ACodeOfFourLevelsSumsButShowsThree) {
  CTinyProject project;
  project.QdDe().Row(Line(L"a", 1, L"e1", L"1", L"A\\B\\C\\D")).Row(Line(L"b", 2, L"e2"));
  Open(project);
  EXPECT_EQ(CodeRows(), (Lines{"@S1|A|m|3|a$$b$$", "@S2|B|m|3|a$$b$$", "@S3|C|m|3|a$$b$$",
                               "@L|回路1|e2|m|2|b$$"}));
  // No deeper level shows it.
  EXPECT_EQ(QdDeRows(8).back(), "@S3|C|m|3|a$$b$$");
}

TEST_F(BillQuotaSummaryLines, OfDeeperCodesWithOneSortNumberAllCountAndTheFirstShows) {
  CTinyProject project;
  project.QdDe().Row(Line(L"a", 1, L"e1", L"1", L"A\\z")).Row(Line(L"b", 2, L"e2", L"1", L"A\\y"));
  Open(project);
  EXPECT_EQ(CodeRows(),
            (Lines{"@S1|A|m|3|b$$a$$", "@S2|y|m|2|b$$", "@S3|*y|m|2|b$$", "@L|回路1|e2|m|2|b$$"}));
}

TEST_F(BillQuotaSummaryLines, ACodeOfTenThousandLevelsIsWalked) {
  std::wstring code = L"A";
  for (int level = 1; level < 10000; ++level) {
    code += L"\\A";
  }
  CTinyProject project;
  project.QdDe().Row(Line(L"a", 1, L"e", L"1", code));
  Open(project);
  EXPECT_EQ(CodeRows(), (Lines{"@S1|A|m|1|a$$", "@S2|A|m|1|a$$", "@S3|A|m|1|a$$"}));
}

// Requests and the fold.

TEST_F(BillQuotaSummary, AnUnknownDisciplineLeavesRowsAndStoredConditionAlone) {
  Open(Building());
  Report::SNewCondition condition;
  condition.categories = {L"附件"};
  Report::CellArray cells{L"kept"};
  QdDe().GetQdDeHzData(cells, kSpec, condition, 1, 0);
  const Report::CellArray expected{L"kept", L"@C",   L"电气", L"4", L"@DE",
                                   L"4-1",  L"灯具", L"套",   L"1"};
  EXPECT_EQ(cells, expected);
  QdDe().GetQdDeHzData(cells, L"电气", {}, 1, 0);
  EXPECT_EQ(cells, expected);
  EXPECT_EQ(QdDe().spec, kSpec);
  EXPECT_EQ(QdDe().condition.categories, condition.categories);
}

TEST_F(BillQuotaSummary, TheStoredConditionMayBePassedBackInAndRequestsAreIndependent) {
  Open(Building());
  Report::SNewCondition condition;
  condition.categories = {L"管道\\给水管"};
  condition.floors = {{L"1,3", L"2"}};
  condition.sysCodes = {L"A\\B\\C"};
  const Lines some{"@C|管道|8", "@DE|8-1|塑料管|10m|3"};
  const Lines all = QdDeRows(7);
  EXPECT_EQ(QdDeRows(1, condition), some);
  Report::CellArray cells;
  QdDe().GetQdDeHzData(cells, QdDe().spec, QdDe().condition, 1, 0);
  EXPECT_EQ(Rows(cells), some);
  EXPECT_EQ(QdDeRows(7), all);
  EXPECT_EQ(QdDeRows(1, condition), some);
}

TEST_F(BillQuotaSummary, EachBadIndexFailsTheFoldEvenInARowThatIsLeftOut) {
  using KorDMRec::SKorDMQdDeRow;
  for (const auto index :
       {&SKorDMQdDeRow::sgd, &SKorDMQdDeRow::floor, &SKorDMQdDeRow::component, &SKorDMQdDeRow::spec,
        &SKorDMQdDeRow::category, &SKorDMQdDeRow::attr, &SKorDMQdDeRow::sysCode,
        &SKorDMQdDeRow::calItem, &SKorDMQdDeRow::qdItem, &SKorDMQdDeRow::deItem}) {
    for (const int bad : {-1, 1, std::numeric_limits<int>::max()}) {
      CTinyProject project;
      STinyQdDe foreign = Bill(L"0304");
      foreign.library = L"QD2";
      project.QdDe().Row(OwnRow(foreign, 1));
      project.QdDe().Data().rows[0].*index = bad;
      Open(project);
      EXPECT_THROW(QdDe(), std::out_of_range);
      EXPECT_THROW(QdDe(), std::out_of_range);
    }
  }
}

TEST_F(BillQuotaSummary, ARowWithoutSystemCodeIsLeftOut) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  row.sysCode = L"";
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(QdDeRows(7), Lines{});
  project.QdDe().Row(OwnRow(Bill(L"0304"), 2));
  Open(project);
  EXPECT_EQ(QdDeRows(7), (Lines{"@C|电气|4", "@QD|0304|bill||m|2"}));
}

}  // namespace
