// Rows of the floor book where a request leaves something out.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_PART_ROWS_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_PART_ROWS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "report_model/cell_block.h"
#include "reports/calculation_books/floor_figures.h"
#include "reports/calculation_books/floor_item_sum.h"
#include "reports/shared/picked_floor.h"
#include "reports/shared/section_choice.h"

/// Serves one request.
class CFloorPartRows {
 public:
  /// REQUIRES: the paths outlive the object.
  explicit CFloorPartRows(const std::vector<std::wstring>& sysCodes) : paths_(sysCodes) {}

  bool TakesAll() const { return paths_.empty(); }

  /// What the rows to come are taken from. REQUIRES: the arguments outlive them.
  void Start(const SFloorFigures& figures, const CSectionChoice& sections,
             const CPickedFloor& picked);
  /// Adds the row of an item: "@CI", name, unit, formula, references, four sums. None where nothing
  /// counts.
  void AddRow(CCellBlock& out, const SFigureRow& row);

 private:
  /// Runs or references side by side.
  template <class TPlace>
  struct TSpan {
    TPlace first;
    TPlace last;
  };

  void ChooseRuns(const SFigureRow& row);
  const SFigureText* PrintedText(const SFigureRow& row) const;
  void AddRun(std::uint32_t run);
  CCellSource References();

  const std::vector<std::wstring>& paths_;
  // Of the floor.
  const SFloorFigures* figures_ = nullptr;
  const CSectionChoice* sections_ = nullptr;
  const CPickedFloor* picked_ = nullptr;
  bool takesAllResults_ = false;
  const CSysCodeOrder* sysCodes_ = nullptr;
  std::vector<CSysCodeOrder::SRange> chosen_;  // those that the paths stand for
  // Of the row.
  std::vector<TSpan<std::uint32_t>> runs_;
  std::vector<TSpan<std::size_t>> references_;
  CFloorItemSum sum_;
  SItemFigures item_;
  std::wstring text_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_PART_ROWS_H_
