// What every output format is to the program.
#ifndef TALLY_HOST_EXPORTER_H_
#define TALLY_HOST_EXPORTER_H_

#include <cstdio>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/columns.h"
#include "host/report_catalog.h"
#include "rows/row_layouts.h"

/// What a document is about. All texts are UTF-8.
struct SExportHead {
  std::string project;  ///< the project file's name without its folder
  std::string changed;  ///< when the project file was changed last: "2026-11-20 08:15 UTC"
  /// What holds for all tables, as pairs of name and value ("施工段", "一区"), in the order to
  /// show.
  std::vector<std::pair<std::string, std::string>> choices;
};

/// One report of one discipline. What it points to lives during the call that gets it.
struct SExportTable {
  const SCatalogReport* report;
  std::wstring spec;  ///< discipline; empty where the project has none in this report
  int level;          ///< of expansion; 0 for a report without levels
  /// The filter of this discipline, as the choices of the head; empty for no filter.
  std::vector<std::pair<std::string, std::string>> filter;
  std::span<const SRow> rows;
  const CColumns* columns;  ///< the chosen ones, whether they occur in the rows or not
};

struct SExportOptions {
  bool csvSafe = false;          ///< no text that a spreadsheet would take to compute
  std::FILE* messages = stderr;  ///< for notes and, on a terminal, progress; not owned
};

/// Writes a document. Made for one document and its output, which outlives it; where the exporter
/// ends without End, what was written is of no use.
class IExporter {
 public:
  virtual ~IExporter() = default;
  /// Appends a table. Throws CHostError where the output takes no more.
  virtual void Write(const SExportTable& table) = 0;
  /// Once, after the last table. Throws as Write does.
  virtual void End() = 0;

  IExporter(const IExporter&) = delete;
  IExporter& operator=(const IExporter&) = delete;

 protected:
  IExporter() = default;
};

#endif  // TALLY_HOST_EXPORTER_H_
