#!/usr/bin/env python3
# tools/bench_table.py - one table of a benchmark run: ours, each peer, and the median of the ratios peer / ours
#
#   python3 tools/bench_table.py out/bench.json
import json
import statistics
import sys
from collections import defaultdict


def main():
    with open(sys.argv[1]) as file:
        run = json.load(file)
    rows = defaultdict(lambda: defaultdict(dict))
    for b in sorted(run["benchmarks"], key=lambda b: b["family_index"]):
        if b["run_type"] == "iteration":
            routine, case, who = b["run_name"].split("|")
            rows[routine, case][who][b["repetition_index"]] = 1e9 / b["items_per_second"]
    print(f"median of {run['benchmarks'][0]['repetitions']} interleaved repetitions; "
          "ratio = time of the peer / ours\n")
    print(f"{'routine':<8} {'case':<31} {'ours ns':>11}  {'peer':<11} {'peer ns':>11} {'ratio':>6}")
    for (routine, case), sides in rows.items():
        ours = sides.pop("ours")
        line = f"{routine:<8} {case:<31} {statistics.median(ours.values()):11.2f}"
        if not sides:
            print(line)
        for who, times in sides.items():
            ratio = statistics.median(times[k] / ours[k] for k in times)
            print(f"{line}  {who:<11} {statistics.median(times.values()):11.2f} {ratio:6.2f}")


main()
