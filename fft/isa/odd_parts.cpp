// fft/isa/odd_parts.cpp - coefficients of a real sequence of odd length from those of its parts, for the
// level ORVEL_ISA
//
// Element j r + i of a sequence of length n = r m belongs to part i. The transforms S_i of the parts make the
// coefficients X(k + m q), the sums of w(n)^(i k) S_i(k) w(r)^(i q) over i. Two parts are transformed
// together as real and imaginary part of one complex sequence.
#include "fft/isa/loops.h"

namespace orvel::fft {

namespace {

template <class R, int W>
struct Column {
    R re[W], im[W];
};
template <class R, int W>
using Columns = Column<R, W>[most_parts];

// w(n)^(i k) for W columns from k on, k > 0; the last part's root, which is not stored, is the product of two
// others.
template <class R, int W>
void root_of(const OddParts<R>& x, int i, int64_t k, R (&cosine)[W], R (&sine)[W])
{
    const int64_t half = (x.m - 1) / 2;
    const auto row = [&](int part) { return x.twiddles + (part - 1) * 2 * half + k - 1; };
    const R* const a = row(i < x.r - 1 ? i : i - 1);
    const R* const b = row(1);
#pragma GCC ivdep
    for (int t = 0; t < W; ++t) {
        const bool stored = i < x.r - 1;
        cosine[t] = stored ? a[t] : a[t] * b[t] - a[half + t] * b[half + t];
        sine[t] = stored ? a[half + t] : a[half + t] * b[t] + a[t] * b[half + t];
    }
}

// z(q) = the sums over i of v(i) w(r)^(i q), or with the conjugate root where sign is 1.
template <class R, int W>
void transform_parts(const OddParts<R>& x, R sign, const Columns<R, W>& v, Columns<R, W>& z)
{
    const int r = x.r;
    z[0] = v[0];
    for (int i = 1; i < r; ++i)
#pragma GCC ivdep
        for (int t = 0; t < W; ++t) z[0].re[t] += v[i].re[t], z[0].im[t] += v[i].im[t];
    for (int q = 1; q <= r / 2; ++q) {
        Column<R, W> even = v[0], odd = {};
        for (int i = 1; i <= r / 2; ++i) {
            const R cosine = x.circle[2 * (i * q % r)], sine = sign * x.circle[2 * (i * q % r) + 1];
#pragma GCC ivdep
            for (int t = 0; t < W; ++t) {
                even.re[t] += cosine * (v[i].re[t] + v[r - i].re[t]);
                even.im[t] += cosine * (v[i].im[t] + v[r - i].im[t]);
                odd.re[t] -= sine * (v[i].im[t] - v[r - i].im[t]);
                odd.im[t] += sine * (v[i].re[t] - v[r - i].re[t]);
            }
        }
#pragma GCC ivdep
        for (int t = 0; t < W; ++t) {
            z[q].re[t] = even.re[t] + odd.re[t], z[q].im[t] = even.im[t] + odd.im[t];
            z[r - q].re[t] = even.re[t] - odd.re[t], z[r - q].im[t] = even.im[t] - odd.im[t];
        }
    }
}

// The coefficient k + m q, or the conjugate of its opposite where that is the stored one.
template <class R>
struct Place {
    R* at;
    int64_t step;  // to the next k
    R sign;        // of the imaginary part

