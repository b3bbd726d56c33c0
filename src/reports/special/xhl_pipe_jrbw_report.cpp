#include "reports/special/xhl_pipe_jrbw_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "reports/special/special_rows.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SSpecialShape kShape{
    .floorPairTest = EFloorPairTest::LeavesOut,
    .floorRow = CLevelTest::Not(CSpecialReport::LevelAttribute),
    .attributeRow = CLevelTest::AtLeast(CSpecialReport::LevelAttribute),
    .remark = ERemark::Bare,
    .headKey = EHeadKey::ItemAndUnit,
    .layout = {EFloorCells::ShownFirst, EUnitCell::BeforeReferences},
};

constexpr SSpecialOrderRule kOrder{
    .comparesSysCodeTexts = false,
    .attText = ETextOrder::Plain,
    .calItem = ETextOrder::Plain,
    .unit = ETextOrder::Plain,
    .loops = ELoopOrder::Forwards,
};

// A printed block: ducts, then water pipes, then equipment; by material; thicker first.
struct SJRBWLineData : SRowBlock {
  SJRBWLineData(std::wstring type, std::wstring material, std::wstring thickness,
                CCellBlock&& block)
      : SRowBlock{std::move(block)},
        Type(std::move(type)),
        Material(std::move(material)),
        Thickness(std::move(thickness)) {}

  bool operator<(const SJRBWLineData& other) const {
    return SortDown ? other.Precedes(*this) : Precedes(other);
  }

  bool SortDown = false;
  std::wstring Type;
  std::wstring Material;
  std::wstring Thickness;

 private:
  static constexpr std::array<std::wstring_view, 3> TypeOrder{L"风管", L"水管", L"设备"};

  auto TypePosition() const {
    return std::find(TypeOrder.begin(), TypeOrder.end(), Type) - TypeOrder.begin();
  }
  bool Precedes(const SJRBWLineData& other) const {
    const auto position = TypePosition();
    const auto otherPosition = other.TypePosition();
    if (position != otherPosition) {
      return position < otherPosition;
    }
    if (Material != other.Material) {
      return Material < other.Material;
    }
    return Thickness != other.Thickness &&
           ReadLeadingNumber(Thickness) > ReadLeadingNumber(other.Thickness);
  }
};

struct SInsulation {
  std::wstring type;
  std::wstring material;
  std::wstring thickness;
  bool isThere = false;
};

std::wstring InsulatedType(const KorDMRec::SKorDMCategoryRec& category) {
  if (category.kind == L"水箱") {
    return L"设备";
  }
  const bool isPipe = category.category == L"管道" || category.category == L"管网";
  return isPipe ? L"水管" : category.category;
}

// Tells CSpecialRows::Print about the candidates of one block.
template <class TCandidates>
class TInsulationPrinting {
 public:
  TInsulationPrinting(const TCandidates& candidates, const std::wstring& totalItem)
      : candidates_(candidates), totalItem_(totalItem) {}

  ESpecialRow KindOf(const SSpecialRow& row) {
    const bool isHead = row.AttName().empty() && row.AttText().empty();
    if (!isHead || row.CalItem->find(totalItem_) == std::wstring::npos) {
      return IsShown(row) ? ESpecialRow::Item : ESpecialRow::None;
    }
    if (!row.Floor->empty()) {
      return row.SysCode->empty() ? ESpecialRow::Floor : ESpecialRow::SysCode;
    }
    return row.SysCode->empty() ? ESpecialRow::Total : ESpecialRow::None;
  }
  bool ShowsCircuits(const SSpecialRow& row) { return row.IsMainItem && IsShown(row); }
  void SetTotal(const SSpecialRow& row, const CRowSum& sum) {
    const auto& [first, second, third, fourth] = sum.Quantities();
    total_ = {*row.Unit, first, second, third, fourth, sum.FloorCount()};
    item_ = row.CalItem;
  }

  const Report::STypeSumQuantityData& Total() const { return total_; }
  const std::wstring& Item() const { return *item_; }

 private:
  // Whether an attribute's row shows, and its circuits with it.
  bool IsShown(const SSpecialRow& row) {
    return !row.AttName().empty() && !row.AttText().empty() && !row.CalItem->empty() &&
           HasVolume(row);
  }

  // Whether the block has a volume row for the same attribute on the same floor and system code.
  bool HasVolume(const SSpecialRow& row) {
    if (!volume_ || !candidates_.IsSamePlace(*volume_, row)) {
      volume_ = row;
      volume_->CalItem = item_;
      volume_->Unit = &total_.unit;
      volume_->IsMainItem = false;
      volume_->LoopNumber = 0;
      hasVolume_ = candidates_.Contains(*volume_);
    }
    return hasVolume_;
  }

  const TCandidates& candidates_;
  const std::wstring& totalItem_;
  Report::STypeSumQuantityData total_;
  const std::wstring* item_ = &NoText();
  std::optional<SSpecialRow> volume_;  // the last one looked for
  bool hasVolume_ = false;
};

}  // namespace

