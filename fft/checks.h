// fft/checks.h - the checks that the routines of real and of complex transforms share
#pragma once

#include "fft/factors.h"
#include "frame/routine.h"
#include "frame/scratch.h"

namespace orvel::fft {

template <class Frame>
bool is_length(Frame& me, int32_t n)
{
    if (n < 1)
        me.post(terminal, 1, "The length of the sequence N = %(I1).  It must be at least 1.", {i(1, n)});
    return n >= 1;
}

template <class Frame>
void no_storage(Frame& me, int32_t n)
{
    me.no_storage(
        2, "The required storage cannot be allocated.  The specified N may be too large, where N = %(I1).",
        {i(1, n)});
}

// Checks the length and reads its factors from the work vector.
template <class Frame, class R>
bool is_initialised(Frame& me, int32_t n, const R* stored, Factors& f)
{
    if (!is_length(me, n)) return false;
    if (n == 1 || read_factors<R>(n, stored, f)) return true;
    me.post(
        terminal, 3,
        "The work vector does not hold the factors of the length N = %(I1).  It must be initialized for this length.",
        {i(1, n)});
    return false;
}

}  // namespace orvel::fft
