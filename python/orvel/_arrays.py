"""Arguments as numbers and arrays of the types that routines take, and where arrays lie in memory."""
import ctypes
import operator

import numpy

DTYPES = {"s": numpy.dtype("f4"), "d": numpy.dtype("f8"), "c": numpy.dtype("c8"), "z": numpy.dtype("c16"),
          "i": numpy.dtype("i4"), "l": numpy.dtype("i8")}
CELLS = {"s": ctypes.c_float, "d": ctypes.c_double, "c": ctypes.c_float * 2, "z": ctypes.c_double * 2,
         "i": ctypes.c_int32, "l": ctypes.c_int64}
LARGEST = {"s": float(numpy.finfo("f4").max), "c": float(numpy.finfo("f4").max)}
TOO_HARD = getattr(numpy, "exceptions", numpy).TooHardError
WORDS = {"s": "real", "d": "real", "c": "complex", "z": "complex", "i": "integers", "l": "integers"}


class Refused(Exception):
    """An argument that cannot be handed on, and the kind of exception to say so with."""

    def __init__(self, kind, text):
        super().__init__(text)
        self.kind = kind


def plain_array(name, value):
    """An array as numpy makes it, of numbers."""
    if type(value) is not numpy.ndarray:
        if isinstance(value, numpy.ma.MaskedArray):
            raise Refused(TypeError, f"{name} must not be a masked array, whose mask would be lost")
        try:
            value = numpy.asarray(value)
        except (ValueError, TypeError) as problem:
            raise Refused(type(problem), f"{name} cannot be made an array: {problem}") from None
    kind = value.dtype.kind
    if kind not in "fciub":
        raise Refused(TypeError, f"{name} must hold numbers, got dtype {value.dtype}")
    if kind in "fc" and value.dtype.itemsize > (16 if kind == "c" else 8):
        raise Refused(TypeError, f"{name} has dtype {value.dtype}, which is more than double precision; round it first")
    return value


def kind_of(name, value):
    """The precision that an argument asks for, None for one that does not care; whether it is complex; and what it is
    kept as. Numbers of Python go along with arrays of either precision."""
    if isinstance(value, complex) and not isinstance(value, numpy.generic):
        return None, True, value
    if not isinstance(value, numpy.generic):
        if isinstance(value, (float, int)) or not (hasattr(value, "__array__") or hasattr(value, "__len__")):
            return None, False, value
        value = plain_array(name, value)
    dtype = value.dtype
    if dtype.kind == "c":
        return ("single" if dtype.itemsize == 8 else "double"), True, value
    if dtype.kind == "f":
        return ("single" if dtype.itemsize <= 4 else "double"), False, value
    return ("double" if value.ndim else None), False, value


def as_array(name, value, kind):
    """The array in the type of the routine: the same one where it has this type."""
    array, dtype = plain_array(name, value), DTYPES[kind]
    if array.dtype == dtype:
        return array if array.flags.aligned else array.copy()
    have = array.dtype.kind
    if have == "c" and kind not in "cz":
        raise Refused(TypeError, f"{name} must be {WORDS[kind]}, got {array.dtype}")
    if kind in "il":
        if have not in "iub":
            if array.size:
                raise Refused(TypeError, f"{name} must be integers, got {array.dtype}")
        elif array.size:
            limits, least, most = numpy.iinfo(dtype), array.min(), array.max()
            if least < limits.min or most > limits.max:
                bad = least if least < limits.min else most
                raise Refused(ValueError, f"{name} holds {bad}, which does not fit {dtype}")
    return array.astype(dtype, order="K")


def as_scalar(name, value, kind, letters):
    """A number or a text for an argument that is one."""
    if kind == "t":
        if not isinstance(value, str) or not value and letters:
            raise Refused(TypeError, f"{name} must be a text, got {value!r}")
        if letters:
            value = value[0].upper()
            if value not in letters:
                raise Refused(ValueError, f"{name} must be {' or '.join(map(repr, letters))}, got {value!r}")
        return value
    if kind == "d" and type(value) is float:
        return value
    if getattr(value, "ndim", 0) or isinstance(value, (list, tuple)):
        raise Refused(TypeError, f"{name} must be a number, got an array of shape {numpy.shape(value)}")
    if kind in "il":
        try:
            number = operator.index(value)
        except TypeError:
            raise Refused(TypeError, f"{name} must be an integer, got {value!r}") from None
        bits = 31 if kind == "i" else 63
        if not -(2**bits) <= number < 2**bits:
            raise Refused(ValueError, f"{name} = {number} does not fit an integer of {bits + 1} bits")
        return number
    return real_or_complex(name, value, kind)


def real_or_complex(name, value, kind):
    is_text = isinstance(value, (str, bytes, bytearray))
    try:
        if kind in "cz":
            number = complex(value) if not is_text else None
        else:
            is_complex = isinstance(value, complex) or getattr(getattr(value, "dtype", None), "kind", "") == "c"
            number = float(value) if not is_text and not is_complex else None
    except (TypeError, ValueError, OverflowError):
        number = None
    if number is None:
        raise Refused(TypeError, f"{name} must be a {'' if kind in 'cz' else 'real '}number, got {value!r}")
    size = max(abs(number.real), abs(number.imag))
    if kind in LARGEST and size > LARGEST[kind] and size != float("inf"):
        raise Refused(ValueError, f"{name} = {number!r} does not fit single precision")
    return number


def address_of(array):
    flags = array.flags
    if flags.writeable and flags.forc and array.size:  # the quick way
        return ctypes.addressof(ctypes.c_char.from_buffer(array if flags.c_contiguous else array.T))
    return array.ctypes.data


def layout(array, has_leading, has_step, backwards):
    """Address and leading dimension or increment as the routine takes them; None where it cannot take the array as it
    lies. A vector that is walked backwards begins at its end."""
    size, strides = array.itemsize, array.strides
    if not array.size:
        return address_of(array), max(array.shape[0], 1) if array.ndim == 2 else 1
    if array.ndim == 1:
        count, stride = array.shape[0], strides[0]
        if count <= 1 or stride == size:
            return address_of(array), 1
        if not has_step or stride % size or stride == 0 or (stride < 0 and not backwards):
            return None
        return address_of(array) + (min(stride, 0) * (count - 1)), stride // size
    rows, columns = array.shape
    if rows > 1 and strides[0] != size:
        return None
    if columns <= 1:
        return address_of(array), max(rows, 1)
    leading, rest = divmod(strides[1], size)
    if rest or leading < max(rows, 1) or (not has_leading and leading != rows):
        return None
    return address_of(array), leading


def shares(first, second):
    """Do two arrays have an element in common? Where that is hard to say, yes."""
    if not numpy.may_share_memory(first, second):
        return False
    try:
        return numpy.shares_memory(first, second, max_work=10000)
    except TOO_HARD:
        return True
