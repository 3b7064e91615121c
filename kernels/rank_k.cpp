// kernels/rank_k.cpp - SYRK, HERK, SYR2K, HER2K: updates of one triangle by products with a transpose
#include <algorithm>

#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/product.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

template <class T>
void clear_imaginary_diagonal(int64_t n, View<T> c)
{
    for (int64_t j = 0; j < n; ++j) c(j, j) = T(std::real(c(j, j)));
}

// The checks that all four kernels share; `turned` are the letters that transpose.
bool arguments_are_bad(const Checks& check, const char* uplo, const char* trans, std::string_view turned,
                       int32_t n, int32_t k, int32_t lda, const int32_t* ldb, int32_t ldc)
{
    const bool plain = is_letter(trans, 'N'), transposed = is_one_of(trans, turned);
    if (check.n(1, n) || check.k(2, k) || check.ldc_of_n(3, ldc, n)) return true;
    if (plain && (lda < n || lda <= 0))
        return check.post(
            4,
            "LDA must be greater than or equal to N and greater than zero when TRANS = N, but LDA = %(I1) and N = %(I2) are given.",
            {i(1, lda), i(2, n)});
    if (transposed && (lda < k || lda <= 0))
        return check.post(
            5,
            "LDA must be greater than or equal to K and greater than zero when TRANS = T or C, but LDA = %(I1) and K = %(I2) are given.",
            {i(1, lda), i(2, k)});
    if (turned == "TC" && check.trans(6, trans)) return true;
    if (!plain && !transposed)
        return turned == "T" ? check.post(6, "TRANS must be set equal to N or T while %(L1) is given.",
                                          {l(1, {trans, 1})})
                             : check.post(6, "TRANS must be set equal to N or C while %(L1) is given.",
                                          {l(1, {trans, 1})});
    if (ldb != nullptr && plain && (*ldb < n || *ldb <= 0))
        return check.post(
            7,
            "LDB must be greater than or equal to N and greater than zero when TRANS = N, but LDB = %(I1) and N = %(I2) are given.",
            {i(1, *ldb), i(2, n)});
    if (ldb != nullptr && transposed && (*ldb < k || *ldb <= 0))
        return check.post(
            8,
            "LDB must be greater than or equal to K and greater than zero when TRANS = T or C, but LDB = %(I1) and K = %(I2) are given.",
            {i(1, *ldb), i(2, k)});
    return check.uplo(ldb == nullptr ? 7 : 9, uplo);
}

// The letters that transpose in a kernel of type T.
template <class T, bool Hermitian>
constexpr std::string_view turning_letters = Hermitian       ? "C"
                                             : is_complex<T> ? "T"
                                                             : "TC";

// SYRK and, with a real alpha and beta, HERK.
template <class T, bool Hermitian, class S>
void syrk(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const S* alpha, const T* a,
          const int32_t* lda, const S* beta, T* c, const int32_t* ldc)
{
    if (arguments_are_bad(checks_of<T>(Hermitian ? "HERK" : "SYRK"), uplo, trans,
                          turning_letters<T, Hermitian>, *n, *k, *lda, nullptr, *ldc))
        return;
    if (*n == 0 || ((*alpha == S(0) || *k == 0) && *beta == S(1))) return;
    const View<T> target = by_columns(c, *ldc);
    const bool multiplies = *k > 0 && *alpha != S(0), from_zero = multiplies && *beta == S(0);
    if (!from_zero) {
        if (Hermitian) clear_imaginary_diagonal(*n, target);
        scale<T>(*n, *n, *beta, target, upper(*uplo));
    }
    if (!multiplies) return;
    const Factor<T> first = operand(a, *lda, trans);
    const Factor<T> second = Hermitian ? first.adjoint() : first.transposed();
    add_product<T>(*n, *n, *k, T(*alpha), first, second, target, {from_zero, upper(*uplo)});
    if (Hermitian) clear_imaginary_diagonal(*n, target);
}

// SYR2K and, with a real beta, HER2K: all products with op(A) on the left come first, then those with op(B).
template <class T, bool Hermitian, class S>
void syr2k(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const T* alpha,
           const T* a, const int32_t* lda, const T* b, const int32_t* ldb, const S* beta, T* c,
           const int32_t* ldc)
{
    if (arguments_are_bad(checks_of<T>(Hermitian ? "HER2K" : "SYR2K"), uplo, trans,
                          turning_letters<T, Hermitian>, *n, *k, *lda, ldb, *ldc))
        return;
    if (*n == 0 || ((*alpha == T(0) || *k == 0) && *beta == S(1))) return;
    const View<T> target = by_columns(c, *ldc);
    const bool multiplies = *k > 0 && *alpha != T(0), from_zero = multiplies && *beta == S(0);
    if (!from_zero) {
        if (Hermitian) clear_imaginary_diagonal(*n, target);
        scale<T>(*n, *n, *beta, target, upper(*uplo));
    }
    if (!multiplies) return;
    const char triangle = upper(*uplo);
    const Factor<T> first = operand(a, *lda, trans), second = operand(b, *ldb, trans);
    const T turned_alpha = Hermitian ? conjugate(*alpha) : *alpha;
    const auto turned = [](const Factor<T>& x) { return Hermitian ? x.adjoint() : x.transposed(); };
    add_product<T>(*n, *n, *k, *alpha, first, turned(second), target, {from_zero, triangle});
    add_product<T>(*n, *n, *k, turned_alpha, second, turned(first), target, {false, triangle});
    if (Hermitian) clear_imaginary_diagonal(*n, target);
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER(SSYRK, 10, (orvel::kernels::syrk<float, false, float>));
ORVEL_EXPORT_UPPER(DSYRK, 10, (orvel::kernels::syrk<double, false, double>));
ORVEL_EXPORT_UPPER(CSYRK, 10, (orvel::kernels::syrk<orvel_complex, false, orvel_complex>));
ORVEL_EXPORT_UPPER(ZSYRK, 10, (orvel::kernels::syrk<orvel_dcomplex, false, orvel_dcomplex>));
ORVEL_EXPORT_UPPER(CHERK, 10, (orvel::kernels::syrk<orvel_complex, true, float>));
ORVEL_EXPORT_UPPER(ZHERK, 10, (orvel::kernels::syrk<orvel_dcomplex, true, double>));
ORVEL_EXPORT_UPPER(SSYR2K, 12, (orvel::kernels::syr2k<float, false, float>));
ORVEL_EXPORT_UPPER(DSYR2K, 12, (orvel::kernels::syr2k<double, false, double>));
ORVEL_EXPORT_UPPER(CSYR2K, 12, (orvel::kernels::syr2k<orvel_complex, false, orvel_complex>));
ORVEL_EXPORT_UPPER(ZSYR2K, 12, (orvel::kernels::syr2k<orvel_dcomplex, false, orvel_dcomplex>));
ORVEL_EXPORT_UPPER(CHER2K, 12, (orvel::kernels::syr2k<orvel_complex, true, float>));
ORVEL_EXPORT_UPPER(ZHER2K, 12, (orvel::kernels::syr2k<orvel_dcomplex, true, double>));
