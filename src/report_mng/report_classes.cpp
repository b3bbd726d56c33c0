#include "report_mng/report_classes.h"

#include "filter_trees/category_tree.h"
#include "filter_trees/floor_tree.h"
#include "filter_trees/sys_code_tree.h"
#include "reports/bill_quota/de_hz_report.h"
#include "reports/bill_quota/qd_de_hz_report.h"
#include "reports/bill_quota/qd_hz_report.h"
#include "reports/calculation_books/xhl_jss2f_report.h"
#include "reports/calculation_books/xhl_jss2m_report.h"
#include "reports/calculation_books/xhl_jss2s_report.h"
#include "reports/consumption/pj_hz_report.h"
#include "reports/consumption/xhl_cg_hz_report.h"
#include "reports/consumption/xhl_gl_report.h"
#include "reports/consumption/xhl_hz_report.h"
#include "reports/special/brush_paint_report.h"
#include "reports/special/xhl_duct_h2s_report.h"
#include "reports/special/xhl_pipe_jrbw_report.h"

namespace {

/// Takes every variant that no earlier line of its type takes.
constexpr int kAnyVariant = -1;

using Make = std::unique_ptr<IReport> (*)();

struct SReportClass {
  Report::EReportType type;
  int variant;
  Make make;
};

struct STreeClass {
  Report::ETreeType type;
  Make make;
};

template <class TReport>
std::unique_ptr<IReport> MakeNew() {
  return std::make_unique<TReport>();
}

// The one place that names the report classes. A new report is one line here.
constexpr SReportClass kReportClasses[] = {
    {Report::ReportSysJss, 0, MakeNew<CXhlJss2MReport>},
    {Report::ReportSysJss, 1, MakeNew<CXhlJss2FReport>},
    {Report::ReportSysJss, kAnyVariant, MakeNew<CXhlJss2SReport>},
    {Report::ReportXhlHz, kAnyVariant, MakeNew<CXhlHzReport>},
    {Report::ReportXhlGl, kAnyVariant, MakeNew<CXhlGlReport>},
    {Report::ReportXhlCgHz, kAnyVariant, MakeNew<CXhlCgHzReport>},
    {Report::ReportPjHz, kAnyVariant, MakeNew<CPjHzReport>},
    {Report::ReportPipeJRBW, kAnyVariant, MakeNew<CXhlPipeJRBWReport>},
    {Report::ReportBrushPaint, kAnyVariant, MakeNew<CBrushPaintReport>},
    {Report::ReportDuctH, kAnyVariant, MakeNew<CXhlDuctH2SReport>},
    {Report::ReportDeHz, kAnyVariant, MakeNew<CDeHzReport>},
    {Report::ReportQdDeHz, kAnyVariant, MakeNew<CQdDeHzReport>},
    {Report::ReportQdHz, kAnyVariant, MakeNew<CQdHzReport>},
};

constexpr STreeClass kTreeClasses[] = {
    {Report::TreeFloor, MakeNew<CFloorTree>},
    {Report::TreeSysCode, MakeNew<CSysCodeTree>},
    {Report::TreeCategory, MakeNew<CCategoryTree>},
};

}  // namespace

std::unique_ptr<IReport> CreateReport(Report::EReportType type, int variant) {
  for (const SReportClass& line : kReportClasses) {
    if (line.type == type && (line.variant == variant || line.variant == kAnyVariant)) {
      return line.make();
    }
  }
  return nullptr;
}

std::unique_ptr<IReport> CreateTree(Report::ETreeType type) {
  for (const STreeClass& line : kTreeClasses) {
    if (line.type == type) {
      return line.make();
    }
  }
  return nullptr;
}
