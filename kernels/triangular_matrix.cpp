// kernels/triangular_matrix.cpp - TRMM and TRSM: products and solutions with a triangular matrix
//
// Every case is turned into one: B = L * B or L * X = B with a lower triangle L. The right side is the
// transposed left side, and an upper triangle read from its end is a lower one.
#include <algorithm>

#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/isa/loops.h"
#include "kernels/product.h"
#include "kernels/triangular.h"
#include "kernels/vectors.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

enum class Action { multiply, solve };

constexpr int64_t smallest = 32;    // triangles up to this order are applied on the stack
constexpr int64_t most_width = 64;  // real columns of a block there

template <class T>
void pack(int64_t n, const Factor<T>& l, T* to)
{
    const Factor<T> from = l;  // which the compiler knows not to change
    for (int64_t r = 0; r < n; ++r)
        for (int64_t c = 0; c <= r; ++c) to[r * n + c] = from(r, c);
}

// Copies the first columns of b, whose rows or columns are contiguous, to a block by rows, and back.
template <class R>
void load_block(int64_t n, int64_t columns, const View<R>& b, R* block, int64_t width)
{
    const auto& run = isa::of_type<R>(real_product_loops());
    if (b.rows == 1) return run.transpose(n, columns, b.p, b.columns, block, width);
    if (b.rows == -1)
        return run.transpose(n, columns, &b(n - 1, 0), b.columns, block + (n - 1) * width, -width);
    run.copy(columns, n, b.p, b.rows, block, width);
}
template <class R>
void store_block(int64_t n, int64_t columns, const R* block, int64_t width, const View<R>& b)
{
    const auto& run = isa::of_type<R>(real_product_loops());
    if (b.rows == 1) return run.transpose(columns, n, block, width, b.p, b.columns);
    if (b.rows == -1)
        return run.transpose(columns, n, block + (n - 1) * width, -width, &b(n - 1, 0), b.columns);
    run.copy(columns, n, block, width, b.p, b.rows);
}

template <class R>
[[gnu::noinline]] void apply_small(Action action, int64_t n, int64_t m, const Factor<R>& l, bool unit,
                                   View<R> b)
{
    const auto& widths = isa::of_type<R>(triangle_loops()).real;
    alignas(64) R triangle[smallest * smallest];
    alignas(64) R block[smallest * most_width];
    pack(n, l, triangle);
    for (int64_t j = 0; j < m;) {
        const auto* run = widths;
        for (const auto& narrower : widths)
            if (narrower.width >= m - j) run = &narrower;
        const int64_t width = run->width, here = std::min(width, m - j);
        if (here < width) std::fill_n(block, n * width, R(0));
        load_block(n, here, b.from(0, j), block, width);
        (action == Action::solve ? run->solve : run->multiply)(n, triangle, unit, block);
        store_block(n, here, block, width, b.from(0, j));
        j += here;
    }
}

template <class R>
[[gnu::noinline]] void apply_small(Action action, int64_t n, int64_t m, const Factor<std::complex<R>>& l,
                                   bool unit, View<std::complex<R>> b)
{
    const Triangles<R>& run = isa::of_type<R>(triangle_loops());
    const int64_t width = run.complex_width;
    OnStack<std::complex<R>, smallest * smallest> triangle;
    alignas(64) R block[smallest * most_width];
    pack<std::complex<R>>(n, l, triangle);
    for (int64_t j = 0; j < m; j += width) {
        const int64_t here = std::min(width, m - j);
        for (int64_t c = 0; c < width; ++c)
            for (int64_t r = 0; r < n; ++r) {
                const std::complex<R> z = c < here ? b(r, j + c) : std::complex<R>();
                block[2 * r * width + c] = z.real();
                block[(2 * r + 1) * width + c] = z.imag();
            }
        (action == Action::solve ? run.solve_complex : run.multiply_complex)(
            n, parts(static_cast<std::complex<R>*>(triangle)), unit, block);
        for (int64_t c = 0; c < here; ++c)
            for (int64_t r = 0; r < n; ++r)
                b(r, j + c) = {block[2 * r * width + c], block[(2 * r + 1) * width + c]};
    }
}

// Halves the triangle. An element meets the inner indices in ascending order when solving and in descending
// order, from its own on, when multiplying; that is the order of the definitions by columns.
template <class T>
void apply(Action action, int64_t n, int64_t m, Factor<T> l, bool unit, View<T> b)
{
    if (n <= smallest) return apply_small(action, n, m, l, unit, b);
    const int64_t half = (n / 2 + smallest - 1) / smallest * smallest, rest = n - half;
    const View<T> lower = b.from(half, 0);
    const Factor<T> square = l.from(half, 0);
    if (action == Action::solve) {
        apply(action, half, m, l, unit, b);
        add_product<T>(rest, m, half, T(-1), square, {b.constant()}, lower);
        apply(action, rest, m, l.from(half, half), unit, lower);
    } else {
        apply(action, rest, m, l.from(half, half), unit, lower);
        add_product<T>(rest, m, half, T(1), square.columns_reversed(half), {b.constant().rows_reversed(half)},
                       lower);
        apply(action, half, m, l, unit, b);
    }
}

// B(m, n) = op(A) * B or its solution, or with op(A) on the right; `lower` is the triangle of op(A).
template <class T>
void apply_oriented(Action action, bool left, bool lower, bool unit, int64_t m, int64_t n, Factor<T> a,
                    View<T> b)
{
    if (!left) {
        std::swap(m, n);
        a = a.transposed();
        b = b.transposed();
        lower = !lower;
    }
    if (!lower) {
        a = a.rows_reversed(m).columns_reversed(m);
        b = b.rows_reversed(m);
    }
    apply<T>(action, m, n, a, unit, b);
}

