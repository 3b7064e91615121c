// fft/isa/pass.h - one pass of a Fourier transform over vectors, for one instruction-set level
//
// Everything here has internal linkage, as in kernels/isa/tile.h. The passes are forward transforms; a
// backward one has its real and imaginary parts exchanged at both ends.
//
// Vectors run over k where l has room for one, over b in the first pass (l = 1). A range that is no multiple
// of the width ends with a vector that overlaps the one before: the output is never the input.
#pragma once

#include "fft/isa/loops.h"
#include "kernels/isa/tile.h"

#define ORVEL_INLINE inline __attribute__((always_inline))

namespace orvel::fft {
namespace {

using kernels::Vector;

// Real and imaginary parts of W complex numbers.
template <class R, int W>
struct Complex {
    Vector<R, W> re, im;

    ORVEL_INLINE Complex operator+(Complex z) const { return {re + z.re, im + z.im}; }
    ORVEL_INLINE Complex operator-(Complex z) const { return {re - z.re, im - z.im}; }
};

template <class R, int W>
ORVEL_INLINE Vector<R, W> load(const R* p)
{
    return *reinterpret_cast<const Vector<R, W>*>(p);
}
// The same, read once: compilers would rather read again than keep a register.
template <class R, int W>
ORVEL_INLINE Vector<R, W> load_once(const R* p)
{
    Vector<R, W> v = load<R, W>(p);
#if defined(__AVX512F__)
    __asm__("" : "+v"(v));
#elif defined(__x86_64__)
    __asm__("" : "+x"(v));
#endif
    return v;
}
template <class R, int W>
ORVEL_INLINE void store(R* p, Vector<R, W> v)
{
    *reinterpret_cast<Vector<R, W>*>(p) = v;
}

// How complex numbers lie in memory; see Parts. Single numbers are told by the stride alone.
enum class Layout { apart, pairs, exchanged };

template <class R>
ORVEL_INLINE Layout layout_of(const Parts<R>& p)
{
    return p.stride == 1 ? Layout::apart : p.im > p.re ? Layout::pairs : Layout::exchanged;
}

template <class R, int W>
struct OrderOf {
    typedef typename kernels::WholeOf<R>::type type __attribute__((vector_size(W * sizeof(R))));
};
template <class R, int W>
using Order = typename OrderOf<R, W>::type;

// Which of W elements a lane has. Between pairs and parts apart `near` is the cheapest order: each shuffle
// stays within 16 bytes.
enum class Lanes { in_turn, reversed, near, near_reversed };

template <class R, int W, Lanes lanes>
constexpr int element_of(int lane)
{
    constexpr int half = 8 / static_cast<int>(sizeof(R)), all = 2 * half;  // pairs in 8 and 16 bytes
    if (lanes == Lanes::reversed) return W - 1 - lane;
    if (lanes == Lanes::near_reversed) return W - 1 - element_of<R, W, Lanes::near>(lane);
    if (lanes == Lanes::in_turn || W <= all) return lane;
    const int first = lane / all * half, k = lane % all;
    return k < half ? first + k : W / 2 + first + k - half;
}

// Pairs are taken in the cheapest order.
constexpr Lanes lanes_of(Layout layout) { return layout == Layout::apart ? Lanes::in_turn : Lanes::near; }

template <class R, int W, Layout layout, Lanes lanes = Lanes::in_turn>
ORVEL_INLINE Complex<R, W> read(const Parts<R>& p, int64_t e)
{
    if constexpr (W == 1) {
        return {p.re[e * p.stride], p.im[e * p.stride]};
    } else if constexpr (layout == Layout::apart) {
        static_assert(lanes == Lanes::in_turn);
        return {load_once<R, W>(p.re + e), load_once<R, W>(p.im + e)};
    } else {
        const R* const at = (layout == Layout::pairs ? p.re : p.im) + 2 * e;
        const Vector<R, W> low = load<R, W>(at), high = load<R, W>(at + W);
        Order<R, W> even = {}, odd = {};
        for (int k = 0; k < W; ++k) {
            even[k] = 2 * element_of<R, W, lanes>(k);
            odd[k] = even[k] + 1;
        }
        const Vector<R, W> first = __builtin_shuffle(low, high, even);
        const Vector<R, W> second = __builtin_shuffle(low, high, odd);
        if constexpr (layout == Layout::pairs)
            return {first, second};
        else
            return {second, first};
    }
}

struct Cached {
    template <class R, int W>
    static ORVEL_INLINE void store(R* p, Vector<R, W> v)
    {
        fft::store<R, W>(p, v);
    }
};

template <class R, int W, Layout layout, Lanes lanes = Lanes::in_turn, class Memory = Cached>
ORVEL_INLINE void write(const Parts<R>& p, int64_t e, Complex<R, W> z)
{
    if constexpr (W == 1) {
        p.re[e * p.stride] = z.re;
        p.im[e * p.stride] = z.im;
    } else if constexpr (layout == Layout::apart) {
        static_assert(lanes == Lanes::in_turn);
        Memory::template store<R, W>(p.re + e, z.re);
        Memory::template store<R, W>(p.im + e, z.im);
    } else {
        R* const at = (layout == Layout::pairs ? p.re : p.im) + 2 * e;
        const Vector<R, W> first = layout == Layout::pairs ? z.re : z.im;
        const Vector<R, W> second = layout == Layout::pairs ? z.im : z.re;
        Order<R, W> order[2] = {};
        for (int k = 0; k < W; ++k) {
            const int element = element_of<R, W, lanes>(k), place = 2 * element % W;
            order[2 * element / W][place] = k;
            order[2 * element / W][place + 1] = k + W;
        }
        Memory::template store<R, W>(at, __builtin_shuffle(first, second, order[0]));
        Memory::template store<R, W>(at + W, __builtin_shuffle(first, second, order[1]));
    }
}

// In short loops within others, compilers would keep a pointer for each element of a column in memory and
// move them all on. So they must not know there that a value is that of the last column and a constant more.
template <bool hide, class T>
ORVEL_INLINE T hidden(T x)
{
    if constexpr (hide) __asm__("" : "+r"(x));
    return x;
}
template <bool hide, class R>
ORVEL_INLINE Parts<R> hidden_from(const Parts<R>& p, int64_t e)
{
    return {hidden<hide>(p.re + e * p.stride), hidden<hide>(p.im + e * p.stride), p.stride};
}

// z * (cosine - i sine)
template <class R, int W, class V>
ORVEL_INLINE Complex<R, W> turned(Complex<R, W> z, V cosine, V sine)
{
    return {z.re * cosine + z.im * sine, z.im * cosine - z.re * sine};
}

// Transforms of W columns of r numbers each, `apart` apart in x.
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

// sum over j of (x[j] + x[r - j]) cos(2 pi j k / r) and (x[j] - x[r - j]) sin(2 pi j k / r)
template <class R, int W, int r>
struct Butterfly {
    static ORVEL_INLINE void run(Complex<R, W>* x, int apart)
    {
        constexpr int half = r / 2;
        Complex<R, W> sum[half], difference[half], first = x[0];
#pragma GCC unroll 16
        for (int j = 1; j <= half; ++j) {
            sum[j - 1] = x[j * apart] + x[(r - j) * apart];
            difference[j - 1] = x[j * apart] - x[(r - j) * apart];
            first = first + sum[j - 1];
        }
#pragma GCC unroll 16
        for (int k = 1; k <= half; ++k) {
            Complex<R, W> even = x[0], odd = {};
#pragma GCC unroll 16
            for (int j = 1; j <= half; ++j) {
                const int jk = j * k % r, at = jk <= half ? jk : r - jk;
                const R cosine = static_cast<R>(odd_roots<r>[0][at - 1]);
                const R sine =
                    static_cast<R>(jk <= half ? odd_roots<r>[1][at - 1] : -odd_roots<r>[1][at - 1]);
                even.re += sum[j - 1].re * cosine;
                even.im += sum[j - 1].im * cosine;
                if (j == 1) {
                    odd.re = difference[0].re * sine;
                    odd.im = difference[0].im * sine;
                } else {
                    odd.re += difference[j - 1].re * sine;
                    odd.im += difference[j - 1].im * sine;
                }
            }
            x[k * apart] = {even.re + odd.im, even.im - odd.re};
            x[(r - k) * apart] = {even.re - odd.im, even.im + odd.re};
        }
        x[0] = first;
    }
};

// Where the columns of one step are and where their roots: element e is `step` numbers from the next, and
// those with the index k of the pass before it have theirs at k of the blocks.
template <class R>
struct Step {
    Parts<R> in;
    int64_t at, step;
    const R *first_roots, *second_roots;
    int64_t l, k;
};

// Of the lanes of a vector: those of a first pass have none, and then one for all within the pass. Others
// have one each, at l of the blocks or in the rows of a pass over blocks.
enum class Roots { none, each, rows };

template <class R, int W, Roots kind>
ORVEL_INLINE Complex<R, W> turned_by(Complex<R, W> z, const R* cosine, const R* sine)
{
    if constexpr (kind != Roots::none)
        return turned<R, W>(z, load_once<R, W>(cosine), load_once<R, W>(sine));
    else
        return turned<R, W>(z, *cosine, *sine);
}

// Transforms of the factors r and s. On return z[k2 + r * k3] belongs to element k + l * (k2 + r * k3). Rows
// of roots have `row` numbers; see Group.
template <class R, int W, int r, int s, Roots kind, Layout layout, int row = root_row,
          Lanes lanes = Lanes::in_turn>
ORVEL_INLINE void columns(const Step<R>& p, Complex<R, W> (&z)[r * s])
{
    constexpr bool by_rows = kind == Roots::rows;
    const Parts<R> in = hidden_from<by_rows>(p.in, p.at);
    const int64_t l = by_rows ? row : p.l, step = hidden<by_rows>(p.step);
    const R* const first_roots = hidden<by_rows>(p.first_roots + p.k);
    const R* const second_roots = by_rows ? first_roots + 2 * row * (r - 1) : p.second_roots + p.k;
#pragma GCC unroll 16
    for (int i = 0; i < s; ++i) {
#pragma GCC unroll 16
        for (int j = 0; j < r; ++j) {
            Complex<R, W> x = read<R, W, layout, lanes>(in, step * (i + s * j));
            if (kind != Roots::none && j > 0) {
                const R* const roots = first_roots + 2 * l * (j - 1);
                x = turned_by<R, W, kind>(x, roots, roots + l);
            }
            z[i * r + j] = x;
        }
        Butterfly<R, W, r>::run(z + i * r, 1);
    }
    if constexpr (s > 1) {
#pragma GCC unroll 16
        for (int k2 = 0; k2 < r; ++k2) {
#pragma GCC unroll 16
            for (int i = 1; i < s; ++i) {
                Complex<R, W>& x = z[i * r + k2];
                if (by_rows) {
                    const R* const roots = second_roots + 2 * row * ((s - 1) * k2 + i - 1);
                    x = turned_by<R, W, kind>(x, roots, roots + row);
                } else if (kind == Roots::each || k2 > 0) {
                    const R* const roots = second_roots + 2 * l * r * (i - 1) + l * k2;
                    x = turned_by<R, W, kind>(x, roots, roots + l * r);
                }
            }
            Butterfly<R, W, s>::run(z + k2, r);
        }
    }
}

// That of a whole pass for the columns at k of the part b; see Pass.
template <class R>
ORVEL_INLINE Step<R> step_of(const Pass<R>& p, int64_t k, int64_t b)
{
    const Group<R>& g = p.group[0];
    return {p.in, k + p.l * b, p.l * p.m, g.first_roots, g.second_roots, p.l, k};
}

// The first pass: the n results of column t, in the lanes' order, are contiguous from element `at` + t *
// `apart` on.
template <class R, int W, int n, Lanes lanes = Lanes::in_turn>
ORVEL_INLINE void scatter(const Parts<R>& out, int64_t at, int64_t apart, const Complex<R, W> (&z)[n])
{
    R* const parts[2] = {out.re + at, out.im + at};
    for (int part = 0; part < 2; ++part) {
        R* const to = parts[part];
        if constexpr (n % W == 0) {
#pragma GCC unroll 16
            for (int c = 0; c < n; c += W) {
                Vector<R, W> x[W];
#pragma GCC unroll 16
                for (int t = 0; t < W; ++t) x[t] = part == 0 ? z[c + t].re : z[c + t].im;
                kernels::transpose_square<R, W>(x);
#pragma GCC unroll 16
                for (int t = 0; t < W; ++t) store<R, W>(to + element_of<R, W, lanes>(t) * apart + c, x[t]);
            }
        } else {
            Vector<R, W> x[n];
#pragma GCC unroll 16
            for (int c = 0; c < n; ++c) x[c] = part == 0 ? z[c].re : z[c].im;
            const R* const from = reinterpret_cast<const R*>(x);
#pragma GCC unroll 1
            for (int t = 0; t < W; ++t)
#pragma GCC unroll 1
                for (int c = 0; c < n; ++c) to[element_of<R, W, lanes>(t) * apart + c] = from[c * W + t];
        }
    }
}

// Loops have a copy of the pass: the compiler cannot know that no result is written over it.
template <class R, int W, int r, int s, Layout layout>
void first_pass(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    for (int64_t b = 0; b < p.m; b += W) {
        if (b > p.m - W) b = p.m - W;
        Complex<R, W> z[r * s];
        columns<R, W, r, s, Roots::none, layout, root_row, lanes_of(layout)>(step_of(p, 0, b), z);
        scatter<R, W, r * s, lanes_of(layout)>(p.out, b * r * s, r * s, z);
    }
}

template <class R, int W, int r, int s, Layout layout>
void later_pass(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t k = 0; k < p.l; k += W) {
            if (k > p.l - W) k = p.l - W;
            Complex<R, W> z[r * s];
            columns<R, W, r, s, Roots::each, Layout::apart>(step_of(p, k, b), z);
#pragma GCC unroll 16
            for (int c = 0; c < r * s; ++c) write<R, W, layout>(p.out, k + p.l * (c + r * s * b), z[c]);
        }
}

// One column at a time, whatever the layouts.
template <class R, int r, int s, bool first>
void plain_pass(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t k = 0; k < p.l; ++k) {
            Complex<R, 1> z[r * s];
            columns<R, 1, r, s, first ? Roots::none : Roots::each, Layout::apart>(step_of(p, k, b), z);
            for (int c = 0; c < r * s; ++c)
                write<R, 1, Layout::apart>(p.out, k + p.l * (c + r * s * b), z[c]);
        }
}

