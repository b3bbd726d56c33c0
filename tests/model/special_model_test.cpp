#include "model/special_model.h"

#include "model/model_test.h"
#include "model/special_project.h"
#include "reports/special/brush_paint_report.h"
#include "reports/special/xhl_duct_h2s_report.h"
#include "reports/special/xhl_pipe_jrbw_report.h"

namespace {

using tally_model::SModelledReport;
using tally_model::SModelRequest;

class SpecialModel : public tally_model::ModelTest,
                     public testing::WithParamInterface<SModelledReport> {};

template <Report::EReportType kType>
tally_model::SModelProject MakeProject(std::uint64_t seed) {
  return tally_model::MakeSpecialProject(seed, kType);
}

const SModelledReport kBrushPaint = {
    "BrushPaint",
    Report::ReportBrushPaint,
    0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CBrushPaintReport&>(report).GetBrushPaintData(cells, r.spec, r.condition,
                                                                 r.level, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CBrushPaintModel>,
    MakeProject<Report::ReportBrushPaint>};

const SModelledReport kDuctH = {
    "DuctH",
    Report::ReportDuctH,
    0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlDuctH2SReport&>(report).GetDuctHData(cells, r.spec, r.condition, r.level,
                                                            r.bySgd);
    },
    tally_model::ModelRows<tally_model::CDuctHModel>,
    MakeProject<Report::ReportDuctH>};

const SModelledReport kPipeJRBW = {
    "PipeJRBW",
    Report::ReportPipeJRBW,
    0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlPipeJRBWReport&>(report).GetPipeJRBWData(cells, r.spec, r.condition, r.level,
                                                                r.totalType, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CPipeJRBWModel>,
    MakeProject<Report::ReportPipeJRBW>};

TEST_P(SpecialModel, AgreesWithTheEngine) {
  ExpectSameRows(GetParam());
}

TEST_P(SpecialModel, IsAskedForEveryKindOfRow) {
  ExpectTellingRequests(GetParam(), 45);
}

INSTANTIATE_TEST_SUITE_P(Reports, SpecialModel, testing::Values(kBrushPaint, kDuctH, kPipeJRBW),
                         tally_model::ReportName);

}  // namespace
