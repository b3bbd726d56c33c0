#include "model/special_model.h"

#include <algorithm>
#include <stdexcept>

#include "model/model_tables.h"

namespace tally_model {
namespace {

bool Contains(const std::wstring& text, const std::wstring& part) {
  return text.find(part) != std::wstring::npos;
}

bool IsOneOf(const std::wstring& text, const Texts& texts) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Reads a parameter out of the lines of an attribute: those of its value count where no line of
/// its name begins with the prefix.
void ReadParameter(std::wstring& value, const KorDMRec::SKorDMAttrRec& attribute,
                   const std::wstring& prefix) {
  bool inName = false;
  for (const std::wstring& line : SplitText(attribute.name, L'\n')) {
    inName = inName || BeginsWith(line, prefix);
  }
  PrefixValue(value, inName ? attribute.name : attribute.value, prefix);
}

/// Whether the pair takes one floor out of a repeated one.
bool PicksFloor(const Report::SFloorPair& pair) {
  return !pair.floor.empty() && pair.floor != pair.drawingFloor;
}

int SysCodeLevel(int level) {
  switch (level) {
    case 3:
      return 1;
    case 4:
      return 2;
    case 5:
    case 6:
      return 3;
    default:
      return 0;
  }
}

void AppendNumbers(Texts& cells, const double (&numbers)[4]) {
  for (const double number : numbers) {
    cells.push_back(NumberText(number));
  }
}

// Orders --------------------------------------------------------------------------------------

bool LoopLess(const SSpecialRow& a, const SSpecialRow& b) {
  if (a.categorySortId != b.categorySortId) {
    return a.categorySortId < b.categorySortId;
  }
  return AttSort(b.loopName, a.loopName, false) < 0;
}

/// The order of the paint table, or that of the duct table.
bool PaintOrDuctLess(const SSpecialRow& a, const SSpecialRow& b, bool isPaint) {
  if (a.floorSortId != b.floorSortId) {
    return a.floorSortId < b.floorSortId;
  }
  if (a.sysCode != b.sysCode) {
    return a.sysCodeSortId < b.sysCodeSortId;
  }
  if (a.attName != b.attName) {
    return AttSort(a.attName, b.attName, !a.lineSortDown) < 0;
  }
  if (a.attText != b.attText) {
    return isPaint ? NarrowLess(a.attText, b.attText) : a.attText < b.attText;
  }
  if (a.loopName.empty() != b.loopName.empty()) {
    return a.loopName.empty();
  }
  if (!a.loopName.empty()) {
    return LoopLess(a, b);
  }
  if (a.isMain != b.isMain) {
    return a.isMain;
  }
  if (a.calItem != b.calItem) {
    return NarrowLess(a.calItem, b.calItem);
  }
  return isPaint ? a.unit < b.unit : NarrowLess(a.unit, b.unit);
}

bool PaintLess(const SSpecialRow& a, const SSpecialRow& b) {
  return PaintOrDuctLess(a, b, true);
}

bool DuctLess(const SSpecialRow& a, const SSpecialRow& b) {
  return PaintOrDuctLess(a, b, false);
}

bool InsulationLess(const SSpecialRow& a, const SSpecialRow& b) {
  if (a.floorSortId != b.floorSortId) {
    return a.floorSortId < b.floorSortId;
  }
  if (a.sysCodeSortId != b.sysCodeSortId) {
    return a.sysCodeSortId < b.sysCodeSortId;
  }
  if (a.attName != b.attName) {
    return AttSort(a.attName, b.attName, a.isPipe && !a.lineSortDown) < 0;
  }
  if (a.attText != b.attText) {
    return a.attText < b.attText;
  }
  if (a.loopName.empty() != b.loopName.empty()) {
    return a.loopName.empty();
  }
  if (!a.loopName.empty()) {
    return a.categorySortId != b.categorySortId ? a.categorySortId < b.categorySortId
                                                : AttSort(a.loopName, b.loopName, true) < 0;
  }
  if (a.isMain != b.isMain) {
    return a.isMain;
  }
  if (a.calItem != b.calItem) {
    return a.calItem < b.calItem;
  }
  return a.unit < b.unit;
}

/// Insulation blocks: by type, by material, and the thicker first.
struct SInsulationBlock {
  std::wstring type;
  std::wstring material;
  std::wstring thickness;
  Texts cells;

