// interp/isa/scale.h - the scale of a number, for formulas whose products would leave the range
//
// Objects of every level include it: everything is in an unnamed namespace.
#pragma once

#include <stdint.h>

namespace orvel::interp {

namespace {

template <class T>
struct Format;
template <>
struct Format<float> {
    using Bits = uint32_t;
    static constexpr Bits digits = 23, bias = 127;
};
template <>
struct Format<double> {
    using Bits = uint64_t;
    static constexpr Bits digits = 52, bias = 1023;
};

// 2^-e for v >= 0 of exponent e, so that products with it are exact and that with v is in [1, 2). Exponents
// stop eight short of the ends of the range.
template <class T>
inline T unit(T v)
{
    using F = Format<T>;
    using Bits = typename F::Bits;
    constexpr Bits least = 8, most = 2 * F::bias - 8;
    Bits exponent = __builtin_bit_cast(Bits, v) >> F::digits;
    exponent = exponent < least ? least : exponent;
    exponent = exponent > most ? most : exponent;
    return __builtin_bit_cast(T, static_cast<Bits>((2 * F::bias - exponent) << F::digits));
}

// Sums of a few slopes stay in range when each is taken by this part of it.
template <class T>
inline constexpr T part = T(1) / 64;

}  // namespace

}  // namespace orvel::interp
