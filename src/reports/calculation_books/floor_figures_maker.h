// Makes the figures of the floor book at its fold.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_FIGURES_MAKER_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_FIGURES_MAKER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/report_data_node.h"
#include "reports/calculation_books/book_figures_maker.h"
#include "reports/calculation_books/floor_figures.h"
#include "reports/calculation_books/floor_item_sum.h"

/// Takes the results of one floor after the other, each in the order of the walk.
class CFloorFiguresMaker {
 public:
  explicit CFloorFiguresMaker(std::shared_ptr<const CSysCodeOrder> sysCodes)
      : sysCodes_(std::move(sysCodes)) {}

  /// Goes on with the results of a system code, by its number, below the item that has these
  /// children; kNone for an item without a code.
  void StartRun(const Report::NodeMap& itemChildren, std::uint32_t sysCode);
  void AddResult(const CReportResultDetail& detail);
  /// Gives the floor the figures of what was taken since the floor before. False, with nothing
  /// given, where that are not the items below the floor, once and in their order.
  bool EndFloor(const std::wstring& spec, CReportFloor& floor);
  /// Ends a discipline.
  void EndSpec();

 private:
  struct SItem {
    const Report::NodeMap* children;
    std::uint32_t lastRun;  // behind its last one
  };

  void EndItem();
  bool ReadItem(SFigureRow& row, SBookFigures& made);
  /// Adds the results of these runs up and prints what the item shows of them. False, with nothing
  /// printed, where there are none.
  bool Print(SFigureText& text, SBookFigures& made, bool isMain, std::uint32_t firstRun,
             std::uint32_t lastRun);

  std::shared_ptr<const CSysCodeOrder> sysCodes_;
  CBookFiguresMaker maker_;
  std::vector<std::shared_ptr<SFloorFigures>> floors_;  // of the discipline
  // Of the floor.
  std::vector<SItem> items_;
  std::vector<SFigureRun> runs_;
  std::vector<SFigureResult> results_;
  std::wstring references_;
  // Of the item: the components of its results, to be written when their names have arrived.
  std::vector<CTextRef> components_;
  std::size_t written_ = 0;  // results whose references are
  // Of the call of EndFloor that runs.
  SFloorFigures* figures_ = nullptr;
  std::size_t nextItem_ = 0;
  bool isInOrder_ = true;
  CFloorItemSum sum_;
  SItemFigures item_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_FIGURES_MAKER_H_
