#include "host/batch_json.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/portable/utf8_text.h"

namespace {

using Json = nlohmann::json;

// One value of a request, and where it stands: "condition.floors[0].floor".
class CField {
 public:
  CField(const Json& value, std::string place) : value_(value), place_(std::move(place)) {}

  int AsInt() const {
    // A value beyond 64 bits was read as a float.
    if (value_.is_number_unsigned()) {
      const auto number = value_.get<std::uint64_t>();
      Require(number <= static_cast<std::uint64_t>(std::numeric_limits<int>::max()));
      return static_cast<int>(number);
    }
    Require(value_.is_number_integer());
    const auto number = value_.get<std::int64_t>();
    Require(number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max());
    return static_cast<int>(number);
  }

  bool AsBool() const {
    Require(value_.is_boolean());
    return value_.get<bool>();
  }

  std::wstring AsText() const {
    Require(value_.is_string());
    return WideFromUtf8(value_.get_ref<const std::string&>());
  }

  /// Calls `each` with every element of an array.
  template <class TEach>
  void ForEach(TEach each) const {
    Require(value_.is_array());
    std::size_t i = 0;
    for (const Json& element : value_) {
      each(CField(element, place_ + "[" + std::to_string(i) + "]"));
      ++i;
    }
  }

  void RequireObject() const { Require(value_.is_object()); }

  /// Calls `each` with the name of every member of an object, and the member.
  template <class TEach>
  void ForEachMember(TEach each) const {
    RequireObject();
    for (const auto& [name, value] : value_.items()) {
      each(WideFromUtf8(name), CField(value, PlaceOf(name.c_str())));
    }
  }

  /// Calls `use` with the member of an object, if it is there.
  template <class TUse>
  void IfGiven(const char* name, TUse use) const {
    if (const auto at = value_.find(name); at != value_.end()) {
      use(CField(*at, PlaceOf(name)));
    }
  }

  /// The member of an object.
  CField Member(const char* name) const {
    const auto at = value_.find(name);
    if (at == value_.end()) {
      throw CRequestError("missing field: " + PlaceOf(name));
    }
    return CField(*at, PlaceOf(name));
  }

  // The member of an object; `value` stays where there is none.
  void Read(const char* name, int& value) const {
    IfGiven(name, [&](const CField& field) { value = field.AsInt(); });
  }
  void Read(const char* name, bool& value) const {
    IfGiven(name, [&](const CField& field) { value = field.AsBool(); });
  }
  void Read(const char* name, std::wstring& value) const {
    IfGiven(name, [&](const CField& field) { value = field.AsText(); });
  }
  void Read(const char* name, std::vector<std::wstring>& value) const {
    IfGiven(name, [&](const CField& field) {
      field.ForEach([&](const CField& element) { value.push_back(element.AsText()); });
    });
  }
  /// Stays empty where there is no such member.
  template <class TValue>
  void Read(const char* name, std::optional<TValue>& value) const {
    if (value_.contains(name)) {
      Read(name, value.emplace());
    }
  }

 private:
  void Require(bool isWellTyped) const {
    if (!isWellTyped) {
      throw CRequestError("ill-typed field: " + place_);
    }
  }
  std::string PlaceOf(const char* name) const {
    return place_.empty() ? name : place_ + "." + name;
  }

