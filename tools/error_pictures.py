#!/usr/bin/env python3
"""tools/error_pictures.py LIBRARY - draws the pictures of docs/accuracy.md with gnuplot

    /usr/bin/python3 tools/error_pictures.py build/release/liborvel.so

Figures come from docs/accuracy.md; the integrals, of which it has only sums, are computed again by LIBRARY.
"""
import sys
from collections import defaultdict
from pathlib import Path

from pictures import ROOT, block, curves, draw

sys.path.insert(0, str(Path(__file__).parent / "accuracy"))
from integrals import all_integrals
from library import Library
from quadrature import integrated
from transforms import PRIMES

TOLERANCE = 1e-10


def rows_of(title):
    """The cells of a table, the head aside."""
    text = (ROOT / "docs/accuracy.md").read_text()
    section = text.split(f"### {title}\n", 1)[1].split("\n#", 1)[0]
    return [[cell.strip(" `") for cell in line.strip("|").split("|")] for line in section.split("\n") if line.startswith("| ")][1:]


def gamma():
    groups = defaultdict(list)
    for routine, region, *figures in rows_of("Gamma functions, double precision"):
        if routine != "D9LGMC":
            ours, _, peer = figures[:3]
            groups[routine].append((f'"{region}"', ours, peer if float(peer) < 9 else "NaN", 8.9 if float(peer) >= 9 else "NaN"))
    singles = max(float(row[2]) for row in rows_of("Gamma functions, single precision"))
    rows = [row for name, regions in groups.items() for row in [(f'"{{/:Bold {name}}}"', *["NaN"] * 3), *regions]]
    draw("gamma", 900, block("rows", rows) + 'set title "Largest errors of the gamma functions"\n'
         f'set xlabel "units in the last place"\n'
         f"set lmargin 27\nset xrange [0:9]\nset yrange [{len(rows) - 0.5}:-0.7]\n"
         "set border 1\nset ytics scale 0 font ',12'\n"
         "set grid y lc rgb '#dddddd'\nset key top right\n"
         "plot $rows using 2:0:ytic(1) with points pt 7 ps 0.8 lc rgb blue title 'Orvel', \\\n"
         "     $rows using 3:0 with points pt 5 ps 0.7 lc rgb orange title 'best of others', \\\n"
         "     $rows using 4:0 with points pt 9 ps 0.8 lc rgb orange title 'beyond 100'",
         f"10,000 random arguments a region, against 40 digits; in single precision {singles:.2f} at most")


def transforms():
    columns = ("Orvel", "blue", 7, 2.5), ("pocketfft", "orange", 5, 1.5), ("FFTW", "green", 9, 1.5)
    rows = rows_of("`DFFTCF` by length")
    series = []
    for (label, colour, mark, width), column in zip(columns, (2, 3, 4)):
        points = [(int(row[0]), row[column]) for row in rows]
        series.append((label, colour, mark, width, [p for p in points if p[0] not in PRIMES]))
        series.append(("", colour, mark, 0, [p for p in points if p[0] in PRIMES]))
    data, plot = curves(series)
    draw("transform_errors", 440, data + 'set title "Errors of complex transforms of N doubles"\nset logscale x 2\n'
         'set xlabel "N; alone: the primes 7 to 65537"\nset ylabel "relative error / eps, root mean square"\n'
         "set xrange [6:180000]\nset xtics ('8' 8, '32' 32, '128' 128, '512' 512, '2048' 2048, '8192' 8192, "
         "'32768' 32768, '131072' 131072)\nset yrange [0:*]\nset key top left\n" + plot,
         "random sequences, against longer arithmetic")


MARKS = {"smooth": ("blue", 7), "oscillating": ("sky", 6), "singular ends": ("green", 9), "singular inside": ("green", 8),
         "peaks": ("orange", 5), "jumps": ("orange", 4), "kinks": ("'#666666'", 2)}


def quadrature(library):
    parts, blocks = [], []
    for k, (family, integrals) in enumerate(all_integrals().items()):
        rows = []
        for integral in integrals:
            outcome, size = integrated(library, "DQDAGS", integral, TOLERANCE), float(abs(integral.value))
            rows.append((f"{max(outcome.error / size, 1e-17):.1e}", f"{max(outcome.estimate / size, 1e-17):.1e}"))
        colour, mark = MARKS[family]
        blocks.append(block(f"family{k}", rows))
        parts.append(f"$family{k} using 1:2 with points pt {mark} ps 0.7 lc rgb {colour} title '{family}'")
    draw("quadrature", 560, "".join(blocks) + 'set title "200 integrals by DQDAGS, relative tolerance 1e-10"\n'
         'set logscale xy\nset format xy "10^{%T}"\nset xlabel "true relative error; 10^{-17} where there is none"\n'
         'set ylabel "ESTERR, relative"\n'
         "set xrange [5e-18:10]\nset yrange [5e-18:10]\nset xtics 1e4\nset ytics 1e4\nset key outside right top Left reverse\n"
         "plot x with lines lw 1 lc rgb '#999999' title 'equal', \\\n     " + ", \\\n     ".join(parts),
         "below the line the error is larger than its estimate")


def main():
    gamma()
    transforms()
    quadrature(Library(sys.argv[1]))


if __name__ == "__main__":
    main()
