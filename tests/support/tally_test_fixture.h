// The fixture of all tests that need an open project: no file and no database is touched.
#ifndef TALLY_TESTS_SUPPORT_TALLY_TEST_FIXTURE_H_
#define TALLY_TESTS_SUPPORT_TALLY_TEST_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>

#include "platform/code_page.h"
#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"
#include "support/fake_platform.h"
#include "support/tiny_project.h"

namespace tally_test {

/// Installs fakes of the services and opens an empty project in bill mode. Afterwards everything
/// that outlives a test (store, registry, status, sort direction, code page) is as in a new
/// process.
class TallyTest : public testing::Test {
 protected:
  TallyTest() {
    // The first status that a program sees is the new one; later ones were reset.
    static const CReportStatusMng fresh = *CReportStatusMng::Instance();
    freshStatus_ = &fresh;
    CResultConfig::Instance()->SetLineSortDowm(true);
    Open({});
    db->ForgetReads();
  }

  ~TallyTest() override {
    ICodePage::Instance()->SetThreadCodePage(936);
    *CReportStatusMng::Instance() = *freshStatus_;
    CResultConfig::Instance()->SetLineSortDowm(true);
    db->raising.clear();
    db->records = {};
    // By way of another project, so that the store is emptied whatever it held.
    CTallyDataMng::Instance()->InitData(L"none", false);
    CTallyDataMng::Instance()->InitData(L"", true);
  }

  /// Opens a project under a path that was not used before.
  void Open(const CTinyProject& project, bool isQdMode = true) {
    static int count = 0;
    db->records = project.Records();
    path = L"project" + std::to_wstring(++count);
    CTallyDataMng::Instance()->InitData(path, isQdMode);
  }

  /// The report, folded on first use. Throws std::bad_cast where it is of another class.
  template <class TReport>
  static TReport& GetReport(Report::EReportType type, int variant = 0) {
    return dynamic_cast<TReport&>(*CReportMng::Instance()->GetReportData(type, variant));
  }

  TInstalled<CDbOperator, CFakeDb> db;
  TInstalled<IProjectSettings, CFakeSettings> settings;
  TInstalled<IQuotaLibrary, CFakeQuotaLibrary> quotaLibrary;
  TInstalled<IBillLibrary, CFakeBillLibrary> billLibrary;
  TInstalled<IKorAppProfile, CFakeProfile> profile;
  TInstalled<IPrivateProfile, CFakePrivateProfile> privateProfile;
  TInstalled<IMessageBox, CFakeMessageBox> messageBox;
  std::wstring path;  ///< of the open project

 private:
  const CReportStatusMng* freshStatus_ = nullptr;
};

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_TALLY_TEST_FIXTURE_H_