  int Position() const {
    return type == L"风管" ? 0 : type == L"水管" ? 1 : type == L"设备" ? 2 : 3;
  }
  bool operator<(const SInsulationBlock& other) const {
    if (Position() != other.Position()) {
      return Position() < other.Position();
    }
    if (material != other.material) {
      return material < other.material;
    }
    return LeadingNumber(thickness) > LeadingNumber(other.thickness);
  }
};

// What the tables hold ------------------------------------------------------------------------

bool IsPaintedPipe(const std::wstring& spec, const std::wstring& category) {
  return (spec == L"给排水" && category == L"管道") || (spec == L"暖通" && category == L"水管") ||
         (spec == L"消防" && category == L"管网");
}

/// The prefix of the line that tells the paint; empty for what is not painted.
std::wstring PaintPrefix(const std::wstring& spec, const std::wstring& category,
                         const std::wstring& item) {
  if (category == L"BIM支架") {
    return IsOneOf(item, {L"刷油面积", L"构件数量"}) ? L"支架刷油" : L"";
  }
  if (IsPaintedPipe(spec, category)) {
    return IsOneOf(item, {L"外表面积", L"管道长度"}) ? L"管道刷油" : L"";
  }
  return L"";
}

bool IsPaintedArea(const std::wstring& spec, const std::wstring& category,
                   const std::wstring& item) {
  if (category == L"BIM支架") {
    return item == L"刷油面积";
  }
  return IsPaintedPipe(spec, category) && item == L"外表面积";
}

std::wstring CoatText(int coat) {
  const Texts words = {L"第一遍", L"第二遍", L"第三遍", L"第四遍", L"第五遍",
                       L"第六遍", L"第七遍", L"第八遍", L"第九遍"};
  return coat >= 1 && coat <= 9 ? words[static_cast<std::size_t>(coat - 1)] : L"";
}

bool IsDuctSleeve(const std::wstring& spec, const std::wstring& category,
                  const std::wstring& kind) {
  return spec == L"暖通" && category == L"BIM附件" && kind == L"风管套管";
}

bool IsDuct(const std::wstring& spec, const std::wstring& category, const std::wstring& kind,
            const std::wstring& item) {
  const bool isDuct = spec == L"暖通" && category == L"风管";
  return (isDuct || IsDuctSleeve(spec, category, kind)) && kind != L"柔性风管" &&
         IsOneOf(item, {L"风管长度", L"展开面积"});
}

bool IsInsulated(const std::wstring& spec, const std::wstring& category, const std::wstring& kind,
                 const std::wstring& item) {
  if (IsOneOf(spec, {L"电气", L"弱电", L"建筑"})) {
    return false;
  }
  const bool isMain = MainCalItem(spec, category, kind) == item;
  return (IsOneOf(category, {L"管道", L"管网", L"水管"}) && (isMain || item == L"绝热保温体积")) ||
         (category == L"风管" && (isMain || item == L"风管保温体积")) ||
         (kind == L"水箱" && (isMain || item == L"保温体积"));
}

std::wstring InsulatedType(const std::wstring& category, const std::wstring& kind) {
  if (kind == L"水箱") {
    return L"设备";
  }
  return IsOneOf(category, {L"管道", L"管网"}) ? L"水管" : category;
}

}  // namespace

// Common --------------------------------------------------------------------------------------

void CSpecialModel::FoldBelow(SNode& block, const RowRecords& r) const {
  SNode* node = FoldFloor(block.children, r.floor);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers_, r.spec.name, r.sysCode);
  node = node == nullptr ? node : FoldCategory(node->children, numbers_, r.spec.name, r.category);
  node = node == nullptr ? node : FoldWholeAttribute(node->children, r.attr);
  node = node == nullptr ? node : FoldCalItem(node->children, r.calItem);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

Texts CSpecialModel::Rows(const SModelRequest& request) {
  Texts rows;
  const SNode* spec = FindNode(root_, request.spec, EKind::Spec);
  request_ = request;
  if (spec == nullptr || !Answers()) {
    return rows;
  }
  for (const std::wstring& section : Passes(request)) {
    AppendPass(rows, request, section, Blocks(*spec, section));
  }
  return rows;
}

CSpecialModel::RowSet CSpecialModel::RowsOf(const SNode& block, const std::wstring& section) const {
  RowSet rows(order_);
  if (request_.condition.floors.empty()) {
    for (const SNode* floor : NodesOf(block.children, EKind::Floor)) {
      Floor(rows, *floor, {}, section);
    }
  }
  for (const Report::SFloorPair& pair : request_.condition.floors) {
    const SNode* floor = FindNode(block.children, pair.floor, EKind::Floor);
    if (floor != nullptr) {
      Floor(rows, *floor, pair, section);
    }
  }
  return rows;
}

void CSpecialModel::Floor(RowSet& rows, const SNode& floor, const Report::SFloorPair& pair,
                          const std::wstring& section) const {
  if (request_.condition.sysCodes.empty()) {
    for (const SNode* node : NodesOf(floor.children, EKind::SysCode)) {
      SysCode(rows, floor, *node, pair, section);
    }
  }
  for (const std::wstring& path : request_.condition.sysCodes) {
    const SNode* node = FindSysCode(floor, path);
    if (node != nullptr) {
      SysCode(rows, floor, *node, pair, section);
    }
  }
}

void CSpecialModel::SysCode(RowSet& rows, const SNode& floor, const SNode& node,
                            const Report::SFloorPair& pair, const std::wstring& section) const {
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      SysCode(rows, floor, *child, pair, section);
    } else if (child->kind == EKind::Category) {
      Category(rows, floor, node, *child, pair, section);
    }
  }
}

