// kernels/product.cpp - paths of the matrix product: direct tiles, packed panels, blocks on the stack
#include "kernels/product.h"

#include <algorithm>

#include "frame/scratch.h"
#include "kernels/isa/loops.h"
#include "kernels/vectors.h"

namespace orvel::kernels {

namespace {

inline const RealLevel3<float>& product_loops(float) { return *loops().gemm_s; }
inline const RealLevel3<double>& product_loops(double) { return *loops().gemm_d; }
inline const ComplexLevel3<float>& product_loops(std::complex<float>) { return *loops().gemm_c; }
inline const ComplexLevel3<double>& product_loops(std::complex<double>) { return *loops().gemm_z; }

template <class R>
Product<R> task(int64_t m, int64_t n, int64_t k, R alpha, const Factor<R>& a, const Factor<R>& b,
                const View<R>& c)
{
    return {
        m,     n,   k,        a.view.p, a.view.rows, a.view.columns, b.view.p, b.view.rows, b.view.columns,
        alpha, c.p, c.columns};
}

template <class R>
ComplexProduct<R> task(int64_t m, int64_t n, int64_t k, std::complex<R> alpha,
                       const Factor<std::complex<R>>& a, const Factor<std::complex<R>>& b,
                       const View<std::complex<R>>& c)
{
    return {m,
            n,
            k,
            parts(a.view.p),
            a.view.rows,
            a.view.columns,
            a.conjugated,
            parts(b.view.p),
            b.view.rows,
            b.view.columns,
            b.conjugated,
            {alpha.real(), alpha.imag()},
            parts(c.p),
            c.columns};
}

// Up to here the direct tiles are as fast as packed panels: A stays in the first-level cache.
constexpr int64_t direct_limit = 160;

// Blocks on the stack: for small matrices whose A is not by columns, for a factor alpha, and for large ones
// when there is no memory for panels.
constexpr int64_t block = 48;

template <class R>
void by_blocks(int64_t m, int64_t n, int64_t k, R alpha, const Factor<R>& a, const Factor<R>& b,
               const View<R>& c)
{
    alignas(64) R block_of_a[block * block];
    alignas(64) R block_of_b[block * block];
    for (int64_t j = 0; j < n; j += block)
        for (int64_t q = 0; q < k; q += block) {
            const int64_t columns = std::min(block, n - j), depth = std::min(block, k - q);
            Factor<R> second = b.from(q, j);
            if (alpha != R(1)) {
                for (int64_t s = 0; s < columns; ++s)
                    for (int64_t t = 0; t < depth; ++t) block_of_b[s * depth + t] = alpha * second.view(t, s);
                second = {{block_of_b, 1, depth}};
            }
            for (int64_t r = 0; r < m; r += block) {
                const int64_t rows = std::min(block, m - r);
                Factor<R> first = a.from(r, q);
                if (first.view.rows != 1) {
                    for (int64_t s = 0; s < rows; ++s)
                        for (int64_t t = 0; t < depth; ++t) block_of_a[t * rows + s] = first.view(s, t);
                    first = {{block_of_a, 1, rows}};
                }
                const Product<R> p = task(rows, columns, depth, R(1), first, second, c.from(r, j));
                product_loops(R()).direct(&p);
            }
        }
}

template <class R>
void by_blocks(int64_t m, int64_t n, int64_t k, std::complex<R> alpha, const Factor<std::complex<R>>& a,
               const Factor<std::complex<R>>& b, const View<std::complex<R>>& c)
{
    alignas(64) R panels[8 * block * block];
    const auto& run = product_loops(alpha);
    for (int64_t j = 0; j < n; j += block)
        for (int64_t q = 0; q < k; q += block)
            for (int64_t r = 0; r < m; r += block) {
                const auto p = task(std::min(block, m - r), std::min(block, n - j), std::min(block, k - q),
                                    alpha, a.from(r, q), b.from(q, j), c.from(r, j));
                run.packed(&p, panels);
            }
}

template <class T>
bool is_direct(int64_t m, int64_t k, T alpha, const Factor<T>& a)
{
    return !is_complex<T> && a.view.rows == 1 && alpha == T(1) && m <= direct_limit && k <= direct_limit;
}

// C by columns with contiguous rows.
template <class T>
void add_to_columns(int64_t m, int64_t n, int64_t k, T alpha, const Factor<T>& a, const Factor<T>& b,
                    const View<T>& c)
{
    const auto& run = product_loops(T());
    if constexpr (!is_complex<T>)
        if (is_direct(m, k, alpha, a)) {
            const auto p = task(m, n, k, alpha, a, b, c);
            return run.direct(&p);
        }
    if (m <= block && n <= block && k <= block) return by_blocks(m, n, k, alpha, a, b, c);
    Scratch<Real<T>> panels;
    if (!panels.allocate(run.workspace(m, n, k))) return by_blocks(m, n, k, alpha, a, b, c);
    const auto p = task(m, n, k, alpha, a, b, c);
    run.packed(&p, panels);
}

}  // namespace

template <class T>
void add_product(int64_t m, int64_t n, int64_t k, T alpha, Factor<T> a, Factor<T> b, View<T> c)
{
    if (m < 1 || n < 1 || k < 1) return;
    if (c.rows != 1 && c.rows != -1)
        return add_product(n, m, k, alpha, b.transposed(), a.transposed(), c.transposed());
    if (c.rows == -1) {
        a = a.rows_reversed(m);
        c = c.rows_reversed(m);
    }
    add_to_columns(m, n, k, alpha, a, b, c);
}

template void add_product(int64_t, int64_t, int64_t, float, Factor<float>, Factor<float>, View<float>);
template void add_product(int64_t, int64_t, int64_t, double, Factor<double>, Factor<double>, View<double>);
template void add_product(int64_t, int64_t, int64_t, std::complex<float>, Factor<std::complex<float>>,
                          Factor<std::complex<float>>, View<std::complex<float>>);
template void add_product(int64_t, int64_t, int64_t, std::complex<double>, Factor<std::complex<double>>,
                          Factor<std::complex<double>>, View<std::complex<double>>);

template <class T>
void scale(int64_t m, int64_t n, T beta, View<T> c, char uplo)
{
    if (beta == T(1)) return;
    for (int64_t j = 0; j < n; ++j) {
        const int64_t first = uplo == 'L' ? std::min(j, m) : 0, last = uplo == 'U' ? std::min(j + 1, m) : m;
        T* column = &c(0, j);
        if (beta == T(0))
            for (int64_t r = first; r < last; ++r) column[r] = T(0);
        else if (beta == T(-1))
            for (int64_t r = first; r < last; ++r) column[r] = -column[r];
        else
            for (int64_t r = first; r < last; ++r) column[r] *= beta;
    }
}

template void scale(int64_t, int64_t, float, View<float>, char);
template void scale(int64_t, int64_t, double, View<double>, char);
template void scale(int64_t, int64_t, std::complex<float>, View<std::complex<float>>, char);
template void scale(int64_t, int64_t, std::complex<double>, View<std::complex<double>>, char);

}  // namespace orvel::kernels
