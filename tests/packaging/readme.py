#!/usr/bin/env python3
"""tests/packaging/readme.py FOLDER - the programs of README.md, letter by letter, in FOLDER

A block whose first line names its file and the command to type is written to that file, and the command must print what
the next block of text shows. Lines of a shell block build a.out again, which must print the same. The package has to be
installed where compilers and pkg-config find it; plain lines are left out where PKG_CONFIG_PATH says that this is a
prefix of its own.
"""
import os
import pathlib
import re
import subprocess
import sys

readme = (pathlib.Path(__file__).parents[2] / "README.md").read_text()
folder = pathlib.Path(sys.argv[1])
first_line = re.compile(r"(?:! |/\* |// |# )([\w.]+): (.*?)(?: \*/)?$")


def run(command):
    done = subprocess.run(command, shell=True, cwd=folder, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{command}: exit status {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


lines = 0
waiting = {}  # what commands have printed, until a text block shows it
shown = ""
for language, block in re.findall(r"^```(\w+)\n(.*?)^```$", readme, re.M | re.S):
    named = first_line.match(block.split("\n", 1)[0])
    if named:
        file, command = named.groups()
        (folder / file).write_text(block)
        printed = run(command)
        lines += 1
        if language == "cmake":  # builds the program before it
            assert printed.endswith(shown), printed
        else:
            waiting[command] = printed
    elif language == "text" and waiting:
        shown = block
        for command, printed in waiting.items():
            if printed.rstrip("\n") != shown.rstrip("\n"):
                sys.exit(f"{command}\nprints\n{printed}not\n{shown}")
        waiting.clear()
    elif language == "sh" and "PKG_CONFIG_PATH" not in os.environ:
        for command in block.splitlines():
            if run(command + " && ./a.out") != shown:
                sys.exit(f"{command}: another result")
            lines += 1
if waiting or lines < 5:
    sys.exit(f"{lines} lines found in README.md; nothing shows what these print: {list(waiting)}")
print(f"{lines} lines of README.md do what it says")
