#include "result_store/tally_data_mng.h"

#include <algorithm>
#include <cstddef>

#include "platform/chapter_libraries.h"
#include "platform/db_operator.h"
#include "platform/message_box.h"
#include "platform/project_settings.h"
#include "report_mng/report_mng.h"

namespace {

constexpr const wchar_t* kOtherChapter = L"其他章";

// Value under two keys, or null.
template <class TMap>
auto FindNested(const TMap& map, std::wstring_view outer, std::wstring_view inner) -> const
    typename TMap::mapped_type::mapped_type* {
  const auto at = map.find(outer);
  if (at == map.end()) {
    return nullptr;
  }
  const auto found = at->second.find(inner);
  return found == at->second.end() ? nullptr : &found->second;
}

}  // namespace

CTallyDataMng* CTallyDataMng::Instance() {
  // Never destroyed: reports of the registry may outlive any order of static destruction.
  static auto* const instance = new CTallyDataMng;
  return instance;
}

void CTallyDataMng::InitData(const std::wstring& path, bool isQdMode) {
  if (path == dbPath_ && isQdMode == isQdMode_) {
    return;
  }
  ClearData();
  try {
    dbPath_ = path;
    isQdMode_ = isQdMode;
    CInterKorQdDek::CloseDeDB();
    CInterDeAnalyze::CloseDeDB();
    InitAllTreeData();
  } catch (...) {
    dbPath_.clear();
    ClearData();
    throw;
  }
}

void CTallyDataMng::ClearData() {
  detail_ = {};
  hz_ = {};
  gl_ = {};
  cg_ = {};
  pj_ = {};
  qdDe_ = {};
  categorySortIds_.clear();
  sysCodeSortIds_.clear();
  keptTexts_.clear();
  smallIndexTree_.clear();
  sysCodeTree_.clear();
  floorTree_.clear();
  sgdNameTree_.clear();
  specReportHasData_.clear();
  qdChapters_.clear();
  qdFeatures_.clear();
  deChapters_.clear();
  // No report may outlive the data that it was folded from.
  CReportMng::Instance()->Clear();
}

void CTallyDataMng::InitAllTreeData() {
  CDbOperator* database = CDbOperator::Instance();
  database->ReadCategoryData(smallIndexTree_, dbPath_);
  database->ReadSysCodeData(sysCodeTree_, dbPath_);
  database->ReadFloorData(floorTree_, dbPath_);
  database->ReadSgdAttData(sgdNameTree_, dbPath_);
  CreateCategorySortIdMap();
  CreateSysCodeSortIdMap();
}

void CTallyDataMng::CreateCategorySortIdMap() {
  for (const auto& record : smallIndexTree_) {
    categorySortIds_[record.spec].try_emplace(record.path, record.sortId);
  }
}

void CTallyDataMng::CreateSysCodeSortIdMap() {
  for (const auto& record : sysCodeTree_) {
    std::wstring path = record.sysCode;
    std::replace(path.begin(), path.end(), L'&', L'\\');
    sysCodeSortIds_[record.spec].try_emplace(std::move(path),
                                             SSysCodeEntry{record.sortId, record.remark});
  }
}

template <class TData, class TRead>
const TData& CTallyDataMng::Load(SLazySet<TData>& set, TRead&& read) {
  if (!set.loaded) {
    set.data = {};
    set.loaded = true;
    try {
      read(*CDbOperator::Instance(), set.data);
    } catch (...) {
      set = {};
      throw;
    }
  }
  return set.data;
}

const KorDMRec::SKorDMDetailResultData& CTallyDataMng::GetXhlDetailData() {
  return Load(detail_, [this](auto& db, auto& data) { db.ReadXhlDetailData(data, dbPath_); });
}

const KorDMRec::SKorDMResultData& CTallyDataMng::GetXhlHzData() {
  return Load(hz_, [this](auto& db, auto& data) { db.ReadXhlData(data, dbPath_, true); });
}

const KorDMRec::SKorDMResultData& CTallyDataMng::GetXhlGlData() {
  return Load(gl_, [this](auto& db, auto& data) { db.ReadXhlData(data, dbPath_, false); });
}

const KorDMRec::SKorDMResultData& CTallyDataMng::GetXhlCgData() {
  return Load(cg_, [this](auto& db, auto& data) { db.ReadCgData(data, dbPath_); });
}

const KorDMRec::SKorDMPjResultData& CTallyDataMng::GetPjHzData() {
  return Load(pj_, [this](auto& db, auto& data) { db.ReadPjData(data, dbPath_); });
}

const KorDMRec::SKorDMQdDeResultData& CTallyDataMng::GetQdDeHzData() {
  return Load(qdDe_, [this](auto& db, auto& data) {
    OpenLibraries();
    db.ReadQdDeData(data, dbPath_, isQdMode_);
  });
}

void CTallyDataMng::OpenLibraries() const {
  const CAtt settings;
  if (isQdMode_) {
    CInterKorQdDek::InitialDeDB(settings.GetQdCode(), settings.GetQdLocal());
    CInterDeAnalyze::InitialDeDB(settings.GetQdDeCode(), settings.GetQdDeLocal(),
                                 settings.GetQdDeYear());
  } else {
    CInterDeAnalyze::InitialDeDB(settings.GetDeCode(), settings.GetDeLocal(), settings.GetDeYear());
  }
}

