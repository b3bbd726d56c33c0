#include "model/book_model.h"

#include <optional>
#include <tuple>

#include "model/model_tables.h"

namespace tally_model {
namespace {

using BookRecords = SRowRecords<KorDMRec::SKorDMCalItemDetailQRec>;

SNode* FoldBookType(NodeMap& children, const BookRecords& r) {
  return FoldType(children, r.category.category + L"\\" + r.category.kind,
                  BookType(r.spec.name, r.category.category, r.category.kind));
}

void FoldMemberRow(NodeMap& root, const CModelNumbers& numbers, const BookRecords& r,
                   bool divided) {
  SNode* node = FoldSpec(root, r.spec);
  if (divided) {
    node = node == nullptr ? node : FoldBookType(node->children, r);
  }
  node = node == nullptr ? node : FoldCategory(node->children, numbers, r.spec.name, r.category);
  node = node == nullptr ? node : FoldAttribute(node->children, r.attr);
  node = node == nullptr ? node : FoldCalItem(node->children, r.calItem);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers, r.spec.name, r.sysCode);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

void FoldFloorRow(NodeMap& root, const CModelNumbers& numbers, const BookRecords& r, bool divided) {
  SNode* node = FoldSpec(root, r.spec);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  if (divided) {
    node = node == nullptr ? node : FoldBookType(node->children, r);
  }
  node = node == nullptr ? node : FoldCategory(node->children, numbers, r.spec.name, r.category);
  node = node == nullptr ? node : FoldAttribute(node->children, r.attr);
  node = node == nullptr ? node : FoldCalItem(node->children, r.calItem);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers, r.spec.name, r.sysCode);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

void FoldSystemRow(NodeMap& root, const CModelNumbers& numbers, const BookRecords& r,
                   bool divided) {
  SNode* node = FoldSpec(root, r.spec);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  if (divided) {
    node = node == nullptr ? node : FoldBookType(node->children, r);
  }
  node = node == nullptr ? node : FoldSysCode(node->children, numbers, r.spec.name, r.sysCode);
  node = node == nullptr ? node : FoldCategory(node->children, numbers, r.spec.name, r.category);
  node = node == nullptr ? node : FoldAttribute(node->children, r.attr);
  node = node == nullptr ? node : FoldCalItem(node->children, r.calItem);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

/// The floor text that a result counts with; none where the pair leaves it out.
std::optional<std::wstring> CountedFloorText(const SNode& detail, const Report::SFloorPair& pair) {
  if (pair.drawingFloor.empty() || pair.floor == pair.drawingFloor) {
    return detail.floorText;
  }
  if (detail.floorText == pair.drawingFloor || detail.floorText == pair.floor) {
    return pair.floor;
  }
  return std::nullopt;
}

bool Holds(const std::wstring& text, const wchar_t* part) {
  return text.find(part) != std::wstring::npos;
}

std::wstring Multiplied(const std::wstring& text, int count, const wchar_t* counted) {
  const bool isSum = Holds(text, L"+") || Holds(text, L"-");
  return (isSum ? L"(" + text + L")" : text) + L"*" + NumberText(count) + counted;
}

std::wstring RepeatFormula(const SNode& detail) {
  const auto count = static_cast<int>(detail.components.size());
  return count < 2 ? detail.expression : Multiplied(detail.expression, count, L"件");
}

/// A quantity with the number of floors, where it is another than one.
std::wstring FloorTerm(double quantity, int floorCount) {
  const std::wstring text = NumberText(quantity);
  return floorCount == 1 ? text : text + L"*" + NumberText(floorCount) + L"层";
}

Texts Tail(const std::wstring& formula, const std::wstring& expression, const double (&sums)[4]) {
  Texts cells = {formula, expression};
  for (const double sum : sums) {
    cells.push_back(NumberText(sum));
  }
  return cells;
}

int SysCodeLevel(int level) {
  switch (level) {
    case 2:
      return 1;
    case 3:
      return 2;
    case 4:
    case 5:
      return 3;
    default:
      return 0;
  }
}

/// The path of the child that a result belongs to.
std::wstring ChildPath(const std::wstring& path, int level, int loop) {
  const std::size_t names = SplitText(path, L'\\').size();
  const bool numbered = (level == 3 && names == 2) || level == 4 || level == 5;
  if (level == 2 && names == 3) {
    return path.substr(0, path.rfind(L'\\'));
  }
  return numbered ? path + L"\\" + NumberText(loop) : path;
}

}  // namespace

// Common --------------------------------------------------------------------------------------

Texts CBookModel::Rows(const SModelRequest& request) {
  Texts rows;
  const SNode* spec =
      FindNode(request.divided ? dividedRoot_ : plainRoot_, request.spec, EKind::Spec);
  if (spec == nullptr) {
    return rows;
  }
  request_ = request;
  for (const std::wstring& section : Passes(request)) {
    AppendSection(rows, *spec, section);
  }
  return rows;
}

void CBookModel::AppendFloors(Texts& rows, const SNode& spec, const std::wstring& section) {
  std::set<SFloorBlock> blocks;
  const auto put = [&](const SNode& floor, const std::wstring& shown, const SPart& part) {
    const Texts cells = FloorRows(floor, part);
    if (!cells.empty()) {
      Texts block = {L"@F", floor.name, shown};
      Append(block, cells);
      PutBlock(blocks, {shown, block});
    }
  };
  if (request_.condition.floors.empty()) {
    for (const SNode* floor : NodesOf(spec.children, EKind::Floor)) {
      put(*floor, floor->name, {section, {}});
    }
  }
  for (const Report::SFloorPair& pair : request_.condition.floors) {
    const SNode* floor = FindNode(spec.children, pair.drawingFloor, EKind::Floor);
    if (floor != nullptr) {
      put(*floor, pair.floor, {section, pair});
    }
  }
  AppendPass(rows, request_, section, Flattened(blocks));
}

Texts CBookModel::FloorRows(const SNode& floor, const SPart& part) {
  if (!request_.divided) {
    return NodeRows(floor, request_.level, part);
  }
  Texts rows;
  Texts others;
  Types(rows, others, floor, part);
  Append(rows, others);
  return rows;
}

void CBookModel::Types(Texts& lineWork, Texts& others, const SNode& parent, const SPart& part) {
  std::set<SNumberedBlock> blocks;
  for (const SNode* type : NodesOf(parent.children, EKind::Type)) {
    const bool isLineWork = type->name == L"管线";
    // Only line work is broken down by system code.
    const Texts cells = NodeRows(*type, isLineWork ? request_.level : 1, part);
    if (cells.empty()) {
      continue;
    }
    Texts block = {L"@T", type->name};
    Append(block, cells);
    if (isLineWork) {
      Append(lineWork, block);
    } else {
      PutBlock(blocks, {numbers_.CategorySortId(request_.spec, type->category), block});
    }
  }
  Append(others, Flattened(blocks));
}

// Component kinds above system codes ----------------------------------------------------------

Texts CKindBookModel::NodeRows(const SNode& node, int /*level*/, const SPart& part) {
  std::set<SNumberedBlock> blocks;
  for (const SNode* category : ChosenCategories(node.children, request_.condition.categories)) {
    const Texts cells = Category(*category, part);
    if (!cells.empty()) {
      PutBlock(blocks, {category->sortId, cells});
    }
  }
  return Flattened(blocks);
}

Texts CKindBookModel::Category(const SNode& category, const SPart& part) {
  const bool largerFirst =
      IsPipeType(request_.spec, category.category, category.kindName) && request_.lineSortDown;
  const std::wstring mainItem = MainCalItem(request_.spec, category.category, category.kindName);
  std::set<SAttBlock> blocks;
  for (const SNode* attribute : NodesOf(category.children, EKind::Attribute)) {
    const Texts cells = Attribute(*attribute, mainItem, part);
    if (!cells.empty()) {
      PutBlock(blocks, {largerFirst, attribute->value, attribute->name, cells});
    }
  }
  if (blocks.empty()) {
    return {};
  }
  Texts rows = {L"@Cg", PathOf(category)};
  Append(rows, Flattened(blocks));
  return rows;
}

Texts CKindBookModel::Attribute(const SNode& attribute, const std::wstring& mainItem,
                                const SPart& part) {
  Texts mainRows;
  std::set<SCalItemBlock> blocks;
  for (const SNode* item : NodesOf(attribute.children, EKind::CalItem)) {
    if (item->name == mainItem) {
      Append(mainRows, CalItem(*item, true, part));
    } else {
      PutBlock(blocks, {item->name, item->unit, CalItem(*item, false, part)});
    }
  }
  const Texts others = Flattened(blocks);
  if (mainRows.empty() && others.empty()) {
    return {};
  }
  Texts rows = {L"@A", attribute.name, attribute.value};
  Append(rows, mainRows);
  Append(rows, others);
  return rows;
}

Texts CKindBookModel::CalItem(const SNode& item, bool isMain, const SPart& part) {
  const Texts tail = ItemTail(item, isMain, part);
  if (tail.empty()) {
    return {};
  }
  Texts row = {L"@CI", item.name, item.unit};
  Append(row, tail);
  return row;
}

// Member book ---------------------------------------------------------------------------------

CXhlJss2MModel::CXhlJss2MModel(const SModelProject& project) : CKindBookModel(project) {
  FoldRows(project, [this](NodeMap& root, const RowRecords& records, bool divided) {
    FoldMemberRow(root, numbers_, records, divided);
  });
}

void CXhlJss2MModel::AppendSection(Texts& rows, const SNode& spec, const std::wstring& section) {
  const SPart part = {section, {}};
  if (!request_.divided) {
    AppendPass(rows, request_, section, NodeRows(spec, request_.level, part));
    return;
  }
  // The line work goes ahead of the section's heading.
  Texts others;
  Types(rows, others, spec, part);
  AppendPass(rows, request_, section, others);
}

Texts CXhlJss2MModel::ItemTail(const SNode& item, bool isMain, const SPart& part) {
  FloorSums sums;
  ForChosenSysCodes(item, [&](const SNode& node) { SysCode(sums, node, part.section); });
  if (sums.empty()) {
    return {};
  }
  std::wstring formula;
  double totals[4] = {0, 0, 0, 0};
  for (const auto& [floorText, sum] : sums) {
    formula += formula.empty() ? L"" : L"+";
    formula += FloorTerm(sum.quantities[0], sum.floorCount);
    for (int i = 0; i < 4; ++i) {
      totals[i] += sum.floorCount * sum.quantities[i];
    }
  }
  return Tail(isMain ? formula : L"", L"", totals);
}

void CXhlJss2MModel::SysCode(FloorSums& sums, const SNode& node, const std::wstring& section) {
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      SysCode(sums, *child, section);
    } else if (child->kind != EKind::Floor) {
      continue;
    } else if (request_.condition.floors.empty()) {
      Floor(sums, *child, {section, {}});
    } else {
      for (const Report::SFloorPair& pair : request_.condition.floors) {
        const SNode* floor = FindNode(node.children, pair.drawingFloor, EKind::Floor);
        if (floor != nullptr) {
          Floor(sums, *floor, {section, pair});
        }
      }
      return;
    }
  }
}

