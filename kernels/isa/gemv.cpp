// kernels/isa/gemv.cpp - products of a matrix by columns with a vector
//
// add_columns adds the columns to each element of y in ascending order. dot_columns forms each sum in vectors
// of partial sums, two to a column, whatever the alignment.
#include "kernels/isa/lanes.h"
#include "kernels/isa/loops.h"
#include "kernels/isa/tile.h"

namespace orvel::kernels {

namespace {

using isa::held;
using isa::Wide;
using isa::wide;

// Whether the columns come from a cache or from memory, where those of the next strip are fetched ahead. In a
// cache that only costs.
enum class Distance { near, far };

template <Distance distance, class R, int V, int N>
inline __attribute__((always_inline)) void fetch_next_strip(const R* a, int64_t lda)
{
    if constexpr (distance == Distance::far)
#pragma GCC unroll 8
        for (int j = N; j < 2 * N; ++j)
#pragma GCC unroll 8
            for (int v = 0; v < V; ++v) __builtin_prefetch(a + j * lda + v * lanes<R>, 0, 2);
}

// V vectors of L rows stay in registers while N columns pass.
template <class R, int L, int V, int N>
inline void add_block(const R* a, int64_t lda, const R* x, R* y)
{
    Vector<R, L> sum[V];
#pragma GCC unroll 8
    for (int v = 0; v < V; ++v) sum[v] = at<L>(y + v * L);
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 8
        for (int v = 0; v < V; ++v) sum[v] += at<L>(a + j * lda + v * L) * x[j];
#pragma GCC unroll 8
    for (int v = 0; v < V; ++v) at<L>(y + v * L) = sum[v];
}

// Rows that are left over go to ever narrower vectors.
template <class R, int L, int N>
inline void add_rest(int64_t m, const R* a, int64_t lda, const R* x, R* y)
{
    if (m >= L) {
        add_block<R, L, 1, N>(a, lda, x, y);
        m -= L, a += L, y += L;
    }
    if constexpr (L > 1) add_rest<R, L / 2, N>(m, a, lda, x, y);
}

template <class R, int N, Distance distance = Distance::near>
void add_strip(int64_t m, const R* a, int64_t lda, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    for (; i + 2 * L <= m; i += 2 * L) {
        fetch_next_strip<distance, R, 2, N>(a + i, lda);
        add_block<R, L, 2, N>(a + i, lda, x, y + i);
    }
    add_rest<R, L, N>(m - i, a + i, lda, x, y + i);
}

template <class R>
void add_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y)
{
    int64_t j = 0;
    if (m * n >= far<R>)
        for (; j + 8 <= n; j += 8) add_strip<R, 8, Distance::far>(m, a + j * lda, lda, x + j, y);
    for (; j + 8 <= n; j += 8) add_strip<R, 8>(m, a + j * lda, lda, x + j, y);
    for (; j + 2 <= n; j += 2) add_strip<R, 2>(m, a + j * lda, lda, x + j, y);
    for (; j < n; ++j) add_strip<R, 1>(m, a + j * lda, lda, x + j, y);
}

// The sums of lanes that are 16 bytes apart: halves of the vector are added until 16 bytes are left.
template <class R, int N>
inline Vector<R, narrow<R>> folded(Vector<R, N> sum)
{
    if constexpr (N == narrow<R>)
        return sum;
    else
        return folded<R, N / 2>(isa::fold<R, N>(sum));
}

template <class R>
inline R total(Wide<R> sum)
{
    const auto parts = folded<R, lanes<R>>(sum);
    if constexpr (sizeof(R) == 8)
        return parts[0] + parts[1];
    else
        return (parts[0] + parts[2]) + (parts[1] + parts[3]);
}

// The sums of the lanes of even and of odd index.
template <class R>
inline void total_of_pairs(Wide<R> sum, R& even, R& odd)
{
    const auto parts = folded<R, lanes<R>>(sum);
    even = parts[0];
    odd = parts[1];
    if constexpr (sizeof(R) == 4) {
        even += parts[2];
        odd += parts[3];
    }
}

// Adds to sums of N columns what is left of them, in ever narrower vectors: the sums of all lanes.
template <class R, int L, int N>
inline void add_rest_of_dots(const Vector<R, L> (&sum)[N], int64_t m, const R* a, int64_t lda, const R* x,
                             R* y)
{
    if constexpr (L == 1) {
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) y[j] = sum[j];
    } else {
        Vector<R, L / 2> half[N];
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) half[j] = isa::fold<R, L>(sum[j]);
        if (m >= L / 2) {
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) half[j] += at<L / 2>(a + j * lda) * at<L / 2>(x);
            m -= L / 2, a += L / 2, x += L / 2;
        }
        add_rest_of_dots<R, L / 2, N>(half, m, a, lda, x, y);
    }
}

