"""SQLite's own GROUP BY on the comparison's table, in memory."""

import csv
import sqlite3

import peer_worker
from project import COLUMNS


def where(case):
    tests = ["1"]
    if case["spec"] is not None:
        tests.append(f"spec = {case['spec']}")
    if case["floor"] is not None:
        tests.append(f"floor = {case['floor']}")
    if case["codes"] is not None:
        tests.append(f"code IN ({','.join(map(str, case['codes']))})")
    if case["only_main"]:
        tests.append("is_main = 1")
    return " AND ".join(tests)


class Peer:
    version = sqlite3.sqlite_version

    def __init__(self, table):
        self.database = sqlite3.connect(":memory:")
        types = ", ".join(f"{name} INTEGER" for name in COLUMNS[:-1])
        self.database.execute(f"CREATE TABLE flat ({types}, quantity REAL)")
        with open(table, encoding="ascii", newline="") as file:
            rows = csv.reader(file)
            next(rows)
            self.database.executemany(
                f"INSERT INTO flat VALUES ({','.join('?' * len(COLUMNS))})", rows)

    def ask(self, case):
        """SQLite has no ROLLUP: the deepest groups are made once, and the others from them."""
        keys = case["keys"]
        all_keys = ", ".join(keys)
        parts = [f"SELECT {all_keys}, quantity FROM deepest"]
        for depth in range(len(keys) - 1, -1, -1):
            kept = keys[:depth]
            columns = ", ".join(kept + ["NULL"] * (len(keys) - depth))
            group = f" GROUP BY {', '.join(kept)}" if kept else ""
            parts.append(f"SELECT {columns}, sum(quantity) FROM deepest{group}")
        order = ", ".join(str(column) for column in range(1, len(keys) + 1))
        return self.database.execute(
            f"WITH deepest AS MATERIALIZED (SELECT {all_keys}, sum(quantity) AS quantity FROM flat "
            f"WHERE {where(case)} GROUP BY {all_keys}) "
            f"{' UNION ALL '.join(parts)} ORDER BY {order}").fetchall()

    @staticmethod
    def plain(_case, rows):
        return rows


if __name__ == "__main__":
    peer_worker.serve(Peer)