void CXhlJss2MModel::Floor(FloorSums& sums, const SNode& floor, const SPart& part) {
  for (const SNode* detail : NodesOf(floor.children, EKind::Result)) {
    if (!InPass(request_, *detail, part.section)) {
      continue;
    }
    const std::optional<std::wstring> floorText = CountedFloorText(*detail, part.pair);
    if (floorText) {
      AddToQuantity(sums, *floorText, *detail);
    }
  }
}

void CXhlJss2MModel::AddToQuantity(FloorSums& sums, const std::wstring& floorText,
                                   const SNode& detail) {
  if (!CountsSection(request_, detail.sgdName)) {
    return;
  }
  const bool isNew = !sums.contains(floorText);
  SFloorSum& sum = sums[floorText];
  for (int i = 0; i < 4; ++i) {
    const double quantity = ComponentCount(detail) * detail.quantities[i];
    sum.quantities[i] = isNew ? quantity : sum.quantities[i] + quantity;
  }
  if (isNew) {
    sum.floorCount = FloorCount(floorText);
  }
}

// Floor book ----------------------------------------------------------------------------------

CXhlJss2FModel::CXhlJss2FModel(const SModelProject& project) : CKindBookModel(project) {
  FoldRows(project, [this](NodeMap& root, const RowRecords& records, bool divided) {
    FoldFloorRow(root, numbers_, records, divided);
  });
}

