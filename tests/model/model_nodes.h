// The node tree of the models, and the look-ups that fold a record into it.
//
// One class of node serves for every level; `kind` tells the levels apart, and a member that a kind
// does not name stays empty. The look-ups find the child with the right key or make it. They answer
// null where the key holds a node of another kind.
#ifndef TALLY_TESTS_MODEL_MODEL_NODES_H_
#define TALLY_TESTS_MODEL_MODEL_NODES_H_

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/model_texts.h"
#include "model/random_project.h"
#include "result_store/db_records.h"

namespace tally_model {

enum class EKind {
  Spec,       ///< name
  Type,       ///< category (a path), name
  Category,   ///< sortId, category, kindName
  Attribute,  ///< name, value
  CalItem,    ///< name, unit, text3, text4
  PjCalItem,  ///< text1, name, unit
  Floor,      ///< name, floorText
  SysCode,    ///< sortId, name, fullName
  Result,     ///< quantities, expression, floorText, sgdName, components
  Chapter,    ///< name, sortId
  QdDeItem,   ///< code, name, unit, feature
  Group,      ///< sortId, number2 and three texts of a paint, duct or insulation block
};

struct SNode {
  EKind kind = EKind::Spec;
  std::wstring key;  ///< in the parent's children
  std::map<std::wstring, std::unique_ptr<SNode>> children;

  int sortId = 0;
  int number2 = 0;
  std::wstring name;
  std::wstring value;
  std::wstring category;
  std::wstring kindName;
  std::wstring fullName;
  std::wstring unit;
  std::wstring text1;
  std::wstring text2;
  std::wstring text3;
  std::wstring text4;
  std::wstring code;
  std::wstring feature;
  std::wstring expression;
  std::wstring floorText;
  std::wstring sgdName;
  double quantities[4] = {0, 0, 0, 0};  ///< a plain result has the first alone
  Texts components;
};

using NodeMap = std::map<std::wstring, std::unique_ptr<SNode>>;

/// The child under that key if it is of that kind, else null.
const SNode* FindNode(const NodeMap& children, const std::wstring& key, EKind kind);
/// The children of that kind in key order.
std::vector<const SNode*> NodesOf(const NodeMap& children, EKind kind);
/// "category\kind".
std::wstring PathOf(const SNode& category);
/// Each non-empty component of a result, followed by "$".
std::wstring ComponentText(const SNode& result);
/// How many components a result has, as a factor.
double ComponentCount(const SNode& result);
/// Descends by one system code name after the other; null where one is missing.
const SNode* FindSysCode(const SNode& node, const std::wstring& path);

/// A record by its index. Throws std::out_of_range for one outside the vector.
template <class TRecord>
const TRecord& At(const std::vector<TRecord>& records, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= records.size()) {
    throw std::out_of_range("index of a row");
  }
  return records[static_cast<std::size_t>(index)];
}

/// The records of a row that every result set has. Throws std::out_of_range where one of the
/// indices lies outside its vector.
template <class TCalItem>
struct SRowRecords {
  template <class TData, class TRow>
  SRowRecords(const TData& data, const TRow& row)
      : sgd(At(data.sgds, row.sgd)),
        floor(At(data.floors, row.floor)),
        component(At(data.components, row.component)),
        spec(At(data.specs, row.spec)),
        category(At(data.categories, row.category)),
        attr(At(data.attrs, row.attr)),
        sysCode(At(data.sysCodes, row.sysCode)),
        calItem(At(data.calItems, row.calItem)) {}

  const KorDMRec::SKorDMSgdRec& sgd;
  const KorDMRec::SKorDMFloorRec& floor;
  const KorDMRec::SKorDMComponentRec& component;
  const KorDMRec::SKorDMSpecRec& spec;
  const KorDMRec::SKorDMCategoryRec& category;
  const KorDMRec::SKorDMAttrRec& attr;
  const KorDMRec::SKorDMSysCodeRec& sysCode;
  const TCalItem& calItem;
};

/// What the project numbers, by looking through its records from the first to the last.
class CModelNumbers {
 public:
  explicit CModelNumbers(const SModelProject& project) : project_(&project) {}

