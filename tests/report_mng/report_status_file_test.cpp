// The report status and its file, in both layouts.
#include "report_mng/report_status_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/portable/utf8_text.h"
#include "report_mng/report_status_mng.h"
#include "support/failing_xml_service.h"
#include "support/tally_test_fixture.h"
#include "support/temp_folder.h"

namespace {

using Names = std::vector<std::wstring>;

class ReportStatusFile : public tally_test::TallyTest {
 protected:
  std::wstring Path(const char* name = "status.xml") const {
    return WideFromUtf8((folder_ / name).string());
  }
  std::string Bytes(const char* name = "status.xml") const {
    return tally_test::ReadBytes(folder_ / name);
  }

  /// Reads a file whose root has this version and these children.
  bool Read(const std::string& content, const std::string& attributes = " Version=\"16.2.0\"") {
    return ReadBytes("<报表状态数据" + attributes + ">" + content + "</报表状态数据>");
  }
  bool ReadBytes(const std::string& bytes) {
    Forget();
    tally_test::WriteBytes(folder_ / "status.xml", bytes);
    return status.ReadReportStatus(Path());
  }
  /// As in a new process.
  void Forget() { status = fresh_; }

  SReportStatus All() const {
    SReportStatus all;
    status.GetStatus(all);
    return all;
  }
  Report::SNewCondition Condition(const std::wstring& spec) const {
    return All().conditions.at(spec);
  }

  CReportStatusMng& status = *CReportStatusMng::Instance();
  tally_test::TInstalled<IXmlService, tally_test::CFailingXmlService> xml;
  tally_test::CTempFolder folder_;

 private:
  const CReportStatusMng fresh_ = status;
};

std::string Pairs(const std::vector<Report::SFloorPair>& pairs) {
  std::string text;
  for (const Report::SFloorPair& pair : pairs) {
    text += Utf8FromWide(pair.drawingFloor) + "=" + Utf8FromWide(pair.floor) + ";";
  }
  return text;
}

void ExpectError(int code, const std::string& message, const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "no error: " << message;
  } catch (const CXmlError& error) {
    EXPECT_EQ(error.Code(), code);
    EXPECT_EQ(error.what(), message);
  }
}

/// A condition that keeps all its lists in the file.
Report::SNewCondition FullCondition() {
  Report::SNewCondition condition;
  condition.curSysCode = L"J";
  condition.sysCodes = {L"W", L"J\\市政"};
  condition.curCategory = L"管道";
  condition.categories = {L"管道\\给水管", L"阀门"};
  condition.floors = {{L"3,4", L"3"}, {L"-1", L"-1"}};
  return condition;
}