Texts CXhlJss2FModel::ItemTail(const SNode& item, bool isMain, const SPart& part) {
  SystemSums sums;
  ForChosenSysCodes(item, [&](const SNode& node) { SysCode(sums, node, part); });
  if (sums.empty()) {
    return {};
  }
  const int floorCount = sums.begin()->second.floorCount;
  std::wstring formula;
  std::wstring expression;
  double totals[4] = {0, 0, 0, 0};
  for (const auto& [sysCode, sum] : sums) {
    formula += formula.empty() ? L"" : L"+";
    formula += NumberText(sum.quantities[0]);
    expression += sum.expression;
    for (int i = 0; i < 4; ++i) {
      totals[i] += floorCount * sum.quantities[i];
    }
  }
  if (floorCount != 1) {
    formula = Holds(formula, L"+") ? L"(" + formula + L")" : formula;
    formula += L"*" + NumberText(floorCount) + L"层";
  }
  return Tail(isMain ? formula : L"", expression, totals);
}

void CXhlJss2FModel::SysCode(SystemSums& sums, const SNode& node, const SPart& part) {
  const std::wstring key = SysCodeAtLevel(node.fullName, 1);
  for (const auto& [childKey, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      SysCode(sums, *child, part);
    } else if (child->kind == EKind::Result && InPass(request_, *child, part.section)) {
      const std::optional<std::wstring> floorText = CountedFloorText(*child, part.pair);
      if (floorText) {
        AddToQuantity(sums, *floorText, *child, key);
      }
    }
  }
}

