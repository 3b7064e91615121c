"""orvel report: what the library does on this machine - level, caches, accuracy, speed - as text and as a page."""
import sys
import time
from pathlib import Path

from . import accuracy, speed
from .library import load
from .page import Report


class Progress:
    """One line on a terminal that tells what is measured; nothing elsewhere."""

    def __init__(self):
        self.shown, self.start = sys.stderr.isatty(), time.monotonic()

    def __call__(self, what):
        if self.shown:
            sys.stderr.write(f"\r\033[K{time.monotonic() - self.start:5.0f} s  {what}"[:79])
            sys.stderr.flush()

    def end(self):
        if self.shown:
            sys.stderr.write("\r\033[K")


def measure(library, quick, progress):
    version, level = library.orvel_version().decode(), library.orvel_level().decode()
    report = Report(f"Orvel {version} on this machine")
    report.section("Machine", f"The hot loops in use are those of the level {level}.", ["what", "the system says"],
                   list(speed.machine()))
    report.section("Accuracy of the gamma functions",
                   "Errors in units of the last place at random arguments, against values of 40 digits.",
                   ["routine", "from", "to", "largest", "mean"],
                   list(accuracy.gamma_rows(library, 20 if quick else 200, progress)))
    report.section("Residuals of linear systems",
                   "The largest |b - A x| in units of eps (|A| |x| + |b|), of random matrices. About 1 is good.",
                   ["routine", "order", "residual"],
                   list(accuracy.solver_rows(library, (10, 100) if quick else (10, 100, 300), progress)))
    report.section("Transforms there and back", "The root mean square of the error in units of eps.",
                   ["routines", "length", "error"],
                   list(accuracy.transform_rows(library, (1000, 1009, 4096, 30030), progress)))
    report.section("Integrals", "QDAGS with a relative tolerance of 1e-10.",
                   ["integral", "calls", "error", "estimate"], list(accuracy.integral_rows(library, progress)))
    budget = 0.02 if quick else 0.3
    for curves in speed.everything(library, budget, quick, progress):
        report.section(curves.title, f"{curves.unit}, by {curves.size_name}, on one thread. {about(curves)}", curves=curves)
    report.section("Other speeds", "On one thread.", ["routine", "value", "unit"],
                   list(speed.others(library, budget, progress)))
    return report


def about(curves):
    if "limit" in curves.series:
        best = max(v for _, v in curves.series["Orvel"])
        return (f"The limit is the clock times the most operations that a core of this level can do in a cycle; "
                f"the best is {100 * best / curves.series['limit'][0][1]:.0f} % of it. "
                "Processors with half of the units reach half of it, and clocks may rise above what the system tells.")
    if "copy" in curves.series:
        return "Memory that is read and written; beside it the speed at which the system copies as many bytes."
    return "Peers that are installed are measured in the same way." if len(curves.series) > 1 else ""


def run(program, arguments):
    """orvel report [--quick] [FILE]"""
    quick = "--quick" in arguments
    files = [a for a in arguments if not a.startswith("-")]
    if len(files) > 1 or any(a.startswith("-") and a != "--quick" for a in arguments):
        print("usage: orvel report [--quick] [PAGE]", file=sys.stderr)
        return 2
    path = Path(files[0] if files else "orvel-report.html")
    library, progress = load(program), Progress()
    report = measure(library, quick, progress)
    progress.end()
    print(report.as_text())
    try:
        path.write_text(report.as_page())
    except OSError as problem:
        print(f"orvel: the page cannot be written: {problem}", file=sys.stderr)
        return 1
    print(f"the same with pictures: {path.resolve()}")
    return 0
