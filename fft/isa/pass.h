// fft/isa/pass.h - one pass of a Fourier transform over vectors, for one instruction-set level
//
// The passes are forward transforms; a backward one has its real and imaginary parts exchanged at both ends.
//
// Vectors run over k where l has room for one, over b in the first pass (l = 1). A range that is no multiple
// of the width ends with a vector that overlaps the one before: the output is never the input.
#pragma once

#include "fft/isa/complex.h"

namespace orvel::fft {
namespace {

// Transforms of r numbers each in W lanes, `apart` apart in x.
template <class R, int W, int r>
struct Butterfly;

template <class R, int W>
struct Butterfly<R, W, 1> {
    static ORVEL_INLINE void run(Complex<R, W>*, int) {}
};

template <class R, int W>
struct Butterfly<R, W, 2> {
    static ORVEL_INLINE void run(Complex<R, W>* x, int apart)
    {
        const Complex<R, W> sum = x[0] + x[apart];
        x[apart] = x[0] - x[apart];
        x[0] = sum;
    }
};

template <class R, int W>
struct Butterfly<R, W, 4> {
    static ORVEL_INLINE void run(Complex<R, W>* x, int apart)
    {
        const Complex<R, W> a = x[0] + x[2 * apart], b = x[0] - x[2 * apart];
        const Complex<R, W> c = x[apart] + x[3 * apart], d = x[apart] - x[3 * apart];
        x[0] = a + c;
        x[apart] = {b.re + d.im, b.im - d.re};
        x[2 * apart] = a - c;
        x[3 * apart] = {b.re - d.im, b.im + d.re};
    }
};

// Cosines and sines of 2 pi k / r for k = 1..r/2.
template <int r>
constexpr double odd_roots[2][6] = {};
template <>
constexpr double odd_roots<3>[2][6] = {{-0.5}, {0x1.bb67ae8584caap-1}};
template <>
constexpr double odd_roots<5>[2][6] = {{0x1.3c6ef372fe950p-2, -0x1.9e3779b97f4a8p-1},
                                       {0x1.e6f0e134454ffp-1, 0x1.2cf2304755a5ep-1}};
template <>
constexpr double odd_roots<7>[2][6] = {{0x1.3f3a0e28bedd1p-1, -0x1.c7b90e3024582p-3, -0x1.cd4bca9cb5c71p-1},
                                       {0x1.904c37505de4bp-1, 0x1.f329c0558e969p-1, 0x1.bc4c04d71abc1p-2}};
template <>
constexpr double odd_roots<11>[2][6] = {{0x1.aeb8c8764f0bap-1, 0x1.a9628d9c712b6p-2, -0x1.2375f640f44dbp-3,
                                         -0x1.4f49e7f775887p-1, -0x1.eb42a9bcd5057p-1},
                                        {0x1.14cedf8bb580bp-1, 0x1.d1bb48eee2c13p-1, 0x1.fac9e043842efp-1,
                                         0x1.82f19bb3a28a1p-1, 0x1.207e7fd768dbfp-2}};
template <>
constexpr double odd_roots<13>[2][6] = {{0x1.c55a7e00740e9p-1, 0x1.22d961ea71119p-1, 0x1.edb7debaa3ed8p-4,
                                         -0x1.6b1d8b2365da1p-2, -0x1.7f3ccd0032e0cp-1, -0x1.f11f493053d00p-1},
                                        {0x1.dbe064267c47cp-2, 0x1.a55e242a4c3d2p-1, 0x1.fc44566966769p-1,
                                         0x1.deba72ef20147p-1, 0x1.5384d024c2f84p-1, 0x1.ea1e54bc48dbfp-3}};

// Those of 2 pi j k / r.
template <class R, int r>
constexpr R odd_cosine(int j, int k)
{
    const int jk = j * k % r;
    return static_cast<R>(odd_roots<r>[0][(jk <= r / 2 ? jk : r - jk) - 1]);
}
template <class R, int r>
constexpr R odd_sine(int j, int k)
{
    const int jk = j * k % r;
    return static_cast<R>(jk <= r / 2 ? odd_roots<r>[1][jk - 1] : -odd_roots<r>[1][r - jk - 1]);
}

// The sums and differences of opposite elements j and r - j of an odd r, for j = 1..half in turn, make the
// results k and r - k: `cosine(j)` and `sine(j)` are those of 2 pi j k / r.
template <class R, int W, int half, class Cosine, class Sine>
ORVEL_INLINE Opposites<R, W> odd_results(Complex<R, W> first, const Complex<R, W>* sum,
                                         const Complex<R, W>* difference, Cosine cosine, Sine sine)
{
    Complex<R, W> even = first, odd;
    for_each<half>([&](int j) ORVEL_LAMBDA {
        const R c = cosine(j + 1), s = sine(j + 1);
        even.re += sum[j].re * c;
        even.im += sum[j].im * c;
        if (j == 0) {
            odd.re = difference[j].re * s;
            odd.im = difference[j].im * s;
        } else {
            odd.re += difference[j].re * s;
            odd.im += difference[j].im * s;
        }
    });
    return {{even.re + odd.im, even.im - odd.re}, {even.re - odd.im, even.im + odd.re}};
}

template <class R, int W, int r>
struct Butterfly {
    static ORVEL_INLINE void run(Complex<R, W>* x, int apart)
    {
        constexpr int half = r / 2;
        Complex<R, W> sum[half], difference[half], all = x[0];
#pragma GCC unroll 16
        for (int j = 1; j <= half; ++j) {
            sum[j - 1] = x[j * apart] + x[(r - j) * apart];
            difference[j - 1] = x[j * apart] - x[(r - j) * apart];
            all = all + sum[j - 1];
        }
#pragma GCC unroll 16
        for (int k = 1; k <= half; ++k) {
            const Opposites<R, W> z = odd_results<R, W, half>(
                x[0], sum, difference, [k](int j) { return odd_cosine<R, r>(j, k); },
                [k](int j) { return odd_sine<R, r>(j, k); });
            x[k * apart] = z.low;
            x[(r - k) * apart] = z.high;
        }
        x[0] = all;
    }
};

// Where the columns of one step are and where their twiddle factors: element e is `step` numbers from the
// next, and those with the index k of the pass before it have theirs at k of the tables.
template <class R>
struct Step {
    Parts<R> in;
    int64_t at, step;
    const R *first_twiddles, *second_twiddles;
    int64_t l, k;
    Layout layout = Layout::split;
};

// Of the lanes of a vector: those of a first pass have none, and then one for all within the pass. Others
// have one each, at l of the tables or in the rows of a pass over blocks.
enum class Twiddles { none, each, rows };

template <class R, int W, Twiddles kind>
ORVEL_INLINE Complex<R, W> turned_by(Complex<R, W> z, const R* cosine, const R* sine)
{
    if constexpr (kind != Twiddles::none)
        return turned<R, W>(z, load_once<R, W>(cosine), load_once<R, W>(sine));
    else
        return turned<R, W>(z, *cosine, *sine);
}

// Transforms of the factors r and s. z[k2 + r * k3] belongs to element k + l * (k2 + r * k3). Each butterfly
// of the last factor gives its results to put(c): they are z[c], z[c + apart_in<r, s>] ...; so they need not
// wait for one another. Rows of roots have `row` numbers; see Group.
template <int r, int s>
constexpr int put_at_once = s > 1 ? s : r;
template <int r, int s>
constexpr int apart_in = s > 1 ? r : 1;

template <class R, int W, int r, int s, Twiddles kind, int row = twiddle_row, class Put>
ORVEL_INLINE void columns(const Step<R>& p, Complex<R, W> (&z)[r * s], Put put)
{
    constexpr bool by_rows = kind == Twiddles::rows;
    const Parts<R> in = hidden_from<by_rows>(p.in, p.at);
    const int64_t l = by_rows ? row : p.l, step = hidden<by_rows>(p.step);
    const R* const first_twiddles = hidden<by_rows>(p.first_twiddles + p.k);
    const R* const second_twiddles = by_rows ? first_twiddles + 2 * row * (r - 1) : p.second_twiddles + p.k;
    const bool twiddled = kind != Twiddles::none && (W > 1 || l > 1);
#pragma GCC unroll 16
    for (int i = 0; i < s; ++i) {
        Complex<R, W>* const x = z + i * r;
        read<R, W, r, Lanes::near>(in, step * i, step * s, kind == Twiddles::none ? p.layout : Layout::split,
                                   x);
#pragma GCC unroll 16
        for (int j = 1; j < r && twiddled; ++j) {
            const R* const roots = first_twiddles + 2 * l * (j - 1);
            x[j] = turned_by<R, W, kind>(x[j], roots, roots + l);
        }
        Butterfly<R, W, r>::run(x, 1);
        if constexpr (s == 1) put(0);
    }
    if constexpr (s > 1) {
#pragma GCC unroll 16
        for (int k2 = 0; k2 < r; ++k2) {
#pragma GCC unroll 16
            for (int i = 1; i < s; ++i) {
                Complex<R, W>& x = z[i * r + k2];
                if (by_rows) {
                    const R* const roots = second_twiddles + 2 * row * ((s - 1) * k2 + i - 1);
                    x = turned_by<R, W, kind>(x, roots, roots + row);
                } else if (twiddled || k2 > 0) {
                    const R* const roots = second_twiddles + 2 * l * r * (i - 1) + l * k2;
                    x = turned_by<R, W, kind>(x, roots, roots + l * r);
                }
            }
            Butterfly<R, W, s>::run(z + k2, r);
            put(k2);
        }
    }
}

// Those of a whole pass at k of the part b; see Pass.
template <class R>
ORVEL_INLINE Step<R> step_of(const Pass<R>& p, int64_t k, int64_t b, Layout layout)
{
    const Group<R>& g = p.group[0];
    return {p.in, k + p.l * b, p.l * p.m, g.first_twiddles, g.second_twiddles, p.l, k, layout};
}

// The first pass: the n results of a column are contiguous, those of column t from element `at` + t * `apart`
// on. The lanes are as they have been read.
template <class R, int W, int n>
ORVEL_INLINE void scatter(const Parts<R>& out, int64_t at, int64_t apart, Layout from,
                          const Complex<R, W> (&z)[n])
{
    constexpr int half = pairs_in_16_bytes<R>, all = 2 * half;
    const bool near = from != Layout::split && W > all;
    const int64_t by_half = apart * (near ? W / 2 : half), by_all = apart * (near ? half : all);
    const auto column = [&](int lane) {
        return lane / all * by_all + lane % all / half * by_half + lane % half * apart;
    };
    R* const parts[2] = {out.re + at, out.im + at};
#pragma GCC unroll 2
    for (int part = 0; part < 2; ++part) {
        R* const to = parts[part];
        if constexpr (n % W == 0) {
#pragma GCC unroll 16
            for (int c = 0; c < n; c += W) {
                Vector<R, W> x[W];
                for_each<W>([&](int t) { x[t] = part == 0 ? z[c + t].re : z[c + t].im; });
                isa::transpose<R, W>(x);
                for_each<W>([&](int t) { isa::at<W>(to + column(t) + c) = x[t]; });
            }
        } else {
            Vector<R, W> x[n];
            for_each<n>([&](int c) { x[c] = part == 0 ? z[c].re : z[c].im; });
            const R* const results = reinterpret_cast<const R*>(x);
#pragma GCC unroll 1
            for (int t = 0; t < W; ++t)
#pragma GCC unroll 1
                for (int c = 0; c < n; ++c) to[column(t) + c] = results[c * W + t];
        }
    }
}

// Loops have a copy of the pass: the compiler cannot know that no result is written over it.
template <class R, int W, int r, int s>
void first_pass(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    const Layout from = layout_of(p.in);
    for (int64_t b = 0; b < p.m; b += W) {
        if (b > p.m - W) b = p.m - W;
        Complex<R, W> z[r * s];
        columns<R, W, r, s, Twiddles::none>(step_of(p, 0, b, from), z, [](int) {});
        scatter<R, W, r * s>(p.out, b * r * s, r * s, from, z);
    }
}

// With W = 1 it is also a first one, whatever the layouts.
template <class R, int W, int r, int s>
void later_pass(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    const Layout to = layout_of(p.out);
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t k = 0; k < p.l; k += W) {
            if (k > p.l - W) k = p.l - W;
            Complex<R, W> z[r * s];
            columns<R, W, r, s, Twiddles::each>(step_of(p, k, b, Layout::split), z, [&](int c) ORVEL_LAMBDA {
                constexpr int apart = apart_in<r, s>;
                write<R, W, put_at_once<r, s>>(p.out, k + p.l * (c + r * s * b), p.l * apart, to, z + c,
                                               apart);
            });
        }
}

template <class R, int r, int s, int W = lanes<R>>
void run_pass(const Pass<R>& p)
{
    // The results of a first pass are transposed in squares where they fill whole ones.
    constexpr bool wide_first = (r * s) % W == 0 || (r * s) % 2 == 1 || (W == 2 && (r * s) % 2 == 0);
    if constexpr (W == 1) {
        later_pass<R, 1, r, s>(p);
    } else if (wide_first && p.l == 1 && p.m >= W && p.out.stride == 1) {
        if constexpr (wide_first) first_pass<R, W, r, s>(p);
    } else if (p.l >= W && p.in.stride == 1) {
        later_pass<R, W, r, s>(p);
    } else {
        run_pass<R, r, s, next_width<R, W>>(p);
    }
}

}  // namespace
}  // namespace orvel::fft