void CSpecialModel::Category(RowSet& rows, const SNode& floor, const SNode& sysCode,
                             const SNode& category, const Report::SFloorPair& pair,
                             const std::wstring& section) const {
  const std::set<std::wstring>& chosen = request_.condition.categories;
  if (!chosen.empty() && !chosen.contains(category.category) &&
      !chosen.contains(PathOf(category))) {
    return;
  }
  for (const SNode* attribute : NodesOf(category.children, EKind::Attribute)) {
    for (const SNode* item : NodesOf(attribute->children, EKind::CalItem)) {
      CalItem(rows, {&floor, &sysCode, &category, attribute, item}, pair, section);
    }
  }
}

void CSpecialModel::CalItem(RowSet& rows, const SPlace& place, const Report::SFloorPair& pair,
                            const std::wstring& section) const {
  int loop = 1;
  for (const SNode* result : NodesOf(place.calItem->children, EKind::Result)) {
    if (InPass(request_, *result, section) && TakesFloor(*result, pair) &&
        CountsSection(request_, result->sgdName)) {
      AddResult(rows, place, *result, pair, loop);
    }
  }
}

bool CSpecialModel::TakesFloor(const SNode& result, const Report::SFloorPair& pair) const {
  return !PicksFloor(pair) || result.floorText == pair.floor ||
         result.floorText == pair.drawingFloor;
}

bool CSpecialModel::IsMainItem(const SPlace& place) const {
  const SNode& category = *place.category;
  return MainCalItem(request_.spec, category.category, category.kindName) == place.calItem->name;
}

