"""Compares a workbook of `tally report --format xlsx` with the CSV files of the same tables.

check_workbook.py WORKBOOK CSV_FOLDER [--soffice PROGRAM --work FOLDER]

Every cell is compared, and the sums of the quantities; with --soffice also as LibreOffice reads the
workbook. Prints what differs and then exits with 1.
"""

import argparse
import csv
import math
import os
import re
import subprocess
import sys

import openpyxl

REPORTS = {
    "消耗量汇总表": "consumption-summary",
    "工程量概览表": "overview",
    "超高量汇总表": "over-height-summary",
    "配件汇总表": "fitting-summary",
    "系统计算书按构件": "calculation-book-member",
    "系统计算书按楼层": "calculation-book-floor",
    "系统计算书按系统": "calculation-book-system",
    "刷油工作量表": "paint-work",
    "风管壁厚表": "duct-wall-thickness",
    "绝热保温表": "insulation",
    "定额汇总表": "quota-summary",
    "清单定额汇总表": "bill-quota-summary",
    "清单汇总表": "bill-summary",
}
FRONT_HEADINGS = ("工作表", "报表", "专业", "展开级别", "行数", "筛选")
EVERY_SHEET = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,true,false,false,false,-1"

differences = []


def differ(*what):
    differences.append(" ".join(str(part) for part in what))
    if len(differences) > 20:
        finish()


def finish():
    for line in differences:
        print(line)
    sys.exit(1 if differences else 0)


def unescaped(text):
    return re.sub(r"_x([0-9A-Fa-f]{4})_", lambda match: chr(int(match[1], 16)), text)


def shown(text):
    """What a cell holds for a text: no noncharacters, and no more than its limit."""
    text = text.replace("\ufffe", "\ufffd").replace("\uffff", "\ufffd")
    return text if len(text) <= 32767 else text[:32766] + "…"


def number(text):
    """The number of a quantity; None for what has to stay text."""
    if not re.fullmatch(r"-?[0-9]+(\.[0-9]+)?(e[+-]?[0-9]+)?", text):
        return None
    value = float(text)
    return value if math.isfinite(value) else None


def read_csv(path):
    """Headings without the discipline, and the rows."""
    with open(path, encoding="utf-8-sig", newline="") as file:
        lines = list(csv.reader(file))
    return lines[0][1:], [line[1:] for line in lines[1:]]


def compare_rows(name, headings, rows, expected_headings, expected, is_same_text):
    """Compares texts and numbers; columns that `headings` lacks must be empty in all rows."""
    places = []
    for at, heading in enumerate(expected_headings):
        if heading in headings:
            places.append((at, headings.index(heading)))
        elif any(row[at] for row in expected):
            differ(name, "lacks the column", heading)
    if len(rows) != len(expected):
        differ(name, "has", len(rows), "rows instead of", len(expected))
        return
    for line, (row, wanted) in enumerate(zip(rows, expected), 2):
        for at, place in places:
            heading = expected_headings[at]
            value = number(wanted[at]) if heading.startswith(("级别", "工程量")) else None
            if value is None and not is_same_text(row[place], shown(wanted[at])):
                differ(name, line, heading, ascii(row[place])[:200], "is not",
                       ascii(wanted[at])[:200])
            if value is not None and (isinstance(row[place], str) or row[place] != value):
                differ(name, line, heading, repr(row[place]), "is not the number", value)
    for at, place in places:
        if expected_headings[at].startswith("工程量"):
            sums = [math.fsum(v for v in column if v is not None)
                    for column in ([row[place] for row in rows if isinstance(row[place], float)],
                                   [number(row[at]) for row in expected])]
            if sums[0] != sums[1]:
                differ(name, expected_headings[at], "sums to", sums[0], "instead of", sums[1])


def cell_value(sheet, cell):
    if cell.data_type not in ("n", "s", "inlineStr"):
        differ(sheet.title, cell.coordinate, "is of type", cell.data_type)
    if isinstance(cell.value, (int, float)):
        return float(cell.value)
    return cell.value


def is_same_in_file(value, text):
    return unescaped(value or "") == text


