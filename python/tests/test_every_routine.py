"""Every routine of the description once, as the package offers it: a new routine is covered by its entry."""
import ast
import inspect
import sys
import unittest
import warnings
from pathlib import Path

import numpy as np

import orvel

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
import generate  # noqa: E402
import interface  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
TYPES = {"s": np.float32, "d": np.float64, "c": np.complex64, "z": np.complex128, "i": np.int32, "l": np.int64}
SCALARS = {"s": np.float32, "d": float, "c": np.complex64, "z": complex, "i": int, "l": int}
FAMILIES = {m["name"]: f for h in interface.read(ROOT / "include/orvel")["headers"] for f in h["families"]
            for m in f["members"]}
# Arguments that take more than a small number.
SPECIAL = {"c1iarg": {"nmarg": "N", "icode": 1}, "uvmif": {"bound": 2.0},
           "duvmif": {"bound": 2.0}, "initds": {"eta": 0.9}, "inits": {"eta": 0.9},
           **{f"{letter}gbmv": {"m": 3} for letter in ("", "s", "d", "c", "z")}}
TEXTS = {"ca": "n", "cb": "N", "chrstr": "12", "nmarg": "N", "chapter": "MATH"}


def parabola(x):
    return x * x - 0.04


def size(extent, values, options):
    if isinstance(extent, int):
        return extent
    if isinstance(extent, str):
        return eval(extent, {}, values)
    if len(extent) == 4:
        return size(extent[2 if options[extent[0]] == extent[1] else 3], values, options)
    return values[extent[0]] + extent[1]


def numbers(shape, kind):
    """In (0, 1) and ascending; a matrix with a heavy diagonal; labels."""
    count = int(np.prod(shape))
    if kind in "il":
        return np.arange(1, count + 1, dtype=TYPES[kind]).reshape(shape, order="F")
    array = (np.arange(1, count + 1) / (count + 1)).reshape(shape, order="F")
    if len(shape) == 2:
        array = array + np.eye(*shape)
    return np.asarray(array * (1 + 0.5j) if kind in "cz" else array, TYPES[kind], order="F")


def work_vectors(given, member):
    """Transforms with a work vector want one that is filled."""
    initial = orvel.fftci if "wfc" in given else orvel.fftri
    kind = np.float64 if any(k in "dz" for k in member[2]) else np.float32
    filled = initial(4, dtype=kind)
    for work in ("wfr", "wfc"):
        if work in given:
            given[work] = filled
    if "fac" in given:
        given["wa"], given["fac"] = filled[4:8].copy(), filled[8:].copy()


def arguments(name, entry, member):
    """Ordinary arguments of a member, by name, and the values of the sizes."""
    family = FAMILIES[member[0]]
    values = {n.lower(): v for n, v in generate.ordinary(family).items()}
    if name.endswith(("tri", "tci")) or "wfr" in entry["arguments"] or "wfc" in entry["arguments"]:
        values["n"] = 4
    values["x"] = 12 if FAMILIES[member[0]]["name"] == "R9LGMC" else values.get("x")
    values["maxsub"] = 500 if "maxsub" in entry["optional"] else 10
    for size_name, array in entry["one_less"].items():
        values[array] = values[size_name] + 1
    options = {n: values[n] for n in values}
    for n, (default, _) in entry["optional"].items():
        if default[0] == "'":
            options[n] = default.strip("'")
    kinds = dict(zip(entry["arguments"], member[2]))
    given = {}
    for n in entry["required"]:
        what, kind = entry["arguments"][n], kinds[n]
        if what["role"] == "function":
            given[n] = parabola
        elif "shape" in what:
            shape = tuple(size(e, values, options) for e in what["shape"])
            given[n] = numbers((values[n],) if n in entry["one_less"].values() else shape, kind)
        elif kind == "t":
            given[n] = TEXTS[n]
        else:
            given[n] = values[n] if kind in "il" else SCALARS[kind](values[n])
    if "kd" in entry["arguments"] and "a" in given:
        given["a"][-1] = 10  # the main diagonal of a positive definite band
    given.update(SPECIAL.get(name, {}))
    work_vectors(given, member)
    return given, values, options


def scattered(array):
    """The same numbers elsewhere: every second element, rows before columns, from a read-only array."""
    if array.ndim == 1:
        wide = np.zeros(2 * len(array), array.dtype)
        wide[::2] = array
        view = wide[::2]
    else:
        view = np.zeros((2 * array.shape[0], array.shape[1] + 3), array.dtype)[::2, 1:-2]
        view[...] = array
    view.flags.writeable = False
    return view


