#include "reports/special/special_row.h"

#include "platform/code_page.h"
#include "platform/text_numbers.h"

const std::wstring& NoText() {
  static const std::wstring text;
  return text;
}

const SAttSortKey& NoAttribute() {
  static const SAttSortKey key{{}, {}};
  return key;
}

std::wstring SSpecialRow::LoopName() const {
  return LoopNumber == 0 ? std::wstring() : LoopCategory->kind + L"回路" + IntText(LoopNumber);
}

std::wstring SSpecialRow::Expression() const {
  std::size_t size = References.size();
  for (const CReportResultDetail* detail : References) {
    size += detail->ComponentTextSize();
  }
  std::wstring text;
  text.reserve(size);
  for (const CReportResultDetail* detail : References) {
    detail->AppendComponentText(text);
    text += L'$';
  }
  return text;
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
  const std::string nameA = ToNarrowText(a.LoopName());
  const std::string nameB = ToNarrowText(b.LoopName());
  return order == ELoopOrder::Forwards ? CompareNatural(nameA, nameB, true)
                                       : CompareNatural(nameB, nameA, false);
}
