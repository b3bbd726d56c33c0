// The tables of an empty project database, for tests that build one.
#ifndef TALLY_TESTS_SUPPORT_PROJECT_SCHEMA_H_
#define TALLY_TESTS_SUPPORT_PROJECT_SCHEMA_H_

namespace tally_test {

/// SQL that turns an empty file into an empty project database of the current format. The tree
/// records come first, then the dictionaries, the rows of the result sets, and the libraries.
inline constexpr const char* kProjectSchema = R"sql(
PRAGMA application_id = 0x54414C59;
PRAGMA user_version   = 9;

CREATE TABLE setting (
  name  TEXT PRIMARY KEY,
  value TEXT NOT NULL
) STRICT, WITHOUT ROWID;

CREATE TABLE all_small_index (
  id           INTEGER PRIMARY KEY,
  sort_id      INTEGER NOT NULL,
  spec         TEXT NOT NULL,
  big_category TEXT NOT NULL,
  path         TEXT NOT NULL
) STRICT;

CREATE TABLE all_sys_code (
  id       INTEGER PRIMARY KEY,
  sort_id  INTEGER NOT NULL,
  spec     TEXT NOT NULL,
  sys_code TEXT NOT NULL,
  remark   TEXT NOT NULL
) STRICT;

CREATE TABLE all_floor (
  id         INTEGER PRIMARY KEY,
  name       TEXT NOT NULL,
  floor_text TEXT NOT NULL
) STRICT;

CREATE TABLE all_sgd (
  id   INTEGER PRIMARY KEY,
  name TEXT NOT NULL
) STRICT;

CREATE TABLE sgd       (id INTEGER PRIMARY KEY, name TEXT NOT NULL,
                        text2 TEXT NOT NULL DEFAULT '') STRICT;
CREATE TABLE floor     (id INTEGER PRIMARY KEY, name TEXT NOT NULL,
  floor_text TEXT NOT NULL) STRICT;
CREATE TABLE spec      (id INTEGER PRIMARY KEY, name TEXT NOT NULL) STRICT;
CREATE TABLE category  (id INTEGER PRIMARY KEY, category TEXT NOT NULL,
  kind TEXT NOT NULL) STRICT;
CREATE TABLE attr      (id INTEGER PRIMARY KEY, name TEXT NOT NULL,
  value TEXT NOT NULL) STRICT;
CREATE TABLE sys_code  (id INTEGER PRIMARY KEY, name TEXT NOT NULL) STRICT;
CREATE TABLE component (id INTEGER PRIMARY KEY, name TEXT NOT NULL) STRICT;

CREATE TABLE component_text (
  component INTEGER NOT NULL REFERENCES component(id),
  seq       INTEGER NOT NULL,
  text      TEXT NOT NULL,
  PRIMARY KEY (component, seq)
) STRICT, WITHOUT ROWID;

CREATE TABLE cal_item (
  id         INTEGER PRIMARY KEY,
  name       TEXT NOT NULL,
  unit       TEXT NOT NULL,
  text3      TEXT NOT NULL DEFAULT '',
  text4      TEXT NOT NULL DEFAULT '',
  quantity   REAL NOT NULL,
  expression TEXT NOT NULL
) STRICT;

CREATE TABLE detail_cal_item (
  id         INTEGER PRIMARY KEY,
  name       TEXT NOT NULL,
  unit       TEXT NOT NULL,
  quantity1  REAL NOT NULL,
  quantity2  REAL NOT NULL,
  quantity3  REAL NOT NULL,
  quantity4  REAL NOT NULL,
  expression TEXT NOT NULL
) STRICT;

CREATE TABLE pj_cal_item (
  id    INTEGER PRIMARY KEY,
  text1 TEXT NOT NULL,
  name  TEXT NOT NULL,
  unit  TEXT NOT NULL,
  value INTEGER NOT NULL DEFAULT 0
) STRICT;

CREATE TABLE qd_item (
  id      INTEGER PRIMARY KEY,
  code    TEXT NOT NULL,
  name    TEXT NOT NULL,
  unit    TEXT NOT NULL,
  library TEXT NOT NULL
) STRICT;

CREATE TABLE de_item (
  id      INTEGER PRIMARY KEY,
  code    TEXT NOT NULL,
  name    TEXT NOT NULL,
  unit    TEXT NOT NULL,
  library TEXT NOT NULL
) STRICT;

CREATE TABLE hz_row (
  id INTEGER PRIMARY KEY,
  sgd INTEGER NOT NULL, floor INTEGER NOT NULL, component INTEGER NOT NULL,
  spec INTEGER NOT NULL,
  category INTEGER NOT NULL, attr INTEGER NOT NULL, sys_code INTEGER NOT NULL,
  cal_item INTEGER NOT NULL
) STRICT;

CREATE TABLE gl_row (
  id INTEGER PRIMARY KEY,
  sgd INTEGER NOT NULL, floor INTEGER NOT NULL, component INTEGER NOT NULL,
  spec INTEGER NOT NULL,
  category INTEGER NOT NULL, attr INTEGER NOT NULL, sys_code INTEGER NOT NULL,
  cal_item INTEGER NOT NULL
) STRICT;

CREATE TABLE cg_row (
  id INTEGER PRIMARY KEY,
  sgd INTEGER NOT NULL, floor INTEGER NOT NULL, component INTEGER NOT NULL,
  spec INTEGER NOT NULL,
  category INTEGER NOT NULL, attr INTEGER NOT NULL, sys_code INTEGER NOT NULL,
  cal_item INTEGER NOT NULL
) STRICT;

CREATE TABLE detail_row (
  id INTEGER PRIMARY KEY,
  sgd INTEGER NOT NULL, floor INTEGER NOT NULL, component INTEGER NOT NULL,
  spec INTEGER NOT NULL,
  category INTEGER NOT NULL, attr INTEGER NOT NULL, sys_code INTEGER NOT NULL,
  cal_item INTEGER NOT NULL
) STRICT;

CREATE TABLE pj_row (
  id INTEGER PRIMARY KEY,
  sgd INTEGER NOT NULL, floor INTEGER NOT NULL, component INTEGER NOT NULL,
  spec INTEGER NOT NULL,
  category INTEGER NOT NULL, attr INTEGER NOT NULL, sys_code INTEGER NOT NULL,
  cal_item INTEGER NOT NULL
) STRICT;

CREATE TABLE qd_de_row (
  id INTEGER PRIMARY KEY,
  is_qd INTEGER NOT NULL,
  sgd INTEGER NOT NULL, floor INTEGER NOT NULL, component INTEGER NOT NULL,
  spec INTEGER NOT NULL,
  category INTEGER NOT NULL, attr INTEGER NOT NULL, sys_code INTEGER NOT NULL,
  cal_item INTEGER NOT NULL,
  qd_item INTEGER NOT NULL, de_item INTEGER NOT NULL
) STRICT;

CREATE TABLE qd_chapter (
  library     TEXT NOT NULL,
  code_prefix TEXT NOT NULL,
  number      INTEGER NOT NULL,
  name        TEXT NOT NULL,
  PRIMARY KEY (library, code_prefix)
) STRICT, WITHOUT ROWID;

CREATE TABLE de_chapter (
  library     TEXT NOT NULL,
  code_prefix TEXT NOT NULL,
  number      INTEGER NOT NULL,
  path        TEXT NOT NULL,
  PRIMARY KEY (library, code_prefix)
) STRICT, WITHOUT ROWID;

CREATE TABLE qd_mark (
  code  TEXT NOT NULL,
  seq   INTEGER NOT NULL,
  name  TEXT NOT NULL,
  value TEXT NOT NULL,
  extra TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (code, seq)
) STRICT, WITHOUT ROWID;
)sql";

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_PROJECT_SCHEMA_H_
