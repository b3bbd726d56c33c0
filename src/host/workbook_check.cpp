#include "host/workbook_check.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kRowsBegin = "<sheetData>";
constexpr std::string_view kRowsEnd = "</sheetData>";
constexpr std::string_view kSheetFolder = "xl/worksheets/sheet";
constexpr std::size_t kPiece = 1 << 16;

/// The file is not what it must be.
class CBrokenFile : public std::runtime_error {
 public:
  CBrokenFile() : std::runtime_error("broken file") {}
};

void Require(bool isFine) {
  if (!isFine) {
    throw CBrokenFile();
  }
}

/// Watches the bytes of a part pass by.
class CPart {
 public:
  void Add(std::string_view bytes) {
    if (head_.size() < kPiece) {
      head_ += bytes.substr(0, kPiece - head_.size());
    }
    tail_ += bytes;
    if (tail_.size() > 2 * kTail) {
      tail_.erase(0, tail_.size() - kTail);
    }
    AddToMark(bytes);
    size_ += bytes.size();
  }

  /// Before the first Add: the rows take that many bytes.
  void ExpectRows(std::uint64_t size) { rowsSize_ = size; }

  void RequireWhole() const {
    RequireRootEnd();
    Require(rowsSize_ == 0 || mark_ == kRowsEnd);
  }

 private:
  static constexpr std::size_t kTail = 256;

  // Collects what stands where the rows must end.
  void AddToMark(std::string_view bytes) {
    if (rowsSize_ == 0) {
      return;
    }
    const std::size_t begin = head_.find(kRowsBegin);
    if (begin == std::string::npos) {
      return;
    }
    const std::uint64_t wanted = begin + kRowsBegin.size() + rowsSize_ + mark_.size();
    if (wanted >= size_ && wanted - size_ < bytes.size() && mark_.size() < kRowsEnd.size()) {
      mark_ +=
          bytes.substr(static_cast<std::size_t>(wanted - size_), kRowsEnd.size() - mark_.size());
    }
  }

  void RequireRootEnd() const {
    std::size_t begin = head_.find('<', head_.find("?>"));
    Require(begin != std::string::npos);
    const std::size_t end = head_.find_first_of(" >", ++begin);
    Require(end != std::string::npos);
    std::string_view tail = tail_;
    tail = tail.substr(0, tail.find_last_not_of('\n') + 1);
    Require(tail.ends_with("</" + head_.substr(begin, end - begin) + ">"));
  }

  std::string head_;
  std::string tail_;
  std::string mark_;
  std::uint64_t size_ = 0;
  std::uint64_t rowsSize_ = 0;
};

/// Reads a ZIP file from front to end.
class CZipReader {
 public:
  explicit CZipReader(std::FILE* file) : file_(file) {
    Require(inflateInit2(&stream_, -MAX_WBITS) == Z_OK);
  }
  ~CZipReader() { inflateEnd(&stream_); }
  CZipReader(const CZipReader&) = delete;
  CZipReader& operator=(const CZipReader&) = delete;

  /// Goes on to the next part; false where there is none.
  bool Next() {
    constexpr std::size_t kHeaderSize = 30;
    constexpr std::string_view kSignature("PK\x03\x04", 4);
    const std::string header = Take(kHeaderSize);
    if (header.substr(0, kSignature.size()) != kSignature) {
      Require(header.starts_with(std::string_view("PK\x01\x02", 4)));
      return false;
    }
    checksum_ = Number(header, 14, 4);
    const std::size_t nameSize = Number(header, 26, 2);
    name_ = Take(nameSize);
    Take(Number(header, 28, 2));
    return true;
  }

  const std::string& Name() const { return name_; }

  /// Hands the part's content to `part`.
  void Read(CPart& part) {
    Require(inflateReset(&stream_) == Z_OK);
    uLong checksum = crc32(0, nullptr, 0);
    int state = Z_OK;
    while (state != Z_STREAM_END) {
      if (stream_.avail_in == 0) {
        Fill();
      }
      stream_.next_out = output_.data();
      stream_.avail_out = static_cast<uInt>(output_.size());
      state = inflate(&stream_, Z_NO_FLUSH);
      Require(state == Z_OK || state == Z_STREAM_END);
      const std::size_t size = output_.size() - stream_.avail_out;
      checksum = crc32(checksum, output_.data(), static_cast<uInt>(size));
      part.Add({reinterpret_cast<const char*>(output_.data()), size});
    }
    Require(checksum == checksum_);
  }

 private:
  static std::size_t Number(const std::string& header, std::size_t at, std::size_t size) {
    std::size_t number = 0;
    for (std::size_t i = size; i-- > 0;) {
      number = number << 8 | static_cast<unsigned char>(header[at + i]);
    }
    return number;
  }

  void Fill() {
    stream_.next_in = input_.data();
    stream_.avail_in = static_cast<uInt>(std::fread(input_.data(), 1, input_.size(), file_));
    Require(stream_.avail_in != 0);
  }

  std::string Take(std::size_t size) {
    std::string bytes;
    while (bytes.size() < size) {
      if (stream_.avail_in == 0) {
        Fill();
      }
      const std::size_t some = std::min<std::size_t>(size - bytes.size(), stream_.avail_in);
      bytes.append(reinterpret_cast<const char*>(stream_.next_in), some);
      stream_.next_in += some;
      stream_.avail_in -= static_cast<uInt>(some);
    }
    return bytes;
  }

  std::FILE* file_;
  z_stream stream_ = {};
  std::array<unsigned char, kPiece> input_;
  std::array<unsigned char, kPiece> output_;
  std::string name_;
  std::size_t checksum_ = 0;
};

void CheckParts(std::FILE* file, std::span<const std::uint64_t> sheetSizes) {
  CZipReader zip(file);
  std::size_t sheets = 0;
  while (zip.Next()) {
    CPart part;
    if (zip.Name().starts_with(kSheetFolder)) {
      Require(sheets < sheetSizes.size());
      part.ExpectRows(sheetSizes[sheets]);
      ++sheets;
    }
    zip.Read(part);
    part.RequireWhole();
  }
  Require(sheets == sheetSizes.size());
}

}  // namespace

bool IsWholeWorkbook(std::FILE* file, std::span<const std::uint64_t> sheetSizes) {
  try {
    CheckParts(file, sheetSizes);
    return true;
  } catch (const CBrokenFile&) {
    return false;
  }
}
