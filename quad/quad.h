// quad/quad.h - what the two integrators share: the lists of a front, the results of a core, common messages
#pragma once

#include <algorithm>

#include "quad/pieces.h"

namespace orvel::quad {

// The result codes of the cores.
enum Code : int32_t {
    reached = 0,
    too_many_pieces = 1,
    roundoff = 2,
    bad_behaviour = 3,
    bad_extrapolation = 4,
    divergent = 5,
    no_room = 6,
    no_storage = 7,  // for the lists of a front
};

template <class T>
struct Tolerance {
    T absolute, relative;

    T bound(T result) const { return std::max(absolute, relative * std::abs(result)); }
};

template <class T>
struct Integral {
    T result, error;
    int32_t code;
};

template <class Me>
void no_lists(Me& me, int32_t code)
{
    me.no_storage(
        code,
        "The required storage cannot be allocated.  The workspace is based on MAXSUB, where MAXSUB = %(I1).",
        {i(1, front_pieces)});
}

// Evaluations of a rule of `points` points that gave `pieces` pieces.
inline int32_t evaluations(int32_t points, int32_t pieces)
{
    return static_cast<int32_t>(std::clamp<int64_t>(points * (2 * int64_t{pieces} - 1), 0, INT32_MAX));
}

template <class T>
double wide(T x)
{
    return static_cast<double>(x);
}

template <class Me, class T>
[[gnu::cold, gnu::noinline]] void refuse_tolerance(Me& me, int32_t code, T errabs, T errrel)
{
    if (errabs < T(0))
        me.post(terminal, code, "The absolute error desired ERRABS = %(R1).  It must be at least zero.",
                {r(1, wide(errabs))});
    if (errrel < T(0))
        me.post(terminal, code + 1, "The relative error desired ERRREL = %(R1).  It must be at least zero.",
                {r(1, wide(errrel))});
    if (errabs == T(0) && errrel == T(0))
        me.post(
            terminal, code + 2,
            "The error tolerance arguments ERRABS and ERRREL are both equal to zero.  At least one of them must be greater than zero.");
    if (errrel >= T(1))
        me.post(
            terminal, code + 3,
            "The relative error desired ERRREL = %(R1).  When ERRREL is greater than or equal to one, zero can always be returned as an answer.",
            {r(1, wide(errrel))});
}

// TERMINAL errors of the arguments that both workers have; `code` is that of the first.
template <class Me, class T>
inline void check_tolerance(Me& me, int32_t code, T errabs, T errrel)
{
    const bool good =
        !(errabs < T(0)) && !(errrel < T(0)) && !(errrel >= T(1)) && !(errabs == T(0) && errrel == T(0));
    if (!good) [[unlikely]]
        refuse_tolerance(me, code, errabs, errrel);
}

template <class Me, class T>
void warn_of_bad_behaviour(Me& me, const Pieces<T>& pieces)
{
    me.post(
        warning, 3,
        "Precision is degraded due to too fine a subdivision relative to the requested tolerance.  This may be due to bad integrand behavior in the interval (%(R1),%(R2)).  Higher precision may alleviate this problem.",
        {r(1, wide(pieces.lo_of_largest_error())), r(2, wide(pieces.hi_of_largest_error()))});
}

}  // namespace orvel::quad
