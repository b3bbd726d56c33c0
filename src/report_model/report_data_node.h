// The nodes of a report's tree. A report folds its result records into them once; every request
// walks the finished tree. Nodes come into being through the look-ups of CReportDataMethod alone.
#ifndef TALLY_REPORT_MODEL_REPORT_DATA_NODE_H_
#define TALLY_REPORT_MODEL_REPORT_DATA_NODE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/prefetch.h"
#include "report_model/few_items.h"
#include "report_model/floor_grade.h"
#include "report_model/narrow_order.h"
#include "report_model/node_key.h"
#include "report_model/node_map.h"
#include "report_model/report_types.h"
#include "report_model/text_ref.h"

/// The class of a node, for the checked down-cast NodeAs.
enum class ENodeKind : unsigned char {
  Type,
  Spec,
  Floor,
  Category,
  Attribute,
  SysCode,
  CalItem,
  PjCalItem,
  Result,
  ResultDetail,
  DuctHType,
  BrushPaint,
  PipeJRBW,
  Chapter,
  QdDeItem,
};

class IReportDataNode {
 public:
  /// Frees the children as ClearChildren does.
  virtual ~IReportDataNode() = default;
  /// The node's identity as text. Not always the key under which its parent holds it.
  virtual std::wstring GetKey() const = 0;
  /// The key under which its parent holds the node; views the node's texts.
  virtual CNodeKey GetFiledKey() const = 0;
  /// Frees all that lies below the node, however deep. The node can be filled again.
  virtual void ClearChildren() { children.clear(); }

  IReportDataNode(const IReportDataNode&) = delete;
  IReportDataNode& operator=(const IReportDataNode&) = delete;

  Report::NodeMap children;
  const ENodeKind nodeKind;

 protected:
  explicit IReportDataNode(ENodeKind kind) : nodeKind(kind) {}
};

/// The node as a `TNode`, or null where it is null or of another class.
template <class TNode>
const TNode* NodeAs(const IReportDataNode* node) {
  return node != nullptr && node->nodeKind == TNode::kKind ? static_cast<const TNode*>(node)
                                                           : nullptr;
}
template <class TNode>
TNode* NodeAs(IReportDataNode* node) {
  return node != nullptr && node->nodeKind == TNode::kKind ? static_cast<TNode*>(node) : nullptr;
}
template <class TNode>
const TNode* NodeAs(const std::unique_ptr<IReportDataNode>& node) {
  return NodeAs<TNode>(static_cast<const IReportDataNode*>(node.get()));
}

/// The child under `key` as a `TNode`; null where there is none or it is of another class.
template <class TNode, class TKey>
const TNode* FindChild(const Report::NodeMap& children, const TKey& key) {
  const auto at = children.find(key);
  return at == children.end() ? nullptr : NodeAs<TNode>(at.Node());
}

/// Calls `visit(const TNode&)` for each child of that class, in key order.
template <class TNode, class TVisit>
void ForEachChild(const Report::NodeMap& children, TVisit&& visit) {
  for (const auto& child : children.InOrder()) {
    if (const auto* node = NodeAs<TNode>(child)) {
      visit(*node);
    }
  }
}

/// Frees a whole tree without recursion, so that its depth cannot exhaust the stack.
inline void ClearNodes(Report::NodeMap& nodes) {
  nodes.clear();
}

/// Gives a node class its kind.
template <ENodeKind kNodeKind>
class TReportDataNode : public IReportDataNode {
 public:
  static constexpr ENodeKind kKind = kNodeKind;

 protected:
  TReportDataNode() : IReportDataNode(kNodeKind) {}
};

/// What a request that leaves nothing out counts below a node: no floor, no system code chosen, all
/// sections together. Made at the fold by the reports that use it, in the order of the walk.
struct SWholeSum {
  double quantity = 0;
  bool counted = false;

  void Add(const SWholeSum& part) {
    if (part.counted) {
      quantity += part.quantity;
      counted = true;
    }
  }
};

class CSummaryRows;

/// One result of the detail set in the paint, duct and insulation tables.
struct SDetailSum {
  std::array<double, 4> quantities{};  ///< of all components on one floor
  std::wstring_view references;        ///< component text and one more "$", in SDetailSums::text
  int floorCount = 0;

  /// On all its floors.
  std::array<double, 4> Quantities() const {
    return {quantities[0] * floorCount, quantities[1] * floorCount, quantities[2] * floorCount,
            quantities[3] * floorCount};
  }
};