SSpecialRow CSpecialModel::MakeRow(const SPlace& place, const SNode& result,
                                   const Report::SFloorPair& pair) const {
  SSpecialRow row;
  row.isMain = IsMainItem(place);
  row.unit = place.calItem->unit;
  row.expression = ComponentText(result) + L"$";
  const int floorCount = FloorCount(PicksFloor(pair) ? pair.drawingFloor : result.floorText);
  for (int i = 0; i < 4; ++i) {
    row.quantities[i] = ComponentCount(result) * result.quantities[i] * floorCount;
  }
  return row;
}

void CSpecialModel::AddRow(RowSet& rows, const SSpecialRow& row) {
  const auto at = rows.find(row);
  if (at == rows.end()) {
    rows.insert(row);
    return;
  }
  for (int i = 0; i < 4; ++i) {
    at->quantities[i] += row.quantities[i];
  }
  at->expression += row.expression;
}

void CSpecialModel::SetFloor(SSpecialRow& row, const SNode& floor, const Report::SFloorPair& pair) {
  row.floorName = floor.name;
  row.floor = PicksFloor(pair) ? pair.drawingFloor : floor.name;
  row.floorSortId = FloorGrade(row.floor);
}

void CSpecialModel::SetSysCode(SSpecialRow& row, const SNode& sysCode) const {
  row.sysCode = SysCodeAtLevel(sysCode.fullName, SysCodeLevel(request_.level));
  row.sysCodeSortId = numbers_.SysCodeSortId(request_.spec, UpTo(row.sysCode, L"\\*"));
}

void CSpecialModel::SetAttribute(SSpecialRow& row, const SPlace& place) {
  row.attName = place.attribute->name;
  row.attText = place.attribute->value;
  row.calItem = place.calItem->name;
}

void CSpecialModel::PutLoop(RowSet& rows, SSpecialRow row, const SPlace& place, int& loop) const {
  if (!row.isMain || request_.level != 6) {
    return;
  }
  row.categorySortId = place.category->sortId;
  row.loopName = place.category->kindName + L"回路" + NumberText(loop++);
  if (rows.find(row) == rows.end()) {
    rows.insert(row);
  }
}

Texts CSpecialModel::DealRows(SSum& sum, const RowSet& rows, bool mainOnly) {
  Texts cells;
  for (const SSpecialRow& row : rows) {
    const bool counts = row.isMain || !mainOnly;
    const bool isPlain = row.attName.empty() && row.calItem.empty() && row.loopName.empty();
    const bool isItem = !row.attName.empty() && !row.calItem.empty();
    Texts head;
    if (counts && isPlain && row.floorName.empty() && row.sysCode.empty()) {
      sum.unit = row.unit;
      std::copy(row.quantities, row.quantities + 4, sum.quantities);
    } else if (counts && isPlain && !row.floorName.empty() && row.sysCode.empty()) {
      head = {L"@F", row.floorName, row.floor};
    } else if (counts && isPlain && !row.floorName.empty()) {
      head = {L"@S", row.sysCode};
    } else if (isItem && row.loopName.empty()) {
      head = {L"@CI", row.attName, row.attText, row.calItem};
    } else if (isItem && row.isMain && !row.floorName.empty() && !row.sysCode.empty()) {
      head = {L"@L", row.loopName, row.calItem};
    }
    if (!head.empty()) {
      Append(cells, head);
      Append(cells, {row.expression, row.unit});
      AppendNumbers(cells, row.quantities);
    }
  }
  return cells;
}

// Paint work ----------------------------------------------------------------------------------

CBrushPaintModel::CBrushPaintModel(const SModelProject& project)
    : CSpecialModel(project, PaintLess) {
  const KorDMRec::SKorDMDetailResultData& data = project.records.detail;
  for (const KorDMRec::SKorDMResultRow& row : data.rows) {
    FoldRow(RowRecords(data, row));
  }
}

