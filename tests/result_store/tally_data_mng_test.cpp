#include "result_store/tally_data_mng.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "support/tally_test_fixture.h"

namespace {

using tally_test::CTinyProject;
using tally_test::EDbRead;
using Reads = std::vector<EDbRead>;

const std::wstring kSpec = L"给排水";
constexpr int kNoNumber = std::numeric_limits<int>::max();
const Reads kTreeReads{EDbRead::Category, EDbRead::SysCode, EDbRead::Floor, EDbRead::SgdAtt};

class TallyDataMng : public tally_test::TallyTest {
 protected:
  CTallyDataMng& store = *CTallyDataMng::Instance();

  /// A project with one record of everything.
  static CTinyProject Full() {
    CTinyProject project;
    project.KindSort(kSpec, L"管道\\给水管", 5).SysCodeSort(kSpec, L"A&B", 6, L"东楼");
    project.Floor(L"一层", L"1").Section(L"一区");
    project.Hz().Row({});
    project.Gl().Row({});
    project.Cg().Row({});
    project.Detail().Row({});
    project.Pj().Row({});
    project.QdDe().Row({});
    return project;
  }
};

/// A result set: the read that fills it, and how many rows the store hands out.
struct SSetCase {
  const char* name;
  EDbRead read;
  std::size_t (*rows)(CTallyDataMng&);
};

const SSetCase kSets[] = {
    {"Detail", EDbRead::Detail, [](CTallyDataMng& s) { return s.GetXhlDetailData().rows.size(); }},
    {"Hz", EDbRead::Hz, [](CTallyDataMng& s) { return s.GetXhlHzData().rows.size(); }},
    {"Gl", EDbRead::Gl, [](CTallyDataMng& s) { return s.GetXhlGlData().rows.size(); }},
    {"Cg", EDbRead::Cg, [](CTallyDataMng& s) { return s.GetXhlCgData().rows.size(); }},
    {"Pj", EDbRead::Pj, [](CTallyDataMng& s) { return s.GetPjHzData().rows.size(); }},
    {"QdDe", EDbRead::QdDe, [](CTallyDataMng& s) { return s.GetQdDeHzData().rows.size(); }},
};

TEST_F(TallyDataMng, OpeningReadsTheTreeRecordsAlone) {
  Open(Full());
  EXPECT_EQ(db->reads, kTreeReads);
  EXPECT_EQ(db->paths, std::vector<std::wstring>(4, path));
  EXPECT_EQ(store.GetDbPath(), path);
  EXPECT_TRUE(store.IsQdMode());
  ASSERT_EQ(store.GetSmallIndexTree().size(), 1U);
  EXPECT_EQ(store.GetSmallIndexTree()[0].path, L"管道\\给水管");
  ASSERT_EQ(store.GetSysCodeTree().size(), 1U);
  EXPECT_EQ(store.GetSysCodeTree()[0].sysCode, L"A&B");
  ASSERT_EQ(store.GetFloorTree().size(), 1U);
  EXPECT_EQ(store.GetFloorTree()[0].name, L"一层");
  EXPECT_EQ(store.GetSgdNameTree(), (std::vector<std::wstring>{L"一区"}));
}

TEST_F(TallyDataMng, OpeningTheSameProjectAgainReadsNothingAndKeepsTheReports) {
  Open(Full());
  IReport* tree = CReportMng::Instance()->GetTreeData(Report::TreeFloor);
  tree->spec = L"marked";
  store.GetXhlHzData();
  store.SetSpecReportHasData(kSpec, L"消耗量汇总表", false);
  db->ForgetReads();
  store.InitData(path, true);
  store.GetXhlHzData();
  EXPECT_EQ(db->reads, Reads{});
  EXPECT_FALSE(store.GetSpecReportHasData(kSpec, L"消耗量汇总表"));
  EXPECT_EQ(CReportMng::Instance()->GetTreeData(Report::TreeFloor)->spec, L"marked");
}

TEST_F(TallyDataMng, OpeningWithTheOtherFlagDropsEverything) {
  Open(Full());
  CReportMng::Instance()->GetTreeData(Report::TreeFloor)->spec = L"marked";
  store.GetXhlHzData();
  store.SetSpecReportHasData(kSpec, L"消耗量汇总表", false);
  db->ForgetReads();
  store.InitData(path, false);
  EXPECT_EQ(db->reads, kTreeReads);
  EXPECT_FALSE(store.IsQdMode());
  EXPECT_TRUE(store.GetSpecReportHasData(kSpec, L"消耗量汇总表"));
  EXPECT_EQ(CReportMng::Instance()->GetTreeData(Report::TreeFloor)->spec, L"");
  store.GetXhlHzData();
  EXPECT_EQ(db->Count(EDbRead::Hz), 1);
}

TEST_F(TallyDataMng, AnotherProjectReplacesTheTreeRecords) {
  Open(Full());
  Open(CTinyProject().Floor(L"二层", L"2"));
  EXPECT_TRUE(store.GetSmallIndexTree().empty());
  EXPECT_TRUE(store.GetSysCodeTree().empty());
  EXPECT_TRUE(store.GetSgdNameTree().empty());
  ASSERT_EQ(store.GetFloorTree().size(), 1U);
  EXPECT_EQ(store.GetFloorTree()[0].name, L"二层");
  EXPECT_EQ(store.GetCategorySortId(kSpec, L"管道\\给水管"), 1000000);
  EXPECT_EQ(store.GetSysCodeSortId(kSpec, L"A\\B"), 1000000);
}

TEST_F(TallyDataMng, EachSetIsReadOnceWhenItIsFirstAskedFor) {
  Open(Full());
  for (const SSetCase& set : kSets) {
    SCOPED_TRACE(set.name);
    db->ForgetReads();
    EXPECT_EQ(set.rows(store), 1U);
    EXPECT_EQ(set.rows(store), 1U);
    EXPECT_EQ(db->reads, Reads{set.read});
    EXPECT_EQ(db->paths, std::vector<std::wstring>{path});
  }
}

TEST_F(TallyDataMng, EachSetIsReadAnewForAnotherProject) {
  Open(Full());
  for (const SSetCase& set : kSets) {
    set.rows(store);
  }
  Open({});
  for (const SSetCase& set : kSets) {
    EXPECT_EQ(set.rows(store), 0U) << set.name;
  }
}

TEST_F(TallyDataMng, AFailedReadCountsAsLoaded) {
  Open(Full());
  for (const SSetCase& set : kSets) {
    SCOPED_TRACE(set.name);
    db->ForgetReads();
    db->failing = {set.read};
    EXPECT_EQ(set.rows(store), 0U);
    db->failing.clear();
    EXPECT_EQ(set.rows(store), 0U);
    EXPECT_EQ(db->reads, Reads{set.read});
  }
}

TEST_F(TallyDataMng, AReadThatRaisesLeavesItsSetUnread) {
  Open(Full());
  for (const SSetCase& set : kSets) {
    SCOPED_TRACE(set.name);
    db->ForgetReads();
    db->raising = {set.read};
    EXPECT_THROW(set.rows(store), std::bad_alloc);
    db->raising.clear();
    EXPECT_EQ(set.rows(store), 1U);
    EXPECT_EQ(db->Count(set.read), 2);
  }
}

TEST_F(TallyDataMng, AFailedTreeReadLeavesItsRecordsEmpty) {
  db->failing = {EDbRead::SysCode, EDbRead::SgdAtt};
  Open(Full());
  EXPECT_EQ(db->reads, kTreeReads);
  EXPECT_EQ(store.GetDbPath(), path);
  EXPECT_EQ(store.GetSmallIndexTree().size(), 1U);
  EXPECT_TRUE(store.GetSysCodeTree().empty());
  EXPECT_EQ(store.GetFloorTree().size(), 1U);
  EXPECT_TRUE(store.GetSgdNameTree().empty());
}

TEST_F(TallyDataMng, AnOpeningThatRaisesLeavesNoProjectOpen) {
  for (const EDbRead read : kTreeReads) {
    Open(Full());
    db->raising = {read};
    EXPECT_THROW(Open(Full()), std::bad_alloc);
    EXPECT_EQ(store.GetDbPath(), L"");
    EXPECT_TRUE(store.GetSmallIndexTree().empty());
    EXPECT_TRUE(store.GetSysCodeTree().empty());
    EXPECT_TRUE(store.GetFloorTree().empty());
    EXPECT_TRUE(store.GetSgdNameTree().empty());
    EXPECT_EQ(store.GetCategorySortId(kSpec, L"管道\\给水管"), 1000000);
    db->raising.clear();
    db->ForgetReads();
    store.InitData(path, true);
    EXPECT_EQ(db->reads, kTreeReads);
    EXPECT_EQ(store.GetSgdNameTree().size(), 1U);
  }
}

TEST_F(TallyDataMng, KindsAreNumberedByTheFirstRecordOfAPath) {
  Open(CTinyProject()
           .KindSort(kSpec, L"管道\\给水管", 5)
           .KindSort(kSpec, L"管道\\给水管", 1)
           .KindSort(L"消防", L"管道\\给水管", 7));
  EXPECT_EQ(store.GetCategorySortId(kSpec, L"管道\\给水管"), 5);
  EXPECT_EQ(store.GetCategorySortId(L"消防", L"管道\\给水管"), 7);
  EXPECT_EQ(store.GetCategorySortId(kSpec, L"管道"), 1000000);
  EXPECT_EQ(store.GetCategorySortId(kSpec, L""), 1000000);
  EXPECT_EQ(store.GetCategorySortId(L"电气", L"管道\\给水管"), 1000000);
}

TEST_F(TallyDataMng, CategoriesAreNumberedByTheirFirstKindInTextOrder) {
  Open(CTinyProject()
           .KindSort(kSpec, L"阀门\\z", 9)
           .KindSort(kSpec, L"阀门\\a", 4)
           .KindSort(kSpec, L"设备\\b", 1));
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"阀门"), 4);
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"阀"), 4);
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"阀门\\z"), 9);
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"门"), 1000000);
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"阀门\\zz"), 1000000);
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L""), 1);
  EXPECT_EQ(store.GetBigCategorySortId(L"电气", L"阀门"), 1000000);
}

