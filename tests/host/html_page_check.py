"""Checks pages in Chromium: html_page_check.py CHECK TALLY PROJECT PAGE.

PAGE is `tally report PROJECT --all --format html`, or what a check says of its own. A check ends
with an assertion where the page does not do what it should.
"""

import json
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

from browser import Browser  # noqa: E402
from report_rows import csv_rows, report_words, sums  # noqa: E402

# Walks down the grid and hands over every row that it shows, in order.
READ_ROWS = """
const done = arguments[arguments.length - 1];
const grid = document.querySelector('[role=treegrid]');
const rows = new Map();
const frame = () => new Promise((next) => requestAnimationFrame(() => requestAnimationFrame(next)));
(async () => {
  grid.scrollTop = 0;
  for (;;) {
    await frame();
    for (const row of grid.querySelectorAll('[data-row]')) {
      const cells = {};
      for (const cell of row.querySelectorAll('[data-column]')) {
        cells[cell.dataset.column] = (cell.querySelector('.text') ?? cell).textContent;
      }
      rows.set(Number(row.getAttribute('aria-rowindex')), {
        kind: row.dataset.kind, level: Number(row.getAttribute('aria-level')), cells,
        row: Number(row.dataset.row), expanded: row.getAttribute('aria-expanded'),
        position: Number(row.getAttribute('aria-posinset')),
        size: Number(row.getAttribute('aria-setsize')), marks: row.querySelectorAll('mark').length,
      });
    }
    const before = grid.scrollTop;
    grid.scrollTop += grid.clientHeight - 60;
    if (grid.scrollTop === before) break;
  }
  grid.scrollTop = 0;
  await frame();
  done([...rows].sort((a, b) => a[0] - b[0]).map(([index, row]) => ({index, ...row})));
})();
"""
SHOW = "document.querySelectorAll('nav button')[arguments[0]].click();"
LEVELS = "return document.querySelectorAll('[data-level]').length;"
OPEN_TO = "document.querySelectorAll('[data-level]')[arguments[0] - 1].click();"
ROW_COUNT = "return Number(document.querySelector('[role=treegrid]').ariaRowCount) - 1;"
HEADINGS = "[role=columnheader]"
IS_SEARCHING = """
return document.querySelector('#state').textContent.startsWith('找到') === arguments[0];
"""
ACTIVE = """
const grid = document.querySelector('[role=treegrid]');
const row = document.getElementById(grid.getAttribute('aria-activedescendant'));
const box = row.getBoundingClientRect();
const view = grid.getBoundingClientRect();
return [Number(row.dataset.row), row.getAttribute('aria-expanded'),
        box.top >= view.top && box.bottom <= view.bottom + 1, document.activeElement === grid];
"""


class Page:
    """The page of a project with the csv of its tables."""

    def __init__(self, browser, program, project, page):
        self.browser = browser
        self.program = program
        self.project = project
        browser.open(page)
        self.tables = [json.loads(text) for text in browser.texts("script.table")]
        self._rows = {}

    def show(self, report, discipline="给排水"):
        """Shows a table; its rows by the csv."""
        at = next(i for i, table in enumerate(self.tables)
                  if table["report"] == report and table["discipline"] == discipline)
        self.browser.run(SHOW, at)
        return self.rows(self.tables[at])

    def rows(self, table):
        words = tuple(report_words(table))
        if words not in self._rows:
            self._rows[words] = csv_rows(self.program, self.project, *words)[1]
        return [row for row in self._rows[words] if row.discipline == table["discipline"]]

    def open_all(self):
        if levels := self.browser.run(LEVELS):
            self.browser.run(OPEN_TO, levels)

    def read(self):
        return self.browser.run_async(READ_ROWS)


def shown_cells(table, row):
    return {column["heading"]: row.cells[column["heading"]] for column in table["columns"]
            if column["shown"]}


def read_cells(table, row):
    """The cells of a row of the page by heading, "" where its kind has none."""
    return {column["heading"]: row["cells"].get(column["id"], "") for column in table["columns"]
            if column["shown"]}


