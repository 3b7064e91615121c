// kernels/band.cpp - GBMV, SBMV, HBMV, TBMV, TBSV: band matrices, column by column
//
// A band is stored by columns: element (i, j) of a matrix with KU superdiagonals at row KU + i - j of column
// j.
#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/columns.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

constexpr int64_t piece = 256;  // of a vector, copied to the stack

// y += factor * a over n elements, and a * x; a is contiguous.
template <class T>
void add_segment(int64_t n, T factor, const T* a, bool conjugated, T* y, int64_t inc)
{
    const int64_t span = inc == 1 ? n : piece;
    for (int64_t r = 0; r < n; r += span) {
        const int64_t rows = std::min(span, n - r);
        Piece<T, piece> to(y + r * inc, rows, inc);
        add_columns(rows, 1, a + r, 1, conjugated, &factor, to);
    }
}

template <class T>
T dot_segment(int64_t n, const T* a, bool conjugated, const T* x, int64_t inc)
{
    if (inc == 1) return dot_column(n, a, conjugated, x);
    T sum{};
    for (int64_t r = 0; r < n; r += piece) {
        const int64_t rows = std::min(piece, n - r);
        Piece<const T, piece> from(x + r * inc, rows, inc);
        sum += dot_column<T>(rows, a + r, conjugated, from);
    }
    return sum;
}

template <class T>
void gbmv(const char* trans, const int32_t* m, const int32_t* n, const int32_t* kl, const int32_t* ku,
          const T* alpha, const T* a, const int32_t* lda, const T* x, const int32_t* incx, const T* beta,
          T* y, const int32_t* incy)
{
    constexpr Checks check = checks_of<T>("GBMV");
    if (check.m(1, *m) || check.n(2, *n) || check.kl(3, *kl) || check.ku(4, *ku)) return;
    if (*lda < int64_t{*kl} + *ku + 1) {
        check.post(
            5,
            "LDA must be greater than or equal to KL + KU + 1 while LDA = %(I1), KL = %(I2) and KU = %(I3) are given.",
            {i(1, *lda), i(2, *kl), i(3, *ku)});
        return;
    }
    if (check.trans(6, trans) || check.incx(7, *incx) || check.incy(8, *incy)) return;

    if (*m == 0 || *n == 0) return;
    const bool plain = is_letter(trans, 'N'), conjugated = is_letter(trans, 'C');
    const int64_t rows = *m, columns = *n, below = *kl, above = *ku, step_x = *incx, step_y = *incy;
    scale_vector<T>(plain ? rows : columns, *beta, y, step_y);
    if (*alpha == T(0)) return;
    x = start(x, plain ? columns : rows, step_x);
    y = start(y, plain ? rows : columns, step_y);
    for (int64_t j = 0; j < columns; ++j) {
        const int64_t first = std::max<int64_t>(0, j - above), last = std::min(rows, j + below + 1);
        if (last <= first) continue;
        const T* segment = a + j * *lda + (above + first - j);
        if (plain)
            add_segment<T>(last - first, *alpha * x[j * step_x], segment, false, y + first * step_y, step_y);
        else
            y[j * step_y] +=
                *alpha * dot_segment(last - first, segment, conjugated, x + first * step_x, step_x);
    }
}

