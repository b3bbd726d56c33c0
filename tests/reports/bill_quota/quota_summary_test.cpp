#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "bill_quota_fixture.h"
#include "reports/bill_quota/de_hz_report.h"

namespace {

using KorDMRec::SKorDMQdDeRow;
using tally_test::CTinyProject;
using tally_test::kSpec;
using tally_test::Lines;
using tally_test::Rows;
using tally_test::STinyQdDe;
using tally_test::STinyQdDeRow;

class QuotaSummary : public tally_test::BillQuotaTest {
 protected:
  static CDeHzReport& De() { return GetReport<CDeHzReport>(Report::ReportDeHz); }

  static Lines DeRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0) {
    Report::CellArray cells;
    De().GetDeHzData(cells, kSpec, condition, level, bySgd);
    return Rows(cells);
  }
  static STinyQdDe Foreign(STinyQdDe item) {
    item.library = L"elsewhere";
    return item;
  }
};

// Levels.

TEST_F(QuotaSummary, Level0ShowsChaptersWithoutNumberAndQuotas) {
  Open(Building());
  EXPECT_EQ(DeRows(0),
            (Lines{"@C|电气工程", "@DE|4-1|灯具|套|1", "@C|给排水工程", "@DE|8-1|塑料管|10m|9"}));
}

TEST_F(QuotaSummary, Level1AddsKindsAndAttributes) {
  Open(Building());
  const Lines expected{
      "@C|电气工程",   "@DE|4-1|灯具|套|1",    "@Cg|附件\\水表",   "@A|LXS-20|材质:铜|套|1",
      "@C|给排水工程", "@DE|8-1|塑料管|10m|9", "@Cg|管道\\给水管", "@A|DN25||10m|9",
  };
  EXPECT_EQ(DeRows(1), expected);
  // "Not 0" is all that these rows ask of the level.
  EXPECT_EQ(DeRows(-1), expected);
}

TEST_F(QuotaSummary, Level2AddsFloors) {
  Open(Building());
  EXPECT_EQ(DeRows(2), (Lines{
                           "@C|电气工程",
                           "@DE|4-1|灯具|套|1",
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|套|1",
                           "@F|1|1|套|1",
                           "@C|给排水工程",
                           "@DE|8-1|塑料管|10m|9",
                           "@Cg|管道\\给水管",
                           "@A|DN25||10m|9",
                           "@F|1,3|1,3|10m|9",
                       }));
}

TEST_F(QuotaSummary, Level3AddsFirstSystemCodes) {
  Open(Building());
  EXPECT_EQ(DeRows(3), (Lines{
                           "@C|电气工程",
                           "@DE|4-1|灯具|套|1",
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|套|1",
                           "@F|1|1|套|1",
                           "@S1|D|套|1|c5$$",
                           "@C|给排水工程",
                           "@DE|8-1|塑料管|10m|9",
                           "@Cg|管道\\给水管",
                           "@A|DN25||10m|9",
                           "@F|1,3|1,3|10m|9",
                           "@S1|A(alpha)|10m|9|c3$c4$$",
                       }));
}

TEST_F(QuotaSummary, Level4AddsSecondSystemCodes) {
  Open(Building());
  EXPECT_EQ(DeRows(4), (Lines{
                           "@C|电气工程",
                           "@DE|4-1|灯具|套|1",
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|套|1",
                           "@F|1|1|套|1",
                           "@S1|D|套|1|c5$$",
                           "@S2|*D|套|1|c5$$",
                           "@C|给排水工程",
                           "@DE|8-1|塑料管|10m|9",
                           "@Cg|管道\\给水管",
                           "@A|DN25||10m|9",
                           "@F|1,3|1,3|10m|9",
                           "@S1|A(alpha)|10m|9|c3$c4$$",
                           "@S2|B|10m|9|c3$c4$$",
                       }));
}

TEST_F(QuotaSummary, Level5AddsThirdSystemCodesAndDeeperLevelsButOneTheSame) {
  Open(Building());
  const Lines expected{
      "@C|电气工程",
      "@DE|4-1|灯具|套|1",
      "@Cg|附件\\水表",
      "@A|LXS-20|材质:铜|套|1",
      "@F|1|1|套|1",
      "@S1|D|套|1|c5$$",
      "@S2|*D|套|1|c5$$",
      "@C|给排水工程",
      "@DE|8-1|塑料管|10m|9",
      "@Cg|管道\\给水管",
      "@A|DN25||10m|9",
      "@F|1,3|1,3|10m|9",
      "@S1|A(alpha)|10m|9|c3$c4$$",
      "@S2|B|10m|9|c3$c4$$",
      "@S3|C(gamma)|10m|9|c3$c4$$",
  };
  EXPECT_EQ(DeRows(5), expected);
  EXPECT_EQ(DeRows(7), expected);
}

