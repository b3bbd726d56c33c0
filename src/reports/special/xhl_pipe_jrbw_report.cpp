#include "reports/special/xhl_pipe_jrbw_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "reports/special/sum_blocks.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SSpecialShape kShape{
    .floorPairTest = EFloorPairTest::LeavesOut,
    .floorRow = CLevelTest::Not(CSpecialReport::LevelAttribute),
    .attributeRow = CLevelTest::AtLeast(CSpecialReport::LevelAttribute),
    .remark = ERemark::Bare,
    .headKey = EHeadKey::ItemAndUnit,
};

constexpr SSpecialOrderRule kOrder{
    .comparesSysCodeTexts = false,
    .attText = ETextOrder::Plain,
    .calItem = ETextOrder::Plain,
    .unit = ETextOrder::Plain,
    .loops = ELoopOrder::Forwards,
};

constexpr std::wstring_view kFloorRow = L"@F";
constexpr std::wstring_view kSysCodeRow = L"@S";
constexpr std::wstring_view kItemRow = L"@CI";
constexpr std::wstring_view kLoopRow = L"@L";

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

// Composes the rows of one block.
template <class TCandidates>
class TBlockRows {
 public:
  TBlockRows(const TCandidates& candidates, std::span<const SDetailSum> details,
             const std::wstring& totalItem)
      : candidates_(candidates), details_(details), totalItem_(totalItem) {}

  CCellBlock Rows() {
    candidates_.ForEachRow(
        details_, [this](const SSpecialRow& row) { AddRow(row); },
        [this](const SSpecialRow& row, const std::wstring& name, const CRowSum& sum) {
          if (row.IsMainItem && IsShown(row)) {
            AddCells(row, sum, kLoopRow, name, *row.CalItem);
          }
        });
    return std::move(rows_);
  }
  const Report::STypeSumQuantityData& Sum() const { return sum_; }
  const std::wstring& Item() const { return *item_; }

 private:
  void AddRow(const SSpecialRow& row) {
    const bool isHead = row.AttName().empty() && row.AttText().empty();
    if (isHead && row.CalItem->find(totalItem_) != std::wstring::npos) {
      const CRowSum sum(row, details_);
      if (!row.Floor->empty() && !row.SysCode->empty()) {
        AddCells(row, sum, kSysCodeRow, *row.SysCode);
      } else if (!row.Floor->empty()) {
        AddCells(row, sum, kFloorRow, *row.Floor, *row.FloorName);
      } else if (row.SysCode->empty()) {
        const auto& [first, second, third, fourth] = sum.Quantities();
        sum_ = {*row.Unit, first, second, third, fourth, sum.FloorCount()};
        item_ = row.CalItem;
      }
    } else if (IsShown(row)) {
      AddCells(row, CRowSum(row, details_), kItemRow, row.AttName(), row.AttText(), *row.CalItem);
    }
  }

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
      volume_->Unit = &sum_.unit;
      volume_->IsMainItem = false;
      volume_->LoopNumber = 0;
      hasVolume_ = candidates_.Contains(*volume_);
    }
    return hasVolume_;
  }

  template <class... THead>
  void AddCells(const SSpecialRow& row, const CRowSum& sum, THead&&... head) {
    const auto& [first, second, third, fourth] = sum.Quantities();
    rows_.AddCells(std::forward<THead>(head)..., *row.Unit, sum.References(), first, second, third,
                   fourth);
  }

  const TCandidates& candidates_;
  const std::span<const SDetailSum> details_;
  const std::wstring& totalItem_;
  CCellBlock rows_;
  Report::STypeSumQuantityData sum_;
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
      rows, requestSpec, requestCondition, level, bySgd,
      [this](const CReportPipeJRBW& group, const auto& candidates,
             std::span<const SDetailSum> details) -> std::optional<SJRBWLineData> {
        TBlockRows blockRows(candidates, details, totalItem_);
        CCellBlock detail = blockRows.Rows();
        const Report::STypeSumQuantityData& sum = blockRows.Sum();
        if (sum.quantity1 == 0.0) {
          return std::nullopt;
        }
        CCellBlock block;
        block.AddCells(L"@T", group.text1, group.text2 + L":" + group.text3 + L"(mm)",
                       blockRows.Item(), CCellSource::Copied(sum.unit), sum.quantity1,
                       sum.quantity2, sum.quantity3, sum.quantity4);
        block.Append(std::move(detail));
        return SJRBWLineData(group.text1, group.text2, group.text3, std::move(block));
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