def check_cells(page):
    """Every table has the csv's cells, sums and levels."""
    assert len(page.tables) > 50
    for at, table in enumerate(page.tables):
        page.browser.run(SHOW, at)
        page.open_all()
        expected = page.rows(table)
        rows = page.read()
        what = (table["title"], table["discipline"])
        assert [row["row"] for row in rows] == list(range(len(expected))), what
        depths = {}
        siblings = {}
        for row, other in zip(rows, expected):
            assert read_cells(table, row) == shown_cells(table, other), (what, row)
            depths[id(other)] = 1 + depths.get(id(other.parent), 0)
            siblings[id(other.parent)] = siblings.get(id(other.parent), 0) + 1
            assert row["level"] == depths[id(other)], (what, row)
            assert row["position"] == siblings[id(other.parent)], (what, row)
        for row, other in zip(rows, expected):
            assert row["size"] == siblings[id(other.parent)], (what, row)
            assert row["expanded"] == ("true" if id(other) in siblings else None), (what, row)
        for column in table["columns"]:
            if column["type"] == "quantity":
                total = sum(float(row["cells"].get(column["id"]) or 0) for row in rows)
                wanted = sum(sums(expected, column["heading"]).values())
                assert abs(total - wanted) <= 1e-9 * abs(wanted), (what, column)


def check_levels(page):
    """A level's button opens the rows above that level, and no more."""
    for report in ("consumption-summary", "fitting-summary", "calculation-book", "paint-work",
                   "bill-quota-summary"):
        rows = page.show(report)
        depths = sorted({row.level for row in rows})
        assert page.browser.run(LEVELS) == len(depths) > 2, report
        for at, depth in enumerate(depths, 1):
            page.browser.run(OPEN_TO, at)
            wanted = [i for i, row in enumerate(rows)
                      if row.parent is None or row.parent.level < depth]
            assert page.browser.run(ROW_COUNT) == len(wanted), (report, depth)
            assert [row["row"] for row in page.read()] == wanted, (report, depth)
            pressed = page.browser.texts("[aria-pressed=true]")
            assert pressed == [str(at)], pressed


def search(page, text):
    page.browser.click("#search")
    page.browser.press(*text)
    page.browser.wait_for(IS_SEARCHING, True)


def check_search(page):
    """Hits are marked and keep what is above them; Escape brings the rest back."""
    rows = page.show("consumption-summary")
    before = page.browser.run(ROW_COUNT)
    search(page, "dn50")
    hits = [any("dn50" in text.lower() for text in row.cells.values()) for row in rows]
    kept = {id(up) for row, hit in zip(rows, hits) if hit for up in [row, *row.ancestors()]}
    wanted = [i for i, row in enumerate(rows) if id(row) in kept]
    assert 0 < sum(hits) < len(wanted) < len(rows)
    shown = page.read()
    assert [row["row"] for row in shown] == wanted
    assert [row["marks"] > 0 for row in shown] == [hits[i] for i in wanted]
    assert page.browser.texts("#state") == [
        f"找到 {sum(hits)} 行；显示 {len(wanted)} 行，共 {len(rows)} 行"]
    assert set(page.browser.texts("mark")) == {"DN50"}
    # Enter goes from hit to hit.
    page.browser.press("Enter")
    assert page.browser.run(ACTIVE)[0] == hits.index(True)
    page.browser.press("Escape")
    page.browser.wait_for(IS_SEARCHING, False)
    assert page.browser.run(ROW_COUNT) == before
    assert page.browser.texts("mark") == []
    search(page, "no such text")
    assert page.browser.run(ROW_COUNT) == 0
    assert page.browser.texts(".empty") == ["没有符合搜索的行。"]
    page.browser.press("Escape")
    page.browser.wait_for(IS_SEARCHING, False)
    assert page.browser.run(ROW_COUNT) == before
    assert len(page.read()) == before


def toggle_column(page, column):
    page.browser.click(f'.menu input[data-id="{column}"]')