TEST_F(QuotaSummary, Level6AddsCalculationLines) {
  Open(Building());
  EXPECT_EQ(DeRows(6), (Lines{
                           "@C|电气工程",
                           "@DE|4-1|灯具|套|1",
                           "@Cg|附件\\水表",
                           "@A|LXS-20|材质:铜|套|1",
                           "@F|1|1|套|1",
                           "@S1|D|套|1|c5$$",
                           "@S2|*D|套|1|c5$$",
                           "@L|回路1|1|套|1|c5$$",
                           "@C|给排水工程",
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

TEST_F(QuotaSummary, CellsStandOneByOne) {
  CTinyProject project;
  project.QdDe().Row(QuotaRow(Bill(L"0308"), Quota(L"8-1"), 2));
  Open(project);
  ShowSections({L"一区"});
  Report::CellArray cells{L"kept"};
  De().GetDeHzData(cells, kSpec, {}, 6, 1);
  EXPECT_EQ(cells,
            (Report::CellArray{L"kept", L"@P",    L"一区", L"@C",    L"给排水工程", L"@DE",
                               L"8-1",  L"quota", L"m",    L"2",     L"@Cg",        L"管道\\给水管",
                               L"@A",   L"DN25",  L"",     L"m",     L"2",          L"@F",
                               L"1",    L"1",     L"m",    L"2",     L"@S1",        L"A",
                               L"m",    L"2",     L"c1$$", L"@S2",   L"*A",         L"m",
                               L"2",    L"c1$$",  L"@L",   L"回路1", L"e",          L"m",
                               L"2",    L"c1$$"}));
}

// Which rows count, by mode.

TEST_F(QuotaSummary, BillRowsAddNothing) {
  CTinyProject project;
  STinyQdDeRow row = OwnRow(Bill(L"0304"), 1);
  row.deItem = Quota(L"4-1");
  project.QdDe().Row(row);
  row.deItem.library = L"D0";
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(DeRows(0), Lines{});
  settings->qdDeMode = 1;
  Open(project);
  EXPECT_EQ(DeRows(0), Lines{});
}

TEST_F(QuotaSummary, InModeZeroBothLibrariesMustFit) {
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1))
      .Row(QuotaRow(Foreign(Bill(L"0304")), Quota(L"4-1"), 2))
      .Row(QuotaRow(Bill(L"0304"), Foreign(Quota(L"4-1")), 4))
      .Row(QuotaRow(Bill(L"0304"), {L"4-1", L"quota", L"m", L"D0"}, 8));
  Open(project);
  EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|quota|m|1"}));
  // A bill library that does not match empties the report.
  settings->qdCode = L"QD2";
  Open(project);
  EXPECT_EQ(DeRows(6), Lines{});
}

TEST_F(QuotaSummary, InAnyOtherModeTheQuotasOwnLibraryDecides) {
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), {L"4-1", L"quota", L"m", L"D0"}, 1))
      .Row(QuotaRow(Foreign(Bill(L"0304")), {L"4-1", L"quota", L"m", L"D0"}, 2))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 4));
  for (const int mode : {1, 2, -1}) {
    settings->qdDeMode = mode;
    for (const bool isQdMode : {false, true}) {
      Open(project, isQdMode);
      EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|quota|m|3"}));
    }
  }
}

TEST_F(QuotaSummary, TheModeIsReadAtTheFoldAndNotAgain) {
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), {L"4-1", L"quota", L"m", L"D0"}, 1))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 4));
  Open(project);
  EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|quota|m|4"}));
  settings->qdDeMode = 1;
  EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|quota|m|4"}));
  CReportMng::Instance()->Clear();
  EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|quota|m|1"}));
}

// Quotas and chapters.

