#include "model/consumption_model.h"

#include "model/model_test.h"
#include "reports/consumption/pj_hz_report.h"
#include "reports/consumption/xhl_cg_hz_report.h"
#include "reports/consumption/xhl_gl_report.h"
#include "reports/consumption/xhl_hz_report.h"

namespace {

using tally_model::SModelledReport;
using tally_model::SModelRequest;

class ConsumptionModel : public tally_model::ModelTest,
                         public testing::WithParamInterface<SModelledReport> {};

const SModelledReport kXhlHz = {
    "XhlHz", Report::ReportXhlHz, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlHzReport&>(report).GetXhlHzData(cells, r.spec, r.condition, r.level,
                                                       r.bySgd);
    },
    tally_model::ModelRows<tally_model::CXhlHzModel>};

const SModelledReport kXhlCgHz = {
    "XhlCgHz", Report::ReportXhlCgHz, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlCgHzReport&>(report).GetCgHzData(cells, r.spec, r.condition, r.level,
                                                        r.bySgd);
    },
    tally_model::ModelRows<tally_model::CXhlCgHzModel>};

const SModelledReport kXhlGl = {
    "XhlGl", Report::ReportXhlGl, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlGlReport&>(report).GetGlData(cells, r.spec, r.condition, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CXhlGlModel>};

const SModelledReport kPjHz = {
    "PjHz", Report::ReportPjHz, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CPjHzReport&>(report).GetPjHzData(cells, r.spec, r.condition, r.level, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CPjHzModel>};

TEST_P(ConsumptionModel, AgreesWithTheEngine) {
  ExpectSameRows(GetParam());
}

TEST_P(ConsumptionModel, IsAskedForEveryKindOfRow) {
  ExpectTellingRequests(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Reports, ConsumptionModel,
                         testing::Values(kXhlHz, kXhlCgHz, kXhlGl, kPjHz), tally_model::ReportName);

}  // namespace
