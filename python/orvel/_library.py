"""Finds and loads the library; quiet calls, with and without a function of the user's."""
import ctypes
import os
import sys
from pathlib import Path

FILE = "liborvel.so.1"


class Outcome(ctypes.Structure):
    """struct orvel_outcome of orvel/host.h, with room for what a later library may add."""

    _fields_ = [("severity", ctypes.c_int32), ("code", ctypes.c_int32), ("routine", ctypes.c_char * 40),
                ("text", ctypes.c_char * 2024), ("private", ctypes.c_int64 * 64)]

    def said(self):
        """(severity, code, routine, text), or None."""
        if not self.severity:
            return None
        return self.severity, self.code, self.routine.decode("latin-1"), self.text.decode("latin-1").strip()


def candidates(folder, environment):
    """Where the library may be, with the words for it; the first one that is there counts."""
    yield folder / FILE, "the folder of the package"
    machine = getattr(sys.implementation, "_multiarch", "")
    for parent in list(folder.parents)[:6]:
        for name in ("lib", f"lib/{machine}", "lib64"):
            if machine or not name.endswith("/"):
                yield parent / name / FILE, "the prefix that the package is installed in"


def load(version):
    """The library, by its path or its name."""
    tried = []
    if named := os.environ.get("ORVEL_LIBRARY"):
        path = Path(named)
        path = path / FILE if path.is_dir() else path
        return checked(path, version, f"ORVEL_LIBRARY={named}: ")
    for path, where in candidates(Path(__file__).resolve().parent, os.environ):
        if path.is_file():
            return checked(path, version, f"{where}: ")
        tried.append(str(path))
    try:
        ctypes.CDLL(FILE)
    except OSError as problem:
        listed = "".join(f"\n    {path}" for path in tried)
        raise ImportError(f"orvel: {FILE} was not found. There is no{listed}\nand the loader says: {problem}\n"
                          f"Set ORVEL_LIBRARY to {FILE} or to its folder, or install the library.") from None
    return checked(FILE, version, "the loader: ")


def checked(path, version, where):
    try:
        library = ctypes.CDLL(str(path))
    except OSError as problem:
        raise ImportError(f"orvel: {where}the library cannot be loaded: {problem}") from None
    try:
        library.orvel_version.restype = ctypes.c_char_p
        found = library.orvel_version().decode()
    except AttributeError:
        raise ImportError(f"orvel: {where}{path} is another library or older than {version}, for which this package "
                          "was made") from None
    numbers, wanted = ([int(n) for n in v.split(".")] for v in (found, version))
    if numbers[0] != wanted[0] or numbers < wanted:
        raise ImportError(f"orvel: {where}{path} has version {found}; this package was made for {version} and works "
                          f"with later versions up to {wanted[0] + 1}.0.0")
    return library


class Library:
    """The functions that this package calls by name, and the outcomes of calls that are not in use."""

    def __init__(self, version):
        self.handle = load(version)
        # Without releasing the interpreter's lock: these take less time than that.
        quick = ctypes.PyDLL(None, handle=self.handle._handle)
        self.begin, self.end = quick.orvel_begin_quiet, quick.orvel_end_quiet
        self.begin.argtypes = self.end.argtypes = [ctypes.c_void_p]
        self.begin.restype = self.end.restype = None
        self.with_context = self.handle.orvel_call_with_context
        self.with_context.restype = ctypes.c_int32
        self.with_context.argtypes = [CALLBACK, ctypes.py_object, ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32,
                                      ctypes.c_void_p]
        self.level = self.handle.orvel_level
        self.level.restype = ctypes.c_char_p
        self.version = self.handle.orvel_version().decode()
        self.outcomes = []

    @property
    def path(self):
        """Where the library that was loaded stands."""
        return self.handle._name

    def quietly(self, call):
        """Calls with the outcome that grows meanwhile; returns the value and (severity, code, routine, text) or None.
        Nothing is printed, nothing stops."""
        try:
            outcome = self.outcomes.pop()
        except IndexError:
            outcome = Outcome()
        address = ctypes.addressof(outcome)
        try:
            self.begin(address)  # an interrupt comes after this call, never before it
            value = call(outcome)
        finally:
            self.end(address)
        said = outcome.said()
        self.outcomes.append(outcome)
        return value, said


class UserFunction:
    """A function of the user's during one call of a routine, and the exception that it has raised."""

    __slots__ = ("function", "routine", "name", "single", "problem")

    def __init__(self, function, routine, name, single):
        if not callable(function):
            raise TypeError(f"orvel.{routine}: {name} must be a function, got {type(function).__name__}")
        self.function, self.routine, self.name, self.single, self.problem = function, routine, name, single, None

    def value(self, x):
        y = self.function(x)
        if type(y) is float:
            return y
        kind = type(y)
        if getattr(y, "ndim", 0) or not (hasattr(kind, "__float__") or hasattr(kind, "__index__")) or \
                getattr(getattr(y, "dtype", None), "kind", "f") not in "fiub":
            got = f"an array of shape {y.shape}" if getattr(y, "ndim", 0) else repr(y)
            raise TypeError(f"orvel.{self.routine}: {self.name} must return a real number, got {got} at {x!r}")
        return float(y)


def _evaluate(user, x, result):
    try:
        result[0] = user.value(x)
        return 0
    except BaseException as problem:
        user.problem = problem
        return 1


CALLBACK = ctypes.CFUNCTYPE(ctypes.c_int32, ctypes.py_object, ctypes.c_double, ctypes.POINTER(ctypes.c_double))
evaluate = CALLBACK(_evaluate)
