// interp/many_points.cpp - CSVALS and CSDERS: values and derivatives of a spline at many points
//
// The points are taken in blocks. While they stay in a piece or go on to the next one, as ascending points
// do, that piece is known. The others of a block are searched for together, one step of all bisections after
// the other, so that their loads do not wait for each other.
#include <algorithm>

#include "frame/export.h"
#include "interp/pieces.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

constexpr int block = 16;

// The pieces of some points, from 0, as bisect() finds them.
template <class T>
void bisect_all(const T* brkpt, int64_t pieces, const T* x, int count, int64_t* found)
{
    std::fill_n(found, count, 0);
    for (int64_t left = pieces; left > 1;) {
        const int64_t half = left / 2;
        for (int j = 0; j < count; ++j) {
            const int64_t middle = found[j] + half;
            found[j] = __builtin_expect_with_probability(brkpt[middle] <= x[j], 1, 0.5) ? middle : found[j];
        }
        left -= half;
    }
}

// `piece` is that of the point before.
template <class T>
void find_pieces(const T* brkpt, int64_t pieces, const T* x, int count, int64_t piece, int64_t* found)
{
    const auto is_in = [&](int64_t k, T at) { return is_within(brkpt, pieces, k, k + 1, at); };
    int known = 0;
    for (; known < count; ++known) {
        if (!is_in(piece, x[known])) {
            if (piece + 1 == pieces || !is_in(piece + 1, x[known])) break;
            ++piece;
        }
        found[known] = piece;
    }
    if (known < count) bisect_all(brkpt, pieces, x + known, count - known, found + known);
}

template <class T, int32_t Derivative>
void evaluate(int64_t n, const T* x, int32_t ideriv, int64_t pieces, const T* brkpt, const T* c, T* value)
{
    constexpr int32_t order = 4;
    const int32_t derivative = Derivative < 0 ? ideriv : Derivative;
    int64_t found[block] = {};
    for (int64_t first = 0; first < n; first += block) {
        const int count = static_cast<int>(std::min<int64_t>(block, n - first));
        T here[block];  // the values may be written where the points are
        std::copy_n(x + first, count, here);
        find_pieces(brkpt, pieces, here, count, first == 0 ? 0 : found[block - 1], found);
        for (int j = 0; j < count; ++j) __builtin_prefetch(c + found[j] * order);
        for (int j = 0; j < count; ++j)
            value[first + j] = taylor(c + found[j] * order, order, derivative, here[j] - brkpt[found[j]]);
    }
}

template <class Frame>
void check_points(Frame& me, int32_t nx)
{
    if (nx < 1)
        me.post(terminal, 1, "The number of points must be at least 1 while NX = %(I1) is given.",
                {i(1, nx)});
}

template <class T>
void csvals(const int32_t* nx, const T* xvec, const int32_t* nintv, const T* brkpt, const T* spcoef, T* value)
{
    Routine<T, "CSVALS"> me;
    check_points(me, *nx);
    check_pieces(me, 2, *nintv);
    if (me.failed()) return;
    evaluate<T, 0>(*nx, xvec, 0, *nintv, brkpt, spcoef, value);
}

template <class T>
void csders(const int32_t* ideriv, const int32_t* nx, const T* xvec, const int32_t* nintv, const T* brkpt,
            const T* spcoef, T* value)
{
    Routine<T, "CSDERS"> me;
    check_points(me, *nx);
    check_pieces(me, 2, *nintv);
    check_derivative(me, 3, *ideriv);
    if (me.failed()) return;
    if (*ideriv > 3)
        std::fill_n(value, *nx, T(0));
    else
        evaluate<T, -1>(*nx, xvec, *ideriv, *nintv, brkpt, spcoef, value);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT_REALS(CSVALS, csvals_, DCSVALS, dcsvals_, 6, orvel::interp::csvals);
ORVEL_EXPORT_REALS(CSDERS, csders_, DCSDERS, dcsders_, 7, orvel::interp::csders);
