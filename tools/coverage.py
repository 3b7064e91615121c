#!/usr/bin/python3
"""tools/coverage.py - lines and branches of the library that the tests have run, by gcov

    tools/coverage.py BUILD [--spots 40] [--only fft/]

BUILD is compiled with --coverage (preset coverage), and its tests have run. Prints a table of the folders, then the
white spots, the largest first: runs of lines that were not run, and lines with outcomes of a branch that were not taken.

A line counts once, whatever the number of instances of its template, of instruction-set levels and of functions that it
is compiled into. Its branches are those of most instances, and an outcome is taken when it is in one of them; copies of
it in one function are one. What an exception does at a call is no branch.
"""
import argparse
import collections
import json
import re
import subprocess
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TREE = Path(__file__).resolve().parent.parent
FOLDERS = ["isa", "frame", "kernels", "linsys", "interp", "quad", "zeros", "optim", "fft", "special", "random", "util", "blas"]


def reports(build):
    """What gcov says of each object of the library."""
    objects = sorted(p for p in build.glob("CMakeFiles/*.dir/**/*.gcno"))

    def one(path):
        said = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", path], cwd=build,
                              capture_output=True, check=True).stdout
        return json.loads(said)
    with ThreadPoolExecutor() as pool:
        yield from pool.map(one, objects)


def decisions(branches):
    """Counts of the outcomes of conditions, without those of calls that may throw."""
    counts, skip = [], False
    for k, b in enumerate(branches):
        if skip:
            skip = False
        elif b["throw"]:
            skip = True  # the call goes on by the next
        elif k + 1 < len(branches) and branches[k + 1]["throw"]:
            skip = True
        else:
            counts.append(b["count"])
    return counts


def merged(instances):
    """Of each outcome, whether it is taken in one of the instances."""
    lengths = collections.Counter(map(len, instances))
    if not lengths:
        return []
    length = max(lengths, key=lambda n: (lengths[n], n))
    outcomes = [0] * length
    for counts in instances:
        if len(counts) % length == 0:
            for k, count in enumerate(counts):
                outcomes[k % length] += count
    return [count > 0 for count in outcomes]


def collect(build):
    """{file: {line: (whether it was run, outcomes)}}"""
    counts = collections.defaultdict(lambda: collections.defaultdict(int))
    instances = collections.defaultdict(lambda: collections.defaultdict(list))
    for report in reports(build):
        for file in report["files"]:
            path = Path(report["current_working_directory"], file["file"]).resolve()
            name = str(path.relative_to(TREE)) if path.is_relative_to(TREE) else ""
            if name.split("/")[0] not in FOLDERS:
                continue
            for line in file["lines"]:
                number = line["line_number"]
                counts[name][number] += line["count"]
                outcomes = decisions(line["branches"])
                if outcomes:
                    instances[name][number].append(outcomes)
    found = {}
    for name, lines in counts.items():
        text = (TREE / name).read_text().split("\n")
        found[name] = {n: (count > 0, merged(instances[name][n]) if re.search(r"\w", text[n - 1]) else [])
                       for n, count in sorted(lines.items()) if n <= len(text)}
    return found


def table(found):
    rows = collections.defaultdict(lambda: [0, 0, 0, 0])
    for name, lines in found.items():
        for row in (name.split("/")[0], "all"):
            for run, outcomes in lines.values():
                for k, count in enumerate((run, 1, sum(outcomes), len(outcomes))):
                    rows[row][k] += count
    print(f"{'':10}{'lines':>14}{'':9}{'branches':>14}")
    for row in [f for f in FOLDERS if f in rows] + ["all"]:
        run, lines, taken, branches = rows[row]
        share = [f"{100 * a / b:7.2f} %" if b else "" for a, b in ((run, lines), (taken, branches))]
        print(f"{row:10}{run:>7} /{lines:>5}{share[0]:>9}{taken:>8} /{branches:>5}{share[1]:>9}")


def white_spots(found):
    """[(size, place)], of lines and of outcomes"""
    not_run, not_taken = [], []
    for name, lines in found.items():
        first, size = None, 0
        for n, (run, outcomes) in [*lines.items(), (0, (True, []))]:
            if not run:
                first, size = first or n, size + 1
            elif first:
                not_run.append((size, f"{name}:{first}"))
                first, size = None, 0
            missing = outcomes.count(False)
            if run and missing:
                not_taken.append((missing, f"{name}:{n}"))
    return sorted(not_run, key=lambda s: (-s[0], s[1])), sorted(not_taken, key=lambda s: (-s[0], s[1]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path)
    parser.add_argument("--spots", type=int, default=40, help="how many to show of each sort")
    parser.add_argument("--only", default="", help="files whose names begin so")
    options = parser.parse_args()
    found = {name: lines for name, lines in collect(options.build.resolve()).items() if name.startswith(options.only)}
    table(found)
    texts = {name: (TREE / name).read_text().split("\n") for name in found}
    for title, spots in zip(("lines that were not run", "outcomes that were not taken"), white_spots(found)):
        print(f"\n{title}: {len(spots)} places")
        for size, place in spots[:options.spots]:
            name, line = place.split(":")
            print(f"{size:5}  {place:40} {texts[name][int(line) - 1].strip()[:90]}")


if __name__ == "__main__":
    main()