template <class R, int r, int s, int W>
void with_width(const Pass<R>& p)
{
    // The results of a first pass are transposed in squares where they fill whole ones.
    constexpr bool wide_first = (r * s) % W == 0 || (r * s) % 2 == 1 || (W == 2 && (r * s) % 2 == 0);
    if constexpr (W == 1) {
        p.l == 1 ? plain_pass<R, r, s, true>(p) : plain_pass<R, r, s, false>(p);
    } else if (p.l == 1 && p.m >= W && wide_first && p.out.stride == 1) {
        if constexpr (wide_first) switch (layout_of(p.in)) {
                case Layout::apart:
                    return first_pass<R, W, r, s, Layout::apart>(p);
                case Layout::pairs:
                    return first_pass<R, W, r, s, Layout::pairs>(p);
                case Layout::exchanged:
                    return first_pass<R, W, r, s, Layout::exchanged>(p);
            }
    } else if (p.l >= W && p.in.stride == 1) {
        switch (layout_of(p.out)) {
            case Layout::apart:
                return later_pass<R, W, r, s, Layout::apart>(p);
            case Layout::pairs:
                return later_pass<R, W, r, s, Layout::pairs>(p);
            case Layout::exchanged:
                return later_pass<R, W, r, s, Layout::exchanged>(p);
        }
    } else {
        // Widths go down to four lanes of float and two of double.
        constexpr int next = W * static_cast<int>(sizeof(R)) > 16 ? W / 2 : 1;
        with_width<R, r, s, next>(p);
    }
}

template <class R, int r, int s>
void pass(const Pass<R>& p)
{
    with_width<R, r, s, kernels::lanes<R>>(p);
}

}  // namespace
}  // namespace orvel::fft
