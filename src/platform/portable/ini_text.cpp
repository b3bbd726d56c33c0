#include "platform/portable/ini_text.h"

#include <algorithm>

#include "platform/portable/utf8_text.h"

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleMark = "\xFF\xFE";
constexpr std::string_view kBigMark = "\xFE\xFF";

bool IsBlank(char32_t c) {
  return c == U' ' || c == U'\t' || c == U'\v' || c == U'\f';
}
bool IsLineEnd(char32_t c) {
  return c == U'\r' || c == U'\n';
}

char32_t Fold(wchar_t c) {
  return static_cast<char32_t>(c >= L'A' && c <= L'Z' ? c - L'A' + L'a' : c);
}

std::wstring_view TrimName(std::wstring_view name) {
  while (!name.empty() && IsBlank(static_cast<char32_t>(name.front()))) {
    name.remove_prefix(1);
  }
  while (!name.empty() && IsBlank(static_cast<char32_t>(name.back()))) {
    name.remove_suffix(1);
  }
  return name;
}

std::wstring_view CutQuotes(std::wstring_view value) {
  if (value.size() >= 2 && value.front() == value.back() &&
      (value.front() == L'"' || value.front() == L'\'')) {
    return value.substr(1, value.size() - 2);
  }
  return value;
}

bool HoldsAny(std::wstring_view text, std::wstring_view characters) {
  return text.find_first_of(characters) != std::wstring_view::npos;
}

// Anything else would be written as U+FFFD, and a name not be found again.
bool IsUnicode(std::wstring_view text) {
  return WideFromUtf8(Utf8FromWide(text)) == text;
}

// Whether the texts read back as what they are; "\0" is kept out for readers of C texts.
bool FitsSection(std::wstring_view name) {
  using namespace std::literals;
  return IsUnicode(name) && !HoldsAny(name, L"\r\n]\0"sv);
}

bool FitsKey(std::wstring_view name) {
  using namespace std::literals;
  return IsUnicode(name) && !name.empty() && name.front() != L'[' && name.front() != L';' &&
         !HoldsAny(name, L"\r\n=\0"sv);
}

bool FitsValue(std::wstring_view value) {
  using namespace std::literals;
  return IsUnicode(value) && !HoldsAny(value, L"\r\n\0"sv);
}

}  // namespace

CIniText::CIniText(std::string_view bytes) {
  for (const auto& [mark, encoding] :
       {std::pair(kUtf8Mark, EEncoding::kUtf8), std::pair(kLittleMark, EEncoding::kUtf16Little),
        std::pair(kBigMark, EEncoding::kUtf16Big)}) {
    if (bytes.starts_with(mark)) {
      mark_ = mark;
      encoding_ = encoding;
      bytes.remove_prefix(mark.size());
      break;
    }
  }
  if (encoding_ == EEncoding::kUtf8) {
    units_.reserve(bytes.size());
    for (const char byte : bytes) {
      units_.push_back(static_cast<unsigned char>(byte));
    }
    return;
  }
  const std::size_t high = encoding_ == EEncoding::kUtf16Big ? 0 : 1;
  units_.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const auto upper = static_cast<unsigned char>(bytes[at + high]);
    const auto lower = static_cast<unsigned char>(bytes[at + 1 - high]);
    units_.push_back(static_cast<char16_t>(upper << 8 | lower));
  }
  odd_ = bytes.substr(bytes.size() - bytes.size() % 2);
}

std::string CIniText::Bytes() const {
  std::string bytes = mark_;
  for (const char16_t unit : units_) {
    const auto upper = static_cast<char>(unit >> 8);
    const auto lower = static_cast<char>(unit & 0xFF);
    switch (encoding_) {
      case EEncoding::kUtf8:
        bytes.push_back(lower);
        break;
      case EEncoding::kUtf16Little:
        bytes.push_back(lower);
        bytes.push_back(upper);
        break;
      case EEncoding::kUtf16Big:
        bytes.push_back(upper);
        bytes.push_back(lower);
        break;
    }
  }
  return bytes + odd_;
}

std::wstring CIniText::Decode(SRange range) const {
  std::wstring text;
  if (encoding_ == EEncoding::kUtf8) {
    std::string bytes;
    for (std::size_t at = range.begin; at < range.end; ++at) {
      bytes.push_back(static_cast<char>(units_[at]));
    }
    AppendWide(text, bytes);
    return text;
  }
  for (std::size_t at = range.begin; at < range.end; ++at) {
    const char32_t unit = units_[at];
    if (unit < 0xD800 || unit > 0xDFFF) {
      AppendCodePoint(text, unit);
    } else if (unit < 0xDC00 && at + 1 < range.end && (units_[at + 1] & 0xFC00) == 0xDC00) {
      AppendCodePoint(text, 0x10000 + ((unit & 0x3FF) << 10) + (units_[at + 1] & 0x3FFu));
      ++at;
    } else {
      AppendCodePoint(text, 0xFFFD);
    }
  }
  return text;
}

