"""Sums and products without an error, and systems in long arithmetic."""
import math

from mpmath import mp, mpf


def product(a, b):
    """a*b as a sum of two doubles (Dekker)."""
    high = a * b
    a1, b1 = a * 134217729.0, b * 134217729.0
    a_high, b_high = a1 - (a1 - a), b1 - (b1 - b)
    a_low, b_low = a - a_high, b - b_high
    return high, ((a_high * b_high - high) + a_high * b_low + a_low * b_high) + a_low * b_low


def products(x, y):
    """The terms of an exact dot product."""
    return [part for a, b in zip(x, y) for part in product(a, b)]


def long_sum(terms):
    """A sum as a long number, exact to twice the precision of doubles."""
    high = math.fsum(terms)
    return mpf(high) + mpf(math.fsum([*terms, -high]))


def inverse(rows):
    """The inverse of a matrix of long numbers by elimination with pivots, and its determinant."""
    n = len(rows)
    work = [list(row) + [mp.mpf(i == j) for j in range(n)] for i, row in enumerate(rows)]
    determinant = mp.mpf(1)
    for k in range(n):
        p = max(range(k, n), key=lambda i: abs(work[i][k]))
        if p != k:
            work[k], work[p] = work[p], work[k]
            determinant = -determinant
        pivot = work[k][k]
        determinant *= pivot
        row = work[k] = [0] * k + [v / pivot for v in work[k][k:]]
        for i in range(n):
            factor = work[i][k]
            if i != k and factor:
                mine = work[i]
                work[i] = mine[:k + 1] + [a - factor * b if b else a for a, b in zip(mine[k + 1:], row[k + 1:])]
                work[i][k] = mp.mpf(0)
    return [row[n:] for row in work], determinant
