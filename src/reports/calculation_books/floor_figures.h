// What the floor book keeps of a floor from the fold on.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_FIGURES_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_FIGURES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reports/calculation_books/book_figures.h"
#include "reports/calculation_books/sys_code_order.h"

/// One detail result. The texts belong to the result set.
struct SFigureResult {
  std::array<double, 4> quantities{};  ///< of all components on one floor
  CTextRef sgdName;
  CTextRef floorText;
  std::size_t lastReference = 0;  ///< behind its references, which follow those before it
  int floorCount = 0;             ///< floors that `floorText` stands for
};

/// Results of one item and one system code that follow each other in the walk.
struct SFigureRun {
  std::uint32_t sysCode = 0;  ///< number within CSysCodeOrder
  std::uint32_t last = 0;     ///< behind its last result; they follow those of the run before
};

/// The items of a floor and their results in the order of the walk. They take the place of the
/// nodes below calculation items, which go as soon as they are read.
struct SFloorFigures {
  SBookFigures items;
  std::vector<SFigureText> parts;
  std::vector<SFigureRun> runs;
  std::vector<SFigureResult> results;
  std::wstring references;  ///< of each result, ended by one more "$"
  std::shared_ptr<const CSysCodeOrder> sysCodes;

  void AddRow(CCellBlock& out, const SFigureRow& row, const SFigureText& text) const {
    items.AddRow(out, row, text,
                 std::wstring_view(references).substr(text.references, text.referencesSize));
  }
  std::uint32_t FirstResult(std::uint32_t run) const { return run == 0 ? 0 : runs[run - 1].last; }
  std::size_t FirstReference(std::uint32_t result) const {
    return result == 0 ? 0 : results[result - 1].lastReference;
  }
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_FIGURES_H_