def check_look(sheet):
    for fact, value, wanted in (
            ("freeze", sheet.freeze_panes, "A2"),
            ("print titles", sheet.print_title_rows, "$1:$1"),
            ("summary below", sheet.sheet_properties.outlinePr.summaryBelow, False),
            ("orientation", sheet.page_setup.orientation, "landscape"),
            ("paper", int(sheet.page_setup.paperSize), 9),
            ("pages wide", sheet.page_setup.fitToWidth or 1, 1),
            ("pages high", int(sheet.page_setup.fitToHeight), 0),
            ("filter", sheet.auto_filter.ref, None)):
        if value != wanted:
            differ(sheet.title, fact, value, "instead of", wanted)
    for cell in sheet[1]:
        if not cell.font.bold:
            differ(sheet.title, cell.coordinate, "is not bold")
        column = sheet.column_dimensions[cell.column_letter]
        if column.hidden != (cell.value == "构件索引"):
            differ(sheet.title, cell.value, "hidden:", column.hidden)
        if not 5 <= column.width <= 60:
            differ(sheet.title, cell.value, "has width", column.width)


def check_levels(sheet, outermost):
    for row in range(2, sheet.max_row + 1):
        depth = sheet.cell(row, 1).value
        level = sheet.row_dimensions[row].outlineLevel
        if level != min(7, depth - outermost):
            differ(sheet.title, row, "of depth", depth, "has outline level", level)
        if depth == 0 and sheet.cell(row, 1).fill.fill_type != "solid":
            differ(sheet.title, row, "is a section that does not stand out")


def front_lines(book):
    """The lines of the front sheet, each with its sheet."""
    front = book.worksheets[0]
    rows = list(front.iter_rows())
    start = next(at for at, row in enumerate(rows)
                 if tuple(cell.value for cell in row) == FRONT_HEADINGS)
    lines = []
    for row in rows[start + 1:]:
        name = row[0].value
        if row[0].hyperlink is None or row[0].hyperlink.location != f"'{name}'!A1":
            differ("front sheet:", name, "has no link to its sheet")
        lines.append((name, [cell.value for cell in row[1:]]))
    if [name for name, _ in lines] != book.sheetnames[1:]:
        differ("the front sheet lists", lines, "instead of", book.sheetnames[1:])
    return lines


def tables(book, folder):
    """Each sheet with its CSV file's headings and its share of the rows."""
    used = {}
    for name, (title, spec, _, count, _) in front_lines(book):
        path = os.path.join(folder, f"{REPORTS[title]}_{spec or ''}.csv")
        headings, rows = used.setdefault(path, read_csv(path))
        used[path] = (headings, rows[count:])
        yield book[name], headings, rows[:count]
    for path, (_, rows) in used.items():
        if rows:
            differ(path, "has", len(rows), "rows more")
    left = {os.path.join(folder, name) for name in os.listdir(folder)} - set(used)
    if left:
        differ("no sheets for", sorted(left))


def compare_in_office(program, work, workbook, sheets):
    subprocess.run([program, f"-env:UserInstallation=file://{work}/office", "--headless",
                    "--convert-to", EVERY_SHEET, "--outdir", f"{work}/sheets", workbook],
                   check=True, stdout=subprocess.DEVNULL)
    stem = os.path.splitext(os.path.basename(workbook))[0]
    for name, expected_headings, expected in sheets:
        with open(f"{work}/sheets/{stem}-{name}.csv", encoding="utf-8", newline="") as file:
            lines = list(csv.reader(file, quoting=csv.QUOTE_NONNUMERIC))
        compare_rows(f"{name} in LibreOffice:", lines[0], lines[1:], expected_headings, expected,
                     lambda value, text: value == text)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("workbook")
    parser.add_argument("folder")
    parser.add_argument("--soffice")
    parser.add_argument("--work")
    arguments = parser.parse_args()
    csv.field_size_limit(1 << 30)

    book = openpyxl.load_workbook(arguments.workbook)
    sheets = []
    outermost = {}
    for sheet, expected_headings, expected in tables(book, arguments.folder):
        rows = [[cell_value(sheet, cell) for cell in row] for row in sheet.iter_rows()]
        compare_rows(sheet.title, rows[0], rows[1:], expected_headings, expected, is_same_in_file)
        check_look(sheet)
        stem = re.sub(r" \(\d+\)$", "", sheet.title)
        outermost.setdefault(stem, min((int(row[0]) for row in expected), default=0))
        check_levels(sheet, outermost[stem])
        sheets.append((sheet.title, expected_headings, expected))
    if arguments.soffice:
        compare_in_office(arguments.soffice, arguments.work, arguments.workbook, sheets)
    finish()


if __name__ == "__main__":
    main()
