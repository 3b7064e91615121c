// kernels/symm.cpp - SYMM and HEMM: products with a symmetric or Hermitian matrix of which one triangle is
// stored
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/checks.h"
#include "kernels/product.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

template <class T>
struct Symmetric {
    View<const T> stored;
    bool lower, hermitian;
};

// to(rows, columns) = the block of the full matrix that begins at (row, column).
template <class T>
void expand(const Symmetric<T>& a, int64_t row, int64_t column, int64_t rows, int64_t columns, T* to)
{
    for (int64_t j = 0; j < columns; ++j, to += rows) {
        const int64_t c = column + j, diagonal = std::clamp<int64_t>(c - row, 0, rows);
        const auto copy = [&](int64_t first, int64_t last) {
            std::copy(&a.stored(row + first, c), &a.stored(row + last, c), to + first);
        };
        const auto mirror = [&](int64_t first, int64_t last) {
            for (int64_t r = first; r < last; ++r)
                to[r] = a.hermitian ? conjugate(a.stored(c, row + r)) : a.stored(c, row + r);
        };
        if (a.lower) {
            mirror(0, diagonal);
            copy(diagonal, rows);
        } else {
            copy(0, diagonal);
            mirror(diagonal, rows);
        }
        if (a.hermitian && diagonal < rows && c >= row) to[diagonal] = std::real(to[diagonal]);
    }
}

// Small matrices are formed in full, large ones in the panels of their product; any on the stack, block by
// block, where memory is short.
template <class T>
void multiply(bool left, int64_t m, int64_t n, T alpha, const Symmetric<T>& a, Factor<T> b, View<T> c,
              bool from_zero)
{
    constexpr int64_t small = 32, medium = 96;
    const int64_t order = left ? m : n;
    if (order > medium &&
        add_symmetric_product<T>(m, n, alpha, {left, a.lower ? 'L' : 'U', a.hermitian},
                                 left ? a.stored : b.view, left ? b.view : a.stored, c, from_zero))
        return;
    OnStack<T, small * small> on_stack;
    Scratch<T> on_heap;
    const bool in_full = order > small && order <= medium && on_heap.allocate(order, order);
    T* const block = in_full ? on_heap : on_stack;
    const int64_t size = in_full ? order : small;
    for (int64_t q = 0; q < order; q += size)
        for (int64_t r = 0; r < order; r += size) {
            const int64_t inner = std::min(size, order - q), outer = std::min(size, order - r);
            const Target target{from_zero && q == 0};
            if (left) {
                expand<T>(a, r, q, outer, inner, block);
                add_product<T>(outer, n, inner, alpha, {{block, 1, outer}}, b.from(q, 0), c.from(r, 0),
                               target);
            } else {
                expand<T>(a, q, r, inner, outer, block);
                add_product<T>(m, outer, inner, alpha, b.from(0, q), {{block, 1, inner}}, c.from(0, r),
                               target);
            }
        }
}

template <class T, bool Hermitian>
void symm(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const T* alpha, const T* a,
          const int32_t* lda, const T* b, const int32_t* ldb, const T* beta, T* c, const int32_t* ldc)
{
    constexpr Checks check = checks_of<T>(Hermitian ? "HEMM" : "SYMM");
    if (check.m(1, *m) || check.n(2, *n) || check.ldc_of_m(3, *ldc, *m) ||
        check.lda_of_left(4, side, *lda, *m) || check.lda_of_right(5, side, *lda, *n) ||
        check.side(6, side) || check.ldb_of_m(7, *ldb, *m) || check.uplo(8, uplo))
        return;

    if (*m == 0 || *n == 0) return;
    const View<T> target = by_columns(c, *ldc);
    const bool from_zero = *alpha != T(0) && *beta == T(0);
    if (!from_zero) scale<T>(*m, *n, *beta, target);
    if (*alpha == T(0)) return;
    const Symmetric<T> matrix{by_columns(a, *lda), is_letter(uplo, 'L'), Hermitian};
    multiply<T>(is_letter(side, 'L'), *m, *n, *alpha, matrix, {by_columns(b, *ldb)}, target, from_zero);
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(SSYMM, DSYMM, CSYMM, ZSYMM, 12, orvel::kernels::symm, false);
ORVEL_EXPORT_UPPER(CHEMM, 12, (orvel::kernels::symm<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZHEMM, 12, (orvel::kernels::symm<orvel_dcomplex, true>));
