// Handles to the nodes of a tree.
#ifndef TALLY_PLATFORM_PORTABLE_XML_TREE_NODE_H_
#define TALLY_PLATFORM_PORTABLE_XML_TREE_NODE_H_

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/portable/xml_tree.h"
#include "platform/xml_service.h"

/// Keeps the whole tree alive.
class CXmlTreeNode final : public IXmlElement {
 public:
  CXmlTreeNode(std::shared_ptr<CXmlTree> tree, CXmlTree::Node node)
      : tree_(std::move(tree)), node_(node) {}

  void appendChild(const std::shared_ptr<IXmlNode>& child) override;
  void put_text(const std::wstring& text) override;
  std::wstring nodeName() const override;
  std::wstring nodeValue() const override;
  std::wstring nodeTypedValue() const override;
  std::shared_ptr<IXmlNodeList> attributes() const override;
  std::shared_ptr<IXmlNodeList> childNodes() const override;
  void setAttribute(const std::wstring& name, const std::wstring& value) override;
  void setAttribute(const std::wstring& name, bool value) override;

 private:
  void RequireElement() const;

  std::shared_ptr<CXmlTree> tree_;
  CXmlTree::Node node_;
};

/// A text in UTF-8. Throws CXmlError for a character that XML cannot hold.
std::string XmlUtf8(std::wstring_view text);
/// The same for the name of an element or attribute, without a prefix.
std::string XmlNameUtf8(std::wstring_view name);

#endif  // TALLY_PLATFORM_PORTABLE_XML_TREE_NODE_H_