TEST_F(ReportStatusFile, WritesTheWholeDocument) {
  EXPECT_FALSE(status.ReadReportStatus(Path()));
  status.SetCurReport(L"消耗量汇总表");
  status.SetCurSpec(L"给排水");
  status.SetIsDividedNode(true);
  status.SetIsBySgd(true);
  status.SetDispSgd({L"二区", L"", L"一区", L"二区"});
  status.SetTreeStatus(L"给排水", FullCondition());
  status.SetTreeStatus(L"电气", {});
  status.SetReportVisible(L"b", false);
  status.SetReportExpand(L"b", -2);
  status.SetReportColStatus(L"a", {{L"数量", true}, {L"单位", false}});
  status.SetTJTJTree(L"给排水", {true, {L"J"}}, {false, {{L"3", L"3"}}}, {true, {L"", L"管道"}});
  status.SaveReportStatus();
  EXPECT_EQ(
      Bytes(),
      "<报表状态数据 Version=\"16.2.0\"><当前报表类型>消耗量汇总表</当前报表类型>"
      "<当前专业>给排水</当前专业><是否按施工段统计>1</是否按施工段统计>"
      "<专业 Name=\"电气\"><Condition><系统编号><选中的系统编号/></系统编号>"
      "<构件><选中的构件/></构件><楼层信息><是否选中全部楼层>否</是否选中全部楼层></楼层信息>"
      "</Condition></专业>"
      "<专业 Name=\"给排水\"><Condition><系统编号><选中的系统编号>J</选中的系统编号>"
      "<系统编号>W</系统编号><系统编号>J\\市政</系统编号></系统编号>"
      "<构件><选中的构件>管道</选中的构件><构件>管道\\给水管</构件><构件>阀门</构件></构件>"
      "<楼层信息><是否选中全部楼层>否</是否选中全部楼层>"
      "<楼层信息><图纸对应楼层>3,4</图纸对应楼层><选择楼层>3</选择楼层></楼层信息>"
      "<楼层信息><图纸对应楼层>-1</图纸对应楼层><选择楼层>-1</选择楼层></楼层信息>"
      "</楼层信息></Condition></专业>"
      "<报表类型 Name=\"a\"><报表页是否显示>是</报表页是否显示><报表展开的级别>0</报表展开的级别>"
      "<报表列状态><报表列 Name=\"数量\" Visible=\"true\"/>"
      "<报表列 Name=\"单位\" Visible=\"false\"/></报表列状态></报表类型>"
      "<报表类型 Name=\"b\"><报表页是否显示>否</报表页是否显示>"
      "<报表展开的级别>-2</报表展开的级别><报表列状态/></报表类型>"
      "<施工段名称显示><名称 Name=\"二区\"/><名称 Name=\"\"/><名称 Name=\"一区\"/>"
      "<名称 Name=\"二区\"/></施工段名称显示>"
      "<筛选条件树><专业 Name=\"给排水\"><系统编号筛选条件树>"
      "<系统编号筛选树是否选择全部>是</系统编号筛选树是否选择全部><系统编号>J</系统编号>"
      "</系统编号筛选条件树><楼层筛选条件树><楼层筛选树是否选择全部>否</楼层筛选树是否选择全部>"
      "<楼层><图纸对应楼层>3</图纸对应楼层><选择楼层>3</选择楼层></楼层></楼层筛选条件树>"
      "<构件筛选条件树><构件筛选树是否选择全部>是</构件筛选树是否选择全部><构件/><构件>管道</构件>"
      "</构件筛选条件树></专业></筛选条件树></报表状态数据>");
}

TEST_F(ReportStatusFile, AnEmptyStatusHasItsFewElements) {
  status.ReadReportStatus(Path());
  status.SaveReportStatus();
  EXPECT_EQ(Bytes(),
            "<报表状态数据 Version=\"16.2.0\"><当前报表类型/><当前专业/>"
            "<是否按施工段统计>0</是否按施工段统计><施工段名称显示/><筛选条件树/></报表状态数据>");
}

TEST_F(ReportStatusFile, GivesBackEveryTextThatLasts) {
  const Names texts = {L" ",
                       L" \t\r\n ",
                       L"\n",
                       L"  a b  ",
                       L"a\rb\nc\r\nd",
                       L"<&>\"'",
                       WideFromUtf8("\U00020000\U0001F600"),
                       std::wstring(100000, L'汉')};
  status.ReadReportStatus(Path());
  Report::SNewCondition condition = FullCondition();
  condition.sysCodes = texts;
  condition.categories.insert(texts.begin(), texts.end());
  for (const std::wstring& text : texts) {
    condition.curSysCode = text;
    condition.curCategory = text;
    condition.floors = {{text, text}};
    status.SetTreeStatus(text, condition);
    status.SetReportColStatus(text, {{text, true}, {L"", false}});
    status.SetReportExpand(text, -2147483647 - 1);
    status.SetTJTJTree(text, {true, texts}, {true, {{text, text}}}, {true, texts});
  }
  status.SetDispSgd(texts);
  status.SetCurSpec(texts[4]);
  status.SetCurReport(texts[1]);
  const SReportStatus before = All();
  status.SaveReportStatus();
  Forget();
  ASSERT_TRUE(status.ReadReportStatus(Path()));
  const SReportStatus after = All();
  EXPECT_EQ(after.curSpec, before.curSpec);
  EXPECT_EQ(after.curReport, before.curReport);
  EXPECT_EQ(after.dispSgd, texts);
  ASSERT_EQ(after.conditions.size(), texts.size());
  for (const std::wstring& text : texts) {
    const Report::SNewCondition& found = after.conditions.at(text);
    EXPECT_EQ(found.curSysCode, text);
    EXPECT_EQ(found.sysCodes, texts);
    EXPECT_EQ(found.curCategory, text);
    EXPECT_EQ(found.categories, condition.categories);
    EXPECT_EQ(Pairs(found.floors), Pairs({{text, text}}));
    const NewReportConfigRec& report = after.reports.at(text);
    EXPECT_EQ(report.expandLevel, -2147483647 - 1);
    ASSERT_EQ(report.columns.size(), 2U);
    EXPECT_EQ(report.columns[0].name, text);
    EXPECT_TRUE(report.columns[0].visible);
    EXPECT_EQ(report.columns[1].name, L"");
    EXPECT_FALSE(report.columns[1].visible);
    const TJTreeRec& tree = after.trees.at(text);
    EXPECT_TRUE(tree.sysCode.allSelected && tree.floor.allSelected && tree.member.allSelected);
    EXPECT_EQ(tree.sysCode.names, texts);
    EXPECT_EQ(tree.member.names, texts);
    EXPECT_EQ(Pairs(tree.floor.floors), Pairs({{text, text}}));
  }
}

