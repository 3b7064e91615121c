"""tools/accuracy - measures the errors of the library and prints docs/accuracy.md

    /usr/bin/python3 tools/accuracy build/release/liborvel.so > docs/accuracy.md
    /usr/bin/python3 tools/accuracy build/release/liborvel.so docs/accuracy.md

Printing takes some minutes, and compares with numpy, SciPy and what else is there of glibc, GSL, FFTW and OpenBLAS. With
the name of a record, a part of the measurements is made again with mpmath alone, and no figure may exceed the recorded
one by more than its column allows. Seeds are fixed, so that a machine prints the same figures again. --only=splines
measures one family, --level=x86-64 on that instruction-set level.
"""
import platform
import sys

from mpmath import mp

import quadrature
import searches
import solvers
import special
import splines
import sums
import transforms
from library import Library
from tables import read, wrapped

FAMILIES = (special, transforms, sums, splines, solvers, quadrature, searches)
PICTURES = {special: "gamma", transforms: "transform_errors", quadrature: "quadrature"}


def preamble(peers):
    """What holds for all tables."""
    print("# Accuracy\n")
    print("Measured errors of the library, beside those of others on the same data, printed by `tools/accuracy`:\n")
    print("    /usr/bin/python3 tools/accuracy build/release/liborvel.so > docs/accuracy.md\n")
    print(wrapped(
        "A test measures a part of it again and fails where a figure is beyond the one that stands here. RMS is the root "
        "mean square; *eps* is the distance from 1 to the next number, 2^-52 in double precision and 2^-23 in single. "
        f"The figures are of one {platform.machine()} machine; others are {peers.versions}, with the OpenBLAS and the "
        "LAPACK that these call.") + "\n")


def compare(families, library, path):
    failed = measured = 0
    tables = [table for family in families for table in family.tables(library, None)]
    record = read(path, tables)
    for table in tables:
        table.record = record
        compared, complaints = table.worse()
        measured += compared
        failed += len(complaints) + (compared == 0)
        print(f"{table.title}: {compared} figures" if compared else f"{table.title}: nothing compared", flush=True)
        for complaint in complaints:
            print(f"    {complaint}")
    print(f"{measured} figures measured, {failed} of them worse than recorded")
    sys.exit(failed > 0)


def main():
    mp.dps = 40
    words = [word for word in sys.argv[1:] if not word.startswith("--")]
    options = dict(word[2:].split("=") for word in sys.argv[1:] if word.startswith("--"))
    families = [f for f in FAMILIES if options.get("only", f.__name__) == f.__name__]
    library = Library(words[0], options.get("level"))
    if len(words) > 1:
        compare(families, library, words[1])
    from peers import Peers
    peers = Peers()
    preamble(peers)
    for family in families:
        print(f"## {family.TITLE}\n")
        if family in PICTURES:
            print(f"![{family.TITLE}](pictures/{PICTURES[family]}.svg)\n")
        for table in family.tables(library, peers):
            table.print()
        if family.NOTES:
            print("### Where others are better, and why\n")
            print("\n".join(wrapped(f"- {note}", "  ") for note in family.NOTES) + "\n")


main()
