#!/usr/bin/python3
"""Installs a build of Tally, and builds and runs programs against the copy.

    check_package.py --build FOLDER --work FOLDER [--shared] --compiler CXX

With --shared a build with shared libraries is made first, inside the work folder. Any difference is
an exception that tells it.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(SOURCE / "scripts"))
from check_includes import STANDARD_HEADERS  # noqa: E402

CONSUMPTION = "给排水: 管道长度 22.1 m\n给排水: 构件数量 1 个\n"


def run(*command, **options):
    result = subprocess.run(
        [str(word) for word in command], capture_output=True, text=True, encoding="utf-8", **options
    )
    if result.returncode != 0:
        shown = " ".join(str(word) for word in command)
        raise SystemExit(f"{shown}: status {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout


def expect(what, found, wanted):
    if found != wanted:
        raise SystemExit(f"{what}:\n{found!r}\nand not\n{wanted!r}")


def build_shared(folder, compiler):
    """A build of the libraries alone, without debug information to be quick."""
    run(
        "cmake", "-S", SOURCE, "-B", folder, "-G", "Ninja", "-DBUILD_SHARED_LIBS=ON",
        "-DTALLY_BUILD_HOST=OFF", "-DTALLY_STRICT=ON", "-DCMAKE_BUILD_TYPE=Debug",
        "-DCMAKE_CXX_FLAGS_DEBUG=-O0", f"-DCMAKE_CXX_COMPILER={compiler}",
    )  # fmt: skip
    run("cmake", "--build", folder, "--parallel", "2")


def check_headers(folder):
    """An installed header needs the standard library and installed headers."""
    headers = sorted(folder.rglob("*.h"))
    if not headers:
        raise SystemExit(f"no header in {folder}")
    for header in headers:
        for name, own in re.findall(r'^#include (?:<([^>]+)>|"([^"]+)")', header.read_text(), re.M):
            if own and not (folder / own).is_file():
                raise SystemExit(f"{header} includes {own}, which is not installed")
            if name and name not in STANDARD_HEADERS:
                raise SystemExit(f"{header} includes <{name}>")
    for hidden in ("platform/portable", "host"):
        if (folder / hidden).exists():
            raise SystemExit(f"{folder / hidden} is installed")


def check_exported_flags(folder):
    """The developers' flags and folders stay at home."""
    for file in [*folder.rglob("*.cmake"), *folder.rglob("*.pc")]:
        text = file.read_text()
        for word in ("developer_flags", "-Wall", "-Werror", "-fvisibility", str(SOURCE)):
            if word in text:
                raise SystemExit(f"{file} mentions {word}")


def check_hidden_names(library):
    names = run("nm", "--dynamic", "--defined-only", "--demangle", library)
    functions = [line.split(" ", 2)[2] for line in names.splitlines() if " T " in line]
    for shown in ("CReportMng::Instance()", "CXhlHzReport::GetXhlHzData("):
        if not any(name.startswith(shown) for name in functions):
            raise SystemExit(f"{library} hides {shown}")
    for hidden in ("CSqlite", "CReportDataMethod", "CSummaryWalk", "Utf8FromWide"):
        found = [name for name in functions if name.startswith(hidden)]
        if found:
            raise SystemExit(f"{library} lets out {found[0]}")
    version = re.search(r"SONAME.*\[(.*)\]", run("readelf", "--dynamic", library)).group(1)
    expect("name of the shared library", version, "libtally.so.0.1")


def check_programs(folder, database, environment, rows_alone):
    expect(
        "output of minimal_host",
        run(folder / "minimal_host", database, env=environment),
        CONSUMPTION,
    )
    own = run(folder / "own_records", env=environment)
    expect("first line of own_records", own.partition("\n")[0], "  构件类型 管道\\给水管")
    if rows_alone:
        expect("output of rows_alone", run(rows_alone, env=environment), "3 cells, 2.5\n")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--shared", action="store_true")
    arguments = parser.parse_args()

    work = arguments.work.resolve()
    work.mkdir(parents=True, exist_ok=True)
    build = arguments.build
    if arguments.shared:
        build = work / "build"
        build_shared(build, arguments.compiler)
    prefix = work / "installed"
    for folder in (prefix, work / "consumer", work / "by_hand"):
        shutil.rmtree(folder, ignore_errors=True)
    run("cmake", "--install", build, "--prefix", prefix)

    library_folder = next(prefix.rglob("libtally.so" if arguments.shared else "libtally.a")).parent
    check_headers(prefix / "include" / "tally")
    check_exported_flags(prefix)
    if arguments.shared:
        check_hidden_names(library_folder / "libtally.so")
    program = prefix / "bin" / "tally"
    if program.exists():
        expect("version of the installed program", run(program, "--version"), "tally 0.1.0\n")
    database = work / "project.tally"
    run(sys.executable, SOURCE / "examples/write_project.py", SOURCE / "examples/csv_project", database)

    # By find_package. The shared libraries are found by the path that CMake writes.
    plain = {"PATH": os.environ["PATH"]}
    consumer = work / "consumer"
    run(
        "cmake", "-S", SOURCE / "tests/package", "-B", consumer, "-G", "Ninja",
        f"-DCMAKE_PREFIX_PATH={prefix}", f"-DTALLY_EXAMPLES={SOURCE / 'examples'}",
        f"-DCMAKE_CXX_COMPILER={arguments.compiler}",
    )  # fmt: skip
    run("cmake", "--build", consumer, "--parallel", "2")
    check_programs(consumer / "examples", database, plain, consumer / "rows_alone")

    # By pkg-config.
    by_hand = work / "by_hand"
    by_hand.mkdir()
    lookup = {**os.environ, "PKG_CONFIG_PATH": str(library_folder / "pkgconfig")}
    flags = run("pkg-config", "--cflags", "--libs", "tally", "tally-rows", env=lookup).split()
    for name in ("minimal_host", "own_records"):
        sources = sorted((SOURCE / "examples" / name).glob("*.cpp"))
        run(arguments.compiler, "-std=c++20", *sources, "-o", by_hand / name, *flags)
    check_programs(by_hand, database, {**plain, "LD_LIBRARY_PATH": str(library_folder)}, None)


if __name__ == "__main__":
    main()
