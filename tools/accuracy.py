#!/usr/bin/env python3
# tools/accuracy.py - measure the special functions against mpmath and print docs/accuracy.md
#
#   /usr/bin/python3 tools/accuracy.py build/release/liborvel.so > docs/accuracy.md
#   /usr/bin/python3 tools/accuracy.py build/release/liborvel.so docs/accuracy.md
#
# Errors are counted in units in the last place of the correctly rounded result, over random arguments. With the name of
# the table, some of the arguments and the recorded ones are measured again, and no error may exceed the recorded one by
# more than the difference of two mathematical libraries.
import ctypes
import math
import os
import random
import re
import sys

from mpmath import mp, mpf, gamma, log, loggamma, pi, rgamma

ARGUMENTS, REPEATED = 10_000, 300
SLACK = 1.0
mp.dps = 40


def loader(library):
    library = ctypes.CDLL(library)
    keep, off = ctypes.c_int32(-1), ctypes.c_int32(0)
    library.ERSET(ctypes.byref(ctypes.c_int32(0)), ctypes.byref(off), ctypes.byref(off))

    def function(name, real):
        routine = library[name]
        routine.restype = real
        return lambda x: routine(ctypes.byref(real(x)))
    return function


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
    table = os.path.join(os.path.dirname(__file__), "..", "special", "log_gamma_zeros.h")
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


def error_in_ulps(value, exact, digits):
    exponent = math.frexp(float(exact))[1] if exact else 0
    ulp = mpf(2) ** (max(exponent, -1021 if digits == 53 else -125) - digits)
    return float(abs(mpf(value) - exact) / ulp)


def is_representable(exact, digits):
    return abs(exact) < (mpf(2)**1024 if digits == 53 else mpf(2)**128)


def measure(routine, exact, kind, low, high, digits, count):
    """The largest error, the mean one, and where the largest is."""
    rng = random.Random(f"{kind} {low} {high} {digits}")
    worst, where, total, measured = 0.0, low, 0.0, 0
    to_real = (lambda x: x) if digits == 53 else (lambda x: ctypes.c_float(x).value)
    while measured < count:
        x = to_real(KINDS[kind](rng, low, high))
        if x <= 0 and x == math.floor(x):
            continue
        value = exact(mpf(x))
        if not is_representable(value, digits):
            continue
        error = error_in_ulps(routine(x), value, digits)
        total += error
        measured += 1
        if not error <= worst:  # NaN, too
            worst, where = error, x
    return worst, total / count, where


def rows(function):
    """Name, function, exact function, kind of arguments, interval and digits of every region."""
    for names, exact, kind, regions in ROUTINES:
        for name, real, digits in (names[0], ctypes.c_float, 24), (names[1], ctypes.c_double, 53):
            least, most = SINGLE_RANGE.get(name, (-math.inf, math.inf))
            for low, high in regions:
                low, high = max(low, least), min(high, most)
                if low < high:
                    yield name, function(name, real), exact, kind, low, high, digits


def key(name, kind, low, high):
    return f"| `{name}` | {low:g} to {high:g} | {kind} |"


def print_table(function):
    print("# Accuracy of the special functions\n")
    print(f"Printed by tools/accuracy.py: errors against mpmath with {mp.dps} digits, in units in the last place of")
    print(f"the result, {ARGUMENTS:,} random arguments in each region. Arguments beside zeros of the logarithm and beside")
    print("integers are as close to them as numbers are, with a uniform logarithm of the distance.\n")
    print("| routine | region | arguments | largest error | mean error | at |")
    print("|---|---|---|---:|---:|---:|")
    for name, routine, exact, kind, low, high, digits in rows(function):
        worst, mean, where = measure(routine, exact, kind, low, high, digits, ARGUMENTS)
        print(f"{key(name, kind, low, high)} {worst:.2f} | {mean:.2f} | {where:.17g} |", flush=True)


def check(function, table):
    with open(table, encoding="utf-8") as lines:
        recorded = {line[:line.index("|", line.index("|", line.index("|", 3) + 1) + 1) + 1]: line for line in lines
                    if line.startswith("| `")}
    failures = 0
    for name, routine, exact, kind, low, high, digits in rows(function):
        line = recorded.pop(key(name, kind, low, high), None)
        if line is None:
            print("not in the table:", key(name, kind, low, high))
            failures += 1
            continue
        largest, _, where = (float(cell) for cell in line.split("|")[4:7])
        there = error_in_ulps(routine(where), exact(mpf(where)), digits)
        worst, _, at = measure(routine, exact, kind, low, high, digits, REPEATED)
        if not worst <= largest + SLACK or not abs(there - largest) <= SLACK:
            print(line.strip(), f"but {there:.2f} there and {worst:.2f} at {at:.17g}")
            failures += 1
    print(*recorded.values(), end="")
    return failures + len(recorded)


def main():
    function = loader(sys.argv[1])
    if len(sys.argv) > 2:
        sys.exit(check(function, sys.argv[2]))
    print_table(function)


main()