TEST_F(ReportStatusFile, ACharacterThatXmlCannotHoldLeavesTheOldFile) {
  status.ReadReportStatus(Path());
  status.SaveReportStatus();
  const std::string before = Bytes();
  for (const wchar_t c : {L'\0', L'\x1', L'\xFFFF'}) {
    status.SetCurSpec(std::wstring(1, c));
    ExpectError(-2147024809, "a text holds a character that XML cannot hold",
                [&] { status.SaveReportStatus(); });
    EXPECT_EQ(Bytes(), before);
  }
}

TEST_F(ReportStatusFile, TheDividedSwitchLastsInMemoryAlone) {
  status.ReadReportStatus(Path());
  status.SetIsDividedNode(true);
  status.SaveReportStatus();
  EXPECT_EQ(Bytes().find("系统计算书包含设备"), std::string::npos);
  EXPECT_TRUE(status.ReadReportStatus(Path()));
  EXPECT_TRUE(status.GetIsDividedNode());
  Forget();
  EXPECT_TRUE(status.ReadReportStatus(Path()));
  EXPECT_FALSE(status.GetIsDividedNode());
}

TEST_F(ReportStatusFile, ReadsTheSwitchesFromOneAlone) {
  ASSERT_TRUE(
      Read("<系统计算书包含设备>1</系统计算书包含设备><是否按施工段统计>1</是否按施工段统计>"));
  EXPECT_TRUE(status.GetIsDividedNode());
  EXPECT_TRUE(status.GetIsBySgd());
  for (const char* text : {"0", "", "是", "true", " 1", "11"}) {
    ASSERT_TRUE(Read("<系统计算书包含设备>1</系统计算书包含设备>"));
    tally_test::WriteBytes(folder_ / "other.xml",
                           std::string("<报表状态数据><系统计算书包含设备>") + text +
                               "</系统计算书包含设备></报表状态数据>");
    ASSERT_TRUE(status.ReadReportStatus(Path("other.xml")));
    EXPECT_FALSE(status.GetIsDividedNode()) << text;
  }
}

TEST_F(ReportStatusFile, AListWithoutACurrentTextComesBackFromTheTree) {
  status.ReadReportStatus(Path());
  Report::SNewCondition condition = FullCondition();
  condition.curSysCode.clear();
  condition.curCategory.clear();
  condition.allFloors = true;
  for (const wchar_t* spec : {L"none", L"all", L"some", L"empty"}) {
    status.SetTreeStatus(spec, condition);
  }
  const std::vector<Report::SFloorPair> floors = {{L"9", L"8"}};
  status.SetTJTJTree(L"all", {true, {L"t"}}, {true, floors}, {true, {L"t"}});
  status.SetTJTJTree(L"some", {false, {L"t", L"u"}}, {false, floors}, {false, {L"t", L"u"}});
  status.SetTJTJTree(L"empty", {}, {}, {});
  status.SaveReportStatus();
  Forget();
  ASSERT_TRUE(status.ReadReportStatus(Path()));
  for (const wchar_t* spec : {L"none", L"all", L"empty"}) {
    EXPECT_TRUE(Condition(spec).sysCodes.empty());
    EXPECT_TRUE(Condition(spec).categories.empty());
    EXPECT_TRUE(Condition(spec).floors.empty());
    EXPECT_TRUE(Condition(spec).allFloors);
  }
  EXPECT_EQ(Condition(L"some").sysCodes, (Names{L"t", L"u"}));
  EXPECT_EQ(Condition(L"some").categories.size(), 2U);
  EXPECT_EQ(Pairs(Condition(L"some").floors), "9=8;");
  EXPECT_TRUE(Condition(L"some").allFloors);
}

