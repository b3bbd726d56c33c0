#include "host/sheet_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "platform/portable/utf8_text.h"

namespace {

constexpr std::size_t kLongestName = 31;
constexpr const char* kReserved = "History";  // spreadsheets keep it for themselves

struct SVariantWord {
  std::string_view variant;
  const wchar_t* word;
};

constexpr SVariantWord kVariantWords[] = {
    {"member", L"按构件"},
    {"floor", L"按楼层"},
    {"system", L"按系统"},
};

std::wstring WideTitle(const SCatalogReport& report) {
  if (report.variantName == nullptr) {
    return report.title;
  }
  const auto at =
      std::find_if(std::begin(kVariantWords), std::end(kVariantWords),
                   [&](const SVariantWord& line) { return line.variant == report.variantName; });
  return report.title +
         (at != std::end(kVariantWords) ? at->word : WideFromUtf8(report.variantName));
}

bool IsAllowed(char32_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xFFFE || c == 0xFFFF;
  return !isControl && std::u32string_view(U"[]:*?/\\").find(c) == std::u32string_view::npos;
}

// Of the letters with case beyond those that projects use, any two count as the same: a number too
// many does no harm, a name that is taken makes the workbook broken.
char32_t Folded(char32_t c) {
  if (c >= 0xFF01 && c <= 0xFF5E) {
    c -= 0xFEE0;  // full width
  }
  if (c >= U'A' && c <= U'Z') {
    return c - U'A' + U'a';
  }
  if (c >= 0x2160 && c <= 0x216F) {
    return c + 0x10;  // Roman numbers
  }
  if (c >= 0x24B6 && c <= 0x24CF) {
    return c + 0x1A;  // letters in circles
  }
  const bool isOtherLetter = (c >= 0xC0 && c < 0x2000) || (c >= 0x2C00 && c < 0x2E00) ||
                             (c >= 0xA640 && c < 0xA800) || (c >= 0x10400 && c < 0x1F000);
  return isOtherLetter ? 0xC0 : c;
}

std::u32string FoldedName(std::u32string name) {
  std::transform(name.begin(), name.end(), name.begin(), Folded);
  return name;
}

std::u32string CodePoints(std::wstring_view text) {
  std::u32string points;
  while (!text.empty()) {
    points.push_back(TakeCodePoint(text));
  }
  return points;
}

std::string Utf8(const std::u32string& points) {
  std::string bytes;
  for (const char32_t c : points) {
    AppendUtf8(bytes, c);
  }
  return bytes;
}

// As many characters of `stem` as leave room for `suffix`.
std::u32string Fitted(std::u32string_view stem, const std::u32string& suffix) {
  std::u32string name;
  std::size_t units = suffix.size();
  for (const char32_t c : stem) {
    units += c > 0xFFFF ? 2 : 1;
    if (units > kLongestName) {
      break;
    }
    name.push_back(IsAllowed(c) ? c : U'_');
  }
  name += suffix;
  for (char32_t* end : {&name.front(), &name.back()}) {
    if (*end == U'\'') {
      *end = U'_';
    }
  }
  return name;
}

std::u32string Numbered(int number) {
  const std::string text = " (" + std::to_string(number) + ")";
  return number == 1 ? std::u32string() : std::u32string(text.begin(), text.end());
}

}  // namespace

std::string ShownTitle(const SCatalogReport& report) {
  return Utf8FromWide(WideTitle(report));
}

CSheetNames::CSheetNames(std::string_view front) {
  for (const std::string_view name : {front, std::string_view(kReserved)}) {
    taken_.insert(FoldedName(CodePoints(WideFromUtf8(name))));
  }
}

std::string CSheetNames::NameOf(const SCatalogReport& report, std::wstring_view spec) {
  std::u32string stem = CodePoints(WideTitle(report));
  if (!spec.empty()) {
    stem += U' ' + CodePoints(spec);
  }
  std::u32string name = Fitted(stem, Numbered(1));
  for (int number = 2; !taken_.insert(FoldedName(name)).second; ++number) {
    name = Fitted(stem, Numbered(number));
  }
  return Utf8(name);
}
