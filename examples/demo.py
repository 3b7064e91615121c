#!/usr/bin/env python3
"""examples/demo.py PROGRAMS OUT [PYTHON] - a tour: every chapter is run on its data, and one page shows them all

PROGRAMS holds the built examples; OUT receives index.html and, beside it, pictures and what was printed. A chapter is a
folder with chapter.txt, programs, and a script for its picture. Lines of chapter.txt are "key: value", continued by
lines that are indented: title, question, look (what the reader should look at), data (files, or words where there are
none), run (a program and its arguments) and same (one that must print what the first has printed).

Programs compare numbers of their own with known ones and print "check: ...: agrees" (check.h). The tour fails with the
name of a chapter whose program fails, whose numbers do not agree, or that checks nothing.
"""
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import page

ROOT = Path(__file__).resolve().parent.parent
DATA = Path("examples/data")
CHAPTERS = ("alpha", "calendar", "montecarlo", "network", "regression", "beam", "stars", "splines", "pendulum",
            "isotherm", "accidents", "sunspots", "forecast")
CHECK = re.compile(r"(?m)^ check: (.*:)\n +(.*): (agrees|DIFFERS)$")


class Chapter:
    """What chapter.txt says, and what happened."""

    def __init__(self, name):
        self.name, self.folder = name, Path("examples") / name
        self.told = {"run": [], "same": []}
        text = re.sub(r"\n\s+", " ", (self.folder / "chapter.txt").read_text())
        for key, value in re.findall(r"(?m)^(\w+): (.*)$", text):
            if key in ("run", "same"):
                self.told[key].append(value)
            else:
                self.told[key] = value
        self.title = self.told["title"]
        self.printed = []  # (command, output) of each program that ran
        self.same = []  # commands that printed the same as the first
        self.left_out = []  # commands whose language is not there
        self.faults = []
        self.picture = None

    @property
    def output(self):
        return "\n".join(text for _, text in self.printed)

    @property
    def checks(self):
        return [(f"{what} {numbers}", how) for what, numbers, how in CHECK.findall(self.output)]

    def source(self, command):
        """The source of a program: pendulum.py, or pendulum.c of pendulum_c."""
        name = command.split()[0]
        return self.folder / (name if name.endswith(".py") else re.sub(r"_(\w+)$", r".\1", name))

    def data_files(self):
        return [DATA / word for word in self.told["data"].split() if (ROOT / DATA / word).is_file()]


def python_with_numpy(python):
    return subprocess.run([python, "-c", "import numpy"], capture_output=True).returncode == 0


def run_program(chapter, command, programs, out, python):
    """The output of a program, or None."""
    words = command.replace("DATA/", f"{DATA}/").replace("PLOT", f"{out}/{chapter.name}.dat").split()
    environment = None
    if words[0].endswith(".py"):
        if not python_with_numpy(python):
            chapter.left_out.append(command)
            return None
        build = programs.parent
        environment = {**os.environ, "PYTHONPATH": str(build / "python"), "ORVEL_LIBRARY": str(build)}
        words = [python, str(chapter.folder / words[0]), *words[1:]]
    elif command.split()[0].endswith("_f90") and not (programs / words[0]).exists():  # built where there is a compiler
        chapter.left_out.append(command)
        return None
    else:
        words[0] = str(programs / words[0])
    try:
        done = subprocess.run(words, capture_output=True, text=True, cwd=ROOT, env=environment)
    except OSError as problem:
        chapter.faults.append(str(problem))
        return None
    if done.returncode != 0:
        chapter.faults.append(f"{command.split()[0]} ends with status {done.returncode} {done.stderr.strip()}".strip())
    return done.stdout


def draw(chapter, out):
    picture = out / f"{chapter.name}.svg"
    picture.unlink(missing_ok=True)
    script = chapter.folder / f"{chapter.name}.gnuplot"
    done = subprocess.run(["gnuplot", "-e", f"data='{out}/{chapter.name}.dat'; picture='{picture}'", script],
                          capture_output=True, text=True, cwd=ROOT)
    if done.returncode != 0 or not picture.exists():
        chapter.faults.append(f"its picture cannot be drawn: {done.stderr.strip()}")
    else:
        chapter.picture = picture.read_text()


def run_chapter(chapter, programs, out, python):
    (out / f"{chapter.name}.dat").unlink(missing_ok=True)
    for command in chapter.told["run"]:
        text = run_program(chapter, command, programs, out, python)
        if text is not None:
            chapter.printed.append((command, text))
    for command in chapter.told["same"]:
        text = run_program(chapter, command, programs, out, python)
        if text is None:
            continue
        if chapter.printed and text != chapter.printed[0][1]:
            chapter.faults.append(f"{command.split()[0]} prints something else")
        chapter.same.append(command)
    if not chapter.printed and not chapter.faults:
        return  # all its programs are left out
    (out / f"{chapter.name}.txt").write_text(chapter.output)
    if not chapter.faults:
        draw(chapter, out)
    if not chapter.checks:
        chapter.faults.append("nothing was compared")
    chapter.faults += [f"differs: {what}" for what, how in chapter.checks if how != "agrees"]


def show(line):
    """The progress: in place on a terminal, else a line."""
    if sys.stdout.isatty():
        print("\r\033[K" + line[:shutil.get_terminal_size().columns - 1], end="", flush=True)
    else:
        print(line, flush=True)


def main():
    programs, out = (Path(word).resolve() for word in sys.argv[1:3])
    python = sys.argv[3] if len(sys.argv) > 3 else sys.executable
    out.mkdir(parents=True, exist_ok=True)
    chapters = [Chapter(name) for name in CHAPTERS]
    for k, chapter in enumerate(chapters, 1):
        show(f"demo: chapter {k} of {len(chapters)}: {chapter.title}")
        run_chapter(chapter, programs, out, python)
    if sys.stdout.isatty():
        show("")
    (out / "index.html").write_text(page.write(chapters))

    width = max(len(chapter.title) for chapter in chapters)
    for chapter in chapters:
        print(f"demo: {chapter.title:{width}}  {page.verdict(chapter)}")
    print(f"demo: {page.closing(chapters)}")
    print(f"demo: all words, numbers and pictures: {Path(sys.argv[2]) / 'index.html'}")
    sys.exit(any(chapter.faults for chapter in chapters))


main()
