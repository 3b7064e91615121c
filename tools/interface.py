#!/usr/bin/env python3
"""tools/interface.py [DIRECTORY] - reads the public headers and prints the description of the interface as JSON

The headers are the one description; Fortran modules, export lists, tables for tests and documents are made from it.
What cannot be understood is an error that names file and line. A header is a sequence of comments and declarations:

    first comment          describes the header; what it says of arguments and texts holds for all its entries
    /* ---- title -------   opens a section, for whose entries it holds in the same way
    any other comment      is an entry: it describes the declarations that follow it, a family of routines

The first sentence of an entry is its purpose. In a comment, a line that is indented by four more blanks is a row of one
of these kinds, continued by lines that are indented further:

    A(M:LDA,N)  in         meaning           an argument, its shape and its role
    KA          =          K if TRANS = N, else M      a length that shapes use
    TERMINAL 1  N < 1                        an error: severity, code, cause; "the text"; -> the remedy
    cause       N < 1                        "the text" that all errors of this cause have, said once for many entries

Roles: in, out, inout, in/out (the one or the other, as another argument says), scratch, function. A shape X(N:INCX) is
a vector of N elements INCX apart, A(M:LDA,N) a matrix of M rows and N columns LDA apart. Values that an argument may have begin its meaning: "1: whole; 2: upper half".
"may be B" in a meaning allows an argument to be the same array as another, "or N complex numbers" a real array to be
complex, "null" a text of the host interface to be left out. A row that an entry lacks is looked up in its section and in
the header. Paragraphs that begin with one of the LABELS are kept by that name. "The errors are those of LSARG" copies
errors, "Passes up the errors of Q2AGS" names the routines below.
"""
import json
import re
import sys
from pathlib import Path

ROLES = ("in", "out", "inout", "in/out", "scratch", "function")
SEVERITIES = ("NOTE", "ALERT", "WARNING", "FATAL", "TERMINAL")
KERNELS = ("kernels.h", "matrices.h")  # whose names begin with the letter of the precision
LABELS = ("After an error", "Accuracy", "Time", "Scratch", "Threads", "NaN", "Source")
SCALARS = {
    "int32_t": "integer", "int64_t": "long", "uint32_t": "unsigned", "uint64_t": "long unsigned",
    "float": "single", "double": "double", "orvel_complex": "complex", "orvel_dcomplex": "double complex",
    "char": "character", "size_t": "size", "void": "none", "orvel_function": "single function",
    "orvel_dfunction": "double function",
}


class Misunderstood(Exception):
    pass


def fail(where, what):
    raise Misunderstood(f"{where}: {what}")


# ---- comments --------------------------------------------------------------------------------------------


def plain_lines(comment):
    """The lines of a comment without its frame, indentation kept."""
    body = comment.removeprefix("/*").removesuffix("*/")
    lines = [re.sub(r"^ \* ?", "", line).rstrip() for line in body.split("\n")]
    return [lines[0].strip()] + [line if line.strip() else "" for line in lines[1:]]


def groups(lines):
    """Paragraphs (0, text) and rows (4, [line, continuations])."""
    result = []
    for line in lines:
        indent = len(line) - len(line.lstrip())
        if not line:
            result.append(None)
        elif indent >= 4:
            row = result and result[-1] and result[-1][0] == "row"
            if row and indent > 4:
                result[-1][1].append(line.strip())
            else:
                result.append(("row", [line.strip()]))
        elif result and result[-1] and result[-1][0] == "prose":
            result[-1] = ("prose", result[-1][1] + " " + line.strip())
        else:
            result.append(("prose", line.strip()))
    return [group for group in result if group]


def split_row(row):
    """Cause or meaning, text in quotes, remedy."""
    whole = " ".join(row)
    whole, _, remedy = whole.partition(" -> ")
    found = re.fullmatch(r'(.*?)(?:\s+"(.*)")?', whole.strip())
    return found[1].strip(), found[2], remedy.strip() or None


