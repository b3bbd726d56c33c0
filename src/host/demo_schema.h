// The tables of a project database, as the example project is written.
#ifndef TALLY_HOST_DEMO_SCHEMA_H_
#define TALLY_HOST_DEMO_SCHEMA_H_

namespace demo {

/// SQL that makes the tables and marks the file (docs/project_database.md). It is to run within the
/// transaction that fills them.
extern const char* const kSchema;

}  // namespace demo

#endif  // TALLY_HOST_DEMO_SCHEMA_H_
