#include "host/text_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string TableOf(const std::vector<std::wstring>& cells) {
  const SReportLayout& layout = *FindLayout(Report::ReportXhlHz, 0);
  COutput output;
  WriteTextTable(output, CColumns(layout), CutRows(layout, cells));
  return output.Text();
}

TEST(TextTable, IndentsRowsAndAlignsCells) {
  EXPECT_EQ(
      TableOf({L"@P",  L"一区", L"@Cg", L"管道\\给水管", L"@A", L"DN50",  L"材质:钢\n连接:螺纹",
               L"m",   L"7.5",  L"@CI", L"管道长度",     L"m",  L"7.5",   L"@F",
               L"3,4", L"3",    L"m",   L"0.25",         L"@A", L"DN100", L"",
               L"m2",  L"120"}),
      "施工段\n"
      "  构件类型\n"
      "    规格型号      属性                      单位  工程量\n"
      "      计算项目\n"
      "        图纸楼层                      楼层\n"
      "--------------------------------------------------------\n"
      "一区\n"
      "  管道\\给水管\n"
      "    DN50          材质:钢; 连接:螺纹        m        7.5\n"
      "      管道长度                              m        7.5\n"
      "        3,4                           3     m       0.25\n"
      "    DN100                                   m2       120\n");
}

TEST(TextTable, StartsAtTheOutermostLevelAndShowsOnlyLevelsThatOccur) {
  EXPECT_EQ(TableOf({L"@Cg", L"管道", L"@S1", L"J(市政)", L"m", L"5", L"C1$$"}),
            "构件类型\n"
            "        系统编号  单位  工程量\n"
            "------------------------------\n"
            "管道\n"
            "        J(市政)   m          5\n");
}

TEST(TextTable, LetsAVeryLongTextMoveItsOwnLineOnly) {
  const std::wstring text(100, L'x');
  const std::string table =
      TableOf({L"@A", L"DN50", text, L"m", L"1", L"@A", L"DN65", L"y", L"m", L"2"});
  EXPECT_NE(table.find("DN50      " + std::string(100, 'x') + "  m          1\n"),
            std::string::npos)
      << table;
  EXPECT_NE(table.find("DN65      y" + std::string(73, ' ') + "m          2\n"), std::string::npos)
      << table;
}

TEST(TextTable, IsEmptyWithoutRows) {
  EXPECT_EQ(TableOf({}), "");
}

}  // namespace
