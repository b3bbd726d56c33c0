#include "reports/special/xhl_duct_h2s_report.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "report_mng/result_config.h"
#include "report_model/row_results.h"
#include "reports/special/sum_printing.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SSpecialShape kShape{
    .floorPairTest = EFloorPairTest::LeavesOut,
    .floorRow = CLevelTest::AtLeast(CSpecialReport::LevelFloor),
    .attributeRow = CLevelTest::Not(CSpecialReport::LevelTotal),
    .remark = ERemark::InBrackets,
    .headKey = EHeadKey::Unit,
    .layout = {EFloorCells::NodeFirst, EUnitCell::BehindReferences},
};

constexpr SSpecialOrderRule kOrder{
    .comparesSysCodeTexts = true,
    .attText = ETextOrder::Plain,
    .calItem = ETextOrder::Narrow,
    .unit = ETextOrder::Narrow,
    .loops = ELoopOrder::Backwards,
};

constexpr std::wstring_view kVentilation = L"暖通";

bool IsSleeve(const KorDMRec::SKorDMSpecRec& spec, const KorDMRec::SKorDMCategoryRec& category) {
  return spec.name == kVentilation && category.category == L"BIM附件" &&
         category.kind == L"风管套管";
}

struct SPlate {
  std::wstring type;
  std::wstring material;
  std::wstring thickness;
};

// The plates of one attribute, read once.
struct SPlates {
  std::optional<std::uint32_t> duct;
  std::optional<std::uint32_t> sleeve;
};

}  // namespace

CXhlDuctH2SReport::CXhlDuctH2SReport() : CSpecialReport(kShape) {}

bool CXhlDuctH2SReport::CheckDuctHData(const KorDMRec::SKorDMSpecRec& spec,
                                       const KorDMRec::SKorDMCategoryRec& category,
                                       const KorDMRec::SKorDMCalItemDetailQRec& item) {
  const bool isDuct = spec.name == kVentilation && category.category == L"风管";
  if (!isDuct && !IsSleeve(spec, category)) {
    return false;
  }
  // A flexible duct has no wall thickness.
  return category.kind != L"柔性风管" && (item.name == L"风管长度" || item.name == L"展开面积");
}

void CXhlDuctH2SReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetXhlDetailData();
  CRowFolder fold(root, data);
  std::vector<SPlate> groups;
  StateLevels(fold, [&groups](auto& to, std::size_t group) {
    const SPlate& plate = groups[group];
    return CReportDataMethod::GetDuctHType(to, plate.type, plate.material, plate.thickness);
  });
  const auto readPlate = [](const KorDMRec::SKorDMAttrRec& attr, bool isSleeve) {
    SPlate plate{isSleeve ? L"风管套管" : L"风管", {}, {}};
    ReadParameter(plate.material, attr, L"风管材质:");
    ReadParameter(plate.thickness, attr, L"风管壁厚H(mm):");
    // A sleeve has lines of its own, and keeps what the duct's lines say where it lacks them.
    if (isSleeve) {
      ReadParameter(plate.material, attr, L"套管材质:");
      ReadParameter(plate.thickness, attr, L"板材厚度:");
    }
    return plate;
  };
  std::vector<SPlates> plates(data.attrs.size());
  for (const auto& row : data.rows) {
    const auto of = fold.Records(row);
    if (!CheckDuctHData(of.spec, of.category, of.calItem)) {
      continue;
    }
    const bool isSleeve = IsSleeve(of.spec, of.category);
    SPlates& read = plates[static_cast<std::size_t>(row.attr)];
    std::optional<std::uint32_t>& plate = isSleeve ? read.sleeve : read.duct;
    if (!plate) {
      plate = static_cast<std::uint32_t>(groups.size());
      groups.push_back(readPlate(of.attr, isSleeve));
    }
    fold.Add(row, *plate);
  }
  fold.Fold();
  SumGroups<CReportDuctHType, kOrder>();
}

void CXhlDuctH2SReport::GetDuctHData(Report::CellArray& rows, const std::wstring& requestSpec,
                                     const Report::SNewCondition& requestCondition, int level,
                                     int bySgd) {
  ShowGroups<CReportDuctHType, CAttResultData, kOrder>(
      rows, requestSpec, requestCondition, level, bySgd, {},
      [](const CReportDuctHType& group, const auto& candidates,
         std::unique_ptr<CSpecialRows>&& blockRows) {
        CSumPrinting printing(EHeadRows::MainItem);
        blockRows->Print(candidates, printing);
        blockRows->SetHead({L"@T", group.text1 + L":" + group.text2 + L":" + group.text3 + L"(mm)",
                            printing.Total().unit},
                           printing.Total().quantities);
        // The thicker plate of a material comes first.
        return std::optional<CAttResultData>(std::in_place, true, std::wstring(), group.GetKey(),
                                             BlockOf(std::move(blockRows)));
      });
}

bool CXhlDuctH2SReport::ShowsAtLevel0(const std::wstring& /*item*/, bool isMain) const {
  return isMain;
}

// Those of other items are not printed, but may be equal to one that is and go into it.
bool CXhlDuctH2SReport::FeedsHeads(const CReportCategory& /*category*/,
                                   const std::wstring& /*item*/) const {
  return true;
}

bool CXhlDuctH2SReport::SortsAscending(const CReportCategory& /*category*/) const {
  return !CResultConfig::Instance()->GetLineSortDowm();
}
