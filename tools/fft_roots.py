#!/usr/bin/env python3
# tools/fft_roots.py - prints fft/isa/root_table.h: roots of unity, each part in two doubles
import mpmath

mpmath.mp.prec = 200
CIRCLE = 256


def parts(x):
    high = float(x)
    return high.hex(), float(x - mpmath.mpf(high)).hex()


def main():
    print("// fft/isa/root_table.h - roots of unity, in two doubles each; printed by tools/fft_roots.py")
    print("#pragma once\n")
    print("namespace orvel::fft {\nnamespace {\n")
    print(f"constexpr int circle = {CIRCLE};\n")
    print("// The cosine and what rounding it left, the sine and what rounding it left.")
    print("constexpr double circle_roots[circle][4] = {")
    for k in range(CIRCLE):
        angle = 2 * mpmath.pi * k / CIRCLE
        cosine = 0 if k % 128 == 64 else mpmath.cos(angle)
        sine = 0 if k % 128 == 0 else mpmath.sin(angle)
        print("    {" + ", ".join(parts(mpmath.mpf(cosine)) + parts(mpmath.mpf(sine))) + "},")
    print("};\n")
    print("}  // namespace\n}  // namespace orvel::fft")


main()
