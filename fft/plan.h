// fft/plan.h - which factors go through a pass together
#pragma once

#include <algorithm>

#include "fft/transform.h"

namespace orvel::fft {

// The factors of the first pass of two, or of a first pass over blocks before plain ones; 0 if there is none.
int32_t factors_of_blocks(const Factors& f);

// The factors of the group that begins with factor k in a pass up to `end`. The last group of all is one
// factor: the results of more would be so far apart that they displace each other from the nearest cache.
int32_t factors_of_group(const Factors& f, int32_t k, int32_t end, bool in_two);

// The passes of a transform that does not go in two.
struct Plan {
    int32_t count = 0;
    int32_t end[32];  // of the factors of each pass

    explicit Plan(const Factors& f);
};

// The groups of the factors from k to `end`, and what is then before the next pass.
template <class R>
int64_t take_groups(const Factors& f, const R* blocks, int32_t k, int32_t end, bool in_two, Pass<R>& pass)
{
    int64_t l = pass.l;
    const auto take = [&](int64_t& factor, const R*& at) {
        factor = f.factor[k++];
        at = blocks + 2 * std::max<int64_t>(l - f.factor[0], 0);
        l *= factor;
    };
    for (pass.groups = 0; k < end; ++pass.groups) {
        Group<R>& g = pass.group[pass.groups];
        const int32_t together = factors_of_group(f, k, end, in_two);
        g.second = 1;
        take(g.first, g.first_roots);
        g.second_roots = g.first_roots;  // passes reckon with it before they know
        if (together == 2) take(g.second, g.second_roots);
    }
    return l;
}

template <class R>
void transform_in_two(const Factors& f, const R* blocks, const Storage<R>& s);

}  // namespace orvel::fft
