// The reports that the program knows, and how each is called.
#ifndef TALLY_HOST_REPORT_CATALOG_H_
#define TALLY_HOST_REPORT_CATALOG_H_

#include <span>
#include <string>
#include <string_view>

#include "report_mng/ireport.h"
#include "report_model/report_types.h"
#include "rows/row_layouts.h"

/// What a row operation is asked for. Each report takes what its operation has arguments for.
struct SRowRequest {
  std::wstring spec;  ///< discipline
  Report::SNewCondition condition;
  int level = 0;
  int bySgd = 0;
  Report::EReportType totalType = Report::ReportNone;  ///< insulation table only
};

/// One report, or one variant of a report.
struct SCatalogReport {
  /// Takes every variant that no earlier line of its type takes.
  static constexpr int kAnyVariant = SReportLayout::kAnyVariant;

  Report::EReportType type;
  int variant;
  const wchar_t* title;     ///< display name
  const char* name;         ///< for command lines; the variants of a report share it
  const char* variantName;  ///< null for a report without variants
  bool hasLevels;           ///< whether its rows can be expanded to a level
  /// Appends the rows of `report`, which must be of this line's class.
  void (*appendRows)(IReport& report, const SRowRequest& request, Report::CellArray& rows);

  /// The deepest expansion level that the report offers; 0 for a report without levels.
  int DeepestLevel() const;
};

/// Every report with a class, in the order of the lists that users see.
std::span<const SCatalogReport> ReportCatalog();

/// The line that serves a type and variant; null where there is none.
const SCatalogReport* FindReport(Report::EReportType type, int variant);

/// The report of that name, display name or number, in its first variant; null where there is none.
const SCatalogReport* FindReport(std::string_view nameOrNumber);

#endif  // TALLY_HOST_REPORT_CATALOG_H_