  const Json& value_;
  std::string place_;
};

Report::SFloorPair ReadPair(const CField& field) {
  field.RequireObject();
  return {field.Member("drawingFloor").AsText(), field.Member("floor").AsText()};
}

Report::SNewCondition ReadCondition(const CField& field) {
  field.RequireObject();
  Report::SNewCondition condition;
  field.Read("allFloors", condition.allFloors);
  field.IfGiven("floors", [&](const CField& floors) {
    floors.ForEach([&](const CField& pair) { condition.floors.push_back(ReadPair(pair)); });
  });
  field.IfGiven("categories", [&](const CField& categories) {
    categories.ForEach(
        [&](const CField& category) { condition.categories.insert(category.AsText()); });
  });
  field.Read("curCategory", condition.curCategory);
  field.Read("sysCodes", condition.sysCodes);
  field.Read("curSysCode", condition.curSysCode);
  return condition;
}

SRowStatus ReadStatus(const CField& field) {
  field.RequireObject();
  SRowStatus status;
  field.Read("isBySgd", status.isBySgd);
  field.Read("isDividedNode", status.isDividedNode);
  field.Read("dispSgd", status.dispSgd);
  return status;
}

BatchCall ReadRows(const CField& request) {
  SRowsCall call;
  int totalType = request.Member("report").AsInt();
  call.report = static_cast<Report::EReportType>(totalType);
  request.Read("variant", call.variant);
  call.rows.spec = request.Member("spec").AsText();
  request.Read("level", call.rows.level);
  request.Read("bySgd", call.rows.bySgd);
  request.Read("totalType", totalType);
  call.rows.totalType = static_cast<Report::EReportType>(totalType);
  request.IfGiven("condition",
                  [&](const CField& field) { call.rows.condition = ReadCondition(field); });
  request.IfGiven("status", [&](const CField& field) { call.status = ReadStatus(field); });
  request.Read("lineSortDown", call.lineSortDown);
  return call;
}

BatchCall ReadSpecs(const CField& request) {
  return SSpecsCall{static_cast<Report::EReportType>(request.Member("report").AsInt())};
}

BatchCall ReadTree(const CField& request) {
  return STreeCall{static_cast<Report::ETreeType>(request.Member("tree").AsInt())};
}

BatchCall ReadOpen(const CField& request) {
  return SOpenCall{request.Member("isQdMode").AsBool()};
}

BatchCall ReadStatusRead(const CField& request) {
  return SStatusReadCall{request.Member("path").AsText()};
}

Report::SColumnState ReadColumn(const CField& field) {
  field.RequireObject();
  Report::SColumnState column;
  field.Read("name", column.name);
  field.Read("visible", column.visible);
  return column;
}

SReportChange ReadReportChange(const CField& field) {
  field.RequireObject();
  SReportChange change;
  field.Read("visible", change.visible);
  field.Read("expandLevel", change.expandLevel);
  field.IfGiven("columns", [&](const CField& columns) {
    std::vector<Report::SColumnState>& list = change.columns.emplace();
    columns.ForEach([&](const CField& column) { list.push_back(ReadColumn(column)); });
  });
  return change;
}

void ReadNameTree(const CField& field, SysCodeMemTJInfo& tree) {
  field.RequireObject();
  field.Read("allSelected", tree.allSelected);
  field.Read("names", tree.names);
}

void ReadFloorTree(const CField& field, FloorTJInfo& tree) {
  field.RequireObject();
  field.Read("allSelected", tree.allSelected);
  field.IfGiven("floors", [&](const CField& floors) {
    floors.ForEach([&](const CField& pair) { tree.floors.push_back(ReadPair(pair)); });
  });
}

TJTreeRec ReadTrees(const CField& field) {
  field.RequireObject();
  TJTreeRec trees;
  field.IfGiven("sysCode", [&](const CField& tree) { ReadNameTree(tree, trees.sysCode); });
  field.IfGiven("floor", [&](const CField& tree) { ReadFloorTree(tree, trees.floor); });
  field.IfGiven("component", [&](const CField& tree) { ReadNameTree(tree, trees.member); });
  return trees;
}

// The members of an object, each read by `read`.
template <class TValue>
void ReadMap(const CField& state, const char* name, TValue (*read)(const CField&),
             std::map<std::wstring, TValue>& map) {
  state.IfGiven(name, [&](const CField& members) {
    members.ForEachMember(
        [&](const std::wstring& key, const CField& member) { map[key] = read(member); });
  });
}

BatchCall ReadStatusSet(const CField& request) {
  const CField state = request.Member("state");
  state.RequireObject();
  SStatusSetCall call;
  state.Read("isDividedNode", call.isDividedNode);
  state.Read("isBySgd", call.isBySgd);
  state.Read("dispSgd", call.dispSgd);
  state.Read("curSpec", call.curSpec);
  state.Read("curReport", call.curReport);
  ReadMap(state, "reports", ReadReportChange, call.reports);
  ReadMap(state, "conditions", ReadCondition, call.conditions);
  ReadMap(state, "trees", ReadTrees, call.trees);
  return call;
}

BatchCall ReadStatusSave(const CField&) {
  return SStatusSaveCall{};
}

BatchCall ReadStatusGet(const CField&) {
  return SStatusGetCall{};
}

struct SOperation {
  const wchar_t* name;
  BatchCall (*read)(const CField& request);
};

constexpr SOperation kOperations[] = {
    {L"rows", ReadRows},
    {L"specs", ReadSpecs},
    {L"tree", ReadTree},
    {L"open", ReadOpen},
    {L"status_read", ReadStatusRead},
    {L"status_set", ReadStatusSet},
    {L"status_save", ReadStatusSave},
    {L"status_get", ReadStatusGet},
};

}  // namespace

BatchCall ReadBatchCall(std::string_view line) {
  // The parser would take U+0000 for the end of the line.
  const bool isText = line.find('\0') == std::string_view::npos;
  const Json parsed = isText ? Json::parse(line, nullptr, false) : Json(Json::value_t::discarded);
  if (!parsed.is_object()) {
    throw CRequestError(parsed.is_discarded() ? "the line is not JSON"
                                              : "the line is not a JSON object");
  }
  const CField request(parsed, "");
  const std::wstring name = request.Member("op").AsText();
  for (const SOperation& operation : kOperations) {
    if (operation.name == name) {
      return operation.read(request);
    }
  }
  throw CRequestError("unknown op: " + Utf8FromWide(name));
}
