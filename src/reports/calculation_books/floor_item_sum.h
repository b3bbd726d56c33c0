// The figures of one row of the floor book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_ITEM_SUM_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_ITEM_SUM_H_

#include <array>
#include <cstdint>
#include <vector>

#include "reports/calculation_books/book_figures.h"

/// Adds up the results of a calculation item, system by system.
class CFloorItemSum {
 public:
  void Clear() { terms_.clear(); }
  bool Empty() const { return terms_.empty(); }
  /// Takes a result of `system`, a system code of the first level. All results of a system follow
  /// each other. `floorCount` is that of the result.
  void Add(std::uint32_t system, const std::array<double, 4>& quantities, int floorCount);
  /// REQUIRES: !Empty(). `formula` stays empty unless the item is the main one.
  void Read(SItemFigures& figures, bool isMain) const;

 private:
  struct STerm {
    std::uint32_t system;
    int floorCount;  // of its first result
    std::array<double, 4> quantities;
  };
  std::vector<STerm> terms_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_FLOOR_ITEM_SUM_H_