TEST_F(TallyDataMng, ACategoryThatBeginsAnotherOnesNameFindsTheSmallerKey) {
  Open(CTinyProject().KindSort(kSpec, L"T\\x", 1).KindSort(kSpec, L"TA\\y", 2));
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"T"), 2);
  EXPECT_EQ(store.GetBigCategorySortId(kSpec, L"T\\"), 1);
}

TEST_F(TallyDataMng, SystemCodesAreFoundByPathAndNotByTheirStoredForm) {
  Open(CTinyProject().SysCodeSort(kSpec, L"A&B&C", 3, L"东楼"));
  EXPECT_EQ(store.GetSysCodeSortId(kSpec, L"A\\B\\C"), 3);
  EXPECT_EQ(store.GetSysCodeRemark(kSpec, L"A\\B\\C"), L"东楼");
  EXPECT_EQ(store.GetSysCodeSortId(kSpec, L"A&B&C"), 1000000);
  EXPECT_EQ(store.GetSysCodeRemark(kSpec, L"A&B&C"), L"");
  EXPECT_EQ(store.GetSysCodeSortId(L"电气", L"A\\B\\C"), 1000000);
  EXPECT_EQ(store.GetSysCodeRemark(L"电气", L"A\\B\\C"), L"");
}

TEST_F(TallyDataMng, TheFirstRecordOfASystemCodeStays) {
  Open(CTinyProject()
           .SysCodeSort(kSpec, L"A&B", 3, L"first")
           .SysCodeSort(kSpec, L"A\\B", 1, L"second")
           .SysCodeSort(kSpec, L"A&B", 2, L"third"));
  EXPECT_EQ(store.GetSysCodeSortId(kSpec, L"A\\B"), 3);
  EXPECT_EQ(store.GetSysCodeRemark(kSpec, L"A\\B"), L"first");
}

