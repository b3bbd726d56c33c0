#include "report_table.h"

#include <algorithm>
#include <type_traits>

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

// How many rows of a discipline have each record of a dictionary.
template <class TData, class TRow>
std::vector<std::size_t> CountRecords(const TData& data, const std::wstring& spec,
                                      std::size_t records, int TRow::*index) {
  std::vector<std::size_t> counts(records);
  for (const TRow& row : data.rows) {
    if (data.specs.at(static_cast<std::size_t>(row.spec)).name == spec) {
      ++counts.at(static_cast<std::size_t>(row.*index));
    }
  }
  return counts;
}

// Calls `visit(floor, rows)` for each floor record and the number of the discipline's rows on it.
template <class TVisit>
void ForEachFloor(ERecordSet set, const std::wstring& spec, TVisit&& visit) {
  VisitSet(set, [&](const auto& data) {
    using TRow = typename std::decay_t<decltype(data.rows)>::value_type;
    const std::vector<std::size_t> counts =
        CountRecords(data, spec, data.floors.size(), &TRow::floor);
    for (std::size_t floor = 0; floor < counts.size(); ++floor) {
      visit(data.floors[floor], counts[floor]);
    }
  });
}

// Whether the code lies below another one that has rows.
bool LiesBelowAnother(const std::wstring& path,
                      const std::vector<KorDMRec::SKorDMSysCodeRec>& codes,
                      const std::vector<std::size_t>& counts) {
  for (std::size_t code = 0; code < codes.size(); ++code) {
    if (counts[code] > 0 && path.starts_with(codes[code].name + L"\\")) {
      return true;
    }
  }
  return false;
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

Report::CellArray Request(const SBenchReport& report, const std::wstring& spec, int level,
                          const Report::SNewCondition& condition) {
  SRowRequest request;
  request.spec = spec;
  request.condition = condition;
  request.level = level;
  Report::CellArray rows;
  report.catalog->appendRows(*Fold(report), request, rows);
  return rows;
}

SFilterChoice OneFloor(ERecordSet set, const std::wstring& spec) {
  SFilterChoice choice;
  ForEachFloor(set, spec, [&choice](const auto& floor, std::size_t rows) {
    if (rows > choice.rows && floor.floorText.find_first_of(L",/") == std::wstring::npos) {
      choice.rows = rows;
      choice.condition.floors = {{floor.name, floor.name}};
    }
  });
  return choice;
}

SFilterChoice EveryFloor(ERecordSet set, const std::wstring& spec) {
  SFilterChoice choice;
  ForEachFloor(set, spec, [&choice](const auto& floor, std::size_t rows) {
    if (rows > 0) {
      choice.rows += rows;
      choice.condition.floors.push_back({floor.name, floor.name});
    }
  });
  return choice;
}

SFilterChoice OneSysCode(ERecordSet set, const std::wstring& spec) {
  return VisitSet(set, [&spec](const auto& data) {
    using TRow = typename std::decay_t<decltype(data.rows)>::value_type;
    const std::vector<std::size_t> counts =
        CountRecords(data, spec, data.sysCodes.size(), &TRow::sysCode);
    SFilterChoice choice;
    for (std::size_t code = 0; code < counts.size(); ++code) {
      const std::wstring& path = data.sysCodes[code].name;
      if (counts[code] > choice.rows && !LiesBelowAnother(path, data.sysCodes, counts)) {
        choice.rows = counts[code];
        choice.condition.sysCodes = {path};
      }
    }
    return choice;
  });
}
