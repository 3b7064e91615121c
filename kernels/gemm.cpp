// kernels/gemm.cpp - GEMM: C = alpha * op(A) * op(B) + beta * C
#include "frame/export.h"
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
    const auto bad = [](int32_t code, std::string_view text,
                        std::initializer_list<frame::Parameter> parameters) {
        complain<T>("GEMM", code, text, parameters);
    };
    if (*m < 0) return bad(1, "M must be greater than or equal to zero while %(I1) is given.", {i(1, *m)});
    if (*n < 0) return bad(2, "N must be greater than or equal to zero while %(I1) is given.", {i(1, *n)});
    if (*k < 0) return bad(3, "K must be greater than or equal to zero while %(I1) is given.", {i(1, *k)});
    if (*ldc < *m || *ldc <= 0)
        return bad(
            4,
            "LDC must be greater than or equal to M and greater than zero while LDC = %(I1) and M = %(I2) are given.",
            {i(1, *ldc), i(2, *m)});
    if (plain_a && (*lda < *m || *lda <= 0))
        return bad(
            5,
            "LDA must be greater than or equal to M and greater than zero when TRANSA = N, but LDA = %(I1) and M = %(I2) are given.",
            {i(1, *lda), i(2, *m)});
    if (turned_a && (*lda < *k || *lda <= 0))
        return bad(
            6,
            "LDA must be greater than or equal to K and greater than zero when TRANSA = T or C, but LDA = %(I1) and K = %(I2) are given.",
            {i(1, *lda), i(2, *k)});
    if (!plain_a && !turned_a)
        return bad(7, "TRANSA must be set equal to N or T or C while %(L1) is given.", {l(1, {transa, 1})});
    if (plain_b && (*ldb < *k || *ldb <= 0))
        return bad(
            8,
            "LDB must be greater than or equal to K and greater than zero when TRANSB = N, but LDB = %(I1) and K = %(I2) are given.",
            {i(1, *ldb), i(2, *k)});
    if (turned_b && (*ldb < *n || *ldb <= 0))
        return bad(
            9,
            "LDB must be greater than or equal to N and greater than zero when TRANSB = T or C, but LDB = %(I1) and N = %(I2) are given.",
            {i(1, *ldb), i(2, *n)});
    if (!plain_b && !turned_b)
        return bad(10, "TRANSB must be set equal to N or T or C while %(L1) is given.", {l(1, {transb, 1})});

    if (*m == 0 || *n == 0 || ((*alpha == T(0) || *k == 0) && *beta == T(1))) return;
    const View<T> target = by_columns(c, *ldc);
    const bool multiplies = *k > 0 && *alpha != T(0), from_zero = multiplies && *beta == T(0);
    if (!from_zero) scale<T>(*m, *n, *beta, target);
    if (!multiplies) return;
    if (!plain_a || *alpha != T(1) ||
        !add_small_product<T>(*m, *n, *k, a, *lda, b, plain_b ? 1 : *ldb, plain_b ? *ldb : 1,
                              is_letter(transb, 'C'), c, *ldc, from_zero))
        add_product<T>(*m, *n, *k, *alpha, operand(a, *lda, transa), operand(b, *ldb, transb), target,
                       {from_zero});
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER(SGEMM, 13, orvel::kernels::gemm<float>);
ORVEL_EXPORT_UPPER(DGEMM, 13, orvel::kernels::gemm<double>);
ORVEL_EXPORT_UPPER(CGEMM, 13, orvel::kernels::gemm<orvel_complex>);
ORVEL_EXPORT_UPPER(ZGEMM, 13, orvel::kernels::gemm<orvel_dcomplex>);