TEST_F(TallyDataMng, VersionNineIsTaken) {
  EXPECT_TRUE(store.CheckMdbVertion(L"other"));
  EXPECT_TRUE(messageBox->shown.empty());
  EXPECT_EQ(db->reads, Reads{EDbRead::Version});
  EXPECT_EQ(db->paths, std::vector<std::wstring>{L"other"});
  EXPECT_EQ(store.GetDbPath(), path);
}

TEST_F(TallyDataMng, ANewerVersionIsRefusedInSilence) {
  for (const int version : {10, std::numeric_limits<int>::max()}) {
    db->version = version;
    EXPECT_FALSE(store.CheckMdbVertion(path));
  }
  EXPECT_TRUE(messageBox->shown.empty());
}

TEST_F(TallyDataMng, AnOlderVersionIsRefusedWithAMessage) {
  for (const int version : {8, 0, -1, std::numeric_limits<int>::min()}) {
    messageBox->shown.clear();
    db->version = version;
    EXPECT_FALSE(store.CheckMdbVertion(path));
    ASSERT_EQ(messageBox->shown.size(), 1U);
    EXPECT_EQ(messageBox->shown[0].text, L"当前数据库版本太低,请重新计算！");
    EXPECT_EQ(messageBox->shown[0].caption, L"Korvane");
    EXPECT_EQ(messageBox->shown[0].flags, 0x12040U);
  }
}

