#!/usr/bin/python3
"""tools/coverage.py - lines and branches of the library that the tests have run, by gcov

    tools/coverage.py BUILD [--spots 40] [--only fft/]

BUILD is compiled with --coverage (preset coverage), and its tests have run. Prints a table of the folders, then the
white spots, the largest first: runs of lines that were not run, and lines with outcomes of a branch that were not taken.

A line counts once, whatever the number of instances of its template, of instruction-set levels and of functions that it
is compiled into. It has two outcomes for each condition that is written in it (if, for, while, ?, &&, ||), and an outcome
is taken when it is in one of them. What an exception does at a call is no branch.
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
    """What gcov says of each object."""
    objects = sorted(build.glob("**/CMakeFiles/*.dir/**/*.gcno"))  # tests have instances of the templates in headers

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


def conditions(text):
    """How many there are in each line, from 1; None in lines with a switch. An operator at the end of a line belongs to
    what follows it."""
    clear = re.sub(r'//[^\n]*|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'|\bif constexpr\b', " ", text)
    found, carried, goes_on = [None], "", False
    for line in clear.split("\n"):
        line, at_end = carried + line.strip(), re.search(r"(?:&&|\|\||\?)$", line.strip())
        carried = at_end.group() + " " if at_end else ""
        line = line[:len(line) - len(carried)] if at_end else line
        words = len(re.findall(r"\b(?:if|for|while)\b|\?", line))
        operators = len(re.findall(r"&&|\|\|", line))
        count = words + operators + (operators > 0 and words == 0 and not goes_on)
        found.append(None if "switch" in line else count or int(goes_on))
        goes_on = bool(line) and line[-1] not in ";{}"
    return found


def merged(instances, count):
    """Of each outcome, whether it is taken in one of the instances. Lines are copied into functions that they are
    inlined in, and lose conditions there that are constant."""
    if count == 0 or not instances:
        return []
    lengths = collections.Counter(map(len, instances))
    length = 2 * count if count else max(lengths)
    if not any(n % length == 0 for n in lengths):
        length = max(lengths, key=lambda n: (lengths[n], n))
    outcomes = [0] * length
    for counts in instances:
        if len(counts) % length == 0:
            for k, times in enumerate(counts):
                outcomes[k % length] += times
    return [times > 0 for times in outcomes]


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
        written = conditions((TREE / name).read_text())
        found[name] = {n: (count > 0, merged(instances[name][n], written[n])) for n, count in sorted(lines.items())}
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
