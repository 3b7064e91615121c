// kernels/isa/triangle.cpp - small lower triangles applied to rows of a block, in place
//
// The triangle L(n, n) is packed by rows; complex ones as pairs. A row of the block holds `width` numbers;
// complex rows hold their real parts, then their imaginary parts. The order of operations on an element is
// that of the products of larger blocks: ascending inner index when solving, descending when multiplying.
#include "kernels/isa/loops.h"
#include "kernels/isa/tile.h"

namespace orvel::kernels {

namespace {

using isa::Wide;

constexpr int row_vectors = 4;

template <class R>
struct Row {
    R* x;

    Wide<R> operator[](int v) const { return isa::wide(x + v * isa::lanes<R>); }
    void set(int v, Wide<R> to) const { isa::wide(x + v * isa::lanes<R>) = to; }
};

template <int V = row_vectors, class R>
inline Row<R> row_of(R* x, int64_t row)
{
    return {x + row * V * isa::lanes<R>};
}

// Rows of V vectors.
template <class R, int V>
void solve(int64_t n, const R* l, bool unit, R* x)
{
    for (int64_t i = 0; i < n; ++i) {
        const Row<R> row = row_of<V>(x, i);
        Wide<R> sum[V];
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) sum[v] = row[v];
        for (int64_t k = 0; k < i; ++k)
#pragma GCC unroll 4
            for (int v = 0; v < V; ++v) sum[v] -= l[i * n + k] * row_of<V>(x, k)[v];
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) row.set(v, unit ? sum[v] : sum[v] / l[i * n + i]);
    }
}

template <class R, int V>
void multiply(int64_t n, const R* l, bool unit, R* x)
{
    for (int64_t i = n - 1; i >= 0; --i) {
        const Row<R> row = row_of<V>(x, i);
        Wide<R> sum[V];
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) sum[v] = unit ? row[v] : l[i * n + i] * row[v];
        for (int64_t k = i - 1; k >= 0; --k)
#pragma GCC unroll 4
            for (int v = 0; v < V; ++v) sum[v] += l[i * n + k] * row_of<V>(x, k)[v];
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) row.set(v, sum[v]);
    }
}

constexpr int half = row_vectors / 2;

template <class R>
inline bool is_large(R x)
{
    constexpr R large = (sizeof(R) == 4 ? R(__FLT_MAX__) : R(__DBL_MAX__)) / 4;
    return x > large || x < -large;
}

// Divides a row by the complex number (re, im), scaled by its larger part: R. L. Smith, Algorithm 116:
// Complex division. Large numbers are divided by 4 first, so that no sum of two parts overflows.
template <class R>
void divide(R re, R im, Row<R> row)
{
    R back = 1;  // what the quotients are multiplied by in the end
    const auto reduce = [&] {
        for (int v = 0; v < row_vectors; ++v) row.set(v, row[v] * R(0.25));
    };
    if (is_large(re) || is_large(im)) {
        re *= R(0.25);
        im *= R(0.25);
        reduce();
    } else {
        Wide<R> most = row[0] < 0 ? -row[0] : row[0];
        for (int v = 1; v < row_vectors; ++v) {
            const Wide<R> size = row[v] < 0 ? -row[v] : row[v];
            most = most < size ? size : most;
        }
        bool overflows = false;
        for (int k = 0; k < lanes<R>; ++k) overflows |= is_large(most[k]);
        if (overflows) {
            back = 4;
            reduce();
        }
    }
    const bool swapped = (re < 0 ? -re : re) < (im < 0 ? -im : im);
    const R ratio = swapped ? re / im : im / re;
    const R denominator = swapped ? im + re * ratio : re + im * ratio;
    for (int v = 0; v < half; ++v) {
        const Wide<R> a = row[v], b = row[half + v];
        row.set(v, (swapped ? a * ratio + b : a + b * ratio) / denominator);
        row.set(half + v, (swapped ? b * ratio - a : b - a * ratio) / denominator);
    }
    if (back != 1)
        for (int v = 0; v < row_vectors; ++v) row.set(v, row[v] * back);
}

template <class R>
void solve_complex(int64_t n, const R* l, bool unit, R* x)
{
    for (int64_t i = 0; i < n; ++i) {
        const Row<R> row = row_of(x, i);
        Wide<R> re[half], im[half];
        for (int v = 0; v < half; ++v) re[v] = row[v], im[v] = row[half + v];
        for (int64_t k = 0; k < i; ++k) {
            const R a = l[2 * (i * n + k)], b = l[2 * (i * n + k) + 1];
            const Row<R> known = row_of(x, k);
            for (int v = 0; v < half; ++v) {
                re[v] -= a * known[v];
                im[v] -= b * known[v];
                re[v] += b * known[half + v];
                im[v] -= a * known[half + v];
            }
        }
        for (int v = 0; v < half; ++v) row.set(v, re[v]), row.set(half + v, im[v]);
        if (!unit) divide<R>(l[2 * (i * n + i)], l[2 * (i * n + i) + 1], row);
    }
}

template <class R>
void multiply_complex(int64_t n, const R* l, bool unit, R* x)
{
    for (int64_t i = n - 1; i >= 0; --i) {
        const Row<R> row = row_of(x, i);
        const R c = unit ? R(1) : l[2 * (i * n + i)], d = unit ? R(0) : l[2 * (i * n + i) + 1];
        Wide<R> re[half], im[half];
        for (int v = 0; v < half; ++v) {
            re[v] = unit ? row[v] : c * row[v] - d * row[half + v];
            im[v] = unit ? row[half + v] : c * row[half + v] + d * row[v];
        }
        for (int64_t k = i - 1; k >= 0; --k) {
            const R a = l[2 * (i * n + k)], b = l[2 * (i * n + k) + 1];
            const Row<R> other = row_of(x, k);
            for (int v = 0; v < half; ++v) {
                re[v] += a * other[v];
                im[v] += b * other[v];
                re[v] -= b * other[half + v];
                im[v] += a * other[half + v];
            }
        }
        for (int v = 0; v < half; ++v) row.set(v, re[v]), row.set(half + v, im[v]);
    }
}

template <class R>
constexpr Triangles<R> triangles = {
    {{row_vectors * lanes<R>, solve<R, row_vectors>, multiply<R, row_vectors>},
     {half * lanes<R>, solve<R, half>, multiply<R, half>},
     {half / 2 * lanes<R>, solve<R, half / 2>, multiply<R, half / 2>}},
    half* lanes<R>,
    solve_complex<R>,
    multiply_complex<R>,
};

}  // namespace

const isa::ForReals<Triangles> ORVEL_ISA::triangle_loops = {triangles<float>, triangles<double>};

}  // namespace orvel::kernels
