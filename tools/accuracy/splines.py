"""Cubic splines against the same splines in long arithmetic."""
import bisect
import ctypes
import math
import random

from mpmath import mp, mpf

from library import array
from tables import Column, Errors, Table

TITLE = "Splines"
NOTES = ()
SIZES = (10, 500)
SETS = {10: 20, 500: 3}  # how many sets of data
EPS = 2.0**-52
NOT_A_KNOT, SLOPE, CURVATURE = 0, 1, 2


# ---- the slopes in long arithmetic -----------------------------------------------------------------------


def differences(x, f):
    """Lengths and slopes of the pieces."""
    h = [b - a for a, b in zip(x, x[1:])]
    return h, [(b - a) / d for a, b, d in zip(f, f[1:], h)]


def solved(rows):
    """Of equations (below, diagonal, above, right-hand side), by elimination."""
    d, r = [rows[0][1]], [rows[0][3]]
    for i in range(1, len(rows)):
        factor = rows[i][0] / d[-1]
        d.append(rows[i][1] - factor * rows[i - 1][2])
        r.append(rows[i][3] - factor * r[-1])
    x = [r[-1] / d[-1]]
    for i in range(len(rows) - 2, -1, -1):
        x.append((r[i] - rows[i][2] * x[-1]) / d[i])
    return x[::-1]


def end_row(condition, value, h, m):
    """The diagonal, the other element and the right-hand side at an end, pieces counted from there."""
    if condition == SLOPE:
        return mpf(1), mpf(0), value
    if condition == CURVATURE:  # value is the second derivative at a left end, minus it at a right one
        return mpf(2), mpf(1), 3 * m[0] - value * h[0] / 2
    d = h[0] + h[1]
    return h[1], d, ((h[0] + 2 * d) * h[1] * m[0] + h[0]**2 * m[1]) / d


def inner_rows(h, m):
    return [(h[i], 2 * (h[i - 1] + h[i]), h[i - 1], 3 * (h[i] * m[i - 1] + h[i - 1] * m[i])) for i in range(1, len(h))]


def conditioned(x, f, left=NOT_A_KNOT, left_value=0, right=NOT_A_KNOT, right_value=0):
    h, m = differences(x, f)
    a, b, r = end_row(left, left_value, h, m)
    z, y, s = end_row(right, -right_value if right == CURVATURE else right_value, h[::-1], m[::-1])
    return solved([(mpf(0), a, b, r), *inner_rows(h, m), (y, z, mpf(0), s)])


def periodic(x, f):
    """The first slope, which is the last, is eliminated from the system of the others."""
    h, m = differences(x, f)
    rows = inner_rows(h, m)
    base = solved(rows)
    column = [mpf(0)] * len(rows)
    column[0], column[-1] = -rows[0][0], -rows[-1][2] + (column[0] if len(rows) == 1 else 0)
    way = solved([row[:3] + (c,) for row, c in zip(rows, column)])
    # h0 s[n-2] + 2 (h0 + hl) s0 + hl s1 = 3 (h0 ml + hl m0), hl and ml of the last piece
    factor = h[0] * way[-1] + 2 * (h[0] + h[-1]) + h[-1] * way[0]
    first = (3 * (h[0] * m[-1] + h[-1] * m[0]) - h[0] * base[-1] - h[-1] * base[0]) / factor
    return [first, *(b + first * w for b, w in zip(base, way)), first]


def akima(x, f):
    _, m = differences(x, f)
    m = [3 * m[0] - 2 * m[1], 2 * m[0] - m[1], *m, 2 * m[-1] - m[-2], 3 * m[-1] - 2 * m[-2]]
    slopes = []
    for i in range(len(x)):
        left, right = abs(m[i + 1] - m[i]), abs(m[i + 3] - m[i + 2])
        slopes.append((right * m[i + 1] + left * m[i + 2]) / (left + right))
    return slopes


class Spline:
    """Pieces from values and slopes, in long arithmetic."""

    def __init__(self, x, f, slopes):
        self.x, self.f, self.slopes = x, f, slopes
        self.h, self.m = differences(x, f)

    def __call__(self, at):
        i = min(max(bisect.bisect_right(self.x, at) - 1, 0), len(self.h) - 1)
        t, s, h, m = at - self.x[i], self.slopes, self.h[i], self.m[i]
        square = (3 * m - 2 * s[i] - s[i + 1]) / h
        return self.f[i] + t * (s[i] + t * (square + t * (s[i] + s[i + 1] - 2 * m) / h**2))

    def integral(self):
        """Over all of it."""
        return mp.fsum(h * (a + b) / 2 + h * h * (s - t) / 12
                       for h, a, b, s, t in zip(self.h, self.f, self.f[1:], self.slopes, self.slopes[1:]))


# ---- what is measured ------------------------------------------------------------------------------------

