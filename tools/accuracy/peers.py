"""Other libraries, for the same arguments. Only printing needs them."""
import ctypes
import ctypes.util

import numpy
import scipy
import scipy.fft
import scipy.special
from mpmath import mp
from scipy import integrate, interpolate, linalg, optimize

from quadrature import MAXSUB, Outcome
from transforms import unpacked


def loaded(name):
    path = ctypes.util.find_library(name)
    return ctypes.CDLL(path) if path else None


def of_one_number(library, name, real):
    function = getattr(library, name)
    function.restype, function.argtypes = real, [real]
    return function


class Peers:
    def __init__(self):
        self.libm, self.gsl, self.openblas = loaded("m"), loaded("gsl"), loaded("openblas")
        self.fftw = {ctypes.c_double: loaded("fftw3"), ctypes.c_float: loaded("fftw3f")}
        if self.gsl:
            self.gsl.gsl_set_error_handler_off()
        if self.openblas:
            self.openblas.openblas_set_num_threads(1)
        self.versions = f"numpy {numpy.__version__}, SciPy {scipy.__version__}"

    def gamma_functions(self, routine, real):
        """Functions that compute what DGAMMA, DLNGAM or DGAMR do."""
        of, letter = {}, "f" if real is ctypes.c_float else ""
        to = numpy.float32 if letter else float
        name = {"DGAMMA": "tgamma", "DLNGAM": "lgamma"}.get(routine)
        if name:
            of["glibc"] = of_one_number(self.libm, name + letter, real)
        scipys = {"DGAMMA": "gamma", "DLNGAM": "gammaln", "DGAMR": "rgamma"}.get(routine)
        if scipys:
            function = getattr(scipy.special, scipys)
            of["SciPy"] = lambda x: float(function(to(x)))
        gsls = {"DGAMMA": "gsl_sf_gamma", "DLNGAM": "gsl_sf_lngamma", "DGAMR": "gsl_sf_gammainv"}.get(routine)
        if gsls and self.gsl and not letter:
            of["GSL"] = of_one_number(self.gsl, gsls, ctypes.c_double)
        return of

    # ---- transforms

    def long_transform(self, x, sign):
        wide = numpy.asarray(x, dtype=numpy.clongdouble)
        return scipy.fft.fft(wide) if sign > 0 else scipy.fft.ifft(wide, norm="forward")

    def transforms(self, case):
        """Of a case of transforms.py, by each of the others."""
        n, double = len(case.x), case.kind is ctypes.c_double
        x = numpy.array(case.x, dtype=("c16" if double else "c8") if not case.real else "f8" if double else "f4")
        if case.real and case.backward:
            x = numpy.array(unpacked(case.x), dtype="c16" if double else "c8")
        fft = scipy.fft
        if case.real:
            result = fft.irfft(x, n, norm="forward") if case.backward else fft.rfft(x)
        else:
            result = fft.ifft(x, norm="forward") if case.backward else fft.fft(x)
        of = {"pocketfft": result}
        if self.fftw[case.kind]:
            of["FFTW"] = self.fftw_transform(case, x, n, numpy.zeros_like(result))
        return {who: r.astype("c16").tolist() for who, r in of.items()}

    def fftw_transform(self, case, x, n, result):
        library = self.fftw[case.kind]
        prefix = "fftw_" if case.kind is ctypes.c_double else "fftwf_"
        estimate, pointers = 64, [v.ctypes.data_as(ctypes.c_void_p) for v in (x, result)]
        name = {(False, False): "dft_1d", (False, True): "dft_1d", (True, False): "dft_r2c_1d", (True, True): "dft_c2r_1d"}
        plan_of = getattr(library, f"{prefix}plan_{name[case.real, case.backward]}")
        plan_of.restype = ctypes.c_void_p
        direction = [] if case.real else [ctypes.c_int(1 if case.backward else -1)]
        plan = ctypes.c_void_p(plan_of(ctypes.c_int(n), *pointers, *direction, ctypes.c_uint(estimate)))
        getattr(library, prefix + "execute")(plan)
        getattr(library, prefix + "destroy_plan")(plan)
        return result

    # ---- sums

    def sum(self, routine, x):
        """Of a routine of sums.py."""
        dtype = numpy.float64 if routine.kind is ctypes.c_double else numpy.float32
        vectors = [numpy.array(v, dtype=dtype) for v in x]
        if routine.peer == "numpy sum":
            terms = vectors[0]
            for v in vectors[1:]:
                terms = terms * v
            return float(numpy.sum(terms))
        name = "cblas_" + routine.name.lower()
        function = getattr(self.openblas, name)
        function.restype = routine.result
        start = [ctypes.c_float(0)] if routine.start else []
        pairs = [part for v in vectors for part in (v.ctypes.data_as(ctypes.c_void_p), ctypes.c_int(1))]
        return function(ctypes.c_int(len(x[0])), *start, *pairs)

    # ---- splines

    def spline(self, routine, x, f, v, w, places):
        """What of_library of splines.py finds."""
        name, _, condition = routine.partition(", ")
        if name == "DCSAKM":
            spline = interpolate.Akima1DInterpolator(x, f)
        else:
            kinds = {"slopes": ((1, v), (1, w)), "curvatures": ((2, v), (2, w)), "": "not-a-knot"}
            spline = interpolate.CubicSpline(x, f, bc_type="periodic" if name == "DCSPER" else kinds[condition])
        return spline(places).tolist(), spline(x, 1).tolist(), float(spline.integrate(x[0], x[-1]))

    # ---- linear systems

    @staticmethod
    def dense(kind, a):
        double = kind.real is ctypes.c_double
        return numpy.array(a, dtype=("c16" if double else "c8") if kind.is_complex else "f8" if double else "f4")

    @staticmethod
    def bands(kind, a):
        n, below = len(a), kind.widths[0] if len(kind.widths) == 2 else 0
        above = kind.widths[-1]
        ab = numpy.zeros((below + above + 1, n), dtype=a.dtype)
        for k in range(-below, above + 1):
            ab[above - k, max(k, 0):n + min(k, 0)] = numpy.diagonal(a, k)
        return ab

    def solve(self, kind, a, b):
        a = self.dense(kind, a)
        b = numpy.array(b, dtype=a.dtype)
        if kind.name == "general":
            x = linalg.solve(a, b)
        elif kind.name == "definite":
            x = linalg.solve(a, b, assume_a="pos")
        elif kind.name == "triangular":
            x = linalg.solve_triangular(a, b)
        elif kind.name == "band":
            x = linalg.solve_banded(kind.widths, self.bands(kind, a), b)
        else:
            x = linalg.solveh_banded(self.bands(kind, a), b)
        return x.tolist()

    def condition(self, kind, a):
        """RCOND, None where there is no estimate, and the determinant."""
        a = self.dense(kind, a)
        size = numpy.abs(a).sum(axis=0).max()
        def lapack(name):
            return linalg.get_lapack_funcs(name, (a,))
        if kind.name == "general":
            lu, pivots, _ = lapack("getrf")(a)
            sign = (-1) ** int((pivots != numpy.arange(len(a))).sum())
            return float(lapack("gecon")(lu, size)[0]), sign * mp.mpmathify(numpy.prod(numpy.diagonal(lu)).item())
        if kind.name == "definite":
            factor = lapack("potrf")(a)[0]
            return float(lapack("pocon")(factor, size)[0]), mp.mpmathify(numpy.prod(numpy.diagonal(factor)).item()) ** 2
        if kind.name == "triangular":
            rcond = self.triangle_condition(a)
            return rcond, mp.mpmathify(numpy.prod(numpy.diagonal(a)).item())
        if kind.name == "band":
            below, above = kind.widths
            room = numpy.vstack([numpy.zeros((below, len(a)), dtype=a.dtype), self.bands(kind, a)])
            lu, pivots, _ = lapack("gbtrf")(room, below, above)
            sign = (-1) ** int((pivots != numpy.arange(len(a))).sum())
            return None, sign * mp.mpmathify(numpy.prod(lu[below + above]).item())
        factor = lapack("pbtrf")(self.bands(kind, a))[0]
        return None, mp.mpmathify(numpy.prod(factor[-1]).item()) ** 2

    def triangle_condition(self, a):
        """By DTRCON of the library that holds LAPACK, which SciPy does not offer."""
        function = getattr(self.openblas, "dtrcon_", None)
        if function is None:
            return None
        n, rcond, info = ctypes.c_int(len(a)), ctypes.c_double(), ctypes.c_int()
        columns = numpy.asfortranarray(a)
        work, iwork = numpy.zeros(3 * len(a)), numpy.zeros(len(a), dtype="i4")
        pointer = ctypes.c_void_p
        function(b"1", b"U", b"N", ctypes.byref(n), columns.ctypes.data_as(pointer), ctypes.byref(n), ctypes.byref(rcond),
                 work.ctypes.data_as(pointer), iwork.ctypes.data_as(pointer), ctypes.byref(info), 1, 1, 1)
        return rcond.value

    def inverse(self, kind, a):
        a = self.dense(kind, a)
        def lapack(name):
            return linalg.get_lapack_funcs(name, (a,))
        if kind.name == "definite":
            x = lapack("potri")(lapack("potrf")(a)[0])[0]
            x = numpy.triu(x) + numpy.triu(x, 1).T.conj()
        elif kind.name == "triangular":
            x = lapack("trtri")(a)[0]
        else:
            lu, pivots, _ = lapack("getrf")(a)
            x = lapack("getri")(lu, pivots)[0]
        return x.tolist()


    # ---- integrals, zeros, minima

    def integral(self, integral, tolerance):
        result, estimate, info, *message = integrate.quad(integral.f, integral.low, integral.high, epsabs=0.0, epsrel=tolerance,
                                                          limit=MAXSUB, full_output=1)
        return Outcome(integral, tolerance, result, estimate, bool(message), info["neval"])

    @staticmethod
    def zero(f, a, b, tolerance):
        return optimize.brentq(f, a, b, xtol=1e-300, rtol=tolerance)

    @staticmethod
    def minimum(f, a, b, accuracy):
        return optimize.minimize_scalar(f, bounds=(a, b), method="bounded", options={"xatol": accuracy}).x
