// kernels/isa/gemv.cpp - products of a matrix by columns with a vector
//
// add_columns adds the columns to each element of y in ascending order. dot_columns forms each sum in vectors
// of partial sums, two to a column, whatever the alignment.
#include "kernels/isa/loops.h"
#include "kernels/isa/tile.h"

namespace orvel::kernels {

namespace {

template <class R>
using Lane = Vector<R, lanes<R>>;

template <class R>
inline const Lane<R>& at(const R* p)
{
    return *reinterpret_cast<const Lane<R>*>(p);
}
template <class R>
inline Lane<R>& at(R* p)
{
    return *reinterpret_cast<Lane<R>*>(p);
}

// V vectors of rows stay in registers while N columns pass.
template <class R, int V, int N>
inline void add_block(const R* a, int64_t lda, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    Lane<R> sum[V];
#pragma GCC unroll 8
    for (int v = 0; v < V; ++v) sum[v] = at(y + v * L);
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 8
        for (int v = 0; v < V; ++v) sum[v] += at(a + j * lda + v * L) * x[j];
#pragma GCC unroll 8
    for (int v = 0; v < V; ++v) at(y + v * L) = sum[v];
}

template <class R, int N>
void add_strip(int64_t m, const R* a, int64_t lda, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    for (; i + 2 * L <= m; i += 2 * L) add_block<R, 2, N>(a + i, lda, x, y + i);
    for (; i + L <= m; i += L) add_block<R, 1, N>(a + i, lda, x, y + i);
    for (; i < m; ++i) {
        R sum = y[i];
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) sum += a[j * lda + i] * x[j];
        y[i] = sum;
    }
}

template <class R>
void add_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y)
{
    int64_t j = 0;
    for (; j + 8 <= n; j += 8) add_strip<R, 8>(m, a + j * lda, lda, x + j, y);
    for (; j + 2 <= n; j += 2) add_strip<R, 2>(m, a + j * lda, lda, x + j, y);
    for (; j < n; ++j) add_strip<R, 1>(m, a + j * lda, lda, x + j, y);
}

template <class R>
inline R total(Lane<R> sum)
{
    R parts[lanes<R>];
    at(parts) = sum;
    for (int width = lanes<R> / 2; width > 0; width /= 2)
        for (int k = 0; k < width; ++k) parts[k] += parts[k + width];
    return parts[0];
}

template <class R, int N>
void dot_strip(int64_t m, const R* a, int64_t lda, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    Lane<R> sum[N][2];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) sum[j][0] = sum[j][1] = Lane<R>{};
    int64_t i = 0;
    for (; i + 2 * L <= m; i += 2 * L) {
        const Lane<R> low = at(x + i), high = at(x + i + L);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            sum[j][0] += at(a + j * lda + i) * low;
            sum[j][1] += at(a + j * lda + i + L) * high;
        }
    }
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) {
        R rest = 0;
        for (int64_t k = i; k < m; ++k) rest += a[j * lda + k] * x[k];
        y[j] = total<R>(sum[j][0] + sum[j][1]) + rest;
    }
}

template <class R>
void dot_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y)
{
    int64_t j = 0;
    for (; j + 4 <= n; j += 4) dot_strip<R, 4>(m, a + j * lda, lda, x, y + j);
    for (; j < n; ++j) dot_strip<R, 1>(m, a + j * lda, lda, x, y + j);
}

// ---- complex: products with the real parts of x on pairs as they lie, and with swapped pairs
// ---------------

template <class R>
inline Lane<R> swapped(Lane<R> z)
{
    Lane<R> result = z;
    for (int k = 0; k < lanes<R>; k += 2) result[k] = z[k + 1], result[k + 1] = z[k];
    return result;
}