TEST_F(QuotaSummary, QuotasOfOneCodeNameAndUnitAreOneUnderWhateverBill) {
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1))
      .Row(QuotaRow(Bill(L"0308"), Quota(L"4-1"), 2))
      .Row(QuotaRow(Bill(L"0308"), Quota(L"4-1", L"quota", L"km"), 4));
  Open(project);
  // The bills' marks make no feature here.
  EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|quota|km|4", "@DE|4-1|quota|m|3"}));
  EXPECT_EQ(settings->markRequests, std::vector<std::wstring>{});
}

TEST_F(QuotaSummary, AQuotaWithoutCodeAndNameHasItsRowLikeAnyOther) {
  CTinyProject project;
  project.QdDe().Row(QuotaRow(Bill(L"0304"), {L"", L"", L"t", L"DE"}, 2));
  Open(project);
  EXPECT_EQ(DeRows(1), (Lines{"@C|其他章", "@DE|||t|2", "@Cg|管道\\给水管", "@A|DN25||t|2"}));
}

TEST_F(QuotaSummary, QuotasStandInNaturalOrderThenByNameAndUnit) {
  for (const wchar_t* code : {L"1-10", L"1-9", L"1.0", L"1"}) {
    quotaLibrary->chapters[code] = {1, L"章\\节"};
  }
  CTinyProject project;
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), Quota(L"1-10"), 1))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"1-9", L"一", L"m"), 2))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"1-9", L"一", L"kg"), 3))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"1-9", L"阿"), 4));
  Open(project);
  EXPECT_EQ(DeRows(0), (Lines{"@C|章", "@DE|1-9|阿|m|4", "@DE|1-9|一|kg|3", "@DE|1-9|一|m|2",
                              "@DE|1-10|quota|m|1"}));
  project = {};
  project.QdDe()
      .Row(QuotaRow(Bill(L"0304"), Quota(L"1"), 1))
      .Row(QuotaRow(Bill(L"0304"), Quota(L"1.0"), 2));
  Open(project);
  // Each goes ahead of the other; "1.0" is met first and "1" put in front of it.
  EXPECT_EQ(DeRows(0), (Lines{"@C|章", "@DE|1|quota|m|1", "@DE|1.0|quota|m|2"}));
}

TEST_F(QuotaSummary, ChaptersStandByTheNumberThatIsNotShown) {
  quotaLibrary->chapters = {{L"a", {20, L"B\\x"}},
                            {L"b", {20, L"A\\x"}},
                            {L"c", {3, L"C\\x\\y"}},
                            {L"d", {1, L"without section"}},
                            {L"e", {2, L"\\x"}}};
  CTinyProject project;
  double quantity = 1;
  for (const wchar_t* code : {L"unknown", L"a", L"b", L"c", L"d", L"e"}) {
    project.QdDe().Row(QuotaRow(Bill(L"0304"), Quota(code), quantity));
    quantity *= 2;
  }
  Open(project);
  // Of a and b, whose chapters have one number, the chapter first in key order stays.
  EXPECT_EQ(DeRows(0), (Lines{"@C|其他章", "@DE|d|quota|m|16", "@C|其他章", "@DE|e|quota|m|32",
                              "@C|C", "@DE|c|quota|m|8", "@C|A", "@DE|b|quota|m|4", "@C|其他章",
                              "@DE|unknown|quota|m|1"}));
}

TEST_F(QuotaSummary, BlocksDroppedByEqualSortNumbersStillCount) {
  CTinyProject project;
  STinyQdDeRow row = QuotaRow(Bill(L"0304"), Quota(L"4-1"), 1);
  row.category = {L"管道", L"b"};
  project.QdDe().Row(row);
  row.category = {L"管道", L"a"};
  row.calItem = Item(2);
  row.sysCode = L"A\\z";
  project.QdDe().Row(row);
  row.sysCode = L"A\\y";
  row.calItem = Item(4);
  project.QdDe().Row(row);
  // First codes of one sort number: only the greatest name is walked.
  row.sysCode = L"0";
  row.calItem = Item(8);
  project.QdDe().Row(row);
  Open(project);
  EXPECT_EQ(DeRows(4), (Lines{"@C|电气工程", "@DE|4-1|quota|m|7", "@Cg|管道\\a", "@A|DN25||m|6",
                              "@F|1|1|m|6", "@S1|A|m|6|c1$$c1$$", "@S2|y|m|4|c1$$"}));
}

// Filters, sections, requests.

