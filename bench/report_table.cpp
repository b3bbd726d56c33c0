#include "report_table.h"

#include <algorithm>

#include "report_mng/report_mng.h"
#include "result_store/tally_data_mng.h"

namespace {

// Any variant that no earlier line takes: the system book's for the calculation books, and nothing
// to the others.
constexpr int kOtherVariant = 2;

template <class TVisit>
auto VisitSet(ERecordSet set, TVisit&& visit) {
  CTallyDataMng* store = CTallyDataMng::Instance();
  switch (set) {
    case ERecordSet::Summary:
      return visit(store->GetXhlHzData());
    case ERecordSet::Overview:
      return visit(store->GetXhlGlData());
    case ERecordSet::OverHeight:
      return visit(store->GetXhlCgData());
    case ERecordSet::Fitting:
      return visit(store->GetPjHzData());
    case ERecordSet::BillQuota:
      return visit(store->GetQdDeHzData());
    default:
      return visit(store->GetXhlDetailData());
  }
}

struct SSetTexts {
  const char* name;
  const char* table;
};

SSetTexts TextsOf(ERecordSet set) {
  switch (set) {
    case ERecordSet::Summary:
      return {"consumption-set", "hz_row"};
    case ERecordSet::Overview:
      return {"overview-set", "gl_row"};
    case ERecordSet::OverHeight:
      return {"over-height-set", "cg_row"};
    case ERecordSet::Fitting:
      return {"fitting-set", "pj_row"};
    case ERecordSet::BillQuota:
      return {"bill-quota-set", "qd_de_row"};
    default:
      return {"detail-set", "detail_row"};
  }
}

}  // namespace

std::vector<SBenchReport> ReportTable() {
  std::vector<SBenchReport> reports;
  for (const SCatalogReport& line : ReportCatalog()) {
    std::string name = line.name;
    if (line.variantName != nullptr) {
      name += "-";
      name += line.variantName;
    }
    const int variant = line.variant == SCatalogReport::kAnyVariant ? kOtherVariant : line.variant;
    reports.push_back(
        {&line, variant, std::move(name), ResultSetOf(line.type).value_or(ERecordSet::Detail)});
  }
  return reports;
}

const char* SetName(ERecordSet set) {
  return TextsOf(set).name;
}

const char* SetTable(ERecordSet set) {
  return TextsOf(set).table;
}

std::vector<SSpecRows> RowsBySpec(ERecordSet set) {
  return VisitSet(set, [](const auto& data) {
    std::vector<SSpecRows> specs;
    for (const auto& spec : data.specs) {
      specs.push_back({spec.name, 0});
    }
    for (const auto& row : data.rows) {
      ++specs.at(static_cast<std::size_t>(row.spec)).rows;
    }
    return specs;
  });
}

std::size_t RowCount(ERecordSet set) {
  return VisitSet(set, [](const auto& data) { return data.rows.size(); });
}

std::wstring BiggestSpec(ERecordSet set) {
  const std::vector<SSpecRows> specs = RowsBySpec(set);
  const auto biggest =
      std::max_element(specs.begin(), specs.end(),
                       [](const SSpecRows& a, const SSpecRows& b) { return a.rows < b.rows; });
  return biggest == specs.end() ? std::wstring() : biggest->spec;
}

IReport* Fold(const SBenchReport& report) {
  return CReportMng::Instance()->GetReportData(report.catalog->type, report.variant);
}

Report::CellArray Request(const SBenchReport& report, const std::wstring& spec, int level) {
  SRowRequest request;
  request.spec = spec;
  request.level = level;
  Report::CellArray rows;
  report.catalog->appendRows(*Fold(report), request, rows);
  return rows;
}
