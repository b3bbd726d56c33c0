#include "model/bill_quota_model.h"

#include "model/model_test.h"
#include "reports/bill_quota/de_hz_report.h"
#include "reports/bill_quota/qd_de_hz_report.h"
#include "reports/bill_quota/qd_hz_report.h"

namespace {

using tally_model::SModelledReport;
using tally_model::SModelRequest;

class BillQuotaModel : public tally_model::ModelTest,
                       public testing::WithParamInterface<SModelledReport> {};

const SModelledReport kQdDeHz = {
    "QdDeHz", Report::ReportQdDeHz, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CQdDeHzReport&>(report).GetQdDeHzData(cells, r.spec, r.condition, r.level,
                                                         r.bySgd);
    },
    tally_model::ModelRows<tally_model::CQdDeHzModel>};

const SModelledReport kQdHz = {
    "QdHz", Report::ReportQdHz, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CQdHzReport&>(report).GetQdHzData(cells, r.spec, r.condition, r.level, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CQdHzModel>};

const SModelledReport kDeHz = {
    "DeHz", Report::ReportDeHz, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CDeHzReport&>(report).GetDeHzData(cells, r.spec, r.condition, r.level, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CDeHzModel>};

TEST_P(BillQuotaModel, AgreesWithTheEngine) {
  ExpectSameRows(GetParam());
}

TEST_P(BillQuotaModel, IsAskedForEveryKindOfRow) {
  ExpectTellingRequests(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Reports, BillQuotaModel, testing::Values(kQdDeHz, kQdHz, kDeHz),
                         tally_model::ReportName);

}  // namespace
