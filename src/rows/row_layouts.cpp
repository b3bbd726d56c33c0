#include "rows/row_layouts.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <system_error>

namespace {

constexpr SCellLayout kSection = {L"施工段", "section", ECellType::Text};
constexpr SCellLayout kCategory = {L"构件类型", "category", ECellType::Text};
constexpr SCellLayout kSpecification = {L"规格型号", "specification", ECellType::Text};
constexpr SCellLayout kAttributes = {L"属性", "attributes", ECellType::Text};
constexpr SCellLayout kItem = {L"计算项目", "item", ECellType::Text};
constexpr SCellLayout kDrawingFloor = {L"图纸楼层", "drawing-floor", ECellType::Text};
constexpr SCellLayout kFloor = {L"楼层", "floor", ECellType::Text};
constexpr SCellLayout kSysCode = {L"系统编号", "system-code", ECellType::Text};
constexpr SCellLayout kUnit = {L"单位", "unit", ECellType::Unit};
constexpr SCellLayout kQuantity = {L"工程量", "quantity", ECellType::Quantity};
constexpr SCellLayout kComponents = {L"构件索引", "components", ECellType::References};

constexpr SCellLayout kText3 = {L"附加信息一", "item-text-3", ECellType::Text};
constexpr SCellLayout kText4 = {L"附加信息二", "item-text-4", ECellType::Text};
constexpr SCellLayout kType = {L"类型", "type", ECellType::Text};
constexpr SCellLayout kChapter = {L"章", "chapter", ECellType::Text};
constexpr SCellLayout kChapterNumber = {L"章序号", "chapter-number", ECellType::Code};
constexpr SCellLayout kBillCode = {L"清单编码", "bill-code", ECellType::Code};
constexpr SCellLayout kBillName = {L"清单名称", "bill-name", ECellType::Text};
constexpr SCellLayout kFeature = {L"项目特征", "feature", ECellType::Text};
constexpr SCellLayout kQuotaCode = {L"定额编号", "quota-code", ECellType::Code};
constexpr SCellLayout kQuotaName = {L"定额名称", "quota-name", ECellType::Text};
constexpr SCellLayout kCircuit = {L"回路", "circuit", ECellType::Text};
constexpr SCellLayout kFormula = {L"计算式", "formula", ECellType::Formula};
constexpr SCellLayout kQuantity1 = {L"工程量1", "quantity-1", ECellType::Quantity};
constexpr SCellLayout kQuantity2 = {L"工程量2", "quantity-2", ECellType::Quantity};
constexpr SCellLayout kQuantity3 = {L"工程量3", "quantity-3", ECellType::Quantity};
constexpr SCellLayout kQuantity4 = {L"工程量4", "quantity-4", ECellType::Quantity};

constexpr SCellLayout kSectionCells[] = {kSection};
constexpr SCellLayout kCategoryCells[] = {kCategory};
constexpr SCellLayout kAttributeCells[] = {kSpecification, kAttributes, kUnit, kQuantity};
constexpr SCellLayout kItemCells[] = {kItem, kUnit, kQuantity};
constexpr SCellLayout kFloorCells[] = {kDrawingFloor, kFloor, kUnit, kQuantity};
constexpr SCellLayout kSysCodeCells[] = {kSysCode, kUnit, kQuantity, kComponents};

constexpr SRowLayout kXhlHzRows[] = {
    {L"@P", 0, kSectionCells},  {L"@Cg", 1, kCategoryCells}, {L"@A", 2, kAttributeCells},
    {L"@CI", 3, kItemCells},    {L"@F", 4, kFloorCells},     {L"@S1", 5, kSysCodeCells},
    {L"@S2", 6, kSysCodeCells}, {L"@S3", 7, kSysCodeCells},
};

constexpr SCellLayout kItemTextCells[] = {kItem, kText3, kText4, kUnit, kQuantity};
constexpr SRowLayout kXhlCgHzRows[] = {
    {L"@P", 0, kSectionCells},   {L"@Cg", 1, kCategoryCells}, {L"@A", 2, kAttributeCells},
    {L"@CI", 3, kItemTextCells}, {L"@F", 4, kFloorCells},     {L"@S1", 5, kSysCodeCells},
    {L"@S2", 6, kSysCodeCells},  {L"@S3", 7, kSysCodeCells},
};

constexpr SCellLayout kTypeCells[] = {kType};
constexpr SCellLayout kBookFloorCells[] = {kDrawingFloor, kFloor};
constexpr SCellLayout kBookAttributeCells[] = {kSpecification, kAttributes};
constexpr SCellLayout kBookItemCells[] = {kItem,      kUnit,      kFormula,   kComponents,
                                          kQuantity1, kQuantity2, kQuantity3, kQuantity4};
constexpr SRowLayout kMemberBookRows[] = {
    {L"@P", 0, kSectionCells},       {L"@T", 1, kTypeCells},      {L"@Cg", 2, kCategoryCells},
    {L"@A", 3, kBookAttributeCells}, {L"@CI", 4, kBookItemCells},
};
constexpr SRowLayout kFloorBookRows[] = {
    {L"@P", 0, kSectionCells},   {L"@F", 1, kBookFloorCells},     {L"@T", 2, kTypeCells},
    {L"@Cg", 3, kCategoryCells}, {L"@A", 4, kBookAttributeCells}, {L"@CI", 5, kBookItemCells},
};
constexpr SCellLayout kBookSysCodeCells[] = {kSysCode};
constexpr SCellLayout kBookLoopCells[] = {
    kItem, kUnit, kCircuit, kFormula, kComponents, kQuantity1, kQuantity2, kQuantity3, kQuantity4};
constexpr SRowLayout kSystemBookRows[] = {
    {L"@P", 0, kSectionCells},     {L"@F", 1, kBookFloorCells}, {L"@T", 2, kTypeCells},
    {L"@S", 3, kBookSysCodeCells}, {L"@Cg", 4, kCategoryCells}, {L"@A", 5, kBookAttributeCells},
    {L"@CI", 6, kBookItemCells},   {L"@L", 7, kBookLoopCells},
};

constexpr SCellLayout kChapterCells[] = {kChapter, kChapterNumber};
constexpr SCellLayout kQuotaChapterCells[] = {kChapter};
constexpr SCellLayout kBillCells[] = {kBillCode, kBillName, kFeature, kUnit, kQuantity};
constexpr SCellLayout kQuotaCells[] = {kQuotaCode, kQuotaName, kUnit, kQuantity};
constexpr SCellLayout kLineCells[] = {kCircuit, kFormula, kUnit, kQuantity, kComponents};
constexpr SRowLayout kQdDeHzRows[] = {
    {L"@P", 0, kSectionCells},  {L"@C", 1, kChapterCells},   {L"@QD", 2, kBillCells},
    {L"@DE", 3, kQuotaCells},   {L"@Cg", 4, kCategoryCells}, {L"@A", 5, kAttributeCells},
    {L"@F", 6, kFloorCells},    {L"@S1", 7, kSysCodeCells},  {L"@S2", 8, kSysCodeCells},
    {L"@S3", 9, kSysCodeCells}, {L"@L", 10, kLineCells},
};
constexpr SRowLayout kQdHzRows[] = {
    {L"@P", 0, kSectionCells},   {L"@C", 1, kChapterCells},   {L"@QD", 2, kBillCells},
    {L"@Cg", 3, kCategoryCells}, {L"@A", 4, kAttributeCells}, {L"@F", 5, kFloorCells},
    {L"@S1", 6, kSysCodeCells},  {L"@S2", 7, kSysCodeCells},  {L"@S3", 8, kSysCodeCells},
    {L"@L", 9, kLineCells},
};
constexpr SRowLayout kDeHzRows[] = {
    {L"@P", 0, kSectionCells},   {L"@C", 1, kQuotaChapterCells}, {L"@DE", 2, kQuotaCells},
    {L"@Cg", 3, kCategoryCells}, {L"@A", 4, kAttributeCells},    {L"@F", 5, kFloorCells},
    {L"@S1", 6, kSysCodeCells},  {L"@S2", 7, kSysCodeCells},     {L"@S3", 8, kSysCodeCells},
    {L"@L", 9, kLineCells},
};

constexpr SCellLayout kOverviewCells[] = {kSpecification, kUnit, kQuantity};
constexpr SRowLayout kXhlGlRows[] = {
    {L"@P", 0, kSectionCells},
    {L"@A", 1, kOverviewCells},
};

constexpr SCellLayout kPipeLine = {L"管线名称", "pipe-line", ECellType::Text};
constexpr SCellLayout kFittingText = {L"配件类别", "fitting-class", ECellType::Text};
constexpr SCellLayout kFitting = {L"配件名称", "fitting", ECellType::Text};
constexpr SCellLayout kPipeLineCells[] = {kPipeLine};
constexpr SCellLayout kFittingCells[] = {kFittingText, kFitting, kUnit, kQuantity, kComponents};
constexpr SRowLayout kPjHzRows[] = {
    {L"@P", 0, kSectionCells},   {L"@F", 1, kBookFloorCells}, {L"@S", 2, kBookSysCodeCells},
    {L"@Cg", 3, kCategoryCells}, {L"@A", 4, kPipeLineCells},  {L"@CI", 5, kFittingCells},
};

constexpr SCellLayout kPaint = {L"油漆名称:遍数", "paint", ECellType::Text};
constexpr SCellLayout kPlate = {L"类型:材质:壁厚", "plate", ECellType::Text};
constexpr SCellLayout kInsulation = {L"保温材料:厚度", "insulation", ECellType::Text};
constexpr SCellLayout kPaintCells[] = {kType,      kPaint,     kUnit,     kQuantity1,
                                       kQuantity2, kQuantity3, kQuantity4};
constexpr SCellLayout kPlateCells[] = {kPlate,     kUnit,      kQuantity1,
                                       kQuantity2, kQuantity3, kQuantity4};
constexpr SCellLayout kInsulationCells[] = {kType,      kInsulation, kItem,      kUnit,
                                            kQuantity1, kQuantity2,  kQuantity3, kQuantity4};
constexpr SCellLayout kSumFloorCells[] = {kDrawingFloor, kFloor,     kComponents, kUnit,
                                          kQuantity1,    kQuantity2, kQuantity3,  kQuantity4};
constexpr SCellLayout kSumSysCodeCells[] = {kSysCode,   kComponents, kUnit,     kQuantity1,
                                            kQuantity2, kQuantity3,  kQuantity4};
constexpr SCellLayout kSumItemCells[] = {kSpecification, kAttributes, kItem,
                                         kComponents,    kUnit,       kQuantity1,
                                         kQuantity2,     kQuantity3,  kQuantity4};
constexpr SCellLayout kSumLoopCells[] = {kCircuit,   kItem,      kComponents, kUnit,
                                         kQuantity1, kQuantity2, kQuantity3,  kQuantity4};
constexpr SRowLayout kBrushPaintRows[] = {
    {L"@P", 0, kSectionCells},    {L"@T", 1, kPaintCells},    {L"@F", 2, kSumFloorCells},
    {L"@S", 3, kSumSysCodeCells}, {L"@CI", 4, kSumItemCells}, {L"@L", 5, kSumLoopCells},
};
constexpr SRowLayout kDuctHRows[] = {
    {L"@P", 0, kSectionCells},    {L"@T", 1, kPlateCells},    {L"@F", 2, kSumFloorCells},
    {L"@S", 3, kSumSysCodeCells}, {L"@CI", 4, kSumItemCells}, {L"@L", 5, kSumLoopCells},
};
// The insulation table shows the floor first, and units ahead of the references.
constexpr SCellLayout kInsulationFloorCells[] = {kFloor,     kDrawingFloor, kUnit,      kComponents,
                                                 kQuantity1, kQuantity2,    kQuantity3, kQuantity4};
constexpr SCellLayout kInsulationSysCodeCells[] = {kSysCode,   kUnit,      kComponents, kQuantity1,
                                                   kQuantity2, kQuantity3, kQuantity4};
constexpr SCellLayout kInsulationItemCells[] = {kSpecification, kAttributes, kItem,
                                                kUnit,          kComponents, kQuantity1,
                                                kQuantity2,     kQuantity3,  kQuantity4};
constexpr SCellLayout kInsulationLoopCells[] = {kCircuit,   kItem,      kUnit,      kComponents,
                                                kQuantity1, kQuantity2, kQuantity3, kQuantity4};
constexpr SRowLayout kPipeJRBWRows[] = {
    {L"@P", 0, kSectionCells},         {L"@T", 1, kInsulationCells},
    {L"@F", 2, kInsulationFloorCells}, {L"@S", 3, kInsulationSysCodeCells},
    {L"@CI", 4, kInsulationItemCells}, {L"@L", 5, kInsulationLoopCells},
};

constexpr int kAnyVariant = SReportLayout::kAnyVariant;

constexpr SReportLayout kLayouts[] = {
    {Report::ReportXhlHz, kAnyVariant, kXhlHzRows},
    {Report::ReportXhlCgHz, kAnyVariant, kXhlCgHzRows},
    {Report::ReportXhlGl, kAnyVariant, kXhlGlRows},
    {Report::ReportPjHz, kAnyVariant, kPjHzRows},
    {Report::ReportBrushPaint, kAnyVariant, kBrushPaintRows},
    {Report::ReportDuctH, kAnyVariant, kDuctHRows},
    {Report::ReportPipeJRBW, kAnyVariant, kPipeJRBWRows},
    {Report::ReportSysJss, 0, kMemberBookRows},
    {Report::ReportSysJss, 1, kFloorBookRows},
    {Report::ReportSysJss, kAnyVariant, kSystemBookRows},
    {Report::ReportDeHz, kAnyVariant, kDeHzRows},
    {Report::ReportQdDeHz, kAnyVariant, kQdDeHzRows},
    {Report::ReportQdHz, kAnyVariant, kQdHzRows},
};

// Printable ASCII as it is, anything else by its number: a message must not steer a terminal.
std::string Quoted(std::wstring_view text) {
  std::string quoted = "'";
  for (const wchar_t c : text) {
    if (c >= L' ' && c <= L'~') {
      quoted += static_cast<char>(c);
      continue;
    }
    char digits[2 * sizeof(wchar_t)];
    const auto number = std::char_traits<wchar_t>::to_int_type(c);
    const std::to_chars_result end = std::to_chars(digits, std::end(digits), number, 16);
    quoted += "\\u{";
    quoted.append(digits, end.ptr);
    quoted += '}';
  }
  quoted += '\'';
  return quoted;
}

std::string OfRow(const SRowLayout& layout) {
  return "row " + Quoted(layout.marker);
}

std::size_t Require(const SRowLayout& layout, std::string_view id) {
  const std::optional<std::size_t> at = layout.Find(id);
  if (!at) {
    throw CLayoutError(OfRow(layout) + " has no column '" + std::string(id) + "'");
  }
  return *at;
}

}  // namespace

