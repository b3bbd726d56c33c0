// The blocks of rows that a walk collects at each level: a sort key and the block's cells. A level
// keeps its blocks in an ordered set; a block whose key equals that of one already there is dropped
// as a whole, and that decides what a report shows.
#ifndef TALLY_REPORT_MODEL_ROW_RESULTS_H_
#define TALLY_REPORT_MODEL_ROW_RESULTS_H_

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/export.h"
#include "report_model/cell_block.h"
#include "report_model/floor_grade.h"
#include "report_model/narrow_order.h"
#include "report_model/report_types.h"

/// A block of one floor, sorted by height.
class TALLY_API CFloorResultData {
 public:
  CFloorResultData() = default;
  explicit CFloorResultData(const std::wstring& floor) { SetFloor(floor); }

  /// Stores the name and its grade.
  void SetFloor(const std::wstring& floor);
  /// Replaces the block.
  void SetResult(const Report::CellArray& cells) { result_ = CCellBlock(cells); }
  void SetResult(CCellBlock&& cells) { result_ = std::move(cells); }
  const CCellBlock& GetResult() const { return result_; }
  /// Hands the block over; this one is empty afterwards.
  CCellBlock TakeCells() { return std::move(result_); }
  const std::wstring& GetFloorName() const { return name_; }
  /// The grade.
  int GetSortId() const { return grade_.grade; }

  /// A floor name as a number that rises with height: a hundred times its leading number ("-1"
  /// gives -100), one less for a range or a list, which goes by its first floor. -10000 for floor 0
  /// and for names without a number.
  static int CalFloorGrade(std::wstring floor);

  /// By grade, then by the leading integer of the name; names that agree in both are equal.
  bool operator<(const CFloorResultData& other) const { return grade_ < other.grade_; }

 private:
  SFloorGrade grade_;
  std::wstring name_;
  CCellBlock result_;
};

/// The block of a row record, and how it leaves the set.
struct SRowBlock {
  explicit SRowBlock(CCellBlock&& block) : cells(std::move(block)) {}

  CCellBlock cells;
  CCellBlock TakeCells() { return std::move(cells); }
};

/// A block under a sort number and a name, which it views; the number alone decides. The tag keeps
/// the sets of different levels apart.
template <class TTag>
struct TNumberedResultData : SRowBlock {
  TNumberedResultData(int sortNumber, std::wstring_view blockName, CCellBlock&& block)
      : SRowBlock{std::move(block)}, sortId(sortNumber), name(blockName) {}

  bool operator<(const TNumberedResultData& other) const { return sortId < other.sortId; }

  int sortId;
  std::wstring_view name;
};

using CSysResultData = TNumberedResultData<struct SSysCodeTag>;
using CTypeResultData = TNumberedResultData<struct STypeTag>;
using CCategoryResultData = TNumberedResultData<struct SCategoryTag>;
using CChapterData = TNumberedResultData<struct SChapterTag>;

/// A block of one calculation item: by name, then by unit, both as narrow text.
struct CCalItemResultData : SRowBlock {
  CCalItemResultData(std::wstring itemName, std::wstring itemUnit, CCellBlock&& block);
  bool operator<(const CCalItemResultData& other) const;

  std::wstring name;
  std::wstring unit;
  std::string narrowName;
  std::string narrowUnit;
};

/// A block of one attribute: by name in natural order without blanks (larger numbers first if the
/// sort flag is set), then by value as narrow text.
struct CAttResultData : SRowBlock {
  CAttResultData(bool largerFirst, const std::wstring& value, const std::wstring& name,
                 CCellBlock&& block);
  /// With a key that was made earlier, not null.
  CAttResultData(bool largerFirst, std::shared_ptr<const SAttSortKey> attKey, CCellBlock&& block);
  bool operator<(const CAttResultData& other) const;

  bool sortFlag;
  std::shared_ptr<const SAttSortKey> key;
};

/// A block of one coat: by the category's sort number, then by paint as narrow text, then by coat.
struct CBrushPaintData : SRowBlock {
  CBrushPaintData(int categorySortId, int paintCoat, std::wstring paintName, CCellBlock&& block);
  bool operator<(const CBrushPaintData& other) const;

  int sortId;
  int coat;
  std::wstring name;
  std::string narrowName;
};

/// A block of a bill or quota item: by code in natural order without blanks, then by name, feature
/// and unit as narrow text.
struct CQDDEData : SRowBlock {
  CQDDEData(std::wstring itemCode, std::wstring itemName, std::wstring itemFeature,
            std::wstring itemUnit, CCellBlock&& block);
  bool operator<(const CQDDEData& other) const;

  std::wstring code;
  std::wstring name;
  std::wstring feature;
  std::wstring unit;
  std::string naturalCode;  ///< narrow, without blanks
};

/// Puts an element into a set as a report does: looked up first, put in only if it was not found.
/// The orderings are not all consistent, and then only this order of steps gives the agreed
/// outcome. True if the element went in.
template <class TRecord>
bool PutBlock(std::set<TRecord>& blocks, std::type_identity_t<TRecord>&& block) {
  if (blocks.find(block) != blocks.end()) {
    return false;
  }
  return blocks.insert(std::move(block)).second;
}

/// Moves the blocks of a set behind `out`, in the set's order.
template <class TRecord>
void TakeBlocks(CCellBlock& out, std::set<TRecord>&& blocks) {
  while (!blocks.empty()) {
    out.Append(blocks.extract(blocks.begin()).value().TakeCells());
  }
}

#endif  // TALLY_REPORT_MODEL_ROW_RESULTS_H_
