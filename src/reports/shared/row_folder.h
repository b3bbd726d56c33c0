// The fold: result rows into a tree of nodes.
#ifndef TALLY_REPORTS_SHARED_ROW_FOLDER_H_
#define TALLY_REPORTS_SHARED_ROW_FOLDER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/prefetch.h"
#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"
#include "reports/shared/fold_order.h"
#include "reports/shared/result_order.h"
#include "result_store/db_records.h"

/// The records of one row.
template <class TData>
struct TRowRecords {
  using TRow = typename decltype(TData::rows)::value_type;
  using TCalItem = typename decltype(TData::calItems)::value_type;

  const KorDMRec::SKorDMSgdRec& sgd;
  const KorDMRec::SKorDMFloorRec& floor;
  const KorDMRec::SKorDMComponentRec& component;
  const KorDMRec::SKorDMSpecRec& spec;
  const KorDMRec::SKorDMCategoryRec& category;
  const KorDMRec::SKorDMAttrRec& attr;
  const KorDMRec::SKorDMSysCodeRec& sysCode;
  const TCalItem& calItem;
  const TRow& row;
  std::uint32_t group;  ///< what the row was added with
};

/// Folds rows. A report states its nesting level by level, adds rows and folds them all at once:
///
///   CRowFolder fold(root, data);
///   fold.Spec().Category().Attribute().CalItem().Floor().SysCode();
///   for (const auto& row : data.rows) {
///     fold.Add(row);
///   }
///   fold.Fold();
///
/// The tree is the one that the look-ups of CReportDataMethod make row by row, level by level,
/// where a null ends the row. The rows are taken in the order of the finished tree, though, so that
/// each node is looked up once, behind the last of its siblings, and the tree lies in memory as a
/// walk reads it. A node is made of the first of its rows. REQUIRES: the result set outlives the
/// tree.
template <class TData>
class CRowFolder {
 public:
  using TRecords = TRowRecords<TData>;
  using TRow = typename TRecords::TRow;
  /// A column of a row: the number of a record.
  using Column = int TRow::*;
  /// Finds or makes the node of a level.
  using LookUp = std::function<IReportDataNode*(Report::NodeMap&, const TRecords&)>;

  CRowFolder(Report::NodeMap& root, const TData& data)
      : root_(root), data_(data), resultOrder_(data), attKeys_(data.attrs.size()) {
    entries_.reserve(data.rows.size());
  }

  // The levels, outermost first.

  CRowFolder& Spec() {
    return Level({&TRow::spec},
                 [](auto& to, auto& of) { return CReportDataMethod::GetSpec(to, of.spec); });
  }
  CRowFolder& Floor() {
    return Level({&TRow::floor},
                 [](auto& to, auto& of) { return CReportDataMethod::GetFloor(to, of.floor); });
  }
  CRowFolder& Category() {
    return Level({&TRow::category}, [](auto& to, auto& of) {
      return CReportDataMethod::GetCategory(to, of.spec.name, of.category);
    });
  }
  /// The type level of the calculation books.
  CRowFolder& Type() {
    return Level({&TRow::spec, &TRow::category}, [](auto& to, auto& of) {
      return CReportDataMethod::GetType(to, of.spec, of.category);
    });
  }
  /// Filed under the record's `name` alone.
  CRowFolder& Attribute() {
    return AttributeLevel({&TRow::attr}, [](auto& to, auto& of) {
      return CReportDataMethod::GetAttribute(to, of.attr);
    });
  }
  /// Filed under `name` and `value` joined.
  CRowFolder& AttributeByBothTexts() {
    return AttributeLevel({&TRow::attr}, [](auto& to, auto& of) {
      return CReportDataMethod::GetAttribute(to, of.attr.name, of.attr.value);
    });
  }
  /// Filed under `name`, without a `value`.
  CRowFolder& AttributeByName() {
    return AttributeLevel({&TRow::attr}, [](auto& to, auto& of) {
      return CReportDataMethod::GetAttribute(to, of.attr.name, {});
    });
  }
  /// Filed under the name of a fitting's pipe line.
  CRowFolder& PjAttribute() {
    return AttributeLevel({&TRow::spec, &TRow::category, &TRow::attr}, [](auto& to, auto& of) {
      return CReportDataMethod::GetPjAttribute(to, of.spec.name, of.category.category, of.attr);
    });
  }
  CRowFolder& CalItem() {
    return Level(
        {&TRow::calItem},
        [](auto& to, auto& of) { return CReportDataMethod::GetCalItem(to, of.calItem); },
        // There are many item records: no node is made for each.
        [](auto& key, auto& of) {
          key += of.calItem.name;
          key += L'@';
          key += of.calItem.unit;
        });
  }
  CRowFolder& PjCalItem() {
    return Level({&TRow::calItem}, [](auto& to, auto& of) {
      return CReportDataMethod::GetPjCalItem(to, of.calItem);
    });
  }
  CRowFolder& SysCode() {
    sysCodeLevel_ = levels_.size();
    return Level(
        {&TRow::sysCode},
        [this](auto& to, auto& of) { return CReportDataMethod::GetSysCode(to, Path(of)); },
        [this](auto& key, auto& of) {
          for (const SSysCodeStep& step : Path(of)) {
            key += step.name;
            key += kLevelEnd;
          }
        });
  }
  /// A level of the report's own. `columns` name all that the look-up's key depends on; without
  /// any it is the group that a row is added with.
  CRowFolder& Level(std::vector<Column> columns, LookUp lookUp) {
    WriteKey writeKey = [lookUp](auto& key, auto& of) {
      Report::NodeMap scratch;
      key = lookUp(scratch, of)->GetFiledKey().Text();
    };
    return Level(std::move(columns), std::move(lookUp), std::move(writeKey));
  }