/// What a filter asks of it. The texts belong to the result set.
struct SDetailSource {
  CTextRef floorText;
  CTextRef sgdName;
};

/// The places of an attribute among those of its report, smaller numbers first and larger numbers
/// first; -1 where they are not known to have an order. Equal attributes share a place.
struct SAttPlaces {
  int ascending = -1;
  int descending = -1;
};

class CReportCategory;
class CReportSysCode;

/// What a walk of these tables reads of a calculation item.
struct SDetailItem {
  const CReportSysCode* sysCode = nullptr;
  const CReportCategory* category = nullptr;
  std::shared_ptr<const SAttSortKey> attribute;
  SAttPlaces attPlaces;
  int namePlace = -1;                  ///< of its name as a narrow text, where these all differ
  const std::wstring* name = nullptr;  ///< one object for each text of the report
  const std::wstring* unit = nullptr;  ///< likewise
  std::size_t first = 0;               ///< its results in SDetailSums::details
  std::size_t last = 0;                ///< behind the last one
};

/// The items below a group of these tables in the order of the walk, and their results side by
/// side: item name by item name, those of one in the order of the walk. The references follow on
/// each other in one text. They stand for the nodes below the system codes.
struct SDetailSums {
  std::vector<std::shared_ptr<const CReportCategory>> categories;  ///< of the items, each once
  std::vector<SDetailItem> items;
  std::vector<SDetailSum> details;
  std::vector<SDetailSource> sources;  ///< of the details
  std::wstring text;
};

/// Some of the entries of SDetailSums or CSystemBookItems, or of the rows of CSummaryRows, that
/// stand side by side.
struct SDetailItems {
  std::size_t first = 0;
  std::size_t last = 0;  ///< behind the last one
};

/// Type heading of the calculation books, group of the overview. Key: `name`.
class CReportType final : public TReportDataNode<ENodeKind::Type> {
 public:
  std::wstring GetKey() const override { return name; }
  CNodeKey GetFiledKey() const override { return {name}; }
  std::wstring category;  ///< path "category\kind" of the first kind filed under the type
  std::wstring name;
};

class CKeptAnswer;
class CSystemBookItems;
struct SBookFigures;
struct SFloorFigures;

/// Discipline. Key: `name`.
class CReportSpec final : public TReportDataNode<ENodeKind::Spec> {
 public:
  std::wstring GetKey() const override { return name; }
  CNodeKey GetFiledKey() const override { return {name}; }
  std::wstring name;
  std::shared_ptr<const CSystemBookItems> bookItems;  ///< in the system calculation book
  std::shared_ptr<const SBookFigures> figures;        ///< in the member calculation book
  /// To the last request that left nothing out, in the reports that keep it.
  mutable std::shared_ptr<const CKeptAnswer> answer;
};

/// Floor. Key: `name`.
class CReportFloor final : public TReportDataNode<ENodeKind::Floor> {
 public:
  std::wstring GetKey() const override { return name; }
  CNodeKey GetFiledKey() const override { return {name}; }
  // The texts belong to the result set, which outlives the tree.
  CTextRef floorText;  ///< floor expression of the first record
  CTextRef name;
  SFloorGrade grade;  ///< of the name
  SWholeSum whole;
  /// That lie below, in the paint, duct and insulation tables. In the summaries, its rows.
  SDetailItems items;
  std::shared_ptr<const SFloorFigures> figures;  ///< in the floor calculation book
};

/// What the member and floor books know of a component kind.
struct SKindFigures {
  std::size_t first = 0;  ///< its attributes in SBookFigures::attributes
  std::size_t last = 0;   ///< behind the last one
  bool isLineWork = false;
};

class CReportAttribute;
class CReportPjCalItem;

/// A fitting as the walk of its summary reads it; made at the fold.
struct SFitting {
  const CReportAttribute* attribute = nullptr;
  const CReportPjCalItem* item = nullptr;
  std::wstring_view line;  ///< the attribute's name, one text for nodes of one record
  std::wstring_view text1;
  std::wstring_view name;
  std::wstring_view unit;
  SAttPlaces linePlaces;
  /// Place of the last three texts among those of the report, in narrow order, and of the component
  /// category among those of the discipline; -1 where there is no such order.
  int place = -1;
  int categoryPlace = -1;
  bool hasFloorsText = true;  ///< whether all results have the floor text of their floor's node
  double quantity = 0;        ///< of all results
  std::wstring references;    ///< of all results: component text and one more "$" of each
};

