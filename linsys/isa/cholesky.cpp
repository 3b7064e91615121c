// linsys/isa/cholesky.cpp - Cholesky factorization of a small matrix, on the stack
//
// Rows of R lie side by side in vectors, real and imaginary parts apart. An element gets its products in
// ascending order of the steps, as those of the larger products do: with a complex factor conjugated, the
// products with the real part of the second one come first.
#include "linsys/isa/rows.h"

namespace orvel::linsys {

namespace {

template <class R, bool Complex>
class SmallTriangle {
public:
    explicit SmallTriangle(int64_t n) : n_(n), half_((n + L - 1) / L * L) {}

    // Blocks beside the diagonal are transposed in registers. What is left of it is zero.
    void load(const R* a, int64_t lda)
    {
        for (int64_t i = 0; i < n_ * parts * half_; i += L) wide(w_ + i) = Wide<R>{};
        for (int64_t j = 0; j < n_; j += L) {
            const int64_t columns = n_ - j < L ? n_ - j : L;
            for (int64_t i = 0; i < j; i += L) {
                if (!Complex && columns == L) {
                    transpose(a + i + j * lda, lda, w_ + i * half_ + j, half_);
                    continue;
                }
                for (int64_t c = j; c < j + columns; ++c)
                    for (int64_t r = i; r < i + L; ++r) take(a, lda, r, c);
            }
            for (int64_t c = j; c < j + columns; ++c)
                for (int64_t r = j; r <= c; ++r) take(a, lda, r, c);
        }
    }

    // The first `columns` columns.
    void store(int64_t columns, R* a, int64_t lda) const
    {
        for (int64_t j = 0; j < columns; j += L) {
            const int64_t here = columns - j < L ? columns - j : L;
            for (int64_t i = 0; i < j; i += L) {
                if (!Complex && here == L) {
                    transpose(w_ + i * half_ + j, half_, a + i + j * lda, lda);
                    continue;
                }
                for (int64_t c = j; c < j + here; ++c)
                    for (int64_t r = i; r < i + L; ++r) give(a, lda, r, c);
            }
            for (int64_t c = j; c < j + here; ++c)
                for (int64_t r = j; r <= c; ++r) give(a, lda, r, c);
        }
    }

    // The rows of R, up to the first pivot that is not above `least`; returns how many. What the next step
    // waits for, its pivot, is formed beside the vectors.
    int64_t eliminate(const R* least)
    {
        R pivot = w_[0];
        for (int64_t i = 0; i < n_; ++i) {
            if (!(pivot > least[i])) return i;
            const R root = sizeof(R) == 4 ? static_cast<R>(__builtin_sqrtf(static_cast<float>(pivot)))
                                          : static_cast<R>(__builtin_sqrt(static_cast<double>(pivot)));
            if (i + 1 == n_) {
                divide(i, root);
                continue;
            }
            subtract(i + 1, i);
            const R* const row = w_ + i * parts * half_ + i + 1;
            const R re = row[0] / root, im = Complex ? row[half_] / root : R(0);
            pivot = row[parts * half_];
            pivot -= re * re;
            if constexpr (Complex) pivot -= im * im;
            divide(i, root, re, im, (i + 1) / L * L);
        }
        return n_;
    }

private:
    static constexpr int L = lanes<R>;
    static constexpr int64_t parts = Complex ? 2 : 1;

    static void transpose(const R* from, int64_t step, R* to, int64_t step_of_to)
    {
        Wide<R> x[L];
#pragma GCC unroll 16
        for (int k = 0; k < L; ++k) x[k] = wide(from + k * step);
        isa::transpose<R, L>(x);
#pragma GCC unroll 16
        for (int k = 0; k < L; ++k) wide(to + k * step_of_to) = x[k];
    }
    void take(const R* a, int64_t lda, int64_t r, int64_t c)
    {
        w_[parts * r * half_ + c] = a[parts * (r + c * lda)];
        if constexpr (Complex) w_[(2 * r + 1) * half_ + c] = a[2 * (r + c * lda) + 1];
    }
    void give(R* a, int64_t lda, int64_t r, int64_t c) const
    {
        a[parts * (r + c * lda)] = w_[parts * r * half_ + c];
        if constexpr (Complex) a[2 * (r + c * lda) + 1] = w_[(2 * r + 1) * half_ + c];
    }

    // Row i from its diagonal on, and zeros before it. From column `next` on the row below loses its products
    // with (re, im), the element of row i that is in its column.
    void divide(int64_t i, R root, R re = 0, R im = 0, int64_t next = INT64_MAX)
    {
        const int64_t first = i / L * L;
        R* const row = w_ + i * parts * half_;
        for (int64_t v = first; v < half_; v += L) {
            auto e = Rows<R, Complex>::load(row + v, half_);
            if (v == first) e = Rows<R, Complex>::choose(below<R>(i - 1 - first), e, {Wide<R>{}, Wide<R>{}});
            e.re /= root;
            if constexpr (Complex) e.im /= root;
            e.store(row + v, half_);
            if (v < next) continue;
            R* const under = row + parts * half_ + v;
            auto sum = Rows<R, Complex>::load(under, half_);
            lose(sum, e, re, im);
            sum.store(under, half_);
        }
        row[i] = root;
        if constexpr (Complex) row[half_ + i] = 0;
    }

    // sum -= conjugate of (re, im) * e
    static void lose(Rows<R, Complex>& sum, const Rows<R, Complex>& e, R re, R im)
    {
        sum.re -= re * e.re;
        if constexpr (Complex) {
            sum.im += im * e.re;
            sum.re -= im * e.im;
            sum.im -= re * e.im;
        }
    }

    // Row i loses its products with the rows before `to`.
    void subtract(int64_t i, int64_t to)
    {
        for (int64_t v = i / L * L; v < half_; v += 4 * L) switch ((half_ - v) / L) {
                case 1:
                    subtract<1>(i, v, to);
                    break;
                case 2:
                    subtract<2>(i, v, to);
                    break;
                case 3:
                    subtract<3>(i, v, to);
                    break;
                default:
                    subtract<4>(i, v, to);
            }
    }

    // V vectors of it.
    template <int V>
    void subtract(int64_t i, int64_t v, int64_t to)
    {
        Rows<R, Complex> sum[V];
        R* const row = w_ + i * parts * half_ + v;
#pragma GCC unroll 4
        for (int u = 0; u < V; ++u) sum[u] = Rows<R, Complex>::load(row + u * L, half_);
        for (int64_t k = 0; k < to; ++k) {
            const R* const above = w_ + k * parts * half_;
            const R re = above[i], im = Complex ? above[half_ + i] : R(0);
#pragma GCC unroll 4
            for (int u = 0; u < V; ++u)
                lose(sum[u], Rows<R, Complex>::load(above + v + u * L, half_), re, im);
        }
#pragma GCC unroll 4
        for (int u = 0; u < V; ++u) sum[u].store(row + u * L, half_);
    }

    int64_t n_, half_;
    alignas(64) R w_[small_order * small_order * parts];
};

template <class R, bool Complex>
int64_t cholesky(int64_t n, const R* a, int64_t lda, R* fact, int64_t ldfac, const R* least)
{
    SmallTriangle<R, Complex> triangle(n);
    triangle.load(a, lda);
    const int64_t done = triangle.eliminate(least);
    triangle.store(done, fact, ldfac);
    return done;
}

}  // namespace

const isa::ForAll<SmallCholesky> ORVEL_ISA::small_cholesky_loops = {
    cholesky<float, false>, cholesky<double, false>, cholesky<float, true>, cholesky<double, true>};

}  // namespace orvel::linsys
