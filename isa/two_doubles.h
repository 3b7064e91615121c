// isa/two_doubles.h - sums and products as a double and its rounding error
//
// Sources: D. Knuth, The Art of Computer Programming, volume 2, 1969, section 4.2.2 (sums); T. Dekker, A
// floating-point technique for extending the available precision, 1971 (products). V is double or a vector of
// doubles. Hot loops include the file: everything is local to them.
#pragma once

#include "isa/vector.h"

namespace orvel::isa {

namespace {

template <class V>
struct TwoDoubles {
    V head, tail;
};

// head is the rounded sum, tail its error.
template <class V>
inline TwoDoubles<V> two_sum(V a, V b)
{
    const V sum = held(a + b), part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// 26 leading bits and the rest. |a| < 2^990.
template <class V>
inline TwoDoubles<V> split(V a)
{
    const V c = held(134217729.0 * a);  // 2^27 + 1
    const V head = held(c - held(c - a));
    return {head, a - head};
}

// The same for all sizes: numbers that the factor would make infinite are split as smaller ones.
template <class V>
inline TwoDoubles<V> split_large(V a)
{
    const V large = a < 0 ? -a : a, one = V{} + 1.0;
    const auto is_large = large > 0x1p990;
    const V down = is_large ? one * 0x1p-40 : one, up = is_large ? one * 0x1p40 : one;
    const TwoDoubles<V> s = split<V>(a * down);
    return {s.head * up, s.tail * up};
}

// head is the rounded product, tail its error, as long as that is in the range of the normal numbers.
// `moderate` tells that both factors are below 2^990.
template <bool moderate, class V>
inline TwoDoubles<V> two_product(V a, V b)
{
    const V product = held(a * b);
    // Every machine of this kind has it, so files that contract nothing come here, too.
#ifdef __ARM_FEATURE_FMA
    if constexpr (sizeof(V) == sizeof(double)) return {product, __builtin_fma(a, b, -product)};
#endif
#if defined(__FMA__) || defined(__ARM_FEATURE_FMA)
    // With another copy of a: as the same product the compiler would take the rounded one.
    return {product, held(a) * b - product};
#else
    const auto x = moderate ? split(a) : split_large(a), y = moderate ? split(b) : split_large(b);
    return {product, x.tail * y.tail - (((product - x.head * y.head) - x.tail * y.head) - x.head * y.tail)};
#endif
}

}  // namespace

}  // namespace orvel::isa
