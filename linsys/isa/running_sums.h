// linsys/isa/running_sums.h - sums of products with more than the working precision, side by side in lanes
//
// Single members: products of floats are exact in double and are summed there. Double members: a product and
// its rounding error, and a sum and its rounding error, are doubles; the running sum is a pair (head, tail),
// made anew after each term, with an error of some 2^-104 of its size a term. Sources: T. Dekker, A
// floating-point technique for extending the available precision, 1971; T. Ogita, S. Rump and S. Oishi,
// Accurate sum and dot product, 2005. Everything here has internal linkage, as in rows.h.
#pragma once

#include "kernels/isa/lanes.h"
#include "kernels/isa/tile.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

namespace {

using kernels::held;

constexpr int L = kernels::lanes<double>;
using Lane = kernels::Vector<double, L>;
typedef float Floats __attribute__((vector_size(L * sizeof(float)), aligned(4), may_alias));

inline const Lane& at(const double* p) { return *reinterpret_cast<const Lane*>(p); }
inline Lane widened(const double* p) { return at(p); }
inline Lane widened(const float* p)
{
    return __builtin_convertvector(*reinterpret_cast<const Floats*>(p), Lane);
}

// Of one double or of L side by side.
template <int W>
struct Plain {
    using V = kernels::Vector<double, W>;
    V sum;

    static Plain from(V b) { return {b}; }
    void add_product(V a, V x) { sum += a * x; }
    void add(const Plain& other) { sum += other.sum; }
    V value() const { return sum; }
};

// Numbers that the factor would make infinite are split as smaller ones.
template <class V>
inline void split(V a, V& high, V& low)
{
    const V large = a < 0 ? -a : a;
    const auto is_large = large > 0x1p990;
    const V one = V{} + 1.0, down = is_large ? one * 0x1p-40 : one, up = is_large ? one * 0x1p40 : one;
    const V scaled = a * down, c = held(134217729.0 * scaled);
    high = held(c - held(c - scaled));
    low = (scaled - high) * up;
    high *= up;
}

template <int W>
struct Pair {
    using V = kernels::Vector<double, W>;
    V head, tail;

    static Pair from(V b) { return {b, b - b}; }

    void add_product(V a, V x)
    {
        const V product = held(a * x);
#ifdef __FMA__
        // Of another copy of a: as the same product the compiler would take the rounded one.
        const V error = held(a) * x - product;
#else
        V a_high, a_low, x_high, x_low;
        split(a, a_high, a_low);
        split(x, x_high, x_low);
        const V error = a_low * x_low - (((product - a_high * x_high) - a_low * x_high) - a_high * x_low);
#endif
        add(Pair{product, error});
    }

    void add(const Pair& other)
    {
        const V sum = held(head + other.head), part = sum - head;
        const V error = (head - (sum - part)) + (other.head - part);
        const V rest = tail + other.tail + error;
        head = held(sum + rest);
        tail = rest - (head - sum);
    }

    V value() const { return head + tail; }
};

// The total of the lanes, and of the products behind them.
template <template <int> class Sum, class R>
inline double lanes_and_rest(Sum<1> total, const Sum<L>& sum, int64_t first, int64_t m, const R* a,
                             const R* x)
{
    if constexpr (sizeof(Sum<1>) == sizeof(double)) {
        for (int k = 0; k < L; ++k) total.add({sum.sum[k]});
    } else {
        for (int k = 0; k < L; ++k) total.add({sum.head[k], sum.tail[k]});
    }
    for (int64_t i = first; i < m; ++i)
        total.add_product(static_cast<double>(a[i]), static_cast<double>(x[i]));
    return total.value();
}

template <class R>
inline Lane swapped_pairs(const R* p)
{
    return kernels::swapped<double, L>(widened(p));
}

}  // namespace

}  // namespace orvel::linsys
