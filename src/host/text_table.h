// Rows as a table on the terminal.
#ifndef TALLY_HOST_TEXT_TABLE_H_
#define TALLY_HOST_TEXT_TABLE_H_

#include <span>

#include "host/columns.h"
#include "host/output.h"

/// Writes the headings, a rule and a line for each row. The first cell of a row stands in a column
/// of its own, indented by the row's depth, and above it the headings of the levels, indented
/// alike; the other cells stand below the headings of the chosen columns, quantities to the right.
/// Writes nothing where there are no rows.
void WriteTextTable(COutput& output, const CColumns& columns, std::span<const SRow> rows);

#endif  // TALLY_HOST_TEXT_TABLE_H_
