// Models of the paint, the duct wall thickness and the insulation table. Each folds a project once
// and answers the rows of a request.
#ifndef TALLY_TESTS_MODEL_SPECIAL_MODEL_H_
#define TALLY_TESTS_MODEL_SPECIAL_MODEL_H_

#include <set>
#include <string>

#include "model/model_nodes.h"
#include "model/model_texts.h"
#include "model/random_project.h"

namespace tally_model {

/// One row candidate; each table has its own order of them.
struct SSpecialRow {
  bool isPipe = false;
  bool isMain = false;
  bool lineSortDown = false;
  int floorSortId = -1000000;
  int sysCodeSortId = 0;
  int categorySortId = 0;
  std::wstring floor;
  std::wstring floorName;
  std::wstring sysCode;
  std::wstring attName;
  std::wstring attText;
  std::wstring calItem;
  std::wstring unit;
  std::wstring loopName;
  // Part of no key.
  mutable std::wstring expression;
  mutable double quantities[4] = {0, 0, 0, 0};
};

/// The walk from the blocks down. A table says what becomes of a result.
class CSpecialModel {
 public:
  virtual ~CSpecialModel() = default;
  Texts Rows(const SModelRequest& request);

 protected:
  using RowRecords = SRowRecords<KorDMRec::SKorDMCalItemDetailQRec>;
  using Order = bool (*)(const SSpecialRow&, const SSpecialRow&);
  using RowSet = std::set<SSpecialRow, Order>;
  /// The nodes on the way to a result.
  struct SPlace {
    const SNode* floor;
    const SNode* sysCode;
    const SNode* category;
    const SNode* attribute;
    const SNode* calItem;
  };
  /// The headline of a block.
  struct SSum {
    std::wstring item;
    std::wstring unit;
    double quantities[4] = {0, 0, 0, 0};
  };

  CSpecialModel(const SModelProject& project, Order order)
      : numbers_(project), project_(&project), order_(order) {}

  /// Folds what stands below a block.
  void FoldBelow(SNode& block, const RowRecords& r) const;

  /// Whether the request leaves anything for the table.
  virtual bool Answers() const { return true; }
  /// The cells of a section's blocks in order.
  virtual Texts Blocks(const SNode& spec, const std::wstring& section) = 0;
  /// Whether the floor pair takes the result.
  virtual bool TakesFloor(const SNode& result, const Report::SFloorPair& pair) const;
  virtual void AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                         const Report::SFloorPair& pair, int& loop) const = 0;

  RowSet RowsOf(const SNode& block, const std::wstring& section) const;
  bool IsMainItem(const SPlace& place) const;
  /// A row with the quantities of a result, as it stands for the total.
  SSpecialRow MakeRow(const SPlace& place, const SNode& result,
                      const Report::SFloorPair& pair) const;
  static void AddRow(RowSet& rows, const SSpecialRow& row);
  static void SetFloor(SSpecialRow& row, const SNode& floor, const Report::SFloorPair& pair);
  /// The system code without its remark.
  void SetSysCode(SSpecialRow& row, const SNode& sysCode) const;
  static void SetAttribute(SSpecialRow& row, const SPlace& place);
  /// Puts in the circuit of a main item at level 6.
  void PutLoop(RowSet& rows, SSpecialRow row, const SPlace& place, int& loop) const;

  /// Sum and rows of a paint or duct block; `mainOnly` leaves other items out of all but the
  /// attribute rows.
  static Texts DealRows(SSum& sum, const RowSet& rows, bool mainOnly);

  CModelNumbers numbers_;
  const SModelProject* project_;
  NodeMap root_;
  SModelRequest request_;

 private:
  void Floor(RowSet& rows, const SNode& floor, const Report::SFloorPair& pair,
             const std::wstring& section) const;
  void SysCode(RowSet& rows, const SNode& floor, const SNode& node, const Report::SFloorPair& pair,
               const std::wstring& section) const;
  void Category(RowSet& rows, const SNode& floor, const SNode& sysCode, const SNode& category,
                const Report::SFloorPair& pair, const std::wstring& section) const;
  void CalItem(RowSet& rows, const SPlace& place, const Report::SFloorPair& pair,
               const std::wstring& section) const;

  Order order_;
};

class CBrushPaintModel final : public CSpecialModel {
 public:
  /// Throws std::out_of_range where a row's index lies outside its vector.
  explicit CBrushPaintModel(const SModelProject& project);

 protected:
  Texts Blocks(const SNode& spec, const std::wstring& section) override;
  bool TakesFloor(const SNode& /*result*/, const Report::SFloorPair& /*pair*/) const override {
    return true;
  }
  void AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                 const Report::SFloorPair& pair, int& loop) const override;

 private:
  void FoldRow(const RowRecords& r);
  void FoldCoats(const RowRecords& r, const std::wstring& name, int coats);
};

class CDuctHModel final : public CSpecialModel {
 public:
  /// Throws std::out_of_range where a row's index lies outside its vector.
  explicit CDuctHModel(const SModelProject& project);

 protected:
  Texts Blocks(const SNode& spec, const std::wstring& section) override;
  void AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                 const Report::SFloorPair& pair, int& loop) const override;

 private:
  void FoldRow(const RowRecords& r);
};

/// A row with an index outside its vector is passed over.
class CPipeJRBWModel final : public CSpecialModel {
 public:
  explicit CPipeJRBWModel(const SModelProject& project);

 protected:
  bool Answers() const override;
  Texts Blocks(const SNode& spec, const std::wstring& section) override;
  void AddResult(RowSet& rows, const SPlace& place, const SNode& result,
                 const Report::SFloorPair& pair, int& loop) const override;

 private:
  void FoldRow(const RowRecords& r);
  /// What the name of a volume item contains.
  std::wstring VolumeItem() const;
  bool IsVolume(const SSpecialRow& row) const;
  Texts Deal(SSum& sum, const RowSet& rows) const;
  Texts RowCells(const SSpecialRow& row, const SSum& sum, const RowSet& rows) const;
  std::wstring PlainRemark(const std::wstring& path) const;
};

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_SPECIAL_MODEL_H_
