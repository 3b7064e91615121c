// linsys/isa/rows.h - vectors of rows of a panel, for one instruction-set level
//
// Everything here has internal linkage: the file is included by objects that are compiled for different
// levels.
#pragma once

#include "kernels/isa/lanes.h"
#include "kernels/isa/tile.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

namespace {

using kernels::held;
using kernels::lanes;
using kernels::Vector;
using kernels::WholeOf;

template <class R>
using Lane = Vector<R, lanes<R>>;

// Whole numbers in lanes as wide as those of R.
template <class R>
struct WholeLane;
template <>
struct WholeLane<float> {
    typedef int32_t type __attribute__((vector_size(kernels::vector_bytes)));
};
template <>
struct WholeLane<double> {
    typedef int64_t type __attribute__((vector_size(kernels::vector_bytes)));
};
template <class R>
using Whole = typename WholeLane<R>::type;

template <class R>
inline Lane<R>& at(R* p)
{
    return *reinterpret_cast<Lane<R>*>(p);
}
template <class R>
inline const Lane<R>& at(const R* p)
{
    return *reinterpret_cast<const Lane<R>*>(p);
}

// A vector of rows, and one number; imaginary parts are not touched in real panels.
template <class R, bool Complex>
struct Rows {
    Lane<R> re, im;

    static Rows load(const R* p, int64_t half) { return {at(p), Complex ? at(p + half) : Lane<R>{}}; }
    void store(R* p, int64_t half) const
    {
        at(p) = re;
        if constexpr (Complex) at(p + half) = im;
    }
    // += m * u
    template <class U>
    void add(const Rows& m, const U& u_re, const U& u_im)
    {
        re += m.re * u_re;
        if constexpr (Complex) {
            im += m.im * u_re;
            re -= m.im * u_im;
            im += m.re * u_im;
        }
    }
    // What is left of a where the rows are not chosen.
    template <class Mask>
    static Rows choose(Mask chosen, const Rows& a, const Rows& b)
    {
        return {chosen ? a.re : b.re, Complex ? (chosen ? a.im : b.im) : Lane<R>{}};
    }
};

template <class R>
inline Whole<R> lane_numbers()
{
    Whole<R> lane = {};
    for (int k = 0; k < lanes<R>; ++k) lane[k] = static_cast<typename WholeOf<R>::type>(k);
    return lane;
}

// Rows within a vector that lie below row t of it.
template <class R>
inline Whole<R> below(int64_t t)
{
    return lane_numbers<R>() > static_cast<typename WholeOf<R>::type>(t);
}

template <class R>
inline Lane<R> broadcast(Lane<R> v, int t)
{
    const Whole<R> order = Whole<R>{} + static_cast<typename WholeOf<R>::type>(t);
    return __builtin_shuffle(v, order);
}

template <class R>
inline Lane<R> magnitude(Lane<R> x)
{
    return kernels::Lanes<R, kernels::vector_bytes>::magnitude(x);
}

}  // namespace

}  // namespace orvel::linsys