/// Component kind. Key: `category` + "\" + `kind`.
class CReportCategory final : public TReportDataNode<ENodeKind::Category> {
 public:
  std::wstring GetKey() const override { return category + L"\\" + kind; }
  CNodeKey GetFiledKey() const override { return {category, L"\\", kind}; }
  int sortId = 0;  ///< CTallyDataMng::GetCategorySortId at the fold
  std::wstring category;
  std::wstring kind;
  std::vector<SFitting> fittings;  ///< that lie below, in the fitting summary
  SKindFigures figures;
};

/// Attribute. Filed under `name`, or under `name` + `value` (CReportDataMethod::GetAttribute).
class CReportAttribute final : public TReportDataNode<ENodeKind::Attribute> {
 public:
  std::wstring GetKey() const override { return name; }
  CNodeKey GetFiledKey() const override {
    return filedByBoth ? CNodeKey{name, value} : CNodeKey{name};
  }
  bool filedByBoth = false;
  std::wstring name;
  std::wstring value;
  /// What rows of this attribute are sorted by; made at the fold, shared by nodes of one record.
  std::shared_ptr<const SAttSortKey> sortKey;
  SWholeSum whole;
  /// Of the floors below, in the summaries; made for the first request that shows them.
  mutable std::shared_ptr<const CSummaryRows> rows;
  SAttPlaces places;  ///< by name in natural order, in the reports that use it
};

/// One level of a system code. Filed under `name`; GetKey is the sort number.
class CReportSysCode final : public TReportDataNode<ENodeKind::SysCode> {
 public:
  std::wstring GetKey() const override;
  CNodeKey GetFiledKey() const override { return {name}; }
  int sortId = 0;  ///< CTallyDataMng::GetSysCodeSortId at the fold
  // The texts belong to the store.
  CTextRef name;      ///< of this level alone
  CTextRef fullName;  ///< path from the first level, joined by "\"
  /// Remark of `fullName` up to its first "\*" (CTallyDataMng::GetSysCodeRemark), without brackets.
  CTextRef remark;
  /// Nodes that it does not own; null while there are none.
  std::unique_ptr<std::map<std::wstring, IReportDataNode*>> extra;
  SWholeSum whole;            ///< of children, the first ones to come
  std::size_t wholeSize = 0;  ///< how many these are

  /// Whether `whole` counts all that lies below.
  bool HasWhole() const { return wholeSize > 0 && wholeSize == children.size(); }

  SDetailItems items;  ///< that lie below: paint, duct and insulation tables, system book
};

/// Calculation item. Key: `name` + "@" + `unit`.
class CReportCalItem final : public TReportDataNode<ENodeKind::CalItem> {
 public:
  std::wstring GetKey() const override { return name.Text() + L"@" + unit.Text(); }
  CNodeKey GetFiledKey() const override { return {name, L"@", unit}; }
  // The texts belong to the result set, which outlives the tree.
  CTextRef name;
  CTextRef unit;
  CTextRef text3;
  CTextRef text4;
  SWholeSum whole;
  /// Of the floors below, in the summaries; made for the first request that shows them.
  mutable std::shared_ptr<const CSummaryRows> rows;
};

/// Fitting. Filed under `text1` + "@" + `name`, unlike GetKey.
class CReportPjCalItem final : public TReportDataNode<ENodeKind::PjCalItem> {
 public:
  std::wstring GetKey() const override { return std::wstring(name).append(1, L'@').append(unit); }
  CNodeKey GetFiledKey() const override { return {text1, L"@", name}; }
  // The texts belong to the result set, which outlives the tree.
  CTextRef text1;
  CTextRef name;
  CTextRef unit;
};

/// What the two kinds of result have in common. The texts belong to the result set, which outlives
/// the tree.
struct SResultIdentity {
  CTextRef expression;
  CTextRef floorText;
  CTextRef sgdName;
  /// One entry for each record folded into the node; empty texts where the report shows none.
  CFewItems<CTextRef> components;
  int floorCount = 0;  ///< floors that `floorText` stands for

