"""Compares the JSON of every report with its csv: json_report_check.py TALLY PROJECT.

Numbers are compared as they are written, so that not even a last digit may differ.
"""

import json
import pathlib
import sys
import tempfile

from report_rows import Row, csv_rows, output_of, report_words, sums


def parse(text):
    return json.loads(text.decode("utf-8"), parse_int=str, parse_float=str)


def flat_rows(table):
    """The rows of a table, outer ones first; what the tree says of levels is checked."""
    headings = {column["id"]: column["heading"] for column in table["columns"]}
    rows = []
    waiting = [(node, None) for node in reversed(table["rows"])]
    while waiting:
        node, parent = waiting.pop()
        assert list(node) == ["level", "kind", "cells", "children"], node
        order = [column for column in headings if column in node["cells"]]
        assert list(node["cells"]) == order, node
        cells = dict.fromkeys(headings.values(), "")
        for column, value in node["cells"].items():
            cells[headings[column]] = "" if value is None else value
        row = Row(table["discipline"], int(node["level"]), cells, parent)
        assert parent is None or parent.level < row.level, node
        rows.append(row)
        waiting += [(child, row) for child in reversed(node["children"])]
    return rows


def compare(what, tables, expected):
    headings, expected_rows = expected
    rows = []
    for table in tables:
        assert [column["heading"] for column in table["columns"]] == headings, what
        rows += flat_rows(table)
    assert len(rows) == len(expected_rows), (what, len(rows), len(expected_rows))
    places = {id(row): i for i, row in enumerate(rows)}
    expected_places = {id(row): i for i, row in enumerate(expected_rows)}
    for row, other in zip(rows, expected_rows):
        assert (row.discipline, row.level, row.cells) == (
            other.discipline, other.level, other.cells), (what, row.cells, other.cells)
        parent = None if row.parent is None else places[id(row.parent)]
        assert parent == (None if other.parent is None else expected_places[id(other.parent)]), what
    for column in tables[0]["columns"]:
        if column["type"] == "quantity":
            heading = column["heading"]
            assert sums(rows, heading) == sums(expected_rows, heading), (what, heading)
    return len(rows)


def main():
    program, project = sys.argv[1:]
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        output_of(program, "report", project, "--all", "--format", "json", "-o", file.name)
        whole = parse(pathlib.Path(file.name).read_bytes())
    requests = {}
    for table in whole["reports"]:
        requests.setdefault(tuple(report_words(table)), []).append(table)
    assert len(requests) == 13, list(requests)
    compared = 0
    for words, tables in requests.items():
        compared += compare(words, tables, csv_rows(program, project, *words))
        for options in (["--by-section"], ["--columns", "quantity,unit,system-code,category"]):
            if options[0] == "--columns" and "consumption-summary" not in words:
                continue
            request = [*words, *options]
            single = parse(output_of(program, "report", project, *request, "--format", "json"))
            compare(request, single["reports"], csv_rows(program, project, *request))
    assert compared > 3000, compared


main()
