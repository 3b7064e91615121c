"""The library that a report is about, and the peers that this machine has, through ctypes; nothing else is needed."""
import ctypes
import os
import sys
from pathlib import Path

FILE = "liborvel.so.1"


def load(program):
    """ORVEL_LIBRARY, else beside the program, else where the loader looks."""
    named = os.environ.get("ORVEL_LIBRARY")
    prefix = Path(program).resolve().parent.parent
    machine = getattr(sys.implementation, "_multiarch", "")
    if named:
        places = [Path(named) / FILE if Path(named).is_dir() else Path(named)]
    else:
        folders = (prefix / "lib", prefix / "lib" / machine, prefix / "lib64")
        places = [folder / FILE for folder in folders if (folder / FILE).is_file()]
    try:
        library = ctypes.CDLL(str(places[0]) if places else FILE)
        library.orvel_level.restype = library.orvel_version.restype = ctypes.c_char_p
        library.orvel_begin_quiet.argtypes = library.orvel_end_quiet.argtypes = [ctypes.c_void_p]
    except (OSError, AttributeError) as problem:
        sys.exit(f"orvel: the library cannot be used: {problem}")
    return library


def peer(*names):
    for name in names:
        try:
            return ctypes.CDLL(name)
        except OSError:
            pass
    return None


def integer(value):
    return ctypes.byref(ctypes.c_int32(value))


def double(value):
    return ctypes.byref(ctypes.c_double(value))


def vector(values):
    return (ctypes.c_double * len(values))(*values)


def random_vector(library, count):
    """Uniform between -1 and 1, the same in every run."""
    library.RNOPT(integer(1)), library.RNSET(integer(123457))
    result = (ctypes.c_double * count)()
    library.DRNUN(integer(count), result)
    library.DADD(integer(count), double(-0.5), result, integer(1))
    library.DSCAL(integer(count), double(2.0), result, integer(1))
    return result


class Quiet:
    """Nothing is printed and nothing stops; FAILED tells whether an error was posted."""

    def __init__(self, library):
        self.library, self.outcome = library, (ctypes.c_int64 * 512)()

    def __enter__(self):
        self.library.orvel_begin_quiet(self.outcome)
        return self

    def __exit__(self, *_):
        self.library.orvel_end_quiet(self.outcome)
        self.severity = ctypes.c_int32.from_buffer(self.outcome).value