def check_columns(page):
    """Columns are hidden and shown again; references are hidden at first."""
    rows = page.show("consumption-summary")
    page.open_all()
    headings = page.browser.texts(HEADINGS)
    assert headings == ["构件类型 / 规格型号 / 计算项目 / 图纸楼层 / 系统编号",
                        "属性", "楼层", "单位", "工程量"], headings
    page.browser.click(".menu-place button")
    toggle_column(page, "attributes")
    assert page.browser.texts(HEADINGS) == [text for text in headings if text != "属性"]
    assert all("attributes" not in row["cells"] for row in page.read())
    toggle_column(page, "attributes")
    assert page.browser.texts(HEADINGS) == headings
    toggle_column(page, "components")
    assert page.browser.texts(HEADINGS) == [*headings, "构件索引"]
    read = page.read()
    assert [row["cells"].get("components", "") for row in read] == [
        row.cells["构件索引"] for row in rows]
    assert any(row["cells"].get("components") for row in read)
    # Without the text that names a row, the next one does.
    toggle_column(page, "specification")
    assert page.browser.texts(HEADINGS)[0] == "构件类型 / 属性 / 计算项目 / 图纸楼层 / 系统编号"
    page.browser.press("Escape")
    assert page.browser.run("return document.querySelector('.menu').hidden;")


def check_keyboard(page):
    """The grid can be used without a mouse."""
    rows = page.show("consumption-summary")
    browser = page.browser
    browser.run(OPEN_TO, 1)
    browser.run("document.querySelector('#search').focus()")
    browser.press("ArrowDown")
    roots = [i for i, row in enumerate(rows) if row.parent is None]
    children = [i for i, row in enumerate(rows) if row.parent is rows[0]]
    steps = [
        ("Home", roots[0], "false"), ("ArrowDown", roots[1], "false"),
        ("ArrowUp", roots[0], "false"),
        ("ArrowUp", roots[0], "false"), ("End", roots[-1], "false"), ("Home", roots[0], "false"),
        ("ArrowRight", roots[0], "true"), ("ArrowRight", children[0], "false"),
        ("ArrowDown", children[1], "false"), ("Enter", children[1], "true"),
        ("Enter", children[1], "false"), (" ", children[1], "true"),
        ("ArrowLeft", children[1], "false"),
        ("ArrowLeft", roots[0], "true"), ("ArrowLeft", roots[0], "false"),
    ]
    for key, row, expanded in steps:
        browser.press(key)
        assert browser.run(ACTIVE) == [row, expanded, True, True], (key, browser.run(ACTIVE), row)
    browser.press("*")
    second = [i for i, row in enumerate(rows) if row.parent is None or row.parent.parent is None]
    assert [row["row"] for row in page.read()] == second
    browser.press("End")
    assert browser.run(ACTIVE) == [second[-1], "false", True, True], second[-1]
    browser.press("PageUp")
    row, _, is_seen, _ = browser.run(ACTIVE)
    assert second[0] < row < second[-2] and is_seen
    browser.press("PageDown")
    assert browser.run(ACTIVE)[0] == second[-1]
    # The way to the row and its cells in full.
    [named] = browser.texts(".path")
    last = rows[second[-1]]
    assert named == f"{last.parent.cells['构件类型']} › {last.cells['规格型号']}", named
    assert f"工程量：{last.cells['工程量']}" in browser.texts(".current .cells")[0]


def check_mouse(page):
    """A click on the sign before a row, or two on the row, open and close it."""
    rows = page.show("consumption-summary")
    browser = page.browser
    browser.run(OPEN_TO, 1)
    closed = browser.run(ROW_COUNT)
    below = sum(1 for row in rows if row.parent is rows[0])
    browser.click("#row-0 .toggle")
    assert browser.run(ROW_COUNT) == closed + below
    browser.click("#row-1 .text")
    assert browser.run(ROW_COUNT) == closed + below
    assert browser.run(ACTIVE)[0] == 1
    browser.run("document.querySelector('#row-0 .text').dispatchEvent("
                "new MouseEvent('dblclick', {bubbles: true}))")
    assert browser.run(ROW_COUNT) == closed


