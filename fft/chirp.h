// fft/chirp.h - passes of large odd factors
#pragma once

#include "fft/isa/loops.h"

namespace orvel::fft {

// A pass of an odd factor beyond largest_general. Where it is the only one, first_twiddles is its chirp.
template <class R>
void large_pass(const Pass<R>& pass);
template <class R>
void store_chirp(int64_t r, R* chirp);

// Calls use(j, at) for the stored half of the chirp of an odd r: element j is root `at` of r.
template <class Use>
void for_chirp(int64_t r, Use use)
{
    int64_t at = 0;
    for (int64_t j = 0; j <= r / 2; ++j) {
        use(j, at);
        at += j + (r + 1) / 2;
        if (at >= r) at -= r;
    }
}

}  // namespace orvel::fft
