// The rows of one floor or type of the system calculation book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ROWS_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ROWS_H_

#include <array>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "reports/shared/picked_floor.h"
#include "reports/shared/repeated_find.h"
#include "reports/shared/section_choice.h"

/// Collects row candidates and the children that formulas list, then composes the rows. Lives for
/// one node; views texts of the tree.
class CSystemBookRows {
 public:
  CSystemBookRows(const std::wstring& spec, int level, const CPickedFloor& picked,
                  const CSectionChoice& sections)
      : spec_(spec), level_(level), picked_(picked), sections_(sections) {}

  /// Adds all details of a component kind that belong to the system code `holder`.
  void AddCategory(const CReportSysCode& holder, const CReportCategory& category);
  /// The rows of all that was added; this object is spent afterwards.
  CCellBlock TakeRows();

 private:
  /// A row candidate. The texts it is keyed by are those of its nodes.
  struct SXhlSysjssData {
    bool IsMainItem = false;
    bool LineSortDown = true;
    int SysCodeSortId = 0;
    int CategorySortId = 0;
    int LoopNumber = 0;                     ///< of a circuit's row, from 1; else 0
    const std::wstring* SysCode = nullptr;  ///< with its remark; one object for each text
    const CReportCategory* Category = nullptr;
    const CReportAttribute* Attribute = nullptr;  ///< name and text
    const CReportCalItem* Item = nullptr;         ///< name and unit
    const CReportResultDetail* Loop = nullptr;    ///< a circuit's own detail
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
    const CReportAttribute* Attribute = nullptr;
    // No part of the key.
    mutable double Quantity = 0;  ///< of all components and floors
    mutable std::wstring Expression;

    auto Key() const {
      return std::tuple(std::wstring_view(ChildSysCode), SysCodeSortId, CategorySortId,
                        std::wstring_view(Attribute->name), std::wstring_view(Attribute->value));
    }
    bool operator<(const SChildSysQ& other) const { return Key() < other.Key(); }
  };
  /// What the level makes of one system code.
  struct SShownSysCode {
    const std::wstring* text = nullptr;  ///< null at level 1
    int sortId = 0;
    std::wstring childPath;  ///< of the formula's child, without a circuit number
    bool numbersChildren = false;
    int parentSortId = 0;
  };
  /// The children that one row's formula lists have this in common with the row.
  using FormulaKey = std::tuple<int, int, std::wstring_view, std::wstring_view>;
  using Formulas = std::map<FormulaKey, std::vector<const SChildSysQ*>>;

  using RowFind = TRepeatedFind<std::set<SXhlSysjssData>>;

  SShownSysCode Show(const CReportSysCode& sysCode);
  void AddItem(const SShownSysCode& shown, const SXhlSysjssData& head);
  void AddDetail(const SXhlSysjssData& head, RowFind& find, const CReportResultDetail& detail,
                 int& loopNumber);
  void AddChild(const SShownSysCode& shown, const SXhlSysjssData& head,
                const CReportResultDetail& detail, int loopNumber);
  Formulas ChildrenByFormula() const;
  CCellBlock NodeRow(SXhlSysjssData&& row) const;
  CCellBlock SysCodeRow(const SXhlSysjssData& row, const Formulas& formulas) const;

  const std::wstring& spec_;
  const int level_;
  const CPickedFloor& picked_;
  const CSectionChoice& sections_;
  std::set<SXhlSysjssData> rows_;
  std::set<SChildSysQ> children_;
  std::set<std::wstring> shownTexts_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_SYSTEM_BOOK_ROWS_H_
