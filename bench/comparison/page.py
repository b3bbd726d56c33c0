"""Writes the page of results."""

import statistics

FOLD_ROWS = 2.5e6  # rows a second, at least
COLD_PER_STEP = 2.5
DEEPEST_PER_COPY = 2.0
PER_DUCKDB = 0.5
FILTER_PER_SHARE = 2.0  # of the time that the share of rows would take
GROWTH = 0.30
BYTES_PER_ROW = 350
PEAK_PER_SIZE = 1.5
SHAPE_FACTOR = 1.5

CASES = {"all": "every discipline", "discipline": "one discipline", "floor": "one floor of it",
         "code": "one system code of it"}
LEVELS = {"0": "level 0", "deepest": "deepest"}
PEERS = ("DuckDB", "SQLite", "pandas")


def median(values):
    return statistics.median(values) if values else None


def number(value, digits=2):
    return "" if value is None else f"{value:,.{digits}f}"


class Page:
    """Lines of Markdown, and what is not met."""

    def __init__(self):
        self.lines = []
        self.not_met = []

    def add(self, text=""):
        self.lines.append(text)

    def section(self, title, text):
        self.lines += ["", f"## {title}", "", text, ""]

    def table(self, head, rows):
        self.add("| " + " | ".join(head) + " |")
        self.add("|---|" + "--:|" * (len(head) - 1))
        for row in rows:
            self.add("| " + " | ".join(row) + " |")

    def verdict(self, topic, subject, missed):
        """`missed`: where the target is missed, with the value. Answers the last cell."""
        if missed:
            self.not_met.append((topic, subject, ", ".join(missed)))
            return "not met"
        return "met"


class Results:
    """What was measured, by shape and rows."""

    def __init__(self, measured):
        self.measured = measured
        self.sizes = sorted(rows for shape, rows in measured if shape == "example")
        self.reports = [name.removesuffix("/fold")
                        for name in measured["example", self.sizes[0]]["phases"]
                        if name.endswith("/fold")]

    def value(self, rows, phase, key, shape="example"):
        runs = self.measured[shape, rows]["phases"].get(phase)
        return median([run[key] for run in runs]) if runs else None

    def growth(self, before, after, phase):
        """How much more a row takes in the larger project; the rows of both are counted."""
        return (self.per_row(after, phase) / self.per_row(before, phase)) - 1

    def per_row(self, rows, phase, shape="example"):
        """Processor time in ns. Elapsed time and rows per second tell the rows."""
        counted = self.value(rows, phase, "rows_per_s", shape) * \
            self.value(rows, phase, "real_time", shape) / 1000
        return self.value(rows, phase, "cpu_time", shape) * 1e6 / counted

    def comparison(self, rows, shape="example"):
        return self.measured[shape, rows]["comparison"]

    def engine_ms(self, rows, case, shape="example"):
        return median(self.comparison(rows, shape)["engine"].get(case, []))

    def peer_ms(self, rows, peer, case, shape="example"):
        cases = self.comparison(rows, shape)["peers"].get(peer, {}).get("cases", {})
        return median(cases.get(case, {}).get("ms", []))

    def fastest(self, rows, peer, case, shape="example"):
        """The deepest groups may be asked for as deep as the report shows, if that is faster."""
        asked = [case, case.removesuffix("deepest") + "shown"] if case.endswith("-deepest") \
            else [case]
        times = [time for time in (self.peer_ms(rows, peer, each, shape) for each in asked)
                 if time is not None]
        return min(times) if times else None

    def per_duckdb(self, rows, case, shape="example"):
        time = self.fastest(rows, "DuckDB", case, shape)
        return None if time is None else self.engine_ms(rows, case, shape) / time


def rows_text(rows):
    return f"{rows:,}"


def add_size_table(page, results, topic, target, values, misses, digits=2):
    """A line for each report, a column for each size. `values(report, rows)` may be None."""
    lines = []
    for report in results.reports:
        found = [(rows, values(report, rows)) for rows in results.sizes]
        missed = [f"{number(value, digits)} at {rows_text(rows)}" for rows, value in found
                  if value is not None and misses(value)]
        lines.append([report] + [number(value, digits) for _, value in found] +
                     [target, page.verdict(topic, report, missed)])
    page.table(["Report"] + [rows_text(rows) for rows in results.sizes] + ["target", ""], lines)