template <class T, Action action>
void triangular_matrix(const char* side, const char* uplo, const char* transa, const char* diag,
                       const int32_t* m, const int32_t* n, const T* alpha, const T* a, const int32_t* lda,
                       T* b, const int32_t* ldb)
{
    constexpr Checks check = checks_of<T>(action == Action::solve ? "TRSM" : "TRMM");
    if (check.m(1, *m) || check.n(2, *n) || check.ldb_of_m(3, *ldb, *m) ||
        check.lda_of_left(4, side, *lda, *m) || check.lda_of_right(5, side, *lda, *n) ||
        check.side(6, side) || check.uplo(7, uplo) || check.transa(8, transa) || check.diag(9, diag))
        return;

    if (*m == 0 || *n == 0) return;
    scale<T>(*m, *n, *alpha, by_columns(b, *ldb));
    if (*alpha == T(0)) return;
    const bool left = is_letter(side, 'L'), lower = is_letter(uplo, 'L') == is_letter(transa, 'N');
    apply_oriented<T>(action, left, lower, is_letter(diag, 'U'), *m, *n, operand(a, *lda, transa),
                      by_columns(b, *ldb));
}

using enum Action;

}  // namespace

template <class T>
void multiply_by_triangle(int64_t m, int64_t n, bool lower, const T* a, int64_t lda, T* b, int64_t ldb)
{
    apply_oriented<T>(Action::multiply, true, lower, false, m, n, {{a, 1, lda}}, {b, 1, ldb});
}

template <class T>
void divide_by_triangle(int64_t m, int64_t n, TriangleKind kind, const T* a, int64_t lda, T* b, int64_t ldb)
{
    apply_oriented<T>(Action::solve, false, kind.lower, kind.unit, m, n, {{a, 1, lda}}, {b, 1, ldb});
}

template <class T>
void solve_with_triangle(int64_t m, int64_t n, TriangleKind kind, const T* a, int64_t lda, T* b, int64_t ldb)
{
    apply_oriented<T>(Action::solve, true, kind.lower, kind.unit, m, n, {{a, 1, lda}}, {b, 1, ldb});
}

template void solve_with_triangle(int64_t, int64_t, TriangleKind, const float*, int64_t, float*, int64_t);
template void solve_with_triangle(int64_t, int64_t, TriangleKind, const double*, int64_t, double*, int64_t);
template void solve_with_triangle(int64_t, int64_t, TriangleKind, const orvel_complex*, int64_t,
                                  orvel_complex*, int64_t);
template void solve_with_triangle(int64_t, int64_t, TriangleKind, const orvel_dcomplex*, int64_t,
                                  orvel_dcomplex*, int64_t);

template <class T>
void divide_by_turned_triangle(int64_t m, int64_t n, const T* a, int64_t lda, T* b, int64_t ldb)
{
    apply_oriented<T>(Action::solve, true, true, false, m, n, Factor<T>{{a, 1, lda}}.adjoint(), {b, 1, ldb});
}

template <class T>
void multiply_by_turned_triangle(int64_t m, int64_t n, const T* a, int64_t lda, T* b, int64_t ldb)
{
    apply_oriented<T>(Action::multiply, false, true, false, m, n, Factor<T>{{a, 1, lda}}.adjoint(),
                      {b, 1, ldb});
}

template void multiply_by_triangle(int64_t, int64_t, bool, const float*, int64_t, float*, int64_t);
template void multiply_by_triangle(int64_t, int64_t, bool, const double*, int64_t, double*, int64_t);
template void multiply_by_triangle(int64_t, int64_t, bool, const orvel_complex*, int64_t, orvel_complex*,
                                   int64_t);
template void multiply_by_triangle(int64_t, int64_t, bool, const orvel_dcomplex*, int64_t, orvel_dcomplex*,
                                   int64_t);
template void divide_by_triangle(int64_t, int64_t, TriangleKind, const float*, int64_t, float*, int64_t);
template void divide_by_triangle(int64_t, int64_t, TriangleKind, const double*, int64_t, double*, int64_t);
template void divide_by_triangle(int64_t, int64_t, TriangleKind, const orvel_complex*, int64_t,
                                 orvel_complex*, int64_t);
template void divide_by_triangle(int64_t, int64_t, TriangleKind, const orvel_dcomplex*, int64_t,
                                 orvel_dcomplex*, int64_t);

template void divide_by_turned_triangle(int64_t, int64_t, const float*, int64_t, float*, int64_t);
template void multiply_by_turned_triangle(int64_t, int64_t, const float*, int64_t, float*, int64_t);
template void divide_by_turned_triangle(int64_t, int64_t, const double*, int64_t, double*, int64_t);
template void multiply_by_turned_triangle(int64_t, int64_t, const double*, int64_t, double*, int64_t);
template void divide_by_turned_triangle(int64_t, int64_t, const orvel_complex*, int64_t, orvel_complex*,
                                        int64_t);
template void multiply_by_turned_triangle(int64_t, int64_t, const orvel_complex*, int64_t, orvel_complex*,
                                          int64_t);
template void divide_by_turned_triangle(int64_t, int64_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*,
                                        int64_t);
template void multiply_by_turned_triangle(int64_t, int64_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*,
                                          int64_t);

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(STRMM, DTRMM, CTRMM, ZTRMM, 11, orvel::kernels::triangular_matrix,
                       orvel::kernels::multiply);
ORVEL_EXPORT_UPPER_ALL(STRSM, DTRSM, CTRSM, ZTRSM, 11, orvel::kernels::triangular_matrix,
                       orvel::kernels::solve);
