#include "model/model_texts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "platform/code_page.h"

namespace tally_model {
namespace {

bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

bool IsBlank(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}

/// Takes digits from `text` at `at` on.
std::string TakeDigits(const std::wstring& text, std::size_t& at) {
  std::string digits;
  while (at < text.size() && IsDigit(text[at])) {
    digits += static_cast<char>(text[at]);
    ++at;
  }
  return digits;
}

/// Takes leading blanks and a sign; answers the sign.
std::string TakeSign(const std::wstring& text, std::size_t& at) {
  while (at < text.size() && IsBlank(text[at])) {
    ++at;
  }
  if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) {
    return std::string(1, static_cast<char>(text[at++]));
  }
  return "";
}

/// An exponent "e5", "E+5" or "e-5" at `at`; empty where there is none.
std::string ExponentAt(const std::wstring& text, std::size_t at) {
  if (at >= text.size() || (text[at] != L'e' && text[at] != L'E')) {
    return "";
  }
  ++at;
  std::string exponent = "e";
  if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) {
    exponent += static_cast<char>(text[at++]);
  }
  const std::string digits = TakeDigits(text, at);
  return digits.empty() ? "" : exponent + digits;
}

std::wstring PlainSeparators(const std::wstring& text) {
  return ReplaceAll(ReplaceAll(text, L'，', L','), L'／', L'/');
}

bool InRun(char c) {
  return (c >= '0' && c <= '9') || c == '.';
}

std::string RunAt(const std::string& text, std::size_t start) {
  std::string run;
  for (std::size_t i = start; i < text.size() && InRun(text[i]); ++i) {
    run += text[i];
  }
  return run;
}

}  // namespace