def same(one, other, to_rounding):
    """Bit for bit; sums over vectors with an increment are formed in another order."""
    eps = np.finfo(one.dtype).eps if to_rounding and getattr(one, "dtype", np.dtype("i4")).kind in "fc" else 2.0**-52
    np.testing.assert_allclose(one, other, rtol=8 * eps if to_rounding else 0, atol=0)


def as_tuple(result):
    return result if isinstance(result, tuple) else () if result is None else (result,)


class EveryRoutine(unittest.TestCase):
    def setUp(self):
        orvel.rnset(123457)
        caught = warnings.catch_warnings()
        caught.__enter__()
        self.addCleanup(caught.__exit__, None, None, None)
        warnings.simplefilter("ignore", orvel.Warning)  # ordinary data are not good data for every routine

    def members(self):
        for name, entry in orvel._face["routines"].items():
            for member in entry["members"]:
                if member[0].lower() == name or len(entry["members"]) > 1:
                    yield name, entry, member

    def expected(self, entry, member, values, options):
        kinds = dict(zip(entry["arguments"], member[2]))
        result = [(None, SCALARS[member[1]])] if member[1] else []
        for n, what in entry["arguments"].items():
            if what["role"] not in ("out", "inout", "in/out") or what.get("in_place"):
                continue
            if "shape" in what:
                result.append((tuple(size(e, values, options) for e in what["shape"]), TYPES[kinds[n]]))
            else:
                result.append((None, SCALARS[kinds[n]]))
        return result

    def test_results_have_the_shapes_and_types_that_the_description_gives_them(self):
        count = 0
        for name, entry, member in self.members():
            with self.subTest(name, member=member[0]):
                given, values, options = arguments(name, entry, member)
                kept = {n: v.copy() for n, v in given.items() if isinstance(v, np.ndarray)}
                results = as_tuple(getattr(orvel, name)(**given))
                for n, before in kept.items():
                    if not entry["arguments"][n].get("in_place"):
                        np.testing.assert_array_equal(given[n], before, f"{n} was changed")
                expected = self.expected(entry, member, values, options)
                self.assertEqual(len(results), len(expected))
                varies = any(k in "sdcz" for n in entry["required"]
                             for k in [member[2][list(entry["arguments"]).index(n)]])
                for value, (shape, kind) in zip(results, expected):
                    if shape is None:
                        self.assertTrue(isinstance(value, kind) or not varies, f"{type(value)} for {kind}")
                    else:
                        self.assertEqual(value.shape, shape)
                        self.assertTrue(value.dtype == kind or not varies)
                        self.assertTrue(value.flags.f_contiguous)
                count += 1
        self.assertGreater(count, 500)

    def test_nobody_sees_where_the_arrays_lie(self):
        for name, entry, member in self.members():
            given, *_ = arguments(name, entry, member)
            arrays = [n for n, v in given.items() if isinstance(v, np.ndarray)
                      and not entry["arguments"][n].get("in_place")]
            if not arrays:
                continue
            with self.subTest(name, member=member[0]):
                plain = as_tuple(getattr(orvel, name)(**given))
                for chosen in [arrays, *([n] for n in arrays)]:
                    moved = {n: scattered(v) if n in chosen else v for n, v in given.items()}
                    results = as_tuple(getattr(orvel, name)(**moved))
                    for one, other in zip(plain, results):
                        same(one, other, "step" in str(entry["arguments"]))

    def test_each_has_a_signature_and_a_documentation(self):
        for name, entry in orvel._face["routines"].items():
            function = getattr(orvel, name)
            parameters = inspect.signature(function).parameters
            self.assertEqual(function.__name__, name)
            self.assertEqual([p for p in parameters][:len(entry["required"])], entry["required"])
            for member in entry["members"]:
                self.assertIn(member[0], function.__doc__)
            for parameter in parameters:
                self.assertRegex(function.__doc__, rf"(?m)^{parameter} : ", f"{name} does not explain {parameter}")
        stub = ast.parse((Path(orvel.__file__).parent / "__init__.pyi").read_text())
        stubs = {node.name: node.args for node in stub.body if isinstance(node, ast.FunctionDef)}
        for name in orvel._face["routines"]:
            named = [a.arg for a in stubs[name].args + stubs[name].kwonlyargs]
            self.assertEqual(named, list(inspect.signature(getattr(orvel, name)).parameters))
        self.assertIn("lsarg", dir(orvel))
        with self.assertRaisesRegex(AttributeError, "orvel.lsarg"):
            orvel.LSARG


if __name__ == "__main__":
    unittest.main()
