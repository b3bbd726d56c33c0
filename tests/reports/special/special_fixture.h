// What the tests of the paint, duct and insulation tables share.
#ifndef TALLY_TESTS_REPORTS_SPECIAL_SPECIAL_FIXTURE_H_
#define TALLY_TESTS_REPORTS_SPECIAL_SPECIAL_FIXTURE_H_

#include <set>
#include <string>
#include <vector>

#include "reports/special/brush_paint_report.h"
#include "reports/special/xhl_duct_h2s_report.h"
#include "reports/special/xhl_pipe_jrbw_report.h"
#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace tally_test {

using Lines = std::vector<std::string>;
using DetailRow = TTinyRow<STinyDetailItem>;

inline const std::wstring kVentilation = L"暖通";
inline const std::wstring kPlumbing = L"给排水";

inline STinyDetailItem Item(const std::wstring& name, const std::wstring& unit, double quantity1,
                            double quantity2 = 0, double quantity3 = 0, double quantity4 = 0) {
  return {.name = name,
          .unit = unit,
          .quantity1 = quantity1,
          .quantity2 = quantity2,
          .quantity3 = quantity3,
          .quantity4 = quantity4};
}

class SpecialTest : public TallyTest {
 protected:
  static CBrushPaintReport& Paint() {
    return GetReport<CBrushPaintReport>(Report::ReportBrushPaint);
  }
  static CXhlDuctH2SReport& Duct() { return GetReport<CXhlDuctH2SReport>(Report::ReportDuctH); }
  static CXhlPipeJRBWReport& Insulation() {
    return GetReport<CXhlPipeJRBWReport>(Report::ReportPipeJRBW);
  }

  static Lines PaintRows(const std::wstring& spec, int level,
                         const Report::SNewCondition& condition = {}, int bySgd = 0) {
    Report::CellArray cells;
    Paint().GetBrushPaintData(cells, spec, condition, level, bySgd);
    return Rows(cells);
  }
  static Lines DuctRows(int level, const Report::SNewCondition& condition = {}, int bySgd = 0,
                        const std::wstring& spec = kVentilation) {
    Report::CellArray cells;
    Duct().GetDuctHData(cells, spec, condition, level, bySgd);
    return Rows(cells);
  }
  static Lines InsulationRows(const std::wstring& spec, int level,
                              const Report::SNewCondition& condition = {}, int bySgd = 0,
                              Report::EReportType type = Report::ReportPipeJRBW) {
    Report::CellArray cells;
    Insulation().GetPipeJRBWData(cells, spec, condition, level, type, bySgd);
    return Rows(cells);
  }

  /// Codes of one to three levels; only "A" and "A\B\C" have remarks.
  static CTinyProject Coded(const std::wstring& spec) {
    CTinyProject project;
    project.SysCodeSort(spec, L"D", 1)
        .SysCodeSort(spec, L"A", 2, L"alpha")
        .SysCodeSort(spec, L"A&B", 3)
        .SysCodeSort(spec, L"A&B&C", 4, L"gamma");
    return project;
  }

  static Report::SNewCondition Floors(const std::vector<Report::SFloorPair>& floors) {
    Report::SNewCondition condition;
    condition.floors = floors;
    return condition;
  }
  static Report::SNewCondition SysCodes(const std::vector<std::wstring>& sysCodes) {
    Report::SNewCondition condition;
    condition.sysCodes = sysCodes;
    return condition;
  }
  static Report::SNewCondition Categories(const std::set<std::wstring>& categories) {
    Report::SNewCondition condition;
    condition.categories = categories;
    return condition;
  }

  CReportStatusMng& status = *CReportStatusMng::Instance();
};

}  // namespace tally_test

#endif  // TALLY_TESTS_REPORTS_SPECIAL_SPECIAL_FIXTURE_H_
