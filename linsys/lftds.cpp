// linsys/lftds.cpp - LFTDS, L2TDS, LFCDS, L2CDS: Cholesky factorization, with the condition number
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "linsys/band.h"
#include "linsys/checks.h"
#include "linsys/definite.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// Copies the upper triangle of A to FACT, and factors it.
template <class T>
int64_t copy_and_factor(int64_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, const Part<T>* least)
{
    if (n <= definite_width)
        return of_type<T>(small_cholesky_loops())(n, kernels::parts(a), lda, kernels::parts(fact), ldfac,
                                                  least);
    if (fact != a || ldfac != lda)
        for (int64_t j = 0; j < n; ++j) kernels::copy<T>(j + 1, a + j * lda, 1, fact + j * ldfac, 1);
    return factor_definite<T>(n, definite_width, fact, ldfac, least);
}

}  // namespace

template <class T>
void l2tds(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, T* wk)
{
    Routine<T, name_of<T>("L2TDS", "L2TDH")> me(state);
    // Only the first error counts.
    check_order(me, 1, n);
    if (!me.failed()) check_lda(me, 2, n, lda);
    if (!me.failed()) check_ldfac(me, 3, n, ldfac);
    if (me.failed()) return;

    Part<T>* const least = kernels::parts(wk);
    for (int64_t k = 0; k < n; ++k) least[k] = epsilon<T>() * std::real(a[k * (lda + 1)]);
    const int64_t not_real = first_complex_diagonal(n, a, lda);
    const int64_t done = copy_and_factor<T>(n, a, lda, fact, ldfac, least);
    say_what_is_wrong(me, n, done, not_real);
}

template <class T>
void l2cds(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, Part<T>* rcond,
           T* wk)
{
    Routine<T, name_of<T>("L2CDS", "L2CDH")> me(state);
    check_order(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldfac(me, 3, n, ldfac);
    if (me.failed()) return;

    const bool estimated = factor_and_estimate<T>(
        me, 4, rcond,
        [&](Part<T> scale) {
            return norm_of_hermitian<T>({n, 0, n - 1, a, lda}, kernels::parts(wk), scale);
        },
        [&] { l2tds<T>(state, n, a, lda, fact, ldfac, wk); },
        [&](const ScaledNorm<Part<T>>& norm) {
            return norm.condition(reciprocal_of_inverse_norm<T>(n, fact, ldfac, wk));
        });
    if (estimated && epsilon<T>() >= *rcond) warn_of_singularity(me, *rcond);
}

namespace {

template <class T>
void lftds(const int32_t* n, const T* a, const int32_t* lda, T* fact, const int32_t* ldfac)
{
    factor_in_scratch<name_of<T>("LFTDS", "LFTDH"), T>(
        *n, [&](frame::State& state, T* wk) { l2tds<T>(state, *n, a, *lda, fact, *ldfac, wk); });
}

template <class T>
void lfcds(const int32_t* n, const T* a, const int32_t* lda, T* fact, const int32_t* ldfac, Part<T>* rcond)
{
    factor_in_scratch<name_of<T>("LFCDS", "LFCDH"), T>(
        *n, [&](frame::State& state, T* wk) { l2cds<T>(state, *n, a, *lda, fact, *ldfac, rcond, wk); });
}

}  // namespace

template void l2tds(frame::State&, int32_t, const float*, int64_t, float*, int64_t, float*);
template void l2cds(frame::State&, int32_t, const float*, int64_t, float*, int64_t, float*, float*);
template void l2tds(frame::State&, int32_t, const double*, int64_t, double*, int64_t, double*);
template void l2cds(frame::State&, int32_t, const double*, int64_t, double*, int64_t, double*, double*);
template void l2tds(frame::State&, int32_t, const orvel_complex*, int64_t, orvel_complex*, int64_t,
                    orvel_complex*);
template void l2cds(frame::State&, int32_t, const orvel_complex*, int64_t, orvel_complex*, int64_t, float*,
                    orvel_complex*);
template void l2tds(frame::State&, int32_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t,
                    orvel_dcomplex*);
template void l2cds(frame::State&, int32_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t, double*,
                    orvel_dcomplex*);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(L2TDS, l2tds_, DL2TDS, dl2tds_, L2TDH, l2tdh_, DL2TDH, dl2tdh_, 6, l2tds);
ORVEL_EXPORT_ALL(LFTDS, lftds_, DLFTDS, dlftds_, LFTDH, lftdh_, DLFTDH, dlftdh_, 5, lftds);
ORVEL_EXPORT_ALL(L2CDS, l2cds_, DL2CDS, dl2cds_, L2CDH, l2cdh_, DL2CDH, dl2cdh_, 7, l2cds);
ORVEL_EXPORT_ALL(LFCDS, lfcds_, DLFCDS, dlfcds_, LFCDH, lfcdh_, DLFCDH, dlfcdh_, 6, lfcds);