TEST_F(TallyDataMng, FeaturesAreTheMarksOfABillItemALineEach) {
  settings->marks = {{L"0310", {L"材质", L"钢", L"skipped", L"规格", L"", L"skipped"}}};
  EXPECT_EQ(store.GetQdFeather(L"0310"), L"材质: 钢\n规格: \n");
  settings->marks.clear();
  EXPECT_EQ(store.GetQdFeather(L"0310"), L"材质: 钢\n规格: \n");
  EXPECT_EQ(settings->markRequests, (std::vector<std::wstring>{L"0310"}));
}

TEST_F(TallyDataMng, FeaturesOfAnItemWithoutMarksAreEmptyAndRemembered) {
  EXPECT_EQ(store.GetQdFeather(L"0310"), L"");
  settings->marks = {{L"0310", {L"材质", L"钢", L""}}};
  EXPECT_EQ(store.GetQdFeather(L"0310"), L"");
  EXPECT_EQ(settings->markRequests.size(), 1U);
  Open({});
  EXPECT_EQ(store.GetQdFeather(L"0310"), L"材质: 钢\n");
}

TEST_F(TallyDataMng, FeaturesTakeNoPartOfABrokenMark) {
  settings->marks = {{L"a", {L"材质", L"钢", L"", L"规格"}}, {L"b", {L"材质", L"钢"}}};
  EXPECT_EQ(store.GetQdFeather(L"a"), L"材质: 钢\n");
  EXPECT_EQ(store.GetQdFeather(L"b"), L"材质: 钢\n");
}

/// A chapter look-up from a known starting number: "number name".
std::wstring Chapter(std::wstring (CTallyDataMng::*get)(const std::wstring&, int&),
                     const std::wstring& code, int number = kNoNumber) {
  const std::wstring name = (CTallyDataMng::Instance()->*get)(code, number);
  return std::to_wstring(number) + L" " + name;
}

