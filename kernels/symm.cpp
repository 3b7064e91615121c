// kernels/symm.cpp - SYMM and HEMM: products with a symmetric or Hermitian matrix of which one triangle is
// stored
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
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

// The full matrix is formed block by block, a slab of the inner index at a time; on the stack where memory is
// short.
template <class T>
void multiply(bool left, int64_t m, int64_t n, T alpha, const Symmetric<T>& a, Factor<T> b, View<T> c)
{
    constexpr int64_t small = 32;
    OnStack<T, small * small> on_stack;
    Scratch<T> on_heap;
    const int64_t order = left ? m : n;
    int64_t depth = std::min<int64_t>(order, 256), span = order;
    T* block = on_stack;
    if (order > small) {
        if (on_heap.allocate(span, depth))
            block = on_heap;
        else
            span = depth = small;
    }
    for (int64_t q = 0; q < order; q += depth)
        for (int64_t r = 0; r < order; r += span) {
            const int64_t inner = std::min(depth, order - q), outer = std::min(span, order - r);
            if (left) {
                expand(a, r, q, outer, inner, block);
                add_product<T>(outer, n, inner, alpha, {{block, 1, outer}}, b.from(q, 0), c.from(r, 0));
            } else {
                expand(a, q, r, inner, outer, block);
                add_product<T>(m, outer, inner, alpha, b.from(0, q), {{block, 1, inner}}, c.from(0, r));
            }
        }
}

template <class T, bool Hermitian>
void symm(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const T* alpha, const T* a,
          const int32_t* lda, const T* b, const int32_t* ldb, const T* beta, T* c, const int32_t* ldc)
{
    constexpr std::string_view kernel = Hermitian ? "HEMM" : "SYMM";
    const auto bad = [](int32_t code, std::string_view text,
                        std::initializer_list<frame::Parameter> parameters) {
        complain<T>(kernel, code, text, parameters);
    };
    if (*m < 0) return bad(1, "M must be greater than or equal to zero while %(I1) is given.", {i(1, *m)});
    if (*n < 0) return bad(2, "N must be greater than or equal to zero while %(I1) is given.", {i(1, *n)});
    if (*ldc < *m || *ldc <= 0)
        return bad(
            3,
            "LDC must be greater than or equal to M and greater than zero while LDC = %(I1) and M = %(I2) are given.",
            {i(1, *ldc), i(2, *m)});
    if (complain_of_side(precision_letter<T>, kernel, side, *m, *n, *lda)) return;
    if (*ldb < *m || *ldb <= 0)
        return bad(
            7,
            "LDB must be greater than or equal to M and greater than zero while LDB = %(I1) and M = %(I2) are given.",
            {i(1, *ldb), i(2, *m)});
    if (!is_one_of(uplo, "UL"))
        return bad(8, "UPLO must be set equal to U or L while %(L1) is given.", {l(1, {uplo, 1})});

    if (*m == 0 || *n == 0) return;
    const View<T> target = by_columns(c, *ldc);
    scale<T>(*m, *n, *beta, target);
    if (*alpha == T(0)) return;
    const Symmetric<T> matrix{by_columns(a, *lda), is_letter(uplo, 'L'), Hermitian};
    multiply<T>(is_letter(side, 'L'), *m, *n, *alpha, matrix, {by_columns(b, *ldb)}, target);
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER(SSYMM, 12, (orvel::kernels::symm<float, false>));
ORVEL_EXPORT_UPPER(DSYMM, 12, (orvel::kernels::symm<double, false>));
ORVEL_EXPORT_UPPER(CSYMM, 12, (orvel::kernels::symm<orvel_complex, false>));
ORVEL_EXPORT_UPPER(ZSYMM, 12, (orvel::kernels::symm<orvel_dcomplex, false>));
ORVEL_EXPORT_UPPER(CHEMM, 12, (orvel::kernels::symm<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZHEMM, 12, (orvel::kernels::symm<orvel_dcomplex, true>));