  int CategorySortId(const std::wstring& spec, const std::wstring& path) const;
  /// Of the first path in text order that begins with the category.
  int BigCategorySortId(const std::wstring& spec, const std::wstring& category) const;
  int SysCodeSortId(const std::wstring& spec, const std::wstring& path) const;
  /// The remark of the path up to its first "\*" in brackets; empty where there is none.
  std::wstring SysCodeRemark(const std::wstring& spec, const std::wstring& path) const;
  /// The overview's number of a kind.
  int OverviewSortId(const std::wstring& spec, const std::wstring& category,
                     const std::wstring& kind) const;
  /// Marks of a bill item.
  std::wstring Feature(const std::wstring& code) const;

 private:
  const KorDMRec::SKorDMAllSysCodeRec* FindRecord(const std::wstring& spec,
                                                  const std::wstring& path) const;

  const SModelProject* project_;
};

// Look-ups ------------------------------------------------------------------------------------

SNode* FoldSpec(NodeMap& children, const KorDMRec::SKorDMSpecRec& record);
SNode* FoldFloor(NodeMap& children, const KorDMRec::SKorDMFloorRec& record);
SNode* FoldType(NodeMap& children, const std::wstring& category, const std::wstring& name);
SNode* FoldCategory(NodeMap& children, const CModelNumbers& numbers, const std::wstring& spec,
                    const KorDMRec::SKorDMCategoryRec& record);
/// The deepest node of the chain; null for the empty path.
SNode* FoldSysCode(NodeMap& children, const CModelNumbers& numbers, const std::wstring& spec,
                   const KorDMRec::SKorDMSysCodeRec& record);
/// Filed under the name alone.
SNode* FoldAttribute(NodeMap& children, const KorDMRec::SKorDMAttrRec& record);
/// Filed under name and value; for the paint, duct and insulation tables.
SNode* FoldWholeAttribute(NodeMap& children, const KorDMRec::SKorDMAttrRec& record);
SNode* FoldPjAttribute(NodeMap& children, const std::wstring& spec, const std::wstring& category,
                       const KorDMRec::SKorDMAttrRec& record);
SNode* FoldCalItem(NodeMap& children, const KorDMRec::SKorDMCalItemRec& record);
SNode* FoldCalItem(NodeMap& children, const KorDMRec::SKorDMCalItemDetailQRec& record);
SNode* FoldPjCalItem(NodeMap& children, const KorDMRec::SKorDMPjCalItemRec& record);
SNode* FoldResult(NodeMap& children, const std::wstring& sgdName,
                  const KorDMRec::SKorDMFloorRec& floor, const KorDMRec::SKorDMCalItemRec& item,
                  const KorDMRec::SKorDMComponentRec& component);
SNode* FoldResult(NodeMap& children, const std::wstring& sgdName,
                  const KorDMRec::SKorDMFloorRec& floor,
                  const KorDMRec::SKorDMCalItemDetailQRec& item,
                  const KorDMRec::SKorDMComponentRec& component);
/// A fitting's result, which counts one for each component.
SNode* FoldPjResult(NodeMap& children, const std::wstring& sgdName,
                    const KorDMRec::SKorDMFloorRec& floor,
                    const KorDMRec::SKorDMComponentRec& component);
SNode* FoldChapter(NodeMap& children, const std::wstring& name, int number);
SNode* FoldQdDeItem(NodeMap& children, const KorDMRec::SKorDMQdDeRec& record,
                    const std::wstring& feature);
/// A block of the paint, duct or insulation table, under a key of the table's own.
SNode* FoldGroup(NodeMap& children, const std::wstring& key, const std::wstring& text1,
                 const std::wstring& text2, const std::wstring& text3);

// Selections ----------------------------------------------------------------------------------

/// The component kinds that a condition takes, in the order of the walk: all; or for each entry of
/// the set those whose path begins with a single part, or the one under a path of two parts. A kind
/// that two entries take comes twice.
std::vector<const SNode*> ChosenCategories(const NodeMap& children,
                                           const std::set<std::wstring>& categories);
/// The sections that a request goes through: the displayed ones in text order, the empty text where
/// there are none. Without a split by section only the first.
Texts Passes(const SModelRequest& request);
/// Whether results of the section count at all.
bool CountsSection(const SModelRequest& request, const std::wstring& sgdName);
/// Whether the pass of `section` takes a result.
bool InPass(const SModelRequest& request, const SNode& result, const std::wstring& section);
/// Appends the rows of a pass, under "@P" and the section where the request splits by section and
/// there are rows.
void AppendPass(Texts& rows, const SModelRequest& request, const std::wstring& section,
                const Texts& cells);

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_MODEL_NODES_H_
