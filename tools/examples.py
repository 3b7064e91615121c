#!/usr/bin/env python3
"""tools/examples.py - the examples of the manual: one for each routine that a program calls, compiled, run and compared

    examples.py compare PROGRAM FILE    runs the program of docs/examples/FILE and compares what it prints with FILE.out
    examples.py missing                 fails where a family has no example, and names it

In the sources an example lies between two comments, "example NAME, NAME" and "end"; what it prints follows a line
"-- NAME, NAME" in the output. NAME is any member of a family.
"""
import re
import subprocess
import sys
from collections import namedtuple
from pathlib import Path

LANGUAGES = {".cpp": "cpp", ".c": "c", ".f90": "fortran", ".py": "python"}
Example = namedtuple("Example", "file language code output")


def cut(text, source):
    """The lines of each example of a source, less their indentation."""
    for names, body in re.findall(r"(?ms)^ *(?://|/\*|!|#) example (.*?)(?: \*/)?$\n(.*?)^ *(?://|/\*|!|#) end", text):
        lines = body.rstrip().split("\n")
        indent = min(len(line) - len(line.lstrip()) for line in lines if line.strip())
        yield names, [line[indent:] for line in lines]


def printed(text):
    parts = re.split(r"(?m)^-- (.*)\n", text)
    return dict(zip(parts[1::2], (part.rstrip("\n").split("\n") for part in parts[2::2])))


def read(folder):
    """Examples by the names of their routines."""
    result = {}
    for source in sorted(folder.glob("*")):
        if source.suffix not in LANGUAGES:
            continue
        outputs = printed((folder / (source.name + ".out")).read_text())
        for names, lines in cut(source.read_text(), source):
            if names not in outputs:
                sys.exit(f"{source}: nothing is printed for {names}")
            for name in names.split(", "):
                result[name] = Example(source.name, LANGUAGES[source.suffix], lines, outputs[names])
    return result


def missing(folder):
    import interface
    known = read(folder)
    for header in interface.read("include/orvel")["headers"]:
        for family in header["families"]:
            if not any(m["name"] in known for m in family["members"]):
                yield family["name"]


def main():
    folder = Path("docs/examples")
    if sys.argv[1] == "missing":
        sys.exit(" ".join(missing(folder)) or 0)
    program, name = sys.argv[2:]
    result = subprocess.run(program.split(), capture_output=True, text=True)
    wanted = folder / (name + ".out")
    if result.returncode != 0:
        sys.exit(f"{program}: status {result.returncode}\n{result.stderr}")
    if not wanted.exists():
        sys.exit(f"there is no {wanted}; the program prints\n{result.stdout}")
    if result.stdout != wanted.read_text():
        diff = subprocess.run(["diff", "-u", wanted, "-"], input=result.stdout, capture_output=True, text=True)
        sys.exit(diff.stdout)


if __name__ == "__main__":
    main()