void CXhlJss2FModel::AddToQuantity(SystemSums& sums, const std::wstring& floorText,
                                   const SNode& detail, const std::wstring& key) {
  if (!CountsSection(request_, detail.sgdName)) {
    return;
  }
  const bool isNew = !sums.contains(key);
  SSystemSum& sum = sums[key];
  for (int i = 0; i < 4; ++i) {
    const double quantity = ComponentCount(detail) * detail.quantities[i];
    sum.quantities[i] = isNew ? quantity : sum.quantities[i] + quantity;
  }
  sum.expression += ComponentText(detail) + L"$";
  if (isNew) {
    sum.floorCount = FloorCount(floorText);
  }
}

// System book ---------------------------------------------------------------------------------

CXhlJss2SModel::CXhlJss2SModel(const SModelProject& project) : CBookModel(project) {
  FoldRows(project, [this](NodeMap& root, const RowRecords& records, bool divided) {
    FoldSystemRow(root, numbers_, records, divided);
  });
}

Texts CXhlJss2SModel::NodeRows(const SNode& node, int level, const SPart& part) {
  rows_.clear();
  children_.clear();
  ForChosenSysCodes(node, [&](const SNode& sysCode) { SysCode(sysCode, level, part); });
  return level == 1 ? PlainRows() : SysCodeRows();
}

void CXhlJss2SModel::SysCode(const SNode& node, int level, const SPart& part) {
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      SysCode(*child, level, part);
    } else if (child->kind == EKind::Category) {
      Category(node, *child, level, part);
    }
  }
}

void CXhlJss2SModel::Category(const SNode& sysCode, const SNode& category, int level,
                              const SPart& part) {
  const std::set<std::wstring>& chosen = request_.condition.categories;
  if (!chosen.empty() && !chosen.contains(category.category) &&
      !chosen.contains(PathOf(category))) {
    return;
  }
  const std::wstring mainItem = MainCalItem(request_.spec, category.category, category.kindName);
  for (const SNode* attribute : NodesOf(category.children, EKind::Attribute)) {
    for (const SNode* item : NodesOf(attribute->children, EKind::CalItem)) {
      CalItem({&sysCode, &category, attribute, item}, item->name == mainItem, level, part);
    }
  }
}

void CXhlJss2SModel::CalItem(const SPlace& place, bool isMain, int level, const SPart& part) {
  int loop = 1;
  for (const SNode* detail : NodesOf(place.calItem->children, EKind::Result)) {
    if (!InPass(request_, *detail, part.section)) {
      continue;
    }
    const std::optional<std::wstring> floorText = CountedFloorText(*detail, part.pair);
    if (!floorText || !CountsSection(request_, detail->sgdName)) {
      continue;
    }
    if (isMain && level != 1) {
      AddChild(place, *detail, *floorText, level, loop);
    }
    AddToQuantity(place, *detail, *floorText, isMain, level, loop);
  }
}

void CXhlJss2SModel::AddChild(const SPlace& place, const SNode& detail,
                              const std::wstring& floorText, int level, int loop) {
  SChild child;
  child.categorySortId = place.category->sortId;
  child.attName = place.attribute->name;
  child.attText = place.attribute->value;
  child.path = ChildPath(place.sysCode->fullName, level, loop);
  const std::wstring parent = UpTo(child.path.substr(0, child.path.rfind(L'\\')), L"\\*");
  child.sysCodeSortId = numbers_.SysCodeSortId(request_.spec, parent);
  child.quantity = ComponentCount(detail) * detail.quantities[0] * FloorCount(floorText);
  child.expression = ComponentText(detail) + L"$";
  const auto at = children_.find(child);
  if (at == children_.end()) {
    children_.insert(child);
  } else {
    at->quantity += child.quantity;
    at->expression += child.expression;
  }
}

