// linsys/isa/residual.cpp - residuals A * x - b with more than the working precision
#include "linsys/isa/running_sums.h"

namespace orvel::linsys {

namespace {

// ---- A by columns: all rows of a piece get their terms column by column

template <int N, class Sum, class R>
inline void add_columns(const R* a, int64_t lda, const double* x, Sum& sum)
{
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) sum.add_product(widened(a + j * lda), Wide{} + x[j]);
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
            const Wide value = sums[i / L].value();
            for (int k = 0; k < L; ++k) r[first + i + k] = static_cast<R>(value[k]);
        }
        for (int64_t i = whole; i < rows; ++i) r[first + i] = static_cast<R>(ends[i - whole].value());
    }
}

// ---- A by rows of its transpose: sums in lanes along a column

template <template <int> class Sum, class R>
void by_rows(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    constexpr int N = 2;
    for (int64_t j = 0; j < n; j += N) {
        const int64_t here = n - j < N ? n - j : N;
        Sum<L> sums[N][2];
        for (auto& column : sums) column[0] = column[1] = Sum<L>::from(Wide{});
        const R* const columns[N] = {a + j * lda, here > 1 ? a + (j + 1) * lda : a + j * lda};
        int64_t i = 0;
        for (; i + 2 * L <= m; i += 2 * L) {
            const Wide low = widened(x + i), high = widened(x + i + L);
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
            Wide cross = {};
            for (int k = 0; k < L; ++k) cross[k] = k & 1 ? im : -im;
            for (int64_t i = 0; i < whole; i += L) {
                sums[i / L].add_product(widened(column + i), Wide{} + re);
                sums[i / L].add_product(exchanged(widened(column + i)), cross);
            }
            for (int64_t i = whole; i < rows; ++i) {
                ends[i - whole].add_product(static_cast<double>(column[i]), re);
                ends[i - whole].add_product(static_cast<double>(column[i ^ 1]), i & 1 ? im : -im);
            }
        }
        for (int64_t i = 0; i < whole; i += L) {
            const Wide value = sums[i / L].value();
            for (int k = 0; k < L; ++k) r[first + i + k] = static_cast<R>(value[k]);
        }
        for (int64_t i = whole; i < rows; ++i) r[first + i] = static_cast<R>(ends[i - whole].value());
    }
}

// r(n) = A^H * x - b: re = sum of re re + im im, im = sum of re(a) im(x) - im(a) re(x).
template <template <int> class Sum, class R>
void complex_by_rows(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    Wide turn = {};
    for (int k = 0; k < L; ++k) turn[k] = k & 1 ? -1.0 : 1.0;
    for (int64_t j = 0; j < n; ++j) {
        const R* const column = a + 2 * j * lda;
        Sum<L> same = Sum<L>::from(Wide{}), cross = same;
        int64_t i = 0;
        for (; i + L <= 2 * m; i += L) {
            const Wide e = widened(column + i);
            same.add_product(e, widened(x + i));
            cross.add_product(e * turn, exchanged(widened(x + i)));
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

const isa::ForAll<Residuals> ORVEL_ISA::residual_loops = {
    {by_columns<Plain, float>, by_rows<Plain, float>},
    {by_columns<Pair, double>, by_rows<Pair, double>},
    {complex_by_columns<Plain, float>, complex_by_rows<Plain, float>},
    {complex_by_columns<Pair, double>, complex_by_rows<Pair, double>},
};

}  // namespace orvel::linsys
