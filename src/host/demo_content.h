// What the example project holds.
#ifndef TALLY_HOST_DEMO_CONTENT_H_
#define TALLY_HOST_DEMO_CONTENT_H_

#include <cstdint>

#include "host/demo_database.h"

namespace demo {

/// Fills the tables of kSchema, which must be there and empty, with a project of about `rows`
/// detail rows (positive). Throws a std::runtime_error where the database fails.
void WriteContent(const CDatabase& database, std::int64_t rows);

}  // namespace demo

#endif  // TALLY_HOST_DEMO_CONTENT_H_
