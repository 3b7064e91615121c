"""Solutions, inverses, determinants and condition numbers of linear systems."""
import statistics

from matrices import KINDS, Exact, backward_error, inverse_error
from tables import Column, Errors, Table

TITLE = "Linear systems"
NOTES = (
    "Solutions without refinement of triangles and definite systems: an element gets its products one after the other "
    "in ascending order, so that the same bits come out for every size of blocks, and the error of such a chain grows "
    "with the square root of its length; the peers add in blocks. Where it matters, `LSA` in place of `LSL` refines.",
    "Determinants of definite matrices are products of squares of the same factors, and are scaled by powers of 10, "
    "which round.",
    "Ill-conditioned bands: a single matrix decides, for `DLSLRB` one of the peer's, for `DLSLCB` one of ours; "
    "elimination does not bound the error of each element beside rows of other sizes.",
    "RCOND is the published estimate of 1979, which is too large by a factor of two in the median of general matrices; "
    "LAPACK has a later one. Complex members measure |Re| + |Im|, and so may be below the true value by a factor of two.",
)
SIZES = {10: 20, 50: 5}  # orders, and how many matrices of each
REPEATED, LARGE = {10: 2}, 300


class Kept:
    """Matrices with their exact results, which several tables need."""

    def __init__(self, sizes):
        self.sizes, self.systems = sizes, {}

    def of(self, kind, ill):
        key = kind, ill
        if key not in self.systems:
            matrices = [kind.matrix(seed, n, ill) for n, count in self.sizes.items() for seed in range(count)]
            self.systems[key] = [(a, b, Exact(a, b)) for a, b in matrices]
        return self.systems[key]


def named(ill):
    return "ill-conditioned" if ill else "random"


def is_measured(kind, ill):
    return not (ill and kind.real(0.1).value != 0.1)  # single precision has no digits for condition 1e10


def solution_rows(library, peers, kept):
    for kind in KINDS:
        for routine in kind.solvers:
            for ill in (False, True) if is_measured(kind, True) else (False,):
                errors = {key: Errors() for key in ("back", "forward", "their back", "their forward")}
                for a, b, exact in kept.of(kind, ill):
                    x = kind.solve(library, routine, a, b)
                    errors["back"].add(backward_error(a, x, b, kind.eps))
                    errors["forward"].add(exact.forward_error(x) / kind.eps)
                    if peers:
                        x = peers.solve(kind, a, b)
                        errors["their back"].add(backward_error(a, x, b, kind.eps))
                        errors["their forward"].add(exact.forward_error(x) / kind.eps)
                figures = [figure for e in errors.values() for figure in ((e.worst, e.rms) if e.count else (None, None))]
                yield f"`{routine}`", named(ill), *figures


def large_rows(library, peers):
    for kind in KINDS:
        a, b = kind.matrix(0, LARGE, False)
        for routine in kind.solvers if peers else ():
            yield (f"`{routine}`", backward_error(a, kind.solve(library, routine, a, b), b, kind.eps),
                   backward_error(a, peers.solve(kind, a, b), b, kind.eps))


def of_ratios(ratios):
    return (min(ratios), statistics.median(ratios), max(ratios)) if ratios else (None, None, None)


def condition_rows(library, peers, kept):
    for kind in KINDS:
        for ill in (False, True) if is_measured(kind, True) else (False,):
            dets, their_dets, ratios, their_ratios = Errors(), Errors(), [], []
            for a, _, exact in kept.of(kind, ill):
                rcond, det = kind.condition(library, a)
                ratios.append(rcond * exact.condition)
                dets.add(exact.determinant_error(det) / kind.eps)
                if peers:
                    rcond, det = peers.condition(kind, a)
                    their_dets.add(exact.determinant_error(det) / kind.eps)
                    if rcond is not None:
                        their_ratios.append(rcond * exact.condition)
            their = (their_dets.worst, their_dets.rms) if their_dets.count else (None, None)
            yield (f"`{kind.prefix}LFC{kind.letters}`", named(ill), *of_ratios(ratios), *of_ratios(their_ratios),
                   dets.worst, dets.rms, *their)


def inverse_rows(library, peers, kept):
    for kind in KINDS:
        if not kind.inverter:
            continue
        for ill in (False, True) if is_measured(kind, True) else (False,):
            ours, theirs = Errors(), Errors()
            for a, *_ in kept.of(kind, ill):
                ours.add(inverse_error(a, kind.inverse(library, a), kind.eps))
                if peers:
                    theirs.add(inverse_error(a, peers.inverse(kind, a), kind.eps))
            their = (theirs.worst, theirs.rms) if theirs.count else (None, None)
            yield f"`{kind.inverter}`", named(ill), ours.worst, ours.rms, *their


def tables(library, peers):
    kept = Kept(SIZES if peers else REPEATED)
    # Levels contract other products and form other sums, whose errors differ by about a half; few matrices scatter.
    def measured(name, more=0.1, factor=1.5):
        return Column(name, ".2g", factor, more)

    def other(name):
        return Column(name, ".2g")
    solutions = [measured("backward, largest"), measured("RMS", factor=2.0), measured("forward, largest", 0.02),
                 measured("RMS", 0.02, 2.0), other("peer's backward, largest"), other("RMS"),
                 other("peer's forward, largest"), other("RMS")]
    large = [other("backward"), other("peer's backward")]
    conditions = [other("RCOND, least"), other("median"), measured("RCOND, largest", 0.0, 1.1), other("peer's least"),
                  other("median"), other("largest"), measured("determinant, largest", 0.02), measured("RMS", 0.02, 2.0),
                  other("peer's largest"), other("RMS")]
    inverses = [measured("residual, largest"), measured("RMS", factor=2.0), other("peer's largest"), other("RMS")]
    orders = " and ".join(f"{count} of order {n}" for n, count in SIZES.items())
    result = [
        Table("Solutions",
              f"Of {orders}: the backward error, the largest |A x - b| / (|A| |x| + |b|) of an element, in units of "
              "*eps*, formed without rounding; the forward error, |x - exact| / |exact| in the largest norm, in units "
              "of *eps* times the true condition number in the L1 norm, against 40 digits. Ill-conditioned matrices "
              "have condition numbers about 1e10; bands have three diagonals on each side, definite ones one. The "
              "peer, without refinement, is LAPACK as called by numpy and SciPy.", ["routine", "matrices"], solutions,
              lambda: solution_rows(library, peers, kept)),
        Table("Condition numbers and determinants",
              "Of the same matrices: RCOND times the true condition number, so that 1 is an "
              "estimate without an error and more is one that is too optimistic; the relative error of the "
              "determinant in units of *eps* times the condition number. The peer's estimates are those of LAPACK, "
              "its determinants products of its factorizations.",
              ["routine", "matrices"], conditions, lambda: condition_rows(library, peers, kept)),
        Table("Inverses",
              "Of the same matrices: |X A - 1| / (|A| |X|) in the L1 norm, in units of *eps*, formed without rounding.",
              ["routine", "matrices"], inverses, lambda: inverse_rows(library, peers, kept))]
    if peers:
        result.append(Table("Large systems", f"Backward errors, as above, of one random system of order {LARGE}.", ["routine"],
                            large, lambda: large_rows(library, peers)))
    return result