TEST_F(ReportStatusFile, TheTreeAddsKindsAndReplacesTheRest) {
  ASSERT_TRUE(Read(
      "<专业 Name='s'><Condition><系统编号><系统编号>a</系统编号></系统编号>"
      "<构件><构件>a</构件></构件><楼层信息><是否选中全部楼层>是</是否选中全部楼层>"
      "<楼层信息><图纸对应楼层>1</图纸对应楼层><选择楼层>1</选择楼层></楼层信息></楼层信息>"
      "</Condition></专业><筛选条件树><专业 Name='s'><系统编号筛选条件树><系统编号>t</系统编号>"
      "</系统编号筛选条件树><构件筛选条件树><构件>t</构件></构件筛选条件树><楼层筛选条件树><楼层>"
      "<图纸对应楼层>2</图纸对应楼层><选择楼层>2</选择楼层></楼层></楼层筛选条件树></专业>"
      "</筛选条件树>"));
  EXPECT_EQ(Condition(L"s").sysCodes, (Names{L"t"}));
  EXPECT_TRUE(Condition(L"s").categories.contains(L"a"));
  EXPECT_TRUE(Condition(L"s").categories.contains(L"t"));
  EXPECT_EQ(Pairs(Condition(L"s").floors), "2=2;");
}

constexpr const char* kOldCondition =
    "<专业 Name='s'><Condition><系统编号><甲>a</甲><x>b</x>c</系统编号><构件>管<b>道</b></构件>"
    "<楼层信息><图纸对应楼层>3,4</图纸对应楼层><选择楼层>3</选择楼层><x/></楼层信息>"
    "<楼层信息><图纸对应楼层>5</图纸对应楼层></楼层信息>"
    "<楼层信息><选择楼层>6</选择楼层><图纸对应楼层>6</图纸对应楼层></楼层信息>"
    "<是否选中全部楼层>是</是否选中全部楼层></Condition></专业>";

TEST_F(ReportStatusFile, ReadsTheOldLayout) {
  for (const char* version :
       {"", " Version=''", " Version='16.1.9'", " Version='x'", " Version='16'", " version='17'"}) {
    ASSERT_TRUE(Read(kOldCondition, version));
    const Report::SNewCondition condition = Condition(L"s");
    EXPECT_EQ(condition.curSysCode, L"a\\b\\c") << version;
    EXPECT_EQ(condition.sysCodes, (Names{L"a\\b\\c"}));
    EXPECT_EQ(condition.curCategory, L"管道");
    EXPECT_EQ(condition.categories.size(), 1U);
    EXPECT_TRUE(condition.categories.contains(L"管道"));
    EXPECT_EQ(Pairs(condition.floors), "3,4=3;6=6;");
    EXPECT_FALSE(condition.allFloors);
  }
}

TEST_F(ReportStatusFile, AnEmptyOldPathSelectsNothing) {
  ASSERT_TRUE(Read("<专业 Name='s'><Condition><系统编号/><构件/></Condition></专业>", ""));
  EXPECT_EQ(Condition(L"s").curSysCode, L"");
  EXPECT_TRUE(Condition(L"s").sysCodes.empty());
  EXPECT_TRUE(Condition(L"s").categories.empty());
  ASSERT_TRUE(
      Read("<专业 Name='s'><Condition><系统编号><a/><b/></系统编号></Condition></专业>", ""));
  EXPECT_EQ(Condition(L"s").sysCodes, (Names{L"\\"}));
}

