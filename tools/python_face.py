"""The description of the interface in the form that the Python package reads, and its stubs.

For each name that Python users call: the members behind it, one for each precision, and what becomes of every argument
of the routine. Inputs are parameters, those without a default first, both in the order of the routine; sizes that
shapes determine are keywords; increments and leading dimensions come from the arrays; scratch is worked out; outputs
are returned. What cannot be told from the headers stands in the tables below, and nowhere else.
"""
import json
import re

import interface

# What is not called from Python: the frame, whose misuse stops a program, and what makes it fit for a host.
NOT_OFFERED = ("frame.h", "host.h")

# Defaults: argument, the routines that it holds for (None: all), its value as an expression, and the value in words
# where that is not clear. An expression may use the arguments, None where they are left out, and EPS, the distance
# from 1 to the next number of the precision.
QUADRATURE = ("QDAGS", "Q2AGS", "Q3AGS", "QDAG", "Q2AG", "Q3AG")
DEFAULTS = (
    ("IPATH", None, "1", None),
    ("TRANS", None, "'N'", None),
    ("TRANSA", None, "'N'", None),
    ("TRANSB", None, "'N'", None),
    ("UPLO", None, "'U'", None),
    ("DIAG", None, "'N'", None),
    ("SIDE", None, "'L'", None),
    ("ALPHA", None, "1.0", None),
    ("BETA", None, "0.0 if {old} is None else 1.0", "1 if {old} is given, else 0"),
    ("ERRABS", QUADRATURE, "0.0 if errrel else eps**0.5", "0 if ERRREL is given and not 0, else EPS**0.5"),
    ("ERRREL", QUADRATURE, "0.0 if errabs else eps**0.5", "0 if ERRABS is given and not 0, else EPS**0.5"),
    ("IRULE", None, "2", None),
    ("MAXSUB", QUADRATURE, "500", None),
    ("ERRABS", ("ZREAL",), "eps**0.75", "EPS**0.75"),
    ("ERRREL", ("ZREAL",), "eps**0.75", "EPS**0.75"),
    ("EPS", ("ZREAL",), "1e-5", None),
    ("ETA", ("ZREAL",), "1e-2", None),
    ("ITMAX", ("ZREAL",), "100", None),
    ("STEP", ("UVMIF",), "0.0", None),
    ("XACC", ("UVMIF",), "eps**0.4 * max(1.0, abs(xguess))", "EPS**0.4 times the larger of 1 and |XGUESS|"),
    ("MAXFN", ("UVMIF",), "100", None),
    ("ILEFT", None, "0", None),
    ("VLEFT", None, "0.0", None),
    ("IRIGHT", None, "0", None),
    ("VRIGHT", None, "0.0", None),
    ("KORDER", ("P3DER",), "4", None),
    ("CHAPTER", ("IUMAG",), "'MATH'", None),
    ("NVALS", ("IUMAG",), "2 if iopt == 16 else 1", "the number of IVALS, else that of the option"),
    ("SLEN", ("C1TCI",), "len(chrstr)", "the length of CHRSTR"),
)
# Sizes that are not the length of their array as it stands: here one less, as those who construct a spline return it.
ONE_LESS = {"NINTV": "BRKPT"}
# Arrays that calls keep things in: used where they are, not copied and not returned.
IN_PLACE = ("WFR", "WFC")

LETTERS = {"single": "s", "double": "d", "complex": "c", "double complex": "z", "integer": "i", "long": "l",
           "character": "t", "single function": "sf", "double function": "df", "none": ""}


class Unknown(interface.Misunderstood):
    pass


# ---- shapes ----------------------------------------------------------------------------------------------


def leaf(text):
    """An extent: a number, [symbol, what is added], or an expression."""
    text = text.strip()
    if text.isdigit():
        return int(text)
    if found := re.fullmatch(r"([A-Z]\w*)(?: ?\+ ?(\d+))?", text):
        return [found[1].lower(), int(found[2] or 0)]
    return text.lower().replace("/", "//")


def conditional(name, value, first, second):
    """[option, its value, the extent with it, the extent without it]"""
    return [name.lower(), int(value) if value.isdigit() else value, leaf(first), leaf(second)]


def extent(family, text):
    if text in family["lengths"]:
        found = re.fullmatch(r"(\w+) if (\w+) = (\w+), else (\w+)", family["lengths"][text])
        if not found:
            raise Unknown(f"{family['where']}: the length {text} is not understood")
        return conditional(found[2], found[3], found[1], found[4])
    if text in ONE_LESS:
        return text.lower()
    return leaf(text)