const std::vector<KorDMRec::SKorDMAllSmallIndexRec>& CTallyDataMng::GetSmallIndexTree() const {
  return smallIndexTree_;
}
const std::vector<KorDMRec::SKorDMAllSysCodeRec>& CTallyDataMng::GetSysCodeTree() const {
  return sysCodeTree_;
}
const std::vector<KorDMRec::SKorDMFloorRec>& CTallyDataMng::GetFloorTree() const {
  return floorTree_;
}
const std::vector<std::wstring>& CTallyDataMng::GetSgdNameTree() const {
  return sgdNameTree_;
}

int CTallyDataMng::GetCategorySortId(std::wstring_view spec, std::wstring_view path) const {
  const int* sortId = FindNested(categorySortIds_, spec, path);
  return sortId == nullptr ? kUnknownSortId : *sortId;
}

int CTallyDataMng::GetBigCategorySortId(std::wstring_view spec, std::wstring_view category) const {
  const auto at = categorySortIds_.find(spec);
  if (at == categorySortIds_.end()) {
    return kUnknownSortId;
  }
  // Keys that begin with a text stand together, and none that does stands before the text itself.
  const auto first = at->second.lower_bound(category);
  return first != at->second.end() && first->first.starts_with(category) ? first->second
                                                                         : kUnknownSortId;
}

const CTallyDataMng::SSysCodeEntry* CTallyDataMng::FindSysCode(std::wstring_view spec,
                                                               std::wstring_view path) const {
  return FindNested(sysCodeSortIds_, spec, path);
}

int CTallyDataMng::GetSysCodeSortId(std::wstring_view spec, std::wstring_view path) const {
  const SSysCodeEntry* entry = FindSysCode(spec, path);
  return entry == nullptr ? kUnknownSortId : entry->sortId;
}

const std::wstring& CTallyDataMng::KeepText(std::wstring_view text) {
  auto at = keptTexts_.find(text);
  if (at == keptTexts_.end()) {
    at = keptTexts_.emplace(text).first;
  }
  return *at;
}

std::wstring CTallyDataMng::GetSysCodeRemark(std::wstring_view spec, std::wstring_view path) const {
  const SSysCodeEntry* entry = FindSysCode(spec, path);
  return entry == nullptr ? std::wstring() : entry->remark;
}

bool CTallyDataMng::CheckMdbVertion(const std::wstring& path) {
  // Information icon, task modal, brought to the front.
  constexpr unsigned kFlags = 0x12040;
  const int version = CDbOperator::Instance()->GetMdbVertion(path);
  if (version < kMdbVertion) {
    IMessageBox::Instance()->Show(L"当前数据库版本太低,请重新计算！", L"Korvane", kFlags);
  }
  return version == kMdbVertion;
}

std::wstring CTallyDataMng::GetQdFeather(const std::wstring& code) {
  constexpr std::size_t kCellsOfMark = 3;
  if (const auto at = qdFeatures_.find(code); at != qdFeatures_.end()) {
    return at->second;
  }
  Report::CellArray cells;
  CAttMarkMng().GetQdMarkInfo(code, cells);
  std::wstring text;
  for (std::size_t i = 0; i + 1 < cells.size(); i += kCellsOfMark) {
    text += cells[i] + L": " + cells[i + 1] + L"\n";
  }
  return qdFeatures_.emplace(code, std::move(text)).first->second;
}

template <class TRead>
std::wstring CTallyDataMng::GetChapter(TextMap<SChapter>& cache, const std::wstring& code,
                                       int& number, TRead&& read) {
  auto at = cache.find(code);
  if (at == cache.end()) {
    std::wstring name = read(code, number);
    if (name.empty()) {
      name = kOtherChapter;
    }
    at = cache.emplace(code, SChapter{number, std::move(name)}).first;
  }
  number = at->second.number;
  return at->second.name;
}

std::wstring CTallyDataMng::GetQdChapter(const std::wstring& code, int& number) {
  return GetChapter(qdChapters_, code, number, &CInterKorQdDek::GetZhangName);
}

std::wstring CTallyDataMng::GetDeChapter(const std::wstring& code, int& number) {
  return GetChapter(deChapters_, code, number, [](const std::wstring& quota, int& chapter) {
    Report::CellArray cells;
    CInterDeAnalyze::GetZhangJ(quota, cells, chapter);
    const std::size_t end = cells.empty() ? std::wstring::npos : cells[0].find(L'\\');
    return end == std::wstring::npos ? std::wstring() : cells[0].substr(0, end);
  });
}

bool CTallyDataMng::GetSpecReportHasData(const std::wstring& spec,
                                         const std::wstring& report) const {
  const bool* hasData = FindNested(specReportHasData_, spec, report);
  return hasData == nullptr || *hasData;
}

void CTallyDataMng::SetSpecReportHasData(const std::wstring& spec, const std::wstring& report,
                                         bool hasData) {
  specReportHasData_[spec][report] = hasData;
}

void CTallyDataMng::GetReportSpecAry(Report::CellArray& cells, Report::EReportType type) {
  const auto append = [&cells](const auto& data) {
    for (const auto& spec : data.specs) {
      cells.push_back(spec.name);
    }
  };
  switch (type) {
    case Report::ReportSysJss:
    case Report::ReportPipeJRBW:
    case Report::ReportBrushPaint:
    case Report::ReportDuctH:
      return append(GetXhlDetailData());
    case Report::ReportXhlHz:
      return append(GetXhlHzData());
    case Report::ReportXhlGl:
      return append(GetXhlGlData());
    case Report::ReportXhlCgHz:
      return append(GetXhlCgData());
    case Report::ReportPjHz:
      return append(GetPjHzData());
    case Report::ReportDeHz:
    case Report::ReportQdDeHz:
    case Report::ReportQdHz:
      return append(GetQdDeHzData());
    default:
      return;
  }
}
