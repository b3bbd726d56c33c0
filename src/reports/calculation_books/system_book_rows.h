// The rows of one floor or type of the system calculation book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ROWS_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ROWS_H_

#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "reports/calculation_books/system_row.h"
#include "reports/shared/picked_floor.h"
#include "reports/shared/repeated_find.h"
#include "reports/shared/section_choice.h"

/// What one level shows of system codes and component kinds. Lives for one request, whose cells
/// view its texts.
class CShownSystems {
 public:
  /// What the level makes of one system code.
  struct SSysCode {
    const std::wstring* text = nullptr;  ///< null at level 1; one object for each text
    int sortId = 0;
    std::wstring childPath;  ///< of the formula's child, without a circuit number
    bool numbersChildren = false;
    int parentSortId = 0;

    /// The path of the child that a result with this circuit number belongs to.
    std::wstring ChildPath(int loopNumber) const;
  };

  CShownSystems(const std::wstring& spec, int level) : spec_(spec), level_(level) {}

  const std::wstring& Spec() const { return spec_; }
  int Level() const { return level_; }
  const SSysCode& Of(const CReportSysCode& sysCode);
  const std::wstring& PathOf(const CReportCategory& category) {
    return *texts_.insert(category.GetKey()).first;
  }

 private:
  SSysCode Make(const std::wstring& path);

  const std::wstring& spec_;
  const int level_;
  std::unordered_map<std::wstring_view, SSysCode> sysCodes_;  // by full name
  std::set<std::wstring> texts_;
};

/// Collects row candidates and the children that formulas list, then composes the rows. Lives for
/// one node; views texts of the tree.
class CSystemBookRows {
 public:
  CSystemBookRows(CShownSystems& shown, const CPickedFloor& picked, const CSectionChoice& sections)
      : shown_(shown),
        spec_(shown.Spec()),
        level_(shown.Level()),
        picked_(picked),
        sections_(sections) {}

  /// Adds all details of a component kind that belong to the system code `holder`.
  void AddCategory(const CReportSysCode& holder, const CReportCategory& category);
  /// The rows of all that was added.
  CCellBlock TakeRows() const;

 private:
  /// A row candidate. The texts it is keyed by are those of its nodes.
  struct SXhlSysjssData : SSystemRow {
    bool IsMainItem = false;
    bool LineSortDown = true;
    int SysCodeSortId = 0;
    int CategorySortId = 0;
    int LoopNumber = 0;  ///< of a circuit's row, from 1; else 0
    const CReportCalItem* Item = nullptr;
    const CReportResultDetail* Loop = nullptr;  ///< a circuit's own detail
    SAttPlaces AttPlaces;
    // No part of the key.
    mutable std::wstring Expression;           ///< references, where a row prints them
    mutable std::array<double, 4> Quantity{};  ///< of one floor
    int FloorCount = 1;

    bool operator<(const SXhlSysjssData& other) const;
  };
  /// A child of a shown system code, a term of its formula.
  struct SChildSysQ {
    std::wstring ChildSysCode;
    int SysCodeSortId = 0;  ///< of the parent
    int CategorySortId = 0;
    const SAttSortKey* Attribute = nullptr;
    // No part of the key.
    mutable double Quantity = 0;  ///< of all components and floors
    mutable std::wstring Expression;

    auto Key() const {
      return std::tuple(std::wstring_view(ChildSysCode), SysCodeSortId, CategorySortId,
                        std::wstring_view(Attribute->name), std::wstring_view(Attribute->value));
    }
    bool operator<(const SChildSysQ& other) const { return Key() < other.Key(); }
  };
  /// The children that one row's formula lists have this in common with the row.
  using FormulaKey = std::tuple<int, int, std::wstring_view, std::wstring_view>;
  using Formulas = std::map<FormulaKey, std::vector<const SChildSysQ*>>;

  using RowFind = TRepeatedFind<std::set<SXhlSysjssData>>;

  void AddItem(const CShownSystems::SSysCode& shown, const SXhlSysjssData& head);
  void AddDetail(const SXhlSysjssData& head, RowFind& find, const CReportResultDetail& detail,
                 int& loopNumber);
  void AddChild(const CShownSystems::SSysCode& shown, const SXhlSysjssData& head,
                const CReportResultDetail& detail, int loopNumber);
  Formulas ChildrenByFormula() const;
  static void AddSumRow(CCellBlock& out, const SXhlSysjssData& row, const Formulas& formulas);
  static void AddCircuitRow(CCellBlock& out, const SXhlSysjssData& row);

  CShownSystems& shown_;
  const std::wstring& spec_;
  const int level_;
  const CPickedFloor& picked_;
  const CSectionChoice& sections_;
  std::set<SXhlSysjssData> rows_;
  std::set<SChildSysQ> children_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ROWS_H_
