// The nodes of an XML document, as compact records.
#ifndef TALLY_PLATFORM_PORTABLE_XML_TREE_H_
#define TALLY_PLATFORM_PORTABLE_XML_TREE_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// A tree of any depth and size: no operation recurses, and dropping it frees a few large pieces.
/// Nodes are numbers that hold for the life of the tree; a node is never removed from memory. All
/// texts are UTF-8.
class CXmlTree {
 public:
  using Node = std::uint32_t;
  enum class EKind : std::uint8_t {
    Document,
    Element,
    Attribute,
    Text,
    CData,
    Comment,
    Instruction
  };

  static constexpr Node kDocument = 0;
  static constexpr Node kNone = UINT32_MAX;

  CXmlTree();

  /// A node outside the tree. The name counts for elements, attributes and instructions.
  Node Add(EKind kind, std::string_view name, std::string_view value);
  /// Puts a node that is outside the tree behind the last child of `parent`.
  void Append(Node parent, Node child);
  /// Sets an attribute, or replaces its value.
  void SetAttribute(Node element, std::string_view name, std::string_view value);
  /// Puts an attribute behind the others, which have other names.
  void AppendAttribute(Node element, std::string_view name, std::string_view value);
  /// Makes a text the only content; the empty text makes no node.
  void SetText(Node element, std::string_view text);
  /// Appends to the value of the node that was added last.
  void ExtendLast(std::string_view value);
  /// Leaves out the texts of white space among the children.
  void DropBlankTexts(Node element);

  EKind Kind(Node node) const { return records_[node].kind; }
  Node Parent(Node node) const { return records_[node].parent; }
  Node NextSibling(Node node) const { return records_[node].next; }
  Node FirstChild(Node node) const { return records_[node].firstChild; }
  Node LastChild(Node node) const { return records_[node].lastChild; }
  Node FirstAttribute(Node node) const { return records_[node].firstAttribute; }
  /// Whether `node` is `other` or lies below it.
  bool IsWithin(Node node, Node other) const;

  std::string_view Name(Node node) const { return names_[records_[node].name]; }
  std::string_view Value(Node node) const;
  /// The texts below an element, comments and instructions left out; of other nodes the value.
  std::string Text(Node node) const;

 private:
  struct SRecord {
    EKind kind = EKind::Document;
    Node parent = kNone;
    Node next = kNone;
    Node firstChild = kNone;
    Node lastChild = kNone;
    Node firstAttribute = kNone;
    std::uint32_t name = 0;
    std::size_t valueBegin = 0;
    std::size_t valueSize = 0;
  };

  std::uint32_t NameNumber(std::string_view name);
  void SetValue(Node node, std::string_view value);

  std::deque<SRecord> records_;
  std::string values_;
  std::deque<std::string> names_;
  std::unordered_map<std::string_view, std::uint32_t> nameNumbers_;  // views into names_
};

#endif  // TALLY_PLATFORM_PORTABLE_XML_TREE_H_
