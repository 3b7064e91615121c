// linsys/linrt.cpp - LINRT: inverse of a triangular matrix
#include "frame/export.h"
#include "kernels/level1.h"
#include "kernels/triangular.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// Column by column: the part of column j beside its diagonal is multiplied by the inverse that is there.
template <class T>
void invert_small(bool lower, int64_t n, T* a, int64_t lda)
{
    for (int64_t step = 0; step < n; ++step) {
        const int64_t j = lower ? n - 1 - step : step;
        T* const column = a + j * lda;
        column[j] = kernels::quotient(T(1), column[j]);
        const int64_t first = lower ? j + 1 : 0, last = lower ? n : j;
        for (int64_t s = 0; s < last - first; ++s) {
            const int64_t k = lower ? last - 1 - s : first + s;
            const T factor = column[k];
            column[k] = T(0);
            const int64_t from = lower ? k : first, to = lower ? last : k + 1;
            for (int64_t r = from; r < to; ++r) column[r] += factor * a[r + k * lda];
        }
        for (int64_t r = first; r < last; ++r) column[r] *= -column[j];
    }
}

}  // namespace

// Halves: the square beside the two triangles is multiplied by the inverse of the one and divided by the
// other, which leaves a smaller residual than a product of two rounded inverses. Source: J. Du Croz and N.
// Higham, Stability of methods for matrix inversion, 1992.
template <class T>
void invert_triangle(bool lower, int64_t n, T* a, int64_t lda)
{
    constexpr int64_t small = 16;
    if (n <= small) return invert_small(lower, n, a, lda);
    const int64_t half = (n / 2 + small - 1) / small * small, rest = n - half;
    T* const left = lower ? a + half * (lda + 1) : a;
    T* const right = lower ? a : a + half * (lda + 1);
    const int64_t rows = lower ? rest : half, columns = lower ? half : rest;
    T* const square = lower ? a + half : a + half * lda;
    invert_triangle(lower, rows, left, lda);
    for (int64_t j = 0; j < columns; ++j)
        for (int64_t r = 0; r < rows; ++r) square[r + j * lda] = -square[r + j * lda];
    kernels::multiply_by_triangle<T>(rows, columns, lower, left, lda, square, lda);
    kernels::divide_by_triangle<T>(rows, columns, {lower, false}, right, lda, square, lda);
    invert_triangle(lower, columns, right, lda);
}

namespace {

template <class T>
void linrt(const int32_t* n, const T* a, const int32_t* lda, const int32_t* ipath, T* ainv,
           const int32_t* ldainv)
{
    Routine<T, name_of<T>("LINRT", "LINCT")> me;
    check_order(me, 1, *n);
    check_lda(me, 2, *n, *lda);
    check_ldainv(me, 3, *n, *ldainv);
    check_ipath(me, 4, *ipath);
    if (me.failed()) return;

    const int64_t k = first_small_diagonal(*n, a, *lda);
    if (k < *n)
        return me.post(
            terminal, 5,
            "The matrix to be inverted is singular.  The index of the first zero diagonal element of A is %(I1).",
            {i(1, static_cast<int32_t>(k + 1))});
    const bool lower = *ipath == 1;
    if (ainv != a || *ldainv != *lda)
        for (int64_t j = 0; j < *n; ++j) {
            const int64_t first = lower ? j : 0, last = lower ? *n : j + 1;
            kernels::copy<T>(last - first, a + first + j * *lda, 1, ainv + first + j * *ldainv, 1);
        }
    invert_triangle<T>(lower, *n, ainv, *ldainv);
}

}  // namespace

template void invert_triangle(bool, int64_t, float*, int64_t);
template void invert_triangle(bool, int64_t, double*, int64_t);
template void invert_triangle(bool, int64_t, orvel_complex*, int64_t);
template void invert_triangle(bool, int64_t, orvel_dcomplex*, int64_t);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LINRT, linrt_, DLINRT, dlinrt_, LINCT, linct_, DLINCT, dlinct_, 6, linrt);
