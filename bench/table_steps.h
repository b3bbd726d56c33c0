// What SQLite alone takes for the tables of a result set.
#ifndef TALLY_BENCH_TABLE_STEPS_H_
#define TALLY_BENCH_TABLE_STEPS_H_

#include <cstddef>
#include <string>

#include "host/read_watch.h"

/// Opens the project database anew and steps through the row table of the set, each dictionary
/// that it refers to, and the tree records, fetching every column by its type: what no reader of
/// those tables can do without. Throws a std::runtime_error where SQLite fails. Answers the bytes
/// of text that came, so that nothing is left out.
std::size_t StepTables(const std::string& file, ERecordSet set);

#endif  // TALLY_BENCH_TABLE_STEPS_H_
