#include "reports/calculation_books/sys_code_order.h"

#include <algorithm>

#include "report_model/report_data_method.h"

namespace {

// Ends each level of a key. It is below every character of a text.
constexpr wchar_t kLevelEnd = std::numeric_limits<wchar_t>::min();

std::wstring KeyOf(std::wstring_view path) {
  std::wstring key(path);
  std::replace(key.begin(), key.end(), L'\\', kLevelEnd);
  key += kLevelEnd;
  return key;
}

std::wstring_view SystemOf(std::wstring_view key, int level) {
  std::size_t size = 0;
  for (int i = 0; i < level && size < key.size(); ++i) {
    size = key.find(kLevelEnd, size) + 1;
  }
  return key.substr(0, size);
}

}  // namespace

CSysCodeOrder::CSysCodeOrder(const std::vector<KorDMRec::SKorDMSysCodeRec>& records,
                             int systemLevel) {
  std::vector<std::wstring> ofRecord;
  ofRecord.reserve(records.size());
  for (const auto& record : records) {
    std::wstring& key = ofRecord.emplace_back();
    if (!record.name.empty()) {
      key = KeyOf(CReportDataMethod::GetSysCodeName(record.name));
      keys_.push_back(key);
    }
  }
  std::sort(keys_.begin(), keys_.end());
  keys_.erase(std::unique(keys_.begin(), keys_.end()), keys_.end());
  for (const std::wstring& key : keys_) {
    const bool isFirst = systems_.empty();
    const std::wstring& before = isFirst ? key : keys_[systems_.size() - 1];
    goesOn_ = goesOn_ || (!isFirst && key.starts_with(before));
    const bool isSame = isFirst || SystemOf(key, systemLevel) == SystemOf(before, systemLevel);
    systems_.push_back((isFirst ? 0 : systems_.back()) + (isSame ? 0 : 1));
  }
  for (const std::wstring& key : ofRecord) {
    const auto at = std::lower_bound(keys_.begin(), keys_.end(), key);
    ofRecord_.push_back(key.empty() ? kNone : static_cast<std::uint32_t>(at - keys_.begin()));
  }
}

CSysCodeOrder::SRange CSysCodeOrder::Below(std::wstring_view path) const {
  if (path.empty()) {
    return {0, 0};
  }
  const std::wstring key = KeyOf(path);
  const auto first = std::lower_bound(keys_.begin(), keys_.end(), key);
  const auto last = std::find_if_not(
      first, keys_.end(), [&key](const std::wstring& other) { return other.starts_with(key); });
  return {static_cast<std::uint32_t>(first - keys_.begin()),
          static_cast<std::uint32_t>(last - keys_.begin())};
}
