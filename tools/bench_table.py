#!/usr/bin/env python3
# tools/bench_table.py - one table of benchmark runs: ours, each peer, and the median of the ratios peer / ours
#
#   python3 tools/bench_table.py out/bench.json [MORE.json ...]
#
# Several runs are merged: a ratio is the median of those of all runs. The last column is the share of what the machine
# can do at most, as rows of the run measure it: the time for the operations of a row at the peak, or for its bytes at
# the rate of the cache that they fit, divided by ours.
import json
import math
import re
import statistics
import sys
from collections import defaultdict

# Operations and bytes of a row, from its size n and the bytes e of an element; complex elements make four real operations
# of one. What is not here has no limit that could be named.
WORK = (
    (r".(gemm|symm|syr2k)", lambda n, e: (2 * n**3, 3 * e * n * n)),
    (r".(trmm|trsm|syrk)", lambda n, e: (n**3, 2 * e * n * n)),
    (r".(gemv|ger)$", lambda n, e: (2 * n * n, e * n * n)),
    (r".(symv|trsv)", lambda n, e: (2 * n * n, e * n * n / 2)),
    (r".axpy", lambda n, e: (2 * n, 3 * e * n)),
    (r".*dot", lambda n, e: (2 * n, 2 * e * n)),
    (r".(copy|scal)", lambda n, e: (0, 2 * e * n)),
    (r".swap", lambda n, e: (0, 4 * e * n)),
    (r"..?(asum|nrm2|amax)", lambda n, e: (0, e * n)),
    (r".factor$", lambda n, e: (2 * n**3 / 3, e * n * n)),
    (r".cholesky$", lambda n, e: (n**3 / 3, e * n * n / 2)),
    (r".inverse$", lambda n, e: (2 * n**3, e * n * n)),
    (r"d?f2t[cr][fb]", lambda n, e: (2.5 * n * math.log2(max(n, 2)), 2 * e * n)),
)


class Machine:
    """Nanoseconds for an operation and for a byte, from the rows of the run."""

    def __init__(self, rows):
        self.operation, self.byte = {}, {}
        for (routine, case), sides in rows.items():
            time = statistics.median(sides["ours"].values()) if routine == "machine" else None
            if time and case.startswith("operation"):
                self.operation[case.split()[-1]] = time
            elif time:
                self.byte[int(case.split()[2]) * 1024] = time

    def share(self, routine, case, time):
        """Of the limit, or None."""
        name, size = routine.split(" ")[0].lower(), re.search(r"\bn = (\d+)$", case.lower())
        work = next((work for pattern, work in WORK if re.match(pattern, routine.lower())), None)
        work = work or next((work for pattern, work in WORK if re.match(pattern, name) and " " in routine), None)
        if not (self.operation and self.byte and work and size):
            return None
        transform = re.match(r"(d?)f2t([cr])", name)
        is_double = bool(transform[1]) if transform else name.removeprefix("i")[0] in "dz"
        is_complex = transform[2] == "c" if transform else bool(re.match(r"i?[cz]|d[cz]", name))
        bytes_of_element = (8 if is_double else 4) * (2 if is_complex else 1)
        operations, bytes_moved = work(int(size[1]), bytes_of_element)
        operations *= (2 if transform else 4) if is_complex else 1
        fits = next((kept for kept in sorted(self.byte) if bytes_moved <= 2 * kept), max(self.byte))
        return max(operations * self.operation["double" if is_double else "single"],
                   bytes_moved * self.byte[fits]) / time


def read(names):
    """routine, case -> who -> number of the repetition -> nanoseconds"""
    rows = defaultdict(lambda: defaultdict(dict))
    repetitions = 0
    for run, name in enumerate(names):
        with open(name) as file:
            text = file.read()
        if not text:
            sys.exit(f"{name} is empty: no row has such a name")
        benchmarks = json.loads(text)["benchmarks"]
        repetitions += benchmarks[0]["repetitions"]
        for b in sorted(benchmarks, key=lambda b: b["family_index"]):
            if b["run_type"] == "iteration":
                routine, case, who = b["run_name"].split("|")
                rows[routine, case][who][run, b["repetition_index"]] = 1e9 / b["items_per_second"]
    return rows, repetitions


def main():
    rows, repetitions = read(sys.argv[1:])
    machine = Machine(rows)
    print(f"median of {repetitions} interleaved repetitions; ratio = time of the peer / ours; limit = share of what the "
          "machine can do\n")
    print(f"{'routine':<8} {'case':<31} {'ours ns':>11}  {'peer':<11} {'peer ns':>11} {'ratio':>6} {'limit':>6}")
    for (routine, case), sides in rows.items():
        ours = sides.pop("ours")
        time = statistics.median(ours.values())
        line = f"{routine:<8} {case:<31} {time:11.4g}" if time < 0.1 else f"{routine:<8} {case:<31} {time:11.2f}"
        share = machine.share(routine, case, time)
        limit = "" if share is None else f"{share:6.2f}"
        if not sides:
            print(f"{line}  {'':<11} {'':>11} {'':>6} {limit}".rstrip())
        for who, times in sides.items():
            ratio = statistics.median(times[k] / ours[k] for k in times if k in ours)
            print(f"{line}  {who:<11} {statistics.median(times.values()):11.2f} {ratio:6.2f} {limit}".rstrip())


main()
