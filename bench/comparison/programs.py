"""The programs that take part, and how they are run."""

import json
import os
import pathlib
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
# One thread each, and no compiled files beside the sources.
SURROUNDINGS = {name: "1" for name in
                ("OMP_NUM_THREADS", "OPENBLAS_NUM_THREADS", "MKL_NUM_THREADS",
                 "NUMEXPR_NUM_THREADS", "PYTHONDONTWRITEBYTECODE")}


def output_of(command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          check=False, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{command[0]} failed: {done.stderr.strip() or done.stdout.strip()}")
    return done.stdout


class Engine:
    """tally_bench, whose timings are used as they are, and the program tally."""

    def __init__(self, build_folder):
        self.bench = str(build_folder / "bench" / "tally_bench")
        self.tally = str(build_folder / "tally")

    def write_project(self, path, rows, shape):
        output_of([self.bench, f"--write={path}", f"--rows={rows}", f"--shape={shape}"])

    def answers(self, project, path):
        output_of([self.bench, f"--peers={project}", f"--answers={path}"])
        with open(path, encoding="utf-8") as file:
            return json.load(file)

    def measure(self, *flags, seconds):
        """Name, processor time, elapsed time and counters of every benchmark that the flags take,
        and what the program says of itself."""
        command = [self.bench, "--benchmark_format=json", f"--benchmark_min_time={seconds}",
                   *flags]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              check=False)
        if not done.stdout:
            raise RuntimeError(f"tally_bench failed: {done.stderr.strip()}")
        out = json.loads(done.stdout)
        results = {}
        for entry in out["benchmarks"]:
            if entry.get("error_occurred"):
                raise RuntimeError(f"{entry['name']}: {entry['error_message']}")
            name = entry["name"].removesuffix("/real_time")
            results[name] = {key: value for key, value in entry.items()
                             if isinstance(value, (int, float))}
        return results, out["context"]


class Peer:
    """A worker of another program that holds the table of one project (peer_worker.py)."""

    def __init__(self, command, table, cases):
        self.process = subprocess.Popen(
            [*command, str(table), str(cases)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            text=True, env={**os.environ, **SURROUNDINGS})
        self.start = self.reply()

    def reply(self):
        line = self.process.stdout.readline()
        if not line:
            raise RuntimeError(f"{self.process.args[1]} ended with {self.process.wait()}")
        return json.loads(line)

    def order(self, command, argument):
        self.process.stdin.write(f"{command} {argument}\n")
        self.process.stdin.flush()
        return self.reply()

    def answers(self, path):
        self.order("answers", path)
        with open(path, encoding="ascii") as file:
            return json.load(file)

    def close(self):
        self.process.stdin.close()
        self.process.wait()
        self.process.stdout.close()


def python_with_pandas():
    for python in dict.fromkeys((sys.executable, "/usr/bin/python3")):
        probe = subprocess.run([python, "-c", "import pandas"], stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, check=False)
        if probe.returncode == 0:
            return python
    return None


def peer_commands(peers_folder):
    """For each program the command of its worker, or None where it is not installed."""
    pandas = python_with_pandas()
    node = shutil.which("node")
    has_duckdb = (peers_folder / "node_modules" / "@duckdb" / "node-api").is_dir()
    return {
        "SQLite": [sys.executable, str(HERE / "peer_sqlite.py")],
        "DuckDB": [node, str(HERE / "peer_duckdb.mjs"), str(peers_folder)]
                  if node and has_duckdb else None,
        "pandas": [pandas, str(HERE / "peer_pandas.py")] if pandas else None,
    }


def install_peers(peers_folder):
    """DuckDB from the registry that npm is configured for; pandas is Debian's python3-pandas."""
    peers_folder.mkdir(parents=True, exist_ok=True)
    output_of(["npm", "install", "--no-save", "--no-package-lock", "--prefix", str(peers_folder),
               "@duckdb/node-api"])
