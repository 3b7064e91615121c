// kernels/rank_1.cpp - GER, GERU, GERC, SYR, HER, SYR2, HER2: updates by products of two vectors
#include "frame/export.h"
#include "kernels/level2.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

// Column j of A gets x times alpha * y(j), rows first to last.
template <class T>
void add_column(int64_t first, int64_t last, T factor, const T* x, int64_t incx, T* column)
{
    constexpr int64_t piece = 256;
    OnStack<T, piece> part;
    if (incx == 1 && last > first)
        return add_columns(last - first, 1, x + first, 1, false, &factor, column + first);
    for (int64_t r = first; r < last; r += piece) {
        const int64_t rows = std::min(piece, last - r);
        for (int64_t k = 0; k < rows; ++k) part[k] = x[(r + k) * incx];
        add_columns<T>(rows, 1, part, 1, false, &factor, column + r);
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
    const auto bad = [](int32_t code, std::string_view text,
                        std::initializer_list<frame::Parameter> parameters) {
        complain<T>(!is_complex<T> ? "GER" : Conjugated ? "GERC" : "GERU", code, text, parameters);
    };
    if (*m < 0) return bad(1, "M must be greater than or equal to zero while %(I1) is given.", {i(1, *m)});
    if (*n < 0) return bad(2, "N must be greater than or equal to zero while %(I1) is given.", {i(1, *n)});
    if (*lda < *m || *lda <= 0)
        return bad(
            3,
            "LDA must be greater than or equal to M and greater than zero while LDA = %(I1) and M = %(I2) are given.",
            {i(1, *lda), i(2, *m)});
    if (*incx == 0) return bad(4, "INCX must not be equal to zero while %(I1) is given.", {i(1, *incx)});
    if (*incy == 0) return bad(5, "INCY must not be equal to zero while %(I1) is given.", {i(1, *incy)});

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
    const auto bad = [](int32_t code, std::string_view text,
                        std::initializer_list<frame::Parameter> parameters) {
        complain<T>(Hermitian ? "HER" : "SYR", code, text, parameters);
    };
    if (*n < 0) return bad(1, "N must be greater than or equal to zero while %(I1) is given.", {i(1, *n)});
    if (*lda < *n || *lda <= 0)
        return bad(
            2,
            "LDA must be greater than or equal to N and greater than zero while LDA = %(I1) and N = %(I2) are given.",
            {i(1, *lda), i(2, *n)});
    if (!is_one_of(uplo, "UL"))
        return bad(3, "UPLO must be set equal to U or L while %(L1) is given.", {l(1, {uplo, 1})});
    if (*incx == 0) return bad(4, "INCX must not be equal to zero while %(I1) is given.", {i(1, *incx)});

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
    const auto bad = [](int32_t code, std::string_view text,
                        std::initializer_list<frame::Parameter> parameters) {
        complain<T>(Hermitian ? "HER2" : "SYR2", code, text, parameters);
    };
    if (*n < 0) return bad(1, "N must be greater than or equal to zero while %(I1) is given.", {i(1, *n)});
    if (*lda < *n || *lda <= 0)
        return bad(
            2,
            "LDA must be greater than or equal to N and greater than zero while LDA = %(I1) and N = %(I2) are given.",
            {i(1, *lda), i(2, *n)});
    if (!is_one_of(uplo, "UL"))
        return bad(3, "UPLO must be set equal to U or L while %(L1) is given.", {l(1, {uplo, 1})});
    if (*incx == 0) return bad(4, "INCX must not be equal to zero while %(I1) is given.", {i(1, *incx)});
    if (*incy == 0) return bad(5, "INCY must not be equal to zero while %(I1) is given.", {i(1, *incy)});

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

ORVEL_EXPORT_UPPER(SGER, 9, (orvel::kernels::ger<float, false>));
ORVEL_EXPORT_UPPER(DGER, 9, (orvel::kernels::ger<double, false>));
ORVEL_EXPORT_UPPER(CGERU, 9, (orvel::kernels::ger<orvel_complex, false>));
ORVEL_EXPORT_UPPER(ZGERU, 9, (orvel::kernels::ger<orvel_dcomplex, false>));
ORVEL_EXPORT_UPPER(CGERC, 9, (orvel::kernels::ger<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZGERC, 9, (orvel::kernels::ger<orvel_dcomplex, true>));
ORVEL_EXPORT_UPPER(SSYR, 7, (orvel::kernels::syr<float, false, float>));
ORVEL_EXPORT_UPPER(DSYR, 7, (orvel::kernels::syr<double, false, double>));
ORVEL_EXPORT_UPPER(CHER, 7, (orvel::kernels::syr<orvel_complex, true, float>));
ORVEL_EXPORT_UPPER(ZHER, 7, (orvel::kernels::syr<orvel_dcomplex, true, double>));
ORVEL_EXPORT_UPPER(SSYR2, 9, (orvel::kernels::syr2<float, false>));
ORVEL_EXPORT_UPPER(DSYR2, 9, (orvel::kernels::syr2<double, false>));
ORVEL_EXPORT_UPPER(CHER2, 9, (orvel::kernels::syr2<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZHER2, 9, (orvel::kernels::syr2<orvel_dcomplex, true>));
