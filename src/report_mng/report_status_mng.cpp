#include "report_mng/report_status_mng.h"

#include <algorithm>

#include "platform/app_profile.h"
#include "report_mng/report_status_file.h"

namespace {

template <class TValue>
const TValue* Find(const std::map<std::wstring, TValue>& map, const std::wstring& key) {
  const auto at = map.find(key);
  return at == map.end() ? nullptr : &at->second;
}

}  // namespace

CReportStatusMng* CReportStatusMng::Instance() {
  static auto* const instance = new CReportStatusMng;
  return instance;
}

bool CReportStatusMng::CheckIsValidSgd(std::wstring_view name) const {
  return !status_.isBySgd ||
         std::find(status_.dispSgd.begin(), status_.dispSgd.end(), name) != status_.dispSgd.end();
}

std::wstring CReportStatusMng::CheckSelSgdNames() const {
  std::wstring names;
  for (const std::wstring& name : status_.dispSgd) {
    if (&name != &status_.dispSgd.front()) {
      names += L',';
    }
    names += name;
  }
  return names;
}

void CReportStatusMng::SetReportVisible(const std::wstring& report, bool visible) {
  status_.reports[report].visible = visible;
}

bool CReportStatusMng::GetReportVisible(const std::wstring& report) const {
  const NewReportConfigRec* record = Find(status_.reports, report);
  return record == nullptr || record->visible;
}

void CReportStatusMng::SetReportExpand(const std::wstring& report, int level) {
  status_.reports[report].expandLevel = level;
}

void CReportStatusMng::GetReportExpand(const std::wstring& report, int& level) const {
  if (const NewReportConfigRec* record = Find(status_.reports, report)) {
    level = record->expandLevel;
  }
}

void CReportStatusMng::SetReportColStatus(const std::wstring& report,
                                          const std::vector<Report::SColumnState>& columns) {
  status_.reports[report].columns = columns;
}

void CReportStatusMng::GetReportColStatus(const std::wstring& report,
                                          std::vector<Report::SColumnState>& columns) const {
  if (const NewReportConfigRec* record = Find(status_.reports, report)) {
    columns = record->columns;
  }
}

void CReportStatusMng::GetReportStatus(std::map<std::wstring, NewReportConfigRec>& reports) const {
  reports = status_.reports;
}

void CReportStatusMng::SetTreeStatus(const std::wstring& spec,
                                     const Report::SNewCondition& condition) {
  status_.conditions[spec] = condition;
}

void CReportStatusMng::GetTreeStatus(const std::wstring& spec,
                                     Report::SNewCondition& condition) const {
  if (const Report::SNewCondition* found = Find(status_.conditions, spec)) {
    condition = *found;
  }
}

void CReportStatusMng::GetSpecTreeStatus(
    std::map<std::wstring, Report::SNewCondition>& conditions) const {
  conditions = status_.conditions;
}

void CReportStatusMng::SetTJTJTree(const std::wstring& spec, const SysCodeMemTJInfo& sysCode,
                                   const FloorTJInfo& floor, const SysCodeMemTJInfo& member) {
  status_.trees[spec] = {sysCode, floor, member};
}

void CReportStatusMng::GetSyscodeTJTree(const std::wstring& spec, SysCodeMemTJInfo& sysCode) const {
  if (const TJTreeRec* record = Find(status_.trees, spec)) {
    sysCode = record->sysCode;
  }
}

void CReportStatusMng::GetFloorTJTree(const std::wstring& spec, FloorTJInfo& floor) const {
  if (const TJTreeRec* record = Find(status_.trees, spec)) {
    floor = record->floor;
  }
}

void CReportStatusMng::GetMemTJTree(const std::wstring& spec, SysCodeMemTJInfo& member) const {
  if (const TJTreeRec* record = Find(status_.trees, spec)) {
    member = record->member;
  }
}

bool CReportStatusMng::ReadReportStatus(const std::wstring& path) {
  SaveReportStatus();
  path_ = path;
  status_.reports.clear();
  status_.conditions.clear();
  status_.dispSgd.clear();
  status_.trees.clear();
  const std::shared_ptr<IXmlDocument> document = IXmlService::Instance()->CreateDocument();
  return document != nullptr && document->load(path_) &&
         ReadStatusDocument(*document, status_, fileVersion_);
}

void CReportStatusMng::SaveReportStatus() const {
  if (path_.empty()) {
    return;
  }
  const std::shared_ptr<IXmlDocument> document = IXmlService::Instance()->CreateDocument();
  if (document == nullptr) {
    return;
  }
  WriteStatusDocument(*document, status_, GetAppProfile()->GetVersion().ToString());
  document->save(path_);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a handle, taken by value by contract
bool CReportStatusMng::ReadConditionLable(std::shared_ptr<IXmlNode> node) {
  if (node == nullptr) {
    return false;
  }
  ReadConditionElement(*node, CKorVersion(fileVersion_), status_.conditions);
  return true;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a handle, taken by value by contract
bool CReportStatusMng::ReadTJTreeLable(std::shared_ptr<IXmlNode> node) {
  if (node == nullptr) {
    return false;
  }
  ReadTreesElement(*node, status_.trees);
  return true;
}
