#include "consumption_file.h"

#include <vector>

#include "host/demo_building.h"
#include "host/demo_database.h"
#include "host/demo_schema.h"
#include "platform/portable/utf8_text.h"
#include "result_store/db_records.h"

namespace {

void WriteTrees(const demo::CDatabase& database, CDbOperator& source) {
  std::vector<KorDMRec::SKorDMAllSmallIndexRec> kinds;
  source.ReadCategoryData(kinds, L"");
  demo::CInsert kindTable(database, "all_small_index", "id,sort_id,spec,big_category,path");
  for (const auto& kind : kinds) {
    kindTable.Add(kind.sortId, Utf8FromWide(kind.spec), Utf8FromWide(kind.bigCategory),
                  Utf8FromWide(kind.path));
  }
  std::vector<KorDMRec::SKorDMAllSysCodeRec> codes;
  source.ReadSysCodeData(codes, L"");
  demo::CInsert codeTable(database, "all_sys_code", "id,sort_id,spec,sys_code,remark");
  for (const auto& code : codes) {
    codeTable.Add(code.sortId, Utf8FromWide(code.spec), Utf8FromWide(code.sysCode),
                  Utf8FromWide(code.remark));
  }
  std::vector<KorDMRec::SKorDMFloorRec> floors;
  source.ReadFloorData(floors, L"");
  demo::CInsert floorTable(database, "all_floor", "id,name,floor_text");
  for (const auto& floor : floors) {
    floorTable.Add(Utf8FromWide(floor.name), Utf8FromWide(floor.floorText));
  }
  std::vector<std::wstring> sections;
  source.ReadSgdAttData(sections, L"");
  demo::CInsert sectionTable(database, "all_sgd", "id,name");
  for (const std::wstring& section : sections) {
    sectionTable.Add(Utf8FromWide(section));
  }
}

void WriteSettings(const demo::CDatabase& database) {
  demo::CInsert settings(database, "setting", "name,value");
  for (const demo::SSetting& setting : demo::Settings()) {
    settings.Put(setting.name, setting.value);
  }
}

void WriteDictionaries(const demo::CDatabase& database, const KorDMRec::SKorDMResultData& data) {
  demo::CInsert sections(database, "sgd", "id,name");
  for (const auto& section : data.sgds) {
    sections.Add(Utf8FromWide(section.name));
  }
  demo::CInsert floors(database, "floor", "id,name,floor_text");
  for (const auto& floor : data.floors) {
    floors.Add(Utf8FromWide(floor.name), Utf8FromWide(floor.floorText));
  }
  demo::CInsert specs(database, "spec", "id,name");
  for (const auto& spec : data.specs) {
    specs.Add(Utf8FromWide(spec.name));
  }
  demo::CInsert kinds(database, "category", "id,category,kind");
  for (const auto& kind : data.categories) {
    kinds.Add(Utf8FromWide(kind.category), Utf8FromWide(kind.kind));
  }
  demo::CInsert attributes(database, "attr", "id,name,value");
  for (const auto& attribute : data.attrs) {
    attributes.Add(Utf8FromWide(attribute.name), Utf8FromWide(attribute.value));
  }
  demo::CInsert codes(database, "sys_code", "id,name");
  for (const auto& code : data.sysCodes) {
    codes.Add(Utf8FromWide(code.name));
  }
  demo::CInsert components(database, "component", "id,name");
  for (const auto& component : data.components) {
    components.Add(Utf8FromWide(component.name));
  }
  demo::CInsert items(database, "cal_item", "id,name,unit,text3,text4,quantity,expression");
  for (const auto& item : data.calItems) {
    items.Add(Utf8FromWide(item.name), Utf8FromWide(item.unit), Utf8FromWide(item.text3),
              Utf8FromWide(item.text4), item.quantity, Utf8FromWide(item.expression));
  }
}

void WriteRows(const demo::CDatabase& database, const KorDMRec::SKorDMResultData& data) {
  demo::CInsert rows(database, "hz_row",
                     "id,sgd,floor,component,spec,category,attr,sys_code,cal_item");
  for (const auto& row : data.rows) {
    rows.Add(row.sgd + 1, row.floor + 1, row.component + 1, row.spec + 1, row.category + 1,
             row.attr + 1, row.sysCode + 1, row.calItem + 1);
  }
}

}  // namespace

void WriteConsumptionFile(const std::string& path, CDbOperator& source) {
  KorDMRec::SKorDMResultData data;
  source.ReadXhlData(data, L"", true);
  demo::CDatabase database(path);
  database.Execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
  database.Execute("BEGIN");
  database.Execute(demo::kSchema);
  WriteSettings(database);
  WriteTrees(database, source);
  WriteDictionaries(database, data);
  WriteRows(database, data);
  database.Execute("COMMIT");
}
