#include "platform/portable/table_code_page.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/portable/utf8_text.h"

namespace {

constexpr int kGbk = 936;
constexpr int kWestern = 1252;
constexpr int kGb18030 = 54936;
constexpr int kUtf8 = 65001;

constexpr char kLacking = '?';
constexpr std::size_t kPlaneSize = 0x10000;

// A character and its double-byte code.
struct SPair {
  char16_t character;
  std::uint16_t code;
};

#include "platform/portable/code_page_936_table.inc"

// The characters of 1252 from 0x80 to 0x9F; the bytes before and behind stand for themselves. The
// five bytes without a character stand for their control codes.
constexpr std::u16string_view kRow1252 =
    u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";
static_assert(kRow1252.size() == 0x20);

// For each character of the basic plane its code; 0 is none, except for U+0000 itself.
using CodeTable = std::vector<std::uint16_t>;

CodeTable MakeAscii() {
  CodeTable codes(kPlaneSize, 0);
  for (std::size_t c = 0; c < 0x80; ++c) {
    codes[c] = static_cast<std::uint16_t>(c);
  }
  return codes;
}

CodeTable MakeDoubleByte() {
  CodeTable codes = MakeAscii();
  unsigned lead = 0x81;
  for (const std::u16string_view row : kRows936) {
    unsigned trail = 0x40;
    for (const char16_t character : row) {
      if (character != u' ') {
        codes[character] = static_cast<std::uint16_t>(lead << 8 | trail);
      }
      trail += trail == 0x7E ? 2 : 1;  // 0x7F is no trail byte
    }
    ++lead;
  }
  return codes;
}

const CodeTable& Codes936() {
  static const CodeTable codes = [] {
    CodeTable made = MakeDoubleByte();
    made[0x20AC] = 0x80;
    return made;
  }();
  return codes;
}

const CodeTable& Codes1252() {
  static const CodeTable codes = [] {
    CodeTable made = MakeAscii();
    for (std::size_t i = 0; i < kRow1252.size(); ++i) {
      made[kRow1252[i]] = static_cast<std::uint16_t>(0x80 + i);
    }
    for (std::size_t c = 0xA0; c <= 0xFF; ++c) {
      made[c] = static_cast<std::uint16_t>(c);
    }
    return made;
  }();
  return codes;
}

// GB18030 numbers the characters of the basic plane without a double-byte code in their order; the
// number makes a code of four bytes. In both areas an entry tells which of the two it is.
class CGb18030Table {
 public:
  CGb18030Table() : codes_(MakeDoubleByte()), isNumber_(kPlaneSize, false) {
    for (const SPair& pair : kPairs18030) {
      codes_[pair.character] = pair.code;
    }
    std::uint16_t number = 0;
    for (std::size_t c = 0x80; c < kPlaneSize; ++c) {
      const bool isSurrogate = c >= 0xD800 && c <= 0xDFFF;
      const bool isUserDefined = c >= kUserDefinedBegin && c < kUserDefinedEnd;
      if (codes_[c] == 0 && !isSurrogate && !isUserDefined) {
        codes_[c] = number++;
        isNumber_[c] = true;
      }
    }
  }

  void Append(std::string& narrow, char32_t c) const {
    if (c >= kPlaneSize) {
      AppendFourBytes(narrow, kFirstBeyondPlane + (c - kPlaneSize));
    } else if (isNumber_[c]) {
      AppendFourBytes(narrow, codes_[c]);
    } else if (codes_[c] == 0) {
      narrow.push_back(kLacking);
    } else {
      narrow.push_back(static_cast<char>(codes_[c] >> 8));
      narrow.push_back(static_cast<char>(codes_[c] & 0xFF));
    }
  }

 private:
  // The user-defined area has double-byte codes of its own, which do not count.
  static constexpr std::size_t kUserDefinedBegin = 0xE000;
  static constexpr std::size_t kUserDefinedEnd = 0xE766;
  static constexpr char32_t kFirstBeyondPlane = (0x90 - 0x81) * 12600;

  static void AppendFourBytes(std::string& narrow, char32_t number) {
    narrow.push_back(static_cast<char>(0x81 + number / 12600));
    narrow.push_back(static_cast<char>(0x30 + number / 1260 % 10));
    narrow.push_back(static_cast<char>(0x81 + number / 10 % 126));
    narrow.push_back(static_cast<char>(0x30 + number % 10));
  }

  CodeTable codes_;
  std::vector<bool> isNumber_;
};

void AppendByTable(std::string& narrow, const CodeTable& codes, char32_t c) {
  const std::uint16_t code = c < kPlaneSize ? codes[c] : std::uint16_t{0};
  if (code == 0) {
    narrow.push_back(kLacking);
    return;
  }
  if (code > 0xFF) {
    narrow.push_back(static_cast<char>(code >> 8));
  }
  narrow.push_back(static_cast<char>(code & 0xFF));
}

// ASCII is the same in every code page; the rest is the business of `append`.
template <class TAppend>
std::string Convert(std::wstring_view text, TAppend append) {
  std::string narrow;
  narrow.reserve(text.size() * 2);
  while (!text.empty()) {
    const auto first = static_cast<char32_t>(text.front());
    if (first < 0x80) {
      narrow.push_back(static_cast<char>(first));
      text.remove_prefix(1);
      continue;
    }
    const char32_t c = TakeCodePoint(text);
    // U+FFFD also stands for what was no character at all.
    if (c == 0xFFFD && first != 0xFFFD) {
      narrow.push_back(kLacking);
    } else {
      append(narrow, c);
    }
  }
  return narrow;
}

std::string ConvertByTable(std::wstring_view text, const CodeTable& codes) {
  return Convert(text,
                 [&codes](std::string& narrow, char32_t c) { AppendByTable(narrow, codes, c); });
}

thread_local int t_codePage = kGbk;

}  // namespace

std::shared_ptr<ICodePage> ICodePage::MakePortable() {
  return std::make_shared<CTableCodePage>();
}

std::string CTableCodePage::ToNarrow(std::wstring_view text) {
  switch (t_codePage) {
    case kWestern:
      return ConvertByTable(text, Codes1252());
    case kGb18030: {
      static const CGb18030Table table;
      return Convert(text, [](std::string& narrow, char32_t c) { table.Append(narrow, c); });
    }
    case kUtf8:
      return Convert(text, AppendUtf8);
    default:
      return ConvertByTable(text, Codes936());
  }
}

int CTableCodePage::GetThreadCodePage() {
  return t_codePage;
}

bool CTableCodePage::SetThreadCodePage(int codePage) {
  for (const int supported : {kGbk, kWestern, kGb18030, kUtf8}) {
    if (codePage == supported) {
      t_codePage = codePage;
      return true;
    }
  }
  return false;
}
