#include "host/report_catalog.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/portable/utf8_text.h"
#include "report_mng/report_classes.h"
#include "report_model/report_data_method.h"

namespace {

TEST(ReportCatalog, HoldsTheReportsThatTheEngineHas) {
  for (int type = -1; type < 100; ++type) {
    for (const int variant : {-1, 0, 1, 2, 7}) {
      const auto number = static_cast<Report::EReportType>(type);
      EXPECT_EQ(FindReport(number, variant) != nullptr, CreateReport(number, variant) != nullptr)
          << type << " " << variant;
    }
  }
}

TEST(ReportCatalog, CallsTheClassThatTheEngineMakes) {
  for (const SCatalogReport& report : ReportCatalog()) {
    const int variant = report.variant == SCatalogReport::kAnyVariant ? 2 : report.variant;
    const auto made = CreateReport(report.type, variant);
    Report::CellArray rows;
    EXPECT_NO_THROW(report.appendRows(*made, SRowRequest(), rows)) << report.name;
    EXPECT_TRUE(rows.empty()) << report.name;
  }
}

TEST(ReportCatalog, HasTheEnginesDisplayNames) {
  for (const SCatalogReport& report : ReportCatalog()) {
    EXPECT_EQ(CReportDataMethod::GetTypeByName(report.title), report.type) << report.name;
  }
}

TEST(ReportCatalog, FindsAReportByNameDisplayNameAndNumber) {
  for (const SCatalogReport& report : ReportCatalog()) {
    for (const std::string& name :
         {std::string(report.name), Utf8FromWide(report.title), std::to_string(report.type)}) {
      const SCatalogReport* found = FindReport(name);
      ASSERT_NE(found, nullptr) << name;
      EXPECT_EQ(found->type, report.type) << name;
    }
  }
  EXPECT_EQ(FindReport(""), nullptr);
  EXPECT_EQ(FindReport("01"), nullptr);
  EXPECT_EQ(FindReport("Consumption-Summary"), nullptr);
}

TEST(ReportCatalog, KnowsTheDeepestLevel) {
  EXPECT_EQ(FindReport("consumption-summary")->DeepestLevel(), 5);
}

}  // namespace
