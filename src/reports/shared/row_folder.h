// The fold: result rows into a tree of nodes.
#ifndef TALLY_REPORTS_SHARED_ROW_FOLDER_H_
#define TALLY_REPORTS_SHARED_ROW_FOLDER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"
#include "reports/shared/lookup_memo.h"
#include "result_store/db_records.h"

/// Folds rows one by one. A report states its nesting as a chain of steps:
///
///   CRowFolder fold(root, data);
///   for (const auto& row : data.rows) {
///     fold.Begin(row).Spec().Category().Attribute().CalItem().Floor().SysCode().Result();
///   }
///
/// Each step goes from the node reached so far to its child for one of the row's records, through
/// CReportDataMethod, and remembers the outcome. A step that answers null ends the row. Every row
/// of a folder must take the same steps up to the point where it ends. REQUIRES: the result set
/// outlives the tree.
template <class TData>
class CRowFolder {
 public:
  using TCalItem = typename decltype(TData::calItems)::value_type;

  CRowFolder(Report::NodeMap& root, const TData& data)
      : root_(root), data_(data), attKeys_(data.attrs.size()) {}

  /// Fetches the eight records of a row, before any look-up; std::out_of_range for a bad index.
  template <class TRow>
  CRowFolder& Begin(const TRow& row) {
    sgd_ = &At(data_.sgds, row.sgd);
    floor_ = &At(data_.floors, row.floor);
    component_ = &At(data_.components, row.component);
    spec_ = &At(data_.specs, row.spec);
    category_ = &At(data_.categories, row.category);
    attr_ = &At(data_.attrs, row.attr);
    sysCode_ = &At(data_.sysCodes, row.sysCode);
    calItem_ = &At(data_.calItems, row.calItem);
    return Again();
  }

  /// Whether all eight indices of a row lie within their vectors.
  template <class TRow>
  bool HasRecords(const TRow& row) const {
    const auto isWithin = [](const auto& records, int index) {
      return index >= 0 && static_cast<std::size_t>(index) < records.size();
    };
    return isWithin(data_.sgds, row.sgd) && isWithin(data_.floors, row.floor) &&
           isWithin(data_.components, row.component) && isWithin(data_.specs, row.spec) &&
           isWithin(data_.categories, row.category) && isWithin(data_.attrs, row.attr) &&
           isWithin(data_.sysCodes, row.sysCode) && isWithin(data_.calItems, row.calItem);
  }

  // The records of the row.
  const KorDMRec::SKorDMSpecRec& SpecRecord() const { return *spec_; }
  const KorDMRec::SKorDMCategoryRec& CategoryRecord() const { return *category_; }
  const KorDMRec::SKorDMAttrRec& AttrRecord() const { return *attr_; }
  const TCalItem& CalItemRecord() const { return *calItem_; }
  /// Position of a record in its dictionary.
  std::size_t AttrIndex() const { return Index(data_.attrs, attr_); }
  std::size_t CategoryIndex() const { return Index(data_.categories, category_); }
  std::size_t SpecIndex() const { return Index(data_.specs, spec_); }
  std::size_t CalItemIndex() const { return Index(data_.calItems, calItem_); }

  CRowFolder& Spec() {
    return Step(SpecIndex(), [this](auto& to) { return CReportDataMethod::GetSpec(to, *spec_); });
  }
  CRowFolder& Floor() {
    return Step(Index(data_.floors, floor_),
                [this](auto& to) { return CReportDataMethod::GetFloor(to, *floor_); });
  }
  /// The type level of the calculation books.
  CRowFolder& Type() {
    return Step(CategoryIndex(),
                [this](auto& to) { return CReportDataMethod::GetType(to, *spec_, *category_); });
  }
  CRowFolder& Category() {
    return Step(CategoryIndex(), [this](auto& to) {
      return CReportDataMethod::GetCategory(to, spec_->name, *category_);
    });
  }
  /// Filed under the record's `name` alone.
  CRowFolder& Attribute() {
    return Step(AttrIndex(), [this](auto& to) {
      return WithSortKey(CReportDataMethod::GetAttribute(to, *attr_));
    });
  }
  /// Filed under `name` and `value` joined.
  CRowFolder& AttributeByBothTexts() {
    return Step(AttrIndex(), [this](auto& to) {
      return WithSortKey(CReportDataMethod::GetAttribute(to, attr_->name, attr_->value));
    });
  }
  /// Filed under `name`, without a `value`.
  CRowFolder& AttributeByName() {
    return Step(AttrIndex(), [this](auto& to) {
      return WithSortKey(CReportDataMethod::GetAttribute(to, attr_->name, {}));
    });
  }
  /// Filed under the name of a fitting's pipe line.
  CRowFolder& PjAttribute() {
    // Kinds of one path may have been cut into category and kind differently.
    const auto record =
        std::uint64_t{CategoryIndex()} << 32U | static_cast<std::uint64_t>(AttrIndex());
    return Step(record, [this](auto& to) {
      return WithSortKey(
          CReportDataMethod::GetPjAttribute(to, spec_->name, category_->category, *attr_));
    });
  }
  CRowFolder& PjCalItem() {
    return Step(CalItemIndex(),
                [this](auto& to) { return CReportDataMethod::GetPjCalItem(to, *calItem_); });
  }
  CRowFolder& SysCode() {
    return Step(Index(data_.sysCodes, sysCode_), [this](auto& to) {
      return CReportDataMethod::GetSysCode(to, spec_->name, *sysCode_);
    });
  }
  CRowFolder& CalItem() {
    return Step(CalItemIndex(),
                [this](auto& to) { return CReportDataMethod::GetCalItem(to, *calItem_); });
  }
  /// Goes back to the root, for a further path of the same row.
  CRowFolder& Again() {
    children_ = &root_;
    step_ = 0;
    return *this;
  }
  /// A level of the report's own whose look-up is not remembered.
  template <class TLookUp>
  CRowFolder& Down(TLookUp&& lookUp) {
    if (children_ != nullptr) {
      IReportDataNode* node = lookUp(*children_);
      children_ = node == nullptr ? nullptr : &node->children;
    }
    return *this;
  }
  /// A level of the report's own. `record` stands for all that the look-up depends on.
  template <class TLookUp>
  CRowFolder& Through(std::uint64_t record, TLookUp&& lookUp) {
    return Step(record, lookUp);
  }

