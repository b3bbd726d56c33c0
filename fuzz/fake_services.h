// The engine without files: every service but the text tools is a fake.
#ifndef TALLY_FUZZ_FAKE_SERVICES_H_
#define TALLY_FUZZ_FAKE_SERVICES_H_

#include <utility>

#include "platform/code_page.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"
#include "support/fake_platform.h"

/// In force for one input. Afterwards the engine is as in a new process.
class CFakeServices {
 public:
  CFakeServices() {
    fresh_ = Fresh();
    CResultConfig::Instance()->SetLineSortDowm(true);
  }
  ~CFakeServices() {
    db->records = {};
    ICodePage::Instance()->SetThreadCodePage(936);
    *CReportStatusMng::Instance() = *fresh_;
    CResultConfig::Instance()->SetLineSortDowm(true);
    // By way of another project, so that the store is emptied whatever it held.
    CTallyDataMng::Instance()->InitData(L"none", false);
    CTallyDataMng::Instance()->InitData(L"", true);
  }
  CFakeServices(const CFakeServices&) = delete;
  CFakeServices& operator=(const CFakeServices&) = delete;

  void Open(tally_test::SProjectRecords records, bool isQdMode) {
    db->records = std::move(records);
    CTallyDataMng::Instance()->InitData(L"project", isQdMode);
  }

  tally_test::TInstalled<CDbOperator, tally_test::CFakeDb> db;
  tally_test::TInstalled<IProjectSettings, tally_test::CFakeSettings> settings;
  tally_test::TInstalled<IQuotaLibrary, tally_test::CFakeQuotaLibrary> quotaLibrary;
  tally_test::TInstalled<IBillLibrary, tally_test::CFakeBillLibrary> billLibrary;
  tally_test::TInstalled<IKorAppProfile, tally_test::CFakeProfile> profile;
  tally_test::TInstalled<IPrivateProfile, tally_test::CFakePrivateProfile> privateProfile;
  tally_test::TInstalled<IMessageBox, tally_test::CFakeMessageBox> messageBox;

 private:
  // The status that the process began with; it must be taken before any input.
  static const CReportStatusMng* Fresh() {
    static const CReportStatusMng fresh = *CReportStatusMng::Instance();
    return &fresh;
  }

  const CReportStatusMng* fresh_ = nullptr;
};

#endif  // TALLY_FUZZ_FAKE_SERVICES_H_