CXhlJss2SModel::SRow CXhlJss2SModel::MakeRow(const SPlace& place, const SNode& detail,
                                             const std::wstring& floorText, bool isMain,
                                             int level) const {
  const SNode& category = *place.category;
  SRow row;
  row.isMain = isMain;
  if (level != 1) {
    row.sysCode = SysCodeAtLevel(place.sysCode->fullName, SysCodeLevel(level));
    row.sysCodeSortId = numbers_.SysCodeSortId(request_.spec, UpTo(row.sysCode, L"\\*"));
    row.sysCode += numbers_.SysCodeRemark(request_.spec, row.sysCode);
  }
  row.lineSortDown =
      IsPipeType(request_.spec, category.category, category.kindName) && request_.lineSortDown;
  row.categorySortId = category.sortId;
  row.category = PathOf(category);
  row.attName = place.attribute->name;
  row.attText = place.attribute->value;
  row.calItem = place.calItem->name;
  row.unit = place.calItem->unit;
  row.expression = ComponentText(detail) + L"$";
  for (int i = 0; i < 4; ++i) {
    row.quantities[i] = ComponentCount(detail) * detail.quantities[i];
  }
  row.floorCount = FloorCount(floorText);
  return row;
}

void CXhlJss2SModel::AddToQuantity(const SPlace& place, const SNode& detail,
                                   const std::wstring& floorText, bool isMain, int level,
                                   int& loop) {
  SRow row = MakeRow(place, detail, floorText, isMain, level);
  const auto at = rows_.find(row);
  if (at == rows_.end()) {
    rows_.insert(row);
  } else {
    for (int i = 0; i < 4; ++i) {
      at->quantities[i] += row.quantities[i];
    }
    at->expression += row.expression;
  }
  if (isMain && level == 5) {
    row.loopName = L"回路" + NumberText(loop++);
    row.loopFormula = RepeatFormula(detail);
    if (rows_.find(row) == rows_.end()) {
      rows_.insert(row);
    }
  }
}

std::wstring CXhlJss2SModel::Formula(std::wstring& expression, const SRow& row) const {
  std::wstring formula;
  for (const SChild& child : children_) {
    if (child.sysCodeSortId == row.sysCodeSortId && child.categorySortId == row.categorySortId &&
        child.attName == row.attName && child.attText == row.attText) {
      formula += formula.empty() ? L"" : L"+";
      formula += NumberText(child.quantity);
      expression += child.expression + L"$";
    }
  }
  return formula;
}

Texts CXhlJss2SModel::SysCodeRows() const {
  Texts cells;
  for (const SRow& row : rows_) {
    Append(cells, {L"@S", row.sysCode, L"@Cg", row.category, L"@A", row.attName, row.attText});
    if (row.loopName.empty()) {
      std::wstring expression;
      const std::wstring formula = row.isMain ? Formula(expression, row) : L"";
      Append(cells, {L"@CI", row.calItem, row.unit, formula, expression});
    } else {
      const std::wstring formula =
          row.floorCount > 1 ? Multiplied(row.loopFormula, row.floorCount, L"层") : row.loopFormula;
      Append(cells, {L"@L", row.calItem, row.unit, row.loopName, formula, row.expression});
    }
    for (const double quantity : row.quantities) {
      cells.push_back(NumberText(row.floorCount * quantity));
    }
  }
  return cells;
}

Texts CXhlJss2SModel::PlainRows() const {
  Texts cells;
  for (const SRow& row : rows_) {
    Append(cells, {L"@Cg", row.category, L"@A", row.attName, row.attText, L"@CI", row.calItem,
                   row.unit, FloorTerm(row.quantities[0], row.floorCount), row.expression});
    for (const double quantity : row.quantities) {
      cells.push_back(NumberText(row.floorCount * quantity));
    }
  }
  return cells;
}

bool CXhlJss2SModel::SRow::operator<(const SRow& other) const {
  if (sysCode != other.sysCode) {
    return sysCodeSortId < other.sysCodeSortId;
  }
  if (categorySortId != other.categorySortId) {
    return categorySortId < other.categorySortId;
  }
  if (attName != other.attName) {
    return AttSort(attName, other.attName, !lineSortDown) < 0;
  }
  if (attText != other.attText) {
    return attText < other.attText;
  }
  if (loopName.empty() != other.loopName.empty()) {
    return loopName.empty();
  }
  if (!loopName.empty()) {
    return AttSort(other.loopName, loopName, false) < 0;
  }
  if (isMain != other.isMain) {
    return isMain;
  }
  if (calItem != other.calItem) {
    return NarrowLess(calItem, other.calItem);
  }
  return NarrowLess(unit, other.unit);
}

bool CXhlJss2SModel::SChild::operator<(const SChild& other) const {
  return std::tie(path, sysCodeSortId, categorySortId, attName, attText) <
         std::tie(other.path, other.sysCodeSortId, other.categorySortId, other.attName,
                  other.attText);
}

}  // namespace tally_model
