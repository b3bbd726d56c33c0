#include "reports/consumption/xhl_hz_report.h"

#include "result_store/tally_data_mng.h"

namespace {

constexpr SConsumptionShape kShape{
    .summary = {.floorRow = CLevelTest::AtLeast(CXhlHzReport::LevelFloor),
                .firstSysCodeLevel = CXhlHzReport::LevelSysCode1},
    .otherItems = EOtherItems::OneRow,
    .itemTexts = EItemTexts::Hidden,
};

}  // namespace

CXhlHzReport::CXhlHzReport() : CConsumptionReport(kShape) {}

void CXhlHzReport::CreatData() {
  FoldRows(CTallyDataMng::Instance()->GetXhlHzData());
}

void CXhlHzReport::GetXhlHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                                const Report::SNewCondition& requestCondition, int level,
                                int bySgd) {
  ShowConsumption(rows, requestSpec, requestCondition, level, bySgd);
}
