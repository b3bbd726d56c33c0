#!/usr/bin/python3
"""Guards the layers of src/: which folder may include which, and who may see third-party headers.

Without arguments the tree that this script lies in is checked; each violation is one line on
standard error and the exit status is 1. `--self-test` proves on fabricated trees that violations
are found. The layers are explained in docs/architecture.md.
"""

import pathlib
import re
import sys
import tempfile
import unittest

# From the bottom. A folder may include itself and every folder before it; the longest name that a
# path begins with decides which folder a file belongs to.
LAYERS = [
    ("platform", 0),
    ("platform/portable", 1),
    ("result_store", 2),
    ("report_model", 3),
    ("report_mng", 4),
    ("filter_trees", 5),
    ("reports", 5),
    ("rows", 5),
    ("host", 6),
]

# Plain data and its words: includable from everywhere, so they themselves stand on nothing.
ROOTS = ["platform/export.h", "report_model/report_types.h", "result_store/db_records.h"]

# Folders that see nothing below them but the roots: a library of its own.
STANDALONE = ["rows"]

# The only steps upwards, each from one file.
UPWARD = {
    # A change of project drops the reports that were folded from the old one.
    "result_store/tally_data_mng.cpp": ["report_mng/report_mng.h"],
    # The one table that names the report and tree classes.
    "report_mng/report_classes.cpp": ["filter_trees/", "reports/"],
}

# Where headers of other libraries and of the operating system may be seen, and where the
# preprocessor may tell systems apart.
THIRD_PARTY_FOLDERS = ["platform/portable", "host"]
CONDITIONAL_FOLDERS = ["platform", "platform/portable"]

STANDARD_HEADERS = set("""
algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
cinttypes climits clocale cmath compare complex concepts condition_variable coroutine csetjmp
csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception
execution filesystem format forward_list fstream functional future initializer_list iomanip ios
iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex new
numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set
shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map
unordered_set utility valarray variant vector version
""".split())

# Comments and raw strings may hold text that looks like a directive; ordinary literals are matched
# so that a "//" inside one starts no comment.
SKIPPED = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)"'
    r"|\"(?:\\.|[^\"\\\n])*\"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'",
    re.DOTALL,
)
DIRECTIVE = re.compile(r"^[ \t]*#[ \t]*(\w+)[ \t]*(.*?)[ \t]*$", re.MULTILINE)
CONDITIONS = {"if", "ifdef", "ifndef", "elif"}


def blanked(text):
    """The text without comments and raw strings, each line where it was."""

    def blank(match):
        found = match.group(0)
        return found if found[0] in "\"'" else "\n" * found.count("\n")

    return SKIPPED.sub(blank, text)


def folder_of(path):
    """The layer's folder that a path relative to src/ lies in, or None."""
    inside = [name for name, _ in LAYERS if path.startswith(name + "/")]
    return max(inside, key=len) if inside else None


def report_family(path):
    """The folder below reports/ that a path lies in, or None."""
    parts = path.split("/")
    return parts[1] if parts[0] == "reports" and len(parts) > 2 else None


def fault_of_own_include(path, included, known):
    """What is wrong with `path` including the repository's own header `included`, or None."""
    if included not in known:
        return f'no header "{included}" below src/'
    if included in ROOTS:
        return None
    if path in ROOTS:
        return f'includable from everywhere, and so may not include "{included}"'
    if any(included.startswith(target) for target in UPWARD.get(path, [])):
        return None
    folder, target = folder_of(path), folder_of(included)
    rank = dict(LAYERS)
    if target is None:
        return f'"{included}" lies in no layer'
    if target != folder and (rank[target] >= rank[folder] or folder in STANDALONE):
        return f'{folder} may not include "{included}"'
    family, sibling = report_family(path), report_family(included)
    if folder == target == "reports" and sibling not in (family, "shared"):
        return f'reports/{family} may not include "{included}"'
    return None