class Scope:
    """What one comment says; looks up in the comment around it what it does not say itself."""

    def __init__(self, where, lines, outer=None):
        self.where, self.outer = where, outer
        self.arguments, self.lengths, self.causes, self.errors = {}, {}, {}, []
        self.labels, self.prose, self.same_as, self.passes = {}, [], [], []
        for kind, content in groups(lines):
            if kind == "prose":
                self.paragraph(content)
            elif not self.row(content):
                self.prose.append({"verbatim": content})

    def paragraph(self, text):
        label = next((label for label in LABELS if text.startswith(label + ": ")), None)
        if label:
            self.labels[label] = text[len(label) + 2:]
            return
        for sentence in re.findall(r"The errors are those of ([^.]+)\.", text):
            self.same_as += re.findall(r"\b[A-Z][A-Z0-9]+\b", sentence)
        for sentence in re.findall(r"Passes up the errors of ([^.]+)\.", text):
            self.passes.append(sentence)
        self.prose.append(text)

    def row(self, lines):
        head = lines[0]
        if found := re.match(rf"({'|'.join(SEVERITIES)}) (\d+|[A-Z]+)  +(.*)", head):
            cause, text, remedy = split_row([found[3], *lines[1:]])
            self.errors.append({"severity": found[1], "code": int(found[2]) if found[2].isdigit() else found[2], "cause": cause, "text": text,
                                "remedy": remedy})
        elif found := re.match(r"cause  +(.*)", head):
            cause, text, remedy = split_row([found[1], *lines[1:]])
            if text is None:
                fail(self.where, f"the cause {cause!r} has no text")
            self.causes[cause] = text, remedy
        elif found := re.match(r"([A-Z][A-Z0-9]*)  +=  +(.*)", head):
            self.lengths[found[1]] = " ".join([found[2], *lines[1:]])
        elif found := re.match(r"([A-Z][A-Z0-9, ]*?)(\(.*?\))?  +(\S+)(?:  +(.*))?$", head):
            if found[3] not in ROLES:
                return False
            meaning = " ".join([found[4] or "", *lines[1:]]).strip()
            for name in found[1].split(", "):
                self.arguments[name] = argument(self.where, name, found[2], found[3], meaning)
        else:
            return False
        return True

    def find(self, table, key):
        values = getattr(self, table)
        if key in values:
            return values[key]
        return self.outer.find(table, key) if self.outer else None

    def label(self, name):
        return self.labels.get(name) or (self.outer.label(name) if self.outer else None)


def argument(where, name, shape, role, meaning):
    dimensions, step, rows = None, None, None
    if shape:
        dimensions = split_at_commas(shape[1:-1])
        first, colon, second = dimensions[0].partition(":")
        if colon and len(dimensions) == 1:
            dimensions, step = [first], second
        elif colon:
            dimensions[0], rows = second, first
    choices = re.findall(r"(?:^|; )([A-Z0-9-]+): ([^;]+)", meaning)
    return {"name": name, "role": role, "shape": dimensions, "rows": rows, "step": step, "meaning": meaning,
            "choices": {value: text.strip() for value, text in choices} or None,
            "may_be": re.findall(r"may be ([A-Z][A-Z0-9]*)\b", meaning)}


def split_at_commas(text):
    parts, depth = [""], 0
    for character in text:
        depth += (character == "(") - (character == ")")
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.strip() for part in parts]


# ---- declarations ----------------------------------------------------------------------------------------


def parameter(where, text):
    found = re.fullmatch(r"(const )?(struct )?(\w+)(\*)? (\w+)", text)
    if not found or not (found[3] in SCALARS or found[2] or found[3].startswith("orvel_")):
        fail(where, f"parameter {text!r}")
    return {"name": found[5].rstrip("_").upper(), "type": SCALARS.get(found[3], found[3]), "const": bool(found[1]),
            "pointer": bool(found[4]), "c": text}


def declaration(where, text):
    """A function, a block of state, or a type; None for what says nothing about the interface."""
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    text = re.sub(r"\s+", " ", text).strip().replace("( ", "(").replace(" )", ")")
    if found := re.fullmatch(r"(?:struct |const )?(\w+)\*? (\w+)\((.*)\)", text):
        parameters = [] if found[3] == "void" else [parameter(where, p) for p in split_at_commas(found[3])]
        if found[1] not in SCALARS and not found[1].startswith("orvel_"):
            fail(where, f"result of {text!r}")
        return {"function": found[2], "returns": SCALARS.get(found[1], found[1]), "parameters": parameters,
                "c": text + ";"}
    if found := re.fullmatch(r"extern ORVEL_PER_THREAD (.+) (\w+)(\[\d+\])?", text):
        return {"block": found[2], "type": found[1] + (found[3] or "")}
    if found := re.fullmatch(r"struct (\w+) \{(.*)\}", text):
        members = [m.strip() for m in found[2].split(";") if m.strip()]
        return {"struct": found[1], "members": members}
    if found := re.fullmatch(r"typedef (.*)", text):
        return {"typedef": found[1]}
    fail(where, f"declaration {text!r}")


