"""Sums, dot products, norms and accumulators against exact sums."""
import ctypes
import math
import random
from fractions import Fraction

from mpmath import mp, mpf

from exact import long_sum, product, products
from library import array
from tables import Column, Errors, Table

TITLE = "Sums"
NOTES = (
    "Long `DSUM` and `DXYZ`: numpy adds by halves; here eight vectors of sums run side by side, and each is a chain "
    "whose error grows with its length.",
    "`DNRM2` and `SNRM2`: OpenBLAS squares and adds in longer arithmetic than that of the result.",
    "`DSDOT` the other way: OpenBLAS adds longer vectors in single precision.",
)
LENGTHS = {10: 300, 1000: 40, 100_000: 3}  # and how many vectors of each
REPEATED = 10
WIDE = ("uniform", "of many magnitudes")


def vector(rng, kind, n, spread):
    if spread == "uniform":
        return [kind(rng.uniform(-1, 1)).value for _ in range(n)]
    return [kind(rng.choice((-1, 1)) * math.exp(rng.uniform(-20, 20))).value for _ in range(n)]


class Sum:
    """A routine: the terms of its sum without an error, as a function of its vectors; a root is taken of norms."""

    def __init__(self, name, vectors, terms, peer, root=False, result=None, start=False):
        self.name, self.vectors, self.terms, self.peer, self.root, self.start = name, vectors, terms, peer, root, start
        self.kind = ctypes.c_double if name[0] == "D" and name != "DSDOT" else ctypes.c_float
        self.result = result or self.kind
        self.eps = 2.0**-52 if self.result is ctypes.c_double else 2.0**-23

    def value(self, library, x):
        n, one = len(x[0]), 1
        arguments = [part for v in x for part in (array(self.kind, v), one)]
        start = [ctypes.c_float(0.0)] if self.start else []
        return library.call(self.name, n, *start, *arguments, returns=self.result)

    def error(self, value, terms):
        """In units of eps times the sum of the magnitudes of the terms, or of eps times the norm."""
        if self.root:
            norm = mp.sqrt(long_sum(terms))
            return float(abs(mpf(value) - norm) / norm) / self.eps
        return abs(math.fsum([*terms, -value])) / (self.eps * math.fsum(map(abs, terms)))


def triple(x, y, z):
    """The terms of a sum of products of three, each product being two terms that are exact."""
    return [part for a, b, c in zip(x, y, z) for half in product(a, b) for part in product(half, c)]


SUMS = (
    Sum("DSUM", 1, lambda x: x, "numpy sum"), Sum("DASUM", 1, lambda x: list(map(abs, x)), "OpenBLAS"),
    Sum("DNRM2", 1, lambda x: products(x, x), "OpenBLAS", root=True), Sum("DDOT", 2, products, "OpenBLAS"),
    Sum("DXYZ", 3, triple, "numpy sum"),
    Sum("SSUM", 1, lambda x: x, "numpy sum"), Sum("SASUM", 1, lambda x: list(map(abs, x)), "OpenBLAS"),
    Sum("SNRM2", 1, lambda x: products(x, x), "OpenBLAS", root=True), Sum("SDOT", 2, products, "OpenBLAS"),
    Sum("SXYZ", 3, triple, "numpy sum"),
    Sum("DSDOT", 2, products, "OpenBLAS", result=ctypes.c_double),
    Sum("SDSDOT", 2, products, "OpenBLAS", start=True),
)


def measure(library, peers, routine, n, count):
    ours, theirs = Errors(), Errors()
    for seed in range(count):
        rng = random.Random(f"{routine.vectors} {n} {seed}")
        x = [vector(rng, routine.kind, n, WIDE[seed % 2]) for _ in range(routine.vectors)]
        terms = routine.terms(*x)
        ours.add(routine.error(routine.value(library, x), terms))
        if peers:
            theirs.add(routine.error(peers.sum(routine, x), terms))
    return ours, theirs


def rows(library, peers):
    for routine in SUMS:
        for n, count in LENGTHS.items():
            if peers or n <= 1000:
                ours, theirs = measure(library, peers, routine, n, count if peers else min(count, REPEATED))
                their = (theirs.worst, theirs.rms, routine.peer) if theirs.count else (None, None, "-")
                yield f"`{routine.name}`", f"{n}", ours.worst, ours.rms, *their


def accumulated(library, n, seed):
    """The error of a dot product of hardly any value in units of its magnitudes 2^-106, and of what is stored in ulps."""
    rng = random.Random(f"accumulator {n} {seed}")
    x, y = vector(rng, ctypes.c_double, n, WIDE[seed % 2]), vector(rng, ctypes.c_double, n, "uniform")
    x += [-v * (1 + 2.0**-40 * rng.random()) for v in x]  # cancels to about 12 digits less
    y += y
    acc, stored = array(ctypes.c_double, [0.0, 0.0]), ctypes.c_double()
    library.call("DQINI", 0.0, acc)
    for a, b in zip(x, y):
        library.call("DQMUL", a, b, acc)
    library.call("DQSTO", acc, stored)
    exact = sum(Fraction(a) * Fraction(b) for a, b in zip(x, y))
    size = sum(abs(Fraction(a) * Fraction(b)) for a, b in zip(x, y))
    kept = abs(Fraction(acc[0]) + Fraction(acc[1]) - exact) / (size * Fraction(2)**-106)
    return float(kept), float(abs(Fraction(stored.value) - exact) / Fraction(math.ulp(float(exact))))


def accumulator_rows(library, peers):
    for n in (10, 1000):
        kept, stored = Errors(), Errors()
        for seed in range(20 if peers or n == 10 else 2):
            k, s = accumulated(library, n, seed)
            kept.add(k)
            stored.add(s)
        yield f"{2 * n}", kept.worst, kept.rms, stored.worst, stored.rms


def tables(library, peers):
    # A level of wider vectors has more partial sums and rounds less; few vectors scatter.
    columns = [Column("largest", factor=1.5, more=0.05), Column("RMS", factor=2.0, more=0.05), Column("peer's largest"),
               Column("RMS"), Column("which")]
    accumulators = [Column("kept, largest", ".4f", 1.2, 0.001), Column("RMS", ".4f"),
                    Column("stored, largest", factor=1.0, more=0.01), Column("RMS")]
    return [Table("Sums and dot products",
                  "The error of the result in units of *eps* times the sum of the magnitudes of the terms, of norms "
                  "*eps* times the norm; *eps* is that of the result. Half of the vectors are uniform, half of "
                  "magnitudes over 17 decades, all of both signs; exact are sums without rounding. The peer is of the "
                  "same precision.", ["routine", "N"], columns, lambda: rows(library, peers)),
            Table("Accumulators",
                  "Dot products of which 12 digits cancel, by `DQINI`, `DQMUL` and `DQSTO`: the error of head and "
                  "tail in units of 2^-106 times the sum of magnitudes, and that of the stored number in units in its "
                  "last place, where half a unit is correct rounding.", ["terms"], accumulators,
                  lambda: accumulator_rows(library, peers))]
