#include "model/consumption_model.h"

#include <map>

#include "model/model_tables.h"

namespace tally_model {
namespace {

using KorDMRec::SKorDMResultRow;

void FoldHzRow(NodeMap& root, const CModelNumbers& numbers, const KorDMRec::SKorDMResultData& data,
               const SKorDMResultRow& row) {
  const SRowRecords<KorDMRec::SKorDMCalItemRec> r(data, row);
  SNode* node = FoldSpec(root, r.spec);
  node = node == nullptr ? node : FoldCategory(node->children, numbers, r.spec.name, r.category);
  node = node == nullptr ? node : FoldAttribute(node->children, r.attr);
  node = node == nullptr ? node : FoldCalItem(node->children, r.calItem);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers, r.spec.name, r.sysCode);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

void FoldGlRow(NodeMap& root, const CModelNumbers& numbers, const KorDMRec::SKorDMResultData& data,
               const SKorDMResultRow& row) {
  const SRowRecords<KorDMRec::SKorDMCalItemRec> r(data, row);
  if (MainCalItem(r.spec.name, r.category.category, r.category.kind) != r.calItem.name) {
    return;
  }
  const SOverviewGroup* group = OverviewGroup(r.spec.name, r.category.category, r.category.kind);
  SNode* node = FoldSpec(root, r.spec);
  node = node == nullptr ? node
                         : FoldType(node->children, r.category.category + L"\\" + r.category.kind,
                                    group == nullptr ? r.category.kind : group->name);
  node = node == nullptr ? node : FoldAttribute(node->children, {0, r.attr.name, L""});
  node = node == nullptr ? node : FoldCalItem(node->children, r.calItem);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  node = node == nullptr ? node : FoldCategory(node->children, numbers, r.spec.name, r.category);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers, r.spec.name, r.sysCode);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

void FoldPjRow(NodeMap& root, const CModelNumbers& numbers,
               const KorDMRec::SKorDMPjResultData& data, const SKorDMResultRow& row) {
  const SRowRecords<KorDMRec::SKorDMPjCalItemRec> r(data, row);
  SNode* node = FoldSpec(root, r.spec);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers, r.spec.name, r.sysCode);
  node = node == nullptr ? node : FoldCategory(node->children, numbers, r.spec.name, r.category);
  node = node == nullptr
             ? node
             : FoldPjAttribute(node->children, r.spec.name, r.category.category, r.attr);
  node = node == nullptr ? node : FoldPjCalItem(node->children, r.calItem);
  if (node != nullptr) {
    FoldPjResult(node->children, r.sgd.name, r.floor, r.component);
  }
}

}  // namespace

// Consumption summary -------------------------------------------------------------------------

CXhlHzModel::CXhlHzModel(const SModelProject& project, const KorDMRec::SKorDMResultData& data)
    : numbers_(project) {
  for (const SKorDMResultRow& row : data.rows) {
    FoldHzRow(root_, numbers_, data, row);
  }
}

Texts CXhlHzModel::Rows(const SModelRequest& request) {
  Texts rows;
  const SNode* spec = FindNode(root_, request.spec, EKind::Spec);
  if (spec == nullptr) {
    return rows;
  }
  request_ = request;
  sysCodeNames_ = NamesByLevel(request.condition.sysCodes);
  for (const std::wstring& section : Passes(request)) {
    std::set<SNumberedBlock> blocks;
    for (const SNode* category : ChosenCategories(spec->children, request.condition.categories)) {
      const Texts cells = Category(*category, section);
      if (!cells.empty()) {
        PutBlock(blocks, {category->sortId, cells});
      }
    }
    AppendPass(rows, request, section, Flattened(blocks));
  }
  return rows;
}

Texts CXhlHzModel::Category(const SNode& category, const std::wstring& section) {
  const bool isPipe = IsPipeType(request_.spec, category.category, category.kindName);
  const bool largerFirst = isPipe && request_.lineSortDown;
  const std::wstring mainItem = MainCalItem(request_.spec, category.category, category.kindName);
  std::set<SAttBlock> blocks;
  for (const SNode* attribute : NodesOf(category.children, EKind::Attribute)) {
    const Texts cells = Attribute(*attribute, mainItem, section);
    if (!cells.empty()) {
      PutBlock(blocks, {largerFirst, attribute->value, attribute->name, cells});
    }
  }
  Texts out;
  if (!blocks.empty()) {
    out = {L"@Cg", PathOf(category)};
    Append(out, Flattened(blocks));
  }
  return out;
}

