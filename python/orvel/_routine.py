"""A routine as a function of Python: from its entry in the description to a call."""
import keyword
from collections import namedtuple

from . import _call
from ._documentation import document

UNSET = "None"


def overwritable(entry):
    """Arrays that go in and come out."""
    return [n for n, a in entry["arguments"].items()
            if a["role"] in ("inout", "in/out") and "shape" in a and not a.get("in_place")]


def results(entry):
    """Names of what is returned, in the order of the routine; the value of a function first."""
    names = [n for n, a in entry["arguments"].items()
             if a["role"] in ("out", "inout", "in/out") and not a.get("in_place")]
    return (["value"] if entry["members"][0][1] else []) + names


def output_arrays(entry):
    return [n for n, a in entry["arguments"].items() if a["role"] == "out" and "shape" in a]


def header_of(entry):
    """The parameters as they are written."""
    words = list(entry["required"])
    constants = {}
    for name, (value, _) in entry["optional"].items():
        if name not in entry["sizes"]:
            shown = value if value[0] in "'-0123456789" and " " not in value else UNSET
            words.append(f"{name}={shown}")
            constants[name] = shown != UNSET
    keywords = [f"{n}=None" for n in entry["sizes"]] + [f"overwrite_{n}=False" for n in overwritable(entry)]
    if output_arrays(entry):
        keywords.append("out=None")
    if len(entry["members"]) > 1:
        keywords.append("dtype=None")
    return words + (["*", *keywords] if keywords else [])


def make(name, entry, family, library):
    """The function, with a signature and a documentation of its own."""
    fields = results(entry)
    result_type = None
    if len(fields) > 1:
        result_type = namedtuple(f"{name}_result", [f + "_" if keyword.iskeyword(f) else f for f in fields],
                                 module="orvel")
    routine = _call.Routine(name, entry, family, library, result_type)
    words = header_of(entry)
    given = ", ".join(f"'{n}': {n}" for n in (w.partition("=")[0] for w in words if w != "*")
                      if n not in ("out", "dtype"))
    out = "out" if "out=None" in words else "None"
    dtype = "dtype" if "dtype=None" in words else "None"
    source = f"def {name}({', '.join(words)}):\n    return _call({{{given}}}, {out}, {dtype})\n"
    scope = {"_call": routine.call, "__name__": "orvel"}
    exec(compile(source, f"<orvel.{name}>", "exec"), scope)
    function = scope[name]
    function.__doc__ = document(name, entry, family, words, fields)
    return function
