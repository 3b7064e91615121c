// kernels/isa/gemm.cpp - real matrix products: direct tiles for small sizes, packed panels for large ones
#include "kernels/isa/loops.h"
#include "kernels/isa/tile.h"

namespace orvel::kernels {

namespace {

// ---- small sizes: no packing, A with contiguous columns ---------------------------------------------------

template <class R, int L, int V, int N>
int64_t direct_tiles(const Product<R>& p, int64_t row, int64_t j)
{
    for (; j + N <= p.n; j += N)
        real_tile<false, R, L, V, N>(p.k, p.a + row, p.a_columns, p.b + j * p.b_columns,
                                     {p.b_rows, p.b_columns}, p.c + row + j * p.c_columns, p.c_columns,
                                     p.from_zero);
    return j;
}

// V vectors of rows by all columns; the columns that are left over go to ever narrower tiles.
template <class R, int L, int V>
void direct_columns(const Product<R>& p, int64_t row)
{
    int64_t j = direct_tiles<R, L, V, tile_columns>(p, row, 0);
    if constexpr (tile_columns > 4) j = direct_tiles<R, L, V, 4>(p, row, j);
    j = direct_tiles<R, L, V, 2>(p, row, j);
    direct_tiles<R, L, V, 1>(p, row, j);
}

template <class R, int L>
void direct_rows(const Product<R>& p, int64_t row)
{
    if constexpr (L == lanes<R>) {
        for (; row + tile_vectors * L <= p.m; row += tile_vectors * L)
            direct_columns<R, L, tile_vectors>(p, row);
        for (; row + 2 * L <= p.m; row += 2 * L) direct_columns<R, L, 2>(p, row);
    }
    for (; row + L <= p.m; row += L) direct_columns<R, L, 1>(p, row);
    if constexpr (L > 1)
        if (row < p.m) direct_rows<R, L / 2>(p, row);
}

template <class R>
void direct(const Product<R>* p)
{
    direct_rows<R, lanes<R>>(*p, 0);
}

// ---- large sizes ------------------------------------------------------------------------------------------

template <class R>
constexpr int tile_rows = tile_vectors* lanes<R>;

// Panels of tile_rows rows: element (i, l) of a panel is at [l * tile_rows + i]; missing rows are zero.
template <class R>
void pack_a(int64_t m, int64_t k, const R* a, Strides s, R* __restrict to)
{
    constexpr int rows = tile_rows<R>;
    for (int64_t i = 0; i < m; i += rows, to += rows * k, a += rows * s.rows) {
        const int here = m - i < rows ? static_cast<int>(m - i) : rows;
        if (here == rows && s.rows == 1) {
            for (int64_t l = 0; l < k; ++l)
#pragma GCC unroll 8
                for (int r = 0; r < rows; r += lanes<R>)
                    at<lanes<R>>(to + l * rows + r) = at<lanes<R>>(a + l * s.columns + r);
        } else if (here == rows && s.rows == -1) {
            for (int64_t l = 0; l < k; ++l)
#pragma GCC ivdep
                for (int r = 0; r < rows; ++r) to[l * rows + r] = a[l * s.columns - r];
        } else if (s.columns == 1 || s.columns == -1) {
            const bool forward = s.columns == 1;
            transpose_matrix(k, here, forward ? a : a - (k - 1), s.rows, forward ? to : to + (k - 1) * rows,
                             forward ? rows : -rows);
            for (int64_t l = 0; l < k; ++l)
                for (int r = here; r < rows; ++r) to[l * rows + r] = 0;
        } else {
            for (int64_t l = 0; l < k; ++l)
                for (int r = 0; r < rows; ++r)
                    to[l * rows + r] = r < here ? a[l * s.columns + r * s.rows] : R(0);
        }
    }
}

// Panels of tile_columns columns of alpha * B; missing columns are zero.
template <class R>
void pack_b(int64_t k, int64_t n, const R* b, Strides s, R alpha, R* __restrict to)
{
    constexpr int columns = tile_columns, L = lanes<R> < columns ? lanes<R> : columns;
    for (int64_t j = 0; j < n; j += columns, to += columns * k, b += columns * s.columns) {
        const int here = n - j < columns ? static_cast<int>(n - j) : columns;
        if (here < columns) {
            for (int64_t l = 0; l < k; ++l)
                for (int c = 0; c < columns; ++c)
                    to[l * columns + c] = c < here ? alpha * b[l * s.rows + c * s.columns] : R(0);
        } else if (s.columns == 1) {
            for (int64_t l = 0; l < k; ++l)
                for (int c = 0; c < columns; ++c) to[l * columns + c] = alpha * b[l * s.rows + c];
        } else if (s.rows == 1) {
            transpose_matrix<R, L>(k, columns, b, s.columns, to, columns);
            if (alpha != R(1))
                for (int64_t l = 0; l < columns * k; ++l) to[l] = alpha * to[l];
        } else {
            for (int64_t l = 0; l < k; ++l)
                for (int c = 0; c < columns; ++c) to[l * columns + c] = alpha * b[l * s.rows + c * s.columns];
        }
    }
}

// A tile that hangs over the edge of C or of the triangle goes through a buffer.
template <class R>
void edge_tile(int64_t k, const R* a, const R* b, const Product<R>& p, int64_t i0, int64_t j0, bool from_zero)
{
    constexpr int rows = tile_rows<R>;
    const int64_t m = p.m - i0 < rows ? p.m - i0 : rows,
                  n = p.n - j0 < tile_columns ? p.n - j0 : tile_columns;
    R* c = p.c + i0 + j0 * p.c_columns;
    R buffer[rows * tile_columns];
    if (!from_zero)
        for (int j = 0; j < tile_columns; ++j)
#pragma GCC ivdep
            for (int i = 0; i < rows; ++i)
                buffer[j * rows + i] =
                    i < m && j < n && is_in(p.triangle, i0 + i, j0 + j) ? c[j * p.c_columns + i] : R(0);
    real_tile<true, R, lanes<R>, tile_vectors, tile_columns>(k, a, rows, b, {0, 0}, buffer, rows, from_zero);
    for (int64_t j = 0; j < n; ++j)
#pragma GCC ivdep
        for (int64_t i = 0; i < m; ++i)
            if (is_in(p.triangle, i0 + i, j0 + j)) c[j * p.c_columns + i] = buffer[j * rows + i];
}

// A tile inside C; where the last rows are whole vectors, one of fewer vectors.
template <class R, int V = tile_vectors>
inline void inner_tile(int64_t vectors, int64_t k, const R* a, const R* b, R* c, int64_t ldc, bool from_zero)
{
    if constexpr (V > 1)
        if (vectors < V) return inner_tile<R, V - 1>(vectors, k, a, b, c, ldc, from_zero);
    real_tile<true, R, lanes<R>, V, tile_columns>(k, a, tile_rows<R>, b, {0, 0}, c, ldc, from_zero);
}

// The rows from i0 and columns from j0 of C, with panels of an inner depth k.
template <class R>
void multiply_panels(const Product<R>& p, int64_t i0, int64_t m, int64_t j0, int64_t n, int64_t k, const R* a,
                     const R* b, bool from_zero)
{
    constexpr int rows = tile_rows<R>;
    for (int64_t j = 0; j < n; j += tile_columns)
        for (int64_t i = 0; i < m; i += rows) {
            const Position here = position(p.triangle, i0 + i, j0 + j, rows, tile_columns);
            if (here == Position::outside) continue;
            const int64_t height = m - i < rows ? m - i : rows;
            if (here == Position::inside && height % lanes<R> == 0 && j + tile_columns <= n)
                inner_tile(height / lanes<R>, k, a + i * k, b + j * k, p.c + i0 + i + (j0 + j) * p.c_columns,
                           p.c_columns, from_zero);
            else
                edge_tile(k, a + i * k, b + j * k, p, i0 + i, j0 + j, from_zero);
        }
}

constexpr int64_t depth = 256;           // inner indices of a packed panel
constexpr int64_t block_columns = 2048;  // of B packed at a time

// Rows of A packed at a time: a third to a half of the second-level cache, in whole tiles.
template <class R>
constexpr int64_t block_rows = 384 * 1024 / depth /
                               static_cast<int64_t>(sizeof(R)) / tile_rows<R>* tile_rows<R>;

constexpr int64_t round_up(int64_t n, int64_t unit) { return (n + unit - 1) / unit * unit; }

template <class R>
int64_t workspace(int64_t m, int64_t n, int64_t k)
{
    const int64_t rows = m < block_rows<R> ? m : block_rows<R>;
    const int64_t columns = n < block_columns ? n : block_columns;
    return (round_up(rows, tile_rows<R>) + round_up(columns, tile_columns)) * (k < depth ? k : depth);
}

template <class R>
void packed(const Product<R>* p, R* work)
{
    R* packed_a = work;
    R* packed_b = work + round_up(p->m < block_rows<R> ? p->m : block_rows<R>, tile_rows<R>) *
                             (p->k < depth ? p->k : depth);
    for (int64_t j = 0; j < p->n; j += block_columns) {
        const int64_t n = p->n - j < block_columns ? p->n - j : block_columns;
        for (int64_t l = 0; l < p->k; l += depth) {
            const int64_t k = p->k - l < depth ? p->k - l : depth;
            pack_b(k, n, p->b + l * p->b_rows + j * p->b_columns, {p->b_rows, p->b_columns}, p->alpha,
                   packed_b);
            for (int64_t i = 0; i < p->m; i += block_rows<R>) {
                const int64_t m = p->m - i < block_rows<R> ? p->m - i : block_rows<R>;
                pack_a(m, k, p->a + i * p->a_rows + l * p->a_columns, {p->a_rows, p->a_columns}, packed_a);
                multiply_panels(*p, i, m, j, n, k, packed_a, packed_b, p->from_zero && l == 0);
            }
        }
    }
}

template <class R>
constexpr RealLevel3<R> real = {direct<R>, packed<R>, workspace<R>, transpose_matrix<R>};

}  // namespace

const isa::ForReals<RealLevel3> ORVEL_ISA::real_product_loops = {real<float>, real<double>};

}  // namespace orvel::kernels
