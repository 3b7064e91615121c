#!/usr/bin/python3
"""tools/mutants.py - do the tests notice small faults?

    tools/mutants.py [--seed 1] [--count 300] [--minutes 60] [--only fft/] [--again] [--list]

Changes one place of the library's sources at a time (tools/mutations.py), builds, and runs the test programs of the
changed folder and then the others until one fails. Works on a copy in build/mutants, so the tree may be edited meanwhile.
Outcomes go to build/mutants/results-SEED.jsonl and are not computed twice; --again takes survivors without a reason up
once more. The first COUNT mutants of a seed are the same whatever COUNT is, as long as the sources are.

    killed      a test failed, crashed, or took ten times as long and 20 s more than without the change
    survived    none did
    same        the objects are, byte for byte: nothing to be noticed
    invalid     it does not compile
    wide        more than --objects of the library's objects depend on it, which would take minutes: left out

tests/survivors.txt has the reasons why survivors are not noticed; --list prints those without one.
"""
import argparse
import collections
import itertools
import json
import os
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from mutations import choose, sites  # noqa: E402

TREE = Path(__file__).resolve().parent.parent
# The tests of a folder, those first that fail most often or are over soonest.
TESTS = {
    "blas": ["fortran_O0"],
    "isa": ["level_tests", "level1_tests"],
    "frame": ["frame_tests", "printing_tests", "host_tests", "routine_tests", "thread_tests", "fortran_output_tests"],
    "kernels": ["level1_tests", "triangular_tests", "kernel_tests"],
    "linsys": ["solver_tests", "factor_tests", "definite_tests", "triangular_tests", "band_tests", "definite_band_tests"],
    "interp": ["spline_tests"],
    "quad": ["quad_tests"],
    "zeros": ["search_tests"],
    "optim": ["search_tests"],
    "fft": ["fft_tests"],
    "special": ["special_tests", "limits_tests"],
    "random": ["random_state_tests", "stream_tests"],
    "util": ["calendar_tests", "sort_tests", "permute_tests", "clock_tests"],
}
NOT_BUILT = {"errors.py", "refusals"}  # by these names
PRINTED = {"quad/kronrod_tables.h", "special/gamma_tables.h", "special/log_gamma_zeros.h", "fft/isa/root_table.h",
           "random/jump_polynomial.h"}  # tests print them anew


def run(command, folder, limit, log=None):
    """True or false for the exit status, None when the time is over; nothing that it starts outlives it."""
    def bounds():
        for what, most in ((resource.RLIMIT_CORE, 0), (resource.RLIMIT_FSIZE, 1 << 30), (resource.RLIMIT_AS, 16 << 30)):
            if what != resource.RLIMIT_AS or not str(command[0]).endswith("hostile"):  # which reserves more
                resource.setrlimit(what, (most, most))
    child = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=log or subprocess.DEVNULL,
                             stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=bounds)
    try:
        return child.wait(limit) == 0
    except subprocess.TimeoutExpired:
        return None
    finally:
        try:
            os.killpg(child.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        child.wait()


class Room:
    """The copy of the tree, its build, and what is known of it without a change."""

    def __init__(self, folder):
        self.source, self.build = folder / "source", folder / "source/build/release"  # so that ccache knows it
        self.log = folder / "log"
        self.copy()
        if not (self.build / "build.ninja").exists():
            subprocess.run(["cmake", "-G", "Ninja", "-S", self.source, "-B", self.build, "-DCMAKE_BUILD_TYPE=Release",
                            "-DORVEL_TESTS=ON", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST",
                            f"-DPython3_EXECUTABLE={sys.executable}"], check=True)
        print("building without a change", flush=True)
        subprocess.run(["cmake", "--build", self.build, "--target", "test_programs"], check=True, stdout=subprocess.DEVNULL)
        os.environ["CCACHE_DISABLE"] = "1"  # what is compiled from here on is never compiled again
        self.users = self.objects_by_file()
        self.texts = {f: (self.source / f).read_text() for f in self.users
                      if f.split("/")[0] in TESTS and f not in PRINTED}
        self.times = self.time_tests(folder / "times.json")

    def copy(self):
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=TREE, check=True, text=True,
                                capture_output=True).stdout.split("\n")
        for name in filter(None, listed):
            old, new = TREE / name, self.source / name
            if old.is_file() and (not new.exists() or old.read_bytes() != new.read_bytes()):
                new.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(old, new)
                shutil.copymode(old, new)

    def objects_by_file(self):
        """Which objects are compiled from a file, the library's first."""
        users = collections.defaultdict(list)
        said = subprocess.run(["ninja", "-t", "deps"], cwd=self.build, capture_output=True, text=True, check=True).stdout
        for entry in said.split("\n\n"):
            lines = entry.strip().split("\n")
            for name in lines[1:]:
                path = Path(os.path.normpath(self.build / name.strip()))
                if path.is_relative_to(self.source):
                    users[str(path.relative_to(self.source))].append(lines[0].split(": #deps")[0])
        return {f: sorted(o, key=lambda x: (x.startswith("tests/"), x)) for f, o in users.items()}

    def command(self, name):
        if name == "errors.py":  # the checks of arguments, provoked one by one
            return [sys.executable, "tests/interface/errors.py", str(self.build / "liborvel.so")]
        command = [str(self.build / "tests" / name)]
        if name == "refusals":
            return [str(self.build / "tests/hostile"), name]
        return command + ["--gtest_brief=1", "--gtest_fail_fast"] if name.endswith("_tests") else command

    def time_tests(self, known):
        times = json.loads(known.read_text()) if known.exists() else {}
        names = {t for tests in TESTS.values() for t in tests} | {"stack_tests", "errors.py", "hostile", "refusals"}
        for name in sorted(names):
            if name not in times:
                start = time.monotonic()
                if not run(self.command(name), self.source, 600):
                    sys.exit(f"mutants: {name} fails without a change")
                times[name] = round(time.monotonic() - start, 2)
                print(f"{times[name]:8.2f} s  {name}", flush=True)
        known.write_text(json.dumps(times))
        return {name: times[name] for name in names}

    def ninja(self, targets):
        with open(self.log, "w") as log:
            return run(["ninja", "-j1", *targets], self.build, 900, log)

    def passes(self, name):
        if not self.ninja([{"errors.py": "liborvel.so", "refusals": "hostile"}.get(name, name)]):
            return False  # a linker that finds something missing
        return run(self.command(name), self.source, 20 + 10 * self.times[name])


