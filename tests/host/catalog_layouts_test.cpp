// The catalogue of reports and the table of row layouts name the same reports.
#include <gtest/gtest.h>

#include <cstddef>

#include "host/report_catalog.h"
#include "rows/row_layouts.h"

namespace {

TEST(CatalogLayouts, ExistForEveryReportAndNoOther) {
  for (const SCatalogReport& report : ReportCatalog()) {
    EXPECT_NE(FindLayout(report.type, report.variant), nullptr) << report.name;
  }
  for (int type = -1; type < 100; ++type) {
    const auto number = static_cast<Report::EReportType>(type);
    EXPECT_EQ(FindLayout(number, 0) != nullptr, FindReport(number, 0) != nullptr) << type;
  }
  EXPECT_EQ(ReportLayouts().size(), ReportCatalog().size());
}

}  // namespace