template <class R, int N, Distance distance = Distance::near>
void dot_strip(int64_t m, const R* a, int64_t lda, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    Wide<R> sum[N][2];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) sum[j][0] = sum[j][1] = Wide<R>{};
    int64_t i = 0;
    for (; i + 2 * L <= m; i += 2 * L) {
        fetch_next_strip<distance, R, 2, N>(a + i, lda);
        const Wide<R> low = wide(x + i), high = wide(x + i + L);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            sum[j][0] += wide(a + j * lda + i) * low;
            sum[j][1] += wide(a + j * lda + i + L) * high;
        }
    }
    Wide<R> both[N];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) both[j] = sum[j][0] + sum[j][1];
    if (i + L <= m) {
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) both[j] += wide(a + j * lda + i) * wide(x + i);
        i += L;
    }
    add_rest_of_dots<R, L, N>(both, m - i, a + i, lda, x + i, y);
}

template <class R>
void dot_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y)
{
    int64_t j = 0;
    if (m * n >= far<R>)
        for (; j + 4 <= n; j += 4) dot_strip<R, 4, Distance::far>(m, a + j * lda, lda, x, y + j);
    for (; j + 4 <= n; j += 4) dot_strip<R, 4>(m, a + j * lda, lda, x, y + j);
    for (; j < n; ++j) dot_strip<R, 1>(m, a + j * lda, lda, x, y + j);
}

template <class R, int N>
void both_strip(int64_t m, const R* a, int64_t lda, const R* x, R* y, const R* z, R* sums)
{
    constexpr int L = lanes<R>;
    Wide<R> sum[N] = {};
    R factor[N];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) factor[j] = x[j];
    int64_t i = 0;
    for (; i + L <= m; i += L) {
        Wide<R> to = wide(y + i);
        const Wide<R> from = wide(z + i);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const Wide<R> e = held(wide(a + j * lda + i));
            to += e * factor[j];
            sum[j] += e * from;
        }
        wide(y + i) = to;
    }
    R rest[N] = {};
    for (; i < m; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            y[i] += a[j * lda + i] * factor[j];
            rest[j] += a[j * lda + i] * z[i];
        }
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) sums[j] = total<R>(sum[j]) + rest[j];
}

template <class R>
void both(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, R* y, const R* z, R* sums)
{
    int64_t j = 0;
    for (; j + 8 <= n; j += 8) both_strip<R, 8>(m, a + j * lda, lda, x + j, y, z, sums + j);
    for (; j < n; ++j) both_strip<R, 1>(m, a + j * lda, lda, x + j, y, z, sums + j);
}

// N columns of A get their multiples of x while it is in registers.
template <class R, int N>
void add_rank_1_strip(int64_t m, const R* x, const R* y, R* a, int64_t lda)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    for (; i + L <= m; i += L) {
        const Wide<R> e = wide(x + i);
#pragma GCC unroll 4
        for (int j = 0; j < N; ++j) wide(a + j * lda + i) += e * y[j];
    }
    for (; i < m; ++i)
#pragma GCC unroll 4
        for (int j = 0; j < N; ++j) a[j * lda + i] += x[i] * y[j];
}

template <class R>
void add_rank_1(int64_t m, int64_t n, const R* x, const R* y, R* a, int64_t lda)
{
    int64_t j = 0;
    for (; j + 4 <= n; j += 4) add_rank_1_strip<R, 4>(m, x, y + j, a + j * lda, lda);
    for (; j < n; ++j) add_rank_1_strip<R, 1>(m, x, y + j, a + j * lda, lda);
}

// ---- small squares on the diagonal, element by element ----------------------------------------------------

// The order, known to the compiler where N is not 0.
template <int N>
inline int64_t bounded(int64_t order)
{
    if (order > small_square) __builtin_unreachable();
    return N > 0 ? N : order;
}

template <class R, int N>
inline void add_symmetric(int64_t order, bool lower, const R* a, int64_t lda, const R* x, R* y)
{
    const int64_t n = bounded<N>(order), down = lower ? 1 : lda, across = lower ? lda : 1;
    R by_columns[small_square] = {}, by_rows[small_square] = {};
#pragma GCC unroll 8
    for (int64_t k = 0; k < n; ++k) by_columns[k] = y[k], by_rows[k] = a[k * (lda + 1)] * x[k];
#pragma GCC unroll 8
    for (int64_t c = 0; c < n; ++c)
#pragma GCC unroll 8
        for (int64_t r = c + 1; r < n; ++r) {
            const R e = a[r * down + c * across];
            by_columns[r] += e * x[c];
            by_rows[c] += e * x[r];
        }
#pragma GCC unroll 8
    for (int64_t k = 0; k < n; ++k) y[k] = by_columns[k] + by_rows[k];
}

template <class R>
void add_small_symmetric(int64_t n, bool lower, const R* a, int64_t lda, const R* x, R* y)
{
    if (n == small_square)
        add_symmetric<R, small_square>(n, lower, a, lda, x, y);
    else
        add_symmetric<R, 0>(n, lower, a, lda, x, y);
}

// A triangle as a lower one that is not transposed: the upper one is read from its end.
template <class R>
struct Lower {
    const R* a;
    int64_t down, across, first, step;