std::u16string CIniText::Encode(std::wstring_view text) const {
  std::u16string units;
  if (encoding_ == EEncoding::kUtf8) {
    for (const char byte : Utf8FromWide(text)) {
      units.push_back(static_cast<unsigned char>(byte));
    }
    return units;
  }
  while (!text.empty()) {
    const char32_t c = TakeCodePoint(text);
    if (c < 0x10000) {
      units.push_back(static_cast<char16_t>(c));
    } else {
      units.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    }
  }
  return units;
}

// The line that begins at `at`, without its end, behind which `at` is moved.
CIniText::SRange CIniText::NextLine(std::size_t& at) const {
  SRange line = {at, at};
  while (line.end < units_.size() && !IsLineEnd(units_[line.end])) {
    ++line.end;
  }
  at = line.end;
  if (at < units_.size()) {
    const bool isPair = units_[at] == u'\r' && at + 1 < units_.size() && units_[at + 1] == u'\n';
    at += isPair ? 2 : 1;
  }
  return line;
}

CIniText::SRange CIniText::Trim(SRange range) const {
  while (range.begin < range.end && IsBlank(units_[range.begin])) {
    ++range.begin;
  }
  while (range.begin < range.end && IsBlank(units_[range.end - 1])) {
    --range.end;
  }
  return range;
}

bool CIniText::IsName(SRange range, std::wstring_view name) const {
  const std::wstring text = Decode(Trim(range));
  return std::equal(text.begin(), text.end(), name.begin(), name.end(),
                    [](wchar_t a, wchar_t b) { return Fold(a) == Fold(b); });
}

CIniText::SPlace CIniText::Find(std::wstring_view section, std::wstring_view key) const {
  SPlace place;
  for (std::size_t at = 0; at < units_.size();) {
    const SRange whole = NextLine(at);
    const SRange line = Trim(whole);
    if (line.begin == line.end) {
      continue;
    }
    const auto begin = units_.begin() + static_cast<std::ptrdiff_t>(line.begin);
    const auto end = units_.begin() + static_cast<std::ptrdiff_t>(line.end);
    const auto close = *begin == u'[' ? std::find(begin, end, u']') : end;
    if (close != end) {
      if (place.hasSection) {
        return place;
      }
      const auto nameEnd = static_cast<std::size_t>(close - units_.begin());
      place.hasSection = IsName({line.begin + 1, nameEnd}, section);
      place.sectionEnd = at;
      continue;
    }
    if (!place.hasSection) {
      continue;
    }
    place.sectionEnd = at;
    const auto equals = *begin == u';' ? end : std::find(begin, end, u'=');
    if (equals == end) {
      continue;
    }
    const auto nameEnd = static_cast<std::size_t>(equals - units_.begin());
    if (IsName({line.begin, nameEnd}, key)) {
      place.hasKey = true;
      place.value = {nameEnd + 1, whole.end};
      return place;
    }
  }
  return place;
}

std::optional<std::wstring> CIniText::Get(std::wstring_view section, std::wstring_view key) const {
  const SPlace place = Find(TrimName(section), TrimName(key));
  if (!place.hasKey) {
    return std::nullopt;
  }
  return std::wstring(CutQuotes(Decode(Trim(place.value))));
}

// The file's own, or that of private profiles where it has none yet.
std::wstring CIniText::LineEnd() const {
  const auto first = std::find_if(units_.begin(), units_.end(), IsLineEnd);
  if (first == units_.end()) {
    return L"\r\n";
  }
  const bool isPair = *first == u'\r' && first + 1 != units_.end() && *(first + 1) == u'\n';
  return isPair ? L"\r\n" : std::wstring(1, static_cast<wchar_t>(*first));
}

bool CIniText::Set(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
  section = TrimName(section);
  key = TrimName(key);
  if (!FitsSection(section) || !FitsKey(key) || !FitsValue(value)) {
    return false;
  }
  const SPlace place = Find(section, key);
  if (place.hasKey) {
    units_.replace(place.value.begin, place.value.end - place.value.begin, Encode(value));
    return true;
  }
  const std::wstring lineEnd = LineEnd();
  const std::size_t at = place.hasSection ? place.sectionEnd : units_.size();
  std::wstring added;
  if (at > 0 && !IsLineEnd(units_[at - 1])) {
    added += lineEnd;
  }
  if (!place.hasSection) {
    added.append(L"[").append(section).append(L"]").append(lineEnd);
  }
  added.append(key).append(L"=").append(value).append(lineEnd);
  units_.insert(at, Encode(added));
  return true;
}