const char* CellTypeName(ECellType type) {
  switch (type) {
    case ECellType::Quantity:
      return "quantity";
    case ECellType::Code:
      return "code";
    case ECellType::Formula:
      return "formula";
    case ECellType::Unit:
      return "unit";
    case ECellType::References:
      return "references";
    case ECellType::Text:
      break;
  }
  return "text";
}

std::optional<std::size_t> SRowLayout::Find(std::string_view id) const {
  for (std::size_t at = 0; at < cells.size(); ++at) {
    if (cells[at].id == id) {
      return at;
    }
  }
  return std::nullopt;
}

const std::wstring& SRow::Cell(std::string_view id) const {
  return cells[Require(*layout, id)];
}

std::optional<double> SRow::Quantity(std::string_view id) const {
  const std::size_t at = Require(*layout, id);
  if (layout->cells[at].type != ECellType::Quantity) {
    throw CLayoutError("column '" + std::string(id) + "' of " + OfRow(*layout) +
                       " holds no quantities");
  }
  std::string text;
  for (const wchar_t c : cells[at]) {
    text += c <= L'~' ? static_cast<char>(c) : '?';
  }
  double number = 0;
  const char* const end = text.data() + text.size();
  const std::from_chars_result read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) {
    return std::nullopt;
  }
  return number;
}

