#!/usr/bin/env python3
# tools/fft_roots.py - prints fft/isa/root_table.h: roots of unity, each part in two doubles
import mpmath

mpmath.mp.prec = 200
CIRCLE = 256
FINE = 16  # parts of a 256th


def parts(x):
    high = float(x)
    return high.hex(), float(x - mpmath.mpf(high)).hex()


def row(k, n):
    angle = 2 * mpmath.pi * k / n
    cosine = 0 if 2 * k % n != 0 and 4 * k % n == 0 else mpmath.cos(angle)
    sine = 0 if 2 * k % n == 0 else mpmath.sin(angle)
    print("    {" + ", ".join(parts(mpmath.mpf(cosine)) + parts(mpmath.mpf(sine))) + "},")


def main():
    print("// fft/isa/root_table.h - roots of unity, in two doubles each; printed by tools/fft_roots.py")
    print("#pragma once\n")
    print("namespace orvel::fft {\nnamespace {\n")
    print(f"constexpr int circle = {CIRCLE};\n")
    print("// The cosine and what rounding it left, the sine and what rounding it left.")
    print("// Of the first eighth of the circle, its end included.")
    print("constexpr double eighth_roots[circle / 8 + 1][4] = {")
    for k in range(CIRCLE // 8 + 1):
        row(k, CIRCLE)
    print("};\n")
    print(f"constexpr int fine_circle = {CIRCLE * FINE};\n")
    print("// The roots of it up to the next one of the other circle.")
    print("constexpr double fine_roots[fine_circle / circle][4] = {")
    for k in range(FINE):
        row(k, CIRCLE * FINE)
    print("};\n")
    print("}  // namespace\n}  // namespace orvel::fft")


main()