TEST_F(QuotaSummary, FiltersSelectKindsFloorsAndCodes) {
  Open(Building());
  Report::SNewCondition condition;
  condition.categories = {L"附"};
  const Lines lamps{"@C|电气工程", "@DE|4-1|灯具|套|1"};
  EXPECT_EQ(DeRows(0, condition), lamps);
  condition.categories = {L"附件\\水表"};
  EXPECT_EQ(DeRows(0, condition), lamps);
  // Each entry that selects a kind counts it once more.
  condition.categories = {L"附", L"附件\\水表"};
  EXPECT_EQ(DeRows(0, condition), (Lines{"@C|电气工程", "@DE|4-1|灯具|套|2"}));
  EXPECT_EQ(DeRows(1, condition), (Lines{"@C|电气工程", "@DE|4-1|灯具|套|2", "@Cg|附件\\水表",
                                         "@A|LXS-20|材质:铜|套|1"}));
  condition.categories = {L"", L"附件\\水", L"附件\\水表\\x"};
  EXPECT_EQ(DeRows(0, condition), Lines{});
  condition.categories.clear();
  condition.sysCodes = {L"A\\B\\C"};
  EXPECT_EQ(DeRows(0, condition), (Lines{"@C|给排水工程", "@DE|8-1|塑料管|10m|9"}));
  condition.sysCodes = {L"A\\B", L"D"};
  EXPECT_EQ(DeRows(0, condition), (Lines{"@C|给排水工程", "@DE|8-1|塑料管|10m|9"}));
  condition.sysCodes = {L"D"};
  EXPECT_EQ(DeRows(0, condition), lamps);
  condition.sysCodes.clear();
  condition.floors = {{L"1,3", L"2"}, {L"1,3", L"2"}, {L"5", L"5"}};
  EXPECT_EQ(DeRows(6, condition),
            (Lines{"@C|给排水工程", "@DE|8-1|塑料管|10m|6", "@Cg|管道\\给水管", "@A|DN25||10m|6",
                   "@F|1,3|2|10m|3", "@S1|A(alpha)|10m|3|c3$c4$$", "@S2|B|10m|3|c3$c4$$",
                   "@S3|C(gamma)|10m|3|c3$c4$$", "@L|回路1|(1+0.5)*2件|10m|3|c3$c4$$"}));
}

TEST_F(QuotaSummary, ShownSectionsMakeBlocksInTextOrder) {
  Open(Building());
  ShowSections({L"二区", L"三区", L"一区"});
  EXPECT_EQ(DeRows(0, {}, 1), (Lines{"@P|一区", "@C|电气工程", "@DE|4-1|灯具|套|1", "@P|二区",
                                     "@C|给排水工程", "@DE|8-1|塑料管|10m|9"}));
  ShowSections({L"二区"}, true);
  EXPECT_EQ(DeRows(0), (Lines{"@C|给排水工程", "@DE|8-1|塑料管|10m|9"}));
  ShowSections({});
  EXPECT_EQ(DeRows(0, {}, 1), Lines{});
  EXPECT_EQ(DeRows(0).size(), 4U);
}

TEST_F(QuotaSummary, RequestsAreIndependentAndTakeTheStoredConditionBackIn) {
  Open(Building());
  const Lines all = DeRows(6);
  Report::SNewCondition condition;
  condition.sysCodes = {L"D"};
  condition.floors = {{L"1", L"1"}};
  condition.categories = {L"附件\\水表"};
  const Lines some{"@C|电气工程", "@DE|4-1|灯具|套|1"};
  EXPECT_EQ(DeRows(0, condition), some);
  Report::CellArray cells;
  De().GetDeHzData(cells, De().spec, De().condition, 0, 0);
  EXPECT_EQ(Rows(cells), some);
  const Report::CellArray before = cells;
  De().GetDeHzData(cells, L"电气", {}, 0, 0);
  EXPECT_EQ(cells, before);
  EXPECT_EQ(De().spec, kSpec);
  EXPECT_EQ(De().condition.sysCodes, condition.sysCodes);
  EXPECT_EQ(DeRows(6), all);
}

// Bad indices: a record is looked at when a step first names it.

