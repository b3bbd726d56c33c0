#include "host/project_tables.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace {

constexpr const char* kId[] = {"id"};
constexpr const char* kName[] = {"name"};
constexpr const char* kNameAndValue[] = {"name", "value"};
constexpr const char* kNameAndFloorText[] = {"name", "floor_text"};
constexpr const char* kItem[] = {"code", "name", "unit", "library"};
constexpr const char* kChapterKey[] = {"library", "code_prefix"};

constexpr const char* kSmallIndexTexts[] = {"spec", "big_category", "path"};
constexpr const char* kAllSysCodeTexts[] = {"spec", "sys_code", "remark"};
constexpr const char* kSgdTexts[] = {"name", "text2"};
constexpr const char* kCategoryTexts[] = {"category", "kind"};
constexpr const char* kComponentTextKey[] = {"component", "seq"};
constexpr const char* kComponentTexts[] = {"text"};
constexpr const char* kCalItemTexts[] = {"name", "unit", "text3", "text4", "expression"};
constexpr const char* kDetailCalItemTexts[] = {"name", "unit", "expression"};
constexpr const char* kPjCalItemTexts[] = {"text1", "name", "unit"};
constexpr const char* kQdChapterTexts[] = {"library", "code_prefix", "name"};
constexpr const char* kDeChapterTexts[] = {"library", "code_prefix", "path"};
constexpr const char* kMarkKey[] = {"code", "seq"};
constexpr const char* kMarkTexts[] = {"code", "name", "value", "extra"};

constexpr SReferenceColumn kToComponent[] = {{"component", "component"}};

constexpr std::array<SReferenceColumn, 10> RowReferences(const char* calItems) {
  return {{{"sgd", "sgd"},
           {"floor", "floor"},
           {"component", "component"},
           {"spec", "spec"},
           {"category", "category"},
           {"attr", "attr"},
           {"sys_code", "sys_code"},
           {"cal_item", calItems},
           {"qd_item", "qd_item"},
           {"de_item", "de_item"}}};
}
constexpr auto kWithCalItem = RowReferences("cal_item");
constexpr auto kWithDetailCalItem = RowReferences("detail_cal_item");
constexpr auto kWithPjCalItem = RowReferences("pj_cal_item");
// Only the rows of the bill and quota reports refer to items.
constexpr std::size_t kWithoutItems = 8;

constexpr SProjectTable kTables[] = {
    {"setting", kName, kNameAndValue, {}},
    {"all_small_index", kId, kSmallIndexTexts, {}},
    {"all_sys_code", kId, kAllSysCodeTexts, {}},
    {"all_floor", kId, kNameAndFloorText, {}},
    {"all_sgd", kId, kName, {}},
    {"sgd", kId, kSgdTexts, {}},
    {"floor", kId, kNameAndFloorText, {}},
    {"spec", kId, kName, {}},
    {"category", kId, kCategoryTexts, {}},
    {"attr", kId, kNameAndValue, {}},
    {"sys_code", kId, kName, {}},
    {"component", kId, kName, {}},
    {"component_text", kComponentTextKey, kComponentTexts, kToComponent},
    {"cal_item", kId, kCalItemTexts, {}},
    {"detail_cal_item", kId, kDetailCalItemTexts, {}},
    {"pj_cal_item", kId, kPjCalItemTexts, {}},
    {"qd_item", kId, kItem, {}},
    {"de_item", kId, kItem, {}},
    {"hz_row", kId, {}, std::span(kWithCalItem).first<kWithoutItems>()},
    {"gl_row", kId, {}, std::span(kWithCalItem).first<kWithoutItems>()},
    {"cg_row", kId, {}, std::span(kWithCalItem).first<kWithoutItems>()},
    {"detail_row", kId, {}, std::span(kWithDetailCalItem).first<kWithoutItems>()},
    {"pj_row", kId, {}, std::span(kWithPjCalItem).first<kWithoutItems>()},
    {"qd_de_row", kId, {}, kWithCalItem},
    {"qd_chapter", kChapterKey, kQdChapterTexts, {}},
    {"de_chapter", kChapterKey, kDeChapterTexts, {}},
    {"qd_mark", kMarkKey, kMarkTexts, {}},
};

}  // namespace

bool SProjectTable::HasId() const {
  return keys.front() == std::string_view("id");
}

std::span<const SProjectTable> ProjectTables() {
  return kTables;
}
