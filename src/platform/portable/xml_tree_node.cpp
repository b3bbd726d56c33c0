#include "platform/portable/xml_tree_node.h"

#include <libxml/tree.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/portable/utf8_text.h"
#include "platform/portable/xml_source_text.h"

namespace {

class CXmlTreeNodeList final : public IXmlNodeList {
 public:
  CXmlTreeNodeList(const std::shared_ptr<CXmlTree>& tree, CXmlTree::Node first) : tree_(tree) {
    for (CXmlTree::Node at = first; at != CXmlTree::kNone; at = tree->NextSibling(at)) {
      nodes_.push_back(at);
    }
  }

  std::size_t length() const override { return nodes_.size(); }
  std::shared_ptr<IXmlNode> item(std::size_t index) const override {
    return std::make_shared<CXmlTreeNode>(tree_, nodes_.at(index));
  }

 private:
  std::shared_ptr<CXmlTree> tree_;
  std::vector<CXmlTree::Node> nodes_;
};

}  // namespace

void CXmlTreeNode::appendChild(const std::shared_ptr<IXmlNode>& child) {
  if (child == nullptr) {
    throw CXmlError(CXmlError::kNullPointer, "no node to append");
  }
  const auto* node = dynamic_cast<const CXmlTreeNode*>(child.get());
  const bool isDocument = node_ == CXmlTree::kDocument;
  if (node == nullptr || node->tree_ != tree_ ||
      tree_->Kind(node->node_) != CXmlTree::EKind::Element ||
      tree_->Parent(node->node_) != CXmlTree::kNone || tree_->IsWithin(node_, node->node_) ||
      (isDocument && tree_->FirstChild(node_) != CXmlTree::kNone)) {
    throw CXmlError(CXmlError::kInvalidArgument, "the node cannot be appended here");
  }
  if (!isDocument) {
    RequireElement();
  }
  tree_->Append(node_, node->node_);
}

void CXmlTreeNode::put_text(const std::wstring& text) {
  RequireElement();
  tree_->SetText(node_, XmlUtf8(text));
}

std::wstring CXmlTreeNode::nodeName() const {
  switch (tree_->Kind(node_)) {
    case CXmlTree::EKind::Document:
      return L"#document";
    case CXmlTree::EKind::Text:
      return L"#text";
    case CXmlTree::EKind::CData:
      return L"#cdata-section";
    case CXmlTree::EKind::Comment:
      return L"#comment";
    default:
      return WideFromUtf8(tree_->Name(node_));
  }
}

std::wstring CXmlTreeNode::nodeValue() const {
  return WideFromUtf8(tree_->Value(node_));
}

std::wstring CXmlTreeNode::nodeTypedValue() const {
  return WideFromUtf8(tree_->Text(node_));
}

std::shared_ptr<IXmlNodeList> CXmlTreeNode::attributes() const {
  if (tree_->Kind(node_) != CXmlTree::EKind::Element) {
    return nullptr;
  }
  return std::make_shared<CXmlTreeNodeList>(tree_, tree_->FirstAttribute(node_));
}

std::shared_ptr<IXmlNodeList> CXmlTreeNode::childNodes() const {
  return std::make_shared<CXmlTreeNodeList>(tree_, tree_->FirstChild(node_));
}

void CXmlTreeNode::setAttribute(const std::wstring& name, const std::wstring& value) {
  RequireElement();
  tree_->SetAttribute(node_, XmlNameUtf8(name), XmlUtf8(value));
}

void CXmlTreeNode::setAttribute(const std::wstring& name, bool value) {
  setAttribute(name, std::wstring(value ? L"true" : L"false"));
}

void CXmlTreeNode::RequireElement() const {
  if (tree_->Kind(node_) != CXmlTree::EKind::Element) {
    throw CXmlError(CXmlError::kInvalidArgument, "the node is no element");
  }
}

std::string XmlUtf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const std::wstring_view before = text;
    const char32_t c = TakeCodePoint(text);
    // TakeCodePoint answers U+FFFD both for itself and for what is no character.
    const bool isReplaced = c == 0xFFFD && before.front() != L'\xFFFD';
    if (isReplaced || !IsXmlCharacter(c)) {
      throw CXmlError(CXmlError::kInvalidArgument, "a text holds a character that XML cannot hold");
    }
    AppendUtf8(bytes, c);
  }
  return bytes;
}

std::string XmlNameUtf8(std::wstring_view name) {
  std::string bytes = XmlUtf8(name);
  if (xmlValidateNCName(reinterpret_cast<const xmlChar*>(bytes.c_str()), 0) != 0) {
    throw CXmlError(CXmlError::kInvalidArgument, "'" + bytes + "' is no name");
  }
  return bytes;
}
