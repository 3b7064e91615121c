// linsys/isa/rows.h - vectors of rows of a panel, for one instruction-set level
//
// Everything here has internal linkage: the file is included by objects that are compiled for different
// levels.
#pragma once

#include "isa/vector.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

namespace {

using isa::broadcast;
using isa::held;
using isa::lanes;
using isa::Wide;
using isa::wide;

template <class R>
using Whole = isa::Integers<R, lanes<R>>;

// A vector of rows, and one number; imaginary parts are not touched in real panels.
template <class R, bool Complex>
struct Rows {
    Wide<R> re, im;

    static Rows load(const R* p, int64_t half) { return {wide(p), Complex ? wide(p + half) : Wide<R>{}}; }
    void store(R* p, int64_t half) const
    {
        wide(p) = re;
        if constexpr (Complex) wide(p + half) = im;
    }
    // += m * u
    template <class U>
    void add(const Rows& m, U u_re, U u_im)
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
        return {chosen ? a.re : b.re, Complex ? (chosen ? a.im : b.im) : Wide<R>{}};
    }
};

template <class R>
inline Whole<R> lane_numbers()
{
    return isa::numbered<R, lanes<R>>();
}

// Rows within a vector that lie below row t of it.
template <class R>
inline Whole<R> below(int64_t t)
{
    return lane_numbers<R>() > static_cast<isa::Integer<R>>(t);
}

template <class R>
inline Wide<R> magnitude(Wide<R> x)
{
    return isa::magnitude<R, lanes<R>>(x);
}

}  // namespace

}  // namespace orvel::linsys
