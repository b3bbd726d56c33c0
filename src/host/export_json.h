// What the documents that hold JSON say of themselves and of their tables.
#ifndef TALLY_HOST_EXPORT_JSON_H_
#define TALLY_HOST_EXPORT_JSON_H_

#include "host/exporter.h"
#include "host/output.h"

/// The members "project", "changed" and "choices" of an object, without its braces.
void WriteJsonHead(COutput& output, const SExportHead& head);

/// The members "report", "number", "variant", "title", "discipline", "level", "filter" and
/// "columns" of an object, without its braces.
void WriteJsonTableHead(COutput& output, const SExportTable& table);

/// What a kind of row is called: its marker without "@".
void WriteJsonKind(COutput& output, const SRowLayout& row);

#endif  // TALLY_HOST_EXPORT_JSON_H_
