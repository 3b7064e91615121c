"""Orvel: numerical subroutines - linear systems, transforms, quadrature, splines, zeros, minima, gamma functions,
random numbers, sorting, the kernels on vectors and matrices.

Every routine is a function of this module under its own name (`orvel.dlsarg`), and under one name for all precisions
(`orvel.lsarg`), where the arguments choose:

    x = orvel.lsarg(a, b)                          # a*x = b
    result, esterr = orvel.qdags(f, 0, 1)          # the integral of f from 0 to 1
    coef = orvel.fftcf(xseq)                       # a complex transform

What goes in are the inputs of the routine in its order, those without a default first; what comes out is returned, one
result as it is, several as a named tuple. Sizes are taken from the arrays. `help(orvel.lsarg)` tells the rest.

Errors are exceptions (`orvel.FatalError`, `orvel.TerminalError`, both `orvel.Error`) and warnings (`orvel.Warning`,
`orvel.Alert`). Nothing is printed and nothing stops the program.
"""
import json as _json
from pathlib import Path as _Path

try:
    import numpy as _numpy  # noqa: F401  every routine needs it; better to hear of it now
except ImportError as _problem:
    raise ImportError("orvel needs numpy (Debian: python3-numpy)") from _problem

from ._errors import Alert, Error, FatalError, TerminalError, Warning
from ._library import Library as _Library

try:
    _face = _json.loads((_Path(__file__).parent / "_interface.json").read_text())
except FileNotFoundError:
    raise ImportError("orvel: this folder has the sources of the package; the build makes the package of them, and "
                      "cmake --install or a wheel installs it") from None
_library = _Library(_face["version"])

version = _library.version
__version__ = version
library_path = _library.path


def use_level(name):
    """Uses the hot loops of an instruction-set level from now on, in all threads.

    The name is that of compilers: x86-64, x86-64-v3 or x86-64-v4; native on other processors; None goes back to the
    best level of the machine. The same call gives the same bits on all machines that use the same level.
    """
    if not _library.handle.orvel_use_level(None if name is None else name.encode()):
        raise ValueError(f"orvel.use_level: there is no level {name!r}, or this machine does not have it")


def level():
    """The name of the instruction-set level in use."""
    return _library.level().decode()


# Routines become names of this module, so that set, sum and copy, among others, are not those of Python below.


def __getattr__(name):
    entry = _face["routines"].get(name)
    if entry is None:
        if name.lower() in _face["routines"]:
            raise AttributeError(f"orvel has no {name!r}; names are in lower case: orvel.{name.lower()}")
        raise AttributeError(f"module 'orvel' has no attribute {name!r}")
    from ._routine import make

    function = make(name, entry, _face["families"][entry["family"]], _library)
    return globals().setdefault(name, function)


def __dir__():
    own = {n: None for n in globals() if not n.startswith("_") or n.startswith("__")}
    return sorted(own | _face["routines"])
