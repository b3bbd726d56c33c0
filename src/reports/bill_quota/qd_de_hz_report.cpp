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
  for (const auto& row : data.rows) {
    fold.Begin(row);
    const auto& bill = Item(data, row.qdItem, true);
    const auto& quota = Item(data, row.deItem, false);
    if (bill.library != billLibrary || (!row.isQd && quota.library != quotaLibrary)) {
      continue;
    }
    fold.Spec();
    FoldChapter(fold, data, row.qdItem, true);
    FoldItem(fold, data, row.qdItem, true);
    FoldItem(fold, data, row.deItem, false);
    FoldBelowItems(fold);
  }
}

void CQdDeHzReport::GetQdDeHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                                  const Report::SNewCondition& requestCondition, int level,
                                  int bySgd) {
  ShowItems(rows, requestSpec, requestCondition, level, bySgd);
}