def shape(family, row):
    """The extents of an array and its leading dimension or None."""
    if not row["shape"] or row["shape"] == ["*"]:
        return None, None
    extents = [extent(family, e) for e in row["shape"][row["rows"] is not None:]]
    if row["rows"]:
        return [extent(family, row["rows"]), *extents], row["shape"][0].lower()
    return extents, None


# ---- routines --------------------------------------------------------------------------------------------


def default(name, routine, names):
    for argument, routines, value, words in DEFAULTS:
        if argument == name and (routines is None or routine in routines):
            old = next((n for n in ("Y", "C") if n in names and n != name), "")
            words = words and words.replace("{old}", old)
            return value.replace("{old}", old.lower()), words
    return None


def symbols_of(extents):
    """Symbols that an array of these extents determines."""
    for e in extents or ():
        if isinstance(e, list):
            yield from (e[:1] if len(e) == 2 else symbols_of(e[2:]))


def is_optional_array(name, names):
    """Old values that are not read with BETA = 0, and values that are only read when they are set."""
    return "BETA" in names and name in ("Y", "C") or name == "IVALS"


def routine_entry(name, family, members, index):
    """What becomes of each argument of the members of one name."""
    names = [a["name"] for a in members[0]["arguments"]]
    rows_of, steps = family["arguments"], {r["step"] for r in family["arguments"].values() if r["step"]}
    arguments, determined = [], set()
    for argument in names:
        row = rows_of[argument]
        extents, leading = shape(family, row)
        arguments.append((argument, row, extents, leading))
        if row["role"] in ("in", "inout", "in/out") and extents:
            determined |= set(symbols_of(extents))
    leadings = {leading for *_, leading in arguments if leading}
    entry = {"family": index, "arguments": {}, "required": [], "optional": {}, "sizes": [], "one_less": {}}
    for argument, row, extents, leading in arguments:
        low = argument.lower()
        what = {"role": row["role"]}
        if extents:
            what["shape"] = extents
        if row["shape"] == ["*"]:
            what["text"] = True
        if leading:
            what["leading"] = leading
        if row["step"]:
            what["step"] = row["step"].lower()
        if row["may_be"]:
            what["may_be"] = [n.lower() for n in row["may_be"] if n in names]
        if row["choices"] and not next(iter(row["choices"])).lstrip("-").isdigit():
            what["letters"] = list(row["choices"])
        if argument in IN_PLACE and row["role"] == "inout":
            what["in_place"] = True
        if "or N complex numbers" in row["meaning"]:
            what["bytes"] = True
        entry["arguments"][low] = what
        if row["role"] not in ("in", "inout", "in/out", "function") or argument in steps or low in leadings:
            continue
        known = default(argument, members[0]["generic"], names)
        if argument in ONE_LESS:
            entry["one_less"][low] = ONE_LESS[argument].lower()
        if argument in ONE_LESS or (low in determined and not row["shape"]):
            entry["sizes"].append(low)
            if known:
                entry["optional"][low] = known
        elif known:
            entry["optional"][low] = known
        elif is_optional_array(argument, names):
            entry["optional"][low] = ("None", "zeros")
        elif argument == "IPERM":
            entry["optional"][low] = ("None", "1 to N")
        else:
            entry["required"].append(low)
    entry["members"] = [[m["name"], LETTERS[m["returns"]], [LETTERS[a["type"]] for a in m["arguments"]],
                         len(m["lengths"])] for m in members]
    return entry


def traits(header, family):
    """What holds for all calls: may vectors overlap, may increments be negative, may arrays be left half done."""
    steps = [r for r in family["arguments"].values() if r["step"]]
    return {"overlap": header["name"] == "kernels.h", "backwards": header["name"] == "matrices.h" or len(steps) > 1,
            "fatal": bool(family["passes_up"]) or any(e["severity"] == "FATAL" for e in family["errors"])}


def is_elemental(header, family, entry):
    """Only scalars go in and come out, beside arrays that stay the same: calls for many values are one."""
    if header["name"] in interface.KERNELS or not entry["required"]:
        return False
    given = entry["required"] + list(entry["optional"])
    scalars = [n for n in given if not {"shape", "text", "letters"} & set(entry["arguments"][n])]
    results = [n for n, a in entry["arguments"].items() if a["role"] == "out"]
    if any("text" in a for a in entry["arguments"].values()):
        return False
    return bool(scalars) and all(a["role"] in ("in", "out") for a in entry["arguments"].values()) and not any(
        "shape" in entry["arguments"][n] for n in results) and (bool(results) or bool(entry["members"][0][1]))


def grouped(family):
    """The names of a family over the precisions, with their members."""
    groups = {}
    for member in family["members"]:
        groups.setdefault(member["generic"], []).append(member)
    return groups


