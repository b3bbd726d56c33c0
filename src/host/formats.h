// The output formats that the program knows.
#ifndef TALLY_HOST_FORMATS_H_
#define TALLY_HOST_FORMATS_H_

#include <memory>
#include <span>
#include <string_view>

#include "host/exporter.h"
#include "host/output.h"

struct SFormat {
  const char* name;       ///< for command lines
  const char* extension;  ///< of files, with its dot
  /// One document holds every report; otherwise each report of each discipline is a file of its own
  /// where all of them are asked for.
  bool holdsAllReports;
  bool holdsManySpecs;  ///< a document may hold more than one discipline
  bool isForFilesOnly;  ///< nothing for a terminal
  std::unique_ptr<IExporter> (*make)(const SExportHead& head, const SExportOptions& options,
                                     COutput& output);
};

std::span<const SFormat> Formats();

/// Null where there is none of that name.
const SFormat* FindFormat(std::string_view name);

#endif  // TALLY_HOST_FORMATS_H_
