"""One call of a routine: the member for the arguments, checks, sizes, layouts, the call itself, the results."""
import ctypes

import numpy

from ._arrays import CELLS, DTYPES, Refused, as_array, as_scalar, kind_of, layout, shares
from ._errors import SEVERITIES, raise_or_warn
from ._library import UserFunction, evaluate

LIMIT = 2**31 - 1
PRECISION = {"s": "single", "c": "single", "d": "double", "z": "double"}
EPS = {"single": 2.0**-23, "double": 2.0**-52}
FORCED = {numpy.dtype(t): w for t, w in (("f4", ("single", False)), ("f8", ("double", False)),
                                         ("c8", ("single", True)), ("c16", ("double", True)))}


class Pair(ctypes.Structure):
    _fields_ = [("real", ctypes.c_float), ("imag", ctypes.c_float)]


class DoublePair(ctypes.Structure):
    _fields_ = [("real", ctypes.c_double), ("imag", ctypes.c_double)]


RETURNS = {"": None, "i": ctypes.c_int32, "l": ctypes.c_int64, "s": ctypes.c_float, "d": ctypes.c_double, "c": Pair,
           "z": DoublePair}
COMPILED = {}


def evaluated(text, names):
    code = COMPILED.get(text) or COMPILED.setdefault(text, compile(text, text, "eval"))
    return eval(code, {"max": max, "abs": abs, "len": len, "__builtins__": {}}, names)


class Member:
    """A routine of the library in one precision."""

    def __init__(self, entry, names, library):
        self.name, self.returns, letters, self.lengths = entry
        self.kinds = dict(zip(names, letters))
        told = [PRECISION[k[0]] for k in (*letters, *self.returns) if k[0] in PRECISION]
        self.precision = told[0] if told else "double" if self.name[0] == "D" else "single"
        self.complexes = sum(k in ("c", "z") for k in letters)
        self.library, self.function, self.address = library, None, None

    def load(self):
        self.function = getattr(self.library.handle, self.name)
        self.function.restype = RETURNS[self.returns]
        self.address = ctypes.cast(self.function, ctypes.c_void_p).value
        return self.function


class Routine:
    """What is known of a routine before it is called."""

    def __init__(self, name, entry, family, library, result_type):
        self.name, self.library, self.result_type = name, library, result_type
        self.arguments = entry["arguments"]
        self.required, self.optional, self.sizes = entry["required"], entry["optional"], entry["sizes"]
        self.one_less, self.elemental = entry["one_less"], entry["elemental"]
        self.overlap, self.backwards, self.fatal = family["overlap"], family["backwards"], family["fatal"]
        self.members = [Member(m, self.arguments, library) for m in entry["members"]]
        self.members.sort(key=lambda m: (m.precision != "double", m.complexes))
        first = self.members[0].kinds
        self.varying = [n for n in self.arguments if any(m.kinds[n] != first[n] for m in self.members)]
        self.function = next((n for n, a in self.arguments.items() if a["role"] == "function"), None)
        given = self.required + list(self.optional) + self.sizes
        self.given_arrays = [n for n in self.arguments if n in given and "shape" in self.arguments[n]]
        self.given_scalars = [n for n in self.arguments if n in given and "shape" not in self.arguments[n]
                              and n != self.function and n not in self.sizes]
        self.returned = [n for n, a in self.arguments.items()
                         if a["role"] in ("out", "inout", "in/out") and not a.get("in_place")]
        self.outputs = [n for n in self.returned if self.arguments[n]["role"] == "out" and "shape" in self.arguments[n]]
        # Extents that are a symbol are told by the array, and those are the steps and leading dimensions to fill in.
        self.steps = {a["step"]: n for n, a in self.arguments.items() if "step" in a}
        self.leadings = {a["leading"]: n for n, a in self.arguments.items() if "leading" in a}

    def call(self, given, out, dtype):
        """The results; called by the function that the user sees."""
        try:
            call = Call(self, given, out, dtype)
        except Refused as problem:
            raise problem.kind(f"orvel.{self.name}: {problem}") from None
        value = call.run()
        results = call.results(value)
        if call.outcome:
            raise_or_warn(call.outcome, results, 3)
        return results

    # ---- the member for the arguments --------------------------------------------------------------------

    def choose(self, given, dtype):
        """The member of the precision of the arguments, real as long as they are."""
        members = self.members
        if len(members) == 1:
            return members[0]
        single = double = False
        complexes = []
        for name in self.varying:
            value = given.get(name)
            if value is None or name == self.function:
                continue
            kind = type(value)
            if kind is float or kind is int:
                continue
            precision, is_complex, kept = kind_of(name, value)
            given[name] = kept
            single, double = single or precision == "single", double or precision == "double"
            if is_complex:
                complexes.append(name)
        precision, wants_complex = "single" if single and not double else "double", bool(complexes)
        if dtype is not None:
            precision, wants_complex = self.forced(dtype, complexes)
        for member in members:
            if member.precision == precision and all(member.kinds[n] in ("c", "z") for n in complexes):
                if not wants_complex or member.complexes or complexes:
                    return member
        if complexes:
            raise Refused(TypeError, f"{complexes[0]} must be real, got complex numbers")
        raise Refused(TypeError, f"there is no member for dtype {numpy.dtype(dtype)}")

    @staticmethod
    def forced(dtype, complexes):
        try:
            precision, is_complex = FORCED[numpy.dtype(dtype)]
        except (KeyError, TypeError):
            words = f"dtype must be float32, float64, complex64 or complex128, got {dtype!r}"
            raise Refused(TypeError, words) from None
        if complexes and not is_complex:
            raise Refused(TypeError, f"{complexes[0]} is complex, but dtype is {numpy.dtype(dtype)}")
        return precision, is_complex


