#!/usr/bin/env python3
# tools/figures.py - print the sentences of public headers that have computed figures, and look for them there
#
#   /usr/bin/python3 tools/figures.py
#
# The last status is that of a sentence that a header does not have. Accuracies are printed by tools/accuracy.
import math
import pathlib
import re
import struct
import sys

from mpmath import mp, mpf, exp, factorial, log

mp.dps = 40
MODULUS, WORDS = 2**31 - 1, 2**32


def single(x):
    return struct.unpack("f", struct.pack("f", x))[0]


def from_largest(count, holds):
    """How many of 0..count - 1 satisfy a condition that holds from some place on."""
    low, high = 0, count
    while low < high:
        middle = (low + high) // 2
        low, high = (low, middle) if holds(middle) else (middle + 1, high)
    return count - low


def rounded(x):
    """One digit, as in 3e7."""
    return f"{x:.0e}".replace("e+0", "e").replace("e+", "e")


def random_figures():
    shuffled = from_largest(MODULUS, lambda s: single(s * (1 / MODULUS)) == 1)
    yield f"rounds the {shuffled} largest states to 1, once in {rounded(MODULUS // shuffled)} entries"
    twister32 = from_largest(WORDS, lambda y: single((y + 0.5) / (WORDS - 1.0)) == 1)
    twister64 = from_largest(2**53, lambda y: single(y * 2.0**-53) == 1)
    often = {rounded(WORDS // twister32), rounded(2**53 // twister64)}
    yield f"The single 1 of options 8 and 9 comes once in {' or '.join(often)} numbers"
    yield f"0 < r <= 1 + {float((WORDS - mpf(1) / 2) / (WORDS - 1) - 1):.1e}"
    above = from_largest(WORDS, lambda y: (y + 0.5) / (WORDS - 1.0) > 1)
    rarest = [2**31, 2**31, WORDS // above, 2**53]  # words, words, words and bits
    yield f"the 0 of option 7, its double 1, the double above 1 of option 8 and the 0 of option 9 once in {rounded(min(rarest))} or more"
    outside = [word for word in (0, 1, MODULUS - 1, MODULUS) if not 1 <= word <= MODULUS - 1]
    yield f"once in 2^{int(math.log2(2**31 // len(outside)))} words, by leaving option 7"
    empty = []
    for seed in (0, -2**31, -2**30, 2**30, -2**29, 2**29):
        x, bits = seed, 0
        for _ in range(521):
            x = x * 69069 % WORDS
            bits += 0 < x < 2**31
        if bits == 0:
            empty.append("0" if seed == 0 else f"-2^{int(math.log2(-seed))}")
    yield f"a seed of {empty[0]}, {empty[1]} or {empty[2]} counts as 1"


def last_finite_reciprocal(digits, largest):
    """Beside -n the reciprocal is n! times the distance, which is one spacing of the numbers there."""
    n = 11
    while factorial(n) * mpf(2)**(math.frexp(n)[1] - digits) < mpf(2)**largest:
        n += 1
    return n - 1


def special_figures():
    yield f"down to -{last_finite_reciprocal(24, 128)} (DGAMR: -{last_finite_reciprocal(53, 1024)})"
    yield f"{float(exp(log(mpf(2)**-126) + mpf(1) / 100) * 2**126):.2f} AMACH(1)"


def main():
    folder = pathlib.Path(__file__).parent.parent / "include" / "orvel"
    missing = 0
    for header, figures in ("random.h", random_figures()), ("special.h", special_figures()):
        text = re.sub(r"\s+", " ", re.sub(r"\n \*", " ", (folder / header).read_text(encoding="utf-8")))
        for sentence in figures:
            found = sentence in text
            print(f"{header}: {sentence}{'' if found else '   (not there)'}")
            missing += not found
    sys.exit(missing)


main()