def pdf_pages(browser):
    with tempfile.NamedTemporaryFile(suffix=".pdf") as file:
        browser.pdf(file.name)
        text = subprocess.run(["/usr/bin/pdftotext", "-layout", file.name, "-"], check=True,
                              capture_output=True).stdout.decode()
    return text.rstrip("\f").split("\f")


def check_print(page):
    """The open rows are printed, with the headings on each page."""
    rows = page.show("consumption-summary")
    page.browser.run(OPEN_TO, 5)
    open_rows = [row for row in rows if row.parent is None or row.parent.level < 5]
    pages = pdf_pages(page.browser)
    assert len(pages) > 2, len(pages)
    for number, text in enumerate(pages, 1):
        for heading in ("属性", "楼层", "单位", "工程量"):
            assert heading in text, (number, heading)
        assert f"{number}/{len(pages)}" in "".join(text.split()), number
    whole = "".join("".join(pages).split())
    assert "消耗量汇总表·给排水" in whole and "只打印前" not in whole
    assert all("".join(row.cells["计算项目"].split()) in whole for row in open_rows)
    for kind in {row.cells["构件类型"] for row in open_rows}:
        assert "".join(kind.split()) in whole, kind
    counts = page.browser.run("""
      window.dispatchEvent(new Event('beforeprint'));
      const printed = document.querySelectorAll('#print tbody tr').length;
      window.dispatchEvent(new Event('afterprint'));
      return [printed, document.querySelectorAll('#print tr').length];""")
    assert counts == [len(open_rows), 0], counts


def check_long_print(page):
    """PAGE has 20,001 rows: the last one is not printed, and the page says so."""
    printed, warning = page.browser.run("""
      window.dispatchEvent(new Event('beforeprint'));
      return [[...document.querySelectorAll('#print tbody tr')].map((row) => row.textContent),
              document.querySelector('#print .warning').textContent];""")
    assert printed == [f"R{i}" for i in range(20000)], len(printed)
    assert warning == "已展开 20,001 行，只打印前 20,000 行。请收起部分级别或搜索后再打印。", warning


def check_many_rows(page):
    """PAGE has 600,000 rows, more than browsers have height for; each can be reached."""
    browser = page.browser
    browser.run("document.querySelector('[role=treegrid]').focus();")
    assert browser.run(ROW_COUNT) == 600000
    browser.press("End")
    assert browser.run(ACTIVE) == [599999, None, True, True], browser.run(ACTIVE)
    browser.press("ArrowUp", "PageUp")
    row, _, is_seen, _ = browser.run(ACTIVE)
    assert 599900 < row < 599998 and is_seen, row
    middle = browser.run_async("""
      const done = arguments[arguments.length - 1];
      const grid = document.querySelector('[role=treegrid]');
      grid.scrollTop = (grid.scrollHeight - grid.clientHeight) / 2;
      requestAnimationFrame(() => requestAnimationFrame(() => {
        const box = grid.getBoundingClientRect();
        const point = document.elementFromPoint(box.left + 200, box.top + box.height / 2);
        const row = point.closest('[data-row]');
        done([Number(row.dataset.row), row.textContent]);
      }));""")
    assert abs(middle[0] - 300000) < 5 and middle[1] == f"R{middle[0]}", middle
    browser.press("Home")
    assert browser.run(ACTIVE) == [0, None, True, True], browser.run(ACTIVE)


