// fft/isa/composite_steps.h - the steps of short lengths with factors beside 2, for one instruction-set level
//
// The columns of a first step go through registers with a lane each and come out as rows of the first
// length; so do those rows in the second step. A range that is no multiple of the lanes ends with a vector
// that overlaps the one before. Coprime factors within a step need no roots between them. Sources: W. M.
// Gentleman, G. Sande, Fast Fourier transforms: for fun and profit, 1966; I. J. Good, The interaction
// algorithm and practical Fourier analysis, 1958.
#pragma once

#include "fft/isa/composites.h"
#include "fft/isa/short_steps.h"

namespace orvel::fft {

namespace {

constexpr int rounded_up(int n, int unit) { return (n + unit - 1) / unit * unit; }

// The widest vectors of at most 32 bytes that fit both steps; wider ones would mostly overlap.
template <class R>
constexpr int lanes_of_composite(Composite c)
{
    int W = least(lanes<R>, 32 / static_cast<int>(sizeof(R)));
    while (W > c.first || W > c.second) W /= 2;
    return W * static_cast<int>(sizeof(R)) < 16 ? 1 : W;
}

// The B columns. Rows are padded to whole vectors, the real parts before the imaginary ones. The sign is that
// of imaginary parts: -1 conjugates, here the input and in the second step the output.
template <class R, int W, int A>
ORVEL_SHARED void first_of_two(const R* in, R* rows, int64_t B, R sign)
{
    constexpr int row = rounded_up(A, W);
#pragma GCC unroll 1
    for (int64_t b = 0; b < B; b += W) {
        if (b > B - W) b = B - W;
        const R* const column = hidden<true>(in + 2 * b);
        const int64_t step = hidden<true>(B);
        Complex<R, W> z[row] = {};
        transform_lanes<R, W, A>(z, [&](int j) ORVEL_LAMBDA {
            const Complex<R, W> x = take<R, W, Form::interleaved>(column, step * j);
            return Complex<R, W>{x.re, x.im * sign};
        });
        R* const to = hidden<true>(rows + 2 * row * b);
        written_out<row / W>([&](auto block) ORVEL_LAMBDA {
            Vector<R, W> re[W], im[W];
            written_out<W>([&](auto t) ORVEL_LAMBDA {
                re[t] = z[W * block + t].re;
                im[t] = z[W * block + t].im;
            });
            if constexpr (W > 1) {
                isa::transpose<R, W>(re);
                isa::transpose<R, W>(im);
            }
            written_out<W>([&](auto t) ORVEL_LAMBDA {
                R* const place = to + 2 * row * element_of<R, W, Lanes::near>(t) + W * block;
                isa::at<W>(place) = re[t];
                isa::at<W>(place + row) = im[t];
            });
        });
    }
}

// The rows, A numbers long.
template <class R, int W, int B>
ORVEL_SHARED void second_of_two(const R* rows, const R* roots, R* out, int64_t A, R sign)
{
    const int64_t row = (A + W - 1) / W * W;
#pragma GCC unroll 1
    for (int64_t k = 0; k < A; k += W) {
        if (k > A - W) k = A - W;
        const R* const column = hidden<true>(rows + k);
        const R* const turns = hidden<true>(roots + k);
        const int64_t step = hidden<true>(row), turn = hidden<true>(A);
        Complex<R, W> z[B];
        transform_lanes<R, W, B>(z, [&](int b) ORVEL_LAMBDA {
            const R* const p = column + 2 * step * b;
            const Complex<R, W> x = {load_once<R, W>(p), load_once<R, W>(p + step)};
            if (b == 0) return x;
            const R* const root = turns + 2 * turn * (b - 1);
            return turned_by<R, W, Twiddles::each>(x, root, root + turn);
        });
        R* const end = hidden<true>(out + 2 * k);
        written_out<B>([&](auto j) ORVEL_LAMBDA {
            write_interleaved<R, W, Lanes::in_turn>(end + 2 * turn * j, {z[j].re, z[j].im * sign});
        });
    }
}

template <class R, int place, Form form>
ORVEL_INLINE void composite(const R* in, R* out, const R* roots)
{
    constexpr Composite c = composites[place];
    if constexpr (c.second == 1) {
        constexpr int n = c.first;
        Complex<R, 1> z[n];
        transform_lanes<R, 1, n>(z, [&](int j) ORVEL_LAMBDA { return take<R, 1, form>(in, j); });
        written_out<n>([&](auto k) ORVEL_LAMBDA { put<R, 1, form>(out, k, z[k]); });
    } else {
        constexpr int W = lanes_of_composite<R>(c);
        alignas(64) R rows[2 * rounded_up(c.first, W) * c.second];
        constexpr R sign = form == Form::exchanged ? -1 : 1;
        first_of_two<R, W, c.first>(in, rows, c.second, sign);
        second_of_two<R, W, c.second>(rows, roots, out, c.first, sign);
    }
}

}  // namespace
}  // namespace orvel::fft
