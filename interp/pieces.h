// interp/pieces.h - the pieces of a piecewise polynomial: search, value, checks
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/routine.h"

namespace orvel::interp {

// A condition as a number: the compiler would jump on its parts.
inline int64_t number(bool condition)
{
    int64_t value = condition;
    asm("" : "+r"(value));
    return value;
}

// Whether x is in the pieces first to last - 1, of which the outermost serve everything beyond.
template <class T>
inline bool is_within(const T* brkpt, int64_t pieces, int64_t first, int64_t last, T x)
{
    const int64_t from = number(first == 0) | number(x >= brkpt[first]);
    const int64_t below = number(last == pieces) | number(x < brkpt[std::min(last, pieces - 1)]);
    return (from & below) != 0;
}

// The last of the pieces first to first + count - 1 that begins at x or before; the first one for others.
template <class T>
inline int64_t bisect(const T* brkpt, int64_t first, int64_t count, T x)
{
    const T* begin = brkpt + first;
    while (count > 1) {
        const int64_t half = count / 2;
        const T* const middle = begin + half;
        begin = __builtin_expect_with_probability(*middle <= x, 1, 0.5) ? middle : begin;  // not a jump
        count -= half;
    }
    return begin - brkpt;
}

// Taylor's sum of a derivative about the left end of a piece, order > ideriv >= 0.
template <class T>
inline T taylor(const T* c, int32_t order, int32_t ideriv, T h)
{
    T v = c[order - 1];
    for (int32_t j = order - 1; j > ideriv; --j) v = v / static_cast<T>(j - ideriv) * h + c[j - 1];
    return v;
}

template <class Frame>
void check_pieces(Frame& me, int32_t code, int32_t nintv)
{
    if (nintv < 1)
        me.post(terminal, code, "The number of intervals must be at least 1 while NINTV = %(I1) is given. ",
                {i(1, nintv)});
}

template <class Frame>
void check_derivative(Frame& me, int32_t code, int32_t ideriv)
{
    if (ideriv < 0)
        me.post(terminal, code, "The order of the derivative must be positive while IDERIV = %(I1) is given.",
                {i(1, ideriv)});
}

}  // namespace orvel::interp