void CBrushPaintModel::FoldRow(const RowRecords& r) {
  const std::wstring prefix = PaintPrefix(r.spec.name, r.category.category, r.calItem.name);
  if (prefix.empty()) {
    return;
  }
  std::wstring paints;
  ReadParameter(paints, r.attr, prefix);
  for (const std::wstring& paint : SplitText(paints, L';')) {
    const Texts parts = SplitText(paint, L',');
    if (parts.size() == 2) {
      FoldCoats(r, parts[0], LeadingDigits(parts[1]));
    }
  }
}

void CBrushPaintModel::FoldCoats(const RowRecords& r, const std::wstring& name, int coats) {
  constexpr int kMostCoats = 999;
  SNode* spec = FoldSpec(root_, r.spec);
  if (spec == nullptr || coats > kMostCoats) {
    return;
  }
  const int sortId = numbers_.BigCategorySortId(r.spec.name, r.category.category);
  for (int coat = 1; coat <= coats; ++coat) {
    const std::wstring key = NumberText(sortId) + name + NumberText(coat);
    const bool isNew = !spec->children.contains(key);
    SNode* block = FoldGroup(spec->children, key, r.category.category, name, L"");
    if (isNew) {
      block->sortId = sortId;
      block->number2 = coat;
    }
    FoldBelow(*block, r);
  }
}

Texts CBrushPaintModel::Blocks(const SNode& spec, const std::wstring& section) {
  std::set<SPaintBlock> blocks;
  for (const SNode* node : NodesOf(spec.children, EKind::Group)) {
    const RowSet rows = RowsOf(*node, section);
    if (rows.empty()) {
      continue;
    }
    SSum sum;
    const Texts detail = DealRows(sum, rows, false);
    Texts cells = {L"@T", IsPaintedPipe(request_.spec, node->text1) ? L"水管" : node->text1,
                   node->text2 + L":" + CoatText(node->number2), sum.unit};
    AppendNumbers(cells, sum.quantities);
    Append(cells, detail);
    PutBlock(blocks, {node->sortId, node->number2, node->text2, cells});
  }
  return Flattened(blocks);
}

void CBrushPaintModel::AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                                 const Report::SFloorPair& pair, int& loop) const {
  const SNode& category = *place.category;
  const bool painted = IsPaintedArea(request_.spec, category.category, place.calItem->name);
  const int level = request_.level;
  SSpecialRow row = MakeRow(place, result, pair);
  if (painted) {
    AddRow(rows, row);
  }
  if (level >= 2) {
    SetFloor(row, *place.floor, pair);
    if (painted) {
      AddRow(rows, row);
    }
  }
  if (level >= 3) {
    SetSysCode(row, *place.sysCode);
    row.sysCode += numbers_.SysCodeRemark(request_.spec, row.sysCode);
    if (painted) {
      AddRow(rows, row);
    }
  }
  if (level > 0) {
    row.lineSortDown =
        request_.lineSortDown && IsPipeType(request_.spec, category.category, category.kindName);
    SetAttribute(row, place);
    AddRow(rows, row);
    PutLoop(rows, row, place, loop);
  }
}

// Duct wall thickness -------------------------------------------------------------------------

CDuctHModel::CDuctHModel(const SModelProject& project) : CSpecialModel(project, DuctLess) {
  const KorDMRec::SKorDMDetailResultData& data = project.records.detail;
  for (const KorDMRec::SKorDMResultRow& row : data.rows) {
    FoldRow(RowRecords(data, row));
  }
}