class Call:
    """Arguments of one call as the routine takes them."""

    def __init__(self, routine, given, out, dtype):
        self.routine, self.given, self.outcome = routine, given, None
        self.member = member = routine.choose(given, dtype)
        self.scalars, self.arrays, self.cells, self.addresses = {}, {}, {}, {}
        self.many = self.back = self.user = None
        self.inputs(member.kinds)
        self.find_sizes()
        self.place_arrays(self.chosen_outputs(out))
        self.fill_cells()

    # ---- inputs ------------------------------------------------------------------------------------------

    def inputs(self, kinds):
        routine, given = self.routine, self.given
        if routine.function:
            name = routine.function
            self.user = UserFunction(given[name], routine.name, name, kinds[name] == "sf")
        for name in routine.given_scalars:
            if given[name] is not None or name not in routine.optional:
                self.take_scalar(name, given[name])
        for name, (expression, _) in routine.optional.items():
            if given.get(name) is None and name not in routine.sizes and expression != "None":
                names = {**given, **self.scalars, "eps": EPS.get(self.member.precision)}
                self.take_scalar(name, evaluated(expression, names))
        for name in routine.given_arrays:
            if given[name] is None and name in routine.required:
                raise Refused(TypeError, f"{name} must be an array, got None")
            if given[name] is not None:
                self.arrays[name] = as_array(name, given[name], kinds[name])

    def take_scalar(self, name, value):
        kind = self.member.kinds[name]
        if self.routine.elemental and not isinstance(value, (float, int)) and numpy.ndim(value):
            self.many = self.many or {}
            self.many[name] = as_array(name, value, kind)
            value = 0
        self.scalars[name] = as_scalar(name, value, kind, self.routine.arguments[name].get("letters"))

    # ---- sizes -------------------------------------------------------------------------------------------

    def find_sizes(self):
        """From the arrays, where they are not given."""
        routine = self.routine
        self.symbols = symbols = {n: v for n, v in self.scalars.items() if isinstance(v, int)}
        fixed, source = set(symbols), {}
        for name in routine.sizes:
            if self.given[name] is not None:
                symbols[name] = as_scalar(name, self.given[name], "i", None)
                fixed.add(name)
                if symbols[name] < 0:
                    raise Refused(ValueError, f"{name} must not be negative, got {symbols[name]}")
        for name, array in self.arrays.items():
            extents = [self.extent(e) for e in routine.arguments[name]["shape"]]
            if array.ndim != len(extents):
                what = "vector" if len(extents) == 1 else "matrix"
                raise Refused(ValueError, f"{name} must be a {what}, got shape {array.shape}")
            self.settle(name, array.shape, extents, fixed, source)
        for name in routine.sizes:
            if name not in symbols:
                symbols[name] = self.told_otherwise(name)
            if symbols[name] > LIMIT:
                raise Refused(ValueError, f"{name} = {symbols[name]} is larger than routines can take")

    def told_otherwise(self, name):
        routine = self.routine
        if name in routine.one_less:
            array = self.arrays[routine.one_less[name]]
            if array.ndim != 1 or len(array) < 2:
                raise Refused(ValueError, f"{routine.one_less[name]} must be a vector of 2 elements or more, got shape "
                                          f"{array.shape}")
            return len(array) - 1
        if name in routine.optional:
            return evaluated(routine.optional[name][0], {**self.given, **self.scalars})
        raise Refused(TypeError, f"{name} cannot be told from the other arguments; give {name}=")

    def extent(self, extent):
        """The extent under the options of this call."""
        if isinstance(extent, list) and len(extent) == 4:
            option, value, first, second = extent
            return first if self.scalars[option] == value else second
        return extent

    def settle(self, name, shape, extents, fixed, source):
        symbols = self.symbols
        if len(extents) == 2 and extents[0] == extents[1] and shape[0] != shape[1] and extents[0][0] not in fixed:
            raise Refused(ValueError, f"{name} must be a square matrix, got shape {shape}")
        for axis, extent in enumerate(extents):
            if isinstance(extent, str):
                continue
            symbol, more = extent if isinstance(extent, list) else (None, extent)
            if symbol is None:
                fits, wanted = shape[axis] == more, more
            elif symbol in symbols:
                wanted = symbols[symbol] + more
                fits = shape[axis] >= wanted if symbol in fixed else shape[axis] == wanted
            else:
                symbols[symbol], source[symbol] = shape[axis] - more, name
                fits, wanted = shape[axis] >= more, more
            if not fits:
                unit = "elements" if len(shape) == 1 else ("rows", "columns")[axis]
                because = f" as {source[symbol]} has" if symbol in source and source[symbol] != name else ""
                least = "at least " if symbol in fixed else ""
                raise Refused(ValueError, f"{name} must have {least}{wanted} {unit}{because}, got shape {shape}")

    def counts(self, name):
        """The extents of an array in numbers."""
        result = []
        for extent in self.routine.arguments[name]["shape"]:
            extent = self.extent(extent)
            if type(extent) is list:
                extent = self.symbols[extent[0]] + extent[1]
            elif type(extent) is str:
                extent = evaluated(extent, self.symbols)
            result.append(extent if extent > 0 else 0)
        return tuple(result)

    # ---- arrays ------------------------------------------------------------------------------------------

    def chosen_outputs(self, out):
        """Arrays of the caller for outputs."""
        names = self.routine.outputs
        if out is None:
            return {}
        if len(names) == 1 and not isinstance(out, (tuple, list, dict)):
            out = (out,)
        if isinstance(out, dict):
            if unknown := set(out) - set(names):
                words = f"out has no place for {sorted(unknown)[0]!r}; the outputs are {', '.join(names)}"
                raise Refused(TypeError, words)
        elif not isinstance(out, (tuple, list)):
            words = f"out must be a tuple of {len(names)} arrays ({', '.join(names)}) or a dict by these names"
            raise Refused(TypeError, words)
        elif len(out) != len(names):
            raise Refused(TypeError, f"out must have {len(names)} arrays ({', '.join(names)}), got {len(out)}")
        else:
            out = dict(zip(names, out))
        return {n: a for n, a in out.items() if a is not None}

    def place_arrays(self, chosen):
        """Every array where the routine finds it: in place, as a copy, or new."""
        routine, kinds = self.routine, self.member.kinds
        self.held, self.back, written = {}, [], {}
        for name, what in routine.arguments.items():
            if "shape" not in what:
                continue
            counts, array, user = self.counts(name), self.arrays.get(name), None
            if what["role"] == "out":
                user = chosen.get(name)
            elif what["role"] != "in" and (what.get("in_place") or self.given.get(f"overwrite_{name}")):
                user = self.given[name]
            if user is not None:
                array = written[name] = self.writable(name, user, counts, what["role"] == "out")
            elif array is None:
                array = self.new(name, counts, DTYPES[kinds[name]])
            elif array.shape != counts:
                array = self.part(name, array, counts)
            self.place(name, what, array, user)
        if not routine.overlap:
            for name in written:
                self.look_for_overlap(name)

    def writable(self, name, user, counts, whole):
        dtype = DTYPES[self.member.kinds[name]]
        if not isinstance(user, numpy.ndarray):
            raise Refused(TypeError, f"{name} must be an array to be written to, got {type(user).__name__}")
        if user.dtype != dtype:
            raise Refused(TypeError, f"{name} must have dtype {dtype} to be written to, got {user.dtype}")
        if whole and user.shape != counts:
            raise Refused(ValueError, f"{name} must have shape {counts} to be written to, got {user.shape}")
        if not user.flags.writeable:
            raise Refused(ValueError, f"{name} is to be written to, but is read-only")
        return user if user.shape == counts else self.part(name, user, counts)

    def part(self, name, array, counts):
        if any(have < want for have, want in zip(array.shape, counts)):
            raise Refused(ValueError, f"{name} must have shape {counts} or more, got {array.shape}")
        return array[tuple(slice(n) for n in counts)]

    def new(self, name, counts, dtype):
        if self.routine.arguments[name]["role"] == "scratch":
            return numpy.empty(counts, dtype, order="F")
        if self.routine.optional.get(name, ("", ""))[1] == "1 to N":
            return numpy.arange(1, counts[0] + 1, dtype=dtype)
        if self.routine.fatal and dtype.kind in "fc":  # what is not computed shall not look like a result
            array = numpy.empty(counts, dtype, order="F")
            array.fill(numpy.nan)
            return array
        return numpy.zeros(counts, dtype, order="F")

    def place(self, name, what, array, user):
        """The address, the increment and the leading dimension; a copy where the layout does not suit."""
        placed = layout(array, "leading" in what, "step" in what, self.routine.backwards)
        keeps = what["role"] in ("in", "out", "scratch") or user is not None or self.given.get(name) is None
        if placed is None or (not keeps and self.is_the_users(name, array)):
            copy = numpy.array(array, order="F", copy=True)
            if user is not None:
                self.back.append((array, copy))
            array, placed = copy, layout(copy, "leading" in what, "step" in what, self.routine.backwards)
        address, distance = placed
        if distance > LIMIT or distance < -LIMIT:
            raise Refused(ValueError, f"the elements of {name} are too far apart")
        self.held[name] = array if user is None else user
        self.arrays[name] = array
        self.addresses[name] = address
        if "leading" in what:
            self.symbols[what["leading"]] = distance
        elif "step" in what:
            self.symbols[what["step"]] = distance

    def is_the_users(self, name, array):
        """May the memory be the caller's? What was converted is ours already."""
        given = self.given[name]
        return array is given or not isinstance(given, (list, tuple)) and numpy.may_share_memory(array, given)

    def look_for_overlap(self, name):
        mine, routine = self.arrays[name], self.routine
        for other, array in self.arrays.items():
            if other == name or not shares(mine, array):
                continue
            allowed = other in routine.arguments[name].get("may_be", ()) or \
                name in routine.arguments[other].get("may_be", ())
            same = mine.shape == array.shape and mine.strides == array.strides and \
                self.addresses[name] == self.addresses[other]
            if not (allowed and same):
                words = f" unless it is the same array as {other}" if allowed else ""
                raise Refused(ValueError, f"{name} must not overlap {other}{words}")

    # ---- the call ----------------------------------------------------------------------------------------

    def fill_cells(self):
        """Scalars in cells of memory, in the order of the routine."""
        self.pointers, lengths = [], []
        kinds = self.member.kinds
        for name, what in self.routine.arguments.items():
            if what["role"] == "function":
                continue
            if "shape" in what:
                self.pointers.append(self.addresses[name])
                continue
            kind = kinds[name]
            if kind == "t":
                text = self.scalars[name]
                cell = ctypes.create_string_buffer(text.encode("latin-1", "replace") + b" ")
                if what.get("text"):
                    lengths.append(ctypes.c_size_t(len(text)))
            else:
                value = self.scalars.get(name)
                if value is None:
                    value = self.symbols.get(name)
                if value is None:
                    value = float("nan") if self.routine.fatal and kind in "sdcz" else 0
                cell = CELLS[kind](value) if kind in "ilsd" else CELLS[kind](value.real, value.imag)
            self.cells[name] = cell
            self.pointers.append(ctypes.addressof(cell))
        self.lengths = lengths

    def run(self):
        """The value of the routine, with its outcome kept aside."""
        member, library = self.member, self.routine.library
        function = member.function or member.load()
        if self.user is not None:
            return self.run_with_function(member, library)
        arguments = [*map(ctypes.c_void_p, self.pointers), *self.lengths]
        if self.many is not None:
            return self.run_many(function, arguments, library)
        value, self.outcome = library.quietly(lambda _: function(*arguments))
        return self.plain(value, member.returns)

    def run_with_function(self, member, library):
        addresses = (ctypes.c_void_p * len(self.pointers))(*self.pointers)
        user = self.user
        ended, outcome = library.quietly(lambda _: library.with_context(
            evaluate, user, member.address, user.single, len(self.pointers), addresses))
        if user.problem is not None:
            problem, user.problem = user.problem, None
            try:
                raise problem
            finally:
                del problem  # which refers to this frame
        if ended:
            raise RecursionError(f"orvel.{self.routine.name}: calls are nested too deeply")
        self.outcome = outcome

    def run_many(self, function, arguments, library):
        """A call for each element of the arguments that are arrays."""
        names = list(self.many)
        values = numpy.broadcast_arrays(*self.many.values())
        cells = [self.cells[n] for n in names]
        outs = [(n, self.cells[n]) for n in self.routine.returned]
        kinds = self.member.kinds
        self.many = {n: numpy.zeros(values[0].shape, DTYPES[kinds[n]]) for n, _ in outs}
        flat = [(self.many[n].reshape(-1), cell) for n, cell in outs]
        if self.member.returns:
            result = numpy.zeros(values[0].shape, DTYPES[self.member.returns])
            flat.append((result.reshape(-1), None))
        rest = enumerate(zip(*(v.ravel().tolist() for v in values)))

        def until_something_is_said(outcome):
            for k, elements in rest:
                for cell, element in zip(cells, elements):
                    cell.value = element
                value = function(*arguments)
                for array, cell in flat:
                    array[k] = value if cell is None else cell.value
                if outcome.severity:
                    return False
            return True

        finished = False
        while not finished:
            finished, outcome = library.quietly(until_something_is_said)
            if outcome and (self.outcome is None or rank(outcome) > rank(self.outcome)):
                self.outcome = outcome
        return result if self.member.returns else None

    # ---- results -----------------------------------------------------------------------------------------

    @staticmethod
    def plain(value, kind):
        """A number of Python, or of numpy where Python has no such precision."""
        if kind == "s":
            return numpy.float32(value)
        if kind in ("c", "z"):
            number = complex(value.real, value.imag)
            return numpy.complex64(number) if kind == "c" else number
        return value

    def result(self, name):
        if self.many is not None:
            return self.many[name]
        if name in self.held:
            return self.held[name]
        kind, cell = self.member.kinds[name], self.cells[name]
        return self.plain(complex(*cell) if kind in "cz" else cell.value, kind)

    def results(self, value):
        for array, copy in self.back:
            array[...] = copy
        results = [self.result(n) for n in self.routine.returned]
        if self.member.returns:
            results.insert(0, value)
        if len(results) > 1:
            return self.routine.result_type(*results)
        return results[0] if results else None


def rank(outcome):
    order = (None, "NOTE", "ALERT", "WARNING", "FATAL", "TERMINAL")
    return order.index(SEVERITIES[outcome[0]])
