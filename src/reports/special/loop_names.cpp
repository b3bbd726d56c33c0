#include "reports/special/loop_names.h"

#include <cstddef>

#include "platform/text_numbers.h"

std::wstring CLoopNames::Compose(const CReportCategory& category, int number) {
  std::wstring name = category.kind + L"回路";
  AppendInt(name, number);
  return name;
}

const std::deque<std::wstring>& CLoopNames::UpTo(const CReportCategory& category, int number) {
  if (&category != last_) {
    last_ = &category;
    namesOfLast_ = &names_[category.kind];
  }
  const auto count = static_cast<std::size_t>(number);
  while (namesOfLast_->size() < count) {
    namesOfLast_->push_back(Compose(category, static_cast<int>(namesOfLast_->size()) + 1));
  }
  return *namesOfLast_;
}