  /// For a report that shows no references: a result lists as many components, without their texts,
  /// which lie far apart.
  CRowFolder& CountComponentsOnly() {
    listsComponents_ = false;
    return *this;
  }

  /// Whether all eight indices of a row lie within their vectors.
  bool HasRecords(const TRow& row) const {
    const auto isWithin = [](const auto& records, int index) {
      return index >= 0 && static_cast<std::size_t>(index) < records.size();
    };
    return isWithin(data_.sgds, row.sgd) && isWithin(data_.floors, row.floor) &&
           isWithin(data_.components, row.component) && isWithin(data_.specs, row.spec) &&
           isWithin(data_.categories, row.category) && isWithin(data_.attrs, row.attr) &&
           isWithin(data_.sysCodes, row.sysCode) && isWithin(data_.calItems, row.calItem);
  }
  /// The eight records of a row; std::out_of_range for a bad index.
  TRecords Records(const TRow& row, std::uint32_t group = 0) const {
    return {At(data_.sgds, row.sgd),
            At(data_.floors, row.floor),
            At(data_.components, row.component),
            At(data_.specs, row.spec),
            At(data_.categories, row.category),
            At(data_.attrs, row.attr),
            At(data_.sysCodes, row.sysCode),
            At(data_.calItems, row.calItem),
            row,
            group};
  }

  /// Takes a row of the set; std::out_of_range for a bad index. REQUIRES: all levels are stated.
  void Add(const TRow& row, std::uint32_t group = 0) {
    if (!HasRecords(row)) {
      static_cast<void>(Records(row));
    }
    for (SLevel& level : levels_) {
      const std::uint32_t record = level.RecordOf(row, group);
      if (!level.ranks.Knows(record)) {
        key_.clear();
        level.writeKey(key_, Records(row, group));
        level.ranks.Add(record, key_);
      }
    }
    resultOrder_.Add(row);
    entries_.push_back({0, 0, static_cast<std::uint32_t>(&row - data_.rows.data()), group});
  }

  /// Folds all that was added. Only the tree is left of it.
  void Fold() {
    Sort();
    resultOrder_.Rank();
    std::vector<IReportDataNode*> path(levels_.size());
    for (std::size_t begin = 0, end = 0; begin < entries_.size(); begin = end) {
      Descend(path, begin);
      end = EndOf(begin, levels_.back());
      if (path.back() != nullptr) {
        AddResults(*path.back(), begin, end);
      }
    }
  }

