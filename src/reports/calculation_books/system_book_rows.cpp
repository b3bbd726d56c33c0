#include "reports/calculation_books/system_book_rows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/text_numbers.h"
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

}  // namespace

bool CSystemBookRows::SXhlSysjssData::operator<(const SXhlSysjssData& other) const {
  if (SysCode != other.SysCode) {
    return SysCodeSortId < other.SysCodeSortId;
  }
  if (CategorySortId != other.CategorySortId) {
    return CategorySortId < other.CategorySortId;
  }
  if (Attribute != other.Attribute) {
    if (AttPlaces.ascending >= 0) {
      const auto place = LineSortDown ? &SAttPlaces::descending : &SAttPlaces::ascending;
      if (AttPlaces.*place != other.AttPlaces.*place) {
        return AttPlaces.*place < other.AttPlaces.*place;
      }
    } else if (Attribute->name != other.Attribute->name) {
      return CompareNatural(Attribute->narrowName, other.Attribute->narrowName, !LineSortDown) < 0;
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
  if (Item == other.Item) {
    return false;
  }
  if (Item->name != other.Item->name) {
    return CompareAsNarrow(Item->name, other.Item->name) < 0;
  }
  return CompareAsNarrow(Item->unit, other.Item->unit) < 0;
}

const CShownSystems::SSysCode& CShownSystems::Of(const CReportSysCode& sysCode) {
  const auto [at, isNew] = sysCodes_.try_emplace(sysCode.fullName);
  if (isNew && level_ != ELevel::LevelNode) {
    at->second = Make(std::wstring(sysCode.fullName));
  }
  return at->second;
}

CShownSystems::SSysCode CShownSystems::Make(const std::wstring& path) {
  SSysCode shown;
  const CTallyDataMng* store = CTallyDataMng::Instance();
  std::wstring text =
      CReportDataMethod::GetSysCodeLevelName(path, CXhlJss2SReport::GetSysCodeLevel(level_));
  shown.sortId = store->GetSysCodeSortId(spec_, WithoutPseudoLevel(text));
  text += CReportDataMethod::GetSysCodeRemark(spec_, text);
  shown.text = &*texts_.insert(std::move(text)).first;

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

std::wstring CShownSystems::SSysCode::ChildPath(int loopNumber) const {
  std::wstring path = childPath;
  if (numbersChildren) {
    path += L'\\';
    AppendInt(path, loopNumber);
  }
  return path;
}

void CSystemBookRows::AddCategory(const CReportSysCode& holder, const CReportCategory& category) {
  const CShownSystems::SSysCode& shown = shown_.Of(holder);
  const std::wstring main = MainCalItemOf(spec_, category);
  SXhlSysjssData head;
  head.LineSortDown = SortsLargerFirst(spec_, category);
  head.SysCodeSortId = shown.sortId;
  head.CategorySortId = category.sortId;
  head.SysCode = shown.text;
  head.Category = &shown_.PathOf(category);
  ForEachChild<CReportAttribute>(category.children, [&](const CReportAttribute& attribute) {
    head.Attribute = attribute.sortKey.get();
    head.AttPlaces = attribute.places;
    ForEachChild<CReportCalItem>(attribute.children, [&](const CReportCalItem& item) {
      head.Item = &item;
      head.CalItem = {item.name, item.unit};
      head.IsMainItem = item.name == main;
      AddItem(shown, head);
    });
  });
}

void CSystemBookRows::AddItem(const CShownSystems::SSysCode& shown, const SXhlSysjssData& head) {
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

void CSystemBookRows::AddChild(const CShownSystems::SSysCode& shown, const SXhlSysjssData& head,
                               const CReportResultDetail& detail, int loopNumber) {
  SChildSysQ child;
  child.ChildSysCode = shown.ChildPath(loopNumber);
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

CCellBlock CSystemBookRows::TakeRows() const {
  CCellBlock out;
  const Formulas formulas = ChildrenByFormula();
  for (const SXhlSysjssData& row : rows_) {
    if (level_ == ELevel::LevelNode) {
      row.AddNodeRow(out, row.Quantity, row.FloorCount, CCellSource::Copied(row.Expression));
    } else if (row.LoopNumber == 0) {
      AddSumRow(out, row, formulas);
    } else {
      AddCircuitRow(out, row);
    }
  }
  return out;
}

void CSystemBookRows::AddSumRow(CCellBlock& out, const SXhlSysjssData& row,
                                const Formulas& formulas) {
  std::wstring formula;
  std::wstring expression;
  if (row.IsMainItem) {
    const auto at = formulas.find(
        {row.SysCodeSortId, row.CategorySortId, row.Attribute->name, row.Attribute->value});
    if (at != formulas.end()) {
      for (const SChildSysQ* child : at->second) {
        AddTerm(formula, child->Quantity);
        expression += child->Expression;
        expression += L'$';
      }
    }
  }
  row.AddSysCodeRow(out, row.Quantity, row.FloorCount, std::move(formula), std::move(expression));
}

void CSystemBookRows::AddCircuitRow(CCellBlock& out, const SXhlSysjssData& row) {
  std::wstring formula;
  AppendCircuitFormula(formula, *row.Loop, row.FloorCount);
  std::wstring expression;
  AppendReferences(expression, *row.Loop);
  std::array<double, 4> sums = row.Quantity;
  for (double& sum : sums) {
    sum *= row.FloorCount;
  }
  row.AddLoopRow(out, LoopName(row.LoopNumber), std::move(formula), std::move(expression), sums);
}