TEST_F(ReportStatusFile, ReadsTheNewLayoutFromItsVersionOn) {
  for (const char* version : {"16.2.0", "16.2", "16.2.0.1", "16.10", "17"}) {
    ASSERT_TRUE(Read(
        "<专业 Name='s'><Condition><系统编号><x>a</x><选中的系统编号>b</选中的系统编号><x/>"
        "<系统编号>c</系统编号></系统编号><构件><选中的构件>d</选中的构件><y>f</y><构件>e</构件>"
        "<构件/></构件><楼层信息><是否选中全部楼层>否</是否选中全部楼层><楼层信息>"
        "<图纸对应楼层>1</图纸对应楼层><选择楼层>2</选择楼层></楼层信息><楼层信息>"
        "<选择楼层>2</选择楼层></楼层信息><x/></楼层信息><x/></Condition><x/></专业>",
        std::string(" Version='") + version + "'"));
    const Report::SNewCondition condition = Condition(L"s");
    EXPECT_EQ(condition.curSysCode, L"b") << version;
    EXPECT_EQ(condition.sysCodes, (Names{L"a", L"c"}));
    EXPECT_EQ(condition.curCategory, L"d");
    EXPECT_EQ(condition.categories.size(), 2U);
    EXPECT_EQ(Pairs(condition.floors), "1=2;");
    EXPECT_FALSE(condition.allFloors);
  }
}

TEST_F(ReportStatusFile, ASaveBringsAnOldFileToTheNewLayout) {
  ASSERT_TRUE(Read(kOldCondition, " Version='15.0.1'"));
  status.SaveReportStatus();
  EXPECT_TRUE(Bytes().starts_with("<报表状态数据 Version=\"16.2.0\">"));
  Forget();
  ASSERT_TRUE(status.ReadReportStatus(Path()));
  EXPECT_EQ(Condition(L"s").curSysCode, L"a\\b\\c");
  EXPECT_EQ(Condition(L"s").sysCodes, (Names{L"a\\b\\c"}));
  EXPECT_EQ(Pairs(Condition(L"s").floors), "3,4=3;6=6;");
}

TEST_F(ReportStatusFile, TheStampIsTheApplicationsVersion) {
  status.ReadReportStatus(Path());
  profile->version = L"18.0.3 beta";
  status.SaveReportStatus();
  EXPECT_TRUE(Bytes().starts_with("<报表状态数据 Version=\"18.0.3 beta\">"));
}

TEST_F(ReportStatusFile, AFileWithoutAVersionHasTheOneBefore) {
  ASSERT_TRUE(Read(""));
  tally_test::WriteBytes(folder_ / "other.xml",
                         "<报表状态数据><专业 Name='s'><Condition><系统编号>"
                         "<选中的系统编号>b</选中的系统编号></系统编号>"
                         "</Condition></专业></报表状态数据>");
  ASSERT_TRUE(status.ReadReportStatus(Path("other.xml")));
  EXPECT_EQ(Condition(L"s").curSysCode, L"b");
  EXPECT_TRUE(Condition(L"s").sysCodes.empty());
}

TEST_F(ReportStatusFile, ReadsReports) {
  ASSERT_TRUE(Read(
      "<报表类型 Name='a'/><报表类型 Name='b'><报表页是否显示>true</报表页是否显示>"
      "<报表展开的级别> 2x</报表展开的级别><报表列状态><报表列 Name='gone'/></报表列状态>"
      "<报表列状态><报表列 Visible='0' Name='c'/><x Name='d' Visible='x'/><报表列/>"
      "<报表列 Name='e' Visible='TRUE'/></报表列状态><x/></报表类型>"
      "<报表类型><报表展开的级别>x</报表展开的级别><报表页是否显示>是</报表页是否显示></报表类型>"
      "<报表类型 Name='f'><报表展开的级别>99999999999</报表展开的级别></报表类型>"));
  const auto reports = All().reports;
  ASSERT_EQ(reports.size(), 4U);
  EXPECT_TRUE(reports.at(L"a").visible);
  EXPECT_TRUE(reports.at(L"a").columns.empty());
  EXPECT_FALSE(reports.at(L"b").visible);
  EXPECT_EQ(reports.at(L"b").expandLevel, 2);
  const std::vector<Report::SColumnState>& columns = reports.at(L"b").columns;
  ASSERT_EQ(columns.size(), 3U);
  EXPECT_EQ(columns[0].name, L"c");
  EXPECT_FALSE(columns[0].visible);
  EXPECT_EQ(columns[1].name, L"");
  EXPECT_TRUE(columns[1].visible);
  EXPECT_TRUE(columns[2].visible);
  EXPECT_EQ(reports.at(L"").expandLevel, 0);
  EXPECT_TRUE(reports.at(L"").visible);
  EXPECT_EQ(reports.at(L"f").expandLevel, 2147483647);
  std::vector<Report::SColumnState> handedOut{{L"mine", true}};
  status.GetReportColStatus(L"a", handedOut);
  EXPECT_TRUE(handedOut.empty());
}

