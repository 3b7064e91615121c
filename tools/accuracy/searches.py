"""Zeros and minima: the distance to the true one against the accuracy asked for, and the calls of the function."""
import ctypes
import math

from mpmath import mp, mpf

from library import CALLBACKS, array
from tables import Column, Errors, Table

TITLE = "Zeros and minima"
NOTES = (
    "`DZREAL` starts from a point and is told no interval; the two zeros that are not found are those of (nx - 1) / "
    "((n - 1) x) for n = 15 and 20, whose parabolas lead away.",
    "The larger errors of `DUVMIF` are below what was asked for.",
)
ZERO_TOLERANCES, MINIMUM_TOLERANCES = (1e-6, 1e-12), (1e-3, 1e-7)
MOST = 200  # iterations or calls

# Problems of G. E. Alefeld, F. A. Potra, Y. Shi, Algorithm 748, ACM Transactions on Mathematical Software 21, 1995, but for
# zeros at zero: functions of the mathematics (double or long) and the argument, and intervals that enclose one zero.
ZEROS = (
    [(lambda m, x: m.sin(x) - x / 2, math.pi / 2, math.pi), (lambda m, x: m.sin(x) - 0.5, 0.0, 1.5)]
    + [(lambda m, x, n=n: x**n - 0.2, 0.0, 5.0) for n in (4, 6, 8, 10, 12)]
    + [(lambda m, x, n=n: x**n - 1, -0.95, 4.05) for n in (8, 10, 12, 14)]
    + [(lambda m, x, n=n: 2 * x * m.exp(-n) - 2 * m.exp(-n * x) + 1, 0.0, 1.0) for n in (1, 5, 10, 20)]
    + [(lambda m, x, n=n: (1 + (1 - n)**2) * x - (1 - n * x)**2, 0.0, 1.0) for n in (5, 10, 20)]
    + [(lambda m, x, n=n: x * x - (1 - x)**n, 0.0, 1.0) for n in (2, 5, 10, 15, 20)]
    + [(lambda m, x, n=n: (1 + (1 - n)**4) * x - (1 - n * x)**4, 0.0, 1.0) for n in (2, 4, 5, 8)]
    + [(lambda m, x, n=n: m.exp(-n * x) * (x - 1) + x**n, 0.0, 1.0) for n in (1, 5, 10, 15)]
    + [(lambda m, x, n=n: (n * x - 1) / ((n - 1) * x), 0.01, 1.0) for n in (5, 15, 20)]
    + [(lambda m, x, n=n: x**(1 / n) - n**(1 / n), 1.0, 100.0) for n in (2, 4, 5, 7, 10)])

# Problems of P. Hansen, B. Jaumard, S.-H. Lu, Global optimization of univariate Lipschitz functions II, Mathematical
# Programming 55, 1992, each on an interval around one minimum.
MINIMA = (
    (lambda m, x: m.sin(x) + m.sin(10 * x / 3), 4.6, 5.7),
    (lambda m, x: -((16 * x - 24) * x + 5) * m.exp(-x), 1.9, 3.9),
    (lambda m, x: -(1.4 - 3 * x) * m.sin(18 * x), 0.85, 1.1),
    (lambda m, x: -(x + m.sin(x)) * m.exp(-x * x), -0.5, 2.0),
    (lambda m, x: m.sin(x) + m.sin(10 * x / 3) + m.log(x) - 0.84 * x + 3, 4.6, 5.7),
    (lambda m, x: -x * m.sin(x), 6.0, 10.0),
    (lambda m, x: 2 * m.cos(x) + m.cos(2 * x), 1.0, 3.0),
    (lambda m, x: m.sin(x)**3 + m.cos(x)**3, 2.5, 3.8),
    (lambda m, x: -m.exp(-x) * m.sin(2 * math.pi * x), 0.0, 0.7),
    (lambda m, x: (x * x - 5 * x + 6) / (x * x + 1), 0.0, 5.0),
)


def bisected(f, a, b):
    """The zero of a function between a and b, to 30 digits."""
    a, b = mpf(a), mpf(b)
    rises = f(b) > 0
    for _ in range(110):
        middle = (a + b) / 2
        if (f(middle) > 0) == rises:
            b = middle
        else:
            a = middle
    return a