def add_peers(page, results):
    page.section("Beside other programs", """\
The consumption summary of the example project, asked of the engine and of three programs that group
rows, each on one thread. The programs get the same rows with the dictionaries joined beforehand,
quantities times floors worked out and every name a small number in the order of the names, which is
their fastest form; all rows are fetched, sorted, and grouped by `ROLLUP` over discipline, kind and
attribute (level 0, main calculation item only) or over discipline, kind, attribute, calculation
item, floor and system code (deepest). SQLite has no `ROLLUP`: its deepest groups are made once and
the upper ones from them, as for pandas. The engine has its report folded. It prints texts, splits
system codes into their levels, lists the components behind each and has its own order of rows; the
items that are not the main one of their kind it shows by one row. "as shown" asks the programs for
that too; the ratio takes whichever of the two is faster. Times in ms.""")
    for rows in results.sizes:
        lines = []
        comparison = results.comparison(rows)
        for name, words in CASES.items():
            for level, level_words in LEVELS.items():
                case = f"{name}-{level}"
                ratio = results.per_duckdb(rows, case)
                missed = [number(ratio)] if ratio is not None and ratio > PER_DUCKDB else []
                verdict = page.verdict(f"time over DuckDB's, {rows_text(rows)} rows",
                                       f"{words}, {level_words}", missed)
                lines.append([f"{words}, {level_words}", rows_text(comparison["rows"][case]["rows"])] +
                             [shown_groups(comparison, case)] +
                             [number(results.engine_ms(rows, case))] +
                             [peer_cell(results, rows, peer, case) for peer in PEERS] +
                             [number(ratio), "≤ 0.5", verdict if ratio is not None else ""])
                if level == "deepest":
                    shown = f"{name}-shown"
                    lines.append([f"{words}, as shown", "", shown_groups(comparison, shown), ""] +
                                 [peer_cell(results, rows, peer, shown) for peer in PEERS] +
                                 ["", "", ""])
        page.add(f"{rows_text(rows)} rows:")
        page.add()
        page.table(["Rows asked for", "engine's rows", "groups", "engine", *PEERS,
                    "engine / DuckDB", "target", ""], lines)
        page.add()
    add_agreement(page, results)


def shown_groups(comparison, case):
    for peer in comparison["peers"].values():
        return rows_text(peer["cases"][case]["rows"])
    return ""


def peer_cell(results, rows, peer, case):
    if peer not in results.comparison(rows)["peers"]:
        return "missing"
    return number(results.peer_ms(rows, peer, case))


def add_agreement(page, results):
    page.add("""\
Before a time was taken all answers were compared: the programs have the same groups, with sums equal
within 1e-9; the engine's records add up to the same totals within 1e-9; and the engine has the rows
that follow from the groups, each with the group's sum in six significant digits, which is what it
prints. A row of a system code stands for all codes below it, down to the third level. Where several
codes below one row are unknown to the project's list, they share a sort number and the report shows
one of them, as it has to; the rows left out by that rule are counted below, any other difference
makes the comparison fail.""")
    page.add()
    page.table(["Project", "engine's rows, every discipline", "left out"], [
        [f"{shape}, {rows_text(rows)} rows", rows_text(each["rows"]), rows_text(each["left_out"])]
        for shape, rows in results.measured
        for each in [results.comparison(rows, shape)["rows"]["all-deepest"]]])
    page.add()
    page.add("Preparing took:")
    page.add()
    lines = []
    for rows in results.sizes:
        comparison = results.comparison(rows)
        cold = results.value(rows, "consumption-summary/cold", "real_time")
        lines.append([rows_text(rows), number(cold, 0), number(comparison["export_ms"], 0)] +
                     [number(comparison["peers"].get(peer, {}).get("prepare_ms"), 0)
                      or "missing" for peer in PEERS])
    page.table(["Rows", "engine: file to first rows, ms", "joined table from the file, ms"] +
               [f"{peer} loads it, ms" for peer in PEERS], lines)


