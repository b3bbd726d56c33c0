"""pandas' groupby on the comparison's table."""

import pandas

import peer_worker
from project import COLUMNS

ROLLED_UP = -1


class Peer:
    version = pandas.__version__

    def __init__(self, table):
        types = {name: "int32" for name in COLUMNS[:-1]} | {"quantity": "float64"}
        self.table = pandas.read_csv(table, dtype=types, float_precision="round_trip")

    def ask(self, case):
        table = self.table
        keys = case["keys"]
        tests = []
        if case["spec"] is not None:
            tests.append(table["spec"] == case["spec"])
        if case["floor"] is not None:
            tests.append(table["floor"] == case["floor"])
        if case["codes"] is not None:
            tests.append(table["code"].isin(case["codes"]))
        if case["only_main"]:
            tests.append(table["is_main"] == 1)
        if tests:
            chosen = tests[0]
            for test in tests[1:]:
                chosen &= test
            table = table[chosen]
        groups = table.groupby(keys, sort=False, observed=True)["quantity"].sum().reset_index()
        levels = [groups]
        for depth in range(len(keys) - 1, 0, -1):
            groups = groups.groupby(keys[:depth], sort=False)["quantity"].sum().reset_index()
            levels.append(groups.assign(**{key: ROLLED_UP for key in keys[depth:]}))
        total = {key: [ROLLED_UP] for key in keys} | {"quantity": [groups["quantity"].sum()]}
        levels.append(pandas.DataFrame(total))
        rows = pandas.concat(levels, ignore_index=True)[keys + ["quantity"]]
        return rows.sort_values(keys, ignore_index=True)

    @staticmethod
    def plain(_case, rows):
        return [[None if key == ROLLED_UP else int(key) for key in row[:-1]] + [row[-1]]
                for row in rows.itertuples(index=False, name=None)]


if __name__ == "__main__":
    peer_worker.serve(Peer)
