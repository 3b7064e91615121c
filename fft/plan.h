// fft/plan.h - which factors go through a pass together
//
// The factor list alone decides, in its stored order, and not the level: a table that was made under one
// level serves every other.
#pragma once

#include <algorithm>

#include "fft/factors.h"
#include "fft/isa/loops.h"

namespace orvel::fft {

// The passes of a transform. Long powers of 2, also with one factor 3 or 5, take two passes over blocks; the
// others may begin with one over blocks.
struct Plan {
    bool in_two, first_over_blocks;
    int32_t count = 0;
    int32_t end[32];  // of the factors of each pass

    explicit Plan(const Factors& f);

    int32_t begin(int32_t pass) const { return pass == 0 ? 0 : end[pass - 1]; }
    bool over_blocks(int32_t pass) const { return in_two || (pass == 0 && first_over_blocks); }
};

bool goes_in_two(const Factors& f);

// The length of the rows between the passes of a transform that goes in two: the product of the factors of
// the first one.
int64_t length_of_rows(const Factors& f);

// A real transform has no room for the block of its second pass, which therefore takes so many factors that
// the block fits the stack: with one factor of 5 among factors of 4 the product is at most this one.
inline constexpr int32_t most_in_last_of_real = 4;
inline constexpr int64_t longest_real_block = 5 << (2 * (most_in_last_of_real - 1));

// The factors of the group that begins with factor k in a pass up to `end`, 1 or 2. The last group of two
// passes is one factor: the results of more would be so far apart that they displace each other from the
// nearest cache.
int32_t factors_of_group(const Factors& f, int32_t k, int32_t end, bool in_two);

// The tables of all factors but the first one follow one another: that of the factor at l.
template <class R>
R* table_at(const Factors& f, R* tables, int64_t l)
{
    return tables + 2 * std::max<int64_t>(l - f.factor[0], 0);
}

// The groups of the factors from k to `end` of a pass, and what is then before the next pass.
template <class R>
int64_t take_groups(const Factors& f, const R* tables, int32_t k, int32_t end, bool in_two, Pass<R>& pass)
{
    int64_t l = pass.l;
    const auto take = [&](int64_t& factor, const R*& at) {
        factor = f.factor[k++];
        at = table_at(f, tables, l);
        l *= factor;
    };
    pass.groups = 0;
    while (k < end) {
        Group<R>& g = pass.group[pass.groups];
        const int32_t together = factors_of_group(f, k, end, in_two);
        g.second = 1;
        take(g.first, g.first_twiddles);
        g.second_twiddles = g.first_twiddles;  // passes calculate with it before they know
        if (together == 2) take(g.second, g.second_twiddles);
        ++pass.groups;
    }
    return l;
}

}  // namespace orvel::fft
