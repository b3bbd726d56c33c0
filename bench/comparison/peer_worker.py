"""What the Python programs of the comparison do alike.

A worker is started with the table, the cases and obeys lines on standard input:

    answers FILE    writes each case's rows, keys first, null for what is rolled up, as JSON
    run SECONDS     asks each case again and again for so long, at least once

Each line is answered by one line of JSON, and so is the start.
"""

import json
import statistics
import sys
import time


def milliseconds(body):
    begin = time.perf_counter()
    result = body()
    return (time.perf_counter() - begin) * 1000, result


def timed(ask, seconds):
    times = []
    while not times or sum(times) < seconds * 1000:
        elapsed, rows = milliseconds(ask)
        times.append(elapsed)
    return {"ms": statistics.median(times), "rows": len(rows)}


def reply(answer):
    print(json.dumps(answer), flush=True)


def serve(make_peer):
    table, cases_file = sys.argv[1:3]
    with open(cases_file, encoding="ascii") as file:
        cases = json.load(file)
    prepare_ms, peer = milliseconds(lambda: make_peer(table))
    reply({"version": peer.version, "prepare_ms": prepare_ms})
    for line in sys.stdin:
        command, argument = line.split(maxsplit=1)
        if command == "answers":
            answers = {case["name"]: peer.plain(case, peer.ask(case)) for case in cases}
            with open(argument.strip(), "w", encoding="ascii") as out:
                json.dump(answers, out)
            reply({})
        else:
            seconds = float(argument)
            reply({case["name"]: timed(lambda: peer.ask(case), seconds) for case in cases})
