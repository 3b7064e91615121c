"""Integrals of known value: errors against their estimates, and how many are wrong without a word."""
import ctypes
import statistics

from integrals import all_integrals
from library import CALLBACKS
from tables import Column, Table

TITLE = "Quadrature"
NOTES = (
    "Silent misses are those of the published method, which the peer has, too, and misses the same integrals: bells of a "
    "width of about 1/500 and less that lie between the nodes, a jump whose bisections look like convergence to the "
    "extrapolation, a kink nearer to an end than the first node, and two that are beyond the limit by a tenth at most. "
    "An interval that is divided at what is known of a function has none of them.",
    "One error more than the peer: an interval counts as too small to be divided from 1000 times the precision on.",
    "There is no routine for infinite intervals.",
)
MAXSUB = 500
TOLERANCES = (1e-6, 1e-10)
REPEATED = (1e-10,)
ROUTINES = {"DQDAGS": "DQ2AGS", "DQDAG": "DQ2AG"}
EPS = 2.0**-52


class Outcome:
    """What came of one integral."""

    def __init__(self, integral, tolerance, result, estimate, posted, calls):
        self.error = float(abs(integral.value - result))
        # What no routine can know: the value is a double, and so are those of the function.
        self.floor = EPS * float(abs(integral.value))
        self.requested = tolerance * float(abs(integral.value))
        self.estimate, self.posted, self.calls = estimate, posted, calls

    @property
    def ratio(self):
        """Of the error to what was promised; beyond 1 and without an error posted it is a silent miss."""
        return self.error / max(self.requested, self.estimate, self.floor)


def integrated(library, routine, integral, tolerance):
    real, lists = ctypes.c_double, [(ctypes.c_double * MAXSUB)() for _ in range(4)]
    f = CALLBACKS[real](lambda x: integral.f(x[0]))
    result, estimate, calls, pieces = real(), real(), ctypes.c_int32(), ctypes.c_int32()
    rule = [2] if routine == "DQDAG" else []
    library.call(ROUTINES[routine], f, integral.low, integral.high, 0.0, tolerance, *rule, result, estimate, MAXSUB, calls,
                 pieces, *lists, (ctypes.c_int32 * MAXSUB)())
    return Outcome(integral, tolerance, result.value, estimate.value, library.severity() > 0, calls.value)


def figures(outcomes):
    """How many were posted as errors, silent misses, the worst ratio, and calls of the function."""
    silent = [o for o in outcomes if not o.posted]
    return (float(sum(o.posted for o in outcomes)), float(sum(o.ratio > 1 for o in silent)),
            max((o.ratio for o in silent), default=0.0), float(sum(o.calls for o in outcomes)))


def caution(outcomes):
    """The median of estimate to error, where the error is not that of rounding."""
    ratios = [o.estimate / o.error for o in outcomes if o.error > 10 * o.floor]
    return statistics.median(ratios) if ratios else None


def measure(routine, integrals, tolerance, library, peers):
    ours = [integrated(library, routine, i, tolerance) for i in integrals]
    others = [peers.integral(i, tolerance) for i in integrals] if peers and routine == "DQDAGS" else []
    return ours, others


def rows(library, peers):
    integrals = all_integrals()
    for routine in ROUTINES:
        for tolerance in TOLERANCES if peers else REPEATED:
            total, their_total = [], []
            for family, members in integrals.items():
                ours, theirs = measure(routine, members, tolerance, library, peers)
                total, their_total = total + ours, their_total + theirs
                yield row(routine, tolerance, family, ours, theirs)
            yield row(routine, tolerance, "all", total, their_total)


def row(routine, tolerance, family, ours, theirs):
    their = figures(theirs) if theirs else (None, None, None, None)
    return (f"`{routine}`", f"{tolerance:g}", f"{family} ({len(ours)})", *figures(ours), caution(ours), *their)


def tables(library, peers):
    # A last bit of a function decides whether a piece is divided once more.
    columns = [Column("errors posted", ".0f", 1.0, 1.0), Column("silent misses", ".0f", 1.0, 0.0),
               Column("largest ratio", ".2g", 1.5, 0.01), Column("calls", ".0f", 1.1, 0.0), Column("estimate / error", ".2g"),
               Column("peer's errors", ".0f"), Column("silent misses", ".0f"), Column("largest ratio", ".2g"),
               Column("calls", ".0f")]
    return [Table("Integrals",
                  "200 integrals over finite intervals, whose values are known in closed form, with a relative "
                  f"tolerance and at most {MAXSUB} pieces. The ratio is that of the true error to the larger of the "
                  "requested one and `ESTERR` (and one rounding of the result), where no error was posted; above 1 it "
                  "is a silent miss. Estimate / error is the median of `ESTERR` to the true error where that is not "
                  "of rounding. The peer is `scipy.integrate.quad`.",
                  ["routine", "tolerance", "family"], columns, lambda: rows(library, peers))]
