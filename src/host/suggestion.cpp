#include "host/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "host/joined.h"
#include "platform/portable/utf8_text.h"

namespace {

// A longer word is no name that somebody typed.
constexpr std::size_t kLongestWord = 200;

// A third of the characters may differ, and of a short word one.
std::size_t LargestDistance(std::size_t length) {
  return length < 2 ? 0 : std::clamp<std::size_t>(length / 3, 1, 3);
}

wchar_t LowerAscii(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

std::wstring Folded(const std::string& utf8) {
  std::wstring text = WideFromUtf8(utf8);
  std::transform(text.begin(), text.end(), text.begin(), LowerAscii);
  return text;
}

// Insertions, deletions, replacements and swaps of neighbours that make one text the other.
std::size_t EditDistance(std::wstring_view from, std::wstring_view to) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last(to.size() + 1);
  for (std::size_t j = 0; j <= to.size(); ++j) {
    last[j] = j;
  }
  for (std::size_t i = 1; i <= from.size(); ++i) {
    std::vector<std::size_t> current(to.size() + 1, i);
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const bool isSame = from[i - 1] == to[j - 1];
      current[j] = std::min({last[j] + 1, current[j - 1] + 1, last[j - 1] + (isSame ? 0 : 1)});
      if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
        current[j] = std::min(current[j], beforeLast[j - 2] + 1);
      }
    }
    beforeLast = std::move(last);
    last = std::move(current);
  }
  return last.back();
}

}  // namespace

std::string Suggestion(const std::string& word, const std::vector<std::string>& known) {
  const std::wstring typed = Folded(word);
  if (typed.size() > kLongestWord || std::find(known.begin(), known.end(), word) != known.end()) {
    return "";
  }
  std::size_t nearestDistance = LargestDistance(typed.size()) + 1;
  const std::string* nearest = nullptr;
  for (const std::string& candidate : known) {
    const std::wstring name = Folded(candidate);
    if (name.size() > typed.size() + nearestDistance) {
      continue;
    }
    const std::size_t distance = EditDistance(typed, name);
    if (distance < nearestDistance) {
      nearestDistance = distance;
      nearest = &candidate;
    }
  }
  return nearest == nullptr ? "" : Joined("; did you mean '", *nearest, "'?");
}

std::string KnownWords(const std::string& word, const std::vector<std::string>& known) {
  std::string list;
  for (const std::string& name : known) {
    list += list.empty() ? name : Joined(", ", name);
  }
  return Joined("; there is ", known.empty() ? "none" : list, Suggestion(word, known));
}
