#include "report_model/node_key.h"

#include <algorithm>

#include "platform/text_numbers.h"

// Goes through a key's text in runs of characters.
class CNodeKey::CReader {
 public:
  explicit CReader(const CNodeKey& key) : key_(key) {}

  /// Moves on to the next run that is not empty; false at the end of the text.
  bool Fill() {
    while (run_.empty() && next_ < key_.count_) {
      const SPart& part = key_.parts_[next_++];
      run_ = part.kind == EPart::Text ? std::wstring_view(part.text, part.size) : Print(part);
    }
    return !run_.empty();
  }
  std::wstring_view Run() const { return run_; }
  void Pass(std::size_t count) { run_.remove_prefix(count); }
  /// Whether both stand before the same number, which then need not be printed.
  bool PassSameNumber(CReader& other) {
    if (!run_.empty() || !other.run_.empty() || next_ == key_.count_ ||
        other.next_ == other.key_.count_) {
      return false;
    }
    const SPart& mine = key_.parts_[next_];
    const SPart& theirs = other.key_.parts_[other.next_];
    // Zero has two signs.
    if (mine.kind == EPart::Text || mine.kind != theirs.kind || mine.number != theirs.number ||
        mine.number == 0) {
      return false;
    }
    ++next_;
    ++other.next_;
    return true;
  }

 private:
  std::wstring_view Print(const SPart& part) {
    number_.clear();
    if (part.kind == EPart::Int) {
      AppendInt(number_, static_cast<int>(part.number));
    } else {
      AppendNumber(number_, part.number);
    }
    return number_;
  }

  const CNodeKey& key_;
  std::size_t next_ = 0;
  std::wstring_view run_;
  std::wstring number_;
};

int CNodeKey::Compare(const CNodeKey& other) const {
  CReader a(*this);
  CReader b(other);
  while (true) {
    if (a.PassSameNumber(b)) {
      continue;
    }
    const bool hasA = a.Fill();
    const bool hasB = b.Fill();
    if (!hasA || !hasB) {
      return static_cast<int>(hasA) - static_cast<int>(hasB);
    }
    const std::size_t count = std::min(a.Run().size(), b.Run().size());
    // One object is often a part of both.
    if (a.Run().data() != b.Run().data()) {
      if (const int order = a.Run().substr(0, count).compare(b.Run().substr(0, count))) {
        return order;
      }
    }
    a.Pass(count);
    b.Pass(count);
  }
}

std::wstring CNodeKey::Text() const {
  std::wstring text;
  for (CReader reader(*this); reader.Fill(); reader.Pass(reader.Run().size())) {
    text += reader.Run();
  }
  return text;
}
