#include "reports/calculation_books/system_row.h"

#include <string_view>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"

namespace {

// Of known length, unlike literals of wide characters.
constexpr std::wstring_view kS = L"@S";
constexpr std::wstring_view kCg = L"@Cg";
constexpr std::wstring_view kA = L"@A";
constexpr std::wstring_view kCI = L"@CI";
constexpr std::wstring_view kL = L"@L";

}  // namespace

void SSystemRow::AddNodeRow(CCellBlock& out, const std::array<double, 4>& quantities,
                            int floorCount, const CCellSource& references) const {
  std::wstring formula = NumberText(quantities[0]);
  if (floorCount != 1) {
    formula = Multiplied(formula, floorCount, L"层");
  }
  out.AddCells(kCg, *Category, kA, Attribute->name, Attribute->value, kCI, CalItem.name,
               CalItem.unit, std::move(formula), references, floorCount * quantities[0],
               floorCount * quantities[1], floorCount * quantities[2], floorCount * quantities[3]);
}

void SSystemRow::AddSysCodeRow(CCellBlock& out, const std::array<double, 4>& quantities,
                               int floorCount, const CCellSource& formula,
                               const CCellSource& references) const {
  out.AddCells(kS, *SysCode, kCg, *Category, kA, Attribute->name, Attribute->value, kCI,
               CalItem.name, CalItem.unit, formula, references, floorCount * quantities[0],
               floorCount * quantities[1], floorCount * quantities[2], floorCount * quantities[3]);
}

void SSystemRow::AddLoopRow(CCellBlock& out, const CCellSource& loop, const CCellSource& formula,
                            const CCellSource& references,
                            const std::array<double, 4>& sums) const {
  out.AddCells(kS, *SysCode, kCg, *Category, kA, Attribute->name, Attribute->value, kL,
               CalItem.name, CalItem.unit, loop, formula, references, sums[0], sums[1], sums[2],
               sums[3]);
}

std::wstring LoopName(int number) {
  return L"回路" + IntText(number);
}
