#!/usr/bin/env python3
"""tools/pictures.py BENCH [SPLINES] - draws docs/pictures/*.svg with gnuplot

    ./run bench, then ./run demo, then tools/pictures.py out/bench.json out/demo/splines.dat

BENCH is what the bench wrote on this machine, whose processor is named in small print; SPLINES, a file of the demo, gives
the errors of splines. A row of the bench that is missing is an error. tools/error_pictures.py draws those of errors.
"""
import json
import math
import re
import statistics
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PICTURES = ROOT / "docs/pictures"
LARGEST = 60_000  # bytes of a picture

# The bars of speed.svg: a name, and the row of the bench. All families that have peers come, the slow rows too.
SPEED = (
    ("DGEMM, n = 1000", "dgemm NN", "n = 1000"),
    ("SGEMM, n = 1000", "sgemm NN", "n = 1000"),
    ("DGEMV, n = 1000", "dgemv N", "n = 1000"),
    ("DLSLRG, n = 1000", "dsolve", "n = 1000"),
    ("DLSARG, n = 300", "drefined solve", "n = 300"),
    ("DLINRG, n = 300", "dinverse", "n = 300"),
    ("complex transform of 1024", "DF2TCF", "N = 1024"),
    ("complex transform of 65536", "DF2TCF", "N = 65536"),
    ("real transform of 1024", "DF2TRF", "N = 1024"),
    ("DCSINT, 1000 points", "DCSINT", "1000 points"),
    ("DCSVAL at random places", "DCSVAL", "random, 1000 pieces"),
    ("DQDAGS, singular end", "DQDAGS", "end-point singularity"),
    ("DGAMMA, 2 to 10", "DGAMMA", "2 to 10"),
    ("DLNGAM, 2 to 10", "DLNGAM", "2 to 10"),
    ("DRNUN, Mersenne Twister", "DRNUN", "8 in calls of 1000"),
    ("DSVRGN, 1,000,000 doubles", "DSVRGN", "random 1000000"),
    ("DZREAL, a call of a cubic", "DZREAL", "a call, cubic"),
    ("DUVMIF, a call of a quartic", "DUVMIF", "a call, quartic"),
)
MARKS = {"ours": ("Orvel", "blue", 7, 2.5),
         "OpenBLAS": ("OpenBLAS", "orange", 5, 1.5), "BLIS": ("BLIS", "green", 9, 1.5),
         "FFTW": ("FFTW", "orange", 5, 1.5), "GSL": ("GSL", "green", 9, 1.5)}


# ---- measured --------------------------------------------------------------------------------------------


class Bench:
    """Seconds of an item by routine, case, who and repetition."""

    def __init__(self, path):
        run = json.loads(Path(path).read_text())
        self.times = defaultdict(lambda: defaultdict(dict))
        for b in run["benchmarks"]:
            if b["run_type"] == "iteration":
                routine, case, who = b["run_name"].split("|")
                self.times[routine, case][who][b["repetition_index"]] = 1 / b["items_per_second"]
        self.note = (f"{processor()}, one thread, {run['context']['date'][:10]}; "
                     f"medians of {run['benchmarks'][0]['repetitions']} interleaved runs")

    def median(self, routine, case, who):
        return statistics.median(self.times[routine, case][who].values())

    def best_peer(self, routine, case):
        """The peer with the smallest ratio of times, which is taken run by run, because machines have moods."""
        ours = self.times[routine, case]["ours"]
        ratios = {who: statistics.median(times[k] / ours[k] for k in ours)
                  for who, times in self.times[routine, case].items() if who != "ours"}
        return min(ratios.items(), key=lambda item: item[1])

    def sizes(self, routine):
        """Sizes of a routine's cases: n = 100, N = 1024."""
        found = {int(m[1]): case for name, case in list(self.times) if name == routine
                 if (m := re.fullmatch(r"[nN] = (\d+)", case))}
        return sorted(found.items())

    def rates(self, routine, who, work):
        """Lines "size Gflop/s"; work is the number of operations of a size."""
        rows = [(n, work(n) / self.median(routine, case, who) / 1e9) for n, case in self.sizes(routine)
                if who in self.times[routine, case]]
        if not rows:
            sys.exit(f"pictures.py: the bench has no row of {routine} by {who}")
        return rows


def processor():
    text = Path("/proc/cpuinfo").read_text()
    model = re.search(r"(?m)^model name\s*: (.*)$", text)
    name = re.sub(r"\((?:R|TM)\)|CPU| @.*", "", model[1]).strip() if model else "unknown processor"
    vectors = "AVX-512" if "avx512f" in text else "AVX2" if "avx2" in text else "SSE2"
    return f"{name} ({vectors})"


# ---- drawing ---------------------------------------------------------------------------------------------


def draw(name, height, commands, note):
    picture = PICTURES / f"{name}.svg"
    small_print = f'set label 99 "{note}" at screen 0.985, screen {10 / height:.4f} right font ",11" tc rgb "#666666"'
    script = (f'height = {height}; picture = "{picture}"; load "{ROOT}/examples/style.gnuplot"\n{small_print}\n'
              f"set bmargin at screen {102 / height:.4f}\n{commands}\n")
    done = subprocess.run(["gnuplot"], input=script, text=True, capture_output=True, cwd=ROOT)
    if done.returncode != 0 or "warning" in done.stderr:
        sys.exit(f"pictures.py: {name}: {done.stderr}")
    if picture.stat().st_size > LARGEST:
        sys.exit(f"pictures.py: {name}.svg is larger than {LARGEST} bytes")
    print(picture.relative_to(ROOT))


def block(name, rows):
    return f"${name} << END\n" + "\n".join(" ".join(map(str, row)) for row in rows) + "\nEND\n"


