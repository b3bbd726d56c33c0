#include "reports/bill_quota/qd_de_hz_report.h"

#include "platform/project_settings.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SBillQuotaShape kShape{
    .summary = {.floorRow = CLevelTest::AtLeast(CQdDeHzReport::LevelFloor),
                .firstSysCodeLevel = CQdDeHzReport::LevelSysCode1,
                .lineLevel = CQdDeHzReport::LevelDetail},
    .items = EChapterItems::BillsWithQuotas,
    .categoryRow = CLevelTest::AtLeast(CQdDeHzReport::LevelCategory),
    .attributeRow = CLevelTest::AtLeast(CQdDeHzReport::LevelCategory),
    .showsChapterNumber = true,
};

}  // namespace

CQdDeHzReport::CQdDeHzReport() : CBillQuotaReport(kShape) {}

void CQdDeHzReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetQdDeHzData();
  const std::wstring billLibrary = CAtt().GetQdCode();
  const std::wstring quotaLibrary = CAtt().GetQdDeCode();
  CRowFolder fold(root, data);
  fold.Spec();
  StateChapter(fold, data, true);
  StateItem(fold, data, true);
  StateItem(fold, data, false);
  StateLevelsBelowItems(fold);
  for (const auto& row : data.rows) {
    // A bad index is a fault even in a row that is passed over.
    static_cast<void>(fold.Records(row));
    const auto& bill = Item(data, row.qdItem, true);
    const auto& quota = Item(data, row.deItem, false);
    if (bill.library != billLibrary || (!row.isQd && quota.library != quotaLibrary)) {
      continue;
    }
    fold.Add(row);
  }
  fold.Fold();
  SumWhole(kShape.summary);
}

void CQdDeHzReport::GetQdDeHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                                  const Report::SNewCondition& requestCondition, int level,
                                  int bySgd) {
  ShowItems(rows, requestSpec, requestCondition, level, bySgd);
}
