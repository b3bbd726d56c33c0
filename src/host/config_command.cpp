#include "host/config_command.h"

#include <filesystem>
#include <system_error>

#include "host/host_error.h"
#include "host/joined.h"
#include "host/suggestion.h"
#include "platform/app_profile.h"
#include "platform/portable/utf8_text.h"
#include "report_mng/result_config.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kLineSort = "line-sort";
constexpr const char* kUp = "up";
constexpr const char* kDown = "down";

void SetLineSort(bool isDown) {
  CResultConfig* config = CResultConfig::Instance();
  const std::string folder = Utf8FromWide(GetAppProfile()->GetConfigFolder());
  std::error_code ignored;
  fs::create_directories(fs::path(std::u8string(folder.begin(), folder.end())), ignored);
  config->SetLineSortDowm(isDown);
  config->SaveConfig();
  // A save that fails is silent.
  config->LoadConfig();
  if (config->GetLineSortDowm() != isDown) {
    throw CHostError(Joined("cannot write to '", folder, "/ReportConfig.ini'"));
  }
}

}  // namespace

void RunConfig(const SConfigArguments& arguments, COutput& output) {
  if (arguments.setting != kLineSort) {
    throw CHostError(
        Joined("no setting '", arguments.setting, "'", KnownWords(arguments.setting, {kLineSort})));
  }
  if (!arguments.value.has_value()) {
    output.Write(Joined(CResultConfig::Instance()->GetLineSortDowm() ? kDown : kUp, "\n"));
    output.Flush();
    return;
  }
  if (*arguments.value != kUp && *arguments.value != kDown) {
    throw CHostError(Joined("line-sort: no direction '", *arguments.value, "'",
                            KnownWords(*arguments.value, {kUp, kDown})));
  }
  SetLineSort(*arguments.value == kDown);
}
