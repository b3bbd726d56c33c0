#include "answer_check.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "host/demo_building.h"
#include "platform/portable/utf8_text.h"
#include "platform/text_numbers.h"
#include "report_mng/report_mng.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"

namespace {

// `quantityOf(row)` is that of one component on one floor; 0 for a row that does not count.
template <class TData, class TQuantity>
double SumOver(const TData& data, const std::wstring& spec, TQuantity&& quantityOf) {
  double sum = 0;
  for (const auto& row : data.rows) {
    if (data.specs.at(static_cast<std::size_t>(row.spec)).name == spec) {
      sum +=
          quantityOf(row) * FloorsOf(data.floors.at(static_cast<std::size_t>(row.floor)).floorText);
    }
  }
  return sum;
}

double MainItems(const KorDMRec::SKorDMResultData& data, const std::wstring& spec) {
  return SumOver(data, spec, [&](const auto& row) {
    const auto& kind = data.categories.at(static_cast<std::size_t>(row.category));
    const auto& item = data.calItems.at(static_cast<std::size_t>(row.calItem));
    return item.name == CReportMainCalItemData::Instance()->GetMainCalItem(spec, kind.category,
                                                                           kind.kind)
               ? item.quantity
               : 0;
  });
}

double Consumption(const std::wstring& spec) {
  return MainItems(CTallyDataMng::Instance()->GetXhlHzData(), spec);
}

double OverHeight(const std::wstring& spec) {
  return MainItems(CTallyDataMng::Instance()->GetXhlCgData(), spec);
}

double Details(const std::wstring& spec) {
  const auto& data = CTallyDataMng::Instance()->GetXhlDetailData();
  return SumOver(data, spec, [&](const auto& row) {
    return data.calItems.at(static_cast<std::size_t>(row.calItem)).quantity1;
  });
}

double BillRows(const std::wstring& spec, bool isQd) {
  const auto& data = CTallyDataMng::Instance()->GetQdDeHzData();
  const std::wstring billLibrary = WideFromUtf8(demo::kBillLibrary);
  const std::wstring quotaLibrary = WideFromUtf8(demo::kQuotaLibrary);
  return SumOver(data, spec, [&](const auto& row) {
    const bool counts =
        row.isQd == isQd &&
        data.qdItems.at(static_cast<std::size_t>(row.qdItem)).library == billLibrary &&
        (isQd || data.deItems.at(static_cast<std::size_t>(row.deItem)).library == quotaLibrary);
    return counts ? data.calItems.at(static_cast<std::size_t>(row.calItem)).quantity : 0;
  });
}

double Bills(const std::wstring& spec) {
  return BillRows(spec, true);
}

double Quotas(const std::wstring& spec) {
  return BillRows(spec, false);
}

/// The rows whose quantities make up the whole, and what they must add up to.
struct SSumRule {
  Report::EReportType type;
  bool atDeepest;  ///< otherwise at level 0
  std::wstring_view marker;
  std::string_view column;
  double (*expected)(const std::wstring& spec);
};

constexpr SSumRule kSumRules[] = {
    {Report::ReportXhlHz, false, L"@A", "quantity", Consumption},
    {Report::ReportXhlCgHz, false, L"@A", "quantity", OverHeight},
    {Report::ReportSysJss, true, L"@CI", "quantity-1", Details},
    {Report::ReportQdDeHz, false, L"@QD", "quantity", Bills},
    {Report::ReportQdHz, false, L"@QD", "quantity", Bills},
    {Report::ReportDeHz, false, L"@DE", "quantity", Quotas},
};

double SumOfColumn(const std::vector<SRow>& rows, const SSumRule& rule) {
  double sum = 0;
  for (const SRow& row : rows) {
    if (row.layout->marker != rule.marker) {
      continue;
    }
    for (std::size_t cell = 0; cell < row.cells.size(); ++cell) {
      if (row.layout->cells[cell].id == rule.column) {
        sum += ReadLeadingNumber(row.cells[cell]);
      }
    }
  }
  return sum;
}

void Require(bool holds, const SBenchReport& report, const std::string& what) {
  if (!holds) {
    throw std::runtime_error(report.name + ": " + what);
  }
}

void CheckSum(const SBenchReport& report, const std::wstring& spec, const std::vector<SRow>& rows,
              bool isDeepest) {
  // The cells have six significant digits.
  constexpr double kTolerance = 1e-5;
  for (const SSumRule& rule : kSumRules) {
    if (rule.type == report.catalog->type && rule.atDeepest == isDeepest) {
      const double expected = rule.expected(spec);
      const double sum = SumOfColumn(rows, rule);
      Require(expected > 0 && std::abs(sum - expected) <= expected * kTolerance, report,
              "the rows add up to " + std::to_string(sum) + ", the records to " +
                  std::to_string(expected));
    }
  }
}

// Where the sum is known every row counts, so that a part of them has cells.
bool CountsEveryRow(const SBenchReport& report) {
  return std::any_of(std::begin(kSumRules), std::end(kSumRules),
                     [&report](const SSumRule& rule) { return rule.type == report.catalog->type; });
}

void CheckFilters(const SBenchReport& report, const std::wstring& spec, std::size_t allCells) {
  for (const SFilterChoice& filter : {OneFloor(report.set, spec), OneSysCode(report.set, spec)}) {
    const std::size_t cells =
        Request(report, spec, report.catalog->DeepestLevel(), filter.condition).size();
    Require(cells <= allCells && (cells > 0 || !CountsEveryRow(report)), report,
            "a filter does not answer a part of the rows");
  }
}

}  // namespace

// "a,b" are the floors from a to b, "a/b/c" those named, anything else is one.
double FloorsOf(const std::wstring& floorText) {
  const auto names = std::count(floorText.begin(), floorText.end(), L'/') + 1;
  const std::size_t comma = floorText.find(L',');
  if (names > 1 || comma == std::wstring::npos) {
    return static_cast<double>(names);
  }
  return std::stod(floorText.substr(comma + 1)) - std::stod(floorText) + 1;
}

void CheckAnswer(const SBenchReport& report, const std::wstring& spec) {
  const SReportLayout* layout = FindLayout(report.catalog->type, report.variant);
  Require(layout != nullptr, report, "no layout");
  const int deepest = report.catalog->DeepestLevel();
  const Report::CellArray top = Request(report, spec, 0);
  const Report::CellArray whole = Request(report, spec, deepest);
  const std::vector<SRow> topRows = CutRows(*layout, top);
  const std::vector<SRow> wholeRows = CutRows(*layout, whole);
  Require(!topRows.empty(), report, "no rows");
  Require(topRows.size() <= wholeRows.size(), report, "level 0 has more rows than the deepest");
  CheckSum(report, spec, topRows, false);
  CheckSum(report, spec, wholeRows, true);
  CheckFilters(report, spec, whole.size());
  Require(Request(report, spec, 0) == top, report, "another answer at level 0 after the deepest");
  CReportMng::Instance()->Clear();
  Require(Request(report, spec, deepest) == whole, report, "another answer after another fold");
}
