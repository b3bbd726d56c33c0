// Models of the bill and quota summary, the bill summary and the quota summary. Each folds a
// project once and answers the rows of a request.
#ifndef TALLY_TESTS_MODEL_BILL_QUOTA_MODEL_H_
#define TALLY_TESTS_MODEL_BILL_QUOTA_MODEL_H_

#include <set>
#include <string>
#include <vector>

#include "model/model_nodes.h"
#include "model/model_texts.h"
#include "model/random_project.h"

namespace tally_model {

/// The walk from the chapters down. A report says what an item of a chapter is.
class CBillQuotaModel {
 public:
  virtual ~CBillQuotaModel() = default;
  Texts Rows(const SModelRequest& request);

 protected:
  /// A bill item or a quota item on the way of a row.
  struct SFoldedItem {
    const KorDMRec::SKorDMQdDeRec* record;
    bool isQd;
  };

  /// `firstDepth` is the level that opens the first system codes, 3 or 4.
  CBillQuotaModel(const SModelProject& project, int firstDepth)
      : numbers_(project), project_(&project), firstDepth_(firstDepth) {}

  virtual Texts ChapterRow(const SNode& chapter) const = 0;
  /// The rows of an item of a chapter; true if anything counted.
  virtual bool Item(Texts& out, const SNode& item, const std::wstring& section) = 0;

  /// The component kinds of an item as blocks in order; true if anything counted in `sum`.
  bool Categories(Report::SResultData& sum, Texts& blocks, const SNode& item, int level,
                  const std::wstring& section);

  /// Folds a row under the chapter of the first item and the items. Throws std::out_of_range where
  /// any other index of the row lies outside its vector.
  void FoldRow(const KorDMRec::SKorDMQdDeRow& row, const std::vector<SFoldedItem>& items);
  /// Throws std::out_of_range where an index that FoldRow looks at lies outside its vector.
  void CheckIndices(const KorDMRec::SKorDMQdDeRow& row) const;

  const KorDMRec::SKorDMQdDeResultData& Data() const { return project_->records.qdDe; }
  int Level() const { return request_.level; }

 private:
  bool ShowsCategories(int level) const { return firstDepth_ == 4 ? level >= 2 : level != 0; }
  bool ShowsAttributes(int level) const { return firstDepth_ == 4 ? level > 1 : level != 0; }
  bool Chapter(Texts& out, const SNode& chapter, const std::wstring& section);
  bool Category(Report::SResultData& target, Texts& out, const SNode& category, int level,
                const std::wstring& section);
  bool Attribute(Report::SResultData& target, Texts& out, const SNode& attribute, int level,
                 const std::wstring& section);
  bool Floor(Report::SResultData& target, Texts& out, const SNode& floor, int level,
             const Report::SFloorPair& pair, const std::wstring& section);
  bool SysCode(Report::SResultData& target, Texts& out, const SNode& node, int level, int depth,
               const Report::SFloorPair& pair, const std::wstring& section);
  bool Result(Report::SResultData& target, Texts& lines, const SNode& result, int level,
              const Report::SFloorPair& pair, int& lineNumber);

  CModelNumbers numbers_;
  const SModelProject* project_;
  int firstDepth_;
  NodeMap root_;
  SModelRequest request_;
  std::vector<std::set<std::wstring>> sysCodeNames_;  ///< by level; none: all
};

class CQdDeHzModel final : public CBillQuotaModel {
 public:
  /// Throws std::out_of_range where a row's index lies outside its vector.
  explicit CQdDeHzModel(const SModelProject& project);

 protected:
  Texts ChapterRow(const SNode& chapter) const override;
  bool Item(Texts& out, const SNode& item, const std::wstring& section) override;

 private:
  bool Quota(Report::SResultData& sum, Texts& out, const SNode& quota, int level,
             const std::wstring& section);
};

class CQdHzModel final : public CBillQuotaModel {
 public:
  /// Throws std::out_of_range where an index that the report looks at lies outside its vector.
  explicit CQdHzModel(const SModelProject& project);

 protected:
  Texts ChapterRow(const SNode& chapter) const override;
  bool Item(Texts& out, const SNode& item, const std::wstring& section) override;
};

class CDeHzModel final : public CBillQuotaModel {
 public:
  /// Throws std::out_of_range where an index that the report looks at lies outside its vector.
  explicit CDeHzModel(const SModelProject& project);

 protected:
  Texts ChapterRow(const SNode& chapter) const override;
  bool Item(Texts& out, const SNode& item, const std::wstring& section) override;

 private:
  bool Takes(const SModelProject& project, const KorDMRec::SKorDMQdDeRow& row) const;
};

}  // namespace tally_model

#endif  // TALLY_TESTS_MODEL_BILL_QUOTA_MODEL_H_
