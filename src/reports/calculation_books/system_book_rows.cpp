#include "reports/calculation_books/system_book_rows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"
#include "report_model/report_data_method.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/calculation_books/xhl_jss2s_report.h"
#include "reports/shared/category_blocks.h"
#include "result_store/tally_data_mng.h"

namespace {

using ELevel = CXhlJss2SReport::ELevelType;

std::wstring WithoutPseudoLevel(const std::wstring& path) {
  return path.substr(0, path.find(L"\\*"));
}

void AppendReferences(std::wstring& text, const CReportResultDetail& detail) {
  detail.AppendComponentText(text);
  text += L'$';
}

}  // namespace

bool CSystemBookRows::SXhlSysjssData::operator<(const SXhlSysjssData& other) const {
  if (SysCode != other.SysCode) {
    return SysCodeSortId < other.SysCodeSortId;
  }
  if (CategorySortId != other.CategorySortId) {
    return CategorySortId < other.CategorySortId;
  }
  if (Attribute != other.Attribute) {
    if (Attribute->name != other.Attribute->name) {
      return CompareNatural(Attribute->sortKey->narrowName, other.Attribute->sortKey->narrowName,
                            !LineSortDown) < 0;
    }
    if (Attribute->value != other.Attribute->value) {
      return Attribute->value < other.Attribute->value;
    }
  }
  if ((LoopNumber == 0) != (other.LoopNumber == 0)) {
    return LoopNumber == 0;
  }
  if (LoopNumber != 0) {
    // The names differ in their numbers alone, and the natural compare goes by these.
    return LoopNumber < other.LoopNumber;
  }
  if (IsMainItem != other.IsMainItem) {
    return IsMainItem;
  }
  if (Item->name != other.Item->name) {
    return CompareAsNarrow(Item->name, other.Item->name) < 0;
  }
  return CompareAsNarrow(Item->unit, other.Item->unit) < 0;
}

CSystemBookRows::SShownSysCode CSystemBookRows::Show(const CReportSysCode& sysCode) {
  SShownSysCode shown;
  if (level_ == ELevel::LevelNode) {
    return shown;
  }
  const CTallyDataMng* store = CTallyDataMng::Instance();
  const std::wstring& path = sysCode.fullName;
  std::wstring text =
      CReportDataMethod::GetSysCodeLevelName(path, CXhlJss2SReport::GetSysCodeLevel(level_));
  shown.sortId = store->GetSysCodeSortId(spec_, WithoutPseudoLevel(text));
  text += CReportDataMethod::GetSysCodeRemark(spec_, text);
  shown.text = &*shownTexts_.insert(std::move(text)).first;

  const auto separators = std::count(path.begin(), path.end(), L'\\');
  const bool isCut = level_ == ELevel::LevelSysCode1 && separators == 2;
  shown.childPath = isCut ? path.substr(0, path.rfind(L'\\')) : path;
  shown.numbersChildren = (level_ == ELevel::LevelSysCode2 && separators == 1) ||
                          level_ == ELevel::LevelSysCode3 || level_ == ELevel::LevelLoop;
  // A number is a level of its own, so the parent of a numbered child is the path itself.
  const std::wstring parent = shown.numbersChildren
                                  ? shown.childPath
                                  : shown.childPath.substr(0, shown.childPath.rfind(L'\\'));
  shown.parentSortId = store->GetSysCodeSortId(spec_, WithoutPseudoLevel(parent));
  return shown;
}

void CSystemBookRows::AddCategory(const CReportSysCode& holder, const CReportCategory& category) {
  const SShownSysCode shown = Show(holder);
  const std::wstring main = MainCalItemOf(spec_, category);
  SXhlSysjssData head;
  head.LineSortDown = SortsLargerFirst(spec_, category);
  head.SysCodeSortId = shown.sortId;
  head.CategorySortId = category.sortId;
  head.SysCode = shown.text;
  head.Category = &category;
  ForEachChild<CReportAttribute>(category.children, [&](const CReportAttribute& attribute) {
    head.Attribute = &attribute;
    ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
      head.Item = &item;
      head.IsMainItem = item.name == main;
      AddItem(shown, head);
    });
  });
}

void CSystemBookRows::AddItem(const SShownSysCode& shown, const SXhlSysjssData& head) {
  int loopNumber = 1;
  RowFind find;
  ForEachChild<CReportResultDetail>(head.Item->children, [&](const CReportResultDetail& detail) {
    if (sections_.Takes(detail.sgdName) && picked_.Takes(detail)) {
      if (head.IsMainItem && level_ != ELevel::LevelNode) {
        AddChild(shown, head, detail, loopNumber);
      }
      AddDetail(head, find, detail, loopNumber);
    }
  });
}

