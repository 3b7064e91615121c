// linsys/lfcrg.cpp - LFCRG, L2CRG: LU factorization and estimate of the condition number; NR1RR: its norm
#include <algorithm>
#include <cmath>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

template <class T>
Part<T> norm_1(int64_t rows, int64_t columns, const T* a, int64_t lda, Part<T> scale)
{
    return largest_sum<Part<T>>(columns,
                                [&](int64_t j) { return sum_of_magnitudes(rows, a + j * lda, scale); });
}

template <class T>
void l2crg(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, int32_t* ipvt,
           Part<T>* rcond, T* wk)
{
    Routine<T, name_of<T>("L2CRG", "L2CCG")> me(state);
    check_order(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldfac(me, 3, n, ldfac);
    if (me.failed()) return;

    const bool estimated = factor_and_estimate<T>(
        me, 4, rcond, [&](Part<T> scale) { return norm_1<T>(n, n, a, lda, scale); },
        [&] { l2trg<T>(state, n, a, lda, fact, ldfac, ipvt, wk); },
        [&](const ScaledNorm<Part<T>>& norm) {
            return norm.condition(reciprocal_of_inverse_norm<T>(n, fact, ldfac, ipvt, wk));
        });
    if (estimated && epsilon<T>() >= *rcond) warn_of_singularity(me, *rcond);
}

namespace {

template <class T>
void nr1rr(const int32_t* rows, const int32_t* columns, const T* a, const int32_t* lda, Part<T>* norm)
{
    *norm = norm_1<T>(*rows, *rows < 1 || *lda < *rows ? 0 : *columns, a, *lda);
}

template <class T>
void lfcrg(const int32_t* n, const T* a, const int32_t* lda, T* fact, const int32_t* ldfac, int32_t* ipvt,
           Part<T>* rcond)
{
    factor_in_scratch<name_of<T>("LFCRG", "LFCCG"), T>(
        *n, [&](frame::State& state, T* wk) { l2crg<T>(state, *n, a, *lda, fact, *ldfac, ipvt, rcond, wk); });
}

}  // namespace

template float norm_1(int64_t, int64_t, const float*, int64_t, float);
template double norm_1(int64_t, int64_t, const double*, int64_t, double);
template float norm_1(int64_t, int64_t, const orvel_complex*, int64_t, float);
template double norm_1(int64_t, int64_t, const orvel_dcomplex*, int64_t, double);
template void l2crg(frame::State&, int32_t, const float*, int64_t, float*, int64_t, int32_t*, float*, float*);
template void l2crg(frame::State&, int32_t, const double*, int64_t, double*, int64_t, int32_t*, double*,
                    double*);
template void l2crg(frame::State&, int32_t, const orvel_complex*, int64_t, orvel_complex*, int64_t, int32_t*,
                    float*, orvel_complex*);
template void l2crg(frame::State&, int32_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t,
                    int32_t*, double*, orvel_dcomplex*);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(NR1RR, nr1rr_, DNR1RR, dnr1rr_, NR1CR, nr1cr_, DNR1CR, dnr1cr_, 5, nr1rr);
ORVEL_EXPORT_ALL(L2CRG, l2crg_, DL2CRG, dl2crg_, L2CCG, l2ccg_, DL2CCG, dl2ccg_, 8, l2crg);
ORVEL_EXPORT_ALL(LFCRG, lfcrg_, DLFCRG, dlfcrg_, LFCCG, lfccg_, DLFCCG, dlfccg_, 7, lfcrg);