void CDuctHModel::FoldRow(const RowRecords& r) {
  if (!IsDuct(r.spec.name, r.category.category, r.category.kind, r.calItem.name)) {
    return;
  }
  std::wstring type = L"风管";
  std::wstring material;
  std::wstring thickness;
  ReadParameter(material, r.attr, L"风管材质:");
  ReadParameter(thickness, r.attr, L"风管壁厚H(mm):");
  if (IsDuctSleeve(r.spec.name, r.category.category, r.category.kind)) {
    type = L"风管套管";
    ReadParameter(material, r.attr, L"套管材质:");
    ReadParameter(thickness, r.attr, L"板材厚度:");
  }
  SNode* spec = FoldSpec(root_, r.spec);
  if (spec != nullptr) {
    FoldBelow(*FoldGroup(spec->children, type + material + thickness, type, material, thickness),
              r);
  }
}

Texts CDuctHModel::Blocks(const SNode& spec, const std::wstring& section) {
  std::set<SAttBlock> blocks;
  for (const SNode* node : NodesOf(spec.children, EKind::Group)) {
    const RowSet rows = RowsOf(*node, section);
    if (rows.empty()) {
      continue;
    }
    SSum sum;
    const Texts detail = DealRows(sum, rows, true);
    Texts cells = {L"@T", node->text1 + L":" + node->text2 + L":" + node->text3 + L"(mm)",
                   sum.unit};
    AppendNumbers(cells, sum.quantities);
    Append(cells, detail);
    PutBlock(blocks, {true, L"", node->text1 + node->text2 + node->text3, cells});
  }
  return Flattened(blocks);
}

void CDuctHModel::AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                            const Report::SFloorPair& pair, int& loop) const {
  const int level = request_.level;
  if (level == 0 && !IsMainItem(place)) {
    return;
  }
  SSpecialRow row = MakeRow(place, result, pair);
  AddRow(rows, row);
  if (level == 0) {
    return;
  }
  if (level >= 2) {
    SetFloor(row, *place.floor, pair);
    AddRow(rows, row);
  }
  if (level >= 3) {
    SetSysCode(row, *place.sysCode);
    row.sysCode += numbers_.SysCodeRemark(request_.spec, row.sysCode);
    AddRow(rows, row);
  }
  row.lineSortDown = request_.lineSortDown;
  SetAttribute(row, place);
  AddRow(rows, row);
  PutLoop(rows, row, place, loop);
}

// Insulation ----------------------------------------------------------------------------------

CPipeJRBWModel::CPipeJRBWModel(const SModelProject& project)
    : CSpecialModel(project, InsulationLess) {
  const KorDMRec::SKorDMDetailResultData& data = project.records.detail;
  for (const KorDMRec::SKorDMResultRow& row : data.rows) {
    try {
      FoldRow(RowRecords(data, row));
    } catch (const std::out_of_range&) {
      continue;
    }
  }
}

void CPipeJRBWModel::FoldRow(const RowRecords& r) {
  if (!IsInsulated(r.spec.name, r.category.category, r.category.kind, r.calItem.name)) {
    return;
  }
  std::wstring material;
  std::wstring thickness;
  ReadParameter(material, r.attr, L"保温材料");
  ReadParameter(thickness, r.attr, L"保温厚度");
  SNode* spec = LeadingNumber(thickness) == 0 ? nullptr : FoldSpec(root_, r.spec);
  if (spec != nullptr) {
    const std::wstring type = InsulatedType(r.category.category, r.category.kind);
    FoldBelow(*FoldGroup(spec->children, type + material + thickness, type, material, thickness),
              r);
  }
}

bool CPipeJRBWModel::Answers() const {
  const std::set<std::wstring>& chosen = request_.condition.categories;
  bool answers = chosen.empty();
  for (const std::wstring& choice : chosen) {
    answers = answers || IsOneOf(UpTo(choice, L"\\"), {L"管道", L"风管", L"水管", L"管网", L"设备",
                                                       L"水暖设备", L"储存装置"});
  }
  return answers;
}

