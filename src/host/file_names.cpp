#include "host/file_names.h"
#include "host/joined.h"

#include <algorithm>
#include <cstddef>

#include "platform/portable/utf8_text.h"

namespace {

// File systems allow 255 bytes; the report, a number and what a writer puts behind need some.
constexpr std::size_t kLongestSpec = 150;

bool IsAllowed(char32_t codePoint) {
  const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
  const bool isDirection = (codePoint >= 0x200B && codePoint <= 0x200F) ||
                           (codePoint >= 0x2028 && codePoint <= 0x202E) ||
                           (codePoint >= 0x2066 && codePoint <= 0x2069) || codePoint == 0xFEFF;
  return !isControl && !isDirection &&
         std::u32string_view(U"<>:\"/\\|?*").find(codePoint) == std::u32string_view::npos;
}

std::string SpecPart(std::wstring_view spec) {
  std::string part;
  while (!spec.empty()) {
    const char32_t codePoint = TakeCodePoint(spec);
    std::string character;
    AppendUtf8(character, IsAllowed(codePoint) ? codePoint : U'_');
    if (part.size() + character.size() > kLongestSpec) {
      break;
    }
    part += character;
  }
  return part;
}

std::string LowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return text;
}

}  // namespace

std::string CFileNames::NameOf(const SCatalogReport& report, std::wstring_view spec) {
  std::string stem = report.name;
  if (report.variantName != nullptr) {
    stem += Joined("-", report.variantName);
  }
  stem += Joined("_", SpecPart(spec));
  std::string name = Joined(stem, extension_);
  for (int number = 2; !taken_.insert(LowerCase(name)).second; ++number) {
    name = Joined(stem, "_", std::to_string(number), extension_);
  }
  return name;
}
