// Makes the figures of the member and the floor book at the end of their fold.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_BOOK_FIGURES_MAKER_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_BOOK_FIGURES_MAKER_H_

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "reports/calculation_books/book_figures.h"

/// Serves one fold. Items that the order of items drops are left out: the set of items is the same
/// for every request, so the drops are too.
class CBookFiguresMaker {
 public:
  /// Adds an item up, in the order of the walk, and prints its figures to those that are made;
  /// `row` has the node and tells whether it is the main item. False where nothing counts, whatever
  /// is asked for.
  using ReadItem = std::function<bool(SFigureRow& row, SBookFigures& made)>;

  /// The figures of all component kinds below `children`, also below types; tells the kinds which
  /// are theirs.
  SBookFigures Make(const Report::NodeMap& children, const std::wstring& spec,
                    const ReadItem& readItem);

  /// Gives the attributes of one discipline their places, if their names have an order.
  static void PlaceAttributes(const std::vector<SBookFigures*>& discipline);

 private:
  /// One object for each text.
  struct SText {
    const std::wstring* text;
    std::string narrow;
  };
  /// A minor item on its way to its place.
  struct SMinorItem;

  const SText& Keep(const std::wstring& text);
  void AddCategory(CReportCategory& category, const std::wstring& spec, const ReadItem& readItem);
  void AddAttribute(const CReportAttribute& attribute, const std::wstring& main,
                    const ReadItem& readItem);

  std::unordered_map<std::wstring_view, SText> kept_;
  // Of the call of Make that runs.
  SBookFigures made_;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_BOOK_FIGURES_MAKER_H_