class QuotaSummaryBadIndices : public QuotaSummary {
 protected:
  /// Opens a project of one good row and one of `row` with the bad indices that `spoil` sets.
  template <class TSpoil>
  void OpenSpoilt(const STinyQdDeRow& row, TSpoil&& spoil) {
    CTinyProject project;
    const std::wstring library = settings->qdDeMode == 0 ? L"DE" : L"D0";
    project.QdDe().Row(row).Row(QuotaRow(Bill(L"0304"), {L"4-1", L"good", L"m", library}, 2));
    spoil(project.QdDe().Data().rows[0]);
    Open(project);
  }
  static void SpoilAllButItems(SKorDMQdDeRow& row) {
    row.sgd = row.floor = row.component = row.spec = row.category = row.attr = -1;
    row.sysCode = row.calItem = 99;
  }
  void ExpectGoodRowAlone() { EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|good|m|2"})); }
  static void ExpectFailure() {
    EXPECT_THROW(De(), std::out_of_range);
    EXPECT_THROW(De(), std::out_of_range);
  }
};

TEST_F(QuotaSummaryBadIndices, ABillRowMayHoldThemEverywhere) {
  for (const int mode : {0, 1}) {
    settings->qdDeMode = mode;
    OpenSpoilt(OwnRow(Bill(L"0304"), 1), [](SKorDMQdDeRow& row) {
      SpoilAllButItems(row);
      row.qdItem = -1;
      row.deItem = 99;
    });
    ExpectGoodRowAlone();
  }
}

TEST_F(QuotaSummaryBadIndices, ARowOfAForeignQuotaMayHoldThemPastTheTests) {
  const STinyQdDeRow foreign = QuotaRow(Bill(L"0304"), Foreign(Quota(L"4-1")), 1);
  OpenSpoilt(foreign, SpoilAllButItems);
  ExpectGoodRowAlone();
  settings->qdDeMode = 1;
  OpenSpoilt(foreign, [](SKorDMQdDeRow& row) {
    SpoilAllButItems(row);
    row.qdItem = -1;
  });
  ExpectGoodRowAlone();
}

TEST_F(QuotaSummaryBadIndices, ModeZeroFetchesBothItemsBeforeItComparesLibraries) {
  const STinyQdDeRow foreign = QuotaRow(Foreign(Bill(L"0304")), Foreign(Quota(L"4-1")), 1);
  for (const int bad : {-1, 9}) {
    OpenSpoilt(foreign, [bad](SKorDMQdDeRow& row) { row.qdItem = bad; });
    ExpectFailure();
    OpenSpoilt(foreign, [bad](SKorDMQdDeRow& row) { row.deItem = bad; });
    ExpectFailure();
  }
}

TEST_F(QuotaSummaryBadIndices, OtherModesNeverLookAtTheBill) {
  settings->qdDeMode = 1;
  const STinyQdDeRow row = QuotaRow(Bill(L"0304"), {L"4-1", L"good", L"m", L"D0"}, 4);
  OpenSpoilt(row, [](SKorDMQdDeRow& spoilt) { spoilt.qdItem = -1; });
  EXPECT_EQ(DeRows(0), (Lines{"@C|电气工程", "@DE|4-1|good|m|6"}));
  OpenSpoilt(row, [](SKorDMQdDeRow& spoilt) { spoilt.deItem = 9; });
  ExpectFailure();
}

TEST_F(QuotaSummaryBadIndices, ARowThatPassedFailsByAnyOther) {
  for (const int mode : {0, 1}) {
    settings->qdDeMode = mode;
    // The system code is empty: the look-ups alone would end at that row without a failure.
    STinyQdDeRow row =
        QuotaRow(Bill(L"0304"), {L"4-1", L"good", L"m", mode == 0 ? L"DE" : L"D0"}, 1);
    row.sysCode = L"";
    for (const auto index : {&SKorDMQdDeRow::sgd, &SKorDMQdDeRow::floor, &SKorDMQdDeRow::component,
                             &SKorDMQdDeRow::spec, &SKorDMQdDeRow::category, &SKorDMQdDeRow::attr,
                             &SKorDMQdDeRow::sysCode, &SKorDMQdDeRow::calItem}) {
      for (const int bad : {-1, 9, std::numeric_limits<int>::max()}) {
        OpenSpoilt(row, [&](SKorDMQdDeRow& spoilt) { spoilt.*index = bad; });
        ExpectFailure();
      }
    }
    OpenSpoilt(row, [](const SKorDMQdDeRow&) {});
    ExpectGoodRowAlone();
  }
}

}  // namespace
