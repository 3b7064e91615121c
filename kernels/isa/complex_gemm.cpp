// kernels/isa/complex_gemm.cpp - complex matrix products on packed panels
//
// Panels keep real and imaginary parts apart, so that a tile runs like a real one. Each element of C
// receives, for each inner index in ascending order, the products re*re, -im*im and re*im, im*re, in this
// order.
#include "kernels/isa/loops.h"
#include "kernels/isa/tile.h"

namespace orvel::kernels {

namespace {

template <class R>
constexpr int most_rows = complex_tile_vectors* lanes<R>;

// Where a tile lies in C, and what of it exists.
struct Place {
    int64_t row, column;
    int rows;
    char triangle;  // A when the whole tile counts
    bool from_zero;
};

// Elements of C at a place, which is at c, apart from each other. What does not exist is not touched, and
// zero in the tile.
template <class R, int V, int N>
struct TileOfC {
    static constexpr int rows = V * lanes<R>;

    void load(const R* c, int64_t ldc, const Place& place)
    {
        const auto fill = [&](auto exists) __attribute__((always_inline))
        {
            for (int j = 0; j < N; ++j)
                for (int i = 0; i < rows; ++i) {
                    re[j][i] = exists(i, j) ? c[2 * (j * ldc + i)] : R(0);
                    im[j][i] = exists(i, j) ? c[2 * (j * ldc + i) + 1] : R(0);
                }
        };
        if (place.from_zero)
            fill([](int, int) { return false; });
        else if (is_whole(place))
            fill([](int, int) { return true; });
        else
            fill([&place](int i, int j) { return is_at(place, i, j); });
    }
    void store(R* c, int64_t ldc, const Place& place) const
    {
        const bool whole = is_whole(place);
        for (int j = 0; j < N; ++j)
            for (int i = 0; i < place.rows; ++i)
                if (whole || is_at(place, i, j)) {
                    c[2 * (j * ldc + i)] = re[j][i];
                    c[2 * (j * ldc + i) + 1] = im[j][i];
                }
    }

    R re[N][rows], im[N][rows];

private:
    static bool is_whole(const Place& place) { return place.rows == rows && place.triangle == 'A'; }
    static bool is_at(const Place& place, int i, int j)
    {
        return i < place.rows && is_in(place.triangle, place.row + i, place.column + j);
    }
};

// One tile of V vectors by N columns.
template <class R, int V, int N>
void complex_tile(int64_t k, const R* a, const R* b, R* c, int64_t ldc, const Place& place)
{
    constexpr int L = lanes<R>;
    Vector<R, L> re[N][V], im[N][V];
    TileOfC<R, V, N> tile;
    tile.load(c, ldc, place);
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            re[j][v] = at<L>(tile.re[j] + v * L);
            im[j][v] = at<L>(tile.im[j] + v * L);
        }
    for (int64_t l = 0; l < k; ++l) {
        Vector<R, L> x[V], y[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            x[v] = at<L>(a + v * L);
            y[v] = at<L>(a + (V + v) * L);
        }
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) {
                re[j][v] += x[v] * b[j];
                im[j][v] += y[v] * b[j];
                re[j][v] -= y[v] * b[N + j];
                im[j][v] += x[v] * b[N + j];
            }
        a += 2 * V * L;
        b += 2 * N;
    }
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            at<L>(tile.re[j] + v * L) = re[j][v];
            at<L>(tile.im[j] + v * L) = im[j][v];
        }
    tile.store(c, ldc, place);
}

// Panels of most_rows rows, the last one narrower by whole vectors: real parts, then imaginary parts, of a
// column.
template <class R>
void pack_rows(int64_t k, const R* a, Strides s, bool conjugate, int rows, int here, R* __restrict to)
{
    const R sign = conjugate ? R(-1) : R(1);
    for (int64_t l = 0; l < k; ++l, to += 2 * rows) {
        const R* column = a + 2 * l * s.columns;
#pragma GCC ivdep
        for (int r = 0; r < here; ++r) {
            to[r] = column[2 * r * s.rows];
            to[rows + r] = sign * column[2 * r * s.rows + 1];
        }
        for (int r = here; r < rows; ++r) to[r] = to[rows + r] = 0;
    }
}

