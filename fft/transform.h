// fft/transform.h - factor lists, roots and complex transforms of any length, for the routines of this folder
#pragma once

#include <cstdint>

#include "fft/isa/loops.h"

namespace orvel::fft {

// Factors in the order of the passes. As many as a length below 2^31 can have, and the same in the stored
// form, where 15 elements hold the length, the count and up to 13 factors.
struct Factors {
    int64_t n = 1;
    int32_t count = 0;
    int32_t most_in_last = 5;  // factors that the second pass of two takes at once
    int64_t factor[32];

    void append(int64_t f) { factor[count++] = f; }
};
inline constexpr int32_t most_stored = 13;

// What the second pass of two takes at once in a real transform, so that its block fits the stack: with one
// factor of 5 among factors of 4 the product is at most longest_real_block.
inline constexpr int32_t most_in_last_of_real = 4;
inline constexpr int64_t longest_real_block = 5 << (2 * (most_in_last_of_real - 1));

// 4, 2, 3, 5, 7, 9, 11 ... divided out in turn; a 2 found behind others goes to the front.
Factors factorize(int64_t n);

// Stores n, the count and the factors in 15 reals. Lists of more than 13 are shortened: pairs are multiplied.
template <class R>
void store_factors(const Factors& f, R* stored);

// Reads them back; false where they are no factorization of n. What rounding took from n or from a large
// factor is restored.
template <class R>
bool read_factors(int64_t n, const R* stored, Factors& f);

inline bool is_small_odd(int64_t f) { return f <= 7 || f == 11 || f == 13; }

// The length of the rows between the passes of a transform that goes in two.
int64_t length_of_rows(const Factors& f);

// Roots by factor, see Group: the block of the factor at l, or of a group over blocks, begins at blocks +
// 2 * (l - factor[0]), and all of them take 2 * (n - factor[0]) numbers. A single factor has none, but beyond
// largest_general its chirp of n + 1 numbers.
template <class R>
void store_blocks(const Factors& f, R* blocks);

// Calls use(x, count, cosine, sine) for the roots w(n)^x, x < n / 5 at least, of a transform that goes in
// two, some at a time.
template <class R, class Use>
void for_last_roots(const Factors& f, const R* blocks, Use use)
{
    const int64_t last = f.factor[f.count - 1], all = f.n / last, l = length_of_rows(f), before = all / l;
    const R* const rows = blocks + 2 * (all - f.factor[0]);
    for (int64_t x = 0; x < all; x += root_row) {
        const R* const row = rows + 2 * (last - 1) * root_row * (x % l / root_row * before + x / l);
        use(x, int64_t{root_row}, row, row + root_row);
    }
}

// `count` roots exp(2 pi i (start + step k) / n), cosine and sine `stride` apart from the next.
template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine);

// Long powers of 2, also with one factor 3 or 5, take two passes over blocks. The room between these: rows of
// results of the first pass, `beyond` numbers further from each other than they are long, and a block of
// `room` numbers in each part for the second.
bool goes_in_two(const Factors& f);
template <class R>
struct Between {
    Parts<R> rows;
    int64_t beyond;
    R* block;
    int64_t room;
};

// In two arrays of 2n numbers.
template <class R>
Between<R> between(const Factors& f, R* a, R* b);
// In one of so many numbers.
template <class R>
int64_t numbers_between(const Factors& f);
template <class R>
Between<R> between(const Factors& f, R* memory);
// In one of 2n numbers, for real transforms, which have no more: rows that displace each other, and a block
// on the stack, or on the heap where vectors side by side want more than that.
template <class R>
Between<R> narrow_between(const Factors& f, R* memory);

// Storage of a transform. One that goes in two needs `between`. Else it is what the passes write in turn: the
// result ends in `out`; the passes before write `scratch` and the memory of `out` in turn, 2n numbers each.
// Where `in` lies in what the first pass would write, that pass takes `spare`, which may be null: then the
// input is moved first.
template <class R>
struct Storage {
    Parts<R> in, out;
    R *scratch, *spare;
    Between<R> between = {};
};

// The forward transform; with the parts of `in` and `out` exchanged it is the backward one.
template <class R>
void transform(const Factors& f, const R* blocks, const Storage<R>& s);

// Whether the first pass writes `scratch`.
bool first_target_is_scratch(const Factors& f);

template <class R>
Parts<R> pairs(R* z, bool forward = true)
{
    return forward ? Parts<R>{z, z + 1, 2} : Parts<R>{z + 1, z, 2};
}
template <class R>
Parts<R> apart(R* z, int64_t n, bool forward = true)
{
    return forward ? Parts<R>{z, z + n, 1} : Parts<R>{z + n, z, 1};
}

// A pass of an odd factor beyond largest_general. Where it is the only one, first_roots is its chirp.
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

inline const isa::ForReals<PassLoop>& pass_loop(int64_t factor)
{
    return factor % 2 == 0 ? even_passes() : factor <= 7 ? small_odd_passes() : general_odd_passes();
}
inline const isa::ForReals<PassLoop>& block_loop() { return block_passes(); }
template <class R>
void run_pass(const isa::ForReals<PassLoop>& loop, const Pass<R>& pass) { isa::of_type<R>(loop)(pass); }

}  // namespace orvel::fft
