// The project that the tests of the bill and quota summaries share.
#ifndef TALLY_TESTS_REPORTS_BILL_QUOTA_BILL_QUOTA_FIXTURE_H_
#define TALLY_TESTS_REPORTS_BILL_QUOTA_BILL_QUOTA_FIXTURE_H_

#include <string>
#include <vector>

#include "support/rows.h"
#include "support/tally_test_fixture.h"

namespace tally_test {

using Lines = std::vector<std::string>;

inline constexpr const wchar_t* kSpec = L"给排水";

/// Bill library "QD" with quota library "DE" beside it; "D0" where the project goes by quotas
/// alone.
class BillQuotaTest : public TallyTest {
 protected:
  BillQuotaTest() {
    settings->qdCode = L"QD";
    settings->qdDeCode = L"DE";
    settings->deCode = L"D0";
    settings->marks[L"0308"] = {L"材质", L"PPR", L"not shown", L"连接", L"热熔", L"not shown"};
    billLibrary->chapters = {{L"0304", {4, L"电气"}}, {L"0308", {8, L"管道"}}};
    quotaLibrary->chapters = {{L"4-1", {1, L"电气工程\\照明"}}, {L"8-1", {3, L"给排水工程\\管"}}};
  }

  static STinyQdDe Bill(const std::wstring& code, const std::wstring& name = L"bill",
                        const std::wstring& unit = L"m") {
    return {code, name, unit, L"QD"};
  }
  static STinyQdDe Quota(const std::wstring& code, const std::wstring& name = L"quota",
                         const std::wstring& unit = L"m") {
    return {code, name, unit, L"DE"};
  }
  /// The item that stands for a bill's own quantity; it belongs to no library.
  static STinyQdDe Own(const std::wstring& unit = L"m") { return {L"", L"", unit, L""}; }
  static STinyCalItem Item(double quantity, const std::wstring& expression = L"e") {
    return {.name = L"管道长度", .quantity = quantity, .expression = expression};
  }
  /// A row of a bill's own quantity, and one of a quota applied to a bill.
  static STinyQdDeRow OwnRow(const STinyQdDe& bill, double quantity) {
    return {.isQd = true, .calItem = Item(quantity), .qdItem = bill, .deItem = Own()};
  }
  static STinyQdDeRow QuotaRow(const STinyQdDe& bill, const STinyQdDe& quota, double quantity) {
    return {.calItem = Item(quantity), .qdItem = bill, .deItem = quota};
  }

  static void ShowSections(const std::vector<std::wstring>& names, bool isBySgd = false) {
    CReportStatusMng::Instance()->SetDispSgd(names);
    CReportStatusMng::Instance()->SetIsBySgd(isBySgd);
  }

  /// A bill with own items of two units and a quota, and a bill with a quota alone.
  static CTinyProject Building() {
    CTinyProject project;
    project.KindSort(kSpec, L"管道\\给水管", 1)
        .KindSort(kSpec, L"附件\\水表", 2)
        .SysCodeSort(kSpec, L"A", 1, L"alpha")
        .SysCodeSort(kSpec, L"D", 2)
        .SysCodeSort(kSpec, L"A&B&C", 3, L"gamma");
    const STinyQdDe pipes = Bill(L"0308", L"管安装", L"m");
    project.QdDe()
        .Row({.isQd = true,
              .component = L"c1",
              .calItem = Item(2, L"2"),
              .qdItem = pipes,
              .deItem = Own(L"m")})
        .Row({.isQd = true,
              .floor = {L"1,3", L"1,3"},
              .component = L"c2",
              .sysCode = L"A\\B",
              .calItem = Item(3, L"1+2"),
              .qdItem = pipes,
              .deItem = Own(L"kg")})
        .Row({.sgd = L"二区",
              .floor = {L"1,3", L"1,3"},
              .component = L"c3",
              .sysCode = L"A\\B\\C",
              .calItem = Item(1.5, L"1+0.5"),
              .qdItem = pipes,
              .deItem = Quota(L"8-1", L"塑料管", L"10m")})
        .Row({.sgd = L"二区",
              .floor = {L"1,3", L"1,3"},
              .component = L"c4",
              .sysCode = L"A\\B\\C",
              .calItem = Item(1.5, L"1+0.5"),
              .qdItem = pipes,
              .deItem = Quota(L"8-1", L"塑料管", L"10m")})
        .Row({.component = L"c5",
              .category = {L"附件", L"水表"},
              .attr = {L"LXS-20", L"材质:铜"},
              .sysCode = L"D",
              .calItem = Item(1, L"1"),
              .qdItem = Bill(L"0304", L"灯", L"套"),
              .deItem = Quota(L"4-1", L"灯具", L"套")});
    return project;
  }
};

}  // namespace tally_test

#endif  // TALLY_TESTS_REPORTS_BILL_QUOTA_BILL_QUOTA_FIXTURE_H_
