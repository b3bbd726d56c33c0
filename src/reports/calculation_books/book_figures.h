// What the member and the floor book keep of their calculation items from the fold on.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_BOOK_FIGURES_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_BOOK_FIGURES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"

/// What an item's row shows besides its names.
struct SItemFigures {
  std::wstring formula;  ///< of the main item alone
  std::array<double, 4> sums{};
};

/// Where the printed figures of a row lie.
struct SFigureText {
  std::size_t begin = 0;  ///< of the formula in SBookFigures::texts; the sums follow it
  std::uint32_t formulaSize = 0;
  std::array<std::uint8_t, 4> sumSizes{};
  std::size_t references = 0;  ///< where they begin, in the floor book
  std::size_t referencesSize = 0;
};

/// One calculation item.
struct SFigureRow {
  const CReportCalItem* node = nullptr;
  const std::wstring* name = nullptr;  ///< one object for each text of the book
  const std::wstring* unit = nullptr;  ///< likewise
  SFigureText whole;                   ///< where nothing is left out
  bool isMain = false;
  // In the floor book:
  std::uint32_t firstRun = 0;   ///< of its results
  std::uint32_t lastRun = 0;    ///< behind the last one
  std::uint32_t firstPart = 0;  ///< what each of its runs shows alone, if these are several
};

/// An attribute and its rows: the main items, then the others in their order.
struct SFigureAttribute {
  const CReportAttribute* node = nullptr;
  const SAttSortKey* key = nullptr;  ///< that of the node
  SAttPlaces places;                 ///< by name in natural order without blanks
  std::size_t firstRow = 0;
  std::size_t lastRow = 0;  ///< behind the last one
};

/// The items below a discipline of the member book or below a floor of the floor book. The kinds
/// know which attributes are theirs (CReportCategory::figures). What never shows is not listed.
struct SBookFigures {
  std::vector<SFigureAttribute> attributes;  ///< in the order of the walk
  std::vector<SFigureRow> rows;
  std::wstring texts;

  std::span<const SFigureAttribute> Of(const CReportCategory& category) const {
    return std::span(attributes)
        .subspan(category.figures.first, category.figures.last - category.figures.first);
  }
  std::span<const SFigureRow> Of(const SFigureAttribute& attribute) const {
    return std::span(rows).subspan(attribute.firstRow, attribute.lastRow - attribute.firstRow);
  }
  /// Prints figures behind the texts.
  SFigureText Print(const SItemFigures& figures);
  /// The row of an item: "@CI", name, unit, formula, references, four sums.
  void AddRow(CCellBlock& out, const SFigureRow& row, const SFigureText& text,
              std::wstring_view references) const;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_BOOK_FIGURES_H_
