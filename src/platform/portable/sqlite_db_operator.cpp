#include "platform/portable/sqlite_db_operator.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>

#include "platform/portable/id_positions.h"
#include "platform/portable/sqlite_project.h"
#include "platform/portable/sqlite_table_reader.h"

namespace {

using IdColumn = std::vector<std::int64_t>;

// A table and the columns that its reader takes, in order.
struct STable {
  const char* name;
  const char* columns;
};

constexpr STable kCategoryTree = {"all_small_index", "id, sort_id, spec, big_category, path"};
constexpr STable kSysCodeTree = {"all_sys_code", "id, sort_id, spec, sys_code, remark"};
constexpr STable kFloorTree = {"all_floor", "id, name, floor_text"};
constexpr STable kSgdTree = {"all_sgd", "id, name"};

constexpr STable kSgds = {"sgd", "id, name, text2"};
constexpr STable kFloors = {"floor", "id, name, floor_text"};
constexpr STable kSpecs = {"spec", "id, name"};
constexpr STable kCategories = {"category", "id, category, kind"};
constexpr STable kAttrs = {"attr", "id, name, value"};
constexpr STable kSysCodes = {"sys_code", "id, name"};
constexpr STable kComponents = {"component", "id, name"};
constexpr STable kCalItems = {"cal_item", "id, name, unit, text3, text4, quantity, expression"};
constexpr STable kDetailCalItems = {
    "detail_cal_item", "id, name, unit, quantity1, quantity2, quantity3, quantity4, expression"};
constexpr STable kPjCalItems = {"pj_cal_item", "id, text1, name, unit, value"};
constexpr STable kQdItems = {"qd_item", "id, code, name, unit, library"};
constexpr STable kDeItems = {"de_item", "id, code, name, unit, library"};

#define TALLY_ROW_COLUMNS "id, sgd, floor, component, spec, category, attr, sys_code, cal_item"
constexpr STable kSummaryRows = {"hz_row", TALLY_ROW_COLUMNS};
constexpr STable kOverviewRows = {"gl_row", TALLY_ROW_COLUMNS};
constexpr STable kOverHeightRows = {"cg_row", TALLY_ROW_COLUMNS};
constexpr STable kDetailRows = {"detail_row", TALLY_ROW_COLUMNS};
constexpr STable kPjRows = {"pj_row", TALLY_ROW_COLUMNS};
constexpr STable kQdDeRows = {"qd_de_row", TALLY_ROW_COLUMNS ", qd_item, de_item, is_qd"};
#undef TALLY_ROW_COLUMNS

// The columns of a row that refer to dictionaries.
constexpr std::size_t kResultColumns = 8;
constexpr std::size_t kQdDeColumns = 10;
constexpr int kIsQdColumn = 11;

std::string SelectAll(const STable& table) {
  return std::string("SELECT ") + table.columns + " FROM " + table.name + " ORDER BY id";
}

std::string SelectFrom(const STable& table) {
  return std::string("SELECT ") + table.columns + " FROM " + table.name +
         " WHERE id >= ?1 ORDER BY id";
}

// Records from the columns of their tables
// ---------------------------------------------------------

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMAllSmallIndexRec& record) {
  record.sortId = reader.Int(1);
  record.spec = reader.Text(2);
  record.bigCategory = reader.Text(3);
  record.path = reader.Text(4);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMAllSysCodeRec& record) {
  record.sortId = reader.Int(1);
  record.spec = reader.Text(2);
  record.sysCode = reader.Text(3);
  record.remark = reader.Text(4);
}

