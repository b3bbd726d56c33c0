#!/usr/bin/python3
"""Writes a project database from a folder of CSV files.

    write_project.py FOLDER FILE

FOLDER holds one UTF-8 file for each table, such as hz_row.csv, whose first line names the columns in
any order; a table without a file stays empty. FILE is replaced once everything has been read. What
the tables mean is told in docs/project_database.md. The exit status is 2 after an error, which is one
line that names the file, and the row by the number of its first line.
"""

import csv
import math
import os
import re
import sqlite3
import sys
import tempfile

APPLICATION_ID = 0x54414C59
FORMAT_VERSION = 9

ROW = "id sgd floor component spec category attr sys_code cal_item"
# The columns of each table: texts, and after a colon their type where they are none. A column with
# "=" may be left out.
TABLES = {
    "setting": "name value",
    "all_small_index": "id:i sort_id:i spec big_category path",
    "all_sys_code": "id:i sort_id:i spec sys_code remark",
    "all_floor": "id:i name floor_text",
    "all_sgd": "id:i name",
    "sgd": "id:i name text2=",
    "floor": "id:i name floor_text",
    "spec": "id:i name",
    "category": "id:i category kind",
    "attr": "id:i name value",
    "sys_code": "id:i name",
    "component": "id:i name",
    "component_text": "component:i seq:i text",
    "cal_item": "id:i name unit text3= text4= quantity:r expression",
    "detail_cal_item": "id:i name unit quantity1:r quantity2:r quantity3:r quantity4:r expression",
    "pj_cal_item": "id:i text1 name unit value:i=",
    "qd_item": "id:i code name unit library",
    "de_item": "id:i code name unit library",
    "hz_row": ROW.replace(" ", ":i ") + ":i",
    "gl_row": ROW.replace(" ", ":i ") + ":i",
    "cg_row": ROW.replace(" ", ":i ") + ":i",
    "detail_row": ROW.replace(" ", ":i ") + ":i",
    "pj_row": ROW.replace(" ", ":i ") + ":i",
    "qd_de_row": "is_qd:i " + ROW.replace(" ", ":i ") + ":i qd_item:i de_item:i",
    "qd_chapter": "library code_prefix number:i name",
    "de_chapter": "library code_prefix number:i path",
    "qd_mark": "code seq:i name value extra=",
}
# Tables whose key is not `id`.
KEYS = {
    "setting": ["name"],
    "component_text": ["component", "seq"],
    "qd_chapter": ["library", "code_prefix"],
    "de_chapter": ["library", "code_prefix"],
    "qd_mark": ["code", "seq"],
}
# Where a row's `cal_item` does not lie in the table of that name.
ITEM_TABLES = {"detail_row": "detail_cal_item", "pj_row": "pj_cal_item"}
TYPES = {"t": "TEXT", "i": "INTEGER", "r": "REAL"}


class InputError(Exception):
    """A file that cannot become a table. The text is the whole message."""