    Lower(int64_t n, SmallTriangle how, const R* matrix, int64_t lda)
    {
        const bool turned = how.lower == how.transposed;
        a = turned ? matrix + (n - 1) * (lda + 1) : matrix;
        down = (how.transposed ? lda : 1) * (turned ? -1 : 1);
        across = (how.transposed ? 1 : lda) * (turned ? -1 : 1);
        first = turned ? n - 1 : 0;
        step = turned ? -1 : 1;
    }
};

template <class R, int N>
inline void multiply_triangle(int64_t order, const Lower<R>& t, bool unit, R* x)
{
    const int64_t n = bounded<N>(order);
    R v[small_square] = {};
#pragma GCC unroll 8
    for (int64_t k = 0; k < n; ++k) v[k] = x[t.first + k * t.step];
#pragma GCC unroll 8
    for (int64_t c = n - 1; c >= 0; --c) {
#pragma GCC unroll 8
        for (int64_t r = c + 1; r < n; ++r) v[r] += t.a[r * t.down + c * t.across] * v[c];
        if (!unit) v[c] *= t.a[c * (t.down + t.across)];
    }
#pragma GCC unroll 8
    for (int64_t k = 0; k < n; ++k) x[t.first + k * t.step] = v[k];
}

template <class R, int N>
inline void solve_triangle(int64_t order, const Lower<R>& t, bool unit, R* x)
{
    const int64_t n = bounded<N>(order);
    R v[small_square] = {};
#pragma GCC unroll 8
    for (int64_t k = 0; k < n; ++k) v[k] = x[t.first + k * t.step];
#pragma GCC unroll 8
    for (int64_t c = 0; c < n; ++c) {
        if (!unit) v[c] /= t.a[c * (t.down + t.across)];
#pragma GCC unroll 8
        for (int64_t r = c + 1; r < n; ++r) v[r] -= t.a[r * t.down + c * t.across] * v[c];
    }
#pragma GCC unroll 8
    for (int64_t k = 0; k < n; ++k) x[t.first + k * t.step] = v[k];
}

template <class R>
void multiply_small(int64_t n, SmallTriangle how, const R* a, int64_t lda, R* x)
{
    const Lower<R> t(n, how, a, lda);
    if (n == small_square)
        multiply_triangle<R, small_square>(n, t, how.unit, x);
    else
        multiply_triangle<R, 0>(n, t, how.unit, x);
}

template <class R>
void solve_small(int64_t n, SmallTriangle how, const R* a, int64_t lda, R* x)
{
    const Lower<R> t(n, how, a, lda);
    if (n == small_square)
        solve_triangle<R, small_square>(n, t, how.unit, x);
    else
        solve_triangle<R, 0>(n, t, how.unit, x);
}

// ---- complex: products with the real parts of x on pairs as they lie, and with swapped pairs -----

template <class R, int N>
void add_complex_strip(int64_t m, const R* a, int64_t lda, bool conjugate, const R* x, R* y)
{
    constexpr int L = lanes<R>;
    // y += a * x: each pair of y gets (re, im) * re(x), then (im, re) * (-+ im(x), +- im(x)). For a
    // conjugated matrix the factors are those of conj(a) * x.
    Wide<R> same[N] = {}, cross[N] = {};
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
        Wide<R> sum = wide(y + i);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const Wide<R> z = held(wide(a + 2 * j * lda + i));
            sum += z * same[j];
            sum += isa::exchanged<R, lanes<R>>(z) * cross[j];
        }
        wide(y + i) = sum;
    }
    typedef Vector<R, 2> Two;
    for (; i < 2 * m; i += 2) {
        Two sum = at<2>(y + i);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const Two z = held(at<2>(a + 2 * j * lda + i));
            sum = held(sum + z * Two{same[j][0], same[j][1]});
            sum = held(sum + isa::exchanged<R, 2>(z) * Two{cross[j][0], cross[j][1]});
        }
        at<2>(y + i) = sum;
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
    Wide<R> same[N], cross[N];  // sums of (re re, im im) and of (re im, im re)
    for (int j = 0; j < N; ++j) same[j] = cross[j] = Wide<R>{};
    int64_t i = 0;
    for (; i + L <= 2 * m; i += L) {
        const Wide<R> z = wide(x + i), turned = isa::exchanged<R, lanes<R>>(z);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const Wide<R> e = held(wide(a + 2 * j * lda + i));
            same[j] += e * z;
            cross[j] += e * turned;
        }
    }
#pragma GCC unroll 4
    for (int j = 0; j < N; ++j) {
        R rr, ii, ri, ir;
        total_of_pairs<R>(same[j], rr, ii);
        total_of_pairs<R>(cross[j], ri, ir);
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
constexpr RealLevel2<R> real_loops = {add_columns<R>,         dot_columns<R>,    both<R>,       add_rank_1<R>,
                                      add_small_symmetric<R>, multiply_small<R>, solve_small<R>};
template <class R>
constexpr ComplexLevel2<R> complex_loops = {add_complex_columns<R>, dot_complex_columns<R>};

}  // namespace

const Level2Loops ORVEL_ISA::level2_loops = {real_loops<float>, real_loops<double>, complex_loops<float>,
                                             complex_loops<double>};

}  // namespace orvel::kernels