TEST_F(ReportStatusFile, AFailedConversionKeepsWhatWasRead) {
  ExpectError(-2147352571, "an attribute's value is not a boolean", [&] {
    Read(
        "<当前专业>s</当前专业><报表类型 Name='a'/><报表类型 Name='b'><报表列状态>"
        "<报表列 Visible='yes'/></报表列状态></报表类型><当前报表类型>r</当前报表类型>");
  });
  const SReportStatus all = All();
  EXPECT_EQ(all.curSpec, L"s");
  EXPECT_EQ(all.reports.size(), 1U);
  EXPECT_EQ(all.curReport, L"");
}

TEST_F(ReportStatusFile, ReadsSections) {
  ASSERT_TRUE(
      Read("<施工段名称显示><名称 Name='b'/><x Name=''/><名称/>text<!--c-->"
           "<名称 Other='a' Name='b'/></施工段名称显示>"));
  EXPECT_EQ(All().dispSgd, (Names{L"b", L"", L"b"}));
}

TEST_F(ReportStatusFile, ReadsTrees) {
  ASSERT_TRUE(Read(
      "<筛选条件树><任意 Name='s'><系统编号筛选条件树><系统编号>a</系统编号><系统编号/><x>b</x>"
      "<系统编号筛选树是否选择全部>是</系统编号筛选树是否选择全部></系统编号筛选条件树>"
      "<楼层筛选条件树><楼层><图纸对应楼层>1</图纸对应楼层><选择楼层>2</选择楼层></楼层><楼层>"
      "<图纸对应楼层>1</图纸对应楼层></楼层><x><图纸对应楼层>3</图纸对应楼层>"
      "<选择楼层>4</选择楼层></x></楼层筛选条件树><x/></任意><专业/></筛选条件树>",
      ""));
  const auto trees = All().trees;
  ASSERT_EQ(trees.size(), 2U);
  EXPECT_TRUE(trees.at(L"s").sysCode.allSelected);
  EXPECT_EQ(trees.at(L"s").sysCode.names, (Names{L"a"}));
  EXPECT_EQ(Pairs(trees.at(L"s").floor.floors), "1=2;");
  EXPECT_FALSE(trees.at(L"s").floor.allSelected);
  EXPECT_FALSE(trees.at(L"s").member.allSelected);
  EXPECT_TRUE(trees.contains(L""));
}

TEST_F(ReportStatusFile, TheLaterOfTwoWinsWhole) {
  ASSERT_TRUE(
      Read("<专业 Name='s'><Condition><系统编号><选中的系统编号>a</选中的系统编号></系统编号>"
           "</Condition></专业><专业 Name='s'><Condition><构件><选中的构件>b</选中的构件></构件>"
           "</Condition></专业>"));
  EXPECT_EQ(Condition(L"s").curSysCode, L"");
  EXPECT_EQ(Condition(L"s").curCategory, L"b");
}

TEST_F(ReportStatusFile, OrderBlanksAndStrangersMeanNothing) {
  ASSERT_TRUE(
      Read("\n  <当前专业> s </当前专业>\n  <x><当前专业>t</当前专业></x>\n"
           "  <当前报表类型>\n</当前报表类型><!-- c -->\n"));
  EXPECT_EQ(All().curSpec, L" s ");
  EXPECT_EQ(All().curReport, L"\n");
}

TEST_F(ReportStatusFile, AnswersFalseForWhatIsNoStatusFile) {
  for (const char* bytes : {"", "<其他/>", "<报表状态数据>", "<x><报表状态数据/></x>",
                            "<!DOCTYPE 报表状态数据><报表状态数据/>"}) {
    EXPECT_FALSE(ReadBytes(bytes)) << bytes;
  }
  EXPECT_TRUE(ReadBytes("<报表状态数据/>"));
}

