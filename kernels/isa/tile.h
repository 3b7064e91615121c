// kernels/isa/tile.h - register tiles of the matrix product, for one instruction-set level
//
// Everything here has internal linkage: the file is included by objects that are compiled for different
// levels. A tile adds to each element of C its products in ascending order of the inner index; the second
// factor of a product is alpha times the element of B, rounded. So every path gives the same bits.
#pragma once

#include "isa/vector.h"

namespace orvel::kernels {
namespace {

using isa::at;
using isa::lanes;
using isa::Vector;

#if defined(__AVX512F__)
constexpr int tile_vectors = 3, tile_columns = 8;
constexpr int complex_tile_vectors = 2, complex_tile_columns = 6;
#elif defined(__AVX2__)
constexpr int tile_vectors = 3, tile_columns = 4;
constexpr int complex_tile_vectors = 1, complex_tile_columns = 5;
#else
constexpr int tile_vectors = 2, tile_columns = 4;
constexpr int complex_tile_vectors = 1, complex_tile_columns = 4;
#endif

constexpr int64_t smaller(int64_t a, int64_t b) { return a < b ? a : b; }
constexpr int64_t clamped(int64_t x, int64_t least, int64_t most)
{
    return x < least ? least : x < most ? x : most;
}

// to(columns, rows) = the transpose of A(rows, columns); both by columns, lda and ldto apart.
template <class R, int L = lanes<R>>
inline void transpose_matrix(int64_t rows, int64_t columns, const R* a, int64_t lda, R* to, int64_t ldto)
{
    int64_t i = 0;
    for (; i + L <= rows; i += L) {
        int64_t j = 0;
        for (; j + L <= columns; j += L) {
            Vector<R, L> x[L];
            const R* from = a + i + j * lda;
#pragma GCC unroll 16
            for (int k = 0; k < L; ++k) {
                x[k] = at<L>(from);
                from = isa::anew(from + lda);
            }
            isa::transpose<R, L>(x);
            R* row = to + j + i * ldto;
#pragma GCC unroll 16
            for (int k = 0; k < L; ++k) {
                at<L>(row) = x[k];
                row = isa::anew(row + ldto);
            }
        }
        for (; j < columns; ++j)
            for (int k = 0; k < L; ++k) to[j + (i + k) * ldto] = a[i + k + j * lda];
    }
    for (; i < rows; ++i)
        for (int64_t j = 0; j < columns; ++j) to[j + i * ldto] = a[i + j * lda];
}

// to(rows, columns) = A(rows, columns), column by column: for short ones, which a call each would cost much.
template <class R, int L = lanes<R>>
inline void copy_matrix(int64_t rows, int64_t columns, const R* a, int64_t lda, R* to, int64_t ldto)
{
    for (int64_t j = 0; j < columns; ++j) {
        const R* from = a + j * lda;
        R* column = to + j * ldto;
        int64_t i = 0;
        for (; i + L <= rows; i += L) at<L>(column + i) = at<L>(from + i);
        for (; i < rows; ++i) column[i] = isa::anew(from)[i];
    }
}

// Strides of a matrix whose element (i, j) is at p[i * rows + j * columns].
struct Strides {
    int64_t rows, columns;
};

// C(V*L, N) += A(V*L, k) * B(k, N) in registers. Columns of A are contiguous and `a_step` apart; element (l,
// j) of B is at b[l * bs.rows + j * bs.columns], in a packed panel at b[l * N + j].
template <bool Packed, class R, int L, int V, int N>
inline __attribute__((always_inline)) void real_tile(int64_t k, const R* a, int64_t a_step, const R* b,
                                                     Strides bs, R* c, int64_t ldc, bool from_zero)
{
    Vector<R, L> sum[N][V];
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) sum[j][v] = from_zero ? Vector<R, L>{} : at<L>(c + j * ldc + v * L);
    for (int64_t l = 0; l < k; ++l) {
        Vector<R, L> x[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) x[v] = at<L>(a + v * L);
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j) {
            const R y = Packed ? b[j] : b[j * bs.columns];
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) sum[j][v] += x[v] * y;
        }
        a += a_step;
        b += Packed ? N : bs.rows;
    }
    c = isa::anew(c);
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) at<L>(c + j * ldc + v * L) = sum[j][v];
}

// How a tile of C at row i, column j with the given extents lies to the triangle.
enum class Position { inside, outside, across };

inline Position position(char triangle, int64_t i, int64_t j, int64_t rows, int64_t columns)
{
    if (triangle == 'L')
        return i >= j + columns - 1 ? Position::inside
               : i + rows - 1 < j   ? Position::outside
                                    : Position::across;
    if (triangle == 'U')
        return i + rows - 1 <= j     ? Position::inside
               : i > j + columns - 1 ? Position::outside
                                     : Position::across;
    return Position::inside;
}

inline bool is_in(char triangle, int64_t i, int64_t j)
{
    return triangle == 'L' ? i >= j : triangle == 'U' ? i <= j : true;
}

// The panels of the second factor see its rows as columns.
inline char turned_triangle(char stored) { return stored == 'L' ? 'U' : stored == 'U' ? 'L' : 'A'; }

}  // namespace
}  // namespace orvel::kernels
