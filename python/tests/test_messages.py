"""Errors and warnings of routines; bad input, which is refused before the routine is entered; a missing library."""
import copy
import ctypes
import os
import pickle
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest
import warnings
from pathlib import Path

import numpy as np

import orvel

SINGULAR = np.ones((3, 3))
PACKAGE = Path(orvel.__file__).parent


class Messages(unittest.TestCase):
    def test_errors_are_exceptions(self):
        with self.assertRaises(orvel.TerminalError) as caught:
            orvel.lsarg(np.eye(2), [1.0, 2], ipath=3)
        error = caught.exception
        self.assertEqual((error.severity, error.code, error.routine), ("TERMINAL", 3, "DL2ARG"))
        self.assertEqual(error.text, "IPATH must be either 1 or 2 while a value of 3 is given.")
        self.assertIn(error.text, str(error))
        self.assertIsNone(error.result)
        again = pickle.loads(pickle.dumps(copy.copy(error)))
        self.assertEqual((type(again), str(again)), (orvel.TerminalError, str(error)))
        with self.assertRaises(orvel.TerminalError) as caught:
            orvel.gamma([1.0, 0.0, -1.0, 2.0])
        self.assertEqual(caught.exception.routine, "DGAMMA")
        with self.assertRaises(orvel.TerminalError):  # posted at the level of the caller
            orvel.ndays(30, 2, 2000)
        with self.assertRaises(orvel.TerminalError):
            orvel.c1dat(1, 13, 2000)

    def test_fatal_errors_carry_what_was_computed(self):
        with self.assertRaises(orvel.FatalError) as caught:
            orvel.qdags(lambda x: 1 / x, 0, 1)
        result = caught.exception.result
        self.assertGreater(result.result, 1)
        self.assertGreater(result.esterr, 0)
        with self.assertRaises(orvel.FatalError) as caught:
            orvel.lsarg(SINGULAR, [1.0, 2, 3])
        self.assertTrue(np.isnan(caught.exception.result).all())  # untouched, and not to be taken for a solution
        with self.assertRaises(orvel.Error) as caught:
            orvel.lftrg(SINGULAR)
        self.assertEqual(caught.exception.result.fact[0, 0], 1)

    def test_warnings_name_the_line_of_the_caller(self):
        for call, kind in ((lambda: orvel.gamma(-200.5), orvel.Alert), (lambda: orvel.csevl(2.0, [1.0]), orvel.Warning)):
            with self.assertWarns(kind) as caught:
                value = call()
            self.assertEqual(caught.filename, __file__)
            self.assertIsInstance(value, float)
            self.assertEqual(caught.warning.severity, "ALERT" if kind is orvel.Alert else "WARNING")
        with warnings.catch_warnings():
            warnings.simplefilter("error", orvel.Warning)
            with self.assertRaises(orvel.Warning) as caught:
                orvel.csevl(2.0, [1.0, 2.0])
            self.assertEqual(caught.exception.result, 4.5)

    def test_the_worst_of_many_is_said_once(self):
        with self.assertWarns(orvel.Warning) as caught:
            values = orvel.gamma([-200.5, 5.0, -3.0000000001, 4.0, -201.5])
        self.assertEqual(len(caught.warnings), 1)
        self.assertEqual(caught.warning.code, 2)
        self.assertEqual(values[[0, 1, 3]].tolist(), [0, 24, 6])

    def test_notes_go_to_the_log(self):
        with warnings.catch_warnings(), self.assertLogs("orvel", "INFO") as logged:
            warnings.simplefilter("error")
            self.assertEqual(orvel.ndays(1, 1, -50), -711859)
        self.assertIn("Julian", logged.output[0])

    def test_nothing_is_printed_and_the_switches_stay(self):
        program = """if True:
            import ctypes, orvel, numpy, warnings
            warnings.simplefilter("ignore")
            for call in (lambda: orvel.gamma(0.0), lambda: orvel.gamma(-200.5), lambda: orvel.lsarg(numpy.ones((2, 2)), [1, 2]),
                         lambda: orvel.qdags(lambda x: orvel.gamma(-200.5), 0, 1), lambda: orvel.c1dat(1, 13, 2000)):
                try:
                    call()
                except orvel.Error:
                    pass
            library = ctypes.CDLL(orvel.library_path)
            library.DGAMMA(ctypes.byref(ctypes.c_double(0)))   # as a program without this package: says so and stops
            print("not reached")"""
        done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, timeout=60)
        said = done.stdout + done.stderr
        self.assertEqual(said.count("ERROR"), 1, said)
        self.assertNotIn("not reached", said)

    def test_threads_do_not_hear_of_each_other(self):
        problems = []

        def work(k):
            try:
                for n in range(200):
                    if (k + n) % 2:
                        try:
                            orvel.lsarg(SINGULAR, [1.0, 2, 3])
                            problems.append("no error")
                        except orvel.FatalError as error:
                            if error.code != 2:
                                problems.append(error)
                    elif orvel.qdags(lambda x: k * x, 0, 2).result != 2 * k or orvel.gamma(5) != 24:
                        problems.append("value")
            except BaseException as problem:
                problems.append(problem)

        threads = [threading.Thread(target=work, args=(k,)) for k in range(8)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(problems, [])


def read_only(array):
    array.flags.writeable = False
    return array


class BadInput(unittest.TestCase):
    eye, b, z = np.eye(3), np.ones(3), np.ones(3) * 1j
    table = [
        (ValueError, r"lsarg: a must be a square matrix, got shape \(3, 4\)", lambda s: orvel.lsarg(np.ones((3, 4)), s.b)),
        (ValueError, r"lsarg: b must have 3 elements as a has, got shape \(4,\)", lambda s: orvel.lsarg(s.eye, np.ones(4))),
        (ValueError, r"lsarg: b must be a vector, got shape \(3, 1\)", lambda s: orvel.lsarg(s.eye, np.ones((3, 1)))),
        (ValueError, "lsarg: a must be a matrix", lambda s: orvel.lsarg(s.b, s.b)),
        (TypeError, "lsarg: a must hold numbers, got dtype object", lambda s: orvel.lsarg(s.eye.astype(object), s.b)),
        (TypeError, "lsarg: b must hold numbers, got dtype <U1", lambda s: orvel.lsarg(s.eye, ["a", "b", "c"])),
        (TypeError, "lsarg: b must be an array, got None", lambda s: orvel.lsarg(s.eye, None)),
        (TypeError, "dlsarg: b must be real, got complex128", lambda s: orvel.dlsarg(s.eye, s.z)),
        (TypeError, "lsarg: b is complex, but dtype is float64", lambda s: orvel.lsarg(s.eye, s.z, dtype=float)),
        (TypeError, "lsarg: dtype must be float32", lambda s: orvel.lsarg(s.eye, s.b, dtype=int)),
        (TypeError, "csint: fdata must be real", lambda s: orvel.csint(s.b, s.z)),
        (TypeError, "lsarg: a has dtype .*more than double", lambda s: orvel.lsarg(s.eye.astype(np.longdouble), s.b)),
        (TypeError, "lsarg: a must not be a masked array", lambda s: orvel.lsarg(np.ma.array(s.eye), s.b)),
        (ValueError, "lsarg: a cannot be made an array", lambda s: orvel.lsarg([[1, 2], [3]], s.b)),
        (TypeError, "lsarg: ipath must be an integer, got 1.5", lambda s: orvel.lsarg(s.eye, s.b, 1.5)),
        (ValueError, "lsarg: a must have at least 4 rows", lambda s: orvel.lsarg(s.eye, s.b, n=4)),
        (TypeError, "svign: ia must be integers, got float64", lambda s: orvel.svign([1.5])),
        (ValueError, "svign: ia holds 2147483648, which does not fit int32", lambda s: orvel.svign([1, 2**31])),
        (ValueError, "svign: ia holds -", lambda s: orvel.svign([-2**31 - 1])),
        (ValueError, "ndyin: ndays = 2147483648 does not fit", lambda s: orvel.ndyin(2**31)),
        (TypeError, "gamma: x must be real", lambda s: orvel.gamma(1j)),
        (TypeError, "gamma: x must hold numbers", lambda s: orvel.gamma("1")),
        (TypeError, "qdags: a must be a number, got an array", lambda s: orvel.qdags(abs, [0], 1)),
        (ValueError, "gamma: x = 1e[+]?300 does not fit single", lambda s: orvel.gamma(1e300, dtype="f4")),
        (ValueError, r"gemm: b must have 3 rows as a has, got shape \(4, 2\)", lambda s: orvel.gemm(s.eye, np.ones((4, 2)))),
        (ValueError, "gemm: transa must be 'N' or 'T' or 'C', got 'X'", lambda s: orvel.gemm(s.eye, s.eye, "x")),
        (TypeError, "gemm: transa must be a text", lambda s: orvel.gemm(s.eye, s.eye, transa=1)),
        (ValueError, "gbmv: a must have shape", lambda s: orvel.gbmv(2, 1, s.eye, s.b, m=3)),
        (TypeError, "gbmv: m cannot be told", lambda s: orvel.gbmv(1, 1, s.eye, s.b)),
        (TypeError, "missing 1 required positional argument: 'b'", lambda s: orvel.lsarg(s.eye)),
        (ValueError, "axpy: y is to be written to, but is read-only",
         lambda s: orvel.axpy(1, s.b, read_only(np.ones(3)), overwrite_y=True)),
        (ValueError, "lsarg: x is to be written to, but is read-only", lambda s: orvel.lsarg(s.eye, s.b, out=read_only(np.ones(3)))),
        (TypeError, "lsarg: x must have dtype float64 to be written to", lambda s: orvel.lsarg(s.eye, s.b, out=np.ones(3, "f4"))),
        (ValueError, r"lsarg: x must have shape \(3,\)", lambda s: orvel.lsarg(s.eye, s.b, out=np.ones(4))),
        (TypeError, "lsarg: x must be an array to be written to, got list", lambda s: orvel.lsarg(s.eye, s.b, out=[[1, 2, 3]])),
        (TypeError, "lftrg: out must be a tuple of 2 arrays", lambda s: orvel.lftrg(s.eye, out=s.b)),
        (TypeError, "lftrg: out must have 2 arrays", lambda s: orvel.lftrg(s.eye, out=[s.b])),
        (TypeError, "qdags: errrel must be a number, got an array", lambda s: orvel.qdags(abs, 0, 1, errrel=s.b)),
        (TypeError, "lftrg: out has no place for 'x'", lambda s: orvel.lftrg(s.eye, out={"x": s.b})),
        (ValueError, "lsarg: x must not overlap a", lambda s: (lambda a: orvel.lsarg(a, s.b, out=a[:, 0]))(np.eye(3, order="F"))),
        (ValueError, "lsarg: x must not overlap b unless it is the same array as b",
         lambda s: (lambda v: orvel.lsarg(s.eye, v[:3], out=v[1:]))(np.ones(4))),
        (TypeError, "axpy: y must have dtype float64", lambda s: orvel.axpy(1.0, s.b, np.ones(3, "f4"), overwrite_y=True)),
        (TypeError, "qdags: f must be a function, got float", lambda s: orvel.qdags(1.0, 0, 1)),
        (TypeError, "qdags: f must return a real number, got None at 0.5", lambda s: orvel.qdags(lambda x: None, 0, 1)),
        (TypeError, r"qdags: f must return a real number, got an array of shape \(1,\) at",
         lambda s: orvel.qdags(lambda x: np.array([x]), 0, 1)),
        (TypeError, "qdags: f must return a real number, got '1'", lambda s: orvel.qdags(lambda x: "1", 0, 1)),
        (TypeError, "qdags: f must return a real number", lambda s: orvel.qdags(lambda x: 1j, 0, 1)),
        (TypeError, "qdags: f must return a real number", lambda s: orvel.qdags(lambda x: np.complex128(1), 0, 1)),
        (ValueError, "use_level: there is no level 'pdp-11'", lambda s: orvel.use_level("pdp-11")),
    ]

    def test_each_is_refused_by_name_before_the_routine_is_entered(self):
        for kind, text, call in self.table:
            with self.subTest(text), self.assertRaisesRegex(kind, text):
                call(self)
        self.assertTrue((self.eye == np.eye(3)).all() and (self.b == 1).all())


class Finding(unittest.TestCase):
    def imported(self, package=PACKAGE.parent, **environment):
        names = {k: v for k, v in os.environ.items() if k not in ("ORVEL_LIBRARY", "LD_LIBRARY_PATH", "PYTHONPATH")}
        done = subprocess.run([sys.executable, "-c", "import orvel; print(orvel.library_path, orvel.gamma(5))"], timeout=60,
                              capture_output=True, text=True, env={**names, "PYTHONPATH": str(package), **environment})
        return done.stdout + done.stderr

    def test_where_the_library_is_looked_for(self):
        library = Path(orvel.library_path).resolve()
        with tempfile.TemporaryDirectory() as folder:
            prefix = Path(folder)
            package = prefix / "lib/python3/dist-packages/orvel"
            shutil.copytree(PACKAGE, package, ignore=shutil.ignore_patterns("*.so*", "__pycache__"))
            found = ctypes.util.find_library("orvel") if hasattr(ctypes, "util") else None
            if found is None:
                said = self.imported(package.parent)
                self.assertIn("ImportError: orvel: liborvel.so.1 was not found", said)
                self.assertIn(str(prefix / "lib/liborvel.so.1"), said)
                self.assertIn("Set ORVEL_LIBRARY", said)
            (prefix / "lib/liborvel.so.1").symlink_to(library)
            self.assertIn(f"{prefix}/lib/liborvel.so.1 24.0", self.imported(package.parent))
            (package / "liborvel.so.1").symlink_to(library)
            self.assertIn("orvel/liborvel.so.1 24.0", self.imported(package.parent))
            os.symlink(library, prefix / "mine.so")
            self.assertIn("mine.so 24.0", self.imported(package.parent, ORVEL_LIBRARY=str(prefix / "mine.so")))
            self.assertIn("ImportError: orvel: ORVEL_LIBRARY=/nowhere", self.imported(package.parent, ORVEL_LIBRARY="/nowhere"))
            face = package / "_interface.json"
            face.write_text(face.read_text().replace(f'"version":"{orvel.version}"', '"version":"1.99.0"'))
            self.assertIn("this package was made for 1.99.0", self.imported(package.parent))
            libm = next(Path("/lib").rglob("libm.so.6"), None)
            if libm:
                self.assertIn("another library", self.imported(package.parent, ORVEL_LIBRARY=str(libm)))
            face.unlink()
            self.assertIn("sources of the package", self.imported(package.parent))


if __name__ == "__main__":
    unittest.main()
