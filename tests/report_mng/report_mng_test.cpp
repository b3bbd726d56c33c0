#include "report_mng/report_mng.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <typeindex>
#include <typeinfo>
#include <utility>
#include <vector>

#include "support/tally_test_fixture.h"

namespace {

using Report::EReportType;
using tally_test::CTinyProject;
using tally_test::EDbRead;

constexpr EReportType kTypes[] = {
    Report::ReportSysJss, Report::ReportXhlHz,    Report::ReportXhlGl,      Report::ReportXhlCgHz,
    Report::ReportPjHz,   Report::ReportPipeJRBW, Report::ReportBrushPaint, Report::ReportDuctH,
    Report::ReportDeHz,   Report::ReportQdDeHz,   Report::ReportQdHz,
};

/// Marks a report, so that a new one of the same kind can be told from it.
constexpr const wchar_t* kMark = L"marked";

class ReportMng : public tally_test::TallyTest {
 protected:
  CReportMng& registry = *CReportMng::Instance();

  /// Whether the report that stands was marked before.
  bool IsMarked(EReportType type, int variant) {
    return registry.GetReportData(type, variant)->spec == kMark;
  }
  void Mark(EReportType type, int variant) { registry.GetReportData(type, variant)->spec = kMark; }
};

TEST_F(ReportMng, ReportsAreFiledByTypeAndCalculationBooksByVariant) {
  EXPECT_EQ(CReportMng::CreateReportKey(Report::ReportSysJss, 0), L"0@0");
  EXPECT_EQ(CReportMng::CreateReportKey(Report::ReportSysJss, 1), L"0@1");
  for (const int variant :
       {2, 7, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(CReportMng::CreateReportKey(Report::ReportSysJss, variant), L"0@2");
    EXPECT_EQ(CReportMng::CreateReportKey(Report::ReportXhlHz, variant), L"1");
    EXPECT_EQ(CReportMng::CreateReportKey(Report::ReportQdHz, variant), L"11");
  }
}

TEST_F(ReportMng, EveryTypeHasAClassOfItsOwn) {
  std::set<std::type_index> classes;
  for (const EReportType type : kTypes) {
    const IReport* report = registry.GetReportData(type, 0);
    ASSERT_NE(report, nullptr) << type;
    EXPECT_TRUE(classes.insert(typeid(*report)).second) << type;
  }
  for (const int variant : {1, 2}) {
    const IReport* report = registry.GetReportData(Report::ReportSysJss, variant);
    ASSERT_NE(report, nullptr) << variant;
    EXPECT_TRUE(classes.insert(typeid(*report)).second) << variant;
  }
}

TEST_F(ReportMng, ATypeWithoutAClassIsNull) {
  for (const int type : {2, 99, 12, -1}) {
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(registry.GetReportData(static_cast<EReportType>(type), 0), nullptr) << type;
    }
  }
  for (const int type : {3, -1}) {
    EXPECT_EQ(registry.GetTreeData(static_cast<Report::ETreeType>(type)), nullptr) << type;
  }
}

TEST_F(ReportMng, AReportIsMadeOnceWhateverTheVariant) {
  Open(CTinyProject());
  IReport* report = registry.GetReportData(Report::ReportXhlHz, 5);
  EXPECT_EQ(registry.GetReportData(Report::ReportXhlHz, 0), report);
  EXPECT_EQ(db->Count(EDbRead::Hz), 1);
}

TEST_F(ReportMng, TheBooksOfEveryOtherVariantAreTheSystemBook) {
  IReport* book = registry.GetReportData(Report::ReportSysJss, 7);
  EXPECT_EQ(registry.GetReportData(Report::ReportSysJss, 2), book);
  EXPECT_EQ(registry.GetReportData(Report::ReportSysJss, -1), book);
  EXPECT_NE(registry.GetReportData(Report::ReportSysJss, 0), book);
  EXPECT_NE(registry.GetReportData(Report::ReportSysJss, 1), book);
}

TEST_F(ReportMng, ATreeIsMadeOnce) {
  std::set<std::type_index> classes;
  for (const auto type : {Report::TreeFloor, Report::TreeSysCode, Report::TreeCategory}) {
    IReport* tree = registry.GetTreeData(type);
    ASSERT_NE(tree, nullptr);
    EXPECT_TRUE(classes.insert(typeid(*tree)).second);
    EXPECT_EQ(registry.GetTreeData(type), tree);
  }
}

TEST_F(ReportMng, AReportHasNoRequestAtFirst) {
  const IReport* report = registry.GetReportData(Report::ReportXhlHz, 0);
  EXPECT_EQ(report->spec, L"");
  EXPECT_TRUE(report->condition.floors.empty());
}

TEST_F(ReportMng, AReportStoresCopiesOfARequest) {
  IReport* report = registry.GetReportData(Report::ReportXhlHz, 0);
  Report::SNewCondition condition;
  condition.sysCodes = {L"A"};
  report->UpdateCondition(L"给排水", condition);
  condition.sysCodes.clear();
  EXPECT_EQ(report->spec, L"给排水");
  EXPECT_EQ(report->condition.sysCodes, (std::vector<std::wstring>{L"A"}));
}

TEST_F(ReportMng, ClearDropsReportsAndTrees) {
  Mark(Report::ReportXhlHz, 0);
  registry.GetTreeData(Report::TreeFloor)->spec = kMark;
  registry.Clear();
  EXPECT_FALSE(IsMarked(Report::ReportXhlHz, 0));
  EXPECT_EQ(registry.GetTreeData(Report::TreeFloor)->spec, L"");
  registry.Clear();
  registry.Clear();
}

TEST_F(ReportMng, ClearLeavesTheResultSetsLoaded) {
  registry.GetReportData(Report::ReportXhlHz, 0);
  registry.Clear();
  registry.GetReportData(Report::ReportXhlHz, 0);
  EXPECT_EQ(db->Count(EDbRead::Hz), 1);
}

TEST_F(ReportMng, TheCalculationBooksAreDroppedAlone) {
  Mark(Report::ReportXhlHz, 0);
  for (const int variant : {0, 1, 2}) {
    Mark(Report::ReportSysJss, variant);
  }
  registry.ClearXHLSysJSSReportData();
  EXPECT_TRUE(IsMarked(Report::ReportXhlHz, 0));
  for (const int variant : {0, 1, 2}) {
    EXPECT_FALSE(IsMarked(Report::ReportSysJss, variant)) << variant;
  }
}

TEST_F(ReportMng, DroppingTheBooksOfAnEmptyRegistryDoesNothing) {
  registry.ClearXHLSysJSSReportData();
  EXPECT_NE(registry.GetReportData(Report::ReportSysJss, 0), nullptr);
}

TEST_F(ReportMng, AnotherProjectDropsTheReports) {
  Mark(Report::ReportXhlHz, 0);
  Open({});
  EXPECT_FALSE(IsMarked(Report::ReportXhlHz, 0));
}

using RowFault = std::pair<int KorDMRec::SKorDMResultRow::*, int>;

TEST_F(ReportMng, AReportWhoseFoldFailsIsNotFiled) {
  using Row = KorDMRec::SKorDMResultRow;
  const RowFault faults[] = {
      {&Row::sgd, 1},       {&Row::floor, -1},
      {&Row::component, 1}, {&Row::spec, 2},
      {&Row::category, 1},  {&Row::attr, std::numeric_limits<int>::min()},
      {&Row::sysCode, 1},   {&Row::calItem, std::numeric_limits<int>::max()},
  };
  for (const auto& [member, index] : faults) {
    CTinyProject project;
    project.Hz().Row({.calItem = {.name = L"管道长度"}});
    project.Hz().Data().rows[0].*member = index;
    Open(project);
    for (int round = 0; round < 2; ++round) {
      EXPECT_THROW(registry.GetReportData(Report::ReportXhlHz, 0), std::out_of_range);
    }
    EXPECT_EQ(db->Count(EDbRead::Hz), 1);
    db->ForgetReads();
  }
  Open({});
  EXPECT_NE(registry.GetReportData(Report::ReportXhlHz, 0), nullptr);
}

TEST_F(ReportMng, AReportIsFoldedAnewAfterAReadThatRaised) {
  Open({});
  db->raising = {EDbRead::Hz};
  EXPECT_THROW(registry.GetReportData(Report::ReportXhlHz, 0), std::bad_alloc);
  db->raising.clear();
  EXPECT_NE(registry.GetReportData(Report::ReportXhlHz, 0), nullptr);
  EXPECT_EQ(db->Count(EDbRead::Hz), 2);
}

}  // namespace
