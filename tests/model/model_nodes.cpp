#include "model/model_nodes.h"

#include <algorithm>

#include "model/model_tables.h"

namespace tally_model {
namespace {

constexpr int kUnknown = 1000000;

/// The child under the key, made and filled by `fill` if it is not there yet.
template <class TFill>
SNode* Fold(NodeMap& children, const std::wstring& key, EKind kind, TFill&& fill) {
  const auto at = children.find(key);
  if (at != children.end()) {
    return at->second->kind == kind ? at->second.get() : nullptr;
  }
  auto made = std::make_unique<SNode>();
  made->kind = kind;
  made->key = key;
  fill(*made);
  SNode* node = made.get();
  children[key] = std::move(made);
  return node;
}

SNode* FoldSysCodeName(NodeMap& children, const CModelNumbers& numbers, const std::wstring& spec,
                       const std::wstring& name, const std::wstring& fullName) {
  return Fold(children, name, EKind::SysCode, [&](SNode& node) {
    node.name = name;
    node.fullName = fullName;
    node.sortId = numbers.SysCodeSortId(spec, UpTo(fullName, L"\\*"));
  });
}

/// `fill` sets the quantities and the expression of a new node.
template <class TFill>
SNode* FoldAnyResult(NodeMap& children, const std::wstring& key, const std::wstring& sgdName,
                     const KorDMRec::SKorDMFloorRec& floor,
                     const KorDMRec::SKorDMComponentRec& component, TFill&& fill) {
  SNode* node = Fold(children, key, EKind::Result, [&](SNode& made) {
    made.sgdName = sgdName;
    made.floorText = floor.floorText;
    fill(made);
  });
  if (node != nullptr) {
    node->components.push_back(component.name);
  }
  return node;
}

std::wstring ResultKey(const std::wstring& sgdName, const KorDMRec::SKorDMFloorRec& floor,
                       const std::wstring& expression, double quantity) {
  return sgdName + floor.floorText + L"@" + expression + L"@" + NumberText(quantity);
}

}  // namespace

const SNode* FindNode(const NodeMap& children, const std::wstring& key, EKind kind) {
  const auto at = children.find(key);
  return at != children.end() && at->second->kind == kind ? at->second.get() : nullptr;
}

std::vector<const SNode*> NodesOf(const NodeMap& children, EKind kind) {
  std::vector<const SNode*> nodes;
  for (const auto& [key, node] : children) {
    if (node->kind == kind) {
      nodes.push_back(node.get());
    }
  }
  return nodes;
}

std::wstring PathOf(const SNode& category) {
  return category.category + L"\\" + category.kindName;
}

std::wstring ComponentText(const SNode& result) {
  std::wstring text;
  for (const std::wstring& component : result.components) {
    if (!component.empty()) {
      text += component + L"$";
    }
  }
  return text;
}

double ComponentCount(const SNode& result) {
  return static_cast<double>(result.components.size());
}

const SNode* FindSysCode(const SNode& node, const std::wstring& path) {
  const Texts names = SplitText(path, L'\\');
  const SNode* at = names.empty() ? nullptr : &node;
  for (const std::wstring& name : names) {
    if (at != nullptr) {
      at = FindNode(at->children, name, EKind::SysCode);
    }
  }
  return at;
}

int CModelNumbers::CategorySortId(const std::wstring& spec, const std::wstring& path) const {
  for (const auto& record : project_->records.smallIndex) {
    if (record.spec == spec && record.path == path) {
      return record.sortId;
    }
  }
  return kUnknown;
}

int CModelNumbers::BigCategorySortId(const std::wstring& spec, const std::wstring& category) const {
  std::set<std::wstring> paths;
  for (const auto& record : project_->records.smallIndex) {
    if (record.spec == spec && BeginsWith(record.path, category)) {
      paths.insert(record.path);
    }
  }
  return paths.empty() ? kUnknown : CategorySortId(spec, *paths.begin());
}

const KorDMRec::SKorDMAllSysCodeRec* CModelNumbers::FindRecord(const std::wstring& spec,
                                                               const std::wstring& path) const {
  for (const auto& record : project_->records.sysCodes) {
    if (record.spec == spec && ReplaceAll(record.sysCode, L'&', L'\\') == path) {
      return &record;
    }
  }
  return nullptr;
}

int CModelNumbers::SysCodeSortId(const std::wstring& spec, const std::wstring& path) const {
  const auto* record = FindRecord(spec, path);
  return record == nullptr ? kUnknown : record->sortId;
}

std::wstring CModelNumbers::SysCodeRemark(const std::wstring& spec,
                                          const std::wstring& path) const {
  const auto* record = FindRecord(spec, UpTo(path, L"\\*"));
  return record == nullptr || record->remark.empty() ? L"" : L"(" + record->remark + L")";
}

int CModelNumbers::OverviewSortId(const std::wstring& spec, const std::wstring& category,
                                  const std::wstring& kind) const {
  const SOverviewGroup* group = OverviewGroup(spec, category, kind);
  return group == nullptr ? CategorySortId(spec, category + L"\\" + kind) : group->sortId;
}

std::wstring CModelNumbers::Feature(const std::wstring& code) const {
  const auto at = project_->marks.find(code);
  std::wstring feature;
  if (at != project_->marks.end()) {
    for (std::size_t i = 0; i < at->second.size(); i += 3) {
      feature += at->second[i] + L": " + at->second[i + 1] + L"\n";
    }
  }
  return feature;
}

SNode* FoldSpec(NodeMap& children, const KorDMRec::SKorDMSpecRec& record) {
  return Fold(children, record.name, EKind::Spec, [&](SNode& node) { node.name = record.name; });
}

SNode* FoldFloor(NodeMap& children, const KorDMRec::SKorDMFloorRec& record) {
  return Fold(children, record.name, EKind::Floor, [&](SNode& node) {
    node.name = record.name;
    node.floorText = record.floorText;
  });
}

SNode* FoldType(NodeMap& children, const std::wstring& category, const std::wstring& name) {
  return Fold(children, name, EKind::Type, [&](SNode& node) {
    node.category = category;
    node.name = name;
  });
}

SNode* FoldCategory(NodeMap& children, const CModelNumbers& numbers, const std::wstring& spec,
                    const KorDMRec::SKorDMCategoryRec& record) {
  const std::wstring key = record.category + L"\\" + record.kind;
  return Fold(children, key, EKind::Category, [&](SNode& node) {
    node.category = record.category;
    node.kindName = record.kind;
    node.sortId = numbers.CategorySortId(spec, key);
  });
}

SNode* FoldSysCode(NodeMap& children, const CModelNumbers& numbers, const std::wstring& spec,
                   const KorDMRec::SKorDMSysCodeRec& record) {
  SNode* node = nullptr;
  std::wstring fullName;
  bool first = true;
  for (const std::wstring& name : SplitText(CompletedSysCode(record.name), L'\\')) {
    fullName = first ? name : fullName + L"\\" + name;
    node = FoldSysCodeName(first ? children : node->children, numbers, spec, name, fullName);
    if (node == nullptr) {
      return nullptr;
    }
    first = false;
  }
  return node;
}

SNode* FoldAttribute(NodeMap& children, const KorDMRec::SKorDMAttrRec& record) {
  return Fold(children, record.name, EKind::Attribute, [&](SNode& node) {
    node.name = record.name;
    node.value = record.value;
  });
}

SNode* FoldWholeAttribute(NodeMap& children, const KorDMRec::SKorDMAttrRec& record) {
  return Fold(children, record.name + record.value, EKind::Attribute, [&](SNode& node) {
    node.name = record.name;
    node.value = record.value;
  });
}

SNode* FoldPjAttribute(NodeMap& children, const std::wstring& spec, const std::wstring& category,
                       const KorDMRec::SKorDMAttrRec& record) {
  const std::wstring key = PipeLineName(record.name, record.value, spec, category);
  return Fold(children, key, EKind::Attribute, [&](SNode& node) { node.name = key; });
}

SNode* FoldCalItem(NodeMap& children, const KorDMRec::SKorDMCalItemRec& record) {
  return Fold(children, record.name + L"@" + record.unit, EKind::CalItem, [&](SNode& node) {
    node.name = record.name;
    node.unit = record.unit;
    node.text3 = record.text3;
    node.text4 = record.text4;
  });
}

SNode* FoldCalItem(NodeMap& children, const KorDMRec::SKorDMCalItemDetailQRec& record) {
  return Fold(children, record.name + L"@" + record.unit, EKind::CalItem, [&](SNode& node) {
    node.name = record.name;
    node.unit = record.unit;
  });
}

SNode* FoldPjCalItem(NodeMap& children, const KorDMRec::SKorDMPjCalItemRec& record) {
  return Fold(children, record.text1 + L"@" + record.name, EKind::PjCalItem, [&](SNode& node) {
    node.text1 = record.text1;
    node.name = record.name;
    node.unit = record.unit;
  });
}

SNode* FoldResult(NodeMap& children, const std::wstring& sgdName,
                  const KorDMRec::SKorDMFloorRec& floor, const KorDMRec::SKorDMCalItemRec& item,
                  const KorDMRec::SKorDMComponentRec& component) {
  const std::wstring key = ResultKey(sgdName, floor, item.expression, item.quantity);
  return FoldAnyResult(children, key, sgdName, floor, component, [&](SNode& node) {
    node.expression = item.expression;
    node.quantities[0] = item.quantity;
  });
}

SNode* FoldResult(NodeMap& children, const std::wstring& sgdName,
                  const KorDMRec::SKorDMFloorRec& floor,
                  const KorDMRec::SKorDMCalItemDetailQRec& item,
                  const KorDMRec::SKorDMComponentRec& component) {
  const std::wstring key = ResultKey(sgdName, floor, item.expression, item.quantity1);
  return FoldAnyResult(children, key, sgdName, floor, component, [&](SNode& node) {
    node.expression = item.expression;
    node.quantities[0] = item.quantity1;
    node.quantities[1] = item.quantity2;
    node.quantities[2] = item.quantity3;
    node.quantities[3] = item.quantity4;
  });
}

SNode* FoldPjResult(NodeMap& children, const std::wstring& sgdName,
                    const KorDMRec::SKorDMFloorRec& floor,
                    const KorDMRec::SKorDMComponentRec& component) {
  return FoldAnyResult(children, sgdName + floor.floorText, sgdName, floor, component,
                       [](SNode& node) { node.quantities[0] = 1; });
}

SNode* FoldChapter(NodeMap& children, const std::wstring& name, int number) {
  return Fold(children, NumberText(number) + L"@" + name, EKind::Chapter, [&](SNode& node) {
    node.name = name;
    node.sortId = number;
  });
}

SNode* FoldQdDeItem(NodeMap& children, const KorDMRec::SKorDMQdDeRec& record,
                    const std::wstring& feature) {
  const std::wstring key = record.code + L"@" + record.name + L"@" + feature + L"@" + record.unit;
  return Fold(children, key, EKind::QdDeItem, [&](SNode& node) {
    node.code = record.code;
    node.name = record.name;
    node.unit = record.unit;
    node.feature = feature;
  });
}

SNode* FoldGroup(NodeMap& children, const std::wstring& key, const std::wstring& text1,
                 const std::wstring& text2, const std::wstring& text3) {
  return Fold(children, key, EKind::Group, [&](SNode& node) {
    node.text1 = text1;
    node.text2 = text2;
    node.text3 = text3;
  });
}

std::vector<const SNode*> ChosenCategories(const NodeMap& children,
                                           const std::set<std::wstring>& categories) {
  const std::vector<const SNode*> all = NodesOf(children, EKind::Category);
  if (categories.empty()) {
    return all;
  }
  std::vector<const SNode*> chosen;
  for (const std::wstring& entry : categories) {
    const std::size_t parts = SplitText(entry, L'\\').size();
    for (const SNode* node : all) {
      if ((parts == 1 && BeginsWith(node->key, entry)) || (parts == 2 && node->key == entry)) {
        chosen.push_back(node);
      }
    }
  }
  return chosen;
}

Texts Passes(const SModelRequest& request) {
  const std::set<std::wstring> shown(request.dispSgd.begin(), request.dispSgd.end());
  Texts passes(shown.begin(), shown.end());
  if (passes.empty()) {
    passes.emplace_back();
  }
  if (request.bySgd == 0) {
    passes.resize(1);
  }
  return passes;
}

bool CountsSection(const SModelRequest& request, const std::wstring& sgdName) {
  return !request.isBySgd || std::find(request.dispSgd.begin(), request.dispSgd.end(), sgdName) !=
                                 request.dispSgd.end();
}

bool InPass(const SModelRequest& request, const SNode& result, const std::wstring& section) {
  return request.bySgd == 0 || result.sgdName == section;
}

void AppendPass(Texts& rows, const SModelRequest& request, const std::wstring& section,
                const Texts& cells) {
  if (request.bySgd != 0 && !cells.empty()) {
    Append(rows, {L"@P", section});
  }
  Append(rows, cells);
}

}  // namespace tally_model
