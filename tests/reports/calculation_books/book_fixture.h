// What the tests of the three calculation books share.
#ifndef TALLY_TESTS_REPORTS_CALCULATION_BOOKS_BOOK_FIXTURE_H_
#define TALLY_TESTS_REPORTS_CALCULATION_BOOKS_BOOK_FIXTURE_H_

#include <string>
#include <vector>

#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace tally_test {

using RowTexts = std::vector<std::string>;

inline const std::wstring kPlumbing = L"给排水";
/// Line work; its main item is "管道长度".
inline const STinyCategory kPipe{L"管道", L"给水管"};
/// No line work; its main item is "构件数量".
inline const STinyCategory kValve{L"附件", L"阀门"};
inline const STinyCategory kPump{L"设备", L"水泵"};

inline STinyDetailItem Length(double quantity, const std::wstring& expression = L"") {
  return {.name = L"管道长度", .quantity1 = quantity, .expression = expression};
}
inline STinyDetailItem Pieces(double quantity) {
  return {.name = L"构件数量", .unit = L"个", .quantity1 = quantity};
}
/// An item that is the main one of no kind.
inline STinyDetailItem Bracket(double quantity) {
  return {.name = L"支架", .unit = L"kg", .quantity1 = quantity};
}

class BookTest : public TallyTest {
 protected:
  /// Sets the divided-node switch and drops the books, so that the next ones fold under it.
  void Divide(bool isDivided) {
    status.SetIsDividedNode(isDivided);
    CReportMng::Instance()->ClearXHLSysJSSReportData();
  }
  /// Counts by construction section, and shows these.
  void ShowOnly(const std::vector<std::wstring>& sections) {
    status.SetIsBySgd(true);
    status.SetDispSgd(sections);
  }

  CReportStatusMng& status = *CReportStatusMng::Instance();
};

}  // namespace tally_test

#endif  // TALLY_TESTS_REPORTS_CALCULATION_BOOKS_BOOK_FIXTURE_H_