class Changed:
    """A file of the room with a mutation in it. Afterwards it and its objects are what they were, with their times, so
    that the next build does not compile them."""

    def __init__(self, room, mutation):
        self.path = room.source / mutation.file
        self.text = room.texts[mutation.file]
        self.kept = [room.build / o for o in room.users[mutation.file]] + [self.path]
        self.mutated = mutation.apply(self.text)

    def __enter__(self):
        self.kept = [(path, path.read_bytes(), path.stat()) for path in self.kept if path.exists()]
        self.path.write_text(self.mutated)
        return self

    def __exit__(self, *_):
        for path, data, stat in self.kept:
            path.write_bytes(data)
            os.utime(path, ns=(stat.st_atime_ns, stat.st_mtime_ns))

    def objects_differ(self):
        return any(path.read_bytes() != data for path, data, _ in self.kept if path.suffix == ".o")


def judge(room, mutation, most_objects, rest):
    """Outcome, and the test that noticed."""
    objects = [o for o in room.users[mutation.file] if not o.startswith("tests/")]
    if len(objects) > most_objects:
        return "wide", ""
    with Changed(room, mutation) as changed:
        if not room.ninja(objects):
            return "invalid", ""
        if not changed.objects_differ():
            return "same", ""
        first = TESTS[mutation.file.split("/")[0]] + ["errors.py"] * ("post(" in changed.text)
        if re.search(r"check|post\(", mutation.describe(changed.text)[1]):
            first.insert(0, "errors.py")
        others = sorted(set(room.times) - {*first, "hostile", "refusals"}, key=room.times.get)
        while sum(room.times[name] for name in others) > rest:
            others.pop()
        others += ["hostile", "refusals"]  # guard pages, and everything a second time
        for name in dict.fromkeys(first + others):
            if others and name == others[0] and not room.ninja([t for t in others if t not in NOT_BUILT]):
                return "killed", "link"
            if not room.passes(name):
                return "killed", name
    return "survived", ""


def reasons():
    """{(file, line before, line after): why no test notices}"""
    known, path = {}, TREE / "tests/survivors.txt"
    for entry in path.read_text().split("\n\n") if path.exists() else []:
        lines = [line.strip() for line in entry.split("\n") if line.strip() and not line.startswith("#")]
        if len(lines) >= 4:
            known[lines[0], lines[1], lines[2]] = " ".join(lines[3:])
    return known


