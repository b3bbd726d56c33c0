// XML documents through libxml2.
#ifndef TALLY_PLATFORM_PORTABLE_LIBXML_SERVICE_H_
#define TALLY_PLATFORM_PORTABLE_LIBXML_SERVICE_H_

#include <memory>

#include "platform/portable/file_calls.h"
#include "platform/xml_service.h"

class CLibxmlService final : public IXmlService {
 public:
  /// The documents write their files through `calls`.
  explicit CLibxmlService(std::shared_ptr<CFileCalls> calls = std::make_shared<CFileCalls>());

  std::shared_ptr<IXmlDocument> CreateDocument() override;

 private:
  std::shared_ptr<CFileCalls> calls_;
};

#endif  // TALLY_PLATFORM_PORTABLE_LIBXML_SERVICE_H_
