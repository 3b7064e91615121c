// linsys/isa/residual.cpp - residuals A * x - b with more than the working precision
//
// Single members: products of floats are exact in double and are summed there. Double members: a product and
// its rounding error, and a sum and its rounding error, are doubles; the running sum is a pair (head, tail),
// made anew after each term, with an error of some 2^-104 of its size a term. Sources: T. Dekker, A
// floating-point technique for extending the available precision, 1971; T. Ogita, S. Rump and S. Oishi,
// Accurate sum and dot product, 2005.
#include "kernels/isa/lanes.h"
#include "kernels/isa/tile.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

namespace {

using kernels::held;

constexpr int L = kernels::lanes<double>;
using Lane = kernels::Vector<double, L>;
typedef float Floats __attribute__((vector_size(L * sizeof(float)), aligned(4), may_alias));

inline const Lane& at(const double* p) { return *reinterpret_cast<const Lane*>(p); }
inline Lane widened(const double* p) { return at(p); }
inline Lane widened(const float* p)
{
    return __builtin_convertvector(*reinterpret_cast<const Floats*>(p), Lane);
}

// ---- running sums -----------------------------------------------------------------------------------------

// Of one double or of L side by side.
template <int W>
struct Plain {
    using V = kernels::Vector<double, W>;
    V sum;

    static Plain from(V b) { return {b}; }
    void add_product(V a, V x) { sum += a * x; }
    void add(const Plain& other) { sum += other.sum; }
    V value() const { return sum; }
};

// Numbers that the factor would make infinite are split as smaller ones.
template <class V>
inline void split(V a, V& high, V& low)
{
    const V large = a < 0 ? -a : a;
    const auto is_large = large > 0x1p990;
    const V one = V{} + 1.0, down = is_large ? one * 0x1p-40 : one, up = is_large ? one * 0x1p40 : one;
    const V scaled = a * down, c = held(134217729.0 * scaled);
    high = held(c - held(c - scaled));
    low = (scaled - high) * up;
    high *= up;
}

template <int W>
struct Pair {
    using V = kernels::Vector<double, W>;
    V head, tail;

    static Pair from(V b) { return {b, b - b}; }

    void add_product(V a, V x)
    {
        const V product = held(a * x);
#ifdef __FMA__
        // Of another copy of a: as the same product the compiler would take the rounded one.
        const V error = held(a) * x - product;
#else
        V a_high, a_low, x_high, x_low;
        split(a, a_high, a_low);
        split(x, x_high, x_low);
        const V error = a_low * x_low - (((product - a_high * x_high) - a_low * x_high) - a_high * x_low);
#endif
        add(Pair{product, error});
    }

    void add(const Pair& other)
    {
        const V sum = held(head + other.head), part = sum - head;
        const V error = (head - (sum - part)) + (other.head - part);
        const V rest = tail + other.tail + error;
        head = held(sum + rest);
        tail = rest - (head - sum);
    }

    V value() const { return head + tail; }
};

// ---- A by columns: all rows of a piece get their terms column by column
// -------------------------------------

template <int N, class Sum, class R>
inline void add_columns(const R* a, int64_t lda, const double* x, Sum& sum)
{
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) sum.add_product(widened(a + j * lda), Lane{} + x[j]);
}

constexpr int64_t piece = 32 * L;  // rows whose sums are kept at a time

template <template <int> class Sum, class R>
void by_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    for (int64_t first = 0; first < m; first += piece) {
        const int64_t rows = m - first < piece ? m - first : piece, whole = rows / L * L;
        Sum<L> sums[piece / L];
        Sum<1> ends[L];
        for (int64_t i = 0; i < whole; i += L) sums[i / L] = Sum<L>::from(-widened(b + first + i));
        for (int64_t i = whole; i < rows; ++i)
            ends[i - whole] = Sum<1>::from(-static_cast<double>(b[first + i]));
        constexpr int N = 4;
        for (int64_t j = 0; j < n; j += N) {
            const R* const columns = a + first + j * lda;
            double factor[N];
            const int64_t here = n - j < N ? n - j : N;
            for (int64_t k = 0; k < here; ++k) factor[k] = static_cast<double>(x[j + k]);
            for (int64_t i = 0; i < whole; i += L) {
                if (here == N)
                    add_columns<N>(columns + i, lda, factor, sums[i / L]);
                else
                    for (int64_t k = 0; k < here; ++k)
                        add_columns<1>(columns + i + k * lda, lda, factor + k, sums[i / L]);
            }
            for (int64_t i = whole; i < rows; ++i)
                for (int64_t k = 0; k < here; ++k)
                    ends[i - whole].add_product(static_cast<double>(columns[i + k * lda]), factor[k]);
        }
        for (int64_t i = 0; i < whole; i += L) {
            const Lane value = sums[i / L].value();
            for (int k = 0; k < L; ++k) r[first + i + k] = static_cast<R>(value[k]);
        }
        for (int64_t i = whole; i < rows; ++i) r[first + i] = static_cast<R>(ends[i - whole].value());
    }
}

// ---- A by rows of its transpose: sums in lanes along a column
// ----------------------------------------------

template <template <int> class Sum, class R>
inline double lanes_and_rest(Sum<1> total, const Sum<L>& sum, int64_t first, int64_t m, const R* a,
                             const R* x)
{
    if constexpr (sizeof(Sum<1>) == sizeof(double)) {
        for (int k = 0; k < L; ++k) total.add({sum.sum[k]});
    } else {
        for (int k = 0; k < L; ++k) total.add({sum.head[k], sum.tail[k]});
    }
    for (int64_t i = first; i < m; ++i)
        total.add_product(static_cast<double>(a[i]), static_cast<double>(x[i]));
    return total.value();
}

