// Builds tiny projects in a few lines:
//
//   CTinyProject project;
//   project.KindSort(L"给排水", L"管道\\给水管", 1).Floor(L"1", L"1");
//   project.Hz().Row({.floor = {L"2", L"2,4"}, .calItem = {.name = L"管道长度", .quantity = 2.5}});
//   Open(project);  // TallyTest
#ifndef TALLY_TESTS_SUPPORT_TINY_PROJECT_H_
#define TALLY_TESTS_SUPPORT_TINY_PROJECT_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "result_store/db_records.h"
#include "support/fake_platform.h"

namespace tally_test {

// The parts of a row. A part that a row does not name has the value that stands at its field in
// TTinyRow; inside a part that it names, what it leaves out is empty or 0.

struct STinyFloor {
  std::wstring name = {};
  std::wstring text = {};
};
struct STinyCategory {
  std::wstring category = {};
  std::wstring kind = {};
};
struct STinyAttr {
  std::wstring name = {};
  std::wstring value = {};
};
/// Item of the consumption, overview, over-height, bill and quota sets.
struct STinyCalItem {
  std::wstring name = {};
  std::wstring unit = L"m";
  std::wstring text3 = {};
  std::wstring text4 = {};
  double quantity = 0;
  std::wstring expression = {};
};
/// Item of the detail set.
struct STinyDetailItem {
  std::wstring name = {};
  std::wstring unit = L"m";
  double quantity1 = 0;
  double quantity2 = 0;
  double quantity3 = 0;
  double quantity4 = 0;
  std::wstring expression = {};
};
/// Item of the fitting set.
struct STinyPjItem {
  std::wstring text1 = {};
  std::wstring name = {};
  std::wstring unit = L"个";
  std::int64_t value = 0;
};
/// Bill item or quota item.
struct STinyQdDe {
  std::wstring code = {};
  std::wstring name = {};
  std::wstring unit = {};
  std::wstring library = {};
};

/// A row of any result set but the bill and quota set.
template <class TCalItem>
struct TTinyRow {
  std::wstring sgd = L"一区";
  STinyFloor floor = {L"1", L"1"};
  std::wstring component = L"c1";
  std::wstring spec = L"给排水";
  STinyCategory category = {L"管道", L"给水管"};
  STinyAttr attr = {L"DN25", L""};
  std::wstring sysCode = L"A";
  TCalItem calItem = {};
};

/// A row of the bill and quota set.
struct STinyQdDeRow {
  bool isQd = false;
  std::wstring sgd = L"一区";
  STinyFloor floor = {L"1", L"1"};
  std::wstring component = L"c1";
  std::wstring spec = L"给排水";
  STinyCategory category = {L"管道", L"给水管"};
  STinyAttr attr = {L"DN25", L""};
  std::wstring sysCode = L"A";
  STinyCalItem calItem = {};
  STinyQdDe qdItem = {};
  STinyQdDe deItem = {};
};

/// Fills one result set of a project.
template <class TData, class TRow>
class TTinySet {
 public:
  explicit TTinySet(TData& data) : data_(&data) {}

  /// Appends a row. Equal dictionary records are made once.
  TTinySet& Row(const TRow& row) {
    auto& made = data_->rows.emplace_back();
    made.sgd = Index(data_->sgds, Record(row.sgd, KorDMRec::SKorDMSgdRec()));
    made.floor = Index(data_->floors, {0, row.floor.name, row.floor.text});
    made.component = Index(data_->components, Record(row.component, Component()));
    made.spec = Index(data_->specs, {0, row.spec});
    made.category = Index(data_->categories, {0, row.category.category, row.category.kind});
    made.attr = Index(data_->attrs, {0, row.attr.name, row.attr.value});
    made.sysCode = Index(data_->sysCodes, {0, row.sysCode});
    made.calItem = Index(data_->calItems, ItemRecord(row.calItem));
    if constexpr (std::is_same_v<TRow, STinyQdDeRow>) {
      made.isQd = row.isQd;
      made.qdItem = Index(data_->qdItems, QdDeRecord(row.qdItem));
      made.deItem = Index(data_->deItems, QdDeRecord(row.deItem));
    }
    return *this;
  }

  /// The set itself, for what Row cannot make: rows with bad indices, records without rows.
  TData& Data() { return *data_; }

 private:
  using Component = KorDMRec::SKorDMComponentRec;

