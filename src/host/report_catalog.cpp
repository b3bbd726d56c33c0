#include "host/report_catalog.h"

#include "platform/portable/utf8_text.h"
#include "report_mng/result_config.h"
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

// How a row operation is called, told by its arguments.
template <class TReport>
void Append(IReport& report, const SRowRequest& request, Report::CellArray& rows,
            void (TReport::*operation)(Report::CellArray&, const std::wstring&,
                                       const Report::SNewCondition&, int, int)) {
  (dynamic_cast<TReport&>(report).*operation)(rows, request.spec, request.condition, request.level,
                                              request.bySgd);
}

template <class TReport>
void Append(IReport& report, const SRowRequest& request, Report::CellArray& rows,
            void (TReport::*operation)(Report::CellArray&, const std::wstring&,
                                       const Report::SNewCondition&, int)) {
  (dynamic_cast<TReport&>(report).*operation)(rows, request.spec, request.condition, request.bySgd);
}

template <class TReport>
void Append(IReport& report, const SRowRequest& request, Report::CellArray& rows,
            void (TReport::*operation)(Report::CellArray&, const std::wstring&,
                                       const Report::SNewCondition&, int, Report::EReportType,
                                       int)) {
  (dynamic_cast<TReport&>(report).*operation)(rows, request.spec, request.condition, request.level,
                                              request.totalType, request.bySgd);
}

template <auto kOperation>
void AppendRows(IReport& report, const SRowRequest& request, Report::CellArray& rows) {
  Append(report, request, rows, kOperation);
}

// Whether a row operation has an argument for the level.
template <class TReport>
constexpr bool TakesLevel(void (TReport::*)(Report::CellArray&, const std::wstring&,
                                            const Report::SNewCondition&, int, int)) {
  return true;
}
template <class TReport>
constexpr bool TakesLevel(void (TReport::*)(Report::CellArray&, const std::wstring&,
                                            const Report::SNewCondition&, int)) {
  return false;
}
template <class TReport>
constexpr bool TakesLevel(void (TReport::*)(Report::CellArray&, const std::wstring&,
                                            const Report::SNewCondition&, int, Report::EReportType,
                                            int)) {
  return true;
}

template <auto kOperation>
constexpr SCatalogReport Line(Report::EReportType type, int variant, const wchar_t* title,
                              const char* name, const char* variantName) {
  return {type, variant, title, name, variantName, TakesLevel(kOperation), AppendRows<kOperation>};
}

constexpr int kAnyVariant = SCatalogReport::kAnyVariant;
constexpr const wchar_t* kBookTitle = L"系统计算书";
constexpr const char* kBookName = "calculation-book";

// A new report is one line here and its layout in rows/row_layouts.cpp.
constexpr SCatalogReport kReports[] = {
    Line<&CXhlHzReport::GetXhlHzData>(Report::ReportXhlHz, kAnyVariant, L"消耗量汇总表",
                                      "consumption-summary", nullptr),
    Line<&CXhlGlReport::GetGlData>(Report::ReportXhlGl, kAnyVariant, L"工程量概览表", "overview",
                                   nullptr),
    Line<&CXhlCgHzReport::GetCgHzData>(Report::ReportXhlCgHz, kAnyVariant, L"超高量汇总表",
                                       "over-height-summary", nullptr),
    Line<&CPjHzReport::GetPjHzData>(Report::ReportPjHz, kAnyVariant, L"配件汇总表",
                                    "fitting-summary", nullptr),
    Line<&CXhlJss2MReport::GetSysJssData>(Report::ReportSysJss, 0, kBookTitle, kBookName, "member"),
    Line<&CXhlJss2FReport::GetSysJssData>(Report::ReportSysJss, 1, kBookTitle, kBookName, "floor"),
    Line<&CXhlJss2SReport::GetSysJssData>(Report::ReportSysJss, kAnyVariant, kBookTitle, kBookName,
                                          "system"),
    Line<&CBrushPaintReport::GetBrushPaintData>(Report::ReportBrushPaint, kAnyVariant,
                                                L"刷油工作量表", "paint-work", nullptr),
    Line<&CXhlDuctH2SReport::GetDuctHData>(Report::ReportDuctH, kAnyVariant, L"风管壁厚表",
                                           "duct-wall-thickness", nullptr),
    Line<&CXhlPipeJRBWReport::GetPipeJRBWData>(Report::ReportPipeJRBW, kAnyVariant, L"绝热保温表",
                                               "insulation", nullptr),
    Line<&CDeHzReport::GetDeHzData>(Report::ReportDeHz, kAnyVariant, L"定额汇总表", "quota-summary",
                                    nullptr),
    Line<&CQdDeHzReport::GetQdDeHzData>(Report::ReportQdDeHz, kAnyVariant, L"清单定额汇总表",
                                        "bill-quota-summary", nullptr),
    Line<&CQdHzReport::GetQdHzData>(Report::ReportQdHz, kAnyVariant, L"清单汇总表", "bill-summary",
                                    nullptr),
};

}  // namespace

int SCatalogReport::DeepestLevel() const {
  return hasLevels ? CResultConfig::Instance()->GetReportMaxLevel(type) : 0;
}

std::span<const SCatalogReport> ReportCatalog() {
  return kReports;
}

const SCatalogReport* FindReport(Report::EReportType type, int variant) {
  for (const SCatalogReport& report : kReports) {
    if (report.type == type &&
        (report.variant == variant || report.variant == SCatalogReport::kAnyVariant)) {
      return &report;
    }
  }
  return nullptr;
}

const SCatalogReport* FindReport(std::string_view nameOrNumber) {
  for (const SCatalogReport& report : kReports) {
    if (nameOrNumber == report.name || nameOrNumber == Utf8FromWide(report.title) ||
        nameOrNumber == std::to_string(report.type)) {
      return &report;
    }
  }
  return nullptr;
}