class Counted:
    """A function in double arithmetic that counts its calls; where it has no value it is NaN."""

    def __init__(self, f):
        self.f, self.calls = f, 0

    def __call__(self, x):
        self.calls += 1
        try:
            value = self.f(math, x)
        except (OverflowError, ZeroDivisionError, ValueError):
            return math.nan
        return value if isinstance(value, float) else math.nan


def zero(library, f, a, b, tolerance):
    """From the middle of the interval; None where none is found, or another one."""
    x, info = array(ctypes.c_double, [0.0]), array(ctypes.c_int32, [0])
    library.call("DZREAL", CALLBACKS[ctypes.c_double](lambda at: f(at[0])), 0.0, tolerance, 1e-5, 1e-2, 1, MOST,
                 (a + b) / 2, x, info)
    return x[0] if info[0] <= MOST and a <= x[0] <= b else None


def minimum(library, f, a, b, accuracy):
    x = ctypes.c_double()
    library.call("DUVMIF", CALLBACKS[ctypes.c_double](lambda at: f(at[0])), (a + b) / 2, (b - a) / 20, (b - a) / 2, accuracy,
                 MOST, x)
    return x.value if library.severity() == 0 else None


def summary(problems, truths, search, unit):
    """How many were not found, the errors in units, and calls for each that was found."""
    errors, calls, missing = Errors(), 0, 0
    for (f, a, b), true in zip(problems, truths):
        counted = Counted(f)
        x = search(counted, a, b)
        if x is None:
            missing += 1
        else:
            errors.add(float(abs(x - true)) / unit(true))
            calls += counted.calls
    return float(missing), errors.worst, errors.rms, calls / max(errors.count, 1)


def row(name, tolerance, ours, theirs):
    return (name, f"{tolerance:g}", *ours, *(theirs or (None,) * 4))


def rows(library, peers):
    truths = [bisected(lambda x, f=f: f(mp, x), a, b) for f, a, b in ZEROS]
    for t in ZERO_TOLERANCES:
        def unit(true, t=t):
            return t * float(abs(true))
        ours = summary(ZEROS, truths, lambda f, a, b, t=t: zero(library, f, a, b, t), unit)
        theirs = peers and summary(ZEROS, truths, lambda f, a, b, t=t: peers.zero(f, a, b, t), unit)
        yield row(f"`DZREAL`, {len(ZEROS)} zeros", t, ours, theirs)
    truths = [bisected(lambda x, f=f: mp.diff(lambda y: f(mp, y), x), a, b) for f, a, b in MINIMA]
    for t in MINIMUM_TOLERANCES:
        ours = summary(MINIMA, truths, lambda f, a, b, t=t: minimum(library, f, a, b, t), lambda true, t=t: t)
        theirs = peers and summary(MINIMA, truths, lambda f, a, b, t=t: peers.minimum(f, a, b, t), lambda true, t=t: t)
        yield row(f"`DUVMIF`, {len(MINIMA)} minima", t, ours, theirs)


def tables(library, peers):
    # The last bits of the functions are those of the machine's library, and decide where a search ends.
    columns = [Column("not found", ".0f", 1.0, 0.0), Column("largest", ".2g", 1.5, 0.02), Column("RMS", ".2g", 1.5, 0.02),
               Column("calls", ".1f", 1.05, 0.0), Column("peer: not found", ".0f"), Column("largest", ".2g"),
               Column("RMS", ".2g"), Column("calls", ".1f")]
    return [Table("Zeros and minima", "Problems of Alefeld, Potra and Shi and of Hansen, Jaumard and Lu, as in "
                  "[Evaluations](evaluations.md), with relative accuracies for zeros and absolute ones for minima: "
                  "the distance to the true zero or minimum, which was bisected in 40 digits, in units of the "
                  "accuracy asked for, and calls of the function for a problem. The peers are `brentq`, which is told "
                  "an interval around the zero, and the bounded `minimize_scalar` of SciPy.",
                  ["problems", "accuracy"], columns, lambda: rows(library, peers))]
