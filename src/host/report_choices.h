// What a command line and a status file choose, checked against the project and the reports.
#ifndef TALLY_HOST_REPORT_CHOICES_H_
#define TALLY_HOST_REPORT_CHOICES_H_

#include <string>
#include <utility>
#include <vector>

#include "host/columns.h"
#include "host/formats.h"
#include "host/open_project.h"
#include "host/report_catalog.h"
#include "host/report_command.h"
#include "report_mng/report_status.h"

/// The answers of one command. Everything throws CHostError where a word of the command line does
/// not fit.
class CReportChoices {
 public:
  /// Reads the status file, if the arguments name one; they must outlive the choices.
  explicit CReportChoices(const SReportArguments& arguments);

  const SCatalogReport& Report() const;
  const SFormat& Format() const;
  int Level(const SCatalogReport& report) const;
  /// An option takes the place of the status's list of its kind.
  Report::SNewCondition Condition(const std::wstring& spec) const;
  CColumns Columns(const SCatalogReport& report) const;
  /// The disciplines of one report.
  std::vector<std::wstring> Specs(const COpenProject& project, const SCatalogReport& report) const;
  /// The disciplines of every report of the catalogue, in its order.
  std::vector<std::vector<std::wstring>> AllSpecs(const COpenProject& project) const;
  /// Hands the switches and the shown sections over to the engine. The project is open.
  void SetState() const;

  /// For the reader of a document, as names and values: what holds for all tables, and the filter
  /// of one discipline. After SetState.
  std::vector<std::pair<std::string, std::string>> CommonTexts() const;
  std::vector<std::pair<std::string, std::string>> FilterTexts(const std::wstring& spec) const;

 private:
  std::vector<std::wstring> ColumnNames() const;
  void RequireColumns(const std::vector<const SReportLayout*>& layouts,
                      const std::string& owner) const;
  std::vector<std::wstring> Sections() const;

  const SReportArguments& arguments_;
  SReportStatus status_;
};

/// The disciplines of a report, each once, in the order of the project.
std::vector<std::wstring> SpecsOf(const COpenProject& project, const SCatalogReport& report);

#endif  // TALLY_HOST_REPORT_CHOICES_H_