def add_fold(page, results):
    page.section("Fold", """\
Millions of rows of the result set that one second of folding takes, with the set already read.""")
    add_size_table(page, results, "fold, M rows/s", "≥ 2.5",
                   lambda report, rows: 1e3 / results.per_row(rows, f"{report}/fold"),
                   lambda value: value < FOLD_ROWS / 1e6)


def add_cold(page, results):
    page.section("Cold start", """\
From opening the file to the rows of the first deepest request, over what SQLite's C interface takes
to step through the same tables and fetch every column, in the same run. The file is in the system's
cache. Processor time of both.""")
    add_size_table(page, results, "cold / stepping", "≤ 2.5",
                   lambda report, rows: results.value(rows, f"{report}/cold", "per_step"),
                   lambda value: value > COLD_PER_STEP)
    largest = results.sizes[-1]
    page.add()
    page.add(f"In ms at {rows_text(largest)} rows:")
    page.add()
    page.table(["Report", "rows of its set", "cold", "stepping"], [
        [report, rows_text(round(results.value(largest, f"{report}/cold", "rows"))),
         number(results.value(largest, f"{report}/cold", "cpu_time"), 1),
         number(results.value(largest, f"{report}/cold", "step_ms"), 1)]
        for report in results.reports])


def add_deepest(page, results):
    page.section("Warm requests", """\
The deepest request for the discipline with the most rows, of a folded report, over copying its cells
once. A report that walks many rows to print few cells cannot come near its copy.""")
    add_size_table(page, results, "deepest / copy", "≤ 2",
                   lambda report, rows: results.value(rows, f"{report}/request-deepest",
                                                      "per_copy"),
                   lambda value: value > DEEPEST_PER_COPY)
    largest = results.sizes[-1]
    page.add()
    page.add(f"In ms at {rows_text(largest)} rows:")
    page.add()
    page.table(["Report", "cells", "deepest", "copy", "level 0"], [
        [report, rows_text(round(results.value(largest, f"{report}/copy", "cells"))),
         number(results.value(largest, f"{report}/request-deepest", "cpu_time")),
         number(results.value(largest, f"{report}/copy", "cpu_time")),
         number(results.value(largest, f"{report}/request-0", "cpu_time"))]
        for report in results.reports])


def add_filters(page, results):
    page.section("Filters", """\
A deepest request with one floor and with one system code chosen. Each cell is the share of the
discipline's rows that the filter selects and the share that it takes of the time with every floor
chosen, one by one: without a filter, sums made at the fold serve, and there is nothing to be in
proportion to. In proportion is a time share of at most twice the row share, or of no more than the
share of the cells, which a request has to write: those of a few rows can be many. Where that decides,
the share of the cells follows in brackets.""")
    lines = []
    for report in results.reports:
        cells = []
        missed = []
        for kind in ("floor", "code"):
            for rows in results.sizes:
                share = results.value(rows, f"{report}/request-{kind}", "selected")
                time = results.value(rows, f"{report}/request-{kind}", "cpu_time") / \
                    results.value(rows, f"{report}/request-every-floor", "cpu_time")
                cells.append(f"{share:.1%} → {time:.1%}")
                if time > FILTER_PER_SHARE * share:
                    shown = results.value(rows, f"{report}/request-{kind}", "cells") / \
                        results.value(rows, f"{report}/request-every-floor", "cells")
                    cells[-1] += f" ({shown:.1%})"
                    if time > shown:
                        missed.append(f"{kind} {cells[-1]} at {rows_text(rows)}")
        lines.append([report, *cells, "≤ 2 × rows or cells",
                      page.verdict("filters", report, missed)])
    heads = [f"{kind}, {rows_text(rows)}" for kind in ("floor", "code") for rows in results.sizes]
    page.table(["Report", *heads, "target", ""], lines)


