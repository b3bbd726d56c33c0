#include "reports/special/special_row.h"

#include "platform/code_page.h"
#include "reports/special/loop_names.h"

const std::wstring& NoText() {
  static const std::wstring text;
  return text;
}

const SAttSortKey& NoAttribute() {
  static const SAttSortKey key{{}, {}};
  return key;
}

void CDetailRanges::Add(const SDetailRange& range) {
  SDetailRange& last = more_.empty() ? first_ : more_.back();
  if (isEmpty_) {
    isEmpty_ = false;
    first_ = range;
  } else if (range.circuits == nullptr && last.circuits == nullptr && range.first == last.last) {
    last.last = range.last;
  } else {
    more_.push_back(range);
  }
}

CRowSum::CRowSum(const SSpecialRow& row, std::span<const SDetailSum> details) {
  bool isFirst = true;
  row.Details.ForEach([&](const SDetailRange& range) {
    for (const SDetailSum& detail : details.subspan(range.first, range.last - range.first)) {
      const std::wstring_view more = detail.references;
      if (isFirst) {
        isFirst = false;
        Start(detail);
        continue;
      }
      const std::array<double, 4> quantities = detail.Quantities();
      for (std::size_t i = 0; i < quantities_.size(); ++i) {
        quantities_[i] += quantities[i];
      }
      if (!composed_.empty()) {
        composed_ += more;
      } else if (references_.data() + references_.size() == more.data()) {
        references_ = {references_.data(), references_.size() + more.size()};
      } else {
        composed_ = references_;
        composed_ += more;
      }
    }
  });
}

int CompareTexts(const std::wstring& a, const std::wstring& b, ETextOrder order) {
  return order == ETextOrder::Plain ? a.compare(b) : CompareAsNarrow(a, b);
}

int CompareLoops(const SSpecialRow& a, const SSpecialRow& b, ELoopOrder order) {
  if (a.CategorySortId != b.CategorySortId) {
    return a.CategorySortId < b.CategorySortId ? -1 : 1;
  }
  if (a.LoopCategory->kind == b.LoopCategory->kind) {
    // The names differ in their numbers alone, and the natural compare goes by these.
    return a.LoopNumber - b.LoopNumber;
  }
  const std::string nameA = ToNarrowText(CLoopNames::Compose(*a.LoopCategory, a.LoopNumber));
  const std::string nameB = ToNarrowText(CLoopNames::Compose(*b.LoopCategory, b.LoopNumber));
  return order == ELoopOrder::Forwards ? CompareNatural(nameA, nameB, true)
                                       : CompareNatural(nameB, nameA, false);
}
