// The tables of a project database, as far as their contents can be checked.
#ifndef TALLY_HOST_PROJECT_TABLES_H_
#define TALLY_HOST_PROJECT_TABLES_H_

#include <span>

/// A column that holds the `id` of a record in another table.
struct SReferenceColumn {
  const char* name;
  const char* table;
};

struct SProjectTable {
  const char* name;
  std::span<const char* const> keys;   ///< columns of the primary key
  std::span<const char* const> texts;  ///< columns that hold text
  std::span<const SReferenceColumn> references;

  /// Whether the key is the number `id`, which other tables may refer to.
  bool HasId() const;
};

/// Every table, those that are referred to before those that refer to them.
std::span<const SProjectTable> ProjectTables();

#endif  // TALLY_HOST_PROJECT_TABLES_H_
