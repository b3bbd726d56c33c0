#include "host/reports_command.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "host/open_project.h"
#include "host/report_catalog.h"
#include "host/report_choices.h"
#include "host/shown_name.h"
#include "host/terminal_text.h"

namespace {

struct SListedReport {
  std::string name;
  STerminalText title;
  std::string specs;
};

std::string SpecList(const std::vector<std::wstring>& specs) {
  std::string list;
  for (const std::wstring& spec : specs) {
    list += (list.empty() ? "" : ", ") + ShownName(spec);
  }
  return list.empty() ? "none" : list;
}

// The variants of a report hold the same disciplines.
std::vector<SListedReport> ListedReports(const COpenProject& project) {
  std::vector<SListedReport> reports;
  for (const SCatalogReport& report : ReportCatalog()) {
    if (reports.empty() || reports.back().name != report.name) {
      reports.push_back(
          {report.name, ToTerminalText(report.title), SpecList(SpecsOf(project, report))});
    }
  }
  return reports;
}

std::string Blanks(int count) {
  return std::string(static_cast<std::size_t>(count), ' ');
}

}  // namespace

void RunReports(const SReportsArguments& arguments, COutput& output) {
  const COpenProject project(arguments.file);
  const std::vector<SListedReport> reports = ListedReports(project);
  int nameWidth = 0;
  int titleWidth = 0;
  for (const SListedReport& report : reports) {
    nameWidth = std::max(nameWidth, static_cast<int>(report.name.size()));
    titleWidth = std::max(titleWidth, report.title.width);
  }
  for (const SListedReport& report : reports) {
    output.Write(report.name + Blanks(nameWidth + 2 - static_cast<int>(report.name.size())));
    output.Write(report.title.bytes + Blanks(titleWidth + 2 - report.title.width));
    output.Write(report.specs + "\n");
  }
  output.Flush();
}
