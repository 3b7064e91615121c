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

// The sums of some rows, to which columns are added in ascending order. Complex rows are pairs of numbers.
template <template <int> class Sum, class R, bool Complex>
class Piece {
public:
    static constexpr int64_t most = Complex && L == 2 ? 16 * L : 32 * L;  // numbers

    // -b(rows)
    Piece(int64_t rows, const R* b) : rows_(rows), whole_(rows / L * L)
    {
        for (int64_t i = 0; i < whole_; i += L) sums_[i / L] = Sum<L>::from(-widened(b + i));
        for (int64_t i = whole_; i < rows; ++i) ends_[i - whole_] = Sum<1>::from(-static_cast<double>(b[i]));
    }

    // += A(rows, n) * x(n)
    void add(int64_t n, const R* a, int64_t lda, const R* x)
    {
        if constexpr (Complex)
            add_complex(n, a, lda, x);
        else
            add_real(n, a, lda, x);
    }

    void store(R* r) const
    {
        for (int64_t i = 0; i < whole_; i += L) {
            const Wide value = sums_[i / L].value();
            for (int k = 0; k < L; ++k) r[i + k] = static_cast<R>(value[k]);
        }
        for (int64_t i = whole_; i < rows_; ++i) r[i] = static_cast<R>(ends_[i - whole_].value());
    }

private:
    void add_real(int64_t n, const R* a, int64_t lda, const R* x)
    {
        constexpr int N = 4;
        for (int64_t j = 0; j < n; j += N) {
            const R* const columns = a + j * lda;
            double factor[N] = {};  // the compiler looks at all of them ahead of time
            const int64_t here = n - j < N ? n - j : N;
            for (int64_t k = 0; k < here; ++k) factor[k] = static_cast<double>(x[j + k]);
            for (int64_t i = 0; i < whole_; i += L) {
                if (here == N)
                    add_columns<N>(columns + i, lda, factor, sums_[i / L]);
                else
                    for (int64_t k = 0; k < here; ++k)
                        add_columns<1>(columns + i + k * lda, lda, factor + k, sums_[i / L]);
            }
            for (int64_t i = whole_; i < rows_; ++i)
                for (int64_t k = 0; k < here; ++k)
                    ends_[i - whole_].add_product(static_cast<double>(columns[i + k * lda]), factor[k]);
        }
    }

    // A pair of lanes gets (re, im) * re(x) and (im, re) * (-im(x), im(x)).
    void add_complex(int64_t n, const R* a, int64_t lda, const R* x)
    {
        for (int64_t j = 0; j < n; ++j) {
            const R* const column = a + 2 * j * lda;
            const double re = static_cast<double>(x[2 * j]), im = static_cast<double>(x[2 * j + 1]);
            Wide cross = {};
            for (int k = 0; k < L; ++k) cross[k] = k & 1 ? im : -im;
            for (int64_t i = 0; i < whole_; i += L) {
                sums_[i / L].add_product(widened(column + i), Wide{} + re);
                sums_[i / L].add_product(exchanged(widened(column + i)), cross);
            }
            for (int64_t i = whole_; i < rows_; ++i) {
                ends_[i - whole_].add_product(static_cast<double>(column[i]), re);
                ends_[i - whole_].add_product(static_cast<double>(column[i ^ 1]), i & 1 ? im : -im);
            }
        }
    }

    int64_t rows_, whole_;
    Sum<L> sums_[most / L];
    Sum<1> ends_[L];
};

template <template <int> class Sum, class R, bool Complex>
void by_columns(int64_t m, int64_t n, const R* a, int64_t lda, const R* x, const R* b, R* r)
{
    using Rows = Piece<Sum, R, Complex>;
    const int64_t numbers = Complex ? 2 * m : m;
    for (int64_t first = 0; first < numbers; first += Rows::most) {
        Rows sums(numbers - first < Rows::most ? numbers - first : Rows::most, b + first);
        sums.add(n, a + first, lda, x);
        sums.store(r + first);
    }
}

// ---- A by its upper triangle: what is left of the diagonal is fetched from above it, some columns at a time

constexpr int64_t strip = 8;

// to(rows, columns) = A from row `row` and column `column` on, by columns `step` numbers apart.
template <class R, bool Complex>
void fetch(int64_t row, int64_t rows, int64_t column, int64_t columns, const R* a, int64_t lda, R* to,
           int64_t step)
{
    constexpr int64_t parts = Complex ? 2 : 1;
    for (int64_t c = column; c < column + columns; ++c, to += step)
        for (int64_t i = 0; i < rows; ++i) {
            const int64_t r = row + i;
            const R* const e = a + parts * (r <= c ? r + c * lda : c + r * lda);
            to[parts * i] = e[0];
            if constexpr (Complex) to[2 * i + 1] = r < c ? e[1] : r > c ? -e[1] : R(0);
        }
}

template <template <int> class Sum, class R, bool Complex>
void by_upper_triangle(int64_t n, int64_t first, int64_t m, const R* a, int64_t lda, const R* x, const R* b,
                       R* r)
{
    using Rows = Piece<Sum, R, Complex>;
    constexpr int64_t parts = Complex ? 2 : 1, most = Rows::most / parts;
    for (int64_t row = first; row < first + m; row += most) {
        const int64_t rows = first + m - row < most ? first + m - row : most;
        Rows sums(parts * rows, b + parts * (row - first));
        R block[strip * Rows::most];
        int64_t c = 0;
        for (; c < n && c < row + rows; c += strip) {
            const int64_t columns = n - c < strip ? n - c : strip;
            fetch<R, Complex>(row, rows, c, columns, a, lda, block, parts * rows);
            sums.add(columns, block, rows, x + parts * c);
        }
        if (c < n) sums.add(n - c, a + parts * (row + c * lda), lda, x + parts * c);
        sums.store(r + parts * (row - first));
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
    {by_columns<Plain, float, false>, by_rows<Plain, float>, by_upper_triangle<Plain, float, false>},
    {by_columns<Pair, double, false>, by_rows<Pair, double>, by_upper_triangle<Pair, double, false>},
    {by_columns<Plain, float, true>, complex_by_rows<Plain, float>, by_upper_triangle<Plain, float, true>},
    {by_columns<Pair, double, true>, complex_by_rows<Pair, double>, by_upper_triangle<Pair, double, true>},
};

}  // namespace orvel::linsys