class Column:
    def __init__(self, text):
        self.optional = text.endswith("=")
        self.name, _, kind = text.rstrip("=").partition(":")
        self.kind = kind or "t"

    def value(self, text):
        """The text as this column's type; ValueError tells what is allowed instead."""
        if self.kind == "t":
            return text
        if self.kind == "i":
            if re.fullmatch(r"[+-]?[0-9]{1,19}", text) and -(2**63) <= int(text) < 2**63:
                return int(text)
            raise ValueError("no integer of 64 bits")
        if re.fullmatch(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?", text):
            number = float(text)
            if math.isfinite(number):
                return number
        raise ValueError("no decimal number")

    def sql(self):
        default = {"t": " DEFAULT ''", "i": " DEFAULT 0"}[self.kind] if self.optional else ""
        return f"{self.name} {TYPES[self.kind]} NOT NULL{default}"


def columns_of(table):
    return [Column(text) for text in TABLES[table].split()]


def key_of(table):
    return KEYS.get(table, ["id"])


def schema_of(table):
    parts = [column.sql() for column in columns_of(table)]
    if table not in KEYS:
        parts = ["id INTEGER PRIMARY KEY" if part.startswith("id ") else part for part in parts]
        return f"CREATE TABLE {table} ({', '.join(parts)}) STRICT"
    parts.append(f"PRIMARY KEY ({', '.join(KEYS[table])})")
    return f"CREATE TABLE {table} ({', '.join(parts)}) STRICT, WITHOUT ROWID"


def records_of(path):
    """Yields (number of the first line, cells) for each record; blank lines are none."""
    try:
        with open(path, encoding="utf-8-sig", newline="") as file:
            reader = csv.reader(file, strict=True)
            line = 1
            try:
                for cells in reader:
                    if cells:
                        yield line, cells
                    line = reader.line_num + 1
            except csv.Error as error:
                raise InputError(f"{path}, row {line}: {error}") from error
            except UnicodeDecodeError as error:
                raise InputError(f"{path}, row {line} or below: not UTF-8") from error
    except OSError as error:
        raise InputError(f"{path}: {error.strerror}") from error


def columns_in(path, line, names, table):
    """The columns that a heading line names, in its order."""
    columns = {column.name: column for column in columns_of(table)}
    for name in names:
        if name not in columns:
            allowed = ", ".join(columns)
            raise InputError(f"{path}, row {line}: no column '{name}'; there are {allowed}")
        if names.count(name) > 1:
            raise InputError(f"{path}, row {line}: column '{name}' stands twice")
    for column in columns.values():
        if column.name not in names and not column.optional:
            raise InputError(f"{path}, row {line}: column '{column.name}' is missing")
    return [columns[name] for name in names]


def read_table(path, table):
    """The columns that the file has, and (line, values) for each record."""
    records = records_of(path)
    heading = next(records, None)
    if heading is None:
        raise InputError(f"{path}: no line that names the columns")
    columns = columns_in(path, *heading, table)
    key = [index for index, column in enumerate(columns) if column.name in key_of(table)]
    first_lines = {}
    rows = []
    for line, cells in records:
        if len(cells) != len(columns):
            raise InputError(f"{path}, row {line}: {len(cells)} cells for {len(columns)} columns")
        values = []
        for column, text in zip(columns, cells):
            try:
                values.append(column.value(text))
            except ValueError as error:
                raise InputError(
                    f"{path}, row {line}: column '{column.name}': '{text}' is {error}"
                ) from error
        first = first_lines.setdefault(tuple(values[index] for index in key), line)
        if first != line:
            raise InputError(
                f"{path}, row {line}: the same {' and '.join(key_of(table))} as row {first}"
            )
        rows.append((line, values))
    return [column.name for column in columns], rows


def check_references(paths, tables):
    """Refuses a row that names a record which no dictionary has."""
    ids = {
        table: {values[columns.index("id")] for _, values in rows}
        for table, (columns, rows) in tables.items()
        if "id" in columns
    }
    for table, (columns, rows) in tables.items():
        if not table.endswith("_row"):
            continue
        for index, column in enumerate(columns):
            if column in ("id", "is_qd"):
                continue
            target = ITEM_TABLES.get(table, column) if column == "cal_item" else column
            for line, values in rows:
                if values[index] not in ids.get(target, ()):
                    raise InputError(
                        f"{paths[table]}, row {line}: column '{column}': "
                        f"{target} has no id {values[index]}"
                    )


def read_folder(folder):
    try:
        names = sorted(name for name in os.listdir(folder) if name.endswith(".csv"))
    except OSError as error:
        raise InputError(f"{folder}: {error.strerror}") from error
    if not names:
        raise InputError(f"{folder}: no .csv file")
    paths = {}
    tables = {}
    for name in names:
        path = os.path.join(folder, name)
        table = name[: -len(".csv")]
        if table not in TABLES:
            raise InputError(f"{path}: no table '{table}'; there are {', '.join(TABLES)}")
        paths[table] = path
        tables[table] = read_table(path, table)
    check_references(paths, tables)
    return tables


def write_database(path, tables):
    database = sqlite3.connect(path)
    try:
        database.execute(f"PRAGMA application_id = {APPLICATION_ID}")
        database.execute(f"PRAGMA user_version = {FORMAT_VERSION}")
        for table in TABLES:
            database.execute(schema_of(table))
        for table, (columns, rows) in tables.items():
            marks = ", ".join("?" * len(columns))
            database.executemany(
                f"INSERT INTO {table} ({', '.join(columns)}) VALUES ({marks})",
                (values for _, values in rows),
            )
        database.commit()
    finally:
        database.close()


def replace_by_database(path, tables):
    """Writes beside `path` first: a failure leaves what was there."""
    handle, scratch = tempfile.mkstemp(dir=os.path.dirname(path) or ".", suffix=".part")
    os.close(handle)
    try:
        write_database(scratch, tables)
        mask = os.umask(0)
        os.umask(mask)
        os.chmod(scratch, 0o666 & ~mask)
        os.replace(scratch, path)
    except BaseException:
        os.unlink(scratch)
        raise


def main(arguments):
    if len(arguments) != 2:
        print("usage: write_project.py FOLDER FILE", file=sys.stderr)
        return 2
    folder, path = arguments
    try:
        tables = read_folder(folder)
        replace_by_database(path, tables)
    except InputError as error:
        print(f"write_project.py: {error}", file=sys.stderr)
        return 2
    except (OSError, sqlite3.Error) as error:
        print(f"write_project.py: cannot write {path}: {error}", file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