void Fill(CSqliteTableReader& reader, std::wstring& name) {
  name = reader.Text(1);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMSgdRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
  record.text2 = reader.Text(2);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMFloorRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
  record.floorText = reader.Text(2);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMSpecRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMCategoryRec& record) {
  record.id = reader.Int(0);
  record.category = reader.Text(1);
  record.kind = reader.Text(2);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMAttrRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
  record.value = reader.Text(2);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMSysCodeRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMComponentRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMCalItemRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
  record.unit = reader.Text(2);
  record.text3 = reader.Text(3);
  record.text4 = reader.Text(4);
  record.quantity = reader.Real(5);
  record.expression = reader.Text(6);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMCalItemDetailQRec& record) {
  record.id = reader.Int(0);
  record.name = reader.Text(1);
  record.unit = reader.Text(2);
  record.quantity1 = reader.Real(3);
  record.quantity2 = reader.Real(4);
  record.quantity3 = reader.Real(5);
  record.quantity4 = reader.Real(6);
  record.expression = reader.Text(7);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMPjCalItemRec& record) {
  record.id = reader.Int(0);
  record.text1 = reader.Text(1);
  record.name = reader.Text(2);
  record.unit = reader.Text(3);
  record.value = reader.Integer(4);
}

void Fill(CSqliteTableReader& reader, KorDMRec::SKorDMQdDeRec& record) {
  record.id = reader.Int(0);
  record.code = reader.Text(1);
  record.name = reader.Text(2);
  record.unit = reader.Text(3);
  record.library = reader.Text(4);
}

// Whole tables
// ---------------------------------------------------------------------------------------

template <class TRecord>
void ReadAll(CSqliteProject& project, const STable& table, std::vector<TRecord>& records) {
  project.RequirePlainTable(table.name);
  CSqliteTableReader reader(project, table.name, SelectAll(table).c_str());
  while (reader.Step()) {
    Fill(reader, records.emplace_back());
  }
}

// A table whose id is no primary key can hold ids that sort otherwise than they read.
template <class TRecord>
void RestoreOrder(const IdColumn& ids, std::vector<TRecord>& records, CIdPositions& positions) {
  if (std::is_sorted(ids.begin(), ids.end())) {
    return;
  }
  std::vector<std::size_t> order(ids.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&ids](std::size_t a, std::size_t b) { return ids[a] < ids[b]; });
  std::vector<TRecord> sorted;
  sorted.reserve(records.size());
  for (const std::size_t at : order) {
    positions.Replace(ids[at], static_cast<int>(sorted.size()));
    sorted.push_back(std::move(records[at]));
  }
  records = std::move(sorted);
}

// Reads the records that a column of the row table refers to.
template <class TRecord>
CIdPositions ReadReferred(CSqliteProject& project, const STable& table, const IdColumn& column,
                          std::vector<TRecord>& records) {
  project.RequirePlainTable(table.name);
  CIdPositions positions(column);
  // NULL reads as the id 0, so only a column of greater ids allows for a later start.
  const bool startsLater = positions.Least() > 0;
  CSqliteTableReader reader(project, table.name,
                            (startsLater ? SelectFrom(table) : SelectAll(table)).c_str());
  if (startsLater) {
    reader.BindInteger(1, positions.Least());
  }
  records.reserve(positions.Count());
  IdColumn ids;
  ids.reserve(positions.Count());
  while (ids.size() < positions.Count() && reader.Step()) {
    const std::int64_t id = reader.Integer(0);
    if (positions.Place(id, static_cast<int>(ids.size()))) {
      ids.push_back(id);
      Fill(reader, records.emplace_back());
    }
  }
  RestoreOrder(ids, records, positions);
  return positions;
}

// Result sets
// ----------------------------------------------------------------------------------------

void FillRow(CSqliteTableReader&, KorDMRec::SKorDMResultRow&) {}
void FillRow(CSqliteTableReader& reader, KorDMRec::SKorDMQdDeRow& row) {
  row.isQd = reader.Flag(kIsQdColumn);
}