Texts SplitText(const std::wstring& text, wchar_t separator) {
  Texts parts;
  if (text.empty()) {
    return parts;
  }
  parts.emplace_back();
  for (const wchar_t c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::wstring UpTo(const std::wstring& text, const std::wstring& mark) {
  return text.substr(0, text.find(mark));
}

bool BeginsWith(const std::wstring& text, const std::wstring& prefix) {
  return text.find(prefix) == 0;
}

std::wstring ReplaceAll(const std::wstring& text, wchar_t from, wchar_t to) {
  std::wstring replaced = text;
  std::replace(replaced.begin(), replaced.end(), from, to);
  return replaced;
}

std::wstring NumberText(double number) {
  if (std::isnan(number)) {
    return L"nan";
  }
  char text[40];
  std::snprintf(text, sizeof text, "%g", number);
  const std::string narrow = text;
  return std::wstring(narrow.begin(), narrow.end());
}

std::wstring NumberText(int number) {
  return std::to_wstring(number);
}

double LeadingNumber(const std::wstring& text) {
  std::size_t at = 0;
  std::string number = TakeSign(text, at);
  const std::string whole = TakeDigits(text, at);
  std::string fraction;
  if (at < text.size() && text[at] == L'.') {
    std::size_t behind = at + 1;
    fraction = TakeDigits(text, behind);
    if (!whole.empty() || !fraction.empty()) {
      at = behind;
    }
  }
  if (whole.empty() && fraction.empty()) {
    return 0;
  }
  number += whole + "." + fraction + ExponentAt(text, at);
  const double value = std::strtod(number.c_str(), nullptr);
  const double largest = std::numeric_limits<double>::max();
  return std::min(std::max(value, -largest), largest);
}

double LeadingNumber(const std::string& text) {
  return LeadingNumber(std::wstring(text.begin(), text.end()));
}

int LeadingDigits(const std::wstring& text) {
  std::size_t at = 0;
  const bool negative = TakeSign(text, at) == "-";
  const std::string digits = TakeDigits(text, at);
  std::int64_t value = 0;
  for (const char digit : digits) {
    // One more than the type can hold is enough.
    value = std::min<std::int64_t>(value * 10 + (digit - '0'), std::int64_t{1} << 31);
  }
  const std::int64_t whole = negative ? -value : value;
  return static_cast<int>(std::min<std::int64_t>(whole, std::numeric_limits<int>::max()));
}

std::string Narrow(const std::wstring& text) {
  return ToNarrowText(text);
}

std::string WithoutBlanks(const std::string& text) {
  std::string kept;
  for (const char c : text) {
    if (c != ' ') {
      kept += c;
    }
  }
  return kept;
}

int CompareRuns(const std::string& a, const std::string& b, std::size_t start) {
  const std::string runA = RunAt(a, start);
  const std::string runB = RunAt(b, start);
  if (LeadingNumber(runA) > LeadingNumber(runB)) {
    return -1;
  }
  return runA == runB ? 0 : 1;
}

int CompareNaturally(const std::string& a, const std::string& b, bool ascending) {
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    if (InRun(a[i]) && InRun(b[i])) {
      const int runs = CompareRuns(a, b, i);
      if (runs != 0) {
        return ascending ? -runs : runs;
      }
    }
    const auto byteA = static_cast<signed char>(a[i]);
    const auto byteB = static_cast<signed char>(b[i]);
    if (byteA != byteB) {
      return byteA < byteB ? -1 : 1;
    }
  }
  if (a.size() == b.size()) {
    return 0;
  }
  return a.size() < b.size() ? -1 : 1;
}

int AttSort(const std::wstring& a, const std::wstring& b, bool ascending) {
  return CompareNaturally(Narrow(a), Narrow(b), ascending);
}

int BlockSort(const std::wstring& a, const std::wstring& b, bool ascending) {
  return CompareNaturally(WithoutBlanks(Narrow(a)), WithoutBlanks(Narrow(b)), ascending);
}

bool NarrowLess(const std::wstring& a, const std::wstring& b) {
  return Narrow(a) < Narrow(b);
}

std::wstring CompletedSysCode(const std::wstring& path) {
  const Texts names = SplitText(path, L'\\');
  if (names.empty() || names.size() == 3) {
    return path;
  }
  return path + L"\\*" + names.back();
}

std::wstring SysCodeAtLevel(const std::wstring& path, int level) {
  if (level == 3) {
    return path;
  }
  std::wstring joined;
  int taken = 0;
  for (const std::wstring& name : SplitText(path, L'\\')) {
    if (taken < level) {
      joined += taken == 0 ? name : L"\\" + name;
      ++taken;
    }
  }
  return joined;
}

std::vector<std::set<std::wstring>> NamesByLevel(const Texts& paths) {
  std::set<std::wstring> names[3];
  for (const std::wstring& path : paths) {
    const Texts parts = SplitText(path, L'\\');
    for (std::size_t i = 0; i < 3 && i < parts.size(); ++i) {
      names[i].insert(parts[i]);
    }
  }
  std::vector<std::set<std::wstring>> levels;
  for (const std::set<std::wstring>& level : names) {
    if (!level.empty()) {
      levels.push_back(level);
    }
  }
  return levels;
}

int FloorCount(const std::wstring& text) {
  if (text.empty()) {
    return 0;
  }
  const std::wstring plain = PlainSeparators(text);
  const std::size_t comma = plain.find(L',');
  const std::size_t slash = plain.find(L'/');
  const std::size_t none = std::wstring::npos;
  if (comma != none && comma >= 1) {
    const std::int64_t first = LeadingDigits(plain.substr(0, comma));
    const std::int64_t last = LeadingDigits(plain.substr(comma + 1));
    const std::int64_t between = first + 1 < last ? last - first - 1 : 0;
    return static_cast<int>(std::min<std::int64_t>(between + 2, std::numeric_limits<int>::max()));
  }
  if (slash != none && slash >= 1) {
    int count = 1;
    for (const std::wstring& floor : SplitText(plain.substr(slash + 1), L'/')) {
      count += floor.empty() ? 0 : 1;
    }
    return count;
  }
  return comma == none && slash == none ? 1 : 0;
}

int FloorGrade(const std::wstring& name) {
  const std::wstring plain = PlainSeparators(name);
  const std::size_t comma = plain.find(L',');
  const std::size_t slash = plain.find(L'/');
  const std::size_t none = std::wstring::npos;
  const std::wstring number = plain.substr(0, comma != none ? comma : slash);
  const double scaled = LeadingNumber(number) * 100.0;
  const double smallest = std::numeric_limits<int>::min();
  const double largest = std::numeric_limits<int>::max();
  auto grade = static_cast<std::int64_t>(std::min(std::max(scaled, smallest), largest));
  if (grade == 0) {
    grade = -10000;
  }
  if (comma != none || slash != none) {
    grade = std::max<std::int64_t>(grade - 1, std::numeric_limits<int>::min());
  }
  return static_cast<int>(grade);
}

std::wstring LineValue(const Texts& lines, const std::wstring& key) {
  for (const std::wstring& line : lines) {
    if (line.find(key) != std::wstring::npos) {
      const std::size_t colon = line.find(L':');
      return colon == std::wstring::npos ? line : line.substr(colon + 1);
    }
  }
  return L"";
}

bool PrefixValue(std::wstring& value, const std::wstring& text, const std::wstring& prefix) {
  for (const std::wstring& line : SplitText(text, L'\n')) {
    if (BeginsWith(line, prefix)) {
      const std::size_t colon = line.find(L':');
      if (colon == std::wstring::npos) {
        return false;
      }
      value = line.substr(colon + 1);
      return true;
    }
  }
  return false;
}

std::wstring PipeLineName(const std::wstring& name, const std::wstring& attributes,
                          const std::wstring& spec, const std::wstring& category) {
  for (const wchar_t* part : {L"机械", L"（沟槽式）", L"（螺纹式）"}) {
    if (name.find(part) != std::wstring::npos) {
      return name;
    }
  }
  if (attributes.empty()) {
    return name + L" 沟槽连接";
  }
  const Texts lines = SplitText(attributes, L'\n');
  std::wstring made = name;
  if (spec == L"电气" || spec == L"弱电") {
    made += L" " + LineValue(lines, L"材质:");
  }
  if (category == L"风管") {
    made += L" " + LineValue(lines, L"材质:");
  }
  for (const wchar_t* key : {L"连接方式:", L"样式:"}) {
    const std::wstring value = LineValue(lines, key);
    if (!value.empty()) {
      made += L" " + value;
    }
  }
  return made;
}

void Unite(Report::SResultData& target, const Report::SResultData& source) {
  if (target.unit == source.unit) {
    target.quantity += source.quantity;
    target.components += source.components;
  }
}

void AppendQuantity(Texts& cells, const Report::SResultData& sum) {
  cells.push_back(sum.unit);
  cells.push_back(NumberText(sum.quantity));
}

void AppendQuantityAndComponents(Texts& cells, const Report::SResultData& sum) {
  AppendQuantity(cells, sum);
  cells.push_back(sum.components);
}

void Append(Texts& cells, const Texts& more) {
  for (const std::wstring& cell : more) {
    cells.push_back(cell);
  }
}

bool SFloorBlock::operator<(const SFloorBlock& other) const {
  const int grade = FloorGrade(name);
  const int otherGrade = FloorGrade(other.name);
  if (grade != otherGrade) {
    return grade < otherGrade;
  }
  return LeadingDigits(name) < LeadingDigits(other.name);
}

bool SCalItemBlock::operator<(const SCalItemBlock& other) const {
  if (name != other.name) {
    return NarrowLess(name, other.name);
  }
  return NarrowLess(unit, other.unit);
}

bool SAttBlock::operator<(const SAttBlock& other) const {
  if (name != other.name) {
    return BlockSort(name, other.name, !largerFirst) < 0;
  }
  return NarrowLess(value, other.value);
}

bool SQdDeBlock::operator<(const SQdDeBlock& other) const {
  if (code != other.code) {
    return BlockSort(code, other.code, true) < 0;
  }
  if (name != other.name) {
    return NarrowLess(name, other.name);
  }
  if (feature != other.feature) {
    return NarrowLess(feature, other.feature);
  }
  return NarrowLess(unit, other.unit);
}

bool SGroupBlock::operator<(const SGroupBlock& other) const {
  if (number != other.number) {
    return number < other.number;
  }
  return NarrowLess(name, other.name);
}

bool SPaintBlock::operator<(const SPaintBlock& other) const {
  if (categoryNumber != other.categoryNumber) {
    return categoryNumber < other.categoryNumber;
  }
  if (name != other.name) {
    return NarrowLess(name, other.name);
  }
  return coat < other.coat;
}

}  // namespace tally_model