template <class R, int N>
void add_complex_strip(int64_t m, const R* a, int64_t lda, bool conjugate, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    // y += a * x: each pair of y gets (re, im) * re(x), then (im, re) * (-+ im(x), +- im(x)). For a
    // conjugated matrix the factors are those of conj(a) * x.
    Lane<R> same[N] = {}, cross[N] = {};
    for (int j = 0; j < N; ++j)
        for (int k = 0; k < L; k += 2) {
            const R re = x[2 * j], im = x[2 * j + 1];
            same[j][k] = re;
            same[j][k + 1] = conjugate ? -re : re;
            cross[j][k] = conjugate ? im : -im;
            cross[j][k + 1] = im;
        }
    int64_t i = 0;
    for (; i + L <= 2 * m; i += L) {
        Lane<R> sum = at(y + i);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const Lane<R> z = at(a + 2 * j * lda + i);
            sum += z * same[j];
            sum += swapped<R>(z) * cross[j];
        }
        at(y + i) = sum;
    }
    for (; i < 2 * m; i += 2)
        for (int j = 0; j < N; ++j) {
            const R re = a[2 * j * lda + i], im = a[2 * j * lda + i + 1];
            y[i] += re * same[j][0];
            y[i] += im * cross[j][0];
            y[i + 1] += im * same[j][1];
            y[i + 1] += re * cross[j][1];
        }
}

template <class R>
void add_complex_columns(int64_t m, int64_t n, const R* a, int64_t lda, bool conjugate, const R* x, R* y)
{
    int64_t j = 0;
    for (; j + 4 <= n; j += 4) add_complex_strip<R, 4>(m, a + 2 * j * lda, lda, conjugate, x + 2 * j, y);
    for (; j < n; ++j) add_complex_strip<R, 1>(m, a + 2 * j * lda, lda, conjugate, x + 2 * j, y);
}

template <class R, int N>
void dot_complex_strip(int64_t m, const R* a, int64_t lda, bool conjugate, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    Lane<R> same[N], cross[N];  // sums of (re re, im im) and of (re im, im re)
    for (int j = 0; j < N; ++j) same[j] = cross[j] = Lane<R>{};
    int64_t i = 0;
    for (; i + L <= 2 * m; i += L) {
        const Lane<R> z = at(x + i), turned = swapped<R>(z);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            same[j] += at(a + 2 * j * lda + i) * z;
            cross[j] += at(a + 2 * j * lda + i) * turned;
        }
    }
    for (int j = 0; j < N; ++j) {
        R rr = 0, ii = 0, ri = 0, ir = 0;
        for (int k = 0; k < L; k += 2) {
            rr += same[j][k];
            ii += same[j][k + 1];
            ri += cross[j][k];
            ir += cross[j][k + 1];
        }
        for (int64_t k = i; k < 2 * m; k += 2) {
            const R re = a[2 * j * lda + k], im = a[2 * j * lda + k + 1];
            rr += re * x[k];
            ii += im * x[k + 1];
            ri += re * x[k + 1];
            ir += im * x[k];
        }
        y[2 * j] = conjugate ? rr + ii : rr - ii;
        y[2 * j + 1] = conjugate ? ri - ir : ri + ir;
    }
}

template <class R>
void dot_complex_columns(int64_t m, int64_t n, const R* a, int64_t lda, bool conjugate, const R* x, R* y)
{
    int64_t j = 0;
    for (; j + 4 <= n; j += 4) dot_complex_strip<R, 4>(m, a + 2 * j * lda, lda, conjugate, x, y + 2 * j);
    for (; j < n; ++j) dot_complex_strip<R, 1>(m, a + 2 * j * lda, lda, conjugate, x, y + 2 * j);
}

template <class R>
constexpr RealLevel2<R> real_loops = {add_columns<R>, dot_columns<R>};
template <class R>
constexpr ComplexLevel2<R> complex_loops = {add_complex_columns<R>, dot_complex_columns<R>};

}  // namespace

namespace ORVEL_ISA {

extern const Level2Loops level2;
const Level2Loops level2 = {real_loops<float>, real_loops<double>, complex_loops<float>,
                            complex_loops<double>};

}  // namespace ORVEL_ISA

}  // namespace orvel::kernels
