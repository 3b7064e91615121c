// linsys/isa/vectors.cpp - loops over whole vectors: scale factors, complex numbers apart and together, the
// growth of the condition estimate
#include "linsys/isa/rows.h"

namespace orvel::linsys {

namespace {

// ---- scale factors ----------------------------------------------------------------------------------------

template <class R>
void raise_maxima(int64_t m, const R* x, R* __restrict maxima)
{
    for (int64_t i = 0; i < m; ++i) {
        const R size = x[i] < 0 ? -x[i] : x[i];
        maxima[i] = size > maxima[i] ? size : maxima[i];
    }
}

template <class R>
void raise_complex_maxima(int64_t m, const R* x, R* __restrict maxima)
{
    for (int64_t i = 0; i < m; ++i) {
        const R re = x[2 * i] < 0 ? -x[2 * i] : x[2 * i],
                im = x[2 * i + 1] < 0 ? -x[2 * i + 1] : x[2 * i + 1];
        maxima[i] = re + im > maxima[i] ? re + im : maxima[i];
    }
}

// ---- complex numbers as pairs -----------------------------------------------------------------------------

template <class R>
void split(int64_t m, const R* pairs, R* re, R* im)
{
    constexpr int L = lanes<R>;
    const Whole<R> even = 2 * lane_numbers<R>(), odd = even + 1;
    int64_t i = 0;
    for (; i + L <= m; i += L) {
        const Wide<R> low = wide(pairs + 2 * i), high = wide(pairs + 2 * i + L);
        wide(re + i) = isa::shuffle(low, high, even);
        wide(im + i) = isa::shuffle(low, high, odd);
    }
    for (; i < m; ++i) re[i] = pairs[2 * i], im[i] = pairs[2 * i + 1];
}

template <class R>
void join(int64_t m, const R* re, const R* im, R* pairs)
{
    constexpr int L = lanes<R>;
    const Whole<R> lane = lane_numbers<R>(), low = lane / 2 + (lane & 1) * L, high = low + L / 2;
    int64_t i = 0;
    for (; i + L <= m; i += L) {
        const Wide<R> a = wide(re + i), b = wide(im + i);
        wide(pairs + 2 * i) = isa::shuffle(a, b, low);
        wide(pairs + 2 * i + L) = isa::shuffle(a, b, high);
    }
    for (; i < m; ++i) pairs[2 * i] = re[i], pairs[2 * i + 1] = im[i];
}

// ---- the estimate of the condition ------------------------------------------------------------------------

// w * u on a vector of pairs; the factors are (re, re) and (-im, im).
template <class R, bool Complex>
inline Wide<R> product(Wide<R> same, Wide<R> cross, Wide<R> u)
{
    if constexpr (Complex)
        return same * u + cross * isa::exchanged<R, lanes<R>>(u);
    else
        return same * u;
}

template <class R, bool Complex>
void grow(int64_t n, const R* u, const R* wm, const R* wp, R* z, R* before, R* after)
{
    constexpr int L = lanes<R>;
    const int64_t count = Complex ? 2 * n : n;
    const Wide<R> sign = Complex ? ((lane_numbers<R>() & 1) == 0 ? Wide<R>{} - 1 : Wide<R>{} + 1) : Wide<R>{};
    const Wide<R> minus = Wide<R>{} + wm[0], plus = Wide<R>{} + wp[0];
    const Wide<R> minus_cross = Complex ? sign * wm[1] : sign, plus_cross = Complex ? sign * wp[1] : sign;
    Wide<R> old_sums = wide(before), new_sums = wide(after);
    for (int64_t i = 0; i < count; i += L) {
        const Wide<R> e = wide(u + i), old = wide(z + i);
        old_sums += magnitude<R>(old + product<R, Complex>(minus, minus_cross, e));
        const Wide<R> now = old + product<R, Complex>(plus, plus_cross, e);
        new_sums += magnitude<R>(now);
        wide(z + i) = now;
    }
    wide(before) = old_sums;
    wide(after) = new_sums;
}

template <class R, bool Complex>
constexpr VectorLoops<R> loops = {Complex ? raise_complex_maxima<R> : raise_maxima<R>, split<R>, join<R>,
                                  grow<R, Complex>};

}  // namespace

const isa::ForAll<VectorLoops> ORVEL_ISA::vector_loops = {loops<float, false>, loops<double, false>,
                                                          loops<float, true>, loops<double, true>};

}  // namespace orvel::linsys