def add_growth(page, results):
    if len(results.sizes) < 2:
        return
    page.section("Growth", """\
How much more processor time a row takes than in the project before it in size: folding / cold start
/ deepest request.""")
    pairs = list(zip(results.sizes, results.sizes[1:]))
    phases = ("fold", "cold", "request-deepest")
    lines = []
    for report in results.reports:
        cells = []
        missed = []
        for before, after in pairs:
            growths = [results.growth(before, after, f"{report}/{phase}") for phase in phases]
            cells.append(" / ".join(f"{growth:+.0%}" for growth in growths))
            missed += [f"{phase} {growth:+.0%} at {rows_text(after)}"
                       for phase, growth in zip(phases, growths) if growth >= GROWTH]
        lines.append([report, *cells, "< 30 %", page.verdict("growth", report, missed)])
    page.table(["Report", *(f"to {rows_text(after)}" for _, after in pairs), "target", ""], lines)


def add_memory(page, results):
    page.section("Memory", """\
Bytes of heap for each detail row of the project after opening its file and folding one report: the
result set, the folded report and the trees. The over-height set has an eighth of that number of
rows, the overview and fitting sets a quarter.""")
    add_size_table(page, results, "bytes a row", "≤ 350",
                   lambda report, rows: results.value(rows, f"{report}/cold", "bytes_per_row") *
                   results.value(rows, f"{report}/cold", "rows") / rows,
                   lambda value: value > BYTES_PER_ROW, digits=0)
    page.add()
    page.add("The most heap that a deepest request holds, its answer included, over the size of a "
             "copy of the answer:")
    page.add()
    add_size_table(page, results, "request memory / output", "≤ 1.5",
                   lambda report, rows: results.value(rows, f"{report}/request-deepest",
                                                      "peak_per_size"),
                   lambda value: value > PEAK_PER_SIZE)
    page.add()
    page.add("The first one also makes what the tree keeps for those to come. Heap that it holds, "
             "over the size of its answer:")
    page.add()
    add_size_table(page, results, "first request's memory / output", "≤ 1.5",
                   lambda report, rows: results.value(rows, f"{report}/fold",
                                                      "first_peak_per_size"),
                   lambda value: value > PEAK_PER_SIZE)


class Figure:
    """A figure of the other shapes, where less is better."""

    def __init__(self, head, target, value, words=number):
        self.head = head
        self.target = target  # of the example
        self.value = value  # by results, report, rows and shape; None where it is not measured
        self.words = words

    def limit(self):
        return self.target * SHAPE_FACTOR


def per_duckdb_of_consumption(case):
    def value(results, report, rows, shape):
        measured = results.value(rows, f"{report}/cold", "per_step", shape) is not None
        return results.per_duckdb(rows, case, shape) if measured else None
    return value


def of_phase(phase, key):
    return lambda results, report, rows, shape: results.value(rows, f"{report}/{phase}", key, shape)


def rows_a_second(nanoseconds):
    return number(1e3 / nanoseconds)


FIGURES = [
    Figure("fold, M rows/s", 1e9 / FOLD_ROWS,
           lambda results, report, rows, shape: results.per_row(rows, f"{report}/fold", shape),
           rows_a_second),
    Figure("deepest / copy", DEEPEST_PER_COPY, of_phase("request-deepest", "per_copy")),
    Figure("request memory / output", PEAK_PER_SIZE, of_phase("request-deepest", "peak_per_size")),
    Figure("first request's", PEAK_PER_SIZE, of_phase("fold", "first_peak_per_size")),
    Figure("cold / stepping", COLD_PER_STEP, of_phase("cold", "per_step")),
    Figure("bytes a row", BYTES_PER_ROW, of_phase("cold", "bytes_per_row"),
           lambda value: number(value, 0)),
    Figure("deepest / DuckDB's", PER_DUCKDB, per_duckdb_of_consumption("discipline-deepest")),
    Figure("level 0 / DuckDB's", PER_DUCKDB, per_duckdb_of_consumption("discipline-0")),
]

SHAPES = {
    "deep-codes": "300 system codes of ten to twelve levels",
    "many-attributes": "forty times the attributes, some 6,000",
    "one-floor": "everything on one floor",
    "one-kind": "one component kind alone",
}