CXhlPipeJRBWReport::CXhlPipeJRBWReport() : CSpecialReport(kShape) {}

bool CXhlPipeJRBWReport::CheckIsNeedData(std::wstring_view spec, std::wstring_view category,
                                         std::wstring_view kind, std::wstring_view item) {
  if (spec == L"电气" || spec == L"弱电" || spec == L"建筑") {
    return false;
  }
  const bool isPipe = category == L"管道" || category == L"管网" || category == L"水管";
  const bool isDuct = category == L"风管";
  const bool isTank = kind == L"水箱";
  if (!isPipe && !isDuct && !isTank) {
    return false;
  }
  return item == CReportMainCalItemData::Instance()->GetMainCalItem(spec, category, kind) ||
         (isPipe && item == L"绝热保温体积") || (isDuct && item == L"风管保温体积") ||
         (isTank && item == L"保温体积");
}

bool CXhlPipeJRBWReport::CheckIsOk(const std::set<std::wstring>& filter) {
  static constexpr std::array<std::wstring_view, 7> kCategories{
      L"管道", L"风管", L"水管", L"管网", L"设备", L"水暖设备", L"储存装置"};
  return filter.empty() || std::any_of(filter.begin(), filter.end(), [](const std::wstring& entry) {
           const std::wstring_view category = std::wstring_view(entry).substr(0, entry.find(L'\\'));
           return std::find(kCategories.begin(), kCategories.end(), category) != kCategories.end();
         });
}

void CXhlPipeJRBWReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetXhlDetailData();
  CRowFolder fold(root, data);
  std::vector<SInsulation> groups;
  StateLevels(fold, [&groups](auto& to, std::size_t group) {
    const SInsulation& insulation = groups[group];
    return CReportDataMethod::GetPipeJRBW(to, insulation.type, insulation.material,
                                          insulation.thickness);
  });
  CPairNumbers kinds;
  for (const auto& row : data.rows) {
    if (!fold.HasRecords(row)) {
      continue;
    }
    const auto of = fold.Records(row);
    if (!CheckIsNeedData(of.spec.name, of.category.category, of.category.kind, of.calItem.name)) {
      continue;
    }
    const std::uint32_t group =
        kinds.Of(static_cast<std::uint32_t>(row.category), static_cast<std::uint32_t>(row.attr));
    if (group == groups.size()) {
      SInsulation& insulation = groups.emplace_back();
      insulation.type = InsulatedType(of.category);
      ReadParameter(insulation.material, of.attr, L"保温材料");
      ReadParameter(insulation.thickness, of.attr, L"保温厚度");
      // An empty thickness reads as 0: no insulation.
      insulation.isThere = ReadLeadingNumber(insulation.thickness) != 0.0;
    }
    if (groups[group].isThere) {
      fold.Add(row, group);
    }
  }
  fold.Fold();
  SumGroups<CReportPipeJRBW, kOrder>();
}

void CXhlPipeJRBWReport::GetPipeJRBWData(Report::CellArray& rows, const std::wstring& requestSpec,
                                         const Report::SNewCondition& requestCondition, int level,
                                         Report::EReportType type, int bySgd) {
  if (!CheckIsOk(requestCondition.categories)) {
    return;
  }
  totalItem_ = CReportDataMethod::GetTypeCalItem(type);
  ShowGroups<CReportPipeJRBW, SJRBWLineData, kOrder>(
      rows, requestSpec, requestCondition, level, bySgd, totalItem_,
      [this](const CReportPipeJRBW& group, const auto& candidates,
             std::unique_ptr<CSpecialRows>&& blockRows) -> std::optional<SJRBWLineData> {
        TInsulationPrinting printing(candidates, totalItem_);
        blockRows->Print(candidates, printing);
        const Report::STypeSumQuantityData& total = printing.Total();
        if (total.quantity1 == 0.0) {
          return std::nullopt;
        }
        blockRows->SetHead({L"@T", group.text1, group.text2 + L":" + group.text3 + L"(mm)",
                            printing.Item(), total.unit},
                           {total.quantity1, total.quantity2, total.quantity3, total.quantity4});
        return SJRBWLineData(group.text1, group.text2, group.text3, BlockOf(std::move(blockRows)));
      });
}

bool CXhlPipeJRBWReport::ShowsAtLevel0(const std::wstring& item, bool /*isMain*/) const {
  return IsVolume(item);
}

bool CXhlPipeJRBWReport::FeedsHeads(const CReportCategory& /*category*/,
                                    const std::wstring& /*item*/) const {
  return true;
}

// Pipes follow the configured direction, everything else runs from large to small.
bool CXhlPipeJRBWReport::SortsAscending(const CReportCategory& category) const {
  return category.kind.find(L'管') != std::wstring::npos &&
         !CResultConfig::Instance()->GetLineSortDowm();
}