  /// Each entry of `components` that is not empty, followed by "$".
  std::wstring GetComponentText() const;
  /// The same, appended to `text`.
  void AppendComponentText(std::wstring& text) const;
  /// Length of that text.
  std::size_t ComponentTextSize() const;
  /// Asks for the memory of the texts, which lie in the result set far apart.
  void PrefetchComponents() const {
    for (const CTextRef& component : components) {
      Prefetch(component.data());
    }
  }
  /// The key of a result that is no fitting.
  static CNodeKey FiledKey(std::wstring_view sgdName, std::wstring_view floorText,
                           std::wstring_view expression, double quantity) {
    return CNodeKey{sgdName, floorText, L"@", expression, L"@"}.AddNumber(quantity);
  }
  /// The expression with its repeat count: as it stands below two components, else "%s*%d件", in
  /// brackets if it holds a "+" or a "-".
  std::wstring GetRepeatFormula() const;
};

/// Result of a summary set, or a fitting. Filed under `sgdName` + `floorText` + "@" + `expression`
/// + "@" + `quantity`, as a fitting under the first two alone; GetKey has the floor text behind the
/// expression.
class CReportResult final : public TReportDataNode<ENodeKind::Result>, public SResultIdentity {
 public:
  std::wstring GetKey() const override;
  CNodeKey GetFiledKey() const override {
    return IsFitting() ? CNodeKey{sgdName, floorText}
                       : FiledKey(sgdName, floorText, expression, quantity);
  }
  /// Of all components, on `floors` floors.
  double Quantity(int floors) const {
    return static_cast<double>(components.size()) * quantity * static_cast<double>(floors);
  }
  bool IsFitting() const { return referencesSize != kNoFitting; }
  /// Characters of a fitting's part of the references, made at the fold.
  std::uint32_t referencesSize = kNoFitting;
  static constexpr std::uint32_t kNoFitting = std::numeric_limits<std::uint32_t>::max();
  double quantity = 0;  ///< of one component
};

/// Result of the detail set. Filed as CReportResult, with `quantity1`.
class CReportResultDetail final : public TReportDataNode<ENodeKind::ResultDetail>,
                                  public SResultIdentity {
 public:
  std::wstring GetKey() const override;
  CNodeKey GetFiledKey() const override {
    return FiledKey(sgdName, floorText, expression, quantity1);
  }
  double quantity1 = 0;  ///< of one component
  double quantity2 = 0;
  double quantity3 = 0;
  double quantity4 = 0;
};

/// Type, material and thickness of the duct wall thickness table. Key: the three texts joined.
class CReportDuctHType final : public TReportDataNode<ENodeKind::DuctHType> {
 public:
  std::wstring GetKey() const override { return text1 + text2 + text3; }
  CNodeKey GetFiledKey() const override { return {text1, text2, text3}; }
  std::wstring text1;
  std::wstring text2;
  std::wstring text3;
  SDetailSums sums;
};

/// One coat of one paint. Key: `number1`, `text2`, `number2` run together.
class CReportBrushPaint final : public TReportDataNode<ENodeKind::BrushPaint> {
 public:
  std::wstring GetKey() const override;
  CNodeKey GetFiledKey() const override {
    return CNodeKey().AddInt(number1).AddText(text2).AddInt(number2);
  }
  int number1 = 0;     ///< sort number of the component category
  int number2 = 0;     ///< coat, from 1
  std::wstring text1;  ///< component category
  std::wstring text2;  ///< paint
  SDetailSums sums;
};

/// Type, material and thickness of the insulation table. Key: the three texts joined.
class CReportPipeJRBW final : public TReportDataNode<ENodeKind::PipeJRBW> {
 public:
  std::wstring GetKey() const override { return text1 + text2 + text3; }
  CNodeKey GetFiledKey() const override { return {text1, text2, text3}; }
  std::wstring text1;
  std::wstring text2;
  std::wstring text3;
  SDetailSums sums;
};

/// Chapter of a bill or quota library. Key: `number`, "@", `name`.
class CReportChapter final : public TReportDataNode<ENodeKind::Chapter> {
 public:
  std::wstring GetKey() const override;
  CNodeKey GetFiledKey() const override {
    return CNodeKey().AddInt(number).AddText(L"@").AddText(name);
  }
  std::wstring name;
  int number = 0;  ///< 2147483647 where the library gave none
};

/// Bill item or quota item. Key: `code`, `name`, `feature` and `unit` joined by "@".
class CReportQdDeItem final : public TReportDataNode<ENodeKind::QdDeItem> {
 public:
  std::wstring GetKey() const override;
  CNodeKey GetFiledKey() const override { return {code, L"@", name, L"@", feature, L"@", unit}; }
  std::wstring code;
  std::wstring name;
  std::wstring unit;
  std::wstring feature;  ///< of bill items alone
};

#endif  // TALLY_REPORT_MODEL_REPORT_DATA_NODE_H_
