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

// Where a factor lies as its panels see it: across a panel and along it.
template <class R>
struct Source {
    const R* p;
    int64_t across, along;

    const R* at(int64_t a, int64_t l) const { return p + a * across + l * along; }
    Source from(int64_t a, int64_t l) const { return {at(a, l), across, along}; }
    Source mirrored() const { return {p, along, across}; }
};

// Whole panels of columns that lie in a row: down one column after the other, as the memory has them.
template <class R, int W>
void pack_columns(int64_t panels, int64_t k, const Source<R>& from, R alpha, R* __restrict to)
{
    constexpr int L = lanes<R> < W ? lanes<R> : W, ahead = 4;
    for (int64_t l = 0; l < k; ++l)
        for (int64_t i = 0; i < panels; ++i) {
            const R* column = from.at(i * W, l);
            R* panel = to + (i * k + l) * W;
#pragma GCC unroll 8
            for (int a = 0; a < W; a += L) {
                __builtin_prefetch(column + a + ahead * from.along);
                at<L>(panel + a) = alpha * at<L>(column + a);
            }
        }
}

// Numbers side by side in one panel, to[l * W + a] = alpha * source(a, l), for a below `here` and l below k.
// What the panel has beyond is zero.
template <class R, int W>
void pack_panel(int here, int64_t k, const Source<R>& from, R alpha, R* __restrict to)
{
    constexpr int L = lanes<R> < W ? lanes<R> : W;
    if (here == W && from.across == 1) {
        pack_columns<R, W>(1, k, from, alpha, to);
    } else if (from.along == 1 || from.along == -1) {
        const bool forward = from.along == 1;
        transpose_matrix<R, L>(k, here, forward ? from.p : from.at(0, k - 1), from.across,
                               forward ? to : to + (k - 1) * W, forward ? W : -W);
        for (int64_t l = 0; l < k; ++l)
            for (int a = here; a < W; ++a) to[l * W + a] = 0;
        if (alpha != R(1))
            for (int64_t i = 0; i < W * k; ++i) to[i] = alpha * to[i];
    } else {
        for (int64_t l = 0; l < k; ++l)
#pragma GCC ivdep
            for (int a = 0; a < W; ++a) to[l * W + a] = a < here ? alpha * *from.at(a, l) : R(0);
    }
}

// A panel of a symmetric factor: up to the numbers whose index lies in the panel, those, and the others. Of
// one kind the stored ones are the mirrored.
template <class R, int W>
void pack_symmetric_panel(int here, int64_t k, const Source<R>& all, bool lower, int64_t a0, int64_t l0,
                          R alpha, R* to)
{
    const int64_t first = clamped(a0 - l0, 0, k), last = clamped(a0 + here - l0, 0, k);
    const Source<R> before = lower ? all : all.mirrored(), after = lower ? all.mirrored() : all;
    const auto part = [&](const Source<R>& half, int64_t begin, int64_t end) {
        const Source<R> from{half.at(a0, l0 + begin), half.across, half.along};
        pack_panel<R, W>(here, end - begin, from, alpha, to + begin * W);
    };
    part(before, 0, first);
    for (int64_t l = first; l < last; ++l)
        for (int a = 0; a < W; ++a)
            to[l * W + a] = a < here ? alpha * *(a0 + a >= l0 + l ? before : after).at(a0 + a, l0 + l) : R(0);
    part(after, last, k);
}

// Panels of W numbers across, `count` of them from a0 on, of the inner indices from l0.
template <class R, int W>
void pack(int64_t count, int64_t k, const Source<R>& all, char stored, int64_t a0, int64_t l0, R alpha, R* to)
{
    int64_t a = 0;
    if (stored == 'A' && all.across == 1) {
        pack_columns<R, W>(count / W, k, all.from(a0, l0), alpha, to);
        a = count / W * W;
    }
    for (; a < count; a += W) {
        const int here = static_cast<int>(smaller(W, count - a));
        if (stored == 'A')
            pack_panel<R, W>(here, k, all.from(a0 + a, l0), alpha, to + a * k);
        else
            pack_symmetric_panel<R, W>(here, k, all, stored == 'L', a0 + a, l0, alpha, to + a * k);
    }
}

