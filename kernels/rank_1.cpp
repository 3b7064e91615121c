// kernels/rank_1.cpp - GER, GERU, GERC, SYR, HER, SYR2, HER2: updates by products of two vectors
#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/columns.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

// Column j of A gets x times alpha * y(j), rows first to last.
template <class T>
void add_column(int64_t first, int64_t last, T factor, const T* x, int64_t incx, T* column)
{
    constexpr int64_t piece = 256;
    const int64_t span = incx == 1 ? last - first : piece;
    for (int64_t r = first; r < last; r += span) {
        const int64_t rows = std::min(span, last - r);
        Piece<const T, piece> from(x + r * incx, rows, incx);
        add_columns<T>(rows, 1, from, 1, false, &factor, column + r);
    }
}

// A += alpha * x * y^T, with x contiguous: a piece of columns at a time.
template <class R>
void add_columns_of(int64_t m, int64_t n, R alpha, const R* x, const R* y, int64_t incy, R* a, int64_t lda)
{
    constexpr int64_t piece = 64;
    R factors[piece];
    for (int64_t j = 0; j < n; j += piece) {
        const int64_t columns = std::min(piece, n - j);
        for (int64_t k = 0; k < columns; ++k) factors[k] = alpha * y[(j + k) * incy];
        isa::of_type<R>(level2_loops()).add_rank_1(m, columns, x, factors, a + j * lda, lda);
    }
}

template <class T, bool Conjugated>
void ger(const int32_t* m, const int32_t* n, const T* alpha, const T* x, const int32_t* incx, const T* y,
         const int32_t* incy, T* a, const int32_t* lda)
{
    constexpr Checks check = checks_of<T>(!is_complex<T> ? "GER" : Conjugated ? "GERC" : "GERU");
    if (check.m(1, *m) || check.n(2, *n) || check.lda_of_m(3, *lda, *m) || check.incx(4, *incx) ||
        check.incy(5, *incy))
        return;

    if (*m == 0 || *n == 0 || *alpha == T(0)) return;
    const T* first_x = start(x, *m, *incx);
    const T* first_y = start(y, *n, *incy);
    if constexpr (!is_complex<T>)
        if (*incx == 1) return add_columns_of(*m, *n, *alpha, first_x, first_y, *incy, a, *lda);
    for (int64_t j = 0; j < *n; ++j) {
        const T element = first_y[j * *incy];
        add_column<T>(0, *m, *alpha * (Conjugated ? conjugate(element) : element), first_x, *incx,
                      a + j * *lda);
    }
}

// SYR and, with a real alpha and a real diagonal, HER.
template <class T, bool Hermitian, class S>
void syr(const char* uplo, const int32_t* n, const S* alpha, const T* x, const int32_t* incx, T* a,
         const int32_t* lda)
{
    constexpr Checks check = checks_of<T>(Hermitian ? "HER" : "SYR");
    if (check.n(1, *n) || check.lda_of_n(2, *lda, *n) || check.uplo(3, uplo) || check.incx(4, *incx)) return;

    if (*n == 0 || *alpha == S(0)) return;
    const bool lower = is_letter(uplo, 'L');
    x = start(x, *n, *incx);
    for (int64_t j = 0; j < *n; ++j) {
        T* column = a + j * *lda;
        const T element = x[j * *incx];
        add_column<T>(lower ? j : 0, lower ? *n : j + 1,
                      T(*alpha) * (Hermitian ? conjugate(element) : element), x, *incx, column);
        if (Hermitian) column[j] = T(std::real(column[j]));
    }
}

// SYR2 and, with a real diagonal, HER2.
template <class T, bool Hermitian>
void syr2(const char* uplo, const int32_t* n, const T* alpha, const T* x, const int32_t* incx, const T* y,
          const int32_t* incy, T* a, const int32_t* lda)
{
    constexpr Checks check = checks_of<T>(Hermitian ? "HER2" : "SYR2");
    if (check.n(1, *n) || check.lda_of_n(2, *lda, *n) || check.uplo(3, uplo) || check.incx(4, *incx) ||
        check.incy(5, *incy))
        return;

    if (*n == 0 || *alpha == T(0)) return;
    const bool lower = is_letter(uplo, 'L');
    const T turned_alpha = Hermitian ? conjugate(*alpha) : *alpha;
    x = start(x, *n, *incx);
    y = start(y, *n, *incy);
    for (int64_t j = 0; j < *n; ++j) {
        T* column = a + j * *lda;
        const T yj = y[j * *incy], xj = x[j * *incx];
        const int64_t first = lower ? j : 0, last = lower ? *n : j + 1;
        add_column<T>(first, last, *alpha * (Hermitian ? conjugate(yj) : yj), x, *incx, column);
        add_column<T>(first, last, turned_alpha * (Hermitian ? conjugate(xj) : xj), y, *incy, column);
        if (Hermitian) column[j] = T(std::real(column[j]));
    }
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(SGER, DGER, CGERU, ZGERU, 9, orvel::kernels::ger, false);
ORVEL_EXPORT_UPPER(CGERC, 9, (orvel::kernels::ger<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZGERC, 9, (orvel::kernels::ger<orvel_dcomplex, true>));
ORVEL_EXPORT_UPPER(SSYR, 7, (orvel::kernels::syr<float, false, float>));
ORVEL_EXPORT_UPPER(DSYR, 7, (orvel::kernels::syr<double, false, double>));
ORVEL_EXPORT_UPPER(CHER, 7, (orvel::kernels::syr<orvel_complex, true, float>));
ORVEL_EXPORT_UPPER(ZHER, 7, (orvel::kernels::syr<orvel_dcomplex, true, double>));
ORVEL_EXPORT_UPPER_REALS(SSYR2, DSYR2, 9, orvel::kernels::syr2, false);
ORVEL_EXPORT_UPPER(CHER2, 9, (orvel::kernels::syr2<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZHER2, 9, (orvel::kernels::syr2<orvel_dcomplex, true>));
