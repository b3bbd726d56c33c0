// An XML service of which one call fails.
#ifndef TALLY_TESTS_SUPPORT_FAILING_XML_SERVICE_H_
#define TALLY_TESTS_SUPPORT_FAILING_XML_SERVICE_H_

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "platform/xml_service.h"

namespace tally_test {

/// How the calls of a CFailingXmlService are counted.
struct SXmlCalls {
  int failAt = 0;  ///< the number of the failing call, from 1; 0: none
  int count = 0;
  bool answersNull = false;  ///< the failing call answers null, if it can, instead of raising

  /// Counts a call. True where it is to answer null.
  bool Call(bool canAnswerNull = false) {
    if (++count != failAt) {
      return false;
    }
    if (answersNull && canAnswerNull) {
      return true;
    }
    throw CXmlError(-42, "call failed");
  }
};

using XmlCallsPtr = std::shared_ptr<SXmlCalls>;

class CFailingXmlNode final : public IXmlElement {
 public:
  /// Null for null. An element where `node` is one.
  static std::shared_ptr<IXmlElement> Wrap(std::shared_ptr<IXmlNode> node, XmlCallsPtr calls) {
    return node == nullptr ? nullptr
                           : std::make_shared<CFailingXmlNode>(std::move(node), std::move(calls));
  }

  CFailingXmlNode(std::shared_ptr<IXmlNode> node, XmlCallsPtr calls)
      : node_(std::move(node)), calls_(std::move(calls)) {}

  const std::shared_ptr<IXmlNode>& Inner() const { return node_; }

  void appendChild(const std::shared_ptr<IXmlNode>& child) override {
    calls_->Call();
    node_->appendChild(dynamic_cast<CFailingXmlNode&>(*child).Inner());
  }
  void put_text(const std::wstring& text) override {
    calls_->Call();
    node_->put_text(text);
  }
  std::wstring nodeName() const override {
    calls_->Call();
    return node_->nodeName();
  }
  std::wstring nodeValue() const override {
    calls_->Call();
    return node_->nodeValue();
  }
  std::wstring nodeTypedValue() const override {
    calls_->Call();
    return node_->nodeTypedValue();
  }
  std::shared_ptr<IXmlNodeList> attributes() const override;
  std::shared_ptr<IXmlNodeList> childNodes() const override;
  void setAttribute(const std::wstring& name, const std::wstring& value) override {
    calls_->Call();
    dynamic_cast<IXmlElement&>(*node_).setAttribute(name, value);
  }
  void setAttribute(const std::wstring& name, bool value) override {
    calls_->Call();
    dynamic_cast<IXmlElement&>(*node_).setAttribute(name, value);
  }

 private:
  std::shared_ptr<IXmlNode> node_;
  XmlCallsPtr calls_;
};

class CFailingXmlNodeList final : public IXmlNodeList {
 public:
  CFailingXmlNodeList(std::shared_ptr<IXmlNodeList> list, XmlCallsPtr calls)
      : list_(std::move(list)), calls_(std::move(calls)) {}

  std::size_t length() const override {
    calls_->Call();
    return list_->length();
  }
  std::shared_ptr<IXmlNode> item(std::size_t index) const override {
    return calls_->Call(true) ? nullptr : CFailingXmlNode::Wrap(list_->item(index), calls_);
  }

 private:
  std::shared_ptr<IXmlNodeList> list_;
  XmlCallsPtr calls_;
};

inline std::shared_ptr<IXmlNodeList> CFailingXmlNode::attributes() const {
  calls_->Call();
  const std::shared_ptr<IXmlNodeList> list = node_->attributes();
  return list == nullptr ? nullptr : std::make_shared<CFailingXmlNodeList>(list, calls_);
}

inline std::shared_ptr<IXmlNodeList> CFailingXmlNode::childNodes() const {
  return calls_->Call(true) ? nullptr
                            : std::make_shared<CFailingXmlNodeList>(node_->childNodes(), calls_);
}

class CFailingXmlDocument final : public IXmlDocument {
 public:
  CFailingXmlDocument(std::shared_ptr<IXmlDocument> document, XmlCallsPtr calls)
      : document_(std::move(document)), calls_(std::move(calls)) {}

  std::shared_ptr<IXmlElement> createElement(const std::wstring& name) override {
    return calls_->Call(true) ? nullptr
                              : CFailingXmlNode::Wrap(document_->createElement(name), calls_);
  }
  void appendChild(const std::shared_ptr<IXmlNode>& node) override {
    calls_->Call();
    document_->appendChild(dynamic_cast<CFailingXmlNode&>(*node).Inner());
  }
  bool load(const std::wstring& path) override {
    calls_->Call();
    return document_->load(path);
  }
  void save(const std::wstring& path) override {
    calls_->Call();
    document_->save(path);
  }
  std::shared_ptr<IXmlNode> selectSingleNode(const std::wstring& name) override {
    calls_->Call();
    return CFailingXmlNode::Wrap(document_->selectSingleNode(name), calls_);
  }

 private:
  std::shared_ptr<IXmlDocument> document_;
  XmlCallsPtr calls_;
};

/// The portable service, until the call that is to fail.
class CFailingXmlService final : public IXmlService {
 public:
  XmlCallsPtr calls = std::make_shared<SXmlCalls>();
  bool hasDocuments = true;

  std::shared_ptr<IXmlDocument> CreateDocument() override {
    if (!hasDocuments) {
      return nullptr;
    }
    return std::make_shared<CFailingXmlDocument>(portable_->CreateDocument(), calls);
  }

 private:
  std::shared_ptr<IXmlService> portable_ = IXmlService::MakePortable();
};

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_FAILING_XML_SERVICE_H_