def compact(description, version):
    result = {"version": version, "families": [], "routines": {}}
    routines = result["routines"]
    for header in description["headers"]:
        for family in header["families"] if header["name"] not in NOT_OFFERED else ():
            index = len(result["families"])
            result["families"].append(family_entry(header, family))
            for name, members in grouped(family).items():
                low = name.lower()
                if low in routines:  # the complex members of a family of their own
                    routines[low]["members"] += routine_entry(name, family, members, index)["members"]
                else:
                    routines[low] = routine_entry(name, family, members, index)
                    routines[low]["elemental"] = is_elemental(header, family, routines[low])
                for member in members:
                    own = routines.setdefault(member["name"].lower(), routine_entry(name, family, [member], index))
                    own.setdefault("elemental", is_elemental(header, family, own))
    return result


def family_entry(header, family):
    arguments = {n.lower(): [r["meaning"], ",".join(r["shape"] or []).lower(), r["role"]]
                 for n, r in family["arguments"].items()}
    return {"name": family["name"], "header": header["name"], "purpose": family["purpose"], "text": family["text"],
            "arguments": arguments, "lengths": {n.lower(): v for n, v in family["lengths"].items()},
            "errors": [[e[k] for k in ("severity", "code", "cause", "text", "remedy")] for e in family["errors"]],
            "passes_up": family["passes_up"], "labels": family["labels"], **traits(header, family)}


# ---- stubs -----------------------------------------------------------------------------------------------

STUB_HEAD = '''# Made from the public headers: what type checkers and editors know of the package.
from collections.abc import Callable
from typing import Any, NamedTuple

from numpy.typing import ArrayLike, DTypeLike, NDArray

from ._errors import Alert as Alert, Error as Error, FatalError as FatalError, TerminalError as TerminalError
from ._errors import Warning as Warning

version: str
library_path: str

def use_level(name: str | None) -> None: ...
def level() -> str: ...
'''


def stub_type(kinds, what):
    if kinds & {"sf", "df"}:
        return "Callable[[float], float]"
    if what.get("shape"):
        return "ArrayLike"
    if kinds & {"t"}:
        return "str"
    if kinds & {"i", "l"}:
        return "int"
    return "complex" if kinds & {"c", "z"} else "float"


def stub_results(name, entry):
    kinds = {letter: [] for letter in entry["arguments"]}
    for member in entry["members"]:
        for argument, kind in zip(entry["arguments"], member[2]):
            kinds[argument].append(kind)
    results = [("value", stub_type({m[1] for m in entry["members"]}, {}))] if entry["members"][0][1] else []
    for argument, what in entry["arguments"].items():
        if what["role"] in ("out", "inout", "in/out") and not what.get("in_place"):
            kind = "NDArray[Any]" if what.get("shape") else stub_type(set(kinds[argument]), what)
            results.append((argument, kind))
    return kinds, results


def stub(name, entry):
    kinds, results = stub_results(name, entry)
    elemental = " | ArrayLike" if entry["elemental"] else ""
    parameters = []
    for argument in entry["required"] + [n for n in entry["optional"] if n not in entry["sizes"]]:
        what = entry["arguments"][argument]
        kind = stub_type(set(kinds[argument]), what)
        kind += elemental if kind in ("float", "int", "complex") else ""
        missing = argument in entry["optional"]
        parameters.append(f"{argument}: {kind}{' | None = ...' if missing else ''}")
    keywords = [f"{n}: int | None = ..." for n in entry["sizes"]]
    keywords += [f"overwrite_{n}: bool = ..." for n, a in entry["arguments"].items()
                 if a["role"] in ("inout", "in/out") and a.get("shape") and not a.get("in_place")]
    if any(a["role"] == "out" and a.get("shape") for a in entry["arguments"].values()):
        keywords.append("out: Any = ...")
    if len(entry["members"]) > 1:
        keywords.append("dtype: DTypeLike | None = ...")
    if keywords:
        parameters += ["*", *keywords]
    if entry["elemental"]:
        result = "Any"
    elif len(results) == 1:
        result = results[0][1]
    else:
        result = f"_{name}_result" if results else "None"
    if len(results) > 1:
        yield f"class _{name}_result(NamedTuple):"
        yield from (f"    {field}: {kind}" for field, kind in results)
        yield ""
    yield f"def {name}({', '.join(parameters)}) -> {result}: ..."


def write(description, folder, version):
    folder.mkdir(parents=True, exist_ok=True)
    face = compact(description, version)
    (folder / "_interface.json").write_text(json.dumps(face, separators=(",", ":")))
    lines = [line for name, entry in sorted(face["routines"].items()) for line in stub(name, entry)]
    (folder / "__init__.pyi").write_text(STUB_HEAD + "\n" + "\n".join(lines) + "\n")
    (folder / "py.typed").write_text("")
