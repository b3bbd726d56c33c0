// A made project as a file.
#ifndef TALLY_BENCH_CONSUMPTION_FILE_H_
#define TALLY_BENCH_CONSUMPTION_FILE_H_

#include <string>

#include "platform/db_operator.h"

/// Writes the tree records and the consumption set of `source` to a new project database, UTF-8
/// path; the other result sets stay empty. An `id` is the place in the set, from 1. Throws a
/// std::runtime_error where the database fails.
void WriteConsumptionFile(const std::string& path, CDbOperator& source);

#endif  // TALLY_BENCH_CONSUMPTION_FILE_H_
