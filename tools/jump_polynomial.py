#!/usr/bin/env python3
# tools/jump_polynomial.py - print random/jump_polynomial.h: how far apart the sequences of the shift register are
#
#   /usr/bin/python3 tools/jump_polynomial.py > random/jump_polynomial.h
#
# A test runs this program again and compares its output with the file that is checked in.
DEGREE, TAP = 521, 489
MODULUS = 1 << DEGREE | 1 << TAP | 1
EXPONENT = 2**520 + (4**260 - 1) // 3


def product(a, b):
    """Of polynomials over two elements, whose bits are their coefficients."""
    result = 0
    while b:
        if b & 1:
            result ^= a
        a <<= 1
        if a >> DEGREE & 1:
            a ^= MODULUS
        b >>= 1
    return result


def power(exponent):
    """x to the exponent."""
    result, square = 1, 2
    while exponent:
        if exponent & 1:
            result = product(result, square)
        square = product(square, square)
        exponent >>= 1
    return result


def main():
    polynomial = power(EXPONENT)
    words = [polynomial >> 64 * k & (1 << 64) - 1 for k in range(DEGREE // 64 + 1)]
    print("""// random/jump_polynomial.h - x^E modulo x^521 + x^489 + 1, E = 2^520 + (4^260 - 1) / 3, from the lowest
// coefficient; printed by tools/jump_polynomial.py
// clang-format off
#pragma once

#include <array>
#include <cstdint>

namespace orvel::random {

inline constexpr std::array<uint64_t, %d> jump_polynomial = {""" % len(words))
    for word in words:
        print(f"    0x{word:016x},")
    print("""};

}  // namespace orvel::random""")


main()