def add_shapes(page, results):
    others = [(shape, rows) for shape, rows in results.measured if shape != "example"]
    if not others:
        return
    rows = others[0][1]
    page.section("Other shapes", f"""\
Projects that depart from the example building in one point each, {rows_text(rows)} rows, held against
the targets within a factor of 1.5, which the heads of the columns tell. In brackets stands the figure over
the example's of that size, where less is better; figures of more than 1.5 times the example's are
listed below each table, met or not. The file of such a project has the consumption set alone, so that
the cold start and the comparison with DuckDB are of the consumption summary.""")
    for shape, rows in others:
        phases = results.measured[shape, rows]["phases"]
        reports = [report for report in results.reports if f"{report}/fold" in phases]
        page.add(f"`{shape}`: {SHAPES[shape]}.")
        page.add()
        add_shape_table(page, results, shape, rows, reports)
        page.add()


def add_shape_table(page, results, shape, rows, reports):
    lines = []
    beyond = []
    for report in reports:
        cells = []
        missed = []
        departs = []
        for figure in FIGURES:
            ours = figure.value(results, report, rows, shape)
            if ours is None:
                cells.append("")
                continue
            factor = ours / figure.value(results, report, rows, "example")
            cells.append(f"{figure.words(ours)} ({number(factor)})")
            if ours > figure.limit():
                missed.append(f"{figure.head} {cells[-1]}")
            if factor > SHAPE_FACTOR:
                departs.append(f"{figure.head} {number(factor)}")
        lines.append([report, *cells, page.verdict(f"shape {shape}", report, missed)])
        beyond += [f"- {report}: {', '.join(departs)}"] if departs else []
    heads = [f"{figure.head} {'≥' if figure.words is rows_a_second else '≤'} "
             f"{figure.words(figure.limit())}" for figure in FIGURES]
    page.table(["Report", *heads, ""], lines)
    if beyond:
        page.add()
        page.add("More than 1.5 times the example's:")
        page.add()
        page.lines += beyond


def add_exports(page, exports):
    if not exports:
        return
    page.section("Exports", f"""\
`tally report FILE --all --format FORMAT -o OUT --stats` on the example project of
{rows_text(exports["rows"])} rows: every report of every discipline, each at its deepest level. The
time of the phase that writes is the writer's.""")
    lines = []
    for name, result in exports["formats"].items():
        if "failure" in result:
            lines.append([name, f"not measured: {result['failure']}", "", "", "", ""])
            continue
        write = median([stats.get("write", 0) for stats in result["stats"]])
        cells = result["stats"][0].get("cells", 0)
        lines.append([name, number(median(result["seconds"]), 2), number(write / 1000, 2),
                      rows_text(round(cells)),
                      rows_text(round(cells / write * 1000)) if write else "",
                      number(result["bytes"] / 2**20, 1)])
    page.table(["Format", "s", "of it writing, s", "cells", "cells/s written", "MiB"], lines)
    for name, result in exports["formats"].items():
        if "text" in result:
            page.lines += ["", f"What `--stats` says of the last run, {name}:", "", "```text",
                           *result["text"].rstrip("\n").splitlines(), "```"]


def not_met_lines(page):
    if not page.not_met:
        return ["Every target is met."]
    lines = ["## Not met", "", "Each line tells the values that miss their target. The targets are for "
             "1,000,000 rows; those of other sizes that miss them are told all the same.", ""]
    topic = None
    for each, subject, values in page.not_met:
        if each != topic:
            lines.append(f"- **{each}**")
            topic = each
        lines.append(f"  - {subject}: {values}")
    return lines


def write_page(measured, exports, machine, command):
    """`machine`: pairs of a name and a text."""
    results = Results(measured)
    page = Page()
    add_peers(page, results)
    add_fold(page, results)
    add_cold(page, results)
    add_deepest(page, results)
    add_filters(page, results)
    add_growth(page, results)
    add_memory(page, results)
    add_shapes(page, results)
    add_exports(page, exports)
    head = Page()
    head.lines += ["# Performance", "", "Written by `bench/compare`; bench/README.md tells how each "
                   "figure is taken.", "", *not_met_lines(page), "", "## Machine", ""]
    head.lines += [f"- {name}: {text}" for name, text in machine]
    head.lines += ["", "Taken by:", "", f"    {command}"]
    return "\n".join(head.lines + page.lines).rstrip("\n") + "\n"
