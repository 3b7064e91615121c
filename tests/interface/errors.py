#!/usr/bin/env python3
"""tests/interface/errors.py LIBRARY - every documented check of an argument posts its severity, code and text

Calls each routine with ordinary arguments, made from their kinds and shapes, but for the one that an error's cause
names: "N < 1", "LDA < max(1,M)", "IPATH is neither 1 nor 2", "UPLO is not U or L", "SIDE = L and LDA < max(1,M)". That
error must be among what is printed, with the value given, and outputs must be as they were where the header says so.
Kernels on matrices also get two bad arguments at once, and post the first error only. Causes of another kind are left to
the tests of their families.
"""
import ctypes
import importlib.machinery
import importlib.util
import re
import sys

sys.path.insert(0, "tools")
import interface
from generate import ordinary

C_TYPES = {"integer": ctypes.c_int32, "long": ctypes.c_int64, "single": ctypes.c_float, "double": ctypes.c_double,
           "complex": ctypes.c_float * 2, "double complex": ctypes.c_double * 2, "character": ctypes.c_char}
DESCRIPTION = interface.read("include/orvel")
explain = importlib.util.module_from_spec(importlib.util.spec_from_loader(
    "explain", importlib.machinery.SourceFileLoader("explain", "tools/orvel")))
explain.__loader__.exec_module(explain)
messages = []
WRITER = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_int32, ctypes.c_void_p, ctypes.c_size_t)
keep = WRITER(lambda context, unit, text, length: messages.append(ctypes.string_at(text, length).decode()))
SINGLE = ctypes.CFUNCTYPE(ctypes.c_float, ctypes.POINTER(ctypes.c_float))(lambda x: x[0] * x[0])
DOUBLE = ctypes.CFUNCTYPE(ctypes.c_double, ctypes.POINTER(ctypes.c_double))(lambda x: x[0] * x[0])
CONDITION = re.compile(r"(\w+) (<=|<|>|=) ((?:(?:\d+\*)?[A-Z]+|\d+|max\(1,[A-Z]+\))(?: \+ (?:[A-Z]+|\d+))*)")
POSTED_BY = {"CSDER": "PPDER", "CSITG": "PPITG", "C2INT": "C2DEC",
             "C1DAT": "USER"}  # a check in common, and one of the caller's own
SET = re.compile(r"(\w+) is (?:not|neither) (?:[A-Z]|MATH|-?\d+)(?:(?:,| to| or| nor)+ (?:[A-Z]|-?\d+))*")


def spoiled(cause, values):
    """Values for which the cause holds, or None where this program does not understand it."""
    values = dict(values)
    *conditions, last = re.split(r" and ", cause.partition(";")[0].partition(":")[0])
    for condition in conditions:
        found = re.fullmatch(r"(\w+) = (\w)(?: or \w)*", condition)
        if not found or found[1] not in values:
            return None
        values[found[1]] = found[2].lower()  # letters of either case are the same
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
    """Calls the routine; whether an array that it may write has changed."""
    arguments, lengths, written = [], [], []
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
            if row["role"] not in ("in", "scratch"):
                written.append((data, bytes(data)))
        else:
            data = C_TYPES[kind](values[name]) if kind in ("integer", "long", "single", "double") else C_TYPES[kind]()
        arguments.append(ctypes.byref(data))
    getattr(library, member["name"])(*arguments, *lengths)
    return any(bytes(data) != before for data, before in written)


def expected(error, member):
    """What is printed, as a pattern: white space alike, numbers and letters where the parameters stand. The routine is
    the one that was called, or its worker."""
    double, name = re.fullmatch(r"(D?)(\w+)", member["name"]).groups()
    names = "|".join(double + n for n in (name, name[0] + "2" + name[2:], POSTED_BY.get(name, name)))
    text = re.sub(r"%\\\(\w\d\\\)", ".+?", re.escape(error["text"].strip()))
    text = re.sub(r"(?:\\ |\s)+", r"\\s+", text)
    code = error["code"] if isinstance(error["code"], int) else r"\d+"
    return rf"{error['severity']} +ERROR {code} from (?:{names})\. +{text}"


def explained(error, printed):
    """The command-line tool finds the text by one of the messages as they were printed."""
    return any(error["text"] == found["text"] for message in printed
               for _, found in explain.matching(DESCRIPTION, message)[2])


def cases(family, first_only):
    """Errors with the values that provoke them; pairs, of which the first in the order of the codes is posted."""
    ways = ordinary(family)
    understood = [(e, spoiled(e["cause"], ways)) for e in family["errors"]]
    understood = [(e, {k: v for k, v in values.items() if v != ways[k]}, values) for e, values in understood if values]
    for error, changed, values in understood:
        yield error, None, changed, values
    if first_only:
        for a, changed_a, values_a in understood:
            for b, changed_b, _ in understood:
                both = spoiled(b["cause"], values_a)
                if a["code"] < b["code"] and both and not changed_a.keys() & changed_b.keys():
                    if spoiled(a["cause"], ways | changed_b) == both:
                        yield a, b, changed_a | changed_b, both


def fault(library, family, member, error, second, changed, values):
    messages.clear()
    wrote = call(library, member, family, values)
    text = re.sub(r"\n \*\*\*\s+", " ", "".join(messages))
    if not re.search(expected(error, member), text):
        return text or "nothing is posted"
    if member is family["members"][0] and not explained(error, messages):
        return f"orvel explain does not find it by {messages}"
    if second and re.search(expected(second, member), text):
        return f"also {second['cause']}"
    numbers = [v for v in changed.values() if isinstance(v, int)]
    if "%(I1)" in error["text"] and numbers and not any(re.search(rf"(?<![\d-]){v}\b", text) for v in numbers):
        return f"none of {numbers} in {text}"
    says_unchanged = re.match(r"(nothing is|the outputs are unchanged|\w+ is unchanged)",
                              family["labels"].get("After an error", ""))
    return "an output has changed" if wrote and says_unchanged else None


def main():
    library = ctypes.CDLL(sys.argv[1])
    library.orvel_bind_unit(6, keep, None)
    zero, on, off = (ctypes.byref(ctypes.c_int32(k)) for k in (0, 1, 0))
    library.ERSET(zero, on, off)
    checked, problems = 0, []
    for header in DESCRIPTION["headers"]:
        if header["name"] in ("frame.h", "host.h"):
            continue
        for family in header["families"]:
            for error, second, changed, values in cases(family, header["name"] == "matrices.h"):
                origin = re.search(r"; from (\w+)", error["cause"])
                for member in family["members"]:
                    if not changed.keys() <= {a["name"] for a in member["arguments"]} or \
                            (origin and member["generic"] != origin[1]):
                        continue
                    what = fault(library, family, member, error, second, changed, values)
                    if what:
                        problems.append(f"{member['name']}, {error['cause']}: {what}")
                    checked += 1
    print("\n".join(problems) or f"{checked} calls posted what the headers say")
    return 1 if problems or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