Texts CPipeJRBWModel::Blocks(const SNode& spec, const std::wstring& section) {
  std::set<SInsulationBlock> blocks;
  for (const SNode* node : NodesOf(spec.children, EKind::Group)) {
    const RowSet rows = RowsOf(*node, section);
    SSum sum;
    const Texts detail = Deal(sum, rows);
    if (rows.empty() || sum.quantities[0] == 0) {
      continue;
    }
    Texts cells = {L"@T", node->text1, node->text2 + L":" + node->text3 + L"(mm)", sum.item,
                   sum.unit};
    AppendNumbers(cells, sum.quantities);
    Append(cells, detail);
    PutBlock(blocks, {node->text1, node->text2, node->text3, cells});
  }
  return Flattened(blocks);
}

std::wstring CPipeJRBWModel::VolumeItem() const {
  return request_.totalType == Report::ReportPipeJRBW ? L"保温体积" : L"";
}

bool CPipeJRBWModel::IsVolume(const SSpecialRow& row) const {
  return Contains(row.calItem, VolumeItem());
}

std::wstring CPipeJRBWModel::PlainRemark(const std::wstring& path) const {
  for (const auto& record : project_->records.sysCodes) {
    if (record.spec == request_.spec && ReplaceAll(record.sysCode, L'&', L'\\') == path) {
      return record.remark;
    }
  }
  return L"";
}

void CPipeJRBWModel::AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                               const Report::SFloorPair& pair, int& loop) const {
  const int level = request_.level;
  if (level == 0 && !Contains(place.calItem->name, VolumeItem())) {
    return;
  }
  SSpecialRow row = MakeRow(place, result, pair);
  row.isPipe = Contains(place.category->kindName, L"管");
  row.lineSortDown = request_.lineSortDown;
  row.calItem = place.calItem->name;
  AddRow(rows, row);
  if (level == 0) {
    return;
  }
  if (level != 1) {
    SetFloor(row, *place.floor, pair);
    AddRow(rows, row);
  }
  if (level >= 3) {
    SetSysCode(row, *place.sysCode);
    row.sysCode += PlainRemark(row.sysCode);
    AddRow(rows, row);
  }
  if (level > 0) {
    SetAttribute(row, place);
    AddRow(rows, row);
  }
  PutLoop(rows, row, place, loop);
}

Texts CPipeJRBWModel::Deal(SSum& sum, const RowSet& rows) const {
  Texts cells;
  for (const SSpecialRow& row : rows) {
    if (IsVolume(row) && row.attName.empty() && row.attText.empty() && row.floor.empty() &&
        row.sysCode.empty() && row.loopName.empty()) {
      sum.unit = row.unit;
      sum.item = row.calItem;
      std::copy(row.quantities, row.quantities + 4, sum.quantities);
      continue;
    }
    const Texts head = RowCells(row, sum, rows);
    if (!head.empty()) {
      Append(cells, head);
      Append(cells, {row.unit, row.expression});
      AppendNumbers(cells, row.quantities);
    }
  }
  return cells;
}

Texts CPipeJRBWModel::RowCells(const SSpecialRow& row, const SSum& sum, const RowSet& rows) const {
  const bool isPlain = row.attName.empty() && row.attText.empty() && row.loopName.empty();
  if (IsVolume(row) && isPlain && row.sysCode.empty() && !row.floor.empty()) {
    return {L"@F", row.floor, row.floorName};
  }
  if (IsVolume(row) && isPlain && !row.floor.empty() && !row.sysCode.empty()) {
    return {L"@S", row.sysCode};
  }
  if (row.attName.empty() || row.attText.empty() || row.calItem.empty()) {
    return {};
  }
  // The volume row of the same place.
  SSpecialRow volume = row;
  volume.calItem = sum.item;
  volume.unit = sum.unit;
  volume.isMain = false;
  volume.loopName.clear();
  if (rows.find(volume) == rows.end()) {
    return {};
  }
  if (row.loopName.empty()) {
    return {L"@CI", row.attName, row.attText, row.calItem};
  }
  return row.isMain ? Texts{L"@L", row.loopName, row.calItem} : Texts();
}

}  // namespace tally_model
