// kernels/gemv.cpp - GEMV: y = alpha * op(A) * x + beta * y
#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/columns.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

constexpr int64_t piece = 256;  // of a vector, copied to the stack

template <class T>
void add_product_with(int64_t m, int64_t n, T alpha, const T* a, int64_t lda, const T* x, int64_t incx, T* y,
                      int64_t incy)
{
    x = start(x, n, incx);
    y = start(y, m, incy);
    const int64_t span = incy == 1 ? m : piece;
    OnStack<T, piece> scaled;
    for (int64_t j = 0; j < n; j += piece) {
        const int64_t columns = std::min(piece, n - j);
        for (int64_t k = 0; k < columns; ++k) scaled[k] = alpha * x[(j + k) * incx];
        for (int64_t r = 0; r < m; r += span) {
            const int64_t rows = std::min(span, m - r);
            Piece<T, piece> to(y + r * incy, rows, incy);
            add_columns(rows, columns, a + r + j * lda, lda, false, scaled, to);
        }
    }
}

template <class T>
void add_transposed_product_with(int64_t m, int64_t n, T alpha, const T* a, int64_t lda, bool conjugated,
                                 const T* x, int64_t incx, T* y, int64_t incy)
{
    x = start(x, m, incx);
    y = start(y, n, incy);
    const int64_t span = incx == 1 ? m : piece;
    OnStack<T, piece> sums, more;
    for (int64_t j = 0; j < n; j += piece) {
        const int64_t columns = std::min(piece, n - j);
        std::fill_n(static_cast<T*>(sums), columns, T(0));
        for (int64_t r = 0; r < m; r += span) {
            const int64_t rows = std::min(span, m - r);
            Piece<const T, piece> from(x + r * incx, rows, incx);
            dot_columns(rows, columns, a + r + j * lda, lda, conjugated, from, more);
            for (int64_t k = 0; k < columns; ++k) sums[k] += more[k];
        }
        for (int64_t k = 0; k < columns; ++k) y[(j + k) * incy] += alpha * sums[k];
    }
}

template <class T>
void gemv(const char* trans, const int32_t* m, const int32_t* n, const T* alpha, const T* a,
          const int32_t* lda, const T* x, const int32_t* incx, const T* beta, T* y, const int32_t* incy)
{
    constexpr Checks check = checks_of<T>("GEMV");
    if (check.m(1, *m) || check.n(2, *n) || check.lda_of_m(3, *lda, *m) || check.trans(4, trans) ||
        check.incx(5, *incx) || check.incy(6, *incy))
        return;

    if (*m == 0 || *n == 0) return;
    const bool plain = is_letter(trans, 'N');
    scale_vector<T>(plain ? *m : *n, *beta, y, *incy);
    if (*alpha == T(0)) return;
    if (plain)
        add_product_with<T>(*m, *n, *alpha, a, *lda, x, *incx, y, *incy);
    else
        add_transposed_product_with<T>(*m, *n, *alpha, a, *lda, is_letter(trans, 'C'), x, *incx, y, *incy);
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(SGEMV, DGEMV, CGEMV, ZGEMV, 11, orvel::kernels::gemv);
