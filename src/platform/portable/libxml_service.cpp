#include "platform/portable/libxml_service.h"

#include <utility>

#include "platform/portable/libxml_document.h"

std::shared_ptr<IXmlService> IXmlService::MakePortable() {
  return std::make_shared<CLibxmlService>();
}

CLibxmlService::CLibxmlService(std::shared_ptr<CFileCalls> calls) : calls_(std::move(calls)) {}

std::shared_ptr<IXmlDocument> CLibxmlService::CreateDocument() {
  return std::make_shared<CLibxmlDocument>(calls_);
}