std::span<const SReportLayout> ReportLayouts() {
  return kLayouts;
}

const SReportLayout* FindLayout(Report::EReportType type, int variant) {
  for (const SReportLayout& layout : kLayouts) {
    if (layout.type == type && (layout.variant == variant || layout.variant == kAnyVariant)) {
      return &layout;
    }
  }
  return nullptr;
}

std::vector<SRow> CutRows(const SReportLayout& layout, std::span<const std::wstring> cells) {
  std::vector<SRow> rows;
  std::size_t at = 0;
  while (at < cells.size()) {
    const std::wstring& marker = cells[at];
    const auto row = std::find_if(layout.rows.begin(), layout.rows.end(),
                                  [&](const SRowLayout& line) { return line.marker == marker; });
    if (row == layout.rows.end()) {
      throw CLayoutError("cell " + std::to_string(at) + " of report " +
                         std::to_string(layout.type) + " is no row marker: " + Quoted(marker));
    }
    const std::size_t wanted = row->cells.size();
    if (cells.size() - at - 1 < wanted) {
      throw CLayoutError("the row at cell " + std::to_string(at) + " of report " +
                         std::to_string(layout.type) + " has " +
                         std::to_string(cells.size() - at - 1) + " cells, not " +
                         std::to_string(wanted));
    }
    rows.push_back({&*row, cells.subspan(at + 1, wanted)});
    at += 1 + wanted;
  }
  return rows;
}

std::vector<SRow> CutRows(Report::EReportType type, int variant,
                          std::span<const std::wstring> cells) {
  const SReportLayout* layout = FindLayout(type, variant);
  if (layout == nullptr) {
    throw CLayoutError("there is no report " + std::to_string(type));
  }
  return CutRows(*layout, cells);
}