Texts CXhlHzModel::Attribute(const SNode& attribute, const std::wstring& mainItem,
                             const std::wstring& section) {
  Report::SResultData sum;
  Texts block;
  bool counted = false;
  std::vector<const SNode*> otherItems;
  for (const SNode* item : NodesOf(attribute.children, EKind::CalItem)) {
    if (item->name != mainItem) {
      otherItems.push_back(item);
    } else if (CalItem(sum, block, *item, request_.level, section)) {
      counted = true;
    }
  }
  Texts others;
  if (AppendOtherItems(others, otherItems, section)) {
    counted = true;
  }
  if (!counted) {
    return {};
  }
  Texts out = {L"@A", attribute.name, attribute.value};
  AppendQuantity(out, sum);
  Append(out, block);
  Append(out, others);
  return out;
}

bool CXhlHzModel::AppendOtherItems(Texts& others, const std::vector<const SNode*>& items,
                                   const std::wstring& section) {
  if (request_.level == 0) {
    return false;
  }
  std::set<SCalItemBlock> blocks;
  for (const SNode* item : items) {
    Report::SResultData sum;
    Texts dropped;
    if (CalItem(sum, dropped, *item, 1, section)) {
      PutBlock(blocks, {item->name, item->unit, ItemRow(*item, sum)});
    }
  }
  others = Flattened(blocks);
  return !others.empty();
}

Texts CXhlHzModel::ItemRow(const SNode& item, const Report::SResultData& sum) const {
  Texts row = {L"@CI", item.name};
  AppendQuantity(row, sum);
  return row;
}

bool CXhlHzModel::CalItem(Report::SResultData& target, Texts& out, const SNode& item, int level,
                          const std::wstring& section) {
  target.unit = item.unit;
  Report::SResultData sum;
  sum.unit = item.unit;
  bool counted = false;
  std::set<SFloorBlock> blocks;
  std::vector<Report::SFloorPair> pairs = request_.condition.floors;
  if (pairs.empty()) {
    for (const SNode* floor : NodesOf(item.children, EKind::Floor)) {
      pairs.push_back({floor->name, floor->name});
    }
  }
  for (const Report::SFloorPair& pair : pairs) {
    const SNode* floor = FindNode(item.children, pair.drawingFloor, EKind::Floor);
    if (floor == nullptr) {
      continue;
    }
    Texts cells;
    if (Floor(sum, cells, *floor, level, pair, section)) {
      counted = true;
    }
    if (!cells.empty()) {
      PutBlock(blocks, {pair.floor, cells});
    }
  }
  if (!counted) {
    return false;
  }
  Unite(target, sum);
  if (level != 0) {
    Append(out, ItemRow(item, sum));
  }
  Append(out, Flattened(blocks));
  return true;
}

std::vector<const SNode*> CXhlHzModel::FirstSysCodes(const SNode& floor) const {
  std::map<int, const SNode*> byNumber;
  for (const SNode* node : NodesOf(floor.children, EKind::SysCode)) {
    byNumber[node->sortId] = node;
  }
  std::vector<const SNode*> nodes;
  for (const auto& [number, node] : byNumber) {
    nodes.push_back(node);
  }
  return nodes;
}

bool CXhlHzModel::Floor(Report::SResultData& target, Texts& out, const SNode& floor, int level,
                        const Report::SFloorPair& pair, const std::wstring& section) {
  Report::SResultData sum;
  sum.unit = target.unit;
  Texts cells;
  bool counted = false;
  for (const SNode* node : FirstSysCodes(floor)) {
    if (SysCode(sum, cells, *node, level, 3, pair, section)) {
      counted = true;
    }
  }
  if (!counted) {
    return false;
  }
  Unite(target, sum);
  if (level > 1) {
    Append(out, {L"@F", floor.name, FloorCell(pair)});
    AppendQuantity(out, sum);
  }
  Append(out, cells);
  return true;
}

