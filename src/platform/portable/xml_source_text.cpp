#include "platform/portable/xml_source_text.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

#include "platform/portable/utf8_text.h"

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kMostAttributes = 1000;
constexpr std::size_t kMostNames = 100000;
constexpr std::size_t kNone = std::string_view::npos;

bool EqualsInAnyCase(std::string_view text, std::string_view upper) {
  if (text.size() != upper.size()) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if ((c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c) != upper[i]) {
      return false;
    }
  }
  return true;
}

std::string_view CutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text;
}

// The encoding that an XML declaration names; empty without one. Whether the declaration is
// well-formed is for the parser to say.
std::string_view DeclaredEncoding(std::string_view text) {
  constexpr std::string_view kBegin = "<?xml";
  constexpr std::string_view kWord = "encoding";
  if (!text.starts_with(kBegin) || text.size() == kBegin.size() ||
      kBlanks.find(text[kBegin.size()]) == kNone) {
    return {};
  }
  text = text.substr(0, text.find("?>"));
  for (std::size_t at = text.find(kWord); at != kNone; at = text.find(kWord)) {
    text = CutBlanks(text.substr(at + kWord.size()));
    if (!text.starts_with('=')) {
      continue;
    }
    text = CutBlanks(text.substr(1));
    if (text.starts_with('"') || text.starts_with('\'')) {
      return text.substr(1, text.find(text.front(), 1) - 1);
    }
  }
  return {};
}

// One code point of well-formed UTF-8 from the front of `bytes`, which loses it; 0 for anything
// else.
char32_t TakeUtf8(std::string_view& bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  constexpr char32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000};
  if ((lead >= 0x80 && lead < 0xC2) || lead > 0xF4 || bytes.size() < size) {
    return 0;
  }
  char32_t c = size == 1 ? lead : lead & (0xFFu >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if ((byte & 0xC0) != 0x80) {
      return 0;
    }
    c = c << 6 | (byte & 0x3Fu);
  }
  bytes.remove_prefix(size);
  return c < kLowest[size] ? 0 : c;
}

bool IsXmlUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!IsXmlCharacter(TakeUtf8(bytes))) {
      return false;
    }
  }
  return true;
}

char32_t Utf16Unit(std::string_view bytes, std::size_t at, bool isLittle) {
  const auto first = static_cast<unsigned char>(bytes[at]);
  const auto second = static_cast<unsigned char>(bytes[at + 1]);
  return static_cast<char32_t>(isLittle ? second << 8 | first : first << 8 | second);
}

std::optional<std::string> Utf8FromUtf16(std::string_view bytes, bool isLittle) {
  if (bytes.size() % 2 != 0) {
    return std::nullopt;
  }
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    char32_t c = Utf16Unit(bytes, at, isLittle);
    if (c >= 0xD800 && c <= 0xDBFF && at + 2 < bytes.size()) {
      const char32_t low = Utf16Unit(bytes, at + 2, isLittle);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    if (!IsXmlCharacter(c)) {
      return std::nullopt;
    }
    AppendUtf8(text, c);
  }
  return text;
}

// Walks over the markup of a text. On anything that is not well-formed it either stops or stays in
// step with a parser: both find tags at the same places.
class CMarkupScanner {
 public:
  explicit CMarkupScanner(std::string_view text) : text_(text) {}

  bool IsHarmless() {
    while (ToNextMarkup()) {
      if (!PassMarkup()) {
        return false;
      }
    }
    return true;
  }

 private:
  bool ToNextMarkup() {
    at_ = text_.find('<', at_);
    return at_ != kNone;
  }

  bool PassMarkup() {
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with("<!--")) {
      return PassUntil("-->", 4);
    }
    if (rest.starts_with("<![CDATA[")) {
      return PassUntil("]]>", 9);
    }
    if (rest.starts_with("<?")) {
      // Without a target there is no instruction, and a parser would read its inside as content.
      return rest.size() > 2 && IsNameStart(rest.substr(2)) && CountName(rest.substr(2)) &&
             PassUntil("?>", 2);
    }
    if (rest.starts_with("<!")) {
      return false;
    }
    return PassTag();
  }

  bool PassUntil(std::string_view end, std::size_t from) {
    at_ = text_.find(end, at_ + from);
    if (at_ == kNone) {
      return false;
    }
    at_ += end.size();
    return true;
  }

  // Neither a tag nor a value in it may hold "<".
  bool PassTag() {
    std::size_t attributes = 0;
    if (!CountName(text_.substr(at_ + 1))) {
      return false;
    }
    at_ = text_.find_first_of("<>\"'", at_ + 1);
    while (at_ != kNone && text_[at_] != '<') {
      if (text_[at_] == '>') {
        ++at_;
        return true;
      }
      if (!CountName(LastWord(text_.substr(0, at_)))) {
        return false;
      }
      const char value[] = {'<', text_[at_], '\0'};
      at_ = text_.find_first_of(value, at_ + 1);
      if (at_ == kNone || text_[at_] == '<' || ++attributes > kMostAttributes) {
        return false;
      }
      at_ = text_.find_first_of("<>\"'", at_ + 1);
    }
    return false;
  }

  // What stands before "=" and a value.
  static std::string_view LastWord(std::string_view text) {
    constexpr std::string_view kAround = " \t\r\n=";
    const std::size_t end = text.find_last_not_of(kAround);
    const std::size_t begin = text.find_last_of(" \t\r\n='\"<", end);
    return begin == kNone || end == kNone ? text : text.substr(begin + 1, end - begin);
  }

  // The name at the front of a text.
  bool CountName(std::string_view text) {
    names_.insert(text.substr(0, text.find_first_of(" \t\r\n/>?='\"")));
    return names_.size() <= kMostNames;
  }

  static bool IsNameStart(std::string_view text) {
    const char32_t c = TakeUtf8(text);
    return c == ':' || c == '_' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           (c >= 0xC0 && c <= 0x2FF && c != 0xD7 && c != 0xF7) ||
           (c >= 0x370 && c <= 0x1FFF && c != 0x37E) || c == 0x200C || c == 0x200D ||
           (c >= 0x2070 && c <= 0x218F) || (c >= 0x2C00 && c <= 0x2FEF) ||
           (c >= 0x3001 && c <= 0xD7FF) || (c >= 0xF900 && c <= 0xFDCF) ||
           (c >= 0xFDF0 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0xEFFFF);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::unordered_set<std::string_view> names_;
};

}  // namespace

std::optional<std::string> ReadXmlText(std::string_view bytes) {
  std::optional<std::string> text;
  std::string_view encoding = "UTF-8";
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    encoding = "UTF-16";
    text = Utf8FromUtf16(bytes.substr(2), bytes.front() == '\xFF');
  } else {
    bytes.remove_prefix(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
    if (IsXmlUtf8(bytes)) {
      text = std::string(bytes);
    }
  }
  // A second mark is a character before the root, which a parser may take for the first.
  if (!text || text->starts_with(kUtf8Mark)) {
    return std::nullopt;
  }
  const std::string_view declared = DeclaredEncoding(*text);
  if (!declared.empty() && !EqualsInAnyCase(declared, encoding)) {
    return std::nullopt;
  }
  return text;
}

bool IsHarmlessXml(std::string_view text) {
  return CMarkupScanner(text).IsHarmless();
}
