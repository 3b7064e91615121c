#!/usr/bin/env python3
"""tools/manual.py INTO [HEADERS] - writes a man page for every family of routines, and one for each member that
includes it, into INTO/man3 (section 3orvel: some names are those of functions of C)"""
import re
import sys
from pathlib import Path

import interface
from synopsis import Synopsis


def escaped(text):
    """Text for groff: no line is taken for a request, no dash for a hyphen."""
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("^", "\\(ha").replace("'", "\\(aq").replace("~", "\\(ti")
    return re.sub(r"(?m)^\.", "\\&.", text)


def verbatim(lines):
    return [".nf", *(escaped(line) for line in lines), ".fi"]


def argument_rows(family):
    for row in family["arguments"].values():
        shape = ",".join(row["shape"] or [])
        step = f", {row['step']} apart" if row["step"] else f", {row['rows']} rows" if row["rows"] else ""
        yield ".TP"
        yield f"\\fB{escaped(row['name'])}{f'({escaped(shape)}){step}' if shape else ''}\\fR (\\fI{row['role']}\\fR)"
        yield escaped(row["meaning"]) if row["meaning"] else "Scratch storage."
    for name, value in family["lengths"].items():
        yield ".TP"
        yield f"\\fB{name}\\fR"
        yield f"is {escaped(value)}."


def error_rows(family):
    for error in family["errors"]:
        yield ".TP"
        yield f"\\fB{error['severity']} {error['code']}\\fR"
        yield escaped(error["cause"]) + "."
        yield f"\\(lq{escaped(error['text'].strip())}\\(rq"
        if error["remedy"]:
            yield f"Remedy: {escaped(error['remedy'])}."


def page(header, family, synopsis):
    names = [m["name"] for m in family["members"]]
    yield f'.TH {names[0]} 3orvel "" "liborvel" "Orvel reference"'
    yield ".SH NAME"
    yield f"{', '.join(map(escaped, names))} \\- {escaped(family['purpose'].rstrip('.'))}"
    yield ".SH SYNOPSIS"
    for title, _, lines in synopsis.all(header, family):
        yield f"{title}:"
        yield ".PP"
        yield from verbatim(lines)
        yield ".PP"
    if family["text"]:
        yield ".SH DESCRIPTION"
        for text in family["text"]:
            yield ".PP"
            yield from verbatim(text["verbatim"]) if isinstance(text, dict) else [escaped(text)]
    if family["arguments"]:
        yield ".SH ARGUMENTS"
        yield from argument_rows(family)
    if family["errors"] or family["passes_up"]:
        yield ".SH ERRORS"
        yield from error_rows(family)
        for passed in family["passes_up"]:
            yield ".PP"
            yield f"Passes up the errors of {escaped(passed)}."
    for label, text in family["labels"].items():
        yield f".SH {label.upper()}"
        yield escaped(text[0].upper() + text[1:])


def main():
    into = Path(sys.argv[1]) / "man3"
    into.mkdir(parents=True, exist_ok=True)
    for old in into.glob("*.3orvel"):
        old.unlink()
    description = interface.read(sys.argv[2] if len(sys.argv) > 2 else "include/orvel")
    synopsis = Synopsis(description, 76)
    for header in description["headers"]:
        for family in header["families"]:
            names = [m["name"].lower() for m in family["members"]]
            (into / f"{names[0]}.3orvel").write_text("\n".join(page(header, family, synopsis)) + "\n")
            for name in names[1:]:
                (into / f"{name}.3orvel").write_text(f".so man3/{names[0]}.3orvel\n")


if __name__ == "__main__":
    main()
