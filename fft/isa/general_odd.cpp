// fft/isa/general_odd.cpp - passes of the odd factors from 7 on, multiplied out, for the level ORVEL_ISA
//
// The factors 7, 11 and 13 are known to the compiler, so that their sums stay in registers; there is no loop
// over the results that is written out, which would be as fast and take ten times the code.
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

// The roots of r that the result k takes in turn.
template <class R, int r>
struct Multiples {
    R cosine[r / 2][r / 2] = {}, sine[r / 2][r / 2] = {};

    constexpr Multiples()
    {
        for (int k = 1; k <= r / 2; ++k)
            for (int j = 1; j <= r / 2; ++j) {
                cosine[k - 1][j - 1] = odd_cosine<R, r>(j, k);
                sine[k - 1][j - 1] = odd_sine<R, r>(j, k);
            }
    }
};
template <class R, int r>
constexpr Multiples<R, r> multiples;

// The results k and r - k from the sums and differences of opposite elements; r = 0 is any factor.
template <class R, int W, int r>
ORVEL_INLINE Opposites<R, W> results_at(const Pass<R>& p, int64_t k, Complex<R, W> first,
                                        const Complex<R, W>* sum, const Complex<R, W>* difference)
{
    if constexpr (r > 0) {
        return odd_results<R, W, r / 2>(
            first, sum, difference, [k](int j) { return multiples<R, r>.cosine[k - 1][j - 1]; },
            [k](int j) { return multiples<R, r>.sine[k - 1][j - 1]; });
    } else {
        const int64_t factor = p.group[0].first;
        Complex<R, W> even = first, odd = {};
        int64_t at = 0;
        for (int64_t i = 0; i < factor / 2; ++i) {
            at += k;
            if (at >= factor) at -= factor;
            const R cosine = p.circle[2 * at], sine = p.circle[2 * at + 1];
            even.re += sum[i].re * cosine;
            even.im += sum[i].im * cosine;
            odd.re += difference[i].re * sine;
            odd.im += difference[i].im * sine;
        }
        return {{even.re + odd.im, even.im - odd.re}, {even.re - odd.im, even.im + odd.re}};
    }
}

// Columns k..k+W-1 of the part b, or those of the parts b..b+W-1 in the first pass.
template <class R, int W, int r, bool first>
ORVEL_INLINE void odd_columns(const Pass<R>& p, int64_t k, int64_t b, Layout from, Layout to)
{
    constexpr int most = (r > 0 ? r : static_cast<int>(largest_general)) / 2;
    const int64_t factor = r > 0 ? r : p.group[0].first, half = factor / 2, l = p.l, step = l * p.m;
    Complex<R, W> sum[most], difference[most];
    // Elements or results i and factor - i.
    const auto put = [&](int64_t i, const Opposites<R, W>& z) __attribute__((always_inline))
    {
        const Complex<R, W> both[2] = {z.low, z.high};
        if constexpr (first && W > 1) {
            for (int t = 0; t < W; ++t)
                for (int at = 0; at < 2; ++at) {
                    const int64_t e = (at == 0 ? i : factor - i) + factor * (b + t);
                    p.out.re[e] = both[at].re[t];
                    p.out.im[e] = both[at].im[t];
                }
        } else {
            write<R, W, 2>(p.out, k + l * (i + factor * b), l * (factor - 2 * i), to, both, 1);
        }
    };
    Complex<R, W> x0;
    read<R, W, 1, Lanes::in_turn>(p.in, k + l * b, 0, from, &x0);
    Complex<R, W> all = x0;
    for (int64_t i = 1; i <= half; ++i) {
        Complex<R, W> x[2];
        read<R, W, 2, Lanes::in_turn>(p.in, k + l * b + step * i, step * (factor - 2 * i), from, x);
        if (!first)
            for (int at = 0; at < 2; ++at) {
                const R* const roots =
                    p.group[0].first_twiddles + 2 * l * ((at == 0 ? i : factor - i) - 1) + k;
                x[at] = turned<R, W>(x[at], isa::at<W>(roots), isa::at<W>(roots + l));
            }
        sum[i - 1] = x[0] + x[1];
        difference[i - 1] = x[0] - x[1];
        all = all + sum[i - 1];
    }
    if constexpr (first && W > 1)
        for (int t = 0; t < W; ++t)
            p.out.re[factor * (b + t)] = all.re[t], p.out.im[factor * (b + t)] = all.im[t];
    else
        write<R, W, 1>(p.out, k + l * factor * b, 0, to, &all, 1);
#pragma GCC unroll 1
    for (int64_t i = 1; i <= half; ++i) put(i, results_at<R, W, r>(p, i, x0, sum, difference));
}

template <class R, int W, int r, bool first>
void odd_pass(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    const Layout from = first ? layout_of(p.in) : Layout::split, to = layout_of(p.out);
    const int64_t parts = first ? W : 1;
    for (int64_t b = 0; b < p.m; b += parts) {
        if (b > p.m - parts) b = p.m - parts;
        for (int64_t k = 0; k < p.l; k += W) {
            if (k > p.l - W && !first) k = p.l - W;
            odd_columns<R, W, r, first>(p, k, b, from, to);
        }
    }
}

template <class R, int r, int W = lanes<R>>
void run_odd_pass(const Pass<R>& p)
{
    if constexpr (W == 1 && r > 0) {
        later_pass<R, 1, r, 1>(p);
    } else if constexpr (W == 1) {
        p.l == 1 ? odd_pass<R, 1, r, true>(p) : odd_pass<R, 1, r, false>(p);
    } else if (p.l == 1 && p.m >= W && p.out.stride == 1) {
        odd_pass<R, W, r, true>(p);
    } else if (p.l >= W && p.in.stride == 1) {
        odd_pass<R, W, r, false>(p);
    } else {
        run_odd_pass<R, r, next_width<R, W>>(p);
    }
}

template <class R>
void general_odd_pass(const Pass<R>& p)
{
    switch (p.group[0].first) {
        case 11:
            return run_odd_pass<R, 11>(p);
        case 13:
            return run_odd_pass<R, 13>(p);
        default:
            return run_odd_pass<R, 0>(p);
    }
}

}  // namespace

const isa::ForReals<PassLoop> ORVEL_ISA::general_odd_passes = {general_odd_pass<float>,
                                                               general_odd_pass<double>};

}  // namespace orvel::fft
