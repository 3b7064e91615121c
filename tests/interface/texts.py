#!/usr/bin/env python3
"""tests/interface/texts.py - the texts of errors in the public headers are those that the sources post

Every text of a header is a literal of the sources, letter by letter (but for the letter of a parameter's kind, which
fronts write small), and every literal that the sources post is in a header. Where the call has the code as a number,
it and the severity are compared, too.
"""
import re
import sys
from pathlib import Path

sys.path.insert(0, "tools")
import interface

LITERALS = r'"(?:[^"\\]|\\.)*"(?:\s*"(?:[^"\\]|\\.)*")*'
SEVERITY = r"\b(?:frame::)?(note|alert|warning|fatal|terminal)\b"
FOLDERS = "fft frame interp kernels linsys optim quad random special util zeros".split()


def canonical(text):
    return re.sub(r"%\(([a-z])(\d)\)", lambda m: f"%({m[1].upper()}{m[2]})", text)


def joined(literals):
    return canonical("".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals)))


def posted():
    """(severity, code, text) of the sources, with None for what is not a word or number at the call."""
    for folder in FOLDERS:
        for path in sorted(Path(folder).glob("*.[ch]*")):
            source = re.sub(r"//[^\n]*", "", path.read_text())
            for found in re.finditer(rf"(?:{SEVERITY},\s*)?(?:\b(\d+)|[\w:]+(?: \+ \d+)?),\s*({LITERALS})", source):
                text = joined(found[3])
                if " " in text and len(text) > 20 and not text.startswith(" ***"):
                    yield path, found[1], found[2], text


def main():
    description = interface.read("include/orvel")
    documented = {}
    for header in description["headers"]:
        for family in header["families"]:
            for error in family["errors"]:
                documented.setdefault(canonical(error["text"]), set()).add((error["severity"], str(error["code"])))
    problems, seen = [], set()
    everything = "".join(joined(m[0]) + "\n" for folder in FOLDERS for path in Path(folder).glob("*.[ch]*")
                         for m in re.finditer(LITERALS, re.sub(r"//[^\n]*", "", path.read_text())))
    for text in documented:
        if text not in everything.split("\n"):
            problems.append(f"no source posts: {text}")
    for path, severity, code, text in posted():
        if text not in documented:
            if "%(" in text or text.endswith("."):
                problems.append(f"{path}: not in a public header: {text}")
            continue
        seen.add(text)
        pairs = documented[text]
        if severity and severity.upper() not in {s for s, _ in pairs}:
            problems.append(f"{path}: {severity} in the source, {pairs} in the header: {text}")
        if code and code not in {c for _, c in pairs}:
            problems.append(f"{path}: code {code} in the source, {pairs} in the header: {text}")
    print("\n".join(problems) or f"{len(documented)} texts, {len(seen)} of them looked up at the calls that post them")
    return bool(problems)


if __name__ == "__main__":
    sys.exit(main())
