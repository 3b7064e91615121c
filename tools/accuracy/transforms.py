"""Fourier transforms of random sequences against transforms in longer arithmetic."""
import ctypes
import math
import random

from mpmath import mp, mpf

from library import array, complex_numbers, interleaved
from tables import Column, Errors, Table

TITLE = "Transforms"
NOTES = ()
POWERS = (8, 32, 128, 512, 2048, 8192, 32768, 131072)
PRODUCTS = (12, 60, 210, 1000, 5040, 18000, 100000)
PRIMES = (7, 31, 127, 257, 1009, 10007, 65537)
LENGTHS = sorted(POWERS + PRODUCTS + PRIMES)
REPEATED = 260  # the longest transform that is repeated
BITS = 100  # behind the point of the numbers that the exact transforms compute with


# ---- the same in integers --------------------------------------------------------------------------------


def roots(n):
    """exp(-2 pi i k / n), scaled."""
    with mp.workprec(BITS + 20):
        angles = [2 * mpf(k) / n for k in range(n)]
        return [int(mp.nint(mpf(2)**BITS * mp.cospi(a))) for a in angles], [int(mp.nint(-mpf(2)**BITS * mp.sinpi(a)))
                                                                          for a in angles]


def exact_parts(x, cosines, sines, stride, sign):
    """The transform of pairs of integers by its definition, for the prime factors of the length one after the other."""
    n = len(x)
    if n == 1:
        return x
    p = next((f for f in range(2, math.isqrt(n) + 1) if n % f == 0), n)
    parts = [exact_parts(x[j::p], cosines, sines, stride * p, sign) for j in range(p)]
    full, m, half = n * stride, n // p, 1 << (BITS - 1)
    result = []
    for k in range(n):
        re = im = 0
        for j in range(p):
            at = j * k * stride % full
            c, s = cosines[at], sign * sines[at]
            a, b = parts[j][k % m]
            re += a * c - b * s
            im += a * s + b * c
        result.append(((re + half) >> BITS, (im + half) >> BITS))
    return result


def exact_transform(x, sign):
    """Coefficients of complex numbers as pairs of a double and what it lacks; SIGN is 1 forward and -1 backward."""
    scaled = [(int(math.ldexp(z.real, BITS)), int(math.ldexp(z.imag, BITS))) for z in x]
    pairs = exact_parts(scaled, *roots(len(x)), 1, sign)

    def split(value):
        high = value / 2**BITS
        return high, (value - int(math.ldexp(high, BITS))) / 2**BITS
    return [(split(a), split(b)) for a, b in pairs]


# ---- what is measured ------------------------------------------------------------------------------------


def long_transform(peers):
    """The same by long doubles, which is fast."""
    def transform(x, sign):
        wide = peers.long_transform(x, sign)
        return [((float(z.real), float(z.real - float(z.real))), (float(z.imag), float(z.imag - float(z.imag))))
                for z in wide]
    return transform


def relative_error(result, exact):
    """In the norm of the sums of squares."""
    wrong = [part for z, (re, im) in zip(result, exact) for part in ((z.real - re[0]) - re[1], (z.imag - im[0]) - im[1])]
    norm = math.fsum(part[0]**2 for z in exact for part in z)
    return math.sqrt(math.fsum(d * d for d in wrong) / norm)


