// fft/isa/blocks.cpp - passes of two to four factors 2 and 4 over blocks in a buffer, for the level ORVEL_ISA
//
// A block is a vector of columns: their elements come together from all over the sequence, go through the
// first one or two factors into the buffer and through the others out of it. So a sequence that is larger
// than the nearest cache is read and written half as often.
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

// `count` steps after each other, of so many vectors side by side: the columns move on by `next` numbers, k
// by `next_k`, the results by `next_to`; result c of a step goes to element `to` + c * `to_step`.
template <class R>
struct Steps {
    Step<R> step;
    int64_t count, next, next_k;
    Parts<R> out;
    int64_t to, to_step, next_to, vectors;
};

template <class R, int r, int s, Roots kind, Layout from, Layout to>
void run_steps(const Steps<R>& steps)
{
    const Steps<R> all = steps;
    constexpr int W = kernels::lanes<R>;
    Step<R> step = all.step;
    int64_t at = all.to;
    for (int64_t n = 0; n < all.count; ++n) {
        Step<R> side = step;
        for (int64_t v = 0; v < all.vectors; ++v) {
            Complex<R, W> z[r * s];
            columns<R, W, r, s, kind, from>(side, z);
#pragma GCC unroll 16
            for (int c = 0; c < r * s; ++c) write<R, W, to>(all.out, at + v * W + c * all.to_step, z[c]);
            side.at += W;
            if (kind == Roots::each) side.k += W;
        }
        step.at += all.next;
        step.k += all.next_k;
        at += all.next_to;
    }
}

template <class R, Roots kind, Layout from, Layout to>
void steps_of(int64_t first, int64_t second, const Steps<R>& all)
{
    if (second == 1)
        run_steps<R, 4, 1, kind, from, to>(all);
    else if (first == 2)
        run_steps<R, 2, 4, kind, from, to>(all);
    else
        run_steps<R, 4, 4, kind, from, to>(all);
}

// The buffer: element k2 + r * i of all columns of the block, then the next.
template <class R, int vectors>
struct Buffer {
    static constexpr int64_t width = vectors * kernels::lanes<R>;
    alignas(64) R numbers[2 * block_length * width];

    Parts<R> parts() { return {numbers, numbers + block_length * width, 1}; }
};

// The results e of all columns of a block to the contiguous results of each column.
template <class R, int vectors>
ORVEL_INLINE void transpose_block(int64_t n, const R* from, R* to)
{
    constexpr int W = kernels::lanes<R>;
    for (int v = 0; v < vectors; ++v)
        for (int64_t e = 0; e < n; e += W) {
            Vector<R, W> square[W];
#pragma GCC unroll 16
            for (int t = 0; t < W; ++t) square[t] = load<R, W>(from + ((e + t) * vectors + v) * W);
            kernels::transpose_square<R, W>(square);
#pragma GCC unroll 16
            for (int t = 0; t < W; ++t) store<R, W>(to + (v * W + t) * n + e, square[t]);
        }
}

template <class R, Layout from, int vectors>
void first_blocks(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    Buffer<R, vectors> buffer;
    constexpr int64_t width = buffer.width;
    const Parts<R> inside = buffer.parts();
    const int64_t r = p.first * p.second, s = p.third * p.fourth, n = r * s;
    for (int64_t b = 0; b < p.m; b += width) {
        if (b > p.m - width) b = p.m - width;
        const Step<R> in = {p.in, b, p.m * s, p.first_roots, p.second_roots, 1, 0};
        steps_of<R, Roots::none, from, Layout::apart>(p.first, p.second,
                                                      {in, s, p.m, 0, inside, 0, width, width * r, vectors});
        const Step<R> next = {inside, 0, width * r, p.third_roots, p.fourth_roots, r, 0};
        steps_of<R, Roots::same, Layout::apart, Layout::apart>(
            p.third, p.fourth, {next, r, width, 1, inside, 0, width * r, width, vectors});
        transpose_block<R, vectors>(n, inside.re, p.out.re + b * n);
        transpose_block<R, vectors>(n, inside.im, p.out.im + b * n);
    }
}

template <class R, Layout to, int vectors>
void later_blocks(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    Buffer<R, vectors> buffer;
    constexpr int64_t width = buffer.width;
    const Parts<R> inside = buffer.parts();
    const int64_t r = p.first * p.second, s = p.third * p.fourth, l = p.l, m = p.m;
    for (int64_t b = 0; b < m; ++b)
        for (int64_t k = 0; k < l; k += width) {
            if (k > l - width) k = l - width;
            const Step<R> in = {p.in, k + l * b, l * m * s, p.first_roots, p.second_roots, l, k};
            steps_of<R, Roots::each, Layout::apart, Layout::apart>(
                p.first, p.second, {in, s, l * m, 0, inside, 0, width, width * r, vectors});
            const Step<R> out = {inside, 0, width * r, p.third_roots, p.fourth_roots, l * r, k};
            steps_of<R, Roots::each, Layout::apart, to>(
                p.third, p.fourth, {out, r, width, l, p.out, k + l * r * s * b, l * r, l, vectors});
        }
}

// Wide blocks, which fit the second cache, where the sequence does not: then longer runs of memory are read
// and written at a time.
constexpr int wide = 4;

template <class R>
bool has_wide_blocks(const Pass<R>& p)
{
    constexpr int64_t far = (1 << 20) / static_cast<int64_t>(sizeof(R)), least = wide * kernels::lanes<R>;
    return (p.l == 1 ? p.m : p.l) >= least && p.l * p.m * p.first * p.second * p.third * p.fourth >= far;
}

template <class R, Layout from>
void first_blocks_of(const Pass<R>& p)
{
    has_wide_blocks(p) ? first_blocks<R, from, wide>(p) : first_blocks<R, from, 1>(p);
}

template <class R, Layout to>
void later_blocks_of(const Pass<R>& p)
{
    has_wide_blocks(p) ? later_blocks<R, to, wide>(p) : later_blocks<R, to, 1>(p);
}

template <class R>
void blocks(const Pass<R>& p)
{
    if (p.l == 1) switch (layout_of(p.in)) {
            case Layout::apart:
                return first_blocks_of<R, Layout::apart>(p);
            case Layout::pairs:
                return first_blocks_of<R, Layout::pairs>(p);
            case Layout::exchanged:
                return first_blocks_of<R, Layout::exchanged>(p);
        }
    switch (layout_of(p.out)) {
        case Layout::apart:
            return later_blocks_of<R, Layout::apart>(p);
        case Layout::pairs:
            return later_blocks_of<R, Layout::pairs>(p);
        case Layout::exchanged:
            return later_blocks_of<R, Layout::exchanged>(p);
    }
}

}  // namespace

namespace ORVEL_ISA {
extern const PassLoop block_pass;
const PassLoop block_pass = {blocks<float>, blocks<double>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