template <class T, bool Hermitian>
void sbmv(const char* uplo, const int32_t* n, const int32_t* k, const T* alpha, const T* a,
          const int32_t* lda, const T* x, const int32_t* incx, const T* beta, T* y, const int32_t* incy)
{
    constexpr Checks check = checks_of<T>(Hermitian ? "HBMV" : "SBMV");
    if (check.n(1, *n) || check.k(2, *k) || check.lda_of_band(3, *lda, *k) || check.uplo(4, uplo) ||
        check.incx(5, *incx) || check.incy(6, *incy))
        return;

    if (*n == 0) return;
    const bool lower = is_letter(uplo, 'L');
    const int64_t order = *n, band = *k, step_x = *incx, step_y = *incy;
    scale_vector<T>(order, *beta, y, step_y);
    if (*alpha == T(0)) return;
    x = start(x, order, step_x);
    y = start(y, order, step_y);
    for (int64_t j = 0; j < order; ++j) {
        const int64_t first = lower ? j + 1 : std::max<int64_t>(0, j - band);
        const int64_t count = lower ? std::min(order, j + band + 1) - first : j - first;
        const T* column = a + j * *lda;
        const T* segment = lower ? column + 1 : column + (band + first - j);
        const T diagonal = column[lower ? 0 : band], scaled = *alpha * x[j * step_x];
        add_segment<T>(count, scaled, segment, false, y + first * step_y, step_y);
        y[j * step_y] += scaled * (Hermitian ? T(std::real(diagonal)) : diagonal) +
                         *alpha * dot_segment(count, segment, Hermitian, x + first * step_x, step_x);
    }
}

enum class Action { multiply, solve };

template <class T, Action action>
void triangular_band(const char* uplo, const char* trans, const char* diag, const int32_t* n,
                     const int32_t* k, const T* a, const int32_t* lda, T* x, const int32_t* incx)
{
    constexpr Checks check = checks_of<T>(action == Action::solve ? "TBSV" : "TBMV");
    if (check.n(1, *n) || check.k(2, *k) || check.lda_of_band(3, *lda, *k) || check.uplo(4, uplo) ||
        check.trans(5, trans) || check.diag(6, diag) || check.incx(7, *incx))
        return;

    const bool lower = is_letter(uplo, 'L'), plain = is_letter(trans, 'N'),
               conjugated = is_letter(trans, 'C');
    const bool unit = is_letter(diag, 'U');
    const bool ascending = (action == Action::solve) == (lower == plain);
    const int64_t order = *n, band = *k, inc = *incx;
    x = start(x, order, inc);
    for (int64_t step = 0; step < order; ++step) {
        const int64_t j = ascending ? step : order - 1 - step;
        const int64_t first = lower ? j + 1 : std::max<int64_t>(0, j - band);
        const int64_t count = lower ? std::min(order, j + band + 1) - first : j - first;
        const T* column = a + j * *lda;
        const T* segment = lower ? column + 1 : column + (band + first - j);
        const T stored = column[lower ? 0 : band], diagonal = conjugated ? conjugate(stored) : stored;
        T& own = x[j * inc];
        T* others = x + first * inc;
        if (action == Action::multiply) {
            if (plain) add_segment<T>(count, own, segment, false, others, inc);
            if (!unit) own *= diagonal;
            if (!plain) own += dot_segment<T>(count, segment, conjugated, others, inc);
        } else {
            if (!plain) own -= dot_segment<T>(count, segment, conjugated, others, inc);
            if (!unit) own = quotient(own, diagonal);
            if (plain) add_segment<T>(count, -own, segment, false, others, inc);
        }
    }
}

using enum Action;

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(SGBMV, DGBMV, CGBMV, ZGBMV, 13, orvel::kernels::gbmv);
ORVEL_EXPORT_UPPER_REALS(SSBMV, DSBMV, 11, orvel::kernels::sbmv, false);
ORVEL_EXPORT_UPPER(CHBMV, 11, (orvel::kernels::sbmv<orvel_complex, true>));
ORVEL_EXPORT_UPPER(ZHBMV, 11, (orvel::kernels::sbmv<orvel_dcomplex, true>));
ORVEL_EXPORT_UPPER_ALL(STBMV, DTBMV, CTBMV, ZTBMV, 9, orvel::kernels::triangular_band,
                       orvel::kernels::multiply);
ORVEL_EXPORT_UPPER_ALL(STBSV, DTBSV, CTBSV, ZTBSV, 9, orvel::kernels::triangular_band, orvel::kernels::solve);