TEST_F(ReportStatusFile, AFailedReadEmptiesAllButTheScalars) {
  status.SetCurSpec(L"s");
  status.SetCurReport(L"r");
  status.SetIsBySgd(true);
  status.SetDispSgd({L"a"});
  status.SetReportExpand(L"a", 1);
  status.SetTreeStatus(L"a", {});
  status.SetTJTJTree(L"a", {}, {}, {});
  EXPECT_FALSE(status.ReadReportStatus(Path("none.xml")));
  const SReportStatus all = All();
  EXPECT_EQ(all.curSpec, L"s");
  EXPECT_EQ(all.curReport, L"r");
  EXPECT_TRUE(all.isBySgd);
  EXPECT_TRUE(all.dispSgd.empty() && all.reports.empty() && all.conditions.empty() &&
              all.trees.empty());
  status.SaveReportStatus();
  EXPECT_FALSE(Bytes("none.xml").empty());
}

TEST_F(ReportStatusFile, ReadingAnotherFileSavesTheFirst) {
  status.ReadReportStatus(Path("first.xml"));
  status.SetReportExpand(L"a", 7);
  status.ReadReportStatus(Path("second.xml"));
  EXPECT_NE(Bytes("first.xml").find("<报表展开的级别>7</报表展开的级别>"), std::string::npos);
  EXPECT_TRUE(All().reports.empty());
  EXPECT_TRUE(Bytes("second.xml").empty());
}

TEST_F(ReportStatusFile, SavesNothingWithoutAPath) {
  status.SaveReportStatus();
  EXPECT_EQ(xml->calls->count, 0);
  status.ReadReportStatus(Path());
  status.ReadReportStatus(L"");
  const int count = xml->calls->count;
  status.SaveReportStatus();
  EXPECT_EQ(xml->calls->count, count);
}

TEST_F(ReportStatusFile, AServiceWithoutDocumentsIsSilent) {
  status.ReadReportStatus(Path("first.xml"));
  status.SetReportExpand(L"a", 7);
  xml->hasDocuments = false;
  status.SaveReportStatus();
  EXPECT_FALSE(status.ReadReportStatus(Path("second.xml")));
  EXPECT_TRUE(All().reports.empty());
  EXPECT_TRUE(Bytes("first.xml").empty());
  xml->hasDocuments = true;
  status.SaveReportStatus();
  EXPECT_FALSE(Bytes("second.xml").empty());
}

TEST_F(ReportStatusFile, LabelsOfNullAnswerFalse) {
  EXPECT_FALSE(status.ReadConditionLable(nullptr));
  EXPECT_FALSE(status.ReadTJTreeLable(nullptr));
}

TEST_F(ReportStatusFile, LabelsGoByTheRememberedVersion) {
  ASSERT_TRUE(Read(""));
  tally_test::WriteBytes(folder_ / "part.xml",
                         "<专业 Name='s'><Condition><系统编号><选中的系统编号>a</选中的系统编号>"
                         "</系统编号></Condition></专业>");
  const auto document = IXmlService::Instance()->CreateDocument();
  ASSERT_TRUE(document->load(Path("part.xml")));
  EXPECT_TRUE(status.ReadConditionLable(document->selectSingleNode(L"专业")));
  EXPECT_TRUE(Condition(L"s").sysCodes.empty());
  Forget();
  EXPECT_TRUE(status.ReadConditionLable(document->selectSingleNode(L"专业")));
  EXPECT_EQ(Condition(L"s").sysCodes, (Names{L"a"}));
  EXPECT_TRUE(status.ReadTJTreeLable(document->selectSingleNode(L"专业")));
  EXPECT_TRUE(All().trees.contains(L""));
}

