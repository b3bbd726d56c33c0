"""Turns the consumption set of a project database into one plain table for the other programs."""

import json
import sqlite3

KEYS = ["spec", "kind", "attr", "item", "floor", "code"]
SHOWN_KEYS = ["spec", "kind", "attr", "item", "shown_floor", "shown_code"]
COLUMNS = KEYS + ["shown_floor", "shown_code", "is_main", "quantity"]
NOT_SHOWN = 0  # in place of the floor and code of an item that the report shows by one row alone


def floor_count(text):
    """How many floors a floor text stands for: "a,b" are those from a to b, "a/b/c" those named."""
    if "/" in text:
        return text.count("/") + 1
    if "," in text:
        first, last = text.split(",")
        return int(last) - int(first) + 1
    return 1


class Names:
    """The names of one column as numbers from 1, in the order of the names."""

    def __init__(self, names):
        self.names = [None] + sorted(set(names))
        self.numbers = {name: number for number, name in enumerate(self.names)}


class FlatTable:
    """The rows of the set with the dictionaries joined and names as small numbers, in a CSV file."""

    def __init__(self, project, main_items):
        self.database = sqlite3.connect(f"file:{project}?mode=ro", uri=True)
        self.main_items = {(s, f"{c}\\{k}"): item for s, c, k, item in main_items}
        self.texts = {
            "spec": self.dictionary("SELECT id, name FROM spec"),
            "kind": self.dictionary("SELECT id, category || '\\' || kind FROM category"),
            "attr": self.dictionary("SELECT id, name FROM attr"),
            "item": self.dictionary("SELECT id, name FROM cal_item"),
            "floor": self.dictionary("SELECT id, name FROM floor"),
            "code": self.dictionary("SELECT id, name FROM sys_code"),
        }
        self.names = {key: Names(texts.values()) for key, texts in self.texts.items()}

    def dictionary(self, sql):
        return dict(self.database.execute(sql))

    def numbers(self, key):
        numbers = self.names[key].numbers
        return {record: numbers[text] for record, text in self.texts[key].items()}

    def write(self, path):
        spec, kind, attr, item, floor, code = (self.numbers(key) for key in KEYS)
        floors = {i: floor_count(text) for i, text in
                  self.database.execute("SELECT id, floor_text FROM floor")}
        quantities = self.dictionary("SELECT id, quantity FROM cal_item")
        main = {(spec_id, kind_id): self.names["item"].numbers.get(self.main_items.get((s, k)))
                for spec_id, s in self.texts["spec"].items()
                for kind_id, k in self.texts["kind"].items()}
        rows = self.database.execute(
            "SELECT spec, category, attr, cal_item, floor, sys_code FROM hz_row ORDER BY id")
        with open(path, "w", encoding="ascii") as out:
            out.write(",".join(COLUMNS) + "\n")
            for s, k, a, i, f, c in rows:
                is_main = main[s, k] == item[i]
                shown = f"{floor[f]},{code[c]},1" if is_main else f"{NOT_SHOWN},{NOT_SHOWN},0"
                out.write(f"{spec[s]},{kind[k]},{attr[a]},{item[i]},{floor[f]},{code[c]},{shown},"
                          f"{quantities[i] * floors[f]!r}\n")

    def code_titles(self):
        """For each discipline and system code path: its title, the name with the remark."""
        titles = {}
        for spec, path, remark in self.database.execute(
                "SELECT spec, sys_code, remark FROM all_sys_code"):
            levels = tuple(path.split("&"))
            titles[spec, levels] = levels[-1] + (f"({remark})" if remark else "")
        return titles


def query_cases(answers, names):
    """The engine's cases as the other programs ask them. "shown" asks as deep as the report shows:
    the items that are not the main one of their kind stop at the item."""
    cases = []
    for name, answer in answers["cases"].items():
        numbers = {key: names[key].numbers for key in KEYS}
        case = {"name": name, "spec": None, "floor": None, "codes": None}
        if "spec" in answer:
            case["spec"] = numbers["spec"][answer["spec"]]
        if "floor" in answer:
            case["floor"] = numbers["floor"][answer["floor"]]
        if "codes" in answer:
            case["codes"] = sorted(numbers["code"][code] for code in answer["codes"])
        if name.endswith("-0"):
            cases.append({**case, "keys": KEYS[:3], "only_main": True})
        else:
            cases.append({**case, "keys": KEYS, "only_main": False})
            shown = name.removesuffix("deepest") + "shown"
            cases.append({**case, "name": shown, "keys": SHOWN_KEYS, "only_main": False})
    return cases


def write_cases(path, cases):
    with open(path, "w", encoding="ascii") as out:
        json.dump(cases, out)