template <class R>
int panel_rows(int64_t left)
{
    constexpr int L = lanes<R>;
    return left >= most_rows<R> ? most_rows<R> : static_cast<int>((left + L - 1) / L * L);
}

template <class R>
void pack_a(int64_t m, int64_t k, const R* a, Strides s, bool conjugate, R* __restrict to)
{
    while (m > 0) {
        const int rows = panel_rows<R>(m);
        const int here = m < rows ? static_cast<int>(m) : rows;
        pack_rows(k, a, s, conjugate, rows, here, to);
        to += 2 * rows * k;
        a += 2 * rows * s.rows;
        m -= here;
    }
}

// Widths of the panels of B: as many of the largest as fit, then narrower ones without a gap.
constexpr int panel_columns(int64_t left)
{
    return left >= complex_tile_columns ? complex_tile_columns : left >= 4 ? 4 : left >= 2 ? 2 : 1;
}

template <class R>
void pack_b(int64_t k, int64_t n, const R* b, Strides s, bool conjugate, const R* alpha, R* __restrict to)
{
    const R sign = conjugate ? R(-1) : R(1);
    const bool one = alpha[0] == R(1) && alpha[1] == R(0);
    while (n > 0) {
        const int columns = panel_columns(n);
        for (int64_t l = 0; l < k; ++l, to += 2 * columns)
#pragma GCC ivdep
            for (int c = 0; c < columns; ++c) {
                const R* e = b + 2 * (l * s.rows + c * s.columns);
                const R re = e[0], im = sign * e[1];
                to[c] = one ? re : alpha[0] * re - alpha[1] * im;
                to[columns + c] = one ? im : alpha[0] * im + alpha[1] * re;
            }
        b += 2 * columns * s.columns;
        n -= columns;
    }
}

template <class R, int V>
void tiles_of_columns(int columns, int64_t k, const R* a, const R* b, R* c, int64_t ldc, const Place& place)
{
    if (columns == complex_tile_columns)
        return complex_tile<R, V, complex_tile_columns>(k, a, b, c, ldc, place);
    if constexpr (complex_tile_columns > 4)
        if (columns == 4) return complex_tile<R, V, 4>(k, a, b, c, ldc, place);
    if (columns == 2) return complex_tile<R, V, 2>(k, a, b, c, ldc, place);
    complex_tile<R, V, 1>(k, a, b, c, ldc, place);
}

// The rows from i0 and columns from j0 of C, with panels of an inner depth k.
template <class R>
void multiply_panels(const ComplexProduct<R>& p, int64_t i0, int64_t m, int64_t j0, int64_t n, int64_t k,
                     const R* a, const R* b, bool from_zero)
{
    for (int64_t j = 0; j < n;) {
        const int columns = panel_columns(n - j);
        const R* panel = a;
        for (int64_t i = 0; i < m;) {
            const int rows = panel_rows<R>(m - i);
            const int here = m - i < rows ? static_cast<int>(m - i) : rows;
            R* tile = p.c + 2 * (i0 + i + (j0 + j) * p.c_columns);
            const Position where = position(p.triangle, i0 + i, j0 + j, here, columns);
            const Place place{i0 + i, j0 + j, here, where == Position::across ? p.triangle : 'A', from_zero};
            if (where != Position::outside) {
                if (complex_tile_vectors > 1 && rows == most_rows<R>)
                    tiles_of_columns<R, complex_tile_vectors>(columns, k, panel, b, tile, p.c_columns, place);
                else
                    tiles_of_columns<R, 1>(columns, k, panel, b, tile, p.c_columns, place);
            }
            panel += 2 * rows * k;
            i += here;
        }
        b += 2 * columns * k;
        j += columns;
    }
}

// ---- small sizes: no packing, A with contiguous columns ---------------------------------------------------

// (re, im) pairs to (-im, re).
template <class R, int L>
inline Vector<R, L> turned(Vector<R, L> z)
{
    Vector<R, L> sign = {};
    for (int k = 0; k < L; k += 2) sign[k] = R(-1), sign[k + 1] = R(1);
    return isa::exchanged<R, L>(z) * sign;
}

