#include "host/open_project.h"
#include "host/joined.h"

#include "platform/message_box.h"
#include "platform/portable/project_source.h"
#include "platform/portable/sqlite_project_settings.h"
#include "platform/portable/utf8_text.h"
#include "platform/text_numbers.h"
#include "result_store/tally_data_mng.h"

namespace {

/// The program says in its own line why a project does not open.
class CSilentMessageBox : public IMessageBox {
 public:
  void Show(const std::wstring&, const std::wstring&, unsigned) override {}
};

std::string FailureText(const SDbFailure& failure) {
  std::string text = "cannot read ";
  if (!failure.table.empty()) {
    text += Joined("table ", failure.table, " of ");
  }
  text += Joined("'", Utf8FromWide(failure.file), "'");
  if (failure.row != 0) {
    text += Joined(", row ", std::to_string(failure.row));
  }
  return Joined(text, ": ", failure.message);
}

bool ReadIsQdMode(const std::wstring& path) {
  const auto source = std::make_shared<CProjectSource>();
  source->BeginRead(path);
  const std::wstring value = CSqliteProjectSettings(source).Setting(L"is_qd_mode");
  return value.empty() || ReadLeadingInt(value) != 0;
}

}  // namespace

CReadError::CReadError(const SDbFailure& failure) : CHostError(FailureText(failure)) {}

COpenProject::COpenProject(const std::string& file, CRunStats* stats)
    : path_(WideFromUtf8(file)),
      watch_(std::make_shared<CReadWatch>(CDbOperator::MakePortable(), stats)) {
  IMessageBox::Install(std::make_shared<CSilentMessageBox>());
  CDbOperator::Install(watch_);
  watch_->ForgetFailure();
  if (!CTallyDataMng::Instance()->CheckMdbVertion(path_)) {
    if (const std::optional<SDbFailure> failure = watch_->LastFailure()) {
      throw CHostError("cannot open '" + file + "': " + failure->message);
    }
    throw CHostError("cannot open '" + file + "': its format is version " +
                     std::to_string(watch_->GetMdbVertion(path_)) + ", not version " +
                     std::to_string(CTallyDataMng::kMdbVertion));
  }
  Reopen(ReadIsQdMode(path_));
}

void COpenProject::Reopen(bool isQdMode) {
  CTallyDataMng::Instance()->InitData(path_, isQdMode);
}

void COpenProject::RequireSet(ERecordSet set) const {
  if (const std::optional<SDbFailure> failure = watch_->FailureOf(set)) {
    throw CReadError(*failure);
  }
}

void COpenProject::RequireResultSet(Report::EReportType type) const {
  if (const std::optional<ERecordSet> set = ResultSetOf(type)) {
    RequireSet(*set);
  }
}

void COpenProject::RequireTrees() const {
  for (const ERecordSet set : {ERecordSet::CategoryTree, ERecordSet::SysCodeTree,
                               ERecordSet::FloorTree, ERecordSet::SgdTree}) {
    RequireSet(set);
  }
}
