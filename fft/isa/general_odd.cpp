// fft/isa/general_odd.cpp - passes of other odd factors, multiplied out, for the level ORVEL_ISA
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

// Columns k..k+W-1 of the part b, or those of the parts b..b+W-1 in the first pass. The sums and differences
// of opposite elements, then every pair of results from them.
template <class R, int W, bool first, Layout from, Layout to>
void general_columns(const Pass<R>& p, int64_t k, int64_t b)
{
    const int64_t r = p.group[0].first, half = r / 2, l = p.l;
    Complex<R, W> sum[largest_general / 2], difference[largest_general / 2];
    const auto element = [&](int64_t i) __attribute__((always_inline))
    {
        const Complex<R, W> x = read<R, W, from>(p.in, k + l * (b + p.m * i));
        if (first) return x;
        const R* const roots = p.group[0].first_roots + 2 * l * (i - 1) + k;
        return turned<R, W>(x, load<R, W>(roots), load<R, W>(roots + l));
    };
    const auto put = [&](int64_t k2, Complex<R, W> z) __attribute__((always_inline))
    {
        if constexpr (first && W > 1) {
            for (int t = 0; t < W; ++t) {
                p.out.re[k2 + r * (b + t)] = z.re[t];
                p.out.im[k2 + r * (b + t)] = z.im[t];
            }
        } else {
            write<R, W, to>(p.out, k + l * (k2 + r * b), z);
        }
    };
    const Complex<R, W> x0 = read<R, W, from>(p.in, k + l * b);
    Complex<R, W> all = x0;
    for (int64_t i = 1; i <= half; ++i) {
        const Complex<R, W> low = element(i), high = element(r - i);
        sum[i - 1] = low + high;
        difference[i - 1] = low - high;
        all = all + sum[i - 1];
    }
    put(0, all);
    for (int64_t k2 = 1; k2 <= half; ++k2) {
        Complex<R, W> even = x0, odd = {};
        int64_t at = 0;
        for (int64_t i = 0; i < half; ++i) {
            at += k2;
            if (at >= r) at -= r;
            const R cosine = p.circle[2 * at], sine = p.circle[2 * at + 1];
            even.re += sum[i].re * cosine;
            even.im += sum[i].im * cosine;
            odd.re += difference[i].re * sine;
            odd.im += difference[i].im * sine;
        }
        put(k2, {even.re + odd.im, even.im - odd.re});
        put(r - k2, {even.re - odd.im, even.im + odd.re});
    }
}

template <class R, int W, Layout from>
void general_first(const Pass<R>& p)
{
    for (int64_t b = 0; b < p.m; b += W) {
        if (b > p.m - W) b = p.m - W;
        general_columns<R, W, true, from, Layout::apart>(p, 0, b);
    }
}

template <class R, int W, bool first, Layout to>
void general_later(const Pass<R>& p)
{
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t k = 0; k < p.l; k += W) {
            if (k > p.l - W) k = p.l - W;
            general_columns<R, W, first, Layout::apart, to>(p, k, b);
        }
}

template <class R, int W>
void general_odd(const Pass<R>& p)
{
    if constexpr (W == 1) {
        p.l == 1 ? general_later<R, 1, true, Layout::apart>(p) : general_later<R, 1, false, Layout::apart>(p);
    } else if (p.l == 1 && p.m >= W && p.out.stride == 1) {
        switch (layout_of(p.in)) {
            case Layout::apart:
                return general_first<R, W, Layout::apart>(p);
            case Layout::pairs:
                return general_first<R, W, Layout::pairs>(p);
            case Layout::exchanged:
                return general_first<R, W, Layout::exchanged>(p);
        }
    } else if (p.l >= W && p.in.stride == 1) {
        switch (layout_of(p.out)) {
            case Layout::apart:
                return general_later<R, W, false, Layout::apart>(p);
            case Layout::pairs:
                return general_later<R, W, false, Layout::pairs>(p);
            case Layout::exchanged:
                return general_later<R, W, false, Layout::exchanged>(p);
        }
    } else {
        general_odd<R, (W * static_cast<int>(sizeof(R)) > 16 ? W / 2 : 1)>(p);
    }
}

}  // namespace

namespace ORVEL_ISA {
extern const PassLoop general_odd_pass;
const PassLoop general_odd_pass = {general_odd<float, kernels::lanes<float>>,
                                   general_odd<double, kernels::lanes<double>>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
