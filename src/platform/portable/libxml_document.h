// A document read by libxml2.
#ifndef TALLY_PLATFORM_PORTABLE_LIBXML_DOCUMENT_H_
#define TALLY_PLATFORM_PORTABLE_LIBXML_DOCUMENT_H_

#include <memory>
#include <string>

#include "platform/portable/file_calls.h"
#include "platform/portable/xml_tree.h"
#include "platform/xml_service.h"

/// Loads whole files of up to 1 GiB and checks them before anything is handed out. A document type
/// declaration, an encoding other than UTF-8 and UTF-16, and more than a thousand attributes of one
/// element count as not well-formed. Saves UTF-8 without declaration, byte order mark and white
/// space between elements. Memory that runs out raises std::bad_alloc.
class CLibxmlDocument final : public IXmlDocument {
 public:
  /// Files are written through `calls`.
  explicit CLibxmlDocument(std::shared_ptr<CFileCalls> calls);

  std::shared_ptr<IXmlElement> createElement(const std::wstring& name) override;
  void appendChild(const std::shared_ptr<IXmlNode>& node) override;
  bool load(const std::wstring& path) override;
  void save(const std::wstring& path) override;
  std::shared_ptr<IXmlNode> selectSingleNode(const std::wstring& name) override;

 private:
  std::shared_ptr<CFileCalls> calls_;
  std::shared_ptr<CXmlTree> tree_;
};

#endif  // TALLY_PLATFORM_PORTABLE_LIBXML_DOCUMENT_H_
