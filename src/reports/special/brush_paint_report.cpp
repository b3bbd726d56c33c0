#include "reports/special/brush_paint_report.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "platform/text_tool.h"
#include "report_model/row_results.h"
#include "reports/special/sum_printing.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr SSpecialShape kShape{
    .floorPairTest = EFloorPairTest::None,
    .floorRow = CLevelTest::AtLeast(CSpecialReport::LevelFloor),
    .attributeRow = CLevelTest::AtLeast(CSpecialReport::LevelAttribute),
    .remark = ERemark::InBrackets,
    .headKey = EHeadKey::Unit,
    .layout = {EFloorCells::NodeFirst, EUnitCell::BehindReferences},
};

constexpr SSpecialOrderRule kOrder{
    .comparesSysCodeTexts = true,
    .attText = ETextOrder::Narrow,
    .calItem = ETextOrder::Narrow,
    .unit = ETextOrder::Plain,
    .loops = ELoopOrder::Backwards,
};

// How a component kind is painted.
struct SPainting {
  std::wstring_view prefix;  // of the attribute line
  std::wstring_view area;    // the item of the painted area
  std::wstring_view amount;  // the other item
};

constexpr SPainting kSupportPainting{L"支架刷油", L"刷油面积", L"构件数量"};
constexpr SPainting kPipePainting{L"管道刷油", L"外表面积", L"管道长度"};

bool IsWaterPipe(std::wstring_view spec, std::wstring_view category) {
  return (spec == L"给排水" && category == L"管道") || (spec == L"暖通" && category == L"水管") ||
         (spec == L"消防" && category == L"管网");
}

// Null where it is not.
const SPainting* PaintingOf(std::wstring_view spec, std::wstring_view category) {
  if (category == L"BIM支架") {
    return &kSupportPainting;
  }
  return IsWaterPipe(spec, category) ? &kPipePainting : nullptr;
}

bool TakesItem(const SPainting* painting, const std::wstring& item) {
  return painting != nullptr && (item == painting->area || item == painting->amount);
}

struct SPaint {
  std::wstring name;
  int coats;
};

// The paints of an attribute line.
std::vector<SPaint> ReadPaints(const std::wstring& value) {
  constexpr int kMostCoats = 999;
  std::vector<SPaint> paints;
  Report::CellArray items;
  KorString::Split(value, items, L';');
  for (const std::wstring& item : items) {
    Report::CellArray parts;
    KorString::Split(item, parts, L',');
    const int coats = parts.size() == 2 ? ReadLeadingInt(parts[1]) : 0;
    if (coats <= kMostCoats) {
      paints.push_back({parts.empty() ? std::wstring() : parts[0], coats});
    }
  }
  return paints;
}

// One coat of one paint.
struct SCoat {
  int categorySortId;
  int number;
  std::wstring category;
  std::wstring paint;
};

// The coats of an attribute in one component kind, one behind the other.
struct SCoats {
  std::size_t first = 0;
  std::size_t count = 0;
};

}  // namespace

CBrushPaintReport::CBrushPaintReport() : CSpecialReport(kShape) {}

std::wstring CBrushPaintReport::GetBrushCategory(const KorDMRec::SKorDMSpecRec& spec,
                                                 const KorDMRec::SKorDMCategoryRec& category,
                                                 const KorDMRec::SKorDMCalItemDetailQRec& item) {
  const SPainting* painting = PaintingOf(spec.name, category.category);
  return TakesItem(painting, item.name) ? std::wstring(painting->prefix) : std::wstring();
}

bool CBrushPaintReport::IsBrushPaint(const CReportCategory& category,
                                     const std::wstring& item) const {
  const SPainting* painting = PaintingOf(spec, category.category);
  return painting != nullptr && item == painting->area;
}

std::wstring CBrushPaintReport::GetBrushPaintName(const CReportBrushPaint& node) {
  static constexpr std::array kCoats{L"第一遍", L"第二遍", L"第三遍", L"第四遍", L"第五遍",
                                     L"第六遍", L"第七遍", L"第八遍", L"第九遍"};
  std::wstring name = node.text2 + L":";
  const auto coat = static_cast<std::size_t>(node.number2);
  if (coat >= 1 && coat <= kCoats.size()) {
    name += kCoats[coat - 1];
  }
  return name;
}

void CBrushPaintReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetXhlDetailData();
  CRowFolder fold(root, data);
  std::vector<SCoat> groups;
  StateLevels(fold, [&groups](auto& to, std::size_t group) {
    const SCoat& coat = groups[group];
    return CReportDataMethod::GetBrushPaint(to, coat.categorySortId, coat.number, coat.category,
                                            coat.paint);
  });
  CPairNumbers kinds;
  std::vector<const SPainting*> paintings;  // of the kinds
  CPairNumbers kindsWithAttr;
  std::vector<SCoats> coats;
  for (const auto& row : data.rows) {
    const auto of = fold.Records(row);
    const std::uint32_t kind =
        kinds.Of(static_cast<std::uint32_t>(row.spec), static_cast<std::uint32_t>(row.category));
    if (kind == paintings.size()) {
      paintings.push_back(PaintingOf(of.spec.name, of.category.category));
    }
    if (!TakesItem(paintings[kind], of.calItem.name)) {
      continue;
    }
    const std::uint32_t number = kindsWithAttr.Of(kind, static_cast<std::uint32_t>(row.attr));
    if (number == coats.size()) {
      std::wstring value;
      ReadParameter(value, of.attr, std::wstring(paintings[kind]->prefix));
      const int sortId =
          CTallyDataMng::Instance()->GetBigCategorySortId(of.spec.name, of.category.category);
      SCoats& read = coats.emplace_back();
      read.first = groups.size();
      for (const SPaint& paint : ReadPaints(value)) {
        for (int coat = 1; coat <= paint.coats; ++coat) {
          groups.push_back({sortId, coat, of.category.category, paint.name});
        }
      }
      read.count = groups.size() - read.first;
    }
    for (std::size_t i = 0; i < coats[number].count; ++i) {
      fold.Add(row, static_cast<std::uint32_t>(coats[number].first + i));
    }
  }
  fold.Fold();
  SumGroups<CReportBrushPaint, kOrder>();
}

void CBrushPaintReport::GetBrushPaintData(Report::CellArray& rows, const std::wstring& requestSpec,
                                          const Report::SNewCondition& requestCondition, int level,
                                          int bySgd) {
  ShowGroups<CReportBrushPaint, CBrushPaintData, kOrder>(
      rows, requestSpec, requestCondition, level, bySgd, {},
      [this](const CReportBrushPaint& group, const auto& candidates,
             std::unique_ptr<CSpecialRows>&& blockRows) {
        CSumPrinting printing(EHeadRows::AllItems);
        blockRows->Print(candidates, printing);
        blockRows->SetHead({L"@T", IsWaterPipe(spec, group.text1) ? L"水管" : group.text1,
                            GetBrushPaintName(group), printing.Total().unit},
                           printing.Total().quantities);
        return std::optional<CBrushPaintData>(std::in_place, group.number1, group.number2,
                                              group.text2, BlockOf(std::move(blockRows)));
      });
}

bool CBrushPaintReport::ShowsAtLevel0(const std::wstring& /*item*/, bool /*isMain*/) const {
  return true;
}

// Only the painted area makes totals, floors and system codes; attributes show the other items too.
bool CBrushPaintReport::FeedsHeads(const CReportCategory& category,
                                   const std::wstring& item) const {
  return IsBrushPaint(category, item);
}

bool CBrushPaintReport::SortsAscending(const CReportCategory& category) const {
  return !SortsLargerFirst(spec, category);
}