def curves(series):
    """Blocks of data, and the plot command of (label, colour, mark, width, rows); of other rows only the points."""
    blocks = "".join(block(f"curve{k}", rows) for k, (*_, rows) in enumerate(series))
    parts = []
    for k, (label, colour, mark, width, _) in enumerate(series):
        style = f"linespoints lw {width}" if width else "points"
        title = f"title '{label}'" if label else "notitle"
        parts.append(f"$curve{k} using 1:2 with {style} pt {mark} ps 0.8 lc rgb {colour} {title}")
    return blocks, "plot " + ", \\\n     ".join(parts)


def gemm(bench):
    commands = "set multiplot\nset logscale x\nset xrange [6:2600]\nset xtics (8, 32, 128, 512, 2000)\n" \
               'set xlabel "n"\nset key bottom right\nset yrange [0:*]\n'
    blocks = ""
    for k, routine in enumerate(("dgemm NN", "sgemm NN")):
        data, plot = curves([(*MARKS[who], bench.rates(routine, who, lambda n: 2 * n**3))
                             for who in ("ours", "OpenBLAS", "BLIS")])
        blocks += data.replace("$curve", f"$panel{k}curve")
        commands += (f"set size 0.5,1\nset origin {k / 2},0\nset title '{routine[:5].upper()}'\n"
                     f"{'set ylabel ' + repr('Gflop/s') if k == 0 else 'unset ylabel; unset label 99'}\n"
                     + plot.replace("$curve", f"$panel{k}curve") + "\n")
    draw("gemm", 420, blocks + commands + "unset multiplot", bench.note)


def solve(bench):
    def work(n):
        return 2 * n**3 / 3 + 2 * n**2

    data, plot = curves([("Orvel DLSLRG", "blue", 7, 2.5, bench.rates("dsolve", "ours", work)),
                         ("the same without the estimate of condition", "sky", 6, 1.5,
                          bench.rates("dsolve, no estimate", "ours", work)),
                         ("OpenBLAS DGETRF and DGETRS, which have none", "orange", 5, 1.5,
                          bench.rates("dsolve, no estimate", "OpenBLAS", work))])
    draw("solve", 460, data + 'set title "Solving a system of n equations"\nset logscale x\nset xlabel "n"\n'
         'set ylabel "Gflop/s of 2n^3/3 + 2n^2"\nset xrange [6:2600]\nset xtics (8, 16, 100, 300, 1000, 2000)\n'
         "set yrange [0:*]\nset key tmargin left vertical maxrows 3 Left reverse\n" + plot, bench.note)


def fft(bench):
    def work(n):
        return 5 * n * math.log2(n)

    series = []
    for who in ("ours", "FFTW", "GSL"):
        label, colour, mark, width = MARKS[who]
        rows = bench.rates("DF2TCF", who, work)
        series.append((label, colour, mark, width, [row for row in rows if row[0] & (row[0] - 1) == 0]))
        series.append(("", colour, mark, 0, [row for row in rows if row[0] & (row[0] - 1)]))
    data, plot = curves(series)
    draw("fft", 440, data + 'set title "Complex transforms of N doubles"\nset logscale x 2\nset xlabel '
         '"N; alone: 1000, 1200, 5040 and the prime 10007"\nset ylabel "Gflop/s of 5 N log_2 N"\n'
         "set xrange [12:1.5e6]\nset xtics ('16' 16, '128' 128, '1024' 1024, '8192' 8192, '65536' 65536, "
         "'1048576' 1048576)\nset yrange [0:*]\nset key top right\n" + plot, bench.note)


def speed(bench):
    rows = []
    for k, (label, routine, case) in enumerate(SPEED):
        if "ours" not in bench.times[routine, case] or len(bench.times[routine, case]) < 2:
            sys.exit(f"pictures.py: the bench has no row {routine}|{case} with a peer")
        who, ratio = bench.best_peer(routine, case)
        who = who.removesuffix(" mt")  # its Mersenne Twister
        rows.append((k, f"{ratio:.3f}", f'"{label}"', f'"{ratio:.2f}  {who}"'))
    last = len(SPEED)
    draw("speed", 640, block("bars", rows) + 'set title "Times as fast as the fastest peer"\n'
         f"set logscale x\nset xrange [0.3:16]\nset xtics (0.5, 1, 2, 4)\nset yrange [{last - 0.3}:-0.7]\n"
         "set lmargin 30\nset border 1\nset ytics scale 0\nset style fill solid 0.75 noborder\n"
         'set xlabel "time of the peer / time of Orvel"\n'
         f'set arrow from 1,{last - 0.3} to 1,-0.7 nohead lw 1.5 lc rgb "black" front\n'
         "plot $bars using 2:0:(1):2:($0-0.32):($0+0.32):($2 < 1 ? 0xd55e00 : 0x0072b2):ytic(3) \\\n"
         "     with boxxyerror lc rgb var, \\\n"
         "     $bars using ($2 > 1 ? $2 : 1):0:4 with labels left offset 0.7,0", bench.note)


def splines(data):
    picture = PICTURES / "splines.svg"
    subprocess.run(["gnuplot", "-e", f"data='{data}'; picture='{picture}'", "examples/splines/splines.gnuplot"],
                   check=True, cwd=ROOT)
    if picture.stat().st_size > LARGEST:
        sys.exit("pictures.py: splines.svg is too large")
    print(picture.relative_to(ROOT))


def main():
    bench = Bench(sys.argv[1])
    for picture in (gemm, solve, fft, speed):
        picture(bench)
    if len(sys.argv) > 2:
        splines(Path(sys.argv[2]).resolve())


if __name__ == "__main__":
    main()
