"""Proves that the engine and the other programs give the same answers, before they are timed."""

import math

TOLERANCE = 1e-9


class Disagreement(Exception):
    """Two programs answer differently."""


def require(holds, text):
    if not holds:
        raise Disagreement(text)


def close(a, b, scale=0.0):
    return abs(a - b) <= TOLERANCE * max(abs(a), abs(b), scale)


def groups_of(rows):
    return {tuple(row[:-1]): row[-1] for row in rows}


def total_of(groups):
    return next((total for keys, total in groups.items() if all(key is None for key in keys)), 0.0)


def compare_peers(answers, others, name):
    """Every case has the same groups, and each sum and the total are those of the first peer."""
    for case, rows in answers.items():
        expected, found = groups_of(rows), groups_of(others[case])
        require(len(found) == len(others[case]), f"{name}, {case}: a group comes twice")
        require(expected.keys() == found.keys(),
                f"{name}, {case}: {len(found)} groups instead of {len(expected)}")
        for keys, quantity in expected.items():
            require(close(quantity, found[keys]), f"{name}, {case}: another sum of {keys}")


def is_printed(cell, quantity):
    """Whether the cell is the quantity in six significant digits."""
    if quantity == 0:
        return float(cell) == 0
    unit = 10.0 ** (math.floor(math.log10(abs(quantity))) - 5)
    return abs(float(cell) - quantity) <= unit / 2 * (1 + 1e-6) + TOLERANCE * abs(quantity)


class EngineRows:
    """The quantities of the engine's rows, filed under what stands above them."""

    def __init__(self, rows):
        self.quantities = {}
        self.duplicates = 0
        self.spec = self.kind = self.attr = self.item = self.floor = None
        self.codes = ()
        for marker, *cells in rows:
            self.take(marker, cells)

    def put(self, *key, quantity):
        self.duplicates += key in self.quantities
        self.quantities[key] = quantity

    def take(self, marker, cells):
        if marker == "spec":
            self.spec = cells[0]
        elif marker == "@Cg":
            self.kind = cells[0]
        elif marker == "@A":
            self.attr = cells[0]
            self.put("attribute", self.spec, self.kind, self.attr, quantity=cells[-1])
        elif marker == "@CI":
            self.item = cells[0]
            self.put("item", self.spec, self.kind, self.attr, self.item, quantity=cells[-1])
        elif marker == "@F":
            self.floor = cells[0]
            self.put("floor", self.spec, self.kind, self.attr, self.item, self.floor,
                     quantity=cells[-1])
        else:
            self.codes = self.codes[:int(marker[2:]) - 1] + (cells[0],)
            self.put("code", self.spec, self.kind, self.attr, self.item, self.floor, self.codes,
                     quantity=cells[-1])


class ExpectedRows:
    """The rows that the report has to show for the groups of a query."""

    SHOWN_CODES = 3

    def __init__(self, case, rows, flat):
        self.quantities = {}
        self.titles = flat.code_titles()
        main_items = flat.main_items
        names = [flat.names[key].names for key in ("spec", "kind", "attr", "item", "floor", "code")]
        for *keys, quantity in rows:
            if None in keys:
                continue
            texts = [names[i][key] for i, key in enumerate(keys)]
            spec, kind, attr = texts[:3]
            if case.endswith("-0"):
                self.add(quantity, "attribute", spec, kind, attr)
                continue
            item, floor, code = texts[3:]
            is_main = item == main_items.get((spec, kind))
            self.add(quantity if is_main else 0.0, "attribute", spec, kind, attr)
            self.add(quantity, "item", spec, kind, attr, item)
            if is_main:
                self.add(quantity, "floor", spec, kind, attr, item, floor)
                shown = self.code_rows(spec, code)
                for depth in range(1, len(shown) + 1):
                    self.add(quantity, "code", spec, kind, attr, item, floor, shown[:depth])

    def code_rows(self, spec, code):
        """The titles of the rows of a code. One of other than three levels has a leaf more, which
        repeats its last level behind a "*"."""
        levels = tuple(code.split("\\"))
        titles = [self.titles.get((spec, levels[:depth]), levels[depth - 1])
                  for depth in range(1, len(levels) + 1)]
        if len(levels) != self.SHOWN_CODES:
            titles.append("*" + titles[-1])
        return tuple(titles[:self.SHOWN_CODES])

    def add(self, quantity, *key):
        self.quantities[key] = self.quantities.get(key, 0.0) + quantity


class LeftOutRows:
    """Of the codes below one row the report shows those with a sort number, and one of those that
    the project's list does not know, for they share a number. Sums count all of them."""

    def __init__(self, flat, expected, found):
        titles = flat.code_titles()
        self.numbered = {(spec, tuple(titles.get((spec, levels[:depth]), levels[depth - 1])
                                      for depth in range(1, len(levels) + 1)))
                         for spec, levels in titles}
        self.found = found
        self.shown = set()  # rows that show one code without a number below them
        for key in expected:
            if key in found and self.has_no_number(key):
                self.shown.add((*key[:-1], key[-1][:-1]))

    def has_no_number(self, key):
        return key[0] == "code" and (key[1], key[-1]) not in self.numbered

    def explains(self, key):
        """Whether the row, or one above it, is such a further code."""
        if key[0] != "code":
            return False
        *place, codes = key
        for depth in range(2, len(codes) + 1):
            above = (*place, codes[:depth])
            if above not in self.found and self.has_no_number(above):
                return (*place, codes[:depth - 1]) in self.shown
        return False


def compare_engine(answers, reference, flat):
    """The engine's records add up to the total of the reference, and each of its rows is the group
    of the reference in six digits. None is too many, and none missing but by the rule of
    LeftOutRows. Answers for each case how many rows there are and how many the rule leaves out."""
    counts = {}
    for case, answer in answers["cases"].items():
        total = total_of(groups_of(reference[case]))
        require(close(answer["sum"], total),
                f"engine, {case}: the records add up to {answer['sum']!r}, not {total!r}")
        rows = EngineRows(answer["rows"])
        require(rows.duplicates == 0, f"engine, {case}: {rows.duplicates} rows come twice")
        found = rows.quantities
        expected = ExpectedRows(case, reference[case], flat).quantities
        added = found.keys() - expected.keys()
        require(not added, f"engine, {case}: {len(added)} rows too many, {sample(added)}")
        rule = LeftOutRows(flat, expected, found)
        missing = expected.keys() - found.keys()
        lost = {key for key in missing if not rule.explains(key)}
        require(not lost, f"engine, {case}: {len(lost)} rows missing, {sample(lost)}")
        for key, cell in found.items():
            require(is_printed(cell, expected[key]),
                    f"engine, {case}: {cell} instead of {expected[key]!r} for {key}")
        counts[case] = {"rows": len(found), "left_out": len(missing)}
    return counts


def sample(keys):
    return "such as " + min(map(str, keys), default="")
