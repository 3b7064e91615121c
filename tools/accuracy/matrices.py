"""Matrices, how the routines for each kind of them are called, and what exactly their results should be."""
import ctypes
import math
import random

from mpmath import mp

from exact import inverse, product
from library import array, complex_numbers, interleaved

CONDITION = 1e10  # about that of ill-conditioned matrices
BAND = 3  # diagonals on each side


# ---- matrices as lists of rows ---------------------------------------------------------------------------


def number(rng, is_complex):
    return complex(rng.uniform(-1, 1), rng.uniform(-1, 1)) if is_complex else rng.uniform(-1, 1)


def reflected(a, v):
    """(1 - 2 v v^H / v^H v) A"""
    norm = sum(abs(z) ** 2 for z in v)
    shares = [2 * sum(z.conjugate() * row[j] for z, row in zip(v, a)) / norm for j in range(len(a[0]))]
    return [[x - z * s for x, s in zip(row, shares)] for z, row in zip(v, a)]


def adjoint(a):
    return [[a[i][j].conjugate() for i in range(len(a))] for j in range(len(a[0]))]


def general(rng, n, ill, is_complex):
    if not ill:
        return [[number(rng, is_complex) for _ in range(n)] for _ in range(n)]
    a = [[CONDITION ** (-i / (n - 1)) if i == j else 0.0 for j in range(n)] for i in range(n)]
    for _ in range(4):
        a = adjoint(reflected(a, [number(rng, is_complex) for _ in range(n)]))
    return a


def definite(rng, n, ill, is_complex):
    a = [[(CONDITION ** (-i / (n - 1)) if ill else rng.uniform(1, 2)) if i == j else 0.0 for j in range(n)] for i in range(n)]
    for _ in range(2):
        v = [number(rng, is_complex) for _ in range(n)]
        a = adjoint(reflected(adjoint(reflected(a, v)), v))
    return [[a[i][j] if i < j else a[i][i].real if i == j else a[j][i].conjugate() for j in range(n)] for i in range(n)]


def band(rng, n, ill, is_complex):
    def element(i, j):
        if abs(i - j) > BAND:
            return 0.0
        return number(rng, is_complex) * (10.0 ** (-10 * i / n) if ill else 1.0)
    return [[element(i, j) for j in range(n)] for i in range(n)]


def definite_band(rng, n, ill, is_complex):
    """The square of a narrow band; its rows of different size are the ill condition."""
    width = BAND // 2
    r = [[(number(rng, is_complex) / 4 * (0 < j - i <= width) + (i == j)) * (10.0 ** (-5 * i / n) if ill else 1.0)
          for j in range(n)] for i in range(n)]
    a = [[sum((r[k][i].conjugate() * r[k][j] for k in range(min(i, j) + 1)), 0.0) for j in range(n)] for i in range(n)]
    return [[a[i][j] if i < j else a[i][i].real if i == j else a[j][i].conjugate() for j in range(n)] for i in range(n)]


def triangular(rng, n, ill, is_complex):
    size = 1.0 if ill else 1.0 / math.sqrt(n)
    return [[rng.uniform(0.5, 1.0) if i == j else size * number(rng, is_complex) if i < j else 0.0 for j in range(n)]
            for i in range(n)]


# ---- kinds -----------------------------------------------------------------------------------------------


