// kernels/isa/tile.h - register tiles of the matrix product, for one instruction-set level
//
// Everything here has internal linkage: the file is included by objects that are compiled for different
// levels. A tile adds to each element of C its products in ascending order of the inner index; the second
// factor of a product is alpha times the element of B, rounded. So every path gives the same bits.
#pragma once

#include <stdint.h>

namespace orvel::kernels {
namespace {

#if defined(__AVX512F__)
constexpr int vector_bytes = 64;
constexpr int tile_vectors = 3, tile_columns = 8;
constexpr int complex_tile_vectors = 2, complex_tile_columns = 6;
#elif defined(__AVX2__)
constexpr int vector_bytes = 32;
constexpr int tile_vectors = 3, tile_columns = 4;
constexpr int complex_tile_vectors = 1, complex_tile_columns = 5;
#else
constexpr int vector_bytes = 16;
constexpr int tile_vectors = 2, tile_columns = 4;
constexpr int complex_tile_vectors = 1, complex_tile_columns = 4;
#endif

template <class R, int N>
struct VectorOf {
    typedef R type __attribute__((vector_size(N * sizeof(R)), aligned(alignof(R)), may_alias));
};
template <class R>
struct VectorOf<R, 1> {
    typedef R type;
};
template <class R, int N>
using Vector = typename VectorOf<R, N>::type;

template <class R>
constexpr int lanes = vector_bytes / static_cast<int>(sizeof(R));

// Whole numbers as wide as R, for the order of a shuffle.
template <class R>
struct WholeOf {
    typedef int64_t type;
};
template <>
struct WholeOf<float> {
    typedef int32_t type;
};

// (re, im) pairs to (im, re).
template <class R, int L>
inline __attribute__((always_inline)) Vector<R, L> swapped(Vector<R, L> z)
{
    typedef typename WholeOf<R>::type Order __attribute__((vector_size(L * sizeof(R))));
    Order order = {};
    for (int k = 0; k < L; ++k) order[k] = k ^ 1;
    return __builtin_shuffle(z, order);
}

// Transposes L vectors of L numbers in registers: a butterfly of exchanges between vectors 1, 2, 4 ... apart.
template <class R, int L>
inline __attribute__((always_inline)) void transpose_square(Vector<R, L> (&x)[L])
{
    typedef typename WholeOf<R>::type Order __attribute__((vector_size(L * sizeof(R))));
#pragma GCC unroll 4
    for (int w = 1; w < L; w *= 2) {
        Order low = {}, high = {};
        for (int k = 0; k < L; ++k) {
            low[k] = k & w ? L + k - w : k;
            high[k] = k & w ? L + k : k + w;
        }
#pragma GCC unroll 16
        for (int i = 0; i < L; ++i)
            if (!(i & w)) {
                const Vector<R, L> first = x[i], second = x[i + w];
                x[i] = __builtin_shuffle(first, second, low);
                x[i + w] = __builtin_shuffle(first, second, high);
            }
    }
}

// to(columns, rows) = the transpose of A(rows, columns); both by columns, lda and ldto apart.
template <class R, int L = lanes<R>>
inline void transpose_matrix(int64_t rows, int64_t columns, const R* a, int64_t lda, R* to, int64_t ldto)
{
    using Lane = Vector<R, L>;
    int64_t i = 0;
    for (; i + L <= rows; i += L) {
        int64_t j = 0;
        for (; j + L <= columns; j += L) {
            Lane x[L];
#pragma GCC unroll 16
            for (int k = 0; k < L; ++k) x[k] = *reinterpret_cast<const Lane*>(a + i + (j + k) * lda);
            transpose_square<R, L>(x);
#pragma GCC unroll 16
            for (int k = 0; k < L; ++k) *reinterpret_cast<Lane*>(to + j + (i + k) * ldto) = x[k];
        }
        for (; j < columns; ++j)
            for (int k = 0; k < L; ++k) to[j + (i + k) * ldto] = a[i + k + j * lda];
    }
    for (; i < rows; ++i)
        for (int64_t j = 0; j < columns; ++j) to[j + i * ldto] = a[i + j * lda];
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
    using Lane = Vector<R, L>;
    Lane sum[N][V];
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v)
            sum[j][v] = from_zero ? Lane{} : *reinterpret_cast<const Lane*>(c + j * ldc + v * L);
    for (int64_t l = 0; l < k; ++l) {
        Lane x[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) x[v] = *reinterpret_cast<const Lane*>(a + v * L);
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j) {
            const R y = Packed ? b[j] : b[j * bs.columns];
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) sum[j][v] += x[v] * y;
        }
        a += a_step;
        b += Packed ? N : bs.rows;
    }
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) *reinterpret_cast<Lane*>(c + j * ldc + v * L) = sum[j][v];
}

}  // namespace
}  // namespace orvel::kernels

// How a tile of C at row i, column j with the given extents lies to the triangle.
namespace orvel::kernels {
namespace {

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

}  // namespace
}  // namespace orvel::kernels
