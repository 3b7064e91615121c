#!/usr/bin/env python3
# tools/accuracy.py - measure the special functions against mpmath and print docs/accuracy.md
#
#   /usr/bin/python3 tools/accuracy.py build/release/liborvel.so > docs/accuracy.md
#
# Errors are counted in units in the last place of the correctly rounded result, over random arguments.
import ctypes
import math
import random
import sys

from mpmath import mp, mpf, gamma, log, loggamma, pi, rgamma

ARGUMENTS = 10_000
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


ROUTINES = [
    (("GAMMA", "DGAMMA"), gamma,
     ["uniform", (1e-4, 1), (1, 2), (2, 10), (10, 35), (35, 171.6), (-10, -1e-4), (-34, -10), (-170.5, -34)]),
    (("ALNGAM", "DLNGAM"), log_abs_gamma,
     ["uniform", (1e-4, 0.9), (0.9, 1.1), (1.1, 1.9), (1.9, 2.1), (2.1, 10), (10, 100), (100, 1e5), (-10, -1e-4),
      (-100, -10)]),
    (("GAMR", "DGAMR"), rgamma,
     ["uniform", (1e-4, 10), (10, 35), (35, 170), (-10, -1e-4), (-34, -10), (-170, -34)]),
    (("R9LGMC", "D9LGMC"), stirling_correction, ["log", (10, 100), (100, 1e4), (1e4, 1e10)]),
]
SINGLE_RANGE = {"GAMMA": (-33.9, 35.0), "GAMR": (-34.0, 34.0)}


def error_in_ulps(value, exact, digits):
    exponent = math.frexp(float(exact))[1] if exact else 0
    ulp = mpf(2) ** (max(exponent, -1021 if digits == 53 else -125) - digits)
    return float(abs(mpf(value) - exact) / ulp)


def measure(routine, exact, kind, low, high, digits):
    worst, where, total = 0.0, low, 0.0
    to_real = (lambda x: x) if digits == 53 else (lambda x: ctypes.c_float(x).value)
    for _ in range(ARGUMENTS):
        if kind == "log":
            x = to_real(math.exp(random.uniform(math.log(low), math.log(high))))
        else:
            x = to_real(random.uniform(low, high))
        error = error_in_ulps(routine(x), exact(mpf(x)), digits)
        total += error
        if error > worst:
            worst, where = error, x
    return worst, total / ARGUMENTS, where


def main():
    function = loader(sys.argv[1])
    random.seed(20)
    print("# Accuracy of the special functions\n")
    print(f"Printed by tools/accuracy.py: errors against mpmath with {mp.dps} digits, in units in the last place of")
    print(f"the result, {ARGUMENTS:,} random arguments in each region. Arguments close to a negative integer are")
    print("included. Near a zero of the logarithm on the negative axis its relative error is not bounded; near its")
    print("zeros 1 and 2 it is.\n")
    print("| routine | region | largest error | mean error | at |")
    print("|---|---|---:|---:|---:|")
    for names, exact, (kind, *regions) in ROUTINES:
        for name, real, digits in (names[0], ctypes.c_float, 24), (names[1], ctypes.c_double, 53):
            least, most = SINGLE_RANGE.get(name, (-math.inf, math.inf))
            for low, high in regions:
                low, high = max(low, least), min(high, most)
                if low >= high:
                    continue
                worst, mean, where = measure(function(name, real), exact, kind, low, high, digits)
                print(f"| `{name}` | {low:g} to {high:g} | {worst:.2f} | {mean:.2f} | {where:.9g} |")


main()
