#include "reports/bill_quota/qd_hz_report.h"

#include "platform/project_settings.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SBillQuotaShape kShape{
    .summary = {.floorRow = CLevelTest::AtLeast(CQdHzReport::LevelFloor),
                .firstSysCodeLevel = CQdHzReport::LevelSysCode1,
                .lineLevel = CQdHzReport::LevelDetail},
    .items = EChapterItems::Bills,
    .categoryRow = CLevelTest::Not(0),
    .attributeRow = CLevelTest::Not(0),
    .showsChapterNumber = true,
};

}  // namespace

CQdHzReport::CQdHzReport() : CBillQuotaReport(kShape) {}

void CQdHzReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetQdDeHzData();
  const std::wstring billLibrary = CAtt().GetQdCode();
  CRowFolder fold(root, data);
  fold.Spec();
  StateChapter(fold, data, true);
  StateItem(fold, data, true);
  StateLevelsBelowItems(fold);
  for (const auto& row : data.rows) {
    // A row's other indices are looked at only once it has passed.
    if (!row.isQd || Item(data, row.qdItem, true).library != billLibrary) {
      continue;
    }
    fold.Add(row);
  }
  fold.Fold();
  SumWhole(kShape.summary);
}

void CQdHzReport::GetQdHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                              const Report::SNewCondition& requestCondition, int level, int bySgd) {
  ShowItems(rows, requestSpec, requestCondition, level, bySgd);
}
