#include "host/status_command.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/host_error.h"
#include "host/status_json.h"
#include "host/terminal_text.h"
#include "platform/portable/utf8_text.h"
#include "platform/xml_service.h"
#include "report_mng/report_status_mng.h"

namespace {

namespace fs = std::filesystem;

// Why a file was not taken for a status file.
std::string Reason(const std::string& file) {
  const fs::path path(std::u8string(file.begin(), file.end()));
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    return "no such file";
  }
  if (error) {
    return error.message();
  }
  if (fs::is_directory(status)) {
    return "it is a folder";
  }
  if (!fs::is_regular_file(status)) {
    return "it is no regular file";
  }
  return std::ifstream(path) ? "it is not a report status file" : "it may not be read";
}

std::string YesOrNo(bool flag) {
  return flag ? "yes" : "no";
}

// One value on its line; blanks alone and nothing at all would not show.
std::string Shown(const std::wstring& text) {
  return "'" + ToTerminalText(text).bytes + "'";
}

template <class TTexts>
std::string List(const TTexts& texts) {
  std::string list;
  for (const std::wstring& text : texts) {
    list += (list.empty() ? "" : ", ") + Shown(text);
  }
  return list.empty() ? "none" : list;
}

std::string List(const std::vector<Report::SFloorPair>& pairs) {
  std::string list;
  for (const Report::SFloorPair& pair : pairs) {
    list += (list.empty() ? "" : ", ") + Shown(pair.floor) + " of " + Shown(pair.drawingFloor);
  }
  return list.empty() ? "none" : list;
}

class CStatusText {
 public:
  explicit CStatusText(COutput& output) : output_(output) {}

  void Write(const SReportStatus& status) {
    Line("current report: " + Shown(status.curReport));
    Line("current discipline: " + Shown(status.curSpec));
    Line("counted by section: " + YesOrNo(status.isBySgd));
    Line("displayed sections: " + List(status.dispSgd));
    Line("books divided by type: " + YesOrNo(status.isDividedNode));
    for (const auto& [name, report] : status.reports) {
      WriteReport(name, report);
    }
    for (const auto& [spec, condition] : status.conditions) {
      WriteCondition(spec, condition);
    }
    for (const auto& [spec, tree] : status.trees) {
      WriteTree(spec, tree);
    }
  }

 private:
  void WriteReport(const std::wstring& name, const NewReportConfigRec& report) {
    Line("\nreport " + Shown(name));
    Line("  shown: " + YesOrNo(report.visible));
    Line("  level: " + std::to_string(report.expandLevel));
    for (const Report::SColumnState& column : report.columns) {
      Line("  column " + Shown(column.name) + (column.visible ? "" : ", hidden"));
    }
  }

  void WriteCondition(const std::wstring& spec, const Report::SNewCondition& condition) {
    Line("\nfilter of discipline " + Shown(spec));
    Line("  system codes: " + List(condition.sysCodes) + "; current " +
         Shown(condition.curSysCode));
    Line("  component kinds: " + List(condition.categories) + "; current " +
         Shown(condition.curCategory));
    Line("  floors: " + List(condition.floors) + (condition.allFloors ? "; all chosen" : ""));
  }

  void WriteTree(const std::wstring& spec, const TJTreeRec& tree) {
    Line("\nfilter trees of discipline " + Shown(spec));
    WriteSelection("system codes", tree.sysCode.allSelected, List(tree.sysCode.names));
    WriteSelection("component kinds", tree.member.allSelected, List(tree.member.names));
    WriteSelection("floors", tree.floor.allSelected, List(tree.floor.floors));
  }

  void WriteSelection(const std::string& name, bool all, const std::string& list) {
    Line("  " + name + ": " + list + (all ? "; all selected" : ""));
  }

  void Line(std::string_view text) {
    output_.Write(text);
    output_.Write("\n");
  }

  COutput& output_;
};

}  // namespace

SReportStatus ReadStatusFile(const std::string& file) {
  CReportStatusMng* manager = CReportStatusMng::Instance();
  bool isRead = false;
  try {
    isRead = manager->ReadReportStatus(WideFromUtf8(file));
  } catch (const CXmlError& error) {
    throw CHostError("cannot read status file '" + file + "': " + error.what());
  }
  if (!isRead) {
    throw CHostError("cannot read status file '" + file + "': " + Reason(file));
  }
  SReportStatus status;
  manager->GetStatus(status);
  return status;
}

void RunStatus(const SStatusArguments& arguments, COutput& output) {
  const SReportStatus status = ReadStatusFile(arguments.file);
  if (arguments.json) {
    WriteStatusJson(status, output);
    output.Write("\n");
  } else {
    CStatusText(output).Write(status);
  }
  output.Flush();
}
