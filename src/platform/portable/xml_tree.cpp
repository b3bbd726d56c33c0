#include "platform/portable/xml_tree.h"

#include <new>

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

}  // namespace

CXmlTree::CXmlTree() {
  Add(EKind::Document, "", "");
}

CXmlTree::Node CXmlTree::Add(EKind kind, std::string_view name, std::string_view value) {
  if (records_.size() == kNone) {
    throw std::bad_alloc();
  }
  SRecord record;
  record.kind = kind;
  record.name = NameNumber(name);
  record.valueBegin = values_.size();
  record.valueSize = value.size();
  values_ += value;
  records_.push_back(record);
  return static_cast<Node>(records_.size() - 1);
}

void CXmlTree::Append(Node parent, Node child) {
  SRecord& record = records_[parent];
  records_[child].parent = parent;
  if (record.lastChild == kNone) {
    record.firstChild = child;
  } else {
    records_[record.lastChild].next = child;
  }
  record.lastChild = child;
}

void CXmlTree::SetAttribute(Node element, std::string_view name, std::string_view value) {
  for (Node at = FirstAttribute(element); at != kNone; at = NextSibling(at)) {
    if (Name(at) == name) {
      SetValue(at, value);
      return;
    }
  }
  AppendAttribute(element, name, value);
}

void CXmlTree::AppendAttribute(Node element, std::string_view name, std::string_view value) {
  const Node attribute = Add(EKind::Attribute, name, value);
  records_[attribute].parent = element;
  if (FirstAttribute(element) == kNone) {
    records_[element].firstAttribute = attribute;
    return;
  }
  Node last = FirstAttribute(element);
  while (NextSibling(last) != kNone) {
    last = NextSibling(last);
  }
  records_[last].next = attribute;
}

void CXmlTree::SetText(Node element, std::string_view text) {
  const Node content = text.empty() ? kNone : Add(EKind::Text, "", text);
  for (Node at = FirstChild(element); at != kNone;) {
    const Node next = NextSibling(at);
    records_[at].parent = kNone;
    records_[at].next = kNone;
    at = next;
  }
  records_[element].firstChild = kNone;
  records_[element].lastChild = kNone;
  if (content != kNone) {
    Append(element, content);
  }
}

void CXmlTree::ExtendLast(std::string_view value) {
  values_ += value;
  records_.back().valueSize += value.size();
}

void CXmlTree::DropBlankTexts(Node element) {
  Node at = FirstChild(element);
  records_[element].firstChild = kNone;
  records_[element].lastChild = kNone;
  while (at != kNone) {
    const Node next = NextSibling(at);
    records_[at].next = kNone;
    if (Kind(at) != EKind::Text || Value(at).find_first_not_of(kBlanks) != std::string_view::npos) {
      Append(element, at);
    }
    at = next;
  }
}

bool CXmlTree::IsWithin(Node node, Node other) const {
  while (node != kNone && node != other) {
    node = Parent(node);
  }
  return node == other;
}

std::string_view CXmlTree::Value(Node node) const {
  const SRecord& record = records_[node];
  return std::string_view(values_).substr(record.valueBegin, record.valueSize);
}

std::string CXmlTree::Text(Node node) const {
  if (Kind(node) != EKind::Element && Kind(node) != EKind::Document) {
    return std::string(Value(node));
  }
  std::string text;
  Node at = node;
  while (true) {
    if (Kind(at) == EKind::Text || Kind(at) == EKind::CData) {
      text += Value(at);
    }
    if (FirstChild(at) != kNone) {
      at = FirstChild(at);
      continue;
    }
    while (at != node && NextSibling(at) == kNone) {
      at = Parent(at);
    }
    if (at == node) {
      return text;
    }
    at = NextSibling(at);
  }
}

std::uint32_t CXmlTree::NameNumber(std::string_view name) {
  if (const auto at = nameNumbers_.find(name); at != nameNumbers_.end()) {
    return at->second;
  }
  const auto number = static_cast<std::uint32_t>(names_.size());
  names_.emplace_back(name);
  nameNumbers_.emplace(names_.back(), number);
  return number;
}

void CXmlTree::SetValue(Node node, std::string_view value) {
  records_[node].valueBegin = values_.size();
  records_[node].valueSize = value.size();
  values_ += value;
}
