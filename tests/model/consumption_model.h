// Models of the consumption summary, the over-height summary, the quantity overview and the fitting
// summary. Each folds a project once and answers the rows of a request.
#ifndef TALLY_TESTS_MODEL_CONSUMPTION_MODEL_H_
#define TALLY_TESTS_MODEL_CONSUMPTION_MODEL_H_

#include <vector>

#include "model/model_nodes.h"
#include "model/model_texts.h"
#include "model/random_project.h"

namespace tally_model {

/// The consumption summary; the over-height summary says where it differs.
class CXhlHzModel {
 public:
  /// Throws std::out_of_range where a row's index lies outside its vector.
  explicit CXhlHzModel(const SModelProject& project) : CXhlHzModel(project, project.records.hz) {}
  virtual ~CXhlHzModel() = default;
  Texts Rows(const SModelRequest& request);

 protected:
  CXhlHzModel(const SModelProject& project, const KorDMRec::SKorDMResultData& data);

  // What the over-height summary does in its own way.
  /// Other items than the main one of an attribute; true if one of them counted.
  virtual bool AppendOtherItems(Texts& others, const std::vector<const SNode*>& items,
                                const std::wstring& section);
  virtual Texts ItemRow(const SNode& item, const Report::SResultData& sum) const;
  /// The first system codes of a floor in the order of the walk.
  virtual std::vector<const SNode*> FirstSysCodes(const SNode& floor) const;
  /// The second floor text of a floor's row.
  virtual std::wstring FloorCell(const Report::SFloorPair& pair) const { return pair.floor; }
  virtual std::wstring References(const SNode& result) const;

  /// Whether anything counted, and the rows that it made.
  bool CalItem(Report::SResultData& target, Texts& out, const SNode& item, int level,
               const std::wstring& section);
  int Level() const { return request_.level; }

 private:
  Texts Category(const SNode& category, const std::wstring& section);
  Texts Attribute(const SNode& attribute, const std::wstring& mainItem,
                  const std::wstring& section);
  bool Floor(Report::SResultData& target, Texts& out, const SNode& floor, int level,
             const Report::SFloorPair& pair, const std::wstring& section);
  bool SysCode(Report::SResultData& target, Texts& out, const SNode& node, int level, int sysLevel,
               const Report::SFloorPair& pair, const std::wstring& section);
  bool Result(Report::SResultData& target, const SNode& result, const Report::SFloorPair& pair);

  CModelNumbers numbers_;
  NodeMap root_;
  SModelRequest request_;
  std::vector<std::set<std::wstring>> sysCodeNames_;  ///< by level; none: all
};

class CXhlCgHzModel final : public CXhlHzModel {
 public:
  explicit CXhlCgHzModel(const SModelProject& project) : CXhlHzModel(project, project.records.cg) {}

 protected:
  bool AppendOtherItems(Texts& others, const std::vector<const SNode*>& items,
                        const std::wstring& section) override;
  Texts ItemRow(const SNode& item, const Report::SResultData& sum) const override;
  std::vector<const SNode*> FirstSysCodes(const SNode& floor) const override;
  std::wstring FloorCell(const Report::SFloorPair& pair) const override {
    return pair.drawingFloor;
  }
  std::wstring References(const SNode& result) const override;
};

class CXhlGlModel {
 public:
  explicit CXhlGlModel(const SModelProject& project);
  Texts Rows(const SModelRequest& request);

 private:
  Texts Group(const SNode& group, bool largerFirst, const std::wstring& section);
  bool CalItem(double& total, const SNode& item, const std::wstring& section);
  bool Floor(double& total, const SNode& floor, const Report::SFloorPair& pair,
             const std::wstring& section);
  bool SysCode(double& total, const SNode& node, const Report::SFloorPair& pair,
               const std::wstring& section);
  bool Result(double& total, const SNode& result, const Report::SFloorPair& pair);

  CModelNumbers numbers_;
  NodeMap root_;
  SModelRequest request_;
};

class CPjHzModel {
 public:
  explicit CPjHzModel(const SModelProject& project);
  Texts Rows(const SModelRequest& request);

 private:
  /// One fitting with its heads; everything but the last two members is its key.
  struct SElement {
    bool lineSortDown = false;
    int floorSortId = 0;
    int sysCodeSortId = 0;
    int categorySortId = 0;
    std::wstring floor;
    std::wstring floorName;
    std::wstring sysCode;
    std::wstring category;
    std::wstring attName;
    std::wstring pjItem;
    std::wstring calItem;
    std::wstring unit;
    mutable std::wstring expression;
    mutable double quantity = 0;
    bool operator<(const SElement& other) const;
  };
  /// The nodes on the way to a fitting.
  struct SPlace {
    const SNode* floor;
    const SNode* sysCode;
    const SNode* category;
    const SNode* attribute;
    const SNode* calItem;
  };

  void Floor(const SNode& floor, const Report::SFloorPair& pair, const std::wstring& section);
  void SysCode(const SNode& floor, const SNode& node, const Report::SFloorPair& pair,
               const std::wstring& section);
  void Category(const SNode& floor, const SNode& sysCode, const SNode& category,
                const Report::SFloorPair& pair, const std::wstring& section);
  void CalItem(const SPlace& place, const Report::SFloorPair& pair, const std::wstring& section);
  void AddQuantity(const SPlace& place, const SNode& result, const std::wstring& floorText);
  Texts ElementRows() const;

  CModelNumbers numbers_;
  NodeMap root_;
  SModelRequest request_;
  std::set<SElement> elements_;
};

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_CONSUMPTION_MODEL_H_
