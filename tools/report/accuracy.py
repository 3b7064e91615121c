"""Errors on this machine: gamma functions in every region against long arithmetic, residuals of solvers against exact
sums, transforms against their inverses."""
import ctypes
import math
from decimal import Decimal, localcontext

from .library import Quiet, double, integer, random_vector, vector

DIGITS = 60
# Of Stirling's series, b(2k) / (2k (2k - 1)).
BERNOULLI = ((1, 12), (-1, 360), (1, 1260), (-1, 1680), (1, 1188), (-691, 360360), (1, 156), (-3617, 122400),
             (43867, 244188), (-174611, 125400), (77683, 5796), (-236364091, 1506960))
PI = Decimal("3.14159265358979323846264338327950288419716939937510582097494459230781640628620899862803483")
REGIONS = {
    "DGAMMA": ((1e-4, 1), (1, 2), (2, 10), (10, 35), (35, 171), (-10, -1e-4), (-170, -10)),
    "DLNGAM": ((1e-4, 0.9), (0.9, 1.1), (1.1, 1.9), (1.9, 2.1), (2.1, 10), (10, 100), (100, 1e5), (-100, -1e-4)),
    "DGAMR": ((1e-4, 2), (2, 10), (10, 170), (-10, -1e-4), (-170, -10)),
}


def log_gamma(x):
    """ln Gamma of a positive number: Stirling's series behind 60."""
    shift = Decimal(1)
    while x < 60:
        shift *= x
        x += 1
    series = sum(Decimal(p) / q / x ** (2 * k + 1) for k, (p, q) in enumerate(BERNOULLI))
    return (x - Decimal("0.5")) * x.ln() - x + (2 * PI).ln() / 2 + series - shift.ln()


def sine_of_pi(x):
    rest = x - x.to_integral_value()
    angle, sign = PI * rest, -1 if int(x.to_integral_value()) % 2 else 1
    term = total = angle
    k = 1
    while abs(term) > Decimal(10) ** -(DIGITS + 5):
        term = -term * angle * angle / ((2 * k) * (2 * k + 1))
        total += term
        k += 1
    return sign * total


def exact(routine, x):
    """The value of a routine at a double, to about 40 digits."""
    with localcontext() as context:
        context.prec = DIGITS
        x = Decimal(x)
        if x > 0:
            log = log_gamma(x)
            return log if routine == "DLNGAM" else log.exp() if routine == "DGAMMA" else (-log).exp()
        sine, log = sine_of_pi(x), log_gamma(1 - x)
        if routine == "DLNGAM":
            return (PI / abs(sine)).ln() - log
        value = PI / (sine * log.exp())
        return value if routine == "DGAMMA" else 1 / value


def units(value, true):
    """The distance of a double from the truth in units of the last place of the truth."""
    nearest = float(true)
    return float(abs(Decimal(value) - true) / Decimal(math.ulp(nearest)))


def gamma_rows(library, points, progress):
    """(routine, from, to, largest error, mean error)"""
    for routine, regions in REGIONS.items():
        function = getattr(library, routine)
        function.restype = ctypes.c_double
        for low, high in regions:
            progress(f"accuracy of {routine} from {low:g} to {high:g}")
            uniform = random_vector(library, points)
            errors = []
            for u in uniform:
                x = low + (high - low) * (u + 1) / 2
                if x == int(x) and x <= 0:
                    continue
                with Quiet(library):
                    value = function(double(x))
                errors.append(units(value, exact(routine, x)))
            yield routine, low, high, max(errors), sum(errors) / len(errors)


def product_parts(a, b):
    """a*b as a sum of two doubles without an error (Dekker)."""
    product = a * b
    a1, b1 = a * 134217729.0, b * 134217729.0
    a_high, b_high = a1 - (a1 - a), b1 - (b1 - b)
    a_low, b_low = a - a_high, b - b_high
    return product, ((a_high * b_high - product) + a_high * b_low + a_low * b_high) + a_low * b_low


def residual(a, x, b, n):
    """The largest |b - A*x| / (eps (|A| |x| + |b|)), row by row, with sums that are rounded once."""
    worst = 0.0
    for i in range(n):
        terms, size = [b[i]], abs(b[i])
        for j in range(n):
            product, rest = product_parts(-a[i + j * n], x[j])
            terms += (product, rest)
            size += abs(product)
        worst = max(worst, abs(math.fsum(terms)) / (2.0**-52 * size))
    return worst


def solver_rows(library, sizes, progress):
    """(routine, order, backward error in units of eps)"""
    for n in sizes:
        numbers = random_vector(library, n * n + n)
        a, b = vector(numbers[:n * n]), vector(numbers[n * n:])
        for routine in ("DLSARG", "DLSLRG"):
            progress(f"residual of {routine} of order {n}")
            x = (ctypes.c_double * n)()
            with Quiet(library):
                getattr(library, routine)(integer(n), a, integer(n), b, integer(1), x)
            yield routine, n, residual(a, x, b, n)


def transform_rows(library, lengths, progress):
    """(routine, length, root mean square of the error of a pair of transforms in units of eps)"""
    for n in lengths:
        progress(f"transforms of length {n}")
        sequence, result = random_vector(library, 2 * n), (ctypes.c_double * (2 * n))()
        library.DFFTCF(integer(n), sequence, result)
        library.DFFTCB(integer(n), result, result)
        error = math.sqrt(math.fsum((r / n - s) ** 2 for r, s in zip(result, sequence)))
        yield "DFFTCF, DFFTCB", n, error / math.sqrt(math.fsum(s * s for s in sequence)) / 2.0**-52


CASES = (("exp(x), 0 to 1", math.exp, 0.0, 1.0, math.e - 1), ("ln(x), 0 to 1", math.log, 0.0, 1.0, -1.0),
         ("1/sqrt(x), 0 to 1", lambda x: x**-0.5, 0.0, 1.0, 2.0),
         ("|x - 1/3|, 0 to 1", lambda x: abs(x - 1 / 3), 0.0, 1.0, 5 / 18),
         ("1/(1 + 100 x^2), -1 to 1", lambda x: 1 / (1 + 100 * x * x), -1.0, 1.0, math.atan(10.0) / 5))


def integral_rows(library, progress):
    """(integral, calls of the function, error, estimate of the error) of DQ2AGS with a tolerance of 1e-10"""
    callback = ctypes.CFUNCTYPE(ctypes.c_double, ctypes.POINTER(ctypes.c_double))
    for name, function, a, b, true in CASES:
        progress(f"integral of {name}")
        result, estimate, calls, pieces = ctypes.c_double(), ctypes.c_double(), ctypes.c_int32(), ctypes.c_int32()
        lists = [vector([0.0] * 500) for _ in range(4)]
        with Quiet(library):
            library.DQ2AGS(callback(lambda x, f=function: f(x[0])), double(a), double(b), double(0), double(1e-10),
                           ctypes.byref(result), ctypes.byref(estimate), integer(500), ctypes.byref(calls),
                           ctypes.byref(pieces), *lists, (ctypes.c_int32 * 500)())
        yield name, calls.value, abs(result.value - true), estimate.value
