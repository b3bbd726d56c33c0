#include "platform/app_profile.h"

#include <algorithm>
#include <cstddef>

#include "platform/text_numbers.h"

CKorVersion::CKorVersion(std::wstring_view text) : text_(text) {
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(L'.', begin), text.size());
    parts_.push_back(ReadLeadingInt(text.substr(begin, end - begin)));
    begin = end + 1;
  }
  // What is not there is 0 as well, so that zeros at the end say nothing.
  while (!parts_.empty() && parts_.back() == 0) {
    parts_.pop_back();
  }
}

bool operator<(const CKorVersion& a, const CKorVersion& b) {
  const std::size_t count = std::max(a.parts_.size(), b.parts_.size());
  for (std::size_t i = 0; i < count; ++i) {
    const int left = i < a.parts_.size() ? a.parts_[i] : 0;
    const int right = i < b.parts_.size() ? b.parts_[i] : 0;
    if (left != right) {
      return left < right;
    }
  }
  return false;
}

namespace KorProfile {
const CKorVersion g_Version_16_2_0(L"16.2.0");
}  // namespace KorProfile