class Kind:
    """A kind of matrix: its letters in the names of routines, whether it is complex, how it is made and passed."""

    def __init__(self, name, letters, made, single=False, widths=()):
        self.name, self.letters, self.made, self.widths = name, letters, made, widths
        self.prefix = "" if single else "D"
        self.real = ctypes.c_float if single else ctypes.c_double
        self.eps = 2.0**-23 if single else 2.0**-52
        self.is_complex = letters[0] == "C" or letters[1] == "H"
        self.has_pivots = letters[0] in "RC" and letters[1] != "T"
        self.is_triangle = letters[1] == "T"
        self.solvers = [f"{self.prefix}LSL{letters}"] + ([] if self.is_triangle else [f"{self.prefix}LSA{letters}"])
        has_inverse = not widths and letters != "DH"
        self.inverter = f"{self.prefix}LIN{letters}" if has_inverse else None

    def rounded(self, a):
        return [[self.real(v).value for v in row] for row in a] if self.real is ctypes.c_float else a

    def matrix(self, seed, n, ill):
        rng = random.Random(f"{self.name} {n} {ill} {seed}")
        a = self.rounded(self.made(rng, n, ill, self.is_complex))
        return a, self.rounded([[number(rng, self.is_complex) for _ in range(n)]])[0]

    def numbers(self, values):
        return interleaved(self.real, [complex(v) for v in values]) if self.is_complex else array(self.real, values)

    def room(self, count):
        return (self.real * (count * (2 if self.is_complex else 1)))()

    def read(self, values):
        return complex_numbers(values) if self.is_complex else list(values)

    def stored(self, a):
        """By columns, bands in rows of their own, and the leading dimension."""
        n = len(a)
        if not self.widths:
            return self.numbers([a[i][j] for j in range(n) for i in range(n)]), n
        below, above = (self.widths[0], self.widths[-1]) if len(self.widths) == 2 else (0, self.widths[0])
        cells = [a[i][j] if 0 <= i < n else 0.0 for j in range(n) for i in range(j - above, j + below + 1)]
        return self.numbers(cells), below + above + 1

    def solve(self, library, routine, a, b):
        n, (cells, lda), x = len(b), self.stored(a), self.room(len(b))
        path = [2] if self.is_triangle else [1] if self.has_pivots else []
        library.call(routine, n, cells, lda, *self.widths, self.numbers(b), *path, x)
        return self.read(x)

    def condition(self, library, a):
        """RCOND, and the determinant as mantissa and exponent of 10."""
        n, (cells, lda), rcond = len(a), self.stored(a), self.real()
        name, det, exponent = self.prefix + "LFC" + self.letters, self.room(1), self.real()
        det_name = self.prefix + "LFD" + self.letters
        if self.is_triangle:
            library.call(name, n, cells, lda, 2, rcond)
            library.call(det_name, n, cells, lda, det, exponent)
        else:
            ldfac = lda + (self.widths[0] if len(self.widths) == 2 else 0)
            fact, pivots = self.room(ldfac * n), [(ctypes.c_int32 * n)()] if self.has_pivots else []
            library.call(name, n, cells, lda, *self.widths, fact, ldfac, *pivots, rcond)
            library.call(det_name, n, fact, ldfac, *self.widths, *pivots, det, exponent)
        mantissa = complex(det[0], det[1]) if self.is_complex and self.has_pivots else det[0]
        return rcond.value, mp.mpmathify(mantissa) * mp.mpf(10) ** int(exponent.value)

    def inverse(self, library, a):
        """By rows. Of a triangle the other one is zero."""
        n, (cells, lda), out = len(a), self.stored(a), self.room(len(a)**2)
        library.call(self.inverter, n, cells, lda, *([2] if self.is_triangle else []), out, n)
        x = self.read(out)
        return [[x[i + j * n] for j in range(n)] for i in range(n)]


KINDS = (Kind("general", "RG", general), Kind("general", "CG", general), Kind("general", "RG", general, single=True),
         Kind("triangular", "RT", triangular), Kind("definite", "DS", definite), Kind("definite", "DH", definite),
         Kind("band", "RB", band, widths=(BAND, BAND)), Kind("band", "CB", band, widths=(BAND, BAND)),
         Kind("definite band", "QS", definite_band, widths=(BAND // 2,)),
         Kind("definite band", "QH", definite_band, widths=(BAND // 2,)))


# ---- errors ----------------------------------------------------------------------------------------------


def exact_terms(a, x):
    """Real and imaginary terms of the sum of a_j x_j."""
    if not any(isinstance(z, complex) for z in (a[0], x[0], a[-1])):
        return [part for p, q in zip(a, x) if p for part in product(p, q)], []
    re, im = [], []
    for p, q in zip(a, x):
        if p:
            p, q = complex(p), complex(q)
            re += [*product(p.real, q.real), *product(-p.imag, q.imag)]
            im += [*product(p.real, q.imag), *product(p.imag, q.real)]
    return re, im


def residual(a, x, b):
    """|a x - b| of one row, rounded once."""
    re, im = exact_terms(a, x)
    b = complex(b)
    return math.hypot(math.fsum([*re, -b.real]), math.fsum([*im, -b.imag]))


def backward_error(a, x, b, eps):
    """The largest |A x - b| / (|A| |x| + |b|) of an element."""
    return max(residual(row, x, v) / (sum(abs(p) * abs(q) for p, q in zip(row, x)) + abs(v)) for row, v in zip(a, b)) / eps


def norm(a):
    """The largest sum of magnitudes of a column."""
    return max(sum(abs(row[j]) for row in a) for j in range(len(a)))


def inverse_error(a, x, eps):
    """|X A - 1| / (|A| |X|) in the norm of column sums."""
    columns = list(zip(*a))
    wrong = [sum(residual(row, column, float(i == j)) for i, row in enumerate(x)) for j, column in enumerate(columns)]
    return max(wrong) / (norm(a) * norm(x)) / eps


class Exact:
    """Inverse, determinant, condition number and solution in long arithmetic."""

    def __init__(self, a, b):
        self.inverse, self.determinant = inverse([[mp.mpmathify(v) for v in row] for row in a])
        self.solution = [mp.fsum(p * q for p, q in zip(row, b)) for row in self.inverse]
        self.condition = float(norm(a) * norm(self.inverse))

    def forward_error(self, x):
        largest = max(map(abs, self.solution))
        return float(max(abs(p - q) for p, q in zip(x, self.solution)) / largest) / self.condition

    def determinant_error(self, det):
        return float(abs(det / self.determinant - 1)) / self.condition
