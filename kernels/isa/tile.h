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

// Strides of a matrix whose element (i, j) is at p[i * rows + j * columns].
struct Strides {
    int64_t rows, columns;
};

// Where the factor alpha of B comes in: it is 1, it multiplies every element as it is read, or it is in the
// packed panel already.
enum class Factor { one, alpha, packed };

// C(V*L, N) += A(V*L, k) * B(k, N) in registers. Columns of A are contiguous and `a_step` apart; element (l,
// j) of B is at b[l * bs.rows + j * bs.columns], in a packed panel at b[l * N + j].
template <Factor F, class R, int L, int V, int N>
inline __attribute__((always_inline)) void real_tile(int64_t k, const R* a, int64_t a_step, const R* b,
                                                     Strides bs, R alpha, R* c, int64_t ldc)
{
    using Lane = Vector<R, L>;
    Lane sum[N][V];
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) sum[j][v] = *reinterpret_cast<const Lane*>(c + j * ldc + v * L);
    for (int64_t l = 0; l < k; ++l) {
        Lane x[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) x[v] = *reinterpret_cast<const Lane*>(a + v * L);
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j) {
            const R y = F == Factor::packed ? b[j]
                        : F == Factor::one  ? b[j * bs.columns]
                                            : alpha * b[j * bs.columns];
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) sum[j][v] += x[v] * y;
        }
        a += a_step;
        b += F == Factor::packed ? N : bs.rows;
    }
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) *reinterpret_cast<Lane*>(c + j * ldc + v * L) = sum[j][v];
}

}  // namespace
}  // namespace orvel::kernels