TEST_F(TallyDataMng, BillChaptersComeFromTheBillLibraryOnce) {
  store.GetQdDeHzData();
  billLibrary->chapters = {{L"a", {7, L"给水"}}};
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"a"), L"7 给水");
  billLibrary->chapters.clear();
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"a", 1), L"7 给水");
  EXPECT_EQ(billLibrary->requests, (std::vector<std::wstring>{L"a"}));
  EXPECT_TRUE(quotaLibrary->requests.empty());
}

TEST_F(TallyDataMng, ABillChapterWithoutANameKeepsItsNumber) {
  store.GetQdDeHzData();
  billLibrary->chapters = {{L"a", {7, L""}}, {L"b", {{}, L"无号"}}, {L"c", {{}, L""}}};
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"a"), L"7 其他章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"b"), L"2147483647 无号");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"c", 3), L"3 其他章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"unknown"), L"2147483647 其他章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"unknown", 3), L"2147483647 其他章");
}

TEST_F(TallyDataMng, AQuotaChapterIsWhatStandsBeforeTheFirstBackslash) {
  store.GetQdDeHzData();
  quotaLibrary->chapters = {{L"a", {2, L"第二章\\第一节\\x"}},
                            {L"b", {3, L"第三章"}},
                            {L"c", {4, L"\\第一节"}},
                            {L"d", {{}, L"第五章\\"}}};
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"a"), L"2 第二章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"b"), L"3 其他章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"c"), L"4 其他章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"d"), L"2147483647 第五章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"e"), L"2147483647 其他章");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"a", 1), L"2 第二章");
  EXPECT_EQ(quotaLibrary->requests, (std::vector<std::wstring>{L"a", L"b", L"c", L"d", L"e"}));
  EXPECT_TRUE(billLibrary->requests.empty());
}

TEST_F(TallyDataMng, ChaptersAreForgottenWithTheProject) {
  Chapter(&CTallyDataMng::GetQdChapter, L"a");
  Chapter(&CTallyDataMng::GetDeChapter, L"a");
  Open({});
  store.GetQdDeHzData();
  billLibrary->chapters = {{L"a", {7, L"给水"}}};
  quotaLibrary->chapters = {{L"a", {2, L"第二章\\"}}};
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"a"), L"7 给水");
  EXPECT_EQ(Chapter(&CTallyDataMng::GetDeChapter, L"a"), L"2 第二章");
}

using Openings = std::vector<std::vector<std::wstring>>;

class Libraries : public TallyDataMng {
 protected:
  Libraries() {
    settings->deCode = L"de";
    settings->deLocal = L"de local";
    settings->deYear = L"de year";
    settings->qdCode = L"qd";
    settings->qdLocal = L"qd local";
    settings->qdDeCode = L"qdde";
    settings->qdDeLocal = L"qdde local";
    settings->qdDeYear = L"qdde year";
  }
};

TEST_F(Libraries, OpenBothInBillModeBeforeTheSetIsRead) {
  Open({});
  EXPECT_EQ(billLibrary->openings, Openings{});
  EXPECT_EQ(quotaLibrary->openings, Openings{});
  store.GetQdDeHzData();
  store.GetQdDeHzData();
  EXPECT_EQ(billLibrary->openings, (Openings{{L"qd", L"qd local"}}));
  EXPECT_EQ(quotaLibrary->openings, (Openings{{L"qdde", L"qdde local", L"qdde year"}}));
  EXPECT_EQ(db->qdModes, (std::vector<bool>{true}));
}

TEST_F(Libraries, OpenTheQuotaLibraryAloneInQuotaMode) {
  Open({}, false);
  billLibrary->chapters = {{L"a", {7, L"给水"}}};
  store.GetQdDeHzData();
  EXPECT_EQ(billLibrary->openings, Openings{});
  EXPECT_EQ(quotaLibrary->openings, (Openings{{L"de", L"de local", L"de year"}}));
  EXPECT_EQ(db->qdModes, (std::vector<bool>{false}));
  EXPECT_EQ(Chapter(&CTallyDataMng::GetQdChapter, L"a"), L"2147483647 其他章");
}