def faults_of_file(path, text, known):
    """Yields (line, message) for each violation of one file."""
    folder = folder_of(path)
    if folder is None:
        yield 1, "lies in no layer"
        return
    code = blanked(text)
    directives = [
        (code.count("\n", 0, match.start(1)) + 1, match.group(1), match.group(2))
        for match in DIRECTIVE.finditer(code)
    ]
    if path.endswith(".h"):
        guard = "TALLY_" + re.sub(r"[^0-9A-Za-z]", "_", path).upper() + "_"
        if [entry[1:] for entry in directives[:2]] != [("ifndef", guard), ("define", guard)]:
            yield 1, f"include guard is not {guard}"
        directives = directives[2:]
    for line, word, rest in directives:
        if word in CONDITIONS and folder not in CONDITIONAL_FOLDERS:
            yield line, f"#{word} outside platform/"
        if not word.startswith("include"):
            continue
        own = re.fullmatch(r'"([^"]+)"', rest)
        other = re.fullmatch(r"<([^>]+)>", rest)
        if own:
            message = fault_of_own_include(path, own.group(1), known)
            if message:
                yield line, message
        elif not other:
            yield line, f"#{word} of neither a file nor a header"
        elif other.group(1) not in STANDARD_HEADERS and folder not in THIRD_PARTY_FOLDERS:
            yield line, f"{folder} may not include <{other.group(1)}>"


def check(root):
    """All violations below `root`/src, as "file:line: message"."""
    source = pathlib.Path(root) / "src"
    files = sorted(p for p in source.rglob("*") if p.suffix in (".h", ".cpp", ".inc"))
    known = {p.relative_to(source).as_posix() for p in files}
    faults = []
    for name in sorted(known):
        text = (source / name).read_text(encoding="utf-8")
        for line, message in faults_of_file(name, text, known):
            faults.append(f"src/{name}:{line}: {message}")
    return faults