def unpacked(coefficients):
    """The complex coefficients 0 to N/2 of a real sequence."""
    c, n = coefficients, len(coefficients)
    result = [complex(c[0])] + [complex(c[2 * k - 1], c[2 * k]) for k in range(1, (n + 1) // 2)]
    return result + [complex(c[-1])] if n % 2 == 0 else result


def packed(half, n):
    """Real coefficients of the complex ones 0 to N/2, as the routines store them."""
    flat = [half[0].real] + [part for z in half[1:] for part in (z.real, z.imag)]
    return flat[:n]


class Case:
    """A random sequence of one length and precision, and what a transform of it should be."""

    def __init__(self, routine, n, seed, exact):
        self.real, self.backward = routine[-2:][0] == "R", routine[-1] == "B"
        self.kind = ctypes.c_double if routine[0] == "D" else ctypes.c_float
        rng = random.Random(f"{routine[-2:]} {n} {seed}")

        def number():
            return self.kind(rng.uniform(-1, 1)).value
        if not self.real:
            self.x = [complex(number(), number()) for _ in range(n)]
            self.exact = exact(self.x, -1 if self.backward else 1)
        elif not self.backward:
            self.x = [number() for _ in range(n)]
            self.exact = exact([complex(v) for v in self.x], 1)[:n // 2 + 1]
        else:
            self.x = [number() for _ in range(n)]
            half = unpacked(self.x)
            other = [z.conjugate() for z in half[1:(n + 1) // 2]][::-1]
            self.exact = exact(half + other, -1)

    def of_library(self, library, routine):
        n = len(self.x)
        given = array(self.kind, self.x) if self.real else interleaved(self.kind, self.x)
        out = (self.kind * len(given))()
        library.call(routine, n, given, out)
        if not self.real:
            return complex_numbers(out)
        return [complex(v) for v in out] if self.backward else unpacked(out)


def measure(library, peers, routine, n, count):
    """Errors of us and of others, in units of eps."""
    exact = long_transform(peers) if peers and n > REPEATED else exact_transform
    errors = {who: Errors() for who in ("ours", "pocketfft", "FFTW")}
    eps = 2.0**-52 if routine[0] == "D" else 2.0**-23
    for seed in range(count):
        case = Case(routine, n, seed, exact)
        results = {"ours": case.of_library(library, routine)}
        if peers:
            results |= peers.transforms(case)
        for who, result in results.items():
            errors[who].add(relative_error(result, case.exact) / eps, n)
    return errors


def sequences(n):
    return 20 if n < 100 else 5 if n < 3000 else 2


def by_length(library, peers, routine):
    def rows():
        for n in LENGTHS:
            if peers or n <= REPEATED:
                errors = measure(library, peers, routine, n, sequences(n))
                ours = errors["ours"]
                yield (f"{n}", ours.worst, ours.rms) + tuple(
                    errors[who].rms if errors[who].count else None for who in ("pocketfft", "FFTW"))
    # A level without contracted products rounds more, which counts for a half in the worst short transforms.
    columns = [Column("largest", factor=1.5, more=0.05), Column("RMS", factor=1.3, more=0.03), Column("pocketfft, RMS"),
               Column("FFTW, RMS")]
    return Table(f"`{routine}` by length", "", ["N"], columns, rows)


CLASSES = {"powers of two": POWERS, "products of 2, 3, 5, 7": PRODUCTS, "primes": PRIMES}


def by_class(library, peers):
    def rows():
        for routine in ("DFFTCF", "DFFTCB", "DFFTRF", "DFFTRB", "FFTCF", "FFTCB", "FFTRF", "FFTRB"):
            for name, lengths in CLASSES.items():
                shortest = [n for n in lengths if n <= REPEATED]
                relative = {who: Errors() for who in ("ours", "pocketfft", "FFTW")}
                for n in lengths if peers else shortest[-1:]:
                    for who, e in measure(library, peers, routine, n, sequences(n) if n < 1000 else 1).items():
                        if e.count:
                            relative[who].add(e.rms / math.sqrt(math.log2(n)), n)
                yield (f"`{routine}`", name, relative["ours"].worst, relative["ours"].rms) + tuple(
                    part for who in ("pocketfft", "FFTW") for part in
                    ((relative[who].worst, relative[who].rms) if relative[who].count else (None, None)))
    # Here the repeat has one length of the class; its error is at most the largest of all.
    columns = [Column("largest", factor=1.3), Column("RMS"), Column("pocketfft, largest"), Column("RMS"),
               Column("FFTW, largest"), Column("RMS")]
    return Table("Transforms by kind of length", "Root mean square errors of the lengths of each kind, in units of "
                 "*eps* sqrt(log2 N): the largest of them and their RMS.", ["routine", "lengths"], columns, rows)


def tables(library, peers):
    first = by_length(library, peers, "DFFTCF")
    first.about = (f"The relative error of the whole transform, |computed - exact| / |exact| in the Euclidean norm, in units "
                   "of *eps*, of 2 to 20 sequences of uniform random numbers, the largest and the RMS. Exact are sums "
                   f"in integers of {BITS} bits, beyond N = {REPEATED} transforms in long doubles. Complex forward:")
    second = by_length(library, peers, "DFFTRF")
    second.about = "Real forward:"
    return [first, second, by_class(library, peers)]
