#!/usr/bin/env python3
# tools/log_gamma_zeros.py - print special/log_gamma_zeros.h: where |Gamma| is 1 on the negative axis
#
#   /usr/bin/python3 tools/log_gamma_zeros.py > special/log_gamma_zeros.h
#
# Every number is computed with 60 digits and rounded once. A test runs this program again and compares its
# output with the file that is checked in.
from mpmath import mp, mpf, cos, cot, log, loggamma, nstr, pi, sin

from chebyshev import powers

mp.dps = 60
TERMS = 12
LARGEST = 17  # beyond it no double is closer to a zero than to the integer beside it


def log_abs_gamma(y):
    """ln |Gamma(-y)|"""
    return log(pi / (y * abs(sin(pi * y)))) - loggamma(y)


def bisect(f, low, high):
    """The point between low and high at which f changes its sign."""
    sign = f(low) > 0
    for _ in range(220):
        middle = (low + high) / 2
        if (f(middle) > 0) == sign:
            low = middle
        else:
            high = middle
    return (low + high) / 2


def lowest_point(n):
    """Where |Gamma| is least between -n - 1 and -n."""
    low, high = n + mpf(1) / 10, n + mpf(9) / 10
    for _ in range(400):
        a, b = low + (high - low) / 3, high - (high - low) / 3
        if log_abs_gamma(a) < log_abs_gamma(b):
            high = b
        else:
            low = a
    return (low + high) / 2


def growth(zero, reach):
    """(ln Gamma(1 + zero + d) - ln Gamma(1 + zero)) / d in powers of d, |d| <= reach."""
    nodes = 40
    angles = [pi * (k + mpf(1) / 2) / nodes for k in range(nodes)]
    base = loggamma(1 + zero)
    values = [(loggamma(1 + zero + reach * cos(a)) - base) / (reach * cos(a)) for a in angles]
    series = [mpf(2) / nodes * sum(v * cos(j * a) for v, a in zip(values, angles)) for j in range(TERMS)]
    return [c / reach**k for k, c in enumerate(powers(series))]


def number(v):
    return nstr(v, 20, min_fixed=1, max_fixed=0)


def row(y, reach):
    at = mpf(float(y))
    print(f"    {{{number(-at)},  {number(at - y)}, {number(cot(pi * y))},")
    print("     {" + ",\n      ".join(number(c) for c in growth(y, reach)) + "}},")


def main():
    print("""// special/log_gamma_zeros.h - zeros of ln |Gamma(x)|, x < 0; printed by tools/log_gamma_zeros.py
// clang-format off
#pragma once

#include <array>

namespace orvel::special {

// A zero at + rest, the cotangent of pi times its distance y from 0, and the coefficients of
// (ln Gamma(1 + y + d) - ln Gamma(1 + y)) / d in powers of d, for all d on whose way |ln |Gamma|| <= 1.
struct LogGammaZero {
    double at, rest, cotangent;
    std::array<double, %d> growth;
};

// Two zeros for each interval from (-3, -2) on.
inline constexpr LogGammaZero log_gamma_zeros[] = {""" % TERMS)
    for n in range(2, LARGEST + 1):
        lowest = lowest_point(n)
        smallest = mpf(10) ** -40
        for far in n + smallest, n + 1 - smallest:
            zero = bisect(log_abs_gamma, lowest, far)
            edge = bisect(lambda y: log_abs_gamma(y) - 1, lowest, far)
            inner = lowest
            if log_abs_gamma(lowest) < -1:
                inner = bisect(lambda y: log_abs_gamma(y) + 1, lowest, far)
            row(zero, max(abs(edge - zero), abs(inner - zero)) * mpf(1.01))
    print("""};

}  // namespace orvel::special""")


main()
