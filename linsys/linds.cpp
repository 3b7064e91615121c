// linsys/linds.cpp - LINDS, L2NDS: inverse of a symmetric positive definite matrix
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "linsys/checks.h"
#include "linsys/definite.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// Copies the upper triangle to the lower one, a block at a time, so that rows and columns are near.
template <class T>
void mirror(int64_t n, T* a, int64_t lda)
{
    constexpr int64_t block = 32;
    for (int64_t j = 0; j < n; j += block)
        for (int64_t i = j; i < n; i += block)
            for (int64_t c = j; c < std::min(j + block, n); ++c)
                for (int64_t r = std::max(i, c + 1); r < std::min(i + block, n); ++r)
                    a[r + c * lda] = a[c + r * lda];
}

template <class T>
void l2nds(frame::State& state, int32_t n, const T* a, int64_t lda, T* ainv, int64_t ldainv, T* wk)
{
    Routine<T, Name<6>("L2NDS")> me(state);
    check_order(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldainv(me, 3, n, ldainv);
    if (me.failed()) return;

    T rcond = 1;
    l2cds<T>(state, n, a, lda, ainv, ldainv, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    invert_triangle<T>(false, n, ainv, ldainv);
    multiply_by_own_adjoint<T>(n, ainv, ldainv);
    mirror<T>(n, ainv, ldainv);
    if (epsilon<T>() >= rcond) warn_of_inverse(me, rcond);
}

template <class T>
void linds(const int32_t* n, const T* a, const int32_t* lda, T* ainv, const int32_t* ldainv)
{
    factor_in_scratch<Name<6>("LINDS"), T>(
        *n, [&](frame::State& state, T* wk) { l2nds<T>(state, *n, a, *lda, ainv, *ldainv, wk); });
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_REALS(L2NDS, l2nds_, DL2NDS, dl2nds_, 6, l2nds);
ORVEL_EXPORT_REALS(LINDS, linds_, DLINDS, dlinds_, 5, linds);