# Routine, further arguments as a function of both conditions' values, exact slopes, and whether data are a period.
ROUTINES = {
    "DCSINT": (lambda v, w: (), lambda x, f, v, w: conditioned(x, f)),
    "DCSDEC, slopes": (lambda v, w: (SLOPE, v, SLOPE, w), lambda x, f, v, w: conditioned(x, f, SLOPE, v, SLOPE, w)),
    "DCSDEC, curvatures": (lambda v, w: (CURVATURE, v, CURVATURE, w),
                           lambda x, f, v, w: conditioned(x, f, CURVATURE, v, CURVATURE, w)),
    "DCSPER": (lambda v, w: (), lambda x, f, v, w: periodic(x, f)),
    "DCSAKM": (lambda v, w: (), lambda x, f, v, w: akima(x, f)),
}


def data(routine, n, seed):
    """Smooth data at even places in half of the sets, else random ordinates at random places."""
    rng = random.Random(f"splines {n} {seed}")
    if seed % 2:
        x = sorted(rng.uniform(0, 1) for _ in range(n))
        f = [rng.uniform(-1, 1) for _ in range(n)]
    else:
        start = rng.uniform(0, 6)
        x = [k / (n - 1) for k in range(n)]
        f = [math.sin(start + 6 * v) for v in x]
    if routine == "DCSPER":
        f[-1] = f[0]
    places = [rng.uniform(x[0], x[-1]) for _ in range(200 if n < 100 else 1000)]
    return x, f, rng.uniform(-1, 1), rng.uniform(-1, 1), places


def of_library(library, routine, x, f, ends, places):
    """Values at places, slopes, and the integral over all."""
    n = len(x)
    brkpt, spcoef = (ctypes.c_double * n)(), (ctypes.c_double * (4 * n))()
    library.call(routine.split(",")[0], n, array(ctypes.c_double, x), array(ctypes.c_double, f), *ends, brkpt, spcoef)
    values = (ctypes.c_double * len(places))()
    library.call("DCSVALS", len(places), array(ctypes.c_double, places), n - 1, brkpt, spcoef, values)
    integral = library.call("DCSITG", x[0], x[-1], n - 1, brkpt, spcoef, returns=ctypes.c_double)
    return list(values), [spcoef[4 * i + 1] for i in range(n)], integral


class SplineErrors:
    def __init__(self):
        self.values, self.slopes, self.integrals = Errors(), Errors(), Errors()

    def add(self, found, exact):
        """Of values, slopes and the integral, each in units of eps times the largest exact one."""
        for errors, got, true in zip((self.values, self.slopes), found, exact):
            size = float(max(map(abs, true))) * EPS
            for g, t in zip(got, true):
                errors.add(float(abs(g - t)) / size)
        self.integrals.add(float(abs(found[2] - exact[2])) / (EPS * exact[3]))


def measure(library, peers, routine, n, count):
    arguments, slopes_of = ROUTINES[routine]
    ours, theirs = SplineErrors(), SplineErrors()
    for seed in range(count):
        x, f, v, w, places = data(routine, n, seed)
        long = [mpf(a) for a in x], [mpf(a) for a in f]
        spline = Spline(*long, slopes_of(*long, mpf(v), mpf(w)))
        values = [spline(mpf(a)) for a in places]
        exact = values, spline.slopes, spline.integral(), float(max(map(abs, values))) * (x[-1] - x[0])
        ours.add(of_library(library, routine, x, f, arguments(v, w), places), exact)
        if peers:
            theirs.add(peers.spline(routine, x, f, v, w, places), exact)
    return ours, theirs


def rows(library, peers):
    for routine in ROUTINES:
        for n in SIZES:
            if peers or n == SIZES[0]:
                ours, theirs = measure(library, peers, routine, n, SETS[n] if peers else 4)
                figures = []
                for kind in ("values", "slopes", "integrals"):
                    for errors in (getattr(ours, kind), getattr(theirs, kind)):
                        figures += [errors.worst, errors.rms] if errors.count else [None, None]
                name, *rest = routine.split(",", 1)
                yield (f"`{name}`" + ("," + rest[0] if rest else ""), f"{n}", *figures[0:4], figures[4], figures[6],
                       figures[8], figures[10])


def tables(library, peers):
    # Levels contract other products; sets scatter, of which the repeat takes four.
    columns = [Column("values, largest", factor=1.5, more=0.3), Column("RMS", factor=2.0, more=0.1),
               Column("peer's largest"), Column("RMS"), Column("slopes, largest", factor=1.5, more=0.3),
               Column("peer's largest"), Column("integral, largest", factor=1.5, more=0.3), Column("peer's largest")]
    return [Table("Cubic splines",
                  "Values at random places, slopes at the break points, and the integral over all, in units of *eps* "
                  "times the largest value, the largest slope, and the largest value times the length. Half of the "
                  "data are a sine at even places, half random at random places; exact is the spline of the same data "
                  "in 40 digits. The peers are `CubicSpline` and `Akima1DInterpolator` of SciPy.",
                  ["routine", "points"], columns,
                  lambda: rows(library, peers))]
