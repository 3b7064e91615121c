// fft/transform.h - complex transforms of any length
#pragma once

#include "fft/roots.h"

namespace orvel::fft {

template <class R>
Parts<R> interleaved(R* z, bool forward = true)
{
    return forward ? Parts<R>{z, z + 1, 2} : Parts<R>{z + 1, z, 2};
}
template <class R>
Parts<R> split_format(R* z, int64_t n, bool forward = true)
{
    return forward ? Parts<R>{z, z + n, 1} : Parts<R>{z + n, z, 1};
}
template <class R>
R* memory(const Parts<R>& p)
{
    return p.re < p.im ? p.re : p.im;
}

// Storage of a transform of length n. `in` and `out` may be the same. What is between the passes goes to
// `scratch` and the memory of `out` in turn, 2n numbers each; a first pass that would write over its input
// takes `spare` of 2n numbers or, where that is null, moves the input. Two passes have their rows in
// `scratch`: they want `spare`, too, or `room` for numbers_of_scratch() in it, and else are slower.
template <class R>
struct Storage {
    Parts<R> in, out;
    R *scratch, *spare = nullptr;
    int64_t room = 0;
};
template <class R>
int64_t numbers_of_scratch(const Factors& f);

// The forward transform; with the parts of `in` and `out` exchanged it is the backward one. `tables` are
// those of store_tables.
template <class R>
void transform(const Factors& f, const R* tables, const Storage<R>& s);

// Whether the first pass writes `scratch`.
bool first_target_is_scratch(const Factors& f);

}  // namespace orvel::fft