def pieces(path):
    """Comments and declarations of a header with their lines, from ORVEL_BEGIN to ORVEL_END."""
    text = path.read_text()
    first = re.match(r"/\*.*?\*/", text, flags=re.S)
    if not first:
        fail(path.name, "no comment at the start")
    yield 1, "comment", first[0]
    start, end = text.find("\nORVEL_BEGIN\n"), text.rfind("\nORVEL_END\n")
    body, at = text[start + 13:end], start + 13
    token = re.compile(r"\s+|#[^\n]*|/\*.*?\*/|(?:[^;{/]|/(?!\*))*(?:\{[^}]*\}\s*)?;", flags=re.S)
    position = 0
    while position < len(body):
        found = token.match(body, position)
        line = text.count("\n", 0, at + position) + 1
        if not found:
            fail(f"{path.name}:{line}", f"not understood: {body[position:position + 60]!r}")
        piece = found[0]
        if piece.startswith("/*"):
            yield line, "comment", piece
        elif piece.strip() and not piece.startswith("#"):
            yield line, "declaration", piece.rstrip(";")
        position = found.end()


# ---- families --------------------------------------------------------------------------------------------


def checked_members(entry, functions):
    """The routines of an entry; every parameter has a row of a role that its type can have."""
    members = []
    for where, function in functions:
        arguments, lengths = [], []
        for p in function["parameters"]:
            if p["type"] == "size":
                lengths.append(p["name"])
                continue
            row = entry.find("arguments", p["name"])
            if row is None:
                fail(where, f"{function['function']} has no row for {p['name']}")
            written = row["role"] not in ("in", "function")
            if p["pointer"] and p["const"] == written and p["type"] != "none":
                fail(where, f"{p['name']} of {function['function']} is {row['role']}, but {p['c']!r}")
            if (row["role"] == "function") != p["type"].endswith(("function", "writer", "handler", "call", "routine")):
                fail(where, f"{p['name']} of {function['function']} is a function or is none")
            if p["name"] == "VALUE" and written and function["returns"] != "none":
                fail(where, f"VALUE is what C++ and Python call the result of {function['function']}")
            arguments.append({"name": p["name"], "type": p["type"], "by_value": not p["pointer"]})
        members.append({"name": function["function"], "returns": function["returns"], "arguments": arguments,
                        "lengths": lengths, "c": function["c"]})
    names = {a["name"] for m in members for a in m["arguments"]}
    for name in entry.arguments:
        if name not in names:
            fail(entry.where, f"no routine has the argument {name}")
    return members


def with_texts(entry, errors):
    """Errors with the texts and remedies that stand at their causes further out."""
    result = []
    for error in errors:
        text, remedy = error["text"], error["remedy"]
        if text is None:
            shared = entry.find("causes", error["cause"])
            if shared is None:
                fail(entry.where, f"no text for {error['severity']} {error['code']}, {error['cause']}")
            text, remedy = shared[0], remedy or shared[1]
        result.append(dict(error, text=text, remedy=remedy))
    return result


def shape_symbols(family):
    """Names in shapes are arguments or lengths of the family."""
    known = {a["name"] for m in family["members"] for a in m["arguments"]} | set(family["lengths"])
    for row in family["arguments"].values():
        for expression in filter(None, [*(row["shape"] or []), row["step"], row["rows"]]):
            for name in re.findall(r"[A-Z][A-Z0-9]*", expression):
                if name not in known:
                    fail(family["where"], f"the shape of {row['name']} needs {name}")
    for name, value in family["lengths"].items():
        for symbol in re.findall(r"[A-Z][A-Z0-9]+|[A-Z](?![A-Za-z])", re.sub(r"= [A-Z]( or [A-Z])*", "", value)):
            if symbol not in known:
                fail(family["where"], f"the length {name} needs {symbol}")


def kernel_stems(members):
    """Names of kernels without the letters of their precision, where that leaves one name for several. One letter or
    two: SCOPY is COPY in single precision, and SCASUM the sum of single complex numbers."""
    stems = {}
    for member in members:
        for letters in ("[SDCZ]", "SC|DZ|CS|ZD"):
            if found := re.fullmatch(rf"(I?)({letters})(\w+)", member["name"]):
                stems.setdefault(found[1] + found[3], []).append(member)
    for stem, group in sorted(stems.items(), key=lambda item: len(item[1])):  # the most common one holds
        if len(group) > 1 and stem not in {m["name"] for m in members}:
            for member in group:
                member["generic"] = stem


