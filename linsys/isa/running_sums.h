// linsys/isa/running_sums.h - sums of products with more than the working precision, side by side in lanes
//
// Single members: products of floats are exact in double and are summed there. Double members: a product and
// its rounding error, and a sum and its rounding error, are doubles; the running sum is a pair (head, tail),
// made anew after each term, with an error of some 2^-104 of its size a term. Sources: T. Dekker, A
// floating-point technique for extending the available precision, 1971; T. Ogita, S. Rump and S. Oishi,
// Accurate sum and dot product, 2005. Everything here has internal linkage, as in rows.h.
#pragma once

#include "isa/two_doubles.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

namespace {

constexpr int L = isa::lanes<double>;
using Wide = isa::Wide<double>;

// L numbers as doubles.
template <class R>
inline Wide widened(const R* p)
{
    return isa::widened<L>(p);
}

// Of one double or of L side by side.
template <int W>
struct Plain {
    using V = isa::Vector<double, W>;
    V sum;

    static Plain from(V b) { return {b}; }
    void add_product(V a, V x) { sum += a * x; }
    void add(const Plain& other) { sum += other.sum; }
    V value() const { return sum; }
};

template <int W>
struct Pair {
    using V = isa::Vector<double, W>;
    V head, tail;

    static Pair from(V b) { return {b, b - b}; }

    void add_product(V a, V x)
    {
        const auto product = isa::two_product<false>(a, x);
        add({product.head, product.tail});
    }

    void add(const Pair& other)
    {
        const auto sum = isa::two_sum(head, other.head);
        const V rest = tail + other.tail + sum.tail;
        head = isa::held(sum.head + rest);
        tail = rest - (head - sum.head);
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

// Real and imaginary parts exchanged.
inline Wide exchanged(Wide pairs) { return isa::exchanged<double, L>(pairs); }

}  // namespace

}  // namespace orvel::linsys