template <template <int> class Sum, class R>
void by_rows(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    constexpr int N = 2;
    for (int64_t j = 0; j < n; j += N) {
        const int64_t here = n - j < N ? n - j : N;
        Sum<L> sums[N][2];
        for (auto& column : sums) column[0] = column[1] = Sum<L>::from(Lane{});
        const R* const columns[N] = {a + j * lda, here > 1 ? a + (j + 1) * lda : a + j * lda};
        int64_t i = 0;
        for (; i + 2 * L <= m; i += 2 * L) {
            const Lane low = widened(x + i), high = widened(x + i + L);
#pragma GCC unroll 2
            for (int c = 0; c < N; ++c) {
                sums[c][0].add_product(widened(columns[c] + i), low);
                sums[c][1].add_product(widened(columns[c] + i + L), high);
            }
        }
        for (int64_t c = 0; c < here; ++c) {
            sums[c][0].add(sums[c][1]);
            const auto start = Sum<1>::from(-static_cast<double>(b[j + c]));
            r[j + c] = static_cast<R>(lanes_and_rest<Sum, R>(start, sums[c][0], i, m, columns[c], x));
        }
    }
}

// ---- complex: interleaved pairs, real and imaginary sums side by side
// ---------------------------------------

template <class R>
inline Lane swapped_pairs(const R* p)
{
    return kernels::swapped<double, L>(widened(p));
}

// r(m) = A * x - b. A pair of lanes gets (re, im) * re(x) and (im, re) * (-im(x), im(x)).
template <template <int> class Sum, class R>
void complex_by_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    constexpr int64_t some = L > 2 ? piece : piece / 2;
    for (int64_t first = 0; first < 2 * m; first += some) {
        const int64_t rows = 2 * m - first < some ? 2 * m - first : some, whole = rows / L * L;
        Sum<L> sums[piece / L];
        Sum<1> ends[L];
        for (int64_t i = 0; i < whole; i += L) sums[i / L] = Sum<L>::from(-widened(b + first + i));
        for (int64_t i = whole; i < rows; ++i)
            ends[i - whole] = Sum<1>::from(-static_cast<double>(b[first + i]));
        for (int64_t j = 0; j < n; ++j) {
            const R* const column = a + 2 * j * lda + first;
            const double re = static_cast<double>(x[2 * j]), im = static_cast<double>(x[2 * j + 1]);
            Lane cross = {};
            for (int k = 0; k < L; ++k) cross[k] = k & 1 ? im : -im;
            for (int64_t i = 0; i < whole; i += L) {
                sums[i / L].add_product(widened(column + i), Lane{} + re);
                sums[i / L].add_product(swapped_pairs(column + i), cross);
            }
            for (int64_t i = whole; i < rows; ++i) {
                ends[i - whole].add_product(static_cast<double>(column[i]), re);
                ends[i - whole].add_product(static_cast<double>(column[i ^ 1]), i & 1 ? im : -im);
            }
        }
        for (int64_t i = 0; i < whole; i += L) {
            const Lane value = sums[i / L].value();
            for (int k = 0; k < L; ++k) r[first + i + k] = static_cast<R>(value[k]);
        }
        for (int64_t i = whole; i < rows; ++i) r[first + i] = static_cast<R>(ends[i - whole].value());
    }
}

// r(n) = A^H * x - b: re = sum of re re + im im, im = sum of re(a) im(x) - im(a) re(x).
template <template <int> class Sum, class R>
void complex_by_rows(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    Lane turn = {};
    for (int k = 0; k < L; ++k) turn[k] = k & 1 ? -1.0 : 1.0;
    for (int64_t j = 0; j < n; ++j) {
        const R* const column = a + 2 * j * lda;
        Sum<L> same = Sum<L>::from(Lane{}), cross = same;
        int64_t i = 0;
        for (; i + L <= 2 * m; i += L) {
            const Lane e = widened(column + i);
            same.add_product(e, widened(x + i));
            cross.add_product(e * turn, swapped_pairs(x + i));
        }
        const auto re = Sum<1>::from(-static_cast<double>(b[2 * j]));
        const auto im = Sum<1>::from(-static_cast<double>(b[2 * j + 1]));
        // The last numbers, as the lanes see them.
        R turned_column[2 * L], swapped_x[2 * L];
        const int64_t rest = 2 * m - i;
        for (int64_t k = 0; k < rest; ++k) {
            turned_column[k] = k & 1 ? -column[i + k] : column[i + k];
            swapped_x[k] = x[(i + k) ^ 1];
        }
        r[2 * j] = static_cast<R>(lanes_and_rest<Sum, R>(re, same, 0, rest, column + i, x + i));
        r[2 * j + 1] = static_cast<R>(lanes_and_rest<Sum, R>(im, cross, 0, rest, turned_column, swapped_x));
    }
}

}  // namespace

namespace ORVEL_ISA {

extern const ResidualLoops residual_loops;
const ResidualLoops residual_loops = {
    {by_columns<Plain, float>, by_rows<Plain, float>},
    {complex_by_columns<Plain, float>, complex_by_rows<Plain, float>},
    {by_columns<Pair, double>, by_rows<Pair, double>},
    {complex_by_columns<Pair, double>, complex_by_rows<Pair, double>},
};

}  // namespace ORVEL_ISA

}  // namespace orvel::linsys
