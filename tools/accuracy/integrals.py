"""Two hundred integrals of known value, by families."""
import math
import random

from mpmath import mp, mpf


class Integral:
    """A function, its interval, and the value of the integral in long arithmetic."""

    def __init__(self, f, low, high, value):
        self.function, self.low, self.high, self.value = f, low, high, value

    def f(self, x):
        """At a singularity infinite, as functions of C are."""
        try:
            return self.function(x)
        except (ZeroDivisionError, ValueError):
            return math.inf


def smooth(rng):
    for k in range(15):
        b = rng.uniform(0.5, 4)
        yield Integral(lambda x, k=k: x**k, 0.0, b, mpf(b)**(k + 1) / (k + 1))
    for _ in range(8):
        c = rng.uniform(-5, 5)
        yield Integral(lambda x, c=c: math.exp(c * x), 0.0, 1.0, mp.expm1(c) / c)
    for _ in range(7):
        c = rng.uniform(0.01, 2)
        yield Integral(lambda x, c=c: 1 / (c + x), 0.0, 1.0, mp.log((mpf(c) + 1) / c))


def oscillating(rng):
    for _ in range(15):
        w = math.exp(rng.uniform(0, 7))
        yield Integral(lambda x, w=w: math.cos(w * x), 0.0, 1.0, mp.sin(w) / w)
    for _ in range(15):
        w = math.exp(rng.uniform(0, 6))
        long = mpf(w)
        value = (long - mp.exp(-3) * (mp.sin(3 * long) + long * mp.cos(3 * long))) / (1 + long**2)
        yield Integral(lambda x, w=w: math.exp(-x) * math.sin(w * x), 0.0, 3.0, value)


def singular_ends(rng):
    for _ in range(20):
        a = rng.uniform(-0.95, 2.5)
        yield Integral(lambda x, a=a: x**a, 0.0, 1.0, 1 / (1 + mpf(a)))
    for _ in range(10):
        a = rng.uniform(-0.9, 1)
        yield Integral(lambda x, a=a: x**a * math.log(x), 0.0, 1.0, -1 / (1 + mpf(a))**2)
    for _ in range(5):
        p = rng.uniform(0.3, 4)
        yield Integral(lambda x, p=p: (-math.log(x))**p, 0.0, 1.0, mp.gamma(1 + mpf(p)))
    for _ in range(5):
        a, b = rng.uniform(-0.9, 1), rng.uniform(-0.5, 1)
        yield Integral(lambda x, a=a, b=b: x**a * (1 - x)**b, 0.0, 1.0, mp.beta(1 + mpf(a), 1 + mpf(b)))


def singular_inside(rng):
    for _ in range(20):
        a, c = rng.uniform(-0.8, 0.9), rng.random()
        p = 1 + mpf(a)
        yield Integral(lambda x, a=a, c=c: abs(x - c)**a, 0.0, 1.0, (mpf(c)**p + (1 - mpf(c))**p) / p)
    for _ in range(10):
        c = rng.random()
        long = mpf(c)
        yield Integral(lambda x, c=c: math.log(abs(x - c)), 0.0, 1.0, long * mp.log(long) + (1 - long) * mp.log(1 - long) - 1)


def peaks(rng):
    for k in range(15):
        e, c = 10 ** -rng.uniform(1, 5), rng.random()
        yield Integral(lambda x, e=e, c=c: e / ((x - c)**2 + e * e), 0.0, 1.0,
                       mp.atan((1 - mpf(c)) / e) + mp.atan(mpf(c) / e))
    for k in range(15):
        e, c = 10 ** -rng.uniform(1, 4), rng.random()
        yield Integral(lambda x, e=e, c=c: math.exp(-((x - c) / e)**2), 0.0, 1.0,
                       e * mp.sqrt(mp.pi) / 2 * (mp.erf((1 - mpf(c)) / e) + mp.erf(mpf(c) / e)))


def jumps(rng):
    for _ in range(10):
        c = rng.random()
        yield Integral(lambda x, c=c: 1.0 if x > c else 0.0, 0.0, 1.0, 1 - mpf(c))
    for _ in range(10):
        c = rng.random()
        yield Integral(lambda x, c=c: math.exp(x) if x > c else 0.0, 0.0, 1.0, mp.e - mp.exp(c))
    for k in range(3, 8):
        yield Integral(lambda x, k=k: float(math.floor(k * x)), 0.0, 1.0, mpf(k - 1) / 2)


def kinks(rng):
    for _ in range(8):
        c = rng.random()
        yield Integral(lambda x, c=c: abs(x - c), 0.0, 1.0, (mpf(c)**2 + (1 - mpf(c))**2) / 2)
    for _ in range(7):
        c = rng.random()
        yield Integral(lambda x, c=c: abs(x * x - c), 0.0, 1.0, mpf(1) / 3 - c + mpf(4) / 3 * mpf(c)**1.5)


FAMILIES = {"smooth": smooth, "oscillating": oscillating, "singular ends": singular_ends,
            "singular inside": singular_inside, "peaks": peaks, "jumps": jumps, "kinks": kinks}


def all_integrals():
    return {name: list(family(random.Random(name))) for name, family in FAMILIES.items()}
