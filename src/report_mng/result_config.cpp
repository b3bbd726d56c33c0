#include "report_mng/result_config.h"

#include <memory>
#include <string>

#include "platform/app_profile.h"
#include "platform/private_profile.h"

namespace {

constexpr const wchar_t* kSection = L"ReportConfig";
constexpr const wchar_t* kKey = L"LineSortUp";
constexpr const wchar_t* kSortsUp = L"FALSE";

struct SMaxLevel {
  Report::EReportType type;
  int level;
};

constexpr SMaxLevel kMaxLevels[] = {
    {Report::ReportSysJss, 5},     {Report::ReportXhlHz, 5}, {Report::ReportXhlGl, 0},
    {Report::ReportXhlCgHz, 5},    {Report::ReportPjHz, 4},  {Report::ReportPipeJRBW, 6},
    {Report::ReportBrushPaint, 6}, {Report::ReportDuctH, 6}, {Report::ReportDeHz, 6},
    {Report::ReportQdDeHz, 7},     {Report::ReportQdHz, 6},
};

std::wstring ConfigPath() {
  return GetAppProfile()->GetConfigFolder() + L"\\ReportConfig.ini";
}

}  // namespace

CResultConfig* CResultConfig::Instance() {
  static CResultConfig* const instance = [] {
    auto config = std::unique_ptr<CResultConfig>(new CResultConfig);
    config->LoadConfig();
    return config.release();
  }();
  return instance;
}

void CResultConfig::LoadConfig() {
  lineSortDown_ = IPrivateProfile::Instance()->GetString(kSection, kKey, L"", ConfigPath()).empty();
}

void CResultConfig::SaveConfig() const {
  IPrivateProfile::Instance()->WriteString(kSection, kKey, lineSortDown_ ? L"" : kSortsUp,
                                           ConfigPath());
}

int CResultConfig::GetReportMaxLevel(Report::EReportType type) const {
  for (const SMaxLevel& line : kMaxLevels) {
    if (line.type == type) {
      return line.level;
    }
  }
  return 0;
}