// C(V*L/2, N) += A(V*L/2, k) * B(k, N); L counts real numbers.
template <class R, int L, int V, int N>
void direct_tile(const ComplexProduct<R>& p, int64_t row, int64_t column)
{
    typedef Vector<R, L> Pairs;
    R* c = p.c + 2 * (row + column * p.c_columns);
    const R* a = p.a + 2 * row;
    const R* b = p.b + 2 * column * p.b_columns;
    const R sign = p.b_conjugate ? R(-1) : R(1);
    Pairs sum[N][V];
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v)
            sum[j][v] = p.from_zero ? Pairs{} : at<L>(c + 2 * j * p.c_columns + v * L);
    for (int64_t l = 0; l < p.k; ++l) {
        Pairs x[V], y[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            x[v] = at<L>(a + v * L);
            y[v] = turned<R, L>(x[v]);
        }
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j) {
            const R re = b[2 * j * p.b_columns], im = sign * b[2 * j * p.b_columns + 1];
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) {
                sum[j][v] += x[v] * re;
                sum[j][v] += y[v] * im;
            }
        }
        a += 2 * p.a_columns;
        b += 2 * p.b_rows;
    }
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) at<L>(c + 2 * j * p.c_columns + v * L) = sum[j][v];
}

template <class R, int L, int V>
void direct_columns(const ComplexProduct<R>& p, int64_t row)
{
    int64_t j = 0;
    for (; j + 4 <= p.n; j += 4) direct_tile<R, L, V, 4>(p, row, j);
    for (; j < p.n; ++j) direct_tile<R, L, V, 1>(p, row, j);
}

// Rows that are left over go to ever narrower vectors.
template <class R, int L>
void direct_rows(const ComplexProduct<R>& p, int64_t row)
{
    if constexpr (L == lanes<R> && L > 2)
        for (; row + L <= p.m; row += L) direct_columns<R, L, 2>(p, row);
    for (; row + L / 2 <= p.m; row += L / 2) direct_columns<R, L, 1>(p, row);
    if constexpr (L > 2)
        if (row < p.m) direct_rows<R, L / 2>(p, row);
}

template <class R>
void direct(const ComplexProduct<R>* p)
{
    direct_rows<R, lanes<R>>(*p, 0);
}

// ---- large sizes ------------------------------------------------------------------------------------------

constexpr int64_t depth = 192;
constexpr int64_t block_columns = 1536;

template <class R>
constexpr int64_t block_rows = 384 * 1024 / depth /
                               static_cast<int64_t>(2 * sizeof(R)) / most_rows<R>* most_rows<R>;

constexpr int64_t smaller(int64_t a, int64_t b) { return a < b ? a : b; }

template <class R>
int64_t rows_of_work(int64_t m)
{
    return smaller((m + lanes<R> - 1) / lanes<R> * lanes<R>, block_rows<R>);
}

template <class R>
int64_t workspace(int64_t m, int64_t n, int64_t k)
{
    return 2 * (rows_of_work<R>(m) + smaller(n, block_columns)) * smaller(k, depth);
}

template <class R>
void packed(const ComplexProduct<R>* p, R* work)
{
    R* packed_a = work;
    R* packed_b = work + 2 * rows_of_work<R>(p->m) * smaller(p->k, depth);
    for (int64_t j = 0; j < p->n; j += block_columns) {
        const int64_t n = smaller(p->n - j, block_columns);
        for (int64_t l = 0; l < p->k; l += depth) {
            const int64_t k = smaller(p->k - l, depth);
            pack_b(k, n, p->b + 2 * (l * p->b_rows + j * p->b_columns), {p->b_rows, p->b_columns},
                   p->b_conjugate, p->alpha, packed_b);
            for (int64_t i = 0; i < p->m; i += block_rows<R>) {
                const int64_t m = smaller(p->m - i, block_rows<R>);
                pack_a(m, k, p->a + 2 * (i * p->a_rows + l * p->a_columns), {p->a_rows, p->a_columns},
                       p->a_conjugate, packed_a);
                multiply_panels(*p, i, m, j, n, k, packed_a, packed_b, p->from_zero && l == 0);
            }
        }
    }
}

template <class R>
constexpr ComplexLevel3<R> complex_loops = {direct<R>, packed<R>, workspace<R>};

}  // namespace

const isa::ForComplex<ComplexLevel3> ORVEL_ISA::complex_product_loops = {complex_loops<float>,
                                                                         complex_loops<double>};

}  // namespace orvel::kernels
