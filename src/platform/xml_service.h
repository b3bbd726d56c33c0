// XML documents as trees of nodes.
#ifndef TALLY_PLATFORM_XML_SERVICE_H_
#define TALLY_PLATFORM_XML_SERVICE_H_

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/export.h"
#include "platform/replaceable.h"

/// A call of the XML service failed. The message is UTF-8.
class TALLY_API CXmlError : public std::runtime_error {
 public:
  // The numbers are those of the platform that hosts know them from, and must not change.
  static constexpr int kFailed = -2147467259;           ///< 0x80004005: unspecific, a failed save
  static constexpr int kNullPointer = -2147467261;      ///< 0x80004003: no node where one must be
  static constexpr int kOutOfMemory = -2147024882;      ///< 0x8007000E: a service's own shortage
  static constexpr int kInvalidArgument = -2147024809;  ///< 0x80070057: no place, name or character
  static constexpr int kTypeMismatch = -2147352571;     ///< 0x80020005: a failed conversion

  CXmlError(int code, const std::string& message) : std::runtime_error(message), code_(code) {}

  /// Negative.
  int Code() const { return code_; }

 private:
  int code_;
};

class IXmlNode;

/// Nodes by index, in the order of the document. Keeps the nodes alive; what is appended later does
/// not show.
class TALLY_API IXmlNodeList {
 public:
  virtual ~IXmlNodeList() = default;
  virtual std::size_t length() const = 0;
  /// REQUIRES: `index` is below the length.
  virtual std::shared_ptr<IXmlNode> item(std::size_t index) const = 0;
};

/// Any node: an element, an attribute, a text, a comment. A handle; it keeps what it stands for
/// alive, whatever becomes of the document. Every operation of a node, element or document may
/// throw CXmlError.
class TALLY_API IXmlNode {
 public:
  virtual ~IXmlNode() = default;

  /// Puts `child`, made by the same document and not yet in its tree, behind the last child.
  virtual void appendChild(const std::shared_ptr<IXmlNode>& child) = 0;
  /// Makes `text` the whole content of an element.
  virtual void put_text(const std::wstring& text) = 0;

  /// The name of an element or attribute; "#text", "#comment" and their like for other nodes.
  virtual std::wstring nodeName() const = 0;
  /// The value of an attribute, a text or a comment; the empty text for an element.
  virtual std::wstring nodeValue() const = 0;
  /// All the text inside an element, elements inside it included; of other nodes the value.
  virtual std::wstring nodeTypedValue() const = 0;
  /// Null for a node that cannot have attributes.
  virtual std::shared_ptr<IXmlNodeList> attributes() const = 0;
  virtual std::shared_ptr<IXmlNodeList> childNodes() const = 0;
};

class TALLY_API IXmlElement : public IXmlNode {
 public:
  /// Sets the attribute, or replaces its value.
  virtual void setAttribute(const std::wstring& name, const std::wstring& value) = 0;
  /// The boolean in a form that XmlBoolean reads.
  virtual void setAttribute(const std::wstring& name, bool value) = 0;
  /// A literal would go the way of bool.
  void setAttribute(const std::wstring& name, const wchar_t* value) = delete;
};

class TALLY_API IXmlDocument {
 public:
  virtual ~IXmlDocument() = default;

  /// A new element, outside the tree until it is appended.
  virtual std::shared_ptr<IXmlElement> createElement(const std::wstring& name) = 0;
  /// Makes `node` the root element.
  virtual void appendChild(const std::shared_ptr<IXmlNode>& node) = 0;
  /// Replaces the document by the file's. False, with an empty document, where the file is missing,
  /// cannot be read or is not well-formed. A text of white space alone is left out beside element
  /// siblings; every other text is kept whole.
  virtual bool load(const std::wstring& path) = 0;
  /// Writes the document in a form that `load` gives back exactly. A failure leaves the old file.
  virtual void save(const std::wstring& path) = 0;
  /// The child of the document that has this name: the root element. Null for any other name.
  virtual std::shared_ptr<IXmlNode> selectSingleNode(const std::wstring& name) = 0;
};

class TALLY_API IXmlService : public CReplaceable<IXmlService> {
 public:
  /// Reads UTF-8 and UTF-16, fetches nothing, writes UTF-8 and replaces files as one step.
  static std::shared_ptr<IXmlService> MakePortable();

  virtual ~IXmlService() = default;
  /// A new empty document; null where the service has none to give.
  virtual std::shared_ptr<IXmlDocument> CreateDocument() = 0;
};

/// The boolean of an attribute's value: "true" or "false" in any case, or a decimal number, true
/// when it is not zero. Throws CXmlError (kTypeMismatch) for any other text.
TALLY_API bool XmlBoolean(std::wstring_view text);

#endif  // TALLY_PLATFORM_XML_SERVICE_H_
