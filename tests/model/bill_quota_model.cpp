#include "model/bill_quota_model.h"

#include <limits>
#include <map>

#include "model/model_tables.h"

namespace tally_model {
namespace {

using KorDMRec::SKorDMQdDeRow;
using RowRecords = SRowRecords<KorDMRec::SKorDMCalItemRec>;

bool HoldsSign(const std::wstring& text) {
  return text.find(L'+') != std::wstring::npos || text.find(L'-') != std::wstring::npos;
}

/// "text*count" and the counter word, the text in brackets where it is a sum.
std::wstring Times(const std::wstring& text, int count, const std::wstring& counter) {
  const std::wstring factor = HoldsSign(text) ? L"(" + text + L")" : text;
  return factor + L"*" + NumberText(count) + counter;
}

Texts BillRow(const SNode& bill, const Report::SResultData& sum) {
  Texts row = {L"@QD", bill.code, bill.name, bill.feature};
  AppendQuantity(row, sum);
  return row;
}

Texts QuotaRow(const SNode& quota, const Report::SResultData& sum) {
  Texts row = {L"@DE", quota.code, quota.name};
  AppendQuantity(row, sum);
  return row;
}

Texts NumberedChapterRow(const SNode& chapter) {
  return {L"@C", chapter.name, NumberText(chapter.sortId)};
}

SQdDeBlock ItemBlock(const SNode& item, const Texts& cells) {
  return {item.code, item.name, item.feature, item.unit, cells};
}

/// Name and number of a code's chapter.
SNode ChapterOf(const SModelProject& project, const std::wstring& code, bool isQd) {
  SNode chapter;
  chapter.sortId = std::numeric_limits<int>::max();
  const auto& chapters = isQd ? project.billChapters : project.quotaChapters;
  const auto at = chapters.find(code);
  // Without bill mode the bill library stays closed.
  if (at != chapters.end() && (!isQd || project.isQdMode)) {
    chapter.sortId = at->second.number.value_or(chapter.sortId);
    const std::wstring& text = at->second.text;
    if (isQd) {
      chapter.name = text;
    } else if (text.find(L'\\') != std::wstring::npos) {
      chapter.name = UpTo(text, L"\\");
    }
  }
  if (chapter.name.empty()) {
    chapter.name = L"其他章";
  }
  return chapter;
}

}  // namespace

// Fold ----------------------------------------------------------------------------------------

void CBillQuotaModel::FoldRow(const SKorDMQdDeRow& row, const std::vector<SFoldedItem>& items) {
  const RowRecords r(Data(), row);
  SNode* node = FoldSpec(root_, r.spec);
  const SFoldedItem& first = items.front();
  const SNode chapter = ChapterOf(*project_, first.record->code, first.isQd);
  node = FoldChapter(node->children, chapter.name, chapter.sortId);
  for (const SFoldedItem& item : items) {
    const std::wstring feature = item.isQd ? numbers_.Feature(item.record->code) : L"";
    node = node == nullptr ? node : FoldQdDeItem(node->children, *item.record, feature);
  }
  node = node == nullptr ? node : FoldCategory(node->children, numbers_, r.spec.name, r.category);
  node = node == nullptr ? node : FoldAttribute(node->children, r.attr);
  node = node == nullptr ? node : FoldFloor(node->children, r.floor);
  node = node == nullptr ? node : FoldSysCode(node->children, numbers_, r.spec.name, r.sysCode);
  if (node != nullptr) {
    FoldResult(node->children, r.sgd.name, r.floor, r.calItem, r.component);
  }
}

void CBillQuotaModel::CheckIndices(const SKorDMQdDeRow& row) const {
  static_cast<void>(RowRecords(Data(), row));
}

// Walk ----------------------------------------------------------------------------------------

Texts CBillQuotaModel::Rows(const SModelRequest& request) {
  Texts rows;
  const SNode* spec = FindNode(root_, request.spec, EKind::Spec);
  if (spec == nullptr) {
    return rows;
  }
  request_ = request;
  sysCodeNames_ = NamesByLevel(request.condition.sysCodes);
  for (const std::wstring& section : Passes(request)) {
    std::set<SNumberedBlock> blocks;
    for (const SNode* chapter : NodesOf(spec->children, EKind::Chapter)) {
      Texts cells;
      if (Chapter(cells, *chapter, section) && !cells.empty()) {
        PutBlock(blocks, {chapter->sortId, cells});
      }
    }
    AppendPass(rows, request, section, Flattened(blocks));
  }
  return rows;
}

bool CBillQuotaModel::Chapter(Texts& out, const SNode& chapter, const std::wstring& section) {
  bool counted = false;
  std::set<SQdDeBlock> blocks;
  for (const SNode* item : NodesOf(chapter.children, EKind::QdDeItem)) {
    Texts cells;
    if (Item(cells, *item, section)) {
      counted = true;
    }
    if (!cells.empty()) {
      PutBlock(blocks, ItemBlock(*item, cells));
    }
  }
  if (counted && !blocks.empty()) {
    Append(out, ChapterRow(chapter));
    Append(out, Flattened(blocks));
  }
  return counted;
}

bool CBillQuotaModel::Categories(Report::SResultData& sum, Texts& blocks, const SNode& item,
                                 int level, const std::wstring& section) {
  bool counted = false;
  std::set<SNumberedBlock> ordered;
  for (const SNode* category : ChosenCategories(item.children, request_.condition.categories)) {
    Texts cells;
    if (Category(sum, cells, *category, level, section)) {
      counted = true;
    }
    if (!cells.empty()) {
      PutBlock(ordered, {category->sortId, cells});
    }
  }
  blocks = Flattened(ordered);
  return counted;
}

bool CBillQuotaModel::Category(Report::SResultData& target, Texts& out, const SNode& category,
                               int level, const std::wstring& section) {
  const bool isPipe = IsPipeType(request_.spec, category.category, category.kindName);
  const bool largerFirst = isPipe && request_.lineSortDown;
  Report::SResultData sum;
  sum.unit = target.unit;
  bool counted = false;
  std::set<SAttBlock> blocks;
  for (const SNode* attribute : NodesOf(category.children, EKind::Attribute)) {
    Texts cells;
    if (Attribute(sum, cells, *attribute, level, section)) {
      counted = true;
    }
    if (!cells.empty()) {
      PutBlock(blocks, {largerFirst, attribute->value, attribute->name, cells});
    }
  }
  if (!counted) {
    return false;
  }
  Unite(target, sum);
  if (ShowsCategories(level) && !blocks.empty()) {
    Append(out, {L"@Cg", PathOf(category)});
    Append(out, Flattened(blocks));
  }
  return true;
}

bool CBillQuotaModel::Attribute(Report::SResultData& target, Texts& out, const SNode& attribute,
                                int level, const std::wstring& section) {
  Report::SResultData sum;
  sum.unit = target.unit;
  bool counted = false;
  std::set<SFloorBlock> blocks;
  std::vector<Report::SFloorPair> pairs = request_.condition.floors;
  if (pairs.empty()) {
    for (const SNode* floor : NodesOf(attribute.children, EKind::Floor)) {
      pairs.push_back({floor->name, floor->name});
    }
  }
  for (const Report::SFloorPair& pair : pairs) {
    const SNode* floor = FindNode(attribute.children, pair.drawingFloor, EKind::Floor);
    Texts cells;
    if (floor != nullptr && Floor(sum, cells, *floor, level, pair, section)) {
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
  if (ShowsAttributes(level)) {
    Append(out, {L"@A", attribute.name, attribute.value});
    AppendQuantity(out, sum);
  }
  Append(out, Flattened(blocks));
  return true;
}

bool CBillQuotaModel::Floor(Report::SResultData& target, Texts& out, const SNode& floor, int level,
                            const Report::SFloorPair& pair, const std::wstring& section) {
  // Of equal numbers the last one in key order is walked.
  std::map<int, const SNode*> byNumber;
  for (const SNode* node : NodesOf(floor.children, EKind::SysCode)) {
    byNumber[node->sortId] = node;
  }
  Report::SResultData sum;
  sum.unit = target.unit;
  bool counted = false;
  Texts cells;
  for (const auto& [number, node] : byNumber) {
    if (SysCode(sum, cells, *node, level, firstDepth_, pair, section)) {
      counted = true;
    }
  }
  if (!counted) {
    return false;
  }
  Unite(target, sum);
  if (level >= firstDepth_ - 1) {
    Append(out, {L"@F", floor.name, pair.floor});
    AppendQuantity(out, sum);
  }
  Append(out, cells);
  return true;
}

bool CBillQuotaModel::SysCode(Report::SResultData& target, Texts& out, const SNode& node, int level,
                              int depth, const Report::SFloorPair& pair,
                              const std::wstring& section) {
  const int below = depth - firstDepth_;
  if (static_cast<std::size_t>(below) < sysCodeNames_.size() &&
      !sysCodeNames_[static_cast<std::size_t>(below)].contains(node.name)) {
    return false;
  }
  Report::SResultData sum;
  sum.unit = target.unit;
  bool counted = false;
  int lineNumber = 1;
  std::set<SNumberedBlock> blocks;
  Texts lines;
  for (const auto& [key, child] : node.children) {
    if (child->kind == EKind::SysCode) {
      Texts cells;
      if (SysCode(sum, cells, *child, level, depth + 1, pair, section)) {
        counted = true;
      }
      if (!cells.empty()) {
        PutBlock(blocks, {child->sortId, cells});
      }
    } else if (InPass(request_, *child, section)) {
      if (Result(sum, lines, *child, level, pair, lineNumber)) {
        counted = true;
      }
    }
  }
  if (!counted) {
    return false;
  }
  Unite(target, sum);
  if (depth > level || below > 2) {
    return true;
  }
  Append(out, {L"@S" + NumberText(below + 1),
               node.name + numbers_.SysCodeRemark(request_.spec, node.fullName)});
  AppendQuantityAndComponents(out, sum);
  Append(out, Flattened(blocks));
  Append(out, lines);
  return true;
}

bool CBillQuotaModel::Result(Report::SResultData& target, Texts& lines, const SNode& result,
                             int level, const Report::SFloorPair& pair, int& lineNumber) {
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
  const int floors = FloorCount(floorText);
  Report::SResultData own;
  own.unit = target.unit;
  own.quantity = ComponentCount(result) * result.quantities[0] * floors;
  own.components = ComponentText(result) + L"$";
  Unite(target, own);
  if (level == firstDepth_ + 3) {
    std::wstring text = result.expression;
    if (result.components.size() >= 2) {
      text = Times(text, static_cast<int>(result.components.size()), L"件");
    }
    if (floors > 1) {
      text = Times(text, floors, L"层");
    }
    Append(lines, {L"@L", L"回路" + NumberText(lineNumber), text});
    AppendQuantityAndComponents(lines, own);
    ++lineNumber;
  }
  return true;
}

// Bill and quota summary ----------------------------------------------------------------------

CQdDeHzModel::CQdDeHzModel(const SModelProject& project) : CBillQuotaModel(project, 4) {
  for (const SKorDMQdDeRow& row : Data().rows) {
    CheckIndices(row);
    const auto& bill = At(Data().qdItems, row.qdItem);
    const auto& quota = At(Data().deItems, row.deItem);
    if (project.qdCode != bill.library || (!row.isQd && project.qdDeCode != quota.library)) {
      continue;
    }
    FoldRow(row, {{&bill, true}, {&quota, false}});
  }
}

Texts CQdDeHzModel::ChapterRow(const SNode& chapter) const {
  return NumberedChapterRow(chapter);
}

bool CQdDeHzModel::Item(Texts& out, const SNode& item, const std::wstring& section) {
  bool counted = false;
  std::set<SQdDeBlock> blocks;
  for (const SNode* quota : NodesOf(item.children, EKind::QdDeItem)) {
    Report::SResultData sum;
    sum.unit = quota->unit;
    const bool isOwn = quota->code.empty() && quota->name.empty();
    Texts cells;
    if (!Quota(sum, cells, *quota, isOwn ? 0 : Level(), section)) {
      continue;
    }
    counted = true;
    if (isOwn) {
      Append(out, BillRow(item, sum));
    } else if (!cells.empty()) {
      PutBlock(blocks, ItemBlock(*quota, cells));
    }
  }
  Append(out, Flattened(blocks));
  return counted;
}

bool CQdDeHzModel::Quota(Report::SResultData& sum, Texts& out, const SNode& quota, int level,
                         const std::wstring& section) {
  Texts kinds;
  if (!Categories(sum, kinds, quota, level, section)) {
    return false;
  }
  if (level != 0 && !(quota.code.empty() && quota.name.empty())) {
    Append(out, QuotaRow(quota, sum));
    Append(out, kinds);
  }
  return true;
}

// Bill summary --------------------------------------------------------------------------------

CQdHzModel::CQdHzModel(const SModelProject& project) : CBillQuotaModel(project, 3) {
  for (const SKorDMQdDeRow& row : Data().rows) {
    if (!row.isQd) {
      continue;
    }
    const auto& bill = At(Data().qdItems, row.qdItem);
    if (project.qdCode == bill.library) {
      FoldRow(row, {{&bill, true}});
    }
  }
}

Texts CQdHzModel::ChapterRow(const SNode& chapter) const {
  return NumberedChapterRow(chapter);
}

bool CQdHzModel::Item(Texts& out, const SNode& item, const std::wstring& section) {
  Report::SResultData sum;
  sum.unit = item.unit;
  Texts kinds;
  if (!Categories(sum, kinds, item, Level(), section)) {
    return false;
  }
  Append(out, BillRow(item, sum));
  Append(out, kinds);
  return true;
}

// Quota summary -------------------------------------------------------------------------------

CDeHzModel::CDeHzModel(const SModelProject& project) : CBillQuotaModel(project, 3) {
  for (const SKorDMQdDeRow& row : Data().rows) {
    if (!row.isQd && Takes(project, row)) {
      FoldRow(row, {{&At(Data().deItems, row.deItem), false}});
    }
  }
}

bool CDeHzModel::Takes(const SModelProject& project, const SKorDMQdDeRow& row) const {
  const auto& quota = At(Data().deItems, row.deItem);
  if (project.qdDeMode != 0) {
    return project.deCode == quota.library;
  }
  const auto& bill = At(Data().qdItems, row.qdItem);
  return project.qdDeCode == quota.library && project.qdCode == bill.library;
}

Texts CDeHzModel::ChapterRow(const SNode& chapter) const {
  return {L"@C", chapter.name};
}

bool CDeHzModel::Item(Texts& out, const SNode& item, const std::wstring& section) {
  Report::SResultData sum;
  sum.unit = item.unit;
  Texts kinds;
  if (!Categories(sum, kinds, item, Level(), section)) {
    return false;
  }
  Append(out, QuotaRow(item, sum));
  Append(out, kinds);
  return true;
}

}  // namespace tally_model