// A tile that hangs over the edge of C or of the triangle goes through a buffer.
template <class R>
void edge_tile(int64_t k, const R* a, const R* b, const Product<R>& p, int64_t i0, int64_t j0, bool from_zero)
{
    constexpr int rows = tile_rows<R>;
    const int64_t m = smaller(p.m - i0, rows), n = smaller(p.n - j0, tile_columns);
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

// A tile inside C; where the last rows are whole vectors, one of fewer vectors. While it runs, the next tile
// of C is fetched.
template <class R, int V = tile_vectors>
inline void inner_tile(int64_t vectors, int64_t k, const R* a, const R* b, R* c, int64_t ldc, bool from_zero,
                       const R* next)
{
    if constexpr (V > 1)
        if (vectors < V) return inner_tile<R, V - 1>(vectors, k, a, b, c, ldc, from_zero, next);
#pragma GCC unroll 16
    for (int j = 0; j < tile_columns; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) __builtin_prefetch(next + j * ldc + v * lanes<R>, 1);
    real_tile<true, R, lanes<R>, V, tile_columns>(k, a, tile_rows<R>, b, {0, 0}, c, ldc, from_zero);
}

// The rows from i0 and columns from j0 of C, with panels of an inner depth k.
template <class R>
void multiply_panels(const Product<R>& p, int64_t i0, int64_t m, int64_t j0, int64_t n, int64_t k, const R* a,
                     const R* b, bool from_zero)
{
    constexpr int rows = tile_rows<R>;
    for (int64_t j = 0; j < n; j += tile_columns) {
        R* const column = p.c + i0 + (j0 + j) * p.c_columns;
        for (int64_t i = 0; i < m; i += rows) {
            const Position here = position(p.triangle, i0 + i, j0 + j, rows, tile_columns);
            if (here == Position::outside) continue;
            const int64_t height = smaller(m - i, rows);
            if (here == Position::inside && height % lanes<R> == 0 && j + tile_columns <= n)
                inner_tile(height / lanes<R>, k, a + i * k, b + j * k, column + i, p.c_columns, from_zero,
                           i + rows < m ? column + i + rows : column + tile_columns * p.c_columns);
            else
                edge_tile(k, a + i * k, b + j * k, p, i0 + i, j0 + j, from_zero);
        }
    }
}

template <class R>
void packed(const Product<R>* product, Blocks blocks, R* packed_a, R* packed_b)
{
    const Product<R>& p = *product;
    const Source<R> a{p.a, p.a_rows, p.a_columns}, b{p.b, p.b_columns, p.b_rows};
    for (int64_t j = 0; j < p.n; j += blocks.columns) {
        const int64_t n = smaller(p.n - j, blocks.columns);
        for (int64_t l = 0; l < p.k; l += blocks.depth) {
            const int64_t k = smaller(p.k - l, blocks.depth);
            pack<R, tile_columns>(n, k, b, turned_triangle(p.b_stored), j, l, p.alpha, packed_b);
            for (int64_t i = 0; i < p.m; i += blocks.rows) {
                const int64_t m = smaller(p.m - i, blocks.rows);
                pack<R, tile_rows<R>>(m, k, a, p.a_stored, i, l, R(1), packed_a);
                multiply_panels(p, i, m, j, n, k, packed_a, packed_b, p.from_zero && l == 0);
            }
        }
    }
}

template <class R>
constexpr RealLevel3<R> real = {tile_rows<R>, tile_columns,        direct<R>,
                                packed<R>,    transpose_matrix<R>, copy_matrix<R>};

}  // namespace

const isa::ForReals<RealLevel3> ORVEL_ISA::real_product_loops = {real<float>, real<double>};

}  // namespace orvel::kernels
