#!/usr/bin/env python3
"""tests/interface/errors.py LIBRARY - every documented check of an argument posts its severity, code and text

Calls each routine with ordinary arguments, made from their kinds and shapes, but for the one that an error's cause
names: "N < 1", "LDA < max(1,M)", "IPATH is neither 1 nor 2", "UPLO is not U or L", "SIDE = L and LDA < max(1,M)". That
error must be among what is printed. Causes of another kind are left to the tests of their families.
"""
import ctypes
import re
import sys

sys.path.insert(0, "tools")
import interface

C_TYPES = {"integer": ctypes.c_int32, "long": ctypes.c_int64, "single": ctypes.c_float, "double": ctypes.c_double,
           "complex": ctypes.c_float * 2, "double complex": ctypes.c_double * 2, "character": ctypes.c_char}
ORDINARY = {"M": 3, "N": 4, "K": 2, "KL": 1, "KU": 1, "NDATA": 6, "NINTV": 5, "KORDER": 4, "MAXSUB": 10, "NRA": 3,
            "NCA": 3, "INCX": 1, "INCY": 1, "NOS": 3, "ITMAX": 5, "NROOT": 1, "MAXFN": 9, "NVALS": 2,
            "MONTH": 3, "IDAY": 3, "IYEAR": 2000, "IDERIV": 1, "IRULE": 2, "IERTYP": 0, "LO": 1, "HI": 5, "IARG": 3, "ERRABS": 0.5,
            "ERRREL": 0.5, "CHAPTER": "MATH"}
messages = []
WRITER = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_int32, ctypes.c_void_p, ctypes.c_size_t)
keep = WRITER(lambda context, unit, text, length: messages.append(ctypes.string_at(text, length).decode()))
SINGLE = ctypes.CFUNCTYPE(ctypes.c_float, ctypes.POINTER(ctypes.c_float))(lambda x: x[0] * x[0])
DOUBLE = ctypes.CFUNCTYPE(ctypes.c_double, ctypes.POINTER(ctypes.c_double))(lambda x: x[0] * x[0])
CONDITION = re.compile(r"(\w+) (<=|<|>|=) ((?:[A-Z]+|\d+|max\(1,[A-Z]+\))(?: \+ (?:[A-Z]+|\d+))*)")
SET = re.compile(r"(\w+) is (?:not|neither) (?:[A-Z]|MATH|-?\d+)(?:(?:,| to| or| nor)+ (?:[A-Z]|-?\d+))*")


def ordinary(family):
    """Values of the scalar arguments: the first choice, small sizes, leading dimensions with room."""
    values = {}
    for name, row in family["arguments"].items():
        if row["choices"]:
            first = next(iter(row["choices"]))
            values[name] = int(first) if first.lstrip("-").isdigit() else first
        else:
            values[name] = ORDINARY.get(name, 8 if name.startswith("LD") else 1)
    if family["name"] == "IUMAG":
        values["IOPT"] = 16
    return values


def spoiled(cause, values):
    """Values for which the cause holds, or None where this program does not understand it."""
    values = dict(values)
    *conditions, last = re.split(r" and ", cause.partition(";")[0].partition(":")[0])
    for condition in conditions:
        found = re.fullmatch(r"(\w+) = (\w)(?: or \w)*", condition)
        if not found or found[1] not in values:
            return None
        values[found[1]] = found[2]
    if found := CONDITION.fullmatch(last):
        name, relation, bound = found.groups()
        if name not in values or isinstance(values[name], str):
            return None
        limit = eval(bound, {"max": max}, values)
        values[name] = {"<": limit - 1, "<=": limit, ">": limit + 1, "=": limit}[relation]
        if relation == ">" and bound in values:  # a leading dimension that is too small, arrays as they were
            values[name], values[bound] = limit, limit - 1
    elif (found := SET.fullmatch(last)) and found[1] in values:
        values[found[1]] = "Q" if isinstance(values[found[1]], str) else 77
    else:
        return None
    return values


def call(library, member, family, values):
    arguments, lengths, alive = [], [], []
    for argument in member["arguments"]:
        name, kind = argument["name"], argument["type"]
        row = family["arguments"][name]
        if kind.endswith("function"):
            arguments.append(SINGLE if kind.startswith("single") else DOUBLE)
            continue
        if kind == "character":
            text = str(values[name]).encode()
            arguments.append(ctypes.c_char_p(text))
            if row["shape"]:
                lengths.append(ctypes.c_size_t(len(text)))
            continue
        if row["shape"]:
            data = (C_TYPES[kind] * 2000)()
            if kind in ("single", "double"):  # an abscissa, an ordinate and an element of a matrix
                data[:] = [k * k + 1 for k in range(2000)]
            elif kind == "integer":
                data[:] = [k + 1 for k in range(2000)]
        else:
            data = C_TYPES[kind](values[name]) if kind in ("integer", "long", "single", "double") else C_TYPES[kind]()
        alive.append(data)
        arguments.append(ctypes.byref(data))
    getattr(library, member["name"])(*arguments, *lengths)


def expected(text):
    """The text as a pattern, white space alike, numbers and letters where the parameters stand."""
    pattern = re.sub(r"%\\\(\w\d\\\)", ".+?", re.escape(text.strip()))
    return re.sub(r"(?:\\ |\s)+", r"\\s+", pattern)


def main():
    library = ctypes.CDLL(sys.argv[1])
    library.orvel_bind_unit(6, keep, None)
    zero, on, off = (ctypes.byref(ctypes.c_int32(k)) for k in (0, 1, 0))
    library.ERSET(zero, on, off)
    checked, problems = 0, []
    for header in interface.read("include/orvel")["headers"]:
        for family in header["families"]:
            ways = ordinary(family)
            for error in family["errors"]:
                values = spoiled(error["cause"], ways)
                origin = re.search(r"; from (\w+)", error["cause"])
                if values is None or header["name"] in ("frame.h", "host.h"):
                    continue
                changed = [name for name in ways if values[name] != ways[name]]
                for member in family["members"]:
                    names = {a["name"] for a in member["arguments"]}
                    if not set(changed) <= names or (origin and member["generic"] != origin[1]):
                        continue
                    messages.clear()
                    call(library, member, family, values)
                    text = re.sub(r"\n \*\*\*\s+", " ", "".join(messages))
                    code = error["code"] if isinstance(error["code"], int) else r"\d+"
                    line = rf"{error['severity']} +ERROR {code} from \w+\. +{expected(error['text'])}"
                    if not re.search(line, text):
                        problems.append(f"{member['name']}, {error['cause']}: {text!r}")
                    checked += 1
    print("\n".join(problems) or f"{checked} calls posted what the headers say")
    return 1 if problems or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