  // The leaves.
  void Result() {
    AddResult<CReportResult>([this](auto& to) {
      return CReportDataMethod::GetResult(to, sgd_->name, *floor_, *calItem_, *component_);
    });
  }
  void ResultDetail() {
    AddResult<CReportResultDetail>([this](auto& to) {
      return CReportDataMethod::GetResultDetail(to, sgd_->name, *floor_, *calItem_, *component_);
    });
  }
  void PjResult() {
    AddResult<CReportResult>([this](auto& to) {
      return CReportDataMethod::GetPjResult(to, sgd_->name, *floor_, *calItem_, *component_);
    });
  }

 private:
  template <class TRecord>
  static const TRecord& At(const std::vector<TRecord>& records, int index) {
    // A negative index becomes a huge one, which at() refuses like any other bad one.
    return records.at(static_cast<std::size_t>(index));
  }
  template <class TRecord>
  static std::size_t Index(const std::vector<TRecord>& records, const TRecord* record) {
    return static_cast<std::size_t>(record - records.data());
  }

  template <class TLookUp>
  CRowFolder& Step(std::uint64_t record, TLookUp&& lookUp) {
    if (children_ != nullptr) {
      IReportDataNode* node = Memo().Find(children_, record, [&] { return lookUp(*children_); });
      children_ = node == nullptr ? nullptr : &node->children;
    }
    return *this;
  }

  template <class TResult, class TLookUp>
  void AddResult(TLookUp&& lookUp) {
    if (children_ == nullptr) {
      return;
    }
    bool isNew = false;
    IReportDataNode* node = Memo().Find(
        children_, std::uint64_t{SgdFloorId()} << 32U | std::uint64_t{CalItemIndex()}, [&] {
          isNew = true;
          return lookUp(*children_);
        });
    // The look-up itself has added the component; a remembered one has not been called.
    if (!isNew && node != nullptr) {
      static_cast<TResult*>(node)->components.push_back(component_->name);
    }
  }

  CLookupMemo& Memo() {
    if (step_ == memos_.size()) {
      memos_.emplace_back();
    }
    return memos_[step_++];
  }

  // A small number for each pair of construction section and floor that occurs.
  std::uint32_t SgdFloorId() {
    const std::uint64_t pair =
        std::uint64_t{Index(data_.sgds, sgd_)} << 32U | std::uint64_t{Index(data_.floors, floor_)};
    if (sgdFloorIds_.empty() || pair != lastPair_) {
      lastPair_ = pair;
      lastPairId_ = sgdFloorIds_.try_emplace(pair, static_cast<std::uint32_t>(sgdFloorIds_.size()))
                        .first->second;
    }
    return lastPairId_;
  }

  CReportAttribute* WithSortKey(CReportAttribute* node) {
    if (node != nullptr && node->sortKey == nullptr) {
      auto& key = attKeys_[AttrIndex()];
      // One record can lead to nodes of other texts where the look-up composes them.
      if (key == nullptr || key->name != node->name || key->value != node->value) {
        key = std::make_shared<const SAttSortKey>(node->name, node->value);
      }
      node->sortKey = key;
    }
    return node;
  }

  Report::NodeMap& root_;
  const TData& data_;
  const KorDMRec::SKorDMSgdRec* sgd_ = nullptr;
  const KorDMRec::SKorDMFloorRec* floor_ = nullptr;
  const KorDMRec::SKorDMComponentRec* component_ = nullptr;
  const KorDMRec::SKorDMSpecRec* spec_ = nullptr;
  const KorDMRec::SKorDMCategoryRec* category_ = nullptr;
  const KorDMRec::SKorDMAttrRec* attr_ = nullptr;
  const KorDMRec::SKorDMSysCodeRec* sysCode_ = nullptr;
  const TCalItem* calItem_ = nullptr;
  Report::NodeMap* children_ = nullptr;
  std::size_t step_ = 0;
  std::vector<CLookupMemo> memos_;
  std::unordered_map<std::uint64_t, std::uint32_t> sgdFloorIds_;
  std::uint64_t lastPair_ = 0;
  std::uint32_t lastPairId_ = 0;
  std::vector<std::shared_ptr<const SAttSortKey>> attKeys_;
};

#endif  // TALLY_REPORTS_SHARED_ROW_FOLDER_H_
