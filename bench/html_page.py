#!/usr/bin/python3
"""Measures an HTML page of about 100,000 rows in headless Chromium.

bench/html_page.py --tally build/release/tally [--rows 250000] [--runs 5] [--page PAGE]

Prints the rows of the page, its size, and in milliseconds the median and the worst of the runs:
until the page is painted with its rows, and from a click or key to the frame that shows its effect.
"""

import argparse
import json
import pathlib
import statistics
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "support"))

from browser import Browser  # noqa: E402

# Runs an action and waits until the next frame is made after it.
TIMED = """
const done = arguments[arguments.length - 1];
const start = performance.now();
(new Function(arguments[0]))();
requestAnimationFrame(() => setTimeout(() => done(performance.now() - start)));
"""
LEVEL = "[...document.querySelectorAll('[data-level]')].at({}).click();"
SEARCH = """
const input = document.querySelector('#search');
input.value = '{}';
input.dispatchEvent(new KeyboardEvent('keydown', {{key: 'Enter', bubbles: true}}));
"""
KEY = """
document.querySelector('[role=treegrid]').dispatchEvent(
  new KeyboardEvent('keydown', {{key: '{}'}}));
"""
ACTIONS = [
    ("open the last level", LEVEL.format(-1)),
    ("go to the last row", KEY.format("End")),
    ("go to the first row", KEY.format("Home")),
    ("close a row", "document.querySelector('[data-row] .toggle').click();"),
    ("open a row", "document.querySelector('[data-row] .toggle').click();"),
    ("hide a column", "document.querySelectorAll('.menu input')[4].click();"),
    ("search, first time", SEARCH.format("DN50")),
    ("search again", SEARCH.format("DN100")),
    ("end the search", SEARCH.format("")),
    ("close to the first level", LEVEL.format(0)),
    ("open the last level again", LEVEL.format(-1)),
    ("build the printed table", "window.dispatchEvent(new Event('beforeprint'));"
                                "window.dispatchEvent(new Event('afterprint'));"),
]
OPENED = """
const [page] = performance.getEntriesByType('navigation');
const [paint] = performance.getEntriesByName('first-contentful-paint');
return [page.loadEventEnd, paint.startTime];
"""


def make_page(tally, rows, folder):
    project = str(folder / "bench.tally")
    page = str(folder / "bench.html")
    subprocess.run([tally, "demo", project, "--rows", str(rows)], check=True)
    subprocess.run([tally, "report", project, "--report", "calculation-book", "--variant", "system",
                    "--spec", "给排水", "--format", "html", "-o", page], check=True)
    return page


def measure(page):
    """Milliseconds by action, and the number of rows."""
    with Browser() as browser:
        browser.open(page)
        browser.wait_for("return performance.getEntriesByName('first-contentful-paint').length;")
        load, paint = browser.run(OPENED)
        times = {"open the page, to its rows": max(load, paint)}
        for name, script in ACTIONS:
            times[name] = browser.run_async(TIMED, script)
        if faults := browser.messages():
            raise SystemExit(f"the page complains: {faults}")
        [head] = browser.texts("script.table")
    return times, json.loads(head)["rows"]


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--tally", default="build/release/tally")
    parser.add_argument("--rows", type=int, default=250000, help="consumption rows of the project")
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--page", help="a page of one table, instead of the project's")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        page = arguments.page or make_page(arguments.tally, arguments.rows, pathlib.Path(folder))
        runs = [measure(page) for _ in range(arguments.runs)]
        size = pathlib.Path(page).stat().st_size
    print(f"{runs[0][1]} rows, {size / 1e6:.1f} MB, {arguments.runs} runs")
    print(f"{'':28}{'median ms':>10}{'worst ms':>10}")
    for name in runs[0][0]:
        times = [run[0][name] for run in runs]
        print(f"{name:28}{statistics.median(times):10.0f}{max(times):10.0f}")


main()