 private:
  // Ends each name of a system code's key. It is below every character of a text, so that paths
  // stand level by level.
  static constexpr wchar_t kLevelEnd = std::numeric_limits<wchar_t>::min();
  /// Writes the text that orders the nodes of a level.
  using WriteKey = std::function<void(std::wstring& key, const TRecords& records)>;
  /// Whether a fold goes on to read the components' texts; the summaries leave them to a request.
  static constexpr bool kReadsComponents =
      !std::is_same_v<typename TRecords::TCalItem, KorDMRec::SKorDMCalItemRec>;
  static constexpr std::size_t kNoLevel = static_cast<std::size_t>(-1);

  struct SLevel {
    std::vector<Column> columns;
    std::vector<CPairNumbers> pairs;  // that join the columns into one number
    WriteKey writeKey;
    LookUp lookUp;
    CTextRanks ranks;
    // Of its rank within an entry.
    unsigned lowestBit = 0;
    unsigned bits = 0;

    std::uint32_t RecordOf(const TRow& row, std::uint32_t group) {
      if (columns.empty()) {
        return group;
      }
      auto record = static_cast<std::uint32_t>(row.*columns[0]);
      for (std::size_t i = 1; i < columns.size(); ++i) {
        record = pairs[i - 1].Of(record, static_cast<std::uint32_t>(row.*columns[i]));
      }
      return record;
    }
  };

  /// Rows behind each other that lead to one result.
  struct SRun {
    std::size_t begin;
    std::size_t end;
    const TRow* row;
  };

  template <class TRecord>
  static const TRecord& At(const std::vector<TRecord>& records, int index) {
    // A negative index becomes a huge one, which at() refuses like any other bad one.
    return records.at(static_cast<std::size_t>(index));
  }
  CRowFolder& Level(std::vector<Column> columns, LookUp lookUp, WriteKey writeKey) {
    SLevel& level = levels_.emplace_back();
    level.pairs.resize(columns.empty() ? 0 : columns.size() - 1);
    level.columns = std::move(columns);
    level.writeKey = std::move(writeKey);
    level.lookUp = std::move(lookUp);
    return *this;
  }
  template <class TLookUp>
  CRowFolder& AttributeLevel(std::vector<Column> columns, TLookUp&& lookUp) {
    return Level(std::move(columns),
                 [this, lookUp](auto& to, auto& of) { return WithSortKey(lookUp(to, of), of); });
  }

  CReportAttribute* WithSortKey(CReportAttribute* node, const TRecords& of) {
    if (node != nullptr && node->sortKey == nullptr) {
      auto& key = attKeys_[static_cast<std::size_t>(of.row.attr)];
      // One record can lead to nodes of other texts where the look-up composes them.
      if (key == nullptr || key->name != node->name || key->value != node->value) {
        key = std::make_shared<const SAttSortKey>(node->name, node->value);
      }
      node->sortKey = key;
    }
    return node;
  }

  // The row's system code, taken apart once for each discipline.
  const std::vector<SSysCodeStep>& Path(const TRecords& of) {
    const std::uint32_t number = paths_.Of(static_cast<std::uint32_t>(of.row.spec),
                                           static_cast<std::uint32_t>(of.row.sysCode));
    if (number == pathSteps_.size()) {
      pathSteps_.push_back(ReadSysCodePath(of.spec.name, of.sysCode.name));
    }
    return pathSteps_[number];
  }

  TRecords RecordsOf(const SFoldEntry& entry) const {
    return Records(data_.rows[entry.row], entry.group);
  }