TEST_F(Libraries, AreClosedByTheOpeningOfAProject) {
  Open({});
  store.GetQdDeHzData();
  EXPECT_TRUE(billLibrary->isOpen);
  EXPECT_TRUE(quotaLibrary->isOpen);
  Open({}, false);
  EXPECT_FALSE(billLibrary->isOpen);
  EXPECT_FALSE(quotaLibrary->isOpen);
}

TEST_F(Libraries, StayOpenWhereTheProjectStays) {
  Open({});
  store.GetQdDeHzData();
  store.InitData(path, true);
  EXPECT_TRUE(billLibrary->isOpen);
  EXPECT_TRUE(quotaLibrary->isOpen);
}

TEST_F(TallyDataMng, EveryReportHasDataUntilAHostSaysOtherwise) {
  EXPECT_TRUE(store.GetSpecReportHasData(kSpec, L"a"));
  store.SetSpecReportHasData(kSpec, L"a", false);
  EXPECT_FALSE(store.GetSpecReportHasData(kSpec, L"a"));
  EXPECT_TRUE(store.GetSpecReportHasData(kSpec, L"b"));
  EXPECT_TRUE(store.GetSpecReportHasData(L"电气", L"a"));
  store.SetSpecReportHasData(kSpec, L"a", true);
  EXPECT_TRUE(store.GetSpecReportHasData(kSpec, L"a"));
  store.SetSpecReportHasData(kSpec, L"a", false);
  Open({});
  EXPECT_TRUE(store.GetSpecReportHasData(kSpec, L"a"));
}

TEST_F(TallyDataMng, DisciplinesAreThoseOfTheReportsSetInStoredOrder) {
  struct SCase {
    int type;
    std::wstring spec;
    Reads reads;
  };
  const SCase cases[] = {
      {0, L"detail", {EDbRead::Detail}}, {6, L"detail", {EDbRead::Detail}},
      {7, L"detail", {EDbRead::Detail}}, {8, L"detail", {EDbRead::Detail}},
      {1, L"hz", {EDbRead::Hz}},         {3, L"gl", {EDbRead::Gl}},
      {4, L"cg", {EDbRead::Cg}},         {5, L"pj", {EDbRead::Pj}},
      {9, L"qdDe", {EDbRead::QdDe}},     {10, L"qdDe", {EDbRead::QdDe}},
      {11, L"qdDe", {EDbRead::QdDe}},
  };
  CTinyProject project;
  project.Detail().Row({.spec = L"detail"}).Row({.spec = L"a"});
  project.Hz().Row({.spec = L"hz"}).Row({.spec = L"a"});
  project.Gl().Row({.spec = L"gl"}).Row({.spec = L"a"});
  project.Cg().Row({.spec = L"cg"}).Row({.spec = L"a"});
  project.Pj().Row({.spec = L"pj"}).Row({.spec = L"a"});
  project.QdDe().Row({.spec = L"qdDe"}).Row({.spec = L"a"});
  for (const auto& [type, spec, reads] : cases) {
    SCOPED_TRACE(type);
    Open(project);
    db->ForgetReads();
    Report::CellArray cells{L"before"};
    store.GetReportSpecAry(cells, static_cast<Report::EReportType>(type));
    EXPECT_EQ(cells, (Report::CellArray{L"before", spec, L"a"}));
    EXPECT_EQ(db->reads, reads);
  }
}

TEST_F(TallyDataMng, ATypeWithoutASetHasNoDisciplines) {
  Open(Full());
  db->ForgetReads();
  Report::CellArray cells{L"before"};
  for (const int type : {-1, 2, 12, 99}) {
    store.GetReportSpecAry(cells, static_cast<Report::EReportType>(type));
  }
  EXPECT_EQ(cells, (Report::CellArray{L"before"}));
  EXPECT_EQ(db->reads, Reads{});
}

}  // namespace
