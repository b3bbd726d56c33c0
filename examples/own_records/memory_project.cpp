#include "memory_project.h"

#include <cstddef>
#include <utility>

#include "result_store/tally_data_mng.h"

namespace {

constexpr const wchar_t* kCategory = L"管道";

// Appends a record and answers its index, which is what a row refers to it by.
template <class TRecord>
int Add(std::vector<TRecord>& records, TRecord record) {
  records.push_back(std::move(record));
  return static_cast<int>(records.size()) - 1;
}

}  // namespace

CMemoryProject::CMemoryProject(std::wstring discipline, std::vector<SPipeRun> runs)
    : discipline_(std::move(discipline)), runs_(std::move(runs)) {}

int CMemoryProject::GetMdbVertion(const std::wstring&) {
  return CTallyDataMng::kMdbVertion;
}

// Kinds that stand in this table are listed by their sort number, others behind them.
bool CMemoryProject::ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                                      const std::wstring&) {
  int sortId = 1;
  for (const SPipeRun& run : runs_) {
    const std::wstring path = kCategory + (L"\\" + run.kind);
    records.push_back({sortId++, discipline_, kCategory, path});
  }
  return true;
}

bool CMemoryProject::ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>&,
                                     const std::wstring&) {
  return true;
}

bool CMemoryProject::ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                                   const std::wstring&) {
  for (const SPipeRun& run : runs_) {
    records.push_back({0, run.floors, run.floors});
  }
  return true;
}

bool CMemoryProject::ReadSgdAttData(std::vector<std::wstring>&, const std::wstring&) {
  return true;
}

bool CMemoryProject::ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring&,
                                 bool summary) {
  if (!summary) {
    return true;
  }
  // The engine groups equal texts: a source need not make each record once.
  const int sgd = Add(data.sgds, {0, L"一区", L""});
  const int spec = Add(data.specs, {0, discipline_});
  const int sysCode = Add(data.sysCodes, {0, L"给水系统"});
  for (const SPipeRun& run : runs_) {
    KorDMRec::SKorDMResultRow row;
    row.sgd = sgd;
    row.spec = spec;
    row.sysCode = sysCode;
    row.floor = Add(data.floors, {0, run.floors, run.floors});
    row.component = Add(data.components, {0, run.component, {}});
    row.category = Add(data.categories, {0, kCategory, run.kind});
    row.attr = Add(data.attrs, {0, run.size, L""});
    row.calItem = Add(data.calItems, {0, L"管道长度", L"m", L"", L"", run.metres, L""});
    data.rows.push_back(row);
  }
  return true;
}

bool CMemoryProject::ReadXhlDetailData(KorDMRec::SKorDMDetailResultData&, const std::wstring&) {
  return true;
}

bool CMemoryProject::ReadCgData(KorDMRec::SKorDMResultData&, const std::wstring&) {
  return true;
}

bool CMemoryProject::ReadPjData(KorDMRec::SKorDMPjResultData&, const std::wstring&) {
  return true;
}

bool CMemoryProject::ReadQdDeData(KorDMRec::SKorDMQdDeResultData&, const std::wstring&, bool) {
  return true;
}
