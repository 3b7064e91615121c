// linsys/isa/small_matrix.cpp - all of the factorization of a small matrix, on the stack
#include "linsys/isa/step.h"

namespace orvel::linsys {

namespace {

// Columns of A, interleaved when complex, to the columns of a panel and back.
template <class R, bool Complex>
inline void load_column(int64_t n, const R* from, R* to, int64_t half)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    if constexpr (!Complex)
        for (; i + L <= n; i += L) wide(to + i) = wide(from + i);
#pragma GCC unroll 1
    for (; i < n; ++i) {
        to[i] = from[Complex ? 2 * i : i];
        if constexpr (Complex) to[half + i] = from[2 * i + 1];
    }
}

template <class R, bool Complex>
inline void store_column(int64_t n, const R* from, R* to, int64_t half)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    if constexpr (!Complex)
        for (; i + L <= n; i += L) wide(to + i) = wide(from + i);
#pragma GCC unroll 1
    for (; i < n; ++i) {
        to[Complex ? 2 * i : i] = from[i];
        if constexpr (Complex) to[2 * i + 1] = from[half + i];
    }
}

template <class R>
inline void swap_numbers(R& a, R& b)
{
    const R c = a;
    a = b;
    b = c;
}

template <class R>
constexpr R largest_number = sizeof(R) == 4 ? R(__FLT_MAX__) : R(__DBL_MAX__);

// Scale factors: 1 / the largest magnitude of a row, 1 where it is below `small`. The magnitude of a complex
// number may be beyond the largest number. Rows behind the last have none: nothing is divided by it.
template <class R, bool Complex>
inline void scale_factors(int64_t n, const R* p, PanelShape shape, R small, R* s)
{
    constexpr int L = lanes<R>;
    for (int64_t row = 0; row < n; row += L) {
        Wide<R> largest = {};
        for (int64_t j = 0; j < n; ++j) {
            const auto x = Rows<R, Complex>::load(p + j * shape.step + row, shape.half);
            Wide<R> size = magnitude<R>(x.re);
            if constexpr (Complex) size = held(size + magnitude<R>(x.im));
            largest = size > largest ? size : largest;
        }
        const Wide<R> one = Wide<R>{} + R(1), most = Wide<R>{} + largest_number<R>;
        const Wide<R> size = largest >= small ? (largest > most ? most : largest) : one;
        // Held, so that a zero is not even divided by where the quotient is not taken.
        wide(s + row) = one / held(size);
    }
    for (int64_t row = n; row % L != 0; ++row) s[row] = 0;
}

template <class R, bool Complex>
bool factor_small(int64_t n, const R* a, int64_t lda, R* fact, int64_t ldfac, R* s, int32_t* ipvt, R small,
                  void (*invert)(const R* x, R* t))
{
    constexpr int64_t L = lanes<R>, parts = Complex ? 2 : 1, room = small_order;
    const int64_t half = (n + L - 1) / L * L;
    const PanelShape shape{parts * half, half};
    alignas(64) R p[room * room * parts + 64];
    alignas(64) R scale[room + 64];
    for (int64_t j = 0; j < n; ++j) {
        R* const column = p + j * shape.step;
        if (half > n) {
            wide(column + half - L) = Wide<R>{};
            if constexpr (Complex) wide(column + 2 * half - L) = Wide<R>{};
        }
        load_column<R, Complex>(n, a + parts * j * lda, column, half);
    }
    scale_factors<R, Complex>(n, p, shape, small, scale);

    bool singular = false;
    int64_t best = pivot<R, Complex>(0, n, p, scale, shape);
    for (int64_t c = 0; c + 1 < n; ++c) {
        R* const column = p + c * shape.step;
        ipvt[c] = static_cast<int32_t>(best + 1);
        const R x[2] = {column[best], Complex ? column[half + best] : R(0)};
        R size = x[0] < 0 ? -x[0] : x[0];
        if constexpr (Complex) size += x[1] < 0 ? -x[1] : x[1];
        if (!(size > small)) {
            singular = true;
            best = pivot<R, Complex>(c + 1, n, column + shape.step, scale, shape);
            continue;
        }
        if (best != c) {
            swap_numbers(scale[c], scale[best]);
            for (int64_t j = c; j < n; ++j) {
                R* const other = p + j * shape.step;
                swap_numbers(other[c], other[best]);
                if constexpr (Complex) swap_numbers(other[half + c], other[half + best]);
            }
        }
        R t[2] = {};
        if constexpr (Complex)
            invert(x, t);
        else
            t[0] = R(-1) / x[0];
        best = step<R, Complex>(c, n, n, t, scale, p, shape);
    }
    ipvt[n - 1] = static_cast<int32_t>(n);
    for (int64_t j = 0; j < n; ++j)
        store_column<R, Complex>(n, p + j * shape.step, fact + parts * j * ldfac, half);
    load_column<R, false>(n, scale, s, half);
    const R* const last = fact + parts * (n - 1) * (ldfac + 1);
    R size = last[0] < 0 ? -last[0] : last[0];
    if constexpr (Complex) size += last[1] < 0 ? -last[1] : last[1];
    return singular || size <= small;
}

}  // namespace

const isa::ForAll<SmallMatrix> ORVEL_ISA::small_matrix_loops = {
    factor_small<float, false>, factor_small<double, false>, factor_small<float, true>,
    factor_small<double, true>};

}  // namespace orvel::linsys