TEST_F(ReportStatusFile, AFailingCallOfTheServiceLeavesTheOldFile) {
  status.ReadReportStatus(Path());
  status.SaveReportStatus();
  const std::string before = Bytes();
  status.SetTreeStatus(L"s", FullCondition());
  status.SetReportColStatus(L"a", {{L"b", true}});
  status.SetDispSgd({L"a"});
  status.SetTJTJTree(L"s", {}, {false, {{L"1", L"1"}}}, {});
  for (const bool answersNull : {false, true}) {
    xml->calls->answersNull = answersNull;
    int step = 0;
    bool isSaved = false;
    while (!isSaved) {
      xml->calls->count = 0;
      xml->calls->failAt = ++step;
      try {
        status.SaveReportStatus();
        isSaved = true;
      } catch (const CXmlError& error) {
        EXPECT_TRUE(error.Code() == -42 || (answersNull && error.Code() == -2147467261));
        EXPECT_EQ(Bytes(), before);
      }
    }
    EXPECT_GT(step, 60);
    EXPECT_NE(Bytes(), before);
    tally_test::WriteBytes(folder_ / "status.xml", before);
  }
}

TEST_F(ReportStatusFile, AFailingCallWhileReadingReachesTheCaller) {
  status.ReadReportStatus(Path());
  status.SetTreeStatus(L"s", FullCondition());
  status.SetReportColStatus(L"a", {{L"b", true}});
  status.SetTJTJTree(L"s", {}, {false, {{L"1", L"1"}}}, {});
  status.SaveReportStatus();
  for (const bool answersNull : {false, true}) {
    xml->calls->answersNull = answersNull;
    int step = 0;
    int raised = 0;
    for (bool isWhole = false; !isWhole;) {
      Forget();
      xml->calls->count = 0;
      xml->calls->failAt = ++step;
      try {
        const bool isRead = status.ReadReportStatus(Path());
        isWhole = isRead && xml->calls->count < step;
      } catch (const CXmlError&) {
        ++raised;
      }
    }
    EXPECT_GT(raised, 100);
    EXPECT_EQ(Pairs(Condition(L"s").floors), "3,4=3;-1=-1;");
  }
}

TEST_F(ReportStatusFile, AFailingSaveKeepsTheProjectThatWasToBeLeft) {
  status.ReadReportStatus(Path("none/first.xml"));
  status.SetReportExpand(L"a", 7);
  for (int i = 0; i < 2; ++i) {
    EXPECT_THROW(status.ReadReportStatus(Path("second.xml")), CXmlError);
    EXPECT_EQ(All().reports.at(L"a").expandLevel, 7);
  }
  std::filesystem::create_directory(folder_ / "none");
  EXPECT_FALSE(status.ReadReportStatus(Path("second.xml")));
  EXPECT_NE(Bytes("none/first.xml").find("<报表展开的级别>7</报表展开的级别>"), std::string::npos);
}

TEST_F(ReportStatusFile, AnEarlierCopyPutBackForgetsAPathThatCannotBeSaved) {
  status.ReadReportStatus(Path("none/first.xml"));
  EXPECT_THROW(status.ReadReportStatus(Path("second.xml")), CXmlError);
  Forget();
  EXPECT_FALSE(status.ReadReportStatus(Path("second.xml")));
  status.SaveReportStatus();
  EXPECT_FALSE(Bytes("second.xml").empty());
}

TEST_F(ReportStatusFile, AThousandDisciplinesTakeLessThanASecond) {
  const std::shared_ptr<IXmlService> counting = IXmlService::Install(nullptr);
  status.ReadReportStatus(Path());
  Report::SNewCondition condition = FullCondition();
  for (int i = 0; i < 100; ++i) {
    condition.sysCodes.push_back(L"系统编号" + std::to_wstring(i));
  }
  for (int i = 0; i < 1000; ++i) {
    status.SetTreeStatus(L"专业" + std::to_wstring(i), condition);
  }
  const auto begin = std::chrono::steady_clock::now();
  status.SaveReportStatus();
  Forget();
  ASSERT_TRUE(status.ReadReportStatus(Path()));
  const auto took = std::chrono::steady_clock::now() - begin;
  IXmlService::Install(counting);
  EXPECT_EQ(All().conditions.size(), 1000U);
  EXPECT_EQ(Condition(L"专业999").sysCodes, condition.sysCodes);
  // A second is the bound of an optimised build on an idle machine.
  EXPECT_LT(took, std::chrono::seconds(15));
  RecordProperty("milliseconds", static_cast<int>(took / std::chrono::milliseconds(1)));
}

}  // namespace
