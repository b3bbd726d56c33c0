#include "platform/portable/xml_text_writer.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

using Node = CXmlTree::Node;
using EKind = CXmlTree::EKind;

std::string_view Reference(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\t':
      return "&#9;";
    case '\n':
      return "&#10;";
    default:
      return "&#13;";
  }
}

void AppendEscaped(std::string& out, std::string_view text, std::string_view special) {
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find_first_of(special), text.size());
    out += text.substr(0, plain);
    text.remove_prefix(plain);
    if (!text.empty()) {
      out += Reference(text.front());
      text.remove_prefix(1);
    }
  }
}

void AppendTag(std::string& out, const CXmlTree& tree, Node element) {
  out += '<';
  out += tree.Name(element);
  for (Node at = tree.FirstAttribute(element); at != CXmlTree::kNone; at = tree.NextSibling(at)) {
    out += ' ';
    out += tree.Name(at);
    out += "=\"";
    AppendEscaped(out, tree.Value(at), "&<>\"\t\n\r");
    out += '"';
  }
  out += tree.FirstChild(element) == CXmlTree::kNone ? "/>" : ">";
}

// A node, of an element the beginning.
void AppendNode(std::string& out, const CXmlTree& tree, Node node) {
  switch (tree.Kind(node)) {
    case EKind::Element:
      AppendTag(out, tree, node);
      break;
    case EKind::Comment:
      (out += "<!--").append(tree.Value(node)) += "-->";
      break;
    case EKind::Instruction:
      ((out += "<?").append(tree.Name(node)) += ' ').append(tree.Value(node)) += "?>";
      break;
    default:
      AppendEscaped(out, tree.Value(node), "&<>\r");
  }
}

}  // namespace

std::string XmlText(const CXmlTree& tree) {
  std::string out;
  Node at = tree.FirstChild(CXmlTree::kDocument);
  while (at != CXmlTree::kNone && at != CXmlTree::kDocument) {
    AppendNode(out, tree, at);
    if (tree.FirstChild(at) != CXmlTree::kNone) {
      at = tree.FirstChild(at);
      continue;
    }
    while (at != CXmlTree::kDocument && tree.NextSibling(at) == CXmlTree::kNone) {
      at = tree.Parent(at);
      if (at != CXmlTree::kDocument) {
        ((out += "</").append(tree.Name(at))) += '>';
      }
    }
    at = at == CXmlTree::kDocument ? at : tree.NextSibling(at);
  }
  return out;
}