  template <class TRecord>
  static TRecord Record(const std::wstring& name, TRecord record) {
    record.name = name;
    return record;
  }
  static KorDMRec::SKorDMCalItemRec ItemRecord(const STinyCalItem& item) {
    return {0, item.name, item.unit, item.text3, item.text4, item.quantity, item.expression};
  }
  static KorDMRec::SKorDMCalItemDetailQRec ItemRecord(const STinyDetailItem& item) {
    return {0,
            item.name,
            item.unit,
            item.quantity1,
            item.quantity2,
            item.quantity3,
            item.quantity4,
            item.expression};
  }
  static KorDMRec::SKorDMPjCalItemRec ItemRecord(const STinyPjItem& item) {
    return {0, item.text1, item.name, item.unit, item.value};
  }
  static KorDMRec::SKorDMQdDeRec QdDeRecord(const STinyQdDe& item) {
    return {0, item.code, item.name, item.unit, item.library};
  }

  // What makes two records equal. Quantities count by their bits: -0 is not 0.
  static std::uint64_t Bits(double value) { return std::bit_cast<std::uint64_t>(value); }
  static auto Key(const KorDMRec::SKorDMFloorRec& r) { return std::tie(r.name, r.floorText); }
  static auto Key(const KorDMRec::SKorDMCategoryRec& r) { return std::tie(r.category, r.kind); }
  static auto Key(const KorDMRec::SKorDMAttrRec& r) { return std::tie(r.name, r.value); }
  static auto Key(const KorDMRec::SKorDMCalItemRec& r) {
    return std::make_tuple(r.name, r.unit, r.text3, r.text4, Bits(r.quantity), r.expression);
  }
  static auto Key(const KorDMRec::SKorDMCalItemDetailQRec& r) {
    return std::make_tuple(r.name, r.unit, Bits(r.quantity1), Bits(r.quantity2), Bits(r.quantity3),
                           Bits(r.quantity4), r.expression);
  }
  static auto Key(const KorDMRec::SKorDMPjCalItemRec& r) {
    return std::tie(r.text1, r.name, r.unit, r.value);
  }
  static auto Key(const KorDMRec::SKorDMQdDeRec& r) {
    return std::tie(r.code, r.name, r.unit, r.library);
  }
  template <class TRecord>
  static auto Key(const TRecord& r) {
    return std::tie(r.name);
  }

  /// The index of the record, which is put in where it is new; `id` counts from 1.
  template <class TRecord>
  static int Index(std::vector<TRecord>& records, std::type_identity_t<TRecord> record) {
    for (std::size_t i = 0; i < records.size(); ++i) {
      if (Key(records[i]) == Key(record)) {
        return static_cast<int>(i);
      }
    }
    record.id = static_cast<int>(records.size()) + 1;
    records.push_back(std::move(record));
    return static_cast<int>(records.size()) - 1;
  }

  TData* data_;
};

using CTinyResultSet = TTinySet<KorDMRec::SKorDMResultData, TTinyRow<STinyCalItem>>;
using CTinyDetailSet = TTinySet<KorDMRec::SKorDMDetailResultData, TTinyRow<STinyDetailItem>>;
using CTinyPjSet = TTinySet<KorDMRec::SKorDMPjResultData, TTinyRow<STinyPjItem>>;
using CTinyQdDeSet = TTinySet<KorDMRec::SKorDMQdDeResultData, STinyQdDeRow>;

class CTinyProject {
 public:
  // The result sets.
  CTinyResultSet Hz() { return CTinyResultSet(records_.hz); }
  CTinyResultSet Gl() { return CTinyResultSet(records_.gl); }
  CTinyResultSet Cg() { return CTinyResultSet(records_.cg); }
  CTinyDetailSet Detail() { return CTinyDetailSet(records_.detail); }
  CTinyPjSet Pj() { return CTinyPjSet(records_.pj); }
  CTinyQdDeSet QdDe() { return CTinyQdDeSet(records_.qdDe); }

  // The tree records.

  /// Numbers a component kind, `path` being "category\kind".
  CTinyProject& KindSort(const std::wstring& spec, const std::wstring& path, int sortId) {
    records_.smallIndex.push_back({sortId, spec, path.substr(0, path.find(L'\\')), path});
    return *this;
  }
  /// Numbers a system code, `sysCode` being level names joined by "&".
  CTinyProject& SysCodeSort(const std::wstring& spec, const std::wstring& sysCode, int sortId,
                            const std::wstring& remark = L"") {
    records_.sysCodes.push_back({sortId, spec, sysCode, remark});
    return *this;
  }
  /// A floor of the project.
  CTinyProject& Floor(const std::wstring& name, const std::wstring& text) {
    const int id = static_cast<int>(records_.floors.size()) + 1;
    records_.floors.push_back({id, name, text});
    return *this;
  }
  /// A construction section of the project.
  CTinyProject& Section(const std::wstring& name) {
    records_.sgdNames.push_back(name);
    return *this;
  }

  const SProjectRecords& Records() const { return records_; }

 private:
  SProjectRecords records_;
};

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_TINY_PROJECT_H_
