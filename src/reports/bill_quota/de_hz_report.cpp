#include "reports/bill_quota/de_hz_report.h"

#include "platform/project_settings.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SBillQuotaShape kShape{
    .summary = {.floorRow = CLevelTest::AtLeast(CDeHzReport::LevelFloor),
                .firstSysCodeLevel = CDeHzReport::LevelSysCode1,
                .lineLevel = CDeHzReport::LevelDetail},
    .items = EChapterItems::Quotas,
    .categoryRow = CLevelTest::Not(0),
    .attributeRow = CLevelTest::Not(0),
    .showsChapterNumber = false,
};

// Which quota rows belong to the project.
class CQuotaChoice {
 public:
  explicit CQuotaChoice(const KorDMRec::SKorDMQdDeResultData& data) : data_(data) {}

  bool Takes(const KorDMRec::SKorDMQdDeRow& row) const {
    const auto& quota = data_.deItems.at(static_cast<std::size_t>(row.deItem));
    if (goesByQuota_) {
      return quota.library == quotaLibrary_;
    }
    const auto& bill = data_.qdItems.at(static_cast<std::size_t>(row.qdItem));
    return quota.library == billQuotaLibrary_ && bill.library == billLibrary_;
  }

 private:
  const KorDMRec::SKorDMQdDeResultData& data_;
  const bool goesByQuota_ = CAtt().GetQdDeMode() != 0;
  const std::wstring quotaLibrary_ = CAtt().GetDeCode();
  const std::wstring billQuotaLibrary_ = CAtt().GetQdDeCode();
  const std::wstring billLibrary_ = CAtt().GetQdCode();
};

}  // namespace

CDeHzReport::CDeHzReport() : CBillQuotaReport(kShape) {}

void CDeHzReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetQdDeHzData();
  const CQuotaChoice choice(data);
  CRowFolder fold(root, data);
  fold.Spec();
  StateChapter(fold, data, false);
  StateItem(fold, data, false);
  StateLevelsBelowItems(fold);
  for (const auto& row : data.rows) {
    // A row's other indices are looked at only once it has passed.
    if (row.isQd || !choice.Takes(row)) {
      continue;
    }
    fold.Add(row);
  }
  fold.Fold();
  SumWhole(kShape.summary);
}

void CDeHzReport::GetDeHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                              const Report::SNewCondition& requestCondition, int level, int bySgd) {
  ShowItems(rows, requestSpec, requestCondition, level, bySgd);
}
