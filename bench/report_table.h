// The reports that are measured: those of the host's catalogue, so that a new one joins by itself.
#ifndef TALLY_BENCH_REPORT_TABLE_H_
#define TALLY_BENCH_REPORT_TABLE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "host/read_watch.h"
#include "host/report_catalog.h"
#include "report_mng/ireport.h"

struct SBenchReport {
  const SCatalogReport* catalog;
  int variant;  ///< for CReportMng::GetReportData
  std::string name;
  ERecordSet set;  ///< the set that it is folded from
};

/// Every report of the catalogue.
std::vector<SBenchReport> ReportTable();

/// Names a result set for the eyes of a reader.
const char* SetName(ERecordSet set);
/// Its row table in a project database.
const char* SetTable(ERecordSet set);

/// How many rows of a result set each discipline has, in the set's order. Reads the set if need be.
struct SSpecRows {
  std::wstring spec;
  std::size_t rows = 0;
};
std::vector<SSpecRows> RowsBySpec(ERecordSet set);
std::size_t RowCount(ERecordSet set);
/// The discipline with the most rows; empty where there are none.
std::wstring BiggestSpec(ERecordSet set);

/// The report of the registry, folded now if it was not.
IReport* Fold(const SBenchReport& report);
/// What the report answers for a discipline.
Report::CellArray Request(const SBenchReport& report, const std::wstring& spec, int level,
                          const Report::SNewCondition& condition = {});

/// A filter, and how many rows of the discipline it selects.
struct SFilterChoice {
  Report::SNewCondition condition;
  std::size_t rows = 0;
};
/// The floor with the most rows of the discipline among those that stand for themselves alone.
SFilterChoice OneFloor(ERecordSet set, const std::wstring& spec);
/// The system code with the most rows of the discipline among those that lie below no other. The
/// rows are right where codes have at most three levels.
SFilterChoice OneSysCode(ERecordSet set, const std::wstring& spec);
/// All of the discipline, chosen floor by floor: a request that has to look at each row, since sums
/// of everything serve for no filter alone.
SFilterChoice EveryFloor(ERecordSet set, const std::wstring& spec);

#endif  // TALLY_BENCH_REPORT_TABLE_H_
