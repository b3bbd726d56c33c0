#include "platform/portable/project_source.h"

const std::shared_ptr<CProjectSource>& CProjectSource::OfProcess() {
  static const auto source = std::make_shared<CProjectSource>();
  return source;
}

void CProjectSource::BeginRead(const std::wstring& path) {
  path_ = path;
  ++generation_;
}
