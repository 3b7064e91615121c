// fft/isa/blocks.cpp - passes of two to four factors 2 and 4 over blocks in a buffer, for the level ORVEL_ISA
//
// A block is a vector of columns: their elements come together from all over the sequence, go through the
// first one or two factors into the buffer and through the others out of it. So a sequence that is larger
// than the nearest cache is read and written half as often.
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

// `count` steps after each other: the columns move on by `next` numbers, k by `next_k`, the results by
// `next_to`; result c of a step goes to element `to` + c * `to_step`.
template <class R>
struct Steps {
    Step<R> step;
    int64_t count, next, next_k;
    Parts<R> out;
    int64_t to, to_step, next_to;
};

template <class R, int r, int s, Roots kind, Layout from, Layout to>
void run_steps(const Steps<R>& steps)
{
    const Steps<R> all = steps;
    constexpr int W = kernels::lanes<R>;
    Step<R> step = all.step;
    int64_t at = all.to;
    for (int64_t n = 0; n < all.count; ++n) {
        Complex<R, W> z[r * s];
        columns<R, W, r, s, kind, from>(step, z);
#pragma GCC unroll 16
        for (int c = 0; c < r * s; ++c) write<R, W, to>(all.out, at + c * all.to_step, z[c]);
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

// The buffer: element k2 + r * i, of W columns, has its parts at W times that index.
template <class R>
struct Buffer {
    alignas(64) R numbers[2 * block_length * kernels::lanes<R>];

    Parts<R> parts() { return {numbers, numbers + block_length * kernels::lanes<R>, 1}; }
};

template <class R, Layout from>
void first_blocks(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    constexpr int W = kernels::lanes<R>;
    Buffer<R> buffer;
    const Parts<R> inside = buffer.parts();
    const int64_t r = p.first * p.second, s = p.third * p.fourth, n = r * s;
    for (int64_t b = 0; b < p.m; b += W) {
        if (b > p.m - W) b = p.m - W;
        steps_of<R, Roots::none, from, Layout::apart>(
            p.first, p.second,
            {{p.in, b, p.m * s, p.first_roots, p.second_roots, 1, 0}, s, p.m, 0, inside, 0, W, W * r});
        steps_of<R, Roots::same, Layout::apart, Layout::apart>(
            p.third, p.fourth,
            {{inside, 0, W * r, p.third_roots, p.fourth_roots, r, 0}, r, W, 1, inside, 0, W * r, W});
        for (int part = 0; part < 2; ++part) {
            const R* const x = part == 0 ? inside.re : inside.im;
            R* const to = (part == 0 ? p.out.re : p.out.im) + b * n;
            for (int64_t e = 0; e < n; e += W) {
                Vector<R, W> square[W];
#pragma GCC unroll 16
                for (int t = 0; t < W; ++t) square[t] = load<R, W>(x + (e + t) * W);
                kernels::transpose_square<R, W>(square);
#pragma GCC unroll 16
                for (int t = 0; t < W; ++t) store<R, W>(to + t * n + e, square[t]);
            }
        }
    }
}

template <class R, Layout to>
void later_blocks(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    constexpr int W = kernels::lanes<R>;
    Buffer<R> buffer;
    const Parts<R> inside = buffer.parts();
    const int64_t r = p.first * p.second, s = p.third * p.fourth, l = p.l, m = p.m;
    for (int64_t b = 0; b < m; ++b)
        for (int64_t k = 0; k < l; k += W) {
            if (k > l - W) k = l - W;
            steps_of<R, Roots::each, Layout::apart, Layout::apart>(
                p.first, p.second,
                {{p.in, k + l * b, l * m * s, p.first_roots, p.second_roots, l, k},
                 s,
                 l * m,
                 0,
                 inside,
                 0,
                 W,
                 W * r});
            steps_of<R, Roots::each, Layout::apart, to>(
                p.third, p.fourth,
                {{inside, 0, W * r, p.third_roots, p.fourth_roots, l * r, k},
                 r,
                 W,
                 l,
                 p.out,
                 k + l * r * s * b,
                 l * r,
                 l});
        }
}

template <class R>
void blocks(const Pass<R>& p)
{
    if (p.l == 1) switch (layout_of(p.in)) {
            case Layout::apart:
                return first_blocks<R, Layout::apart>(p);
            case Layout::pairs:
                return first_blocks<R, Layout::pairs>(p);
            case Layout::exchanged:
                return first_blocks<R, Layout::exchanged>(p);
        }
    switch (layout_of(p.out)) {
        case Layout::apart:
            return later_blocks<R, Layout::apart>(p);
        case Layout::pairs:
            return later_blocks<R, Layout::pairs>(p);
        case Layout::exchanged:
            return later_blocks<R, Layout::exchanged>(p);
    }
}

}  // namespace

namespace ORVEL_ISA {
extern const PassLoop block_pass;
const PassLoop block_pass = {blocks<float>, blocks<double>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
