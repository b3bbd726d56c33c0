#include "model/book_model.h"

#include "model/model_test.h"
#include "reports/calculation_books/xhl_jss2f_report.h"
#include "reports/calculation_books/xhl_jss2m_report.h"
#include "reports/calculation_books/xhl_jss2s_report.h"

namespace {

using tally_model::SModelledReport;
using tally_model::SModelRequest;

class BookModel : public tally_model::ModelTest,
                  public testing::WithParamInterface<SModelledReport> {};

const SModelledReport kMember = {
    "Member", Report::ReportSysJss, 0,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlJss2MReport&>(report).GetSysJssData(cells, r.spec, r.condition, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CXhlJss2MModel>};

const SModelledReport kFloor = {
    "Floor", Report::ReportSysJss, 1,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlJss2FReport&>(report).GetSysJssData(cells, r.spec, r.condition, r.bySgd);
    },
    tally_model::ModelRows<tally_model::CXhlJss2FModel>};

const SModelledReport kSystem = {
    "System", Report::ReportSysJss, 2,
    [](IReport& report, const SModelRequest& r, Report::CellArray& cells) {
      dynamic_cast<CXhlJss2SReport&>(report).GetSysJssData(cells, r.spec, r.condition, r.level,
                                                           r.bySgd);
    },
    tally_model::ModelRows<tally_model::CXhlJss2SModel>};

TEST_P(BookModel, AgreesWithTheEngine) {
  ExpectSameRows(GetParam());
}

TEST_P(BookModel, IsAskedForEveryKindOfRow) {
  ExpectTellingRequests(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Reports, BookModel, testing::Values(kMember, kFloor, kSystem),
                         tally_model::ReportName);

}  // namespace
