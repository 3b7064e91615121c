// kernels/gemm.cpp - GEMM: C = alpha * op(A) * op(B) + beta * C
#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/product.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

template <class T>
void gemm(const char* transa, const char* transb, const int32_t* m, const int32_t* n, const int32_t* k,
          const T* alpha, const T* a, const int32_t* lda, const T* b, const int32_t* ldb, const T* beta, T* c,
          const int32_t* ldc)
{
    const bool plain_a = is_letter(transa, 'N'), plain_b = is_letter(transb, 'N');
    const bool turned_a = is_one_of(transa, "TC"), turned_b = is_one_of(transb, "TC");
    constexpr Checks check = checks_of<T>("GEMM");
    if (check.m(1, *m) || check.n(2, *n) || check.k(3, *k) || check.ldc_of_m(4, *ldc, *m)) return;
    if (plain_a && (*lda < *m || *lda <= 0)) {
        check.post(
            5,
            "LDA must be greater than or equal to M and greater than zero when TRANSA = N, but LDA = %(I1) and M = %(I2) are given.",
            {i(1, *lda), i(2, *m)});
        return;
    }
    if (turned_a && (*lda < *k || *lda <= 0)) {
        check.post(
            6,
            "LDA must be greater than or equal to K and greater than zero when TRANSA = T or C, but LDA = %(I1) and K = %(I2) are given.",
            {i(1, *lda), i(2, *k)});
        return;
    }
    if (check.transa(7, transa)) return;
    if (plain_b && (*ldb < *k || *ldb <= 0)) {
        check.post(
            8,
            "LDB must be greater than or equal to K and greater than zero when TRANSB = N, but LDB = %(I1) and K = %(I2) are given.",
            {i(1, *ldb), i(2, *k)});
        return;
    }
    if (turned_b && (*ldb < *n || *ldb <= 0)) {
        check.post(
            9,
            "LDB must be greater than or equal to N and greater than zero when TRANSB = T or C, but LDB = %(I1) and N = %(I2) are given.",
            {i(1, *ldb), i(2, *n)});
        return;
    }
    if (check.transb(10, transb)) return;

    if (*m == 0 || *n == 0 || ((*alpha == T(0) || *k == 0) && *beta == T(1))) return;
    const View<T> target = by_columns(c, *ldc);
    const bool multiplies = *k > 0 && *alpha != T(0), from_zero = multiplies && *beta == T(0);
    if (!from_zero) scale<T>(*m, *n, *beta, target);
    if (!multiplies) return;
    if (*alpha != T(1) ||
        !add_small_product<T>(*m, *n, *k, a, plain_a ? 1 : *lda, plain_a ? *lda : 1, b, plain_b ? 1 : *ldb,
                              plain_b ? *ldb : 1, is_letter(transb, 'C'), c, *ldc, from_zero))
        add_product<T>(*m, *n, *k, *alpha, operand(a, *lda, transa), operand(b, *ldb, transb), target,
                       {from_zero});
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(SGEMM, DGEMM, CGEMM, ZGEMM, 13, orvel::kernels::gemm);
