#include "report_mng/report_mng.h"

#include <utility>

#include "platform/text_numbers.h"
#include "report_mng/report_classes.h"

namespace {

template <class TMap, class TKey, class TMake>
IReport* FindOrBuild(TMap& map, const TKey& key, TMake&& make) {
  if (const auto at = map.find(key); at != map.end()) {
    return at->second.get();
  }
  std::unique_ptr<IReport> report = make();
  if (report == nullptr) {
    return nullptr;
  }
  // Folded before it is filed: a fold that raises files nothing.
  report->CreatData();
  return map.emplace(key, std::move(report)).first->second.get();
}

template <class TMap>
void ClearAll(TMap& map) {
  for (auto& [key, report] : map) {
    report->Clear();
  }
  map.clear();
}

}  // namespace

CReportMng* CReportMng::Instance() {
  static auto* const instance = new CReportMng;
  return instance;
}

std::wstring CReportMng::CreateReportKey(Report::EReportType type, int variant) {
  if (type != Report::ReportSysJss) {
    return IntText(type);
  }
  return IntText(type) + L"@" + IntText(variant == 0 || variant == 1 ? variant : 2);
}

IReport* CReportMng::GetReportData(Report::EReportType type, int variant) {
  return FindOrBuild(reports_, CreateReportKey(type, variant),
                     [=] { return CreateReport(type, variant); });
}

IReport* CReportMng::GetTreeData(Report::ETreeType type) {
  return FindOrBuild(trees_, type, [=] { return CreateTree(type); });
}

void CReportMng::ClearXHLSysJSSReportData() {
  for (const int variant : {0, 1, 2}) {
    const auto at = reports_.find(CreateReportKey(Report::ReportSysJss, variant));
    if (at != reports_.end()) {
      at->second->Clear();
      reports_.erase(at);
    }
  }
}

void CReportMng::Clear() {
  ClearAll(reports_);
  ClearAll(trees_);
}
