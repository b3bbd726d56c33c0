"""The rows of a report as its csv has them: what the other formats are held against."""

import csv
import io
import subprocess


class Row:
    """`level` is the depth in the layout; `cells` are all of the row's cells by heading."""

    def __init__(self, discipline, level, cells, parent):
        self.discipline = discipline
        self.level = level
        self.cells = cells
        self.parent = parent

    def ancestors(self):
        row = self.parent
        while row is not None:
            yield row
            row = row.parent


def output_of(program, *words):
    return subprocess.run([program, *words], check=True, capture_output=True).stdout


def csv_rows(program, project, *options):
    """The headings and the rows of `tally report PROJECT OPTIONS`."""
    text = output_of(program, "report", project, *options, "--format", "csv").decode("utf-8-sig")
    lines = csv.reader(io.StringIO(text, newline=""), strict=True)
    headings = next(lines)[2:]
    rows = []
    above = []
    for discipline, level, *cells in lines:
        if rows and rows[-1].discipline != discipline:
            above = []
        while above and above[-1].level >= int(level):
            above.pop()
        row = Row(discipline, int(level), dict(zip(headings, cells, strict=True)),
                  above[-1] if above else None)
        above.append(row)
        rows.append(row)
    return headings, rows


def sums(rows, heading):
    """The sums of a column by level, over what is a number."""
    totals = {}
    for row in rows:
        if text := row.cells[heading]:
            totals[row.level] = totals.get(row.level, 0) + float(text)
    return totals


def report_words(table):
    """The options that ask for the report of a table of a JSON or HTML document."""
    variant = [] if table["variant"] is None else ["--variant", table["variant"]]
    return ["--report", table["report"], *variant]