    Place(const OddParts<R>& x, int64_t k, int q)
    {
        const int64_t index = k + x.m * q, n = x.m * x.r;
        const bool stored = q <= x.r / 2;
        at = x.c + 2 * (stored ? index : n - index) - 1;
        step = stored ? 2 : -2;
        sign = stored ? R(1) : R(-1);
    }
};

template <class R, int W>
void join_columns(const OddParts<R>& x, int64_t k)
{
    Columns<R, W> v, z;
    const int64_t m = x.m, opposite = m - k;
#pragma GCC ivdep
    for (int t = 0; t < W; ++t) v[0].re[t] = x.parts[k + t], v[0].im[t] = x.parts[m + k + t];
    for (int i = 1; i < x.r; i += 2) {
        const R *const re = x.parts + (i + 1) * m, *const im = re + m;
        R first_cosine[W], first_sine[W], cosine[W], sine[W];
        root_of<R, W>(x, i, k, first_cosine, first_sine);
        root_of<R, W>(x, i + 1, k, cosine, sine);
#pragma GCC ivdep
        for (int t = 0; t < W; ++t) {
            const R a = re[k + t], b = re[opposite - t], c = im[k + t], d = im[opposite - t];
            const R first_re = (a + b) / 2, first_im = (c - d) / 2, second_re = (c + d) / 2,
                    second_im = (b - a) / 2;
            v[i].re[t] = first_re * first_cosine[t] + first_im * first_sine[t];
            v[i].im[t] = first_im * first_cosine[t] - first_re * first_sine[t];
            v[i + 1].re[t] = second_re * cosine[t] + second_im * sine[t];
            v[i + 1].im[t] = second_im * cosine[t] - second_re * sine[t];
        }
    }
    transform_parts<R, W>(x, R(-1), v, z);
    for (int q = 0; q < x.r; ++q) {
        const Place<R> to(x, k, q);
#pragma GCC ivdep
        for (int t = 0; t < W; ++t)
            to.at[to.step * t] = z[q].re[t], to.at[to.step * t + 1] = to.sign * z[q].im[t];
    }
}

template <class R, int W>
void split_columns(const OddParts<R>& x, int64_t k)
{
    Columns<R, W> v, z;
    const int64_t m = x.m, opposite = m - k;
    for (int q = 0; q < x.r; ++q) {
        const Place<R> from(x, k, q);
#pragma GCC ivdep
        for (int t = 0; t < W; ++t)
            v[q].re[t] = from.at[from.step * t], v[q].im[t] = from.sign * from.at[from.step * t + 1];
    }
    transform_parts<R, W>(x, R(1), v, z);
#pragma GCC ivdep
    for (int t = 0; t < W; ++t) {
        x.parts[k + t] = x.parts[opposite - t] = z[0].re[t];
        x.parts[m + k + t] = z[0].im[t];
        x.parts[m + opposite - t] = -z[0].im[t];
    }
    for (int i = 1; i < x.r; i += 2) {
        R *const re = x.parts + (i + 1) * m, *const im = re + m;
        R first_cosine[W], first_sine[W], cosine[W], sine[W];
        root_of<R, W>(x, i, k, first_cosine, first_sine);
        root_of<R, W>(x, i + 1, k, cosine, sine);
#pragma GCC ivdep
        for (int t = 0; t < W; ++t) {
            const R a = z[i].re[t] * first_cosine[t] - z[i].im[t] * first_sine[t];
            const R b = z[i].im[t] * first_cosine[t] + z[i].re[t] * first_sine[t];
            const R c = z[i + 1].re[t] * cosine[t] - z[i + 1].im[t] * sine[t];
            const R d = z[i + 1].im[t] * cosine[t] + z[i + 1].re[t] * sine[t];
            re[k + t] = a - d, im[k + t] = b + c;
            re[opposite - t] = a + d, im[opposite - t] = c - b;
        }
    }
}

constexpr int wide = 16;

template <class R>
void join(const OddParts<R>& x)
{
    const int64_t m = x.m, half = (m - 1) / 2;
    const auto first = [&](int i) {
        return x.parts[i == 0 ? 0 : (i + 1) / 2 * 2 * m + (i % 2 == 0 ? m : 0)];
    };
    R sum = 0;
    for (int i = 0; i < x.r; ++i) sum += first(i);
    x.c[0] = sum;
    for (int q = 1; q <= x.r / 2; ++q) {
        R re = first(0), im = 0;
        for (int i = 1; i < x.r; ++i) {
            re += x.circle[2 * (i * q % x.r)] * first(i);
            im -= x.circle[2 * (i * q % x.r) + 1] * first(i);
        }
        x.c[2 * m * q - 1] = re, x.c[2 * m * q] = im;
    }
    int64_t k = 1;
    for (; k + wide <= half + 1; k += wide) join_columns<R, wide>(x, k);
    for (; k <= half; ++k) join_columns<R, 1>(x, k);
}

template <class R>
void split(const OddParts<R>& x)
{
    const int64_t m = x.m, half = (m - 1) / 2;
    for (int i = 0; i < x.r; ++i) {
        R sum = 0;
        for (int q = 1; q <= x.r / 2; ++q)
            sum += x.circle[2 * (i * q % x.r)] * x.c[2 * m * q - 1] -
                   x.circle[2 * (i * q % x.r) + 1] * x.c[2 * m * q];
        x.parts[i == 0 ? 0 : (i + 1) / 2 * 2 * m + (i % 2 == 0 ? m : 0)] = x.c[0] + 2 * sum;
    }
    x.parts[m] = 0;
    int64_t k = 1;
    for (; k + wide <= half + 1; k += wide) split_columns<R, wide>(x, k);
    for (; k <= half; ++k) split_columns<R, 1>(x, k);
}

}  // namespace

const isa::ForReals<OddPartLoops> ORVEL_ISA::odd_part_loops = {{join<float>, split<float>},
                                                               {join<double>, split<double>}};

}  // namespace orvel::fft