// Reads one result set: the row table first, then each dictionary with what the rows ask of it.
template <class TRow, std::size_t kColumns>
class CResultSetReader {
 public:
  CResultSetReader(CSqliteProject& project, const STable& table, std::vector<TRow>& rows)
      : project_(project), rows_(rows) {
    project.RequirePlainTable(table.name);
    CSqliteTableReader reader(project, table.name, SelectAll(table).c_str());
    while (reader.Step()) {
      FillRow(reader, rows_.emplace_back());
      for (std::size_t i = 0; i < kColumns; ++i) {
        columns_[i].push_back(reader.Integer(static_cast<int>(i) + 1));
      }
    }
  }

  // Takes the next column of the row table.
  template <class TRecord>
  void Read(const STable& table, std::vector<TRecord>& records, int TRow::*index) {
    const IdColumn column = std::move(columns_[next_++]);
    const CIdPositions positions = ReadReferred(project_, table, column, records);
    for (std::size_t i = 0; i < column.size(); ++i) {
      rows_[i].*index = positions.Position(column[i]);
    }
  }

 private:
  CSqliteProject& project_;
  std::vector<TRow>& rows_;
  IdColumn columns_[kColumns];
  std::size_t next_ = 0;
};

template <class TRow, std::size_t kColumns, class TData>
void ReadDictionaries(CResultSetReader<TRow, kColumns>& reader, const STable& calItems,
                      TData& data) {
  reader.Read(kSgds, data.sgds, &TRow::sgd);
  reader.Read(kFloors, data.floors, &TRow::floor);
  reader.Read(kComponents, data.components, &TRow::component);
  reader.Read(kSpecs, data.specs, &TRow::spec);
  reader.Read(kCategories, data.categories, &TRow::category);
  reader.Read(kAttrs, data.attrs, &TRow::attr);
  reader.Read(kSysCodes, data.sysCodes, &TRow::sysCode);
  reader.Read(calItems, data.calItems, &TRow::calItem);
}

template <class TData>
TData ReadResults(CSqliteProject& project, const STable& rows, const STable& calItems) {
  TData data;
  CResultSetReader<KorDMRec::SKorDMResultRow, kResultColumns> reader(project, rows, data.rows);
  ReadDictionaries(reader, calItems, data);
  return data;
}

KorDMRec::SKorDMQdDeResultData ReadQdDeResults(CSqliteProject& project) {
  KorDMRec::SKorDMQdDeResultData data;
  CResultSetReader<KorDMRec::SKorDMQdDeRow, kQdDeColumns> reader(project, kQdDeRows, data.rows);
  ReadDictionaries(reader, kCalItems, data);
  reader.Read(kQdItems, data.qdItems, &KorDMRec::SKorDMQdDeRow::qdItem);
  reader.Read(kDeItems, data.deItems, &KorDMRec::SKorDMQdDeRow::deItem);
  return data;
}

// Appending
// --------------------------------------------------------------------------------------------

// Makes room, so that Append cannot fail half-way through a result set.
template <class T>
void Reserve(std::vector<T>& to, const std::vector<T>& from) {
  if (!to.empty()) {
    to.reserve(to.size() + from.size());
  }
}

template <class T>
void Append(std::vector<T>& to, std::vector<T>&& from) {
  if (to.empty()) {
    to = std::move(from);
    return;
  }
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

// Rows that are put behind others refer to records behind others.
template <class TRow, class TRecord>
void Shift(std::vector<TRow>& rows, int TRow::*index, const std::vector<TRecord>& before) {
  if (before.empty()) {
    return;
  }
  for (TRow& row : rows) {
    if (row.*index >= 0) {
      row.*index += static_cast<int>(before.size());
    }
  }
}

// Calls `each` for the vectors of both sets and the index that refers to them.
template <class TRow, class TData, class TEach>
void ForEachDictionary(TData& to, TData& from, TEach each) {
  each(to.sgds, from.sgds, &TRow::sgd);
  each(to.floors, from.floors, &TRow::floor);
  each(to.components, from.components, &TRow::component);
  each(to.specs, from.specs, &TRow::spec);
  each(to.categories, from.categories, &TRow::category);
  each(to.attrs, from.attrs, &TRow::attr);
  each(to.sysCodes, from.sysCodes, &TRow::sysCode);
  each(to.calItems, from.calItems, &TRow::calItem);
  if constexpr (requires { to.qdItems; }) {
    each(to.qdItems, from.qdItems, &TRow::qdItem);
    each(to.deItems, from.deItems, &TRow::deItem);
  }
}

template <class TData>
void AppendSet(TData& to, TData&& from) {
  using TRow = typename decltype(to.rows)::value_type;
  Reserve(to.rows, from.rows);
  ForEachDictionary<TRow>(to, from, [&from](auto& target, auto& source, int TRow::*index) {
    Reserve(target, source);
    Shift(from.rows, index, target);
  });
  ForEachDictionary<TRow>(
      to, from, [](auto& target, auto& source, int TRow::*) { Append(target, std::move(source)); });
  Append(to.rows, std::move(from.rows));
}

template <class TRecord>
void ReadTree(CSqliteProject& project, const STable& table, std::vector<TRecord>& records) {
  std::vector<TRecord> read;
  ReadAll(project, table, read);
  Reserve(records, read);
  Append(records, std::move(read));
}

}  // namespace