def check_chart(page):
    """The overview's chart has the ten largest quantities of each unit, in proportion."""
    rows = page.show("overview")
    units = {}
    for row in rows:
        if row.cells["规格型号"]:
            units.setdefault(row.cells["单位"], []).append(row)
    charts = page.browser.run("""
      return [...document.querySelectorAll('#app svg.chart')].map((chart) => ({
        title: chart.querySelector('title').textContent,
        text: chart.querySelector('desc').textContent,
        labelled: chart.getAttribute('aria-labelledby').split(' ')
          .map((id) => document.getElementById(id).tagName),
        names: [...chart.querySelectorAll('.name')].map((t) => t.textContent),
        values: [...chart.querySelectorAll('.value')].map((t) => t.textContent),
        widths: [...chart.querySelectorAll('rect')].map((r) => Number(r.getAttribute('width'))),
        captions: chart.parentNode.querySelector('figcaption').textContent}));""")
    assert len(charts) == len(units) > 1
    for chart in charts:
        unit = chart["title"].removeprefix("工程量，单位：")
        largest = sorted(units[unit], key=lambda row: -float(row.cells["工程量"]))
        bars = largest[:10]
        assert chart["values"] == [f"{row.cells['工程量']} {unit}" for row in bars], chart
        assert chart["names"] == [row.cells["规格型号"] for row in bars], chart
        for row, width in zip(bars, chart["widths"]):
            share = float(row.cells["工程量"]) / float(bars[0].cells["工程量"])
            assert abs(width - max(2, share * chart["widths"][0])) < 0.01, chart
        assert chart["labelled"] == ["title", "desc"]
        assert f"{bars[0].cells['规格型号']} {bars[0].cells['工程量']} {unit}" in chart["text"]
        rest = f"另有 {len(largest) - 10} 项" if len(largest) > 10 else f"单位：{unit}"
        assert chart["captions"].endswith(rest), chart
    page.show("consumption-summary")
    assert page.browser.run("return document.querySelectorAll('#app svg.chart').length;") == 0


def check_self_contained(page):
    """Nothing comes from elsewhere, and no further script can run."""
    loaded = page.browser.run("""
      const added = document.createElement('script');
      added.textContent = 'window.added = true';
      document.body.append(added);
      added.remove();
      return [performance.getEntriesByType('resource').length, window.added ?? null,
              document.documentElement.lang, document.characterSet,
              document.querySelectorAll('[src], [href], link, iframe, object, form').length];""")
    assert loaded == [0, None, "zh-CN", "UTF-8", 0], loaded
    refused = page.browser.messages()
    assert len(refused) == 1 and "Content Security Policy" in refused[0], refused


def check_nasty(page):
    """PAGE has texts that try to become markup or scripts, one a row; they stay texts."""
    browser = page.browser
    assert not browser.has_dialog()
    elements = ("return ['script', 'style', 'img', 'svg', 'b']"
                ".map((tag) => document.querySelectorAll(tag).length);")
    scripts = 1 + 2 * len(page.tables) + 1
    assert browser.run(elements) == [scripts, 1, 0, 0, 0]
    texts = [row["cells"]["section"] for row in page.read()]
    wanted = ["=1+1", "<script>alert(1)</script>", "</script><img src=x onerror=alert(1)>",
              "<!--<script>", "\"'`}{][,\\", "a\r\nb\tc", "a\ufffdb", "\u2028\u2029", "\x01\x7f",
              "&lt;b&gt;<b>", "]]>", "{}"]
    assert texts == wanted, texts
    assert browser.texts("header h1") == ["<b>\"&.tally"]
    assert browser.texts("header dd") == ["</script><script>alert(4)</script>",
                                          "<img src=x onerror=alert(3)>"]
    assert browser.texts("main h2") == ["消耗量汇总表 · </script><b>"]
    search(page, "<script>alert(1)")
    assert browser.texts("mark") == ["<script>alert(1)"]
    browser.run("window.dispatchEvent(new Event('beforeprint'));")
    assert browser.texts("#print tbody th") == [texts[1]]
    assert browser.run(elements) == [scripts, 1, 0, 0, 0]
    browser.run(SHOW, 1)
    assert browser.texts("#app .chart .name") == ["<b>x</b>"]
    assert browser.run(elements) == [scripts, 1, 0, 1, 0]
    assert not browser.has_dialog()


def main():
    name, program, project, file = sys.argv[1:]
    with Browser() as browser:
        page = Page(browser, program, project, file)
        globals()[f"check_{name}"](page)
        faults = browser.messages()
        assert not faults, faults


main()
