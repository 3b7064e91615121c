// kernels/symv.cpp - SYMV and HEMV: y = alpha * A * x + beta * y with a symmetric or Hermitian matrix
#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/columns.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

// y += S * x for a square on the diagonal, of which one triangle is read.
template <class T, bool Hermitian>
void add_square(int64_t n, bool lower, const T* a, int64_t lda, const T* x, T* y)
{
    if constexpr (is_complex<T>) {
        for (int64_t c = 0; c < n; ++c)
            for (int64_t r = 0; r < n; ++r) {
                const bool here = lower ? r >= c : r <= c;
                const T stored = here ? a[r + c * lda] : a[c + r * lda];
                const T value = r == c ? T(std::real(stored)) : here ? stored : conjugate(stored);
                y[r] += value * x[c];
            }
    } else {
        isa::of_type<T>(level2_loops()).add_small_symmetric(n, lower, a, lda, x, y);
    }
}

// y(m) += A * x(n) and sums(n) = A^H * z(m), the real ones with one pass over A.
template <class T>
void both(int64_t m, int64_t n, const T* a, int64_t lda, const T* x, T* y, const T* z, T* sums)
{
    if constexpr (is_complex<T>) {
        add_columns(m, n, a, lda, false, x, y);
        dot_columns(m, n, a, lda, true, z, sums);
    } else {
        isa::of_type<T>(level2_loops()).both(m, n, a, lda, x, y, z, sums);
    }
}

// One strip of columns at a time: the square on the diagonal by itself; the rectangle beside it, in pieces
// that stay in the cache, serves y twice, by its columns and by its rows.
template <class T, bool Hermitian>
void add_symmetric(bool lower, int64_t n, T alpha, const T* a, int64_t lda, const T* x, int64_t incx, T* y,
                   int64_t incy)
{
    constexpr int64_t strip = small_square;
    x = start(x, n, incx);
    y = start(y, n, incy);
    OnStack<T, strip> scaled, sums, total;
    for (int64_t j = 0; j < n; j += strip) {
        const int64_t width = std::min(strip, n - j);
        for (int64_t k = 0; k < width; ++k) scaled[k] = alpha * x[(j + k) * incx];
        {
            Piece<T, strip> own(y + j * incy, width, incy);
            add_square<T, Hermitian>(width, lower, a + j + j * lda, lda, scaled, own);
        }
        const int64_t first = lower ? j + width : 0, last = lower ? n : j;
        std::fill_n(static_cast<T*>(total), width, T(0));
        for (int64_t r = first; r < last; r += longest_piece) {
            const int64_t rows = std::min(longest_piece, last - r);
            Piece<const T, longest_piece> from(x + r * incx, rows, incx);
            Piece<T, longest_piece> to(y + r * incy, rows, incy);
            both<T>(rows, width, a + r + j * lda, lda, scaled, to, from, sums);
            for (int64_t k = 0; k < width; ++k) total[k] += sums[k];
        }
        for (int64_t k = 0; k < width; ++k) y[(j + k) * incy] += alpha * total[k];
    }
}

template <class T, bool Hermitian>
void symv(const char* uplo, const int32_t* n, const T* alpha, const T* a, const int32_t* lda, const T* x,
          const int32_t* incx, const T* beta, T* y, const int32_t* incy)
{
    constexpr Checks check = checks_of<T>(Hermitian ? "HEMV" : "SYMV");
    if (check.n(1, *n) || check.lda_of_n(2, *lda, *n) || check.uplo(3, uplo) || check.incx(4, *incx) ||
        check.incy(5, *incy))
        return;

    if (*n == 0) return;
    scale_vector<T>(*n, *beta, y, *incy);
    if (*alpha == T(0)) return;
    add_symmetric<T, Hermitian>(is_letter(uplo, 'L'), *n, *alpha, a, *lda, x, *incx, y, *incy);
}

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_REALS(SSYMV, DSYMV, 10, orvel::kernels::symv, false);
ORVEL_EXPORT_UPPER(CHEMV, 10, (orvel::kernels::symv<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZHEMV, 10, (orvel::kernels::symv<orvel_dcomplex, true>));
