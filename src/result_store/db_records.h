// The records of the project database as the engine reads them. Plain values; the table that each
// one comes from is told in docs/project_database.md.
#ifndef TALLY_RESULT_STORE_DB_RECORDS_H_
#define TALLY_RESULT_STORE_DB_RECORDS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace KorDMRec {

// Dictionary records. `id` is the database's own number; the engine does not read it.

/// Discipline (table spec).
struct SKorDMSpecRec {
  int id = 0;
  std::wstring name;
};

/// Floor (tables floor and all_floor).
struct SKorDMFloorRec {
  int id = 0;
  std::wstring name;       ///< key of floor nodes
  std::wstring floorText;  ///< floor expression: one floor, "first,last" or "a/b/c"
};

/// Component kind (table category).
struct SKorDMCategoryRec {
  int id = 0;
  std::wstring category;
  std::wstring kind;
};

/// Attribute of a component (table attr). Both texts hold lines "name:value".
struct SKorDMAttrRec {
  int id = 0;
  std::wstring name;
  std::wstring value;
};

/// System code (table sys_code).
struct SKorDMSysCodeRec {
  int id = 0;
  std::wstring name;  ///< path, level names joined by "\"
};

/// Construction section (table sgd).
struct SKorDMSgdRec {
  int id = 0;
  std::wstring name;
  std::wstring text2;  ///< not read by the engine
};

/// Component (table component).
struct SKorDMComponentRec {
  int id = 0;
  std::wstring name;                ///< the component's reference
  std::vector<std::wstring> texts;  ///< not read by the engine; may stay empty
};

/// Calculation item of the summary result sets (table cal_item).
struct SKorDMCalItemRec {
  int id = 0;
  std::wstring name;
  std::wstring unit;
  std::wstring text3;
  std::wstring text4;
  double quantity = 0;  ///< of one component, in `unit`
  std::wstring expression;
};

/// Calculation item with four quantities (table detail_cal_item).
struct SKorDMCalItemDetailQRec {
  int id = 0;
  std::wstring name;
  std::wstring unit;
  double quantity1 = 0;  ///< of one component, in `unit`
  double quantity2 = 0;
  double quantity3 = 0;
  double quantity4 = 0;
  std::wstring expression;
};

/// Calculation item of a fitting (table pj_cal_item).
struct SKorDMPjCalItemRec {
  int id = 0;
  std::wstring text1;
  std::wstring name;
  std::wstring unit;
  std::int64_t value = 0;  ///< not read by the engine
};

/// Bill item (table qd_item) or quota item (table de_item).
struct SKorDMQdDeRec {
  int id = 0;
  std::wstring code;
  std::wstring name;
  std::wstring unit;
  std::wstring library;  ///< code of the library that the item belongs to
};

// Tree records, read once for each project.

/// One component kind of the project (table all_small_index).
struct SKorDMAllSmallIndexRec {
  int sortId = 0;
  std::wstring spec;
  std::wstring bigCategory;
  std::wstring path;  ///< "category\kind"
};

/// One system code of the project (table all_sys_code).
struct SKorDMAllSysCodeRec {
  int sortId = 0;
  std::wstring spec;
  std::wstring sysCode;  ///< level names joined by "&"
  std::wstring remark;
};

// Result sets: dictionaries, and rows that hold indices into them.

/// Indices into the vectors of the same name; one outside its vector is a fault of the data.
struct SKorDMResultRow {
  int sgd = 0;
  int floor = 0;
  int component = 0;
  int spec = 0;
  int category = 0;
  int attr = 0;
  int sysCode = 0;
  int calItem = 0;
  int reserved = 0;  ///< not read by the engine
};

/// Indices of a bill and quota row.
struct SKorDMQdDeRow {
  bool isQd = false;  ///< the bill's own quantity; otherwise a quota applied to the bill
  int sgd = 0;
  int floor = 0;
  int component = 0;
  int spec = 0;
  int category = 0;
  int attr = 0;
  int sysCode = 0;
  int calItem = 0;
  int qdItem = 0;
  int deItem = 0;
  int reserved = 0;  ///< not read by the engine
};

/// The vectors that all result sets share.
template <class TCalItem>
struct TKorDMDictionaries {
  std::vector<SKorDMSgdRec> sgds;
  std::vector<SKorDMFloorRec> floors;
  std::vector<SKorDMSpecRec> specs;
  std::vector<SKorDMCategoryRec> categories;
  std::vector<SKorDMAttrRec> attrs;
  std::vector<SKorDMSysCodeRec> sysCodes;
  std::vector<SKorDMComponentRec> components;
  std::vector<TCalItem> calItems;
};

/// Consumption, over-height and overview results.
struct SKorDMResultData : TKorDMDictionaries<SKorDMCalItemRec> {
  std::vector<SKorDMResultRow> rows;
};

/// Detail results, with four quantities.
struct SKorDMDetailResultData : TKorDMDictionaries<SKorDMCalItemDetailQRec> {
  std::vector<SKorDMResultRow> rows;
};

/// Fitting results.
struct SKorDMPjResultData : TKorDMDictionaries<SKorDMPjCalItemRec> {
  std::vector<SKorDMResultRow> rows;
};

/// Bill and quota results.
struct SKorDMQdDeResultData : TKorDMDictionaries<SKorDMCalItemRec> {
  std::vector<SKorDMQdDeRec> qdItems;
  std::vector<SKorDMQdDeRec> deItems;
  std::vector<SKorDMQdDeRow> rows;
};

}  // namespace KorDMRec

#endif  // TALLY_RESULT_STORE_DB_RECORDS_H_
