"""The gamma functions in every region, in units in the last place of the correctly rounded result."""
import ctypes
import math
import os
import random
import re

from mpmath import mp, mpf, gamma, log, loggamma, pi, rgamma

from tables import Column, Errors, Table, best

TITLE = "Special functions"
NOTES = (
    "`DLNGAM` within 1/32 of its zeros between -3 and -2: a logarithm of sines and a series of opposite signs, each of "
    "which rounds, leave half of themselves. The RMS is below that of others.",
    "Functions that carry 80 bits and round the result once are not among the peers.",
)
ARGUMENTS, REPEATED = 10_000, 300


def log_abs_gamma(x):
    if x > 0:
        return loggamma(x)
    return log(pi / abs(mp.sinpi(x))) - loggamma(1 - x)


def stirling_correction(x):
    if x > 1e4:  # the difference of logarithms would cancel; the next term is below 1e-25 of the first
        return (1 - 1 / (30 * x * x)) / (12 * x)
    return loggamma(x) - ((x - mpf(1) / 2) * log(x) - x + log(2 * pi) / 2)


def zeros_of_log_gamma():
    """As the generated table has them, and the integers whose zeros are too close to be told from them."""
    table = os.path.join(os.path.dirname(__file__), "..", "..", "special", "log_gamma_zeros.h")
    with open(table, encoding="utf-8") as lines:
        zeros = [float(m[1]) for line in lines if (m := re.match(r" +\{(-[^,]+),", line))]
    return zeros + [-float(n) for n in range(18, 41)]


# Kinds of arguments: uniform or with uniform logarithm in an interval, or at distances with uniform logarithm beside
# points, the smallest of which is a rounding error.
def beside_zeros(rng, low, high):
    x = rng.choice([z for z in zeros_of_log_gamma() if low <= z <= high])
    return x + rng.choice([-1, 1]) * math.exp(rng.uniform(-34, -1))


def beside_integers(rng, low, high):
    return rng.randint(math.ceil(low), math.floor(high)) + rng.choice([-1, 1]) * math.exp(rng.uniform(-31, -1))


KINDS = {
    "uniform": lambda rng, low, high: rng.uniform(low, high),
    "logarithmic": lambda rng, low, high: math.exp(rng.uniform(math.log(low), math.log(high))),
    "beside zeros": beside_zeros,
    "beside integers": beside_integers,
}

ROUTINES = [
    (("GAMMA", "DGAMMA"), gamma, "uniform",
     [(1e-4, 1), (1, 2), (2, 10), (10, 10.5), (10, 35), (35, 171.6), (-10, -1e-4), (-10.5, -10), (-34, -10),
      (-170.5, -34)]),
    (("ALNGAM", "DLNGAM"), log_abs_gamma, "uniform",
     [(1e-4, 0.9), (0.9, 1.1), (1.1, 1.9), (1.9, 2.1), (2.1, 10), (10, 100), (100, 1e5), (-10, -1e-4), (-18, -10),
      (-100, -18)]),
    (("ALNGAM", "DLNGAM"), log_abs_gamma, "beside zeros", [(-10, -2), (-40, -10)]),
    (("GAMR", "DGAMR"), rgamma, "uniform", [(1e-4, 10), (10, 35), (35, 178), (-10, -1e-4), (-34, -10), (-170.5, -34)]),
    (("GAMR", "DGAMR"), rgamma, "beside integers", [(-10, -1), (-37, -11), (-176, -38)]),
    (("R9LGMC", "D9LGMC"), stirling_correction, "logarithmic", [(10, 100), (100, 1e4), (1e4, 1e10)]),
]
SINGLE_RANGE = {"GAMMA": (-33.9, 35.0), "GAMR": (-37.0, 37.0)}


def in_ulps(exact, digits):
    """A function that counts the units between a value and the exact one; the unit is that of the exact one."""
    exponent = math.frexp(float(exact))[1] if exact else 0
    high = float(exact)
    low = float(exact - high)
    shift = digits - max(exponent, -1021 if digits == 53 else -125)
    return lambda value: abs(math.ldexp(value - high, shift) - math.ldexp(low, shift))


def is_representable(exact, digits):
    return abs(exact) < (mpf(2)**1024 if digits == 53 else mpf(2)**128)


def measure(functions, exact, kind, low, high, digits, count, also=()):
    """The errors of each function at the same arguments: random ones, and those that are given."""
    rng = random.Random(f"{kind} {low} {high} {digits}")
    errors = {who: Errors() for who in functions}
    to_real = (lambda x: x) if digits == 53 else (lambda x: ctypes.c_float(x).value)
    given = iter(also)
    while errors["ours"].count < count + len(also):
        x = to_real(next(given, None) or KINDS[kind](rng, low, high))
        if x <= 0 and x == math.floor(x):
            continue
        value = exact(mpf(x))
        if not is_representable(value, digits):
            continue
        units = in_ulps(value, digits)
        for who, function in functions.items():
            errors[who].add(units(function(x)), x)
    return errors


def table(library, peers, title, about, digits):
    """In a repeat the largest error is looked for where it was, too."""
    real = ctypes.c_float if digits == 24 else ctypes.c_double
    member = 0 if digits == 24 else 1

    def rows():
        for routines, exact, kind, regions in ROUTINES:
            name = routines[member]
            functions = {"ours": library.function(name, real)}
            if peers:
                functions |= peers.gamma_functions(routines[1], real)
            least, most = SINGLE_RANGE.get(name, (-math.inf, math.inf))
            for low, high in regions:
                low, high = max(low, least), min(high, most)
                if low < high:
                    beside = "" if kind in ("uniform", "logarithmic") else ", " + kind
                    names = f"`{name}`", f"{low:g} to {high:g}{beside}"
                    recorded = result.record.get((title, *names))
                    errors = measure(functions, exact, kind, low, high, digits, ARGUMENTS if peers else REPEATED,
                                     [float(recorded[-1])] if recorded else [])
                    ours = errors.pop("ours")
                    yield *names, ours.worst, ours.rms, *best(errors), f"{ours.where:.17g}"

    # Single members round a double, so their errors are halves on every machine; those of double members are also
    # those of the machine's logarithm, exponential and sine, which is one unit at most, and fewer arguments scatter.
    factor, more = (1.0, 0.1) if digits == 24 else (1.0, 1.0)
    columns = [Column("largest", factor=factor, more=more), Column("RMS", factor=1.25, more=more / 10),
               Column("best peer's largest"), Column("RMS"), Column("which"), Column("at")]
    result = Table(title, about, ["routine", "region"], columns, rows)
    return result


def tables(library, peers):
    return [table(library, peers, "Gamma functions, double precision",
                  f"Against {mp.dps} digits at {ARGUMENTS:,} random arguments in each region, in units in the last "
                  "place of the result. Arguments beside zeros of the logarithm and beside integers are as close to "
                  "them as numbers are, with a uniform logarithm of the distance. The peer is the one of glibc, GSL "
                  "and SciPy with the smallest largest error at the same arguments; `at` is where our largest is.", 53),
            table(library, peers, "Gamma functions, single precision",
                  "The same, in units of single precision: half a unit is correct rounding.", 24)]