  // Brings the entries into the order of the tree, if that is sure to make the same tree.
  void Sort() {
    unsigned bits = 0;
    for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
      level->ranks.Rank();
      level->lowestBit = bits;
      level->bits = level->ranks.Bits();
      bits += level->bits;
    }
    isSorted_ = bits < 2 * SFoldEntry::kWord && !KeysMayMeet();
    if (!isSorted_) {
      return;
    }
    for (SFoldEntry& entry : entries_) {
      const TRow& row = data_.rows[entry.row];
      for (SLevel& level : levels_) {
        entry.Push(level.ranks.RankOf(level.RecordOf(row, entry.group)), level.bits);
      }
    }
    SortEntries(entries_, bits);
  }

  // Whether a system code may stand beside a node of the next level that has its key: the first to
  // come then keeps the place. That takes a code that goes on where another one ends.
  bool KeysMayMeet() const {
    if (sysCodeLevel_ == kNoLevel) {
      return false;
    }
    const std::vector<std::wstring_view>& codes = levels_[sysCodeLevel_].ranks.Texts();
    for (std::size_t i = 0; i < codes.size(); ++i) {
      // All codes that go on from one stand behind it.
      for (std::size_t j = i + 1; j < codes.size() && codes[j].starts_with(codes[i]); ++j) {
        const std::wstring_view rest = codes[j].substr(codes[i].size());
        if (MayBeKeyBelow(rest.substr(0, rest.find(kLevelEnd)))) {
          return true;
        }
      }
    }
    return false;
  }
  bool MayBeKeyBelow(std::wstring_view name) const {
    return sysCodeLevel_ + 1 < levels_.size() ? levels_[sysCodeLevel_ + 1].ranks.HasText(name)
                                              : name.find(L'@') != name.npos;
  }

  // The end of the entries from `begin` on that share the path down to `level`.
  std::size_t EndOf(std::size_t begin, const SLevel& level) const {
    std::size_t end = begin + 1;
    while (isSorted_ && end < entries_.size() &&
           !entries_[end].DiffersAbove(entries_[begin], level.lowestBit)) {
      ++end;
    }
    return end;
  }

  // Makes the nodes at which the path of an entry leaves that of the one before.
  void Descend(std::vector<IReportDataNode*>& path, std::size_t at) {
    std::size_t depth = 0;
    if (isSorted_ && at > 0) {
      while (!entries_[at].DiffersAbove(entries_[at - 1], levels_[depth].lowestBit)) {
        ++depth;
      }
    }
    for (; depth < levels_.size(); ++depth) {
      if (depth > 0 && path[depth - 1] == nullptr) {
        path[depth] = nullptr;
        continue;
      }
      Report::NodeMap& children = depth == 0 ? root_ : path[depth - 1]->children;
      path[depth] = levels_[depth].lookUp(children, RecordsOf(FirstOf(at, levels_[depth])));
    }
  }

  // Of the entries that share a node, the one of the earliest row.
  const SFoldEntry& FirstOf(std::size_t at, const SLevel& level) const {
    if (!isSorted_ || !level.ranks.IsShared()) {
      return entries_[at];
    }
    return *std::min_element(
        entries_.begin() + static_cast<std::ptrdiff_t>(at),
        entries_.begin() + static_cast<std::ptrdiff_t>(EndOf(at, level)),
        [](const SFoldEntry& a, const SFoldEntry& b) { return a.row < b.row; });
  }

  void AddResults(IReportDataNode& parent, std::size_t begin, std::size_t end) {
    Report::NodeMap& children = parent.children;
    const bool isFirst = children.empty();
    SWholeSum whole;
    FindRuns(begin, end);
    SortRuns();
    if (isFirst) {
      children.reserve(runs_.size());
    }
    for (std::size_t first = 0, last = 0; first < order_.size(); first = last) {
      const SRun& leader = runs_[order_[first]];
      std::size_t count = 0;
      for (last = first;
           last < order_.size() && resultOrder_.Compare(*runs_[order_[last]].row, *leader.row) == 0;
           ++last) {
        count += runs_[order_[last]].end - runs_[order_[last]].begin;
      }
      if (auto* result = GetResult(children, *leader.row, isFirst)) {
        AddComponents(*result, first, last, count);
        AddTo(whole, *result);
      }
    }
    if (auto* sysCode = NodeAs<CReportSysCode>(&parent)) {
      sysCode->whole = whole;
      sysCode->wholeSize = isFirst ? children.size() : 0;
    }
  }

  static void AddTo(SWholeSum& whole, const CReportResult& result) {
    whole.Add({result.Quantity(result.floorCount), true});
  }
  // A detail has four quantities; which of them a report adds up is its own.
  static void AddTo(SWholeSum& /*whole*/, const CReportResultDetail& /*result*/) {}

  // Brings near what the entries behind `at` will read: rows and records lie far apart. A block of
  // them at once, as reads that follow close on each other wait together.
  void PrefetchBehind(std::size_t at) const {
    constexpr std::size_t kBlock = 32;
    if (at % kBlock != 0) {
      return;
    }
    const std::size_t end = entries_.size();
    const std::size_t records = std::min(at + kBlock, end);
    const std::size_t rows = std::min(at + 2 * kBlock, end);
    const std::size_t rowsEnd = std::min(at + 3 * kBlock, end);
    for (std::size_t i = rows; i < rowsEnd; ++i) {
      Prefetch(&RowAt(i));
    }
    for (std::size_t i = records; i < rows; ++i) {
      PrefetchItem(ItemOf(RowAt(i)));
    }
    if (listsComponents_ && kReadsComponents) {
      for (std::size_t i = records; i < rows; ++i) {
        Prefetch(&ComponentOf(RowAt(i)).Text());
      }
    }
  }
  // What a result is made of.
  template <class TItem>
  static void PrefetchItem(const TItem& item) {
    if constexpr (requires { item.quantity; }) {
      Prefetch(&item.quantity);
      Prefetch(&item.expression);
    } else if constexpr (requires { item.quantity1; }) {
      Prefetch(&item.quantity1);
      Prefetch(&item.expression);
    }
  }
  const TRow& RowAt(std::size_t entry) const { return data_.rows[entries_[entry].row]; }
  const typename TRecords::TCalItem& ItemOf(const TRow& row) const {
    return data_.calItems[static_cast<std::size_t>(row.calItem)];
  }

  void FindRuns(std::size_t begin, std::size_t end) {
    runs_.clear();
    for (std::size_t i = begin; i < end; ++i) {
      PrefetchBehind(i);
      const TRow& row = RowAt(i);
      if (i > begin && IsSameResult(*runs_.back().row, row)) {
        runs_.back().end = i + 1;
      } else {
        runs_.push_back({i, i + 1, &row});
      }
    }
  }

  static bool IsSameResult(const TRow& a, const TRow& b) {
    return a.calItem == b.calItem && a.sgd == b.sgd && a.floor == b.floor;
  }

  // By key, equal ones as the rows stand.
  void SortRuns() {
    order_.resize(runs_.size());
    std::iota(order_.begin(), order_.end(), 0U);
    std::sort(order_.begin(), order_.end(), [this](std::uint32_t a, std::uint32_t b) {
      const int order = resultOrder_.Compare(*runs_[a].row, *runs_[b].row);
      return order != 0 ? order < 0 : a < b;
    });
  }

  auto* GetResult(Report::NodeMap& children, const TRow& row, bool isBehindAll) const {
    using EPlace = CReportDataMethod::EResultPlace;
    return CReportDataMethod::GetResult(
        children, data_.sgds[static_cast<std::size_t>(row.sgd)].name,
        data_.floors[static_cast<std::size_t>(row.floor)], ItemOf(row),
        isBehindAll ? EPlace::BehindAll : EPlace::Anywhere);
  }

  CTextRef ComponentOf(const TRow& row) const {
    return listsComponents_
               ? CTextRef(data_.components[static_cast<std::size_t>(row.component)].name)
               : CTextRef();
  }

  // The components of the runs from `first` on, `count` in all.
  template <class TResult>
  void AddComponents(TResult& result, std::size_t first, std::size_t last, std::size_t count) {
    if (result.components.empty()) {
      result.components.reserve(count);
    }
    for (std::size_t at = first; at < last; ++at) {
      const SRun& run = runs_[order_[at]];
      for (std::size_t i = run.begin; i < run.end; ++i) {
        result.components.push_back(ComponentOf(RowAt(i)));
      }
    }
  }

  Report::NodeMap& root_;
  const TData& data_;
  std::vector<SLevel> levels_;
  std::size_t sysCodeLevel_ = kNoLevel;
  std::vector<SFoldEntry> entries_;
  CResultOrder<TData> resultOrder_;
  bool listsComponents_ = true;
  bool isSorted_ = false;
  std::wstring key_;
  std::vector<SRun> runs_;
  std::vector<std::uint32_t> order_;  // of the runs
  CPairNumbers paths_;
  std::vector<std::vector<SSysCodeStep>> pathSteps_;
  std::vector<std::shared_ptr<const SAttSortKey>> attKeys_;
};

#endif  // TALLY_REPORTS_SHARED_ROW_FOLDER_H_