std::shared_ptr<CDbOperator> CDbOperator::MakePortable() {
  return std::make_shared<CSqliteDbOperator>(CProjectSource::OfProcess());
}

CSqliteDbOperator::CSqliteDbOperator(std::shared_ptr<CProjectSource> source)
    : source_(std::move(source)) {}

template <class TRead>
bool CSqliteDbOperator::Guard(const std::wstring& path, TRead read) {
  try {
    CSqliteProject project(path);
    read(project);
    return true;
  } catch (const CSqliteFault& fault) {
    source_->RecordFailure(fault.Failure());
    return false;
  }
}

template <class TRead>
bool CSqliteDbOperator::Read(const std::wstring& path, TRead read) {
  source_->BeginRead(path);
  return Guard(path, read);
}

int CSqliteDbOperator::GetMdbVertion(const std::wstring& path) {
  int version = 0;
  Guard(path, [&version](CSqliteProject& project) { version = project.UserVersion(); });
  return version;
}

bool CSqliteDbOperator::ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                                         const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) { ReadTree(project, kCategoryTree, records); });
}

bool CSqliteDbOperator::ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& records,
                                        const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) { ReadTree(project, kSysCodeTree, records); });
}

bool CSqliteDbOperator::ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                                      const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) { ReadTree(project, kFloorTree, records); });
}

bool CSqliteDbOperator::ReadSgdAttData(std::vector<std::wstring>& names, const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) { ReadTree(project, kSgdTree, names); });
}

bool CSqliteDbOperator::ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring& path,
                                    bool summary) {
  return Read(path, [&](CSqliteProject& project) {
    AppendSet(data, ReadResults<KorDMRec::SKorDMResultData>(
                        project, summary ? kSummaryRows : kOverviewRows, kCalItems));
  });
}

bool CSqliteDbOperator::ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data,
                                          const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) {
    AppendSet(data,
              ReadResults<KorDMRec::SKorDMDetailResultData>(project, kDetailRows, kDetailCalItems));
  });
}

bool CSqliteDbOperator::ReadCgData(KorDMRec::SKorDMResultData& data, const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) {
    AppendSet(data, ReadResults<KorDMRec::SKorDMResultData>(project, kOverHeightRows, kCalItems));
  });
}

bool CSqliteDbOperator::ReadPjData(KorDMRec::SKorDMPjResultData& data, const std::wstring& path) {
  return Read(path, [&](CSqliteProject& project) {
    AppendSet(data, ReadResults<KorDMRec::SKorDMPjResultData>(project, kPjRows, kPjCalItems));
  });
}

bool CSqliteDbOperator::ReadQdDeData(KorDMRec::SKorDMQdDeResultData& data, const std::wstring& path,
                                     bool /*isQdMode*/) {
  return Read(path, [&](CSqliteProject& project) { AppendSet(data, ReadQdDeResults(project)); });
}
