"""Calls of the library by name, without its Python package and what that needs."""
import ctypes

CALLBACKS = {kind: ctypes.CFUNCTYPE(kind, ctypes.POINTER(kind)) for kind in (ctypes.c_float, ctypes.c_double)}


def array(kind, values):
    return (kind * len(values))(*values)


def interleaved(kind, values):
    """Complex numbers as pairs of reals."""
    return array(kind, [part for z in values for part in (z.real, z.imag)])


def complex_numbers(pairs):
    return [complex(re, im) for re, im in zip(pairs[0::2], pairs[1::2])]


class Library:
    def __init__(self, path, level=None):
        self.dll = ctypes.CDLL(path)
        if level and not self.dll.orvel_use_level(level.encode()):
            raise ValueError(f"no level {level} on this machine")
        off = ctypes.c_int32(0)
        # Errors are looked at, not printed, and stop nothing.
        self.dll.ERSET(ctypes.byref(ctypes.c_int32(0)), ctypes.byref(off), ctypes.byref(off))

    def call(self, name, *arguments, returns=None):
        """Integers go as integers and floats as numbers of the precision that the name begins with."""
        real = ctypes.c_double if name[0] == "D" else ctypes.c_float
        keep = [ctypes.c_int32(a) if isinstance(a, int) else real(a) if isinstance(a, float) else a for a in arguments]
        routine = self.dll[name]
        routine.restype = returns
        return routine(*(ctypes.byref(a) if isinstance(a, (ctypes.c_int32, ctypes.c_float, ctypes.c_double)) else a
                         for a in keep))

    def function(self, name, real):
        """A routine of one number, fast."""
        routine, reference = self.dll[name], ctypes.byref
        routine.restype = real
        return lambda x: routine(reference(real(x)))

    def severity(self):
        """That of the error of the call before: 0 where there was none."""
        return self.dll.N1RTY(ctypes.byref(ctypes.c_int32(1)))
