#include "host/status_json.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Objects and arrays are built of these. Each writes its value alone.
class CStatusJson {
 public:
  explicit CStatusJson(COutput& output) : output_(output) {}

  void Value(const SReportStatus& status) {
    Member("{", "isDividedNode", status.isDividedNode);
    Member(",", "isBySgd", status.isBySgd);
    Member(",", "dispSgd", status.dispSgd);
    Member(",", "curSpec", status.curSpec);
    Member(",", "curReport", status.curReport);
    Member(",", "reports", status.reports);
    Member(",", "conditions", status.conditions);
    Member(",", "trees", status.trees);
    output_.Write("}");
  }

 private:
  template <class TValue>
  void Member(std::string_view before, std::string_view name, const TValue& value) {
    output_.Write(before);
    output_.Write("\"");
    output_.Write(name);
    output_.Write("\":");
    Value(value);
  }

  void Value(bool value) { output_.Write(value ? "true" : "false"); }
  void Value(int value) { output_.Write(std::to_string(value)); }
  void Value(const std::wstring& value) { output_.WriteJsonText(value); }

  template <class TValues>
  void Values(const TValues& values) {
    output_.Write("[");
    const char* separator = "";
    for (const auto& value : values) {
      output_.Write(separator);
      Value(value);
      separator = ",";
    }
    output_.Write("]");
  }
  template <class TElement>
  void Value(const std::vector<TElement>& values) {
    Values(values);
  }
  template <class TElement, class TLess>
  void Value(const std::set<TElement, TLess>& values) {
    Values(values);
  }

  template <class TElement>
  void Value(const std::map<std::wstring, TElement>& map) {
    output_.Write("{");
    const char* separator = "";
    for (const auto& [key, value] : map) {
      output_.Write(separator);
      Value(key);
      output_.Write(":");
      Value(value);
      separator = ",";
    }
    output_.Write("}");
  }

  void Value(const NewReportConfigRec& report) {
    Member("{", "visible", report.visible);
    Member(",", "expandLevel", report.expandLevel);
    Member(",", "columns", report.columns);
    output_.Write("}");
  }

  void Value(const Report::SColumnState& column) {
    Member("{", "name", column.name);
    Member(",", "visible", column.visible);
    output_.Write("}");
  }

  void Value(const Report::SNewCondition& condition) {
    Member("{", "allFloors", condition.allFloors);
    Member(",", "floors", condition.floors);
    Member(",", "categories", condition.categories);
    Member(",", "curCategory", condition.curCategory);
    Member(",", "sysCodes", condition.sysCodes);
    Member(",", "curSysCode", condition.curSysCode);
    output_.Write("}");
  }

  void Value(const Report::SFloorPair& pair) {
    Member("{", "drawingFloor", pair.drawingFloor);
    Member(",", "floor", pair.floor);
    output_.Write("}");
  }

  void Value(const TJTreeRec& tree) {
    Member("{", "sysCode", tree.sysCode);
    Member(",", "floor", tree.floor);
    Member(",", "component", tree.member);
    output_.Write("}");
  }

  void Value(const SysCodeMemTJInfo& tree) {
    Member("{", "allSelected", tree.allSelected);
    Member(",", "names", tree.names);
    output_.Write("}");
  }

  void Value(const FloorTJInfo& tree) {
    Member("{", "allSelected", tree.allSelected);
    Member(",", "floors", tree.floors);
    output_.Write("}");
  }

  COutput& output_;
};

}  // namespace

void WriteStatusJson(const SReportStatus& status, COutput& output) {
  CStatusJson(output).Value(status);
}
