// Lines of any bytes for the batch protocol, over a small project. Each gets one answer, and the
// same lines get the same answers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz_check.h"
#include "host/batch.h"
#include "host/open_project.h"
#include "host/output.h"
#include "host/report_state.h"
#include "host/small_project.h"
#include "platform/app_profile.h"
#include "platform/portable/utf8_text.h"
#include "platform/xml_service.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

// Fills the other sets; the over-height set has a row that names no discipline.
constexpr const char* kOtherSets = R"sql(
INSERT INTO gl_row SELECT * FROM hz_row;
INSERT INTO cg_row SELECT * FROM hz_row;
INSERT INTO cg_row VALUES (9, 1, 1, 1, 99, 1, 1, 1, 1);
INSERT INTO detail_cal_item SELECT id, name, unit, quantity, 1, 2, 3, expression FROM cal_item;
INSERT INTO detail_row SELECT * FROM hz_row;
INSERT INTO pj_cal_item VALUES (1, '90', '弯头', '个', 1), (2, '', '三通', '个', 1),
  (3, '', '接头', '个', 1);
INSERT INTO pj_row SELECT * FROM hz_row;
INSERT INTO qd_item VALUES (1, '030801001001', '镀锌钢管', 'm', 'Q');
INSERT INTO de_item VALUES (1, '8-1', '管道安装', '10m', 'D');
INSERT INTO qd_de_row SELECT id, id % 2, sgd, floor, component, spec, category, attr, sys_code,
  cal_item, 1, 1 FROM hz_row;
)sql";

/// A document whose file lies in one folder, whatever path it is given.
class CConfinedDocument final : public IXmlDocument {
 public:
  CConfinedDocument(std::shared_ptr<IXmlDocument> document, fs::path folder)
      : document_(std::move(document)), folder_(std::move(folder)) {}

  std::shared_ptr<IXmlElement> createElement(const std::wstring& name) override {
    return document_->createElement(name);
  }
  void appendChild(const std::shared_ptr<IXmlNode>& node) override { document_->appendChild(node); }
  bool load(const std::wstring& path) override { return document_->load(Confined(path)); }
  void save(const std::wstring& path) override { document_->save(Confined(path)); }
  std::shared_ptr<IXmlNode> selectSingleNode(const std::wstring& name) override {
    return document_->selectSingleNode(name);
  }

 private:
  /// One of a few files; a path that ends in "/" lies in a folder that is missing.
  std::wstring Confined(const std::wstring& path) const {
    const std::string name = "status" + std::to_string(path.size() % 3) + ".xml";
    const bool isMissing = path.ends_with(L'/');
    return WideFromUtf8((isMissing ? folder_ / "missing" / name : folder_ / name).string());
  }

  std::shared_ptr<IXmlDocument> document_;
  fs::path folder_;
};

class CConfinedXmlService final : public IXmlService {
 public:
  explicit CConfinedXmlService(fs::path folder) : folder_(std::move(folder)) {}
  std::shared_ptr<IXmlDocument> CreateDocument() override {
    return std::make_shared<CConfinedDocument>(portable_->CreateDocument(), folder_);
  }

 private:
  std::shared_ptr<IXmlService> portable_ = IXmlService::MakePortable();
  fs::path folder_;
};

/// The folder of everything that is read or written, and the project in it.
class CSurroundings {
 public:
  CSurroundings() {
    IXmlService::Install(std::make_shared<CConfinedXmlService>(folder_.Path()));
    IKorAppProfile::Install(IKorAppProfile::MakePortable(WideFromUtf8(folder_.Path().string())));
    const fs::path file = folder_ / "project.tally";
    tally_test::CreateProjectDatabase(file, std::string(kSmallProject) + kOtherSets);
    project_ = std::make_unique<COpenProject>(file.string());
  }

  /// The project as a new process answers for it. Reports that stand may stay, for no request leans
  /// on the one before.
  COpenProject& FreshProject() {
    SetDividedNode(false);
    *CReportStatusMng::Instance() = fresh_;
    CResultConfig::Instance()->SetLineSortDowm(true);
    for (const char* name : {"status0.xml", "status1.xml", "status2.xml"}) {
      fs::remove(folder_ / name);
    }
    project_->Reopen(true);
    return *project_;
  }

 private:
  tally_test::CTempFolder folder_;
  std::unique_ptr<COpenProject> project_;
  const CReportStatusMng fresh_ = *CReportStatusMng::Instance();
};

std::string Answers(CSurroundings& surroundings, const std::string& lines) {
  COutput output;
  CBatch batch(surroundings.FreshProject(), output);
  std::istringstream input(lines);
  batch.Run(input);
  return output.Text();
}

void CheckAnswers(std::string_view answers, std::ptrdiff_t count) {
  Require(std::count(answers.begin(), answers.end(), '\n') == count, "a line for each line");
  while (!answers.empty()) {
    const std::size_t end = answers.find('\n');
    const auto answer = nlohmann::json::parse(answers.substr(0, end), nullptr, false);
    Require(answer.is_object(), "each answer is an object");
    if (const auto error = answer.find("error"); error != answer.end()) {
      Require((*error)["kind"].is_string(), "an error has a kind");
    }
    answers.remove_prefix(end + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static CSurroundings surroundings;
  const std::string lines(reinterpret_cast<const char*>(data), size);
  const bool isLastOpen = !lines.empty() && lines.back() != '\n';
  const auto count = std::count(lines.begin(), lines.end(), '\n') + (isLastOpen ? 1 : 0);
  const std::string answers = Answers(surroundings, lines);
  CheckAnswers(answers, count);
  Require(Answers(surroundings, lines) == answers, "the same lines have the same answers");
  return 0;
}
