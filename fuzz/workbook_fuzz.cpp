// Workbooks over texts of any kind: the archive is whole, and all of its parts are XML that a
// reader takes.
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "export_document.h"
#include "fuzz_check.h"
#include "fuzz_input.h"
#include "host/formats.h"
#include "platform/portable/libxml_parser.h"
#include "platform/portable/xml_source_text.h"

namespace {

/// A number of an archive, its low byte first.
std::size_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
  Require(at + size <= bytes.size(), "a field is whole");
  std::size_t number = 0;
  for (std::size_t i = size; i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  }
  return number;
}

std::string Inflated(std::string_view packed, std::size_t size) {
  std::string plain(size, '\0');
  z_stream stream = {};
  Require(inflateInit2(&stream, -MAX_WBITS) == Z_OK, "memory");
  // zlib takes its input by a pointer to what it does not change.
  std::string input(packed);
  stream.next_in = reinterpret_cast<Bytef*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  stream.next_out = reinterpret_cast<Bytef*>(plain.data());
  stream.avail_out = static_cast<uInt>(plain.size());
  const int status = inflate(&stream, Z_FINISH);
  inflateEnd(&stream);
  Require(status == Z_STREAM_END && stream.avail_out == 0, "a part unpacks to its size");
  return plain;
}

struct SPart {
  std::string name;
  std::string bytes;
};

/// The parts of an archive by its directory.
std::vector<SPart> ReadArchive(std::string_view archive) {
  using namespace std::literals;
  const std::size_t end = archive.rfind("PK\5\6"sv);
  Require(end != archive.npos, "an archive has a directory");
  std::vector<SPart> parts;
  std::size_t at = Number(archive, end + 16, 4);
  for (std::size_t count = Number(archive, end + 10, 2); count > 0; --count) {
    const std::size_t method = Number(archive, at + 10, 2);
    const std::size_t packed = Number(archive, at + 20, 4);
    const std::size_t size = Number(archive, at + 24, 4);
    const std::size_t nameSize = Number(archive, at + 28, 2);
    const std::size_t local = Number(archive, at + 42, 4);
    const std::size_t begin =
        local + 30 + Number(archive, local + 26, 2) + Number(archive, local + 28, 2);
    Require(begin + packed <= archive.size(), "a part lies in the archive");
    const std::string_view bytes = archive.substr(begin, packed);
    Require(method == 0 || method == Z_DEFLATED, "a part is stored or deflated");
    parts.push_back({std::string(archive.substr(at + 46, nameSize)),
                     method == 0 ? std::string(bytes) : Inflated(bytes, size)});
    at += 46 + nameSize + Number(archive, at + 30, 2) + Number(archive, at + 32, 2);
  }
  return parts;
}

void CheckWorkbook(const std::string& archive) {
  std::set<std::string> names;
  for (const SPart& part : ReadArchive(archive)) {
    Require(names.insert(part.name).second, "no part twice");
    const std::optional<std::string> text = ReadXmlText(part.bytes);
    Require(text.has_value(), "a part is text that XML can hold");
    Require(IsHarmlessXml(*text) && ParseXml(*text) != nullptr, "a part is well-formed");
  }
  Require(names.contains("xl/workbook.xml"), "the workbook is there");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CFuzzInput input(data, size);
  const std::vector<std::wstring> texts = ReadTexts(input);
  CheckWorkbook(Exported(*FindFormat("xlsx"), ReadDocument(input, texts)));
  return 0;
}
