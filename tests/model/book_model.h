// Models of the three calculation books. Each folds a project twice, without and with the level of
// the types, and answers the rows of a request from the fold that the request's switch asks for.
#ifndef TALLY_TESTS_MODEL_BOOK_MODEL_H_
#define TALLY_TESTS_MODEL_BOOK_MODEL_H_

#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/model_nodes.h"
#include "model/model_texts.h"
#include "model/random_project.h"

namespace tally_model {

/// What the books have in common.
class CBookModel {
 public:
  virtual ~CBookModel() = default;
  Texts Rows(const SModelRequest& request);

 protected:
  /// What a part of the walk is limited to; the pair is empty where all floors count.
  struct SPart {
    std::wstring section;
    Report::SFloorPair pair;
  };
  using RowRecords = SRowRecords<KorDMRec::SKorDMCalItemDetailQRec>;

  explicit CBookModel(const SModelProject& project) : numbers_(project) {}

  /// Folds all rows with `foldRow`, called with the root, the row's records and the switch. Throws
  /// std::out_of_range where a row's index lies outside its vector.
  template <class TFoldRow>
  void FoldRows(const SModelProject& project, TFoldRow&& foldRow) {
    const KorDMRec::SKorDMDetailResultData& data = project.records.detail;
    for (const KorDMRec::SKorDMResultRow& row : data.rows) {
      const RowRecords records(data, row);
      foldRow(plainRoot_, records, false);
      foldRow(dividedRoot_, records, true);
    }
  }

  virtual void AppendSection(Texts& rows, const SNode& spec, const std::wstring& section) = 0;
  /// The rows below a node that stands where the types do, or a type.
  virtual Texts NodeRows(const SNode& node, int level, const SPart& part) = 0;

  void AppendFloors(Texts& rows, const SNode& spec, const std::wstring& section);
  void Types(Texts& lineWork, Texts& others, const SNode& parent, const SPart& part);
  /// Calls `visit` with the system code nodes below `node` that the condition takes.
  template <class TVisit>
  void ForChosenSysCodes(const SNode& node, TVisit&& visit) const {
    if (request_.condition.sysCodes.empty()) {
      for (const SNode* child : NodesOf(node.children, EKind::SysCode)) {
        visit(*child);
      }
    }
    for (const std::wstring& path : request_.condition.sysCodes) {
      const SNode* found = FindSysCode(node, path);
      if (found != nullptr) {
        visit(*found);
      }
    }
  }

  CModelNumbers numbers_;
  SModelRequest request_;

 private:
  Texts FloorRows(const SNode& floor, const SPart& part);

  NodeMap plainRoot_;
  NodeMap dividedRoot_;
};

/// The books that show the component kinds above the system codes.
class CKindBookModel : public CBookModel {
 protected:
  using CBookModel::CBookModel;
  Texts NodeRows(const SNode& node, int level, const SPart& part) override;
  /// Formula, references and four quantities of a calculation item; empty where nothing counts.
  virtual Texts ItemTail(const SNode& item, bool isMain, const SPart& part) = 0;

 private:
  Texts Category(const SNode& category, const SPart& part);
  Texts Attribute(const SNode& attribute, const std::wstring& mainItem, const SPart& part);
  Texts CalItem(const SNode& item, bool isMain, const SPart& part);
};

/// The member book.
class CXhlJss2MModel final : public CKindBookModel {
 public:
  explicit CXhlJss2MModel(const SModelProject& project);

 protected:
  void AppendSection(Texts& rows, const SNode& spec, const std::wstring& section) override;
  Texts ItemTail(const SNode& item, bool isMain, const SPart& part) override;

 private:
  struct SFloorSum {
    double quantities[4];
    int floorCount;
  };
  using FloorSums = std::map<std::wstring, SFloorSum>;

  void SysCode(FloorSums& sums, const SNode& node, const std::wstring& section);
  void Floor(FloorSums& sums, const SNode& floor, const SPart& part);
  void AddToQuantity(FloorSums& sums, const std::wstring& floorText, const SNode& detail);
};

/// The floor book.
class CXhlJss2FModel final : public CKindBookModel {
 public:
  explicit CXhlJss2FModel(const SModelProject& project);

 protected:
  void AppendSection(Texts& rows, const SNode& spec, const std::wstring& section) override {
    AppendFloors(rows, spec, section);
  }
  Texts ItemTail(const SNode& item, bool isMain, const SPart& part) override;

 private:
  struct SSystemSum {
    std::wstring expression;
    double quantities[4];
    int floorCount;
  };
  using SystemSums = std::map<std::wstring, SSystemSum>;

  void SysCode(SystemSums& sums, const SNode& node, const SPart& part);
  void AddToQuantity(SystemSums& sums, const std::wstring& floorText, const SNode& detail,
                     const std::wstring& key);
};

/// The system book.
class CXhlJss2SModel final : public CBookModel {
 public:
  explicit CXhlJss2SModel(const SModelProject& project);

 protected:
  void AppendSection(Texts& rows, const SNode& spec, const std::wstring& section) override {
    AppendFloors(rows, spec, section);
  }
  Texts NodeRows(const SNode& node, int level, const SPart& part) override;

 private:
  struct SRow {
    bool isMain = false;
    bool lineSortDown = true;
    int sysCodeSortId = 0;
    int categorySortId = 0;
    std::wstring sysCode;
    std::wstring category;
    std::wstring attName;
    std::wstring attText;
    std::wstring calItem;
    std::wstring unit;
    std::wstring loopName;
    std::wstring loopFormula;
    // Not part of the key.
    mutable std::wstring expression;
    mutable double quantities[4] = {0, 0, 0, 0};
    int floorCount = 1;

    bool operator<(const SRow& other) const;
  };
  struct SChild {
    std::wstring path;
    int sysCodeSortId = 0;
    int categorySortId = 0;
    std::wstring attName;
    std::wstring attText;
    // Not part of the key.
    mutable double quantity = 0;
    mutable std::wstring expression;

    bool operator<(const SChild& other) const;
  };
  /// The nodes above a result.
  struct SPlace {
    const SNode* sysCode;
    const SNode* category;
    const SNode* attribute;
    const SNode* calItem;
  };

  void SysCode(const SNode& node, int level, const SPart& part);
  void Category(const SNode& sysCode, const SNode& category, int level, const SPart& part);
  void CalItem(const SPlace& place, bool isMain, int level, const SPart& part);
  void AddChild(const SPlace& place, const SNode& detail, const std::wstring& floorText, int level,
                int loop);
  void AddToQuantity(const SPlace& place, const SNode& detail, const std::wstring& floorText,
                     bool isMain, int level, int& loop);
  SRow MakeRow(const SPlace& place, const SNode& detail, const std::wstring& floorText, bool isMain,
               int level) const;
  std::wstring Formula(std::wstring& expression, const SRow& row) const;
  Texts SysCodeRows() const;
  Texts PlainRows() const;

  // Of one node.
  std::set<SRow> rows_;
  std::set<SChild> children_;
};

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_BOOK_MODEL_H_