bool CXhlHzModel::SysCode(Report::SResultData& target, Texts& out, const SNode& node, int level,
                          int sysLevel, const Report::SFloorPair& pair,
                          const std::wstring& section) {
  const auto depth = static_cast<std::size_t>(sysLevel - 3);
  if (depth < sysCodeNames_.size() && !sysCodeNames_[depth].contains(node.name)) {
    return false;
  }
  Report::SResultData sum;
  sum.unit = target.unit;
  bool counted = false;
  std::set<SNumberedBlock> blocks;
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      Texts cells;
      if (SysCode(sum, cells, *child, level, sysLevel + 1, pair, section)) {
        counted = true;
      }
      if (!cells.empty()) {
        PutBlock(blocks, {child->sortId, cells});
      }
    } else if (child->kind == EKind::Result && InPass(request_, *child, section)) {
      if (Result(sum, *child, pair)) {
        counted = true;
      }
    }
  }
  if (!counted) {
    return false;
  }
  Unite(target, sum);
  if (sysLevel > level || sysLevel > 5) {
    return true;
  }
  Append(out, {L"@S" + NumberText(sysLevel - 2),
               node.name + numbers_.SysCodeRemark(request_.spec, node.fullName)});
  AppendQuantityAndComponents(out, sum);
  Append(out, Flattened(blocks));
  return true;
}

bool CXhlHzModel::Result(Report::SResultData& target, const SNode& result,
                         const Report::SFloorPair& pair) {
  if (!CountsSection(request_, result.sgdName)) {
    return false;
  }
  std::wstring floorText = result.floorText;
  if (!pair.drawingFloor.empty() && pair.floor != pair.drawingFloor) {
    if (result.floorText != pair.drawingFloor && result.floorText != pair.floor) {
      return false;
    }
    floorText = pair.floor;
  }
  target.quantity += ComponentCount(result) * result.quantities[0] * FloorCount(floorText);
  target.components += References(result);
  return true;
}

std::wstring CXhlHzModel::References(const SNode& result) const {
  return ComponentText(result) + L"$";
}

// Over-height summary -------------------------------------------------------------------------

bool CXhlCgHzModel::AppendOtherItems(Texts& others, const std::vector<const SNode*>& items,
                                     const std::wstring& section) {
  bool counted = false;
  std::set<SCalItemBlock> blocks;
  for (const SNode* item : items) {
    Report::SResultData sum;
    Texts cells;
    if (CalItem(sum, cells, *item, Level(), section)) {
      counted = true;
      PutBlock(blocks, {item->name, item->unit, cells});
    }
  }
  if (Level() != 0) {
    others = Flattened(blocks);
  }
  return counted;
}

Texts CXhlCgHzModel::ItemRow(const SNode& item, const Report::SResultData& sum) const {
  Texts row = {L"@CI", item.name, item.text3, item.text4};
  AppendQuantity(row, sum);
  return row;
}

std::vector<const SNode*> CXhlCgHzModel::FirstSysCodes(const SNode& floor) const {
  return NodesOf(floor.children, EKind::SysCode);
}

std::wstring CXhlCgHzModel::References(const SNode& result) const {
  return L"$" + ComponentText(result);
}

// Quantity overview ---------------------------------------------------------------------------

CXhlGlModel::CXhlGlModel(const SModelProject& project) : numbers_(project) {
  for (const SKorDMResultRow& row : project.records.gl.rows) {
    FoldGlRow(root_, numbers_, project.records.gl, row);
  }
}

Texts CXhlGlModel::Rows(const SModelRequest& request) {
  Texts rows;
  const SNode* spec = FindNode(root_, request.spec, EKind::Spec);
  if (spec == nullptr) {
    return rows;
  }
  request_ = request;
  for (const std::wstring& section : Passes(request)) {
    std::set<SGroupBlock> blocks;
    for (const SNode* group : NodesOf(spec->children, EKind::Type)) {
      const Texts parts = SplitText(group->category, L'\\');
      if (parts.size() != 2) {
        continue;
      }
      const int sortId = numbers_.OverviewSortId(request.spec, parts[0], parts[1]);
      const Texts cells = Group(*group, sortId < 0 && request.lineSortDown, section);
      if (!cells.empty()) {
        PutBlock(blocks, {sortId, group->name, cells});
      }
    }
    AppendPass(rows, request, section, Flattened(blocks));
  }
  return rows;
}

