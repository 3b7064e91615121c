"""Speed on this machine, beside its limits and the peers that are installed; on one thread."""
import ctypes
import os
import re
import time
from pathlib import Path

from .library import integer, double, peer, random_vector

# Floating-point operations that a core can do in a cycle: two units for fused products and sums (separate ones at the
# lowest level) of the level's width.
PER_CYCLE = {"x86-64": 4, "x86-64-v3": 16, "x86-64-v4": 32, "native": 8}


def read(path):
    try:
        return Path(path).read_text().strip()
    except OSError:
        return ""


def machine():
    """What the system says of itself: rows (what, value)."""
    info = read("/proc/cpuinfo")
    model = re.search(r"(?m)^(?:model name|Model|CPU implementer)\s*: (.+)$", info)
    memory = re.search(r"MemTotal:\s*(\d+)", read("/proc/meminfo"))
    yield "processor", model[1] if model else os.uname().machine
    yield "cores for this program", str(len(os.sched_getaffinity(0)))
    if clock():
        yield "clock, as the system tells it", f"{clock() / 1e9:.2f} GHz"
    caches = [f"L{read(c / 'level')} {read(c / 'type').lower().replace('unified', '')} {read(c / 'size')}".replace("  ", " ")
              for c in sorted(Path("/sys/devices/system/cpu/cpu0/cache").glob("index*"))]
    if caches:
        yield "caches", ", ".join(caches)
    if memory:
        yield "memory", f"{int(memory[1]) / 2**20:.1f} GB"


def clock():
    """Hertz, or None. A processor that runs faster for a while can exceed what follows from it."""
    speeds = [float(s) * 1e6 for s in re.findall(r"(?m)^cpu MHz\s*: ([\d.]+)", read("/proc/cpuinfo"))]
    highest = read("/sys/devices/system/cpu/cpu0/cpufreq/scaling_max_freq")
    return float(highest) * 1e3 if highest else max(speeds, default=None)


def seconds(call, budget):
    """The time of a call: the least of several, each of enough calls for the clock."""
    call()
    count, best, end = 1, float("inf"), time.perf_counter() + budget
    while True:
        start = time.perf_counter()
        for _ in range(count):
            call()
        took = time.perf_counter() - start
        best = min(best, took / count)
        if time.perf_counter() > end:
            return best
        if took < budget / 10:
            count *= 2


def peers():
    """Names and libraries of those that are installed, on one thread."""
    os.environ.update(OPENBLAS_NUM_THREADS="1", BLIS_NUM_THREADS="1", OMP_NUM_THREADS="1")
    found = {"OpenBLAS": peer("libopenblas.so.0"), "BLIS": peer("libblis.so.4", "libblis.so.3"),
             "FFTW": peer("libfftw3.so.3")}
    return {name: library for name, library in found.items() if library is not None}


class Curves:
    """Series of points (size, speed) in one picture; LIMIT is the machine's."""

    def __init__(self, title, size_name, unit):
        self.title, self.size_name, self.unit, self.series = title, size_name, unit, {}

    def add(self, name, size, value):
        self.series.setdefault(name, []).append((size, value))


def products(library, found, sizes, budget, progress):
    """DGEMM"""
    curves = Curves("Product of two matrices, DGEMM", "order", "GFlop/s")
    blas = {n: found[n].dgemm_ for n in ("OpenBLAS", "BLIS") if n in found}
    hertz, level = clock(), library.orvel_level().decode()
    for n in sizes:
        a, b, c = (random_vector(library, n * n) for _ in range(3))
        arguments = [b"N", b"N", integer(n), integer(n), integer(n), double(1), a, integer(n), b, integer(n), double(0),
                     c, integer(n)]
        for name, call in {"Orvel": library.DGEMM, **blas}.items():
            progress(f"DGEMM of order {n}, {name}")
            curves.add(name, n, 2e-9 * n**3 / seconds(lambda: call(*arguments), budget))
        if hertz:
            curves.add("limit", n, hertz * PER_CYCLE.get(level, 8) / 1e9)
    return curves