class SelfTest(unittest.TestCase):
    """Each test writes a small tree and states every line that the check must print of it."""

    def expect(self, files, faults):
        with tempfile.TemporaryDirectory() as root:
            for name, body in files.items():
                path = pathlib.Path(root) / "src" / name
                path.parent.mkdir(parents=True, exist_ok=True)
                if name.endswith(".h"):
                    guard = "TALLY_" + re.sub(r"[/.]", "_", name).upper() + "_"
                    body = f"#ifndef {guard}\n#define {guard}\n{body}#endif\n"
                path.write_text(body, encoding="utf-8")
            self.assertEqual(check(root), faults)

    def test_accepts_a_tree_that_keeps_the_layers(self):
        self.expect(
            {
                "platform/a.h": '#include <string>\n#include "result_store/db_records.h"\n',
                "platform/portable/a.cpp": '#include <sqlite3.h>\n#include "platform/a.h"\n',
                "result_store/db_records.h": "#include <vector>\n",
                "result_store/b.cpp": '#include "platform/a.h"\n',
                "report_model/c.cpp": '#include "result_store/db_records.h"\n',
                "reports/shared/d.h": '#include "platform/a.h"\n',
                "reports/special/e.cpp": '#include "reports/shared/d.h"\n',
                "host/main.cpp": '#include <nlohmann/json.hpp>\n#include "reports/shared/d.h"\n',
            },
            [],
        )

    def test_refuses_an_upward_include(self):
        self.expect(
            {
                "report_model/a.cpp": '// why\n#include "report_mng/b.h"\n',
                "report_mng/b.h": "",
            },
            ['src/report_model/a.cpp:2: report_model may not include "report_mng/b.h"'],
        )

    def test_refuses_siblings_of_one_layer(self):
        self.expect(
            {
                "filter_trees/a.cpp": '#include "reports/shared/d.h"\n',
                "reports/shared/d.h": "",
                "reports/consumption/b.cpp": '#include "reports/special/c.h"\n',
                "reports/special/c.h": "",
                "reports/shared/e.cpp": '#include "reports/special/c.h"\n',
            },
            [
                'src/filter_trees/a.cpp:1: filter_trees may not include "reports/shared/d.h"',
                'src/reports/consumption/b.cpp:1: reports/consumption may not include '
                '"reports/special/c.h"',
                'src/reports/shared/e.cpp:1: reports/shared may not include "reports/special/c.h"',
            ],
        )

    def test_keeps_the_row_layouts_apart_from_the_engine(self):
        self.expect(
            {
                "report_model/report_types.h": "",
                "platform/a.h": "",
                "rows/b.h": '#include "report_model/report_types.h"\n#include "platform/a.h"\n',
                "reports/special/c.cpp": '#include "rows/b.h"\n',
                "host/d.cpp": '#include "rows/b.h"\n',
            },
            [
                'src/reports/special/c.cpp:1: reports may not include "rows/b.h"',
                'src/rows/b.h:4: rows may not include "platform/a.h"',
            ],
        )

    def test_allows_each_step_upwards_in_its_one_file_only(self):
        step = '#include "report_mng/report_mng.h"\n'
        table = '#include "reports/special/c.h"\n#include "filter_trees/t.h"\n'
        self.expect(
            {
                "report_mng/report_mng.h": "",
                "reports/special/c.h": "",
                "filter_trees/t.h": "",
                "result_store/tally_data_mng.cpp": step,
                "report_mng/report_classes.cpp": table,
                "result_store/other.cpp": step,
                "report_mng/other.cpp": table,
            },
            [
                'src/report_mng/other.cpp:1: report_mng may not include "reports/special/c.h"',
                'src/report_mng/other.cpp:2: report_mng may not include "filter_trees/t.h"',
                "src/result_store/other.cpp:1: result_store may not include "
                '"report_mng/report_mng.h"',
            ],
        )

    def test_refuses_third_party_headers_in_the_engine(self):
        self.expect(
            {
                "report_mng/a.cpp": "#include <sqlite3.h>\n",
                "platform/b.h": "#include <unistd.h>\n",
            },
            [
                "src/platform/b.h:3: platform may not include <unistd.h>",
                "src/report_mng/a.cpp:1: report_mng may not include <sqlite3.h>",
            ],
        )

    def test_refuses_conditions_outside_platform(self):
        self.expect(
            {
                "platform/a.cpp": "#ifdef _WIN32\n#endif\n",
                "report_mng/b.cpp": "#ifdef _WIN32\n#endif\n#  if defined(A)\n#endif\n",
                "host/c.h": "#ifndef B\n#endif\n",
            },
            [
                "src/host/c.h:3: #ifndef outside platform/",
                "src/report_mng/b.cpp:1: #ifdef outside platform/",
                "src/report_mng/b.cpp:3: #if outside platform/",
            ],
        )

    def test_keeps_the_common_records_at_the_bottom(self):
        self.expect(
            {
                "report_model/report_types.h": '#include "platform/a.h"\n',
                "platform/a.h": "",
            },
            [
                "src/report_model/report_types.h:3: includable from everywhere, and so may not "
                'include "platform/a.h"'
            ],
        )

    def test_reads_no_directive_out_of_comments_and_literals(self):
        self.expect(
            {
                "report_mng/a.cpp": '/*\n#include <sqlite3.h>\n*/\nconst char* a = "//";\n'
                'const char* b = R"x(\n#ifdef A\n)x";\nint c = 1\'000;\n#include <zlib.h>\n'
            },
            ["src/report_mng/a.cpp:9: report_mng may not include <zlib.h>"],
        )

    def test_refuses_what_it_cannot_place(self):
        self.expect(
            {
                "report_mng/a.cpp": '#include "a.h"\n#include HEADER\n',
                "stray/b.cpp": "",
            },
            [
                'src/report_mng/a.cpp:1: no header "a.h" below src/',
                "src/report_mng/a.cpp:2: #include of neither a file nor a header",
                "src/stray/b.cpp:1: lies in no layer",
            ],
        )


def main():
    if sys.argv[1:] == ["--self-test"]:
        return 0 if unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful() else 1
    if sys.argv[1:]:
        print("usage: check_includes.py [--self-test]", file=sys.stderr)
        return 2
    root = pathlib.Path(__file__).resolve().parent.parent
    if not (root / "src").is_dir():
        print(f"no folder src/ in {root}", file=sys.stderr)
        return 2
    faults = check(root)
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