Texts CXhlGlModel::Group(const SNode& group, bool largerFirst, const std::wstring& section) {
  std::set<SAttBlock> blocks;
  for (const SNode* attribute : NodesOf(group.children, EKind::Attribute)) {
    double total = 0;
    std::wstring unit;
    for (const SNode* item : NodesOf(attribute->children, EKind::CalItem)) {
      if (CalItem(total, *item, section)) {
        unit = item->unit;
      }
    }
    if (!unit.empty()) {
      PutBlock(blocks, {largerFirst,
                        attribute->value,
                        attribute->name,
                        {L"@A", attribute->name, unit, NumberText(total)}});
    }
  }
  return Flattened(blocks);
}

bool CXhlGlModel::CalItem(double& total, const SNode& item, const std::wstring& section) {
  bool added = false;
  if (request_.condition.floors.empty()) {
    for (const SNode* floor : NodesOf(item.children, EKind::Floor)) {
      added = Floor(total, *floor, {}, section) || added;
    }
  }
  for (const Report::SFloorPair& pair : request_.condition.floors) {
    const SNode* floor = FindNode(item.children, pair.floor, EKind::Floor);
    if (floor != nullptr) {
      added = Floor(total, *floor, pair, section) || added;
    }
  }
  return added;
}

bool CXhlGlModel::Floor(double& total, const SNode& floor, const Report::SFloorPair& pair,
                        const std::wstring& section) {
  bool added = false;
  for (const SNode* category : ChosenCategories(floor.children, request_.condition.categories)) {
    if (request_.condition.sysCodes.empty()) {
      for (const SNode* node : NodesOf(category->children, EKind::SysCode)) {
        added = SysCode(total, *node, pair, section) || added;
      }
    }
    for (const std::wstring& path : request_.condition.sysCodes) {
      const SNode* node = FindSysCode(*category, path);
      if (node != nullptr) {
        added = SysCode(total, *node, pair, section) || added;
      }
    }
  }
  return added;
}

bool CXhlGlModel::SysCode(double& total, const SNode& node, const Report::SFloorPair& pair,
                          const std::wstring& section) {
  bool added = false;
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      added = SysCode(total, *child, pair, section) || added;
    } else if (InPass(request_, *child, section)) {
      added = Result(total, *child, pair) || added;
    }
  }
  return added;
}

bool CXhlGlModel::Result(double& total, const SNode& result, const Report::SFloorPair& pair) {
  if (!CountsSection(request_, result.sgdName)) {
    return false;
  }
  std::wstring floorText = result.floorText;
  if (!pair.floor.empty() && pair.floor != pair.drawingFloor) {
    if (result.floorText != pair.floor && result.floorText != pair.drawingFloor) {
      return false;
    }
    floorText = pair.drawingFloor;
  }
  total += ComponentCount(result) * result.quantities[0] * FloorCount(floorText);
  return true;
}

// Fitting summary -----------------------------------------------------------------------------

CPjHzModel::CPjHzModel(const SModelProject& project) : numbers_(project) {
  for (const SKorDMResultRow& row : project.records.pj.rows) {
    FoldPjRow(root_, numbers_, project.records.pj, row);
  }
}

Texts CPjHzModel::Rows(const SModelRequest& request) {
  Texts rows;
  const SNode* spec = FindNode(root_, request.spec, EKind::Spec);
  if (spec == nullptr) {
    return rows;
  }
  request_ = request;
  for (const std::wstring& section : Passes(request)) {
    elements_.clear();
    if (request.condition.floors.empty()) {
      for (const SNode* floor : NodesOf(spec->children, EKind::Floor)) {
        Floor(*floor, {}, section);
      }
    }
    for (const Report::SFloorPair& pair : request.condition.floors) {
      const SNode* floor = FindNode(spec->children, pair.floor, EKind::Floor);
      if (floor != nullptr) {
        Floor(*floor, pair, section);
      }
    }
    if (request.bySgd != 0) {
      Append(rows, {L"@P", section});
    }
    Append(rows, ElementRows());
  }
  return rows;
}

void CPjHzModel::Floor(const SNode& floor, const Report::SFloorPair& pair,
                       const std::wstring& section) {
  if (request_.condition.sysCodes.empty()) {
    for (const SNode* node : NodesOf(floor.children, EKind::SysCode)) {
      SysCode(floor, *node, pair, section);
    }
  }
  for (const std::wstring& path : request_.condition.sysCodes) {
    const SNode* node = FindSysCode(floor, path);
    if (node != nullptr) {
      SysCode(floor, *node, pair, section);
    }
  }
}

