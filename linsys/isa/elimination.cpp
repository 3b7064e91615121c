// linsys/isa/elimination.cpp - Gaussian elimination of a panel, a leaf of columns at a time
//
// Every element receives its products in ascending order of the steps. A complex product is added as four
// real ones: those with the real part of the element of U first. So the bits are those of the elimination
// column by column with the vector kernels.
#include "linsys/isa/step.h"

namespace orvel::linsys {

namespace {

// ---- forward elimination with the columns before ----------------------------------------------------------

// V vectors of rows of N columns get their products with k rows of C.
template <class R, bool Complex, int V, int N>
inline __attribute__((always_inline)) void add_products(int64_t k, const R* a, const R* top, PanelShape shape,
                                                        Rows<R, Complex> (&sum)[N][V])
{
    for (int64_t l = 0; l < k; ++l, a += shape.step) {
        Rows<R, Complex> m[V];
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) m[v] = Rows<R, Complex>::load(a + v * lanes<R>, shape.half);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const R re = top[j * shape.step + l], im = Complex ? top[j * shape.step + shape.half + l] : R(0);
#pragma GCC unroll 4
            for (int v = 0; v < V; ++v) sum[j][v].add(m[v], re, im);
        }
    }
}

// The triangle at the diagonal: rows of one vector, each lane used as soon as it is final.
template <class R, bool Complex, int N>
inline __attribute__((always_inline)) void apply_triangle(const R* a, PanelShape shape,
                                                          Rows<R, Complex> (&sum)[N][1])
{
    using Here = Rows<R, Complex>;
#pragma GCC unroll 16
    for (int t = 0; t < lanes<R> - 1; ++t) {
        const Here m = Here::load(a + t * shape.step, shape.half);
        const Whole<R> rest = below<R>(t);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            Here next = sum[j][0];
            next.add(m, broadcast<R, lanes<R>>(sum[j][0].re, t),
                     Complex ? broadcast<R, lanes<R>>(sum[j][0].im, t) : Wide<R>{});
            sum[j][0] = Here::choose(rest, next, sum[j][0]);
        }
    }
}

template <class R, bool Complex, int V, int N, bool Triangle>
inline __attribute__((always_inline)) void eliminate_rows(int64_t k, int64_t row, const R* p, R* c,
                                                          PanelShape shape)
{
    Rows<R, Complex> sum[N][V];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v)
            sum[j][v] = Rows<R, Complex>::load(c + j * shape.step + row + v * lanes<R>, shape.half);
    add_products<R, Complex, V, N>(k, p + row, c, shape, sum);
    if constexpr (Triangle) apply_triangle<R, Complex, N>(p + row + row * shape.step, shape, sum);
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) sum[j][v].store(c + j * shape.step + row + v * lanes<R>, shape.half);
}

// Vectors of rows and columns of a tile, as the registers allow.
#if defined(__AVX512F__)
template <bool Complex>
constexpr int tile_vectors = Complex ? 1 : 3;
template <bool Complex>
constexpr int tile_columns = 8;
#else
template <bool Complex>
constexpr int tile_vectors = 1;
template <bool Complex>
constexpr int tile_columns = Complex ? 4 : 8;
#endif

template <class R, bool Complex, int N>
void eliminate_columns(int64_t k, int64_t m, const R* p, R* c, PanelShape shape)
{
    constexpr int L = lanes<R>, V = tile_vectors<Complex>;
    int64_t row = 0;
    for (; row < k; row += L) eliminate_rows<R, Complex, 1, N, true>(row, row, p, c, shape);
    for (; row + (V - 1) * L < m; row += V * L) eliminate_rows<R, Complex, V, N, false>(k, row, p, c, shape);
    for (; row < m; row += L) eliminate_rows<R, Complex, 1, N, false>(k, row, p, c, shape);
}

template <class R, bool Complex>
void eliminate(int64_t k, int64_t m, int64_t n, const R* p, R* c, PanelShape shape)
{
    constexpr int N = tile_columns<Complex>;
    int64_t j = 0;
    for (; j + N <= n; j += N) eliminate_columns<R, Complex, N>(k, m, p, c + j * shape.step, shape);
    for (; j + N / 2 <= n; j += N / 2)
        eliminate_columns<R, Complex, N / 2>(k, m, p, c + j * shape.step, shape);
    for (; j < n; ++j) eliminate_columns<R, Complex, 1>(k, m, p, c + j * shape.step, shape);
}

template <class R, bool Complex>
constexpr Elimination<R> elimination = {lanes<R> > 8 ? lanes<R> : 8, eliminate<R, Complex>, step<R, Complex>,
                                        pivot<R, Complex>};

}  // namespace

const isa::ForAll<Elimination> ORVEL_ISA::elimination_loops = {
    elimination<float, false>, elimination<double, false>, elimination<float, true>,
    elimination<double, true>};

}  // namespace orvel::linsys
