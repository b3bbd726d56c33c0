"""Measures one project of one size: the engine and the other programs in turns."""

import pathlib
import re
import shutil
import time

import check
import project
from programs import Peer


class Plan:
    """How much is measured."""

    def __init__(self, repeats, seconds, checks=True):
        self.repeats = repeats
        self.seconds = seconds  # least time that a benchmark is repeated for in a run
        self.checks = checks  # whether every report is checked before it is timed


class Comparison:
    """The consumption summary of one project file, asked of the engine and of each peer."""

    def __init__(self, engine, commands, folder, rows, shape):
        self.engine = engine
        self.project = folder / "project.tally"
        engine.write_project(self.project, rows, shape)
        answers = engine.answers(self.project, folder / "engine.json")
        flat = project.FlatTable(self.project, answers["mainItems"])
        begin = time.perf_counter()
        flat.write(folder / "flat.csv")
        self.result = {"export_ms": (time.perf_counter() - begin) * 1000, "peers": {},
                       "engine": {}, "records": {name: case["records"]
                                                 for name, case in answers["cases"].items()}}
        cases = folder / "cases.json"
        project.write_cases(cases, project.query_cases(answers, flat.names))
        self.peers = {name: Peer(command, folder / "flat.csv", cases)
                      for name, command in commands.items() if command}
        self.prove(answers, flat, folder)

    def prove(self, answers, flat, folder):
        reference = None
        for name, peer in self.peers.items():
            found = peer.answers(folder / f"{name}.json")
            if reference is None:
                reference = found
                self.result["rows"] = check.compare_engine(answers, reference, flat)
            else:
                check.compare_peers(reference, found, name)
            self.result["peers"][name] = {**peer.start, "cases": {}}

    def run(self, plan):
        """One turn of each."""
        measured, _ = self.engine.measure(f"--peers={self.project}", seconds=plan.seconds)
        for name, entry in measured.items():
            case = name.removeprefix("peers/")
            self.result["engine"].setdefault(case, []).append(entry["real_time"])
        for name, peer in self.peers.items():
            cases = self.result["peers"][name]["cases"]
            for case, entry in peer.order("run", plan.seconds).items():
                kept = cases.setdefault(case, {"rows": entry["rows"], "ms": []})
                kept["ms"].append(entry["ms"])

    def close(self):
        for peer in self.peers.values():
            peer.close()


def measure(engine, commands, folder, rows, shape, plan, say):
    """All phases of the engine and the comparison, `plan.repeats` times in turns."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    say("checking that the programs agree")
    comparison = Comparison(engine, commands, folder, rows, shape)
    phases = {}
    context = {}
    try:
        for turn in range(plan.repeats):
            say(f"turn {turn + 1} of {plan.repeats}")
            flags = [f"--rows={rows}", f"--shape={shape}", f"--project={comparison.project}",
                     "--benchmark_filter=/(fold|request-.*|copy|cold)/"]
            # What one run has checked is the same in the next.
            flags += ["--no-checks"] if turn > 0 or not plan.checks else []
            measured, context = engine.measure(*flags, seconds=plan.seconds)
            for name, entry in measured.items():
                phases.setdefault(name.removesuffix(f"/{rows}"), []).append(entry)
            comparison.run(plan)
    finally:
        comparison.close()
    shutil.rmtree(folder, ignore_errors=True)
    return {"phases": phases, "comparison": comparison.result, "repeats": plan.repeats,
            "context": {key: context.get(key, "") for key in ("compiler", "flags")}}


STATS_LINE = re.compile(r"^(\w+)\s+([0-9.]+)(?: (\w+))?$")


def read_stats(text):
    """The numbers of the lines that --stats prints, times in ms."""
    stats = {}
    for line in text.splitlines():
        found = STATS_LINE.match(line)
        if found:
            stats[found[1]] = float(found[2])
    return stats


def measure_exports(engine, folder, rows, formats, repeats, run):
    """`run(command)` answers the exit status, the seconds and what went to standard error."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    file = folder / "project.tally"
    engine.write_project(file, rows, "example")
    results = {}
    for turn in range(repeats):
        for name in formats:
            target = folder / f"{turn}-{name}"
            status, seconds, words = run([engine.tally, "report", str(file), "--all", "--format",
                                          name, "-o", str(target), "--stats"])
            if status != 0:
                results[name] = {"failure": words.strip()}
                continue
            result = results.setdefault(name, {"seconds": [], "stats": []})
            result["seconds"].append(seconds)
            result["stats"].append(read_stats(words))
            result["text"] = words
            result["bytes"] = size_of(target)
            remove(target)
    shutil.rmtree(folder, ignore_errors=True)
    return {"rows": rows, "formats": results}


def size_of(path):
    path = pathlib.Path(path)
    if path.is_dir():
        return sum(each.stat().st_size for each in path.iterdir())
    return path.stat().st_size


def remove(path):
    if path.is_dir():
        shutil.rmtree(path)
    else:
        path.unlink()