def generic_names(members):
    """One name over the precisions, that of the single real member."""
    by_name = {m["name"]: m for m in members}

    def shape_of(member):
        return tuple(a["name"] for a in member["arguments"])

    for member in members:
        name, generic = member["name"], member["name"]
        pairs = {"DLNGAM": "ALNGAM", "DLGAMS": "ALGAMS", "D9LGMC": "R9LGMC", "D9GAML": "R9GAML"}
        single = pairs.get(name, name[1:] if name[0] == "D" else None)
        if single in by_name and shape_of(by_name[single]) == shape_of(member):
            generic = single
        for k, letter in enumerate(generic):  # the complex member of a real one
            if letter == "C":
                real = generic[:k] + "R" + generic[k + 1:]
                if real in by_name and shape_of(by_name[real]) == shape_of(member):
                    generic = real
                    break
        symmetric = generic[:-1] + "S" if generic.endswith("H") else None  # of a Hermitian member
        if symmetric in by_name and shape_of(by_name[symmetric]) == shape_of(member):
            generic = symmetric
        member["generic"] = generic


def family_of(entry, functions, section):
    members = checked_members(entry, functions)
    names = [a["name"] for m in members for a in m["arguments"]]
    rows = {name: entry.find("arguments", name) for name in dict.fromkeys(names)}
    first = next((p for p in entry.prose if isinstance(p, str)), None)
    if first is None:
        fail(entry.where, "no purpose")
    purpose, _, rest = first.partition(". ")
    used, lengths = " ".join(" ".join([*(r["shape"] or []), r["rows"] or ""]) for r in rows.values()), {}
    scope = entry
    while scope:
        for name, value in scope.lengths.items():
            if re.search(rf"\b{name}\b", used):
                lengths.setdefault(name, value)
        scope = scope.outer
    generic_names(members)
    if entry.where.startswith(KERNELS):
        kernel_stems(members)
    family = {
        "name": members[0]["name"], "where": entry.where, "section": section, "purpose": purpose.rstrip(".") + ".",
        "text": ([rest] if rest else []) + entry.prose[entry.prose.index(first) + 1:], "members": members,
        "arguments": rows, "lengths": lengths, "errors": with_texts(entry, entry.errors),
        "same_errors_as": entry.same_as, "passes_up": entry.passes,
        "labels": {label: entry.label(label) for label in LABELS if entry.label(label)},
    }
    shape_symbols(family)
    return family


def read_header(path):
    header = {"name": path.name, "families": [], "blocks": [], "types": [], "sections": []}
    whole, section, entry, functions = None, None, None, []

    def close():
        if functions:
            header["families"].append(family_of(entry, functions, header["sections"][-1]["title"]
                                                if header["sections"] else None))
            functions.clear()

    for line, kind, piece in pieces(path):
        where = f"{path.name}:{line}"
        if kind == "comment":
            close()
            lines = plain_lines(piece)
            if whole is None:
                entry = whole = Scope(where, lines)
                header["title"] = lines[0]
                continue
            if title := re.match(r"---- (.+?) -+$", lines[0]):
                section = entry = Scope(where, lines[1:], whole)
                header["sections"].append({"title": title[1], "text": section.prose,
                                           "standard": any("liborvel_blas" in str(p) for p in section.prose)})
                continue
            entry = Scope(where, lines, section or whole)
            continue
        declared = declaration(where, piece)
        if "function" in declared:
            functions.append((where, declared))
        elif "block" in declared:
            header["blocks"].append(declared)
        else:
            header["types"].append(declared)
    close()
    header["text"] = whole.prose
    header["labels"] = whole.labels
    return header


def inherit_errors(headers):
    """Families whose errors are those of others get a copy of them; codes of their own replace one."""
    families = {m["name"]: f for h in headers for f in h["families"] for m in f["members"]}

    def errors(family, seen=()):
        result = list(family["errors"])
        for name in family["same_errors_as"]:
            if name not in families or name in seen:
                fail(family["where"], f"the errors are said to be those of {name}")
            own = {(e["severity"], e["code"], e["cause"]) for e in result}
            result += [e for e in errors(families[name], (*seen, name))
                       if (e["severity"], e["code"], e["cause"]) not in own]
        return result

    complete = [(f, errors(f)) for h in headers for f in h["families"]]
    for family, all_errors in complete:
        family["errors"] = sorted(all_errors, key=lambda e: (-SEVERITIES.index(e["severity"]), f"{e['code']:>4}"))


def read(directory):
    """The description of all headers, in the order in which orvel.h includes them."""
    directory = Path(directory)
    names = re.findall(r'#include "orvel/(\w+\.h)"', (directory / "orvel.h").read_text())
    headers = [read_header(directory / name) for name in names if name != "types.h"]
    inherit_errors(headers)
    return {"headers": headers}


def main():
    try:
        print(json.dumps(read(sys.argv[1] if len(sys.argv) > 1 else "include/orvel"), indent=1))
    except Misunderstood as problem:
        sys.exit(str(problem))


if __name__ == "__main__":
    main()