def solutions(library, found, sizes, budget, progress):
    """DLSLRG, with the estimate of the condition number, beside dgesv without one"""
    curves = Curves("Linear systems, DLSLRG (peers: dgesv, without an estimate of the condition)", "order", "GFlop/s")
    lapack = {n: found[n].dgesv_ for n in ("OpenBLAS",) if n in found and hasattr(found[n], "dgesv_")}
    for n in sizes:
        a, b, x = random_vector(library, n * n), (ctypes.c_double * n)(*[1.0] * n), (ctypes.c_double * n)()
        work, pivots, info = (ctypes.c_double * (n * n))(), (ctypes.c_int32 * n)(), ctypes.c_int32()

        def ours():
            library.DLSLRG(integer(n), a, integer(n), b, integer(1), x)

        def theirs(call):
            ctypes.memmove(work, a, 8 * n * n)
            ctypes.memmove(x, b, 8 * n)
            call(integer(n), integer(1), work, integer(n), pivots, x, integer(n), ctypes.byref(info))

        progress(f"DLSLRG of order {n}")
        curves.add("Orvel", n, 2e-9 / 3 * n**3 / seconds(ours, budget))
        for name, call in lapack.items():
            curves.add(name, n, 2e-9 / 3 * n**3 / seconds(lambda: theirs(call), budget))
    return curves


def transforms(library, found, lengths, budget, progress):
    """F2TCF after FFTCI, beside a plan that was measured"""
    curves = Curves("Complex transforms, F2TCF in double precision", "length", "GFlop/s (5 N log2 N operations)")
    for n in lengths:
        progress(f"transforms of length {n}")
        x, y = random_vector(library, 2 * n), (ctypes.c_double * (2 * n))()
        work, scratch = (ctypes.c_double * (4 * n + 15))(), (ctypes.c_double * (2 * n))()
        library.DFFTCI(integer(n), work)
        operations = 5e-9 * n * (n.bit_length() - 1)
        arguments = [integer(n), x, y, work, scratch]
        curves.add("Orvel", n, operations / seconds(lambda: library.DF2TCF(*arguments), budget))
        if "FFTW" in found:
            fftw = found["FFTW"]
            fftw.fftw_plan_dft_1d.restype = ctypes.c_void_p
            fftw.fftw_execute.argtypes = [ctypes.c_void_p]
            plan = fftw.fftw_plan_dft_1d(n, x, y, -1, 0)
            curves.add("FFTW", n, operations / seconds(lambda: fftw.fftw_execute(plan), budget))
    return curves


def vectors(library, found, counts, budget, progress):
    """DAXPY, whose limit is how fast the memory of that size can be copied"""
    curves = Curves("Vectors, DAXPY", "elements", "GB/s")
    blas = {n: found[n].daxpy_ for n in ("OpenBLAS", "BLIS") if n in found}
    for n in counts:
        x, y = random_vector(library, n), (ctypes.c_double * n)()
        arguments = [integer(n), double(1e-9), x, integer(1), y, integer(1)]
        for name, call in {"Orvel": library.DAXPY, **blas}.items():
            progress(f"DAXPY of {n} elements, {name}")
            curves.add(name, n, 24e-9 * n / seconds(lambda: call(*arguments), budget))
        curves.add("copy", n, 16e-9 * n / seconds(lambda: ctypes.memmove(y, x, 8 * n), budget))
    return curves


def others(library, budget, progress):
    """(what, value, unit) where no peer is measured."""
    n = 1000000
    values, result = random_vector(library, n), (ctypes.c_double * n)()
    for option, name in ((1, "16807"), (7, "shift register"), (8, "32-bit twister"), (9, "64-bit twister")):
        progress(f"random numbers, option {option}")
        library.RNOPT(integer(option))
        yield f"DRNUN, option {option} ({name})", 1e9 / n * seconds(lambda: library.DRNUN(integer(n), result), budget), \
            "ns each"
    progress("sorting")
    yield "DSVRGN, a million numbers", 1e9 / n * seconds(lambda: library.DSVRGN(integer(n), values, result), budget), \
        "ns each"
    progress("splines")
    points = (ctypes.c_double * n)(*range(n))
    coefficients = (ctypes.c_double * (4 * n))()
    yield "DCSAKM, a million points", 1e9 / n * seconds(
        lambda: library.DCSAKM(integer(n), points, values, result, coefficients), budget), "ns each"


def everything(library, budget, quick, progress):
    """Curves of all pictures."""
    found = peers()
    large = 1 if quick else 2
    yield products(library, found, (16, 64, 256, 1024)[:2 * large], budget, progress)
    yield solutions(library, found, (16, 64, 256, 1000)[:2 * large], budget, progress)
    yield transforms(library, found, (64, 1024, 16384, 262144)[:2 * large], budget, progress)
    yield vectors(library, found, (1000, 10000, 100000, 1000000, 4000000)[:3 * large], budget, progress)
