#include "reports/consumption/xhl_cg_hz_report.h"

#include "result_store/tally_data_mng.h"

namespace {

constexpr SConsumptionShape kShape{
    .summary = {.floorRow = CLevelTest::AtLeast(CXhlCgHzReport::LevelFloor),
                .firstSysCodeLevel = CXhlCgHzReport::LevelSysCode1,
                .chainMark = EChainMark::Ahead,
                .firstSysCodes = EFirstSysCodes::AllByKey,
                .floorCell = EFloorCell::DrawingFloor},
    .otherItems = EOtherItems::InFull,
    .itemTexts = EItemTexts::Shown,
};

}  // namespace

CXhlCgHzReport::CXhlCgHzReport() : CConsumptionReport(kShape) {}

void CXhlCgHzReport::CreatData() {
  FoldRows(CTallyDataMng::Instance()->GetXhlCgData());
}

void CXhlCgHzReport::GetCgHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                                 const Report::SNewCondition& requestCondition, int level,
                                 int bySgd) {
  ShowConsumption(rows, requestSpec, requestCondition, level, bySgd);
}
