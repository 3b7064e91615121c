// fft/isa/loops.h - tables of the hot loops of the Fourier transforms, one set for each instruction-set level
//
// The files beside this one are compiled once per level and include nothing but each other and isa/: a
// function with linkage would be merged with that of another level.
#pragma once

#include <stdint.h>

#include "fft/isa/composites.h"
#include "isa/levels.h"

namespace orvel::fft {

// Complex numbers in memory: element e has its parts at re[e * stride] and im[e * stride]. Interleaved ones,
// as callers give them, have the stride 2, those in split format the stride 1.
template <class R>
struct Parts {
    R *re, *im;
    int64_t stride;
};

// One factor of a pass, or two that go through registers together; `second` may be 1. With l the product of
// the factors before it, a factor r has a table of its twiddle factors w(l * r)^(i * k), w(n) = exp(-2 pi i /
// n): for each i = 1..r-1 first the l cosines, then the l sines of the positive angles; l = 1 has no table.
//
// A group of a pass over blocks, but for the first one of all, has one table at first_twiddles, in the order
// in which the columns take them. For each row of columns, which are 16 or, where l is 8, 8 of them, it has
// the twiddle factors of the first factor for i = 1..first-1, then those of the second one for k2 < first and
// i = 1..second-1 at k + l * k2; each of them as so many cosines and so many sines.
template <class R>
struct Group {
    int64_t first, second;
    const R *first_twiddles, *second_twiddles;
};
inline constexpr int twiddle_row = 16;

// Groups of a pass over blocks; see blocks.cpp.
inline constexpr int64_t most_groups = 8;

// One pass. `l` is the product of the factors before it and m that of the factors after it. With A the
// transforms of length l of the l-fold decimated sequence and r the product of its factors,
//
//     out[k + l * k2 + l * r * b] = sum over i < r of w(l * r)^(i * (k + l * k2)) * A[k + l * (b + m * i)]
//
// for k < l, k2 < r, b < m.
template <class R>
struct Pass {
    Group<R> group[most_groups];
    int64_t groups;  // 1 but for blocks
    int64_t l, m;
    const R* circle;  // of a general odd factor: its roots, cosine and sine in turn
    // Over blocks: the results of part b of a first pass begin at b * pitch of out; a last pass, where m = 1,
    // reads element k + l * i at k + pitch * i.
    int64_t pitch;
    Parts<R> in, out;
    R* block;  // of a pass over blocks: room for `room` numbers in each part; the first one needs none
    int64_t room;
    // Bytes of a sequence from which on its columns are fetched ahead, and its results pass the caches by.
    int64_t distant = int64_t(4) << 20, huge = int64_t(8) << 20;
};

// A pass over blocks needs as many columns as the widest vectors have lanes, and takes up to so many vectors
// side by side where there is room.
inline constexpr int64_t widest = 16, widest_bytes = 64, most_vectors = 4;

template <class R>
using PassLoop = void (*)(const Pass<R>& pass);
ORVEL_LEVEL_TABLE(isa::ForReals<PassLoop>, even_passes);
ORVEL_LEVEL_TABLE(isa::ForReals<PassLoop>, small_odd_passes);
ORVEL_LEVEL_TABLE(isa::ForReals<PassLoop>, general_odd_passes);
ORVEL_LEVEL_TABLE(isa::ForReals<PassLoop>, block_passes);

// Odd factors beyond the first one and up to the second one are multiplied out. Of 11 and 13 the loops know
// the roots; the others need `circle`.
inline constexpr int64_t largest_small_odd = 7, largest_general = 127;

// Cosines and sines of 2 pi * (start + step * k) / n for k < count, every `stride`th number; n < 2^34, and
// start + step * k < 2^44.
template <class R>
using RootLoop = void (*)(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine,
                          R* sine);
ORVEL_LEVEL_TABLE(isa::ForReals<RootLoop>, root_loops);

// A real sequence of even length 2m as the complex sequence z of length m, its transform Z and the real
// coefficients c. The loops take the elements k and m - k, 1 < k < m / 2, from an even k on. `cosine` and
// `sine` are those of 2 pi j / m for j = k / 2, k / 2 + 1, ...; u is the sine of the angle pi / m and v is 1
// minus its cosine: they make the odd multiples of it from the even ones.
template <class R>
struct Halves {
    int64_t m;
    R *re, *im, *c;  // Z in split format; c(2m)
    R u, v;
};
template <class R>
struct JoinSplit {  // Z to c, c to Z
    using Loop = void (*)(const Halves<R>& h, int64_t begin, int64_t end, const R* cosine, const R* sine);
    Loop join, split;
};
ORVEL_LEVEL_TABLE(isa::ForReals<JoinSplit>, join_split_loops);

// A real sequence of odd length r m as r parts of length m, see odd_parts.cpp: the transforms of the parts,
// two as one complex sequence behind that of the first one, and the real coefficients c(r m).
inline constexpr int most_parts = 13;
template <class R>
struct OddParts {
    int64_t m;
    int r;
    R* parts;           // (r + 1) / 2 sequences of m real and m imaginary parts
    const R* twiddles;  // for i = 1..r - 2: cosines, then sines of 2 pi i k / (r m), k = 1..(m - 1) / 2
    const R* circle;    // cosine and sine in turn of 2 pi j / r, j < r
    R* c;
};
template <class R>
struct OddPartLoops {  // parts to c, c to parts
    void (*join)(const OddParts<R>& x);
    void (*split)(const OddParts<R>& x);
};
ORVEL_LEVEL_TABLE(isa::ForReals<OddPartLoops>, odd_part_loops);

// The chirp of an odd r, see chirp.cpp: element i is that of r - i and of i + r; `chirp` has those up to r /
// 2, cosine and sine in turn. A part is `count` elements from `first` on, 0 <= first < r.
template <class R>
struct ChirpPart {
    int64_t r;
    const R* chirp;
    int64_t first, count;
};

// Spectra of the blocks of a convolution of even length n, a multiple of `widest`, and of what they are
// multiplied by: block q becomes the sum over p of block p times the kernel of q - p at the same frequency
// or, where p is the larger one, that of p - q at the opposite one. Real and imaginary parts, 2 * blocks of
// each kind, are `pitch` apart; element n of a kernel is its element 0. Only the kernels up to blocks / 2 are
// stored: that of d is that of blocks - d at the opposite frequency times turns, cosine + i sine.
inline constexpr int most_chirp_blocks = 16;
template <class R>
struct ChirpSpectra {
    int64_t n, pitch, blocks;
    R* block;
    const R *kernel, *cosine, *sine;
};
template <class R>
struct ChirpLoops {
    // out[j] = in[j] / chirp[first + j], of which the magnitude is 1
    void (*turn)(const ChirpPart<R>& part, const Parts<R>& in, const Parts<R>& out);
    // re[j] + i im[j] = scale * chirp[first + j]
    void (*spread)(const ChirpPart<R>& part, R scale, R* re, R* im);
    void (*multiply)(const ChirpSpectra<R>& x);
};
ORVEL_LEVEL_TABLE(isa::ForReals<ChirpLoops>, chirp_loops);

// Transforms of the lengths 4, 8 ... 4096 as a whole. `to` may be `from`. What is between their steps is on
// the stack up to so many bytes, else in rows(2n), which may be null for the others.
inline constexpr int64_t most_on_stack = 32768;
inline constexpr int short_lengths = 11;
enum ShortKind { forward_complex, backward_complex, forward_real, backward_real, short_kinds };
template <class R>
using ShortLoop = void (*)(const R* from, R* to, R* rows);
template <class R>
struct ShortLoops {
    ShortLoop<R> loop[short_kinds][short_lengths];
};
ORVEL_LEVEL_TABLE(isa::ForReals<ShortLoops>, short_loops);

// The same for the lengths n of composites.h and, of real sequences, for odd n and then for 2 n.
template <class R>
using CompositeLoop = void (*)(const R* from, R* to, const CompositePlace<R>& at);
template <class R>
struct CompositeLoops {
    CompositeLoop<R> loop[short_kinds][2 * composite_count];
};
ORVEL_LEVEL_TABLE(isa::ForReals<CompositeLoops>, composite_loops);

}  // namespace orvel::fft
