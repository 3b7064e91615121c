#!/usr/bin/env python3
# tools/kronrod_tables.py - print quad/kronrod_tables.h from the definition of the Gauss-Kronrod rules
#
#   /usr/bin/python3 tools/kronrod_tables.py > quad/kronrod_tables.h
#
# The n Gauss nodes are the zeros of the Legendre polynomial P_n. The n + 1 nodes that Kronrod added are the zeros
# of the polynomial E of degree n + 1 for which P_n E is orthogonal to all polynomials of degree n or less. Weights
# are the integrals of the fundamental polynomials. Everything is computed with 60 digits and rounded once. A test
# runs this program again and compares its output with the file that is checked in.
from fractions import Fraction
from math import comb

from mpmath import cos, mp, mpf, nstr, pi

mp.dps = 60


def legendre(n, x):
    """P_0(x), ..., P_n(x)."""
    p = [mpf(1), x]
    for k in range(1, n):
        p.append(((2 * k + 1) * x * p[k] - k * p[k - 1]) / (k + 1))
    return p


def gauss(n):
    """Zeros of P_n, descending, and their weights."""
    nodes, weights = [], []
    for k in range(n):
        x = cos(pi * (4 * k + 3) / (4 * n + 2))
        for _ in range(7):  # Newton's method doubles 3 digits to 60 in five steps
            p = legendre(n, x)
            slope = n * (p[n - 1] - x * p[n]) / (1 - x * x)
            x -= p[n] / slope
        nodes.append(x if 2 * k + 1 != n else mpf(0))
        weights.append(2 / ((1 - x * x) * slope ** 2))
    return nodes, weights


def triple_product(a, b, c):
    """Integral of P_a P_b P_c over [-1, 1]: J. C. Adams, On the expression of the product of any two Legendre's
    coefficients, 1878."""
    s, odd = divmod(a + b + c, 2)
    if odd or max(a, b, c) > s:
        return Fraction(0)
    central = [comb(2 * k, k) for k in (s - a, s - b, s - c, s)]
    return Fraction(2 * central[0] * central[1] * central[2], central[3] * (2 * s + 1))


def kronrod_polynomial(n):
    """Coefficients of E in P_(n+1), P_(n-1), ...: orthogonality to P_1, P_3, ... gives one after the other."""
    c = [Fraction(1)]
    for i in range(1, n + 1, 2):
        known = sum(c[m] * triple_product(n, n + 1 - 2 * m, i) for m in range(len(c)))
        c.append(-known / triple_product(n, n - i, i))
    return [mpf(f.numerator) / f.denominator for f in c]


def zero_between(f, low, high):
    """Secants after a bisection has come close."""
    rising = f(high) > 0
    for _ in range(12):
        middle = (low + high) / 2
        low, high = (low, middle) if (f(middle) > 0) == rising else (middle, high)
    x, y, fx, fy = low, high, f(low), f(high)
    while abs(y - x) > mpf(10) ** -50:
        x, y, fx = y, y - fy * (y - x) / (fy - fx), fy
        fy = f(y)
    return y


def kronrod(n):
    """The nodes of the rule with 2n + 1 points that are not negative, descending, and their weights."""
    c = kronrod_polynomial(n)
    own, _ = gauss(n)
    ends = [mpf(1)] + own + [mpf(-1)]

    def value(x):
        p = legendre(n + 1, x)
        return sum(c[m] * p[n + 1 - 2 * m] for m in range(len(c)))

    added = [zero_between(value, ends[k + 1], ends[k]) for k in range((n + 1) // 2)]
    if n % 2 == 0:
        added.append(mpf(0))
    nodes = sorted(added + own[:(n + 1) // 2], reverse=True)
    every = nodes + [-x for x in nodes[:-1]]
    at, of = gauss(n + 1)  # exact for the fundamental polynomials
    weights = []
    for x in nodes:
        weight = mpf(0)
        for t, w in zip(at, of):
            for other in every:
                if other != x:
                    w *= (t - other) / (x - other)
            weight += w
        weights.append(weight)
    return nodes, weights


def column(name, values):
    print(f"    static constexpr double {name}[{len(values)}] = {{")
    for v in values:
        print(f"        {nstr(v, 25, min_fixed=1, max_fixed=0) if v else '0.0'},")
    print("    };")


print("""// quad/kronrod_tables.h - nodes and weights of the Gauss-Kronrod rules; printed by tools/kronrod_tables.py
// clang-format off
#pragma once

namespace orvel::quad {

// The nodes of the rule of 2n + 1 points on [-1, 1] that are not negative, from the outermost to the midpoint.
// Those with odd index are the nodes of the n-point Gauss rule.
template <int GaussPoints>
struct KronrodTable;
""")
for n in 7, 10, 15, 20, 25, 30:
    x, w = kronrod(n)
    print("template <>")
    print(f"struct KronrodTable<{n}> {{")
    column("nodes", x)
    column("weights", w)
    column("gauss_weights", gauss(n)[1][:(n + 1) // 2])
    print("};\n")
print("}  // namespace orvel::quad")
