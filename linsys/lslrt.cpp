// linsys/lslrt.cpp - LSLRT, LFCRT, L2CRT, LFDRT: solution, condition and determinant of a triangle
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "kernels/triangular.h"
#include "linsys/checks.h"
#include "linsys/determinant.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

template <class T>
void lslrt(const int32_t* n, const T* a, const int32_t* lda, const T* b, const int32_t* ipath, T* x)
{
    Routine<T, name_of<T>("LSLRT", "LSLCT")> me;
    check_number_of_equations(me, 1, *n);
    check_lda(me, 2, *n, *lda);
    if (*ipath < 1 || *ipath > 4)
        me.post(terminal, 3, "IPATH must be 1, 2, 3 or 4 while a value of %(I1) is given.", {i(1, *ipath)});
    if (me.failed()) return;

    const int64_t k = first_small_diagonal(*n, a, *lda);
    if (k < *n)
        return me.post(
            terminal, 4,
            "The input matrix is singular.  The index of the first diagonal element of A that is close to zero is %(I1).",
            {i(1, static_cast<int32_t>(k + 1))});
    if (x != b) kernels::copy<T>(*n, b, 1, x, 1);
    kernels::solve_triangle<T>(*ipath % 2 == 1, *ipath > 2, *n, a, *lda, x);
}

// The largest column sum of magnitudes of `scale` times a triangle; NaN when a column has one.
template <class T>
Part<T> norm_of(const Triangle<T>& t, Part<T> scale)
{
    return largest_sum<Part<T>>(t.n, [&](int64_t j) {
        const int64_t first = t.lower ? j : 0, last = t.lower ? t.n : j + 1;
        return sum_of_magnitudes(last - first, t.a + first + j * t.lda, scale);
    });
}

template <class T>
void l2crt(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t ipath, Part<T>* rcond, T* wk)
{
    Routine<T, name_of<T>("L2CRT", "L2CCT")> me(state);
    check_order(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ipath(me, 3, ipath);
    if (me.failed()) return;

    const Triangle<T> triangle{ipath == 1, n, a, lda};
    *rcond = 0;
    if (first_small_diagonal(n, a, lda) == n) {
        const auto norm = scaled_norm<Part<T>>([&](Part<T> scale) { return norm_of<T>(triangle, scale); });
        *rcond = norm.condition(reciprocal_of_inverse_norm<T>(triangle, wk));
    }
    if (epsilon<T>() >= *rcond) warn_of_singularity(me, *rcond);
}

template <class T>
void lfcrt(const int32_t* n, const T* a, const int32_t* lda, const int32_t* ipath, Part<T>* rcond)
{
    factor_in_scratch<name_of<T>("LFCRT", "LFCCT"), T>(
        *n, [&](frame::State& state, T* wk) { l2crt<T>(state, *n, a, *lda, *ipath, rcond, wk); });
}

template <class T>
void lfdrt(const int32_t* n, const T* a, const int32_t* lda, T* det1, Part<T>* det2)
{
    Routine<T, name_of<T>("LFDRT", "LFDCT")> me;
    check_order(me, 1, *n);
    check_lda(me, 2, *n, *lda);
    if (me.failed()) return;
    Determinant<T> product;
    for (int64_t k = 0; k < *n; ++k)
        if (!product.multiply(a[k + k * *lda])) break;
    *det1 = product.mantissa;
    *det2 = product.exponent;
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LSLRT, lslrt_, DLSLRT, dlslrt_, LSLCT, lslct_, DLSLCT, dlslct_, 6, lslrt);
ORVEL_EXPORT_ALL(L2CRT, l2crt_, DL2CRT, dl2crt_, L2CCT, l2cct_, DL2CCT, dl2cct_, 6, l2crt);
ORVEL_EXPORT_ALL(LFCRT, lfcrt_, DLFCRT, dlfcrt_, LFCCT, lfcct_, DLFCCT, dlfcct_, 5, lfcrt);
ORVEL_EXPORT_ALL(LFDRT, lfdrt_, DLFDRT, dlfdrt_, LFDCT, lfdct_, DLFDCT, dlfdct_, 5, lfdrt);