void CPjHzModel::SysCode(const SNode& floor, const SNode& node, const Report::SFloorPair& pair,
                         const std::wstring& section) {
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      SysCode(floor, *child, pair, section);
    } else if (child->kind == EKind::Category) {
      Category(floor, node, *child, pair, section);
    }
  }
}

void CPjHzModel::Category(const SNode& floor, const SNode& sysCode, const SNode& category,
                          const Report::SFloorPair& pair, const std::wstring& section) {
  const std::set<std::wstring>& chosen = request_.condition.categories;
  if (!chosen.empty() && !chosen.contains(category.category) &&
      !chosen.contains(PathOf(category))) {
    return;
  }
  for (const SNode* attribute : NodesOf(category.children, EKind::Attribute)) {
    for (const SNode* item : NodesOf(attribute->children, EKind::PjCalItem)) {
      CalItem({&floor, &sysCode, &category, attribute, item}, pair, section);
    }
  }
}

void CPjHzModel::CalItem(const SPlace& place, const Report::SFloorPair& pair,
                         const std::wstring& section) {
  for (const SNode* result : NodesOf(place.calItem->children, EKind::Result)) {
    if (!InPass(request_, *result, section)) {
      continue;
    }
    if (pair.floor.empty() || pair.floor == pair.drawingFloor) {
      AddQuantity(place, *result, result->floorText);
    } else if (result->floorText == pair.floor || result->floorText == pair.drawingFloor) {
      AddQuantity(place, *result, pair.drawingFloor);
    }
  }
}

void CPjHzModel::AddQuantity(const SPlace& place, const SNode& result,
                             const std::wstring& floorText) {
  if (!CountsSection(request_, result.sgdName)) {
    return;
  }
  SElement element;
  if (request_.level != 0) {
    element.floorSortId = FloorGrade(place.floor->name);
    element.floor = floorText;
    element.floorName = place.floor->name;
  }
  if (request_.level > 1) {
    const int sysCodeLevel = request_.level > 4 ? 0 : request_.level - 1;
    element.sysCode = SysCodeAtLevel(place.sysCode->fullName, sysCodeLevel);
    const std::wstring path = UpTo(element.sysCode, L"\\*");
    element.sysCodeSortId = numbers_.SysCodeSortId(request_.spec, path);
    element.sysCode += numbers_.SysCodeRemark(request_.spec, path);
  }
  element.lineSortDown = request_.lineSortDown;
  element.categorySortId = place.category->sortId;
  element.category = place.category->category;
  element.attName = place.attribute->name;
  element.pjItem = place.calItem->text1;
  element.calItem = place.calItem->name;
  element.unit = place.calItem->unit;

  const std::wstring expression = ComponentText(result) + L"$";
  const double quantity = ComponentCount(result) * result.quantities[0] * FloorCount(floorText);
  const auto at = elements_.find(element);
  if (at == elements_.end()) {
    element.expression = expression;
    element.quantity = quantity;
    elements_.insert(element);
  } else {
    at->expression += expression;
    at->quantity += quantity;
  }
}

bool CPjHzModel::SElement::operator<(const SElement& other) const {
  if (floorSortId != other.floorSortId) {
    return floorSortId < other.floorSortId;
  }
  if (floor != other.floor) {
    return FloorGrade(floor) < FloorGrade(other.floor);
  }
  if (sysCodeSortId != other.sysCodeSortId) {
    return sysCodeSortId < other.sysCodeSortId;
  }
  if (category != other.category) {
    return categorySortId < other.categorySortId;
  }
  if (attName != other.attName) {
    return AttSort(attName, other.attName, !lineSortDown) < 0;
  }
  if (pjItem != other.pjItem) {
    return NarrowLess(pjItem, other.pjItem);
  }
  if (calItem != other.calItem) {
    return NarrowLess(calItem, other.calItem);
  }
  return NarrowLess(unit, other.unit);
}

Texts CPjHzModel::ElementRows() const {
  Texts rows;
  for (const SElement& element : elements_) {
    if (!element.floor.empty()) {
      Append(rows, {L"@F", element.floorName, element.floor});
    }
    if (!element.sysCode.empty()) {
      Append(rows, {L"@S", element.sysCode});
    }
    Append(rows, {L"@Cg", element.category, L"@A", element.attName, L"@CI", element.pjItem,
                  element.calItem, element.unit, NumberText(element.quantity), element.expression});
  }
  return rows;
}

}  // namespace tally_model
