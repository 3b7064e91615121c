#!/usr/bin/env python3
# tools/gamma_tables.py - print special/gamma_tables.h from the definitions of its series
#
#   /usr/bin/python3 tools/gamma_tables.py > special/gamma_tables.h
#
# Every number is computed with 60 digits and rounded once. A test runs this program again and
# compares its output with the file that is checked in.
from mpmath import mp, mpf, cos, gamma, log, loggamma, nstr, pi, sin, sqrt

from chebyshev import chebyshev, powers

mp.dps = 60


def gamma_minus_constant(u):
    return gamma(1 + (1 + u) / 2) - mpf(15) / 16


def gamma_deviation(u):
    t = (1 + u) / 2
    return (gamma(1 + t) - 1) / (t * (t - 1))


def log_gamma_deviation(u):
    t = (1 + u) / 2
    return loggamma(1 + t) / (t * (t - 1))


def stirling_correction(w):
    x = 10 / sqrt((1 + w) / 2)
    return x * (loggamma(x) - ((x - mpf(1) / 2) * log(x) - x + log(2 * pi) / 2))


def sine_quotient(w):
    d = sqrt((1 + w) / 8)
    return sin(pi * d) / d


def table(name, values, comment):
    print(f"// {comment}")
    print(f"inline constexpr std::array<double, {len(values)}> {name} = {{")
    for v in values:
        print(f"    {nstr(v, 20, min_fixed=1, max_fixed=0)},")
    print("};\n")


print("""// special/gamma_tables.h - series of the gamma family; printed by tools/gamma_tables.py
// clang-format off
#pragma once

#include <array>

namespace orvel::special {
""")
table("gamma_series", chebyshev(gamma_minus_constant, 42),
      "Gamma(1 + t) - 0.9375 in Chebyshev polynomials of u = 2t - 1, 0 <= t <= 1.")
table("stirling_series", chebyshev(stirling_correction, 15),
      "x (ln Gamma(x) - Stirling part) in Chebyshev polynomials of 2 (10/x)^2 - 1, x >= 10.")
for suffix, terms in ("", 22), ("_single", 12):
    table("gamma_deviation" + suffix, powers(chebyshev(gamma_deviation, terms)),
          "(Gamma(1 + t) - 1) / (t (t - 1)) in powers of u = 2t - 1, 0 <= t <= 1.")
    table("log_gamma_deviation" + suffix, powers(chebyshev(log_gamma_deviation, terms)),
          "ln Gamma(1 + t) / (t (t - 1)) in powers of u = 2t - 1, 0 <= t <= 1.")
for suffix, terms in ("", 10), ("_single", 6):
    table("sine_of_pi" + suffix, powers(chebyshev(sine_quotient, terms)),
          "sin(pi d) / d in powers of 8 d^2 - 1, |d| <= 1/2.")
print("}  // namespace orvel::special")