void CSystemBookRows::AddDetail(const SXhlSysjssData& head, RowFind& find,
                                const CReportResultDetail& detail, int& loopNumber) {
  const std::array<double, 4> quantities = ComponentQuantities(detail);
  const auto filled = [&] {
    SXhlSysjssData row = head;
    row.Quantity = quantities;
    row.FloorCount = picked_.CountFor(detail);
    return row;
  };
  // Only rows at level 1 print the references of a sum.
  const bool printsReferences = level_ == ELevel::LevelNode;
  const auto at = find(rows_, head);
  if (at == rows_.end()) {
    SXhlSysjssData row = filled();
    if (printsReferences) {
      AppendReferences(row.Expression, detail);
    }
    rows_.insert(std::move(row));
  } else {
    for (std::size_t i = 0; i < quantities.size(); ++i) {
      at->Quantity[i] += quantities[i];
    }
    if (printsReferences) {
      AppendReferences(at->Expression, detail);
    }
  }
  if (head.IsMainItem && level_ == ELevel::LevelLoop) {
    SXhlSysjssData row = filled();
    row.LoopNumber = loopNumber;
    row.Loop = &detail;
    ++loopNumber;
    if (rows_.find(row) == rows_.end()) {
      rows_.insert(std::move(row));
    }
  }
}

void CSystemBookRows::AddChild(const SShownSysCode& shown, const SXhlSysjssData& head,
                               const CReportResultDetail& detail, int loopNumber) {
  SChildSysQ child;
  child.ChildSysCode = shown.childPath;
  if (shown.numbersChildren) {
    child.ChildSysCode += L'\\';
    AppendInt(child.ChildSysCode, loopNumber);
  }
  child.SysCodeSortId = shown.parentSortId;
  child.CategorySortId = head.CategorySortId;
  child.Attribute = head.Attribute;
  const double quantity =
      static_cast<double>(detail.components.size()) * detail.quantity1 * picked_.CountFor(detail);
  const auto at = children_.find(child);
  if (at == children_.end()) {
    child.Quantity = quantity;
    AppendReferences(child.Expression, detail);
    children_.insert(std::move(child));
  } else {
    at->Quantity += quantity;
    AppendReferences(at->Expression, detail);
  }
}

CSystemBookRows::Formulas CSystemBookRows::ChildrenByFormula() const {
  Formulas formulas;
  for (const SChildSysQ& child : children_) {
    formulas[{child.SysCodeSortId, child.CategorySortId, child.Attribute->name,
              child.Attribute->value}]
        .push_back(&child);
  }
  return formulas;
}

CCellBlock CSystemBookRows::TakeRows() {
  CCellBlock out;
  const Formulas formulas = ChildrenByFormula();
  while (!rows_.empty()) {
    SXhlSysjssData row = std::move(rows_.extract(rows_.begin()).value());
    out.Append(level_ == ELevel::LevelNode ? NodeRow(std::move(row)) : SysCodeRow(row, formulas));
  }
  return out;
}

CCellBlock CSystemBookRows::NodeRow(SXhlSysjssData&& row) const {
  constexpr std::size_t kCells = 14;
  Report::CellArray cells;
  cells.reserve(kCells);
  cells.emplace_back(L"@Cg");
  cells.push_back(row.Category->GetKey());
  cells.emplace_back(L"@A");
  cells.push_back(row.Attribute->name);
  cells.push_back(row.Attribute->value);
  cells.emplace_back(L"@CI");
  cells.push_back(row.Item->name);
  cells.push_back(row.Item->unit);
  const std::wstring formula = NumberText(row.Quantity[0]);
  cells.push_back(row.FloorCount == 1 ? formula : Multiplied(formula, row.FloorCount, L"层"));
  cells.push_back(std::move(row.Expression));
  AppendQuantities(cells, row.Quantity, row.FloorCount);
  return CCellBlock(std::move(cells));
}

CCellBlock CSystemBookRows::SysCodeRow(const SXhlSysjssData& row, const Formulas& formulas) const {
  constexpr std::size_t kCells = 17;
  Report::CellArray cells;
  cells.reserve(kCells);
  cells.emplace_back(L"@S");
  cells.push_back(*row.SysCode);
  cells.emplace_back(L"@Cg");
  cells.push_back(row.Category->GetKey());
  cells.emplace_back(L"@A");
  cells.push_back(row.Attribute->name);
  cells.push_back(row.Attribute->value);
  cells.emplace_back(row.LoopNumber == 0 ? L"@CI" : L"@L");
  cells.push_back(row.Item->name);
  cells.push_back(row.Item->unit);
  std::wstring formula;
  std::wstring expression;
  if (row.LoopNumber != 0) {
    cells.push_back(L"回路" + IntText(row.LoopNumber));
    formula = row.Loop->GetRepeatFormula();
    if (row.FloorCount > 1) {
      formula = MultipliedInBrackets(formula, row.FloorCount, L"层");
    }
    AppendReferences(expression, *row.Loop);
  } else if (row.IsMainItem) {
    const auto at = formulas.find(
        {row.SysCodeSortId, row.CategorySortId, row.Attribute->name, row.Attribute->value});
    if (at != formulas.end()) {
      CFormulaSum sum;
      for (const SChildSysQ* child : at->second) {
        sum.AddTerm(NumberText(child->Quantity));
        expression += child->Expression;
        expression += L'$';
      }
      formula = sum.Formula();
    }
  }
  cells.push_back(std::move(formula));
  cells.push_back(std::move(expression));
  AppendQuantities(cells, row.Quantity, row.FloorCount);
  return CCellBlock(std::move(cells));
}
