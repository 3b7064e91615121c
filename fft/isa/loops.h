// fft/isa/loops.h - tables of the hot loops of the Fourier transforms, one set for each instruction-set level
//
// The files beside this one are compiled once per level; see kernels/isa/loops.h for what they must keep to.
#pragma once

#include <stdint.h>

namespace orvel::fft {

// Complex numbers in memory: element e has its parts at re[e * stride] and im[e * stride]. Pairs, as callers
// give them, have the stride 2; between the passes real and imaginary parts stand apart, with the stride 1.
template <class R>
struct Parts {
    R *re, *im;
    int64_t stride;
};

// One pass, of one factor or of two that are taken together. `l` is the product of the factors before it and
// m that of the factors after it. With A the transforms of length l of the l-fold decimated sequence,
//
//     out[k + l * k2 + l * r * b] = sum over i < r of w(l * r)^(i * (k + l * k2)) * A[k + l * (b + m * i)]
//
// for k < l, k2 < r, b < m; w(n) = exp(-2 pi i / n). The roots w(l * r)^(i * k) of factor r are in a block:
// for each i = 1..r-1 first the l cosines, then the l sines of the positive angles; l = 1 has no block.
template <class R>
struct Pass {
    int64_t first, second;  // the factors; `second` is 1 in a pass of one factor
    int64_t l, m;
    const R *first_roots, *second_roots;
    const R* circle;  // of a general odd factor: its roots, cosine and sine in turn
    // Two more factors in a pass over blocks, see block_length, and their roots; else `third` is 1.
    int64_t third, fourth;
    const R *third_roots, *fourth_roots;
    Parts<R> in, out;
};

// A pass over blocks takes up to four factors, whose product is at most this, with a buffer that fits the
// nearest cache. It needs room for the widest vectors: l >= widest, or l = 1 and m >= widest.
inline constexpr int64_t block_length = 128;
inline constexpr int64_t widest = 16;

// A loop in both precisions.
struct PassLoop {
    void (*s)(const Pass<float>& pass);
    void (*d)(const Pass<double>& pass);
};

// Cosines and sines of 2 pi * (start + step * k) / n for k < count, every `stride`th number; n < 2^34, and
// start + step * k < 2^44.
struct RootLoop {
    void (*s)(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, float* cosine,
              float* sine);
    void (*d)(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, double* cosine,
              double* sine);
};

// A real sequence of even length 2m as the complex sequence z of length m, its transform Z and the real
// coefficients c. The loops take the elements k and m - k, 1 < k < m / 2, from an even k on. `cosine` and
// `sine` are those of 2 pi j / m for j = k / 2, k / 2 + 1, ...; u is the sine of the angle pi / m and v is 1
// minus its cosine: they make the odd multiples of it from the even ones.
template <class R>
struct Halves {
    int64_t m;
    R *re, *im, *c;  // Z, its parts apart; c(2m)
    R u, v;
};
template <class R>
using HalvesLoop = void (*)(const Halves<R>& h, int64_t begin, int64_t end, const R* cosine, const R* sine);
struct HalvesLoops {
    HalvesLoop<float> join_s, split_s;  // Z to c, c to Z
    HalvesLoop<double> join_d, split_d;
};

// Odd factors beyond 13 and up to this one are multiplied out.
inline constexpr int64_t largest_general = 127;

}  // namespace orvel::fft
