"""tools/chebyshev.py - Chebyshev series for the programs that print tables"""
from mpmath import mpf, cos, pi


def chebyshev(f, terms, nodes=160):
    """First coefficients of f on [-1, 1]; the leading one enters the sum with half weight."""
    angles = [pi * (k + mpf(1) / 2) / nodes for k in range(nodes)]
    values = [f(cos(a)) for a in angles]
    return [mpf(2) / nodes * sum(v * cos(j * a) for v, a in zip(values, angles))
            for j in range(terms)]


def powers(series):
    """The same sum, rearranged in powers of its variable."""
    older, newer = [mpf(1)], [mpf(0), mpf(1)]
    result = [mpf(0)] * len(series)
    for j, c in enumerate(series):
        for k, p in enumerate(older):
            result[k] += p * c / (2 if j == 0 else 1)
        following = [mpf(0)] + [2 * p for p in newer]
        for k, p in enumerate(older):
            following[k] -= p
        older, newer = newer, following
    return result
