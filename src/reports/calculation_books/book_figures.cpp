#include "reports/calculation_books/book_figures.h"

#include "platform/text_numbers.h"

SFigureText SBookFigures::Print(const SItemFigures& figures) {
  SFigureText text;
  text.begin = texts.size();
  texts += figures.formula;
  text.formulaSize = static_cast<std::uint32_t>(figures.formula.size());
  for (std::size_t i = 0; i < text.sumSizes.size(); ++i) {
    const std::size_t before = texts.size();
    AppendNumber(texts, figures.sums[i]);
    text.sumSizes[i] = static_cast<std::uint8_t>(texts.size() - before);
  }
  return text;
}

void SBookFigures::AddRow(CCellBlock& out, const SFigureRow& row, const SFigureText& text,
                          std::wstring_view references) const {
  std::wstring_view rest = std::wstring_view(texts).substr(text.begin);
  const auto take = [&rest](std::size_t size) {
    const std::wstring_view taken = rest.substr(0, size);
    rest.remove_prefix(size);
    return taken;
  };
  const std::wstring_view formula = take(text.formulaSize);
  std::array<std::wstring_view, 4> sums;
  for (std::size_t i = 0; i < sums.size(); ++i) {
    sums[i] = take(text.sumSizes[i]);
  }
  out.AddCells(L"@CI", *row.name, *row.unit, formula, references, sums[0], sums[1], sums[2],
               sums[3]);
}
