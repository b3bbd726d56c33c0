#include "host/read_watch.h"

#include <utility>

std::optional<ERecordSet> ResultSetOf(Report::EReportType type) {
  switch (type) {
    case Report::ReportSysJss:
    case Report::ReportPipeJRBW:
    case Report::ReportBrushPaint:
    case Report::ReportDuctH:
      return ERecordSet::Detail;
    case Report::ReportXhlHz:
      return ERecordSet::Summary;
    case Report::ReportXhlGl:
      return ERecordSet::Overview;
    case Report::ReportXhlCgHz:
      return ERecordSet::OverHeight;
    case Report::ReportPjHz:
      return ERecordSet::Fitting;
    case Report::ReportDeHz:
    case Report::ReportQdDeHz:
    case Report::ReportQdHz:
      return ERecordSet::BillQuota;
    default:
      return std::nullopt;
  }
}

CReadWatch::CReadWatch(std::shared_ptr<CDbOperator> reader, CRunStats* stats)
    : reader_(std::move(reader)), stats_(stats) {}

std::optional<SDbFailure> CReadWatch::FailureOf(ERecordSet set) const {
  const auto at = failures_.find(set);
  return at == failures_.end() ? std::nullopt : std::optional(at->second);
}

template <class TRow, class TRead>
bool CReadWatch::Watch(ERecordSet set, const std::wstring& path, const std::vector<TRow>& rows,
                       TRead read) {
  std::optional<CRunStats::CTimer> timer;
  if (stats_ != nullptr) {
    timer.emplace(*stats_, ERunPhase::Read);
  }
  const std::size_t before = rows.size();
  failures_.erase(set);
  reader_->ForgetFailure();
  if (read(*reader_)) {
    if (stats_ != nullptr) {
      stats_->AddRecords(rows.size() - before);
    }
    return true;
  }
  failures_[set] = reader_->LastFailure().value_or(SDbFailure{path, "", 0, "it could not be read"});
  return false;
}

int CReadWatch::GetMdbVertion(const std::wstring& path) {
  return reader_->GetMdbVertion(path);
}

bool CReadWatch::ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                                  const std::wstring& path) {
  return Watch(ERecordSet::CategoryTree, path, records,
               [&](CDbOperator& reader) { return reader.ReadCategoryData(records, path); });
}

bool CReadWatch::ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& records,
                                 const std::wstring& path) {
  return Watch(ERecordSet::SysCodeTree, path, records,
               [&](CDbOperator& reader) { return reader.ReadSysCodeData(records, path); });
}

bool CReadWatch::ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                               const std::wstring& path) {
  return Watch(ERecordSet::FloorTree, path, records,
               [&](CDbOperator& reader) { return reader.ReadFloorData(records, path); });
}

bool CReadWatch::ReadSgdAttData(std::vector<std::wstring>& names, const std::wstring& path) {
  return Watch(ERecordSet::SgdTree, path, names,
               [&](CDbOperator& reader) { return reader.ReadSgdAttData(names, path); });
}

bool CReadWatch::ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring& path,
                             bool summary) {
  return Watch(summary ? ERecordSet::Summary : ERecordSet::Overview, path, data.rows,
               [&](CDbOperator& reader) { return reader.ReadXhlData(data, path, summary); });
}

bool CReadWatch::ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data,
                                   const std::wstring& path) {
  return Watch(ERecordSet::Detail, path, data.rows,
               [&](CDbOperator& reader) { return reader.ReadXhlDetailData(data, path); });
}

bool CReadWatch::ReadCgData(KorDMRec::SKorDMResultData& data, const std::wstring& path) {
  return Watch(ERecordSet::OverHeight, path, data.rows,
               [&](CDbOperator& reader) { return reader.ReadCgData(data, path); });
}

bool CReadWatch::ReadPjData(KorDMRec::SKorDMPjResultData& data, const std::wstring& path) {
  return Watch(ERecordSet::Fitting, path, data.rows,
               [&](CDbOperator& reader) { return reader.ReadPjData(data, path); });
}

bool CReadWatch::ReadQdDeData(KorDMRec::SKorDMQdDeResultData& data, const std::wstring& path,
                              bool isQdMode) {
  return Watch(ERecordSet::BillQuota, path, data.rows,
               [&](CDbOperator& reader) { return reader.ReadQdDeData(data, path, isQdMode); });
}