def summary(results, unexplained_only=False):
    """The table of folders, and the survivors with what is known of them."""
    lines, known = [], reasons()
    counts = collections.defaultdict(collections.Counter)
    for r in results:
        for row in (r["file"].split("/")[0], "all"):
            counts[row][r["outcome"]] += 1
            counts[row]["explained"] += r["outcome"] == "survived" and (r["file"], r["old"], r["new"]) in known
    words = ["killed", "survived", "explained", "same", "invalid", "wide"]
    lines.append(f"{'':10}" + "".join(f"{w:>10}" for w in words) + f"{'noticed':>10}")
    for row in [r for r in TESTS if r in counts] + ["all"]:
        judged = counts[row]["killed"] + counts[row]["survived"]
        share = f"{100 * counts[row]['killed'] / judged:9.0f}%" if judged else ""
        lines.append(f"{row:10}" + "".join(f"{counts[row][w]:10}" for w in words) + share)
    for r in results:
        why = known.get((r["file"], r["old"], r["new"]))
        if r["outcome"] == "survived" and not (why and unexplained_only):
            lines += ["", f"{r['file']}:{r['line']}", f"    {r['old']}", f"    {r['new']}"] + ([f"    {why}"] if why else [])
    return "\n".join(lines)


def column_of(mutation, text):
    return mutation.start - text.rfind("\n", 0, mutation.start)


def once_more(results, texts):
    """The mutations that results are of, as far as their lines are still there."""
    wanted = {(r["file"], r["old"], r["new"], r["column"]) for r in results}
    for file in sorted({r["file"] for r in results} & texts.keys()):
        for mutation in itertools.chain.from_iterable(sites(file, texts[file]).values()):
            if (file, *mutation.describe(texts[file])[1:], column_of(mutation, texts[file])) in wanted:
                yield mutation


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=300, help="mutants that compile to something else")
    parser.add_argument("--minutes", type=float, default=1e9, help="no new mutant is begun after them")
    parser.add_argument("--only", default="", help="files whose names begin so")
    parser.add_argument("--objects", type=int, default=3, help="most objects to compile for a mutant")
    parser.add_argument("--rest", type=float, default=5,
                        help="seconds for the tests of other folders, the shortest first")
    parser.add_argument("--again", action="store_true", help="judge survivors without a reason once more")
    parser.add_argument("--list", action="store_true", help="only print the table and what is not explained")
    options = parser.parse_args()
    folder = TREE / "build/mutants"
    path = folder / f"results-{options.seed}.jsonl"
    results = [json.loads(line) for line in path.read_text().splitlines()] if path.exists() else []
    if options.list:
        return print(summary(results, True))
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    until = time.monotonic() + 60 * options.minutes
    room = Room(folder)
    texts = {f: t for f, t in room.texts.items() if f.startswith(options.only)}
    known, again = reasons(), []
    if options.again:
        again = [r for r in results if r["outcome"] == "survived" and (r["file"], r["old"], r["new"]) not in known]
        results = [r for r in results if r not in again]
    once = list(once_more(again, texts))  # without those whose lines are gone
    left = {(m.file, *m.describe(texts[m.file])[1:]) for m in once}
    again = [r for r in again if (r["file"], r["old"], r["new"]) in left]
    done = {(r["file"], r["old"], r["new"], r["column"]) for r in results}
    folders = [f for f in TESTS if any(name.startswith(f + "/") for name in texts)]
    for mutation in itertools.chain(once, choose(texts, options.seed, folders)):
        if sum(r["outcome"] in ("killed", "survived") for r in results) >= options.count or time.monotonic() > until:
            break
        text = texts[mutation.file]
        line, old, new = mutation.describe(text)
        column = column_of(mutation, text)
        if (mutation.file, old, new, column) in done:
            continue
        done.add((mutation.file, old, new, column))
        start = time.monotonic()
        outcome, by = judge(room, mutation, options.objects, options.rest)
        results.append({"file": mutation.file, "line": line, "column": column, "kind": mutation.kind, "old": old, "new": new,
                        "outcome": outcome, "by": by, "seconds": round(time.monotonic() - start, 1)})
        again = [r for r in again if (r["file"], r["old"], r["new"], r["column"]) not in done]
        path.write_text("".join(json.dumps(r) + "\n" for r in results + again))
        if outcome != "wide":
            print(f"{outcome:8} {by:20} {mutation.file}:{line}: {old}  ->  {new}", flush=True)
    (folder / f"summary-{options.seed}.txt").write_text(summary(results) + "\n")
    print(summary(results, True))


if __name__ == "__main__":
    main()
